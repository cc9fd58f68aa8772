#pragma once

#include <QHash>
#include <QStringList>

struct ProjectData;

/// What the curve tables of one editor have in common: the groups, the well's curves of each, and the values that a
/// group was last used with.
class TemplateChoices
{
public:
    /// Reads nothing but the curve groups of the well's logs, once.
    TemplateChoices(const ProjectData &projectData, const QString &wellName);

    const QStringList &groups() const { return m_groups; }
    /// "Default", and the well's logs of the group as they stand in the project's files.
    QStringList curves(const QString &group) const;

    struct Values
    {
        QString minimum;
        QString maximum;
    };
    void noteValues(const QString &group, const Values &values) { m_values.insert(group, values); }
    /// Empty where the group was not used yet.
    Values lastValues(const QString &group) const { return m_values.value(group); }

private:
    QStringList m_groups;
    QHash<QString, QStringList> m_curves; ///< by group
    QHash<QString, Values> m_values;
};
