#include "mainwin/windowlooks.h"

#include "base/usersettings.h"

#include <QMainWindow>
#include <QScreen>

namespace {

constexpr int stateVersion = 1; // to be raised when docks or tool bars come or go
constexpr double usualPartOfScreen = 0.8;

QString geometryKey()
{
    return QStringLiteral("MainWindow/geometry");
}

QString stateKey()
{
    return QStringLiteral("MainWindow/docks");
}

void centre(QMainWindow &window)
{
    const QScreen *screen = window.screen();
    if (!screen)
        return;
    const QRect available = screen->availableGeometry();
    QRect place(QPoint(), available.size() * usualPartOfScreen);
    place.moveCenter(available.center());
    window.setGeometry(place);
}

} // namespace

void restoreLooks(QMainWindow &window)
{
    const base::UserSettings settings = base::pluginSettings();
    if (!window.restoreGeometry(settings.value(geometryKey()).toByteArray()))
        centre(window);
    window.restoreState(settings.value(stateKey()).toByteArray(), stateVersion);
}

void keepLooks(const QMainWindow &window)
{
    const base::UserSettings settings = base::pluginSettings();
    settings.setValue(geometryKey(), window.saveGeometry());
    settings.setValue(stateKey(), window.saveState(stateVersion));
}
