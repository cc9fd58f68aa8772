#include "welldata/defaultdataclass.h"

#include "base/asker.h"
#include "base/cellcombobox.h"
#include "base/cellproperties.h"
#include "base/tabbedtable.h"
#include "base/waitcursor.h"
#include "datastore/curvegroupassignment.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"
#include "welldata/defaultdata.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr char logProperty[] = "logName";
constexpr char groupProperty[] = "groupName";
constexpr int groupWidthPx = 190;
constexpr int nameWidthPx = 220;

} // namespace

DefaultDataClass::DefaultDataClass(ProjectData &projectData, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_well({QStringLiteral("None"), {}})
{
    setObjectName(QStringLiteral("DefaultDataClass"));
    setWindowTitle(QStringLiteral("Log(s)"));
    build();
    connect(m_table, &QTableWidget::itemChanged, this, &DefaultDataClass::logNameChanged);
    connect(m_update, &QPushButton::clicked, this, &DefaultDataClass::updateBtnClicked);
}

void DefaultDataClass::build()
{
    m_table = new base::TabbedTable(0, 3);
    m_table->setObjectName(QStringLiteral("defaultTable"));
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Curve Name"), QStringLiteral("Group Name"), QStringLiteral("Default")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 12);
    fitColumns();
    m_groups = new QStringListModel(welldata::groupsWithDefaults(m_data.project.groupNames), this);
    m_update = new QPushButton(QStringLiteral("Update"));
    m_update->setObjectName(QStringLiteral("updateButton"));
    m_update->setToolTip(QStringLiteral("Store the groups and the default logs of this well"));
    m_update->setEnabled(false);
    m_status = new QLabel;
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_status, 1);
    bottom->addWidget(m_update);
    auto *page = new QVBoxLayout(this);
    page->addWidget(new QLabel(QStringLiteral("Logs And Default Data:")));
    page->addWidget(m_table, 1);
    page->addLayout(bottom);
}

void DefaultDataClass::fitColumns()
{
    m_table->resizeColumnsToContents();
    m_table->setColumnWidth(NameColumn, qMax(nameWidthPx, m_table->columnWidth(NameColumn)));
    m_table->setColumnWidth(GroupColumn, qMax(groupWidthPx, m_table->columnWidth(GroupColumn)));
}

void DefaultDataClass::setWell(const QString &wellName, const QString &wellKey)
{
    if (m_isModified) {
        const QPointer<DefaultDataClass> self = this;
        const bool saves = m_data.asker.confirm(
            windowTitle(),
            QStringLiteral("You changed the default data but not saved them.\nWould you like to save them ?"));
        if (!self)
            return;
        if (saves && !store())
            tellNotStored();
        if (!self)
            return;
        m_isModified = false;
    }
    m_well = welldata::chosenWell(m_data, wellName, wellKey);
    clearTable();
    m_status->clear();
    m_update->setEnabled(false);
    if (!m_well.isSet())
        return;
    const int well = m_data.catalogue.indexOfKey(m_well.key);
    const QStringList logs = well < 0 ? QStringList() : m_data.catalogue.logNames(well);
    if (logs.isEmpty()) {
        m_status->setText(QStringLiteral("Well logs ara not available for this Well !"));
        return;
    }
    {
        const QSignalBlocker blocker(m_table);
        m_table->setRowCount(logs.size());
        CurveGroupFinder groups(m_data.project.projectFolder);
        for (int row = 0; row < logs.size(); ++row)
            addRow(row, logs.at(row), groups.group(logs.at(row)));
        fitColumns();
    }
    m_update->setEnabled(true);
    const QPointer<DefaultDataClass> self = this;
    readDefaults();
    if (self)
        rebuildLists();
}

void DefaultDataClass::clearTable()
{
    const QSignalBlocker blocker(m_table);
    // Qt's view remembers a cell's widget until that is taken out of the cell.
    for (int row = 0; row < m_table->rowCount(); ++row) {
        for (const int column : {GroupColumn, DefaultColumn}) {
            m_table->cellWidget(row, column)->hide(); // it goes later
            m_table->removeCellWidget(row, column);
        }
    }
    m_table->setRowCount(0);
    for (QStringList *list : {&m_defaultLogs, &m_defaultGroups, &m_allLogs, &m_allGroups})
        list->clear();
}

void DefaultDataClass::addRow(int row, const QString &logName, const QString &group)
{
    m_table->setItem(row, NameColumn, new QTableWidgetItem(logName));
    auto *box = new base::CellComboBox(m_groups, m_table);
    auto *check = new QCheckBox;
    check->setFocusPolicy(Qt::ClickFocus);
    const auto mark = [&](QWidget *widget, int column) {
        widget->setProperty(base::rowProperty, row);
        widget->setProperty(base::columnProperty, column);
        widget->setProperty(logProperty, logName);
        widget->setProperty(groupProperty, group);
        m_table->setCellWidget(row, column, widget);
    };
    mark(box, GroupColumn);
    mark(check, DefaultColumn);
    showGroup(row, group);
    m_allLogs.append(logName);
    m_allGroups.append(group);
    connect(box, &QComboBox::currentTextChanged, this, &DefaultDataClass::groupNameChanged);
    connect(check, &QCheckBox::toggled, this, &DefaultDataClass::checkBoxToggled);
}

