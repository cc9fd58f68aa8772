#pragma once

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLabel;
class QProgressBar;
QT_END_NAMESPACE

struct ProjectData;

/// The small frameless window that shows how far a launch has come. Its constructor prepares the launch's data: it
/// reads the wells, opens or makes the project folder and seeds it.
class Launcher : public QDialog
{
    Q_OBJECT

public:
    /// Fills \a projectData, which must outlive the launcher.
    explicit Launcher(ProjectData &projectData, QWidget *parent = nullptr);

    void setProgress(int percent);
    void setStatus(const QString &text);

private:
    void prepareData(ProjectData &projectData);
    void layPaper();
    void buildWidgets(const ProjectData &projectData);

    QProgressBar *m_progressBar = nullptr;
    QLabel *m_statusLabel = nullptr;
};
