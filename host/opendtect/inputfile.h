#pragma once

#include "base/filestate.h"

#include <QByteArray>
#include <QString>

#include <istream>
#include <optional>
#include <streambuf>

#include <od_istream.h>

namespace opendtect {

/// A plain file, to be looked at here and for the host's library to read from: its own opening of a file costs more than
/// reading a log's header.
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
    /// Its first bytes, fewer than \a size at its end; to be asked for once and before the stream.
    QByteArray head(int size);
    /// The file from its beginning.
    od_istream &stream();

private:
    int_type underflow() override;
    int read(int size);

    const QByteArray m_name;
    int m_file = -1;
    base::FileState m_state;
    QByteArray m_block;
    std::optional<std::istream> m_standardStream;
    std::optional<od_istream> m_stream;
};

} // namespace opendtect
