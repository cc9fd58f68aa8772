#include "mainwin/projecttreetemplates.h"

#include "mainwin/projecttreeitems.h"
#include "templates/templatestore.h"

#include <QTreeWidget>

namespace {

/// Where a well's templates of one kind stand.
struct Place
{
    QTreeWidgetItem *branch = nullptr; ///< null where the well cannot have the template
    int first = 0;
    int type = GlobalTemplateType;
};

Place placeOf(QTreeWidgetItem *well, const TemplateId &which)
{
    if (which.isGlobal)
        return {globalBranch(well), 0, GlobalTemplateType};
    if (which.name.isEmpty() || well->text(0) != which.wellName)
        return {};
    return {templateBranch(well), firstOwnTemplate, WellTemplateType};
}

int find(const Place &place, const QString &name)
{
    for (int i = place.first; place.branch && i < place.branch->childCount(); ++i)
        if (place.branch->child(i)->text(0) == name)
            return i;
    return -1;
}

// A well's own templates stand in the order of their names, new global ones last.
int newIndex(const Place &place, const QString &name)
{
    int index = place.branch->childCount();
    while (place.type == WellTemplateType && index > place.first && name < place.branch->child(index - 1)->text(0))
        --index;
    return index;
}

} // namespace

void registerTemplate(QTreeWidgetItem *wells, const TemplateId &now, const TemplateId &was)
{
    QTreeWidget *tree = wells->treeWidget();
    for (int i = 0; i < wells->childCount(); ++i) {
        const Place from = placeOf(wells->child(i), was);
        const Place to = placeOf(wells->child(i), now);
        const int old = find(from, was.name);
        const bool wasCurrent = old >= 0 && tree && tree->currentItem() == from.branch->child(old);
        const bool wasChecked = old >= 0 && isChecked(from.branch->child(old));
        const int oldPlace = from.branch == to.branch && now.isGlobal ? old : -1;
        if (old >= 0)
            delete from.branch->takeChild(old);
        if (!to.branch)
            continue;
        int index = find(to, now.name);
        if (index < 0) {
            index = oldPlace >= 0 ? oldPlace : newIndex(to, now.name);
            to.branch->insertChild(index, makeProjectItem(to.type, now.name));
        }
        if (wasChecked)
            to.branch->child(index)->setCheckState(0, Qt::Checked);
        if (wasCurrent)
            tree->setCurrentItem(to.branch->child(index));
    }
}
