#include "logview/welltemplatepreview.h"

#include "base/numberfield.h"
#include "datastore/projectdata.h"
#include "logview/curveitem.h"
#include "logview/paperview.h"
#include "logview/trackheaders.h"
#include "logview/trackitem.h"
#include "logview/viewpair.h"
#include "logview/welldisplaydata.h"
#include "logview/wellnameitem.h"

#include <QGraphicsScene>
#include <QHBoxLayout>
#include <QLabel>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double windowM = 200; // at 1:1000 about as high as the editor
constexpr int depthFieldWidth = 70;
constexpr int mostCurves = 100; // of a track: nobody tells more of them apart

base::NumberField *makeDepthField(const char *name)
{
    auto *field = new base::NumberField;
    field->setObjectName(QString::fromLatin1(name));
    field->setMaximumWidth(depthFieldWidth);
    return field;
}

// The depths between which the tracks have samples; upside down where they have none.
logview::DepthRange sampledRange(const QVector<TrackItem *> &tracks)
{
    logview::DepthRange range{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    for (const TrackItem *track : tracks) {
        for (const CurveItem *curve : track->curves()) {
            const logview::CurveSamples &samples = curve->samples();
            if (samples.isEmpty())
                continue;
            for (const double depth : {samples.depthM(0), samples.depthM(samples.size() - 1)}) {
                range.top = std::min(range.top, depth);
                range.bottom = std::max(range.bottom, depth);
            }
        }
    }
    return range;
}

} // namespace

WellTemplatePreview::WellTemplatePreview(ProjectData &projectData, const QString &wellName, QWidget *parent)
    : TemplatePreview(parent)
    , m_data(projectData)
    , m_wellName(wellName)
    , m_headerScene(std::make_unique<QGraphicsScene>())
    , m_scene(std::make_unique<QGraphicsScene>())
    , m_headers(std::make_unique<TrackHeaders>(m_headerScene.get()))
    , m_view(new PaperView(m_scene.get()))
    , m_views(new ViewPair(m_headerScene.get(), m_view))
    , m_from(makeDepthField("previewFromEdit"))
    , m_to(makeDepthField("previewToEdit"))
{
    setObjectName(QStringLiteral("WellTemplatePreview"));
    m_view->setObjectName(QStringLiteral("previewView"));
    m_views->limitHeaders();
    m_views->leaveOutMarkerNames();
    auto *label = new QLabel(QStringLiteral("Preview, depth (m) :"));
    label->setBuddy(m_from);
    auto *window = new QHBoxLayout;
    window->addWidget(label);
    window->addWidget(m_from);
    window->addWidget(new QLabel(QStringLiteral("to")));
    window->addWidget(m_to);
    window->addStretch();
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->addLayout(window);
    page->addWidget(m_views, 1);
    for (base::NumberField *field : {m_from, m_to})
        connect(field, &base::NumberField::edited, this, &WellTemplatePreview::windowEdited);
}

// Items tell their headers, which lie in the other scene, that they go.
WellTemplatePreview::~WellTemplatePreview()
{
    m_scene->clear();
    m_headerScene->clear();
    delete m_views;
}

QVector<TrackItem *> WellTemplatePreview::tracks() const
{
    QVector<TrackItem *> items;
    for (const Shown &shown : m_shown)
        items.append(shown.item);
    return items;
}

void WellTemplatePreview::showTracks(const QVector<TrackInfo> &tracks, int current)
{
    m_wanted = tracks;
    for (TrackInfo &track : m_wanted)
        if (track.curves.size() > mostCurves)
            track.curves.resize(mostCurves);
    m_current = current;
    m_isUpToDate = false;
    refreshInSight();
}

void WellTemplatePreview::showEvent(QShowEvent *event)
{
    TemplatePreview::showEvent(event);
    refreshInSight();
}

// A preview that comes back into a splitter gets its width again.
void WellTemplatePreview::resizeEvent(QResizeEvent *event)
{
    TemplatePreview::resizeEvent(event);
    refreshInSight();
}

// A splitter does not hide what is collapsed in it, but moves it out of its own area.
bool WellTemplatePreview::isInSight() const
{
    return isVisible() && (isWindow() || parentWidget()->rect().intersects(geometry()));
}

