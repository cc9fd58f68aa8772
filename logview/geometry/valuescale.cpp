#include "logview/geometry/valuescale.h"

#include "logview/geometry/stepscan.h"

namespace logview {

namespace {

bool isSame(float a, float b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

double ValueScale::toLinearPixel(double value) const
{
    const double low = static_cast<double>(minimum);
    const double high = static_cast<double>(maximum);
    const double pixels = static_cast<double>(width);
    return maximum > minimum ? (value - low) * pixels / (high - low) : (low - value) * pixels / std::abs(high - low);
}

double ValueScale::toPixel(double value) const
{
    return ValuePlacer(*this).toPixel(value);
}

ValuePlacer::ValuePlacer(const ValueScale &scale)
    : m_scale(scale)
    , m_isDrawable(scale.width >= 0)
    , m_low(static_cast<double>(scale.minimum))
    , m_span(std::abs(static_cast<double>(scale.maximum) - m_low))
    , m_width(static_cast<double>(scale.width))
    , m_sign(scale.maximum > scale.minimum ? 1 : -1)
{
    if (m_scale.isLogarithmic) {
        m_low = std::log10(static_cast<double>(scale.minimum));
        m_span = std::log10(static_cast<double>(scale.maximum)) - m_low;
        m_isDrawable = m_isDrawable && std::isfinite(m_low) && std::isfinite(m_span);
    }
}

void ValuePlacer::toSteps(const float *values, int count, int *steps) const
{
    if (!m_scale.isLogarithmic && m_span > 0) {
        placeValues(m_scale, values, count, steps);
        return;
    }
    const bool areTogether = m_scale.isLogarithmic && m_span > 0;
    if (areTogether)
        placeLogarithms(m_low, 64 * m_width / m_span, values, count, steps);
    for (int i = 0; i < count; ++i)
        if (!areTogether || steps[i] == undecidedStep)
            steps[i] = static_cast<int>(toPixel(static_cast<double>(values[i])) * 64);
}

double ValuePlacer::toLogarithmicPixel(double value) const
{
    const double x = static_cast<double>(static_cast<float>(std::abs(std::log10(value) - m_low) * m_width / m_span));
    return x >= 0 && x <= m_width ? x : std::numeric_limits<double>::quiet_NaN();
}

std::pair<double, double> ValuePlacer::unbroken() const
{
    constexpr double farthest = std::numeric_limits<float>::max();
    if (!m_isDrawable)
        return {farthest, -farthest};
    if (m_scale.isLogarithmic)
        return {std::pow(10, m_low), std::pow(10, m_low + m_span)};
    return {-farthest, farthest};
}

bool operator==(const ValueScale &a, const ValueScale &b)
{
    return a.isLogarithmic == b.isLogarithmic && isSame(a.minimum, b.minimum) && isSame(a.maximum, b.maximum)
        && isSame(a.width, b.width);
}

int colorIndex(double value, double minimum, double maximum, int colorCount)
{
    const int last = colorCount - 1;
    const double position = maximum >= minimum ? (value - minimum) * last / (maximum - minimum)
                                               : (minimum - value) * last / (minimum - maximum);
    if (last < 0 || !std::isfinite(position) || position >= last)
        return -1;
    return position < 0 ? 0 : static_cast<int>(position);
}

} // namespace logview
