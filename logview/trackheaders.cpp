#include "logview/trackheaders.h"

#include "logview/curveheaderitem.h"
#include "logview/curveitem.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitem.h"
#include "logview/wellnameitem.h"

#include <QGraphicsScene>

TrackHeaders::TrackHeaders(QGraphicsScene *headerScene, QObject *parent)
    : QObject(parent)
    , m_scene(headerScene)
{
}

void TrackHeaders::add(TrackItem *track)
{
    m_headers.removeAll(nullptr);
    auto *header = new TrackHeaderItem(track);
    m_headers.append(header);
    m_scene->addItem(header);
    connect(header, &TrackHeaderItem::clicked, this, &TrackHeaders::clicked);
}

void TrackHeaders::place(const TrackItem *track)
{
    if (TrackHeaderItem *header = headerOf(track))
        header->setPos(track->x(), WellNameItem::bannerHeight);
}

TrackHeaderItem *TrackHeaders::headerOf(const TrackItem *track) const
{
    for (const QPointer<TrackHeaderItem> &header : m_headers)
        if (header && header->track() == track)
            return header;
    return nullptr;
}

CurveHeaderItem *TrackHeaders::headerOf(const CurveItem *curve) const
{
    for (const QPointer<TrackHeaderItem> &header : m_headers) {
        if (!header)
            continue;
        for (CurveHeaderItem *curveHeader : header->curveHeaders())
            if (curveHeader->curve() == curve)
                return curveHeader;
    }
    return nullptr;
}
