#include "logview/welllogsscene.h"

#include "logview/curveheaderitem.h"
#include "logview/curveitem.h"
#include "logview/curveitempropertywidget.h"
#include "logview/markeritem.h"
#include "logview/markeritempropertywidget.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitem.h"
#include "logview/trackitempropertywidget.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/wellnameitem.h"

#include <QGraphicsSceneMouseEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace {

QWidget *panelOf(QGraphicsItem *item)
{
    if (auto *track = qgraphicsitem_cast<TrackItem *>(item))
        return track->panel();
    if (auto *curve = qgraphicsitem_cast<CurveItem *>(item))
        return curve->panel();
    if (auto *marker = qgraphicsitem_cast<MarkerItem *>(item))
        return marker->panel();
    return nullptr;
}

} // namespace

WellLogsScene::WellLogsScene(QObject *parent, QGraphicsScene *headerScene)
    : QGraphicsScene(parent)
    , m_headerScene(headerScene)
{
    m_panel = new WellLogsScenePropertyWidget(this); // shows members that stand behind it
    setItemIndexMethod(NoIndex); // a few dozen items, each as high as the scene: an index finds nothing out
    m_headerScene->setItemIndexMethod(NoIndex);
    connect(m_headerScene, &QGraphicsScene::selectionChanged, this, &WellLogsScene::selectHeadersAsTheirItems);
}

WellLogsScene::~WellLogsScene()
{
    m_headerScene->disconnect(this);
    clearDisplay();
    delete m_panel;
}

WellLogsScenePropertyWidget *WellLogsScene::panel() const
{
    return m_panel;
}

// Tracks go before the header scene is emptied, because each takes its header with it.
void WellLogsScene::clearDisplay()
{
    m_tracks.clear();
    m_markers.clear();
    m_pickedMarker = nullptr;
    m_unsavedMarkers.clear();
    m_wellNameItem = nullptr;
    m_currentTrackIndex = -1;
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
    m_headerScene->addItem(track->header());
    m_sceneWidth = placeTrack(track, m_sceneWidth);
    connect(track->panel(), &TrackItemPropertyWidget::trackResized, this, &WellLogsScene::relayoutTracks);
    connect(track->panel(), &TrackItemPropertyWidget::headerClicked, this, &WellLogsScene::clickedInHeader);
}

void WellLogsScene::endDisplay()
{
    m_wellNameItem = new WellNameItem(m_well.wellName, static_cast<float>(m_sceneWidth), m_headerScene);
    updateSceneRects();
}

// Gives the x of what stands right of the track.
int WellLogsScene::placeTrack(TrackItem *track, int x)
{
    track->setPos(x, 0);
    if (track->header())
        track->header()->setPos(x, WellNameItem::bannerHeight);
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
    for (MarkerItem *marker : qAsConst(m_markers))
        marker->setWidth(static_cast<float>(m_sceneWidth));
    if (m_headerScene->items().contains(m_wellNameItem)) // whoever emptied that scene took it along
        m_wellNameItem->setWidth(static_cast<float>(m_sceneWidth));
    updateSceneRects();
}

void WellLogsScene::removeTrack(int trackNumber)
{
    if (trackNumber < 0 || trackNumber >= m_tracks.size())
        return;
    TrackItem *track = m_tracks.takeAt(trackNumber);
    leavePanelOf(track);
    delete track;
    if (m_currentTrackIndex == trackNumber)
        m_currentTrackIndex = -1;
    else if (m_currentTrackIndex > trackNumber)
        --m_currentTrackIndex;
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
        if (m_depthType == logview::MeasuredDepth)
            track->setMdFlag();
        else if (m_depthType == logview::TvdSubsea)
            track->setTvdssFlag();
        track->setDepthUnit(static_cast<logview::DepthUnit>(m_depthUnit));
    }
    if (!m_tracks.isEmpty())
        m_trackHeight = m_tracks.first()->axis().heightPx();
    placeMarkers([this](const MarkerItem &marker) { return displayDepth(marker); });
    updateSceneRects();
}

// Markers stand at their stored depths here, whatever depth type and unit the display has.
void WellLogsScene::applyDepthRange()
{
    for (TrackItem *track : qAsConst(m_tracks))
        track->setDepthRange(m_startDepth, m_endDepth);
    if (!m_tracks.isEmpty())
        m_trackHeight = m_tracks.first()->axis().heightPx();
    placeMarkers([](const MarkerItem &marker) { return static_cast<double>(marker.depth()); });
    updateSceneRects();
}

void WellLogsScene::applyScale(float scale)
{
    for (TrackItem *track : qAsConst(m_tracks))
        track->setScale(scale);
    relayoutTracks();
    for (MarkerItem *marker : qAsConst(m_markers))
        if (markerAxis().contains(displayDepth(*marker)))
            placeMarker(marker, displayDepth(*marker));
}

logview::DepthAxis WellLogsScene::markerAxis() const
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

void WellLogsScene::placeMarker(MarkerItem *marker, double displayDepth)
{
    marker->setPos(0, markerAxis().toScenePixel(displayDepth));
}

template<class DepthOf>
void WellLogsScene::placeMarkers(const DepthOf &depthOf)
{
    const QVector<MarkerItem *> markers = m_markers;
    for (MarkerItem *marker : markers) {
        const double depth = depthOf(*marker);
        if (markerAxis().contains(depth))
            placeMarker(marker, depth);
        else
            destroyMarker(marker);
    }
}

