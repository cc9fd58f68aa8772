#include "templates/deftemptrackwidget.h"

#include "base/cellproperties.h"
#include "base/colorchoice.h"
#include "base/keptlooks.h"
#include "templates/filllimit.h"
#include "templates/filllimitmodel.h"
#include "templates/templatechoices.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QSpinBox>
#include <QTableWidget>

#include <algorithm>

namespace {

constexpr int rowsBeyondSight = 3; // so that the Tab key always finds a next row

constexpr int columnWidths[curvecolumn::Count] = {140, 120, 48, 48, 56, 70, 70, 112, 118, 80, 82, 82, 98, 56, 56, 96};
constexpr int headerMargin = 8;

QPushButton *makeButton(const char *text, const char *name)
{
    auto *button = new QPushButton(QString::fromLatin1(text));
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

// Of a column of choosers, in which the longest text is whole.
int widthFor(const FillLimitModel &limits)
{
    QComboBox box;
    for (int row = 0; row < limits.rowCount(); ++row)
        box.addItem(limits.index(row, 0).data().toString());
    return box.sizeHint().width() + 1; // the grid's line
}

} // namespace

DefTempTrackWidget::DefTempTrackWidget(TemplateChoices &choices, QAbstractItemModel *colorBars, QWidget *parent)
    : QWidget(parent)
    , m_choices(choices)
    , m_type(new QComboBox)
    , m_table(new QTableWidget(0, curvecolumn::Count))
    , m_viewport(m_table->viewport())
{
    setObjectName(QStringLiteral("DefTempTrackWidget"));
    m_models = {&choices, colorBars, new FillLimitModel(filllimit::leftBoundary(), this),
                new FillLimitModel(filllimit::rightBoundary(), this)};
    for (const int type : {LinearTrack, LogarithmicTrack, DepthTrack})
        m_type->addItem(trackTypeText(type));
    m_type->setObjectName(QStringLiteral("trackTypeBox"));
    auto *typeLabel = new QLabel(QStringLiteral("Track Type :"));
    typeLabel->setBuddy(m_type);
    auto *add = makeButton("Add Curve", "addCurveButton");
    auto *top = new QHBoxLayout;
    top->addWidget(typeLabel);
    top->addWidget(m_type);
    top->addWidget(add);
    top->addStretch();
    auto *page = new QVBoxLayout(this);
    page->addLayout(top);
    page->addWidget(m_table, 1);
    setUpTable();

    connect(add, &QPushButton::clicked, this, &DefTempTrackWidget::addCurveClicked);
    connect(m_type, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &DefTempTrackWidget::trackTypeChanged);
    connect(m_table, &QTableWidget::cellClicked, this, &DefTempTrackWidget::cellSelected);
    connect(m_table, &QTableWidget::cellChanged, this, [this](int row, int) {
        if (isRow(row) && widgetsOf(row) && !m_isShowing) {
            CurveRow edited = m_rows.at(row);
            widgetsOf(row)->readInto(&edited);
            setRow(row, edited);
        }
    });
    connect(m_table->verticalScrollBar(), &QScrollBar::valueChanged, this, &DefTempTrackWidget::makeRowsInSight);
    for (const int step : {-1, 1}) {
        auto *move = new QShortcut(QKeySequence(Qt::ALT + (step < 0 ? Qt::Key_Up : Qt::Key_Down)), this);
        move->setContext(Qt::WidgetWithChildrenShortcut);
        connect(move, &QShortcut::activated, this, [this, step] { moveCurrentRow(step); });
    }
    showTypeTips();
}

void DefTempTrackWidget::setUpTable()
{
    m_table->setObjectName(QStringLiteral("curveTable"));
    m_table->setHorizontalHeaderLabels(curvecolumn::headings());
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::NoSelection); // a selection would cover the colours
    m_table->setTabKeyNavigation(false);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    QHeaderView *header = m_table->horizontalHeader();
    header->setDefaultAlignment(Qt::Alignment(QFlag(int(Qt::AlignCenter) | int(Qt::TextWordWrap))));
    header->setFixedHeight(2 * header->fontMetrics().lineSpacing() + headerMargin);
    for (int column = 0; column < curvecolumn::Count; ++column)
        m_table->setColumnWidth(column, columnWidths[column]);
    m_table->setColumnWidth(curvecolumn::LeftLimit, widthFor(*m_models.leftLimits));
    m_table->setColumnWidth(curvecolumn::RightLimit, widthFor(*m_models.rightLimits));
    base::keepColumns(header, QStringLiteral("templateCurves"));
    m_table->installEventFilter(this);
    m_viewport->installEventFilter(this);
}

