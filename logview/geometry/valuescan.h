#pragma once

#include <algorithm>

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

/// The first of the indices [from, end) of some values that find(from, end) finds, which gives the first of a few, or the
/// end. It is asked only where mayBe(pointer to the value), which gives 0 or 1, is 1 for one of them.
template<class Value, class MayBe, class Find>
int firstThat(const Value *values, int from, int end, const MayBe &mayBe, const Find &find)
{
    constexpr int block = scannedTogether;
    const auto isNone = [&](int at) {
        const Value *first = values + at; // compilers make vector instructions of indices that begin at 0
        int found = 0;
        for (int k = 0; k < block; ++k)
            found |= mayBe(first + k);
        return found == 0;
    };
    const int begin = from;
    for (; from < end; from += block) {
        const int stop = std::min(from + block, end);
        if (stop - block >= begin && isNone(stop - block))
            continue;
        const int found = find(from, stop);
        if (found < stop)
            return found;
    }
    return end;
}

} // namespace logview
