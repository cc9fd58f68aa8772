#include "workbench/wellcontents.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "survey/markeredit.h"
#include "survey/topsplan.h"
#include "workbench/statecolors.h"
#include "workbench/tooltiptext.h"
#include "workbench/topsdialog.h"
#include "workbench/widgetkey.h"
#include "workbench/windowsettings.h"

#include <QColorDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace workbench {

namespace {

enum Column { NameColumn, UnitColumn, SamplesColumn, TopColumn, BaseColumn, ColumnCount };
constexpr int kindRole = Qt::UserRole;
constexpr int nameRole = Qt::UserRole + 1; ///< as it is stored
constexpr int countedRole = Qt::UserRole + 2;
/// So many logs, and so many samples together, are counted as soon as a well is shown; others when they are selected.
constexpr int logsCountedAtOnce = 60;
constexpr qint64 samplesCountedAtOnce = 4'000'000;
constexpr int swatchSize = 12;
constexpr int mostNamesTold = 10;

QString depthText(double metres, survey::DepthUnit unit)
{
    const auto stored = static_cast<float>(metres);
    const float depth = unit == survey::DepthUnit::Foot ? host::metresToFeet(stored) : stored;
    return QString::fromLatin1(base::formatFixed(static_cast<double>(depth), 2));
}

QIcon swatch(const QColor &color)
{
    QPixmap pixmap(swatchSize, swatchSize);
    pixmap.fill(color);
    return pixmap;
}

QTreeWidgetItem *newItem(QTreeWidgetItem *parent, int kind, const QString &name)
{
    auto *item = new QTreeWidgetItem(parent);
    item->setText(NameColumn, name);
    item->setData(NameColumn, kindRole, kind);
    item->setData(NameColumn, nameRole, name);
    for (const int column : {SamplesColumn, TopColumn, BaseColumn})
        item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

QString firstOf(const QStringList &names)
{
    const QString first = names.mid(0, mostNamesTold).join(QStringLiteral(", "));
    return names.size() > mostNamesTold
        ? QStringLiteral("%1 and %2 more").arg(first, QString::number(names.size() - mostNamesTold))
        : first;
}

// A file of one well may call it by another name than those that the survey knows.
QStringList namesInFile(const survey::TopsFile &file, const QStringList &names)
{
    const QStringList wells = survey::wellsOf(file);
    return wells.size() == 1 && survey::topsOf(file, names).isEmpty() ? wells : names;
}

QString withoutTopsText(const survey::TopsFile &file, const QString &fileName, const QString &wellName)
{
    if (!file.problem.isEmpty())
        return QStringLiteral("%1: %2").arg(fileName, file.problem);
    const QString text = QStringLiteral("The file names no top of the well \"%1\".").arg(wellName);
    const QStringList wells = survey::wellsOf(file);
    return wells.isEmpty() ? text : text + QStringLiteral(" Its wells are: %1.").arg(firstOf(wells));
}

// Each on a line of its own.
QString noticesOf(const survey::TopsMerge &merge)
{
    QString text;
    if (!merge.repeated.isEmpty())
        text += QStringLiteral("\nAt several depths, and so with a number behind the further ones: %1.")
                    .arg(firstOf(merge.repeated));
    if (!merge.outside.isEmpty())
        text += QStringLiteral("\nBelow the total depth and so left out: %1.").arg(firstOf(merge.outside));
    return text;
}

} // namespace

WellContents::WellContents(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser,
                           QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_asker(asker)
    , m_chooser(chooser)
{
    buildWidgets();
    enableButtons();
}

QPushButton *WellContents::addButton(const char *objectName, const QString &text, void (WellContents::*clicked)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(objectName));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

void WellContents::buildWidgets()
{
    m_tree = new QTreeWidget(this);
    m_tree->setObjectName(QStringLiteral("contentsTree"));
    m_tree->setColumnCount(ColumnCount);
    m_tree->setAlternatingRowColors(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tree->header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (isA(current(), LogKind))
            countSamples(current());
        enableButtons();
    });
    connect(m_tree, &QTreeWidget::itemDoubleClicked, this, &WellContents::edit);
    connect(m_tree, &QTreeWidget::itemChanged, this, &WellContents::takeEdit);

    m_rename = addButton("renameContentButton", QStringLiteral("Rena&me"), &WellContents::beginRename);
    m_depth = addButton("markerDepthButton", QStringLiteral("De&pth"), &WellContents::beginDepth);
    m_color = addButton("markerColorButton", QStringLiteral("&Colour…"), &WellContents::chooseColor);
    m_delete = addButton("removeLogButton", QStringLiteral("&Remove…"), &WellContents::deleteCurrent);
    m_tops = addButton("importTopsButton", QStringLiteral("Import &tops…"), &WellContents::importTops);
    connect(addWidgetKey(m_tree, Qt::Key_F2), &QAction::triggered, m_rename, &QPushButton::click);
    connect(addWidgetKey(m_tree, QKeySequence::Delete), &QAction::triggered, m_delete, &QPushButton::click);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("contentsStatus"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {m_rename, m_depth, m_color, m_delete})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(m_tops);
    auto *caption = new QLabel(QStringLiteral("&Logs and markers; double-click to change a name or a depth:"), this);
    caption->setBuddy(m_tree);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(caption);
    column->addWidget(m_tree, 1);
    column->addWidget(m_status);
    column->addLayout(buttons);
}

bool WellContents::isA(const QTreeWidgetItem *item, Kind kind)
{
    return item && item->data(NameColumn, kindRole).toInt() == kind;
}

QTreeWidgetItem *WellContents::current() const
{
    const QList<QTreeWidgetItem *> items = m_tree->selectedItems();
    return items.isEmpty() ? nullptr : items.first();
}

void WellContents::enableButtons()
{
    const bool isMarker = isA(current(), MarkerKind);
    const bool isThing = isMarker || isA(current(), LogKind);
    m_rename->setEnabled(isThing);
    m_delete->setEnabled(isThing);
    m_depth->setEnabled(isMarker);
    m_color->setEnabled(isMarker);
    m_tops->setEnabled(!m_well.key.isEmpty());
}

// What is selected stays so, also in another row; where its name is gone, its row does.
void WellContents::showWell(const host::WellEntry &well)
{
    const QTreeWidgetItem *selected = well.key == m_well.key ? current() : nullptr;
    const int kind = selected ? selected->data(NameColumn, kindRole).toInt() : 0;
    const int row = selected && selected->parent() ? selected->parent()->indexOfChild(current()) : -1;
    const QString name = selected ? selected->data(NameColumn, nameRole).toString() : QString();
    if (well.key != m_well.key)
        m_status->clear();
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    m_well = well;
    m_unit = m_store.depthUnit();
    m_tree->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Unit"), QStringLiteral("Samples"),
                             survey::titleWithUnit(QStringLiteral("Top"), m_unit),
                             survey::titleWithUnit(QStringLiteral("Base"), m_unit)});
    m_tree->clear();
    m_markers.clear();
    if (!well.key.isEmpty()) {
        m_totalDepthM = m_store.header(well.key).value.totalDepth;
        fillLogs();
        fillMarkers();
        m_tree->expandAll();
        QTreeWidgetItem *group = kind == 0 ? nullptr : m_tree->topLevelItem(kind - 1);
        QTreeWidgetItem *item =
            group && row >= 0 ? group->child(qMin(row, group->childCount() - 1)) : nullptr; // null without children
        for (int i = 0; item && i < group->childCount(); ++i)
            if (group->child(i)->data(NameColumn, nameRole).toString() == name)
                item = group->child(i);
        if (item)
            m_tree->setCurrentItem(item);
    }
    enableButtons();
}

