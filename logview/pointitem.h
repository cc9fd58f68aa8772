#pragma once

#include <QColor>
#include <QGraphicsItem>

/// A calibration point: a small circle or square, centred on the item's position.
class PointItem : public QGraphicsItem
{
public:
    static constexpr int circleShape = 1; ///< any other shape code is a square

    /// \a sizePx is half the point's width. A parent owns the point.
    PointItem(const QColor &color, int sizePx, int shapeCode, QGraphicsItem *parent = nullptr);

    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    QColor m_color;
    int m_size;
    int m_shapeCode;
};
