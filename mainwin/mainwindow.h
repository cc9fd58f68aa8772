#pragma once

#include <QMainWindow>

struct ProjectData;

/// The plug-in's main window.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// \a projectData must outlive the window.
    explicit MainWindow(ProjectData &projectData, QWidget *parent = nullptr);

private:
    ProjectData &m_data;
};
