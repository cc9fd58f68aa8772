#pragma once

#include <QColor>
#include <QGraphicsLineItem>
#include <QPen>
#include <QPointer>

class MarkerDrawing;
class MarkerItemPropertyWidget;
class WellLogsScene;

/// A marker of the well: a horizontal line over all tracks with the marker's name on its left. Whoever shows it
/// places it at its depth.
class MarkerItem : public QGraphicsLineItem
{
public:
    enum { Type = UserType + 3 };
    enum DataKey { WellNameKey = 0, MarkerNameKey = 1, DepthKey = 2 };
    static constexpr int maximumThickness = 5;

    /// \a scene is the log scene that shows the marker; null in other displays.
    explicit MarkerItem(WellLogsScene *scene);
    ~MarkerItem() override;

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    MarkerItemPropertyWidget *panel() const;
    WellLogsScene *logsScene() const { return m_scene; }

    void setWellName(const QString &wellName);
    QString wellName() const { return data(WellNameKey).toString(); }
    void setMarkerName(const QString &markerName);
    QString markerName() const { return data(MarkerNameKey).toString(); }
    /// Measured depth in metres. The item stays where it is.
    void setDepth(float depthM);
    float depth() const { return data(DepthKey).toFloat(); }
    void setLineColor(const QColor &color);
    QColor lineColor() const { return m_lineColor; }
    /// 1 to maximumThickness pixels.
    void setLineThickness(int thicknessPx);
    int lineThickness() const { return m_lineThickness; }
    void setWidth(float widthPx);
    float width() const { return m_width; }

    /// The pen with which the line is drawn now.
    QPen currentPen() const;
    /// Where the name is drawn, in item coordinates: left of the tracks, one line for a short name, wrapped in a
    /// narrow box for a longer one.
    static QRectF nameRect(int textWidthPx);

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    WellLogsScene *m_scene;
    QPointer<MarkerItemPropertyWidget> m_panel; ///< ours, also while a dock is its parent
    MarkerDrawing *m_drawing = nullptr; ///< a child
    QColor m_lineColor = Qt::black;
    int m_lineThickness = 1;
    float m_width = 0;
};
