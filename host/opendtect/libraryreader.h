#pragma once

#include "host/hostrecords.h"

#include <memory>

#include <ptrman.h>
#include <uistring.h>

class IOObj;
namespace Well {
class Data;
class Log;
class odReader;
} // namespace Well

namespace opendtect {

class InputFile;

/// The host's library reading a well's files into a well of its kind. Lengths are in the survey's unit.
class LibraryReader
{
public:
    /// Fills \a data, an empty well that is not owned and belongs to this one as long as it lives.
    LibraryReader(const IOObj &entry, Well::Data &data);
    ~LibraryReader();
    LibraryReader(const LibraryReader &) = delete;
    LibraryReader &operator=(const LibraryReader &) = delete;

    const Well::Data &data() const { return m_data; }
    Well::Data &data() { return m_data; }

    /// Header and track. False when there is no well.
    bool readMain(InputFile &file);
    /// A log, with two undefined samples when only the header is read; null when it cannot be read.
    std::unique_ptr<Well::Log> readLog(InputFile &file, bool isHeaderOnly);
    /// The markers of data(). False when they cannot be read.
    bool readMarkers(InputFile &file);
    /// Why the last of these could not be done, if the library tells.
    QString reason() const;

private:
    class KeptTrack;

    Well::Data &m_data;
    uiString m_reason; ///< of the reader
    std::unique_ptr<Well::odReader> m_reader;
};

} // namespace opendtect
