#include "logview/welllogsscene.h"

#include "logview/curveitem.h"
#include "logview/markeritem.h"
#include "logview/trackitem.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/wellnameitem.h"

#include <QGraphicsSceneMouseEvent>

#include <algorithm>
#include <utility>

WellLogsScene::WellLogsScene(QObject *parent, QGraphicsScene *headerScene)
    : QGraphicsScene(parent)
    , m_headerScene(headerScene)
    , m_headers(headerScene)
    , m_markers(this)
{
    m_panel = new WellLogsScenePropertyWidget(this); // shows members that stand behind it
    m_selection = new DisplaySelection(this, m_panel, this);
    setItemIndexMethod(NoIndex); // a few dozen items, each as high as the scene: an index finds nothing out
    m_headerScene->setItemIndexMethod(NoIndex);
    connect(m_selection, &DisplaySelection::panelChanged, this, &WellLogsScene::propertyWidgetChanged);
    connect(&m_headers, &TrackHeaders::clicked, this, &WellLogsScene::clickedInHeader);
    connect(&m_markers, &DisplayMarkers::leaving, m_selection, &DisplaySelection::leavePanelOf);
    connect(&m_markers, &DisplayMarkers::depthEdited, this, &WellLogsScene::placeEditedMarker);
}

WellLogsScene::~WellLogsScene()
{
    clearDisplay();
    delete m_panel;
}

WellLogsScenePropertyWidget *WellLogsScene::panel() const
{
    return m_panel;
}

void WellLogsScene::clearDisplay()
{
    m_tracks.clear();
    m_markers.forgetAll();
    m_wellNameItem = nullptr;
    m_selection->forgetCurrentTrack();
    m_sceneWidth = 0;
    clear();
    m_headerScene->clear();
}

void WellLogsScene::beginDisplay(const WellRecord &well)
{
    clearDisplay();
    m_well = well;
    const auto totalDepth = static_cast<float>(well.totalDepth);
    m_panel->setWellName(well.wellName);
    m_panel->setTotalDepth(totalDepth);
    m_panel->setScale(logview::defaultDepthScale);
    m_panel->setStartDepth(0);
    m_panel->setEndDepth(totalDepth);
    m_panel->setDepthType(logview::MeasuredDepth);
    m_panel->setDepthUnit(logview::Metre);
    m_trackHeight = logview::DepthAxis::of(0, totalDepth).heightPx();
}

void WellLogsScene::addTrack(TrackItem *track)
{
    track->setTrackNumber(m_tracks.size());
    m_tracks.append(track);
    addItem(track);
    m_headers.add(track);
    m_sceneWidth = placeTrack(track, m_sceneWidth);
    connect(track, &TrackItem::resized, this, &WellLogsScene::relayoutTracks);
    connect(track, &TrackItem::curvesChanged, this, &WellLogsScene::laidOut);
}

void WellLogsScene::endDisplay()
{
    m_wellNameItem = new WellNameItem(m_well.wellName, static_cast<float>(m_sceneWidth), m_headerScene);
    m_markers.setWidth(static_cast<float>(m_sceneWidth));
    updateSceneRects();
}

void WellLogsScene::replaceTracks(const QVector<TrackItem *> &tracks)
{
    for (TrackItem *old : std::exchange(m_tracks, {})) {
        m_selection->leavePanelOf(old);
        delete old;
    }
    m_selection->forgetCurrentTrack();
    m_sceneWidth = 0;
    for (TrackItem *track : tracks) {
        track->setScale(m_panel->scale());
        track->setDepthRange(m_startDepth, m_endDepth);
        applyDepthReference(track);
        addTrack(track);
    }
    relayoutTracks();
}

void WellLogsScene::followWell(const WellRecord &well)
{
    const bool hasOtherRange = well.totalDepth != m_well.totalDepth || well.kbElevation != m_well.kbElevation;
    m_well = well;
    if (!hasOtherRange)
        return;
    m_panel->setTotalDepth(static_cast<float>(well.totalDepth));
    applyDepthTypeAndUnit();
}

// Gives the x of what stands right of the track.
int WellLogsScene::placeTrack(TrackItem *track, int x)
{
    track->setPos(x, 0);
    m_headers.place(track);
    return logview::toInt(x + static_cast<double>(track->width()));
}

