#include "demo/demosurvey.h"

#include "base/asker.h"
#include "base/atomicfile.h"
#include "datastore/calibrationfile.h"
#include "datastore/curvegroupassignment.h"
#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/hostwriter.h"
#include "datastore/perforationfile.h"
#include "datastore/project.h"
#include "datastore/projectseeds.h"
#include "demo/democorrelation.h"
#include "demo/demofield.h"
#include "demo/demotemplates.h"
#include "las/lasheader.h"
#include "las/wellinfo.h"
#include "survey/laswellproposal.h"
#include "survey/surveyfolder.h"
#include "survey/surveyplace.h"
#include "survey/surveystore.h"
#include "welldata/markerrows.h"
#include "welldata/siderows.h"

#include <QDir>
#include <QFile>

namespace demo {

namespace {

/// Nobody sits in front of the demo: what would have been a box is kept as the reason of the failure.
class RecordingAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        messages.append(box.text);
        return box.buttons.first();
    }
    QStringList messages;
};

QString fileStem(const QString &name)
{
    QString stem = name;
    return stem.replace(QLatin1Char(' '), QLatin1Char('_'));
}

/// Makes one demo survey in a folder that is already a survey. Wells and logs take the way of a user's LAS files, tops,
/// perforations and calibration points that of his text files.
class DemoSurvey
{
public:
    explicit DemoSurvey(const QString &directory)
        : m_directory(directory)
        , m_importFolder(directory + QStringLiteral("/Import"))
        , m_store(directory)
        , m_showError([this](const QString &text) { m_asker.messages.append(text); })
        , m_catalogue(m_store, m_asker, m_showError)
    {
    }

    QString make(const Field &field, const CorrelationLook &look)
    {
        if (!QDir().mkdir(m_importFolder))
            return QStringLiteral("Cannot make the folder %1.").arg(m_importFolder);
        openProjectFolder(m_directory, &m_project);
        seedProject(m_project.projectFolder);
        const bool isSection = qstrcmp(look.templateName, sectionTemplate) == 0;
        if (isSection ? !writeSectionTemplate(m_project) : !writeDemoTemplates(m_project))
            return QStringLiteral("Cannot write the templates below %1.").arg(m_project.projectFolder);
        for (const Well &well : field.wells) {
            const QString problem = writeImportFiles(well);
            if (!problem.isEmpty())
                return problem;
            const QString wellProblem = addWell(well);
            if (!wellProblem.isEmpty())
                return wellProblem;
        }
        const QString feet = writeImportFile(fileStem(field.wells.first().name) + QStringLiteral("_feet.las"),
                                             lasTextInFeet(field.wells.first()));
        if (!feet.isEmpty())
            return feet;
        m_catalogue.build();
        for (const Well &well : field.wells)
            importWell(well);
        m_project.groupNames = curveGroupNames();
        runDefaultLogsPass(m_project, m_catalogue); // as a first launch does: programs without a window draw it too
        if (!writeDemoCorrelation(m_project, field, look))
            return QStringLiteral("Cannot write a correlation below %1.").arg(m_project.projectFolder);
        return m_asker.messages.join(QLatin1Char('\n'));
    }

private:
    QString importPath(const QString &fileName) const { return m_importFolder + QLatin1Char('/') + fileName; }

    QString writeImportFile(const QString &fileName, const QByteArray &bytes)
    {
        const base::WriteResult result = base::writeFileAtomically(importPath(fileName), bytes);
        return result.ok() ? QString()
                           : QStringLiteral("Cannot write the file %1: %2.").arg(importPath(fileName), result.error);
    }

    QString writeImportFiles(const Well &well)
    {
        const QString stem = fileStem(well.name);
        QString problem = writeImportFile(stem + QStringLiteral(".las"), lasText(well));
        if (problem.isEmpty())
            problem = writeImportFile(stem + QStringLiteral("_tops.txt"), topsText(well));
        if (problem.isEmpty())
            problem = writeImportFile(stem + QStringLiteral("_perforations.txt"), perforationsText(well));
        for (const CalibrationSet &set : well.calibrations)
            if (problem.isEmpty())
                problem = writeImportFile(stem + QStringLiteral("_core_%1.txt").arg(set.group.toLower()),
                                          calibrationText(set));
        return problem;
    }

