#include "workbench/surveyoverview.h"

#include "base/emptyhint.h"
#include "workbench/basemap.h"
#include "workbench/wellsmodel.h"
#include "workbench/widgetkey.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>

namespace workbench {

namespace {

constexpr int rowsMeasured = 200;
constexpr int narrowestNameColumn = 120;
constexpr int widestNameColumn = 260;
constexpr int columnPadding = 14;
constexpr int smallMap = 300; // what a wide table leaves of it

} // namespace

SurveyOverview::SurveyOverview(QWidget *parent)
    : QWidget(parent)
    , m_model(new WellsModel(this))
    , m_sorted(new QSortFilterProxyModel(this))
    , m_filter(new QLineEdit(this))
    , m_table(new QTableView(this))
    , m_map(new BaseMap(this))
    , m_splitter(new QSplitter(this))
{
    setObjectName(QStringLiteral("surveyOverview"));
    m_sorted->setSourceModel(m_model);
    m_sorted->setSortRole(WellsModel::sortRole);
    m_sorted->setFilterKeyColumn(WellsModel::NameColumn);
    m_sorted->setFilterCaseSensitivity(Qt::CaseInsensitive);

    m_filter->setObjectName(QStringLiteral("filterEdit"));
    m_filter->setPlaceholderText(QStringLiteral("Filter wells by name (Ctrl+F)"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, m_sorted, &QSortFilterProxyModel::setFilterFixedString);
    auto *find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, m_filter, [this] { m_filter->setFocus(Qt::ShortcutFocusReason); });
    addAction(find);

    buildTable();
    m_noMatch = base::emptyHint({});
    (new QVBoxLayout(m_table->viewport()))->addWidget(m_noMatch);
    m_noMatch->hide();
    connect(m_filter, &QLineEdit::textChanged, this, &SurveyOverview::tellNoMatch);
    connect(m_map, &BaseMap::wellClicked, this, [this](int well) {
        selectRow(well);
        m_table->setFocus(Qt::MouseFocusReason);
    });

    auto *side = new QWidget(m_splitter);
    auto *sideColumn = new QVBoxLayout(side);
    sideColumn->setContentsMargins(0, 0, 0, 0);
    sideColumn->addWidget(m_filter);
    sideColumn->addWidget(m_table, 1);
    m_splitter->setObjectName(QStringLiteral("overviewSplitter"));
    m_splitter->addWidget(side);
    m_splitter->addWidget(m_map);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this] { m_isPlaced = true; });
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_splitter);
    setFocusProxy(m_table);
}

void SurveyOverview::buildTable()
{
    m_table->setObjectName(QStringLiteral("wellsTable"));
    m_table->setModel(m_sorted);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setResizeContentsPrecision(rowsMeasured);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(WellsModel::NameColumn, Qt::AscendingOrder);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_map->setSelectedWell(currentRow()); });
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QTableView::customContextMenuRequested, this, [this](const QPoint &place) {
        if (m_table->indexAt(place).isValid())
            emit wellMenuRequested(selectedKey(), m_table->viewport()->mapToGlobal(place));
    });
    connect(m_table, &QTableView::activated, this, [this] {
        if (!selectedKey().isEmpty())
            emit wellActivated(selectedKey());
    });
    // From the words to the wells that they leave.
    connect(addWidgetKey(m_filter, Qt::Key_Down), &QAction::triggered, this, [this] {
        if (selectedKey().isEmpty())
            m_table->setCurrentIndex(m_sorted->index(0, 0));
        m_table->setFocus(Qt::ShortcutFocusReason);
    });
    connect(addWidgetKey(m_filter, Qt::Key_Escape), &QAction::triggered, m_filter, &QLineEdit::clear);
    addTableKey(Qt::Key_F2, &SurveyOverview::wellRenameRequested);
    addTableKey(QKeySequence::Delete, &SurveyOverview::wellDeletionRequested);
}