void WellLogsScene::updateSceneRects()
{
    setSceneRect(0, 0, m_sceneWidth, m_trackHeight + logview::sceneMarginBelow);
    m_headerScene->setSceneRect(0, 0, m_sceneWidth, headerSceneHeight);
    update();
    m_headerScene->update();
    emit laidOut();
}

void WellLogsScene::relayoutTracks()
{
    m_sceneWidth = 0;
    for (TrackItem *track : qAsConst(m_tracks)) {
        m_sceneWidth = placeTrack(track, m_sceneWidth);
        m_trackHeight = track->axis().heightPx();
    }
    m_markers.setWidth(static_cast<float>(m_sceneWidth));
    if (m_headerScene->items().contains(m_wellNameItem)) // whoever emptied that scene took it along
        m_wellNameItem->setWidth(static_cast<float>(m_sceneWidth));
    updateSceneRects();
}

void WellLogsScene::removeTrack(int trackNumber)
{
    if (trackNumber < 0 || trackNumber >= m_tracks.size())
        return;
    TrackItem *track = m_tracks.takeAt(trackNumber);
    m_selection->leavePanelOf(track);
    delete track;
    for (int i = trackNumber; i < m_tracks.size(); ++i)
        m_tracks.at(i)->setTrackNumber(i);
    relayoutTracks();
}

void WellLogsScene::applyDepthTypeAndUnit()
{
    if (m_depthType < logview::MeasuredDepth || m_depthType > logview::TvdSubsea)
        return;
    const logview::DepthLimits limits = logview::limitsAfterChange({m_startDepth, m_endDepth}, m_depthType,
                                                                   m_depthUnit, m_totalDepth, m_well.kbElevation);
    m_panel->setStartDepth(limits.start);
    m_panel->setEndDepth(limits.end);
    for (TrackItem *track : qAsConst(m_tracks)) {
        track->setDepthRange(limits.start, limits.end);
        applyDepthReference(track);
    }
    if (!m_tracks.isEmpty())
        m_trackHeight = m_tracks.first()->axis().heightPx();
    tellLeftBehind(
        m_markers.placeOrDrop(depthAxis(), [this](const MarkerItem &marker) { return displayDepth(marker); }));
    updateSceneRects();
}

void WellLogsScene::applyDepthReference(TrackItem *track)
{
    if (m_depthType == logview::MeasuredDepth)
        track->setMdFlag();
    else if (m_depthType == logview::TvdSubsea)
        track->setTvdssFlag();
    track->setDepthUnit(static_cast<logview::DepthUnit>(m_depthUnit));
}

// Markers stand at their stored depths here, whatever depth type and unit the display has.
void WellLogsScene::applyDepthRange()
{
    for (TrackItem *track : qAsConst(m_tracks))
        track->setDepthRange(m_startDepth, m_endDepth);
    if (!m_tracks.isEmpty())
        m_trackHeight = m_tracks.first()->axis().heightPx();
    tellLeftBehind(m_markers.placeOrDrop(
        depthAxis(), [](const MarkerItem &marker) { return static_cast<double>(marker.depth()); }));
    updateSceneRects();
}

void WellLogsScene::applyScale(float scale)
{
    for (TrackItem *track : qAsConst(m_tracks))
        track->setScale(scale);
    relayoutTracks();
    m_markers.placeInside(depthAxis(), [this](const MarkerItem &marker) { return displayDepth(marker); });
}

logview::DepthAxis WellLogsScene::depthAxis() const
{
    return {m_startDepth, m_endDepth, static_cast<float>(m_trackHeight)};
}

// In single precision like the ends of the range, so that a marker on an end stays on it.
double WellLogsScene::displayDepth(const MarkerItem &marker) const
{
    return static_cast<double>(depthReference().toDisplay(static_cast<double>(marker.depth())));
}

logview::DepthReference WellLogsScene::depthReference() const
{
    return {static_cast<logview::DepthType>(m_depthType), static_cast<logview::DepthUnit>(m_depthUnit),
            m_well.kbElevation};
}

void WellLogsScene::tellDropped(const QStringList &markerNames)
{
    if (!markerNames.isEmpty())
        emit markersDropped(markerNames);
}

void WellLogsScene::tellLeftBehind(const QStringList &markerNames)
{
    if (!markerNames.isEmpty())
        emit markersLeftBehind(markerNames);
    tellDropped(markerNames);
}

