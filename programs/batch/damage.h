#pragma once

#include "programs/batch/projectcheck.h"

#include <QHash>
#include <QStringList>

class QGraphicsScene;
struct TemplateId;

namespace batch {

class Session;

/// What is damaged of the files that hold what a command was asked for, as sentences that name them: those make the command
/// fail. What else is damaged is told as a notice, by run(). What is missing is no damage.
class Damage
{
public:
    explicit Damage(Session &session);

    /// Why the well cannot be read; none when it can.
    QStringList ofWell(const host::WellEntry &well) const;
    /// Of the logs of these names; all of the well's files of logs where \a names is null.
    QStringList ofLogs(const host::WellEntry &well, const QStringList *names) const;
    QStringList ofMarkers(const host::WellEntry &well) const;
    QStringList ofZones(const QString &wellName) const;
    QStringList ofPoints(const QString &wellName, const QString &group) const;
    QStringList ofDefaultLogs(const QString &wellName) const;
    QStringList ofTemplate(const TemplateId &which) const;
    QStringList ofCorrelation(const QString &name) const;
    /// Of all that is drawn of a well with a template. \a scene holds its tracks, and may hold those of others.
    QStringList ofDrawing(const host::WellEntry &well, const QString &templateName,
                          const QGraphicsScene &scene) const;

private:
    QString stemOf(const host::WellEntry &well) const { return m_stems.value(well.key); }

    Session &m_session;
    QHash<QString, QString> m_stems; ///< paths of the wells' files without their endings, by key
    Project m_project;
    ProjectCheck m_check;
};

} // namespace batch
