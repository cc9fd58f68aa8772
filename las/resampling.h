#pragma once

#include <QString>
#include <QVector>

/// Putting samples on an even depth grid: when it is done, when it is refused, and the grid itself.
namespace las {

/// Steps that differ by no more than this count as equal.
constexpr double stepTolerance = 0.0001;
/// No interval below this: printed depths have four decimals.
constexpr double smallestInterval = 0.0001;
/// No grid beyond this many samples; a wrong interval or a wrong depth would otherwise fill the memory.
constexpr double largestGrid = 50e6;

struct Samples
{
    QVector<double> depths;
    QVector<double> values;
};

/// The number a user typed as an interval, 0 where it is none.
double intervalFromText(const QString &text);
/// The same in single precision; 0 where it does not fit.
float floatIntervalFromText(const QString &text);

/// Why the interval cannot be used, as a sentence for a box; empty when it can.
QString intervalProblem(double interval);
/// Why the grid from \a first to \a last cannot be made (the interval itself is good), as a sentence for a box;
/// empty when it can. \a what names the log or well concerned.
QString gridProblem(double first, double last, double interval, const QString &what);

/// Whether samples at \a depths have a step of their own that differs from the interval. Without a second sample
/// there is no step.
bool differsFromStep(const QVector<double> &depths, double interval);

/// Whether a spline can be laid through samples at these depths.
bool isStrictlyIncreasing(const QVector<double> &depths);

/// The samples at first depth, first depth + interval, … up to the last depth, by repeated addition, on a natural
/// cubic spline. The depths must increase strictly and the grid be possible. Linear in samples in and out.
Samples resample(const QVector<double> &depths, const QVector<double> &values, double interval);

/// The same on the same grid where values may be missing (no number): each run of values has a spline of its own, and a
/// grid depth between two runs has no value. So no value is made of what was not measured.
Samples resampleRuns(const QVector<double> &depths, const QVector<double> &values, double interval);

} // namespace las
