#include "welldata/welltableeditor.h"

#include "base/asker.h"
#include "base/keptlooks.h"
#include "datastore/projectdata.h"
#include "welldata/columnimportdialog.h"
#include "welldata/welldatatable.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

QPushButton *makeButton(const QString &text, const char *name)
{
    auto *button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

WellTableEditor::WellTableEditor(ProjectData &projectData, const QString &title, const QString &dataName,
                                 const QVector<welldata::TableColumn> &columns, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_dataName(dataName)
    , m_well({QStringLiteral("None"), {}})
    , m_table(new WellDataTable(columns))
{
    setWindowTitle(title);
    build();
    base::keepColumns(m_table->horizontalHeader(), dataName);
    connect(m_table, &WellDataTable::changed, this, &WellTableEditor::noteChange);
    setEditingEnabled(false);
    setStatus(QStringLiteral("Well not selected !"));
}

void WellTableEditor::build()
{
    m_page = new QVBoxLayout(this);
    m_add = makeButton(QString(), "addButton");
    m_add->setIcon(m_data.host.icon(QStringLiteral("plus.png")));
    m_add->setToolTip(QStringLiteral("Add a row at the end"));
    m_delete = makeButton(QString(), "deleteButton");
    m_delete->setIcon(m_data.host.icon(QStringLiteral("minus.png")));
    m_delete->setToolTip(QStringLiteral("Delete"));
    m_import = makeButton(QStringLiteral("ASCII File"), "asciiFileButton");
    m_import->setToolTip(QStringLiteral("Import %1 from a text file with columns between tabs").arg(m_dataName));
    m_update = makeButton(QStringLiteral("Update"), "updateButton");
    m_update->setToolTip(QStringLiteral("Store the table"));
    m_status = new QLabel;
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);

    auto *top = new QHBoxLayout;
    top->addWidget(m_add);
    top->addWidget(m_delete);
    top->addStretch(1);
    top->addWidget(m_import);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_status, 1);
    bottom->addWidget(m_update);
    m_page->addLayout(top);
    m_page->addWidget(m_table, 1);
    m_page->addLayout(bottom);

    connect(m_add, &QPushButton::clicked, this, &WellTableEditor::addRow);
    connect(m_delete, &QPushButton::clicked, this, &WellTableEditor::deleteRow);
    connect(m_import, &QPushButton::clicked, this, &WellTableEditor::fromAsciiFileButtonClicked);
    connect(m_update, &QPushButton::clicked, this, &WellTableEditor::updateBtnClicked);
}

void WellTableEditor::setWell(const QString &wellName, const QString &wellKey)
{
    m_table->finishEditing();
    m_well = welldata::chosenWell(m_data, wellName, wellKey);
    setStatus(QString());
    if (hasWell()) {
        setEditingEnabled(true);
        load();
        return;
    }
    showRows({});
    setEditingEnabled(false);
    setStatus(QStringLiteral("Well not selected !"));
}

bool WellTableEditor::mayLeave()
{
    m_table->finishEditing();
    if (!m_isModified || !hasWell())
        return true;
    const QPointer<WellTableEditor> self = this;
    if (m_data.catalogue.indexOfKey(m_well.key) < 0) {
        m_data.asker.warn(
            windowTitle(),
            QStringLiteral("The survey no longer has the well \"%1\".\nYour changes of its %2 are lost.")
                .arg(m_well.name, m_dataName));
        return !self.isNull();
    }
    const bool saves = m_data.asker.confirm(
        windowTitle(),
        QStringLiteral("You changed the %1 but not saved them.\nWould you like to save them ?").arg(m_dataName));
    if (!self)
        return false;
    return saves ? save() : true;
}

void WellTableEditor::addRow()
{
    if (!hasWell())
        return;
    m_table->finishEditing();
    m_table->appendNewRow();
}

// What the user typed or pasted can be stored, also where nothing was stored yet.
void WellTableEditor::noteChange()
{
    if (m_isShowing)
        return;
    m_isModified = true;
    m_update->setEnabled(true);
    if (m_isStatusPassing)
        setStatus({});
}

void WellTableEditor::deleteRow()
{
    m_table->removeRows();
}

void WellTableEditor::fromAsciiFileButtonClicked()
{
    ColumnImportDialog *dialog = makeImport();
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void WellTableEditor::showRows(const QVector<welldata::TableRow> &rows)
{
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    m_table->setRows(rows);
    m_isModified = false;
}

void WellTableEditor::takeTabsFirst(QWidget *widget)
{
    setTabOrder(m_add, widget); // from the end of the chain to its beginning
    setTabOrder(widget, m_add);
}

void WellTableEditor::setStatus(const QString &text)
{
    m_status->setText(text);
    m_isStatusPassing = false;
}

void WellTableEditor::setPassingStatus(const QString &text)
{
    setStatus(text);
    m_isStatusPassing = true;
}

void WellTableEditor::addStatus(const QString &text)
{
    setStatus((m_status->text() + QLatin1Char(' ') + text).trimmed());
}

void WellTableEditor::setEditingEnabled(bool isEnabled)
{
    m_table->setEnabled(isEnabled);
    for (QPushButton *button : {m_add, m_delete, m_import, m_update})
        button->setEnabled(isEnabled);
}
