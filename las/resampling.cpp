#include "las/resampling.h"

#include "base/numbers.h"
#include "las/cubicspline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace las {

double intervalFromText(const QString &text)
{
    return base::parseNumber(text).value_or(0.0);
}

float floatIntervalFromText(const QString &text)
{
    const double interval = intervalFromText(text);
    return std::fabs(interval) <= static_cast<double>(std::numeric_limits<float>::max())
        ? static_cast<float>(interval)
        : 0.0f;
}

QString intervalProblem(double interval)
{
    // The smallest interval is met by its single-precision neighbour too.
    if (interval >= static_cast<double>(static_cast<float>(smallestInterval)) && std::isfinite(interval))
        return {};
    return QStringLiteral("The depth interval must be a number and at least 0.0001 m.\nNothing was written.");
}

QString gridProblem(double first, double last, double interval, const QString &what)
{
    const double largest = std::max(std::fabs(first), std::fabs(last));
    // Where the interval is lost in the rounding of a depth, repeated addition stands still.
    const bool moves = largest + interval > largest && largest - interval < largest;
    if (first > last || (moves && (last - first) / interval < largestGrid))
        return {};
    return QStringLiteral("%1: the depths %2 to %3 at an interval of %4 would give more than 50 million samples.\n"
                          "Please choose a larger depth interval. Nothing was written.")
        .arg(what, QString::fromLatin1(base::formatGeneral(first, 9)),
             QString::fromLatin1(base::formatGeneral(last, 9)), QString::fromLatin1(base::formatGeneral(interval)));
}

bool differsFromStep(const QVector<double> &depths, double interval)
{
    return depths.size() > 1 && !(std::fabs(interval - (depths.at(1) - depths.at(0))) <= stepTolerance);
}

bool isStrictlyIncreasing(const QVector<double> &depths)
{
    // Measured as the spline holds the widths: two depths may differ, yet too little for single precision.
    for (int i = 1; i < depths.size(); ++i) {
        const double width = depths.at(i) - depths.at(i - 1);
        if (!(width >= static_cast<double>(std::numeric_limits<float>::min())
              && width <= static_cast<double>(std::numeric_limits<float>::max())))
            return false;
    }
    return depths.isEmpty() || (std::isfinite(depths.first()) && std::isfinite(depths.last()));
}

Samples resample(const QVector<double> &depths, const QVector<double> &values, double interval)
{
    Samples samples;
    const int count = std::min(depths.size(), values.size());
    if (count == 0)
        return samples;
    const CubicSpline spline(depths, values, count);
    const double last = depths.at(count - 1);
    const double estimate = (last - depths.first()) / interval + 2;
    samples.depths.reserve(static_cast<int>(std::min(estimate, largestGrid)));
    samples.values.reserve(samples.depths.capacity());
    int knot = 0;
    for (double depth = depths.first(); depth <= last; depth += interval) {
        samples.depths.append(depth);
        samples.values.append(spline.valueAt(depth, &knot));
    }
    return samples;
}

Samples resampleRuns(const QVector<double> &depths, const QVector<double> &values, double interval)
{
    Samples samples;
    const int count = std::min(depths.size(), values.size());
    if (count == 0)
        return samples;
    double depth = depths.first();
    int begin = 0;
    while (begin < count) {
        const bool isMissing = std::isnan(values.at(begin));
        int end = begin + 1;
        while (end < count && std::isnan(values.at(end)) == isMissing)
            ++end;
        // A gap reaches from behind the last value to before the next one.
        const double last = isMissing && end < count ? depths.at(end) : depths.at(end - 1);
        const CubicSpline spline(depths.mid(begin, end - begin), values.mid(begin, end - begin), end - begin);
        int knot = 0;
        for (; isMissing && end < count ? depth < last : depth <= last; depth += interval) {
            samples.depths.append(depth);
            samples.values.append(isMissing || depth < depths.at(begin) ? std::numeric_limits<double>::quiet_NaN()
                                                                        : spline.valueAt(depth, &knot));
        }
        begin = end;
    }
    return samples;
}

} // namespace las
