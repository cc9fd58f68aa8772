#include "correlation/correlationstore.h"

#include "base/folderremoval.h"
#include "base/folderswap.h"
#include "base/safename.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "templates/templatestore.h"

#include <QFileInfo>

namespace correlation {

namespace {

QString folderOf(const Project &project, const QString &name)
{
    return correlationsFolder(project) + QLatin1Char('/') + name;
}

// Names come from choosers and files as well.
bool isName(const QString &name)
{
    return base::isPathComponent(name) && !base::isReservedName(name) && name.isValidUtf16();
}

QString fileOf(const Project &project, const QString &name)
{
    return folderOf(project, name) + QStringLiteral("/properties.txt");
}

} // namespace

QString correlationsFolder(const Project &project)
{
    return project.projectFolder + QStringLiteral("/Correlations");
}

KnownNames knownNames(const ProjectData &data)
{
    return {[&data](const QString &well) { return data.catalogue.indexOf(well) >= 0; },
            [&data](const QString &well, const QString &name) { return hasTemplate(data.project, name, well); }};
}

bool exists(const Project &project, const QString &name)
{
    const QFileInfo folder(folderOf(project, name));
    return isName(name) && (folder.exists() || folder.isSymLink());
}

std::optional<CorrelationProperties> load(const Project &project, const QString &name, const KnownNames &known,
                                          QString *error)
{
    if (!isName(name))
        return std::nullopt;
    const ProjectFile file = readProjectFile(project.projectFolder, fileOf(project, name));
    if (file.state != ProjectFile::State::Read) {
        if (error && file.state == ProjectFile::State::Unreadable)
            *error = fileOf(project, name);
        return std::nullopt;
    }
    CorrelationProperties properties = parseProperties(file.bytes, known);
    properties.name = name; // the folder's name counts, whatever the first line says
    return properties;
}

base::WriteResult write(const Project &project, const CorrelationProperties &properties)
{
    if (!isName(properties.name))
        return {QStringLiteral("\"%1\" cannot be the name of a correlation.").arg(properties.name)};
    const QString path = fileOf(project, properties.name);
    if (!readProjectFile(project.projectFolder, path).mayBeReplaced())
        return {path + QStringLiteral(": what is there cannot be read, and is not written over")};
    const QByteArray bytes = propertiesBytes(properties);
    // A new one appears with its file: a program that dies leaves no correlation without.
    base::WriteResult result = exists(project, properties.name)
        ? writeProjectFile(project.projectFolder, path, bytes)
        : base::replaceFolder(correlationsFolder(project), properties.name,
                              {{QStringLiteral("properties.txt"), bytes}}, project.projectFolder);
    if (!result.ok())
        result.error = path + QStringLiteral(": ") + result.error;
    return result;
}

bool remove(const Project &project, const QString &name)
{
    return !exists(project, name) || base::removeFolder(correlationsFolder(project), name, project.projectFolder);
}

} // namespace correlation
