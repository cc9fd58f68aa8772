#include "programs/guidedtour.h"

#include "programs/pluginwindow.h"
#include "workbench/workbenchwindow.h"

#include <QAction>
#include <QMainWindow>
#include <QTreeWidget>

namespace programs {

namespace {

constexpr double lowerPart = 0.8; // of the depths: there wells have their reservoirs
constexpr int logDisplaysPage = 0;

} // namespace

void showTour(const workbench::WorkbenchWindow &window)
{
    QAction *action = window.hasSurvey() ? pluginAction(window.utilitiesMenu()) : nullptr;
    if (!action)
        return;
    action->trigger();
    QMainWindow *main = PluginWindow::below(&window);
    if (!main || !main->isVisible()) // closed again while it came
        return;
    const PluginWindow plugin(main);
    if (plugin.openFirstCorrelation())
        plugin.showOfFirstCorrelated(lowerPart);
    plugin.showPage(logDisplaysPage);
    for (const char *name : {"Petrophysics", "Default"})
        if (plugin.displayFirstWell(QString::fromLatin1(name), lowerPart))
            break;
    // The tree shows where that came from, and what else could be chosen.
    if (QTreeWidgetItem *well = plugin.firstWell()) {
        for (const QString &branch : {QStringLiteral("Template"), QStringLiteral("Global")})
            plugin.belowFirstWell(branch)->setExpanded(true);
        well->setExpanded(true);
        plugin.tree()->setCurrentItem(well);
        plugin.tree()->scrollToTop();
    }
}

} // namespace programs
