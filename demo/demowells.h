#pragma once

#include <QString>
#include <QVector>

namespace demo {

/// A part of the hole, down to its base (m measured depth), and the bit it was drilled with (in).
struct HoleSection
{
    double baseM;
    double bitIn;
};

/// A log that was not recorded over an interval (m measured depth).
struct LogGap
{
    QString mnemonic;
    double topM, baseM;
};

/// How a well was drilled and logged. Metres; depths are measured depths.
struct WellPlan
{
    QString name;
    QString type;
    double xM, yM;
    double groundM, kbM; ///< elevations; the ground is the seabed
    double firstLogM, lastLogM, totalDepthM;
    double kickOffM, inclinationDeg;
    QVector<HoleSection> sections; ///< the first one starts at the shoe above the logs
    double washOutTopM, washOutBaseM; ///< a badly caved interval; equal where there is none
    QString faultedOut; ///< the formation a fault cuts out, or ""
    bool microLog; ///< whether the micro-resistivity was run
    double nuclearFromM; ///< where the density and neutron logs start
    QVector<LogGap> gaps;
    quint64 seed;
};

/// The six wells of the field.
QVector<WellPlan> wellPlans();

/// Wells along a line over the crest, from north-west to south-east, half a kilometre apart.
QVector<WellPlan> sectionPlans(int count);

/// Vertical depth (m) below the same point as the measured depth (m).
double verticalDepth(const WellPlan &plan, double mdM);

/// The bit size (in) at a measured depth (m).
double bitSize(const WellPlan &plan, double mdM);

} // namespace demo