QComboBox *DefaultDataClass::groupBox(int row) const
{
    return qobject_cast<QComboBox *>(m_table->cellWidget(row, GroupColumn));
}

QCheckBox *DefaultDataClass::checkBox(int row) const
{
    return qobject_cast<QCheckBox *>(m_table->cellWidget(row, DefaultColumn));
}

QString DefaultDataClass::groupOf(int row) const
{
    return groupBox(row)->property(groupProperty).toString();
}

// A group that the boxes do not offer ("Depth", one of another program) shows, and stays until the user chooses one.
void DefaultDataClass::showGroup(int row, const QString &group)
{
    QComboBox *box = groupBox(row);
    const QSignalBlocker blocker(box);
    const int index = box->findText(group);
    box->setPlaceholderText(index < 0 ? group : QString());
    box->setCurrentIndex(index);
    box->setProperty(groupProperty, group);
    checkBox(row)->setProperty(groupProperty, group);
}

void DefaultDataClass::readDefaults()
{
    const QString &folder = m_data.project.projectFolder;
    const QString path = defaultLogsPath(folder, m_well.name);
    const ProjectFile file = readProjectFile(folder, path);
    if (file.state == ProjectFile::State::Missing)
        return;
    if (file.state == ProjectFile::State::Unreadable) {
        m_data.asker.warn(windowTitle(),
                          QStringLiteral("Unable to open this File : ") + path
                              + QStringLiteral("\nPlease check file read/write permission."));
        return;
    }
    const welldata::DefaultDataFile read = welldata::parseDefaultData(file.bytes);
    if (!isOfWell(read, m_well.name)) {
        m_data.asker.warn(windowTitle(),
                          QStringLiteral("Selected well's wellName is not match with file header's wellname."));
        return;
    }
    QHash<QString, int> rows;
    for (int row = m_allLogs.size(); row-- > 0;)
        rows.insert(textfields::fieldName(m_allLogs.at(row)), row);
    for (int i = 0; i < read.logs.logs.size(); ++i) {
        const int row = rows.value(textfields::fieldName(read.logs.logs.at(i)), -1);
        if (row < 0)
            continue;
        showGroup(row, read.logs.groups.at(i));
        m_allGroups[row] = read.logs.groups.at(i);
        const QSignalBlocker blocker(checkBox(row));
        checkBox(row)->setChecked(true);
    }
}

int DefaultDataClass::senderRow() const
{
    const QVariant row = sender() ? sender()->property(base::rowProperty) : QVariant();
    return row.isValid() ? row.toInt() : -1;
}

void DefaultDataClass::checkBoxToggled(bool isChecked)
{
    const int row = senderRow();
    if (row < 0)
        return;
    for (int other = 0; isChecked && other < m_table->rowCount(); ++other) {
        if (other == row || groupOf(other) != groupOf(row))
            continue;
        const QSignalBlocker blocker(checkBox(other));
        checkBox(other)->setChecked(false);
    }
    m_isModified = true;
    rebuildLists();
}

void DefaultDataClass::groupNameChanged(QString groupName)
{
    const int row = senderRow();
    if (row < 0)
        return;
    groupBox(row)->setProperty(groupProperty, groupName);
    checkBox(row)->setProperty(groupProperty, groupName);
    m_allGroups[row] = groupName;
    m_isModified = true;
    rebuildLists();
}

// Logs are renamed in the host.
void DefaultDataClass::logNameChanged(QTableWidgetItem *item)
{
    if (!item || item->column() != NameColumn || item->row() >= m_allLogs.size())
        return;
    const QSignalBlocker blocker(m_table);
    item->setText(m_allLogs.at(item->row()));
    m_table->viewport()->update();
}

void DefaultDataClass::rebuildLists()
{
    m_defaultLogs.clear();
    m_defaultGroups.clear();
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (!checkBox(row)->isChecked())
            continue;
        m_defaultLogs.append(m_allLogs.at(row));
        m_defaultGroups.append(groupOf(row));
    }
}

bool DefaultDataClass::store()
{
    const QString name = m_well.name;
    if (!welldata::storeDefaultData(m_data, name, {{m_defaultGroups, m_defaultLogs}, {m_allGroups, m_allLogs}}))
        return false;
    m_isModified = false;
    m_status->setText(QStringLiteral("Updated Successfully !"));
    emit defaultsWritten(name);
    return true;
}

void DefaultDataClass::tellNotStored()
{
    m_data.asker.warn(windowTitle(),
                      QStringLiteral("Unable to create file.\nPlease Check file read/write permission."));
}

void DefaultDataClass::updateBtnClicked()
{
    if (!m_well.isSet() || m_table->rowCount() == 0)
        return;
    bool isStored = false;
    {
        const base::WaitCursor cursor;
        isStored = store();
    }
    if (!isStored)
        tellNotStored();
}
