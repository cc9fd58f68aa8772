#pragma once

#include <QGraphicsItem>

class TrackItem;

/// The header of one track in the header scene. The headers of the track's curves are its children, one below the
/// other.
class TrackHeaderItem : public QGraphicsItem
{
public:
    static constexpr double headerHeight = 45.0;

    /// Goes with \a track, or earlier with the scene it is shown in.
    explicit TrackHeaderItem(TrackItem *track);
    ~TrackHeaderItem() override;

    void forgetTrack() { m_track = nullptr; }

    void setWidth(float widthPx);
    float width() const { return m_width; }

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    /// Selects what the header stands for.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *) override { }

private:
    TrackItem *m_track; ///< null while the track is being destroyed
    float m_width = 0;
};
