#include "demo/demofield.h"

#include "demo/demologs.h"
#include "demo/demorandom.h"
#include "demo/demorock.h"
#include "demo/demosamples.h"
#include "demo/demostratigraphy.h"
#include "demo/demowells.h"

#include <algorithm>
#include <cmath>

namespace demo {

static double inclinationCosine(const Well &well)
{
    return std::cos(well.inclinationDeg * 0.017453292519943);
}

double depthBelowDatum(const Well &well, double mdM)
{
    const double inclinedM = std::max(0.0, mdM - well.kickOffM);
    return mdM - inclinedM * (1.0 - inclinationCosine(well)) - well.kbM;
}

double measuredDepth(const Well &well, double belowDatumM)
{
    const double verticalM = belowDatumM + well.kbM;
    if (verticalM <= well.kickOffM)
        return verticalM;
    return well.kickOffM + (verticalM - well.kickOffM) / inclinationCosine(well);
}

const Curve *findCurve(const Well &well, const QString &mnemonic)
{
    for (const Curve &curve : well.curves) {
        if (curve.mnemonic == mnemonic)
            return &curve;
    }
    return nullptr;
}

static QVector<FormationTop> makeTops(const Well &well, const WellPlan &plan, const QVector<Formation> &column)
{
    QVector<FormationTop> tops;
    for (const FormationInterval &interval : formationIntervals(plan, column)) {
        const double mdM = rounded(measuredDepth(well, interval.topM), 2);
        const bool logged = mdM >= well.depthsM.first() && mdM <= well.depthsM.last();
        if (!interval.present || !logged)
            continue;
        const Formation &formation = column.at(interval.formation);
        const quint32 colour = formation.colour;
        tops.append({formation.name, mdM, static_cast<int>(colour >> 16), static_cast<int>(colour >> 8 & 0xFF),
                     static_cast<int>(colour & 0xFF)});
    }
    return tops;
}

static Well makeWell(const WellPlan &plan, const QVector<Formation> &column)
{
    Well well{};
    well.name = plan.name;
    well.uwi = plan.name;
    well.xM = plan.xM;
    well.yM = plan.yM;
    well.kbM = plan.kbM;
    well.groundM = plan.groundM;
    well.totalDepthM = plan.totalDepthM;
    well.type = plan.type;
    well.kickOffM = plan.kickOffM;
    well.inclinationDeg = plan.inclinationDeg;
    well.depthsM = logDepths(plan);
    well.curves = makeCurves(plan, column, well.depthsM);
    well.tops = makeTops(well, plan, column);
    well.perforations = makePerforations(well);
    if (plan.name == QLatin1String("Aldra-1")) {
        well.calibrations =
            makeCoreData(well, QStringLiteral("Kestrane Upper Sst"), QStringLiteral("Kestrane Lower Sst"), plan.seed);
    } else if (plan.name == QLatin1String("Brisk-1")) {
        well.calibrations = makeCoreData(well, QStringLiteral("Kestrane Upper Sst"),
                                         QStringLiteral("Kestrane Middle Shale"), plan.seed);
    }
    return well;
}

Field makeField()
{
    const QVector<Formation> column = stratigraphicColumn();
    Field field{QStringLiteral("Vellorn"), {}, gasOilContactM, oilWaterContactM};
    for (const WellPlan &plan : wellPlans())
        field.wells.append(makeWell(plan, column));
    return field;
}

Field makeSection(int wells)
{
    const QVector<Formation> column = stratigraphicColumn();
    Field field{QStringLiteral("Vellorn section"), {}, gasOilContactM, oilWaterContactM};
    for (const WellPlan &plan : sectionPlans(wells))
        field.wells.append(makeWell(plan, column));
    return field;
}

} // namespace demo
