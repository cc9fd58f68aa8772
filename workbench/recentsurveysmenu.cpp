#include "workbench/recentsurveysmenu.h"

#include "workbench/windowsettings.h"

#include <QTextDocument>

namespace workbench {

namespace {

constexpr int widestPath = 600; // pixels: a menu is no wider than the screen

QString menuText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

RecentSurveysMenu::RecentSurveysMenu(const QString &title, QWidget *parent)
    : QMenu(title, parent)
{
    setObjectName(QStringLiteral("recentMenu"));
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentSurveysMenu::fill);
    fill();
}

void RecentSurveysMenu::fill()
{
    clear();
    const QStringList surveys = settings::recentSurveys();
    for (int i = 0; i < surveys.size(); ++i) {
        const QString path = surveys.at(i);
        const QString shown = fontMetrics().elidedText(path, Qt::ElideMiddle, widestPath);
        QAction *action = addAction(QStringLiteral("&%1  %2").arg(i + 1).arg(menuText(shown)));
        action->setToolTip(Qt::convertFromPlainText(path, Qt::WhiteSpaceNormal));
        action->setObjectName(QStringLiteral("recentSurvey%1").arg(i + 1));
        // Queued: opening fills this menu anew and would delete the action that is being triggered.
        connect(
            action, &QAction::triggered, this, [this, path] { emit chosen(path); }, Qt::QueuedConnection);
    }
    if (surveys.isEmpty())
        addAction(QStringLiteral("No survey yet"))->setEnabled(false);
}

} // namespace workbench
