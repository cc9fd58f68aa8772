#pragma once

#include <QString>

namespace programs {

class PictureFolder;
class PluginWindow;

/// The main window alone, then with displays of the first well after each of its global templates.
void drawDisplays(const PluginWindow &plugin, PictureFolder *pictures);
/// The first correlation: in measured depth, flattened, in feet below the sea.
void drawCorrelations(const PluginWindow &plugin, PictureFolder *pictures);
/// The first correlation, of many wells side by side and flattened: its left half above its right one.
void drawWideCorrelation(const PluginWindow &plugin, PictureFolder *pictures);
/// The menu of a template in the project tree.
void drawTreeMenu(const PluginWindow &plugin, PictureFolder *pictures);
/// Import and export of logs, with the LAS files that lie beside a demo survey.
void drawExchange(const PluginWindow &plugin, const QString &survey, PictureFolder *pictures);
/// The four editors of well data, and the import of the markers that lie beside a demo survey.
void drawWellData(const PluginWindow &plugin, const QString &survey, PictureFolder *pictures);
/// Both template editors.
void drawTemplateEditors(const PluginWindow &plugin, PictureFolder *pictures);

} // namespace programs
