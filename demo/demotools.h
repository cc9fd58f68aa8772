#pragma once

#include "demo/demoborehole.h"
#include "demo/demorock.h"

namespace demo {

/// What the tools would read at one point if they saw only that point, in the units of their logs;
/// resistivities as decimal logarithms of ohmm, because tools average rock by its order of
/// magnitude.
struct Response
{
    double gammaRay, potential, caliper;
    double logDeep, logShallow, logMicro;
    double density, densityCorrection, neutron, sonic;
    double photoelectric; ///< photoelectric absorption by volume (b/cc), which mixes linearly
};

/// Resistivity (ohmm) of the formation water and of the mud filtrate at a vertical depth (m).
double waterResistivity(double verticalM);
double filtrateResistivity(double verticalM);

/// Readings of ordinary shale at a vertical depth (m): ohmm, g/cc, v/v and us/ft.
double shaleResistivity(double verticalM);
double shaleDensity(double verticalM);
double shaleNeutron(double verticalM);
double shaleSonic(double verticalM);

/// The readings at one point.
Response toolResponse(const WellPlan &plan, const Formation &formation, const RockSample &rock,
                      const HoleSample &hole);

} // namespace demo
