#include "datastore/curvegroups.h"
#include "las/lasheader.h"
#include "las/resampling.h"
#include "programs/batch/commands.h"
#include "programs/batch/curvechoice.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/importedgroups.h"
#include "programs/batch/importedwell.h"
#include "programs/batch/newwellimport.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"
#include "programs/batch/wellimport.h"
#include "programs/batch/workers.h"
#include "survey/lasfiles.h"

#include <QSet>

namespace batch {

namespace {

/// Files on their way into one well.
struct Load
{
    host::WellEntry well;
    QStringList files;
};

/// The well that the file is of by its own header, as the import's window chooses it: by its UWI, else by its WELL.
host::Outcome<host::WellEntry> wellOfFile(Session &session, const QString &path)
{
    const las::HeaderResult header = las::readHeader(path);
    if (!header.error.isEmpty())
        return {{}, header.error};
    QStringList tried;
    for (const char *mnemonic : {"UWI", "WELL"}) {
        const las::HeaderItem *item = header.header.find(QLatin1Char('W'), {QString::fromLatin1(mnemonic)});
        if (!item || item->value.isEmpty())
            continue;
        const host::Outcome<host::WellEntry> well = session.well(item->value);
        if (well.ok())
            return well;
        if (session.hasSeveral(item->value))
            return {{}, QStringLiteral("%1: %2 --well takes it.").arg(path, well.error)};
        tried.append(QLatin1Char('"') + item->value + QLatin1Char('"'));
    }
    tried.removeDuplicates();
    return {{},
            tried.isEmpty()
                ? QStringLiteral("%1 names no well; --well names one, --new-wells makes one.").arg(path)
                : QStringLiteral(
                      "%1 is of the well %2, which the survey has not; --well names another, --new-wells makes it.")
                      .arg(path, tried.join(QStringLiteral(" or ")))};
}

Result importIntoWells(Session &session, const QStringList &files, const Arguments &arguments,
                       const CurveChoice &choice)
{
    Result result;
    QVector<Load> loads;
    QStringList names;
    const QString given = arguments.value(QStringLiteral("--well"));
    for (const QString &file : files) {
        const host::Outcome<host::WellEntry> well = given.isEmpty() ? wellOfFile(session, file) : session.well(given);
        if (!well.ok()) {
            if (!result.failures.contains(well.error))
                result.failures.append(well.error);
            continue;
        }
        const auto found = std::find_if(loads.begin(), loads.end(),
                                        [&](const Load &load) { return load.well.key == well.value.key; });
        if (found != loads.end()) {
            found->files.append(file);
            continue;
        }
        loads.append({well.value, {file}});
        names.append(well.value.name);
    }
    if (!loads.isEmpty())
        session.projectToWrite(); // once, before the children
    result.add(runPieces(QStringLiteral("Importing"), names, session.jobs(), [&](int number) {
        return importIntoWell(session, loads.at(number).well, loads.at(number).files, choice);
    }));
    return result;
}

Result importAsNewWells(Session &session, const QStringList &files, const CurveChoice &choice)
{
    Result result;
    const auto listed = session.store().list();
    if (!listed.ok())
        return Result::failed(listed.error);
    survey::NewWells proposed(survey::WellNames(listed.value), session.store().depthUnit());
    proposed.addFiles(files);
    QVector<survey::NewWell> wells;
    QStringList names;
    for (int row = 0; row < proposed.wells().size(); ++row) {
        const survey::NewWell well = proposed.wells().at(row);
        const QString name = well.texts[survey::WellField::Name];
        if (well.state == survey::NewWell::State::Unreadable)
            result.failures += well.notes; // they name the file
        else if (well.state == survey::NewWell::State::Exists)
            result.failures.append(
                QStringLiteral("%1: the survey has a well \"%2\" already; without --new-wells the logs go into it.")
                    .arg(survey::fileNames(well), name));
        else if (const QString problem = proposed.rowProblem(row); !problem.isEmpty())
            result.failures.append(survey::fileNames(well) + QStringLiteral(": ") + problem);
        else {
            wells.append(well);
            names.append(name);
        }
    }
    if (!wells.isEmpty())
        session.projectToWrite();
    result.add(runPieces(QStringLiteral("Importing"), names, session.jobs(),
                         [&](int number) { return importAsNewWell(session, wells.at(number), choice); }));
    if (!session.isDryRun()) {
        const HeldSignals held;
        const host::Status flushed = session.store().flush();
        if (!flushed.ok())
            result.failures.append(flushed.error);
    }
    return result;
}

/// The curves that were imported; where some files failed, all that the files name.
QSet<QString> knownCurves(const QStringList &files, const Result &result)
{
    QSet<QString> known;
    for (const Record &record : result.records)
        for (const QJsonValue &log : record.value(QLatin1String("logs")).toArray())
            known.insert(log.toObject().value(QLatin1String("curve")).toString());
    if (!result.failures.isEmpty())
        for (const QString &name : curvesOf(files))
            known.insert(name);
    return known;
}

// Names of curves in an option that are none: a slip of the pen would go unseen.
void noteUnusedNames(const char *option, const QHash<QString, QString> &pairs, const QSet<QString> &known,
                     Result *result)
{
    QStringList names = pairs.keys();
    names.sort();
    for (const QString &name : qAsConst(names))
        if (!known.contains(name))
            result->notices.append(
                QStringLiteral("The option %1 names \"%2\", which is no curve that is imported: nothing came of it.")
                    .arg(QLatin1String(option), name));
}

Result run(Session &session, const Arguments &arguments)
{
    const CurveChoice choice(arguments);
    const survey::FoundFiles found = survey::findLasFiles(arguments.operands());
    Result result = arguments.has(QStringLiteral("--new-wells"))
        ? importAsNewWells(session, found.files, choice)
        : importIntoWells(session, found.files, arguments, choice);
    const QSet<QString> curves = knownCurves(found.files, result);
    noteUnusedNames("--map", choice.groups, curves, &result);
    noteUnusedNames("--rename", choice.names, curves, &result);
    if (!session.isDryRun() && !result.records.isEmpty())
        result.failures += assignGroups(session, result);
    if (found.files.isEmpty())
        result.failures.append(
            QStringLiteral("There is no LAS file in %1.").arg(arguments.operands().join(QStringLiteral(", "))));
    return result;
}

QString problem(const Arguments &arguments)
{
    if (arguments.has(QStringLiteral("--well")) && arguments.has(QStringLiteral("--new-wells")))
        return QStringLiteral("The options --well and --new-wells exclude each other.");
    for (const char *option : {"--map", "--rename"}) {
        QStringList seen;
        for (const QString &pair : arguments.values(QString::fromLatin1(option))) {
            if (const QString wrong = pairProblem(QString::fromLatin1(option), pair); !wrong.isEmpty())
                return wrong;
            const QString first = pair.section(QLatin1Char('='), 0, 0);
            if (seen.contains(first))
                return QStringLiteral("The option %1 names \"%2\" twice.").arg(QLatin1String(option), first);
            seen.append(first);
        }
    }
    for (const QString &pair : arguments.values(QStringLiteral("--map"))) {
        const QString group = pair.section(QLatin1Char('='), 1);
        if (!curveGroupNames().contains(asListed(curveGroupNames(), group)))
            return QStringLiteral("The option --map wants a curve group (%1), not \"%2\".")
                .arg(curveGroupNames().join(QStringLiteral(", ")), group);
    }
    return {};
}

} // namespace

Command importCommand()
{
    Command command = makeCommand(
        "import", "Bring the curves of LAS files into wells",
        "Each file goes into the well that its UWI, else its WELL names; --well names another for all of them. Files "
        "are read as the window's import reads them; the depth column becomes a log only where --curves names it. "
        "With --new-wells a well is made for each new name, as in the workbench, and then wrapped files, files of "
        "LAS 3.0 and files in feet are read as they are meant. Of a folder all .las files are taken.\n\n"
        "What would lose or misplace samples is refused: a name of two curves, or of a log that the well has "
        "already, depths that are all the same, wrapped files.\n\n"
        "Afterwards the logs have their curve groups, and each new well its default logs.",
        "import Demo/Import/Aldra-1.las --curves GR --rename GR=GR_again --survey Demo");
    command.operands = {repeatable(operand("FILE", "a LAS file, or a folder of them", {WordKind::File}))};
    command.options = {
        valueOption("--well", "NAME", "The well for all files", {WordKind::Well}),
        switchOption("--new-wells", "Make a well for each name that the survey does not have"),
        listOption("--curves", "A,B", "Only the curves of these mnemonics", {WordKind::Curve}),
        repeatable(valueOption("--map", "MNEMONIC=GROUP", "The curve group of a curve; may be repeated",
                               {WordKind::CurveGroup})),
        repeatable(valueOption("--rename", "OLD=NEW", "The name of the log that a curve becomes; may be repeated",
                               {WordKind::CurveName})),
        valueOption("--interval", "M", "Resample curves of another step to this one, in metres",
                    numberRule(las::smallestInterval, 1e6)),
        switchOption("--convert-feet", "Convert the depths of files in feet to metres, as the window's box does"),
    };
    command.writes = true;
    command.replaces = true;
    command.usesCores = true;
    command.form.key = QStringLiteral("imports");
    command.form.layout = ResultForm::Layout::Sheet;
    command.form.fields = importFields();
    command.problem = problem;
    command.run = run;
    return command;
}

} // namespace batch
