#include "demo/demosamples.h"

#include "demo/demorandom.h"
#include "demo/demorock.h"

#include <algorithm>
#include <cmath>

namespace demo {

static double topOf(const Well &well, const QString &name)
{
    for (const FormationTop &top : well.tops) {
        if (top.name == name)
            return top.mdM;
    }
    return nullValue;
}

/// Adds an interval given below datum (m), unless the two contacts leave too little of it.
static void perforate(QVector<Perforation> &perforations, const Well &well, const QString &name, double topM,
                      double bottomM, const QString &zoneType)
{
    const double leastM = 4.0;
    if (bottomM - topM < leastM)
        return;
    perforations.append({name.arg(perforations.size() + 1), rounded(2.0 * measuredDepth(well, topM), 0) / 2.0,
                         rounded(2.0 * measuredDepth(well, bottomM), 0) / 2.0, zoneType});
}

QVector<Perforation> makePerforations(const Well &well)
{
    const QString perforation = QStringLiteral("Perf %1");
    const QString test = QStringLiteral("DST %1");
    const QString oil = QStringLiteral("Oil");
    const double upperM = depthBelowDatum(well, topOf(well, QStringLiteral("Kestrane Upper Sst")));
    const double middleM = depthBelowDatum(well, topOf(well, QStringLiteral("Kestrane Middle Shale")));
    const double lowerM = depthBelowDatum(well, topOf(well, QStringLiteral("Kestrane Lower Sst")));

    QVector<Perforation> result;
    perforate(result, well, perforation, upperM + 6.0, std::min(gasOilContactM - 6.0, upperM + 20.0),
              QStringLiteral("Gas"));
    if (well.type == QLatin1String("Gas")) {
        perforate(result, well, test, gasOilContactM - 3.0, gasOilContactM + 3.5, QStringLiteral("Oil-Gas"));
    }
    perforate(result, well, perforation, std::max(upperM + 5.0, gasOilContactM + 6.0),
              std::min(middleM - 3.0, oilWaterContactM - 7.0), oil);
    perforate(result, well, perforation, lowerM + 2.0, oilWaterContactM - 7.0, oil);
    if (upperM > oilWaterContactM)
        perforate(result, well, test, upperM + 18.0, upperM + 25.0, QStringLiteral("Water"));
    const double deepMdM = topOf(well, QStringLiteral("Umbrelle Sandstone"));
    if (deepMdM > 0.0) {
        const double deepM = depthBelowDatum(well, deepMdM);
        perforate(result, well, test, deepM + 8.0, deepM + 26.0, QStringLiteral("Dry"));
    }
    return result;
}

/// The value of a log at the sample next to a depth.
static double valueAt(const Well &well, const Curve &curve, double mdM)
{
    const double stepM = well.depthsM.at(1) - well.depthsM.at(0);
    const auto index = static_cast<int>(std::lround((mdM - well.depthsM.first()) / stepM));
    return curve.values.at(std::clamp(index, 0, curve.values.size() - 1));
}

QVector<CalibrationSet> makeCoreData(const Well &well, const QString &fromTop, const QString &toTop, quint64 seed)
{
    const Curve *porosity = findCurve(well, QStringLiteral("PHIE_log"));
    const Curve *density = findCurve(well, QStringLiteral("RHOB"));
    const Curve *shale = findCurve(well, QStringLiteral("VSH_log"));
    const double topM = topOf(well, fromTop) + 1.0;
    const double bottomM = topOf(well, toTop) - 1.0;
    CalibrationSet porosities{QStringLiteral("Porosity"), {}};
    CalibrationSet densities{QStringLiteral("Density"), {}};
    Random random{mixed(61, seed)};
    const double lostTopM = topM + (bottomM - topM) * (0.35 + 0.2 * uniform(random));
    const double lostBottomM = lostTopM + 3.4;
    double mdM = topM;
    while (mdM < bottomM) {
        const double plugM = rounded(mdM, 2);
        mdM += 0.18 + 0.26 * uniform(random);
        const double porosityNoise = 0.011 * gaussian(random);
        const double densityNoise = 0.019 * gaussian(random);
        const bool shalyPlugTaken = uniform(random) < 0.2;
        const bool densityMeasured = uniform(random) < 0.6;
        if (plugM > lostTopM && plugM < lostBottomM)
            continue;
        // Plugs are cut in sand; shale is sampled seldom because it breaks.
        if (valueAt(well, *shale, plugM) > 0.5 && !shalyPlugTaken)
            continue;
        const double value = std::max(0.012, valueAt(well, *porosity, plugM) + porosityNoise);
        porosities.points.append({plugM, rounded(value, 3)});
        if (densityMeasured) {
            const double bulk = valueAt(well, *density, plugM) + densityNoise;
            densities.points.append({plugM, rounded(bulk, 3)});
        }
    }
    return {porosities, densities};
}

} // namespace demo
