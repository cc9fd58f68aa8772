#include "programs/batch/damage.h"

#include "logview/trackitem.h"
#include "logview/welldisplaydata.h"
#include "programs/batch/session.h"
#include "survey/logcheck.h"
#include "templates/templatestore.h"

#include <QGraphicsScene>

#include <algorithm>

namespace batch {

namespace {

QStringList sentences(const QVector<Finding> &findings)
{
    QStringList damaged;
    for (const Finding &finding : findings)
        if (finding.state == Finding::State::Damaged)
            damaged.append(finding.file + QStringLiteral(": ") + finding.text);
    return damaged;
}

QStringList startingWith(const QStringList &problems, const QString &start)
{
    QStringList found;
    for (const QString &problem : problems)
        if (problem.startsWith(start))
            found.append(problem);
    return found;
}

} // namespace

Damage::Damage(Session &session)
    : m_session(session)
    , m_stems(survey::wellStems(session.surveyDirectory()))
    , m_project(session.projectPaths())
    , m_check(m_project, session.store().list().value)
{
}

QStringList Damage::ofWell(const host::WellEntry &well) const
{
    const auto header = m_session.store().header(well.key);
    return header.ok() ? QStringList() : QStringList{well.name + QStringLiteral(": ") + header.error};
}

QStringList Damage::ofLogs(const host::WellEntry &well, const QStringList *names) const
{
    survey::SurveyStore &store = m_session.store();
    const auto logs = store.logs(well.key);
    if (!logs.ok())
        return {well.name + QStringLiteral(": ") + logs.error};
    if (!names)
        return startingWith(store.problems(), stemOf(well) + QLatin1Char('^'));
    QStringList problems;
    for (int i = 0; i < logs.value.size(); ++i)
        if (names->contains(logs.value.at(i).name))
            if (const QString problem = store.logProblem(well.key, i); !problem.isEmpty())
                problems.append(problem);
    return problems;
}

QStringList Damage::ofMarkers(const host::WellEntry &well) const
{
    survey::SurveyStore &store = m_session.store();
    const auto markers = store.markers(well.key);
    const QStringList problems = startingWith(store.problems(), stemOf(well) + QStringLiteral(".wlm: "));
    return markers.ok() || !problems.isEmpty() ? problems
                                               : QStringList{well.name + QStringLiteral(": ") + markers.error};
}

QStringList Damage::ofZones(const QString &wellName) const
{
    QVector<Finding> findings;
    m_check.checkZones(wellName, &findings);
    return sentences(findings);
}

QStringList Damage::ofPoints(const QString &wellName, const QString &group) const
{
    QVector<Finding> findings;
    m_check.checkPoints(wellName, group, &findings);
    return sentences(findings);
}

QStringList Damage::ofDefaultLogs(const QString &wellName) const
{
    QVector<Finding> findings;
    m_check.checkDefaults(wellName, nullptr, &findings);
    return sentences(findings);
}

QStringList Damage::ofTemplate(const TemplateId &which) const
{
    QVector<Finding> findings;
    m_check.checkTemplate(templateFolder(m_project, which), &findings);
    return sentences(findings);
}

QStringList Damage::ofCorrelation(const QString &name) const
{
    QVector<Finding> findings;
    m_check.checkCorrelation(name, &findings);
    return sentences(findings);
}

QStringList Damage::ofDrawing(const host::WellEntry &well, const QString &templateName,
                              const QGraphicsScene &scene) const
{
    const TemplateId which = meantTemplate(m_project, templateName, well.name);
    QStringList damage = ofWell(well) + ofTemplate(which);
    const QVector<TrackInfo> tracks = loadTemplate(m_project, which);
    const bool usesDefaults = std::any_of(tracks.begin(), tracks.end(), [](const TrackInfo &track) {
        return std::any_of(track.curves.begin(), track.curves.end(),
                           [](const TemplateCurveInfo &curve) { return curve.curve == defaultCurveName(); });
    });
    if (usesDefaults)
        damage += ofDefaultLogs(well.name);
    QStringList logs;
    bool showsZones = false;
    for (const QGraphicsItem *item : scene.items()) {
        const auto *track = qgraphicsitem_cast<const TrackItem *>(item);
        if (!track || track->wellName() != well.name)
            continue;
        showsZones = showsZones || track->arePerforationsShown();
        for (const TemplateCurveInfo &curve : track->definition().curves) {
            logs.append(curve.curve);
            if (curve.isCalibrationShown)
                damage += ofPoints(well.name, curve.group);
        }
    }
    damage += ofLogs(well, &logs);
    if (showsZones)
        damage += ofZones(well.name);
    damage.removeDuplicates();
    return damage;
}

} // namespace batch