// Choosers tell of the end of their lists, which go with this.
DefTempTrackWidget::~DefTempTrackWidget()
{
    m_isShowing = true;
    m_table->disconnect(this);
    m_table->verticalScrollBar()->disconnect(this);
    delete m_table;
}

void DefTempTrackWidget::setTrack(const TrackInfo &track, int rowsAtOnce)
{
    m_rows = CurveRows(track);
    for (int row = 0; row < m_rows.size(); ++row)
        noteValues(m_rows.at(row));
    {
        const QScopedValueRollback<bool> showing(m_isShowing, true);
        m_type->setCurrentIndex(track.type);
        m_widgets.clear();
        m_table->setRowCount(0);
        setRowCount(m_rows.size());
    }
    for (int row = 0; row < std::min(rowsAtOnce, m_rows.size()); ++row)
        makeRow(row);
    makeRowsInSight();
    showTypeTips();
    tellChange();
}

void DefTempTrackWidget::setTrackName(const QString &name)
{
    m_trackName = name;
    m_isTrackKnown = false;
}

const TrackInfo &DefTempTrackWidget::track() const
{
    if (!m_isTrackKnown)
        m_track = m_rows.track(m_trackName);
    m_isTrackKnown = true;
    return m_track;
}

void DefTempTrackWidget::tellChange()
{
    m_isTrackKnown = false;
    emit changed();
}

void DefTempTrackWidget::setRowCount(int count)
{
    m_table->setRowCount(count);
    m_widgets.resize(static_cast<size_t>(count));
    m_models.leftLimits->setCurveCount(count);
    m_models.rightLimits->setCurveCount(count);
}

void DefTempTrackWidget::makeRow(int row)
{
    if (widgetsOf(row))
        return;
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    auto &widgets = m_widgets[static_cast<size_t>(row)];
    widgets = std::make_unique<CurveRowWidgets>(m_table, row, m_rows.isDepth(), m_models);
    widgets->setTypeTip(typeTip());
    widgets->show(m_rows.at(row), m_rows.size());
    connectRow(*widgets);
    takeTabOrder(row);
}

// Nothing is in sight of a table that was never laid out, nor of one whose rows are being changed.
void DefTempTrackWidget::makeRowsInSight()
{
    if (!isVisible() || m_isShowing || m_rows.size() == 0)
        return;
    const int first = m_table->rowAt(0);
    const int bottom = m_table->rowAt(m_table->viewport()->height());
    const int last = (bottom < 0 ? m_rows.size() - 1 : bottom) + rowsBeyondSight;
    for (int row = std::max(0, first - rowsBeyondSight); row <= std::min(last, m_rows.size() - 1); ++row)
        makeRow(row);
}

