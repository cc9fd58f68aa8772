#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

/// Looking at many values of a log at once: loops without branches, which compilers turn into vector instructions.
namespace logview {

constexpr int scannedTogether = 8;

/// The first of the indices behind \a before that is not before something, or the end: by looking around a guess.
template<class IsBefore>
int firstAround(int before, int guess, int end, const IsBefore &isBefore)
{
    int last = end;
    guess = std::min(guess, end - 1);
    for (int step = 1; guess > before && guess < last; step *= 2) {
        const bool isLow = isBefore(guess);
        (isLow ? before : last) = guess;
        guess += isLow ? step : -step;
    }
    while (before + 1 < last) {
        const int half = before + (last - before) / 2;
        (isBefore(half) ? before : last) = half;
    }
    return last;
}

/// Values between two, both excluded, each some way from the one before.
struct ValueWindow
{
    double low = 0;
    double high = 0;
    double leastStep = 0;
    double nullValue = 0; ///< is never in it

    /// The first of the values [from, end) that is not in the window, or one before it that is as good as not in it.
    template<class Value>
    int firstOutside(const Value *values, int from, int end) const
    {
        // In the precision of the values, rounded inwards; compared without branches, eight at a time.
        const double rounding = 1.0000001 * static_cast<double>(std::numeric_limits<Value>::epsilon());
        const auto above = static_cast<Value>(low + rounding * std::abs(low));
        const auto below = static_cast<Value>(high - rounding * std::abs(high));
        const auto step = static_cast<Value>(leastStep * 1.000001);
        const auto null = static_cast<Value>(nullValue);
        const auto isOutside = [=](Value value, Value before) {
            return (value > above ? 0 : 1) | (value < below ? 0 : 1) | (std::abs(value - before) >= step ? 0 : 1)
                | (value == null ? 1 : 0);
        };
        constexpr int block = scannedTogether;
        for (; from + block <= end; from += block) {
            int outside = 0;
            for (int k = from; k < from + block; ++k)
                outside |= isOutside(values[k], values[k - 1]);
            if (outside != 0)
                break;
        }
        while (from < end && isOutside(values[from], values[from - 1]) == 0)
            ++from;
        return from;
    }
};

/// Calls use(i) for those of some values for which is(value), which gives 0 or 1, is 1; made for few of many.
template<class Value, class Is, class Use>
void forThose(const Value *values, int end, const Is &is, const Use &use)
{
    constexpr int block = scannedTogether;
    for (int from = 0; from < end; from += block) {
        const int stop = std::min(from + block, end);
        int found = 0;
        if (stop == from + block)
            for (int k = 0; k < block; ++k)
                found |= is(values[from + k]);
        for (int i = from; (found != 0 || stop < from + block) && i < stop; ++i)
            if (is(values[i]) != 0)
                use(i);
    }
}

/// The smallest and the largest of some values; not valid where one of them is null or no finite number.
template<class Value>
struct ValueExtremes
{
    Value smallest = std::numeric_limits<Value>::max();
    Value largest = std::numeric_limits<Value>::lowest();
    bool areValid = false;

    ValueExtremes(const Value *values, int from, int end, Value nullValue)
    {
        constexpr int block = scannedTogether;
        Value low[block];
        Value high[block];
        std::fill(low, low + block, smallest);
        std::fill(high, high + block, largest);
        int broken = 0;
        const auto isBroken = [nullValue](Value value) {
            return (std::abs(value) <= std::numeric_limits<Value>::max() ? 0 : 1) | (value == nullValue ? 1 : 0);
        };
        for (; from + block <= end; from += block) {
            for (int k = 0; k < block; ++k) {
                const Value value = values[from + k];
                low[k] = value < low[k] ? value : low[k];
                high[k] = value > high[k] ? value : high[k];
                broken |= isBroken(value);
            }
        }
        for (; from < end; ++from) {
            low[0] = std::min(low[0], values[from]);
            high[0] = std::max(high[0], values[from]);
            broken |= isBroken(values[from]);
        }
        smallest = *std::min_element(low, low + block);
        largest = *std::max_element(high, high + block);
        areValid = broken == 0;
    }
};

} // namespace logview
