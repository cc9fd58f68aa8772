#pragma once

#include <QString>

namespace base {
class Asker;
}

namespace workbench {
class WorkbenchHost;
}

namespace programs {

class PictureFolder;

/// The list of wells with the tree of logs and markers of one of them.
void drawManagedWells(workbench::WorkbenchHost &host, base::Asker &asker, PictureFolder *pictures);
/// The wells that the files beside a demo survey would make in a new one.
void drawNewWells(const QString &survey, base::Asker &asker, PictureFolder *pictures);
/// What a table of tops, made up of the survey's own markers, would change in its wells.
void drawTops(workbench::WorkbenchHost &host, base::Asker &asker, PictureFolder *pictures);

} // namespace programs
