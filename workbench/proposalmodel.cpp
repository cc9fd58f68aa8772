#include "workbench/proposalmodel.h"

namespace workbench {

ProposalModel::ProposalModel(const QVector<ProposalColumn> &columns, QObject *parent)
    : QAbstractTableModel(parent)
    , m_columns(columns)
{
}

QVariant ProposalModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return m_columns.at(section).title;
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    return role == Qt::ToolTipRole ? QVariant(m_columns.at(section).explanation) : QVariant();
}

int ProposalModel::alignmentOf(int column) const
{
    return static_cast<int>((m_columns.at(column).isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

void ProposalModel::announce()
{
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    emit changed();
}

} // namespace workbench
