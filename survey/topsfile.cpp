#include "survey/topsfile.h"

#include "base/numbers.h"
#include "base/textbytes.h"
#include "survey/nullvalues.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace survey {

namespace {

/// A line of the file as fields.
struct Row
{
    QStringList fields;
    int line = 0; ///< index of its text
};

/// A line that is neither empty nor a comment.
struct TextLine
{
    QString text;
    int number = 0; ///< in the file, from 1
};

// A comma that parts no fields may stand before the decimals; "1,234" may mean a thousand too, and is no number.
std::optional<double> number(QString text)
{
    const int comma = text.indexOf(u',');
    const bool isAmbiguous = comma >= 0 && comma <= 3 && text.size() - comma == 4;
    if (comma >= 0 && !isAmbiguous && !text.contains(u'.'))
        text.replace(comma, 1, u'.');
    return base::parseNumber(text);
}

// As no title is, also where it is no number that can be read.
bool isOfDigits(const QString &text)
{
    const auto isDigit = [](QChar c) { return c.isDigit(); };
    const auto isOfNumbers = [](QChar c) { return c.isDigit() || QStringLiteral("+-.,").contains(c); };
    return number(text)
        || (std::any_of(text.begin(), text.end(), isDigit) && std::all_of(text.begin(), text.end(), isOfNumbers));
}

QChar separatorOf(const QVector<TextLine> &lines)
{
    for (const QChar separator : {QChar(u'\t'), QChar(u';'), QChar(u',')}) {
        const auto holds = [separator](const TextLine &line) { return line.text.contains(separator); };
        if (std::count_if(lines.begin(), lines.end(), holds) * 2 > lines.size())
            return separator;
    }
    return u' ';
}

// Between blanks the last number is the depth and what stands in front of it the name.
QStringList fieldsOf(const QString &line, QChar separator)
{
    QStringList fields;
    if (separator != u' ') {
        for (const QString &field : line.split(separator))
            fields.append(field.trimmed().remove(u'"'));
        return fields;
    }
    const QStringList words = line.simplified().split(u' ');
    if (words.size() > 1 && number(words.first()) && !number(words.last()))
        return {words.first(), words.mid(1).join(u' ')};
    return {QStringList(words.mid(0, words.size() - 1)).join(u' '), words.last()};
}

struct Columns
{
    int well = -1;
    int name = -1;
    int depth = -1;
    std::optional<DepthUnit> unit;
};

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ');
}

std::optional<DepthUnit> unitOf(const QString &text)
{
    if (words("m metre metres meter meters").contains(text))
        return DepthUnit::Metre;
    if (words("ft f feet foot").contains(text))
        return DepthUnit::Foot;
    return std::nullopt;
}

int columnOf(const QStringList &titles, const QStringList &words)
{
    for (const QString &word : words)
        for (int column = 0; column < titles.size(); ++column)
            if (comparableName(titles.at(column)) == word)
                return column;
    return -1;
}

// A unit may stand behind the title: "MD (ft)", "Depth_m".
void findDepth(const QStringList &titles, const QStringList &words, Columns *columns)
{
    for (const QString &word : words)
        for (int column = 0; column < titles.size(); ++column) {
            const QString title = comparableName(titles.at(column));
            const std::optional<DepthUnit> unit =
                title.startsWith(word) ? unitOf(title.mid(word.size())) : std::nullopt;
            if (title != word && !unit)
                continue;
            columns->depth = column;
            columns->unit = unit;
            return;
        }
}

Columns columnsOfTitles(const QStringList &titles)
{
    Columns columns;
    columns.well = columnOf(titles, words("well wellname wellid uwi api sitid"));
    findDepth(titles, words("md depth topdepth top pick tops"), &columns);
    columns.name = columnOf(
        titles, words("formation form marker markername surface horizon zonename zone name topname unit stratunit"));
    return columns;
}

// The first column in which most of the lines have a number, and the first in which they have none.
Columns columnsOfValues(const QVector<Row> &rows)
{
    Columns columns;
    int width = 0;
    for (const Row &row : rows)
        width = qMax(width, row.fields.size());
    for (int column = 0; column < width; ++column) {
        int numbers = 0;
        int texts = 0;
        for (const Row &row : rows) {
            const QString field = row.fields.value(column);
            const bool isNumber = number(field).has_value();
            numbers += isNumber ? 1 : 0;
            texts += !isNumber && !field.isEmpty() ? 1 : 0;
        }
        if (numbers > texts && columns.depth < 0)
            columns.depth = column;
        else if (texts > numbers && columns.name < 0)
            columns.name = column;
    }
    return columns;
}

// The line below the titles that holds units only.
void takeUnits(QVector<Row> *rows, Columns *columns)
{
    if (rows->isEmpty() || columns->depth < 0)
        return;
    const std::optional<DepthUnit> unit = unitOf(comparableName(rows->first().fields.value(columns->depth)));
    if (!unit)
        return;
    columns->unit = unit;
    rows->removeFirst();
}

