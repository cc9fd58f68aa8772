// What the window shows where it has no wells to show, and what it offers there.

#include "base/asker.h"
#include "base/waitcursor.h"
#include "survey/surveyfolder.h"
#include "workbench/hintpage.h"
#include "workbench/recentsurveysmenu.h"
#include "workbench/surveyoverview.h"
#include "workbench/workbenchwindow.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QStackedWidget>

namespace workbench {

void WorkbenchWindow::setDemoSurvey(const QString &folder, const std::function<QString(const QString &)> &make)
{
    m_demoFolder = folder;
    m_makeDemo = make;
    if (!m_demoAction) {
        auto *survey = menuBar()->findChild<QMenu *>(QStringLiteral("surveyMenu"));
        m_demoAction =
            addEntry(survey, "demoSurveyAction", QStringLiteral("&Demo survey"), &WorkbenchWindow::openDemo);
        survey->insertAction(m_recent->menuAction(), m_demoAction);
    }
    showHint();
}

void WorkbenchWindow::openDemo()
{
    QString problem;
    if (!survey::isSurveyFolder(m_demoFolder)) {
        const base::WaitCursor cursor;
        problem = m_makeDemo(m_demoFolder);
    }
    if (problem.isEmpty())
        openSurvey(m_demoFolder);
    else
        m_asker.warn(QStringLiteral("Demo survey"), problem);
}

void WorkbenchWindow::showListError(const QString &error)
{
    const bool isNew = error != m_listError;
    m_listError = error;
    if (error.isEmpty())
        return;
    m_hint->setHint(QStringLiteral("The wells cannot be listed"), error, {m_refreshAction, m_openAction});
    m_pages->setCurrentWidget(m_hint);
    if (isNew)
        m_asker.warn(QStringLiteral("Wells"), error);
}

void WorkbenchWindow::showHint()
{
    if (!hasSurvey() && m_demoAction)
        m_hint->setHint(
            QStringLiteral("No survey is open"),
            QStringLiteral("Open a survey folder or make a new one. The demo survey has wells to try things "
                           "out."),
            {m_openAction, m_newAction, m_demoAction});
    else if (!hasSurvey())
        m_hint->setHint(QStringLiteral("No survey is open"),
                        QStringLiteral("Open a survey folder or make a new one."), {m_openAction, m_newAction});
    else if (m_wellCount == 0)
        m_hint->setHint(
            QStringLiteral("This survey has no wells yet"),
            QStringLiteral("1.  Drop a folder of LAS files on this window, or choose the files.\n"
                           "2.  Look through the table of wells and press \"Create wells\": they come with "
                           "their logs.\n"
                           "3.  Choose a plug-in in the menu Utilities to see them.\n\n"
                           "Wells may also be added one by one. Help > Manual tells more."),
            {m_newWellsAction, m_manageAction});
    QWidget *page = hasSurvey() && m_wellCount > 0 ? static_cast<QWidget *>(m_overview) : m_hint;
    if (page != m_pages->currentWidget()) {
        m_pages->setCurrentWidget(page);
        page->setFocus(Qt::OtherFocusReason);
    }
}

} // namespace workbench
