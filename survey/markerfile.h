#pragma once

#include "survey/odfile.h"

#include <QStringList>

namespace survey {

/// Measured depths, both ends included.
struct DepthRange
{
    float top = 0;
    float bottom = 0;
    bool contains(float depth) const { return depth >= top && depth <= bottom; }
};

/// Reads the markers of a marker file, sorted by depth; of two with one name the first counts. Those outside
/// \a track, the measured depths of the well's track, are left out as the host leaves them out. \a problems receives a
/// sentence for each marker passed over. The error is a sentence without the file's name.
host::Outcome<QVector<host::Marker>> parseMarkerFile(const QByteArray &bytes, const DepthRange &track,
                                                     QStringList *problems = nullptr);

/// The bytes of a marker file. \a oldBytes is the file to be replaced, readable as one, or empty: its other keys stay,
/// those of a single marker with the marker of the same name. The markers that parseMarkerFile() does not give out of it
/// stay as they are, hidden as they were, but for those whose name is written anew.
QByteArray markerFileBytes(const QVector<host::Marker> &markers, const QByteArray &depthUnit,
                           const QByteArray &oldBytes, const DepthRange &track);

} // namespace survey
