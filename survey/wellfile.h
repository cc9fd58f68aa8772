#pragma once

#include "survey/depthunit.h"
#include "survey/odfile.h"

namespace survey {

struct TrackPoint
{
    double x = 0;
    double y = 0;
    double z = 0; ///< below datum, positive down
    double md = 0; ///< measured depth
};

/// What a user edits of a well. Lengths in the survey's depth unit, positions in survey coordinates.
struct WellProperties
{
    QString name;
    double x = 0;
    double y = 0;
    double kbElevation = 0;
    double groundElevation = host::undefinedValue; ///< undefinedValue when unknown
    double totalDepth = 0;
    int typeCode = host::NoWellType;
};

/// A well's main file (".well"): header keys and track.
struct WellFile
{
    KeyValues keys;
    QVector<TrackPoint> track;
    bool isTrackCut = false; ///< the track ends in a line that is no row

    host::WellHeader header(const QString &name) const; ///< in the survey's depth unit
    WellProperties properties(const QString &name) const;
};

/// The error is a sentence without the file's name; a file without a valid track point is an error, as in the host.
host::Outcome<WellFile> parseWellFile(const QByteArray &bytes);
/// The rows of a separate track file, with or without header lines. \a isCut tells that they end in a line that is
/// no row.
QVector<TrackPoint> parseTrackFile(const QByteArray &bytes, bool *isCut = nullptr);
QByteArray wellFileBytes(const WellFile &file);

/// Why these cannot be the properties of a well, as a sentence; empty when they can.
QString wellPropertiesProblem(const WellProperties &properties);
/// A vertical well of these properties, in a survey whose depths are in \a unit.
WellFile makeWellFile(const WellProperties &properties, DepthUnit unit = DepthUnit::Metre);
/// Changes what differs: a new position moves the track, a new KB elevation lifts it, a new total depth cuts it or adds
/// a point in its last direction. Keys it does not know stay.
void applyProperties(WellFile *file, const WellProperties &properties);

/// How many points of the track lie below a measured depth: what a cut there would take away.
int pointsBelow(const WellFile &file, double depth);

/// Names of the well types that the host knows, index = code.
QStringList wellTypeNames();

} // namespace survey
