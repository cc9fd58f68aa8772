#pragma once

#include "las/exportplan.h"

#include <QListWidget>

/// Lists of checkable names, as the export dialogs show them.
namespace las {

/// Replaces the content by these names, none of them checked.
void fillCheckList(QListWidget *list, const QStringList &names);
QVector<ListedLog> checkedLogs(const QListWidget *list);
/// With the list's signals blocked.
void setAllChecked(QListWidget *list, bool isChecked);
bool isAllChecked(const QListWidget *list);

} // namespace las
