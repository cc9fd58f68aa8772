#pragma once

#include <QByteArray>
#include <QString>

namespace base {

class FileSystemCalls;

/// What a write came to: success, or the system's reason in words (no path in it).
struct [[nodiscard]] WriteResult
{
    QString error;
    bool ok() const { return error.isEmpty(); }
};

/// When what was written reaches the disk: before it takes its name, or by one flushFileSystem() after many files.
/// Later is for what can be made again, or what nothing names yet; its names change as atomically.
enum class Flush { Now, Later };

/// Writes \a bytes to \a path so that at every moment, also after a crash or on a full disk, the path holds
/// either its old content or all of the new one. The parent folder must exist. A symbolic link at \a path is
/// replaced by a file of its own; what it pointed to is not touched. One that leads nowhere is not replaced. An
/// existing file keeps its permissions. Fails without touching anything when \a path is no plain file or could not be
/// opened for writing.
WriteResult writeFileAtomically(const QString &path, const QByteArray &bytes, Flush flush = Flush::Now);

/// Brings everything written to the file system that holds \a folder to the disk.
WriteResult flushFileSystem(const QString &folder);

/// The same for a file that must not exist yet, whoever else makes files there: \a isTaken tells a failure because
/// something has that name.
WriteResult writeNewFileAtomically(const QString &path, const QByteArray &bytes, bool *isTaken);

/// The same promise for content that is made piece by piece (a long picture, a large export). Bytes go to a hidden
/// temporary file in the target's folder; nothing appears at the path before commit(), and destruction without a
/// successful commit() leaves no trace.
class AtomicFileWriter
{
public:
    AtomicFileWriter() = default;
    ~AtomicFileWriter();
    AtomicFileWriter(const AtomicFileWriter &) = delete;
    AtomicFileWriter &operator=(const AtomicFileWriter &) = delete;

    WriteResult open(const QString &path);
    WriteResult write(const char *bytes, qint64 size);
    /// Where the next write() goes, from the start of the file: for formats that complete their head at the end.
    WriteResult seek(qint64 position);
    /// Puts the file in its place, flushed to the disk or not. The first failure of any step is what it returns.
    WriteResult commit(Flush flush = Flush::Now);
    /// Flushes it and puts it in its place, but only where nothing has that name, whoever made it since open();
    /// \a isTaken tells a failure of this kind.
    WriteResult commitAsNew(bool *isTaken);

private:
    using Rename = int (FileSystemCalls::*)(const char *from, const char *to);
    WriteResult putInPlace(Rename rename, Flush flush);
    WriteResult fail(const char *step);
    void discard();

    QByteArray m_path;
    QByteArray m_temporary;
    WriteResult m_result;
    int m_file = -1;
};

/// Whether a plain open for writing could open \a path: an existing plain file that may be written, or a missing
/// one in a folder that may be written. Nothing is created.
WriteResult checkWritable(const QString &path);

} // namespace base
