#pragma once

#include <QColor>
#include <QString>

struct ProjectData;

/// A marker that the user picked in a display.
struct PickedMarker
{
    QString name; ///< as proposed; the well may have one of that name
    float measuredDepthM = 0;
    QColor color;
};

/// Adds the marker to the well's stored markers, which keep their stored depths, under a name that is not yet taken.
/// Gives that name; null, after a box, when the markers could not be read or written: then nothing has changed.
QString savePickedMarker(ProjectData &data, const QString &wellName, const PickedMarker &marker);

/// \a name, or the first of "<name>_1", "<name>_2"… that is not among \a taken.
QString freeMarkerName(const QString &name, const QStringList &taken);
