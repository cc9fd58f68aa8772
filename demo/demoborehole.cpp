#include "demo/demoborehole.h"

#include "demo/demorandom.h"

#include <algorithm>
#include <cmath>

namespace demo {

/// Enlargement (in) by caving: shale caves the more the softer, that is the shallower, it is.
static double caving(const WellPlan &plan, const RockSample &rock)
{
    const double softness = 1.5 * std::exp(-(rock.verticalM - 700.0) / 1000.0);
    const double shaleShare = std::max(0.0, (rock.shale - 0.55) / 0.45);
    const double patches = 0.55 + 0.65 * smoothNoise(mixed(21, plan.seed), rock.mdM / 9.0)
        + 0.35 * smoothNoise(mixed(22, plan.seed), rock.mdM / 1.6);
    return softness * shaleShare * std::max(0.05, patches);
}

/// Enlargement (in) in the badly caved interval.
static double washOut(const WellPlan &plan, double mdM)
{
    const double insideM = std::min(mdM - plan.washOutTopM, plan.washOutBaseM - mdM);
    if (plan.washOutBaseM <= plan.washOutTopM || insideM <= 0.0)
        return 0.0;
    const double taper = std::min(1.0, insideM / 2.2);
    return taper
        * (3.3 + 1.1 * smoothNoise(mixed(23, plan.seed), mdM / 2.6)
           + 0.6 * smoothNoise(mixed(24, plan.seed), mdM / 0.55));
}

QVector<HoleSample> makeHole(const WellPlan &plan, const QVector<RockSample> &rock)
{
    QVector<HoleSample> hole;
    hole.reserve(rock.size());
    for (const RockSample &sample : rock) {
        HoleSample point{};
        point.bitIn = bitSize(plan, sample.mdM);
        double enlargedIn = 0.04 + 0.03 * smoothNoise(mixed(25, plan.seed), sample.mdM / 0.8);
        enlargedIn += caving(plan, sample) + washOut(plan, sample.mdM);
        // Mud cake builds up only where filtrate enters the rock.
        const double permeable = std::clamp((sample.porosity - 0.10) / 0.06, 0.0, 1.0);
        enlargedIn -= permeable * (0.26 + 0.05 * smoothNoise(mixed(26, plan.seed), sample.mdM / 3.0));
        point.caliperIn = point.bitIn + enlargedIn;
        const double lostContact = std::max(0.0, enlargedIn - 0.8);
        const double unevenness = 0.5 + 0.5 * smoothNoise(mixed(27, plan.seed), sample.mdM / 0.45);
        point.roughness = lostContact * (0.35 + unevenness);
        hole.append(point);
    }
    return hole;
}

} // namespace demo
