#include "mainwin/projecttreewidget.h"

#include "base/asker.h"
#include "datastore/projectdata.h"
#include "mainwin/projectfolders.h"
#include "mainwin/projecttreesync.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <utility>

namespace {

constexpr int maximumFoldersTold = 10;
constexpr int startWidth = 320; // shows the names of most markers whole

void uncheckChildren(QTreeWidgetItem *parent, int first, const QTreeWidgetItem *except)
{
    for (int i = first; i < parent->childCount(); ++i)
        if (parent->child(i) != except)
            parent->child(i)->setCheckState(0, Qt::Unchecked);
}

} // namespace

ProjectTreeWidget::ProjectTreeWidget(ProjectData &projectData, QWidget *parent)
    : QTreeWidget(parent)
    , m_data(projectData)
    , m_icons(projectData.host)
{
    setObjectName(QStringLiteral("ProjectTreeWidget"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    // Long names scroll into view instead of being cut.
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_wells = makeProjectItem(HeadingType, QStringLiteral("Wells"));
    m_wells->setIcon(0, m_icons.wells);
    m_correlations = makeProjectItem(HeadingType, QStringLiteral("Correlations"));
    m_correlations->setIcon(0, m_icons.display);
    addTopLevelItems({m_wells, m_correlations});
    connect(this, &QTreeWidget::itemClicked, this, &ProjectTreeWidget::itemSelected);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &ProjectTreeWidget::itemDoubleClick);
    ProjectFolders folders(m_data.project);
    fill(&folders);
    m_wells->setExpanded(true);
    tellUnreadable(folders);
}

void ProjectTreeWidget::synchronise()
{
    ProjectFolders folders(m_data.project);
    if (const auto names = folders.globalTemplates())
        m_data.project.globalTemplateNames = *names;
    fill(&folders);
    tellUnreadable(folders);
}

void ProjectTreeWidget::fill(ProjectFolders *folders)
{
    const WellsCatalogue &catalogue = m_data.catalogue;
    QStringList keys;
    for (int well = 0; well < catalogue.wellCount(); ++well)
        keys.append(catalogue.wellKey(well));
    QVector<bool> isNew(keys.size(), false);
    syncChildren(m_wells, 0, keys, wellKeyOf, [&](int well) {
        QTreeWidgetItem *item = makeWellItem(catalogue.wellNames().at(well), catalogue.wellKey(well), m_icons);
        fillWell(item, well, folders); // before it joins the tree, which then hears of one new item, not of hundreds
        isNew[well] = true;
        return item;
    });
    for (int well = 0; well < catalogue.wellCount(); ++well) {
        if (isNew.at(well))
            continue;
        QTreeWidgetItem *item = m_wells->child(well);
        item->setText(0, catalogue.wellNames().at(well));
        fillWell(item, well, folders);
    }
    if (const auto names = folders->correlations())
        syncChildren(m_correlations, 0, *names, CorrelationType);
}

void ProjectTreeWidget::fillWell(QTreeWidgetItem *wellItem, int well, ProjectFolders *folders)
{
    const WellsCatalogue &catalogue = m_data.catalogue;
    syncChildren(logsBranch(wellItem), 0, catalogue.logNames(well), LogType);
    syncChildren(markersBranch(wellItem), 0, catalogue.markerNames(well), MarkerType);
    syncChildren(globalBranch(wellItem), 0, m_data.project.globalTemplateNames, GlobalTemplateType);
    if (const auto names = folders->wellTemplates(catalogue.wellNames().at(well)))
        syncChildren(templateBranch(wellItem), firstOwnTemplate, *names, WellTemplateType);
}

void ProjectTreeWidget::tellUnreadable(const ProjectFolders &folders)
{
    if (folders.unreadable().isEmpty())
        return;
    QStringList lines = folders.unreadable().mid(0, maximumFoldersTold);
    const int others = folders.unreadable().size() - lines.size();
    if (others > 0)
        lines.append(QStringLiteral("and %1 more").arg(others));
    m_data.asker.warn(QStringLiteral("Project Data"),
                      QStringLiteral("These folders cannot be read; what is shown of them is left as it was:\n")
                          + lines.join(QLatin1Char('\n')));
}

void ProjectTreeWidget::synchroniseLogs(int well)
{
    if (QTreeWidgetItem *item = findWellByKey(m_data.catalogue.wellKey(well)))
        syncChildren(logsBranch(item), 0, m_data.catalogue.logNames(well), LogType);
}

void ProjectTreeWidget::synchroniseMarkers(int well)
{
    QTreeWidgetItem *item = findWellByKey(m_data.catalogue.wellKey(well));
    if (!item)
        return;
    syncChildren(markersBranch(item), 0, m_data.catalogue.markerNames(well), MarkerType);
    followMarkers(markersBranch(item));
}

QTreeWidgetItem *ProjectTreeWidget::findWell(const QString &wellName) const
{
    return childWithText(m_wells, wellName);
}

QTreeWidgetItem *ProjectTreeWidget::findWellByKey(const QString &key) const
{
    for (int i = 0; i < m_wells->childCount(); ++i)
        if (wellKeyOf(m_wells->child(i)) == key)
            return m_wells->child(i);
    return nullptr;
}

void ProjectTreeWidget::addLog(const QString &wellName, const QString &logName)
{
    QTreeWidgetItem *well = findWell(wellName);
    if (well && !childWithText(logsBranch(well), logName))
        logsBranch(well)->addChild(makeProjectItem(LogType, logName));
}

void ProjectTreeWidget::addMarker(const QString &wellName, const QString &markerName)
{
    if (QTreeWidgetItem *well = findWell(wellName))
        markersBranch(well)->addChild(makeProjectItem(MarkerType, markerName));
}

void ProjectTreeWidget::checkShownMarker(const QString &wellName, const QString &markerName)
{
    setMarkerChecked(wellName, markerName, Qt::Checked);
}

void ProjectTreeWidget::uncheckDroppedMarkers(const QString &wellName, const QStringList &markerNames)
{
    for (const QString &name : markerNames)
        setMarkerChecked(wellName, name, Qt::Unchecked);
}

void ProjectTreeWidget::setMarkerChecked(const QString &wellName, const QString &markerName, Qt::CheckState state)
{
    QTreeWidgetItem *well = findWell(wellName);
    QTreeWidgetItem *marker = well ? childWithText(markersBranch(well), markerName) : nullptr;
    if (!marker)
        return;
    const QSignalBlocker blocker(this);
    marker->setCheckState(0, state);
    followMarkers(marker->parent());
}

void ProjectTreeWidget::uncheckWell(const QString &wellKey)
{
    const QSignalBlocker blocker(this);
    if (QTreeWidgetItem *well = findWellByKey(wellKey))
        well->setCheckState(0, Qt::Unchecked);
}

void ProjectTreeWidget::addTemplate(const QString &wellName, const QString &templateName)
{
    if (QTreeWidgetItem *well = findWell(wellName))
        templateBranch(well)->addChild(makeProjectItem(WellTemplateType, templateName));
}

// A click beside the check box leaves the item as it was.
void ProjectTreeWidget::itemSelected(QTreeWidgetItem *item, int)
{
    const bool isAsBefore = item == std::exchange(m_pressed, nullptr) && item->checkState(0) == m_stateWhenPressed;
    if (isAsBefore) {
        const QTreeWidgetItem *well = wellOf(item);
        const bool meansDisplay =
            item->type() == WellType || item->type() == WellTemplateType || item->type() == GlobalTemplateType;
        if (meansDisplay && isChecked(item) && isChecked(well))
            emit wellClicked(well->text(0));
        return;
    }
    switch (item->type()) {
    case WellType:
        wellToggled(item);
        break;
    case MarkersType:
        markersToggled(item);
        break;
    case MarkerType:
        markerToggled(item);
        break;
    case WellTemplateType:
    case GlobalTemplateType:
        templateChosen(item);
        break;
    default:
        break;
    }
}

void ProjectTreeWidget::itemDoubleClick(QTreeWidgetItem *item, int)
{
    if (item->type() == CorrelationType)
        emit sendCorrelation(item);
}

void ProjectTreeWidget::wellToggled(QTreeWidgetItem *well)
{
    if (!isChecked(well)) {
        emit removeWellDisplay(well->text(0));
        return;
    }
    emit sendWellDisplayProperties(well->text(0), checkedTemplateName(well));
    refreshMarkers(well);
}

// At most one template of a well, global or its own, is checked.
void ProjectTreeWidget::templateChosen(QTreeWidgetItem *item)
{
    QTreeWidgetItem *well = wellOf(item);
    if (!isChecked(item) || !isChecked(well))
        return;
    {
        const QSignalBlocker blocker(this);
        uncheckChildren(globalBranch(well), 0, item);
        uncheckChildren(templateBranch(well), firstOwnTemplate, item);
    }
    emit sendWellDisplayProperties(well->text(0), item->text(0));
    refreshMarkers(well);
}

void ProjectTreeWidget::notePress(const QPoint &position)
{
    const QTreeWidgetItem *item = itemAt(position);
    m_pressed = item;
    m_stateWhenPressed = item ? item->checkState(0) : Qt::Unchecked;
}

void ProjectTreeWidget::mousePressEvent(QMouseEvent *event)
{
    notePress(event->pos());
    QTreeWidget::mousePressEvent(event);
}

// Its release is a click of its own.
void ProjectTreeWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    notePress(event->pos());
    QTreeWidget::mouseDoubleClickEvent(event);
}

QSize ProjectTreeWidget::sizeHint() const
{
    return {startWidth, QTreeWidget::sizeHint().height()};
}

// The column is as wide as its texts, and never narrower than the tree.
void ProjectTreeWidget::resizeEvent(QResizeEvent *event)
{
    header()->setMinimumSectionSize(viewport()->width());
    QTreeWidget::resizeEvent(event);
}

QStringList ProjectTreeWidget::correlationNames() const
{
    QStringList names;
    for (int i = 0; i < m_correlations->childCount(); ++i)
        names.append(m_correlations->child(i)->text(0));
    return names;
}

void ProjectTreeWidget::renameCorrelation(const QString &oldName, const QString &newName)
{
    if (QTreeWidgetItem *item = childWithText(m_correlations, oldName))
        item->setText(0, newName);
    else if (!childWithText(m_correlations, newName))
        m_correlations->addChild(makeProjectItem(CorrelationType, newName));
}
