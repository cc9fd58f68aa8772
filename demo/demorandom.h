#pragma once

#include <QtGlobal>

namespace demo {

/// State of a small integer generator. The same seed gives the same numbers on every machine.
struct Random
{
    quint64 state;
};

/// Scrambles a number; used to make one seed out of several.
quint64 mixed(quint64 value);
quint64 mixed(quint64 first, quint64 second);

/// The next number, evenly distributed in 0..1.
double uniform(Random &random);

/// The next number, bell-shaped about zero with a standard deviation of one, within -3.5..3.5.
double gaussian(Random &random);

/// Smooth noise in -1..1 at position x; its wavelength is about two units of x.
double smoothNoise(quint64 seed, double x);

/// The value rounded to a number of decimals.
double rounded(double value, int decimals);

} // namespace demo
