#pragma once

#include <QGraphicsObject>

class CurveItem;

/// What stands above a curve in its track's header: name, a piece of the line, the ends of the scale and the unit.
class CurveHeaderItem : public QGraphicsObject
{
    Q_OBJECT

public:
    static constexpr int height = 45; ///< distance between the headers of one track

    /// A child of the track's header, which must delete it when the curve goes.
    CurveHeaderItem(CurveItem *curve, QGraphicsItem *trackHeader);

    const CurveItem *curve() const { return m_curve; }

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

signals:
    void clicked(QGraphicsItem *curve);

protected:
    /// Selected exactly when what it stands for is; clicks beside the headers change nothing.
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    /// Selects what the header stands for.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *) override { }

private:
    void showCurve();
    void tellWhatIsNotSeen();

    CurveItem *m_curve;
    double m_width = 0;
};
