#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QRect;
class QWidget;
QT_END_NAMESPACE

/// A thin line through all tracks at the row of the mouse. It lies over what the view paints and is in no scene, so no
/// picture or print has it. When it moves, only the row that it leaves and the one that it takes are painted.
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

    /// At the end of a paint event of the viewport; \a tracks is where the tracks stand in it.
    void paint(const QRect &tracks) const;

private:
    void updateRow(int row);

    static constexpr int noRow = -1;

    QWidget *m_viewport;
    int m_row = noRow;
};
