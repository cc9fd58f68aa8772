#pragma once

#include "host/hostrecords.h"

/// Lengths cross the host interface in metres, whatever the survey stores. A host whose survey is in feet converts its
/// records here and nowhere else. What is no length (undefined, no number) stays what it is.
namespace host {

constexpr double metresPerFoot = 0.3048;

float feetToMetres(float feet);
/// The feet that feetToMetres() turns into these metres. Where two floats do, the one with fewer digits: a depth that
/// was written as 7000.5 ft is written so again.
float metresToFeet(float metres);

WellHeader feetToMetres(WellHeader header);
LogData feetToMetres(LogData log);
LogData metresToFeet(LogData log);
QVector<Marker> feetToMetres(QVector<Marker> markers);
/// A marker that lies where the marker of its name in \a storedInFeet lies keeps that one's depth to the last bit.
QVector<Marker> metresToFeet(QVector<Marker> markers, const QVector<Marker> &storedInFeet);

} // namespace host
