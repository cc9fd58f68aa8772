#pragma once

#include <QGraphicsObject>
#include <QVector>

class CurveHeaderItem;
class TrackItem;

/// The header of one track in the header scene. The headers of the track's curves are its children, one below the
/// other.
class TrackHeaderItem : public QGraphicsObject
{
    Q_OBJECT

public:
    enum { Type = UserType + 4 };
    static constexpr double headerHeight = 45.0; ///< of each header of the track

    /// Goes with \a track, or earlier with the scene it is shown in.
    explicit TrackHeaderItem(TrackItem *track);

    const TrackItem *track() const { return m_track; }
    /// Top to bottom, in the order of the track's curves. Owned by the header as its children.
    const QVector<CurveHeaderItem *> &curveHeaders() const { return m_curveHeaders; }
    float width() const { return m_width; }
    int type() const override { return Type; }

    /// The height of the headers that the track shows: those of its curves, or its own.
    double contentHeight() const;
    /// How far the borders of the track run down; never less than the headers.
    void setBorderHeight(double heightPx);

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

signals:
    /// The user clicked the header of the track, or of a curve of it.
    void clicked(QGraphicsItem *item);

protected:
    /// Selected exactly when what it stands for is; clicks beside the headers change nothing.
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    /// Selects what the header stands for.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *) override { }

private:
    void showTrack();
    void forgetCurve(CurveHeaderItem *header);
    int frameCount() const;

    TrackItem *m_track;
    QVector<CurveHeaderItem *> m_curveHeaders;
    float m_width = 0;
    double m_borderHeight = 0;
};
