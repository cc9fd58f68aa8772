#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationstore.h"
#include "datastore/calibrationfile.h"
#include "datastore/curvegroupassignment.h"
#include "datastore/defaultlogs.h"
#include "datastore/perforationfile.h"
#include "las/curvetextwriter.h"
#include "mainwin/reportwriter.h"
#include "operations.h"
#include "support/files.h"
#include "templates/templatestore.h"
#include "welldata/defaultdata.h"

#include <QDir>
#include <QLineEdit>

namespace campaign {

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

Saved assignGroup(Place &place, int state)
{
    assignCurveGroup(place.project(), text("GR"), state == 1 ? text("Gamma") : text("Porosity"));
    return savedAs({});
}

Saved defaultLogsPass(Place &place, int state)
{
    if (state == 0) {
        QDir(place.project() + text("/DefaultLogs")).removeRecursively();
        QDir().mkdir(place.project() + text("/DefaultLogs"));
        QFile::remove(place.project() + text("/CurveGroups/CurveGroupTable.txt"));
        return savedAs({});
    }
    runDefaultLogsPass(place.data);
    return savedAs({});
}

Saved defaultLogs(Place &place, int state)
{
    welldata::DefaultData stored;
    stored.all = {{text("Gamma"), text("Porosity")}, {text("GR"), text("RT")}};
    const int chosen = state == 1 ? 0 : 1;
    stored.defaults = {{stored.all.groups.at(chosen)}, {stored.all.logs.at(chosen)}};
    const bool isDone = welldata::storeDefaultData(place.data, text("A"), stored);
    return {isDone, {}};
}

Saved calibration(Place &place, int state)
{
    CalibrationRecord record{text("A"), text("Gamma"), {}, {}};
    for (int i = 0; i < 50; ++i) {
        record.depths.append(static_cast<float>(i));
        record.values.append(static_cast<float>(i + state));
    }
    return savedWithBoxes(place, writeCalibration(place.project(), record, place.asker));
}

Saved perforation(Place &place, int state)
{
    const float top = static_cast<float>(100 + state);
    const PerforationRecord record{text("A"), 1, {text("Zone")}, {top}, {top + 10}, {text("Perforation")}};
    return savedWithBoxes(place, writePerforation(place.project(), record, place.asker));
}

QVector<QByteArray> tracksOf(int state)
{
    TemplateCurveRow row;
    row.group = text("Gamma");
    row.curve = text("Default");
    row.minimum = text("0");
    row.maximum = QString::number(100 + state);
    return QVector<QByteArray>(2 + state, trackBytes(text("Linear"), {row, row}));
}

Saved savedTemplate(const base::ReplaceResult &result)
{
    return savedAs(result.error);
}

Saved replaceTemplate(Place &place, int state)
{
    return savedTemplate(saveTemplate(place.data.project, TemplateId::global(text("Mine")), tracksOf(state)));
}

// Of a well that has none yet: the folder of its templates is made as well.
Saved addOrRemoveTemplate(Place &place, int state)
{
    const TemplateId which = TemplateId::ofWell(text("A"), text("Own"));
    if (state == 1)
        return savedTemplate(saveTemplate(place.data.project, which, tracksOf(1)));
    return savedAs(removeTemplate(place.data.project, which) ? QString() : text("the template stays"));
}

CorrelationProperties correlationOf(const char *name, int state)
{
    CorrelationProperties properties;
    properties.name = text(name);
    properties.scale = 1000 + state;
    for (int i = 0; i < 20 + state; ++i)
        properties.wells.append({text("A"), text("Default")});
    return properties;
}

Saved writeCorrelation(Place &place, int state)
{
    return savedAs(correlation::write(place.data.project, correlationOf("Section", state)).error);
}

Saved addOrRemoveCorrelation(Place &place, int state)
{
    if (state == 1)
        return savedAs(correlation::write(place.data.project, correlationOf("Other", 1)).error);
    const bool isRemoved = correlation::remove(place.data.project, text("Other"));
    return savedAs(isRemoved ? QString() : text("the correlation stays"));
}

// As its dialog does it: the new one is there before the old one goes.
Saved renameCorrelation(Place &place, int state)
{
    const QString from = text(state == 1 ? "Renamed from" : "Renamed to");
    const QString to = text(state == 1 ? "Renamed to" : "Renamed from");
    if (correlation::exists(place.data.project, to)) // the old one stayed: it is deleted by hand
        return savedAs(correlation::remove(place.data.project, from) ? QString() : from);
    CorrelationPropertiesDialog dialog(place.data, from);
    dialog.findChild<QLineEdit *>(text("nameEdit"))->setText(to);
    if (!dialog.isStored())
        dialog.addWellClicked();
    const bool isDone = dialog.save();
    return savedWithBoxes(place, isDone && place.asker.texts.isEmpty());
}

/// The wells that a report tells of, others in each state.
class ReportedWells
{
public:
    ReportedWells(const Place &place, int state)
        : data(host, asker)
    {
        host::WellHeader well;
        well.totalDepth = 1000;
        for (const char *name : {"A", "B"}) {
            well.name = text(name);
            const QString key = host.addWell(well);
            host.find(key)->logs.append(logOfState("GR", state));
            host.find(key)->markers.append({text("Top"), static_cast<float>(100 + state), Qt::red});
        }
        data.project = place.data.project;
        data.catalogue.build();
    }

