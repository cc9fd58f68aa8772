#include "workbench/proposaltable.h"

#include "workbench/statecolors.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableView>

namespace workbench {

namespace {

constexpr int widestColumn = 180;
constexpr int columnPadding = 6;
constexpr int narrowestNotesColumn = 200;
constexpr int rowPadding = 9; // room for an editor
constexpr int notesLines = 2;

QLabel *newTextLabel(const char *objectName, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(objectName));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

QTableView *newProposalTable(const char *objectName, QAbstractItemModel *model, QWidget *parent)
{
    auto *table = new QTableView(parent);
    table->setObjectName(QString::fromLatin1(objectName));
    table->setModel(model);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + rowPadding);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    return table;
}

void fitProposalColumns(QTableView *table, int first)
{
    const int last = table->model()->columnCount() - 1;
    table->resizeColumnsToContents();
    for (int column = first; column < last; ++column)
        table->setColumnWidth(column, qMin(table->columnWidth(column) + columnPadding, widestColumn));
    table->setColumnWidth(last, narrowestNotesColumn); // and stretched from there
}

QLabel *newNotesLabel(QWidget *parent)
{
    QLabel *label = newTextLabel("notesLabel", parent);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setMinimumHeight(notesLines * label->fontMetrics().lineSpacing());
    return label;
}

QLabel *newStateLabel(QWidget *parent)
{
    return newTextLabel("stateLabel", parent);
}

void showState(QLabel *label, const QString &problem, const QString &state)
{
    const QPalette usual = label->window()->palette();
    QPalette colours = usual;
    if (!problem.isEmpty())
        colours.setColor(QPalette::WindowText, problemText(usual));
    label->setPalette(colours);
    label->setText(problem.isEmpty() ? state : problem);
}

} // namespace workbench
