#include "templates/templatechoices.h"

#include "datastore/curvegroupassignment.h"
#include "datastore/projectdata.h"
#include "datastore/textfields.h"

TemplateChoices::TemplateChoices(const ProjectData &projectData, const QString &wellName)
    : m_groups(projectData.project.groupNames)
{
    const WellsCatalogue &catalogue = projectData.catalogue;
    const int well = catalogue.indexOf(wellName);
    if (well < 0)
        return;
    CurveGroupFinder finder(projectData.project.projectFolder);
    for (const QString &log : catalogue.logNames(well))
        m_curves[finder.group(log)].append(textfields::fieldName(log));
    for (QStringList &curves : m_curves)
        curves.removeDuplicates();
}

QStringList TemplateChoices::curves(const QString &group) const
{
    return QStringList{QStringLiteral("Default")} + m_curves.value(group);
}
