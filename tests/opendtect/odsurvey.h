#pragma once

#include "host/hostrecords.h"
#include "survey/depthunit.h"
#include "survey/wellfile.h"

/// What the host's own library makes of the current survey, past our adapter.
namespace odsurvey {

/// Makes a new, empty survey and has the host make it current.
QString open(const QString &name, survey::DepthUnit unit = survey::DepthUnit::Metre);
/// Makes an existing survey below the data root current.
void makeCurrent(const QString &name);

struct Well
{
    host::WellHeader header;
    QVector<survey::TrackPoint> track;
    QVector<host::LogData> logs;
    QVector<host::Marker> markers;
};

/// Adds a well with everything in it and gives its key. The host does not store its type.
QString add(const Well &well);
/// Every well of the survey as the host's library reads it.
QVector<Well> readAll();
/// Takes the well out of the host's list, with its files.
void remove(const QString &key);

} // namespace odsurvey
