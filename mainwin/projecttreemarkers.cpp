// What the tree sends of markers to the displays.

#include "datastore/projectdata.h"
#include "mainwin/projecttreewidget.h"

#include <QSet>
#include <QSignalBlocker>

// The box of the branch says whether all of its markers are checked.
void ProjectTreeWidget::followMarkers(QTreeWidgetItem *branch)
{
    if (branch->childCount() == 0)
        return;
    bool areAllChecked = true;
    for (int i = 0; i < branch->childCount() && areAllChecked; ++i)
        areAllChecked = isChecked(branch->child(i));
    const QSignalBlocker blocker(this);
    branch->setCheckState(0, areAllChecked ? Qt::Checked : Qt::Unchecked);
}

void ProjectTreeWidget::showNewMarkers(int well, const QStringList &markerNames)
{
    const QTreeWidgetItem *item = findWellByKey(m_data.catalogue.wellKey(well));
    if (!item || !isChecked(item) || markerNames.isEmpty())
        return;
    const QString wellName = item->text(0);
    const QSet<QString> isNew(markerNames.begin(), markerNames.end());
    QTreeWidgetItem *branch = markersBranch(item);
    {
        const QSignalBlocker blocker(this);
        for (int i = 0; i < branch->childCount(); ++i)
            if (isNew.contains(branch->child(i)->text(0)))
                branch->child(i)->setCheckState(0, Qt::Checked);
    }
    followMarkers(branch);
    emit markersBegin(wellName);
    for (const QString &name : markerNames)
        emit displayMarker(wellName, name);
    emit markersEnd(wellName);
}

void ProjectTreeWidget::sendMarkersOf(const QString &wellName)
{
    if (QTreeWidgetItem *well = findWell(wellName))
        refreshMarkers(well);
}

void ProjectTreeWidget::markersToggled(QTreeWidgetItem *markers)
{
    for (int i = 0; i < markers->childCount(); ++i)
        markers->child(i)->setCheckState(0, markers->checkState(0));
    if (isChecked(markers->parent()))
        refreshMarkers(markers->parent());
}

void ProjectTreeWidget::markerToggled(QTreeWidgetItem *marker)
{
    const QTreeWidgetItem *well = wellOf(marker);
    followMarkers(marker->parent());
    if (!isChecked(well))
        return;
    if (isChecked(marker))
        emit displayMarker(well->text(0), marker->text(0));
    else
        emit removeMarker(well->text(0), marker->text(0));
}

// While a marker is displayed a box may come up, and the host may tell of other markers: the items may go.
void ProjectTreeWidget::refreshMarkers(QTreeWidgetItem *well)
{
    struct Marker
    {
        QString name;
        bool isShown;
    };
    const QString wellName = well->text(0);
    const QTreeWidgetItem *branch = markersBranch(well);
    QVector<Marker> markers;
    for (int i = 0; i < branch->childCount(); ++i)
        markers.append({branch->child(i)->text(0), isChecked(branch->child(i))});
    emit markersBegin(wellName);
    for (const Marker &marker : qAsConst(markers)) {
        if (marker.isShown)
            emit displayMarker(wellName, marker.name);
        else
            emit removeMarker(wellName, marker.name);
    }
    emit markersEnd(wellName);
}
