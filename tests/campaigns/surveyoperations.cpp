#include "datastore/hostwriter.h"
#include "operations.h"
#include "support/files.h"
#include "survey/surveyfolder.h"
#include "survey/wellmaker.h"
#include "tests/survey/surveyfixture.h"
#include "welldata/welldatastore.h"

#include <QDir>

namespace campaign {

namespace {

using survey_fixture::properties;

Saved writeLog(Place &place, int state)
{
    const host::LogData log = logOfState("GR", state);
    LogCurveData curve;
    curve.wellName = QStringLiteral("A");
    curve.logName = log.name;
    curve.unit = log.unit;
    for (int i = 0; i < log.values.size(); ++i) {
        curve.depths.append(static_cast<double>(log.depths.at(i)));
        curve.values.append(static_cast<double>(log.values.at(i)));
    }
    HostWriter writer(place.host.wells(), place.data.catalogue, place.asker,
                      [&place](const QString &text) { place.host.showError(text); });
    const int well = place.data.catalogue.indexOf(curve.wellName);
    return savedWithBoxes(place, writer.writeLog(well, curve, false));
}

int indexOfLog(Place &place, const char *name)
{
    const QVector<host::LogInfo> logs = place.wells().logs(Place::firstWell).value;
    for (int i = 0; i < logs.size(); ++i)
        if (logs.at(i).name == QLatin1String(name))
            return i;
    return -1;
}

Saved addOrRemoveLog(Place &place, int state)
{
    if (state == 1)
        return savedAs(place.wells().writeLog(Place::firstWell, logOfState("NEW", 1)).error);
    const int index = indexOfLog(place, "NEW");
    return index < 0 ? savedAs({}) : savedAs(place.wells().removeLog(Place::firstWell, index).error);
}

Saved renameLog(Place &place, int state)
{
    const char *oldName = state == 1 ? "RT" : "RT renamed";
    const char *newName = state == 1 ? "RT renamed" : "RT";
    if (indexOfLog(place, newName) >= 0)
        return savedAs({});
    return savedAs(
        place.wells().renameLog(Place::firstWell, QString::fromLatin1(oldName), QString::fromLatin1(newName)).error);
}

Saved writeMarkers(Place &place, int state)
{
    QVector<welldata::TableRow> rows;
    for (int i = 0; i < 30; ++i) {
        welldata::TableRow row;
        row.name = QStringLiteral("Top %1 of %2").arg(i).arg(state);
        row.numbers[0] = welldata::NumberCell::of(10 * i + state);
        row.color = QColor(10 * state, 20, 30);
        rows.append(row);
    }
    const welldata::WellChoice well{QStringLiteral("A"), QString::fromLatin1(Place::firstWell)};
    return savedWithBoxes(place, storeMarkers(place.data, well, rows, QStringLiteral("Markers")));
}

survey::WellProperties propertiesOf(int state)
{
    survey::WellProperties well = properties("A");
    well.x = 500000 + state;
    well.totalDepth = 2500 + state;
    well.groundElevation = state;
    return well;
}

Saved changeWell(Place &place, int state)
{
    return savedAs(place.wells().changeWell(Place::firstWell, propertiesOf(state)).error);
}

Saved changeWellWithTrackFile(Place &place, int state)
{
    if (state == 1)
        return changeWell(place, state);
    files::write(place.survey() + QStringLiteral("/WellInfo/a.track"),
                 "500001 6003000 -1 0\n500001 6003000 3000 3001\n");
    return savedAs({});
}

Saved renameWell(Place &place, int state)
{
    const QString name = state == 1 ? QStringLiteral("A renamed") : QStringLiteral("A");
    return savedAs(place.wells().renameWell(Place::firstWell, name).error);
}

QString keyOf(Place &place, const char *name)
{
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.name == QLatin1String(name))
            return well.key;
    return {};
}

Saved removeWell(Place &place, const char *name)
{
    const QString key = keyOf(place, name);
    return key.isEmpty() ? savedAs({}) : savedAs(place.wells().removeWell(key).error);
}

Saved addOrRemoveWell(Place &place, int state)
{
    if (state == 0)
        return removeWell(place, "Added");
    if (!keyOf(place, "Added").isEmpty())
        return savedAs({});
    return savedAs(place.wells().addWell(properties("Added")).error);
}

Saved addOrRemoveWellFromLas(Place &place, int state)
{
    if (state == 0)
        return removeWell(place, "From LAS");
    if (!keyOf(place, "From LAS").isEmpty())
        return savedAs({});
    const QString path = place.file("source.las");
    if (!QFileInfo::exists(path))
        files::write(path,
                     "~V\nVERS. 2.0:\nWRAP. NO:\n~W\nNULL. -999.25:\n~C\nDEPT.M :\nGR.GAPI :\nRT.OHMM :\n~A\n"
                     "100 1 2\n101 3 4\n102 5 6\n");
    const survey::MadeWell made = survey::makeWell(place.wells(), {properties("From LAS"), {path}, true, {}, {}});
    if (made.key.isEmpty())
        return savedAs(made.error);
    return savedAs(place.wells().flush().error);
}

Saved makeSurvey(Place &place, int state)
{
    const QString path = place.file("surveys/New");
    if (state == 0) {
        QDir(place.file("surveys")).removeRecursively();
        return savedAs({});
    }
    survey::NewSurvey survey;
    survey.name = QStringLiteral("New");
    return savedAs(survey::createSurvey(path, survey).error);
}

} // namespace

host::LogData logOfState(const char *name, int state)
{
    QVector<float> values;
    for (int i = 0; i < 300; ++i)
        values.append(static_cast<float>(i % 7 + state));
    return survey_fixture::log(name, values, static_cast<float>(100 + state));
}

std::vector<Operation> surveyOperations()
{
    using Unit = Operation::Unit;
    return {
        {"log", "Cannot write new log for A", Unit::All, false, writeLog},
        {"log added or deleted", "a^3.wll", Unit::All, false, addOrRemoveLog},
        {"log renamed", "a^2.wll", Unit::All, false, renameLog},
        {"markers", "Cannot write new markers to disk", Unit::All, false, writeMarkers},
        {"well header", "a.well", Unit::All, false, changeWell},
        {"well header with a track file", "/a.", Unit::Seen, true, changeWellWithTrackFile},
        {"well renamed", "WellInfo/.omf", Unit::All, false, renameWell},
        {"well added or deleted", "WellInfo", Unit::All, false, addOrRemoveWell},
        {"well of a LAS file added or deleted", "WellInfo", Unit::All, false, addOrRemoveWellFromLas},
        {"new survey", "surveys", Unit::All, true, makeSurvey},
    };
}

} // namespace campaign
