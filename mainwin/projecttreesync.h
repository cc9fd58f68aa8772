#pragma once

#include <QStringList>
#include <QTreeWidgetItem>

#include <functional>

/// Makes the children of \a parent from index \a first on agree with \a keys, in their order. Children whose key is
/// still wanted stay the same items, with their check states and expansion; others are deleted or made by \a make
/// (which is given the index in \a keys). \a keyOf gives a child's key. Linear where the order did not change;
/// nothing is looked up where the children agree already or there are none yet.
void syncChildren(QTreeWidgetItem *parent, int first, const QStringList &keys,
                  const std::function<QString(const QTreeWidgetItem *)> &keyOf,
                  const std::function<QTreeWidgetItem *(int index)> &make);

/// The same for children that are told apart by their text and are plain items of one type.
void syncChildren(QTreeWidgetItem *parent, int first, const QStringList &texts, int type);
