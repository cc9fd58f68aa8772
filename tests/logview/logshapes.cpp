#include "logshapes.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace logshapes {

logview::CurveSamples samplesOf(const QVector<double> &depthsM, const QVector<double> &values)
{
    const auto singles = [](const QVector<double> &numbers) {
        QVector<float> converted;
        for (const double number : numbers)
            converted.append(static_cast<float>(number));
        return converted;
    };
    return {singles(depthsM), singles(values)};
}

Log make(Shape shape, int count, double length, unsigned seed)
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
        log.depths.append(static_cast<double>(static_cast<float>(depth)));
        log.values.append(static_cast<double>(static_cast<float>(value)));
    }
    if (shape == Descending)
        std::reverse(log.depths.begin(), log.depths.end());
    return log;
}

bool place(const Log &log, int i, const logview::CurveKey &key, QPointF &point, bool &isSkipped)
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

QPainterPath everySample(const Log &log, const logview::CurveKey &key)
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

QImage picture(const QSize &size, int topRow, const std::function<void(QPainter &)> &paint)
{
    constexpr int left = 20; // some columns on both sides of the track
    QImage image(size.width() + 2 * left, size.height(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(left, -topRow);
    paint(painter);
    return image;
}

QImage aroundLines(const QSize &size, const QPainterPath &path, double distance)
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

int difference(const QImage &a, const QImage &b)
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

int paintedPixels(const QImage &image)
{
    QImage blank(image.size(), image.format());
    blank.fill(Qt::white);
    return difference(image, blank);
}

EverySampleFill::Point EverySampleFill::between(const Point &a, const Point &b)
{
    const double part = a.gap / (a.gap - b.gap);
    Point point;
    point.curve = a.curve + (b.curve - a.curve) * part;
    point.limit = a.limit + (b.limit - a.limit) * part;
    point.color = a.color;
    return point;
}

void EverySampleFill::draw(QPainter &painter, const QVector<Point> &points, const QColor &color)
{
    if (points.size() < 2)
        return;
    QPolygonF polygon;
    for (const Point &point : points)
        polygon.append(point.curve);
    for (int i = points.size(); i-- > 0;)
        polygon.append({points.at(i).limit, points.at(i).curve.y()});
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(polygon);
}

// One polygon for a run of one colour; one for each pair of samples where colours come from a bar.
void EverySampleFill::drawRun(QPainter &painter, const QVector<Point> &run) const
{
    QVector<Point> piece;
    const auto finish = [&](int color = -1) {
        draw(painter, piece, color < 0 ? QColor(Qt::blue) : QColor(bar.at(color)));
        piece.clear();
    };
    for (int i = 0; i < run.size(); ++i) {
        const Point &point = run.at(i);
        const int color = i > 0 && !bar.isEmpty() ? run.at(i - 1).color : -1;
        if (i > 0 && run.at(i - 1).gap < 0 && point.gap > 0)
            piece.append(between(run.at(i - 1), point));
        if (i > 0 && run.at(i - 1).gap > 0 && point.gap < 0)
            piece.append(between(run.at(i - 1), point));
        if (point.gap >= 0)
            piece.append(point);
        if (point.gap < 0 || (!bar.isEmpty() && piece.size() > 1))
            finish(color);
        if (piece.isEmpty() && point.gap >= 0)
            piece.append(point);
    }
    if (bar.isEmpty())
        finish();
}

void EverySampleFill::paint(QPainter &painter, const Log &log, const logview::CurveKey &key,
                            const logview::FillSettings &settings, const Log &other,
                            const logview::CurveKey &otherKey) const
{
    QHash<double, int> partners;
    for (int i = other.depths.size(); i-- > 0;)
        partners.insert(other.depths.at(i), i);
    QVector<Point> run;
    int color = -1;
    for (int i = 0; i < log.depths.size(); ++i) {
        Point point;
        bool isSkipped = false;
        bool isDrawn = place(log, i, key, point.curve, isSkipped);
        double value = log.values.at(i);
        const logview::ValueScale &colorScale =
            settings.limit == logview::FillLimit::Curve ? otherKey.scale : key.scale;
        point.limit = settings.limit == logview::FillLimit::LeftBoundary ? 0 : static_cast<double>(key.scale.width);
        if (isDrawn && settings.limit == logview::FillLimit::Curve) {
            const int partner = partners.value(log.depths.at(i), -1);
            QPointF limit;
            isDrawn = partner >= 0 && place(other, partner, otherKey, limit, isSkipped);
            if (isDrawn) {
                value = other.values.at(partner);
                point.limit = std::min(std::max(limit.x() - 0.1, 0.0), static_cast<double>(key.scale.width));
            }
        }
        if (!isDrawn) {
            drawRun(painter, run);
            run.clear();
            continue;
        }
        point.gap =
            settings.side == logview::FillSide::Left ? point.curve.x() - point.limit : point.limit - point.curve.x();
        const double low = static_cast<double>(colorScale.minimum);
        const double high = static_cast<double>(colorScale.maximum);
        const int n = bar.size() - 1;
        const double index = high > low ? (value - low) * n / (high - low) : (low - value) * n / (low - high);
        if (n >= 0 && index < n)
            color = std::max(0, static_cast<int>(index));
        point.color = color;
        run.append(point);
    }
    drawRun(painter, run);
}

} // namespace logshapes
