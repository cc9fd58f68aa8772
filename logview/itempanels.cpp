#include "logview/itempanels.h"

#include "logview/curveitem.h"
#include "logview/curveitempropertywidget.h"
#include "logview/markeritem.h"
#include "logview/markeritempropertywidget.h"
#include "logview/trackitem.h"
#include "logview/trackitempropertywidget.h"

ItemPanels::ItemPanels(QObject *parent)
    : QObject(parent)
{
}

ItemPanels::~ItemPanels()
{
    for (const QPointer<QWidget> &panel : qAsConst(m_panels))
        delete panel;
}

template<class Panel, class Item>
QWidget *ItemPanels::panel(Item *item)
{
    QPointer<QWidget> &panel = m_panels[item];
    if (!panel) {
        panel = new Panel(item);
        connect(item, &QObject::destroyed, this, &ItemPanels::forget, Qt::UniqueConnection);
    }
    return panel;
}

QWidget *ItemPanels::panelOf(QGraphicsItem *item)
{
    if (auto *track = qgraphicsitem_cast<TrackItem *>(item))
        return panel<TrackItemPropertyWidget>(track);
    if (auto *curve = qgraphicsitem_cast<CurveItem *>(item))
        return panel<CurveItemPropertyWidget>(curve);
    if (auto *marker = qgraphicsitem_cast<MarkerItem *>(item))
        return panel<MarkerItemPropertyWidget>(marker);
    return nullptr;
}

QWidget *ItemPanels::existingPanelOf(QGraphicsItem *item) const
{
    if (const auto *marker = qgraphicsitem_cast<MarkerItem *>(item))
        return m_panels.value(marker);
    return m_panels.value(item->toGraphicsObject());
}

void ItemPanels::forget(QObject *item)
{
    delete m_panels.take(item);
}
