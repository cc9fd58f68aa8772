#include "correlation/correlationzonestable.h"

#include "base/stillcombobox.h"
#include "datastore/textfields.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPixmap>
#include <QSignalBlocker>

namespace {

constexpr int nameColumn = 0;
constexpr int startColumn = 1;
constexpr int endColumn = 2;
constexpr int visibleColumn = 4;
constexpr int colorRole = Qt::UserRole;
const QString userDepth = QStringLiteral("User Depth");

} // namespace

CorrelationZonesTable::CorrelationZonesTable(QWidget *parent)
    : QTableWidget(0, 5, parent)
{
    setObjectName(QStringLiteral("zonesTable"));
    setHorizontalHeaderLabels({QStringLiteral("Zone Name"), QStringLiteral("Start Depth"),
                               QStringLiteral("End Depth"), QStringLiteral("Color"), QStringLiteral("Visibility")});
    for (const int column : {nameColumn, startColumn, endColumn})
        horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
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
    connect(box->lineEdit(), &QLineEdit::textEdited, this, [this, box] { typedInto(box); });
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