void WellContents::fillLogs()
{
    const QVector<host::LogInfo> logs = m_store.logs(m_well.key).value;
    auto *group = new QTreeWidgetItem(m_tree, {QStringLiteral("Logs (%1)").arg(logs.size())});
    for (const host::LogInfo &log : logs) {
        QTreeWidgetItem *item = newItem(group, LogKind, log.name);
        item->setText(UnitColumn, log.unit);
        for (const int column : {SamplesColumn, TopColumn, BaseColumn})
            item->setText(column, QStringLiteral("?"));
    }
    qint64 counted = 0;
    for (int row = 0; row < logs.size() && row < logsCountedAtOnce && counted < samplesCountedAtOnce; ++row) {
        countSamples(group->child(row));
        counted += group->child(row)->text(SamplesColumn).toLongLong();
    }
}

void WellContents::fillMarkers()
{
    m_markers = m_store.markers(m_well.key).value;
    auto *group = new QTreeWidgetItem(m_tree, {QStringLiteral("Markers (%1)").arg(m_markers.size())});
    for (const host::Marker &marker : qAsConst(m_markers)) {
        QTreeWidgetItem *item = newItem(group, MarkerKind, marker.name);
        item->setIcon(NameColumn, swatch(marker.color));
        item->setText(TopColumn, depthText(static_cast<double>(marker.depth), m_unit));
    }
}

