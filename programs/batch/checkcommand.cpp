#include "base/folderlinks.h"
#include "programs/batch/commands.h"
#include "programs/batch/projectcheck.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "programs/batch/workers.h"
#include "survey/logcheck.h"
#include "survey/orphans.h"

#include <QSet>

#include <algorithm>
#include <cerrno>

namespace batch {

namespace {

constexpr int wellsOfAPiece = 8;

void add(const QVector<Finding> &findings, Result *result)
{
    for (const Finding &finding : findings)
        result->records.append(recordOf(finding));
}

void addDamage(const QString &file, const QString &sentence, Result *result)
{
    add({{Finding::State::Damaged, file, sentence}}, result);
}

/// Reads all that there is of a well. Logs come from their files one after the other: the store, which may be asked for any log
/// at any time, would look at all their headers for each.
void checkWell(survey::SurveyStore &store, const QString &stem, const ProjectCheck &project,
               const host::WellEntry &well, Result *result)
{
    QStringList errors{store.header(well.key).error, store.markers(well.key).error};
    errors.removeAll(QString());
    errors.removeDuplicates();
    // One row a file: an error that repeats what the store tells of a file has nothing to add.
    QStringList paths;
    QStringList rows;
    for (const QString &problem : store.takeProblems()) {
        const QString path = problem.left(problem.indexOf(QStringLiteral(": ")));
        const int known = paths.indexOf(path);
        if (known < 0) {
            paths.append(path);
            rows.append(problem);
        } else {
            rows[known] += problem.mid(path.size() + 1);
        }
    }
    for (const QString &row : qAsConst(rows))
        addDamage(well.name, row, result);
    const QString nothingThere = base::systemErrorText(ENOENT);
    for (const QString &error : qAsConst(errors))
        if (std::none_of(paths.begin(), paths.end(), [&error](const QString &path) { return error.contains(path); }))
            add({{error.contains(nothingThere) ? Finding::State::Missing : Finding::State::Damaged, well.name,
                  error}},
                result);
    QStringList logNames;
    if (!stem.isEmpty())
        logNames = survey::checkLogs(
            stem, [result](const QString &path, const QString &problem) { addDamage(path, problem, result); });
    add(project.checkWell(well.name, stem.isEmpty() ? nullptr : &logNames), result);
}

Finding findingOf(const survey::OrphanedFile &orphan)
{
    switch (orphan.kind) {
    case survey::OrphanedFile::Kind::NoWell:
        return {Finding::State::Orphaned, orphan.path, QStringLiteral("No well of the survey has this file.")};
    case survey::OrphanedFile::Kind::HiddenLog:
        return {Finding::State::Orphaned, orphan.path,
                QStringLiteral("A log in front of it is missing, so it is not shown.")};
    case survey::OrphanedFile::Kind::Unfinished:
        break;
    }
    return unfinishedWrite(orphan.path);
}

Result run(Session &session, const Arguments &)
{
    const auto wells = session.store().list();
    if (!wells.ok())
        return Result::failed(wells.error);
    Result result;
    for (const QString &problem : session.store().takeProblems())
        addDamage(session.surveyDirectory(), problem, &result);
    QSet<QString> gaps;
    for (const survey::OrphanedFile &orphan : survey::orphanedWellFiles(session.surveyDirectory())) {
        if (!orphan.missing.isEmpty() && !gaps.contains(orphan.missing))
            add({{Finding::State::Missing, orphan.missing,
                  QStringLiteral("It is missing, and the logs behind it are not shown.")}},
                &result);
        gaps.insert(orphan.missing);
        add({findingOf(orphan)}, &result);
    }
    const ProjectCheck project(session.projectPaths(), wells.value);
    add(project.checkCommon(), &result);
    const QHash<QString, QString> stems = survey::wellStems(session.surveyDirectory());
    QStringList pieces;
    for (int first = 0; first < wells.value.size(); first += wellsOfAPiece)
        pieces.append(wells.value.at(first).name);
    result.add(runPieces(QStringLiteral("Checking"), pieces, session.jobs(), [&](int piece) {
        Result found;
        const int first = piece * wellsOfAPiece;
        for (int well = first; well < qMin(first + wellsOfAPiece, wells.value.size()); ++well)
            checkWell(session.store(), stems.value(wells.value.at(well).key), project, wells.value.at(well), &found);
        return found;
    }));
    const auto isBad = [](const Record &record) {
        const QString state = record.value(QLatin1String("state")).toString();
        return state == QLatin1String("damaged") || state == QLatin1String("missing");
    };
    const auto bad = std::count_if(result.records.begin(), result.records.end(), isBad);
    if (bad > 0)
        result.failures.append(QStringLiteral("Damaged or missing: %1. What is listed says where.").arg(bad));
    return result;
}

} // namespace

Command checkCommand()
{
    Command command =
        makeCommand("check", "Read everything in the survey and tell what is wrong",
                    "Reads the list of wells, each well with all samples of its logs and its markers, and all files "
                    "of the project. It tells what is damaged, what is missing though something names it, what is "
                    "orphaned since no well shows it, and what unfinished writes left. It ends with 1 when something "
                    "is damaged or missing. Nothing is changed.",
                    "check --survey Demo");
    command.options = {switchOption("--repair-nothing", "Change nothing: so it is without the option, too")};
    command.usesCores = true;
    command.form.key = QStringLiteral("findings");
    command.form.whenEmpty = QStringLiteral("Everything is as it should be.");
    command.form.fields = {
        textField("state", "State", "damaged, missing, orphaned or unfinished"),
        textField("file", "Where", "path of the file, or name of the well"),
        textField("text", "What", "what is wrong"),
    };
    command.run = run;
    return command;
}

} // namespace batch
