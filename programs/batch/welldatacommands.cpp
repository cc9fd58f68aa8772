#include "base/folderlinks.h"
#include "datastore/curvegroups.h"
#include "datastore/projectfile.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/projectcheck.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"
#include "welldata/markerrows.h"
#include "welldata/siderows.h"
#include "welldata/welldatastore.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace batch {

namespace {

constexpr char importOption[] = "--import";
constexpr char skipOption[] = "--skip";

/// A column of an import: the option that gives its number, and the one it has without.
struct ImportColumn
{
    const char *option;
    const char *help;
    int usual;
};

const QVector<ImportColumn> markerImport{{"--name-column", "The column of the names, from 1; 1 without it", 1},
                                         {"--depth-column", "The column of the measured depths; 2 without it", 2}};
const QVector<ImportColumn> zoneImport{{"--name-column", "The column of the names, from 1; 1 without it", 1},
                                       {"--start-column", "The column of the upper depths; 2 without it", 2},
                                       {"--end-column", "The column of the lower depths; 3 without it", 3},
                                       {"--type-column", "The column of the zone types; 4 without it", 4}};
const QVector<ImportColumn> pointImport{
    {"--depth-column", "The column of the measured depths, from 1; 1 without it", 1},
    {"--value-column", "The column of the values; 2 without it", 2}};

/// The wanted columns of the file that the options name. The error names the file, and the line where it is one's.
host::Outcome<welldata::ColumnFile> readImport(const Arguments &arguments, const QVector<ImportColumn> &columns)
{
    const QString path = arguments.value(QLatin1String(importOption));
    const base::RegularFile bytes = welldata::readImportFile(path);
    if (!bytes.ok())
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, base::systemErrorText(bytes.errorCode))};
    welldata::ColumnRequest request;
    request.headerLines = arguments.count(QLatin1String(skipOption), 0);
    request.fieldsAtLeast = qMax(2, columns.size());
    for (const ImportColumn &column : columns)
        request.columns.push_back(arguments.count(QLatin1String(column.option), column.usual));
    const welldata::ColumnFile file = readColumns(bytes.bytes, request);
    if (!file.ok())
        return {{}, path + QStringLiteral(": ") + file.problem};
    if (file.rowCount() == 0)
        return {{}, QStringLiteral("%1 has no line to import.").arg(path)};
    return {file, {}};
}

/// What notices name: the file, and the line behind which its rows are counted.
QString placeOfRows(const Arguments &arguments)
{
    const QString path = arguments.value(QLatin1String(importOption));
    const int skipped = arguments.count(QLatin1String(skipOption), 0);
    return skipped == 0 ? path : QStringLiteral("%1 behind line %2").arg(path).arg(skipped);
}

QString refusalToReplace(const QString &what, int count, const QString &path = {})
{
    if (count == 0)
        return existsProblem(path);
    return QStringLiteral("%1: %2 there already; --force replaces them.")
        .arg(what, count == 1 ? QStringLiteral("one is") : QStringLiteral("%1 are").arg(count));
}

/// What storing came to, as failures of a command.
void addOutcome(Session &session, const Arguments &arguments, const QString &what, bool isStored, Result *result,
                const QString &target = {})
{
    const QString end = target.isEmpty() ? QString() : QStringLiteral(" The file to write is %1.").arg(target);
    for (const QString &failure : session.takeFailures())
        result->failures.append(QStringLiteral("%1 from %2: %3").arg(what, placeOfRows(arguments), failure) + end);
    if (!isStored && result->failures.isEmpty())
        result->failures.append(QStringLiteral("%1: nothing was written.").arg(what));
}

void noteZeros(const QVector<welldata::TableRow> &rows, const Arguments &arguments, Result *result)
{
    constexpr int numbers = 2; // of zones and of points
    const QVector<int> without = welldata::rowsWithoutNumber(rows, numbers);
    if (!without.isEmpty())
        result->notices.append(QStringLiteral("%1: no number in %2; it is read as 0.")
                                   .arg(placeOfRows(arguments), welldata::rowList(without)));
}

/// What people read in front of the records of a dry run.
QString wouldBe(const QString &what)
{
    return QStringLiteral("Nothing is written. %1 would be:").arg(what);
}

// --- markers