void WellContents::countSamples(QTreeWidgetItem *item)
{
    if (item->data(NameColumn, countedRole).toBool())
        return;
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    item->setData(NameColumn, countedRole, true);
    const int index = item->parent()->indexOfChild(item);
    const host::Outcome<host::LogData> log = m_store.log(m_well.key, index);
    const QString problem = log.ok() ? m_store.logProblem(m_well.key, index) : log.error;
    if (!problem.isEmpty()) {
        item->setToolTip(SamplesColumn, toolTipText(problem));
        item->setForeground(SamplesColumn, problemText(palette()));
    }
    if (!log.ok())
        return;
    item->setText(SamplesColumn, QString::number(log.value.depths.size()));
    if (!log.value.depths.isEmpty()) {
        item->setText(TopColumn, depthText(static_cast<double>(log.value.depths.first()), m_unit));
        item->setText(BaseColumn, depthText(static_cast<double>(log.value.depths.last()), m_unit));
    }
}

// Another program may have changed the order meanwhile: the name counts, not the row.
int WellContents::markerIndex(const QTreeWidgetItem *item) const
{
    const QString name = item->data(NameColumn, nameRole).toString();
    const auto found = std::find_if(m_markers.begin(), m_markers.end(),
                                    [&name](const host::Marker &marker) { return marker.name == name; });
    return found == m_markers.end() ? -1 : static_cast<int>(found - m_markers.begin());
}

void WellContents::finish(const QString &title, const host::Status &status)
{
    if (!status.ok())
        m_asker.warn(title, status.error);
    showWell(m_well);
    emit changed();
}

void WellContents::beginRename()
{
    edit(current(), NameColumn);
}

void WellContents::beginDepth()
{
    edit(current(), TopColumn);
}

void WellContents::edit(QTreeWidgetItem *item, int column)
{
    const bool isName = column == NameColumn && (isA(item, LogKind) || isA(item, MarkerKind));
    if (!isName && !(column == TopColumn && isA(item, MarkerKind)))
        return;
    if (m_tree->isPersistentEditorOpen(item, NameColumn) || m_tree->isPersistentEditorOpen(item, TopColumn))
        return; // a key was pressed while it is edited
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    m_tree->editItem(item, column);
}

void WellContents::takeEdit(QTreeWidgetItem *item, int column)
{
    if (m_isFilling || (column != NameColumn && column != TopColumn))
        return;
    const QString text = item->text(column);
    const QString oldName = item->data(NameColumn, nameRole).toString();
    const int index = isA(item, MarkerKind) ? markerIndex(item) : -1;
    QVector<host::Marker> markers = m_markers;
    QString problem;
    if (index >= 0 && column == NameColumn) {
        const QString name = text.trimmed();
        problem = survey::markerNameProblem(markers, index, name);
        markers[index].name = name;
    } else if (index >= 0) {
        problem = survey::markerDepthProblem(text, m_unit, m_totalDepthM);
        markers[index].depth = survey::markerDepthM(base::parseNumber(text).value_or(0), m_unit);
    }
    // Queued: the tree is filled anew when the editor has gone.
    QMetaObject::invokeMethod(
        this,
        [this, index, markers, problem, oldName, text] {
            const QString title = index >= 0 ? QStringLiteral("Change marker") : QStringLiteral("Rename log");
            if (!problem.isEmpty()) {
                m_asker.warn(title, problem);
                showWell(m_well);
            } else if (index >= 0) {
                finish(title, m_store.writeMarkers(m_well.key, markers));
            } else if (text.trimmed() != oldName) {
                finish(title, m_store.renameLog(m_well.key, oldName, text));
            }
        },
        Qt::QueuedConnection);
}

