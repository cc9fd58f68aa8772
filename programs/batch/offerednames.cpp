#include "programs/batch/offerednames.h"

#include "correlation/correlationstore.h"
#include "datastore/curvegroups.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "templates/templatestore.h"
#include "welldata/defaultdata.h"

namespace batch {

namespace {

struct NamedKind
{
    WordKind kind;
    const char *word;
};

constexpr NamedKind namedKinds[] = {
    {WordKind::Well, "wells"},
    {WordKind::DrawnWell, "drawn-wells"},
    {WordKind::Log, "logs"},
    {WordKind::Marker, "markers"},
    {WordKind::PanelMarker, "panel-markers"},
    {WordKind::Template, "templates"},
    {WordKind::Correlation, "correlations"},
    {WordKind::DefaultLog, "default-logs"},
    {WordKind::Curve, "curves"},
    {WordKind::CurveGroup, "curve-groups"},
    {WordKind::CurveName, "curve-names"},
};

QStringList wellNames(Session &session)
{
    QStringList names;
    for (const host::WellEntry &well : session.store().list().value)
        names.append(well.name);
    return names;
}

/// The keys of the wells that are named; those of all where none is.
QStringList wellKeys(Session &session, const QStringList &words)
{
    QStringList keys;
    for (const QString &word : words)
        if (const DrawnWell well = drawnWell(session, word); well.problem.isEmpty())
            keys.append(well.wellKey);
    if (keys.isEmpty())
        for (const host::WellEntry &well : session.store().list().value)
            keys.append(well.key);
    return keys;
}

QStringList drawnWells(Session &session, const QString &current)
{
    QStringList names = wellNames(session);
    const DrawnWell well = drawnWell(session, current);
    if (!current.contains(QLatin1Char(':')) || !well.problem.isEmpty())
        return names;
    for (const QString &name : templatesOf(session.projectPaths(), well.wellName))
        names.append(well.wellName + QLatin1Char(':') + name);
    return names;
}

QStringList logs(Session &session, const QStringList &wells)
{
    QStringList names;
    for (const QString &key : wellKeys(session, wells))
        for (const host::LogInfo &log : session.store().logs(key).value)
            names.append(log.name);
    return names;
}

QStringList markers(Session &session, const QStringList &wells)
{
    QStringList names;
    for (const QString &key : wellKeys(session, wells))
        for (const host::Marker &marker : session.store().markers(key).value)
            names.append(marker.name);
    return names;
}

QStringList panelMarkers(Session &session, const QString &name)
{
    const ProjectData &data = session.project();
    if (!correlationNames(data.project).contains(name))
        return {};
    const auto properties = correlation::load(data.project, name, correlation::knownNames(data));
    return properties ? markersOf(data, *properties) : QStringList();
}

QStringList templates(Session &session, const QString &well)
{
    const Project project = session.projectPaths();
    return well.isEmpty() ? project.globalTemplateNames : wellTemplateNames(project, session.well(well).value.name);
}

/// "FIRST=" for each of the first names; behind a "=" that is there, "FIRST=SECOND".
QStringList pairs(const QString &current, const QStringList &first, const QStringList &second)
{
    const int equals = current.indexOf(QLatin1Char('='));
    const QString front = current.left(equals + 1);
    QStringList offered;
    for (const QString &name : equals < 0 ? first : second)
        offered.append(equals < 0 ? name + QLatin1Char('=') : front + name);
    return offered;
}

} // namespace

QString shellWordOf(WordKind kind)
{
    for (const NamedKind &named : namedKinds)
        if (named.kind == kind)
            return QString::fromLatin1(named.word);
    return {};
}

QStringList shellWords()
{
    QStringList words;
    for (const NamedKind &named : namedKinds)
        words.append(QString::fromLatin1(named.word));
    return words;
}

QStringList namesToOffer(Session &session, const QString &shellWord, const QString &current,
                         const QStringList &operands, const QString &well)
{
    const auto is = [&shellWord](WordKind kind) { return shellWord == shellWordOf(kind); };
    QStringList names;
    if (is(WordKind::Well))
        names = wellNames(session);
    else if (is(WordKind::DrawnWell))
        names = drawnWells(session, current);
    else if (is(WordKind::Log))
        names = logs(session, operands);
    else if (is(WordKind::Marker))
        names = markers(session, operands.mid(0, 1));
    else if (is(WordKind::PanelMarker))
        names = panelMarkers(session, operands.value(0));
    else if (is(WordKind::Template))
        names = templates(session, well);
    else if (is(WordKind::Correlation))
        names = correlationNames(session.projectPaths());
    else if (is(WordKind::DefaultLog))
        names = pairs(current, welldata::groupsWithDefaults(curveGroupNames()), logs(session, operands.mid(0, 1)));
    else if (is(WordKind::Curve))
        names = curvesOf(operands);
    else if (is(WordKind::CurveGroup))
        names = pairs(current, curvesOf(operands), curveGroupNames());
    else if (is(WordKind::CurveName))
        names = pairs(current, curvesOf(operands), {});
    names.removeDuplicates();
    return names;
}

} // namespace batch
