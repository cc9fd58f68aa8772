#include "demo/demologs.h"

#include "demo/demoborehole.h"
#include "demo/democomputed.h"
#include "demo/demorandom.h"
#include "demo/demotools.h"

#include <algorithm>
#include <cmath>

namespace demo {

/// The rock is modelled twice as finely as it is logged, for beds thinner than the tools resolve.
constexpr int pointsPerSample = 2;
constexpr int marginSamples = 40;

QVector<double> logDepths(const WellPlan &plan)
{
    const auto first = static_cast<int>(std::ceil(plan.firstLogM / logStepM));
    const auto last = static_cast<int>(std::floor(plan.lastLogM / logStepM));
    QVector<double> depthsM;
    depthsM.reserve(last - first + 1);
    for (int i = first; i <= last; ++i)
        depthsM.append(rounded(i * logStepM, 4));
    return depthsM;
}

static QVector<double> modelDepths(const QVector<double> &depthsM)
{
    const int count = (depthsM.size() - 1 + 2 * marginSamples) * pointsPerSample + 1;
    QVector<double> result;
    result.reserve(count);
    for (int i = 0; i < count; ++i) {
        const double steps = static_cast<double>(i) / pointsPerSample - marginSamples;
        result.append(depthsM.first() + steps * logStepM);
    }
    return result;
}

/// One reading of the model as a tool records it that averages over the depth with this spread (m).
static QVector<double> recorded(const QVector<Response> &responses, double Response::*reading, double spreadM,
                                int count)
{
    const double pointM = logStepM / pointsPerSample;
    const int reach = std::min(static_cast<int>(3.0 * spreadM / pointM), marginSamples * pointsPerSample);
    QVector<double> weights;
    double sum = 0.0;
    for (int k = -reach; k <= reach; ++k) {
        const double distance = k * pointM / spreadM;
        weights.append(std::exp(-0.5 * distance * distance));
        sum += weights.last();
    }
    QVector<double> values;
    values.reserve(count);
    for (int i = 0; i < count; ++i) {
        const int start = (i + marginSamples) * pointsPerSample - reach;
        double total = 0.0;
        for (int k = 0; k < weights.size(); ++k)
            total += weights.at(k) * (responses.at(start + k).*reading);
        values.append(total / sum);
    }
    return values;
}

/// Noise of unit standard deviation in which each value keeps a share of the one above.
static QVector<double> toolNoise(quint64 seed, int count, double memory)
{
    Random random{seed};
    const double fresh = std::sqrt(1.0 - memory * memory);
    QVector<double> values;
    values.reserve(count);
    double value = gaussian(random);
    for (int i = 0; i < count; ++i) {
        values.append(value);
        value = memory * value + fresh * gaussian(random);
    }
    return values;
}

/// The model of a well and what is needed to turn its readings into logs.
struct LogModel
{
    const WellPlan &plan;
    const QVector<double> &depthsM;
    const QVector<HoleSample> &hole; // at the log samples
    const QVector<Response> &responses; // at the finer points of the model
};

static Curve gammaRayCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::gammaRay, 0.24, count);
    const QVector<double> noise = toolNoise(mixed(41, model.plan.seed), count, 0.62);
    for (int i = 0; i < count; ++i) {
        // Counting noise grows with the square root of the count.
        values[i] = std::clamp(values.at(i) + 0.30 * std::sqrt(values.at(i)) * noise.at(i), 10.0, 160.0);
    }
    return {QStringLiteral("GR"), QStringLiteral("gapi"), QStringLiteral("Gamma ray"), 2, values};
}

static Curve potentialCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::potential, 0.85, count);
    const QVector<double> noise = toolNoise(mixed(42, model.plan.seed), count, 0.9);
    for (int i = 0; i < count; ++i) {
        const double mdM = model.depthsM.at(i);
        // The base line drifts, and starts anew with the second logging run.
        const double drift = 5.0 * smoothNoise(mixed(43, model.plan.seed), mdM / 190.0)
            + (mdM > model.plan.sections.first().baseM ? -2.0 : 3.0);
        values[i] = std::clamp(values.at(i) + drift + 0.55 * noise.at(i), -80.0, 20.0);
    }
    return {QStringLiteral("SP"), QStringLiteral("mv"), QStringLiteral("Spontaneous potential"), 2, values};
}

