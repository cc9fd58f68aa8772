#pragma once

#include "logview/geometry/linepixels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace logview {

/// The painter counts in 64ths of a pixel.
inline qint64 painterSteps(double pixels)
{
    const double exact = pixels * 64;
    const auto whole = static_cast<qint64>(exact);
    return whole - (exact < static_cast<double>(whole) ? 1 : 0);
}

/// The first column that has its middle at an x or to the right.
inline qint64 columnFrom(qint64 x)
{
    return (x + 32) >> 6;
}

/// The painter's line of one pixel, between points in its steps. It fills the gaps between lines and leaves out pixels that two of them have, by
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
    /// Whether the line before went to the right.
    bool goesRight() const { return m_lastDirection == Along; }
    /// Whether the last pixel is in a row, and beside \a x as a line that came there leaves it.
    bool isBehindLine(qint64 x, qint64 row) const
    {
        const qint64 column = columnFrom(x);
        return m_lastY == row && (m_lastX == column || (m_lastX == column - 1 && m_lastDirection != -Along));
    }
    /// Whether lines from \a x that go over no middle of a column or row and do not turn to the left set no pixel.
    bool isSilentOnSpot(qint64 x) const { return m_lastDirection != -Along || m_lastX == columnFrom(x); }
    /// Makes it the pen after a line over the middle of a column that sets pixels in one row, when it was in that row before,
    /// and that goes farther along than down.
    void standBehind(qint64 fromX, qint64 fromY, qint64 toX, qint64 toY, qint64 row)
    {
        const bool isRight = toX > fromX;
        m_lastX = columnFrom(toX) - (isRight ? 1 : 0);
        m_lastY = row;
        m_lastDirection = isRight ? Along : -Along;
        m_isLastAligned = 4 * std::abs(toY - fromY) < std::abs(toX - fromX);
    }
    void draw(qint64 fromX, qint64 fromY, qint64 toX, qint64 toY, int caps)
    {
        const qint64 dx = std::abs(toX - fromX);
        const qint64 dy = std::abs(toY - fromY);
        if (dx < dy)
            draw<true>(fromY, fromX, toY, toX, caps);
        else if (dx > 0)
            draw<false>(fromX, fromY, toX, toY, caps);
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
        const bool isLineAligned = isAligned(slope);
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
                       && ((isLineAligned && m_isLastAligned && gapU != 0 && gapV != 0) || gapU > 1 || gapV > 1)) {
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
        m_isLastAligned = isLineAligned;
        lastU = finalU;
        lastV = finalV;
        fill<isSteep>(u, std::max(end, u + 1), v, slope);
    }

    static bool isAligned(qint64 slope) { return std::abs(slope) < 1 << 14; }
    static qint64 slopeOf(qint64 dv, qint64 du)
    {
        if (dv == 0)
            return 0;
        if (du <= 0x7fff) // as dv is no longer, 32 bits suffice
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
