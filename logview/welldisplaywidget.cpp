#include "logview/welldisplaywidget.h"

#include "base/waitcursor.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "logview/curveitem.h"
#include "logview/displaypicture.h"
#include "logview/geometry/samplelookup.h"
#include "logview/infront.h"
#include "logview/markeritem.h"
#include "logview/markersaving.h"
#include "logview/picturesaving.h"
#include "logview/trackitem.h"
#include "logview/viewpair.h"
#include "logview/welldisplaydata.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsview.h"
#include "logview/withoutselection.h"
#include "templates/templatestore.h"

#include <QDockWidget>
#include <QLabel>
#include <QSet>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace {

constexpr double airAboveFirstSample = 0.05; // of the height of the view
constexpr int mostNamesTold = 3;
constexpr double smallestElevationTold = 0.01; // metres

// What to say of a display that shows nothing. The templates that a first launch makes are known from the next on.
QString emptyDisplayText(const Project &project, const QString &templateName)
{
    const bool isNew =
        !project.globalTemplateNames.contains(templateName) && globalTemplateNames(project).contains(templateName);
    if (isNew)
        return QStringLiteral(
                   "The template \"%1\" is new: it can be shown after \"Sync Data\", or from the next launch on.")
            .arg(templateName);
    return QStringLiteral("The template \"%1\" has no tracks.").arg(templateName);
}

QString offScaleText(const QStringList &curves)
{
    return QStringLiteral(
               "Not drawn: %1. On a logarithmic track the left value has to be above 0, and the right one above "
               "the left one.")
        .arg(curves.join(QStringLiteral(", ")));
}

QString emptyRangeText()
{
    return QStringLiteral("Nothing can be drawn: the start depth is not above the end depth.");
}

QString outsideText(const QStringList &names)
{
    return names.size() == 1
        ? QStringLiteral("The marker \"%1\" is outside the depth range.").arg(names.first())
        : QStringLiteral("%1 markers are outside the depth range: %2%3.")
              .arg(QString::number(names.size()), names.mid(0, mostNamesTold).join(QStringLiteral(", ")),
                   names.size() > mostNamesTold ? QStringLiteral(", …") : QString());
}

// On land the elevations may take all markers of a well out of sight: that has to be said.
QString elevationsText(const QVector<WellMarker> &outside)
{
    QString text;
    const double elevationsM = outside.first().measuredDepth - outside.first().subseaDepth;
    if (std::abs(elevationsM) >= smallestElevationTold)
        text +=
            QStringLiteral(" Lines stand at their depth along hole less kelly bushing and ground level, here %1 m.")
                .arg(QString::number(elevationsM, 'f', 2));
    return text;
}

} // namespace

WellDisplayWidget::WellDisplayWidget(ProjectData &projectData, const QString &wellName, const QString &templateName,
                                     QDockWidget *propertiesDock, QWidget *parent)
    : QWidget(parent)
    , m_data(projectData)
    , m_wellName(wellName)
    , m_dock(propertiesDock)
    , m_headerScene(std::make_unique<QGraphicsScene>())
    , m_scene(std::make_unique<WellLogsScene>(nullptr, m_headerScene.get()))
    , m_statusLine(new QLabel)
{
    setObjectName(QStringLiteral("WellDisplayWidget"));
    setWindowTitle(wellName);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_logView = new WellLogsView(m_scene.get());
    m_logView->setObjectName(QStringLiteral("logView"));
    m_views = new ViewPair(m_headerScene.get(), m_logView);
    auto *views = new QHBoxLayout;
    views->addWidget(m_views);
    layout->addLayout(views, 1);
    m_statusLine->setObjectName(QStringLiteral("statusLine"));
    m_statusLine->setTextFormat(Qt::PlainText);
    m_statusLine->setMinimumWidth(1); // a long read-out must not widen the window
    m_statusLine->setText(QStringLiteral("0")); // nor may the first one move what it reads
    m_statusLine->setMinimumHeight(m_statusLine->sizeHint().height());
    m_statusLine->clear();
    layout->addWidget(m_statusLine);
    buildDisplay(templateName);

    connect(m_scene.get(), &WellLogsScene::propertyWidgetChanged, this, &WellDisplayWidget::setPropertyWidget);
    connect(m_scene.get(), &WellLogsScene::sendDeleteTrack, this, &WellDisplayWidget::deleteTrack);
    const auto showScenes = [this] { m_logView->depthPlace().keep([this] { m_views->showScenes(); }); };
    connect(m_scene.get(), &WellLogsScene::laidOut, this, showScenes);
    connect(m_scene.get(), &WellLogsScene::laidOut, this, &WellDisplayWidget::tellEmptyRange);
    connect(m_scene.get(), &WellLogsScene::markersLeftBehind, this,
            [this](const QStringList &names) { setStatusLabel(outsideText(names)); });
    connect(&m_scene->markers(), &DisplayMarkers::storedNameEdited, this, [this] {
        setStatusLabel(QStringLiteral("Only the label in this display changed: the marker keeps its name in the "
                                      "well %1.")
                           .arg(m_wellName));
    });
    connect(m_scene.get(), &WellLogsScene::markersDropped, this,
            [this](const QStringList &names) { emit markersDropped(m_wellName, names); });
    connect(m_logView, &WellLogsView::saveMarkerRequested, this, &WellDisplayWidget::saveMarker);
    connect(m_logView, &WellLogsView::pickingHint, this, &WellDisplayWidget::setStatusLabel);
    showScenes();
    openAtFirstSample();
    showScenePanel();
}

