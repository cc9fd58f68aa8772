#include "las/logreader.h"

#include "base/numbers.h"
#include "host/hostrecords.h"
#include "las/datatable.h"
#include "las/depthname.h"
#include "las/headerparser.h"
#include "las/lengthunit.h"
#include "las/showntext.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

namespace las {

namespace {

constexpr qint64 maximumFileSize = std::numeric_limits<int>::max() - 64; // a QByteArray's header needs room, too
constexpr int longestHeaderLine = 64 * 1024;
constexpr int maximumCurves = 1 << 20;
constexpr int mostNames = 8; // in one notice

QString enumeration(const QStringList &names)
{
    QStringList shown;
    for (const QString &name : names.mid(0, mostNames))
        shown.append(shortened(name));
    const QString text = shown.join(QStringLiteral(", "));
    return names.size() > mostNames ? text + QStringLiteral(" and %1 more").arg(names.size() - mostNames) : text;
}

struct CurveName
{
    QString name;
    QString unit;
};

/// The curves of one curve section.
struct Definition
{
    QString title; ///< "LOG_DEFINITION[1]"
    QVector<CurveName> curves;
    bool isUsed = false; ///< by a data section
};

/// "LOG_DATA[1]" of "~Log_Data[1] | Log_Definition[1]"; the part behind the bar with \a part 1.
QString titlePart(const QString &title, int part)
{
    return title.mid(1).section(u'|', part, part).simplified().remove(u' ').toUpper();
}

/// Reads one file on behalf of readLogs().
class Reader
{
public:
    Reader(const Text &text, LogFile &file)
        : m_text(text)
        , m_file(file)
        , m_end(text.bytes.constData() + text.bytes.size())
    {
    }

    void read();

private:
    const char *readData(const QString &title, const char *at);
    QVector<CurveName> curvesFor(const QString &title, const QStringList &firstRow);
    QVector<CurveName> newCurves();
    void beginDefinition(const QString &title);
    QStringList firstRow(const char *at, Delimiter delimiter) const;
    QString firstLine(const char *at) const;
    DataFormat formatOf(const char *at, int columns) const;
    Delimiter delimiterOf(const QString &line, int columns) const;
    void chooseDepth(QVector<CurveName> &curves, const QStringList &row, DataFormat &format);
    bool isAtStart(const QString &value) const;
    void takeTable(DataTable &table, const QVector<CurveName> &curves, const DataFormat &format);
    bool setUnit(LogSet &set, const CurveName &depth);
    QString uniqueName(const QString &name, int column);
    QString headerText(QChar section, const char *mnemonic) const;
    void note(const QString &sentence)
    {
        if (!m_file.notices.contains(sentence))
            m_file.notices.append(sentence);
    }
    void noteNames(const QString &beginning, const QStringList &names)
    {
        if (!names.isEmpty())
            note(beginning + enumeration(names) + QLatin1Char('.'));
    }

