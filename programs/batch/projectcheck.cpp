#include "programs/batch/projectcheck.h"

#include "base/numbers.h"
#include "base/safename.h"
#include "correlation/correlationstore.h"
#include "datastore/calibrationfile.h"
#include "datastore/curvegroups.h"
#include "datastore/defaultlogs.h"
#include "datastore/perforationfile.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"
#include "templates/templatestore.h"
#include "templates/templatetrack.h"
#include "welldata/defaultdata.h"

#include <algorithm>

namespace batch {

namespace {

using State = Finding::State;

const QByteArrayList trackTypes{"Linear", "Logrithmic", "Depth"};

QString stateText(State state)
{
    switch (state) {
    case State::Damaged:
        return QStringLiteral("damaged");
    case State::Missing:
        return QStringLiteral("missing");
    case State::Orphaned:
        return QStringLiteral("orphaned");
    case State::Unfinished:
        return QStringLiteral("unfinished");
    }
    return {};
}

/// The bytes of a file that is there; a finding where it cannot be read.
QByteArray read(const QString &project, const QString &path, QVector<Finding> *findings)
{
    const ProjectFile file = readProjectFile(project, path);
    if (file.state == ProjectFile::State::Unreadable)
        findings->append({State::Damaged, path, QStringLiteral("It cannot be read.")});
    return file.bytes;
}

/// The lines of a file that hold something.
int filledLines(const QByteArray &bytes)
{
    int count = 0;
    textfields::forEachLine(textfields::utf8Text(bytes),
                            [&count](textfields::Field line) { count += textfields::trimmed(line).empty() ? 0 : 1; });
    return count;
}

QByteArray firstLine(const QByteArray &bytes)
{
    return bytes.left(bytes.indexOf('\n')).trimmed();
}

QString fileNameOf(const QString &path)
{
    return path.section(QLatin1Char('/'), -1);
}

bool isOfPoints(const QString &fileName)
{
    return fileName.endsWith(QLatin1String("_calibrationPoints.txt"));
}

QStringList entries(const Project &project, const char *folder, QDir::Filters filters)
{
    return projectEntries(project.projectFolder, project.projectFolder + QLatin1String(folder), filters, QDir::Name);
}

} // namespace

bool isZoneCount(const QByteArray &bytes)
{
    return bytes.isEmpty() || base::parseInteger(firstLine(bytes));
}

Record recordOf(const Finding &finding)
{
    Record record;
    record[QLatin1String("state")] = stateText(finding.state);
    record[QLatin1String("file")] = finding.file;
    record[QLatin1String("text")] = finding.text;
    return record;
}

Finding unfinishedWrite(const QString &path)
{
    return {State::Unfinished, path, QStringLiteral("A write left it that died, or it is going on.")};
}

ProjectCheck::ProjectCheck(const Project &project, const QVector<host::WellEntry> &wells)
    : m_project(project)
{
    for (const host::WellEntry &well : wells)
        m_wells.append(well.name);
    m_wells.removeDuplicates();
    const QStringList names = entries(m_project, "", QDir::Files);
    m_files = QSet<QString>(names.begin(), names.end());
    m_hasPoints = std::any_of(names.begin(), names.end(), isOfPoints);
}

QVector<Finding> ProjectCheck::checkWell(const QString &wellName, const QStringList *logs) const
{
    QVector<Finding> findings;
    checkDefaults(wellName, logs, &findings);
    checkZones(wellName, &findings);
    for (const QString &group : m_hasPoints ? curveGroupNames() : QStringList())
        checkPoints(wellName, group, &findings);
    const QString folder = wellTemplatesFolder(m_project, wellName);
    for (const QString &name : wellTemplateNames(m_project, wellName))
        checkTemplate(folder + QLatin1Char('/') + name, &findings);
    return findings;
}

void ProjectCheck::checkDefaults(const QString &wellName, const QStringList *logs, QVector<Finding> *findings) const
{
    const QString path = defaultLogsPath(m_project.projectFolder, wellName);
    const QByteArray bytes = read(m_project.projectFolder, path, findings);
    if (bytes.isEmpty())
        return;
    const welldata::DefaultDataFile file = welldata::parseDefaultData(bytes);
    if (!isOfWell(file, wellName))
        findings->append(
            {State::Damaged, path,
             QStringLiteral("Its first line names the well \"%1\" instead of \"%2\".").arg(file.wellName, wellName)});
    if (filledLines(bytes) - 1 > file.logs.logs.size())
        findings->append({State::Damaged, path, QStringLiteral("It has lines that are no group and log.")});
    QSet<QString> known;
    for (int i = 0; logs && i < logs->size(); ++i)
        known.insert(textfields::fieldName(logs->at(i)));
    for (int i = 0; i < file.logs.logs.size(); ++i) {
        if (logs && !known.contains(file.logs.logs.at(i)))
            findings->append({State::Missing, path,
                              QStringLiteral("The well has no log \"%1\", the default of %2.")
                                  .arg(file.logs.logs.at(i), file.logs.groups.at(i))});
    }
}

void ProjectCheck::checkZones(const QString &wellName, QVector<Finding> *findings) const
{
    const QString path = perforationPath(m_project.projectFolder, wellName);
    if (!m_files.contains(fileNameOf(path)))
        return;
    const QByteArray bytes = read(m_project.projectFolder, path, findings);
    if (!isZoneCount(bytes))
        findings->append({State::Damaged, path, QStringLiteral("Its first line is no number of zones.")});
    else if (filledLines(bytes) - 1 > parsePerforation(bytes, wellName).names.size())
        findings->append({State::Damaged, path, QStringLiteral("It has lines that are no zones.")});
}

void ProjectCheck::checkPoints(const QString &wellName, const QString &group, QVector<Finding> *findings) const
{
    const QString path = calibrationPath(m_project.projectFolder, wellName, group);
    if (!m_files.contains(fileNameOf(path)))
        return;
    const QByteArray bytes = read(m_project.projectFolder, path, findings);
    const CalibrationParse parse = parseCalibration(bytes, wellName, group);
    if (parse.isMalformed)
        findings->append(
            {State::Damaged, path, QStringLiteral("Its two heading lines are not those of the format.")});
    else if (filledLines(bytes) - 2 > parse.record.depths.size())
        findings->append({State::Damaged, path,
                          QStringLiteral("It is of another well or group, or has lines that are no points.")});
}

void ProjectCheck::checkTemplate(const QString &folder, QVector<Finding> *findings) const
{
    const QStringList files = projectEntries(m_project.projectFolder, folder, QDir::Files, QDir::Name);
    if (files.isEmpty())
        findings->append({State::Damaged, folder, QStringLiteral("The template has no tracks.")});
    for (const QString &file : files) {
        const QString path = folder + QLatin1Char('/') + file;
        const int before = findings->size();
        const QByteArray bytes = read(m_project.projectFolder, path, findings);
        if (findings->size() > before)
            continue;
        if (!trackTypes.contains(firstLine(bytes)))
            findings->append({State::Damaged, path, QStringLiteral("Its first line is no type of a track.")});
        else if (filledLines(bytes) - 1 > parseTrack(bytes, file).curves.size())
            findings->append({State::Damaged, path, QStringLiteral("It has lines that are no curves.")});
    }
}

void ProjectCheck::checkGroups(QVector<Finding> *findings) const
{
    const QString folder = QStringLiteral("/CurveGroups");
    for (const QString &name : entries(m_project, "/CurveGroups", QDir::Files)) {
        const QString path = m_project.projectFolder + folder + QLatin1Char('/') + name;
        const QByteArray bytes = read(m_project.projectFolder, path, findings);
        if (name != QLatin1String("CurveGroupTable.txt"))
            continue;
        textfields::forEachLine(textfields::utf8Text(bytes), [&](textfields::Field line) {
            if (!textfields::trimmed(line).empty() && line.find('|') == textfields::Field::npos)
                findings->append({State::Damaged, path,
                                  QStringLiteral("A line names no group: \"%1\".").arg(textfields::toString(line))});
        });
    }
}

void ProjectCheck::checkCorrelation(const QString &name, QVector<Finding> *findings) const
{
    const correlation::KnownNames known{[this](const QString &well) { return m_wells.contains(well); },
                                        [this](const QString &well, const QString &templateName) {
                                            return hasTemplate(m_project, templateName, well);
                                        }};
    const QString path =
        correlation::correlationsFolder(m_project) + QLatin1Char('/') + name + QStringLiteral("/properties.txt");
    const int before = findings->size();
    const ProjectFile file = readProjectFile(m_project.projectFolder, path);
    if (file.state == ProjectFile::State::Missing)
        findings->append({State::Missing, path, QStringLiteral("The correlation has no file.")});
    else
        read(m_project.projectFolder, path, findings);
    if (findings->size() > before)
        return;
    bool isWhole = false;
    const CorrelationProperties properties = correlation::parseProperties(file.bytes, known, &isWhole);
    if (!isWhole)
        findings->append({State::Damaged, path, QStringLiteral("Parts of the correlation are missing.")});
    for (const CorrelationWell &well : properties.wells) {
        if (!known.isWell(well.wellName))
            findings->append(
                {State::Missing, path, QStringLiteral("The survey has no well \"%1\".").arg(well.wellName)});
        else if (!known.isTemplate(well.wellName, well.templateName))
            findings->append(
                {State::Missing, path,
                 QStringLiteral("The well \"%1\" has no template \"%2\".").arg(well.wellName, well.templateName)});
    }
}

void ProjectCheck::checkOrphans(QVector<Finding> *findings) const
{
    const QString &folder = m_project.projectFolder;
    QSet<QString> expected;
    QSet<QString> defaults;
    QSet<QString> owners{QStringLiteral("Global")};
    for (const QString &well : m_wells) {
        expected.insert(fileNameOf(perforationPath(folder, well)));
        for (const QString &group : m_hasPoints ? curveGroupNames() : QStringList())
            expected.insert(fileNameOf(calibrationPath(folder, well, group)));
        defaults.insert(fileNameOf(defaultLogsPath(folder, well)));
        owners.insert(fileNameOf(wellTemplatesFolder(m_project, well)));
    }
    const auto tell = [findings](const QString &path) {
        findings->append({State::Orphaned, path, QStringLiteral("The survey has no such well.")});
    };
    QStringList names = m_files.values();
    names.sort();
    for (const QString &name : names)
        if ((name.endsWith(QLatin1String("_perforationZone.txt")) || isOfPoints(name)) && !expected.contains(name))
            tell(folder + QLatin1Char('/') + name);
    for (const QString &name : entries(m_project, "/DefaultLogs", QDir::Files))
        if (!defaults.contains(name))
            tell(folder + QStringLiteral("/DefaultLogs/") + name);
    for (const QString &name : entries(m_project, "/Templates", QDir::Dirs | QDir::NoDotAndDotDot))
        if (!owners.contains(name))
            tell(folder + QStringLiteral("/Templates/") + name);
    for (const char *place : {"", "/Correlations", "/CurveGroups", "/Templates/Global", "/DefaultLogs"})
        for (const QString &name : entries(m_project, place, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
            if (base::isReservedName(name) && name != QLatin1String(".lorva-deleted"))
                findings->append(unfinishedWrite(folder + QLatin1String(place) + QLatin1Char('/') + name));
}

QVector<Finding> ProjectCheck::checkCommon() const
{
    QVector<Finding> findings;
    for (const QString &link : linksOutOfSurvey(m_project))
        findings.append({State::Damaged, link, QStringLiteral("The link leads out of the survey, or nowhere.")});
    checkGroups(&findings);
    for (const QString &name : globalTemplateNames(m_project))
        checkTemplate(globalTemplateFolder(m_project, name), &findings);
    for (const QString &name : subFolderNames(m_project, correlation::correlationsFolder(m_project)))
        checkCorrelation(name, &findings);
    checkOrphans(&findings);
    return findings;
}

} // namespace batch