void addMarkers(const QVector<WellMarker> &markers, Result *result)
{
    for (const WellMarker &marker : markers) {
        Record record;
        record[QLatin1String("name")] = marker.name;
        record[QLatin1String("depth")] = jsonNumber(marker.measuredDepth);
        record[QLatin1String("subseaDepth")] = jsonNumber(static_cast<float>(marker.subseaDepth));
        record[QLatin1String("color")] = marker.color.name();
        result->records.append(record);
    }
}

Result importMarkers(Session &session, const host::WellEntry &well, const Arguments &arguments)
{
    const auto file = readImport(arguments, markerImport);
    if (!file.ok())
        return Result::failed(file.error);
    ProjectData &data = session.project();
    const auto head =
        data.catalogue.readWellRecord(data.catalogue.indexOfKey(well.key), WellsCatalogue::OnFailure::BeSilent);
    const auto stored = session.store().markers(well.key);
    if (!head)
        return {{}, {}, Damage(session).ofWell(well), {}};
    if (!stored.ok() && !Damage(session).ofMarkers(well).isEmpty())
        return {{}, {}, Damage(session).ofMarkers(well), {}};
    if (!stored.value.isEmpty() && !session.isForced())
        return Result::failed(refusalToReplace(QStringLiteral("Markers of ") + well.name, stored.value.size()));
    const QVector<welldata::TableRow> rows = welldata::markerRows(file.value, welldata::MarkerElevations(*head));
    Result result;
    const QString what = QStringLiteral("Markers of ") + well.name;
    QStringList problems;
    for (const QString &problem : welldata::markerProblems(rows, head->totalDepth))
        problems.append(placeOfRows(arguments) + QStringLiteral(": ") + problem);
    if (session.isForced())
        result.notices += problems; // what is agreed to is told all the same
    if (session.isDryRun()) {
        if (!session.isForced())
            result.failures += problems;
        if (!result.failures.isEmpty())
            return result;
        result.text = wouldBe(what);
        QVector<WellMarker> markers;
        const double elevations = head->kbElevation + head->secondElevation;
        for (const welldata::TableRow &row : rows) {
            const float depth = row.numbers[welldata::MdNumber].toFloat();
            markers.append({row.name.trimmed(), depth, static_cast<double>(depth) - elevations, row.color});
        }
        std::stable_sort(markers.begin(), markers.end(), [](const WellMarker &upper, const WellMarker &lower) {
            return upper.measuredDepth < lower.measuredDepth;
        });
        addMarkers(markers, &result);
        return result;
    }
    const HeldSignals held;
    const StoreResult outcome = storeMarkers(data, {well.name, well.key}, rows, QString());
    addOutcome(session, arguments, what, outcome, &result);
    return result;
}

void listMarkers(Session &session, const host::WellEntry &well, const Arguments &arguments, Result *result)
{
    WellsCatalogue &catalogue = session.project().catalogue;
    const int index = catalogue.indexOfKey(well.key);
    const Damage damage(session);
    // What an import was forced to take is no failure of it.
    (arguments.has(QLatin1String(importOption)) ? result->notices : result->failures) += damage.ofMarkers(well);
    for (const QString &problem : damage.ofWell(well))
        if (result->failures.filter(problem).isEmpty())
            result->failures.append(problem);
    if (!session.store().markers(well.key).ok() || !session.store().header(well.key).ok())
        return;
    catalogue.refreshMarkerNames(index);
    if (const auto markers = catalogue.readWellMarkers(index, WellsCatalogue::OnFailure::Tell))
        addMarkers(*markers, result);
}

// --- perforation zones

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

// --- calibration points

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

// --- the commands

using Import = Result (*)(Session &session, const host::WellEntry &well, const Arguments &arguments);
using List = void (*)(Session &session, const host::WellEntry &well, const Arguments &arguments, Result *result);

/// Lists what a well has, after an import where one is wanted.
template<Import import, List list>
Result run(Session &session, const Arguments &arguments)
{
    const host::Outcome<host::WellEntry> well = session.well(arguments.operand(0));
    if (!well.ok())
        return Result::failed(well.error);
    Result result;
    if (arguments.has(QLatin1String(importOption)))
        result = import(session, well.value, arguments);
    if (result.failures.isEmpty() && !session.isDryRun())
        list(session, well.value, arguments, &result);
    return result;
}

