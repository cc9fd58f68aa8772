#pragma once

#include "welldata/welldatastore.h"

#include <QStringList>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QStringListModel;
class QTableWidget;
class QTableWidgetItem;
QT_END_NAMESPACE

struct ProjectData;

/// The tab "Log(s)": every log of the selected well with its curve group, and per group the log that displays use by
/// default.
class DefaultDataClass : public QWidget
{
    Q_OBJECT

public:
    enum Column { NameColumn, GroupColumn, DefaultColumn };

    /// \a projectData must outlive the widget.
    explicit DefaultDataClass(ProjectData &projectData, QWidget *parent = nullptr);

    /// Shows another well; "None" or an empty name means none. Asks first whether to save what is not saved.
    void setWell(const QString &wellName, const QString &wellKey = {});
    const QString &wellName() const { return m_well.name; }
    bool isModified() const { return m_isModified; }

    const QStringList &defaultLogs() const { return m_defaultLogs; }
    const QStringList &defaultGroups() const { return m_defaultGroups; }
    const QStringList &allLogs() const { return m_allLogs; }
    const QStringList &allGroups() const { return m_allGroups; }

signals:
    /// The default logs of the well were written.
    void defaultsWritten(const QString &wellName);

public slots:
    void updateBtnClicked();
    void groupNameChanged(QString groupName);
    void checkBoxToggled(bool isChecked);
    void logNameChanged(QTableWidgetItem *item);

private:
    void build();
    void fitColumns();
    bool store();
    void tellNotStored();
    void clearTable();
    void addRow(int row, const QString &logName, const QString &group);
    void readDefaults();
    QComboBox *groupBox(int row) const;
    QCheckBox *checkBox(int row) const;
    QString groupOf(int row) const;
    void showGroup(int row, const QString &group);
    void rebuildLists();
    int senderRow() const;

    ProjectData &m_data;
    welldata::WellChoice m_well;
    QTableWidget *m_table = nullptr;
    QStringListModel *m_groups = nullptr; ///< one list for all boxes; a child
    QPushButton *m_update = nullptr;
    QLabel *m_status = nullptr;
    QStringList m_defaultLogs; ///< of the checked rows
    QStringList m_defaultGroups;
    QStringList m_allLogs; ///< of all rows
    QStringList m_allGroups;
    bool m_isModified = false;
};
