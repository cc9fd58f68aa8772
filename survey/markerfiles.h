#pragma once

#include "host/hostrecords.h"
#include "survey/markerfile.h"
#include "survey/wellfiles.h"

#include <QHash>

#include <optional>

namespace survey {

/// The measured depths of a well's track.
DepthRange trackDepths(const WellFile &well);

/// The marker files (".wlm") of wells. Markers are in metres here, whatever the survey's unit. A stem is the path of a
/// well's files without their endings.
class MarkerFiles
{
public:
    using Report = LogFiles::Report;

    /// The well's markers; none when it has no file. \a track is given where the well's own files were read already.
    host::Outcome<QVector<host::Marker>> read(const QString &stem, DepthUnit unit, const Report &report,
                                              const std::optional<DepthRange> &track = {});
    /// Replaces the markers. What another program did to them since they were read here is kept; where both changed a
    /// marker nothing is written. A file that is no list of markers is not written over.
    host::Status write(const QString &stem, const QVector<host::Marker> &markers, DepthUnit unit,
                       const Report &report);
    void forget() { m_given.clear(); }
    void forget(const QString &stem) { m_given.remove(stem); }

private:
    /// A marker file as it was read.
    struct Stored
    {
        FileRead file;
        DepthRange track;
        DepthUnit unit = DepthUnit::Metre;
    };
    host::Outcome<QVector<host::Marker>> giveOut(const QString &stem, const Stored &stored, const Report &report);
    host::Outcome<QVector<host::Marker>> merged(const QString &stem, const QVector<host::Marker> &given,
                                                const Stored &stored, const Report &report);

    WellFiles m_wells; ///< for the range of a well's track
    QHash<QString, QVector<host::Marker>> m_given; ///< what was given out last, by stem
};

} // namespace survey
