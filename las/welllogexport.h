#pragma once

#include "las/rundialog.h"

#include <QHash>

#include <functional>
#include <optional>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QProgressBar;
class QPushButton;
class QTabWidget;
QT_END_NAMESPACE

class WellLogsTabWidget;
struct LogCurveData;
struct ProjectData;
namespace las {
class NameList;
struct ExportFile;
struct ListedLog;
} // namespace las

/// Exports logs as LAS 2.0 files, one a well, and opens the export as two-column files.
class WellLogExport : public RunDialog
{
    Q_OBJECT

public:
    /// Asks the user for a folder; an empty text means none.
    using FolderChooser = std::function<QString(QWidget *parent, const QString &title, const QString &folder)>;

    /// \a projectData must outlive the dialog.
    explicit WellLogExport(ProjectData &projectData, QWidget *parent = nullptr);

    /// A folder dialog unless it is replaced.
    FolderChooser chooseFolder;

signals:
    /// Files were written into this folder.
    void exported(const QString &folder);

public slots:
    void wellSelected(QListWidgetItem *item);
    void intervalCheckBoxToggled(bool isChecked);
    void browseBtnClicked();
    void exportBtnClicked();
    void curvesInAsciiClicked();

protected:
    void setInputsEnabled(bool isEnabled) override;

private:
    struct Job;

    void buildOptions(QWidget *page);
    QWidget *buildButtons();
    void tellExported();
    WellLogsTabWidget *tabAt(int index) const;
    int wellOf(const Job &job) const;
    QVector<Job> jobs() const;
    End checkGrids(const QVector<Job> &wells, double interval);
    End checkGrid(const Job &job, double interval, bool *isReadable);
    End readLog(const Job &job, const las::ListedLog &listed, std::optional<LogCurveData> *log);
    End exportWells(const QVector<Job> &wells, double interval);
    End exportWell(const Job &job, double interval, las::NameList *unsuitedLogs);
    End writeFile(const Job &job, const las::ExportFile &file);
    template<class Step>
    End withinMemory(const Job &job, const Step &step);

    ProjectData &m_data;
    QListWidget *m_wells = nullptr;
    QTabWidget *m_tabs = nullptr;
    QCheckBox *m_intervalBox = nullptr;
    QLineEdit *m_intervalEdit = nullptr;
    QLabel *m_intervalHint = nullptr;
    QLineEdit *m_folderEdit = nullptr;
    QPushButton *m_browseButton = nullptr;
    QProgressBar *m_progressBar = nullptr;
    QPushButton *m_exportButton = nullptr;
    QPushButton *m_closeButton = nullptr;
    QPushButton *m_asciiButton = nullptr;
    QHash<const QListWidgetItem *, WellLogsTabWidget *> m_tabOfItem;
};
