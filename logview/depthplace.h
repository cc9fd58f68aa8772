#pragma once

#include "logview/geometry/depthaxis.h"

#include <QSize>

#include <functional>
#include <optional>

QT_BEGIN_NAMESPACE
class QGraphicsView;
QT_END_NAMESPACE

class WellLogsScene;

/// Keeps the depth that is looked at where it is seen when the depth axis of a log display changes: the measured depth
/// in the middle of the view, or that of another row, stays there.
class DepthPlace
{
public:
    /// Both must outlive the object.
    DepthPlace(const WellLogsScene *scene, QGraphicsView *view);

    /// Measured depth in metres in the middle of the view.
    double middleM() const;

    /// Scrolls a measured depth in metres to a part of the view's height from its top (0 to 1), and does so again with
    /// each new size until the view was scrolled, or was seen and is given another size: its own scroll bars come and go.
    void open(double depthM, double partOfHeight);
    /// Around the view's own work for its new size.
    void resize(const std::function<void()> &resizeView);
    void viewSeen();
    void viewScrolled();

    /// Around something that lays the scene out anew and has the view show it.
    void keep(const std::function<void()> &showScene);
    /// The same for what happens until the end of \a change, around a row of the viewport instead of the middle.
    void keepRow(int row, const std::function<void()> &change);

private:
    struct Opening
    {
        double depthM = 0;
        double partOfHeight = 0;
        QSize seenIn; ///< the view's size when it was seen; none before
    };
    /// What stands on a row exactly: the scroll bar only knows it to a pixel.
    struct Placed
    {
        double depthM = 0;
        int row = 0;
        int scrolled = 0;
    };

    int keptRow() const;
    double depthAt(int row) const;
    void place(double depthM, int row);
    void placeOpening();
    void endSeenOpening();

    const WellLogsScene *m_scene;
    QGraphicsView *m_view;
    logview::DepthAxis m_axis; ///< of what the view shows
    logview::DepthReference m_reference;
    std::optional<Opening> m_opening;
    std::optional<Placed> m_placed;
    std::optional<int> m_row;
    bool m_isPlacing = false; ///< what scrolls the view is no user
};