static Curve caliperCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::caliper, 0.16, count);
    const QVector<double> noise = toolNoise(mixed(44, model.plan.seed), count, 0.5);
    for (int i = 0; i < count; ++i)
        values[i] += 0.018 * noise.at(i);
    return {QStringLiteral("CALI"), QStringLiteral("in"), QStringLiteral("Caliper"), 3, values};
}

static Curve bitSizeCurve(const LogModel &model)
{
    QVector<double> values;
    for (const HoleSample &hole : model.hole)
        values.append(hole.bitIn);
    return {QStringLiteral("BS"), QStringLiteral("in"), QStringLiteral("Bit size"), 3, values};
}

static Curve resistivityCurve(const LogModel &model, const QString &mnemonic, const QString &description,
                              double Response::*reading, double spreadM, double noiseShare, quint64 seed)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, reading, spreadM, count);
    const QVector<double> noise = toolNoise(mixed(seed, model.plan.seed), count, 0.55);
    for (int i = 0; i < count; ++i) {
        const double ohmm = std::pow(10.0, values.at(i)) * (1.0 + noiseShare * noise.at(i));
        values[i] = std::clamp(ohmm, 0.2, 2000.0);
    }
    return {mnemonic, QStringLiteral("ohmm"), description, 3, values};
}

static Curve densityCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::density, 0.18, count);
    const QVector<double> noise = toolNoise(mixed(48, model.plan.seed), count, 0.6);
    for (int i = 0; i < count; ++i) {
        const double roughness = std::min(model.hole.at(i).roughness, 2.0);
        const double spread = 0.010 + 0.022 * roughness;
        values[i] = std::clamp(values.at(i) + spread * noise.at(i), 1.95, 2.95);
    }
    return {QStringLiteral("RHOB"), QStringLiteral("g/cc"), QStringLiteral("Bulk density"), 4, values};
}

static Curve densityCorrectionCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::densityCorrection, 0.18, count);
    const QVector<double> noise = toolNoise(mixed(49, model.plan.seed), count, 0.6);
    for (int i = 0; i < count; ++i) {
        const double roughness = std::min(model.hole.at(i).roughness, 2.0);
        values[i] += (0.006 + 0.014 * roughness) * noise.at(i);
    }
    return {QStringLiteral("DRHO"), QStringLiteral("g/cc"), QStringLiteral("Density correction"), 4, values};
}

static Curve neutronCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::neutron, 0.26, count);
    const QVector<double> noise = toolNoise(mixed(50, model.plan.seed), count, 0.6);
    for (int i = 0; i < count; ++i) {
        const double spread = 0.0035 + 0.022 * std::max(0.0, values.at(i));
        values[i] = std::clamp(values.at(i) + spread * noise.at(i), -0.05, 0.6);
    }
    return {QStringLiteral("NPHI"), QStringLiteral("v/v"), QStringLiteral("Neutron porosity, limestone scale"), 4,
            values};
}

static Curve sonicCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::sonic, 0.30, count);
    const QVector<double> noise = toolNoise(mixed(51, model.plan.seed), count, 0.5);
    for (int i = 0; i < count; ++i) {
        const double mdM = model.depthsM.at(i);
        double usft = values.at(i) + 0.011 * values.at(i) * noise.at(i);
        // Where the wall has caved, the tool now and then misses the first arrival.
        const double missed = smoothNoise(mixed(52, model.plan.seed), mdM / 0.35) - 0.62;
        if (model.hole.at(i).roughness > 0.9 && missed > 0.0)
            usft += 130.0 * missed;
        values[i] = std::clamp(usft, 45.0, 190.0);
    }
    return {QStringLiteral("DT"), QStringLiteral("us/ft"), QStringLiteral("Compressional slowness"), 2, values};
}

static Curve photoelectricCurve(const LogModel &model)
{
    const int count = model.depthsM.size();
    QVector<double> values = recorded(model.responses, &Response::photoelectric, 0.14, count);
    const QVector<double> density = recorded(model.responses, &Response::density, 0.14, count);
    const QVector<double> noise = toolNoise(mixed(53, model.plan.seed), count, 0.5);
    for (int i = 0; i < count; ++i) {
        const double factor = values.at(i) / std::max(1.9, density.at(i));
        values[i] = std::clamp(factor * (1.0 + 0.035 * noise.at(i)), 1.0, 8.0);
    }
    return {QStringLiteral("PEF"), QStringLiteral("b/e"), QStringLiteral("Photoelectric factor"), 3, values};
}

