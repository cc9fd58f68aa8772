#pragma once

#include <QAbstractListModel>

/// The choices of what a fill may go up to: "None", the boundary of its side, and the curves of the track. One model
/// serves the choosers of all rows, so that one more curve is one more item, not one in each row.
class FillLimitModel : public QAbstractListModel
{
    Q_OBJECT

public:
    FillLimitModel(const QString &boundary, QObject *parent);

    void setCurveCount(int count);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QString m_boundary;
    int m_curveCount = 0;
};