void DefTempTrackWidget::connectRow(const CurveRowWidgets &widgets)
{
    using Track = DefTempTrackWidget;
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    for (int column = 0; column < curvecolumn::Count; ++column) {
        QWidget *widget = widgets.at(column);
        if (!widget)
            continue;
        widget->setProperty(base::columnProperty, column);
        widget->installEventFilter(this);
        if (column == curvecolumn::Group)
            connect(qobject_cast<QComboBox *>(widget), indexChanged, this, &Track::repopulateCurveBox);
        else if (column == curvecolumn::Remove)
            connect(qobject_cast<QPushButton *>(widget), &QPushButton::clicked, this, &Track::removeClicked);
        else if (column == curvecolumn::PointColor)
            connect(qobject_cast<QPushButton *>(widget), &QPushButton::clicked, this, &Track::pointClrBtnClicked);
        else if (column == curvecolumn::Calibration)
            connect(qobject_cast<QCheckBox *>(widget), &QCheckBox::toggled, this, &Track::pointVisiCheckChanged);
        else if (auto *edit = qobject_cast<QLineEdit *>(widget))
            connect(edit, &QLineEdit::textChanged, this, &Track::rowEdited);
        else if (auto *spin = qobject_cast<QSpinBox *>(widget))
            connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), this, &Track::rowEdited);
        else if (auto *box = qobject_cast<QComboBox *>(widget))
            connect(box, indexChanged, this, &Track::rowEdited);
    }
}

// Behind the nearest row above that was made.
void DefTempTrackWidget::takeTabOrder(int row)
{
    int above = row - 1;
    while (above >= 0 && !widgetsOf(above))
        --above;
    QWidget *previous = above >= 0 ? widgetsOf(above)->all().last() : m_table;
    for (QWidget *widget : widgetsOf(row)->all()) {
        setTabOrder(previous, widget);
        previous = widget;
    }
}

void DefTempTrackWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    makeRowsInSight();
}

void DefTempTrackWidget::addCurveClicked()
{
    const int row = m_rows.size();
    CurveRow added = CurveRow::added(m_rows.type());
    const TemplateChoices::Values values = m_choices.lastValues(added.group);
    added.setMinimum(values.minimum);
    added.setMaximum(values.maximum);
    m_rows.append(added);
    {
        const QScopedValueRollback<bool> showing(m_isShowing, true);
        setRowCount(row + 1);
    }
    makeRow(row);
    m_table->setCurrentCell(row, curvecolumn::Group);
    tellChange();
}

// Of the widget in a row that tells of itself; -1 when none does.
int DefTempTrackWidget::senderRow() const
{
    const int row = sender() ? sender()->property(base::rowProperty).toInt() : -1;
    return isRow(row) && widgetsOf(row) ? row : -1;
}

void DefTempTrackWidget::removeClicked()
{
    const int row = senderRow();
    if (row < 0)
        return;
    m_rows.remove(row);
    {
        const QScopedValueRollback<bool> showing(m_isShowing, true);
        m_widgets.erase(m_widgets.begin() + row);
        m_table->removeRow(row);
        for (int below = row; below < m_rows.size(); ++below)
            if (widgetsOf(below))
                widgetsOf(below)->setRowNumber(below);
        setRowCount(m_rows.size());
        showAllLimits();
    }
    makeRowsInSight();
    const int next = std::min(row, m_rows.size() - 1);
    if (isRow(next)) {
        makeRow(next);
        widgetsOf(next)->at(curvecolumn::Remove)->setFocus();
    }
    tellChange();
}

void DefTempTrackWidget::showAllLimits()
{
    for (int row = 0; row < m_rows.size(); ++row)
        if (widgetsOf(row))
            widgetsOf(row)->showLimits(m_rows.at(row), m_rows.size());
}

void DefTempTrackWidget::trackTypeChanged()
{
    if (m_isShowing || m_type->currentIndex() == m_rows.type())
        return;
    const bool wasDepth = m_rows.isDepth();
    m_rows.setType(m_type->currentIndex());
    if (wasDepth != m_rows.isDepth())
        remakeRows();
    showTypeTips();
    tellChange();
}

