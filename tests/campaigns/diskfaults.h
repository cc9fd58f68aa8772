#pragma once

#include "base/filesystemcalls.h"

#include <vector>

/// Makes calls that change something on the disk fail: those of the product's seam, and those that it, Qt and the
/// libraries for pictures make beside it. The latter are caught in this program only, whose functions take the place of
/// the C library's.
namespace campaign {

enum class Fault {
    NoSpace,
    NoAccess,
    BrokenDisk,
    ReadOnlyDisk,
    ShortWrite, ///< half of it is written, and told so
    ShortThenFull, ///< the same, and the next write finds the disk full
};

/// Counts the calls of its lifetime; with a fault, one of them fails.
class DiskFaults
{
public:
    static constexpr int none = -1;

    /// \a failAt is the number of the call that fails, from 0; with \a stays all calls behind it fail too.
    explicit DiskFaults(int failAt = none, Fault fault = Fault::NoSpace, bool stays = false);
    ~DiskFaults();
    DiskFaults(const DiskFaults &) = delete;
    DiskFaults &operator=(const DiskFaults &) = delete;

    /// The names of the calls so far, in their order.
    const std::vector<const char *> &calls() const { return m_calls; }

    // For the calls that are caught.
    /// Counts a call; true, with errno, when it is to fail.
    bool fails(const char *call);
    /// How much of this a write is to take.
    size_t sizeToWrite(size_t size);

    static DiskFaults *inForce;

private:
    class Seam : public base::FileSystemCalls
    {
    public:
        int openTemporary(char *pathTemplate) override;
        ssize_t write(int file, const void *bytes, size_t size) override;
        int fsync(int file) override;
        int syncfs(int file) override;
        int close(int file) override;
        int rename(const char *from, const char *to) override;
        int renameToNew(const char *from, const char *to) override;
        int unlink(const char *path) override;
        int mkdir(const char *path) override;
    };

    int m_failAt;
    Fault m_fault;
    bool m_stays;
    std::vector<const char *> m_calls;
    Seam m_seam;
    base::ScopedFileSystemCalls m_scope{m_seam};
};

} // namespace campaign
