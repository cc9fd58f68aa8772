#include "programs/batch/arguments.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "programs/batch/welldatacommand.h"
#include "welldata/markerrows.h"
#include "welldata/welldatastore.h"

#include <algorithm>

namespace batch {

namespace {

const QVector<ImportColumn> markerImport{{"--name-column", "The column of the names, from 1; 1 without it", 1},
                                         {"--depth-column", "The column of the measured depths; 2 without it", 2}};

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

/// What the well would have of the rows, by depth.
QVector<WellMarker> markersOf(const QVector<welldata::TableRow> &rows, const WellRecord &well)
{
    QVector<WellMarker> markers;
    const double elevations = well.kbElevation + well.secondElevation;
    for (const welldata::TableRow &row : welldata::storableMarkerRows(rows, well.totalDepth)) {
        const float depth = row.numbers[welldata::MdNumber].toFloat();
        markers.append({row.name.trimmed(), depth, static_cast<double>(depth) - elevations, row.color});
    }
    std::stable_sort(markers.begin(), markers.end(), [](const WellMarker &upper, const WellMarker &lower) {
        return upper.measuredDepth < lower.measuredDepth;
    });
    return markers;
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
        return Result::failed(Damage(session).ofWell(well));
    const QString what = QStringLiteral("Markers of ") + well.name;
    if (!stored.ok())
        if (const QStringList damage = Damage(session).ofMarkers(well); !damage.isEmpty())
            return Result::failed(damage);
    if (!stored.value.isEmpty() && !session.isForced())
        return Result::failed(refusalToReplace(what, stored.value.size()));
    const QVector<welldata::TableRow> rows = welldata::markerRows(file.value, welldata::MarkerElevations(*head));
    Result result;
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
        addMarkers(markersOf(rows, *head), &result);
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
    (isImporting(arguments) ? result->notices : result->failures) += damage.ofMarkers(well);
    for (const QString &problem : damage.ofWell(well))
        if (result->failures.filter(problem).isEmpty())
            result->failures.append(problem);
    if (!session.store().markers(well.key).ok() || !session.store().header(well.key).ok())
        return;
    catalogue.refreshMarkerNames(index);
    if (const auto markers = catalogue.readWellMarkers(index, WellsCatalogue::OnFailure::Tell))
        addMarkers(*markers, result);
}

} // namespace

Command markersCommand()
{
    Command command = wellDataCommand(
        "markers", "List or import the markers of a well",
        "Lists the markers by depth. With --import they are replaced by those of a file, as the import of the marker "
        "editor does; --force is needed where the well has markers, and where it cannot take all of them as they "
        "are.",
        "markers Aldra-1 --import Demo/Import/Aldra-1_tops.txt --skip 1 --force --survey Demo",
        {markerImport, importMarkers, listMarkers});
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
    return command;
}

} // namespace batch
