#include "programs/batch/surveynames.h"

#include "correlation/correlationstore.h"
#include "datastore/curvegroups.h"
#include "las/lasheader.h"
#include "programs/batch/damage.h"
#include "programs/batch/session.h"
#include "templates/templatestore.h"
#include "welldata/defaultdata.h"

#include <QDir>

namespace batch {

namespace {

constexpr int mostListed = 20;

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

QString insteadOf(const QString &name, const QStringList &names)
{
    const QString other = asListed(names, name);
    if (names.contains(other))
        return QStringLiteral("; it is \"%1\"").arg(other);
    if (names.isEmpty() || names.size() > mostListed)
        return {};
    return (names.size() == 1 ? QStringLiteral("; there is %1") : QStringLiteral("; there are %1"))
        .arg(names.join(QStringLiteral(", ")));
}

DrawnWell drawnWell(Session &session, const QString &word)
{
    host::Outcome<host::WellEntry> well = session.well(word);
    const QString problem = well.error;
    QString templateName = QStringLiteral("Default");
    for (int colon = word.size(); !well.ok() && (colon = word.lastIndexOf(QLatin1Char(':'), colon - 1)) > 0;) {
        well = session.well(word.left(colon));
        templateName = word.mid(colon + 1);
    }
    if (!well.ok())
        return {{}, {}, {}, problem};
    return {well.value.name, well.value.key, templateName, {}};
}

QStringList templatesOf(const Project &project, const QString &wellName)
{
    QStringList names = wellTemplateNames(project, wellName) + project.globalTemplateNames;
    names.removeDuplicates();
    names.sort();
    return names;
}

QStringList correlationNames(const Project &project)
{
    return QDir(correlation::correlationsFolder(project)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

QStringList markersOf(const ProjectData &data, const CorrelationProperties &properties)
{
    QStringList names;
    for (const CorrelationWell &well : properties.wells) {
        const int index = data.catalogue.indexOf(well.wellName);
        for (const QString &name : index < 0 ? QStringList() : data.catalogue.markerNames(index))
            names.append(name.trimmed());
    }
    names.removeDuplicates();
    return names;
}

QStringList curvesOf(const QStringList &files)
{
    QStringList names;
    for (const QString &file : files)
        for (const las::HeaderItem &item : las::readHeader(file).header.items)
            if (item.section == QLatin1Char('C'))
                names.append(item.mnemonic);
    return names;
}

QString pointsOfWell(const QString &wellName, const QString &group)
{
    return QStringLiteral("Calibration points of %1, %2").arg(wellName, group);
}

CalibrationRecord readPoints(Session &session, const QString &wellName, const QString &group, QStringList *failures)
{
    const CalibrationRecord points = readCalibration(session.projectFolder(), wellName, group, session.asker());
    session.asker().takeWarnings(); // the window's words name no file
    for (const QString &problem : Damage(session).ofPoints(wellName, group))
        failures->append(pointsOfWell(wellName, group) + QStringLiteral(": ") + problem);
    return points;
}

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
