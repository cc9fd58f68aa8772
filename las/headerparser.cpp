#include "las/headerparser.h"

namespace las {

namespace {

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

} // namespace

QChar HeaderParser::beginSection(const QString &title)
{
    const QChar section = sectionOf(title);
    m_section = section == u'A' ? QChar() : section;
    return section;
}

void HeaderParser::readLine(const QString &line)
{
    HeaderItem item;
    item.section = m_section;
    if (!isInSection() || !parseItem(line, item))
        return;
    if (m_section == u'V' && item.mnemonic.compare(QLatin1String("VERS"), Qt::CaseInsensitive) == 0)
        m_isVersion1 = item.value.startsWith(u'1');
    else if (m_section == u'V' && item.mnemonic.compare(QLatin1String("WRAP"), Qt::CaseInsensitive) == 0)
        m_header.wrapped = item.value.compare(QLatin1String("YES"), Qt::CaseInsensitive) == 0;
    else if (m_section == u'W')
        putValueFirst(item, m_isVersion1);
    m_header.items.append(item);
}

} // namespace las