bool WellLogsScene::addMarker(MarkerItem *marker)
{
    const logview::DepthReference measured{logview::MeasuredDepth, static_cast<logview::DepthUnit>(m_depthUnit), 0};
    const auto depth = static_cast<double>(measured.toDisplay(static_cast<double>(marker->depth())));
    if (!markerAxis().contains(depth)) {
        delete marker;
        return false;
    }
    addItem(marker);
    m_markers.append(marker);
    m_pickedMarker = marker;
    marker->setWidth(static_cast<float>(m_sceneWidth));
    placeMarker(marker, depth);
    return true;
}

MarkerItem *WellLogsScene::findMarker(const QString &markerName) const
{
    const auto found = std::find_if(m_markers.begin(), m_markers.end(), [&markerName](const MarkerItem *marker) {
        return marker->markerName() == markerName;
    });
    return found == m_markers.end() ? nullptr : *found;
}

MarkerItem *WellLogsScene::findStoredMarker(const QString &markerName) const
{
    for (MarkerItem *marker : m_markers)
        if (marker->markerName() == markerName && !m_unsavedMarkers.contains(marker))
            return marker;
    return nullptr;
}

void WellLogsScene::deleteMarker(const QString &markerName)
{
    if (MarkerItem *marker = findMarker(markerName))
        destroyMarker(marker);
}

void WellLogsScene::destroyMarker(MarkerItem *marker)
{
    leavePanelOf(marker);
    m_markers.removeOne(marker);
    if (m_pickedMarker == marker)
        m_pickedMarker = nullptr;
    m_unsavedMarkers.removeOne(marker);
    delete marker;
    update();
}

void WellLogsScene::movePickedMarker(MarkerItem *marker, double sceneY)
{
    const double y = std::clamp(sceneY, 0.0, static_cast<double>(m_trackHeight));
    marker->setDepth(static_cast<float>(depthReference().toMeasuredM(markerAxis().toDepth(y))));
    marker->setPos(0, y);
}

void WellLogsScene::selectOnly(QGraphicsItem *item)
{
    clearSelection();
    item->setSelected(true);
    if (const auto *track = qgraphicsitem_cast<TrackItem *>(item))
        m_currentTrackIndex = track->trackNumber();
}

void WellLogsScene::clickedInHeader(QGraphicsItem *item)
{
    selectOnly(item);
    if (m_mode == Mode::None)
        showPanelOfSelection();
}

// A header shows as selected exactly when what it stands for is; clicks beside the headers change nothing.
void WellLogsScene::selectHeadersAsTheirItems()
{
    const QSignalBlocker blocker(m_headerScene);
    for (const TrackItem *track : qAsConst(m_tracks)) {
        if (track->header())
            track->header()->setSelected(track->isSelected());
        for (const CurveItem *curve : track->curves())
            if (curve->header())
                curve->header()->setSelected(curve->isSelected());
    }
}

void WellLogsScene::showPanel(QWidget *panel)
{
    m_shownPanel = panel;
    emit propertyWidgetChanged(panel);
}

void WellLogsScene::showOwnPanel()
{
    showPanel(m_panel);
}

void WellLogsScene::showPanelOfSelection()
{
    bool isShown = false;
    for (QGraphicsItem *item : selectedItems()) {
        QWidget *panel = panelOf(item);
        isShown = panel != nullptr;
        if (!panel)
            continue;
        if (const auto *track = qgraphicsitem_cast<TrackItem *>(item))
            m_currentTrackIndex = track->trackNumber();
        showPanel(panel);
    }
    if (!isShown)
        showOwnPanel();
}

// Before an item goes: its panel, or that of a child, goes with it.
void WellLogsScene::leavePanelOf(QGraphicsItem *item)
{
    if (!m_shownPanel)
        return;
    QList<QGraphicsItem *> leaving = item->childItems();
    leaving.append(item);
    for (QGraphicsItem *child : qAsConst(leaving)) {
        const auto *curve = qgraphicsitem_cast<CurveItem *>(child);
        const QWidget *panel = curve ? curve->existingPanel() : panelOf(child);
        if (panel == m_shownPanel) {
            showOwnPanel();
            return;
        }
    }
}

void WellLogsScene::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->accept();
        return;
    }
    QGraphicsScene::mousePressEvent(event);
    if (m_mode == Mode::None)
        showPanelOfSelection();
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
        showPanelOfSelection();
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
    auto *marker = new MarkerItem(this);
    marker->setWellName(m_well.wellName);
    marker->setMarkerName(QStringLiteral("New_%1").arg(m_newMarkerCounter));
    marker->setDepth(0);
    marker->setWidth(static_cast<float>(m_sceneWidth));
    m_markers.append(marker);
    addItem(marker);
    m_pickedMarker = marker;
    m_unsavedMarkers.append(marker);
    ++m_newMarkerCounter;
}

void WellLogsScene::savePickedMarkerClicked()
{
    m_mode = Mode::SavePickedMarker;
}

void WellLogsScene::deleteTrack()
{
    m_mode = Mode::DeleteTrackOrCurve;
    if (m_currentTrackIndex >= 0)
        emit sendDeleteTrack(m_currentTrackIndex);
}

void WellLogsScene::deleteCurve()
{
    m_mode = Mode::DeleteTrackOrCurve;
    auto *curve = qgraphicsitem_cast<CurveItem *>(selectedItems().value(0));
    if (!curve)
        return;
    leavePanelOf(curve);
    delete curve;
    emit laidOut();
}

void WellLogsScene::deleteMarker()
{
    m_mode = Mode::DeleteMarker;
    if (auto *marker = qgraphicsitem_cast<MarkerItem *>(selectedItems().value(0)))
        destroyMarker(marker);
}
