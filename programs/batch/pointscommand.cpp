#include "datastore/curvegroups.h"
#include "programs/batch/arguments.h"
#include "programs/batch/calibrationpoints.h"
#include "programs/batch/commands.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "programs/batch/welldatacommand.h"
#include "welldata/siderows.h"
#include "welldata/welldatastore.h"

#include <QFileInfo>

namespace batch {

namespace {

const QVector<ImportColumn> pointImport{
    {"--depth-column", "The column of the measured depths, from 1; 1 without it", 1},
    {"--value-column", "The column of the values; 2 without it", 2}};

void addPoints(const CalibrationRecord &points, Result *result)
{
    for (int i = 0; i < qMin(points.depths.size(), points.values.size()); ++i) {
        Record record;
        record[QLatin1String("depth")] = jsonNumber(points.depths.at(i));
        record[QLatin1String("value")] = jsonNumber(points.values.at(i));
        result->records.append(record);
    }
}

Result importPoints(Session &session, const host::WellEntry &well, const Arguments &arguments)
{
    const QString group = arguments.operand(1);
    const auto file = readImport(arguments, pointImport);
    if (!file.ok())
        return Result::failed(file.error);
    const QVector<welldata::TableRow> rows = welldata::pointRows(file.value);
    Result result;
    noteZeros(rows, arguments, &result);
    const QString what = pointsOfWell(well.name, group);
    const QString path = calibrationPath(session.projectFolder(), well.name, group);
    if (QFileInfo::exists(path) && !session.isForced()) {
        const CalibrationRecord stored = readPoints(session, well.name, group, &result.failures);
        result.failures.append(refusalToReplace(what, stored.depths.size(), path));
    } else if (session.isDryRun()) {
        result.text = wouldBe(what);
        addPoints(welldata::pointRecord(well.name, group, rows), &result);
    } else {
        ProjectData &data = session.projectToWrite();
        const HeldSignals held;
        const bool isStored = storePoints(data, well.name, group, rows);
        addOutcome(session, arguments, what, isStored, &result, path);
    }
    return result;
}

void listPoints(Session &session, const host::WellEntry &well, const Arguments &arguments, Result *result)
{
    addPoints(readPoints(session, well.name, arguments.operand(1), &result->failures), result);
}

} // namespace

Command pointsCommand()
{
    Command command = wellDataCommand(
        "points", "List or import the calibration points of a well and a curve group",
        "Lists the points in the order of their file. With --import they are replaced by those of a file, as the "
        "import of the point editor does; --force is needed where there are points.",
        "points Aldra-1 Porosity --import Demo/Import/Aldra-1_core_porosity.txt --skip 1 --force --survey Demo",
        {pointImport, importPoints, listPoints});
    command.operands.append(operand("GROUP", "the curve group, as \"Porosity\"", choiceOf(curveGroupNames())));
    command.form.key = QStringLiteral("points");
    command.form.whenEmpty = QStringLiteral("There are no calibration points.");
    command.form.fields = {
        numberField("depth", "MD (m)", "measured depth, metres"),
        numberField("value", "Value", "the measured value"),
        isWrittenField(""),
    };
    return command;
}

} // namespace batch
