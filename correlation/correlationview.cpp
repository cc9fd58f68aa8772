#include "correlation/correlationview.h"

#include "correlation/correlationviewproperty.h"
#include "datastore/projectdata.h"
#include "logview/curveitem.h"
#include "logview/geometry/samplelookup.h"
#include "logview/markeritem.h"
#include "logview/trackheaders.h"
#include "logview/trackitem.h"
#include "logview/viewkeys.h"
#include "logview/welldisplaydata.h"
#include "logview/welllogsscene.h"
#include "logview/wellnameitem.h"

#include <QGraphicsLineItem>
#include <QGraphicsPolygonItem>
#include <QGraphicsScene>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace {

constexpr double zonesZ = 1;
constexpr double linesZ = 2;
constexpr double markersZ = 10;
constexpr double lineWidth = 2;
constexpr float scaleStep = 50;
constexpr float scaleBelowZero = 10;
constexpr float pixelsPerInch = 96;
constexpr double airAboveFirstSample = 0.05; // of the height of the view

QPen connectorPen(const QColor &color)
{
    QPen pen(QBrush(color), lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    pen.setCosmetic(true);
    return pen;
}

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
    m_properties = properties;
    m_wells.forgetTemplates();
    m_scale = static_cast<float>(properties.scale);
    m_panel->setCorrelationName(properties.name);
    m_panel->setScale(properties.scale);
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
    m_nameExtents.clear();
    m_tracks.clear();
    m_columns.clear();
    QStringList notes;
    for (const CorrelationWell &named : qAsConst(m_properties.wells))
        drawWell(named, &notes);
    drawConnections();

    const double width = m_columns.isEmpty() ? 0 : correlation::nextLeft(m_columns.last().right);
    const QRectF area(0, 0, width, correlation::sceneHeight(m_columns));
    m_scene->setSceneRect(area);
    m_headerScene->setSceneRect(0, 0, width, WellLogsScene::headerSceneHeight);
    m_notes = notes.join(QStringLiteral("; "));
    if (m_isOpening)
        m_openingY = firstSampleY();
    const bool wasPlacing = std::exchange(m_isPlacing, true);
    emit laidOut();
    placeOpening();
    m_isPlacing = wasPlacing;
    if (!m_notes.isEmpty())
        emit statusChanged(m_notes);
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
    placeOpening();
    m_isPlacing = wasPlacing;
}

void CorrelationView::scrollContentsBy(int dx, int dy)
{
    PaperView::scrollContentsBy(dx, dy);
    if (dy != 0 && !m_isPlacing)
        m_isOpening = false;
}

void CorrelationView::drawWell(const CorrelationWell &named, QStringList *notes)
{
    const CorrelationWells::Well *well = m_wells.well(named.wellName);
    if (!well) {
        notes->append(QStringLiteral("the survey has no well \"%1\"").arg(named.wellName));
        return;
    }
    bool isTemplateGone = false;
    const QVector<TrackInfo> definitions = m_wells.tracks(named, &isTemplateGone);
    if (isTemplateGone)
        notes->append(QStringLiteral("\"%1\" has no template \"%2\" and is drawn with \"Default\"")
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
    drawTracks(definitions, *well, &column);
    const QStringList &unread = well->data->unreadLogs();
    if (!unread.isEmpty())
        notes->append(
            QStringLiteral("%1 of \"%2\" cannot be read").arg(unread.join(QStringLiteral(", ")), named.wellName));
    if (column.right > column.left)
        m_headerScene->addItem([&] {
            auto *banner = new WellNameItem(named.wellName, static_cast<float>(column.right - column.left), nullptr);
            banner->setPos(column.left, 0);
            return banner;
        }());
    m_columns.append(column);
    drawMarkers(named.wellName, m_columns.last());
}

void CorrelationView::drawTracks(const QVector<TrackInfo> &definitions, const CorrelationWells::Well &well,
                                 correlation::WellColumn *column)
{
    const float end = column->axis.height > 0 ? column->axis.end : column->axis.start;
    const auto widthInches =
        static_cast<float>(correlation::trackWidthPx(m_properties.trackWidth, m_dotsPerInch)) / pixelsPerInch;
    column->right = column->left;
    int number = 0;
    for (const TrackInfo &definition : definitions) {
        auto *track = new TrackItem(definition, well.data, well.data->totalDepthM());
        track->setTrackNumber(number++);
        track->setDepthType(logview::DepthType(m_depthType));
        track->setDepthUnit(m_depthUnit);
        track->setScale(m_scale);
        track->setDepthRange(column->axis.start, end);
        if (definition.type != DepthTrack)
            track->setWidthInches(widthInches);
        track->setPerforationsShown(m_properties.showsPerforations);
        track->setPos(column->right, 0);
        m_scene->addItem(track);
        m_headers->add(track);
        m_headers->place(track);
        connect(track, &TrackItem::hovered, this, &CorrelationView::setStatusLabel);
        m_tracks.append(track);
        column->right += static_cast<double>(track->width());
    }
}

void CorrelationView::drawMarkers(const QString &wellName, const correlation::WellColumn &column)
{
    QVector<MarkerItem *> drawn;
    for (const QString &name : qAsConst(m_properties.markers)) {
        const auto marker = column.markers.constFind(name);
        const std::optional<double> y = marker == column.markers.cend() ? std::nullopt : column.toY(marker->depthM);
        if (!y)
            continue;
        auto *item = new MarkerItem;
        item->setWellName(wellName);
        item->setMarkerName(name);
        item->setDepth(static_cast<float>(marker->depthM));
        item->setLineColor(marker->color);
        item->setWidth(static_cast<float>(column.right - column.left));
        item->setPos(column.left, *y);
        item->setZValue(markersZ);
        item->setNameOnPaper(true); // zones and lines end there
        m_scene->addItem(item);
        drawn.append(item);
    }
    placeNames(drawn);
}

// Tops that stand close together keep their lines where they are; their names move apart. In a crowd some names have
// no room: those lines tell theirs under the mouse.
void CorrelationView::placeNames(const QVector<MarkerItem *> &markers)
{
    QVector<correlation::NameSpan> names;
    names.reserve(markers.size());
    for (const MarkerItem *marker : markers) {
        auto extent = m_nameExtents.find(marker->markerName()); // most wells have the same names
        if (extent == m_nameExtents.end())
            extent = m_nameExtents.insert(marker->markerName(), marker->nameExtent(font()));
        names.append({marker->y() + extent->top(), marker->y() + extent->bottom()});
    }
    const QVector<std::optional<double>> shifts = correlation::nameShifts(names);
    for (int i = 0; i < markers.size(); ++i) {
        MarkerItem *marker = markers.at(i);
        if (!shifts.at(i)) {
            marker->setNameShown(false);
            marker->setToolTip(Qt::convertFromPlainText(marker->markerName()));
        } else if (*shifts.at(i) != 0) {
            marker->setNameShift(*shifts.at(i));
        }
    }
}

void CorrelationView::drawConnections()
{
    for (const correlation::ConnectorLine &connector : correlation::connectorLines(m_columns, m_properties.markers)) {
        QGraphicsLineItem *line = m_scene->addLine(connector.line, connectorPen(connector.color));
        line->setZValue(linesZ);
    }
    if (!m_properties.showsPerforations)
        return;
    for (const correlation::ZonePolygon &zone : correlation::zonePolygons(m_columns, m_properties.zones)) {
        QGraphicsPolygonItem *polygon = m_scene->addPolygon(zone.polygon, QPen(Qt::NoPen), zone.color);
        polygon->setZValue(zonesZ);
    }
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
