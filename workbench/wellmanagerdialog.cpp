#include "workbench/wellmanagerdialog.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "workbench/renamewelldialog.h"
#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"
#include "workbench/welleditdialog.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace workbench {

namespace {

constexpr int rowPadding = 8;
constexpr int keyRole = Qt::UserRole;
constexpr int countedRole = Qt::UserRole;
/// So many logs, and so many samples together, are counted as soon as a well is shown; others when they are selected.
constexpr int logsCountedAtOnce = 60;
constexpr qint64 samplesCountedAtOnce = 4'000'000;

enum LogColumn { NameColumn, UnitColumn, SamplesColumn, TopColumn, BaseColumn, LogColumnCount };

const QLatin1String unknown("?");

QTableWidgetItem *tableItem(const QString &text, bool isNumber)
{
    auto *item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    if (isNumber)
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

QString number(double value)
{
    return QString::fromLatin1(base::formatShortest(static_cast<float>(value)));
}

QString depthText(float depthM, survey::DepthUnit unit)
{
    const float depth = unit == survey::DepthUnit::Foot ? host::metresToFeet(depthM) : depthM;
    return QString::fromLatin1(base::formatFixed(static_cast<double>(depth), 2));
}

QString headerLine(const survey::WellProperties &well, survey::DepthUnit unit)
{
    const QString type = survey::wellTypeNames().value(well.typeCode);
    QString line =
        QStringLiteral("X %1   Y %2\nKB %3 %5   TD %4 %5")
            .arg(QString::fromLatin1(base::formatShortest(well.x)), QString::fromLatin1(base::formatShortest(well.y)),
                 number(well.kbElevation), number(well.totalDepth), survey::symbol(unit));
    if (well.typeCode != host::NoWellType && !type.isEmpty())
        line += QStringLiteral("   Type ") + type;
    return line;
}

} // namespace

WellManagerDialog::WellManagerDialog(survey::SurveyStore &store, base::Asker &asker, QWidget *parent)
    : QDialog(parent)
    , m_store(store)
    , m_asker(asker)
{
    setObjectName(QStringLiteral("wellManagerDialog"));
    setWindowTitle(QStringLiteral("Manage wells"));
    buildWidgets();
    resize(980, 560);
    readWells({});
}

QPushButton *WellManagerDialog::addButton(const char *objectName, const QString &text,
                                          void (WellManagerDialog::*clicked)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(objectName));
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

QWidget *WellManagerDialog::buildWellsSide()
{
    m_wells = new QStandardItemModel(this);
    m_filtered = new QSortFilterProxyModel(this);
    m_filtered->setSourceModel(m_wells);
    m_filtered->setFilterCaseSensitivity(Qt::CaseInsensitive);

    auto *side = new QWidget(this);
    m_filter = new QLineEdit(side);
    m_filter->setObjectName(QStringLiteral("wellFilterEdit"));
    m_filter->setPlaceholderText(QStringLiteral("Filter wells"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, m_filtered, &QSortFilterProxyModel::setFilterFixedString);
    auto *caption = new QLabel(QStringLiteral("&Wells:"), side);

    m_list = new QListView(side);
    m_list->setObjectName(QStringLiteral("wellsList"));
    m_list->setModel(m_filtered);
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    caption->setBuddy(m_list);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &WellManagerDialog::showCurrentWell);
    connect(m_list, &QListView::doubleClicked, this, &WellManagerDialog::editWell);

    QPushButton *add = addButton("addWellButton", QStringLiteral("&Add…"), &WellManagerDialog::addWell);
    QPushButton *edit = addButton("editWellButton", QStringLiteral("&Edit…"), &WellManagerDialog::editWell);
    QPushButton *rename = addButton("renameWellButton", QStringLiteral("Re&name…"), &WellManagerDialog::renameWell);
    QPushButton *remove = addButton("deleteWellButton", QStringLiteral("&Delete…"), &WellManagerDialog::deleteWell);
    edit->setDefault(true);
    m_wellButtons = {edit, rename, remove};
    const auto addShortcut = [this](const QKeySequence &keys, QPushButton *button) {
        auto *action = new QAction(m_list);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, button, &QPushButton::click);
        m_list->addAction(action);
    };
    addShortcut(Qt::Key_F2, rename);
    addShortcut(QKeySequence::Delete, remove);

    auto *buttons = new QVBoxLayout;
    for (QPushButton *button : {add, edit, rename, remove})
        buttons->addWidget(button);
    buttons->addStretch();
    auto *row = new QHBoxLayout;
    row->addWidget(m_list, 1);
    row->addLayout(buttons);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 6, 0);
    column->addWidget(caption);
    column->addWidget(m_filter);
    column->addLayout(row, 1);
    return side;
}

