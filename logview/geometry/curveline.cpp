#include "logview/geometry/curveline.h"

#include "logview/geometry/curvepath.h"

#include <QLineF>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>
#include <QRect>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace logview {

namespace {

// How many pixels of the painter one of the track takes, where lines set pixels without shades; 0 for others.
double rasterScale(const QPainter &painter)
{
    const QTransform transform = painter.deviceTransform();
    if (painter.paintEngine() == nullptr || painter.paintEngine()->type() != QPaintEngine::Raster
        || (painter.renderHints() & (QPainter::Antialiasing | QPainter::Qt4CompatiblePainting)) != 0
        || transform.type() > QTransform::TxScale || transform.m11() != transform.m22())
        return 0;
    const bool isWhole = transform.dx() == std::floor(transform.dx()) && transform.dy() == std::floor(transform.dy());
    return transform.m11() > 1 || (transform.m11() == 1 && isWhole) ? transform.m11() : 0;
}

// The width in pixels of a painter of a pen whose lines StrokeRows knows; 0 for others.
double rowsWidth(const QPen &pen, double scale)
{
    const double width = std::max(pen.widthF() * scale, 1.0);
    if (pen.style() != Qt::SolidLine || width > StrokeRows::maximumPenWidth)
        return 0;
    const bool isRound = pen.capStyle() == Qt::RoundCap && pen.joinStyle() == Qt::RoundJoin;
    return isRound || (width == 1 && pen.capStyle() != Qt::FlatCap) ? width : 0;
}

CurveKey scaledKey(const CurveKey &key, double scale)
{
    CurveKey scaled = key;
    scaled.axis.height = static_cast<float>(static_cast<double>(key.axis.height) * scale);
    scaled.scale.width = static_cast<float>(static_cast<double>(key.scale.width) * scale);
    return scaled;
}

// Where screens scale pixels by a fraction a track may stand between two of theirs. The middle goes to one side whatever
// rounding did before.
double nearestPixel(double position)
{
    return std::floor(position + 0.4375);
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

// Rows that are asked for beyond those that show: lines are drawn exactly only when the painter knows the ones before.
constexpr double strokeMargin = 8;

// The painter starts its pattern anew where a line enters the device, so that dashes would crawl when the view
// scrolls; these stand where the length of the line puts them.
QPainterPath dashes(const QPen &pen, const QPainterPath &line, double lengthBefore, double topY, double bottomY)
{
    const double unit = std::max(pen.widthF(), 1.0);
    QVector<double> ends; // of the dashes and gaps of one pattern, in pixels
    for (const double length : pen.dashPattern())
        ends.append((ends.isEmpty() ? 0 : ends.last()) + length * unit);
    QPainterPath path;
    if (ends.size() < 2 || !(ends.last() > 0))
        return path;
    double before = 0;
    bool isOpen = false; // whether a dash goes on from the line before
    for (int i = 0; i < line.elementCount(); ++i) {
        if (line.elementAt(i).isMoveTo()) {
            before = (i == 0 ? lengthBefore : 0) + pen.dashOffset() * unit;
            isOpen = false;
            continue;
        }
        const QLineF piece(line.elementAt(i - 1), line.elementAt(i));
        const double length = piece.length(); // not 0: a path leaves out points that are where the one before is
        const auto [from, to] = partBetween(piece, topY, bottomY);
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
                    path.moveTo(piece.pointAt(std::max(start, 0.0) / length));
                path.lineTo(end < length ? piece.pointAt(end / length) : piece.p2());
                isOpen = end > length;
            }
        }
        before += length;
    }
    return path;
}

} // namespace

void CurveLine::update(const CurveSamples &samples, const CurveKey &key)
{
    if (m_key == key && samples.revision() == m_samples.revision())
        return;
    m_samples = samples;
    m_key = key;
    m_rows = {};
    m_lengths.clear();
}

