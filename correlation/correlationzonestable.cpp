#include "correlation/correlationzonestable.h"

#include "base/stillcombobox.h"
#include "datastore/textfields.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

namespace {

constexpr int nameColumn = 0;
constexpr int startColumn = 1;
constexpr int endColumn = 2;
constexpr int visibleColumn = 4;
constexpr int colorRole = Qt::UserRole;
const QString userDepth = QStringLiteral("User Depth");

// All of it, so that what is typed next replaces it; the beginning of a long name stays in sight.
void selectText(QLineEdit *edit)
{
    edit->setSelection(edit->text().size(), -edit->text().size());
}

/// A colour fills its cell: a frame tells that the keyboard is there.
class ColorDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        if (!(option.state & QStyle::State_HasFocus))
            return;
        constexpr int frame = 2;
        painter->save();
        painter->setPen(
            QPen(option.palette.color(QPalette::Highlight), frame, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter->drawRect(option.rect.adjusted(frame / 2, frame / 2, -frame / 2, -frame / 2));
        painter->restore();
    }
};

bool isFromWindow(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

CorrelationZonesTable::CorrelationZonesTable(QWidget *parent)
    : TabbedTable(0, 5, parent)
{
    setObjectName(QStringLiteral("zonesTable"));
    setHorizontalHeaderLabels({QStringLiteral("Zone Name"), QStringLiteral("Start Depth"),
                               QStringLiteral("End Depth"), QStringLiteral("Color"), QStringLiteral("Visibility")});
    for (const int column : {nameColumn, startColumn, endColumn})
        horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
    setItemDelegateForColumn(colorColumn, new ColorDelegate(this));
    connect(this, &QTableWidget::itemChanged, this, &CorrelationZonesTable::edited);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (column == colorColumn)
            for (int row = 0; row < rowCount(); ++row)
                paintSwatch(row);
    });
}

QComboBox *CorrelationZonesTable::chooser(int row, int column) const
{
    return qobject_cast<QComboBox *>(cellWidget(row, column));
}

QComboBox *CorrelationZonesTable::makeChooser(const QString &name)
{
    auto *box = new base::StillComboBox;
    box->setObjectName(name);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr); // a typed "1" must not become the marker "1A"
    box->setToolTip(QStringLiteral("A marker, or a typed measured depth in metres"));
    box->addItem(userDepth);
    box->addItems(m_markers);
    box->setFocusPolicy(Qt::ClickFocus);
    box->installEventFilter(this);
    box->lineEdit()->installEventFilter(this);
    connect(box->lineEdit(), &QLineEdit::textEdited, this, [this, box] { typedInto(box); });
    connect(box, QOverload<int>::of(&QComboBox::activated), box->lineEdit(), [box] { selectText(box->lineEdit()); });
    connect(box, QOverload<int>::of(&QComboBox::activated), this, &CorrelationZonesTable::edited);
    return box;
}

QLineEdit *CorrelationZonesTable::startEdit(int row) const
{
    return chooser(row, startColumn)->lineEdit();
}

QLineEdit *CorrelationZonesTable::endEdit(int row) const
{
    return chooser(row, endColumn)->lineEdit();
}

// What is typed is a depth, also where a marker was chosen. Decimals are written with a point.
void CorrelationZonesTable::typedInto(QComboBox *chooser)
{
    QLineEdit *edit = chooser->lineEdit();
    const QString text = edit->text().replace(u',', u'.');
    const int cursor = edit->cursorPosition();
    {
        const QSignalBlocker blocker(chooser);
        chooser->setCurrentIndex(0);
        chooser->setEditText(text);
    }
    edit->setCursorPosition(cursor);
    emit edited();
}

void CorrelationZonesTable::place(QComboBox *chooser, const QString &text, bool isUserDepth) const
{
    chooser->setCurrentIndex(isUserDepth ? 0 : textfields::indexOfField(m_markers, text) + 1);
    if (isUserDepth)
        chooser->setEditText(text);
    chooser->lineEdit()->setCursorPosition(0); // a long name shows its beginning
}

// A chooser that gets the keyboard is typed over; a click into a typed depth sets the cursor there.
bool CorrelationZonesTable::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        auto *box = qobject_cast<QComboBox *>(watched);
        if (box && reason != Qt::MouseFocusReason && !isFromWindow(reason))
            selectText(box->lineEdit());
    } else if (event->type() == QEvent::MouseButtonRelease) {
        auto *edit = qobject_cast<QLineEdit *>(watched);
        if (edit && edit->text() == userDepth)
            selectText(edit);
    }
    return TabbedTable::eventFilter(watched, event);
}