QWidget *WellManagerDialog::buildLogsSide()
{
    auto *side = new QWidget(this);
    m_header = new QLabel(side);
    m_header->setObjectName(QStringLiteral("wellHeaderLabel"));
    m_header->setTextFormat(Qt::PlainText);
    m_header->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_header->setWordWrap(true);
    auto *caption = new QLabel(QStringLiteral("&Logs of the well:"), side);

    m_logs = new QTableWidget(0, LogColumnCount, side);
    m_logs->setObjectName(QStringLiteral("logsTable"));
    m_logs->setHorizontalHeaderLabels({QStringLiteral("Log"), QStringLiteral("Unit"), QStringLiteral("Samples"),
                                       QStringLiteral("Top"), QStringLiteral("Base")});
    m_logs->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_logs->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    m_logs->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    for (int column : {SamplesColumn, TopColumn, BaseColumn})
        m_logs->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_logs->horizontalHeader()->setHighlightSections(false);
    m_logs->verticalHeader()->hide();
    m_logs->verticalHeader()->setDefaultSectionSize(m_logs->fontMetrics().height() + rowPadding);
    m_logs->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_logs->setSelectionMode(QAbstractItemView::SingleSelection);
    m_logs->setAlternatingRowColors(true);
    m_logs->setShowGrid(false);
    m_logs->setTabKeyNavigation(false);
    caption->setBuddy(m_logs);
    connect(m_logs, &QTableWidget::itemSelectionChanged, this, [this] {
        if (m_logs->currentRow() >= 0)
            countSamples(m_logs->currentRow());
        enableButtons();
    });

    m_removeLog = addButton("removeLogButton", QStringLiteral("&Remove log…"), &WellManagerDialog::removeLog);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(6, 0, 0, 0);
    column->addWidget(m_header);
    column->addWidget(caption);
    column->addWidget(m_logs, 1);
    column->addWidget(m_removeLog, 0, Qt::AlignRight);
    return side;
}

