#pragma once

#include <QByteArray>

namespace logview {

/// What bytes are, for the effort that is worth its time.
enum class StreamKind {
    Lines, ///< numbers with few repetitions
    Operators
};

/// The bytes as a stream of PDF's FlateDecode. Empty when there is no memory.
QByteArray deflated(const QByteArray &bytes, StreamKind kind);
/// What such a stream holds; empty when it is damaged.
QByteArray inflated(const QByteArray &stream);

} // namespace logview
