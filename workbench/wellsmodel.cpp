#include "workbench/wellsmodel.h"

#include "base/numbers.h"
#include "survey/wellnames.h"
#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace workbench {

namespace {

constexpr double largestPlainNumber = 1e12;
constexpr int decimals = 2;
const QLatin1String unknown("?");

double numberOf(const survey::WellSummary &well, int column)
{
    const auto count = [](int number) {
        return number == survey::WellSummary::unknownCount ? survey::WellSummary::unknownNumber
                                                           : static_cast<double>(number);
    };
    switch (column) {
    case WellsModel::XColumn:
        return well.x;
    case WellsModel::YColumn:
        return well.y;
    case WellsModel::KbColumn:
        return well.kbElevation;
    case WellsModel::TotalDepthColumn:
        return well.totalDepth;
    case WellsModel::LogsColumn:
        return count(well.logCount);
    default:
        return count(well.markerCount);
    }
}

QString textOf(const survey::WellSummary &well, int column)
{
    if (column == WellsModel::NameColumn)
        return well.name;
    const double number = numberOf(well, column);
    if (!std::isfinite(number))
        return unknown;
    if (std::fabs(number) >= largestPlainNumber)
        return QString::fromLatin1(base::formatGeneral(number, 6));
    const bool isCount = column == WellsModel::LogsColumn || column == WellsModel::MarkersColumn;
    // What rounds to "-0.00" is a plain zero.
    const double scale = std::pow(10.0, decimals);
    return QString::fromLatin1(
        base::formatFixed(std::fabs(number) * scale < 0.5 ? 0.0 : number, isCount ? 0 : decimals));
}

QVariant sortValue(const survey::WellSummary &well, int place, int column)
{
    if (column == WellsModel::NameColumn)
        return place;
    const double number = numberOf(well, column);
    return std::isnan(number) ? QVariant() : QVariant(number);
}

} // namespace

WellsModel::WellsModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void WellsModel::setWells(const QVector<survey::WellSummary> &wells, survey::DepthUnit unit)
{
    beginResetModel();
    m_wells = wells;
    m_unit = unit;
    m_places.resize(wells.size());
    QVector<int> rows(wells.size());
    std::iota(rows.begin(), rows.end(), 0);
    std::stable_sort(rows.begin(), rows.end(), [&wells](int a, int b) {
        return survey::isNaturallyBefore(wells.at(a).name, wells.at(b).name);
    });
    for (int place = 0; place < rows.size(); ++place)
        m_places[rows.at(place)] = place;
    endResetModel();
    emit headerDataChanged(Qt::Horizontal, KbColumn, TotalDepthColumn);
}

int WellsModel::rowOf(const QString &key) const
{
    for (int row = 0; row < m_wells.size(); ++row)
        if (m_wells.at(row).key == key)
            return row;
    return -1;
}

int WellsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_wells.size();
}

int WellsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant WellsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {}; // a view that has no current cell asks too, when it is to copy it
    const survey::WellSummary &well = m_wells.at(index.row());
    const int column = index.column();
    const bool isUnreadable = !well.error.isEmpty();
    switch (role) {
    case Qt::DisplayRole:
        return textOf(well, column);
    case sortRole:
        return sortValue(well, m_places.at(index.row()), column);
    case Qt::TextAlignmentRole:
        return static_cast<int>((column == NameColumn ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return isUnreadable ? QVariant(toolTipText(well.error)) : QVariant();
    case Qt::ForegroundRole:
        return isUnreadable ? QVariant(problemText(QApplication::palette())) : QVariant();
    case Qt::DecorationRole:
        return isUnreadable && column == NameColumn
            ? QVariant(QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning))
            : QVariant();
    default:
        return {};
    }
}

QVariant WellsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const QStringList titles{
        QStringLiteral("Well"),
        QStringLiteral("X"),
        QStringLiteral("Y"),
        survey::titleWithUnit(QStringLiteral("KB"), m_unit),
        survey::titleWithUnit(QStringLiteral("TD"), m_unit),
        QStringLiteral("Logs"),
        QStringLiteral("Markers"),
    };
    const QString unitName = survey::pluralName(m_unit);
    const QStringList explanations{
        QStringLiteral("Name of the well"),
        QStringLiteral("Surface position, survey coordinates"),
        QStringLiteral("Surface position, survey coordinates"),
        QStringLiteral("Elevation of the kelly bushing, %1 above datum").arg(unitName),
        QStringLiteral("Total depth, %1 along hole").arg(unitName),
        QStringLiteral("Number of logs"),
        QStringLiteral("Number of markers"),
    };
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return titles.at(section);
    if (role == Qt::ToolTipRole)
        return explanations.at(section);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((section == NameColumn ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return {};
}

} // namespace workbench
