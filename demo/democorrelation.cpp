#include "demo/democorrelation.h"

#include "correlation/correlationstore.h"
#include "demo/demofield.h"

namespace demo {

namespace {

CorrelationZone zone(const char *name, const char *start, const char *end, const char *color)
{
    CorrelationZone result;
    result.name = QString::fromLatin1(name);
    result.start = QString::fromLatin1(start);
    result.end = QString::fromLatin1(end);
    result.color = QString::fromLatin1(color);
    return result;
}

} // namespace

QString demoCorrelationName()
{
    return QStringLiteral("Kestrane reservoir");
}

bool writeDemoCorrelation(const Project &project, const Field &field, const CorrelationLook &look)
{
    CorrelationProperties properties;
    properties.name = demoCorrelationName();
    properties.scale = look.scale;
    properties.trackWidth = look.trackWidthInches;
    for (const Well &well : field.wells)
        properties.wells.append({well.name, QString::fromLatin1(look.templateName)});
    for (const char *marker : {"Dunvar Limestone", "Sabrane Shale", "Noctel Shale", "Kestrane Upper Sst",
                               "Kestrane Middle Shale", "Kestrane Lower Sst", "Thessane Mudstone"})
        properties.markers.append(QString::fromLatin1(marker));
    properties.showsPerforations = true;
    properties.zones = {zone("Upper reservoir", "Kestrane Upper Sst", "Kestrane Middle Shale", "#e6b800"),
                        zone("Baffle", "Kestrane Middle Shale", "Kestrane Lower Sst", "#6e8c5a"),
                        zone("Lower reservoir", "Kestrane Lower Sst", "Thessane Mudstone", "#d98324")};
    return correlation::write(project, properties).ok();
}

} // namespace demo
