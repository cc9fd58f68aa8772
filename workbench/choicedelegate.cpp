#include "workbench/choicedelegate.h"

#include "base/stillcombobox.h"

#include <QApplication>
#include <QPainter>
#include <QStringListModel>

namespace workbench {

namespace {

constexpr int rim = 2; // of the cell around the chooser: that it is the current one shows there

/// Knows whether its list was opened: a choice from it is final, one by the arrow keys is so when the cell is left.
class ChoiceBox : public base::StillComboBox
{
public:
    using base::StillComboBox::StillComboBox;

    void showPopup() override
    {
        m_isListUsed = true;
        base::StillComboBox::showPopup();
    }
    bool isListUsed() const { return m_isListUsed; }

private:
    bool m_isListUsed = false;
};

QStyleOptionComboBox boxOption(const QStyleOptionViewItem &cell)
{
    QStyleOptionComboBox box;
    box.rect = cell.rect.adjusted(rim, rim, -rim, -rim);
    box.palette = cell.palette;
    box.fontMetrics = cell.fontMetrics;
    box.direction = cell.direction;
    box.state = cell.state & ~(QStyle::State_MouseOver | QStyle::State_HasFocus | QStyle::State_Selected);
    box.currentText = cell.text;
    return box;
}

const QStyle &styleOf(const QStyleOptionViewItem &cell)
{
    return *(cell.widget ? cell.widget->style() : QApplication::style());
}

} // namespace

ChoiceDelegate::ChoiceDelegate(const QStringList &choices, int firstValue, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_choices(new QStringListModel(choices, this))
    , m_firstValue(firstValue)
{
}

void ChoiceDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (!(index.flags() & Qt::ItemIsEditable)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    QStyleOptionComboBox box = boxOption(cell);
    cell.text.clear();
    styleOf(cell).drawControl(QStyle::CE_ItemViewItem, &cell, painter,
                              cell.widget); // what is selected
    if (cell.backgroundBrush.style() != Qt::NoBrush)
        box.palette.setBrush(QPalette::Button, cell.backgroundBrush);
    box.palette.setBrush(QPalette::ButtonText, cell.palette.text());
    const QRect text =
        styleOf(cell).subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxEditField, cell.widget);
    box.currentText = cell.fontMetrics.elidedText(box.currentText, Qt::ElideRight, text.width());
    painter->save();
    styleOf(cell).drawComplexControl(QStyle::CC_ComboBox, &box, painter, cell.widget);
    styleOf(cell).drawControl(QStyle::CE_ComboBoxLabel, &box, painter, cell.widget);
    painter->restore();
}

QSize ChoiceDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyleOptionComboBox box = boxOption(cell);
    const QSize text(cell.fontMetrics.horizontalAdvance(cell.text) + cell.fontMetrics.averageCharWidth(),
                     cell.fontMetrics.height());
    return styleOf(cell).sizeFromContents(QStyle::CT_ComboBox, &box, text, cell.widget) + QSize(2 * rim, 2 * rim);
}

QWidget *ChoiceDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *box = new ChoiceBox(parent);
    box->setModel(m_choices);
    // The signals of a delegate are not const, as editors are made.
    auto *self = const_cast<ChoiceDelegate *>(this); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    connect(box, QOverload<int>::of(&QComboBox::activated), self, [self, box] {
        if (box->isListUsed())
            self->take(box);
    });
    return box;
}

void ChoiceDelegate::take(QWidget *editor)
{
    emit commitData(editor);
    emit closeEditor(editor);
}

void ChoiceDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    static_cast<QComboBox *>(editor)->setCurrentIndex(index.data(Qt::EditRole).toInt() - m_firstValue);
}

void ChoiceDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const int value = static_cast<QComboBox *>(editor)->currentIndex() + m_firstValue;
    if (value != index.data(Qt::EditRole).toInt())
        model->setData(index, value, Qt::EditRole);
}

void ChoiceDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                          const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}

} // namespace workbench
