#include "host/opendtect/inputfile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace opendtect {

namespace {

constexpr int blockSize = 8192;

} // namespace

InputFile::InputFile(const QString &path)
    : m_name(path.toUtf8())
{
    // Not blocking: a pipe in a file's place would wait for ever.
    m_file = ::open(m_name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat info
    { };
    if (m_file >= 0 && ::fstat(m_file, &info) == 0 && S_ISREG(info.st_mode)) {
        m_state = base::stateOf(info);
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

// Puts the file's next bytes into the block; gives their number.
int InputFile::read(int size)
{
    m_block.resize(size);
    int done = 0;
    while (m_file >= 0 && done < size) {
        const ssize_t got = ::read(m_file, m_block.data() + done, static_cast<std::size_t>(size - done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            break;
        done += static_cast<int>(got);
    }
    m_block.resize(done);
    setg(m_block.data(), m_block.data(), m_block.data() + done);
    return done;
}

QByteArray InputFile::head(int size)
{
    read(static_cast<int>(qBound<qint64>(0, m_state.size, size)));
    return m_block;
}

od_istream &InputFile::stream()
{
    if (!m_stream) {
        m_stream.emplace(m_standardStream.emplace(static_cast<std::streambuf *>(this)));
        m_stream->setFileName(m_name.constData()); // for the host's messages
    }
    return *m_stream;
}

std::streambuf::int_type InputFile::underflow()
{
    return read(blockSize) > 0 ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}

} // namespace opendtect
