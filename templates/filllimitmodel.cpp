#include "templates/filllimitmodel.h"

#include "templates/filllimit.h"

FillLimitModel::FillLimitModel(const QString &boundary, QObject *parent)
    : QAbstractListModel(parent)
    , m_boundary(boundary)
{
}

void FillLimitModel::setCurveCount(int count)
{
    const int first = filllimit::firstCurve;
    if (count > m_curveCount) {
        beginInsertRows({}, first + m_curveCount, first + count - 1);
        m_curveCount = count;
        endInsertRows();
    } else if (count < m_curveCount) {
        beginRemoveRows({}, first + count, first + m_curveCount - 1);
        m_curveCount = count;
        endRemoveRows();
    }
}

int FillLimitModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : filllimit::firstCurve + m_curveCount;
}

QVariant FillLimitModel::data(const QModelIndex &index, int role) const
{
    return role == Qt::DisplayRole ? filllimit::text(index.row(), m_boundary) : QVariant();
}
