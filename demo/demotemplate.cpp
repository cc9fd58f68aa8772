#include "demo/demotemplate.h"

#include "templates/templatestore.h"

#include <QDir>

namespace demo {

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

TemplateCurveRow withCorePoints(TemplateCurveRow row, const char *shape)
{
    row.isCalibrationShown = true;
    row.pointColor = row.color.darker(150);
    row.pointSize = 2;
    row.pointShape = QString::fromLatin1(shape);
    return row;
}

struct Track
{
    const char *type;
    QVector<TemplateCurveRow> rows;
};

QVector<Track> tracks()
{
    const QColor density(200, 30, 30);
    const QColor neutron(30, 60, 220);
    TemplateCurveRow caliper = curve("Caliper", "Default", "6.00", "16.00", QColor(60, 60, 60));
    caliper.lineTypeIndex = 1;
    TemplateCurveRow porosity = withCorePoints(curve("Porosity", "Default", "0.45", "-0.15", neutron), "Rectangle");
    porosity.lineTypeIndex = 1;
    TemplateCurveRow water = curve("Water Saturation", "Default", "1.00", "0.00", QColor(20, 60, 160));
    water.rightUpTo = QStringLiteral("Right Boundary");
    water.rightFillColor = QColor(170, 210, 170);
    return {
        {"Linear",
         {leftFilled(curve("Gamma", "Default", "0.00", "200.00", QColor(14, 111, 33)), "Left Boundary", 2), caliper}},
        {"Depth", {curve("Depth", "MD", "0", "0", {})}},
        {"Logrithmic",
         {curve("Resistivity", "Default", "0.20", "2000.00", density),
          curve("Resistivity", "LLS", "0.20", "2000.00", neutron),
          curve("Resistivity", "MSFL", "0.20", "2000.00", QColor(30, 30, 30))}},
        {"Linear",
         {leftFilled(withCorePoints(curve("Density", "Default", "1.95", "2.95", density), "Circle"), "Curve_2", 0,
                     QColor(210, 200, 170)),
          porosity}},
        {"Linear", {water}},
    };
}

} // namespace

bool writeDemoTemplate(const Project &project)
{
    const QString folder = globalTemplateFolder(project, QStringLiteral("Petrophysics"));
    if (!QDir().mkpath(folder))
        return false;
    int number = 0;
    for (const Track &track : tracks())
        if (!writeTrack(folder, QStringLiteral("Track_%1").arg(++number), QString::fromLatin1(track.type),
                        track.rows))
            return false;
    return true;
}

} // namespace demo
