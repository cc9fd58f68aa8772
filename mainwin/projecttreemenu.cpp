// What the menus of the tree's items do: templates and correlations are made, edited and deleted.

#include "base/asker.h"
#include "base/folderremoval.h"
#include "base/nestedevents.h"
#include "correlation/correlationstore.h"
#include "datastore/projectdata.h"
#include "logview/welltemplatepreview.h"
#include "mainwin/projecttreetemplates.h"
#include "mainwin/projecttreewidget.h"
#include "templates/definetemplate.h"
#include "templates/modifytemplate.h"
#include "templates/templatestore.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalBlocker>

namespace {

// Removes the folder \a name in \a parent, on success calls \a removeItems, and says how it went. The box comes last:
// while it is up nothing here waits to touch an item.
template<class RemoveItems>
void removeProjectFolder(ProjectData &data, const QString &parent, const QString &name,
                         const RemoveItems &removeItems)
{
    const bool isRemoved = base::removeFolder(parent, name, data.project.projectFolder);
    if (isRemoved)
        removeItems();
    data.asker.warn(isRemoved ? QStringLiteral("Successfully deleted !") : QStringLiteral("Error in deleting !"),
                    parent + QLatin1Char('/') + name);
}

} // namespace

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

void ProjectTreeWidget::deleteCorrelationFromData()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->type() != CorrelationType)
        return;
    const QString name = item->text(0);
    removeProjectFolder(m_data, correlation::correlationsFolder(m_data.project), name, [this, item, name] {
        delete item;
        emit correlationDeleted(name);
    });
}

void ProjectTreeWidget::deleteGlobalTemplate()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->type() != GlobalTemplateType)
        return;
    const QString name = item->text(0);
    removeProjectFolder(m_data, globalTemplatesFolder(m_data.project), name, [this, name] {
        m_data.project.globalTemplateNames.removeAll(name);
        for (int i = 0; i < m_wells->childCount(); ++i)
            delete childWithText(globalBranch(m_wells->child(i)), name);
    });
}

void ProjectTreeWidget::deleteWellTemplate()
{
    QTreeWidgetItem *item = currentItem();
    if (!item || item->type() != WellTemplateType)
        return;
    removeProjectFolder(m_data, wellTemplatesFolder(m_data.project, wellOf(item)->text(0)), item->text(0),
                        [item] { delete item; });
}

void ProjectTreeWidget::addNewCorrelationDialog()
{
    const QString name = QStringLiteral("New Correlation");
    if (childWithText(m_correlations, name)) {
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
