#include "demo/demostratigraphy.h"

#include <QtGlobal>

#include <cmath>

namespace demo {

constexpr Rock sandstone = Rock::Sandstone;
constexpr Rock limestone = Rock::Limestone;
constexpr Rock dolomite = Rock::Dolomite;
constexpr Rock anhydrite = Rock::Anhydrite;

static Element shale(double thicknessM, double shaleTop, double shaleBase, double stringers = 0.02)
{
    return {thicknessM, sandstone, shaleTop, shaleBase, 0.05, 1.6, 0.8, 0.15, false, stringers};
}

/// A sand whose shale content runs from top to base: fining upwards where the top is the shalier.
static Element sand(double thicknessM, double shaleTop, double shaleBase, double quality = 1.0, double lateral = 0.3)
{
    return {thicknessM, sandstone, shaleTop, shaleBase, 0.05, 0.9, quality, lateral, false, 0.012};
}

/// A sharp-based sand of thick, uniform beds.
static Element channel(double thicknessM, double shaleFraction, double quality = 1.0, double lateral = 0.25)
{
    return {thicknessM, sandstone, shaleFraction, shaleFraction, 0.025, 2.4, quality, lateral, false, 0.015};
}

/// Sand and shale in turns, close to or below what the tools resolve.
static Element thinBeds(double thicknessM, double sandShale, double shaleShale, double bedM, double quality = 0.9)
{
    return {thicknessM, sandstone, sandShale, shaleShale, 0.07, bedM, quality, 0.25, true, 0.02};
}

static Element mineral(double thicknessM, Rock rock, double shaleTop, double shaleBase, double quality)
{
    return {thicknessM, rock, shaleTop, shaleBase, 0.02, 1.3, quality, 0.15, false, 0.0};
}

static QVector<Element> redBedCycles()
{
    // River deposits: each cycle starts sharply with sand and fines up into mudstone.
    const double cyclesM[] = {38, 54, 29, 61, 44, 33, 70, 41, 52, 36, 62};
    QVector<Element> elements;
    for (double cycleM : cyclesM) {
        elements.append(shale(cycleM * 0.42, 0.88, 0.74, 0.02));
        elements.append(sand(cycleM * 0.30, 0.66, 0.22, 0.75, 0.5));
        elements.append(channel(cycleM * 0.28, 0.14, 0.85, 0.5));
    }
    return elements;
}

static QVector<Element> quartziteBeds()
{
    QVector<Element> elements;
    for (int i = 0; i < 9; ++i) {
        elements.append(channel(30.0 + 7.0 * (i % 3), 0.06, 0.52 + 0.05 * (i % 2), 0.2));
        elements.append(shale(1.5 + 1.2 * (i % 4), 0.75, 0.65, 0.0));
        elements.append(sand(9.0, 0.30, 0.12, 0.5, 0.3));
    }
    return elements;
}

// The column is read as a table.
// clang-format off
static QVector<Formation> upperColumn()
{
    // Name, top, gamma ray of shale and clean rock, shale resistivity, organic, rock, charged,
    // colour; the elements follow downwards.
    return {
        {QStringLiteral("Hollane Clay"), 640, 98, 30, 1.0, 0.0, sandstone, false, 0x6B6B4E,
         {shale(120, 0.86, 0.92), sand(14, 0.60, 0.20), shale(86, 0.80, 0.90)}},
        {QStringLiteral("Ostrel Sandstone"), 860, 100, 26, 1.0, 0.0, sandstone, false, 0x8A6D00,
         {sand(17, 0.62, 0.10), shale(3, 0.80, 0.85), sand(21, 0.55, 0.07), shale(6, 0.75, 0.85),
          channel(24, 0.06)}},
        {QStringLiteral("Tavane Mudstone"), 935, 112, 30, 1.0, 0.0, sandstone, false, 0x3F7A45,
         {shale(60, 0.82, 0.96), sand(18, 0.52, 0.78, 0.8), shale(50, 0.90, 0.95),
          thinBeds(13, 0.35, 0.90, 0.7), shale(44, 0.88, 0.94)}},
        {QStringLiteral("Pellorin Sandstone"), 1120, 108, 27, 1.0, 0.0, sandstone, false, 0xA85F00,
         {sand(30, 0.10, 0.78), shale(4, 0.86, 0.84), sand(33, 0.14, 0.80), sand(40, 0.24, 0.90)}},
        {QStringLiteral("Quillane Shale"), 1230, 118, 30, 1.0, 0.0, sandstone, false, 0x1F7A6B,
         {shale(70, 0.88, 0.95), shale(38, 0.76, 0.84, 0.06), shale(67, 0.94, 0.90)}},
        {QStringLiteral("Dunvar Limestone"), 1405, 95, 20, 1.0, 0.0, limestone, false, 0x1F6FB0,
         {mineral(19, limestone, 0.03, 0.06, 0.8), mineral(2.5, limestone, 0.50, 0.45, 0.6),
          mineral(21, limestone, 0.04, 0.05, 1.0), mineral(1.8, limestone, 0.42, 0.55, 0.6),
          mineral(11, limestone, 0.07, 0.10, 1.5)}},
        {QStringLiteral("Corvell Mudstone"), 1460, 108, 28, 1.1, 0.0, sandstone, false, 0x5B5F7A,
         {mineral(36, limestone, 0.52, 0.80, 0.6), shale(82, 0.86, 0.94, 0.05),
          thinBeds(20, 0.40, 0.90, 0.8), shale(92, 0.90, 0.95, 0.04)}},
    };
}

static QVector<Formation> lowerColumn()
{
    // Name, top, gamma ray of shale and clean rock, shale resistivity, organic, rock, charged,
    // colour; the elements follow downwards.
    return {
        {QStringLiteral("Ferrow Siltstone"), 1690, 112, 30, 1.1, 0.0, sandstone, false, 0xA0522D,
         {thinBeds(14, 0.28, 0.86, 0.5), shale(3, 0.84, 0.88), thinBeds(15, 0.22, 0.82, 0.7)}},
        {QStringLiteral("Sabrane Shale"), 1722, 120, 30, 1.0, 0.0, sandstone, false, 0x2F6B52,
         {shale(96, 0.92, 0.96), shale(22, 0.72, 0.82, 0.08), shale(125, 0.95, 0.92)}},
        {QStringLiteral("Noctel Shale"), 1965, 142, 30, 3.2, 1.0, sandstone, false, 0x4B2E5E,
         {shale(11, 0.86, 0.97, 0.02), shale(24, 0.97, 0.92, 0.02)}},
        {QStringLiteral("Kestrane Upper Sst"), 2000, 116, 22, 1.1, 0.0, sandstone, true, 0x9A6700,
         {sand(13, 0.52, 0.07), shale(1.6, 0.78, 0.82, 0.0), channel(25, 0.045, 1.06),
          shale(2.0, 0.72, 0.80, 0.0), thinBeds(5, 0.15, 0.75, 0.45), channel(15, 0.07, 1.02)}},
        {QStringLiteral("Kestrane Middle Shale"), 2062, 118, 26, 1.1, 0.0, sandstone, false,
         0x6E4B37, {shale(12, 0.82, 0.92, 0.0)}},
        {QStringLiteral("Kestrane Lower Sst"), 2074, 114, 24, 1.1, 0.0, sandstone, true, 0xB04A00,
         {sand(25, 0.06, 0.42, 1.03), shale(2, 0.75, 0.84, 0.0), sand(29, 0.07, 0.68),
          shale(3.5, 0.62, 0.80, 0.0), channel(16.5, 0.11, 0.95)}},
        {QStringLiteral("Thessane Mudstone"), 2150, 122, 32, 1.2, 0.1, sandstone, false, 0x7B3F98,
         {shale(58, 0.86, 0.93), sand(11, 0.50, 0.18, 0.85, 0.5), shale(66, 0.90, 0.86, 0.05)}},
        {QStringLiteral("Maldane Evaporites"), 2285, 100, 20, 1.5, 0.0, dolomite, false, 0xC2257F,
         {mineral(9, anhydrite, 0.01, 0.02, 1.0), mineral(25, dolomite, 0.05, 0.08, 0.9),
          mineral(3.5, anhydrite, 0.02, 0.02, 1.0), mineral(38, dolomite, 0.08, 0.14, 1.5),
          shale(5, 0.72, 0.80, 0.0), mineral(34, dolomite, 0.06, 0.22, 0.8)}},
        {QStringLiteral("Grauven Red Beds"), 2400, 128, 46, 1.4, 0.0, sandstone, false, 0xB8321E,
         redBedCycles()},
        {QStringLiteral("Umbrelle Sandstone"), 2920, 120, 24, 1.6, 0.0, sandstone, false, 0x7A5C1E,
         quartziteBeds()},
    };
}
// clang-format on

QVector<Formation> stratigraphicColumn()
{
    return upperColumn() + lowerColumn();
}

double horizonDepth(double centreM, double xM, double yM)
{
    // A dome elongated to the north-east on a regional dip to the south-east. It grew while the
    // beds were laid down, so that deeper horizons have more relief and the beds thicken down the
    // dip.
    const double eastKm = (xM - 504400.0) / 1000.0;
    const double northKm = (yM - 6005500.0) / 1000.0;
    const double alongKm = 0.8 * eastKm + 0.6 * northKm;
    const double acrossKm = 0.8 * northKm - 0.6 * eastKm;
    const double distance = alongKm * alongKm / (3.6 * 3.6) + acrossKm * acrossKm / (2.5 * 2.5);
    const double growth = centreM / 2000.0;
    const double relief = 145.0 * growth * std::sqrt(growth);
    const double dip = growth * growth;
    return centreM + relief * (1.0 - std::exp(-distance)) + dip * (3.0 * eastKm - 1.5 * northKm);
}

} // namespace demo
