#include "correlation/correlationview.h"

#include "correlation/correlationviewproperty.h"
#include "datastore/projectdata.h"
#include "logview/curveitem.h"
#include "logview/geometry/displaystyle.h"
#include "logview/geometry/samplelookup.h"
#include "logview/trackheaders.h"
#include "logview/trackitem.h"
#include "logview/viewkeys.h"
#include "logview/welldisplaydata.h"
#include "logview/welllogsscene.h"

#include <QGraphicsScene>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace {

constexpr float scaleStep = 50;
constexpr float scaleBelowZero = 10;
constexpr double airAboveFirstSample = 0.05; // of the height of the view

} // namespace

CorrelationView::CorrelationView(ProjectData &projectData, QGraphicsScene *headerScene, QWidget *parent)
    : PaperView(nullptr, parent)
    , m_data(projectData)
    , m_headerScene(headerScene)
    , m_scene(std::make_unique<QGraphicsScene>())
    , m_headers(std::make_unique<TrackHeaders>(headerScene))
    , m_panel(new CorrelationViewProperty(this))
    , m_wells(projectData, logicalDpiX())
    , m_drag(this)
    , m_dotsPerInch(logicalDpiX())
{
    setObjectName(QStringLiteral("correlationView"));
    for (QGraphicsScene *scene : {m_scene.get(), headerScene})
        scene->setItemIndexMethod(QGraphicsScene::NoIndex); // high and broad items: an index finds nothing out
    setScene(m_scene.get());
}

// Items tell their headers, which lie in the other scene, that they go.
CorrelationView::~CorrelationView()
{
    m_scene->clear();
    m_headerScene->clear();
    setScene(nullptr);
    delete m_panel;
}

CorrelationViewProperty *CorrelationView::panel() const
{
    return m_panel;
}

void CorrelationView::load(const CorrelationProperties &properties, const QString &flatMarker)
{
    // A scale that the user chose in the view stays until another one is saved.
    if (!m_isReady || properties.scale != m_properties.scale) {
        m_scale = static_cast<float>(properties.scale);
        m_panel->setScale(properties.scale);
    }
    m_properties = properties;
    m_wells.forgetTemplates();
    m_panel->setCorrelationName(properties.name);
    m_panel->setMarkers(properties.markers);
    m_panel->setFlatMarker(flatMarker);
    m_flatMarker = m_panel->flatMarker();
    m_isOpening = m_isOpening || !m_isReady;
    m_isReady = true;
    redraw();
}

void CorrelationView::reload(const QString &wellName)
{
    m_wells.forgetWell(wellName);
    redraw();
}

void CorrelationView::reloadTemplates()
{
    m_wells.forgetTemplates();
    redraw();
}

void CorrelationView::setScaleFactor(float scale)
{
    m_scale = scale;
    redraw();
}

void CorrelationView::setDepthType(int depthType)
{
    m_depthType = depthType;
    redrawKeepingDepth();
}

void CorrelationView::setDepthUnit(logview::DepthUnit unit)
{
    m_depthUnit = unit;
    redrawKeepingDepth();
}

void CorrelationView::setFlatMarker(const QString &markerName)
{
    m_flatMarker = markerName;
    redrawKeepingDepth();
}

void CorrelationView::setWellDistance(int distance)
{
    m_wellDistance = distance;
    redraw();
}

void CorrelationView::redraw()
{
    if (!m_isReady)
        return;
    ++m_redrawCount;
    m_headerScene->clear(); // first: headers that are gone are told nothing
    m_scene->clear();
    m_tracks.clear();
    m_columns.clear();
    m_drawings.clear();
    m_notes.clear();
    for (const CorrelationWell &named : qAsConst(m_properties.wells))
        placeWell(named);

    const double width = m_columns.isEmpty() ? 0 : correlation::nextLeft(m_columns.last().right);
    const QRectF area(0, 0, width, correlation::sceneHeight(m_columns));
    m_scene->setSceneRect(area);
    m_headerScene->setSceneRect(0, 0, width, WellLogsScene::headerSceneHeight);
    const bool wasPlacing = std::exchange(m_isPlacing, true);
    makeWellsNearView();
    emit laidOut();
    makeWellsNearView(); // the view may stand elsewhere now
    placeOpening();
    m_isPlacing = wasPlacing;
    if (!m_notes.isEmpty())
        emit statusChanged(m_notes);
}

void CorrelationView::addNote(const QString &note)
{
    m_notes += (m_notes.isEmpty() ? QString() : QStringLiteral(". ")) + note;
}

