#pragma once

#include <QDialog>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QComboBox;
class QListWidget;
class QListWidgetItem;
QT_END_NAMESPACE

struct ProjectData;
namespace las {
struct ListedLog;
}

/// Exports logs of one well as two-column text files into the project's folder of the well.
class ExportCurvesInAscii : public QDialog
{
    Q_OBJECT

public:
    /// \a projectData must outlive the dialog.
    explicit ExportCurvesInAscii(ProjectData &projectData, QWidget *parent = nullptr);

signals:
    /// Files were written into this folder.
    void exported(const QString &folder);

public slots:
    void wellChanged();
    void selectAllToggle(bool flag);
    void exportClicked();

private:
    void logChecked();
    int currentWell() const;
    enum class Outcome { Written, Unread, Failed };
    Outcome exportLog(const las::ListedLog &log);

    ProjectData &m_data;
    QComboBox *m_wellBox = nullptr;
    QCheckBox *m_allBox = nullptr;
    QListWidget *m_logs = nullptr;
};
