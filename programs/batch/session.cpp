#include "programs/batch/session.h"

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/projectseeds.h"
#include "programs/batch/arguments.h"
#include "programs/batch/surveynames.h"

#include <QThread>

#include <algorithm>
#include <utility>

namespace batch {

Session::Session(const QString &surveyDirectory, const Arguments &arguments)
    : m_host(surveyDirectory)
    , m_asker(arguments.has(QStringLiteral("--force")))
    , m_isForced(arguments.has(QStringLiteral("--force")))
    , m_isDryRun(arguments.has(QStringLiteral("--dry-run")))
    , m_jobs(arguments.count(QStringLiteral("--jobs"), qMax(1, QThread::idealThreadCount())))
{
}

QString Session::projectFolder()
{
    const QString folder = surveyDirectory() + QStringLiteral("/WLC");
    if (!std::exchange(m_isGroupTableRead, true))
        CurveGroupTable::instance().read(folder);
    return folder;
}

Project Session::projectPaths()
{
    Project project;
    project.groupNames = curveGroupNames();
    project.zoneTypes = zoneTypeNames();
    project.surveyName = m_host.surveyName();
    project.setupDataFolder = m_host.setupDataFolder();
    project.iconFolder = project.setupDataFolder + QStringLiteral("/icons.Default/");
    project.projectFolder = projectFolder();
    project.globalTemplateNames = globalTemplateNames(project);
    return project;
}

ProjectData &Session::project()
{
    if (m_project)
        return *m_project;
    m_project = std::make_unique<ProjectData>(m_host, m_asker);
    m_project->project = projectPaths();
    readWells();
    return *m_project;
}

void Session::readWells()
{
    const WellsCatalogue &catalogue = m_project->catalogue;
    const QStringList told = m_asker.takeWarnings();
    m_project->catalogue.build();
    m_asker.takeWarnings(); // of wells that cannot be read: the store knows the file and the reason
    for (const QString &warning : told)
        m_asker.warn({}, warning);
    m_unreadableWells.clear();
    for (int well = 0; well < catalogue.wellCount(); ++well)
        if (!catalogue.hasLogNames(well))
            if (const auto header = store().header(catalogue.wellKey(well)); !header.ok())
                m_unreadableWells.append(catalogue.wellNames().at(well) + QStringLiteral(": ") + header.error);
}

ProjectData &Session::projectToWrite()
{
    ProjectData &data = project();
    if (!m_isDryRun && !std::exchange(m_isProjectOpen, true)) {
        openProject(m_host, &data.project);
        if (!seedProject(data.project.projectFolder))
            m_host.showError(QStringLiteral("Not all curve group files and templates could be made in the folder %1.")
                                 .arg(data.project.projectFolder));
        data.project.globalTemplateNames = globalTemplateNames(data.project);
    }
    return data;
}

host::Outcome<host::WellEntry> Session::well(const QString &nameOrKey)
{
    const host::Outcome<QVector<host::WellEntry>> wells = store().list();
    if (!wells.ok())
        return {{}, wells.error};
    host::WellEntry found;
    QStringList keys;
    QStringList names;
    for (const host::WellEntry &entry : wells.value) {
        names.append(entry.name);
        if (entry.key == nameOrKey)
            return {entry, {}};
        if (entry.name != nameOrKey)
            continue;
        found = entry;
        keys.append(entry.key);
    }
    if (keys.isEmpty())
        return {{}, QStringLiteral("The survey has no well \"%1\"%2.").arg(nameOrKey, insteadOf(nameOrKey, names))};
    if (keys.size() > 1)
        return {{},
                QStringLiteral("Several wells are called \"%1\": give the key of one instead (%2).")
                    .arg(nameOrKey, keys.join(QStringLiteral(", ")))};
    return {found, {}};
}

bool Session::hasSeveral(const QString &wellName)
{
    const QVector<host::WellEntry> wells = store().list().value;
    return std::count_if(wells.begin(), wells.end(),
                         [&wellName](const host::WellEntry &well) { return well.name == wellName; })
        > 1;
}

QStringList Session::takeProblems()
{
    return surveyDirectory().isEmpty() ? QStringList()
                                       : store().takeProblems() + std::exchange(m_unreadableWells, {});
}

QStringList Session::takeFailures()
{
    return m_asker.takeRefusals() + m_asker.takeWarnings() + m_host.takeErrors();
}

} // namespace batch
