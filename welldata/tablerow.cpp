#include "welldata/tablerow.h"

#include "base/numbers.h"

#include <cmath>
#include <limits>
#include <optional>

namespace welldata {

namespace {

constexpr int linesInBox = 12;

bool isStorable(double value)
{
    return std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

std::optional<double> storable(const std::optional<double> &value)
{
    return value && isStorable(*value) ? value : std::nullopt;
}

} // namespace

NumberCell NumberCell::of(double value, Digits digits)
{
    NumberCell cell;
    cell.m_isNumber = isStorable(value);
    cell.m_value = cell.m_isNumber ? value : 0;
    cell.m_digits = digits;
    return cell;
}

NumberCell NumberCell::read(textfields::Field field)
{
    if (const auto value = storable(base::parseNumber(field.data(), field.data() + field.size())))
        return of(*value);
    NumberCell cell;
    cell.m_typed = textfields::toString(field);
    return cell;
}

QString NumberCell::text() const
{
    if (!m_typed.isNull() || !m_isNumber)
        return m_typed;
    return QString::fromLatin1(m_digits == Digits::Six ? base::formatGeneral(m_value)
                                                       : base::formatShortest(static_cast<float>(m_value)));
}

void NumberCell::setText(const QString &text)
{
    if (text == this->text())
        return;
    m_typed = text.isNull() ? QString(QLatin1String("")) : text;
    const auto value = storable(base::parseNumber(QString(text).replace(QLatin1Char(','), QLatin1Char('.'))));
    m_isNumber = value.has_value();
    m_value = value.value_or(0);
}

TableRow newRow(const QVector<TableColumn> &columns)
{
    TableRow row;
    for (const TableColumn &column : columns)
        if (column.kind == CellKind::Choice)
            row.choice = column.choices.value(0);
    return row;
}

QString cellText(const TableRow &row, const TableColumn &column)
{
    switch (column.kind) {
    case CellKind::Name:
        return row.name;
    case CellKind::Number:
        return row.numbers.at(static_cast<size_t>(column.number)).text();
    case CellKind::Choice:
        return row.choice;
    case CellKind::Color:
        break;
    }
    return row.color.name();
}

bool setCellText(TableRow *row, const TableColumn &column, const QString &text)
{
    switch (column.kind) {
    case CellKind::Name:
        row->name = text;
        return true;
    case CellKind::Number:
        row->numbers.at(static_cast<size_t>(column.number)).setText(text);
        return true;
    case CellKind::Choice:
        if (!column.choices.contains(text))
            return false;
        row->choice = text;
        return true;
    case CellKind::Color:
        break;
    }
    const QColor color(text);
    if (color.isValid())
        row->color = color;
    return color.isValid();
}

QStringList firstOf(const QStringList &lines)
{
    if (lines.size() <= linesInBox)
        return lines;
    return lines.mid(0, linesInBox) + QStringList(QStringLiteral("… and %1 more").arg(lines.size() - linesInBox));
}

} // namespace welldata