// Depth tracks have other cells.
void DefTempTrackWidget::remakeRows()
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (!widgetsOf(row))
            continue;
        m_widgets[static_cast<size_t>(row)].reset();
        for (int column = 0; column < curvecolumn::Count; ++column)
            m_table->removeCellWidget(row, column);
        delete m_table->takeItem(row, curvecolumn::Color);
        makeRow(row);
    }
}

QString DefTempTrackWidget::typeTip() const
{
    return m_rows.type() == LogarithmicTrack
        ? QStringLiteral("A logarithmic track always spans 0.1 to 2000, whatever stands here.")
        : QString();
}

void DefTempTrackWidget::showTypeTips()
{
    for (const int column : {curvecolumn::LeftValue, curvecolumn::RightValue})
        m_table->horizontalHeaderItem(column)->setToolTip(typeTip());
    for (int row = 0; row < m_rows.size(); ++row) {
        if (!widgetsOf(row))
            continue;
        widgetsOf(row)->setTypeTip(typeTip());
        widgetsOf(row)->showValueTips(m_rows.at(row));
    }
}

// A curve without values of its own gets those that its new group was last used with.
void DefTempTrackWidget::repopulateCurveBox()
{
    const int row = senderRow();
    if (m_isShowing || row < 0)
        return;
    CurveRow edited = m_rows.at(row);
    widgetsOf(row)->readInto(&edited);
    edited.curve = QStringLiteral("Default");
    if (!edited.hasOwnValues) {
        const TemplateChoices::Values values = m_choices.lastValues(edited.group);
        edited.setMinimum(values.minimum);
        edited.setMaximum(values.maximum);
    }
    {
        const QScopedValueRollback<bool> showing(m_isShowing, true);
        widgetsOf(row)->showCurves(edited);
        widgetsOf(row)->showValues(edited);
    }
    setRow(row, edited);
}

void DefTempTrackWidget::rowEdited()
{
    const int row = senderRow();
    if (m_isShowing || row < 0)
        return;
    CurveRow edited = m_rows.at(row);
    widgetsOf(row)->readInto(&edited);
    edited.hasOwnValues = edited.hasOwnValues || qobject_cast<QLineEdit *>(sender());
    widgetsOf(row)->showValueTips(edited);
    setRow(row, edited);
}

void DefTempTrackWidget::setRow(int row, const CurveRow &edited)
{
    m_rows.replace(row, edited);
    noteValues(edited);
    tellChange();
}

void DefTempTrackWidget::noteValues(const CurveRow &row)
{
    if (row.hasOwnValues && !m_rows.isDepth())
        m_choices.noteValues(row.group, {row.minimum, row.maximum});
}

void DefTempTrackWidget::pointVisiCheckChanged(bool isShown)
{
    const int row = senderRow();
    if (row < 0)
        return;
    widgetsOf(row)->enablePointCells(isShown);
    rowEdited();
}

void DefTempTrackWidget::cellSelected(int row, int column)
{
    if (column != curvecolumn::Color || !isRow(row) || m_rows.isDepth())
        return;
    const QColor color = base::chooseColor(this, m_rows.at(row).color);
    if (color.isValid()) // else this may be gone
        m_table->item(row, column)->setBackground(color);
}

void DefTempTrackWidget::pointClrBtnClicked()
{
    const int row = senderRow();
    if (row < 0)
        return;
    const QColor color = base::chooseColor(this, m_rows.at(row).pointColor);
    if (!color.isValid()) // this may be gone
        return;
    widgetsOf(row)->setPointColor(color);
    CurveRow edited = m_rows.at(row);
    edited.pointColor = color;
    setRow(row, edited);
}

void DefTempTrackWidget::showProblem(const CurveRowProblem &problem)
{
    makeRow(problem.row);
    const int column = problem.isMaximum ? curvecolumn::RightValue : curvecolumn::LeftValue;
    m_table->setCurrentCell(problem.row, column);
    widgetsOf(problem.row)->at(column)->setFocus(Qt::OtherFocusReason);
}
