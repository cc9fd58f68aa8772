#include "correlation/correlationwellstable.h"

#include "base/stillcombobox.h"
#include "datastore/projectdata.h"
#include "templates/templatestore.h"

#include <QComboBox>
#include <QHeaderView>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int wellColumn = 0;
constexpr int templateColumn = 1;

} // namespace

CorrelationWellsTable::CorrelationWellsTable(ProjectData &projectData, QWidget *parent)
    : QTableWidget(0, 2, parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("wellsTable"));
    setHorizontalHeaderLabels({QStringLiteral("Well"), QStringLiteral("Template")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    setSelectionBehavior(SelectRows);
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
    auto *wells = new base::StillComboBox;
    wells->setObjectName(QStringLiteral("wellChooser"));
    wells->addItems(m_data.catalogue.wellNames());
    wells->setCurrentText(well.wellName);
    setCellWidget(row, wellColumn, wells);
    auto *templates = new base::StillComboBox;
    templates->setObjectName(QStringLiteral("templateChooser"));
    setCellWidget(row, templateColumn, templates);
    renumber();
    refillTemplates(row);
    templates->setCurrentText(well.templateName);
    connect(wells, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, wells] {
        refillTemplates(wells->property("row").toInt());
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
                box->setProperty("row", row);
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
