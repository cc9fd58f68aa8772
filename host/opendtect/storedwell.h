#pragma once

#include "base/filestate.h"
#include "host/hostrecords.h"

#include <QVector>

#include <memory>
#include <vector>

#include <uistring.h>

class IOObj;
namespace Well {
class Data;
class Log;
class MarkerSet;
class odReader;
} // namespace Well

namespace opendtect {

class InputFile;

/// A well as its files have it, read by the host's library past the host's memory: what is read of it stays here and
/// does not pile up there. Lengths are in the survey's unit.
class StoredWell
{
public:
    /// Reads header and track into \a data, an empty well that belongs to this one as long as it lives; not owned.
    StoredWell(const IOObj &entry, Well::Data &data);
    ~StoredWell();
    StoredWell(const StoredWell &) = delete;
    StoredWell &operator=(const StoredWell &) = delete;

    /// Why there is no well, as a sentence; empty when there is one.
    const QString &error() const { return m_error; }
    const QString &name() const { return m_name; }
    bool isOf(const IOObj &entry) const;
    /// Whether header and track are still those in the files.
    bool isUnchanged() const;
    const Well::Data &data() const { return m_data; }

    /// The headers of all logs that can be read, in the order of their files; files that did not change are not read
    /// again.
    const QVector<host::LogInfo> &logs();
    /// The log at an index of logs().
    host::Outcome<host::LogData> log(int index);
    struct LogPlace
    {
        QString path;
        const Well::Log *header = nullptr; ///< of the log that is there; null for a new one
    };
    /// Where the log with this name is stored, or a new one would be. An error where the host, which counts the logs
    /// that it can read, would take the log of another file for it.
    host::Outcome<LogPlace> placeOfLog(const char *name);
    /// The log's file was written with what \a log has.
    void logWritten(const Well::Log &log, const QString &path);

    /// Reads the markers into data(), always anew; without a file there are none. The error is the host's reason.
    host::Status readMarkers();
    QString markerFile() const;
    /// What readMarkers() read, to be changed for writing.
    Well::MarkerSet &markers();

private:
    class KeptTrack;
    struct ReadFile
    {
        base::FileState state;
        bool isOurs = false; ///< we wrote it: what the file system says of so young a file is enough
        bool isUnchanged(const QString &path) const;
    };

    QString file(const char *ending, int number = 0) const;
    QString logFile(int index) const;
    QString mainFile() const;
    bool readMain();
    bool addLog(InputFile &file, bool isHeaderOnly);
    int logFileCount() const { return static_cast<int>(m_logFiles.size()); }
    bool areLogsUnchanged() const;
    void readLogHeadersIfNeeded(int log);
    void readLogHeaders();

    QString m_name;
    QString m_stem;
    QString m_error;
    base::FileState m_main;
    base::FileState m_track; ///< of a file of its own, which is rare
    Well::Data &m_data;
    uiString m_reason; ///< of the reader
    std::unique_ptr<Well::odReader> m_reader;
    QVector<host::LogInfo> m_logs;
    QVector<int> m_logFileOf; ///< per log its index in m_logFiles
    QString m_folderPath;
    ReadFile m_folder; ///< as long as it is the same no log's file came or went
    std::vector<ReadFile> m_logFiles; ///< all, the unreadable ones as well
    bool m_hasReadLogs = false;
};

/// The stem of the names of a well's files.
QString fileStem(const IOObj &entry);

} // namespace opendtect