// The well that is looked at keeps the measured depth in the middle of the view; the others follow it.
void CorrelationView::redrawKeepingDepth()
{
    const int column = firstColumnInView();
    const double middle = viewport()->height() / 2.0;
    double depthM = 0;
    if (column >= 0) {
        const correlation::WellColumn &before = m_columns.at(column);
        depthM = before.reference.toMeasuredM(before.axis.toDepth(mapToScene(0, 0).y() + middle));
    }
    redraw();
    const std::optional<double> y =
        column >= 0 && column < m_columns.size() ? m_columns.at(column).toY(depthM) : std::nullopt;
    if (y && !m_isOpening)
        verticalScrollBar()->setValue(logview::toInt(std::round(*y - middle)));
}

int CorrelationView::firstColumnInView() const
{
    const double left = mapToScene(0, 0).x();
    for (int i = 0; i < m_columns.size(); ++i)
        if (m_columns.at(i).right > left && m_columns.at(i).axis.height > 0)
            return i;
    return -1;
}

// The wells begin at 0, but their logs may begin far below.
double CorrelationView::firstSampleY() const
{
    std::optional<double> first;
    for (const TrackItem *track : m_tracks) {
        for (const CurveItem *curve : track->curves()) {
            const std::optional<double> depthM = logview::shallowestDepthM(curve->samples());
            if (!depthM)
                continue;
            const double y = track->axis().toPixel(static_cast<double>(track->depthReference().toDisplay(*depthM)));
            first = std::min(y, first.value_or(y));
        }
    }
    return first.value_or(0);
}

void CorrelationView::placeOpening()
{
    if (m_isOpening)
        verticalScrollBar()->setValue(
            logview::toInt(std::round(m_openingY - airAboveFirstSample * viewport()->height())));
}

void CorrelationView::paintEvent(QPaintEvent *event)
{
    m_isOpening = false;
    PaperView::paintEvent(event);
}

void CorrelationView::resizeEvent(QResizeEvent *event)
{
    const bool wasPlacing = std::exchange(m_isPlacing, true);
    PaperView::resizeEvent(event);
    makeWellsNearView();
    placeOpening();
    m_isPlacing = wasPlacing;
}

void CorrelationView::scrollContentsBy(int dx, int dy)
{
    PaperView::scrollContentsBy(dx, dy);
    if (dy != 0 && !m_isPlacing)
        m_isOpening = false;
    if (dx != 0 && !m_isPlacing)
        makeWellsNearView();
}

void CorrelationView::placeWell(const CorrelationWell &named)
{
    const CorrelationWells::Well *well = m_wells.well(named.wellName);
    if (!well) {
        addNote(QStringLiteral("The survey has no well \"%1\"").arg(named.wellName));
        return;
    }
    bool isTemplateGone = false;
    Drawing drawing;
    drawing.wellName = named.wellName;
    drawing.tracks = m_wells.tracks(named, &isTemplateGone);
    if (isTemplateGone)
        addNote(QStringLiteral("\"%1\" has no template \"%2\" and is drawn with \"Default\"")
                    .arg(named.wellName, named.templateName));

    const WellRecord &record = well->data->record();
    correlation::WellExtent extent;
    extent.totalDepthM = record.totalDepth;
    extent.kbElevationM = record.kbElevation;
    const auto flat = well->markers.constFind(m_flatMarker);
    if (!m_flatMarker.isEmpty() && flat != well->markers.cend())
        extent.flatDepthM = flat->depthM;

    correlation::WellColumn column;
    column.left = m_columns.isEmpty() ? 0 : correlation::nextLeft(m_columns.last().right);
    column.axis = correlation::axisOf(extent, logview::DepthType(m_depthType), m_depthUnit, m_scale);
    column.reference = {logview::DepthType(m_depthType), m_depthUnit, record.kbElevation};
    column.markers = well->markers;
    column.right = column.left;
    for (const TrackInfo &track : qAsConst(drawing.tracks))
        column.right += track.type == DepthTrack
            ? static_cast<double>(static_cast<float>(well->data->initialTrackWidth(DepthTrack)))
            : static_cast<double>(TrackItem::widthOf(trackWidthInches()));
    m_columns.append(column);
    m_drawings.append(drawing);
}

float CorrelationView::trackWidthInches() const
{
    return static_cast<float>(correlation::trackWidthPx(m_properties.trackWidth, m_dotsPerInch))
        / logview::widthPixelsPerInch;
}

