#pragma once

#include <QStyledItemDelegate>

namespace workbench {

/// Cells that are chosen from a list. An editable cell looks like a chooser and becomes one while it is edited; its value is
/// the index of the choice.
class ChoiceDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// The first of \a choices has the value \a firstValue.
    ChoiceDelegate(const QStringList &choices, int firstValue, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

private:
    void take(QWidget *editor);

    QAbstractItemModel *m_choices; ///< shared by all editors
    int m_firstValue;
};

} // namespace workbench