void WellContents::chooseColor()
{
    const int index = isA(current(), MarkerKind) ? markerIndex(current()) : -1;
    if (index < 0)
        return;
    QColorDialog dialog(m_markers.at(index).color, this);
    dialog.setObjectName(QStringLiteral("markerColorDialog"));
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedColor() == m_markers.at(index).color)
        return;
    QVector<host::Marker> markers = m_markers;
    markers[index].color = dialog.selectedColor();
    finish(QStringLiteral("Change marker"), m_store.writeMarkers(m_well.key, markers));
}

void WellContents::deleteCurrent()
{
    if (isA(current(), LogKind))
        deleteLog(current()->data(NameColumn, nameRole).toString());
    else if (isA(current(), MarkerKind))
        deleteMarker(markerIndex(current()));
}

void WellContents::deleteLog(const QString &name)
{
    const QString title = QStringLiteral("Remove log");
    if (!m_asker.confirmLoss(title,
                             QStringLiteral("Remove the log \"%1\" of the well \"%2\"?\nThis cannot be undone.")
                                 .arg(name, m_well.name)))
        return;
    const QVector<host::LogInfo> logs = m_store.logs(m_well.key).value;
    const auto found =
        std::find_if(logs.begin(), logs.end(), [&name](const host::LogInfo &log) { return log.name == name; });
    finish(title,
           found == logs.end()
               ? host::Status{QStringLiteral("The well \"%1\" has no log \"%2\" any more.").arg(m_well.name, name)}
               : m_store.removeLog(m_well.key, static_cast<int>(found - logs.begin())));
}

void WellContents::deleteMarker(int index)
{
    const QString title = QStringLiteral("Remove marker");
    if (index < 0
        || !m_asker.confirmLoss(title,
                                QStringLiteral("Remove the marker \"%1\" of the well \"%2\"?\nThis cannot be undone.")
                                    .arg(m_markers.at(index).name, m_well.name)))
        return;
    QVector<host::Marker> markers = m_markers;
    markers.removeAt(index);
    finish(title, m_store.writeMarkers(m_well.key, markers));
}

void WellContents::importTops()
{
    const QString title = QStringLiteral("Import tops");
    const QString path = TopsDialog::chosenFiles(m_chooser, this).value(0);
    if (path.isEmpty())
        return;
    const survey::TopsFile file = survey::readTops(path).file;
    const QStringList names = namesInFile(file, {m_well.name, m_store.head(m_well.key).value.uwi});
    const QVector<survey::TopsLine> tops = survey::topsOf(file, names);
    if (tops.isEmpty()) {
        m_asker.warn(title, withoutTopsText(file, QFileInfo(path).fileName(), m_well.name));
        return;
    }
    const survey::DepthUnit unit = file.unit.value_or(m_unit);
    const survey::TopsMerge merge = survey::withTops(m_markers, tops, unit, m_totalDepthM, m_unit);
    const QString count = tops.size() == 1 ? QStringLiteral("1 top") : QStringLiteral("%1 tops").arg(tops.size());
    QString found = QStringLiteral("%1 for the well \"%2\", depths in %3: %4 new, %5 with another depth.")
                        .arg(count, m_well.name, survey::pluralName(unit), QString::number(merge.added),
                             QString::number(merge.moved));
    const bool isOtherName = !names.contains(m_well.name);
    if (isOtherName)
        found += QStringLiteral("\nThe file calls its only well \"%1\".").arg(names.first());
    found += noticesOf(merge);
    if (!file.unit && merge.outside.size() == tops.size())
        found += QStringLiteral("\nThe file tells no unit of its depths; a title like \"MD (%1)\" would.")
                     .arg(unit == survey::DepthUnit::Foot ? QLatin1String("m") : QLatin1String("ft"));
    if (const int leftOut = survey::leftOutOf(file, names); leftOut > 0)
        found += QStringLiteral("\nLines without a name or a depth are left out: %1.").arg(leftOut);
    if (!merge.changesAnything()) {
        m_asker.inform(title, found + QStringLiteral("\nThere is nothing to change."));
        return;
    }
    const QString question = found + QStringLiteral("\nTake them?");
    if (!(isOtherName ? m_asker.confirmLoss(title, question) : m_asker.confirm(title, question)))
        return;
    m_status->setText(
        QStringLiteral("Tops of %1: %2 added, %3 moved.")
            .arg(QFileInfo(path).fileName(), QString::number(merge.added), QString::number(merge.moved)));
    finish(title, m_store.writeMarkers(m_well.key, merge.markers));
}

} // namespace workbench
