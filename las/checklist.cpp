#include "las/checklist.h"

#include <QSignalBlocker>

namespace las {

void fillCheckList(QListWidget *list, const QStringList &names)
{
    const QSignalBlocker blocker(list);
    list->clear();
    for (const QString &name : names) {
        auto *item = new QListWidgetItem(name, list);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    if (list->count() > 0)
        list->setCurrentRow(0); // so that the keyboard has something to check
}

QVector<ListedLog> checkedLogs(const QListWidget *list)
{
    QVector<ListedLog> logs;
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->checkState() == Qt::Checked)
            logs.append({list->item(i)->text(), i});
    return logs;
}

void setAllChecked(QListWidget *list, bool isChecked)
{
    const QSignalBlocker blocker(list);
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
    list->viewport()->update();
}

bool isAllChecked(const QListWidget *list)
{
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->checkState() != Qt::Checked)
            return false;
    return true;
}

} // namespace las
