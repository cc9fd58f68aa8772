#pragma once

#include "base/filestate.h"

#include <array>
#include <streambuf>

namespace opendtect {

/// What a stream for the host's library reads a plain file from: the library's own opening of a file costs more than
/// reading a log's header from it. One buffer reads any number of files, one after the other.
class FileBuffer : public std::streambuf
{
public:
    FileBuffer() = default;
    ~FileBuffer() override;
    FileBuffer(const FileBuffer &) = delete;
    FileBuffer &operator=(const FileBuffer &) = delete;

    /// Opens another file; false where there is none, or no plain one.
    bool open(const char *path);
    /// The file as it was opened; of no size where nothing could be opened.
    const base::FileState &state() const { return m_state; }

private:
    void close();
    int_type underflow() override;

    int m_file = -1;
    base::FileState m_state;
    std::array<char, 8192> m_block;
};

} // namespace opendtect
