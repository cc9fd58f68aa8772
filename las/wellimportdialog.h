#pragma once

#include "las/importplan.h"

#include <QDialog>

#include <functional>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTableWidgetItem;
class QTabWidget;
QT_END_NAMESPACE

class HostWriter;
class WellImportTab;
struct ProjectData;

/// Imports curves of LAS files into wells of the survey: a tab a file, with its curves, its well and its text.
class WellImportDialog : public QDialog
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

public:
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    enum class End { Finished, Stopped, Cancelled, Deleted };
    struct Progress;

    QWidget *buildOptions();
    QWidget *buildButtons();
    WellImportTab *tabAt(int index) const;
    void renumberTabs();
    void setRunning(bool isRunning);
    End importTabs(const QVector<las::ImportTab> &tabs, const las::ImportOptions &options, Progress *progress);
    End importRows(const las::ImportTab &tab, const las::ImportOptions &options, bool countsRows, Progress *progress);
    End importRow(const las::ImportTab &tab, const las::ImportRow &row, const las::ImportOptions &options,
                  HostWriter *writer, Progress *progress);
    void finishImport(End end, const Progress &progress);

    ProjectData &m_data;
    QTabWidget *m_tabs = nullptr;
    QPushButton *m_selectButton = nullptr;
    QPushButton *m_importButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    QCheckBox *m_intervalBox = nullptr;
    QLineEdit *m_intervalEdit = nullptr;
    QProgressBar *m_progressBar = nullptr;
    bool m_hasFiles = false; ///< at least one was chosen
    bool m_isCancelled = false;
    bool m_isRunning = false;
    bool m_closesAfterImport = false;
};
