#pragma once

#include "logview/geometry/linepixels.h"

#include <algorithm>
#include <cmath>
#include <limits>
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
    /// Grows with every line that sets a pixel which was not known to be set.
    qint64 setPixels() const { return m_setPixels; }
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
    /// Whether the last pixel is beside \a x, in that row or the one above.
    bool isBeside(qint64 x, qint64 row) const
    {
        const qint64 column = columnFrom(x);
        return (m_lastX == column || m_lastX == column - 1) && (m_lastY == row || m_lastY == row - 1);
    }
    /// Whether the last pixel is where level lines in that row leave it that end at \a x.
    bool isAt(qint64 x, qint64 row) const
    {
        const qint64 column = columnFrom(x);
        return m_lastY == row && (m_lastX == column || (m_lastX == column - 1 && m_lastDirection != -Along));
    }
    /// The x, from first to last but one, between which level lines set no other pixels than these.
    static std::pair<qint64, qint64> withinPixels(std::pair<qint64, qint64> pixels)
    {
        return {pixels.first * 64 - 32, pixels.second * 64 + 32};
    }
    /// Whether a level line sets a pixel whatever the pen remembers.
    static bool isDrawn(qint64 fromX, qint64 toX)
    {
        return toX < fromX ? columnFrom(toX) < columnFrom(fromX) : columnFrom(toX) - (fromX >> 6) >= 2;
    }
    /// As after such a line within a row.
    void afterLevelLine(qint64 fromX, qint64 toX, qint64 row)
    {
        const qint64 end = columnFrom(toX);
        m_lastX = toX > fromX ? end - 1 : end;
        m_lastY = row;
        m_lastDirection = toX > fromX ? Along : -Along;
        m_isLastAligned = true;
    }
    void draw(const PenPoint &from, const PenPoint &to, int caps)
    {
        if (caps == NoCap && isLevel(from, to) && drawLevel(from.x, to.x, from.y >> 6))
            return;
        const qint64 dx = std::abs(to.x - from.x);
        const qint64 dy = std::abs(to.y - from.y);
        if (dx < dy)
            draw<true>(from.y, from.x, to.y, to.x, caps);
        else if (dx > 0)
            draw<false>(from.x, from.y, to.x, to.y, caps);
    }

    /// What draw() does to a line without caps all of whose pixels, and those right before and behind, are in a row:
    /// most lines of long logs. Turns of noise cannot be foreseen, so there are few branches. False, with nothing done,
    /// where the pen comes from too far.
    bool drawLevel(qint64 fromX, qint64 toX, qint64 row)
    {
        const qint64 gapV = std::abs(m_lastY - row);
        if (m_lastX == nowhere || gapV > 1)
            return false;
        if (fromX == toX)
            return true;
        const qint64 along = toX > fromX ? 1 : -1;
        const qint64 isLeft = (1 - along) >> 1;
        const bool isTurn = m_lastDirection == -along;
        // The pixels from the one near its beginning to the one at its end, both included.
        qint64 near = isTurn ? fromX >> 6 : columnFrom(fromX) - isLeft;
        near += isTurn & (m_lastX == near + 1) & (isLeft == 0) ? 1 : 0;
        const qint64 far = columnFrom(toX) - 1 + isLeft;
        const qint64 beyond = (near - far) * along;
        if (beyond == 1)
            return true;
        const qint64 gapU = std::abs(m_lastX - near);
        if ((beyond > 1)
            | ((m_lastDirection != along) & ((gapU > 1) | (m_isLastAligned & (gapU != 0) & (gapV != 0)))))
            return false;
        near += (gapU | gapV) == 0 ? along : 0;
        m_lastDirection = static_cast<int>(along);
        m_isLastAligned = true;
        m_lastX = far;
        m_lastY = row;
        const qint64 first = isLeft != 0 ? far : near;
        const qint64 last = std::max(isLeft != 0 ? near : far, first);
        const auto [firstSet, lastSet] = m_pixels.runIn(row);
        if (first < firstSet || last > lastSet) {
            m_pixels.set(row, first, last);
            ++m_setPixels;
        }
        return true;
    }

private:
    static constexpr qint64 nowhere = std::numeric_limits<qint64>::min();
    enum Direction { None = 0, Along = 1, Down = 2 }; // the negative ones for the other way

    // The first column that has its middle there or to the right.
    static qint64 columnFrom(qint64 x) { return (x + 32) >> 6; }

    static bool isLevel(const PenPoint &from, const PenPoint &to)
    {
        const qint64 length = std::abs(to.x - from.x);
        const qint64 rise = std::abs(to.y - from.y);
        const qint64 above = std::min(from.y, to.y) & 63;
        const qint64 below = 62 - (std::max(from.y, to.y) & 63);
        return from.y >> 6 == to.y >> 6 && 4 * rise < length && std::min(above, below) * length >= 64 * rise;
    }

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
        ++m_setPixels;
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
    qint64 m_setPixels = 0;
    qint64 m_lastX = nowhere; // last pixel of the line before
    qint64 m_lastY = 0;
    int m_lastDirection = None;
    bool m_isLastAligned = false;
};

} // namespace logview