// An edited depth counts as part of the well's total depth; start depth, depth type and unit of the display do not
// count here.
void WellLogsScene::placeEditedMarker(MarkerItem *marker)
{
    const auto totalDepth = static_cast<double>(m_totalDepth);
    if (totalDepth > 0)
        m_markers.place(marker, m_trackHeight * static_cast<double>(marker->depth()) / totalDepth);
}

// A marker that comes to a display stands at its stored depth in the display's unit, whatever the depth type.
std::optional<double> WellLogsScene::placeOf(const MarkerItem &marker) const
{
    const logview::DepthReference measured{logview::MeasuredDepth, static_cast<logview::DepthUnit>(m_depthUnit), 0};
    const auto depth = static_cast<double>(measured.toDisplay(static_cast<double>(marker.depth())));
    return depthAxis().contains(depth) ? std::optional<double>(depthAxis().toScenePixel(depth)) : std::nullopt;
}

bool WellLogsScene::addMarker(MarkerItem *marker)
{
    const std::optional<double> y = placeOf(*marker);
    if (!y) {
        delete marker;
        return false;
    }
    marker->setPos(0, *y);
    m_markers.add(marker);
    return true;
}

bool WellLogsScene::placeStoredMarker(MarkerItem *marker)
{
    const std::optional<double> y = placeOf(*marker);
    if (y)
        m_markers.place(marker, *y);
    else
        m_markers.destroy(marker);
    return y.has_value();
}

void WellLogsScene::deleteMarker(const QString &markerName)
{
    if (MarkerItem *marker = m_markers.find(markerName))
        m_markers.destroy(marker);
}

void WellLogsScene::movePickedMarker(MarkerItem *marker, double sceneY)
{
    const double y = std::clamp(sceneY, 0.0, static_cast<double>(m_trackHeight));
    marker->setDepth(static_cast<float>(depthReference().toMeasuredM(depthAxis().toDepth(y))));
    m_markers.place(marker, y);
}

void WellLogsScene::clickedInHeader(QGraphicsItem *item)
{
    m_selection->selectOnly(item);
    if (m_mode == Mode::None)
        m_selection->showPanelOfSelection();
}

void WellLogsScene::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->accept();
        return;
    }
    QGraphicsScene::mousePressEvent(event);
    if (m_mode == Mode::None)
        m_selection->showPanelOfSelection();
}

// The second press of a double click counts as a press.
void WellLogsScene::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->accept();
        return;
    }
    QGraphicsScene::mouseDoubleClickEvent(event);
    if (m_mode == Mode::None)
        m_selection->showPanelOfSelection();
}

void WellLogsScene::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsScene::mouseMoveEvent(event);
    if (!(event->modifiers() & Qt::ControlModifier))
        event->accept();
}

void WellLogsScene::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    QGraphicsScene::mouseReleaseEvent(event);
    if (!(event->modifiers() & Qt::ControlModifier))
        event->accept();
}

void WellLogsScene::pickedMarkerClicked()
{
    m_mode = Mode::PickMarker;
    m_markers.pick(m_well.wellName);
}

void WellLogsScene::savePickedMarkerClicked()
{
    m_mode = Mode::SavePickedMarker;
}

void WellLogsScene::deleteTrack()
{
    m_mode = Mode::DeleteTrackOrCurve;
    if (m_selection->currentTrackIndex() >= 0)
        emit sendDeleteTrack(m_selection->currentTrackIndex());
}

void WellLogsScene::deleteCurve()
{
    m_mode = Mode::DeleteTrackOrCurve;
    if (QGraphicsItem *item = selectedItems().value(0))
        destroyItem(item);
}

void WellLogsScene::deleteMarker()
{
    m_mode = Mode::DeleteMarker;
    if (auto *marker = qgraphicsitem_cast<MarkerItem *>(selectedItems().value(0)))
        destroyItem(marker);
}

void WellLogsScene::destroyItem(QGraphicsItem *item)
{
    if (auto *marker = qgraphicsitem_cast<MarkerItem *>(item)) {
        const QStringList names =
            m_markers.unsaved().contains(marker) ? QStringList() : QStringList(marker->markerName());
        m_markers.destroy(marker);
        tellDropped(names);
    } else if (auto *curve = qgraphicsitem_cast<CurveItem *>(item)) {
        m_selection->leavePanelOf(curve);
        qgraphicsitem_cast<TrackItem *>(curve->parentItem())->removeCurve(curve);
    } else if (const auto *track = qgraphicsitem_cast<TrackItem *>(item)) {
        removeTrack(track->trackNumber());
    }
}