/// Where a log is without values: each sensor of the string starts and stops at its own depth.
static QVector<LogGap> gapsOf(const WellPlan &plan)
{
    const double above = 0.0;
    const double below = plan.totalDepthM + 100.0;
    const double shoeM = plan.sections.first().baseM;
    const auto log = [](const char *mnemonic) { return QString::fromLatin1(mnemonic); };
    QVector<LogGap> gaps = plan.gaps;
    gaps << LogGap{log("GR"), plan.lastLogM - 7.5, below} << LogGap{log("SP"), above, plan.firstLogM + 4.2}
         << LogGap{log("SP"), plan.lastLogM - 5.0, below} << LogGap{log("CALI"), above, plan.firstLogM + 1.6}
         << LogGap{log("CALI"), plan.lastLogM - 1.1, below} << LogGap{log("LLD"), above, plan.firstLogM + 2.8}
         << LogGap{log("LLD"), plan.lastLogM - 2.4, below} << LogGap{log("LLS"), above, plan.firstLogM + 2.8}
         << LogGap{log("LLS"), plan.lastLogM - 2.4, below} << LogGap{log("MSFL"), above, shoeM + 3.0}
         << LogGap{log("MSFL"), plan.lastLogM - 1.3, below} << LogGap{log("DT"), above, plan.firstLogM + 16.5}
         << LogGap{log("DT"), plan.lastLogM - 12.2, below} << LogGap{log("NPHI"), above, plan.nuclearFromM + 3.8}
         << LogGap{log("NPHI"), plan.lastLogM - 4.1, below};
    for (const char *mnemonic : {"RHOB", "DRHO", "PEF"}) {
        gaps << LogGap{log(mnemonic), above, plan.nuclearFromM} << LogGap{log(mnemonic), plan.lastLogM - 1.8, below};
    }
    return gaps;
}

static void finish(Curve &curve, const QVector<double> &depthsM, const QVector<LogGap> &gaps)
{
    for (double &value : curve.values)
        value = rounded(value, curve.decimals);
    for (const LogGap &gap : gaps) {
        if (gap.mnemonic != curve.mnemonic)
            continue;
        for (int i = 0; i < depthsM.size(); ++i) {
            if (depthsM.at(i) >= gap.topM && depthsM.at(i) < gap.baseM)
                curve.values[i] = nullValue;
        }
    }
}

QVector<Curve> makeCurves(const WellPlan &plan, const QVector<Formation> &column, const QVector<double> &depthsM)
{
    const QVector<RockSample> rock = sampleRock(plan, column, modelDepths(depthsM));
    const QVector<HoleSample> hole = makeHole(plan, rock);
    QVector<Response> responses;
    responses.reserve(rock.size());
    for (int i = 0; i < rock.size(); ++i)
        responses.append(toolResponse(plan, column.at(rock.at(i).formation), rock.at(i), hole.at(i)));

    QVector<HoleSample> loggedHole(depthsM.size());
    QVector<RockSample> loggedRock(depthsM.size());
    for (int i = 0; i < depthsM.size(); ++i) {
        loggedHole[i] = hole.at((i + marginSamples) * pointsPerSample);
        loggedRock[i] = rock.at((i + marginSamples) * pointsPerSample);
    }

    const LogModel model{plan, depthsM, loggedHole, responses};
    QVector<Curve> curves{gammaRayCurve(model), potentialCurve(model), caliperCurve(model), bitSizeCurve(model)};
    curves << resistivityCurve(model, QStringLiteral("LLD"), QStringLiteral("Deep laterolog"), &Response::logDeep,
                               0.30, 0.018, 45)
           << resistivityCurve(model, QStringLiteral("LLS"), QStringLiteral("Shallow laterolog"),
                               &Response::logShallow, 0.28, 0.022, 46);
    if (plan.microLog) {
        curves << resistivityCurve(model, QStringLiteral("MSFL"),
                                   QStringLiteral("Micro-spherically focused resistivity"), &Response::logMicro, 0.07,
                                   0.10, 47);
    }
    curves << densityCurve(model) << densityCorrectionCurve(model) << neutronCurve(model) << sonicCurve(model)
           << photoelectricCurve(model);
    const QVector<LogGap> gaps = gapsOf(plan);
    for (Curve &curve : curves)
        finish(curve, depthsM, gaps);
    return curves + computedCurves(column, loggedRock, loggedHole, curves);
}

} // namespace demo