// A panel in the dock belongs to an item of the scene and goes with it.
WellDisplayWidget::~WellDisplayWidget()
{
    if (m_dock && m_dock->widget() && m_dock->widget() == m_scene->selection().shownPanel())
        m_dock->setWidget(nullptr);
    m_scene->disconnect(this);
}

void WellDisplayWidget::buildDisplay(const QString &templateName)
{
    const auto well = std::make_shared<WellDisplayData>(m_data, m_wellName);
    m_scene->beginDisplay(well->record());
    for (TrackItem *track : makeTracks(templateName, well))
        m_scene->addTrack(track);
    m_scene->endDisplay();
}

void WellDisplayWidget::applyTemplate(const QString &templateName)
{
    setStatusLabel(QString());
    m_scene->replaceTracks(makeTracks(templateName, std::make_shared<WellDisplayData>(m_data, m_wellName)));
}

QVector<TrackItem *> WellDisplayWidget::makeTracks(const QString &templateName,
                                                   const std::shared_ptr<WellDisplayData> &well)
{
    if (well->initialTrackWidth(LinearTrack) <= 0)
        well->setDotsPerInch(logicalDpiX());
    QVector<TrackItem *> tracks;
    m_usesDefaultLogs = false;
    for (const TrackInfo &definition : loadTemplate(m_data.project, templateName, m_wellName)) {
        const TrackInfo resolved = well->resolved(definition);
        m_usesDefaultLogs = m_usesDefaultLogs
            || std::any_of(definition.curves.begin(), definition.curves.end(),
                           [](const TemplateCurveInfo &curve) { return curve.curve == defaultCurveName(); });
        auto *track = new TrackItem(resolved, well, well->totalDepthM());
        track->setPerforationsShown(true);
        connect(track, &TrackItem::hovered, this, &WellDisplayWidget::setStatusLabel);
        connect(track, &TrackItem::typeChosen, this, [this, track] {
            const QStringList curves = WellDisplayData::curvesOffScale(track->definition());
            setStatusLabel(curves.isEmpty() ? QString() : offScaleText(curves));
        });
        tracks.append(track);
    }
    m_unreadLogs = well->unreadLogs();
    if (tracks.isEmpty())
        setStatusLabel(emptyDisplayText(m_data.project, templateName));
    else
        tellNotDrawn(tracks, well->isWithoutLogs());
    return tracks;
}

void WellDisplayWidget::tellNotDrawn(const QVector<TrackItem *> &tracks, bool isWithoutLogs)
{
    QStringList withoutLog;
    QStringList offScale;
    for (const TrackItem *track : tracks) {
        withoutLog += WellDisplayData::groupsWithoutLog(track->definition());
        offScale += WellDisplayData::curvesOffScale(track->definition());
    }
    withoutLog.removeDuplicates();
    offScale.removeDuplicates();
    QStringList told;
    if (!withoutLog.isEmpty() && isWithoutLogs)
        told.append(QStringLiteral("The well %1 has no logs.").arg(m_wellName));
    else if (!withoutLog.isEmpty())
        told.append(QStringLiteral("No default log for %1 in %2: see Well Data Manager")
                        .arg(withoutLog.join(QStringLiteral(", ")), m_wellName));
    if (!offScale.isEmpty())
        told.append(offScaleText(offScale));
    if (!told.isEmpty())
        setStatusLabel(told.join(QStringLiteral(" | ")));
}

void WellDisplayWidget::reloadDefaultLogs(const QString &templateName)
{
    if (m_usesDefaultLogs)
        reloadLogs(templateName);
}

void WellDisplayWidget::reloadLogs(const QString &templateName)
{
    applyTemplate(templateName);
    tellUnread();
}

