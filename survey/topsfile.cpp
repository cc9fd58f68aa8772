#include "survey/topsfile.h"

#include "base/numbers.h"
#include "base/textbytes.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace survey {

namespace {

QString comparable(const QString &name)
{
    QString letters;
    for (const QChar c : name.toCaseFolded())
        if (c.isLetterOrNumber())
            letters += c;
    return letters;
}

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

QChar separatorOf(const QVector<QString> &lines)
{
    for (const QChar separator : {QChar(u'\t'), QChar(u';'), QChar(u',')}) {
        const auto holds = [separator](const QString &line) { return line.contains(separator); };
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
            if (comparable(titles.at(column)) == word)
                return column;
    return -1;
}

// A unit may stand behind the title: "MD (ft)", "Depth_m".
void findDepth(const QStringList &titles, const QStringList &words, Columns *columns)
{
    for (const QString &word : words)
        for (int column = 0; column < titles.size(); ++column) {
            const QString title = comparable(titles.at(column));
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
Columns columnsOfValues(const QVector<QStringList> &rows)
{
    Columns columns;
    int width = 0;
    for (const QStringList &row : rows)
        width = qMax(width, row.size());
    for (int column = 0; column < width; ++column) {
        int numbers = 0;
        int texts = 0;
        for (const QStringList &row : rows) {
            const bool isNumber = number(row.value(column)).has_value();
            numbers += isNumber ? 1 : 0;
            texts += !isNumber && !row.value(column).isEmpty() ? 1 : 0;
        }
        if (numbers > texts && columns.depth < 0)
            columns.depth = column;
        else if (texts > numbers && columns.name < 0)
            columns.name = column;
    }
    return columns;
}

// The line below the titles that holds units only.
void takeUnits(QVector<QStringList> *rows, Columns *columns)
{
    if (rows->isEmpty() || columns->depth < 0)
        return;
    const std::optional<DepthUnit> unit = unitOf(comparable(rows->first().value(columns->depth)));
    if (!unit)
        return;
    columns->unit = unit;
    rows->removeFirst();
}

QVector<TopsLine> linesOf(const QVector<TopsLine> &all, const QStringList &names)
{
    QStringList wanted;
    for (const QString &name : names)
        wanted.append(comparable(name));
    QVector<TopsLine> lines;
    for (const TopsLine &line : all)
        if (wanted.contains(comparable(line.well)) && !comparable(line.well).isEmpty())
            lines.append(line);
    return lines;
}

} // namespace

TopsFile parseTops(const QByteArray &bytes)
{
    TopsFile file;
    QVector<QString> lines;
    for (const QString &line : base::splitLines(base::decodeText(bytes)))
        if (!line.trimmed().isEmpty() && !line.trimmed().startsWith(u'#'))
            lines.append(line);
    const QChar separator = separatorOf(lines);
    QVector<QStringList> rows;
    for (const QString &line : qAsConst(lines))
        rows.append(fieldsOf(line, separator));
    Columns columns;
    if (!rows.isEmpty() && std::none_of(rows.first().begin(), rows.first().end(), isOfDigits)) {
        columns = columnsOfTitles(rows.first());
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
    for (const QStringList &row : qAsConst(rows)) {
        const std::optional<double> depth = number(row.value(columns.depth));
        const TopsLine line{row.value(columns.well), row.value(columns.name), depth.value_or(0)};
        const bool isTop = depth && *depth >= 0 && !line.name.isEmpty();
        (isTop ? file.lines : file.leftOut).append(line);
    }
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
        if (known.contains(comparable(line.well)))
            continue;
        known.insert(comparable(line.well));
        wells.append(line.well);
    }
    return wells;
}

int leftOutOf(const TopsFile &file, const QStringList &names)
{
    return file.hasWells ? linesOf(file.leftOut, names).size() : file.leftOut.size();
}

} // namespace survey
