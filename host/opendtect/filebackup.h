#pragma once

#include <QString>

namespace opendtect {

/// A copy of a file beside it, for as long as the host writes over the file in place. The host tells neither that a
/// disk became full nor what it left behind.
class FileBackup
{
public:
    explicit FileBackup(const QString &path);
    /// Leaves the file as it is and takes the copy away, unless putBack() failed.
    ~FileBackup();
    FileBackup(const FileBackup &) = delete;
    FileBackup &operator=(const FileBackup &) = delete;

    /// Why the file cannot be written, or not safely, as a sentence; empty when it can.
    const QString &error() const { return m_error; }
    /// Makes the file what it was; one that was not there goes. Only without error(). Otherwise gives, as a sentence,
    /// where the copy lies, which then stays.
    QString putBack();

private:
    QString m_path; ///< a link is followed, as the host does
    QString m_copy; ///< empty when it is not ours to remove
    bool m_isNew; ///< there was no file
    QString m_error;
};

} // namespace opendtect
