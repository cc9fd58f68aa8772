#include "base/textbytes.h"

#include <QTextCodec>

namespace base {

namespace {

// Windows-1252 differs from Latin-1 only here; the five unassigned bytes stay control characters.
constexpr char16_t windows1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

QString fromWindows1252(const QByteArray &bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        *out++ = QChar(value >= 0x80 && value < 0xA0 ? windows1252[value - 0x80] : char16_t(value));
    }
    return text;
}

} // namespace

QString decodeText(const QByteArray &bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes.constData() + 3, bytes.size() - 3);
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return QTextCodec::codecForName("UTF-16")->toUnicode(bytes);
    QTextCodec::ConverterState state;
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0)
        return text;
    return fromWindows1252(bytes);
}

QVector<QString> splitLines(const QString &text)
{
    QVector<QString> lines;
    const ushort *begin = text.utf16();
    forEachLine(begin, begin + text.size(), [&](const ushort *from, const ushort *to) {
        lines.append(text.mid(static_cast<int>(from - begin), static_cast<int>(to - from)));
        return true;
    });
    return lines;
}

} // namespace base