void CorrelationZonesTable::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const bool opens = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2;
    if (opens && currentColumn() == colorColumn && currentRow() >= 0)
        emit cellClicked(currentRow(), colorColumn);
    else
        TabbedTable::keyPressEvent(event);
}

void CorrelationZonesTable::setMarkers(const QStringList &names)
{
    const QVector<CorrelationZone> before = zones();
    m_markers.clear();
    for (const QString &name : names)
        m_markers.append(name.trimmed());
    for (int row = 0; row < rowCount(); ++row) {
        const CorrelationZone &zone = before.at(row);
        for (const int column : {startColumn, endColumn}) {
            QComboBox *box = chooser(row, column);
            const QSignalBlocker blocker(box);
            box->clear();
            box->addItem(userDepth);
            box->addItems(m_markers);
            if (column == startColumn)
                place(box, zone.start, zone.isStartUserDepth);
            else
                place(box, zone.end, zone.isEndUserDepth);
        }
    }
}

void CorrelationZonesTable::addZone(const CorrelationZone &zone)
{
    const QSignalBlocker blocker(this);
    const int row = rowCount();
    insertRow(row);
    setItem(row, nameColumn, new QTableWidgetItem(zone.name));
    QComboBox *start = makeChooser(QStringLiteral("startChooser"));
    place(start, zone.start, zone.isStartUserDepth);
    setCellWidget(row, startColumn, start);
    QComboBox *end = makeChooser(QStringLiteral("endChooser"));
    place(end, zone.end, zone.isEndUserDepth);
    setCellWidget(row, endColumn, end);
    auto *color = new QTableWidgetItem;
    color->setFlags(Qt::ItemIsEnabled); // a selection would hide the colour
    color->setToolTip(QStringLiteral("Click to choose the colour of the zone"));
    setItem(row, colorColumn, color);
    setZoneColor(row, QColor(zone.color));
    auto *visible = new QTableWidgetItem;
    visible->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    visible->setCheckState(zone.isVisible ? Qt::Checked : Qt::Unchecked);
    setItem(row, visibleColumn, visible);
}

void CorrelationZonesTable::removeZone()
{
    if (rowCount() > 0)
        removeRow(currentRow() >= 0 ? currentRow() : rowCount() - 1);
}

QVector<CorrelationZone> CorrelationZonesTable::zones() const
{
    QVector<CorrelationZone> zones;
    for (int row = 0; row < rowCount(); ++row) {
        CorrelationZone zone;
        const QTableWidgetItem *name = item(row, nameColumn);
        zone.name = name ? name->text() : QString();
        const QComboBox *start = chooser(row, startColumn);
        zone.start = start->currentText();
        zone.isStartUserDepth = start->currentIndex() == 0;
        const QComboBox *end = chooser(row, endColumn);
        zone.end = end->currentText();
        zone.isEndUserDepth = end->currentIndex() == 0;
        const QColor color = zoneColor(row);
        zone.color = color.isValid() ? color.name() : QString::fromLatin1(correlation::zoneWithoutColor);
        zone.isVisible = item(row, visibleColumn)->checkState() == Qt::Checked;
        zones.append(zone);
    }
    return zones;
}

QColor CorrelationZonesTable::zoneColor(int row) const
{
    const QTableWidgetItem *cell = item(row, colorColumn);
    return cell ? cell->data(colorRole).value<QColor>() : QColor();
}

void CorrelationZonesTable::setZoneColor(int row, const QColor &color)
{
    QTableWidgetItem *cell = item(row, colorColumn);
    if (!cell || !color.isValid())
        return;
    {
        const QSignalBlocker blocker(this);
        cell->setData(colorRole, color);
        paintSwatch(row);
    }
    emit edited();
}

void CorrelationZonesTable::paintSwatch(int row)
{
    QTableWidgetItem *cell = item(row, colorColumn);
    const QColor color = zoneColor(row);
    if (!cell || !color.isValid())
        return;
    QPixmap swatch(columnWidth(colorColumn), rowHeight(row));
    swatch.fill(color);
    const QSignalBlocker blocker(this);
    cell->setData(Qt::DecorationRole, swatch);
}
