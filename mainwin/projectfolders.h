#pragma once

#include <QSet>
#include <QStringList>

#include <optional>

struct Project;

/// The folders of a project that the project tree lists. A missing folder is an empty one; one that is there but
/// cannot be read gives no list and is remembered.
class ProjectFolders
{
public:
    /// \a project must outlive it.
    explicit ProjectFolders(const Project &project);

    /// The saved correlations, by name.
    std::optional<QStringList> correlations();
    /// The global templates, in the order in which their folder is read.
    std::optional<QStringList> globalTemplates();
    /// A well's own templates, by name.
    std::optional<QStringList> wellTemplates(const QString &wellName);

    const QStringList &unreadable() const { return m_unreadable; }

private:
    bool isReadable(const QString &path);

    const Project &m_project;
    QString m_templatesFolder;
    bool m_hasTemplates = false;
    QSet<QString> m_owners; ///< what lies in the templates' folder: read once, not asked for each well
    QStringList m_unreadable;
};
