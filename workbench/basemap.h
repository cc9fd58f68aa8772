#pragma once

#include "workbench/basemapgeometry.h"

#include <QWidget>

namespace workbench {

/// Shows the surface positions of wells and lets the user click one. Wells are addressed by their index in
/// setWells().
class BaseMap : public QWidget
{
    Q_OBJECT

public:
    explicit BaseMap(QWidget *parent = nullptr);

    void setWells(const QVector<MapWell> &wells);
    /// -1 for none; emits nothing.
    void setSelectedWell(int well);
    int selectedWell() const { return m_selected; }

    /// Where the wells are drawn, in the widget's pixels; not finite for a well without a position.
    QVector<QPointF> wellPixels();
    QVector<MapLabel> labels();
    /// How often positions and labels were computed.
    int layoutCount() const { return m_layoutCount; }

    QSize sizeHint() const override { return {420, 380}; }
    QSize minimumSizeHint() const override { return {200, 180}; }

signals:
    void wellClicked(int well);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void invalidate();
    void layOut();
    QFont smallFont() const;
    QString notice() const;
    void drawAxes(QPainter &painter);
    void drawWells(QPainter &painter);
    void drawLabels(QPainter &painter);
    void drawNorthArrow(QPainter &painter);
    void drawFooter(QPainter &painter);

    QVector<MapWell> m_wells;
    int m_placedCount = 0;
    QVector<MapSymbol> m_symbols; ///< those that occur, for the legend
    int m_selected = -1;

    // Computed from the above and the widget's size where they are needed next.
    bool m_isLaidOut = false;
    int m_layoutCount = 0;
    MapFrame m_frame;
    QVector<QPointF> m_pixels;
    QVector<MapLabel> m_labels;
    QVector<MapTick> m_eastings;
    QVector<MapTick> m_northings;
    QRectF m_northArrow;
};

} // namespace workbench
