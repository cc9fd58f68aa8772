#include "demo/demorandom.h"

#include <cmath>

namespace demo {

quint64 mixed(quint64 value)
{
    value += 0x9E3779B97F4A7C15ULL;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
    return value ^ (value >> 31);
}

quint64 mixed(quint64 first, quint64 second)
{
    return mixed(mixed(first) ^ second);
}

static double unitFraction(quint64 bits)
{
    // 53 bits are what a double holds exactly.
    return static_cast<double>(bits >> 11) / 9007199254740992.0;
}

double uniform(Random &random)
{
    random.state += 0x9E3779B97F4A7C15ULL;
    return unitFraction(mixed(random.state));
}

double gaussian(Random &random)
{
    // The sum of four even numbers has a standard deviation of sqrt(4 / 12).
    const double sum = uniform(random) + uniform(random) + uniform(random) + uniform(random);
    return (sum - 2.0) * 1.7320508;
}

static double latticeValue(quint64 seed, qint64 node)
{
    return 2.0 * unitFraction(mixed(seed, static_cast<quint64>(node))) - 1.0;
}

double smoothNoise(quint64 seed, double x)
{
    const double floorX = std::floor(x);
    const auto node = static_cast<qint64>(floorX);
    const double t = x - floorX;
    const double weight = t * t * (3.0 - 2.0 * t);
    const double left = latticeValue(seed, node);
    return left + weight * (latticeValue(seed, node + 1) - left);
}

double rounded(double value, int decimals)
{
    double scale = 1.0;
    for (int i = 0; i < decimals; ++i)
        scale *= 10.0;
    return std::round(value * scale) / scale;
}

} // namespace demo