QVector<TextLine> textLines(const QByteArray &bytes)
{
    QVector<TextLine> lines;
    int lineNumber = 0;
    for (const QString &line : base::splitLines(base::decodeText(bytes))) {
        ++lineNumber;
        if (!line.trimmed().isEmpty() && !line.trimmed().startsWith(u'#'))
            lines.append({line, lineNumber});
    }
    return lines;
}

bool isNullText(const QString &text)
{
    const std::optional<double> value = number(text);
    return value && isUsualNull(*value);
}

// A null value as name stands where a zone ends without another below it.
QString lineProblem(const TopsLine &line, const QString &depthText, bool needsWell)
{
    const std::optional<double> depth = number(depthText);
    if (needsWell && comparableName(line.well).isEmpty())
        return QStringLiteral("no well");
    if (line.name.isEmpty() || isNullText(line.name))
        return QStringLiteral("no name");
    if (depthText.isEmpty() || isNullText(depthText))
        return QStringLiteral("no depth");
    if (depth)
        return *depth < 0 ? QStringLiteral("a depth above the kelly bushing") : QString();
    return isOfDigits(depthText) ? QStringLiteral("a depth that is no clear number")
                                 : QStringLiteral("a depth that is no number");
}

// What keeps the whole file from being a table of tops.
QString fileProblem(const TopsFile &file, const Columns &columns, const QStringList &titles)
{
    if (file.lines.isEmpty() && file.leftOut.isEmpty())
        return QStringLiteral("the file holds no line with a name and a depth.");
    const QString found =
        titles.isEmpty() ? QString() : QStringLiteral(" Its columns are %1.").arg(titles.join(QStringLiteral(", ")));
    if (columns.name < 0)
        return QStringLiteral("no column holds names of tops.%1 The title of such a column is Formation, Marker, "
                              "Surface, Zone or Name.")
            .arg(found);
    if (columns.depth < 0)
        return QStringLiteral("no column holds depths.%1 The title of such a column is MD, Depth or Top.").arg(found);
    if (!file.lines.isEmpty())
        return {};
    return file.hasWells ? QStringLiteral("no line has a well, a name and a depth that can be read.")
                         : QStringLiteral("no line has a name and a depth that can be read.");
}

QVector<TopsLine> linesOf(const QVector<TopsLine> &all, const QStringList &names)
{
    QStringList wanted;
    for (const QString &name : names)
        wanted.append(comparableName(name));
    QVector<TopsLine> lines;
    for (const TopsLine &line : all)
        if (wanted.contains(comparableName(line.well)) && !comparableName(line.well).isEmpty())
            lines.append(line);
    return lines;
}

} // namespace

QString comparableName(const QString &name)
{
    QString letters;
    for (const QChar c : name.toCaseFolded())
        if (c.isLetterOrNumber())
            letters += c;
    return letters;
}

TopsFile parseTops(const QByteArray &bytes)
{
    TopsFile file;
    const QVector<TextLine> lines = textLines(bytes);
    const QChar separator = separatorOf(lines);
    QVector<Row> rows;
    for (int i = 0; i < lines.size(); ++i)
        rows.append({fieldsOf(lines.at(i).text, separator), i});
    Columns columns;
    QStringList titles;
    if (!rows.isEmpty() && std::none_of(rows.first().fields.begin(), rows.first().fields.end(), isOfDigits)) {
        titles = rows.first().fields;
        columns = columnsOfTitles(titles);
        rows.removeFirst();
        takeUnits(&rows, &columns);
    }
    if (columns.depth < 0 || columns.name < 0) {
        const Columns found = columnsOfValues(rows);
        columns.depth = columns.depth < 0 ? found.depth : columns.depth;
        columns.name = columns.name < 0 ? found.name : columns.name;
    }
    file.hasWells = columns.well >= 0;
    file.unit = columns.unit;
    for (const Row &row : qAsConst(rows)) {
        const QString depthText = row.fields.value(columns.depth);
        const TextLine &source = lines.at(row.line);
        TopsLine line{row.fields.value(columns.well), row.fields.value(columns.name), 0, file.unit, source.number};
        line.problem = lineProblem(line, depthText, file.hasWells);
        if (line.problem.isEmpty())
            line.depth = number(depthText).value_or(0);
        else
            line.text = source.text;
        (line.problem.isEmpty() ? file.lines : file.leftOut).append(line);
    }
    file.problem = fileProblem(file, columns, titles);
    return file;
}

QVector<TopsLine> topsOf(const TopsFile &file, const QStringList &names)
{
    return file.hasWells ? linesOf(file.lines, names) : file.lines;
}

QStringList wellsOf(const TopsFile &file)
{
    QStringList wells;
    QSet<QString> known{QString()};
    for (const TopsLine &line : file.lines) {
        if (known.contains(comparableName(line.well)))
            continue;
        known.insert(comparableName(line.well));
        wells.append(line.well);
    }
    return wells;
}

int leftOutOf(const TopsFile &file, const QStringList &names)
{
    return file.hasWells ? linesOf(file.leftOut, names).size() : file.leftOut.size();
}

} // namespace survey
