#pragma once

#include "survey/odfile.h"

#include <QStringList>

namespace workbench {

/// Reads the markers of a marker file, sorted by depth; of two with one name the first counts. Those outside
/// [top, bottom], the measured depths of the well's track, are left out as the host leaves them out. \a problems
/// receives a sentence for each marker passed over. The error is a sentence without the file's name.
host::Outcome<QVector<host::Marker>> parseMarkerFile(const QByteArray &bytes, float top, float bottom,
                                                     QStringList *problems = nullptr);

/// The bytes of a marker file. \a oldBytes is the file to be replaced or empty: its other keys stay, those of a
/// single marker with the marker of the same name.
QByteArray markerFileBytes(const QVector<host::Marker> &markers, const QByteArray &depthUnit,
                           const QByteArray &oldBytes);

} // namespace workbench
