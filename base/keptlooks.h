#pragma once

#include "base/usersettings.h"

#include <QSize>

QT_BEGIN_NAMESPACE
class QDialog;
class QHeaderView;
class QWidget;
QT_END_NAMESPACE

namespace base {

/// The dialog opens in the size in which it was last closed, before that as it stands; in both cases as far as the screen
/// has room. A maximized one counts with the size that it has otherwise. \a name is that of the settings.
void keepSize(QDialog *dialog, const QString &name, const UserSettings &settings = pluginSettings());

/// What its screen has for a window, less the frame that it will get.
QSize roomOnScreen(const QWidget &window);

/// The columns of a table keep the widths that the user gave them, also in further tables of this name.
void keepColumns(QHeaderView *header, const QString &name);

/// The folder in which a file dialog of the plug-in was last used for something; the user's home before that.
QString lastFolder(const QString &purpose);
void keepLastFolder(const QString &purpose, const QString &folder);

} // namespace base
