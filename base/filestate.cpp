#include "base/filestate.h"

#include <QFile>

#include <ctime>
#include <sys/stat.h>

namespace base {

namespace {

qint64 nanoseconds(const timespec &time)
{
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

} // namespace

FileState stateOf(const struct stat &info)
{
    constexpr qint64 longestStepNs = 100000000;
    FileState state;
    state.inode = info.st_ino;
    state.size = info.st_size;
    state.modifiedNs = nanoseconds(info.st_mtim);
    state.changedNs = nanoseconds(info.st_ctim);
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    state.isSettled =
        nanoseconds(now) - state.changedNs > longestStepNs && nanoseconds(now) - state.modifiedNs > longestStepNs;
    return state;
}

FileState fileState(const QString &path)
{
    struct stat info
    { };
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? stateOf(info) : FileState{};
}

} // namespace base
