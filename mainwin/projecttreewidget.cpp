#include "mainwin/projecttreewidget.h"

#include "base/asker.h"
#include "base/folderremoval.h"
#include "base/nestedevents.h"
#include "datastore/projectdata.h"
#include "logview/welltemplatepreview.h"
#include "mainwin/projectfolders.h"
#include "mainwin/projecttreesync.h"
#include "mainwin/projecttreetemplates.h"
#include "templates/definetemplate.h"
#include "templates/modifytemplate.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
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

QTreeWidgetItem *childWithText(const QTreeWidgetItem *parent, int first, const QString &text)
{
    for (int i = first; i < parent->childCount(); ++i)
        if (parent->child(i)->text(0) == text)
            return parent->child(i);
    return nullptr;
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
    return childWithText(m_wells, 0, wellName);
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
    if (well && !childWithText(logsBranch(well), 0, logName))
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
    QTreeWidgetItem *marker = well ? childWithText(markersBranch(well), 0, markerName) : nullptr;
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

bool ProjectTreeWidget::isSearching() const
{
    return m_sinceTyped.isValid() && m_sinceTyped.elapsed() <= QApplication::keyboardInputInterval();
}

// Blanks, "-", "+" and "*" are keys with a meaning of their own, but also characters of wells' names.
bool ProjectTreeWidget::continuesSearch(const QKeyEvent *event) const
{
    constexpr auto otherUse = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (!isSearching() || m_typed.isEmpty() || event->text().isEmpty() || event->modifiers() & otherUse)
        return false;
    const QString wanted = m_typed + event->text();
    for (int i = 0; i < m_wells->childCount(); ++i)
        if (m_wells->child(i)->text(0).startsWith(wanted, Qt::CaseInsensitive))
            return true;
    return false;
}

QSize ProjectTreeWidget::sizeHint() const
{
    return {startWidth, QTreeWidget::sizeHint().height()};
}

void ProjectTreeWidget::keyboardSearch(const QString &search)
{
    m_typed = isSearching() && !search.isEmpty() ? m_typed + search : search;
    m_sinceTyped.start();
    QTreeWidget::keyboardSearch(search);
    const auto isFound = [this](const QTreeWidgetItem *item) {
        return item && item->text(0).startsWith(m_typed, Qt::CaseInsensitive);
    };
    QTreeWidgetItem *well = nullptr;
    for (int i = 0; i < m_wells->childCount() && !m_typed.isEmpty(); ++i) {
        QTreeWidgetItem *candidate = m_wells->child(i);
        // A single letter pressed again goes through all that begin with it.
        const bool isWhole = m_typed.size() > 1 && isFound(candidate) && candidate->text(0).size() == m_typed.size();
        if (isWhole || (!well && !isFound(currentItem()) && isFound(candidate)))
            well = candidate;
        if (isWhole)
            break;
    }
    if (!well)
        return;
    setCurrentItem(well);
    scrollToItem(well);
}

// The tree toggles a check box on the space bar without a click: it has to act as a click does.
void ProjectTreeWidget::keyPressEvent(QKeyEvent *event)
{
    if (continuesSearch(event)) {
        keyboardSearch(event->text());
        return;
    }
    m_pressed = nullptr;
    QTreeWidgetItem *item = currentItem();
    if (item && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        itemDoubleClick(item, 0);
    const int before = item ? item->checkState(0) : -1;
    QTreeWidget::keyPressEvent(event);
    const bool isToggleKey = event->key() == Qt::Key_Space || event->key() == Qt::Key_Select;
    if (isToggleKey && item && item == currentItem() && item->checkState(0) != before)
        itemSelected(item, 0);
}

// The column is as wide as its texts, and never narrower than the tree.
void ProjectTreeWidget::resizeEvent(QResizeEvent *event)
{
    header()->setMinimumSectionSize(viewport()->width());
    QTreeWidget::resizeEvent(event);
}

void ProjectTreeWidget::contextMenuEvent(QContextMenuEvent *event)
{
    const bool isByKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    QTreeWidgetItem *item = isByKeyboard ? currentItem() : itemAt(event->pos());
    if (!item)
        return;
    setCurrentItem(item);
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("projectTreeMenu"));
    const auto add = [this, &menu](const char *text, void (ProjectTreeWidget::*slot)()) {
        menu.addAction(QString::fromLatin1(text), this, slot);
    };
    if (item == m_correlations)
        add("Add Correlation", &ProjectTreeWidget::addNewCorrelationDialog);
    else if (item->type() == HeadingType && item->text(0) == QLatin1String("Template"))
        add("Create New Template", &ProjectTreeWidget::createNewTemplate);
    else if (item->type() == WellTemplateType) {
        add("Edit", &ProjectTreeWidget::editWellTemplate);
        add("Delete", &ProjectTreeWidget::deleteWellTemplate);
    } else if (item->type() == GlobalTemplateType) {
        add("Edit", &ProjectTreeWidget::editGlobalTemplate);
        add("Delete", &ProjectTreeWidget::deleteGlobalTemplate);
    } else if (item->type() == CorrelationType) {
        add("Delete", &ProjectTreeWidget::deleteCorrelationFromData);
    }
    const base::NestedEvents events;
    if (!menu.isEmpty())
        menu.exec(isByKeyboard ? viewport()->mapToGlobal(visualItemRect(item).bottomLeft()) : event->globalPos());
}

void ProjectTreeWidget::createNewTemplate()
{
    const QTreeWidgetItem *item = currentItem();
    if (item && item->type() == HeadingType && item->text(0) == QLatin1String("Template") && item->parent())
        openEditor(new DefineTemplate(m_data, item->parent()->text(0), this));
}

void ProjectTreeWidget::editWellTemplate()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->type() != WellTemplateType)
        return;
    const QString well = wellOf(item)->text(0);
    openEditor(new ModifyTemplate(m_data, TemplateId::ofWell(well, item->text(0)), well, this));
}

