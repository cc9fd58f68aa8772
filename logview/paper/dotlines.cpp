#include "logview/paper/dotlines.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace logview {

namespace {

// As std::round(), which is a call on many machines.
double onDot(double value)
{
    constexpr double most = 1e15; // beyond it all are whole
    return std::abs(value) < most ? static_cast<double>(qRound64(value)) : value;
}

QPointF onDot(const QPointF &point)
{
    return {onDot(point.x()), onDot(point.y())};
}

/// The directions from a corner in which a line passes all corners behind it within half a dot.
class Sector
{
public:
    void begin(const QPointF &from)
    {
        m_from = from;
        m_isOpen = true;
        m_farthest = 0;
    }

    // Whether a line to this point passes all since begin(), and leads on.
    bool take(const QPointF &to)
    {
        constexpr double reach = 0.5;
        const QPointF step = to - m_from;
        const double distance = QPointF::dotProduct(step, step); // squared
        if (distance < m_farthest)
            return false; // it turns back
        if (distance <= reach * reach) {
            m_farthest = distance;
            return true;
        }
        if (!m_isOpen && (turn(m_low, step) < 0 || turn(step, m_high) < 0))
            return false;
        // The lines from the corner that pass the point at the reach.
        const double along = std::sqrt(distance - reach * reach);
        const QPointF low(step.x() * along + step.y() * reach, step.y() * along - step.x() * reach);
        const QPointF high(step.x() * along - step.y() * reach, step.y() * along + step.x() * reach);
        if (m_isOpen || turn(m_low, low) > 0)
            m_low = low;
        if (m_isOpen || turn(high, m_high) > 0)
            m_high = high;
        m_isOpen = false;
        m_farthest = distance;
        return true;
    }

private:
    static double turn(const QPointF &from, const QPointF &to) { return from.x() * to.y() - from.y() * to.x(); }

    QPointF m_from;
    QPointF m_low;
    QPointF m_high;
    double m_farthest = 0;
    bool m_isOpen = true;
};

// The corners of a line without those that it passes within half a unit.
void appendWithoutIdle(std::vector<QPointF> &kept, const QPointF *begin, const QPointF *end)
{
    const size_t first = kept.size();
    Sector sector;
    for (const QPointF *corner = begin; corner != end; ++corner) {
        const size_t count = kept.size() - first;
        if (count == 0) {
            kept.push_back(*corner);
            sector.begin(*corner);
        } else if (count == 1 || !sector.take(*corner)) {
            if (*corner == kept.back())
                continue;
            if (count > 1)
                sector.begin(kept.back());
            kept.push_back(*corner);
            sector.take(*corner);
        } else {
            kept.back() = *corner;
        }
    }
}

// Whether a line between these corners may show in the area.
bool meets(const QPointF &from, const QPointF &to, const QRectF &area)
{
    return std::max(from.x(), to.x()) >= area.left() && std::min(from.x(), to.x()) <= area.right()
        && std::max(from.y(), to.y()) >= area.top() && std::min(from.y(), to.y()) <= area.bottom();
}

// The stretches of a line that may show in the area. A line that does not reach it has none.
QVector<QVector<QPointF>> stretchesIn(const QVector<QPointF> &corners, const QRectF &area)
{
    QVector<QVector<QPointF>> stretches;
    bool isInside = false;
    for (int i = 1; i < corners.size(); ++i) {
        const bool meetsNow = meets(corners.at(i - 1), corners.at(i), area);
        if (meetsNow && !isInside)
            stretches.append({corners.at(i - 1)});
        if (meetsNow)
            stretches.last().append(corners.at(i));
        isInside = meetsNow;
    }
    return stretches;
}

void appendLine(QPainterPath &path, const QVector<QPointF> &corners, bool isClosed)
{
    std::vector<QPointF> kept;
    appendWithoutIdle(kept, corners.constData(), corners.constData() + corners.size());
    if (kept.empty())
        return;
    path.moveTo(kept.front());
    for (size_t i = 1; i < kept.size(); ++i)
        path.lineTo(kept[i]);
    if (isClosed)
        path.closeSubpath();
    else if (kept.size() == 1)
        path.lineTo(kept.front()); // a dot of the pen
}

// Adds what of a line may show in the area.
void appendShown(DotLines &lines, const std::vector<QPointF> &line, const QRectF &area)
{
    const auto add = [&lines, &line](size_t begin, size_t end) {
        lines.starts.push_back(lines.corners.size());
        appendWithoutIdle(lines.corners, line.data() + begin, line.data() + end);
        if (lines.corners.size() == lines.starts.back() + 1)
            lines.corners.push_back(lines.corners.back()); // a dot of the pen
    };
    if (line.size() == 1)
        add(0, 1);
    constexpr size_t none = static_cast<size_t>(-1);
    size_t begin = none; // of a stretch
    for (size_t i = 1; i < line.size(); ++i) {
        const bool isShown = meets(line[i - 1], line[i], area);
        if (isShown && begin == none)
            begin = i - 1;
        if (!isShown && begin != none)
            add(std::exchange(begin, none), i);
    }
    if (begin != none)
        add(begin, line.size());
}

} // namespace

