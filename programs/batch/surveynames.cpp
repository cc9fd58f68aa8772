#include "programs/batch/surveynames.h"

#include "correlation/correlationstore.h"
#include "las/lasheader.h"
#include "programs/batch/arguments.h"
#include "programs/batch/session.h"
#include "templates/templatestore.h"

#include <QDir>

namespace batch {

namespace {

constexpr int mostListed = 20;

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

} // namespace batch