void ProjectTreeWidget::editGlobalTemplate()
{
    QTreeWidgetItem *item = currentItem();
    if (item && item->type() == GlobalTemplateType)
        openEditor(new ModifyTemplate(m_data, TemplateId::global(item->text(0)), wellOf(item)->text(0), this));
}

void ProjectTreeWidget::openEditor(TemplateDialog *dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setPreview(new WellTemplatePreview(m_data, dialog->wellName()));
    connect(dialog, &TemplateDialog::templateSaved, this, [this](const TemplateId &now, const TemplateId &was) {
        const QSignalBlocker blocker(this);
        registerTemplate(m_wells, now, was);
    });
    connect(dialog, &TemplateDialog::templateApplied, this, &ProjectTreeWidget::templateApplied);
    dialog->open();
}

// Removes the folder \a name in \a parent, on success calls \a removeItems, and says how it went. The box comes last:
// while it is up nothing here waits to touch an item.
template<class RemoveItems>
void ProjectTreeWidget::removeProjectFolder(const QString &parent, const QString &name,
                                            const RemoveItems &removeItems)
{
    const bool isRemoved = base::removeFolder(parent, name, m_data.project.projectFolder);
    if (isRemoved)
        removeItems();
    m_data.asker.warn(isRemoved ? QStringLiteral("Successfully deleted !") : QStringLiteral("Error in deleting !"),
                      parent + QLatin1Char('/') + name);
}

void ProjectTreeWidget::deleteCorrelationFromData()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->type() != CorrelationType)
        return;
    const QString name = item->text(0);
    removeProjectFolder(m_data.project.projectFolder + QStringLiteral("/Correlations"), name, [this, item, name] {
        delete item;
        emit correlationDeleted(name);
    });
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
    if (QTreeWidgetItem *item = childWithText(m_correlations, 0, oldName))
        item->setText(0, newName);
    else if (!childWithText(m_correlations, 0, newName))
        m_correlations->addChild(makeProjectItem(CorrelationType, newName));
}

void ProjectTreeWidget::deleteGlobalTemplate()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->type() != GlobalTemplateType)
        return;
    const QString name = item->text(0);
    removeProjectFolder(m_data.project.projectFolder + QStringLiteral("/Templates/Global"), name, [this, name] {
        m_data.project.globalTemplateNames.removeAll(name);
        for (int i = 0; i < m_wells->childCount(); ++i)
            delete childWithText(globalBranch(m_wells->child(i)), 0, name);
    });
}

void ProjectTreeWidget::deleteWellTemplate()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->type() != WellTemplateType)
        return;
    removeProjectFolder(wellTemplatesFolder(m_data.project, wellOf(item)->text(0)), item->text(0),
                        [item] { delete item; });
}

void ProjectTreeWidget::addNewCorrelationDialog()
{
    const QString name = QStringLiteral("New Correlation");
    if (childWithText(m_correlations, 0, name)) {
        m_data.asker.warn(QStringLiteral("Project Data"),
                          QStringLiteral("'%1' is already exists.\nPlease first give different name to existing "
                                         "correlation and save it.")
                              .arg(name));
        return;
    }
    QTreeWidgetItem *item = makeProjectItem(CorrelationType, name);
    m_correlations->addChild(item);
    setCurrentItem(item);
    emit sendCorrelation(item);
}
