#include "programs/batch/newwellimport.h"

#include "datastore/curvegroupassignment.h"
#include "las/resampling.h"
#include "las/showntext.h"
#include "programs/batch/curvechoice.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/importedwell.h"
#include "programs/batch/session.h"
#include "survey/wellmaker.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <limits>

namespace batch {

namespace {

QVector<double> withGaps(const QVector<float> &values)
{
    QVector<double> result;
    result.reserve(values.size());
    for (const float value : values)
        result.append(host::isUndefined(value) ? std::numeric_limits<double>::quiet_NaN()
                                               : static_cast<double>(value));
    return result;
}

/// Puts the log on an even grid; false where its depths or the interval do not allow it.
bool resampleLog(host::LogData *log, double interval)
{
    const QVector<double> depths(log->depths.begin(), log->depths.end());
    if (!las::differsFromStep(depths, interval))
        return true;
    if (!las::isStrictlyIncreasing(depths)
        || !las::gridProblem(depths.first(), depths.last(), interval, log->name).isEmpty())
        return false;
    const las::Samples samples = las::resampleRuns(depths, withGaps(log->values), interval);
    log->depths.clear();
    log->values.clear();
    for (int i = 0; i < samples.depths.size(); ++i) {
        const double value = samples.values.at(i);
        log->depths.append(static_cast<float>(samples.depths.at(i)));
        log->values.append(std::isnan(value) ? host::undefinedValue : static_cast<float>(value));
    }
    return true;
}

bool hasSample(const host::LogData &log)
{
    return std::any_of(log.values.begin(), log.values.end(), [](float value) { return !host::isUndefined(value); });
}

/// What the options make of the logs of a new well; gives why it cannot be made of them. \a interval is in the survey's
/// depth unit, 0 for none.
QString changeLogs(const CurveChoice &choice, double interval, CurveGroupFinder &groups, QVector<host::LogData> *logs,
                   QStringList *notices, ImportedWell *imported)
{
    QVector<host::LogData> kept;
    QHash<QString, QString> curves; // by the names of their logs
    for (host::LogData &log : *logs) {
        const QString curve = log.name;
        if (!choice.isWanted(curve))
            continue;
        if (interval > 0 && !resampleLog(&log, interval))
            notices->append(QStringLiteral("%1 keeps its samples: the interval cannot be applied to its depths.")
                                .arg(las::shortened(curve)));
        log.name = choice.nameOf(curve);
        if (!hasSample(log)) {
            notices->append(QStringLiteral("%1 is left out: it has no sample on the interval's depths.")
                                .arg(las::shortened(curve)));
            continue;
        }
        if (curves.contains(log.name))
            return sameNameProblem(curves.value(log.name), curve, log.name);
        curves.insert(log.name, curve);
        const QString group = choice.groupOf(curve, log.unit, groups);
        if (const QString notice = choice.groupNotice(curve, group); !notice.isEmpty())
            notices->append(notice);
        imported->addLog(log.name, curve, group);
        kept.append(log);
    }
    *logs = kept;
    if (kept.isEmpty())
        notices->append(QStringLiteral("The well gets no logs."));
    return {};
}

} // namespace

Result importAsNewWell(Session &session, const survey::NewWell &well, const CurveChoice &choice)
{
    CurveGroupFinder groups(session.projectFolder());
    ImportedWell imported;
    imported.isNew = true;
    imported.files = well.files;
    survey::WellOrder order;
    order.properties = survey::wellProperties(well.texts);
    order.files = well.files;
    const double interval = choice.options.isResampling
        ? survey::fromMetres(static_cast<double>(choice.options.interval), session.store().depthUnit())
        : 0;
    order.changeLogs = [&](QVector<host::LogData> *logs, QStringList *notices) {
        return changeLogs(choice, interval, groups, logs, notices, &imported);
    };
    order.isTrial = session.isDryRun();
    survey::MadeWell made;
    {
        const HeldSignals held;
        made = survey::makeWell(session.store(), order);
    }
    if (!made.error.isEmpty())
        return Result::failed(made.name + QStringLiteral(": ") + made.error);
    imported.well = made.name;
    imported.notices = well.allNotes() + made.notices;
    return Result::of(imported.record());
}

} // namespace batch
