#include "logview/geometry/curvefill.h"

#include <QHash>
#include <QPainter>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace logview {

namespace {

std::atomic<int> builds{0};

// The painter loses its way beyond row 32,767; a pair of edges that reaches further than this past the visible rows
// is cut there.
constexpr double farRows = 4096;

double toward(double from, double to, double part)
{
    return from + (to - from) * part;
}

CurveFill::Edge between(const CurveFill::Edge &a, const CurveFill::Edge &b, double part)
{
    return {toward(a.y, b.y, part), toward(a.x, b.x, part), toward(a.limitX, b.limitX, part)};
}

/// The samples of the other curve by depth, asked for in the order of this curve's samples: one pass over both where
/// both are in the same order.
class Partners
{
public:
    Partners(const CurveSamples &samples, const CurveSamples &other)
        : m_other(other)
        , m_isJoined(other.order() != DepthOrder::Unsorted && samples.order() == other.order())
    {
        if (m_isJoined)
            return;
        m_byDepth.reserve(other.size());
        for (int i = other.size(); i-- > 0;) // of several at one depth the first
            m_byDepth.insert(other.depthM(i), i);
    }

    // Index of the other curve's sample of exactly this depth; -1 for none.
    int at(double depthM)
    {
        if (!m_isJoined)
            return m_byDepth.value(depthM, -1);
        const bool isAscending = m_other.order() == DepthOrder::Ascending;
        const double *depths = m_other.depthsM();
        if (!m_isStarted) {
            const double *end = depths + m_other.size();
            m_next = static_cast<int>(
                std::partition_point(depths, end,
                                     [&](double depth) { return isAscending ? depth < depthM : depth > depthM; })
                - depths);
            m_isStarted = true;
        }
        while (m_next < m_other.size() && (isAscending ? depths[m_next] < depthM : depths[m_next] > depthM))
            ++m_next;
        return m_next < m_other.size() && depths[m_next] == depthM ? m_next : -1;
    }

private:
    const CurveSamples m_other;
    QHash<double, int> m_byDepth;
    bool m_isJoined = false;
    bool m_isStarted = false;
    int m_next = 0;
};

} // namespace

FillTarget fillTarget(const QString &upTo, int curveLineCount)
{
    const QString text = upTo.trimmed();
    if (text == QLatin1String("Left Boundary"))
        return {true, FillLimit::LeftBoundary, 0};
    if (text == QLatin1String("Right Boundary"))
        return {true, FillLimit::RightBoundary, 0};
    if (!text.startsWith(QLatin1String("Curve_")))
        return {};
    const int number = text.mid(6).toInt();
    if (number < 1 || number > curveLineCount)
        return {};
    return {true, FillLimit::Curve, number};
}

bool operator==(const FillSettings &a, const FillSettings &b)
{
    return a.side == b.side && a.limit == b.limit && a.barColors == b.barColors
        && (a.limit != FillLimit::Curve
            || (a.other.revision() == b.other.revision() && a.otherScale == b.otherScale));
}

/// Makes runs of edges. A row of pixels shows what crosses the middle of the row, so pairs of edges that cross the
/// middle of none are left out.
class CurveFill::Builder
{
public:
    explicit Builder(CurveFill &fill)
        : m_fill(fill)
        , m_isLeft(fill.m_settings.side == FillSide::Left)
        , m_isScaled(fill.m_key.rowsPerPixel != 1)
        , m_steps(64.0 * fill.m_key.rowsPerPixel)
    {
    }

