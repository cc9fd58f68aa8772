#pragma once

#include "welldata/welldatastore.h"

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
class QVBoxLayout;
QT_END_NAMESPACE

class ColumnImportDialog;
class WellDataTable;
struct ProjectData;

/// What the editors of markers, perforation zones and calibration points have in common: a table, the buttons that add
/// and remove rows, import a text file and store the table, and a line that says how that went.
class WellTableEditor : public QWidget
{
    Q_OBJECT

public:
    /// Shows another well; "None" or an empty name means none. \a wellKey tells wells of one name apart. What was not
    /// saved is gone: ask with mayLeave() first.
    void setWell(const QString &wellName, const QString &wellKey = {});
    const QString &wellName() const { return m_well.name; }
    /// The well that is shown has another name now, under which the table is saved.
    void followName(const QString &wellName) { m_well.name = wellName; }

    WellDataTable *table() const { return m_table; }
    /// Whether the table holds what is not saved.
    bool isModified() const { return m_isModified; }
    /// Asks whether to save what is not saved, and saves it. False when that failed and the table should stay. Of a well
    /// that the survey no longer has nothing can be saved, which is told.
    bool mayLeave();

public slots:
    void addRow();
    void deleteRow();
    void fromAsciiFileButtonClicked();
    virtual void updateBtnClicked() = 0;

protected:
    /// \a title is the text of the tab and the title of boxes; \a dataName is what the table holds, in a sentence.
    WellTableEditor(ProjectData &projectData, const QString &title, const QString &dataName,
                    const QVector<welldata::TableColumn> &columns, QWidget *parent);

    ProjectData &data() const { return m_data; }
    const welldata::WellChoice &well() const { return m_well; }
    bool hasWell() const { return m_well.isSet(); }
    QVBoxLayout *page() const { return m_page; }
    /// Puts a widget that stands above the buttons in front of them for the Tab key.
    void takeTabsFirst(QWidget *widget);
    /// Reads the rows of the well, shows them and says so.
    virtual void load() = 0;
    /// Stores the table and says so. False when nothing was stored.
    virtual bool save() = 0;
    /// The caller, who owns it, opens it.
    virtual ColumnImportDialog *makeImport() = 0;

    void showRows(const QVector<welldata::TableRow> &rows);
    void setSaved() { m_isModified = false; }
    void setStatus(const QString &text);
    /// One that is no longer true when the table is edited.
    void setPassingStatus(const QString &text);
    /// Behind what it says already.
    void addStatus(const QString &text);
    /// The table and its four buttons.
    void setEditingEnabled(bool isEnabled);
    QPushButton *updateButton() const { return m_update; }

private:
    void build();
    void noteChange();

    ProjectData &m_data;
    QString m_dataName;
    welldata::WellChoice m_well;
    WellDataTable *m_table;
    QVBoxLayout *m_page = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_import = nullptr;
    QPushButton *m_update = nullptr;
    QLabel *m_status = nullptr;
    bool m_isModified = false;
    bool m_isShowing = false;
    bool m_isStatusPassing = false;
};
