#include "logview/geometry/stepscan.h"

#include "datastore/logcurvedata.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

// Compiled for processors with wider vectors as well; which one is called is decided when the library is loaded. Such a function calls
// none that is not compiled into it: compilers then leave the upper parts of the registers in use, which slows down all that follows.
#if defined(__x86_64__) && defined(__GLIBC__) && defined(__GNUC__) && !defined(__clang__)
#define FOR_WIDE_VECTORS [[gnu::target_clones("avx2", "default")]]
#else
#define FOR_WIDE_VECTORS
#endif
// What such a function calls is compiled as it is.
#define PART_OF_IT [[gnu::always_inline]] inline

namespace logview {

namespace {

constexpr int block = 32;

// Calls use(first, count) for some blocks, the last of which may begin in the one before.
template<class Use>
PART_OF_IT void forBlocks(int count, const Use &use)
{
    if (count < block) {
        use(0, count);
        return;
    }
    for (int at = 0; at < count; at += block)
        use(std::min(at, count - block), block);
}

// Places numbers from low to low + span, as convert(number) gives them, over a length; on a mirrored one it is negative.
template<class Convert>
PART_OF_IT void place(const float *numbers, int count, double low, double span, double length, int row, int *steps,
                      const Convert &convert)
{
    const double farthest = std::abs(length) * 64;
    const double perSpan = length * 64;
    const double origin = row * 64.0;
    const auto placeSome = [=](const float *__restrict from, int *__restrict to, int some) {
        for (int i = 0; i < some; ++i) {
            const double at = (convert(from[i]) - low) * perSpan / span;
            const double most = at < farthest ? at : farthest;
            const double least = most > 0 ? most : 0;
            to[i] = static_cast<int>(least - origin);
        }
    };
    forBlocks(count, [&](int first, int some) { placeSome(numbers + first, steps + first, some); });
}

// The logarithm from the exponent and a series for the rest, 2 artanh((m - 1) / (m + 1)), to some 1e-13.
PART_OF_IT void placeSomeLogarithms(const float *__restrict values, int count, double low, double perDecade,
                                    int *__restrict steps)
{
    constexpr int rootOfHalf = 0x3f3504f3; // the rest is between the roots of 1/2 and of 2
    constexpr double decadesOfTwo = 0.30102999566398119521;
    constexpr double decadesOfE = 0.43429448190325182765;
    constexpr double rounding = 6.1e-8; // of a pixel position to single precision
    const double spare = 1e-6 + 1e-12 * perDecade;
    for (int i = 0; i < count; ++i) {
        int bits = 0;
        std::memcpy(&bits, values + i, sizeof bits);
        const int exponent = (bits - rootOfHalf) >> 23;
        const int restBits = bits - exponent * (1 << 23);
        float rest = 0;
        std::memcpy(&rest, &restBits, sizeof rest);
        const double part = (static_cast<double>(rest) - 1) / (static_cast<double>(rest) + 1);
        const double square = part * part;
        double series = 1.0 / 13;
        series = series * square + 1.0 / 11;
        series = series * square + 1.0 / 9;
        series = series * square + 1.0 / 7;
        series = series * square + 1.0 / 5;
        series = series * square + 1.0 / 3;
        series = series * square + 1;
        const double decades = exponent * decadesOfTwo + 2 * decadesOfE * part * series;
        const double at = std::abs((decades - low) * perDecade);
        const double doubt = at * rounding + spare;
        const int least = static_cast<int>(at - doubt);
        const int most = static_cast<int>(at + doubt);
        const bool isDecided = least == most && bits >= 1 << 23;
        steps[i] = isDecided ? most : undecidedStep;
    }
}

template<class Number>
PART_OF_IT std::pair<Number, Number> findExtremes(const Number *numbers, int from, int to)
{
    constexpr int lanes = 8;
    std::pair<Number, Number> found(numbers[from], numbers[from]);
    if (to - from + 1 < lanes) {
        for (int k = from + 1; k <= to; ++k)
            found = {std::min(found.first, numbers[k]), std::max(found.second, numbers[k])};
        return found;
    }
    const Number *last = numbers + to + 1 - lanes;
    Number low[lanes];
    Number high[lanes];
    for (int k = 0; k < lanes; ++k)
        low[k] = high[k] = last[k];
    for (const Number *some = numbers + from; some < last; some += lanes) {
        for (int k = 0; k < lanes; ++k) {
            low[k] = some[k] < low[k] ? some[k] : low[k];
            high[k] = some[k] > high[k] ? some[k] : high[k];
        }
    }
    for (int k = 0; k < lanes; ++k)
        found = {std::min(found.first, low[k]), std::max(found.second, high[k])};
    return found;
}

PART_OF_IT void markSome(const int *__restrict x, const int *__restrict y, int lines, unsigned char *__restrict marks)
{
    for (int k = 0; k < lines; ++k) {
        const int along = x[k + 1] - x[k];
        const int down = y[k + 1] - y[k];
        const int isLeft = along >> 31; // all bits
        const int length = (along ^ isLeft) - isLeft;
        // Of what follows the bits from the sixth on tell whether it is so.
        const int crossed = (x[k] + 32) ^ (x[k + 1] + 32); // the middle of a column
        const int turned = isLeft & ~(x[k] << 1) & 64; // in the first half of a pixel
        const int left = y[k] ^ y[k + 1]; // the row
        const int passed = (y[k] + 32) ^ (y[k + 1] + 32); // the row's middle
        const int isSteep = (length - down) >> 31;
        // It goes on to the left edge of its last pixel, or to the middle of the next one to the right, and some for rounding.
        constexpr int rounding = 5;
        const int part = x[k + 1] & 63;
        const int beyondLeft = part & (part - 32) >> 31;
        const int beyondRight = 64 - ((part + 32) & 63);
        const int beyond = (isLeft & beyondLeft) | (~isLeft & beyondRight);
        const int room = 64 - (y[k + 1] & 63);
        const auto wanted = static_cast<float>(length) * static_cast<float>(room);
        const int sinks = wanted <= static_cast<float>(down) * static_cast<float>(beyond + rounding) ? -1 : 0;
        const int goesDown = -down >> 31;
        const int special = left | down | (isSteep & (crossed | turned | passed))
            | (goesDown & sinks & (crossed | turned)); // negative when it goes up
        const int isSpecial = special >> 6 != 0 ? Special : 0;
        const int crosses = crossed >> 6 != 0 ? Crosses : 0;
        marks[k] = static_cast<unsigned char>(isSpecial | crosses | turned >> 4);
    }
}

} // namespace

FOR_WIDE_VECTORS DepthOrder orderOf(const float *depths, int count)
{
    if (count == 0)
        return DepthOrder::Ascending;
    constexpr int lanes = 8;
    float largest[lanes] = {};
    float smallest[lanes] = {};
    int broken[lanes] = {};
    const auto look = [&](const float *below, int lane) {
        const float step = below[lane] - below[lane - 1];
        largest[lane] = step > largest[lane] ? step : largest[lane];
        smallest[lane] = step < smallest[lane] ? step : smallest[lane];
        broken[lane] |= std::abs(below[lane]) <= std::numeric_limits<float>::max() ? 0 : 1;
    };
    int i = 1;
    for (; i + lanes <= count; i += lanes)
        for (int lane = 0; lane < lanes; ++lane)
            look(depths + i, lane);
    for (; i < count; ++i)
        look(depths + i, 0);
    for (int lane = 1; lane < lanes; ++lane) {
        largest[0] = std::max(largest[0], largest[lane]);
        smallest[0] = std::min(smallest[0], smallest[lane]);
        broken[0] |= broken[lane];
    }
    if (broken[0] != 0 || !std::isfinite(depths[0]) || (largest[0] > 0 && smallest[0] < 0))
        return DepthOrder::Unsorted;
    return smallest[0] < 0 ? DepthOrder::Descending : DepthOrder::Ascending;
}

FOR_WIDE_VECTORS void placeValues(const ValueScale &scale, const float *values, int count, int *steps)
{
    const double low = static_cast<double>(scale.minimum);
    const double span = static_cast<double>(scale.maximum) - low;
    const double width = static_cast<double>(scale.width);
    place(values, count, low, std::abs(span), span > 0 ? width : -width, 0, steps,
          [](float value) { return static_cast<double>(value); });
}

FOR_WIDE_VECTORS void placeLogarithms(double low, double perDecade, const float *values, int count, int *steps)
{
    forBlocks(count,
              [=](int first, int some) { placeSomeLogarithms(values + first, some, low, perDecade, steps + first); });
}

FOR_WIDE_VECTORS void placeDepths(const DepthAxis &axis, const DepthReference &reference, const float *depthsM,
                                  int count, int row, int *steps)
{
    const double start = static_cast<double>(axis.start);
    const double extent = static_cast<double>(axis.end) - start;
    const double height = static_cast<double>(axis.height);
    const double shift = reference.type == TvdSubsea ? reference.kbElevationM : 0;
    const double factor = reference.unit == Feet ? feetPerMetre : 1;
    if (shift == 0 && factor == 1) {
        place(depthsM, count, start, extent, height, row, steps,
              [](float depth) { return static_cast<double>(depth); });
    } else {
        place(depthsM, count, start, extent, height, row, steps, [=](float depth) {
            const double below = static_cast<double>(depth) - shift;
            return static_cast<double>(static_cast<float>(static_cast<double>(static_cast<float>(below)) * factor));
        });
    }
}

FOR_WIDE_VECTORS int firstBeyond(const float *values, int from, int end, float low, float high)
{
    const auto isBeyond = [=](float value) {
        return (value > low ? 0 : 1) | (value < high ? 0 : 1)
            | (value == static_cast<float>(nullSampleValue) ? 1 : 0);
    };
    for (; from + block <= end; from += block) {
        const float *some = values + from;
        int found = 0;
        for (int k = 0; k < block; ++k)
            found |= isBeyond(some[k]);
        if (found != 0)
            break;
    }
    while (from < end && isBeyond(values[from]) == 0)
        ++from;
    return from;
}

FOR_WIDE_VECTORS std::pair<int, int> extremesOf(const int *steps, int from, int to)
{
    return findExtremes(steps, from, to);
}

FOR_WIDE_VECTORS std::pair<float, float> extremesOf(const float *values, int from, int to)
{
    return findExtremes(values, from, to);
}

FOR_WIDE_VECTORS int firstFrom(const int *steps, int from, int end, int least)
{
    constexpr int lanes = 8;
    for (; from + lanes <= end; from += lanes) {
        const int *some = steps + from;
        int found = 0;
        for (int k = 0; k < lanes; ++k)
            found |= some[k] >= least ? 1 : 0;
        if (found != 0)
            break;
    }
    while (from < end && steps[from] < least)
        ++from;
    return from;
}

FOR_WIDE_VECTORS void markLines(const int *x, const int *y, int lines, unsigned char *marks)
{
    forBlocks(lines, [=](int first, int some) { markSome(x + first, y + first, some, marks + first); });
}

} // namespace logview
