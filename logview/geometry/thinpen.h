#pragma once

#include "logview/geometry/linepixels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace logview {

/// The painter counts in 64ths of a pixel.
inline qint64 painterSteps(double pixels)
{
    const double exact = pixels * 64;
    const auto whole = static_cast<qint64>(exact);
    return whole - (exact < static_cast<double>(whole) ? 1 : 0);
}

/// A point in the painter's steps.
struct PenPoint
{
    qint64 x = 0;
    qint64 y = 0;
};

/// The first column that has its middle at an x or to the right.
inline qint64 columnFrom(qint64 x)
{
    return (x + 32) >> 6;
}

/// The painter's line of one pixel as long as it stays in a row: what ThinPen does to lines that are level but for a
/// little, of which only the x counts. It keeps the pixels that it sets as one run. Turns of noise cannot be foreseen, so
/// there are few branches.
struct LevelPen
{
    qint64 lastX = 0; ///< last pixel of the line before
    qint64 along = 0; ///< 1 when that went to the right, -1 to the left
    qint64 first = 0; ///< the pixels that are set, from here
    qint64 last = -1; ///< to here
    bool hasDrawn = false;

    /// False, with nothing done, for a line that sets pixels and is shorter than some steps.
    bool draw(qint64 from, qint64 to, qint64 least)
    {
        const qint64 right = to > from ? 1 : 0;
        const qint64 begin = columnFrom(from);
        // The pixels near its beginning and at its end: it sets those between, too. Back from the right half of a pixel
        // a line sets that.
        const qint64 turned = (from >> 6) - begin + 1; // 1 there, else 0
        const qint64 near = begin - 1 + (right | (turned & along & ~(along >> 1)));
        const qint64 far = columnFrom(to) - right;
        if (from == to || near - far == 2 * right - 1)
            return true;
        if (std::abs(to - from) < least)
            return false;
        // Of a pixel that two lines have, the later one that goes to the right sets the next instead.
        const qint64 ahead = near + (right & (lastX == near ? 1 : 0));
        first = std::min({first, near, far});
        last = std::max({last, far, ahead});
        lastX = far;
        along = 2 * right - 1;
        hasDrawn = true;
        return true;
    }
    /// The x, from first to last but one, between which lines set no other pixels.
    std::pair<qint64, qint64> withinSet() const { return {first * 64 - 32, last * 64 + 32}; }
    /// Makes it the pen after a line, whatever was before; false, with nothing done, where that counts.
    bool standBehind(qint64 from, qint64 to)
    {
        const qint64 end = columnFrom(to);
        if (to < from ? end >= columnFrom(from) : end - (from >> 6) < 2)
            return false;
        lastX = to < from ? end : end - 1;
        along = to < from ? -1 : 1;
        hasDrawn = true;
        return true;
    }
};

/// The painter's line of one pixel. It fills the gaps between lines and leaves out pixels that two of them have, by
/// what it remembers of the line before.
class ThinPen
{
public:
    enum Cap { NoCap = 0, CapBegin = 1, CapEnd = 2 };

    explicit ThinPen(PixelRows &pixels)
        : m_pixels(pixels)
    {
    }

    void lift() { m_lastX = nowhere; }
    /// Between these x, the second one excluded, a line from \a x that crosses no middle of a row sets no pixel, wherever
    /// it goes, and leaves the pen as it is. Empty when the second is not above the first.
    std::pair<qint64, qint64> silentAround(qint64 x) const
    {
        const qint64 column = columnFrom(x);
        const qint64 begin = column * 64 - 32;
        if (m_lastDirection == Along) // back from the right half of a pixel it sets that
            return {begin, column * 64};
        return {begin, m_lastDirection != -Along || m_lastX == column ? begin + 64 : begin};
    }
    /// The pen as one that draws level lines in a row, from \a x on; nothing where it comes from elsewhere.
    std::optional<LevelPen> levelAt(qint64 x, qint64 row) const
    {
        const qint64 column = columnFrom(x);
        const bool isBeside = m_lastX == column || (m_lastX == column - 1 && m_lastDirection != -Along);
        const auto [first, last] = m_pixels.runIn(row);
        if (m_lastY != row || !isBeside || m_lastX < first || m_lastX > last)
            return std::nullopt;
        LevelPen pen;
        pen.lastX = m_lastX;
        pen.along = m_lastDirection == Along || m_lastDirection == -Along ? m_lastDirection : 0;
        pen.first = first;
        pen.last = last;
        return pen;
    }
    /// Goes on where such a one stopped.
    void goOn(const LevelPen &pen, qint64 row)
    {
        const auto [first, last] = m_pixels.runIn(row);
        if (pen.first < first || pen.last > last)
            m_pixels.set(row, pen.first, pen.last);
        if (!pen.hasDrawn)
            return;
        m_lastX = pen.lastX;
        m_lastDirection = static_cast<int>(pen.along);
        m_isLastAligned = true;
    }
    void draw(const PenPoint &from, const PenPoint &to, int caps)
    {
        const qint64 dx = std::abs(to.x - from.x);
        const qint64 dy = std::abs(to.y - from.y);
        if (dx < dy)
            draw<true>(from.y, from.x, to.y, to.x, caps);
        else if (dx > 0)
            draw<false>(from.x, from.y, to.x, to.y, caps);
    }

private:
    static constexpr qint64 nowhere = std::numeric_limits<qint64>::min();
    enum Direction { None = 0, Along = 1, Down = 2 }; // the negative ones for the other way

