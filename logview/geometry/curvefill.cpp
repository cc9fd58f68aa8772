#include "logview/geometry/curvefill.h"

#include "logview/geometry/valuescan.h"

#include <QHash>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

// The painter loses its way beyond row 32,767; a pair of edges that reaches further than this past the visible rows
// is cut there.
constexpr double farRows = 4096;

// How far a run reaches under the next one on paper, in pixels of the display: as far as a pixel of a coarse view.
constexpr double lapPx = 1;

bool isPaper(const QPainter &painter)
{
    return painter.paintEngine() != nullptr && painter.paintEngine()->type() != QPaintEngine::Raster;
}

double toward(double from, double to, double part)
{
    return from + (to - from) * part;
}

CurveFill::Edge between(const CurveFill::Edge &a, const CurveFill::Edge &b, double part)
{
    return {toward(a.y, b.y, part), toward(a.x, b.x, part), toward(a.limitX, b.limitX, part)};
}

/// The samples of another curve by depth.
class Partners
{
public:
    explicit Partners(const CurveSamples &samples)
        : m_samples(samples)
    {
        if (samples.order() != DepthOrder::Unsorted)
            return;
        m_byDepth.reserve(samples.size());
        for (int i = samples.size(); i-- > 0;) // of several at one depth the first
            m_byDepth.insert(samples.depthM(i), i);
    }

    // Index of the sample of exactly this depth, which is that of a sample of the curve; -1 for none.
    int at(double depthM, int sample)
    {
        if (m_samples.order() == DepthOrder::Unsorted)
            return m_byDepth.value(depthM, -1);
        const bool isAscending = m_samples.order() == DepthOrder::Ascending;
        // Two curves mostly have the same depths, one of them some samples before the other.
        const int found = firstAround(-1, std::max(sample + m_ahead, 0), m_samples.size(), [&](int i) {
            return isAscending ? m_samples.depthM(i) < depthM : m_samples.depthM(i) > depthM;
        });
        m_ahead = found - sample;
        return found < m_samples.size() && m_samples.depthM(found) == depthM ? found : -1;
    }

private:
    const CurveSamples m_samples;
    int m_ahead = 0;
    QHash<double, int> m_byDepth;
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
        , m_isScaled(fill.m_rows.perPixel != 1)
        , m_steps(64.0 * fill.m_rows.perPixel)
    {
    }

    void build(const CurveSamples &samples)
    {
        const SamplePlacer placer(m_fill.m_key);
        const FillSettings &settings = m_fill.m_settings;
        const bool isCurve = settings.limit == FillLimit::Curve;
        const ValuePlacer otherPlacer(settings.otherScale);
        const ValueScale &colorScale = isCurve ? settings.otherScale : m_fill.m_key.scale;
        Partners partners(isCurve ? settings.other : CurveSamples());
        // The edge of a sample and the index of its colour; false where there is none.
        const auto edgeOf = [&](int i, Edge &edge, int &color) {
            QPointF point;
            if (placer.place(samples, i, point) != SamplePlacer::Drawn)
                return false;
            const double width = static_cast<double>(m_fill.m_key.scale.width);
            double colorValue = samples.value(i);
            edge = {point.y(), point.x(), settings.limit == FillLimit::LeftBoundary ? 0 : width};
            if (isCurve) {
                const int partner = partners.at(samples.depthM(i), i);
                if (partner < 0 || settings.other.isNull(partner))
                    return false;
                colorValue = settings.other.value(partner);
                const double otherX = otherPlacer.toPixel(colorValue);
                if (std::isnan(otherX))
                    return false;
                edge.limitX = std::clamp(otherX - 0.1, 0.0, width);
            }
            color = colorIndex(colorValue, static_cast<double>(colorScale.minimum),
                               static_cast<double>(colorScale.maximum), settings.barColors.size());
            return true;
        };
        const auto [begin, end] = placer.range(samples, m_fill.m_rows.wholeRows());
        const int first = placer.range(samples).first;
        const bool isInOrder = samples.order() != DepthOrder::Unsorted;
        int colored = first; // the next sample to look at for a colour
        int color = -1;
        int i = begin;
        // Pairs within one band do not show: on to the last sample of each band, and to the first of the next.
        while (i + 1 < end) {
            if (isInOrder)
                i = lastOfBand(samples, placer, i, end);
            if (i + 1 >= end)
                break;
            countReadSamples({i, i + 2});
            Edge above;
            Edge below;
            int index = -1;
            int next = -1;
            const bool isFilled = edgeOf(i, above, index) && edgeOf(i + 1, below, next);
            if (isFilled) {
                // A sample without a colour has that of the last one before it that has one.
                for (int k = i; index < 0 && k-- > colored && !settings.barColors.isEmpty();) {
                    Edge edge;
                    edgeOf(k, edge, index);
                }
                color = index >= 0 ? index : color;
                colored = i + 1;
                add(above, below, color);
            } else {
                closeRun();
            }
            ++i;
        }
        closeRun();
        m_fill.m_edges.squeeze();
        m_fill.m_runs.squeeze();
    }

private:
    // How far the limit lies on the side that is filled.
    double gap(const Edge &edge) const { return m_isLeft ? edge.x - edge.limitX : edge.limitX - edge.x; }

    // The painter rounds to 1/64 pixel. Odd numbers are the bands between the middles of rows, even ones the middles.
    // A scaled screen may be scrolled by quarters of its pixels: there the middles are at any of these.
    qint64 band(double y) const
    {
        const auto steps = static_cast<qint64>(std::floor(y * m_steps + 0.5));
        const qint64 first = m_isScaled ? 0 : 32;
        const int bits = m_isScaled ? 4 : 6;
        const qint64 row = (steps - first) >> bits;
        return steps - first == row * (1 << bits) ? 2 * row : 2 * row + 1;
    }

