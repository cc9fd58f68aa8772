#pragma once

#include <QString>

#include <sys/types.h>

namespace base {

/// The system calls of file writing and deleting that can fail, as a seam: the product uses the real ones, a test
/// replaces them to make a write, a flush, a rename or a deletion fail. Results and errno are those of the POSIX
/// calls of the same name; a temporary file has the permissions of any new file.
class FileSystemCalls
{
public:
    virtual ~FileSystemCalls() = default;
    virtual int openTemporary(char *pathTemplate);
    virtual ssize_t write(int file, const void *bytes, size_t size);
    virtual int fsync(int file);
    virtual int syncfs(int file);
    virtual int close(int file);
    virtual int rename(const char *from, const char *to);
    /// Fails with EEXIST where something has the new name.
    virtual int renameToNew(const char *from, const char *to);
    virtual int unlink(const char *path);
    virtual int mkdir(const char *path);
};

/// The calls in force.
FileSystemCalls &fileSystemCalls();

/// Makes a folder in one that is there; false where it cannot, as where something has the name.
bool makeFolder(const QString &path);

/// Puts other calls in force for its lifetime (tests). \a calls must outlive it; not owned.
class ScopedFileSystemCalls
{
public:
    explicit ScopedFileSystemCalls(FileSystemCalls &calls);
    ~ScopedFileSystemCalls();
    ScopedFileSystemCalls(const ScopedFileSystemCalls &) = delete;
    ScopedFileSystemCalls &operator=(const ScopedFileSystemCalls &) = delete;

private:
    FileSystemCalls *m_previous;
};

} // namespace base
