#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

/// Where in a track a value stands.
namespace logview {

/// The value scale of a curve over the width of its track. A value: compare with ==.
struct ValueScale
{
    bool isLogarithmic = false;
    float minimum = 0; ///< at the left side
    float maximum = 1; ///< at the right side; less than minimum mirrors a linear scale
    float width = 0; ///< pixels

    /// x of a value, in [0, width]. On a linear scale what lies beyond the limits stands on the edge, and everything
    /// equal to two equal limits at 0. On a logarithmic scale the distance from the minimum counts, whatever its
    /// sign. NaN where the curve breaks: a value that is not finite, a logarithmic x outside the track, limits
    /// without a logarithm.
    double toPixel(double value) const;
    /// x on a linear scale, not clamped, whatever isLogarithmic says: calibration points. May be infinite or NaN.
    double toLinearPixel(double value) const;
};
bool operator==(const ValueScale &a, const ValueScale &b);
inline bool operator!=(const ValueScale &a, const ValueScale &b)
{
    return !(a == b);
}

/// ValueScale::toPixel() for many values: what does not change from value to value is computed once.
class ValuePlacer
{
public:
    explicit ValuePlacer(const ValueScale &scale);
    double toPixel(double value) const
    {
        if (!std::isfinite(value) || !m_isDrawable)
            return std::numeric_limits<double>::quiet_NaN();
        if (m_scale.isLogarithmic)
            return toLogarithmicPixel(value);
        const double x = m_sign * (value - m_low) * m_width / m_span;
        const double right = x < m_width ? x : m_width; // of equal limits, and of no number, 0
        return right > 0 && x == x ? right : 0;
    }
    /// toPixel() in 64ths of a pixel, rounded down, of some values which it places.
    void toSteps(const float *values, int count, int *steps) const;
    /// Two values between which, but for rounding, none breaks a line. The first is not below the second where there
    /// are none.
    std::pair<double, double> unbroken() const;
    /// Whether x only grows, or only falls, with the value, from \a value on.
    bool isMonotonous(double value) const
    {
        return !m_scale.isLogarithmic || (m_span > 0 && std::log10(value) >= m_low);
    }

private:
    double toLogarithmicPixel(double value) const;

    ValueScale m_scale;
    bool m_isDrawable;
    double m_low; ///< logarithmic: its logarithm
    double m_span; ///< positive on linear scales
    double m_width;
    double m_sign; ///< -1 on a mirrored linear scale
};

/// Index of the colour of a value among \a colorCount colours: int((value - minimum) × n / (maximum - minimum)) with
/// n = colorCount - 1, mirrored when maximum < minimum. -1 (keep the previous colour) when it is n or more and when
/// there is none to compute; below the minimum it is 0.
int colorIndex(double value, double minimum, double maximum, int colorCount);

} // namespace logview
