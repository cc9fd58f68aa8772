#include "programs/batch/commands.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/progress.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "survey/reportlines.h"
#include "survey/topsreport.h"

#include <QSet>

namespace batch {

namespace {

constexpr char wellOption[] = "--well";
constexpr char wellsOption[] = "--wells";
constexpr char unitOption[] = "--unit";
constexpr char feet[] = "ft";
constexpr int linesTold = 20;

/// Which of the survey's wells get tops.
struct Wanted
{
    QSet<QString> keys; ///< empty for all
    host::WellEntry wellOfFiles; ///< of files that name none; without a key where the file's name tells it
};

host::Outcome<Wanted> wantedWells(Session &session, const Arguments &arguments)
{
    Wanted wanted;
    for (const QString &name : arguments.values(QLatin1String(wellsOption))) {
        const host::Outcome<host::WellEntry> well = session.well(name);
        if (!well.ok())
            return {{}, well.error};
        wanted.keys.insert(well.value.key);
    }
    if (arguments.has(QLatin1String(wellOption))) {
        const host::Outcome<host::WellEntry> well = session.well(arguments.value(QLatin1String(wellOption)));
        if (!well.ok())
            return {{}, well.error};
        wanted.wellOfFiles = well.value;
    }
    return {wanted, {}};
}

/// Of the lines that are no tops the first ones are told.
void tellRemarks(const survey::TopsPlan &plan, Result *result)
{
    int lines = 0;
    for (const survey::TopsRemark &remark : plan.remarks()) {
        if (remark.line == 0)
            result->failures.append(QStringLiteral("%1: %2").arg(remark.file, remark.problem));
        else if (++lines <= linesTold)
            result->notices.append(survey::remarkText(remark));
    }
    if (lines > linesTold)
        result->notices.append(
            QStringLiteral("%1 more are no tops.").arg(survey::counted(lines - linesTold, "line", "lines")));
}

int indexOf(const QVector<host::WellEntry> &wells, const QString &key)
{
    for (int i = 0; i < wells.size(); ++i)
        if (wells.at(i).key == key)
            return i;
    return -1;
}

/// Sends files that name no well into the one that is named, and leaves out wells that are not wanted.
void choose(const Wanted &wanted, survey::TopsPlan *plan)
{
    const int wellOfFiles = indexOf(plan->wells(), wanted.wellOfFiles.key);
    for (int row = 0; row < plan->rows().size(); ++row) {
        if (wellOfFiles >= 0 && plan->rows().at(row).isWholeFile)
            plan->setWell(row, wellOfFiles);
        const int well = plan->rows().at(row).well;
        if (well >= 0 && !wanted.keys.isEmpty() && !wanted.keys.contains(plan->wells().at(well).key))
            plan->setWell(row, -1);
    }
}

/// Why a row is not written though it was asked for, a sentence; empty when it is.
QString refusal(const Session &session, const survey::TopsRow &row, const Wanted &wanted)
{
    if (!row.problem.isEmpty() || !row.error.isEmpty())
        return row.problem + row.error;
    if (row.well < 0)
        return !wanted.keys.isEmpty() ? QString()
            : row.isWholeFile         ? QStringLiteral("the file does not say of which well it is; --well names it.")
            : row.match == survey::TopsRow::Match::Several
            ? QStringLiteral("several wells may be meant: %1.").arg(row.candidates.join(QStringLiteral(", ")))
            : QStringLiteral("the survey has no such well; --wells names those that are wanted.");
    if (row.merge.moved > 0 && !session.isForced())
        return QStringLiteral("%1 would move; --force moves them.")
            .arg(survey::counted(row.merge.moved, "marker", "markers"));
    return {};
}

Record recordOf(const survey::TopsPlan &plan, const survey::TopsRow &row)
{
    Record record;
    record[QLatin1String("name")] = row.names.first();
    record[QLatin1String("well")] = plan.wells().at(row.well).name;
    record[QLatin1String("added")] = row.merge.added;
    record[QLatin1String("moved")] = row.merge.moved;
    record[QLatin1String("furthest")] = jsonNumber(static_cast<float>(row.merge.furthestM));
    record[QLatin1String("unchanged")] = row.merge.unchanged;
    record[QLatin1String("leftOut")] = row.leftOut();
    return record;
}

void noteWellsWithoutTops(const survey::TopsPlan &plan, const Wanted &wanted, Result *result)
{
    QSet<QString> found;
    for (const survey::TopsRow &row : plan.rows())
        if (row.well >= 0)
            found.insert(plan.wells().at(row.well).key);
    for (const host::WellEntry &well : plan.wells())
        if (wanted.keys.contains(well.key) && !found.contains(well.key))
            result->notices.append(QStringLiteral("%1: the files hold no top of it.").arg(well.name));
}

Result run(Session &session, const Arguments &arguments)
{
    const host::Outcome<Wanted> wanted = wantedWells(session, arguments);
    const host::Outcome<QVector<host::WellEntry>> wells = session.store().list();
    for (const QString &error : {wanted.error, wells.error})
        if (!error.isEmpty())
            return Result::failed(error);
    survey::TopsPlan plan(wells.value, session.store().depthUnit(), survey::topsSource(session.store()));
    if (arguments.has(QLatin1String(unitOption)))
        plan.setUnit(arguments.value(QLatin1String(unitOption)) == QLatin1String(feet) ? survey::DepthUnit::Foot
                                                                                       : survey::DepthUnit::Metre);
    QVector<survey::TopsInput> files;
    for (const QString &path : arguments.operands())
        files.append(survey::readTops(path));
    plan.add(files);
    choose(wanted.value, &plan);

    Result result;
    tellRemarks(plan, &result);
    noteWellsWithoutTops(plan, wanted.value, &result);
    Progress progress(QStringLiteral("Importing tops"), qMax(1, plan.rows().size()));
    for (int i = 0; i < plan.rows().size(); ++i) {
        progress.setDone(i);
        const survey::TopsRow &row = plan.rows().at(i);
        QString failure = refusal(session, row, wanted.value);
        if (failure.isEmpty() && row.well >= 0) {
            for (const QString &note : survey::topsNotes(row))
                result.notices.append(row.names.first() + QStringLiteral(": ") + note);
            if (row.changesAnything() && !session.isDryRun()) {
                const HeldSignals held;
                failure = survey::writeTops(session.store(), &plan, i).error;
            }
            if (failure.isEmpty())
                result.records.append(recordOf(plan, row));
        }
        if (!failure.isEmpty())
            result.failures.append(row.names.first() + QStringLiteral(": ") + failure);
    }
    return result;
}

} // namespace

Command topsCommand()
{
    Command command = makeCommand(
        "tops", "Bring the tops of tables into the markers of wells",
        "A table has a name and a depth along hole in each line, between tabs, semicolons, commas or blanks; a line "
        "of "
        "titles tells its columns and may tell the unit. Where it has a column of wells, the tops of each go into "
        "the "
        "well of the survey of that name, in whatever letter case and with whatever blanks and signs, else of that "
        "unique identifier. A file without such a column goes into the well of its own name (\"A-1_tops.txt\").\n\n"
        "Tops that a well does not have yet are added; markers that a table has at another depth move, for which "
        "--force is needed. Others stay. A well is written wholly or not at all.",
        "tops Demo/Import/Aldra-1_tops.txt Demo/Import/Brisk-1_tops.txt --survey Demo");
    command.operands = {repeatable(operand("FILE", "a table of tops", {WordKind::File}))};
    command.options = {
        valueOption(wellOption, "NAME", "The well for files that name none", {WordKind::Well}),
        listOption(wellsOption, "A,B", "Only these wells of the survey; what else the files hold is left out",
                   {WordKind::Well}),
        valueOption(unitOption, "UNIT", "The unit of depths where a file does not tell it; the survey's without it",
                    choiceOf({QStringLiteral("m"), QLatin1String(feet)})),
    };
    command.writes = true;
    command.replaces = true;
    command.form.key = QStringLiteral("tops");
    command.form.whenEmpty = QStringLiteral("No well gets a top.");
    command.form.fields = {
        textField("name", "In the file", "the well as the file writes it, or the file"),
        textField("well", "Well", "the well that gets the tops"),
        countField("added", "New", "number of tops that it did not have"),
        countField("moved", "Moved", "number of markers that get another depth"),
        numberField("furthest", "At most (m)", "by how much they move at most, metres", 2),
        countField("unchanged", "Same", "number of markers at the depth of the file"),
        countField("leftOut", "Left out", "number of lines that are no tops or lie below the total depth"),
        isWrittenField(),
    };
    command.run = run;
    return command;
}

} // namespace batch
