#pragma once

#include "logview/geometry/curvefill.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <functional>

/// Logs of many shapes, and their drawing sample by sample straight from the rules, to compare with.
namespace logshapes {

enum Shape { Random, Noisy, Wander, Spiky, Gappy, Constant, Sawtooth, Descending, Clumped, HolesAndInfinities };

/// In the single precision that displays keep.
logview::CurveSamples samplesOf(const QVector<double> &depthsM, const QVector<double> &values);

struct Log
{
    QVector<double> depths;
    QVector<double> values;
    logview::CurveSamples samples() const { return samplesOf(depths, values); }
};

/// \a count samples over 0 to \a length metres with values around 1 to 150.
Log make(Shape shape, int count, double length, unsigned seed);
/// Where a sample stands, by the rules. False where the path breaks; \a isSkipped where it goes on.
bool place(const Log &log, int i, const logview::CurveKey &key, QPointF &point, bool &isSkipped);
/// The path of every sample.
QPainterPath everySample(const Log &log, const logview::CurveKey &key);
/// A picture of a track's rows from \a topRow on, painted in the track's coordinates.
QImage picture(const QSize &size, int topRow, const std::function<void(QPainter &)> &paint);
/// The same picture of the pixels that have their middle within a distance of one of the lines of a path.
QImage aroundLines(const QSize &size, const QPainterPath &path, double distance);
/// How many pixels of two pictures differ.
int difference(const QImage &a, const QImage &b);
/// How many pixels of a picture are painted.
int paintedPixels(const QImage &image);

/// A fill sample by sample, straight from the rules.
class EverySampleFill
{
public:
    void paint(QPainter &painter, const Log &log, const logview::CurveKey &key, const logview::FillSettings &settings,
               const Log &other, const logview::CurveKey &otherKey) const;

    QVector<QRgb> bar;

private:
    struct Point
    {
        QPointF curve;
        double limit = 0;
        double gap = 0;
        int color = -1;
    };

    static Point between(const Point &a, const Point &b);
    static void draw(QPainter &painter, const QVector<Point> &points, const QColor &color);
    void drawRun(QPainter &painter, const QVector<Point> &run) const;
};

} // namespace logshapes
