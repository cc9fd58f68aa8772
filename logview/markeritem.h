#pragma once

#include <QColor>
#include <QGraphicsLineItem>
#include <QObject>
#include <QPen>

QT_BEGIN_NAMESPACE
class QFont;
QT_END_NAMESPACE

class MarkerDrawing;

/// A marker of the well: a horizontal line over all tracks with the marker's name on its left. Whoever shows it
/// places it at its depth. Panels watch it (MarkerItemPropertyWidget).
class MarkerItem : public QObject, public QGraphicsLineItem
{
    Q_OBJECT

public:
    enum { Type = UserType + 3 };
    enum DataKey { WellNameKey = 0, MarkerNameKey = 1, DepthKey = 2 };
    static constexpr int maximumThickness = 5;

    MarkerItem();

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    void setWellName(const QString &wellName);
    QString wellName() const { return data(WellNameKey).toString(); }
    void setMarkerName(const QString &markerName);
    QString markerName() const { return data(MarkerNameKey).toString(); }
    /// As setMarkerName(), and announces another name by nameEdited().
    void editMarkerName(const QString &markerName);
    /// Measured depth in metres. The item stays where it is.
    void setDepth(float depthM);
    float depth() const { return data(DepthKey).toFloat(); }
    /// As setDepth(), and announces it by depthEdited().
    void editDepth(float depthM);
    void setLineColor(const QColor &color);
    QColor lineColor() const { return m_lineColor; }
    /// 1 to maximumThickness pixels.
    void setLineThickness(int thicknessPx);
    int lineThickness() const { return m_lineThickness; }
    void setWidth(float widthPx);
    float width() const { return m_width; }

    /// Draws the name so many pixels lower, where it would lie over another one at its own place.
    void setNameShift(double shiftPx);
    double nameShift() const { return m_nameShift; }
    /// Whether the name is drawn; it is to begin with.
    void setNameShown(bool isShown);
    bool isNameShown() const { return m_isNameShown; }
    /// Draws the name on a piece of paper of its own, for a place where lines or colours lie below it.
    void setNameOnPaper(bool isOnPaper);
    /// What the name takes at its own place, in item coordinates, when it is drawn by a painter with this font.
    QRectF nameExtent(const QFont &painterFont) const;
    /// Whether its box cuts a part of the name off.
    bool isNameCut(const QFont &painterFont) const;

    /// The pen with which the line is drawn now.
    QPen currentPen() const;
    /// Where the name is drawn, in item coordinates: left of the tracks, one line for a short name, wrapped in a
    /// narrow box for a longer one.
    static QRectF nameRect(int textWidthPx);

signals:
    /// Well, name, depth or line changed.
    void changed();
    /// The user gave it another depth: whoever shows it has to move it.
    void depthEdited();
    /// The user gave it another name.
    void nameEdited();

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    friend class MarkerDrawing;

    MarkerDrawing *m_drawing = nullptr; ///< a child
    QColor m_lineColor = Qt::black;
    int m_lineThickness = 1;
    float m_width = 0;
    double m_nameShift = 0;
    bool m_isNameOnPaper = false;
    bool m_isNameShown = true;
};
