#pragma once

#include "base/filestate.h"
#include "host/hostrecords.h"

#include <QVector>

#include <vector>

#include <ptrman.h>

class IOObj;
namespace Well {
class Data;
class Log;
class MarkerSet;
} // namespace Well

namespace opendtect {

/// A well as its files have it, read by the host's library past the host's memory: what is read of it stays here and
/// does not pile up there. Lengths are in the survey's unit.
class StoredWell
{
public:
    /// Reads header and track.
    explicit StoredWell(const IOObj &entry);
    ~StoredWell();
    StoredWell(const StoredWell &) = delete;
    StoredWell &operator=(const StoredWell &) = delete;

    /// Why there is no well, as a sentence; empty when there is one.
    const QString &error() const { return m_error; }
    const QString &name() const { return m_name; }
    bool isOf(const IOObj &entry) const;
    /// Whether header and track are still those in the files.
    bool isUnchanged() const;
    const Well::Data &data() const { return *m_data; }

    /// The headers of all logs that can be read, in the order of their files; files that did not change are not read
    /// again.
    const QVector<host::LogInfo> &logs();
    /// The log at an index of logs().
    host::Outcome<host::LogData> log(int index);
    /// The log of this name as logs() read it: only its header is filled. Null when there is none.
    const Well::Log *logHeader(const char *name);
    /// The file of the log with this name, or the one for a new log. An error where the host, which counts the logs that
    /// it can read, would take the log of another file for it.
    host::Outcome<QString> logFile(const char *name);
    /// The log's file was written with what \a log has.
    void logWritten(const Well::Log &log, const QString &path);

    /// Reads the markers into data(), always anew; without a file there are none. The error is the host's reason.
    host::Status readMarkers();
    QString markerFile() const;
    /// What readMarkers() read, to be changed for writing.
    Well::MarkerSet &markers();

private:
    struct ReadFile
    {
        QString path;
        base::FileState state;
        bool isOurs = false; ///< we wrote it: what the file system says of so young a file is enough
        bool isUnchanged() const;
    };

    QString file(const char *ending, int number = 0) const;
    int logFileCount() const { return static_cast<int>(m_logFiles.size()); }
    bool areLogsUnchanged() const;
    void readLogHeaders();
    int indexOfLog(const char *name);
    bool addLog(const QString &path, bool isHeaderOnly);

    QString m_name;
    QString m_stem;
    QString m_error;
    std::vector<ReadFile> m_mainFiles;
    RefMan<Well::Data> m_data;
    PtrMan<IOObj> m_entry;
    QVector<host::LogInfo> m_logs;
    QVector<int> m_logFileOf; ///< per log its index in m_logFiles
    std::vector<ReadFile> m_logFiles; ///< all, the unreadable ones as well
    bool m_hasReadLogs = false;
};

/// The stem of the names of a well's files.
QString fileStem(const IOObj &entry);

} // namespace opendtect