    MemoryHost host;
    YesAsker asker;
    ProjectData data;
};

Saved logsReport(Place &place, int state)
{
    ReportedWells wells(place, state);
    const bool isDone = writeLogsReport(wells.data);
    return {isDone, wells.asker.texts};
}

Saved markersReport(Place &place, int state)
{
    ReportedWells wells(place, state);
    const bool isDone = writeMarkersReport(wells.data);
    return {isDone, wells.asker.texts};
}

Saved curveText(Place &place, int state)
{
    LogCurveData curve;
    curve.logName = text("GR");
    for (int i = 0; i < 100; ++i) {
        curve.depths.append(i);
        curve.values.append(i + state);
    }
    return savedAs(las::writeCurveText(place.project(), text("A"), curve).error);
}

// The first one of a well: its folder is made too.
Saved firstCurveText(Place &place, int state)
{
    if (state == 1)
        return curveText(place, 1);
    QDir(place.project() + text("/Wells")).removeRecursively();
    return savedAs({});
}

Saved newProject(Place &place, int state)
{
    const QString survey = place.file("other survey");
    if (state == 0) {
        QDir(survey).removeRecursively();
        QDir().mkpath(survey);
        return savedAs({});
    }
    Project project;
    openProjectFolder(survey, &project);
    return savedAs({});
}

} // namespace

std::vector<Operation> projectOperations()
{
    using Unit = Operation::Unit;
    return {
        {"group of a log", nullptr, Unit::File, false, assignGroup},
        {"default-logs pass", nullptr, Unit::File, true, defaultLogsPass},
        {"default logs", "", Unit::File, false, defaultLogs},
        {"calibration points", "Unable to create file", Unit::All, false, calibration},
        {"perforation zones", "Unable to create file", Unit::All, false, perforation},
        {"template", ":", Unit::All, false, replaceTemplate},
        {"template added or deleted", "", Unit::All, false, addOrRemoveTemplate},
        {"correlation", "Section/properties.txt", Unit::All, false, writeCorrelation},
        {"correlation added or deleted", "", Unit::All, false, addOrRemoveCorrelation},
        {"correlation renamed", "\"Renamed ", Unit::File, false, renameCorrelation, 20000},
        {"logs report", "Unable to create logs information file", Unit::File, false, logsReport},
        {"markers report", "Unable to create logs information file", Unit::All, false, markersReport},
        {"log as text", ":", Unit::All, false, curveText},
        {"first log as text of a well", "", Unit::All, true, firstCurveText},
        {"new project", nullptr, Unit::All, true, newProject},
    };
}

} // namespace campaign