    // The last of the samples from there on that stand in one band. Most bands of a kind have as many as the one before.
    int lastOfBand(const CurveSamples &samples, const SamplePlacer &placer, int i, int end)
    {
        const qint64 wanted = band(placer.y(samples, i));
        int &count = m_perBand[wanted & 1];
        const int next = firstAround(i, i + count, end, [&](int k) { return band(placer.y(samples, k)) == wanted; });
        count = next - i;
        return next - 1;
    }

    void add(const Edge &above, const Edge &below, int color)
    {
        const double before = gap(above);
        const double after = gap(below);
        if (before >= 0 && after >= 0 && before + after > 0)
            addPair(above, below, color);
        else if (before > 0)
            addPair(above, between(above, below, before / (before - after)), color);
        else if (after > 0)
            addPair(between(above, below, before / (before - after)), below, color);
    }

    void addPair(const Edge &a, const Edge &b, int color)
    {
        const qint64 bandA = band(a.y);
        const qint64 bandB = band(b.y);
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

    CurveFill &m_fill;
    bool m_isLeft;
    bool m_isScaled;
    double m_steps; // of the painter, a pixel
    int m_perBand[2] = {1, 1}; // samples in the middle of a row, and between two of them
    bool m_isRunOpen = false;
    int m_runFirst = 0;
    int m_runColor = -1;
    qint64 m_runLast = 0;
};

CurveFill::CurveFill(const CurveSamples &samples, const CurveKey &key, const FillSettings &settings,
                     const ShownRows &rows)
    : m_key(key)
    , m_settings(settings)
    , m_rows(rows)
    , m_order(samples.order())
    , m_isBuilt(true)
{
    // Depths that are not in order are looked through whole, once.
    if (m_order == DepthOrder::Unsorted || settings.other.order() == DepthOrder::Unsorted)
        m_rows = {ShownRows().top, ShownRows().bottom, rows.perPixel};
    Builder(*this).build(samples);
}

bool CurveFill::update(const CurveSamples &samples, const CurveKey &key, const FillSettings &settings,
                       const ShownRows &rows)
{
    if (m_isBuilt && m_key == key && m_settings == settings && m_rows.perPixel == rows.perPixel
        && m_rows.top <= rows.top && m_rows.bottom >= rows.bottom)
        return false;
    *this = CurveFill(samples, key, settings, rows);
    return true;
}

void CurveFill::show(QPainter &painter, const CurveSamples &samples, const CurveKey &key,
                     const FillSettings &settings, const QColor &solid, const ShownRows &rows)
{
    constexpr double viewPerStrip = 4;
    const bool isStrip = viewPerStrip * (rows.bottom - rows.top) < m_rows.bottom - m_rows.top;
    if (isStrip && (rows.top < m_rows.top || rows.bottom > m_rows.bottom)) {
        CurveFill(samples, key, settings, rows).paint(painter, solid, rows.top, rows.bottom);
        return;
    }
    update(samples, key, settings, rows);
    paint(painter, solid, rows.top, rows.bottom);
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

// The edges behind the run that the next one covers, which goes on in another colour where this one ends.
QVector<CurveFill::Edge> CurveFill::lapUnderNext(const Run &run) const
{
    const Run *next = &run + 1;
    if (next == m_runs.constEnd() || next->color < 0 || qAlpha(m_settings.barColors.at(next->color)) != 255)
        return {};
    const Edge &from = m_edges.at(next->first);
    const Edge &to = m_edges.at(next->first + 1);
    const Edge &last = m_edges.at(next->first - 1);
    if (std::abs(from.y - last.y) * m_rows.perPixel > 1)
        return {}; // a row of no values between them
    const double height = std::abs(to.y - from.y);
    const Edge end = height > lapPx ? between(from, to, lapPx / height) : to;
    return from.y == last.y ? QVector<Edge>{end} : QVector<Edge>{from, end};
}

QPolygonF CurveFill::visiblePolygon(const Run &run, double topY, double bottomY, bool isLapped) const
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
    QVector<Edge> visible;
    visible.reserve(static_cast<int>(last - first) + 2);
    const double cutTop = topY - farRows;
    const double cutBottom = bottomY + farRows;
    const auto cut = [&](const Edge &outer, const Edge &inner) {
        const double y = std::clamp(outer.y, cutTop, cutBottom);
        return y == outer.y ? outer : between(outer, inner, (y - outer.y) / (inner.y - outer.y));
    };
    if (first != begin)
        visible.append(cut(*(first - 1), first != end ? *first : *(first - 1)));
    for (auto edge = first; edge != last; ++edge)
        visible.append(*edge);
    if (last != end)
        visible.append(cut(*last, last != begin ? *(last - 1) : *last));
    else if (isLapped)
        visible += lapUnderNext(run);
    QPolygonF polygon;
    polygon.reserve(2 * visible.size());
    for (const Edge &edge : qAsConst(visible))
        polygon.append({edge.x, edge.y});
    for (int i = visible.size(); i-- > 0;)
        polygon.append({visible.at(i).limitX, visible.at(i).y});
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
    const bool isLapped = isPaper(painter);
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
        painter.drawPolygon(visiblePolygon(*run, top, bottom, isLapped));
    }
    painter.restore();
}

} // namespace logview
