#include "las/wellinfo.h"

#include "base/numbers.h"
#include "las/lasdata.h"
#include "las/lastext.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <new>

namespace {

constexpr QChar dot = u'.';
constexpr QChar colon = u':';
constexpr QChar blank = u' ';

constexpr int maximumCurves = 1 << 20;
// A file without line ends is one header line; as a text it would need several times the file's memory.
constexpr int longestHeaderLine = 64 * 1024;
constexpr qint64 maximumFileSize = std::numeric_limits<int>::max() - 64; // a QByteArray's header needs room, too

/// The next part of \a text between separators, from \a position on, which then is behind it; empty parts are
/// skipped. A null view at the end.
QStringView nextPart(QStringView text, QChar separator, qsizetype &position)
{
    while (position < text.size() && text[position] == separator)
        ++position;
    const qsizetype begin = position;
    while (position < text.size() && text[position] != separator)
        ++position;
    return position > begin ? text.mid(begin, position - begin) : QStringView();
}

bool beginsWithSpace(QStringView text)
{
    return !text.isEmpty() && text.front().isSpace();
}

bool isMnemonic(const QString &text, const char *mnemonic)
{
    return text.compare(QLatin1String(mnemonic), Qt::CaseInsensitive) == 0;
}

enum class Section { None, Version, Well, Curve, Data, Other };

Section sectionOf(char letter)
{
    switch (letter) {
    case 'V':
        return Section::Version;
    case 'W':
        return Section::Well;
    case 'C':
        return Section::Curve;
    case 'A':
        return Section::Data;
    default:
        return Section::Other;
    }
}

/// Takes what is recognised from lines of the header sections.
class HeaderReader
{
public:
    HeaderReader(WellInfo &info, const QString &path)
        : m_info(info)
        , m_path(path)
    {
    }

    void readLine(Section section, const QString &line)
    {
        if (!line.startsWith(u'#') && line.contains(u'\t'))
            m_info.hasTabsInHeader = true;
        if (section == Section::Version)
            readVersionLine(line);
        else if (section == Section::Well)
            readWellLine(line);
        else
            readCurveLine(line);
    }

private:
    void readVersionLine(const QString &line)
    {
        const QString mnemonic = WellInfo::mnemonic(line);
        if (isMnemonic(mnemonic, "VERS"))
            m_info.version = WellInfo::value(line);
        else if (isMnemonic(mnemonic, "WRAP"))
            m_info.wrapped = isMnemonic(WellInfo::value(line), "YES");
    }

    void readWellLine(const QString &line)
    {
        const auto number = [&line] { return base::parseNumber(WellInfo::value(line)).value_or(0.0); };
        const QString mnemonic = WellInfo::mnemonic(line);
        if (isMnemonic(mnemonic, "STRT")) {
            m_info.startDepth = number();
            m_info.depthUnit = WellInfo::unit(line);
        } else if (isMnemonic(mnemonic, "STOP")) {
            m_info.stopDepth = number();
        } else if (isMnemonic(mnemonic, "STEP")) {
            m_info.step = number();
        } else if (isMnemonic(mnemonic, "NULL")) {
            m_info.nullValue = number();
            m_info.hasNullValue = base::parseNumber(WellInfo::value(line)).has_value();
        } else if (isMnemonic(mnemonic, "UWI")) {
            m_info.uwi = WellInfo::value(line);
        }
    }

    void readCurveLine(const QString &line)
    {
        if (line.startsWith(u'#') || QStringView(line).trimmed().isEmpty() || m_info.curves.size() == maximumCurves)
            return;
        LogCurveData curve;
        curve.logName = WellInfo::mnemonic(line);
        curve.displayName = curve.logName;
        curve.unit = WellInfo::unit(line);
        curve.description = WellInfo::description(line);
        curve.source = m_path;
        m_info.curves.append(curve);
    }

    WellInfo &m_info;
    QString m_path;
};

/// Gives each data section the curves that were named since the one before, and fills them at its end.
class DataReader
{
public:
    DataReader(WellInfo &info, QVector<bool> &hasUnreadableDepth)
        : m_info(info)
        , m_hasUnreadableDepth(hasUnreadableDepth)
    {
    }

    void begin(int titleLine)
    {
        end();
        m_section = {};
        m_section.titleLine = titleLine;
        m_section.firstCurve = m_firstUnused;
        m_section.curveCount = m_info.curves.size() - m_firstUnused;
        m_firstUnused = m_info.curves.size();
        m_columns = las::DataColumns(m_section.curveCount, m_info.nullValue);
        ++m_info.dataSectionCount;
    }

