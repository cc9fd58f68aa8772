#pragma once

#include <QVector>

#include <vector>

/// A natural cubic spline through (depth, value) pairs: smooth to the second derivative, which is zero at both ends.
class CubicSpline
{
public:
    /// Takes the first \a count samples; the depths must increase strictly. The lists are shared, not copied.
    CubicSpline(const QVector<double> &depths, const QVector<double> &values, int count);

    /// The value at \a x: the only value where there is one sample, 0 where there is none. Outside the depths the
    /// first or the last cubic goes on.
    double valueAt(double x) const;

    /// The same for rising arguments: \a interval holds the interval of the last call (0 before the first one) and
    /// moves forward only, so that a whole grid costs no search.
    double valueAt(double x, int *interval) const;

private:
    double valueIn(int interval, double x) const;

    QVector<double> m_depths;
    QVector<double> m_values;
    int m_count;
    std::vector<float> m_widths; ///< of the intervals; single precision is required
    std::vector<double> m_halfSecond; ///< half the second derivative at each sample
};
