#include "mainwin/mainwindow.h"

#include "datastore/projectdata.h"

#include <QStatusBar>

MainWindow::MainWindow(ProjectData &projectData, QWidget *parent)
    : QMainWindow(parent)
    , m_data(projectData)
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("HESKO Log Interpretation Software V0.1"));
    setWindowIcon(m_data.host.icon(QStringLiteral("LORVA_wlc.png")));
    statusBar();
}
