#include "logview/geometry/curveline.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

// Whether the painter's pixels are the track's, moved by whole numbers, and lines set pixels without shades.
bool isPlainRaster(const QPainter &painter)
{
    const QTransform transform = painter.deviceTransform();
    return painter.paintEngine() != nullptr && painter.paintEngine()->type() == QPaintEngine::Raster
        && (painter.renderHints() & (QPainter::Antialiasing | QPainter::Qt4CompatiblePainting)) == 0
        && transform.type() <= QTransform::TxTranslate && transform.dx() == std::floor(transform.dx())
        && transform.dy() == std::floor(transform.dy());
}

// The width of a pen whose lines StrokeRows knows; 0 for others.
int wholeWidth(const QPen &pen)
{
    const double width = std::max(pen.widthF(), 1.0);
    if (pen.style() != Qt::SolidLine || width != std::floor(width) || width > StrokeRows::maximumPenWidth)
        return 0;
    const bool isRound = pen.capStyle() == Qt::RoundCap && pen.joinStyle() == Qt::RoundJoin;
    return isRound || (width == 1 && pen.capStyle() != Qt::FlatCap) ? static_cast<int>(width) : 0;
}

// The part of a line, as two fractions of it, that lies between two rows; empty (first above second) when none does.
std::pair<double, double> partBetween(const QLineF &line, double topY, double bottomY)
{
    if (line.dy() == 0)
        return line.y1() >= topY && line.y1() <= bottomY ? std::pair(0.0, 1.0) : std::pair(1.0, 0.0);
    const double atTop = (topY - line.y1()) / line.dy();
    const double atBottom = (bottomY - line.y1()) / line.dy();
    return {std::max(std::min(atTop, atBottom), 0.0), std::min(std::max(atTop, atBottom), 1.0)};
}

} // namespace

bool CurveLine::update(const CurveSamples &samples, const CurveKey &key)
{
    if (m_path.key() == key && samples.revision() == m_samples.revision())
        return false;
    m_samples = samples;
    m_path = CurvePath(samples, key);
    m_rows = {};
    m_lengths.clear();
    return true;
}

void CurveLine::clear()
{
    *this = {};
}

void CurveLine::paint(QPainter &painter, const QPen &pen, double topY, double bottomY) const
{
    const double top = std::max(topY, m_path.bounds().top() - pen.widthF() - 1);
    const double bottom = std::min(bottomY, m_path.bounds().bottom() + pen.widthF() + 1);
    if (m_path.isEmpty() || !(top <= bottom) || pen.style() == Qt::NoPen)
        return;
    painter.save();
    const int width = wholeWidth(pen);
    if (width > 0 && m_rows.penWidth() != width)
        m_rows = StrokeRows(m_samples, m_path, width);
    if (width > 0 && m_rows.isNeeded() && isPlainRaster(painter))
        paintRows(painter, pen, toInt(std::floor(top)), toInt(std::ceil(bottom)));
    else
        strokePath(painter, pen, top, bottom);
    painter.restore();
}

void CurveLine::paintRows(QPainter &painter, const QPen &pen, int topRow, int bottomRow) const
{
    const int deviceTop = toInt(-painter.deviceTransform().dy());
    const int deviceBottom = deviceTop + painter.paintEngine()->paintDevice()->height() - 1;
    int top = std::max(topRow, deviceTop);
    int bottom = std::min(bottomRow, deviceBottom);
    if (m_rows.penWidth() == 1) {
        // The painter cuts the lines that leave its device before it looks for their pixels, which moves some: the
        // rows of the lines that cross an edge of the device are stroked.
        const auto [upper, lower] = m_path.crossing(deviceTop - 1);
        const int upperEnd = std::max(deviceTop + 1, toInt(std::ceil(lower)));
        if (upper < lower && top <= upperEnd && strokeSamples(painter, pen, deviceTop, std::min(upperEnd, bottom)))
            top = upperEnd + 1;
        const auto [above, below] = m_path.crossing(deviceBottom + 2);
        const int lowerStart = std::max(top, std::min(deviceBottom - 1, toInt(std::floor(above)) - 1));
        if (above < below && bottom >= lowerStart && strokeSamples(painter, pen, lowerStart, deviceBottom))
            bottom = lowerStart - 1;
    }
    m_rectangles.clear();
    m_rows.appendPixels(top, bottom, m_rectangles);
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.brush());
    painter.drawRects(m_rectangles);
}