    // The well as a user gets it from "New wells from LAS files…", with the type that no LAS file tells.
    QString addWell(const Well &well)
    {
        const QString path = importPath(fileStem(well.name) + QStringLiteral(".las"));
        const las::HeaderResult header = las::readHeader(path);
        if (!header.error.isEmpty())
            return header.error;
        const survey::WellProposal proposal = survey::proposeWell(path, header.header);
        survey::WellProperties properties;
        properties.name = proposal.name;
        properties.x = proposal.x;
        properties.y = proposal.y;
        properties.kbElevation = proposal.kbM;
        properties.groundElevation = proposal.groundM;
        properties.totalDepth = qMax(proposal.totalDepthM, well.totalDepthM);
        properties.typeCode = qMax(0, survey::wellTypeNames().indexOf(well.type));
        return m_store.addWell(properties).error;
    }

    void importWell(const Well &well)
    {
        const QString stem = fileStem(well.name);
        importLogs(well.name, importPath(stem + QStringLiteral(".las")));
        importTops(well, importPath(stem + QStringLiteral("_tops.txt")));
        importPerforations(well.name, importPath(stem + QStringLiteral("_perforations.txt")));
        for (const CalibrationSet &set : well.calibrations)
            importCalibration(well.name, set.group,
                              importPath(stem + QStringLiteral("_core_%1.txt").arg(set.group.toLower())));
    }

    void importLogs(const QString &wellName, const QString &path)
    {
        WellInfo file;
        if (file.load(path) != 0) {
            m_asker.messages.append(QStringLiteral("Cannot read the file %1.").arg(path));
            return;
        }
        HostWriter writer(m_store, m_catalogue, m_asker, m_showError);
        for (int i = 1; i < file.curves.size(); ++i) { // the first curve is the depth itself
            const LogCurveData &curve = file.curves.at(i);
            const QString group = findCurveGroup(m_project.projectFolder, curve.logName);
            if (writer.writeLog(m_catalogue.indexOf(wellName), curve, false))
                assignCurveGroup(m_project.projectFolder, curve.logName, group);
        }
    }

    // The lines behind the heading, as the imports read them.
    static welldata::ColumnFile columns(const QString &path, const std::vector<int> &numbers)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? welldata::readColumns(file.readAll(), {1, numbers, 2})
                                              : welldata::ColumnFile();
    }

    void importTops(const Well &well, const QString &path)
    {
        QVector<welldata::TableRow> rows = welldata::markerRows(columns(path, {1, 2}), welldata::MarkerElevations());
        // The text file has no colours; those of the field go with its tops in order.
        for (int i = 0; i < qMin(rows.size(), well.tops.size()); ++i)
            rows[i].color = QColor(well.tops.at(i).red, well.tops.at(i).green, well.tops.at(i).blue);
        HostWriter writer(m_store, m_catalogue, m_asker, m_showError);
        writer.writeMarkers(m_catalogue.indexOf(well.name), welldata::markerRecord(well.name, rows));
    }

    void importPerforations(const QString &wellName, const QString &path)
    {
        const QVector<welldata::TableRow> rows = welldata::zoneRows(columns(path, {1, 2, 3, 4}));
        writePerforation(m_project.projectFolder, welldata::zoneRecord(wellName, rows), m_asker);
    }

    void importCalibration(const QString &wellName, const QString &group, const QString &path)
    {
        const QVector<welldata::TableRow> rows = welldata::pointRows(columns(path, {1, 2}));
        writeCalibration(m_project.projectFolder, welldata::pointRecord(wellName, group, rows), m_asker);
    }

    QString m_directory;
    QString m_importFolder;
    RecordingAsker m_asker;
    survey::SurveyStore m_store;
    WellsCatalogue::ErrorBox m_showError;
    WellsCatalogue m_catalogue;
    Project m_project;
};

survey::NewSurvey surveyOf(const Field &field)
{
    survey::NewSurvey survey;
    survey.name = field.name + QStringLiteral(" field (demo)");
    survey.maximumDepth = 3500;
    survey.comment = QStringLiteral("A fictional field. Every name and number in it is made up.");
    return survey;
}

QString makeSurvey(const QString &directory, const Field &field, const CorrelationLook &look)
{
    // Made whole in an empty survey of its own, then put in place: nobody finds a half-made demo.
    survey::SurveyPlace place(directory);
    if (!place.error().isEmpty())
        return place.error();
    const host::Status created = survey::createSurvey(place.buildFolder(), surveyOf(field));
    if (!created.ok())
        return created.error;
    CurveGroupTable::instance().clear();
    const QString problem = DemoSurvey(place.buildFolder()).make(field, look);
    CurveGroupTable::instance().clear();
    return problem.isEmpty() ? place.putInPlace().error : problem;
}

} // namespace

QString makeDemoSurvey(const QString &directory)
{
    return makeSurvey(directory, makeField(), {});
}

QString makeSectionSurvey(const QString &directory, int wells)
{
    return makeSurvey(directory, makeSection(wells), {sectionTemplate, 2000, 0.8});
}

} // namespace demo
