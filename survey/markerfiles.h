#pragma once

#include "host/hostrecords.h"
#include "survey/wellfiles.h"

#include <QHash>

namespace survey {

/// The marker files (".wlm") of wells. Markers are in metres here, whatever the survey's unit. A stem is the path of a
/// well's files without their endings.
class MarkerFiles
{
public:
    using Report = LogFiles::Report;

    /// The well's markers; none when it has no file.
    host::Outcome<QVector<host::Marker>> read(const QString &stem, DepthUnit unit, const Report &report);
    /// Replaces the markers. What another program did to them since they were read here is kept; where both changed a
    /// marker nothing is written. A file that is no list of markers is not written over.
    host::Status write(const QString &stem, const QVector<host::Marker> &markers, DepthUnit unit,
                       const Report &report);
    void forget() { m_given.clear(); }
    void forget(const QString &stem) { m_given.remove(stem); }

private:
    host::Outcome<QVector<host::Marker>> merged(const QString &stem, const QVector<host::Marker> &given,
                                                DepthUnit unit, const Report &report);

    WellFiles m_wells; ///< for the range of a well's track
    QHash<QString, QVector<host::Marker>> m_given; ///< what was given out last, by stem
};

} // namespace survey
