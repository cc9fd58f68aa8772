#pragma once

#include "base/colorbar.h"
#include "logview/geometry/calibrationplacement.h"
#include "logview/geometry/curvefill.h"
#include "logview/geometry/curveline.h"
#include "logview/geometry/samplelookup.h"
#include "logview/geometry/trackgeometry.h"
#include "templates/templatetrack.h"

#include <QGraphicsObject>
#include <QPen>

#include <memory>

class PointItem;
class WellDisplayData;

/// With what a curve is filled. Where there is a colour bar it counts, else the colour.
struct CurveFillStyle
{
    bool isOn = false;
    QColor color;
    base::ColorBar bar;
};

/// One log in its track: line, fill and calibration points. What it draws is computed for the rows that are painted.
/// Headers and panels watch it (CurveHeaderItem, CurveItemPropertyWidget).
class CurveItem : public QGraphicsObject
{
    Q_OBJECT

public:
    enum { Type = UserType + 2 };

    /// A child of \a track, whose definition and geometry are given. Reads the log of the line's name; where there is
    /// none nothing is drawn.
    CurveItem(const TrackInfo &definition, const TemplateCurveInfo &line,
              const std::shared_ptr<WellDisplayData> &well, const logview::TrackGeometry &geometry,
              QGraphicsItem *track);

    int type() const override { return Type; }
    QRectF boundingRect() const override;
    /// The whole curve, whatever part was painted.
    QPainterPath shape() const override;
    /// Whether the line passes a position within the reach of a mouse pointer.
    bool contains(const QPointF &point) const override;
    bool collidesWithPath(const QPainterPath &path,
                          Qt::ItemSelectionMode mode = Qt::IntersectsItemShape) const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

    QString wellName() const;

    /// The track has another depth range, scale, width, type, depth type or unit.
    void setGeometry(const logview::TrackGeometry &geometry);

    const QString &curveName() const { return m_line.curve; }
    /// Changes what header and read-out call the curve; its samples stay.
    void setCurveName(const QString &name);
    const QString &groupName() const { return m_line.group; }
    const QString &unit() const { return m_unit; }
    /// Whether the well has no log of the name that the curve was made with.
    bool isLogMissing() const { return m_isLogMissing; }
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

    /// Shows the calibration points as the shared data of the well gives them now.
    void reloadCalibration();
    struct PointValue
    {
        bool isThere = false;
        double value = 0;
    };
    /// The calibration point under a position in the track.
    PointValue calibrationPointAt(const QPointF &position) const;
    const QVector<logview::CalibrationPoint> &calibrationPoints() const { return m_points; }

signals:
    /// Name, line, fill, geometry or selection changed: what shows them has to be drawn anew.
    void changed();

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    QRectF withinReach(const QRectF &area) const;
    void readFill(const TrackInfo &definition);
    void placePoints();
    logview::CurveKey key() const;
    void redraw();

    std::shared_ptr<WellDisplayData> m_well;
    logview::TrackGeometry m_geometry;
    TemplateCurveInfo m_line;
    QString m_unit;
    bool m_isLogMissing = false;
    logview::CurveSamples m_samples;
    logview::ValueScale m_scale;
    QPen m_pen;
    CurveFillStyle m_fillStyle;
    logview::FillSettings m_fillSettings;
    logview::CurveLine m_curveLine;
    logview::CurveFill m_fill;
    CalibrationRecord m_calibration;
    QVector<logview::CalibrationPoint> m_points;
    QVector<PointItem *> m_pointItems; ///< children, one for each of m_points
};
