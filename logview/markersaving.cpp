#include "logview/markersaving.h"

#include "base/asker.h"
#include "datastore/hostwriter.h"
#include "datastore/projectdata.h"

#include <QStringList>

QString freeMarkerName(const QString &name, const QStringList &taken)
{
    QString free = name;
    for (int number = 1; taken.contains(free); ++number)
        free = name + QLatin1Char('_') + QString::number(number);
    return free;
}

// The host's own markers are read, not the catalogue's: a set that could not be read must not be replaced.
QString savePickedMarker(ProjectData &data, const QString &wellName, const PickedMarker &marker)
{
    const QString title = QStringLiteral("Save Marker");
    if (marker.name.trimmed().isEmpty()) {
        data.asker.warn(title, QStringLiteral("A marker without a name cannot be saved."));
        return {};
    }
    const int well = data.catalogue.indexOf(wellName);
    const host::Outcome<QVector<host::Marker>> stored = data.host.wells().markers(data.catalogue.wellKey(well));
    if (!stored.ok()) {
        data.asker.warn(title,
                        QStringLiteral("The marker was not saved, because the markers of the well %1 cannot be "
                                       "read.\n%2")
                            .arg(wellName, stored.error));
        return {};
    }
    MarkerSetRecord record;
    record.wellName = wellName;
    for (const host::Marker &other : stored.value) {
        record.names.append(other.name);
        record.measuredDepths.append(other.depth);
        record.subseaDepths.append(0);
        record.colors.append(other.color);
    }
    const QString name = freeMarkerName(marker.name.trimmed(), record.names);
    record.names.append(name);
    record.measuredDepths.append(marker.measuredDepthM);
    record.subseaDepths.append(0);
    record.colors.append(marker.color);
    HostWriter writer(data.host.wells(), data.catalogue, data.asker,
                      [&data](const QString &text) { data.host.showError(text); });
    return writer.writeMarkers(well, record) ? name : QString();
}
