#include "las/lasheader.h"

#include "las/headerparser.h"
#include "las/lastext.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace las {

namespace {

constexpr qint64 firstRead = 64 * 1024;
constexpr qint64 maximumHeader = 4 * 1024 * 1024;

struct ParsedHeader
{
    Header header;
    bool complete = false; ///< a data section was met
    bool hasTildes = false; ///< lines with a "~" in front
    bool hasSections = false; ///< one that every LAS file has
};

/// Whether the line is the title of a section that every LAS file has. A picture or another file of bytes may well hold a line
/// with a "~" in front.
bool isSectionTitle(const QString &title)
{
    return title.size() > 1 && QStringLiteral("VWC").contains(title.at(1).toUpper())
        && std::all_of(title.begin(), title.end(),
                       [](QChar character) { return character.isPrint() || character == QLatin1Char('\t'); });
}

ParsedHeader parse(const Text &text)
{
    ParsedHeader parsed;
    HeaderParser parser;
    const char *stop = nullptr;
    const char *const end = text.bytes.constData() + text.bytes.size();
    for (const char *at = text.bytes.constData(); at < end && !parsed.complete; at = base::nextLine(stop, end)) {
        stop = base::lineStop(at, end);
        const char *first = at;
        while (first < stop && base::isSpace(*first))
            ++first;
        if (first < stop && *first == '~') {
            const QString title = decode(first, stop, text.encoding);
            parsed.hasTildes = true;
            parsed.hasSections = parsed.hasSections || isSectionTitle(title);
            parsed.complete = parser.beginSection(title) == u'A';
        } else if (parser.isInSection()) {
            parser.readLine(decode(at, stop, text.encoding));
        }
    }
    parsed.header = parser.header();
    return parsed;
}

/// The bytes up to the last line end, so that no line and no character is cut. Of a line end in UTF-16 the second byte may be
/// missing, which decoding passes over.
QByteArray wholeLines(const QByteArray &bytes)
{
    int end = bytes.size();
    while (end > 0 && !base::isLineEnd(bytes.at(end - 1)))
        --end;
    return bytes.left(end);
}

} // namespace

const HeaderItem *Header::find(QChar section, const QStringList &mnemonics) const
{
    for (const QString &mnemonic : mnemonics) {
        for (const HeaderItem &item : items) {
            if ((section.isNull() || item.section == section)
                && item.mnemonic.compare(mnemonic, Qt::CaseInsensitive) == 0)
                return &item;
        }
    }
    return nullptr;
}

HeaderResult readHeader(const QString &path, const QByteArray &codec)
{
    HeaderResult result;
    const QFileInfo info(path);
    if (!info.exists()) {
        result.error = QStringLiteral("The LAS file %1 does not exist.").arg(path);
        return result;
    }
    // Only a regular file ends for sure; a pipe or a device may not.
    if (!info.isFile()) {
        result.error = QStringLiteral("The LAS file %1 cannot be read: it is not a file.").arg(path);
        return result;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.error = QStringLiteral("The LAS file %1 cannot be opened: %2").arg(path, file.errorString());
        return result;
    }
    // What is there is read again from its start after each block; as the blocks double, this stays linear.
    QByteArray bytes;
    ParsedHeader parsed;
    for (qint64 size = firstRead; !parsed.complete && size <= maximumHeader; size *= 2) {
        const qint64 wanted = size - bytes.size();
        const QByteArray block = file.read(wanted);
        if (file.error() != QFileDevice::NoError) {
            result.error = QStringLiteral("The LAS file %1 cannot be read: %2").arg(path, file.errorString());
            return result;
        }
        bytes += block;
        const bool atEnd = block.size() < wanted;
        const Text text = prepareText(atEnd ? bytes : wholeLines(bytes), codec);
        result.isUnicode = text.isUnicode;
        parsed = parse(text);
        if (atEnd)
            break;
    }
    if (!parsed.hasTildes)
        result.error = QStringLiteral("The file %1 is no LAS file: it has no line with a \"~\" in front.").arg(path);
    else if (!parsed.hasSections)
        result.error =
            QStringLiteral("The file %1 is no LAS file: it has no section ~Version, ~Well or ~Curve.").arg(path);
    else
        result.header = parsed.header;
    return result;
}

} // namespace las