void SurveyOverview::addTableKey(const QKeySequence &keys, void (SurveyOverview::*requested)(const QString &))
{
    connect(addWidgetKey(m_table, keys), &QAction::triggered, this, [this, requested] {
        const QString key = selectedKey();
        if (!key.isEmpty())
            emit(this->*requested)(key);
    });
}

void SurveyOverview::setWells(const QVector<survey::WellSummary> &wells, survey::DepthUnit unit)
{
    const QString key = selectedKey();
    m_isNew = m_isNew || m_model->rowCount() == 0;
    m_model->setWells(wells, unit);
    QVector<MapWell> mapWells;
    mapWells.reserve(wells.size());
    for (const survey::WellSummary &well : wells)
        mapWells.append({well.name, well.x, well.y, well.typeCode});
    m_map->setWells(mapWells);
    tellNoMatch();
    if (m_isNew) {
        fitColumns();
        arrange();
    }
    m_isNew = false;
    const int row = m_model->rowOf(key);
    if (row >= 0)
        selectRow(row);
}

void SurveyOverview::fitColumns()
{
    // The last column stretches over what is left; that is no width of its own.
    m_table->horizontalHeader()->setStretchLastSection(false);
    m_table->resizeColumnsToContents();
    for (int column = 0; column < WellsModel::ColumnCount; ++column) {
        const int width = m_table->columnWidth(column) + columnPadding;
        m_table->setColumnWidth(
            column, column == WellsModel::NameColumn ? qBound(narrowestNameColumn, width, widestNameColumn) : width);
    }
    m_columnsWidth = m_table->horizontalHeader()->length();
    m_table->horizontalHeader()->setStretchLastSection(true);
}

void SurveyOverview::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    arrange();
}

// The table gets the width of its columns as soon as the widget has its size, and of every survey's, unless the user chose
// another.
void SurveyOverview::arrange()
{
    if (m_isPlaced || !isVisible() || m_model->rowCount() == 0)
        return;
    const int wanted =
        m_columnsWidth + m_table->style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * m_table->frameWidth();
    const int all = width();
    const int table = qMin(wanted, qMax(all * 2 / 3, all - smallMap));
    m_splitter->setSizes({table, all - table});
}

// The row of the model; -1 when none is selected.
int SurveyOverview::currentRow() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : m_sorted->mapToSource(rows.first()).row();
}

QString SurveyOverview::selectedKey() const
{
    const int row = currentRow();
    return row < 0 ? QString() : m_model->wells().at(row).key;
}

QString SurveyOverview::neighbourKey() const
{
    const QModelIndex current = m_table->currentIndex();
    QModelIndex neighbour = current.sibling(current.row() + 1, 0);
    if (!neighbour.isValid())
        neighbour = current.sibling(current.row() - 1, 0);
    return neighbour.isValid() ? m_model->wells().at(m_sorted->mapToSource(neighbour).row()).key : QString();
}

void SurveyOverview::selectWell(const QString &key)
{
    selectRow(m_model->rowOf(key));
}

void SurveyOverview::beginSurvey()
{
    m_filter->clear();
    m_isNew = true;
}

void SurveyOverview::tellNoMatch()
{
    m_noMatch->setText(QStringLiteral("No well has \"%1\" in its name.").arg(m_filter->text()));
    m_noMatch->setVisible(m_sorted->rowCount() == 0);
}

void SurveyOverview::selectRow(int row)
{
    if (row < 0)
        return;
    const QModelIndex source = m_model->index(row, 0);
    if (!m_sorted->mapFromSource(source).isValid())
        m_filter->clear();
    const QModelIndex index = m_sorted->mapFromSource(source);
    m_table->setCurrentIndex(index);
    m_table->scrollTo(index);
}

QByteArray SurveyOverview::saveState() const
{
    return m_isPlaced ? m_splitter->saveState() : QByteArray();
}

void SurveyOverview::restoreState(const QByteArray &state)
{
    m_isPlaced = m_splitter->restoreState(state);
}

} // namespace workbench