// What is half a view away can be scrolled to at once.
void CorrelationView::makeWellsNearView()
{
    const QRectF seen = mapToScene(viewport()->rect()).boundingRect();
    makeWells(seen.left() - seen.width() / 2, seen.right() + seen.width() / 2);
    if (m_isOpening)
        m_openingY = firstSampleY();
}

void CorrelationView::makeAllWells()
{
    if (!m_columns.isEmpty())
        makeWells(0, m_columns.last().right);
}

void CorrelationView::makeWells(double left, double right)
{
    int first = 0;
    while (first < m_columns.size() && m_columns.at(first).right < left)
        ++first;
    int last = first - 1;
    while (last + 1 < m_columns.size() && m_columns.at(last + 1).left <= right)
        ++last;
    bool isNew = false;
    for (int i = first; i <= last; ++i) {
        isNew = isNew || !m_drawings.at(i).isMade;
        if (!m_drawings.at(i).isMade)
            makeWell(i);
    }
    drawConnections(first, last); // also of wells that were made from two sides
    if (!isNew)
        return;
    std::sort(m_tracks.begin(), m_tracks.end(),
              [](const TrackItem *a, const TrackItem *b) { return a->x() < b->x(); });
    if (!m_isPlacing)
        emit laidOut(); // their headers may be higher
}

void CorrelationView::setStatusLabel(QString statusText)
{
    const auto *track = qobject_cast<const TrackItem *>(sender());
    emit statusChanged(track ? track->wellName() + QStringLiteral(" | ") + statusText : statusText);
}

void CorrelationView::changeScaleKeepingPlace(double scale)
{
    QScrollBar *bar = verticalScrollBar();
    const double place = bar->maximum() > 0 ? bar->value() / static_cast<double>(bar->maximum()) : 0;
    m_panel->enterScale(scale);
    bar->setValue(static_cast<int>(place * bar->maximum()));
}

// One step whatever the size of the turn.
void CorrelationView::wheelEvent(QWheelEvent *event)
{
    const int turn = event->angleDelta().y();
    if (event->modifiers() != Qt::ControlModifier) {
        PaperView::wheelEvent(event);
        return;
    }
    event->accept();
    if (turn == 0)
        return;
    float scale = m_scale + (turn < 0 ? scaleStep : -scaleStep);
    if (scale < 0)
        scale = scaleBelowZero;
    changeScaleKeepingPlace(static_cast<double>(scale));
}

void CorrelationView::mousePressEvent(QMouseEvent *event)
{
    const bool isLeftWithCtrl = event->button() == Qt::LeftButton && event->modifiers() == Qt::ControlModifier;
    PaperView::mousePressEvent(event);
    if (isLeftWithCtrl || event->button() == Qt::MiddleButton) {
        m_drag.begin(event->pos());
        m_hasPanned = false;
    }
    if (event->button() == Qt::LeftButton)
        emit propertyWidgetChanged(m_panel);
    else
        event->accept();
}

void CorrelationView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drag.isOn() && !(event->buttons() & (Qt::LeftButton | Qt::MiddleButton)))
        m_drag.end(); // the release went elsewhere
    if (!m_drag.isOn()) {
        PaperView::mouseMoveEvent(event);
        return;
    }
    m_hasPanned = true;
    m_drag.moveTo(event->pos());
}

void CorrelationView::mouseReleaseEvent(QMouseEvent *event)
{
    const bool hasPanned = m_drag.isOn() && m_hasPanned;
    m_drag.end();
    QGraphicsItem *pressed = m_scene->mouseGrabberItem();
    if (hasPanned && pressed)
        pressed->ungrabMouse(); // the item that was pressed was not clicked
    PaperView::mouseReleaseEvent(event);
}

void CorrelationView::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_0)
        showAllDepths();
    else if (!logview::scrollByKey(*this, *event))
        PaperView::keyPressEvent(event);
}

// The scale at which the longest well is as high as the view.
void CorrelationView::showAllDepths()
{
    const double highest = correlation::sceneHeight(m_columns) - logview::sceneMarginBelow;
    const double room = viewport()->height() - logview::sceneMarginBelow;
    if (m_columns.isEmpty() || room <= 0 || m_scale <= 0)
        return;
    m_panel->enterScale(std::ceil(static_cast<double>(m_scale) * highest / room));
    verticalScrollBar()->setValue(verticalScrollBar()->minimum());
    horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
}