void CurveLine::paint(QPainter &painter, const QPen &pen, double topY, double bottomY) const
{
    const double top = std::max(topY, -pen.widthF() - 1);
    const double bottom = std::min(bottomY, static_cast<double>(m_key.axis.height) + pen.widthF() + 1);
    if (m_samples.isEmpty() || !(top <= bottom) || pen.style() == Qt::NoPen)
        return;
    painter.save();
    const double scale = rasterScale(painter);
    const double width = scale > 0 ? rowsWidth(pen, scale) : 0;
    const CurveKey key = scale > 0 ? scaledKey(m_key, scale) : m_key;
    if (width > 0 && (m_rows.penWidth() != width || m_rows.key() != key))
        m_rows = StrokeRows(m_samples, key, width);
    if (width > 0 && m_rows.isNeeded())
        paintRows(painter, pen, toInt(std::floor(top * scale)), toInt(std::ceil(bottom * scale)));
    else
        strokePath(painter, pen, top, bottom);
    painter.restore();
}

// Rows are those of the painter's device.
void CurveLine::paintRows(QPainter &painter, const QPen &pen, int topRow, int bottomRow) const
{
    const QTransform transform = painter.deviceTransform();
    const QPointF moved(nearestPixel(transform.dx()), nearestPixel(transform.dy()));
    const int deviceTop = -toInt(moved.y());
    const int deviceBottom = deviceTop + painter.paintEngine()->paintDevice()->height() - 1;
    const QVector<QRect> rectangles = m_rows.rectangles(topRow, bottomRow, deviceTop, deviceBottom);
    painter.scale(1 / transform.m11(), 1 / transform.m11());
    painter.translate(moved - QPointF(transform.dx(), transform.dy()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.brush());
    painter.drawRects(rectangles);
}

void CurveLine::strokePath(QPainter &painter, const QPen &pen, double topY, double bottomY) const
{
    const double top = topY - pen.widthF();
    const double bottom = bottomY + pen.widthF();
    const ShownRows rows{top - strokeMargin, bottom + strokeMargin, rowsPerPixel(painter)};
    const QPainterPath line = reducedPath(m_samples, m_key, rows);
    painter.setBrush(Qt::NoBrush);
    if (pen.style() == Qt::SolidLine) {
        painter.setPen(pen);
        painter.drawPath(line);
        return;
    }
    QPen solid(pen.brush(), pen.widthF(), Qt::SolidLine, pen.capStyle(), pen.joinStyle());
    if (pen.widthF() <= 1)
        solid.setCapStyle(Qt::FlatCap); // others would close gaps of two pixels
    painter.setPen(solid);
    const int first = SamplePlacer(m_key).range(m_samples, rows.wholeRows()).first;
    painter.drawPath(dashes(pen, line, lengthBefore(first, rows.perPixel), top, bottom));
}

// Length of the reduced line from the start of its unbroken piece to a sample that is the last of its row. The first
// call under a key measures the whole line.
double CurveLine::lengthBefore(int sample, double perPixel) const
{
    constexpr int step = 64; // samples
    const SamplePlacer placer(m_key);
    const auto [first, end] = placer.range(m_samples);
    if (sample <= first)
        return 0;
    const auto isDrawn = [&](int i) {
        QPointF point;
        return placer.place(m_samples, i, point) == SamplePlacer::Drawn;
    };
    const auto lengthAt = [&](int to, int from, double before) {
        QPointF last;
        double length = isDrawn(from) ? before : 0;
        bool isOpen = false;
        forReducedLine(m_samples, placer, {from, to + 1}, perPixel, [&](const QPointF &point, bool isFirst) {
            if (isOpen)
                length = isFirst ? 0 : length + QLineF(last, point).length();
            last = point;
            isOpen = true;
        });
        return isDrawn(to) ? length : 0;
    };
    if (m_lengths.isEmpty() || m_lengthsPerPixel != perPixel) {
        const auto rowOf = [&](int i) { return static_cast<qint64>(placer.y(m_samples, i) * perPixel); };
        m_lengthsPerPixel = perPixel;
        m_lengths.clear();
        m_lengths.insert(first, 0);
        for (int from = first, to = first; to < end; ++to) {
            if (to - from < step || (to + 1 < end && rowOf(to + 1) == rowOf(to)))
                continue;
            m_lengths.insert(to, lengthAt(to, from, m_lengths.last()));
            from = to;
        }
    }
    const auto before = std::prev(m_lengths.upperBound(sample));
    return lengthAt(sample, before.key(), before.value());
}

} // namespace logview
