#include "welldata/markerrows.h"

#include "base/numbers.h"
#include "datastore/wellrecord.h"

#include <QHash>
#include <QSet>

namespace welldata {

namespace {

constexpr int longestNamedName = 60;

double numberOf(const TableRow &row, MarkerNumber number)
{
    return row.numbers[number].value();
}

QColor shownColor(const QColor &stored)
{
    return stored.rgb() == QColor(Qt::white).rgb() ? QColor(Qt::black) : stored;
}

QString depthText(double depthM)
{
    return QString::fromLatin1(base::formatGeneral(depthM));
}

bool isOutside(const NumberCell &depth, double trackEndM)
{
    return trackEndM > 0 && depth.isNumber()
        && (depth.toFloat() < 0 || depth.toFloat() > static_cast<float>(trackEndM));
}

} // namespace

QVector<TableColumn> markerColumns()
{
    return {
        {QStringLiteral("Name"), CellKind::Name, 0, 240, QStringLiteral("The name of the marker")},
        {QStringLiteral("MD"), CellKind::Number, MdNumber, 110,
         QStringLiteral("Measured depth along hole from the kelly bushing, in metres. This is what is stored.")},
        {QStringLiteral("TVD"), CellKind::Number, TvdNumber, 110,
         QStringLiteral("For a stored marker the measured depth; once it is edited, the measured depth less the "
                        "elevation of the kelly bushing. In metres; it is not stored.")},
        {QStringLiteral("TVDSS"), CellKind::Number, TvdssNumber, 110,
         QStringLiteral("For a stored marker the measured depth less the elevation of the kelly bushing; once it is "
                        "edited, less the well's second elevation (ground level) too. In metres; the host computes "
                        "its own.")},
        {QStringLiteral("Color"), CellKind::Color, 0, 90,
         QStringLiteral("Double-click, or press Enter or Space, to choose the colour")},
    };
}

MarkerElevations::MarkerElevations(const WellRecord &well)
    : kb(static_cast<float>(well.kbElevation))
    , second(static_cast<float>(well.secondElevation))
{
}

QVector<TableRow> markerRows(const QVector<host::Marker> &markers, const MarkerElevations &elevations)
{
    QVector<TableRow> rows;
    rows.reserve(markers.size());
    for (const host::Marker &marker : markers) {
        TableRow row;
        row.name = marker.name;
        row.numbers[MdNumber] = row.numbers[TvdNumber] = NumberCell::of(static_cast<double>(marker.depth));
        row.numbers[TvdssNumber] = NumberCell::of(static_cast<double>(marker.depth - elevations.kb));
        row.color = shownColor(marker.color);
        rows.append(row);
    }
    return rows;
}

void computeMarkerDepths(TableRow *row, const MarkerElevations &elevations)
{
    const float tvd = row->numbers[MdNumber].toFloat() - elevations.kb;
    row->numbers[TvdNumber] = NumberCell::of(static_cast<double>(tvd));
    row->numbers[TvdssNumber] = NumberCell::of(static_cast<double>(tvd - elevations.second));
}

QVector<TableRow> markerRows(const ColumnFile &file, const MarkerElevations &elevations)
{
    QVector<TableRow> rows;
    rows.reserve(file.rowCount());
    for (int i = 0; i < file.rowCount(); ++i) {
        TableRow row;
        row.name = textfields::toString(file.field(i, 0));
        row.numbers[MdNumber] = NumberCell::read(file.field(i, 1));
        row.numbers[TvdssNumber] =
            NumberCell::of(static_cast<double>(row.numbers[MdNumber].toFloat() - elevations.kb));
        rows.append(row);
    }
    return rows;
}

MarkerSetRecord markerRecord(const QString &wellName, const QVector<TableRow> &rows)
{
    MarkerSetRecord record;
    record.wellName = wellName;
    for (const TableRow &row : rows) {
        record.names.append(row.name.trimmed());
        record.measuredDepths.append(row.numbers[MdNumber].toFloat());
        record.subseaDepths.append(row.numbers[TvdssNumber].toFloat());
        record.colors.append(row.color);
    }
    return record;
}

QStringList markerProblems(const QVector<TableRow> &rows, double trackEndM)
{
    QStringList problems;
    QHash<QString, int> firstRows;
    for (int i = 0; i < rows.size(); ++i) {
        const TableRow &row = rows.at(i);
        const auto tell = [&problems, i](const QString &problem) {
            problems.append(QStringLiteral("Row %1: %2").arg(i + 1).arg(problem));
        };
        const QString name = row.name.trimmed();
        const NumberCell &depth = row.numbers[MdNumber];
        const int first = firstRows.value(name, i);
        if (name.isEmpty())
            tell(QStringLiteral("the name is empty"));
        else if (first != i)
            tell(QStringLiteral("the name \"%1\" occurs twice, in row %2 too")
                     .arg(name.left(longestNamedName), QString::number(first + 1)));
        else
            firstRows.insert(name, i);
        if (!depth.isNumber())
            tell(QStringLiteral("the depth \"%1\" is no number and becomes 0")
                     .arg(depth.text().left(longestNamedName)));
        else if (isOutside(depth, trackEndM))
            tell(QStringLiteral("the depth %1 is outside the well's track, 0 to %2")
                     .arg(depthText(numberOf(row, MdNumber)), depthText(trackEndM)));
    }
    return problems;
}

QVector<TableRow> storableMarkerRows(const QVector<TableRow> &rows, double trackEndM)
{
    QVector<TableRow> storable;
    QSet<QString> names;
    for (const TableRow &row : rows) {
        const QString name = row.name.trimmed();
        if (name.isEmpty() || names.contains(name))
            continue;
        names.insert(name);
        if (!isOutside(row.numbers[MdNumber], trackEndM))
            storable.append(row);
    }
    return storable;
}

QStringList undoneByStoring(const QVector<host::Marker> &shown, const QVector<host::Marker> &now,
                            const QVector<TableRow> &rows)
{
    QHash<QString, host::Marker> shownByName;
    for (const host::Marker &marker : shown)
        shownByName.insert(marker.name, marker);
    QHash<QString, TableRow> rowsByName;
    for (const TableRow &row : rows)
        rowsByName.insert(row.name.trimmed(), row);
    QStringList lines;
    const auto tell = [&lines](const QString &name, const char *what) {
        lines.append(QStringLiteral("The marker \"%1\" %2").arg(name.left(longestNamedName), QLatin1String(what)));
    };
    const auto isAlike = [](const host::Marker &marker, float depth, const QColor &color) {
        return marker.depth == depth && shownColor(marker.color).rgb() == shownColor(color).rgb();
    };
    QSet<QString> namesNow;
    for (const host::Marker &marker : now) {
        namesNow.insert(marker.name);
        const auto before = shownByName.constFind(marker.name);
        const auto row = rowsByName.constFind(marker.name);
        const bool isNew = before == shownByName.constEnd();
        const bool isInTable = row != rowsByName.constEnd();
        if (isNew ? isInTable : isAlike(marker, before->depth, before->color))
            continue;
        if (isNew)
            tell(marker.name, "came into the well since the table was shown, and is deleted");
        else if (!isInTable)
            tell(marker.name, "was changed in the well since the table was shown, and is deleted");
        else if (!isAlike(marker, row->numbers[MdNumber].toFloat(), row->color))
            tell(marker.name, "was changed in the well since the table was shown, and becomes what the table shows");
    }
    for (const host::Marker &marker : shown) {
        if (!namesNow.contains(marker.name) && rowsByName.contains(marker.name))
            tell(marker.name, "was deleted from the well since the table was shown, and comes back");
    }
    return lines;
}

} // namespace welldata