    void build(const CurveSamples &samples)
    {
        const SamplePlacer placer(m_fill.m_key);
        const FillSettings &settings = m_fill.m_settings;
        const double width = static_cast<double>(m_fill.m_key.scale.width);
        const bool isCurve = settings.limit == FillLimit::Curve;
        const ValuePlacer otherPlacer(settings.otherScale);
        const ValueScale &colorScale = isCurve ? settings.otherScale : m_fill.m_key.scale;
        const int colorCount = settings.barColors.size();
        Partners partners(samples, isCurve ? settings.other : CurveSamples());
        int color = -1;
        const auto [begin, end] = placer.range(samples);
        for (int i = begin; i < end; ++i) {
            QPointF point;
            if (placer.place(samples, i, point) != SamplePlacer::Drawn) {
                breakHere();
                continue;
            }
            double colorValue = samples.values()[i];
            double limitX = settings.limit == FillLimit::LeftBoundary ? 0 : width;
            if (isCurve) {
                const int partner = partners.at(samples.depthsM()[i]);
                if (partner < 0 || settings.other.isNull(partner)) {
                    breakHere();
                    continue;
                }
                colorValue = settings.other.value(partner);
                const double otherX = otherPlacer.toPixel(colorValue);
                if (std::isnan(otherX)) {
                    breakHere();
                    continue;
                }
                limitX = std::clamp(otherX - 0.1, 0.0, width);
            }
            const int index = colorIndex(colorValue, static_cast<double>(colorScale.minimum),
                                         static_cast<double>(colorScale.maximum), colorCount);
            add({point.y(), point.x(), limitX}, color);
            color = index >= 0 ? index : color; // shows between this sample and the next
        }
        breakHere();
        m_fill.m_edges.squeeze();
        m_fill.m_runs.squeeze();
    }

private:
    // How far the limit lies on the side that is filled.
    double gap(const Edge &edge) const { return m_isLeft ? edge.x - edge.limitX : edge.limitX - edge.x; }

    // The painter rounds to 1/64 pixel. Odd numbers are the bands between the middles of rows, even ones the middles.
    // A scaled screen may be scrolled by quarters of its pixels: there the middles are at any of these.
    qint64 band(const Edge &edge) const
    {
        const auto steps = static_cast<qint64>(std::floor(edge.y * m_steps + 0.5));
        const qint64 first = m_isScaled ? 0 : 32;
        const int bits = m_isScaled ? 4 : 6;
        const qint64 row = (steps - first) >> bits;
        return steps - first == row << bits ? 2 * row : 2 * row + 1;
    }

    void add(const Edge &edge, int pairColor)
    {
        if (m_hasPrevious) {
            const double before = gap(m_previous);
            const double after = gap(edge);
            if (before >= 0 && after >= 0 && before + after > 0)
                addPair(m_previous, edge, pairColor);
            else if (before > 0)
                addPair(m_previous, between(m_previous, edge, before / (before - after)), pairColor);
            else if (after > 0)
                addPair(between(m_previous, edge, before / (before - after)), edge, pairColor);
        }
        m_previous = edge;
        m_hasPrevious = true;
    }

    void addPair(const Edge &a, const Edge &b, int color)
    {
        const qint64 bandA = band(a);
        const qint64 bandB = band(b);
        if (bandA == bandB)
            return;
        // Straight on from the run's last edge, also past pairs that were left out: they stayed in its band.
        if (m_runLast == bandA && m_runColor == color && m_isRunOpen) {
            if (m_fill.m_edges.last().y != a.y || m_fill.m_edges.last().x != a.x)
                m_fill.m_edges.append(a);
        } else {
            closeRun();
            m_runFirst = m_fill.m_edges.size();
            m_fill.m_edges.append(a);
            m_isRunOpen = true;
            m_runColor = color;
        }
        m_fill.m_edges.append(b);
        m_runLast = bandB;
    }

    void closeRun()
    {
        if (m_isRunOpen) {
            Run run{m_runFirst, m_fill.m_edges.size() - m_runFirst, m_runColor, m_fill.m_edges.at(m_runFirst).y,
                    m_fill.m_edges.at(m_runFirst).y};
            for (int i = m_runFirst; i < m_fill.m_edges.size(); ++i) {
                run.top = std::min(run.top, m_fill.m_edges.at(i).y);
                run.bottom = std::max(run.bottom, m_fill.m_edges.at(i).y);
            }
            m_fill.m_runs.append(run);
        }
        m_isRunOpen = false;
    }

    void breakHere()
    {
        closeRun();
        m_hasPrevious = false;
    }

    CurveFill &m_fill;
    bool m_isLeft;
    bool m_isScaled;
    double m_steps; // of the painter, a pixel
    Edge m_previous;
    bool m_hasPrevious = false;
    bool m_isRunOpen = false;
    int m_runFirst = 0;
    int m_runColor = -1;
    qint64 m_runLast = 0;
};

