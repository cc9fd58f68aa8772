#include "host/opendtect/inputfile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace opendtect {

InputFile::InputFile(const QString &path)
{
    const QByteArray name = path.toUtf8();
    // Not blocking: a pipe in a file's place would wait for ever.
    m_file = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat info
    { };
    if (m_file >= 0 && ::fstat(m_file, &info) == 0 && S_ISREG(info.st_mode)) {
        m_state = base::stateOf(info);
        m_stream.setFileName(name.constData()); // for the host's messages
        return;
    }
    m_state = base::fileState(path);
    if (m_file >= 0)
        ::close(m_file);
    m_file = -1;
}

InputFile::~InputFile()
{
    if (m_file >= 0)
        ::close(m_file);
}

std::streambuf::int_type InputFile::underflow()
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
