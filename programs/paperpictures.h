#pragma once

namespace base {
class Asker;
}
namespace host {
class Host;
}

namespace programs {

class PictureFolder;

/// Two pages of a well of the host's survey at true scale, around its reservoir, as they come out of a printer.
void drawPaper(host::Host &host, base::Asker &asker, PictureFolder *pictures);

} // namespace programs
