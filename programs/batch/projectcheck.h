#pragma once

#include "datastore/project.h"
#include "host/hostrecords.h"
#include "programs/batch/result.h"

#include <QSet>

namespace batch {

/// One thing that the check found.
struct Finding
{
    enum class State { Damaged, Missing, Orphaned, Unfinished };

    State state = State::Damaged;
    QString file;
    QString text; ///< a sentence
};

Record recordOf(const Finding &finding);

/// What a write left at that path.
Finding unfinishedWrite(const QString &path);

/// Whether the bytes of a file of zones begin as one does, with the number of its zones, or there are none.
bool isZoneCount(const QByteArray &bytes);

/// Looks at what the plug-in's project folder holds. Nothing is written.
class ProjectCheck
{
public:
    /// \a wells are those of the survey.
    ProjectCheck(const Project &project, const QVector<host::WellEntry> &wells);

    /// The files of one well: default logs, zones, points, own templates. \a logs are the names of its logs; null where
    /// nobody knows them.
    QVector<Finding> checkWell(const QString &wellName, const QStringList *logs) const;
    /// What all wells share: groups, global templates, correlations, links; and files of wells that are not there.
    QVector<Finding> checkCommon() const;

    // One file each; none where it is missing.
    void checkDefaults(const QString &wellName, const QStringList *logs, QVector<Finding> *findings) const;
    void checkZones(const QString &wellName, QVector<Finding> *findings) const;
    void checkPoints(const QString &wellName, const QString &group, QVector<Finding> *findings) const;
    void checkTemplate(const QString &folder, QVector<Finding> *findings) const;
    void checkCorrelation(const QString &name, QVector<Finding> *findings) const;

private:
    void checkGroups(QVector<Finding> *findings) const;
    void checkOrphans(QVector<Finding> *findings) const;

    Project m_project;
    QStringList m_wells;
    QSet<QString> m_files; ///< names directly in the project folder
    bool m_hasPoints = false; ///< whether one of them is of calibration points
};

} // namespace batch
