#include "logview/viewpair.h"

#include "logview/headerpane.h"
#include "logview/paperview.h"

#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

constexpr int markerNameMargin = 84; // pixels left of the tracks: a name of 80 on one line, and a little air
constexpr int outlineMargin = 1; // the outline of the first track lies half beside it
constexpr int headerHeightAlwaysShown = 20 + 4 * 45;
constexpr int leastLogHeight = 200;
constexpr int highestLimitedHeaders = 200;

} // namespace

ViewPair::ViewPair(QGraphicsScene *headerScene, PaperView *logView, QWidget *parent)
    : QSplitter(Qt::Vertical, parent)
    , m_headerView(new PaperView(headerScene))
    , m_logView(logView)
    , m_nameMargin(markerNameMargin)
{
    m_headerView->setObjectName(QStringLiteral("headerView"));
    m_headerView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (PaperView *view : {m_headerView, m_logView}) {
        view->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        view->setTransformationAnchor(QGraphicsView::NoAnchor);
        // Both viewports must have one width, or headers and tracks would not scroll alike.
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        addWidget(view);
    }
    setHandleWidth(0);
    setStretchFactor(0, 1);
    setCollapsible(1, false);

    QScrollBar *headerBar = m_headerView->horizontalScrollBar();
    const QScrollBar *logBar = m_logView->horizontalScrollBar();
    connect(logBar, &QScrollBar::valueChanged, headerBar, &QScrollBar::setValue);
    connect(headerBar, &QScrollBar::rangeChanged, logBar, [=] { headerBar->setValue(logBar->value()); });
}

void ViewPair::limitHeaders()
{
    m_highestHeaders = highestLimitedHeaders;
    fitHeaderHeight();
}

void ViewPair::leaveOutMarkerNames()
{
    m_nameMargin = outlineMargin;
}

QRectF ViewPair::withMargin(const QRectF &sceneRect) const
{
    return sceneRect.adjusted(-m_nameMargin, 0, 0, 0);
}

void ViewPair::showScenes()
{
    QScrollBar *bar = m_logView->verticalScrollBar();
    const double place = bar->maximum() > 0 ? bar->value() / static_cast<double>(bar->maximum()) : 0;
    m_logView->showRect(withMargin(m_logView->scene()->sceneRect()));
    bar->setValue(static_cast<int>(std::lround(place * bar->maximum()))); // what did not change does not creep
    fitHeaderHeight();
}

// The headers get the room they need and the tracks all the rest, also when the window grows or is small. There is
// nothing to scroll to below the headers.
void ViewPair::fitHeaderHeight()
{
    const QGraphicsScene &headers = *m_headerView->scene();
    logview::alignHeaders(headers);
    const QRectF area = logview::headerArea(headers);
    m_headerView->setSceneRect(withMargin(QRectF(0, area.top(), headers.sceneRect().width(), area.height())));
    const int needed =
        std::min(static_cast<int>(std::ceil(area.height())) + 2 * m_headerView->frameWidth(), m_highestHeaders);
    m_headerView->setMaximumHeight(needed);
    m_headerView->setMinimumHeight(std::min(needed, headerHeightAlwaysShown));
    shareHeight();
}

void ViewPair::shareHeight()
{
    const int most = std::max(height() - leastLogHeight, headerHeightAlwaysShown);
    const int header = std::min(m_headerView->maximumHeight(), most);
    setSizes({header, height() - header});
}

void ViewPair::resizeEvent(QResizeEvent *event)
{
    QSplitter::resizeEvent(event);
    shareHeight();
}
