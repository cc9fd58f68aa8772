#include "logview/depthplace.h"

#include "logview/welllogsscene.h"

#include <QGraphicsView>
#include <QScrollBar>

#include <cmath>
#include <utility>

DepthPlace::DepthPlace(const WellLogsScene *scene, QGraphicsView *view)
    : m_scene(scene)
    , m_view(view)
    , m_axis(scene->depthAxis())
    , m_reference(scene->depthReference())
{
}

int DepthPlace::keptRow() const
{
    return m_row.value_or(m_view->viewport()->height() / 2);
}

double DepthPlace::middleM() const
{
    return m_opening && m_opening->partOfHeight == 0.5 ? m_opening->depthM
                                                       : depthAt(m_view->viewport()->height() / 2);
}

double DepthPlace::depthAt(int row) const
{
    if (m_placed && m_placed->row == row && m_placed->scrolled == m_view->verticalScrollBar()->value())
        return m_placed->depthM;
    return m_reference.toMeasuredM(m_axis.toDepth(m_view->mapToScene(0, row).y()));
}

void DepthPlace::open(double depthM, double partOfHeight)
{
    m_opening = Opening{depthM, partOfHeight, {}};
    const bool wasPlacing = std::exchange(m_isPlacing, true);
    placeOpening();
    m_isPlacing = wasPlacing;
}

void DepthPlace::placeOpening()
{
    place(m_opening->depthM, logview::toInt(m_opening->partOfHeight * m_view->viewport()->height()));
}

void DepthPlace::resize(const std::function<void()> &resizeView)
{
    const bool wasPlacing = std::exchange(m_isPlacing, true);
    resizeView();
    if (m_opening && m_opening->seenIn != m_view->size())
        endSeenOpening();
    if (m_opening)
        placeOpening();
    m_isPlacing = wasPlacing;
}

void DepthPlace::viewSeen()
{
    if (m_opening && !m_opening->seenIn.isValid())
        m_opening->seenIn = m_view->size();
}

void DepthPlace::endSeenOpening()
{
    if (m_opening && m_opening->seenIn.isValid())
        m_opening.reset();
}

void DepthPlace::viewScrolled()
{
    if (!m_isPlacing)
        m_opening.reset();
}

// Where the display ends, the depth cannot stand on its row: then it is what the view shows that counts from here on.
void DepthPlace::place(double depthM, int row)
{
    QScrollBar *bar = m_view->verticalScrollBar();
    const double y = m_axis.toScenePixel(static_cast<double>(m_reference.toDisplay(depthM)));
    const int wanted = logview::toInt(std::round(y - row));
    bar->setValue(wanted);
    m_placed = Placed{depthM, row, wanted};
}

void DepthPlace::keep(const std::function<void()> &showScene)
{
    const int row = keptRow();
    const double depthM = depthAt(row);
    endSeenOpening();
    const int scrolled = m_view->verticalScrollBar()->value();
    const bool isSame = m_axis == m_scene->depthAxis() && m_reference == m_scene->depthReference();
    m_axis = m_scene->depthAxis();
    m_reference = m_scene->depthReference();
    const bool wasPlacing = std::exchange(m_isPlacing, true);
    showScene();
    if (m_opening)
        placeOpening();
    else if (isSame)
        m_view->verticalScrollBar()->setValue(scrolled);
    else
        place(depthM, row);
    m_isPlacing = wasPlacing;
}

void DepthPlace::keepRow(int row, const std::function<void()> &change)
{
    m_row = row;
    change();
    m_row.reset();
}
