#include "mainwin/projecttreesync.h"

#include "mainwin/projecttreeitems.h"

#include <QHash>
#include <QQueue>
#include <QTreeWidget>

namespace {

QString textOf(const QTreeWidgetItem *item)
{
    return item->text(0);
}

void collectExpanded(QTreeWidgetItem *item, QVector<QTreeWidgetItem *> *expanded)
{
    if (item->isExpanded())
        expanded->append(item);
    for (int i = 0; i < item->childCount(); ++i)
        collectExpanded(item->child(i), expanded);
}

// Moving an item makes the view forget what was expanded in it, and that the current item was.
void moveChild(QTreeWidgetItem *parent, QTreeWidgetItem *child, int to)
{
    QTreeWidget *tree = parent->treeWidget();
    QTreeWidgetItem *current = tree ? tree->currentItem() : nullptr;
    QVector<QTreeWidgetItem *> expanded;
    collectExpanded(child, &expanded);
    parent->takeChild(parent->indexOfChild(child));
    parent->insertChild(to, child);
    for (QTreeWidgetItem *item : qAsConst(expanded))
        item->setExpanded(true);
    if (tree && tree->currentItem() != current)
        tree->setCurrentItem(current);
}

bool agrees(const QTreeWidgetItem *parent, int first, const QStringList &keys,
            const std::function<QString(const QTreeWidgetItem *)> &keyOf)
{
    if (parent->childCount() - first != keys.size())
        return false;
    for (int i = 0; i < keys.size(); ++i)
        if (keyOf(parent->child(first + i)) != keys.at(i))
            return false;
    return true;
}

void fillEmpty(QTreeWidgetItem *parent, int count, const std::function<QTreeWidgetItem *(int index)> &make)
{
    QList<QTreeWidgetItem *> children;
    children.reserve(count);
    for (int i = 0; i < count; ++i)
        children.append(make(i));
    parent->addChildren(children);
}

} // namespace

void syncChildren(QTreeWidgetItem *parent, int first, const QStringList &keys,
                  const std::function<QString(const QTreeWidgetItem *)> &keyOf,
                  const std::function<QTreeWidgetItem *(int index)> &make)
{
    if (agrees(parent, first, keys, keyOf))
        return;
    if (parent->childCount() <= first) {
        fillEmpty(parent, keys.size(), make);
        return;
    }
    QHash<QString, int> wanted;
    for (const QString &key : keys)
        ++wanted[key];
    QHash<QString, QQueue<QTreeWidgetItem *>> kept;
    QVector<QTreeWidgetItem *> gone;
    for (int i = first; i < parent->childCount(); ++i) {
        QTreeWidgetItem *child = parent->child(i);
        const QString key = keyOf(child);
        if (wanted.value(key) > 0) {
            --wanted[key];
            kept[key].enqueue(child);
        } else {
            gone.append(child);
        }
    }
    for (QTreeWidgetItem *child : qAsConst(gone))
        delete child;
    for (int i = 0; i < keys.size(); ++i) {
        const auto found = kept.find(keys.at(i));
        if (found == kept.end() || found->isEmpty()) {
            parent->insertChild(first + i, make(i));
            continue;
        }
        QTreeWidgetItem *child = found->dequeue();
        if (parent->child(first + i) != child)
            moveChild(parent, child, first + i);
    }
}

void syncChildren(QTreeWidgetItem *parent, int first, const QStringList &texts, int type)
{
    syncChildren(parent, first, texts, textOf,
                 [&texts, type](int index) { return makeProjectItem(type, texts.at(index)); });
}
