#include "demo/demowells.h"

#include <QStringList>

#include <cmath>

namespace demo {

/// A vertical well as drilled and logged without trouble: cased above the logs, total depth (m)
/// just below them.
static WellPlan verticalWell(const QString &name, const QString &type, quint64 seed, double firstLogM,
                             double lastLogM, const QVector<HoleSection> &sections)
{
    WellPlan plan{};
    plan.name = name;
    plan.type = type;
    plan.seed = seed;
    plan.firstLogM = firstLogM;
    plan.lastLogM = lastLogM;
    plan.sections = sections;
    plan.totalDepthM = sections.last().baseM;
    plan.kickOffM = plan.totalDepthM;
    plan.microLog = true;
    return plan;
}

/// Puts a well on the map: coordinates and elevation of the kelly bushing, metres. The field lies offshore, and the
/// seabed at each well as far below sea level as the kelly bushing above it: displays take both elevations off the
/// depths of markers, which so stand on the breaks of the logs.
static void place(WellPlan &plan, double xM, double yM, double kbM)
{
    plan.xM = xM;
    plan.yM = yM;
    plan.groundM = -kbM;
    plan.kbM = kbM;
}

static void leaveGap(WellPlan &plan, const QStringList &mnemonics, double topM, double baseM)
{
    for (const QString &mnemonic : mnemonics)
        plan.gaps.append({mnemonic, topM, baseM});
}

static WellPlan crestWell()
{
    WellPlan plan =
        verticalWell(QStringLiteral("Aldra-1"), QStringLiteral("Oil"), 11, 800, 2598, {{1488, 12.25}, {2610, 8.5}});
    place(plan, 504250, 6005350, 20.6);
    plan.nuclearFromM = 962;
    leaveGap(plan, {QStringLiteral("SP")}, 1486, 1497);
    leaveGap(plan, {QStringLiteral("PEF")}, 2231, 2246);
    return plan;
}

static WellPlan cavedWell()
{
    WellPlan plan =
        verticalWell(QStringLiteral("Aldra-2"), QStringLiteral("Gas"), 12, 812, 2611, {{1512, 12.25}, {2625, 8.5}});
    place(plan, 505380, 6006120, 21.5);
    plan.nuclearFromM = 1020;
    plan.washOutTopM = 1894;
    plan.washOutBaseM = 1921;
    leaveGap(plan, {QStringLiteral("DT")}, 1507, 1519);
    leaveGap(plan, {QStringLiteral("NPHI")}, 2318, 2334);
    return plan;
}

static WellPlan inclinedWell()
{
    WellPlan plan =
        verticalWell(QStringLiteral("Aldra-3 A"), QStringLiteral("Oil"), 13, 826, 2672, {{1540, 12.25}, {2688, 8.5}});
    place(plan, 503420, 6004640, 20.2);
    plan.kickOffM = 1020;
    plan.inclinationDeg = 14;
    plan.nuclearFromM = 1110;
    leaveGap(plan, {QStringLiteral("MSFL")}, 1838, 1861);
    leaveGap(plan, {QStringLiteral("DT")}, 2402, 2411);
    return plan;
}

static WellPlan faultedWell()
{
    WellPlan plan =
        verticalWell(QStringLiteral("Brisk-1"), QStringLiteral("Oil"), 14, 795, 2640, {{1560, 12.25}, {2652, 8.5}});
    place(plan, 506350, 6005150, 22.3);
    plan.nuclearFromM = 1004;
    plan.faultedOut = QStringLiteral("Ferrow Siltstone");
    leaveGap(plan, {QStringLiteral("RHOB"), QStringLiteral("DRHO"), QStringLiteral("PEF")}, 1556, 1566);
    return plan;
}

static WellPlan flankWell()
{
    WellPlan plan = verticalWell(QStringLiteral("Brisk-2"), QString(), 15, 840, 2690, {{1578, 12.25}, {2702, 8.5}});
    place(plan, 508460, 6007880, 22.9);
    plan.nuclearFromM = 1150;
    plan.microLog = false;
    leaveGap(plan, {QStringLiteral("NPHI")}, 1330, 1352);
    leaveGap(plan, {QStringLiteral("SP")}, 2484, 2507);
    return plan;
}

static WellPlan deepWell()
{
    WellPlan plan = verticalWell(QStringLiteral("Corrin-1 Deep"), QString(), 16, 806, 3292,
                                 {{1465, 12.25}, {2830, 8.5}, {3310, 6.0}});
    place(plan, 500740, 6002460, 21.8);
    plan.nuclearFromM = 985;
    leaveGap(plan, {QStringLiteral("RHOB"), QStringLiteral("DRHO"), QStringLiteral("PEF")}, 2826, 2838);
    leaveGap(plan, {QStringLiteral("MSFL")}, 2660, 2702);
    return plan;
}

QVector<WellPlan> wellPlans()
{
    return {crestWell(), cavedWell(), inclinedWell(), faultedWell(), flankWell(), deepWell()};
}

QVector<WellPlan> sectionPlans(int count)
{
    constexpr double crestXM = 504400;
    constexpr double crestYM = 6005500;
    constexpr double eastPerWellM = 300;
    constexpr double northPerWellM = -400;
    QVector<WellPlan> plans;
    for (int well = 0; well < count; ++well) {
        const double fromCrest = well - (count - 1) / 2.0;
        WellPlan plan = verticalWell(QStringLiteral("Vellorn-%1").arg(well + 1, 2, 10, QLatin1Char('0')), QString(),
                                     static_cast<quint64>(100 + well), 1600, 2640, {{1580, 12.25}, {2650, 8.5}});
        place(plan, crestXM + fromCrest * eastPerWellM, crestYM + fromCrest * northPerWellM, 20 + well % 3);
        plan.nuclearFromM = plan.firstLogM;
        plans.append(plan);
    }
    return plans;
}

double verticalDepth(const WellPlan &plan, double mdM)
{
    if (mdM <= plan.kickOffM)
        return mdM;
    return plan.kickOffM + (mdM - plan.kickOffM) * std::cos(plan.inclinationDeg * 0.017453292519943);
}

double bitSize(const WellPlan &plan, double mdM)
{
    for (const HoleSection &section : plan.sections) {
        if (mdM < section.baseM)
            return section.bitIn;
    }
    return plan.sections.last().bitIn;
}

} // namespace demo
