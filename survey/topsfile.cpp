#include "survey/topsfile.h"

#include "base/numbers.h"
#include "base/textbytes.h"

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

bool isNumber(const QString &text)
{
    return base::parseNumber(text).has_value();
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
    if (words.size() > 1 && isNumber(words.first()) && !isNumber(words.last()))
        return {words.first(), words.mid(1).join(u' ')};
    return {QStringList(words.mid(0, words.size() - 1)).join(u' '), words.last()};
}

struct Columns
{
    int well = -1;
    int name = -1;
    int depth = -1;
};

int columnOf(const QStringList &titles, const QStringList &words)
{
    for (const QString &word : words)
        for (int column = 0; column < titles.size(); ++column)
            if (comparable(titles.at(column)) == word)
                return column;
    return -1;
}

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(u' ');
}

Columns columnsOfTitles(const QStringList &titles)
{
    Columns columns;
    columns.well = columnOf(titles, words("well wellname wellid uwi api sitid"));
    columns.depth = columnOf(titles, words("md mdm mdft depth depthm depthft topdepth top pick tops"));
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
            numbers += isNumber(row.value(column)) ? 1 : 0;
            texts += !row.value(column).isEmpty() && !isNumber(row.value(column)) ? 1 : 0;
        }
        if (numbers > texts && columns.depth < 0)
            columns.depth = column;
        else if (texts > numbers && columns.name < 0)
            columns.name = column;
    }
    return columns;
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
    const bool hasTitles = !rows.isEmpty() && std::none_of(rows.first().begin(), rows.first().end(), isNumber);
    if (hasTitles) {
        columns = columnsOfTitles(rows.first());
        rows.removeFirst();
    }
    if (columns.depth < 0 || columns.name < 0) {
        const Columns found = columnsOfValues(rows);
        columns.depth = columns.depth < 0 ? found.depth : columns.depth;
        columns.name = columns.name < 0 ? found.name : columns.name;
    }
    file.hasWells = columns.well >= 0;
    int leftOut = 0;
    for (const QStringList &row : qAsConst(rows)) {
        const std::optional<double> depth = base::parseNumber(row.value(columns.depth));
        const QString name = row.value(columns.name);
        if (depth && *depth >= 0 && !name.isEmpty())
            file.lines.append({row.value(columns.well), name, *depth});
        else
            ++leftOut;
    }
    if (leftOut > 0)
        file.notices.append(QStringLiteral("Lines without a name or a depth are left out: %1.").arg(leftOut));
    return file;
}

QVector<TopsLine> topsOf(const TopsFile &file, const QStringList &names)
{
    if (!file.hasWells)
        return file.lines;
    QStringList wanted;
    for (const QString &name : names)
        wanted.append(comparable(name));
    QVector<TopsLine> lines;
    for (const TopsLine &line : file.lines)
        if (wanted.contains(comparable(line.well)) && !comparable(line.well).isEmpty())
            lines.append(line);
    return lines;
}

} // namespace survey
