#pragma once

#include "host/hostrecords.h"
#include "survey/wellfile.h"

#include <optional>

/// A well's files in the form in which the host writes them, read by the readers of the survey store: the host's own
/// take several times as long. A file of any other form gives nothing: what that means only the host's library knows.
/// Lengths are in the survey's unit.
namespace opendtect {

/// Of the first bytes of a log's file, which are to hold its whole header.
std::optional<host::LogInfo> plainLogInfo(const QByteArray &head);

struct PlainWell
{
    host::WellHeader header; ///< without its name
    float top = 0; ///< measured depths at which the track begins and ends
    float bottom = 0;
};

/// Of a whole main file, where there is no track in a file of its own.
std::optional<PlainWell> plainWell(const QByteArray &bytes);

/// Of a whole marker file: at most markers within the track, in ascending order.
std::optional<QVector<host::Marker>> plainMarkers(const QByteArray &bytes, const PlainWell &well);

} // namespace opendtect
