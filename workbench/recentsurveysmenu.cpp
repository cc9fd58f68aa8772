#include "workbench/recentsurveysmenu.h"

#include "workbench/windowsettings.h"

namespace workbench {

namespace {

QString menuText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

RecentSurveysMenu::RecentSurveysMenu(const QString &title, QWidget *parent)
    : QMenu(title, parent)
{
    setObjectName(QStringLiteral("recentMenu"));
    connect(this, &QMenu::aboutToShow, this, &RecentSurveysMenu::fill);
    fill();
}

void RecentSurveysMenu::fill()
{
    clear();
    const QStringList surveys = settings::recentSurveys();
    for (int i = 0; i < surveys.size(); ++i) {
        const QString path = surveys.at(i);
        QAction *action = addAction(QStringLiteral("&%1  %2").arg(i + 1).arg(menuText(path)));
        action->setObjectName(QStringLiteral("recentSurvey%1").arg(i + 1));
        // Queued: opening fills this menu anew and would delete the action that is being triggered.
        connect(
            action, &QAction::triggered, this, [this, path] { emit chosen(path); }, Qt::QueuedConnection);
    }
    if (surveys.isEmpty())
        addAction(QStringLiteral("No survey yet"))->setEnabled(false);
}

} // namespace workbench
