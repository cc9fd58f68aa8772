#include "mainwin/projecttreesync.h"

#include "mainwin/projecttreeitems.h"

#include <QHash>
#include <QQueue>

namespace {

QString textOf(const QTreeWidgetItem *item)
{
    return item->text(0);
}

// Moving an item makes the view forget that it was expanded.
void moveChild(QTreeWidgetItem *parent, QTreeWidgetItem *child, int to)
{
    const bool wasExpanded = child->isExpanded();
    parent->takeChild(parent->indexOfChild(child));
    parent->insertChild(to, child);
    child->setExpanded(wasExpanded);
}

} // namespace

void syncChildren(QTreeWidgetItem *parent, int first, const QStringList &keys,
                  const std::function<QString(const QTreeWidgetItem *)> &keyOf,
                  const std::function<QTreeWidgetItem *(int index)> &make)
{
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
