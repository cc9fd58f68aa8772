#include "las/curveselection.h"

#include <QMenu>
#include <QTableWidget>

namespace las {

namespace {

template<class Choice>
void checkRows(QTableWidget *table, int column, const Choice &choice)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        QTableWidgetItem *box = table->item(row, column);
        box->setCheckState(choice(row, box->checkState() == Qt::Checked) ? Qt::Checked : Qt::Unchecked);
    }
}

} // namespace

QMenu *curveSelectionMenu(QTableWidget *table, int boxColumn, int depthRow, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("curveSelectionMenu"));
    const auto add = [=](const char *text, auto choice) {
        menu->addAction(QString::fromLatin1(text), table, [=] { checkRows(table, boxColumn, choice); });
    };
    add("All", [](int, bool) { return true; });
    add("None", [](int, bool) { return false; });
    add("Invert", [](int, bool isChecked) { return !isChecked; });
    if (depthRow >= 0 && depthRow < table->rowCount())
        add("Without Depth", [depthRow](int row, bool isChecked) { return isChecked && row != depthRow; });
    return menu;
}

} // namespace las