/// Options of the import belong to it.
QString importProblem(const Arguments &arguments, const QVector<ImportColumn> &columns)
{
    if (arguments.has(QLatin1String(importOption)))
        return {};
    QStringList alone{QLatin1String(skipOption), QStringLiteral("--force"), QStringLiteral("--dry-run")};
    for (const ImportColumn &column : columns)
        alone.append(QLatin1String(column.option));
    for (const QString &option : qAsConst(alone))
        if (arguments.has(option))
            return QStringLiteral("The option %1 belongs to --import.").arg(option);
    return {};
}

/// What the three commands have in common.
Command wellDataCommand(const char *name, const char *summary, const char *description, const char *example,
                        const QVector<ImportColumn> &columns)
{
    Command command = makeCommand(name, summary, description, example);
    command.operands = {wellOperand()};
    command.options = {valueOption(importOption, "FILE",
                                   "Replace them by those of a text file of columns between tabs", {WordKind::File})};
    for (const ImportColumn &column : columns)
        command.options.append(valueOption(column.option, "N", column.help, countRule(1, 1000000)));
    command.options.append(valueOption(
        skipOption, "N", "Pass over so many lines at the top of the file; 0 without it", countRule(0, 1000000)));
    command.writes = true;
    command.replaces = true;
    command.problem = [columns](const Arguments &arguments) { return importProblem(arguments, columns); };
    return command;
}

} // namespace

Command markersCommand()
{
    Command command = wellDataCommand(
        "markers", "List or import the markers of a well",
        "Lists the markers by depth. With --import they are replaced by those of a file, as the import of the marker "
        "editor does; --force is needed where the well has markers, and where it cannot take all of them as they "
        "are.",
        "markers Aldra-1 --import Demo/Import/Aldra-1_tops.txt --skip 1 --force --survey Demo", markerImport);
    command.form.key = QStringLiteral("markers");
    command.form.whenEmpty = QStringLiteral("The well has no markers.");
    command.form.fields = {
        textField("name", "Marker", "its name"),
        numberField("depth", "MD (m)", "measured depth along hole from the kelly bushing, metres", 2),
        numberField("subseaDepth", "TVDSS (m)", "the depth less the elevations of kelly bushing and ground, metres",
                    2),
        textField("color", "Colour", "its colour as #rrggbb"),
        isWrittenField(""),
    };
    command.run = run<importMarkers, listMarkers>;
    return command;
}

Command zonesCommand()
{
    Command command = wellDataCommand(
        "zones", "List or import the perforation zones of a well",
        "Lists the zones in the order of their file. With --import they are replaced by those of a file, as the "
        "import of the zone editor does; --force is needed where the well has zones.",
        "zones Aldra-1 --import Demo/Import/Aldra-1_perforations.txt --skip 1 --force --survey Demo", zoneImport);
    command.form.key = QStringLiteral("zones");
    command.form.whenEmpty = QStringLiteral("The well has no perforation zones.");
    command.form.fields = {
        textField("name", "Zone", "its name"),
        numberField("startDepth", "From (m)", "measured depth of its upper end, metres", 2),
        numberField("endDepth", "To (m)", "measured depth of its lower end, metres", 2),
        textField("type", "Type", "what it produces"),
        isWrittenField(""),
    };
    command.run = run<importZones, listZones>;
    return command;
}

Command pointsCommand()
{
    Command command = wellDataCommand(
        "points", "List or import the calibration points of a well and a curve group",
        "Lists the points in the order of their file. With --import they are replaced by those of a file, as the "
        "import of the point editor does; --force is needed where there are points.",
        "points Aldra-1 Porosity --import Demo/Import/Aldra-1_core_porosity.txt --skip 1 --force --survey Demo",
        pointImport);
    command.operands.append(operand("GROUP", "the curve group, as \"Porosity\"", choiceOf(curveGroupNames())));
    command.form.key = QStringLiteral("points");
    command.form.whenEmpty = QStringLiteral("There are no calibration points.");
    command.form.fields = {
        numberField("depth", "MD (m)", "measured depth, metres"),
        numberField("value", "Value", "the measured value"),
        isWrittenField(""),
    };
    command.run = run<importPoints, listPoints>;
    return command;
}

} // namespace batch