void WellDisplayWidget::synchronise(const QString &templateName)
{
    const WellsCatalogue &catalogue = m_data.catalogue;
    const std::optional<WellRecord> record =
        catalogue.readWellRecord(catalogue.indexOf(m_wellName), WellsCatalogue::OnFailure::BeSilent);
    if (record)
        m_scene->followWell(*record);
    const QPointer<WellDisplayWidget> self = this;
    if (!loadTemplate(m_data.project, templateName, m_wellName).isEmpty()) // it may be gone: what shows of it stays
        reloadLogs(templateName);
    if (self)
        refreshMarkers();
}

void WellDisplayWidget::reloadSideFiles()
{
    if (m_scene->tracks().isEmpty())
        return;
    m_scene->tracks().first()->well().forgetSideFiles(); // shared by all tracks
    const QVector<TrackItem *> tracks = m_scene->tracks();
    for (TrackItem *track : tracks)
        track->reloadSideFiles();
}

// The depth range begins at 0, but the logs may begin far below.
void WellDisplayWidget::openAtFirstSample()
{
    std::optional<double> first;
    for (const TrackItem *track : m_scene->tracks()) {
        for (const CurveItem *curve : track->curves()) {
            const std::optional<double> depthM = logview::shallowestDepthM(curve->samples());
            if (depthM)
                first = std::min(*depthM, first.value_or(*depthM));
        }
    }
    if (first)
        m_logView->depthPlace().open(*first, airAboveFirstSample);
}

double WellDisplayWidget::depthInView() const
{
    return m_logView->depthPlace().middleM();
}

void WellDisplayWidget::openAtDepth(double depthM)
{
    m_logView->depthPlace().open(depthM, 0.5);
}

void WellDisplayWidget::openAs(const WellDisplayWidget &other)
{
    m_scene->panel()->enterAllOf(*other.m_scene->panel());
    openAtDepth(other.depthInView());
}

QGraphicsView *WellDisplayWidget::headerView() const
{
    return m_views->headerView();
}

void WellDisplayWidget::setPropertyWidget(QWidget *prtyWidget)
{
    if (m_dock && logview::isInFront(*this))
        m_dock->setWidget(prtyWidget);
}

void WellDisplayWidget::showScenePanel()
{
    m_scene->selection().showOwnPanel();
}

void WellDisplayWidget::showCurrentPanel()
{
    m_scene->selection().showPanelOfSelection();
}

void WellDisplayWidget::deleteTrack(int selectedTrackNo)
{
    m_scene->removeTrack(selectedTrackNo);
}

void WellDisplayWidget::setStatusLabel(QString label)
{
    m_statusLine->setText(label);
}

QString WellDisplayWidget::statusText() const
{
    return m_statusLine->text();
}

void WellDisplayWidget::tellEmptyRange()
{
    if (m_scene->startDepth() >= m_scene->endDepth())
        setStatusLabel(emptyRangeText());
    else if (statusText() == emptyRangeText())
        setStatusLabel(QString());
}

void WellDisplayWidget::tellUnread()
{
    const QStringList unread = std::exchange(m_unreadLogs, {});
    if (!unread.isEmpty())
        m_data.tellUnread(m_wellName, unread);
}

// The markers are read when the first of them is asked for; a well that cannot be read is told once.
void WellDisplayWidget::beginMarkers()
{
    if (!m_isTakingMarkers)
        m_scene->markers().beginChanges();
    m_isTakingMarkers = true;
    m_areMarkersRead = false;
}

void WellDisplayWidget::endMarkers()
{
    if (!m_isTakingMarkers)
        return;
    m_isTakingMarkers = false;
    m_markersByName.clear();
    m_scene->markers().endChanges();
    tellOutside();
}

// They are not kept: the boxes of the project tree must not say that they show.
void WellDisplayWidget::tellOutside()
{
    const QVector<WellMarker> outside = std::exchange(m_outside, {});
    if (outside.isEmpty())
        return;
    QStringList names;
    for (const WellMarker &marker : outside)
        names.append(marker.name);
    setStatusLabel(outsideText(names) + elevationsText(outside));
    emit markersDropped(m_wellName, names);
}

void WellDisplayWidget::readMarkers()
{
    m_areMarkersRead = true;
    m_markersByName.clear();
    const WellsCatalogue &catalogue = m_data.catalogue;
    const auto markers =
        catalogue.readWellMarkers(catalogue.indexOf(m_wellName), WellsCatalogue::OnFailure::BeSilent);
    if (!markers) {
        m_data.tellUnread(m_wellName);
        return;
    }
    m_markersByName.reserve(markers->size());
    for (const WellMarker &marker : *markers)
        if (!m_markersByName.contains(marker.name))
            m_markersByName.insert(marker.name, marker);
}

