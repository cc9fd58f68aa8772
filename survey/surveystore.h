#pragma once

#include "base/atomicfile.h"
#include "host/wells.h"
#include "survey/fileproblems.h"
#include "survey/logfiles.h"
#include "survey/markerfiles.h"
#include "survey/surveyunit.h"
#include "survey/wellfiles.h"
#include "survey/welllistfile.h"

#include <functional>

namespace survey {

/// What the own files of a well tell.
struct WellHead
{
    host::WellHeader header; ///< in metres
    QString uwi; ///< empty where there is none
    DepthRange track; ///< measured depths, in the survey's unit
};

/// The wells of one survey folder on disk, in the host's own format. Reading changes nothing on disk. Every write
/// begins by locking the wells' folder and reading what is there now, so that another program's changes are kept, and
/// replaces one file atomically. What another program changed since it was given out here is merged (markers) or makes
/// the write fail with a sentence (a log or well of which both changed something). Of a well, only log headers are held
/// between calls, and each only as long as its file is unchanged.
class SurveyStore : public host::Wells
{
public:
    using MarkersChanged = std::function<void(const QString &key)>;
    using WellRenamed =
        std::function<void(const QString &oldName, const QString &newName, const QStringList &otherWells)>;
    using ProblemFound = std::function<void()>;

    explicit SurveyStore(const QString &surveyDirectory = {});

    void setSurveyDirectory(const QString &path);
    QString surveyDirectory() const { return m_surveyDirectory; }
    /// Called after a marker set was replaced.
    void setMarkersChanged(const MarkersChanged &callback) { m_markersChanged = callback; }
    /// Called after a well got another name, for what is kept by names elsewhere. It must not call the store.
    void setWellRenamed(const WellRenamed &callback) { m_wellRenamed = callback; }

    /// Called when something came to light about a file that was not known; problems() tells what. It must not call
    /// the store.
    void setProblemFound(const ProblemFound &callback) { m_problemFound = callback; }
    /// The unit of all depths of the survey.
    DepthUnit depthUnit() { return m_unit.of(m_surveyDirectory); }

    // In metres, as every host; what follows them is in the survey's own unit.
    host::Outcome<QVector<host::WellEntry>> list() override;
    host::Outcome<host::WellHeader> header(const QString &key) override;
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override;
    host::Outcome<host::LogData> log(const QString &key, int index) override;
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override;
    host::Status writeLog(const QString &key, const host::LogData &log) override;
    host::Status writeMarkers(const QString &key, const QVector<host::Marker> &markers) override;
    /// None: the store keeps what it cannot give out.
    host::Outcome<QStringList> markersLostByWriting(const QString &key,
                                                    const QVector<host::Marker> &markers) override;
    void reload(const QString &key) override;

    host::Outcome<WellHead> head(const QString &key);
    /// The same as markers(), for who has just read the well's head.
    host::Outcome<QVector<host::Marker>> markers(const QString &key, const WellHead &wellHead);
    host::Outcome<WellProperties> properties(const QString &key);
    /// Makes a well with these logs and gives its key: all of it or nothing. Blanks around its name are not kept. Logs
    /// are in the survey's depth unit, each has a sample and a name of its own. With logs its files are on the disk
    /// before the list names them; that the list does may reach the disk later, at the latest by flush(), so that many
    /// wells cost one flush each.
    host::Outcome<QString> addWell(const WellProperties &properties, const QVector<host::LogData> &logs = {});
    /// Brings all that was written to the disk.
    host::Status flush();
    /// Changes everything but the name. A separate track file becomes part of the well's main file.
    host::Status changeWell(const QString &key, const WellProperties &properties);
    /// How many points of the well's track lie below a measured depth.
    host::Outcome<int> trackPointsBelow(const QString &key, double depth);
    host::Status renameWell(const QString &key, const QString &name);
    /// Deletes the well with its files.
    host::Status removeWell(const QString &key);
    /// Deletes the log at an index of logs(). The last log takes its place, so that one rename does it and no
    /// crash can leave a gap that hides the logs behind it.
    host::Status removeLog(const QString &key, int index);
    /// Gives a log another name, which no other log of the well has.
    host::Status renameLog(const QString &key, const QString &oldName, const QString &newName);

    /// Sentences about everything that the calls so far could not read or had to pass over, as long as the file
    /// concerned is unchanged; each names its file.
    QStringList problems() { return m_problems.sentences(); }
    /// What is known to be wrong with the samples of the log at an index of the logs() last read; empty when nothing.
    QString logProblem(const QString &key, int index);
    /// The same as problems(), which are forgotten then.
    QStringList takeProblems();

private:
    QString wellFolder() const;
    host::Outcome<QString> stem(const QString &key);
    void forgetGiven(const QString &stem);
    LogFiles::Report reporter();
    host::Status changeFiles(const QString &key, const std::function<host::Status(const QString &wellStem)> &change);
    host::Outcome<ObjectList> listToChange(const QString &key);
    host::Status writeNewWell(const QString &stem, const WellFile &file, const QVector<host::LogData> &logs,
                              const ObjectList &list);
    host::Status writeNewLog(const QString &stem, int number, const host::LogData &log);
    void report(const QString &path, const QString &problem);

    bool isInFeet() { return depthUnit() == DepthUnit::Foot; }

    QString m_surveyDirectory;
    SurveyUnit m_unit;
    MarkersChanged m_markersChanged;
    WellRenamed m_wellRenamed;
    ProblemFound m_problemFound;
    FileProblems m_problems;
    WellListFile m_list;
    WellFiles m_wells;
    MarkerFiles m_markers;
    LogFiles m_logs;
};

} // namespace survey
