#include "datastore/perforationfile.h"
#include "datastore/projectfile.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/projectcheck.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "programs/batch/welldatacommand.h"
#include "welldata/siderows.h"
#include "welldata/welldatastore.h"

#include <QFileInfo>

namespace batch {

namespace {

const QVector<ImportColumn> zoneImport{{"--name-column", "The column of the names, from 1; 1 without it", 1},
                                       {"--start-column", "The column of the upper depths; 2 without it", 2},
                                       {"--end-column", "The column of the lower depths; 3 without it", 3},
                                       {"--type-column", "The column of the zone types; 4 without it", 4}};

/// The window stores them as they are, and so does the import; but it is told.
void noteZonesUpsideDown(const QVector<welldata::TableRow> &rows, const Arguments &arguments, Result *result)
{
    QVector<int> upsideDown;
    for (int i = 0; i < rows.size(); ++i)
        if (rows.at(i).numbers[welldata::StartNumber].toFloat() > rows.at(i).numbers[welldata::EndNumber].toFloat())
            upsideDown.append(i + 1);
    if (!upsideDown.isEmpty())
        result->notices.append(QStringLiteral("%1: the start depth lies below the end depth in %2.")
                                   .arg(placeOfRows(arguments), welldata::rowList(upsideDown)));
}

void addZones(const PerforationRecord &zones, Result *result)
{
    for (int i = 0; i < zones.names.size(); ++i) {
        Record record;
        record[QLatin1String("name")] = zones.names.at(i);
        record[QLatin1String("startDepth")] = jsonNumber(zones.tops.at(i));
        record[QLatin1String("endDepth")] = jsonNumber(zones.bottoms.at(i));
        record[QLatin1String("type")] = zones.zoneTypes.at(i);
        result->records.append(record);
    }
}

Result importZones(Session &session, const host::WellEntry &well, const Arguments &arguments)
{
    const auto file = readImport(arguments, zoneImport);
    if (!file.ok())
        return Result::failed(file.error);
    const QVector<welldata::TableRow> rows = welldata::zoneRows(file.value);
    Result result;
    noteZeros(rows, arguments, &result);
    noteZonesUpsideDown(rows, arguments, &result);
    const QString what = QStringLiteral("Perforation zones of ") + well.name;
    const QString path = perforationPath(session.projectFolder(), well.name);
    if (QFileInfo::exists(path) && !session.isForced()) {
        result.failures.append(
            refusalToReplace(what, readPerforation(session.projectFolder(), well.name).names.size(), path));
    } else if (session.isDryRun()) {
        for (const QString &problem : welldata::zoneProblems(rows))
            result.failures.append(placeOfRows(arguments) + QStringLiteral(": ") + problem);
        if (!result.failures.isEmpty())
            return result;
        result.text = wouldBe(what);
        addZones(welldata::zoneRecord(well.name, rows), &result);
    } else {
        ProjectData &data = session.projectToWrite();
        const HeldSignals held;
        const bool isStored = storeZones(data, well.name, rows, QString());
        addOutcome(session, arguments, what, isStored, &result, path);
    }
    return result;
}

void listZones(Session &session, const host::WellEntry &well, const Arguments &, Result *result)
{
    const QString path = perforationPath(session.projectFolder(), well.name);
    const QByteArray bytes = readProjectFile(session.projectFolder(), path).bytes;
    const PerforationRecord zones = parsePerforation(bytes, well.name);
    addZones(zones, result);
    if (zones.names.isEmpty() && !isZoneCount(bytes))
        result->failures.append(
            QStringLiteral("%1: the file %2 holds no zones that can be read.").arg(well.name, path));
    else
        result->failures += Damage(session).ofZones(well.name);
}

} // namespace

Command zonesCommand()
{
    Command command = wellDataCommand(
        "zones", "List or import the perforation zones of a well",
        "Lists the zones in the order of their file. With --import they are replaced by those of a file, as the "
        "import of the zone editor does; --force is needed where the well has zones.",
        "zones Aldra-1 --import Demo/Import/Aldra-1_perforations.txt --skip 1 --force --survey Demo",
        {zoneImport, importZones, listZones});
    command.form.key = QStringLiteral("zones");
    command.form.whenEmpty = QStringLiteral("The well has no perforation zones.");
    command.form.fields = {
        textField("name", "Zone", "its name"),
        numberField("startDepth", "From (m)", "measured depth of its upper end, metres", 2),
        numberField("endDepth", "To (m)", "measured depth of its lower end, metres", 2),
        textField("type", "Type", "what it produces"),
        isWrittenField(""),
    };
    return command;
}

} // namespace batch