CurveFill::CurveFill(const CurveSamples &samples, const CurveKey &key, const FillSettings &settings)
    : m_key(key)
    , m_settings(settings)
    , m_order(samples.order())
    , m_isBuilt(true)
{
    ++builds;
    Builder(*this).build(samples);
}

bool CurveFill::update(const CurveSamples &samples, const CurveKey &key, const FillSettings &settings)
{
    if (m_isBuilt && m_key == key && m_settings == settings)
        return false;
    *this = CurveFill(samples, key, settings);
    return true;
}

void CurveFill::clear()
{
    *this = {};
}

QPolygonF CurveFill::polygon(const Run &run) const
{
    QPolygonF polygon;
    polygon.reserve(2 * run.count);
    for (int i = run.first; i < run.first + run.count; ++i)
        polygon.append({m_edges.at(i).x, m_edges.at(i).y});
    for (int i = run.first + run.count; i-- > run.first;)
        polygon.append({m_edges.at(i).limitX, m_edges.at(i).y});
    return polygon;
}

QColor CurveFill::color(const Run &run, const QColor &solid) const
{
    return run.color < 0 ? solid : QColor::fromRgba(m_settings.barColors.at(run.color));
}

QPolygonF CurveFill::visiblePolygon(const Run &run, double topY, double bottomY) const
{
    if (m_order == DepthOrder::Unsorted)
        return polygon(run);
    const bool isAscending = m_order == DepthOrder::Ascending;
    const auto begin = m_edges.begin() + run.first;
    const auto end = begin + run.count;
    const auto first = std::partition_point(
        begin, end, [&](const Edge &edge) { return isAscending ? edge.y < topY : edge.y > bottomY; });
    const auto last = std::partition_point(
        first, end, [&](const Edge &edge) { return isAscending ? edge.y <= bottomY : edge.y >= topY; });
    m_visible.clear();
    const double cutTop = topY - farRows;
    const double cutBottom = bottomY + farRows;
    const auto cut = [&](const Edge &outer, const Edge &inner) {
        const double y = std::clamp(outer.y, cutTop, cutBottom);
        return y == outer.y ? outer : between(outer, inner, (y - outer.y) / (inner.y - outer.y));
    };
    if (first != begin)
        m_visible.append(cut(*(first - 1), first != end ? *first : *(first - 1)));
    for (auto edge = first; edge != last; ++edge)
        m_visible.append(*edge);
    if (last != end)
        m_visible.append(cut(*last, last != begin ? *(last - 1) : *last));
    QPolygonF polygon;
    polygon.reserve(2 * m_visible.size());
    for (const Edge &edge : qAsConst(m_visible))
        polygon.append({edge.x, edge.y});
    for (int i = m_visible.size(); i-- > 0;)
        polygon.append({m_visible.at(i).limitX, m_visible.at(i).y});
    return polygon;
}

void CurveFill::paint(QPainter &painter, const QColor &solid, double topY, double bottomY) const
{
    if (m_runs.isEmpty() || !(topY <= bottomY))
        return;
    // A row more on both sides: what is cut there must not show.
    const double top = topY - 1;
    const double bottom = bottomY + 1;
    auto run = m_runs.begin();
    if (m_order != DepthOrder::Unsorted)
        run = std::partition_point(m_runs.begin(), m_runs.end(), [&](const Run &each) {
            return m_order == DepthOrder::Ascending ? each.bottom < top : each.top > bottom;
        });
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    int color = -2;
    for (; run != m_runs.end(); ++run) {
        if (run->bottom < top || run->top > bottom) {
            if (m_order == DepthOrder::Unsorted)
                continue;
            break;
        }
        const QColor fillColor = this->color(*run, solid);
        if (!fillColor.isValid())
            continue; // no colour of the bar yet, and no other one
        if (run->color != color)
            painter.setBrush(fillColor);
        color = run->color;
        painter.drawPolygon(visiblePolygon(*run, top, bottom));
    }
    painter.restore();
}

int CurveFill::buildCount()
{
    return builds;
}

} // namespace logview
