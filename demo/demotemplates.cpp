#include "demo/demotemplates.h"

#include "templates/templatestore.h"

#include <QDir>

#include <algorithm>

namespace demo {

const char sectionTemplate[] = "Section";

namespace {

TemplateCurveRow curve(const char *group, const char *name, const char *minimum, const char *maximum,
                       const QColor &color)
{
    TemplateCurveRow row;
    row.group = QString::fromLatin1(group);
    row.curve = QString::fromLatin1(name);
    row.minimum = QString::fromLatin1(minimum);
    row.maximum = QString::fromLatin1(maximum);
    row.color = color;
    return row;
}

TemplateCurveRow leftFilled(TemplateCurveRow row, const char *upTo, int colorBar, const QColor &color = Qt::white)
{
    row.leftUpTo = QString::fromLatin1(upTo);
    row.leftFillIndex = colorBar;
    row.leftFillColor = color;
    return row;
}

TemplateCurveRow rightFilled(TemplateCurveRow row, const char *upTo, const QColor &color)
{
    row.rightUpTo = QString::fromLatin1(upTo);
    row.rightFillColor = color;
    return row;
}

TemplateCurveRow dashed(TemplateCurveRow row)
{
    row.lineTypeIndex = 1;
    return row;
}

// In colours that no line has, and large enough to be seen on one.
constexpr QColor coreDensityColor(20, 20, 20);
constexpr QColor corePorosityColor(150, 0, 160);

TemplateCurveRow withCorePoints(TemplateCurveRow row, const QColor &color, const char *shape)
{
    row.isCalibrationShown = true;
    row.pointColor = color;
    row.pointSize = 3;
    row.pointShape = QString::fromLatin1(shape);
    return row;
}

struct Track
{
    const char *type;
    QVector<TemplateCurveRow> rows;
};

struct Template
{
    const char *name;
    QVector<Track> tracks;
};

constexpr QColor deepColor(200, 30, 30);
constexpr QColor shallowColor(30, 60, 220);
constexpr QColor microColor(30, 30, 30);
constexpr QColor densityColor(200, 30, 30);
constexpr QColor neutronColor(30, 60, 220);
constexpr QColor gasColor(255, 190, 120);
constexpr QColor shaleColor(214, 200, 176);
constexpr QColor hydrocarbonColor(110, 190, 110);
constexpr int lithologyBar = 10; // sand yellow, shale brown where a gamma ray of 200 gAPI ends the scale

// Sand shows yellow and shale brown; the caliper beside the bit size shows where the hole is wider than drilled.
Track gammaAndHole()
{
    return {
        "Linear",
        {leftFilled(curve("Gamma", "Default", "0.00", "200.00", QColor(14, 111, 33)), "Left Boundary", lithologyBar),
         dashed(curve("Caliper", "Default", "6.00", "16.00", QColor(60, 60, 60))),
         curve("Caliper", "BS", "6.00", "16.00", QColor(150, 90, 200))}};
}

Track depths()
{
    return {"Depth", {curve("Depth", "MD", "0", "0", {})}};
}

// The range of the grid of logarithmic tracks.
TemplateCurveRow resistivity(const char *name, const QColor &color)
{
    return curve("Resistivity", name, "0.10", "2000.00", color);
}

Track resistivities()
{
    return {"Logrithmic",
            {resistivity("Default", deepColor), resistivity("LLS", shallowColor), resistivity("MSFL", microColor)}};
}

// In limestone units. Gas draws the density to the left of the neutron porosity.
TemplateCurveRow density()
{
    return rightFilled(curve("Density", "Default", "1.95", "2.95", densityColor), "Curve_2", gasColor);
}

TemplateCurveRow neutron()
{
    return dashed(curve("Porosity", "Default", "0.45", "-0.15", neutronColor));
}

// What is no water is hydrocarbon: from all water on the left to the curve.
Track waterSaturation()
{
    return {"Linear",
            {leftFilled(curve("Water Saturation", "Default", "1.00", "0.00", QColor(20, 60, 160)), "Left Boundary", 0,
                        hydrocarbonColor)}};
}

QVector<Template> templates()
{
    const Track densityNeutronWithCore{"Linear",
                                       {withCorePoints(density(), coreDensityColor, "Circle"),
                                        withCorePoints(neutron(), corePorosityColor, "Rectangle")}};
    const Track shaleVolume{"Linear",
                            {leftFilled(curve("Shale Volume", "Default", "0.00", "1.00", QColor(110, 80, 50)),
                                        "Left Boundary", 0, shaleColor)}};
    // The core's porosities are those of the group "Porosity".
    const Track porosity{"Linear",
                         {withCorePoints(curve("Porosity", "PHIE_log", "0.00", "0.40", QColor(60, 60, 60)),
                                         corePorosityColor, "Rectangle")}};
    return {
        {"Petrophysics", {gammaAndHole(), depths(), resistivities(), densityNeutronWithCore, waterSaturation()}},
        {"Triple Combo", {gammaAndHole(), depths(), resistivities(), {"Linear", {density(), neutron()}}}},
        {"Density-Neutron",
         {depths(),
          {"Linear",
           {withCorePoints(density(), coreDensityColor, "Circle"), rightFilled(neutron(), "Curve_1", shaleColor)}},
          {"Linear", {curve("Density", "DRHO", "-0.25", "0.25", QColor(120, 60, 20))}}}},
        {"Saturation", {shaleVolume, depths(), porosity, waterSaturation()}},
    };
}

bool writeTemplate(const Project &project, const Template &written)
{
    const QString folder = globalTemplateFolder(project, QString::fromLatin1(written.name));
    if (!QDir().mkpath(folder))
        return false;
    int number = 0;
    for (const Track &track : written.tracks)
        if (!writeTrack(folder, QStringLiteral("Track_%1").arg(++number), QString::fromLatin1(track.type),
                        track.rows))
            return false;
    return true;
}

} // namespace

bool writeDemoTemplates(const Project &project)
{
    const QVector<Template> all = templates();
    return std::all_of(all.begin(), all.end(),
                       [&project](const Template &one) { return writeTemplate(project, one); });
}

bool writeSectionTemplate(const Project &project)
{
    const Track gamma{"Linear",
                      {leftFilled(curve("Gamma", "Default", "0.00", "200.00", QColor(14, 111, 33)), "Left Boundary",
                                  lithologyBar)}};
    return writeTemplate(project, {sectionTemplate, {gamma, depths()}});
}

} // namespace demo
