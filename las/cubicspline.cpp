#include "las/cubicspline.h"

#include <algorithm>

CubicSpline::CubicSpline(const QVector<double> &depths, const QVector<double> &values, int count)
    : m_depths(depths)
    , m_values(values)
    , m_count(std::max(0, std::min({count, depths.size(), values.size()})))
{
    if (m_count < 2)
        return;
    const auto size = static_cast<size_t>(m_count);
    const double *depth = m_depths.constData();
    const double *value = m_values.constData();
    m_widths.resize(size - 1);
    for (size_t i = 0; i + 1 < size; ++i)
        m_widths[i] = static_cast<float>(depth[i + 1] - depth[i]);
    const auto width = [this](size_t i) { return static_cast<double>(m_widths[i]); };

    // The tridiagonal system, solved forward and back. The solution replaces the right-hand side.
    m_halfSecond.assign(size, 0.0);
    std::vector<double> upper(size, 0.0);
    for (size_t i = 1; i + 1 < size; ++i) {
        const double side = 3 / width(i) * (value[i + 1] - value[i]) - 3 / width(i - 1) * (value[i] - value[i - 1]);
        const double diagonal = 2 * (width(i - 1) + width(i)) - width(i - 1) * upper[i - 1];
        upper[i] = width(i) / diagonal;
        m_halfSecond[i] = (side - width(i - 1) * m_halfSecond[i - 1]) / diagonal;
    }
    for (size_t i = size - 1; i-- > 1;)
        m_halfSecond[i] -= upper[i] * m_halfSecond[i + 1];
}

double CubicSpline::valueAt(double x) const
{
    if (m_count < 2)
        return m_count == 1 ? m_values.at(0) : 0.0;
    const auto begin = m_depths.cbegin();
    const auto above = std::upper_bound(begin + 1, begin + m_count - 1, x);
    return valueIn(static_cast<int>(above - begin) - 1, x);
}

double CubicSpline::valueAt(double x, int *interval) const
{
    if (m_count < 2)
        return valueAt(x);
    const double *depth = m_depths.constData();
    while (*interval + 2 < m_count && depth[*interval + 1] <= x)
        ++*interval;
    return valueIn(*interval, x);
}

double CubicSpline::valueIn(int interval, double x) const
{
    const auto i = static_cast<size_t>(interval);
    const double *value = m_values.constData() + interval;
    const double width = static_cast<double>(m_widths[i]);
    const double c = m_halfSecond[i];
    const double next = m_halfSecond[i + 1];
    const double b = (value[1] - value[0]) / width - width * (next + 2 * c) / 3;
    const double d = (next - c) / (3 * width);
    const double offset = x - m_depths.constData()[interval];
    return value[0] + offset * (b + offset * (c + offset * d));
}
