#pragma once

#include <QGraphicsItem>

class TrackItem;

/// The header of one track in the header scene. The headers of the track's curves are its children, one below the
/// other.
class TrackHeaderItem : public QGraphicsItem
{
public:
    static constexpr double headerHeight = 45.0;

    /// \a track owns the header as long as no scene does.
    explicit TrackHeaderItem(TrackItem *track);

    void setWidth(float widthPx);
    float width() const { return m_width; }

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    /// Selects what the header stands for.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;

private:
    TrackItem *m_track;
    float m_width = 0;
};
