#pragma once

#include "base/colorbar.h"
#include "datastore/calibrationfile.h"
#include "datastore/defaultlogs.h"
#include "datastore/logcurvedata.h"
#include "datastore/perforationfile.h"
#include "datastore/wellrecord.h"
#include "logview/geometry/curvesamples.h"
#include "templates/templatetrack.h"

#include <QHash>

struct ProjectData;

/// The log of a well that a curve shows.
struct DisplayedLog
{
    logview::CurveSamples samples; ///< empty when the well has no such log
    QString unit;
    bool isMissing = false; ///< the well has no log of this name
};

/// What the tracks of one display draw of one well. Each log, calibration file and colour bar is read when it is
/// first asked for and kept, so that a log shown twice is read and held once. Shared by the items of the display.
class WellDisplayData
{
public:
    /// Reads the well's record. \a projectData must outlive the object.
    WellDisplayData(ProjectData &projectData, const QString &wellName);

    const WellRecord &record() const { return m_record; }
    float totalDepthM() const { return static_cast<float>(m_record.totalDepth); }

    DisplayedLog log(const QString &logName);
    /// Whether the well can be read and has no log at all.
    bool isWithoutLogs() const;
    /// The logs that the well has and that could not be read. A well of which nothing can be read has none: that was
    /// told when its record was read.
    const QStringList &unreadLogs() const { return m_unreadLogs; }
    CalibrationRecord calibration(const QString &groupName);
    PerforationRecord perforations();
    base::ColorBar colorBar(int number);
    /// Calibration points and perforation zones are read anew when they are next asked for.
    void forgetSideFiles();

    /// The template's track with each "Default" curve replaced by the well's default log of its group; "Default"
    /// stays where there is none.
    TrackInfo resolved(const TrackInfo &track);

    /// The groups of the lines of a resolved track that stayed "Default"; none of a depth track.
    static QStringList groupsWithoutLog(const TrackInfo &resolvedTrack);

    /// The curves of a resolved track that a logarithmic scale cannot place: left value not above 0, or right value not
    /// above the left one.
    static QStringList curvesOffScale(const TrackInfo &resolvedTrack);

    /// Widths in pixels with which tracks begin: depth tracks half an inch, all others two inches of the screen on
    /// which the launch took place.
    double initialTrackWidth(int trackType) const
    {
        return trackType == DepthTrack ? m_depthTrackWidth : m_curveTrackWidth;
    }
    /// For a display without a launch.
    void setDotsPerInch(int dotsPerInch);

private:
    QString defaultLog(const QString &groupName);
    DisplayedLog readLog(const QString &logName);

    ProjectData &m_data;
    WellRecord m_record;
    QHash<QString, DisplayedLog> m_logs;
    QHash<QString, CalibrationRecord> m_calibrations;
    QHash<int, base::ColorBar> m_colorBars;
    PerforationRecord m_perforations;
    DefaultLogs m_defaultLogs;
    double m_depthTrackWidth = 0;
    double m_curveTrackWidth = 0;
    QStringList m_unreadLogs;
    bool m_isReadable = false;
    bool m_hasPerforations = false;
    bool m_hasDefaultLogs = false;
};

/// The name in a curve line that stands for the default log of the line's group.
QString defaultCurveName();
