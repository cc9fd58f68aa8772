#include "las/lasheader.h"

#include "las/lastext.h"

#include <QFile>
#include <QFileInfo>

namespace las {

namespace {

constexpr qint64 firstRead = 64 * 1024;
constexpr qint64 maximumHeader = 4 * 1024 * 1024;

/// What well sections call their own fields: such a text is a label and no value.
bool isLabel(const QString &text, const QString &mnemonic)
{
    static const QStringList labels = {
        QStringLiteral("WELL"),          QStringLiteral("WELL NAME"),   QStringLiteral("NAME"),
        QStringLiteral("UWI"),           QStringLiteral("API"),         QStringLiteral("API NUMBER"),
        QStringLiteral("COMPANY"),       QStringLiteral("FIELD"),       QStringLiteral("LOCATION"),
        QStringLiteral("WELL LOCATION"), QStringLiteral("PROVINCE"),    QStringLiteral("STATE"),
        QStringLiteral("COUNTY"),        QStringLiteral("COUNTRY"),     QStringLiteral("SERVICE COMPANY"),
        QStringLiteral("DATE"),          QStringLiteral("LOG DATE"),    QStringLiteral("LATITUDE"),
        QStringLiteral("LONGITUDE"),     QStringLiteral("UNIQUE WELL"),
    };
    return text.compare(mnemonic, Qt::CaseInsensitive) == 0 || labels.contains(text, Qt::CaseInsensitive)
        || text.startsWith(QLatin1String("UNIQUE WELL ID"), Qt::CaseInsensitive);
}

/// LAS 1.2 writes "WELL. WELL: name" where LAS 2.0 writes "WELL. name : WELL", and files of either version
/// are found with the order of the other: labels decide before the version does.
void putValueFirst(HeaderItem &item, bool isVersion1)
{
    static const QStringList always = {QStringLiteral("STRT"), QStringLiteral("STOP"), QStringLiteral("STEP"),
                                       QStringLiteral("NULL")};
    if (always.contains(item.mnemonic, Qt::CaseInsensitive) || item.description.isEmpty()
        || isLabel(item.description, item.mnemonic))
        return;
    if (isVersion1 || isLabel(item.value, item.mnemonic))
        std::swap(item.value, item.description);
}

/// The position behind the value in text without a colon: its end, or two blanks or tabs in a row.
int valueStop(const QString &text)
{
    for (int i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i).isSpace() && text.at(i + 1).isSpace())
            return i;
    }
    return text.size();
}

/// False for a line that is no item.
bool parseItem(const QString &line, HeaderItem &item)
{
    const int dot = line.indexOf(u'.');
    item.mnemonic = line.left(dot).trimmed();
    if (dot < 0 || item.mnemonic.isEmpty() || item.mnemonic.startsWith(u'#'))
        return false;
    const int colon = line.lastIndexOf(u':');
    const bool hasColon = colon > dot;
    int valueBegin = dot + 1;
    const int end = hasColon ? colon : line.size();
    while (valueBegin < end && !line.at(valueBegin).isSpace())
        ++valueBegin;
    item.unit = line.mid(dot + 1, valueBegin - dot - 1);
    item.value = line.mid(valueBegin, end - valueBegin);
    if (hasColon) {
        item.description = line.mid(colon + 1).trimmed();
        item.value = item.value.trimmed();
        return true;
    }
    // Two tabs in front are an empty value between two fields; blanks in front are only for looks.
    QString text = item.value;
    const bool emptyField = text.startsWith(QLatin1String("\t\t"));
    text = text.trimmed();
    const int stop = emptyField ? 0 : valueStop(text);
    item.value = text.left(stop).simplified();
    item.description = text.mid(stop).trimmed();
    return true;
}

/// 'V', 'W', 'P', 'C', or 'A' for a data section; null for any other title line.
QChar sectionOf(const QString &title)
{
    int end = 1;
    while (end < title.size() && (title.at(end).isLetterOrNumber() || title.at(end) == u'_'))
        ++end;
    const QString word = title.mid(1, end - 1).toUpper();
    if (word == QLatin1String("LOG_PARAMETER"))
        return u'P';
    if (word == QLatin1String("LOG_DEFINITION"))
        return u'C';
    if (word == QLatin1String("LOG_DATA"))
        return u'A';
    for (const char *ofOtherSets : {"_PARAMETER", "_DEFINITION", "_DATA"}) {
        if (word.endsWith(QLatin1String(ofOtherSets)))
            return QChar();
    }
    if (word.isEmpty())
        return QChar();
    return QStringLiteral("VWPCA").contains(word.at(0)) ? word.at(0) : QChar();
}

struct ParsedHeader
{
    Header header;
    bool complete = false; ///< a data section was met
    bool hasSections = false;
};

ParsedHeader parse(const Text &text)
{
    ParsedHeader parsed;
    bool isVersion1 = false;
    QChar section;
    const char *stop = nullptr;
    const char *const end = text.bytes.constData() + text.bytes.size();
    for (const char *at = text.bytes.constData(); at < end; at = base::nextLine(stop, end)) {
        stop = base::lineStop(at, end);
        const char *first = at;
        while (first < stop && base::isSpace(*first))
            ++first;
        if (first < stop && *first == '~') {
            parsed.hasSections = true;
            section = sectionOf(decode(first, stop, text.encoding));
            if (section == u'A') {
                parsed.complete = true;
                return parsed;
            }
            continue;
        }
        HeaderItem item;
        item.section = section;
        if (section.isNull() || !parseItem(decode(at, stop, text.encoding), item))
            continue;
        if (section == u'V' && item.mnemonic.compare(QLatin1String("VERS"), Qt::CaseInsensitive) == 0)
            isVersion1 = item.value.startsWith(u'1');
        else if (section == u'V' && item.mnemonic.compare(QLatin1String("WRAP"), Qt::CaseInsensitive) == 0)
            parsed.header.wrapped = item.value.compare(QLatin1String("YES"), Qt::CaseInsensitive) == 0;
        else if (section == u'W')
            putValueFirst(item, isVersion1);
        parsed.header.items.append(item);
    }
    return parsed;
}

/// The bytes up to the last line end, so that no line and no character is cut.
QByteArray wholeLines(const QByteArray &bytes)
{
    int end = bytes.size();
    while (end > 0 && !base::isLineEnd(bytes.at(end - 1)))
        --end;
    // A UTF-16 line end has two bytes, of which the zero may come second.
    if (end < bytes.size() && bytes.at(end) == '\0')
        ++end;
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

HeaderResult readHeader(const QString &path)
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
        parsed = parse(prepareText(atEnd ? bytes : wholeLines(bytes)));
        if (atEnd)
            break;
    }
    if (!parsed.hasSections)
        result.error = QStringLiteral("The file %1 is no LAS file: it has no line with a \"~\" in front.").arg(path);
    else
        result.header = parsed.header;
    return result;
}

} // namespace las
