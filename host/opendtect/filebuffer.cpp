#include "host/opendtect/filebuffer.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace opendtect {

FileBuffer::~FileBuffer()
{
    close();
}

void FileBuffer::close()
{
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
    m_state = {};
    setg(m_block.data(), m_block.data(), m_block.data());
}

bool FileBuffer::open(const char *path)
{
    close();
    // Not blocking: a pipe in a file's place would wait for ever.
    m_file = ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat info
    { };
    if (m_file >= 0 && ::fstat(m_file, &info) == 0 && S_ISREG(info.st_mode)) {
        m_state = base::stateOf(info);
        return true;
    }
    close();
    return false;
}

FileBuffer::int_type FileBuffer::underflow()
{
    ssize_t count = -1;
    do
        count = m_file < 0 ? 0 : ::read(m_file, m_block.data(), m_block.size());
    while (count < 0 && errno == EINTR);
    if (count <= 0)
        return traits_type::eof();
    setg(m_block.data(), m_block.data(), m_block.data() + count);
    return traits_type::to_int_type(*gptr());
}

} // namespace opendtect
