#pragma once

#include "base/filestate.h"

#include <QString>

#include <array>
#include <istream>
#include <streambuf>

#include <od_istream.h>

namespace opendtect {

/// A plain file for the host's library to read from: its own opening of a file costs more than reading a log's header.
class InputFile : private std::streambuf
{
public:
    explicit InputFile(const QString &path);
    ~InputFile() override;
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;

    /// False where there is none, or no plain one, or it may not be read.
    bool isOpen() const { return m_file >= 0; }
    /// The file as it was opened; where it was not, of no size if there is none.
    const base::FileState &state() const { return m_state; }
    od_istream &stream() { return m_stream; }

private:
    int_type underflow() override;

    int m_file = -1;
    base::FileState m_state;
    std::array<char, 8192> m_block;
    std::istream m_standardStream{this};
    od_istream m_stream{m_standardStream};
};

} // namespace opendtect
