#pragma once

#include <QIcon>
#include <QString>
#include <QTreeWidgetItem>

namespace host {
class Host;
}

/// The type numbers of the project tree's items; they decide what a click does and what the context menu offers.
enum ProjectItemType {
    HeadingType = 0,
    WellType = 1,
    LogType = 2,
    MarkersType = 3,
    MarkerType = 4,
    WellTemplateType = 5,
    GlobalTemplateType = 6,
    CorrelationType = 7
};

/// The icons of the tree, loaded once.
struct ProjectTreeIcons
{
    explicit ProjectTreeIcons(const host::Host &host);
    QIcon wells;
    QIcon well;
    QIcon logs;
    QIcon markers;
    QIcon display;
};

/// An item without parent; a checkable one starts unchecked. The caller owns it until it has a parent.
QTreeWidgetItem *makeProjectItem(int type, const QString &text);

/// A well item with its branches "Logs", "Markers", "Template" and, in that, "Global". The key tells wells of one
/// name apart.
QTreeWidgetItem *makeWellItem(const QString &name, const QString &key, const ProjectTreeIcons &icons);
QString wellKeyOf(const QTreeWidgetItem *well);

/// The fixed branches of a well item.
QTreeWidgetItem *logsBranch(const QTreeWidgetItem *well);
QTreeWidgetItem *markersBranch(const QTreeWidgetItem *well);
QTreeWidgetItem *templateBranch(const QTreeWidgetItem *well);
QTreeWidgetItem *globalBranch(const QTreeWidgetItem *well);
/// Where a well's own templates begin among the children of its template branch.
constexpr int firstOwnTemplate = 1;

/// The well item above an item, or the item itself; null outside the wells.
QTreeWidgetItem *wellOf(QTreeWidgetItem *item);

/// Text of the template that is checked for the well: a global one, else one of its own, else "Default".
QString checkedTemplateName(const QTreeWidgetItem *well);

bool isChecked(const QTreeWidgetItem *item);

/// The first child of that text; null without one.
QTreeWidgetItem *childWithText(const QTreeWidgetItem *parent, const QString &text);
