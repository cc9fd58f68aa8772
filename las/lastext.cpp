#include "las/lastext.h"

#include <QTextCodec>

#include <cstring>

namespace las {

namespace {

bool isAsciiWord(const char *bytes)
{
    quint64 word;
    std::memcpy(&word, bytes, sizeof word);
    return (word & Q_UINT64_C(0x8080808080808080)) == 0;
}

/// The length of the UTF-8 sequence at \a at, 0 where it is wrong or cut.
int sequenceLength(const unsigned char *at, const unsigned char *end)
{
    const auto continues = [at, end](int index) { return at + index < end && (at[index] & 0xC0) == 0x80; };
    const unsigned lead = at[0];
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4 || !continues(1))
        return 0;
    if (lead < 0xE0)
        return 2;
    const unsigned second = at[1];
    if (lead < 0xF0) {
        const bool overlong = lead == 0xE0 && second < 0xA0;
        const bool surrogate = lead == 0xED && second >= 0xA0;
        return overlong || surrogate || !continues(2) ? 0 : 3;
    }
    const bool outside = (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
    return outside || !continues(2) || !continues(3) ? 0 : 4;
}

/// What 0x80 to 0x9F stand for; base::decodeText() knows, and 0xFF in front makes sure it cannot be UTF-8.
const QString &upperControls()
{
    static const QString characters = [] {
        QByteArray bytes("\xFF");
        for (int byte = 0x80; byte < 0xA0; ++byte)
            bytes.append(static_cast<char>(byte));
        return base::decodeText(bytes).mid(1);
    }();
    return characters;
}

} // namespace

bool isUtf8(const char *begin, const char *end)
{
    while (begin < end) {
        if (end - begin >= 8 && isAsciiWord(begin)) {
            begin += 8;
            continue;
        }
        const int length = sequenceLength(reinterpret_cast<const unsigned char *>(begin),
                                          reinterpret_cast<const unsigned char *>(end));
        if (length == 0)
            return false;
        begin += length;
    }
    return true;
}

const QVector<TextCodec> &textCodecs()
{
    static const QVector<TextCodec> codecs{
        {"windows-1252", "Western European (Windows-1252)"},
        {"ISO-8859-15", "Western European (ISO 8859-15)"},
        {"windows-1250", "Central European (Windows-1250)"},
        {"windows-1251", "Cyrillic (Windows-1251)"},
        {"IBM866", "Cyrillic (DOS 866)"},
        {"KOI8-R", "Cyrillic (KOI8-R)"},
        {"windows-1253", "Greek (Windows-1253)"},
        {"windows-1254", "Turkish (Windows-1254)"},
        {"windows-1256", "Arabic (Windows-1256)"},
        {"GB18030", "Chinese (GB 18030)"},
    };
    return codecs;
}

Text prepareText(QByteArray bytes, const QByteArray &codecName)
{
    Text text;
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        bytes = base::decodeText(bytes).toUtf8();
    } else if (bytes.startsWith("\xEF\xBB\xBF")) {
        bytes.remove(0, 3);
    } else if (!isUtf8(bytes.constData(), bytes.constData() + bytes.size())) {
        text.isUnicode = false;
        QTextCodec *codec =
            codecName.isEmpty() || codecName == "windows-1252" ? nullptr : QTextCodec::codecForName(codecName);
        if (codec)
            bytes = codec->toUnicode(bytes).toUtf8();
        else
            text.encoding = Encoding::Windows1252;
    }
    // Padding that old systems and tapes leave behind the last line; as a line it would become a row of
    // zeros.
    int size = bytes.size();
    while (size > 0 && (bytes.at(size - 1) == '\0' || bytes.at(size - 1) == '\x1A'))
        --size;
    bytes.truncate(size);
    text.bytes = std::move(bytes);
    return text;
}

QString decode(const char *begin, const char *end, Encoding encoding)
{
    const int size = static_cast<int>(end - begin);
    if (encoding == Encoding::Utf8) {
        QString text = QString::fromUtf8(begin, size);
        // fromUtf8() takes a mark at the start of a line for that of the file.
        if (size >= 3 && std::memcmp(begin, "\xEF\xBB\xBF", 3) == 0)
            text.prepend(QChar(0xFEFF));
        return text;
    }
    QString text = QString::fromLatin1(begin, size);
    for (QChar &character : text) {
        const ushort code = character.unicode();
        if (code >= 0x80 && code < 0xA0)
            character = upperControls().at(code - 0x80);
    }
    return text;
}

QString decodeFront(const char *begin, const char *end, Encoding encoding, int maximumBytes)
{
    if (end - begin > maximumBytes) {
        end = begin + maximumBytes;
        const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
        for (int i = 0; i < 3 && encoding == Encoding::Utf8 && end > begin && continues(*end); ++i)
            --end;
    }
    return decode(begin, end, encoding);
}

} // namespace las
