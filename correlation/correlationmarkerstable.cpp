#include "correlation/correlationmarkerstable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSet>
#include <QSignalBlocker>

namespace {

constexpr int nameColumn = 0;
constexpr int tickColumn = 1;

} // namespace

CorrelationMarkersTable::CorrelationMarkersTable(QWidget *parent)
    : QTableWidget(0, 2, parent)
{
    setObjectName(QStringLiteral("markersTable"));
    setHorizontalHeaderLabels({QStringLiteral("Marker Name"), QStringLiteral("Visibility")});
    horizontalHeader()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    setTabKeyNavigation(false); // Tab leaves the table, the arrows move inside it
    connect(this, &QTableWidget::itemChanged, this, [this](QTableWidgetItem *item) {
        if (item->column() == tickColumn)
            emit tickChanged(item->checkState() == Qt::Checked);
    });
}

void CorrelationMarkersTable::keyPressEvent(QKeyEvent *event)
{
    QTableWidgetItem *tick = event->key() == Qt::Key_Space ? item(currentRow(), tickColumn) : nullptr;
    if (tick)
        tick->setCheckState(tick->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    else
        QTableWidget::keyPressEvent(event);
}

void CorrelationMarkersTable::setMarkers(const QStringList &names)
{
    const QStringList stillTicked = ticked();
    const QSignalBlocker blocker(this);
    m_names = names;
    setRowCount(names.size());
    for (int row = 0; row < names.size(); ++row) {
        auto *name = new QTableWidgetItem(names.at(row));
        name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        setItem(row, nameColumn, name);
        auto *tick = new QTableWidgetItem;
        tick->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        tick->setCheckState(Qt::Unchecked);
        setItem(row, tickColumn, tick);
    }
    setTicked(stillTicked);
}

void CorrelationMarkersTable::setTicked(const QStringList &names)
{
    const QSignalBlocker blocker(this);
    const QSet<QString> wanted(names.cbegin(), names.cend());
    for (int row = 0; row < rowCount(); ++row)
        item(row, tickColumn)
            ->setCheckState(wanted.contains(m_names.at(row).trimmed()) ? Qt::Checked : Qt::Unchecked);
    viewport()->update();
}

QStringList CorrelationMarkersTable::ticked() const
{
    QStringList names;
    for (int row = 0; row < rowCount(); ++row)
        if (item(row, tickColumn)->checkState() == Qt::Checked)
            names.append(m_names.at(row).trimmed());
    return names;
}

void CorrelationMarkersTable::tickAll(bool areTicked)
{
    const QSignalBlocker blocker(this);
    for (int row = 0; row < rowCount(); ++row)
        item(row, tickColumn)->setCheckState(areTicked ? Qt::Checked : Qt::Unchecked);
    viewport()->update();
}

bool CorrelationMarkersTable::areAllTicked() const
{
    for (int row = 0; row < rowCount(); ++row)
        if (item(row, tickColumn)->checkState() != Qt::Checked)
            return false;
    return rowCount() > 0;
}