void WellDisplayWidget::addMarker(const QString &wellName, const QString &markerName)
{
    if (wellName != m_wellName || m_scene->markers().findStored(markerName))
        return;
    if (!m_isTakingMarkers || !m_areMarkersRead)
        readMarkers();
    const auto found = m_markersByName.constFind(markerName);
    if (found == m_markersByName.constEnd())
        return;
    auto *item = new MarkerItem;
    item->setWellName(wellName);
    item->setMarkerName(markerName);
    item->setDepth(static_cast<float>(found->subseaDepth));
    item->setLineColor(found->color);
    m_takenMarkers.insert(markerName, *found);
    if (m_scene->addMarker(item))
        return;
    m_outside.append(*found);
    if (!m_isTakingMarkers)
        tellOutside();
}

void WellDisplayWidget::removeMarker(const QString &wellName, const QString &markerName)
{
    MarkerItem *marker = wellName == m_wellName ? m_scene->markers().findStored(markerName) : nullptr;
    if (marker)
        m_scene->markers().destroy(marker);
}

void WellDisplayWidget::removeGoneMarkers()
{
    const int well = m_data.catalogue.indexOf(m_wellName);
    const QStringList stored = well < 0 ? QStringList() : m_data.catalogue.markerNames(well);
    const QSet<QString> names(stored.begin(), stored.end());
    const QVector<MarkerItem *> shown = m_scene->markers().all();
    m_scene->markers().beginChanges();
    for (MarkerItem *marker : shown)
        if (!m_scene->markers().unsaved().contains(marker) && !names.contains(marker->markerName()))
            m_scene->markers().destroy(marker);
    m_scene->markers().endChanges();
}

// What the user changed in the display, and not in the well, stays as he left it.
void WellDisplayWidget::refreshMarkers()
{
    removeGoneMarkers();
    const auto isStored = [this](MarkerItem *marker) { return !m_scene->markers().unsaved().contains(marker); };
    const QVector<MarkerItem *> shown = m_scene->markers().all();
    if (std::none_of(shown.begin(), shown.end(), isStored))
        return;
    readMarkers();
    QStringList dropped;
    m_scene->markers().beginChanges();
    for (MarkerItem *marker : shown) {
        const auto now = m_markersByName.constFind(marker->markerName());
        if (!isStored(marker) || now == m_markersByName.constEnd())
            continue;
        const auto before = m_takenMarkers.constFind(marker->markerName());
        const bool isKnown = before != m_takenMarkers.constEnd();
        const bool isMoved =
            isKnown && (before->measuredDepth != now->measuredDepth || before->subseaDepth != now->subseaDepth);
        if (isKnown && before->color != now->color)
            marker->setLineColor(now->color);
        m_takenMarkers.insert(marker->markerName(), *now);
        if (!isMoved)
            continue;
        marker->setDepth(static_cast<float>(now->subseaDepth));
        if (!m_scene->placeStoredMarker(marker))
            dropped.append(now->name);
    }
    m_scene->markers().endChanges();
    if (!m_isTakingMarkers)
        m_markersByName.clear();
    if (!dropped.isEmpty())
        emit markersDropped(m_wellName, dropped);
}

void WellDisplayWidget::saveMarker(MarkerItem *marker)
{
    const QPointer<WellDisplayWidget> self = this;
    const QString name =
        savePickedMarker(m_data, m_wellName, {marker->markerName(), marker->depth(), marker->lineColor()});
    if (!self || name.isNull())
        return;
    // A box, or the host's news of its markers, may have changed what is shown meanwhile.
    if (m_scene->markers().unsaved().contains(marker)) {
        marker->setMarkerName(name);
        m_scene->markers().setSaved(marker);
        emit markerSaved(m_wellName, name);
    }
    setStatusLabel(QStringLiteral("The marker \"%1\" was saved in the well %2.").arg(name, m_wellName));
}

std::optional<PicturePage> WellDisplayWidget::savePicture()
{
    const logview::SavedPicture saved = logview::saveDisplayPicture(*m_headerScene, *m_scene, m_data.project,
                                                                    windowTitle(), PictureFormat::Tiff, this);
    setStatusLabel(saved.status);
    return saved.page;
}

void WellDisplayWidget::renderTo(QPainter &painter)
{
    const base::WaitCursor cursor;
    const WithoutSelection plain(*m_scene);
    DisplayPicture(*m_headerScene, *m_scene).drawInto(painter);
}
