#include "host/opendtect/wellswriting.h"

#include "host/feet.h"
#include "host/opendtect/filebackup.h"
#include "host/opendtect/loadedwell.h"
#include "host/opendtect/logloading.h"
#include "host/opendtect/markerwatch.h"
#include "host/opendtect/odtext.h"
#include "host/opendtect/wellsreading.h"

#include <QFileInfo>

#include <cmath>
#include <memory>
#include <vector>

#include <bufstringset.h>
#include <undefval.h>
#include <wellio.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellmarker.h>
#include <wellreader.h>
#include <welltrack.h>
#include <wellwriter.h>

namespace opendtect {

namespace {

// What is no number is undefined, as in every host.
bool isSample(float value)
{
    return std::isfinite(value) && !host::isUndefined(value);
}

// The host's reason, what became of the old file, and where neither is known what is likely.
QString failureReason(const uiString &message, const QString &putBackProblem)
{
    QString reason = toQString(message);
    if (reason.isEmpty())
        reason = QStringLiteral("what was stored is not what was written (is the disk full?)");
    return putBackProblem.isEmpty() ? reason : reason + QStringLiteral(". ") + putBackProblem;
}

QString problemOf(const host::LogData &log)
{
    if (log.name.trimmed().isEmpty())
        return QStringLiteral("it has no name");
    if (log.depths.size() != log.values.size())
        return QStringLiteral("it has not as many depths as values");
    bool isDefined = false;
    for (int i = 0; i < log.depths.size(); ++i) {
        if (!std::isfinite(log.depths.at(i)) || host::isUndefined(log.depths.at(i)))
            return QStringLiteral("a depth is undefined");
        isDefined = isDefined || isSample(log.values.at(i));
    }
    return isDefined ? QString() : QStringLiteral("the log has no defined sample");
}

void fill(Well::Log &target, const host::LogData &given)
{
    // The host would only turn round a log that ends above its beginning.
    host::LogData log = isSurveyInFeet() ? host::metresToFeet(given) : given;
    host::sortByDepth(&log);
    target.setUnitMeasLabel(log.unit.toUtf8().constData());
    for (int i = 0; i < log.depths.size(); ++i) {
        const float value = log.values.at(i);
        target.addValue(log.depths.at(i), isSample(value) ? value : mUdf(float));
    }
    // Of this log alone: the set's own function would strip logs of which only the header is loaded.
    target.removeTopBottomUdfs();
    target.updateAfterValueChanges();
}

// The file that the host will write the log to. It counts the logs that it can read, so that behind an unreadable
// one, or a second one of a name, it would write over the file of another log.
host::Outcome<QString> logFile(LoadedWell &well, const char *logName)
{
    BufferStringSet names;
    Well::Reader(well.id(), well.data()).getLogInfo(names);
    int files = 0;
    while (QFileInfo::exists(well.file(Well::odIO::sExtLog(), files + 1)))
        ++files;
    if (names.size() != files)
        return {{},
                QStringLiteral("One of the logs of the well %1 is unreadable or has the name of another; the host "
                               "would write over the wrong log. Nothing was changed.")
                    .arg(well.name())};
    const int index = names.indexOf(logName);
    return {well.file(Well::odIO::sExtLog(), index < 0 ? files + 1 : index + 1), {}};
}

// Reads the markers anew. The host drops those that lie outside the track.
bool areStored(LoadedWell &well)
{
    Well::MarkerSet &markers = well.data().markers();
    const Interval<float> track = well.data().track().dahRange();
    int expected = 0;
    for (int i = 0; i < markers.size(); ++i)
        if (track.includes(markers[i]->dah(), false))
            ++expected;
    return Well::Reader(well.id(), well.data()).getMarkers() && markers.size() == expected;
}

// Markers without a name or a depth cannot be stored; the host would not read what follows them.
bool isUsable(const host::Marker &marker)
{
    return !marker.name.trimmed().isEmpty() && std::isfinite(marker.depth) && !host::isUndefined(marker.depth);
}

using Markers = std::vector<std::unique_ptr<Well::Marker>>;

Markers copiesOf(const Well::MarkerSet &set)
{
    Markers copies;
    for (int i = 0; i < set.size(); ++i)
        copies.push_back(std::make_unique<Well::Marker>(*set[i]));
    return copies;
}

// The depths as the survey keeps them; a marker that did not move keeps its own to the last bit.
QVector<host::Marker> inSurveyUnit(QVector<host::Marker> markers, const Well::MarkerSet &before)
{
    if (!isSurveyInFeet())
        return markers;
    QVector<host::Marker> stored;
    for (int i = 0; i < before.size(); ++i)
        stored.append({toQString(before[i]->name().buf()), before[i]->dah(), {}});
    return host::metresToFeet(std::move(markers), stored);
}

Markers converted(const QVector<host::Marker> &markers, const Well::MarkerSet &before)
{
    Markers result;
    for (const host::Marker &marker : inSurveyUnit(markers, before)) {
        if (!isUsable(marker))
            continue;
        const QByteArray name = marker.name.trimmed().toUtf8();
        const QColor wanted = marker.color;
        const Color color(static_cast<unsigned char>(wanted.red()), static_cast<unsigned char>(wanted.green()),
                          static_cast<unsigned char>(wanted.blue()));
        result.push_back(std::make_unique<Well::Marker>(name.constData(), marker.depth, color));
        // A marker keeps its stratigraphic level unless the level's colour would hide the one asked for.
        const Well::Marker *old = before.getByName(name.constData());
        if (old && old->color() == color)
            result.back()->setLevelID(old->levelID());
    }
    return result;
}

void replace(Well::MarkerSet &set, const Markers &markers)
{
    set.erase();
    for (const auto &marker : markers)
        set.insertNew(new Well::Marker(*marker)); // sorts; refuses, and deletes, a second one of a name
}

} // namespace

host::Status writeLog(const QString &key, const host::LogData &log)
{
    LoadedWell well(key, Well::LoadReqs(Well::Inf, Well::Trck, Well::LogInfos));
    if (!well.error().isEmpty())
        return {well.error()};
    const QString failure = QStringLiteral("Cannot write the log \"%1\" of the well %2").arg(log.name, well.name());
    const QString problem = problemOf(log);
    if (!problem.isEmpty())
        return {withReason(failure, problem + QLatin1Char('.'))};
    const QByteArray name = log.name.trimmed().toUtf8();
    const host::Outcome<QString> file = logFile(well, name.constData());
    if (!file.ok())
        return {file.error};
    FileBackup backup(file.value);
    if (!backup.error().isEmpty())
        return {backup.error()};

    Well::LogSet &logs = well.data().logs();
    const int index = logs.indexOf(name.constData());
    Well::Log made(name.constData());
    fill(made, log);
    if (index >= 0) {
        made.setMnemLabel(logs.getLog(index).mnemLabel());
        made.pars() = logs.getLog(index).pars();
    }
    const Well::Writer writer(well.id(), well.data());
    bool isWritten = writer.putLog(made);
    if (isWritten) {
        well.data().reloadLogNames();
        const Well::Log *stored = reloadLog(well.data(), name.constData()).log;
        isWritten = stored && stored->size() == made.size();
    }
    if (!isWritten) {
        const QString putBackProblem = backup.putBack();
        well.data().reloadLogNames();
        Well::MGR().reloadLogs(well.id());
        return {withReason(failure, failureReason(writer.errMsg(), putBackProblem))};
    }
    well.data().logschanged.trigger(logs.indexOf(name.constData()));
    return {};
}

host::Status writeMarkers(const QString &key, const QVector<host::Marker> &markers, MarkerWatch &watch)
{
    LoadedWell well(key, Well::LoadReqs(Well::Inf, Well::Trck, Well::Mrkrs));
    if (!well.error().isEmpty())
        return {well.error()};
    FileBackup backup(well.file(Well::odIO::sExtMarkers()));
    if (!backup.error().isEmpty())
        return {backup.error()};

    Well::MarkerSet &stored = well.data().markers();
    const Markers before = copiesOf(stored);
    replace(stored, converted(markers, stored));
    const Well::Writer writer(well.id(), well.data());
    if (!writer.putMarkers() || !areStored(well)) {
        const QString putBackProblem = backup.putBack();
        replace(stored, before);
        return {withReason(QStringLiteral("Cannot write the markers of the well %1").arg(well.name()),
                           failureReason(writer.errMsg(), putBackProblem))};
    }
    watch.attach();
    well.data().markerschanged.trigger();
    return {};
}

} // namespace opendtect
