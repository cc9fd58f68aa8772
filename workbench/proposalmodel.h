#pragma once

#include <QAbstractTableModel>

namespace workbench {

/// A column of proposed changes.
struct ProposalColumn
{
    QString title;
    QString explanation; ///< as its tool tip
    bool isNumber = false;
};

/// A table of proposed changes, one a row. The choice in one row may be wrong for another, so that all rows are shown anew
/// when one changes.
class ProposalModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit ProposalModel(const QVector<ProposalColumn> &columns, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : proposalCount(); }
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : m_columns.size(); }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    /// The rows, or what of them is chosen.
    void changed();

protected:
    virtual int proposalCount() const = 0;
    int alignmentOf(int column) const;
    void announce();
    /// Calls \a change, after which there may be other rows.
    template<class Change>
    void resetBy(Change change)
    {
        beginResetModel();
        change();
        endResetModel();
        emit changed();
    }

private:
    QVector<ProposalColumn> m_columns;
};

} // namespace workbench
