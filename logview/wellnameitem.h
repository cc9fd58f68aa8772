#pragma once

#include <QGraphicsItem>

/// The banner with the well's name above all tracks of the header scene. Of a name that is longer than the banner its
/// middle is left out; then it is told under the mouse.
class WellNameItem : public QGraphicsItem
{
public:
    static constexpr int bannerHeight = 20;

    /// The scene owns the item; null adds it to none.
    WellNameItem(const QString &wellName, float widthPx, QGraphicsScene *scene);

    void setWidth(float widthPx);

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void tellLongName();

    QString m_wellName;
    float m_width;
};
