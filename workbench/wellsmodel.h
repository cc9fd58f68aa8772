#pragma once

#include "survey/depthunit.h"
#include "survey/wellsummary.h"

#include <QAbstractTableModel>

namespace workbench {

/// The overview of a survey's wells; rows in the host's order.
class WellsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, XColumn, YColumn, KbColumn, TotalDepthColumn, LogsColumn, MarkersColumn, ColumnCount };
    /// A value to sort by; names sort as the host does. Nothing for what is unknown, which comes last.
    static constexpr int sortRole = Qt::UserRole;

    explicit WellsModel(QObject *parent = nullptr);

    /// Elevations and depths of the wells are in \a unit.
    void setWells(const QVector<survey::WellSummary> &wells, survey::DepthUnit unit = survey::DepthUnit::Metre);
    const QVector<survey::WellSummary> &wells() const { return m_wells; }
    /// -1 when there is none.
    int rowOf(const QString &key) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<survey::WellSummary> m_wells;
    QVector<int> m_places; ///< of the rows, in the natural order of the names
    survey::DepthUnit m_unit = survey::DepthUnit::Metre;
};

} // namespace workbench