void WellManagerDialog::buildWidgets()
{
    auto *splitter = new QSplitter(this);
    splitter->addWidget(buildWellsSide());
    splitter->addWidget(buildLogsSide());
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
    splitter->setChildrenCollapsible(false);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    connect(buttons, &QDialogButtonBox::rejected, this, &WellManagerDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->addWidget(splitter, 1);
    column->addWidget(buttons);
    m_list->setFocus();
}

void WellManagerDialog::readWells(const QString &keyToSelect)
{
    const host::Outcome<QVector<host::WellEntry>> wells = m_store.list();
    if (!wells.ok())
        m_asker.warn(windowTitle(), wells.error);
    QList<QStandardItem *> items;
    items.reserve(wells.value.size());
    for (const host::WellEntry &well : wells.value) {
        auto *item = new QStandardItem(well.name);
        item->setData(well.key, keyRole);
        items.append(item);
    }
    m_wells->clear();
    m_wells->appendColumn(items);
    selectWell(keyToSelect);
    if (!m_list->currentIndex().isValid())
        m_list->setCurrentIndex(m_filtered->index(0, 0));
    showCurrentWell();
}

void WellManagerDialog::selectWell(const QString &key)
{
    const QModelIndexList found = m_wells->match(m_wells->index(0, 0), keyRole, key, 1, Qt::MatchExactly);
    if (found.isEmpty())
        return;
    if (!m_filtered->mapFromSource(found.first()).isValid())
        m_filter->clear();
    m_list->setCurrentIndex(m_filtered->mapFromSource(found.first()));
    m_list->scrollTo(m_list->currentIndex());
}

host::WellEntry WellManagerDialog::currentWell() const
{
    const QModelIndex current = m_list->currentIndex();
    return {current.data().toString(), current.data(keyRole).toString()};
}

QString WellManagerDialog::currentWellKey() const
{
    return currentWell().key;
}

void WellManagerDialog::enableButtons()
{
    for (QPushButton *button : m_wellButtons)
        button->setEnabled(m_list->currentIndex().isValid());
    m_removeLog->setEnabled(!m_logs->selectedItems().isEmpty());
}

void WellManagerDialog::showCurrentWell()
{
    m_logs->setRowCount(0);
    m_header->clear();
    const QString key = currentWellKey();
    if (!key.isEmpty()) {
        const host::Outcome<survey::WellProperties> properties = m_store.properties(key);
        m_header->setText(properties.ok() ? headerLine(properties.value, m_store.depthUnit()) : properties.error);
        const QVector<host::LogInfo> logs = m_store.logs(key).value;
        m_logs->setRowCount(logs.size());
        for (int row = 0; row < logs.size(); ++row) {
            m_logs->setItem(row, NameColumn, tableItem(logs.at(row).name, false));
            m_logs->setItem(row, UnitColumn, tableItem(logs.at(row).unit, false));
            for (int column : {SamplesColumn, TopColumn, BaseColumn})
                m_logs->setItem(row, column, tableItem(unknown, true));
        }
        qint64 counted = 0;
        for (int row = 0; row < logs.size() && row < logsCountedAtOnce && counted < samplesCountedAtOnce; ++row) {
            countSamples(row);
            counted += m_logs->item(row, SamplesColumn)->text().toLongLong();
        }
    }
    enableButtons();
}

void WellManagerDialog::countSamples(int row)
{
    QTableWidgetItem *samples = m_logs->item(row, SamplesColumn);
    if (!samples || samples->data(countedRole).toBool())
        return;
    samples->setData(countedRole, true);
    const host::Outcome<host::LogData> log = m_store.log(currentWellKey(), row);
    const QString problem = log.ok() ? m_store.logProblem(currentWellKey(), row) : log.error;
    if (!problem.isEmpty()) {
        samples->setToolTip(toolTipText(problem));
        samples->setForeground(problemText(palette()));
    }
    if (!log.ok())
        return;
    samples->setText(QString::number(log.value.depths.size()));
    if (!log.value.depths.isEmpty()) {
        const survey::DepthUnit unit = m_store.depthUnit();
        m_logs->item(row, TopColumn)->setText(depthText(log.value.depths.first(), unit));
        m_logs->item(row, BaseColumn)->setText(depthText(log.value.depths.last(), unit));
    }
}

void WellManagerDialog::finish(const QString &title, const host::Status &status, const QString &keyToSelect)
{
    if (!status.ok())
        m_asker.warn(title, status.error);
    // Even a failed change may have written a part.
    readWells(keyToSelect);
    emit changed();
}

void WellManagerDialog::addWell()
{
    WellEditDialog dialog(m_store, m_asker, this);
    dialog.exec();
    if (dialog.hasWritten())
        finish(dialog.windowTitle(), {}, dialog.wellKey());
}

void WellManagerDialog::editWell()
{
    const host::WellEntry well = currentWell();
    if (well.key.isEmpty())
        return;
    const host::Outcome<survey::WellProperties> properties = m_store.properties(well.key);
    if (!properties.ok()) {
        m_asker.warn(windowTitle(), properties.error);
        return;
    }
    WellEditDialog dialog(m_store, m_asker, well.key, properties.value, this);
    dialog.exec();
    if (dialog.hasWritten())
        finish(dialog.windowTitle(), {}, well.key);
}

void WellManagerDialog::renameWell()
{
    const host::WellEntry well = currentWell();
    if (well.key.isEmpty())
        return;
    RenameWellDialog dialog(m_store, m_asker, well, this);
    if (dialog.exec() == QDialog::Accepted)
        finish(dialog.windowTitle(), {}, well.key);
}

void WellManagerDialog::deleteWell()
{
    const host::WellEntry well = currentWell();
    const QString title = QStringLiteral("Delete well");
    if (well.key.isEmpty()
        || !m_asker.confirmLoss(title,
                                QStringLiteral("Delete the well \"%1\"?\nIts logs and markers are deleted too. "
                                               "This cannot be undone.")
                                    .arg(well.name)))
        return;
    // The well below moves up to the place of the deleted one.
    const QModelIndex current = m_list->currentIndex();
    QModelIndex next = current.sibling(current.row() + 1, 0);
    if (!next.isValid())
        next = current.sibling(current.row() - 1, 0);
    const QString nextKey = next.data(keyRole).toString();
    finish(title, m_store.removeWell(well.key), nextKey);
}

void WellManagerDialog::removeLog()
{
    const host::WellEntry well = currentWell();
    const int row = m_logs->currentRow();
    if (well.key.isEmpty() || row < 0)
        return;
    const QString name = m_logs->item(row, NameColumn)->text();
    const QString title = QStringLiteral("Remove log");
    if (!m_asker.confirmLoss(
            title,
            QStringLiteral("Remove the log \"%1\" of the well \"%2\"?\nThis cannot be undone.").arg(name, well.name)))
        return;
    // Another program may have changed the order meanwhile: the name counts, not the row.
    const QVector<host::LogInfo> logs = m_store.logs(well.key).value;
    const auto found =
        std::find_if(logs.begin(), logs.end(), [&name](const host::LogInfo &log) { return log.name == name; });
    const host::Status status = found == logs.end()
        ? host::Status{QStringLiteral("The well \"%1\" has no log \"%2\" any more.").arg(well.name, name)}
        : m_store.removeLog(well.key, static_cast<int>(found - logs.begin()));
    finish(title, status, well.key);
    if (m_logs->rowCount() > 0)
        m_logs->selectRow(qMin(row, m_logs->rowCount() - 1));
}

} // namespace workbench
