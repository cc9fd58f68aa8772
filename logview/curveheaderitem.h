#pragma once

#include <QGraphicsItem>

class CurveItem;

/// What stands above a curve in its track's header: name, a piece of the line, the ends of the scale and the unit.
class CurveHeaderItem : public QGraphicsItem
{
public:
    static constexpr int height = 45; ///< distance between the headers of one track

    /// A child of the track's header, below the headers of the \a index curves before it.
    CurveHeaderItem(CurveItem *curve, int index, QGraphicsItem *trackHeader);
    ~CurveHeaderItem() override;

    void setIndex(int index);
    void forgetCurve() { m_curve = nullptr; }

    /// The curve has another width or other things to show.
    void refresh();

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    /// Selects what the header stands for.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *) override { }

private:
    CurveItem *m_curve; ///< null while the curve is being destroyed
    double m_width = 0;
};
