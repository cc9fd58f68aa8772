#include "mainwin/projectfolders.h"

#include "correlation/correlationstore.h"
#include "datastore/project.h"
#include "templates/templatestore.h"

#include <QDir>
#include <QFileInfo>

ProjectFolders::ProjectFolders(const Project &project)
    : m_project(project)
    , m_templatesFolder(project.projectFolder + QStringLiteral("/Templates"))
{
    m_hasTemplates = isReadable(m_templatesFolder);
    const QStringList owners =
        QDir(m_templatesFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    m_owners = QSet<QString>(owners.begin(), owners.end());
}

bool ProjectFolders::isReadable(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() || (info.isDir() && info.isReadable() && info.isExecutable()))
        return true;
    m_unreadable.append(path);
    return false;
}

std::optional<QStringList> ProjectFolders::correlations()
{
    const QString folder = correlation::correlationsFolder(m_project);
    if (!isReadable(folder))
        return std::nullopt;
    QStringList names = subFolderNames(m_project, folder);
    names.sort();
    return names;
}

std::optional<QStringList> ProjectFolders::globalTemplates()
{
    if (!m_hasTemplates || !isReadable(globalTemplatesFolder(m_project)))
        return std::nullopt;
    return globalTemplateNames(m_project);
}

std::optional<QStringList> ProjectFolders::wellTemplates(const QString &wellName)
{
    if (!m_hasTemplates)
        return std::nullopt;
    const QString folder = wellTemplatesFolder(m_project, wellName);
    if (!m_owners.contains(folder.mid(m_templatesFolder.size() + 1)))
        return QStringList();
    if (!isReadable(folder))
        return std::nullopt;
    return wellTemplateNames(m_project, wellName);
}
