#include "correlation/correlationwells.h"

#include "datastore/projectdata.h"
#include "logview/welldisplaydata.h"
#include "templates/templatestore.h"

CorrelationWells::CorrelationWells(ProjectData &projectData, int dotsPerInch)
    : m_data(projectData)
    , m_dotsPerInch(dotsPerInch)
{
}

const CorrelationWells::Well *CorrelationWells::well(const QString &name)
{
    const auto known = m_wells.constFind(name);
    if (known != m_wells.cend())
        return &*known;
    const int index = m_data.catalogue.indexOf(name);
    if (index < 0)
        return nullptr;
    Well well;
    well.data = std::make_shared<WellDisplayData>(m_data, name);
    if (well.data->initialTrackWidth(LinearTrack) <= 0)
        well.data->setDotsPerInch(m_dotsPerInch);
    well.markers = correlation::markersByName(
        m_data.catalogue.readWellMarkers(index, WellsCatalogue::OnFailure::BeSilent).value_or(QVector<WellMarker>()));
    return &*m_wells.insert(name, well);
}

QVector<TrackInfo> CorrelationWells::tracks(const CorrelationWell &named, bool *isGone)
{
    const QString key = named.wellName + QChar(0) + named.templateName;
    auto found = m_templates.find(key);
    if (found == m_templates.end()) {
        Template read;
        read.isGone = !hasTemplate(m_data.project, named.templateName, named.wellName);
        const QString name = read.isGone ? QStringLiteral("Default") : named.templateName;
        if (const Well *known = well(named.wellName))
            for (const TrackInfo &track : loadTemplate(m_data.project, name, named.wellName))
                read.tracks.append(known->data->resolved(track));
        found = m_templates.insert(key, read);
    }
    *isGone = found->isGone;
    return found->tracks;
}

void CorrelationWells::forgetWell(const QString &name)
{
    m_templates.clear();
    if (name.isEmpty())
        m_wells.clear();
    else
        m_wells.remove(name);
}
