#pragma once

#include "base/filestate.h"
#include "host/opendtect/plainfiles.h"

#include <QVector>

#include <memory>
#include <vector>

#include <ptrman.h>

class IOObj;
namespace Well {
class Data;
class Log;
class MarkerSet;
} // namespace Well

namespace opendtect {

class InputFile;
class LibraryReader;
class ScratchWell;

/// A well as its files have it, read past the host's memory: what is read of it stays here and does not pile up there.
/// Files in the form in which the host writes them are read here, others, and what is to be written again, by the host's
/// library. Lengths are in the survey's unit.
class StoredWell
{
public:
    /// Reads header and track. \a scratch, which is not owned, belongs to this well as long as it lives.
    StoredWell(const IOObj &entry, ScratchWell &scratch);
    ~StoredWell();
    StoredWell(const StoredWell &) = delete;
    StoredWell &operator=(const StoredWell &) = delete;

    /// Why there is no well, as a sentence; empty when there is one.
    const QString &error() const { return m_error; }
    const QString &name() const { return m_name; }
    bool isOf(const IOObj &entry) const;
    /// Whether header and track are still those in the files.
    bool isUnchanged() const;
    const host::WellHeader &header() const { return m_well.header; }

    /// The headers of all logs that can be read, in the order of their files; files that did not change are not read
    /// again.
    const QVector<host::LogInfo> &logs();
    /// The log at an index of logs().
    host::Outcome<host::LogData> log(int index);
    struct LogPlace
    {
        QString path;
        std::shared_ptr<const Well::Log> header; ///< of the log that is there; null for a new one
    };
    /// Where the log with this name is stored, or a new one would be. An error where the host, which counts the logs
    /// that it can read, would take the log of another file for it.
    host::Outcome<LogPlace> placeOfLog(const QString &name);
    /// The log's file was written with what \a log has.
    void logWritten(const Well::Log &log, const QString &path);

    /// The markers, always read anew; without a file there are none. The error is the host's reason.
    host::Outcome<QVector<host::Marker>> markers();
    QString markerFile() const;
    /// The same as the host's library has them, to be changed for writing.
    host::Outcome<Well::MarkerSet *> markersToChange();

    /// The well as the library writes it: header and track, and markersToChange(). Null when it cannot be read.
    const Well::Data *data();

private:
    struct ReadFile
    {
        base::FileState state;
        bool isOurs = false; ///< we wrote it: what the file system says of so young a file is enough
        bool isUnchanged(const QString &path) const;
    };

    struct LogHeader
    {
        host::LogInfo info;
        QByteArray name; ///< as stored, also where it is no UTF-8
    };

    QString file(const char *ending, int number = 0) const;
    QString logFile(int index) const;
    QString mainFile() const;
    /// The library's reader with header and track; null when it cannot read them, and error() says so.
    LibraryReader *library();
    std::optional<LogHeader> readLogHeader(InputFile &file);
    int logFileCount() const { return static_cast<int>(m_logFiles.size()); }
    bool areLogsUnchanged() const;
    void readLogHeadersIfNeeded(int log);
    void readLogHeaders();
    int indexOfLog(const QString &name) const;

    const PtrMan<IOObj> m_entry;
    QString m_name;
    QString m_stem;
    QString m_error;
    base::FileState m_main;
    base::FileState m_track; ///< of a file of its own, which is rare
    ScratchWell &m_scratch;
    std::unique_ptr<LibraryReader> m_library; ///< made when it is wanted: it takes long
    PlainWell m_well;
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
