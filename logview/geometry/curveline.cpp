#include "logview/geometry/curveline.h"

#include "logview/geometry/rowreducer.h"

#include <QLineF>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>
#include <QRect>

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

// Rows that are asked for beyond those that show: lines are drawn exactly only when the painter knows the ones before.
constexpr double strokeMargin = 8;

} // namespace

/// Measures the reduced line, and leaves milestones on its way.
class CurveLine::LengthSink
{
public:
    explicit LengthSink(const Milestone &start, QVector<Milestone> *milestones = nullptr)
        : m_at(start)
        , m_milestones(milestones)
    {
    }

    double length() const { return m_at.length; }
    void lineBreaks()
    {
        m_at.length = 0;
        m_at.isOpen = false;
    }
    void rowBegins(int sample)
    {
        constexpr int step = 64; // samples
        if (!m_milestones || (!m_milestones->isEmpty() && sample < m_milestones->last().sample + step))
            return;
        m_at.sample = sample;
        m_milestones->append(m_at);
    }
    void point(const QPointF &point)
    {
        m_at.length += m_at.isOpen ? QLineF(m_at.from, point).length() : 0;
        m_at.from = point;
        m_at.isOpen = true;
    }

private:
    Milestone m_at;
    QVector<Milestone> *m_milestones;
};

void CurveLine::update(const CurveSamples &samples, const CurveKey &key)
{
    if (m_key == key && samples.revision() == m_samples.revision())
        return;
    m_samples = samples;
    m_key = key;
    m_rows = {};
    m_milestones.clear();
}

void CurveLine::paint(QPainter &painter, const QPen &pen, double topY, double bottomY) const
{
    const double top = std::max(topY, -pen.widthF() - 1);
    const double bottom = std::min(bottomY, static_cast<double>(m_key.axis.height) + pen.widthF() + 1);
    if (m_samples.isEmpty() || !(top <= bottom) || pen.style() == Qt::NoPen)
        return;
    painter.save();
    const int width = isPlainRaster(painter) ? wholeWidth(pen) : 0;
    if (width > 0 && m_rows.penWidth() != width)
        m_rows = StrokeRows(m_samples, m_key, width);
    if (width > 0 && m_rows.isNeeded())
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
    QVector<QRect> rectangles; // of hundreds of curves none keeps them
    rectangles.reserve(4 * std::max(bottom - top + 1, 0));
    if (m_rows.penWidth() == 1) {
        // The painter cuts the lines that leave its device before it looks for their pixels, which moves some.
        const ShownRows device{static_cast<double>(deviceTop), static_cast<double>(deviceBottom)};
        const auto [upper, lower] = crossing(deviceTop - 1);
        const int upperEnd = std::min(std::max(deviceTop + 1, toInt(std::ceil(lower))), bottom);
        if (upper < lower && top <= upperEnd) {
            m_rows.appendCutPixels(top, upperEnd, device, rectangles);
            top = upperEnd + 1;
        }
        const auto [above, below] = crossing(deviceBottom + 2);
        const int lowerStart = std::max(top, std::min(deviceBottom - 1, toInt(std::floor(above)) - 1));
        if (above < below && lowerStart <= bottom) {
            m_rows.appendCutPixels(lowerStart, bottom, device, rectangles);
            bottom = lowerStart - 1;
        }
    }
    m_rows.appendPixels(top, bottom, rectangles);
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.brush());
    painter.drawRects(rectangles);
}

// Top and bottom of the line that crosses a pixel position; both 0 when none does.
std::pair<double, double> CurveLine::crossing(double y) const
{
    const SamplePlacer placer(m_key);
    const auto [begin, end] = placer.range(m_samples, {y, y});
    QPointF before;
    QPointF after;
    if (end - begin < 2 || placer.place(m_samples, begin, before) != SamplePlacer::Drawn
        || placer.place(m_samples, begin + 1, after) != SamplePlacer::Drawn)
        return {0, 0};
    const bool isBefore = m_samples.order() == DepthOrder::Ascending ? before.y() < y : before.y() > y;
    return isBefore ? std::minmax({before.y(), after.y()}) : std::pair(0.0, 0.0);
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

// The painter starts its pattern anew where a line enters the device, so that dashes would crawl when the view
// scrolls; these stand where the length of the line puts them.
QPainterPath CurveLine::dashes(const QPen &pen, const QPainterPath &line, double lengthBefore, double topY,
                               double bottomY) const
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
        const double length = piece.length();
        if (length == 0)
            continue;
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

// Length of the reduced line from the start of its unbroken piece to a sample that is the last of its row. The first
// call under a key measures the whole line.
double CurveLine::lengthBefore(int sample, double perPixel) const
{
    const SamplePlacer placer(m_key);
    const std::pair<int, int> whole = placer.range(m_samples);
    if (m_milestones.isEmpty() || m_milestonesPerPixel != perPixel) {
        m_milestones.clear();
        m_milestonesPerPixel = perPixel;
        LengthSink sink({}, &m_milestones);
        RowReducer<LengthSink>(sink).reduce(m_samples, placer, whole, perPixel);
        m_milestones.squeeze();
    }
    const auto next = std::partition_point(m_milestones.cbegin(), m_milestones.cend(),
                                           [sample](const Milestone &each) { return each.sample <= sample; });
    Milestone start;
    start.sample = whole.first;
    if (next != m_milestones.cbegin())
        start = *(next - 1);
    LengthSink sink(start);
    RowReducer<LengthSink>(sink).reduce(m_samples, placer, {start.sample, sample + 1}, perPixel);
    return sink.length();
}

} // namespace logview
