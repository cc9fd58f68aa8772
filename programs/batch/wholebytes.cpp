#include "programs/batch/wholebytes.h"

#include <cerrno>
#include <unistd.h>

namespace batch {

int writeWhole(int file, const void *bytes, size_t size)
{
    const char *next = static_cast<const char *>(bytes);
    const char *const end = next + size;
    while (next < end) {
        const ssize_t count = ::write(file, next, static_cast<size_t>(end - next));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0)
            next += count;
    }
    return 0;
}

bool readWhole(int file, void *bytes, size_t size)
{
    char *next = static_cast<char *>(bytes);
    char *const end = next + size;
    while (next < end) {
        const ssize_t count = ::read(file, next, static_cast<size_t>(end - next));
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        if (count > 0)
            next += count;
    }
    return true;
}

} // namespace batch
