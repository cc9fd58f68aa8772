#include "support/projectfixture.h"

#include "datastore/curvegroups.h"
#include "datastore/projectseeds.h"
#include "support/files.h"

ProjectFixture::ProjectFixture()
{
    host.survey = survey.path();
    host.dataFolder = QStringLiteral(LORVA_SOURCE_DIR "/icons");
    launch = std::make_unique<ProjectData>(host, asker);
}

QString ProjectFixture::addWell(const QString &name, const QStringList &logs, const QStringList &markers)
{
    host::WellHeader header;
    header.name = name;
    header.x = 500000.5;
    header.y = 6000000.25;
    header.kbElevation = 20;
    header.groundElevation = 5;
    header.totalDepth = 1000;
    const QString key = host.addWell(header);
    MemoryHost::Well *well = host.find(key);
    for (const QString &log : logs)
        well->logs.append({log, QStringLiteral("gapi"), {100, 200, 300}, {1, 2, 3}});
    float depth = 150;
    for (const QString &marker : markers) {
        well->markers.append({marker, depth, QColor(10, 20, 30)});
        depth += 100;
    }
    return key;
}

void ProjectFixture::open()
{
    launch->project.groupNames = curveGroupNames();
    launch->project.zoneTypes = zoneTypeNames();
    launch->catalogue.build();
    openProject(host, &launch->project);
    seedProject(launch->project.projectFolder);
    openProject(host, &launch->project);
}

void ProjectFixture::addTemplate(const QString &name, const QString &wellName)
{
    const QString owner = wellName.isEmpty() ? QStringLiteral("Global") : wellName;
    files::write(path(QStringLiteral("/Templates/%1/%2/Track_1.txt").arg(owner, name)), "Linear\n");
}

void ProjectFixture::addCorrelation(const QString &name)
{
    files::write(path(QStringLiteral("/Correlations/%1/properties.txt").arg(name)), "Name : x\n");
}
