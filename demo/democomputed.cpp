#include "demo/democomputed.h"

#include "demo/demorandom.h"
#include "demo/demotools.h"

#include <algorithm>
#include <cmath>

namespace demo {

/// The measured logs at one sample.
struct Readings
{
    double gammaRay, deep, density, neutron, sonic;
};

static bool isPresent(double value)
{
    return value > nullValue + 1.0;
}

static QVector<double> valuesOf(const QVector<Curve> &curves, const QString &mnemonic)
{
    for (const Curve &curve : curves) {
        if (curve.mnemonic == mnemonic)
            return curve.values;
    }
    return {};
}

static double shaleVolume(const Formation &formation, double gammaRay)
{
    return std::clamp((gammaRay - formation.grClean) / (formation.grShale - formation.grClean), 0.0, 1.0);
}

/// Effective porosity from density and neutron, from the sonic where the pad lost the wall.
static double effectivePorosity(Rock matrix, const RockSample &rock, const HoleSample &hole, double shale,
                                const Readings &readings)
{
    double grainGcc = 2.65;
    double neutronShift = 0.035;
    double grainUsft = 55.5;
    if (matrix == Rock::Limestone) {
        grainGcc = 2.71;
        neutronShift = 0.0;
        grainUsft = 48.0;
    } else if (matrix == Rock::Dolomite) {
        grainGcc = 2.85;
        neutronShift = -0.035;
        grainUsft = 44.5;
    }
    const double shaleUsft = shaleSonic(rock.verticalM);
    const double shaleDensityPorosity = (grainGcc - shaleDensity(rock.verticalM)) / (grainGcc - 1.03);
    const double shaleNeutronPorosity = shaleNeutron(rock.verticalM) + neutronShift;
    const double fromDensity = (grainGcc - readings.density) / (grainGcc - 1.03) - shale * shaleDensityPorosity;
    const double fromNeutron = readings.neutron + neutronShift - shale * shaleNeutronPorosity;
    double porosity = 0.5 * (fromDensity + fromNeutron);
    // Light hydrocarbon drives the two apart; the root mean square makes good most of it.
    if (fromDensity > fromNeutron && fromNeutron > 0.0)
        porosity = std::sqrt(0.5 * (fromDensity * fromDensity + fromNeutron * fromNeutron));
    if (hole.roughness > 0.5 && isPresent(readings.sonic))
        porosity = (readings.sonic - grainUsft - shale * (shaleUsft - grainUsft)) / (189.0 - grainUsft);
    return std::clamp(porosity, 0.0, 0.4 * (1.0 - shale));
}

/// Water saturation after the Indonesian relation.
static double waterSaturation(const Formation &formation, double verticalM, double shale, double porosity,
                              double deep)
{
    // Nothing moves in tight rock and shale; the relation would only make noise of them.
    if (porosity < 0.035 || shale > 0.7)
        return 1.0;
    const double shaleOhmm = shaleResistivity(verticalM) * formation.shaleResistivity;
    const double shalePart = std::pow(shale, 1.0 - 0.5 * shale) / std::sqrt(shaleOhmm);
    const double porePart = std::pow(porosity, 0.95) / std::sqrt(waterResistivity(verticalM));
    return std::clamp(1.0 / (std::sqrt(deep) * (shalePart + porePart)), 0.03, 1.0);
}

QVector<Curve> computedCurves(const QVector<Formation> &column, const QVector<RockSample> &rock,
                              const QVector<HoleSample> &hole, const QVector<Curve> &measured)
{
    const QVector<double> gammaRay = valuesOf(measured, QStringLiteral("GR"));
    const QVector<double> deep = valuesOf(measured, QStringLiteral("LLD"));
    const QVector<double> density = valuesOf(measured, QStringLiteral("RHOB"));
    const QVector<double> neutron = valuesOf(measured, QStringLiteral("NPHI"));
    const QVector<double> sonic = valuesOf(measured, QStringLiteral("DT"));

    QVector<double> shales(rock.size(), nullValue);
    QVector<double> porosities(rock.size(), nullValue);
    QVector<double> waters(rock.size(), nullValue);
    for (int i = 0; i < rock.size(); ++i) {
        if (!isPresent(gammaRay.at(i)))
            continue;
        const RockSample &sample = rock.at(i);
        const Formation &formation = column.at(sample.formation);
        const double shale = shaleVolume(formation, gammaRay.at(i));
        shales[i] = rounded(shale, 4);
        if (!isPresent(density.at(i)) || !isPresent(neutron.at(i)))
            continue;
        const Readings readings{gammaRay.at(i), deep.at(i), density.at(i), neutron.at(i), sonic.at(i)};
        const double porosity = effectivePorosity(formation.rock, sample, hole.at(i), shale, readings);
        porosities[i] = rounded(porosity, 4);
        if (isPresent(readings.deep)) {
            const double water = waterSaturation(formation, sample.verticalM, shale, porosity, readings.deep);
            waters[i] = rounded(water, 4);
        }
    }
    return {{QStringLiteral("VSH_log"), QStringLiteral("v/v"), QStringLiteral("Shale volume"), 4, shales},
            {QStringLiteral("PHIE_log"), QStringLiteral("v/v"), QStringLiteral("Effective porosity"), 4, porosities},
            {QStringLiteral("WS_log"), QStringLiteral("v/v"), QStringLiteral("Water saturation"), 4, waters}};
}

} // namespace demo
