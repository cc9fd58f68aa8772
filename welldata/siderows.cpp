#include "welldata/siderows.h"

#include "datastore/curvegroups.h"

#include <algorithm>

namespace welldata {

namespace {

constexpr int namedRows = 10;

// Why a text cannot stand in a line of the side file; empty when it can.
QString fieldProblem(const QString &text, const char *what)
{
    if (text.contains(QLatin1Char('|')))
        return QStringLiteral("the %1 holds a \"|\"").arg(QLatin1String(what));
    const bool isBroken = std::any_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar::LineSeparator
            || c == QChar::ParagraphSeparator;
    });
    return isBroken ? QStringLiteral("the %1 holds a line break").arg(QLatin1String(what)) : QString();
}

NumberCell asRead(float value)
{
    return NumberCell::of(static_cast<double>(value), NumberCell::Digits::Shortest);
}

} // namespace

QVector<TableColumn> zoneColumns()
{
    return {
        {QStringLiteral("Name"), CellKind::Name, 0, 240, QStringLiteral("The name of the zone")},
        {QStringLiteral("Start Depth"), CellKind::Number, StartNumber, 120,
         QStringLiteral("Upper end of the zone: measured depth (MD) along hole from the kelly bushing, in metres")},
        {QStringLiteral("End Depth"), CellKind::Number, EndNumber, 120,
         QStringLiteral("Lower end of the zone: measured depth (MD) along hole from the kelly bushing, in metres")},
        {QStringLiteral("Zone Type"), CellKind::Choice, 0, 150, QStringLiteral("What the zone produces"),
         zoneTypeNames()},
    };
}

QVector<TableColumn> pointColumns()
{
    return {
        {QStringLiteral("Depth"), CellKind::Number, DepthNumber, 130,
         QStringLiteral("Measured depth (MD) along hole from the kelly bushing, in metres")},
        {QStringLiteral("Value"), CellKind::Number, ValueNumber, 130,
         QStringLiteral("The measured value, in the unit of the logs of this group")},
    };
}

QVector<TableRow> zoneRows(const PerforationRecord &record)
{
    QVector<TableRow> rows;
    rows.reserve(record.zoneCount);
    for (int i = 0; i < record.zoneCount; ++i) {
        TableRow row;
        row.name = record.names.at(i);
        row.numbers[StartNumber] = asRead(record.tops.at(i));
        row.numbers[EndNumber] = asRead(record.bottoms.at(i));
        row.choice = record.zoneTypes.at(i);
        rows.append(row);
    }
    return rows;
}

QVector<TableRow> zoneRows(const ColumnFile &file)
{
    QVector<TableRow> rows;
    rows.reserve(file.rowCount());
    for (int i = 0; i < file.rowCount(); ++i) {
        TableRow row;
        row.name = textfields::toString(file.field(i, 0));
        row.numbers[StartNumber] = NumberCell::read(file.field(i, 1));
        row.numbers[EndNumber] = NumberCell::read(file.field(i, 2));
        row.choice = textfields::toString(file.field(i, 3));
        rows.append(row);
    }
    return rows;
}

PerforationRecord zoneRecord(const QString &wellName, const QVector<TableRow> &rows)
{
    PerforationRecord record;
    record.wellName = wellName;
    record.zoneCount = rows.size();
    for (const TableRow &row : rows) {
        record.names.append(row.name);
        record.tops.append(row.numbers[StartNumber].toFloat());
        record.bottoms.append(row.numbers[EndNumber].toFloat());
        record.zoneTypes.append(row.choice);
    }
    return record;
}

QVector<int> replaceUnknownTypes(QVector<TableRow> *rows)
{
    const QStringList types = zoneTypeNames();
    QVector<int> unknown;
    for (int i = 0; i < rows->size(); ++i) {
        if (types.contains(rows->at(i).choice))
            continue;
        (*rows)[i].choice = types.first();
        unknown.append(i + 1);
    }
    return unknown;
}

QStringList zoneProblems(const QVector<TableRow> &rows)
{
    QStringList problems;
    for (int i = 0; i < rows.size(); ++i) {
        const TableRow &row = rows.at(i);
        QString problem = fieldProblem(row.name, "name");
        if (row.name.trimmed().isEmpty() && problem.isEmpty())
            problem = QStringLiteral("the name is empty");
        if (problem.isEmpty())
            problem = fieldProblem(row.choice, "zone type");
        if (!problem.isEmpty())
            problems.append(QStringLiteral("Row %1: %2").arg(i + 1).arg(problem));
    }
    return problems;
}

QVector<TableRow> pointRows(const CalibrationRecord &record)
{
    const int count = qMin(record.depths.size(), record.values.size());
    QVector<TableRow> rows(count);
    for (int i = 0; i < count; ++i) {
        rows[i].numbers[DepthNumber] = NumberCell::of(static_cast<double>(record.depths.at(i)));
        rows[i].numbers[ValueNumber] = NumberCell::of(static_cast<double>(record.values.at(i)));
    }
    return rows;
}

QVector<TableRow> pointRows(const ColumnFile &file)
{
    QVector<TableRow> rows(file.rowCount());
    for (int i = 0; i < rows.size(); ++i) {
        rows[i].numbers[DepthNumber] = NumberCell::read(file.field(i, 0));
        rows[i].numbers[ValueNumber] = NumberCell::read(file.field(i, 1));
    }
    return rows;
}

CalibrationRecord pointRecord(const QString &wellName, const QString &groupName, const QVector<TableRow> &rows)
{
    CalibrationRecord record;
    record.wellName = wellName;
    record.groupName = groupName;
    for (const TableRow &row : rows) {
        record.depths.append(row.numbers[DepthNumber].toFloat());
        record.values.append(row.numbers[ValueNumber].toFloat());
    }
    return record;
}

QVector<int> rowsWithoutNumber(const QVector<TableRow> &rows)
{
    QVector<int> without;
    for (int i = 0; i < rows.size(); ++i) {
        const auto &numbers = rows.at(i).numbers;
        if (!numbers[0].isNumber() || !numbers[1].isNumber())
            without.append(i + 1);
    }
    return without;
}

QString rowList(const QVector<int> &rows)
{
    QStringList numbers;
    for (int i = 0; i < qMin(rows.size(), namedRows); ++i)
        numbers.append(QString::number(rows.at(i)));
    QString list =
        (rows.size() == 1 ? QStringLiteral("row ") : QStringLiteral("rows ")) + numbers.join(QStringLiteral(", "));
    if (rows.size() > namedRows)
        list += QStringLiteral(" and %1 more").arg(rows.size() - namedRows);
    return list;
}

} // namespace welldata
