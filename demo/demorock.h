#pragma once

#include "demo/demostratigraphy.h"
#include "demo/demowells.h"

#include <QVector>

namespace demo {

/// The contacts of the reservoir, in metres below datum.
constexpr double gasOilContactM = 2034.0;
constexpr double oilWaterContactM = 2102.0;

/// Where a formation lies in a well, in metres below datum; absent where a fault cut it out.
struct FormationInterval
{
    int formation; ///< index in the stratigraphic column
    double topM, baseM;
    double wholeTopM, wholeBaseM; ///< where it would lie if the fault had cut nothing off it
    bool present;
};

/// A bed in a well, in metres below datum.
struct Bed
{
    int formation;
    double topM, baseM;
    double stratigraphicM; ///< position of its top in the undisturbed column, the same in all wells
    Rock rock;
    double shale, quality;
};

/// The rock and its fluids at one point of the hole, undisturbed by any tool. Fractions in v/v.
struct RockSample
{
    double mdM, verticalM;
    double stratigraphicM;
    int formation;
    Rock rock;
    double shale; ///< of the solid part
    double porosity; ///< effective
    double water; ///< saturation of the undisturbed rock
    double flushedWater; ///< saturation beside the hole
    bool gas;
};

/// Where the formations of the column lie in a well.
QVector<FormationInterval> formationIntervals(const WellPlan &plan, const QVector<Formation> &column);

/// The beds of a well: those of the column, with the variation between wells.
QVector<Bed> makeBeds(const WellPlan &plan, const QVector<Formation> &column);

/// The rock at these measured depths (m, increasing).
QVector<RockSample> sampleRock(const WellPlan &plan, const QVector<Formation> &column,
                               const QVector<double> &depthsM);

} // namespace demo
