#include "demo/demotools.h"

#include "demo/demorandom.h"

#include <algorithm>
#include <cmath>

namespace demo {

/// What the grains of a rock contribute.
struct Grains
{
    double density, neutron, sonic, photoelectric;
};

static Grains grainsOf(Rock rock)
{
    // The neutron is scaled for limestone: sandstone reads low and dolomite high in it.
    switch (rock) {
    case Rock::Limestone:
        return {2.71, 0.0, 48.0, 13.8};
    case Rock::Dolomite:
        return {2.85, 0.035, 44.5, 9.0};
    case Rock::Anhydrite:
        return {2.95, -0.012, 50.0, 14.6};
    case Rock::Sandstone:
        break;
    }
    return {2.65, -0.035, 55.5, 5.0};
}

static double celsius(double verticalM)
{
    return 9.0 + 0.031 * verticalM;
}

double waterResistivity(double verticalM)
{
    // Fresher near the surface; the second factor brings the value from 25 C to the rock.
    const double at25 = 0.125 + 0.30 * std::exp(-(verticalM - 700.0) / 420.0);
    return at25 * 46.5 / (celsius(verticalM) + 21.5);
}

double filtrateResistivity(double verticalM)
{
    return 0.62 * 46.5 / (celsius(verticalM) + 21.5);
}

double shaleResistivity(double verticalM)
{
    return 0.9 + 0.62 * verticalM / 1000.0;
}

double shaleDensity(double verticalM)
{
    return 2.68 - 0.72 * std::exp(-verticalM / 1550.0);
}

double shaleNeutron(double verticalM)
{
    return 0.26 + 0.25 * std::exp(-verticalM / 1500.0);
}

double shaleSonic(double verticalM)
{
    return 71.0 + 116.0 * std::exp(-verticalM / 1650.0);
}

/// Conductivity after the Indonesian relation, from which the resistivity of shaly sand follows.
static double shalySandResistivity(double shale, double porosity, double water, double waterOhmm, double shaleOhmm)
{
    const double shalePart = std::pow(shale, 1.0 - 0.5 * shale) / std::sqrt(shaleOhmm);
    const double porePart = std::pow(std::max(porosity, 0.002), 0.95) / std::sqrt(waterOhmm);
    const double root = (shalePart + porePart) * water;
    return 1.0 / std::max(root * root, 1.0e-5);
}

static void respondElectrically(const Formation &formation, const RockSample &rock, double wander, Response &response)
{
    const double shaleOhmm = shaleResistivity(rock.verticalM) * formation.shaleResistivity * std::exp(0.24 * wander);
    const double bulkShale = rock.shale * (1.0 - rock.porosity);
    const double deep =
        shalySandResistivity(bulkShale, rock.porosity, rock.water, waterResistivity(rock.verticalM), shaleOhmm);
    const double flushed = shalySandResistivity(bulkShale, rock.porosity, rock.flushedWater,
                                                filtrateResistivity(rock.verticalM), shaleOhmm);
    // Filtrate enters permeable rock only; the tools see it in proportion to their depth.
    const double invaded = std::clamp((rock.porosity - 0.05) / 0.06, 0.0, 1.0);
    const double logDeep = std::log10(std::min(deep, 1900.0));
    const double logFlushed = std::log10(std::min(flushed, 1900.0));
    response.logDeep = logDeep + 0.05 * invaded * (logFlushed - logDeep);
    response.logShallow = logDeep + 0.36 * invaded * (logFlushed - logDeep);
    response.logMicro = logDeep + (0.06 + 0.90 * invaded) * (logFlushed - logDeep);

    // The static potential is reached in clean permeable rock; hydrocarbon takes some of it away.
    const double coefficient = 64.0 + 0.24 * celsius(rock.verticalM);
    const double staticPotential =
        -coefficient * std::log10(filtrateResistivity(rock.verticalM) / waterResistivity(rock.verticalM));
    const double clean = std::max(0.0, 1.0 - 1.15 * rock.shale);
    response.potential = staticPotential * clean * (0.25 + 0.75 * invaded) * (1.0 - 0.22 * (1.0 - rock.water));
}

static void respondToVolumes(const Formation &formation, const RockSample &rock, double wander, Response &response)
{
    const Grains grains = grainsOf(rock.rock);
    const double solid = 1.0 - rock.porosity;
    const double shale = rock.shale * solid;
    const double matrix = solid - shale;

    // Beside the hole much hydrocarbon is left in place, and gas is light and poor in hydrogen.
    const double hydrocarbon = 1.0 - rock.flushedWater;
    const double gasShare = rock.gas ? std::min(0.62, 1.9 * hydrocarbon) : 0.0;
    const double oilShare = rock.gas ? 0.0 : hydrocarbon;
    const double fluidDensity = 1.03 - 0.83 * gasShare - 0.25 * oilShare;
    const double hydrogen = 1.0 - 0.78 * gasShare - 0.03 * oilShare;

    const double shaleGcc = shaleDensity(rock.verticalM) + 0.032 * wander - 0.12 * formation.organic;
    const double shaleNphi = shaleNeutron(rock.verticalM) - 0.022 * wander + 0.03 * formation.organic;
    const double shaleUsft = shaleSonic(rock.verticalM) - 4.2 * wander + 8.0 * formation.organic;
    response.density = rock.porosity * fluidDensity + shale * shaleGcc + matrix * grains.density;
    // Gas lowers the neutron by more than its missing hydrogen: the excavation effect.
    response.neutron =
        rock.porosity * hydrogen + shale * shaleNphi + matrix * grains.neutron - 0.10 * rock.porosity * gasShare;
    const double compaction = std::max(1.0, shaleSonic(rock.verticalM) / 102.0);
    const double poreUsft = grains.sonic + (189.0 - grains.sonic) * compaction * (1.0 + 0.10 * gasShare);
    response.sonic = rock.porosity * poreUsft + shale * shaleUsft + matrix * grains.sonic;
    response.photoelectric = rock.porosity * 0.4 * fluidDensity + shale * 8.3 + matrix * grains.photoelectric;
}

Response toolResponse(const WellPlan &plan, const Formation &formation, const RockSample &rock,
                      const HoleSample &hole)
{
    Response response{};
    // Slow changes of the shale itself: some shared by all wells, some not.
    const double wander = 0.65 * smoothNoise(31, rock.stratigraphicM / 14.0)
        + 0.35 * smoothNoise(32, rock.stratigraphicM / 3.2)
        + 0.20 * smoothNoise(mixed(33, plan.seed), rock.mdM / 6.0);
    const double minerals =
        8.0 * smoothNoise(34, rock.stratigraphicM / 11.0) + 4.0 * smoothNoise(35, rock.stratigraphicM / 2.2);
    response.gammaRay = formation.grClean + rock.shale * (formation.grShale - formation.grClean + minerals)
        + 2.5 * smoothNoise(mixed(36, plan.seed), rock.mdM / 5.0);
    if (rock.rock == Rock::Limestone || rock.rock == Rock::Anhydrite)
        response.gammaRay -= 6.0 * (1.0 - rock.shale);
    respondElectrically(formation, rock, wander, response);
    respondToVolumes(formation, rock, wander, response);

    response.caliper = hole.caliperIn;
    response.densityCorrection =
        0.004 + 0.028 * std::max(0.0, hole.bitIn - hole.caliperIn) + 0.075 * std::min(hole.roughness, 3.4);
    // The correction cannot make good a large stand-off, so that some mud is read as rock.
    response.density -= 0.115 * hole.roughness;
    response.neutron += 0.012 * hole.roughness;
    response.gammaRay *= 1.0 - 0.018 * std::max(0.0, hole.caliperIn - hole.bitIn);
    response.logMicro += 0.5 * std::min(1.0, 0.35 * hole.roughness) * (-0.5 - response.logMicro);
    return response;
}

} // namespace demo