    const Text &m_text;
    LogFile &m_file;
    const char *m_end;
    HeaderParser m_header;
    QVector<Definition> m_definitions;
    int m_itemsSeen = 0;
    QVector<CurveName> m_lastCurves;
    QSet<QString> m_names;
    QStringList m_otherData;
    int m_dataSections = 0;
};

QString Reader::headerText(QChar section, const char *mnemonic) const
{
    const HeaderItem *item = m_header.header().find(section, {QString::fromLatin1(mnemonic)});
    return item ? item->value : QString();
}

void Reader::beginDefinition(const QString &title)
{
    m_definitions.append({titlePart(title, 0), {}, false});
}

void Reader::read()
{
    const char *stop = nullptr;
    for (const char *at = m_text.bytes.constData(); at < m_end; at = base::nextLine(stop, m_end)) {
        stop = base::lineStop(at, m_end);
        const char *first = at;
        while (first < stop && base::isSpace(*first))
            ++first;
        if (first == stop || *first != '~') {
            if (m_header.isInSection())
                m_header.readLine(decodeFront(at, stop, m_text.encoding, longestHeaderLine));
            for (; m_itemsSeen < m_header.header().items.size(); ++m_itemsSeen) {
                const HeaderItem &item = m_header.header().items.at(m_itemsSeen);
                if (item.section == u'C' && m_definitions.last().curves.size() < maximumCurves)
                    m_definitions.last().curves.append({item.mnemonic, item.unit});
            }
            continue;
        }
        const QString title = decodeFront(first, stop, m_text.encoding, longestHeaderLine);
        const QChar section = m_header.beginSection(title);
        const bool isUnnamed = title.size() < 2 || title.at(1).isSpace();
        if (section == u'C')
            beginDefinition(title);
        else if (section == u'A' || (isUnnamed && !newCurves().isEmpty()))
            stop = readData(title, base::nextLine(stop, m_end));
        else if (titlePart(title, 0).section(u'[', 0, 0).endsWith(QLatin1String("_DATA")))
            m_otherData.append(title.section(u'|', 0, 0).trimmed());
    }
    noteNames(QStringLiteral("Sections that hold no logs are left out: "), m_otherData);
    if (m_dataSections == 0)
        note(QStringLiteral("The file has no section with logs."));
}

/// The curves named since the last data section.
QVector<CurveName> Reader::newCurves()
{
    QVector<CurveName> curves;
    for (const Definition &definition : qAsConst(m_definitions))
        if (!definition.isUsed)
            curves += definition.curves;
    return curves;
}

/// The columns of a data section: those of the section that its title names, else those named since the data section
/// before, else that one's again; without any, what the title itself lists.
QVector<CurveName> Reader::curvesFor(const QString &title, const QStringList &firstRow)
{
    const QString named = titlePart(title, 1);
    for (Definition &definition : m_definitions) {
        if (!named.isEmpty() && definition.title == named && !definition.curves.isEmpty()) {
            definition.isUsed = true;
            return definition.curves;
        }
    }
    QVector<CurveName> curves = newCurves();
    for (Definition &definition : m_definitions)
        definition.isUsed = true;
    if (curves.isEmpty())
        curves = m_lastCurves;
    const QStringList words = title.simplified().split(u' ').mid(1);
    if (curves.isEmpty() && words.size() > 1 && words.size() == firstRow.size()) {
        for (const QString &word : words)
            curves.append({word, QString()});
        note(QStringLiteral("The file names no curves; the names stand in the title of its data."));
    }
    return curves;
}

/// The first line at or behind \a at that holds data, empty when the section has none.
QString Reader::firstLine(const char *at) const
{
    QString line;
    base::forEachLine(at, m_end, [&](const char *begin, const char *end) {
        line = decodeFront(begin, end, m_text.encoding, longestHeaderLine);
        const QString trimmed = line.trimmed();
        if (!trimmed.isEmpty() && !trimmed.startsWith(u'#'))
            return false;
        line.clear();
        return true;
    });
    return line.trimmed().startsWith(u'~') ? QString() : line;
}

/// What separates the values: what DLM says, where the line holds it; else what gives as many values as there are
/// columns.
Delimiter Reader::delimiterOf(const QString &line, int columns) const
{
    const QString declared = headerText(u'V', "DLM").toUpper();
    if (declared.startsWith(QLatin1String("COMMA")) && line.contains(u','))
        return Delimiter::Comma;
    if (declared.startsWith(QLatin1String("TAB")) && line.contains(u'\t'))
        return Delimiter::Tab;
    // Tabs count as blanks elsewhere; where each ends a value, two of them have an empty one between.
    if (line.contains(u'\t') && valuesOfLine(line, Delimiter::Tab).size() == columns)
        return Delimiter::Tab;
    const QStringList words = valuesOfLine(line, Delimiter::Blank);
    const auto endsInDelimiter = [](const QString &word) { return word.endsWith(u',') || word.endsWith(u';'); };
    if (words.size() == columns && std::none_of(words.begin(), words.end(), endsInDelimiter))
        return Delimiter::Blank;
    for (const Delimiter delimiter : {Delimiter::Semicolon, Delimiter::Tab, Delimiter::Comma}) {
        const int values = valuesOfLine(line, delimiter).size();
        if (values > 1 && (values == columns || values == columns + 1))
            return delimiter;
    }
    return Delimiter::Blank;
}

DataFormat Reader::formatOf(const char *at, int columns) const
{
    DataFormat format;
    format.columns = columns;
    format.isWrapped = m_header.header().wrapped;
    const QString line = firstLine(at);
    const bool declaresComma = headerText(u'V', "DLM").startsWith(QLatin1String("COMMA"), Qt::CaseInsensitive);
    format.delimiter = format.isWrapped && !declaresComma ? Delimiter::Blank : delimiterOf(line, columns);
    const bool hasPoint = line.contains(u'.');
    format.isDecimalComma = format.delimiter != Delimiter::Comma && !hasPoint && line.contains(u',');
    if (const std::optional<double> null = base::parseNumber(headerText(u'W', "NULL"))) {
        format.hasNull = true;
        format.null = *null;
    }
    return format;
}

bool Reader::isAtStart(const QString &value) const
{
    const std::optional<double> depth = base::parseNumber(value);
    for (const char *mnemonic : {"STRT", "STOP"}) {
        const std::optional<double> given =
            base::parseNumber(headerText(u'W', mnemonic).simplified().section(u' ', 0, 0));
        if (depth && given && std::abs(*depth - *given) < 0.01)
            return true;
    }
    return false;
}

/// Which column holds the depths. Most often the first; but a file may name its depth behind the other curves while it
/// stands in front of them, or really have it further back.
void Reader::chooseDepth(QVector<CurveName> &curves, const QStringList &row, DataFormat &format)
{
    const auto found =
        std::find_if(curves.begin(), curves.end(), [](const CurveName &curve) { return isDepthName(curve.name); });
    const auto column = static_cast<int>(found - curves.begin());
    if (found == curves.end() || column == 0)
        return;
    const QString first = row.value(0);
    if (isAtStart(first) && !format.isWrapped) {
        note(QStringLiteral("The depth is named as curve %1, but its values stand first; they are taken so.")
                 .arg(column + 1));
        std::rotate(curves.begin(), found, found + 1);
    } else if (!format.isWrapped && (isAtStart(row.value(column)) || !base::parseNumber(first))) {
        note(QStringLiteral("Column %1 (%2) is taken as the depth.").arg(column + 1).arg(shortened(found->name)));
        format.depthColumn = column;
    }
}

const char *Reader::readData(const QString &title, const char *at)
{
    ++m_dataSections;
    QVector<CurveName> curves = curvesFor(title, valuesOfLine(firstLine(at), Delimiter::Blank));
    m_lastCurves = curves;
    DataFormat format = formatOf(at, curves.size());
    if (!curves.isEmpty())
        chooseDepth(curves, valuesOfLine(firstLine(at), format.delimiter), format);
    DataTable table(format, m_text.encoding);
    int withoutCurves = 0;
    const char *stop = at;
    for (; at < m_end; at = base::nextLine(stop, m_end)) {
        if (*at == '~')
            break;
        if (curves.isEmpty()) {
            stop = base::lineStop(at, m_end);
            withoutCurves += std::any_of(at, stop, [](char c) { return !base::isSpace(c); }) ? 1 : 0;
        } else {
            stop = table.readLine(at, m_end);
        }
    }
    table.finish();
    if (withoutCurves > 0)
        note(QStringLiteral("Data lines for which no curves are named are left out: %1.").arg(withoutCurves));
    if (!curves.isEmpty())
        takeTable(table, curves, format);
    // The caller goes on behind the line that ends here.
    return at < m_end ? at - 1 : m_end;
}

/// False when the section's first column is no depth.
bool Reader::setUnit(LogSet &set, const CurveName &depth)
{
    const HeaderItem *start = m_header.header().find(u'W', {QStringLiteral("STRT")});
    const QString unit = !depth.unit.isEmpty() ? depth.unit : start ? start->unit : QString();
    if (unit.isEmpty() && !isDepthName(depth.name)) {
        note(QStringLiteral("The first column, %1, is no depth by its name and has no unit: its section is left out.")
                 .arg(shortened(depth.name)));
        return false;
    }
    const std::optional<double> metres = unit.isEmpty() ? std::optional<double>(1) : metresPerUnit(unit);
    if (!metres) {
        note(QStringLiteral("The first column, %1, is no depth (its unit is \"%2\"): its section is left out.")
                 .arg(shortened(depth.name), shortened(unit)));
        return false;
    }
    if (unit.isEmpty())
        note(QStringLiteral("The depths have no unit; they are taken as metres."));
    if (start && metresPerUnit(start->unit).value_or(*metres) != *metres)
        note(QStringLiteral("STRT is in %1, the depths are in %2; the latter counts.")
                 .arg(shortened(start->unit), shortened(unit)));
    set.metresPerUnit = *metres;
    set.isInFeet = isImperial(unit);
    return true;
}

QString Reader::uniqueName(const QString &name, int column)
{
    const QString plain = name.trimmed().isEmpty() ? QStringLiteral("Column_%1").arg(column + 1) : name.trimmed();
    QString unique = plain;
    for (int n = 2; m_names.contains(unique); ++n)
        unique = QStringLiteral("%1_%2").arg(plain, QString::number(n));
    m_names.insert(unique);
    return unique;
}

void Reader::takeTable(DataTable &table, const QVector<CurveName> &curves, const DataFormat &format)
{
    LogSet set;
    set.depths = table.depths();
    QStringList texts;
    QStringList empty;
    QStringList numbered;
    int undefinedTexts = 0;
    if (!setUnit(set, curves.at(format.depthColumn)))
        return;
    for (int i = 0; i < curves.size(); ++i) {
        DataTable::Column &column = table.columns()[i];
        const QString shown = curves.at(i).name.isEmpty() ? QStringLiteral("(no name)") : curves.at(i).name;
        if (i == format.depthColumn)
            continue;
        if (column.texts > column.numbers) {
            texts.append(shown);
        } else if (column.numbers == 0) {
            empty.append(shown);
        } else {
            undefinedTexts += column.texts;
            const QString name = uniqueName(curves.at(i).name, i);
            if (name != curves.at(i).name.trimmed())
                numbered.append(QStringLiteral("%1 as %2").arg(shown, name));
            set.logs.append({curves.at(i).name.trimmed(), name, curves.at(i).unit, std::move(column.values)});
        }
    }
    noteNames(QStringLiteral("Columns of texts are left out: "), texts);
    if (set.depths.isEmpty())
        note(QStringLiteral("A data section without rows is left out."));
    else
        noteNames(QStringLiteral("Without a sample and so left out: "), empty);
    noteNames(QStringLiteral("Names that stand more than once or are missing: "), numbered);
    if (undefinedTexts > 0)
        note(QStringLiteral("Values that are no numbers are undefined: %1.").arg(undefinedTexts));
    if (table.rowsWithoutDepth() > 0)
        note(QStringLiteral("Rows without a depth are left out: %1.").arg(table.rowsWithoutDepth()));
    if (table.unevenRows() > 0)
        note(QStringLiteral("Rows with more or fewer values than there are curves: %1 of %2.")
                 .arg(table.unevenRows())
                 .arg(set.depths.size() + table.rowsWithoutDepth()));
    const bool isOrdered = std::is_sorted(set.depths.begin(), set.depths.end())
        || std::is_sorted(set.depths.rbegin(), set.depths.rend());
    if (!isOrdered && !set.logs.isEmpty())
        note(QStringLiteral("The depths go back and forth; the samples are brought into order."));
    if (!set.logs.isEmpty())
        m_file.sets.append(set);
}

QString openProblem(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("The LAS file %1 does not exist.").arg(path);
    // Only a regular file ends for sure; a pipe or a device may not.
    if (!info.isFile())
        return QStringLiteral("The LAS file %1 cannot be read: it is not a file.").arg(path);
    if (info.size() > maximumFileSize)
        return QStringLiteral("The LAS file %1 cannot be read: it holds 2 GB or more.").arg(path);
    return {};
}

} // namespace

int LogFile::logCount() const
{
    int count = 0;
    for (const LogSet &set : sets)
        count += set.logs.size();
    return count;
}

double LogSet::deepest() const
{
    double deepest = -std::numeric_limits<double>::infinity();
    for (int row = 0; row < depths.size(); ++row) {
        const auto hasSample = [row](const FileLog &log) { return !host::isUndefined(log.values.at(row)); };
        if (depths.at(row) > deepest && std::any_of(logs.begin(), logs.end(), hasSample))
            deepest = depths.at(row);
    }
    return deepest;
}

double LogFile::deepestM() const
{
    double deepest = -std::numeric_limits<double>::infinity();
    for (const LogSet &set : sets)
        deepest = std::max(deepest, set.deepest() * set.metresPerUnit);
    return deepest;
}

LogFile readLogs(const QString &path, const QByteArray &codec)
{
    LogFile result;
    result.error = openProblem(path);
    if (!result.error.isEmpty())
        return result;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        result.error = QStringLiteral("The LAS file %1 cannot be opened: %2").arg(path, file.errorString());
        return result;
    }
    try {
        QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError) {
            result.error = QStringLiteral("The LAS file %1 cannot be read: %2").arg(path, file.errorString());
            return result;
        }
        const Text text = prepareText(std::move(bytes), codec);
        if (text.bytes.contains('~'))
            Reader(text, result).read();
        else
            result.error =
                QStringLiteral("The file %1 is no LAS file: it has no line with a \"~\" in front.").arg(path);
    } catch (const std::bad_alloc &) {
        result = {};
        result.error = QStringLiteral("The LAS file %1 cannot be read: the memory is too small for it.").arg(path);
    }
    return result;
}

QStringList promisedLogs(const Header &header)
{
    QStringList names;
    for (const HeaderItem &item : header.items)
        if (item.section == u'C')
            names.append(item.mnemonic);
    const auto depth =
        std::find_if(names.begin(), names.end(), [](const QString &name) { return isDepthName(name); });
    if (!names.isEmpty())
        names.erase(depth == names.end() ? names.begin() : depth);
    return names;
}

} // namespace las
