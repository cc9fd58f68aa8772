#include "correlation/correlationwellstable.h"

#include "base/cellproperties.h"
#include "base/stillcombobox.h"
#include "datastore/projectdata.h"
#include "templates/templatestore.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int wellColumn = 0;
constexpr int templateColumn = 1;

QComboBox *makeChooser(const QString &name)
{
    auto *box = new base::StillComboBox;
    box->setObjectName(name);
    box->setFocusPolicy(Qt::ClickFocus);
    box->setContextMenuPolicy(Qt::NoContextMenu); // the table has one
    return box;
}

} // namespace

CorrelationWellsTable::CorrelationWellsTable(ProjectData &projectData, QWidget *parent)
    : TabbedTable(0, 2, parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("wellsTable"));
    setHorizontalHeaderLabels({QStringLiteral("Well"), QStringLiteral("Template")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    setSelectionBehavior(SelectRows);
    for (const int step : {-1, 1}) {
        auto *move = new QShortcut(QKeySequence(Qt::ALT + (step < 0 ? Qt::Key_Up : Qt::Key_Down)), this);
        move->setContext(Qt::WidgetWithChildrenShortcut);
        connect(move, &QShortcut::activated, this, [this, step] { moveCurrentWell(step); });
    }
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &CorrelationWellsTable::showMenu);
}

QStringList CorrelationWellsTable::templatesOf(const QString &wellName) const
{
    QStringList names = m_data.project.globalTemplateNames + wellTemplateNames(m_data.project, wellName);
    names.removeDuplicates(); // a global template hides the well's own of its name
    return names;
}

QComboBox *CorrelationWellsTable::chooser(int row, int column) const
{
    return qobject_cast<QComboBox *>(cellWidget(row, column));
}

void CorrelationWellsTable::addWell(const CorrelationWell &well)
{
    const int row = rowCount();
    insertRow(row);
    QComboBox *wells = makeChooser(QStringLiteral("wellChooser"));
    wells->addItems(m_data.catalogue.wellNames());
    wells->setCurrentText(well.wellName);
    setCellWidget(row, wellColumn, wells);
    QComboBox *templates = makeChooser(QStringLiteral("templateChooser"));
    setCellWidget(row, templateColumn, templates);
    renumber();
    refillTemplates(row);
    templates->setCurrentText(well.templateName);
    connect(wells, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, wells] {
        refillTemplates(wells->property(base::rowProperty).toInt());
        emit wellChosen();
    });
    connect(templates, QOverload<int>::of(&QComboBox::activated), this, &CorrelationWellsTable::templateChosen);
}

void CorrelationWellsTable::addNextWell()
{
    const QVector<CorrelationWell> there = wells();
    const QStringList names = m_data.catalogue.wellNames();
    CorrelationWell next;
    if (!there.isEmpty())
        next.templateName = there.last().templateName;
    const int above = there.isEmpty() ? -1 : names.indexOf(there.last().wellName);
    for (int i = 1; i <= names.size() && next.wellName.isEmpty(); ++i) {
        const QString &name = names.at((above + i) % names.size());
        const auto hasName = [&name](const CorrelationWell &well) { return well.wellName == name; };
        if (std::none_of(there.begin(), there.end(), hasName))
            next.wellName = name;
    }
    addWell(next);
}

void CorrelationWellsTable::removeWell()
{
    if (rowCount() == 0)
        return;
    removeRow(currentRow() >= 0 ? currentRow() : rowCount() - 1);
    renumber();
}

// A template that is gone stays chosen, as where the row does not move.
void CorrelationWellsTable::showWell(int row, const CorrelationWell &well)
{
    QComboBox *wells = chooser(row, wellColumn);
    const QSignalBlocker blocker(wells);
    wells->setCurrentText(well.wellName);
    refillTemplates(row);
    QComboBox *templates = chooser(row, templateColumn);
    if (!well.templateName.isEmpty() && templates->findText(well.templateName) < 0)
        templates->addItem(well.templateName);
    templates->setCurrentText(well.templateName);
}

void CorrelationWellsTable::moveCurrentWell(int step)
{
    const int from = currentRow();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= rowCount())
        return;
    const QVector<CorrelationWell> there = wells();
    showWell(from, there.at(to));
    showWell(to, there.at(from));
    const bool hasKeyboard = isAncestorOf(QApplication::focusWidget());
    setCurrentCell(to, qMax(0, currentColumn()));
    if (hasKeyboard)
        chooser(to, currentColumn())->setFocus();
    emit wellMoved();
}

void CorrelationWellsTable::showMenu(const QPoint &place)
{
    const QModelIndex cell = indexAt(place);
    if (!cell.isValid())
        return;
    setCurrentIndex(cell);
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("wellRowMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // Behind the tabulator stands the key that does the same.
    QAction *up = menu->addAction(QStringLiteral("Move &Up\tAlt+Up"), this, [this] { moveCurrentWell(-1); });
    QAction *down = menu->addAction(QStringLiteral("Move &Down\tAlt+Down"), this, [this] { moveCurrentWell(1); });
    up->setEnabled(cell.row() > 0);
    down->setEnabled(cell.row() < rowCount() - 1);
    menu->popup(viewport()->mapToGlobal(place));
}

void CorrelationWellsTable::refill()
{
    for (int row = 0; row < rowCount(); ++row) {
        QComboBox *wells = chooser(row, wellColumn);
        const QSignalBlocker blocker(wells);
        const QString chosen = wells->currentText();
        wells->clear();
        wells->addItems(m_data.catalogue.wellNames());
        wells->setCurrentText(chosen);
        refillTemplates(row);
    }
}

void CorrelationWellsTable::renumber()
{
    for (int row = 0; row < rowCount(); ++row)
        for (const int column : {wellColumn, templateColumn})
            if (QComboBox *box = chooser(row, column))
                box->setProperty(base::rowProperty, row);
}

QVector<CorrelationWell> CorrelationWellsTable::wells() const
{
    QVector<CorrelationWell> wells;
    for (int row = 0; row < rowCount(); ++row)
        wells.append({chooser(row, wellColumn)->currentText(), chooser(row, templateColumn)->currentText()});
    return wells;
}

void CorrelationWellsTable::offerTemplates()
{
    for (int row = 0; row < rowCount(); ++row) {
        QComboBox *templates = chooser(row, templateColumn);
        QStringList names = templatesOf(chooser(row, wellColumn)->currentText());
        const QString chosen = templates->currentText();
        if (templates->currentIndex() >= 0 && !names.contains(chosen))
            names.append(chosen);
        templates->clear();
        templates->addItems(names);
        templates->setCurrentText(chosen);
    }
}

// For the well of the row; the chosen template stays where that has it.
void CorrelationWellsTable::refillTemplates(int row)
{
    QComboBox *templates = chooser(row, templateColumn);
    if (!templates)
        return;
    const QString chosen = templates->currentText();
    templates->clear();
    templates->addItems(templatesOf(chooser(row, wellColumn)->currentText()));
    templates->setCurrentText(chosen);
}
