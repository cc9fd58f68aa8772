#pragma once

#include "base/colorbar.h"
#include "logview/geometry/calibrationplacement.h"
#include "logview/geometry/curvefill.h"
#include "logview/geometry/curveline.h"
#include "logview/geometry/samplelookup.h"
#include "templates/templatetrack.h"

#include <QGraphicsItem>
#include <QPen>
#include <QPointer>

class CurveHeaderItem;
class CurveItemPropertyWidget;
class PointItem;
class TrackItem;

/// With what a curve is filled. Where there is a colour bar it counts, else the colour.
struct CurveFillStyle
{
    bool isOn = false;
    QColor color;
    base::ColorBar bar;
};

/// One log in its track: line, fill and calibration points. What it draws is computed when it is first painted after
/// a change of the samples or the geometry, and kept.
class CurveItem : public QGraphicsItem
{
public:
    enum { Type = UserType + 2 };

    /// A child of \a track. \a index counts the curves that the track draws, 0 first: the place of the header. Reads
    /// the log of the line's name; where there is none nothing is drawn.
    CurveItem(const TrackInfo &definition, const TemplateCurveInfo &line, int index, TrackItem *track);
    ~CurveItem() override;

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    /// The whole curve, whatever part was painted.
    QPainterPath shape() const override;
    /// Whether the line passes a position within the reach of a mouse pointer.
    bool contains(const QPointF &point) const override;
    bool collidesWithPath(const QPainterPath &path,
                          Qt::ItemSelectionMode mode = Qt::IntersectsItemShape) const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    /// Null when its scene has gone.
    CurveHeaderItem *header() const { return m_header; }
    /// Moves the header to the place of the \a index-th curve of the track.
    void setIndex(int index);
    /// Made when it is first asked for; goes with the curve.
    CurveItemPropertyWidget *panel();
    /// Null as long as nobody asked for it.
    CurveItemPropertyWidget *existingPanel() const;
    TrackItem *track() const { return m_track; }

    /// The track has another depth range, scale, width, type, depth type or unit.
    void changeGeometry();

    const QString &curveName() const { return m_line.curve; }
    /// Changes what header and read-out call the curve; its samples stay.
    void setCurveName(const QString &name);
    const QString &groupName() const { return m_line.group; }
    const QString &unit() const { return m_unit; }
    const logview::CurveSamples &samples() const { return m_samples; }
    const logview::ValueScale &scale() const { return m_scale; }

    QPen pen() const { return m_pen; }
    /// The pen with which the line is drawn now: that of a selected curve, or its own.
    QPen currentPen() const;
    void setLineColor(const QColor &color);
    void setLineStyle(Qt::PenStyle style);
    void setLineWidth(int widthPx);

    const CurveFillStyle &fillStyle() const { return m_fillStyle; }
    /// A fill with a colour bar becomes one with this colour.
    void setFillColor(const QColor &color);

    /// The sample at a display depth in metres; its depth is one too. -999.25 where there is none.
    logview::Sample sampleAt(double depthM) const;

    void setCalibrationShown(bool isShown);
    struct PointValue
    {
        bool isThere = false;
        double value = 0;
    };
    /// The calibration point under a position in the track.
    PointValue calibrationPointAt(const QPointF &position) const;
    const QVector<logview::CalibrationPoint> &calibrationPoints() const { return m_points; }

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    friend class CurveHeaderItem;
    void forgetHeader() { m_header = nullptr; }

    QRectF withinReach(const QRectF &area) const;
    void readFill(const TrackInfo &definition);
    void placePoints();
    logview::CurveKey key() const;
    void updateFill();
    void redraw();

    TrackItem *m_track;
    CurveHeaderItem *m_header = nullptr; ///< a child of the track's header; goes with the curve
    QPointer<CurveItemPropertyWidget> m_panel; ///< ours, also while a dock is its parent
    TemplateCurveInfo m_line;
    QString m_unit;
    logview::CurveSamples m_samples;
    logview::ValueScale m_scale;
    QPen m_pen;
    CurveFillStyle m_fillStyle;
    logview::FillSettings m_fillSettings;
    mutable logview::CurveLine m_curveLine;
    logview::CurveFill m_fill;
    CalibrationRecord m_calibration;
    QVector<logview::CalibrationPoint> m_points;
    QVector<PointItem *> m_pointItems; ///< children, one for each of m_points
};