void WellTemplatePreview::refreshInSight()
{
    if (!m_isUpToDate && isInSight())
        refresh();
}

// What is equal to a track that was shown keeps its item, wherever it stands now.
void WellTemplatePreview::refresh()
{
    m_isUpToDate = true;
    if (!m_well) {
        m_well = std::make_shared<WellDisplayData>(m_data, m_wellName);
        if (m_well->initialTrackWidth(LinearTrack) <= 0)
            m_well->setDotsPerInch(logicalDpiX());
    }
    QVector<Shown> next(m_wanted.size());
    for (int i = 0; i < next.size(); ++i) {
        next[i].definition = m_wanted.at(i);
        if (i < m_shown.size() && m_shown.at(i).item && m_shown.at(i).definition == m_wanted.at(i))
            next[i].item = std::exchange(m_shown[i].item, nullptr);
    }
    for (Shown &shown : next)
        if (!shown.item)
            shown.item = takeEqual(shown.definition);
    for (const Shown &gone : qAsConst(m_shown))
        delete gone.item;
    m_shown.clear();
    for (Shown &shown : next)
        if (!shown.item)
            shown.item = make(shown.definition);
    m_shown = next;
    if (!m_hasWindow)
        chooseWindow();
    layOut();
}

TrackItem *WellTemplatePreview::takeEqual(const TrackInfo &definition)
{
    for (Shown &shown : m_shown)
        if (shown.item && shown.definition == definition)
            return std::exchange(shown.item, nullptr);
    return nullptr;
}

TrackItem *WellTemplatePreview::make(const TrackInfo &definition)
{
    ++m_builtTracks;
    auto *item = new TrackItem(m_well->resolved(definition), m_well, m_well->totalDepthM());
    item->setPerforationsShown(true);
    item->setDepthRange(static_cast<float>(m_window.top), static_cast<float>(m_window.bottom));
    m_scene->addItem(item);
    m_headers->add(item);
    return item;
}

// The middle of what the first curves with samples show; without such, the end of the well.
void WellTemplatePreview::chooseWindow()
{
    logview::DepthRange range = sampledRange(tracks());
    m_hasWindow = range.top <= range.bottom;
    if (!m_hasWindow)
        range = {0, std::max(0.0, static_cast<double>(m_well->totalDepthM()))};
    const double height = std::min(windowM, std::max(range.bottom - range.top, 1.0));
    const double top = std::floor((range.top + range.bottom - height) / 2);
    m_window = {top, top + std::ceil(height)};
    m_from->showText(QString::number(m_window.top, 'g', 6));
    m_to->showText(QString::number(m_window.bottom, 'g', 6));
}

void WellTemplatePreview::windowEdited()
{
    m_window = {m_from->text().toDouble(), m_to->text().toDouble()};
    m_hasWindow = true;
    layOut();
}

void WellTemplatePreview::layOut()
{
    double x = 0;
    double height = 0;
    for (int i = 0; i < m_shown.size(); ++i) {
        TrackItem *track = m_shown.at(i).item;
        const auto top = static_cast<float>(m_window.top);
        const auto bottom = static_cast<float>(m_window.bottom);
        if (track->axis() != logview::DepthAxis::of(top, bottom))
            track->setDepthRange(top, bottom);
        track->setTrackNumber(i);
        track->setPos(x, 0);
        m_headers->place(track);
        x += static_cast<double>(track->width());
        height = static_cast<double>(track->height());
    }
    delete m_banner;
    m_banner = x > 0 ? new WellNameItem(m_wellName, static_cast<float>(x), m_headerScene.get()) : nullptr;
    m_scene->setSceneRect(0, 0, x, height + logview::sceneMarginBelow);
    m_headerScene->setSceneRect(0, 0, x, WellNameItem::bannerHeight);
    m_views->showScenes();
    if (m_current >= 0 && m_current < m_shown.size()) {
        const TrackItem *track = m_shown.at(m_current).item;
        const double middle = m_view->mapToScene(m_view->viewport()->rect().center()).y();
        m_view->ensureVisible(QRectF(track->x(), middle, static_cast<double>(track->width()), 1), 0, 0);
    }
}