// Strokes the line of every sample in some rows. False when there are too many samples.
bool CurveLine::strokeSamples(QPainter &painter, const QPen &pen, int topRow, int bottomRow) const
{
    constexpr double margin = 3; // rows; lines beside these decide how theirs are painted
    constexpr int maximumSamples = 4096;
    const auto [begin, end] = SamplePlacer(m_path.key()).range(m_samples, topRow - margin, bottomRow + margin);
    if (end - begin > maximumSamples)
        return false;
    painter.save();
    const int width = toInt(static_cast<double>(m_path.key().scale.width));
    painter.setClipRect(QRect(QPoint(-1, topRow), QPoint(width + 1, bottomRow)), Qt::IntersectClip);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(samplePath(m_samples, m_path.key(), topRow - margin, bottomRow + margin));
    painter.restore();
    return true;
}

void CurveLine::strokePath(QPainter &painter, const QPen &pen, double topY, double bottomY) const
{
    const double top = topY - pen.widthF();
    const double bottom = bottomY + pen.widthF();
    const QVector<CurvePath::Slice> slices = m_path.slices(top, bottom);
    painter.setBrush(Qt::NoBrush);
    if (pen.style() == Qt::SolidLine) {
        painter.setPen(pen);
        painter.drawPath(m_path.path(slices));
        return;
    }
    QPen solid(pen.brush(), pen.widthF(), Qt::SolidLine, pen.capStyle(), pen.joinStyle());
    if (pen.widthF() <= 1)
        solid.setCapStyle(Qt::FlatCap); // others would close gaps of two pixels
    painter.setPen(solid);
    painter.drawPath(dashes(pen, slices, top, bottom));
}

// The painter starts its pattern anew where a line enters the device, so that dashes would crawl when the view
// scrolls; these stand where the length of the line puts them.
QPainterPath CurveLine::dashes(const QPen &pen, const QVector<CurvePath::Slice> &slices, double topY,
                               double bottomY) const
{
    const double unit = std::max(pen.widthF(), 1.0);
    QVector<double> ends; // of the dashes and gaps of one pattern, in pixels
    for (const double length : pen.dashPattern())
        ends.append((ends.isEmpty() ? 0 : ends.last()) + length * unit);
    QPainterPath path;
    if (ends.size() < 2 || !(ends.last() > 0))
        return path;
    for (const CurvePath::Slice &slice : slices) {
        double before = lengthBefore(slice.first) + pen.dashOffset() * unit;
        bool isOpen = false; // whether a dash goes on from the line before
        for (int i = slice.first; i + 1 < slice.first + slice.count; ++i) {
            const QLineF line(m_path.points().at(i), m_path.points().at(i + 1));
            const double length = line.length();
            if (length == 0)
                continue;
            const auto [from, to] = partBetween(line, topY, bottomY);
            const bool isContinued = isOpen && from <= 0;
            isOpen = false;
            for (double period = std::floor((before + from * length) / ends.last());
                 from <= to && period * ends.last() - before < to * length; ++period) {
                for (int k = 0; k + 1 < ends.size(); k += 2) {
                    const double start = period * ends.last() + (k > 0 ? ends.at(k - 1) : 0) - before;
                    const double end = period * ends.last() + ends.at(k) - before;
                    if (end <= from * length || start >= to * length)
                        continue;
                    if (start >= 0 || !isContinued)
                        path.moveTo(line.pointAt(std::max(start, 0.0) / length));
                    path.lineTo(end < length ? line.pointAt(end / length) : line.p2());
                    isOpen = end > length;
                }
            }
            before += length;
        }
    }
    return path;
}

double CurveLine::lengthBefore(int point) const
{
    constexpr int step = 64;
    const QVector<QPointF> &points = m_path.points();
    if (m_lengths.isEmpty()) {
        for (const CurvePath::SubPath &subPath : m_path.subPaths()) {
            double length = 0;
            for (int i = subPath.first; i < subPath.first + subPath.count; ++i) {
                length += i > subPath.first ? QLineF(points.at(i - 1), points.at(i)).length() : 0;
                if (i % step == 0)
                    m_lengths.append(length);
            }
        }
    }
    const int start = std::max(m_path.subPathStart(point), point / step * step);
    double length = start % step == 0 && start > m_path.subPathStart(point) ? m_lengths.at(start / step) : 0;
    for (int i = start; i < point; ++i)
        length += QLineF(points.at(i), points.at(i + 1)).length();
    return length;
}

} // namespace logview
