#pragma once

#include "logview/paintedpixels.h"

#include <functional>

QT_BEGIN_NAMESPACE
class QPaintEvent;
class QWidget;
QT_END_NAMESPACE

/// A thin line through all tracks at the row of the mouse. It lies over what the view paints and is in no scene, so no
/// picture or print has it. When it moves, only the rows that it leaves and takes are painted.
class DepthCursor
{
public:
    /// \a viewport must outlive the object.
    explicit DepthCursor(QWidget *viewport)
        : m_viewport(viewport)
    {
    }

    /// Shows it at a row of the viewport.
    void moveTo(int row);
    void hide();
    /// The viewport's pixels were moved, and the line with them.
    void scrolled(int dy);

    /// Does the work of a paint event of the viewport. \a paintView paints what lies below; \a tracks is where the
    /// tracks stand in the viewport.
    void paint(const QPaintEvent &event, const QRect &tracks, const std::function<void()> &paintView);

private:
    void updateRow(int row);
    void paintLine(const QRect &tracks);

    static constexpr int noRow = -1;

    QWidget *m_viewport;
    int m_row = noRow;
    PaintedPixels m_pixels;
};
