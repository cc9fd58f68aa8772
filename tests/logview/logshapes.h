#pragma once

#include "logview/geometry/curvepath.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

/// Logs of many shapes, and their drawing sample by sample straight from the rules, to compare with.
namespace logshapes {

enum Shape { Random, Noisy, Wander, Spiky, Gappy, Constant, Sawtooth, Descending, Clumped, HolesAndInfinities };

struct Log
{
    QVector<double> depths;
    QVector<double> values;
    logview::CurveSamples samples() const { return {depths, values, nullSampleValue}; }
};

/// \a count samples over 0 to \a length metres with values around 1 to 150.
inline Log make(Shape shape, int count, double length, unsigned seed)
{
    std::mt19937 generator(seed);
    std::uniform_real_distribution<double> uniform(0, 1);
    std::normal_distribution<double> normal;
    Log log;
    double value = 75;
    for (int i = 0; i < count; ++i) {
        double depth = length * i / std::max(count - 1, 1);
        switch (shape) {
        case Random:
            value = 1 + 149 * uniform(generator);
            break;
        case Noisy:
            value = 75 + 3 * normal(generator);
            break;
        case Wander:
        case Descending:
        case Clumped:
            value = std::clamp(value + normal(generator), 1.0, 150.0);
            break;
        case Spiky:
            value = uniform(generator) < 0.02 ? 140 : 40 + 0.3 * normal(generator);
            break;
        case Gappy:
            value = uniform(generator) < 0.05 ? nullSampleValue : 20 + 100 * uniform(generator);
            break;
        case Constant:
            value = 61.7;
            break;
        case Sawtooth:
            value = 1 + std::fmod(i * 0.37, 149.0);
            break;
        case HolesAndInfinities:
            value = 75 + 30 * normal(generator);
            if (i % 17 == 3)
                value = std::numeric_limits<double>::quiet_NaN();
            if (i % 23 == 5)
                value = std::numeric_limits<double>::infinity();
            if (i % 29 == 7)
                value = -3;
            break;
        }
        if (shape == Clumped) // ten samples close together, then a hole ten times as long
            depth = length * (i / 10 * 10 + i % 10 * 0.1) / std::max(count - 1, 1);
        log.depths.append(depth);
        log.values.append(value);
    }
    if (shape == Descending)
        std::reverse(log.depths.begin(), log.depths.end());
    return log;
}

/// Where a sample stands, by the rules. False where the path breaks; \a isSkipped where it goes on.
inline bool place(const Log &log, int i, const logview::CurveKey &key, QPointF &point, bool &isSkipped)
{
    const logview::DepthAxis &axis = key.axis;
    float depth = static_cast<float>(log.depths.at(i));
    if (key.reference.type == logview::TvdSubsea)
        depth = static_cast<float>(static_cast<double>(depth) - key.reference.kbElevationM);
    if (key.reference.unit == logview::Feet)
        depth = static_cast<float>(static_cast<double>(depth) * 3.28084);
    isSkipped = !(depth >= axis.start && depth <= axis.end);
    const double value = log.values.at(i);
    if (isSkipped || value == nullSampleValue || !std::isfinite(value))
        return false;
    const double start = static_cast<double>(axis.start);
    const double width = static_cast<double>(key.scale.width);
    const double minimum = static_cast<double>(key.scale.minimum);
    const double maximum = static_cast<double>(key.scale.maximum);
    point.setY((static_cast<double>(depth) - start) * static_cast<double>(axis.height)
               / (static_cast<double>(axis.end) - start));
    if (key.scale.isLogarithmic) {
        const float x = static_cast<float>(std::fabs(std::log10(value) - std::log10(minimum)) * width
                                           / (std::log10(maximum) - std::log10(minimum)));
        point.setX(static_cast<double>(x));
        return x >= 0 && x <= key.scale.width;
    }
    const double x = maximum > minimum ? (value - minimum) * width / (maximum - minimum)
                                       : (minimum - value) * width / std::fabs(maximum - minimum);
    point.setX(std::min(std::max(x, 0.0), width));
    return true;
}

/// The path of every sample.
inline QPainterPath everySample(const Log &log, const logview::CurveKey &key)
{
    QPainterPath path;
    bool isOpen = false;
    for (int i = 0; i < log.depths.size(); ++i) {
        QPointF point;
        bool isSkipped = false;
        if (place(log, i, key, point, isSkipped)) {
            if (isOpen)
                path.lineTo(point);
            else
                path.moveTo(point);
            isOpen = true;
        } else if (!isSkipped) {
            isOpen = false;
        }
    }
    return path;
}

/// A picture of a track's rows from \a topRow on, painted in the track's coordinates.
inline QImage picture(const QSize &size, int topRow, const std::function<void(QPainter &)> &paint)
{
    constexpr int left = 20; // some columns on both sides of the track
    QImage image(size.width() + 2 * left, size.height(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(left, -topRow);
    paint(painter);
    return image;
}

/// The same picture of the pixels that have their middle within a distance of one of the lines of a path.
inline QImage aroundLines(const QSize &size, const QPainterPath &path, double distance)
{
    return picture(size, 0, [&](QPainter &painter) {
        for (int i = 1; i < path.elementCount(); ++i) {
            const QPointF from = path.elementAt(i - 1);
            const QPointF to = path.elementAt(i);
            if (path.elementAt(i).isMoveTo())
                continue;
            const QRect area =
                QRectF(from, to).normalized().adjusted(-distance, -distance, distance, distance).toAlignedRect();
            const QPointF along = to - from;
            const double square = QPointF::dotProduct(along, along);
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x) {
                    const QPointF middle = QPointF(x + 0.5, y + 0.5) - from;
                    const double part =
                        square > 0 ? std::clamp(QPointF::dotProduct(middle, along) / square, 0.0, 1.0) : 0;
                    const QPointF away = middle - part * along;
                    if (QPointF::dotProduct(away, away) <= distance * distance)
                        painter.fillRect(x, y, 1, 1, Qt::black);
                }
            }
        }
    });
}

/// How many pixels of two pictures differ.
inline int difference(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return std::numeric_limits<int>::max();
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        const QRgb *rowA = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const QRgb *rowB = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            count += rowA[x] != rowB[x] ? 1 : 0;
    }
    return count;
}

/// How many pixels of a picture are painted.
inline int paintedPixels(const QImage &image)
{
    QImage blank(image.size(), image.format());
    blank.fill(Qt::white);
    return difference(image, blank);
}

} // namespace logshapes
