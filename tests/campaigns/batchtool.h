#pragma once

#include <QByteArrayList>

#include <optional>

namespace campaign {

/// Runs the built batch tool; what it says on its standard error where it fails, nothing where all is done. It is a
/// program of its own: of the faults of a disk only limits of this program hold for it.
std::optional<QByteArray> batchToolFailure(const QByteArrayList &arguments);

} // namespace campaign
