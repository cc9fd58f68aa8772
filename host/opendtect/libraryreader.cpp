#include "host/opendtect/libraryreader.h"

#include "host/opendtect/inputfile.h"
#include "host/opendtect/odtext.h"

#include <welldata.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellmarker.h>
#include <wellodreader.h>
#include <welltrack.h>

namespace opendtect {

// What lies deeper than the track would make it longer when the library reads it.
class LibraryReader::KeptTrack
{
public:
    explicit KeptTrack(Well::Data &data)
        : m_data(data)
        , m_track(data.track())
    {
    }
    ~KeptTrack() { m_data.track() = m_track; }
    KeptTrack(const KeptTrack &) = delete;
    KeptTrack &operator=(const KeptTrack &) = delete;

private:
    Well::Data &m_data;
    const Well::Track m_track;
};

LibraryReader::LibraryReader(const IOObj &entry, Well::Data &data)
    : m_data(data)
    , m_reader(std::make_unique<Well::odReader>(entry, data, m_reason))
{
}

LibraryReader::~LibraryReader() = default;

bool LibraryReader::readMain(InputFile &file)
{
    // The library's own opening of what cannot be opened gives its reason.
    const bool isRead = file.isOpen() ? m_reader->getInfo(file.stream()) : m_reader->getInfo();
    if (!isRead || !m_reader->getTrack())
        return false;
    m_data.track().updateDahRange();
    return true;
}

std::unique_ptr<Well::Log> LibraryReader::readLog(InputFile &file, bool isHeaderOnly)
{
    const KeptTrack track(m_data);
    Well::LogSet &logs = m_data.logs();
    logs.setEmpty(); // it would not take a second log of a name
    if (!file.isOpen() || !m_reader->addLog(file.stream(), isHeaderOnly) || logs.isEmpty())
        return nullptr;
    return std::unique_ptr<Well::Log>(logs.remove(0));
}

bool LibraryReader::readMarkers(InputFile &file)
{
    m_data.markers().erase();
    return file.isOpen() ? m_reader->getMarkers(file.stream()) : m_reader->getMarkers();
}

QString LibraryReader::reason() const
{
    return toQString(m_reason);
}

} // namespace opendtect