DotLines linesOnDots(const QPainterPath &path, const QTransform &toDots, const QRectF &area)
{
    DotLines lines;
    const int count = path.elementCount();
    lines.corners.reserve(static_cast<size_t>(count));
    std::vector<QPointF> line;
    line.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isCurveTo()) {
            lines = {};
            lines.hasCurves = true;
            return lines;
        }
        if (element.isMoveTo()) {
            appendShown(lines, line, area);
            line.clear();
        }
        line.push_back(onDot(toDots.map(QPointF(element))));
    }
    appendShown(lines, line, area);
    return lines;
}

QRectF boundsOf(const DotLines &lines)
{
    QPointF least;
    QPointF most;
    for (const QPointF &corner : lines.corners) {
        const bool isFirst = &corner == &lines.corners.front();
        least = isFirst ? corner : QPointF(std::min(least.x(), corner.x()), std::min(least.y(), corner.y()));
        most = isFirst ? corner : QPointF(std::max(most.x(), corner.x()), std::max(most.y(), corner.y()));
    }
    return {least, most};
}

QPainterPath onDots(const QPainterPath &path, const QTransform &toDots, const QRectF &strokedIn)
{
    QPainterPath result;
    result.setFillRule(path.fillRule());
    result.reserve(path.elementCount());
    QVector<QPointF> corners;
    corners.reserve(path.elementCount());
    const auto flush = [&] {
        const bool isRing = corners.size() > 2 && corners.first() == corners.last();
        if (strokedIn.isValid() && corners.size() > 1)
            for (const QVector<QPointF> &stretch : stretchesIn(corners, strokedIn))
                appendLine(result, stretch, stretch.size() == corners.size() && isRing);
        else if (!corners.isEmpty())
            appendLine(result, corners, isRing);
        corners.resize(0); // keeps its room
    };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isCurveTo()) {
            if (!corners.isEmpty()) {
                const QPointF end = corners.last();
                flush();
                if (result.elementCount() == 0 || result.currentPosition() != end)
                    result.moveTo(end);
            }
            result.cubicTo(toDots.map(QPointF(element)), toDots.map(QPointF(path.elementAt(i + 1))),
                           onDot(toDots.map(QPointF(path.elementAt(i + 2)))));
            i += 2;
            continue;
        }
        if (element.isMoveTo())
            flush();
        else if (corners.isEmpty())
            corners.append(result.currentPosition()); // behind a curve
        corners.append(onDot(toDots.map(QPointF(element))));
    }
    flush();
    return result;
}

QVector<QPointF> withoutIdleCorners(const QVector<QPointF> &corners)
{
    std::vector<QPointF> kept;
    appendWithoutIdle(kept, corners.constData(), corners.constData() + corners.size());
    return QVector<QPointF>(kept.begin(), kept.end());
}

} // namespace logview