    /// Gives the end of the line.
    const char *readLine(int lineNumber, const char *at, const char *end)
    {
        if (m_section.curveCount == 0) {
            const char *stop = base::lineStop(at, end);
            if (*at != '#' && std::any_of(at, stop, [](char c) { return !base::isSpace(c); }))
                ++m_info.rowsWithoutCurves;
            return stop;
        }
        const char *stop = m_columns.readLine(at, end, m_info.lines.encoding());
        if (m_section.firstRowLine == 0 && m_columns.rowCount() > 0)
            m_section.firstRowLine = lineNumber;
        return stop;
    }

    void end()
    {
        if (m_section.curveCount == 0)
            return;
        m_section.rowCount = m_columns.rowCount();
        m_section.unevenRowCount = m_columns.unevenRowCount();
        for (int column = 0; column < m_section.curveCount; ++column)
            m_hasUnreadableDepth.append(column < m_columns.columnsWithUnreadableDepth());
        m_columns.moveTo(m_info.curves, m_section.firstCurve);
        m_info.dataSections.append(m_section);
    }

private:
    WellInfo &m_info;
    QVector<bool> &m_hasUnreadableDepth;
    las::DataColumns m_columns{0};
    LasDataSection m_section;
    int m_firstUnused = 0; ///< the first curve that no data section has yet
};

void noteLowerCaseTitle(char letter, QString *letters)
{
    const QLatin1Char c(letter);
    if (QLatin1String("vwca").contains(c) && !letters->contains(c))
        letters->append(c);
}

} // namespace

QString WellInfo::mnemonic(const QString &line)
{
    qsizetype position = 0;
    return nextPart(line, dot, position).trimmed().toString();
}

QString WellInfo::unit(const QString &line)
{
    qsizetype position = 0;
    nextPart(line, dot, position);
    const QStringView part = nextPart(line, dot, position);
    if (beginsWithSpace(part))
        return QString();
    position = 0;
    return nextPart(part, blank, position).trimmed().toString();
}

QString WellInfo::value(const QString &line)
{
    qsizetype position = 0;
    nextPart(line, dot, position);
    QString joined;
    for (QStringView part = nextPart(line, dot, position); !part.isEmpty(); part = nextPart(line, dot, position)) {
        const qsizetype cut = part.indexOf(colon);
        if (cut >= 0) {
            joined.append(part.data(), static_cast<int>(cut));
            break;
        }
        joined.append(part.data(), static_cast<int>(part.size())).append(dot);
    }
    if (beginsWithSpace(joined))
        return joined.trimmed();

    QString words;
    position = 0;
    nextPart(joined, blank, position);
    for (QStringView word = nextPart(joined, blank, position); !word.isEmpty();
         word = nextPart(joined, blank, position))
        words.append(word.data(), static_cast<int>(word.size()));
    return words.trimmed();
}

QString WellInfo::description(const QString &line)
{
    QStringView last;
    qsizetype position = 0;
    for (QStringView part = nextPart(line, colon, position); !part.isEmpty(); part = nextPart(line, colon, position))
        last = part;
    return last.trimmed().toString();
}

int WellInfo::load(const QString &path)
{
    *this = WellInfo();
    lines = LasLines(path);
    const QFileInfo fileInfo(path);
    if (!fileInfo.exists())
        return -1;
    // Only a regular file ends for sure; a pipe or a device may not.
    QFile file(path);
    if (!fileInfo.isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return -2;
    isTooLarge = fileInfo.size() > maximumFileSize;
    if (isTooLarge)
        return -2;
    try {
        QByteArray bytes = file.readAll();
        if (file.error() == QFileDevice::NoError) {
            file.close();
            lines.m_text = las::prepareText(std::move(bytes));
            read(path);
            return 0;
        }
        *this = WellInfo();
    } catch (const std::bad_alloc &) {
        *this = WellInfo();
        isTooLarge = true;
    }
    lines = LasLines(path);
    return -2;
}

void WellInfo::read(const QString &path)
{
    const las::Encoding encoding = lines.m_text.encoding;
    const char *const bytes = lines.m_text.bytes.constData();
    const char *const end = bytes + lines.m_text.bytes.size();
    HeaderReader header(*this, path);
    DataReader data(*this, m_hasUnreadableDepth);
    Section section = Section::None;
    const char *stop = nullptr;
    for (const char *at = bytes; at < end; at = base::nextLine(stop, end)) {
        lines.m_starts.append(static_cast<int>(at - bytes));
        if (*at == '~') {
            stop = base::lineStop(at, end);
            const char letter = stop - at > 1 ? at[1] : '\0';
            section = sectionOf(letter);
            noteLowerCaseTitle(letter, &lowerCaseSections);
            if (section == Section::Data)
                data.begin(lines.m_starts.size());
        } else if (section == Section::Data) {
            stop = data.readLine(lines.m_starts.size(), at, end);
        } else {
            stop = base::lineStop(at, end);
            if (section != Section::None && section != Section::Other)
                header.readLine(section, las::decodeFront(at, stop, encoding, longestHeaderLine));
        }
    }
    data.end();
    lines.m_starts.squeeze();
}
