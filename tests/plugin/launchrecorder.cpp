#include "launchrecorder.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QProgressBar>

LaunchRecorder::LaunchRecorder(const std::function<QString()> &describe)
    : m_describe(describe)
{
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this, &LaunchRecorder::look);
    qApp->installEventFilter(this);
}

bool LaunchRecorder::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show)
        return false;
    if (watched->objectName() == QLatin1String("MainWindow"))
        ++mainWindowShows;
    if (watched->objectName() == QLatin1String("Launcher")) {
        ++launcherShows;
        connect(watched->findChild<QProgressBar *>(), &QProgressBar::valueChanged, this,
                [this](int value) { progress.append(value); });
    }
    return false;
}

void LaunchRecorder::look()
{
    const QString state = m_describe();
    if (state.isEmpty() || (!states.isEmpty() && states.last() == state))
        return;
    states.append(state);
    if (onState)
        onState(states.size());
}
