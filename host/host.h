#pragma once

#include "host/wells.h"

#include <QIcon>

#include <functional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace host {

/// Told about changes in the host. Calls come on the interface thread, possibly while the plug-in works with
/// windows of its own open.
class Listener
{
public:
    virtual ~Listener() = default;
    /// The marker set of this well was replaced or edited.
    virtual void markersChanged(const QString &wellKey) = 0;
    /// Another survey is current now: keys, indexes and paths of the old one are void.
    virtual void surveyChanged() = 0;
    /// The host ends, and has asked whatever it asks: windows go now, without a question.
    virtual void hostClosing() {}
};

/// An entry of the host's menu.
struct MenuAction
{
    QString text;
    QString iconName; ///< as for Host::icon()
    std::function<void()> triggered;
};

/// What the plug-in needs of the program that loaded it, and no more.
class Host
{
public:
    virtual ~Host() = default;

    /// Full path of the current survey's folder, without a separator at its end.
    virtual QString surveyDirectory() const = 0;
    /// The folder name of the current survey.
    virtual QString surveyName() const = 0;
    /// The folder that holds "icons.Default" and "ColorBars"; no separator at its end.
    virtual QString setupDataFolder() const = 0;
    /// The folder of the user documentation; no separator at its end.
    virtual QString documentationFolder() const = 0;

    /// An icon of the host's icon set by file name ("well.png"); a null icon when there is none.
    virtual QIcon icon(const QString &fileName) const = 0;
    /// Shows a modal error box in the host's manner.
    virtual void showError(const QString &text) = 0;
    /// The host's main window, parent of all windows of the plug-in; null when there is none. Not the caller's.
    virtual QWidget *mainWidget() const = 0;
    /// Appends an action to the end of the menu in which the host lets plug-ins add theirs. It lives as long as
    /// that menu or until removeAction() with the returned id.
    virtual int appendAction(const MenuAction &action) = 0;
    /// Appends an action to the host's own menu of wells, where the host lets plug-ins do so; else 0, and nothing is
    /// appended. removeAction() takes it out.
    virtual int appendWellsAction(const MenuAction &) { return 0; }
    /// Takes an action out of the menu again; an unknown id is ignored.
    virtual void removeAction(int id) = 0;

    /// The wells of the current survey; the reference stays valid across a change of survey.
    virtual Wells &wells() = 0;

    /// Listeners are not owned and are told in the order in which they were added.
    virtual void addListener(Listener *listener) = 0;
    virtual void removeListener(Listener *listener) = 0;
};

} // namespace host
