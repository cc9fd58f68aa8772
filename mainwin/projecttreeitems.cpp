#include "mainwin/projecttreeitems.h"

#include "host/host.h"

namespace {

constexpr int keyRole = Qt::UserRole;

enum WellBranch { LogsBranch = 0, MarkersBranch = 1, TemplateBranch = 2 };

bool isCheckable(int type)
{
    return type == WellType || type == MarkersType || type == MarkerType || type == WellTemplateType
        || type == GlobalTemplateType;
}

QTreeWidgetItem *addBranch(QTreeWidgetItem *parent, int type, const char *text, const QIcon &icon)
{
    QTreeWidgetItem *branch = makeProjectItem(type, QString::fromLatin1(text));
    branch->setIcon(0, icon);
    parent->addChild(branch);
    return branch;
}

} // namespace

ProjectTreeIcons::ProjectTreeIcons(const host::Host &host)
    : wells(host.icon(QStringLiteral("multisimplewell.png")))
    , well(host.icon(QStringLiteral("well.png")))
    , logs(host.icon(QStringLiteral("welllog.small.png")))
    , markers(host.icon(QStringLiteral("marker.small.png")))
    , display(host.icon(QStringLiteral("display_wlc.png")))
{
}

QTreeWidgetItem *makeProjectItem(int type, const QString &text)
{
    auto *item = new QTreeWidgetItem(type);
    item->setText(0, text);
    if (isCheckable(type)) {
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Unchecked);
    }
    return item;
}

QTreeWidgetItem *makeWellItem(const QString &name, const QString &key, const ProjectTreeIcons &icons)
{
    QTreeWidgetItem *well = makeProjectItem(WellType, name);
    well->setIcon(0, icons.well);
    well->setData(0, keyRole, key);
    addBranch(well, HeadingType, "Logs", icons.logs);
    addBranch(well, MarkersType, "Markers", icons.markers);
    addBranch(addBranch(well, HeadingType, "Template", icons.display), HeadingType, "Global", icons.display);
    return well;
}

QString wellKeyOf(const QTreeWidgetItem *well)
{
    return well->data(0, keyRole).toString();
}

QTreeWidgetItem *logsBranch(const QTreeWidgetItem *well)
{
    return well->child(LogsBranch);
}

QTreeWidgetItem *markersBranch(const QTreeWidgetItem *well)
{
    return well->child(MarkersBranch);
}

QTreeWidgetItem *templateBranch(const QTreeWidgetItem *well)
{
    return well->child(TemplateBranch);
}

QTreeWidgetItem *globalBranch(const QTreeWidgetItem *well)
{
    return templateBranch(well)->child(0);
}

QTreeWidgetItem *wellOf(QTreeWidgetItem *item)
{
    while (item && item->type() != WellType)
        item = item->parent();
    return item;
}

QString checkedTemplateName(const QTreeWidgetItem *well)
{
    const QTreeWidgetItem *global = globalBranch(well);
    for (int i = 0; i < global->childCount(); ++i)
        if (isChecked(global->child(i)))
            return global->child(i)->text(0);
    const QTreeWidgetItem *own = templateBranch(well);
    for (int i = firstOwnTemplate; i < own->childCount(); ++i)
        if (isChecked(own->child(i)))
            return own->child(i)->text(0);
    return QStringLiteral("Default");
}

bool isChecked(const QTreeWidgetItem *item)
{
    return item->checkState(0) == Qt::Checked;
}

QTreeWidgetItem *childWithText(const QTreeWidgetItem *parent, const QString &text)
{
    for (int i = 0; i < parent->childCount(); ++i)
        if (parent->child(i)->text(0) == text)
            return parent->child(i);
    return nullptr;
}
