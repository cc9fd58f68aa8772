#pragma once

#include "las/importplan.h"
#include "las/rundialog.h"

#include <functional>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTableWidgetItem;
class QTabWidget;
QT_END_NAMESPACE

class WellImportTab;
struct ProjectData;
namespace las {
class ImportRun;
}

/// Imports curves of LAS files into wells of the survey: a tab a file, with its curves, its well and its text.
class WellImportDialog : public RunDialog
{
    Q_OBJECT

public:
    /// Asks the user for files; an empty list means none.
    using FileChooser = std::function<QStringList(QWidget *parent, const QString &caption, const QString &filter)>;

    /// \a projectData must outlive the dialog.
    explicit WellImportDialog(ProjectData &projectData, QWidget *parent = nullptr);

    /// A file dialog unless it is replaced.
    FileChooser chooseFiles;

signals:
    /// A well of the catalogue got new logs. Given once a well at the end of every import, also of a cancelled one.
    void logsImported(int well);

public slots:
    void selectLasFilesClicked();
    void intervalCheckBoxToggled(bool isChecked);
    void importSelectedClicked();
    void tabClosedClicked(int tabIdx);
    void cancelBtnClicked();
    void wellChanged(QString wellName);
    void cellChanged(QTableWidgetItem *item);
    void addWellWidget(int tabIdx, WellInfo m_well, QString filename);

protected:
    void setInputsEnabled(bool isEnabled) override;

private:
    QWidget *buildOptions();
    QWidget *buildButtons();
    WellImportTab *tabAt(int index) const;
    /// A tab for each.
    End loadFiles(const QStringList &paths);
    WellImportTab *addTab(int tabIdx, const WellInfo &file, const QString &path);
    void tabsChanged();
    bool hasFileInFeet() const;
    /// In the host's box.
    void tellUnreadableWells(const QStringList &wellNames);
    End importTabs(const QVector<las::ImportTab> &tabs, const las::ImportOptions &options, las::ImportRun *run);
    End importRows(const las::ImportTab &tab, const las::ImportOptions &options, bool countsRows,
                   las::ImportRun *run);
    End importRow(const las::ImportTab &tab, const las::ImportRow &row, const las::ImportOptions &options,
                  las::ImportRun *run);
    /// Deleted when the dialog went meanwhile.
    End tellResults(End end, const las::ImportRun &run);

    ProjectData &m_data;
    QTabWidget *m_tabs = nullptr;
    QPushButton *m_selectButton = nullptr;
    QPushButton *m_importButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    QCheckBox *m_intervalBox = nullptr;
    QLineEdit *m_intervalEdit = nullptr;
    QCheckBox *m_feetBox = nullptr;
    QLabel *m_status = nullptr;
    QProgressBar *m_progressBar = nullptr;
    bool m_hasFiles = false; ///< at least one was chosen
};
