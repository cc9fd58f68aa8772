#include "demo/demorock.h"

#include "demo/demorandom.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

namespace demo {

/// Thickness that the fault takes from the formations above and below the one it cuts out, metres.
constexpr double faultCutAboveM = 8.0;
constexpr double faultCutBelowM = 10.0;

static quint64 seedOf(quint64 purpose, quint64 first, quint64 second = 0)
{
    return mixed(mixed(purpose, first), second);
}

/// Depths of the tops without the fault, one more than there are formations.
static QVector<double> undisturbedTops(const WellPlan &plan, const QVector<Formation> &column)
{
    QVector<double> tops;
    for (int i = 0; i < column.size(); ++i) {
        // The reservoir is left as mapped, so that its contacts stay where they should.
        Random random{seedOf(1, plan.seed, static_cast<quint64>(i))};
        const double scatterM = column.at(i).charged ? 0.6 : 4.0;
        tops.append(horizonDepth(column.at(i).topM, plan.xM, plan.yM) + scatterM * (2.0 * uniform(random) - 1.0));
    }
    tops.append(horizonDepth(column.last().topM + 450.0, plan.xM, plan.yM));
    return tops;
}

static int faultedFormation(const WellPlan &plan, const QVector<Formation> &column)
{
    for (int i = 0; i < column.size(); ++i) {
        if (column.at(i).name == plan.faultedOut)
            return i;
    }
    return -1;
}

QVector<FormationInterval> formationIntervals(const WellPlan &plan, const QVector<Formation> &column)
{
    const QVector<double> tops = undisturbedTops(plan, column);
    QVector<FormationInterval> intervals;
    for (int i = 0; i < column.size(); ++i)
        intervals.append({i, tops.at(i), tops.at(i + 1), tops.at(i), tops.at(i + 1), true});

    const int missing = faultedFormation(plan, column);
    if (missing > 0) {
        // A normal fault: what lies above it came down by the thickness that is missing.
        const double faultM = tops.at(missing + 1) + faultCutBelowM;
        const double throwM = faultM - tops.at(missing) + faultCutAboveM;
        for (int i = 0; i < missing; ++i) {
            intervals[i].wholeTopM += throwM;
            intervals[i].wholeBaseM += throwM;
            intervals[i].topM = intervals.at(i).wholeTopM;
            intervals[i].baseM = std::min(intervals.at(i).wholeBaseM, faultM);
        }
        intervals[missing].present = false;
        intervals[missing + 1].topM = faultM;
    }
    return intervals;
}

static double bedThickness(const Element &element, Random &random)
{
    const double spread = -std::log(1.0 - 0.97 * uniform(random));
    return element.bedM * (0.3 + 0.7 * spread);
}

/// The beds of an element from 0 downwards, before they are fitted to the formation.
static QVector<Bed> elementBeds(const Element &element, int formation, quint64 wellSeed, quint64 elementSeed)
{
    Random common{elementSeed}; // the same in all wells: this is what can be correlated
    Random local{mixed(elementSeed, wellSeed)};
    // Facies change sideways, more often for the worse than for the better.
    const double facies = uniform(local) - 0.35;
    const double shaleShift = element.lateral * facies * 0.35;
    const double qualityFactor = 1.0 - 0.10 * element.lateral * facies;
    const double thicknessFactor = 1.0 + 0.7 * element.lateral * (uniform(local) - 0.5);

    QVector<Bed> beds;
    double depthM = 0.0;
    bool shaleTurn = uniform(common) < 0.5;
    while (depthM < element.thicknessM - 0.1) {
        const double nominalM = std::min(bedThickness(element, common), element.thicknessM - depthM);
        const double position = (depthM + 0.5 * nominalM) / element.thicknessM;
        double shale = element.shaleTop + position * (element.shaleBase - element.shaleTop);
        if (element.interbedded)
            shale = shaleTurn ? element.shaleBase : element.shaleTop;
        shaleTurn = !shaleTurn;
        shale += element.scatter * (0.85 * gaussian(common) + 0.6 * gaussian(local));
        shale += shaleShift * (1.0 - std::abs(2.0 * shale - 1.0) * 0.5);
        // Solution makes the pores of carbonate far less even than those of sand.
        const double poreSpread = element.rock == Rock::Sandstone ? 1.0 : 5.0;
        const double pores = 1.0 + poreSpread * (0.035 * gaussian(common) + 0.025 * gaussian(local));
        const double quality = element.quality * qualityFactor * std::max(0.3, pores);
        const double thicknessM = nominalM * thicknessFactor * (0.85 + 0.3 * uniform(local));
        beds.append({formation, 0.0, thicknessM, depthM, element.rock, qBound(0.012, shale, 1.0), quality});
        depthM += nominalM;

        const bool streak = uniform(common) < element.stringers;
        const double streakM = 0.15 + 0.55 * uniform(common);
        const double streakShale = 0.10 + 0.45 * uniform(common);
        // Cemented streaks are patchy; a well may miss one that its neighbours have.
        if (streak && uniform(local) < 0.7)
            beds.append({formation, 0.0, streakM, depthM, Rock::Limestone, streakShale, 1.8});
    }
    return beds;
}

QVector<Bed> makeBeds(const WellPlan &plan, const QVector<Formation> &column)
{
    const QVector<FormationInterval> intervals = formationIntervals(plan, column);
    QVector<Bed> result;
    for (const FormationInterval &interval : intervals) {
        if (!interval.present)
            continue;
        const int index = interval.formation;
        const Formation &formation = column.at(index);
        QVector<Bed> beds;
        double stratigraphicM = formation.topM;
        double totalM = 0.0;
        for (int i = 0; i < formation.elements.size(); ++i) {
            const Element &element = formation.elements.at(i);
            const quint64 seed = seedOf(2, static_cast<quint64>(index), static_cast<quint64>(i));
            for (Bed bed : elementBeds(element, index, plan.seed, seed)) {
                bed.stratigraphicM += stratigraphicM;
                totalM += bed.baseM;
                beds.append(bed);
            }
            stratigraphicM += element.thicknessM;
        }

        const double scale = (interval.wholeBaseM - interval.wholeTopM) / totalM;
        double depthM = interval.wholeTopM;
        for (Bed bed : qAsConst(beds)) {
            const double thicknessM = bed.baseM * scale;
            bed.topM = std::max(depthM, interval.topM);
            bed.baseM = std::min(depthM + thicknessM, interval.baseM);
            depthM += thicknessM;
            if (bed.baseM > bed.topM)
                result.append(bed);
        }
    }
    return result;
}

/// Effective porosity of a good, clean bed at this depth.
static double cleanPorosity(Rock rock, double verticalM)
{
    switch (rock) {
    case Rock::Limestone:
        return 0.030;
    case Rock::Dolomite:
        return 0.062;
    case Rock::Anhydrite:
        return 0.004;
    case Rock::Sandstone:
        break;
    }
    return 0.425 * std::exp(-verticalM / 3600.0);
}

/// Water saturation so far above the oil-water contact: capillary forces hold more water in poor
/// rock.
static double waterSaturation(double heightM, double porosity, double shale)
{
    if (heightM <= 0.0 || porosity < 0.05)
        return 1.0;
    const double irreducible = std::min(0.9, 0.0155 / std::pow(porosity, 1.35) + 0.35 * shale);
    const double transitionM = 2.2 + 60.0 * std::max(0.0, 0.24 - porosity);
    return irreducible + (1.0 - irreducible) * std::exp(-heightM / transitionM);
}

QVector<RockSample> sampleRock(const WellPlan &plan, const QVector<Formation> &column, const QVector<double> &depthsM)
{
    const QVector<Bed> beds = makeBeds(plan, column);
    QVector<RockSample> samples(depthsM.size());
    int bedIndex = 0;
    for (int i = 0; i < samples.size(); ++i) {
        const double mdM = depthsM.at(i);
        const double verticalM = verticalDepth(plan, mdM);
        const double belowDatumM = verticalM - plan.kbM;
        while (bedIndex + 1 < beds.size() && beds.at(bedIndex).baseM <= belowDatumM)
            ++bedIndex;
        const Bed &bed = beds.at(bedIndex);
        RockSample &sample = samples[i];
        sample.mdM = mdM;
        sample.verticalM = verticalM;
        sample.stratigraphicM = bed.stratigraphicM + (belowDatumM - bed.topM);
        sample.formation = bed.formation;
        sample.rock = bed.rock;

        // Clean rock is more even than shaly rock.
        const double unevenness = 0.3 + 0.7 * std::min(1.0, bed.shale * 2.0);
        const double shale = bed.shale
            + unevenness
                * (0.06 * smoothNoise(seedOf(7, 0), sample.stratigraphicM / 16.0)
                   + 0.05 * smoothNoise(seedOf(8, 0), sample.stratigraphicM / 4.5)
                   + 0.05 * smoothNoise(seedOf(3, 0), sample.stratigraphicM / 1.4)
                   + 0.04 * smoothNoise(seedOf(4, plan.seed), mdM / 0.5));
        sample.shale = qBound(0.008, shale, 1.0);
        const double texture = 1.0 + 0.06 * smoothNoise(seedOf(5, 0), sample.stratigraphicM / 2.5)
            + 0.05 * smoothNoise(seedOf(6, plan.seed), mdM / 0.7);
        sample.porosity =
            cleanPorosity(bed.rock, verticalM) * bed.quality * texture * std::pow(1.0 - sample.shale, 1.15);

        const bool charged = column.at(bed.formation).charged;
        const double heightM = charged ? oilWaterContactM - belowDatumM : 0.0;
        sample.gas = charged && belowDatumM < gasOilContactM;
        sample.water = waterSaturation(heightM, sample.porosity, sample.shale);
        if (sample.gas)
            sample.water *= 0.85;
        sample.flushedWater = std::pow(sample.water, sample.gas ? 0.30 : 0.20);
    }
    return samples;
}

} // namespace demo