    // A pixel for each step along one axis, u; v is the other one, a 1/1024 of a step fine.
    template<bool isSteep>
    void draw(qint64 u1, qint64 v1, qint64 u2, qint64 v2, int caps)
    {
        const bool isSwapped = u1 > u2;
        int direction = isSteep ? Down : Along;
        if (isSwapped) {
            std::swap(u1, u2);
            std::swap(v1, v2);
            caps = (caps & CapBegin) << 1 | (caps & CapEnd) >> 1;
            direction = -direction;
        }
        const qint64 length = u2 - u1;
        if (m_lastDirection == -direction)
            caps |= isSwapped ? CapEnd : CapBegin;
        if (caps & CapBegin)
            u1 -= 32;
        if (caps & CapEnd)
            u2 += 32;
        qint64 u = (u1 + 32) >> 6;
        qint64 end = (u2 + 32) >> 6;
        qint64 &lastU = isSteep ? m_lastY : m_lastX;
        qint64 &lastV = isSteep ? m_lastX : m_lastY;
        const bool isFollowing = m_lastX != nowhere;
        if ((caps & CapBegin) && isFollowing && lastU == u + 1)
            ++u;
        if (u == end)
            return;
        const qint64 slope = slopeOf(v2 - v1, length);
        qint64 v = v1 * 1024 - (caps & CapBegin ? slope >> 1 : 0);
        v += (u * 64 + (slope > 0 ? 32 : 0) - u1) * slope >> 6;

        qint64 firstU = u;
        qint64 firstV = v >> 16;
        qint64 finalU = end - 1;
        qint64 finalV = (v + (end - u - 1) * slope) >> 16;
        if (isSwapped) {
            std::swap(firstU, finalU);
            std::swap(firstV, finalV);
        }
        const bool isAligned = std::abs(slope) < 1 << 14;
        if (isFollowing) {
            const qint64 gapU = std::abs(lastU - firstU);
            const qint64 gapV = std::abs(lastV - firstV);
            if (gapU == 0 && gapV == 0) {
                // Both lines have the pixel.
                if (isSwapped) {
                    --end;
                } else {
                    ++u;
                    v += slope;
                }
            } else if (m_lastDirection != direction
                       && ((isAligned && m_isLastAligned && gapU != 0 && gapV != 0) || gapU > 1 || gapV > 1)) {
                // A pixel is missing between them.
                if (isSwapped) {
                    ++end;
                } else {
                    --u;
                    v -= slope;
                }
            } else if (m_lastDirection == direction && lagsBehind<isSteep>(gapU, gapV)) {
                v += slope >> 1;
                finalV = (isSwapped ? v : v + (end - u - 1) * slope) >> 16;
            }
        }
        m_lastDirection = direction;
        m_isLastAligned = isAligned;
        lastU = finalU;
        lastV = finalV;
        fill<isSteep>(u, std::max(end, u + 1), v, slope);
    }

    static qint64 slopeOf(qint64 dv, qint64 du)
    {
        if (dv == 0)
            return 0;
        if (std::abs(dv) <= 0x7fff && du <= 0x7fff)
            return static_cast<int>(dv) * (1 << 16) / static_cast<int>(du);
        return dv * (1 << 16) / du;
    }

    template<bool isSteep>
    static bool lagsBehind(qint64 gapU, qint64 gapV)
    {
        return isSteep ? gapV <= 1 && gapU > 1 : gapU <= 1 && gapV > 1;
    }

    template<bool isSteep>
    void fill(qint64 u, qint64 end, qint64 v, qint64 slope)
    {
        if (isSteep) {
            const qint64 hidden = std::max<qint64>(-u, 0);
            end = std::min<qint64>(end, m_pixels.rows());
            v += hidden * slope;
            for (u += hidden; u < end; ++u, v += slope)
                m_pixels.set(u, v >> 16, v >> 16);
            return;
        }
        while (u < end) {
            const qint64 row = v >> 16;
            const qint64 first = u;
            if ((v + (end - u - 1) * slope) >> 16 == row)
                u = end;
            for (; u < end && v >> 16 == row; ++u)
                v += slope;
            m_pixels.set(row, first, u - 1);
        }
    }

    PixelRows &m_pixels;
    qint64 m_lastX = nowhere; // last pixel of the line before
    qint64 m_lastY = 0;
    int m_lastDirection = None;
    bool m_isLastAligned = false;
};

} // namespace logview
