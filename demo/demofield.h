#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// A small fictional oil and gas field: every name, place and number in it is invented.
namespace demo {

/// The value that stands for "not measured" in curves and log files.
constexpr double nullValue = -999.25;

/// The top of a formation in measured depth (m), with the colour (0..255) to draw it in.
struct FormationTop
{
    QString name;
    double mdM;
    int red, green, blue;
};

/// A perforated or tested interval in measured depth (m). The zone type is one of "Oil", "Gas",
/// "Water", "Dry", "Oil-Gas", "Oil-Water", "Gas-Water" and "Not Tested".
struct Perforation
{
    QString name;
    double topM, bottomM;
    QString zoneType;
};

/// One laboratory value at a measured depth (m).
struct CalibrationPoint
{
    double mdM;
    double value;
};

/// Core data that a log is compared with; the group ("Porosity" in v/v, "Density" in g/cc) tells
/// which log.
struct CalibrationSet
{
    QString group;
    QVector<CalibrationPoint> points;
};

/// A log: one value a depth of its well, rounded to its printed decimals; nullValue where absent.
struct Curve
{
    QString mnemonic, unit, description;
    int decimals;
    QVector<double> values;
};

/// A well and everything known about it. Coordinates, elevations above datum and depths in metres.
struct Well
{
    QString name;
    QString uwi;
    double xM, yM;
    double kbM, groundM, totalDepthM;
    QString type; ///< "Oil", "Gas" or "" for a well without hydrocarbons
    QVector<double> depthsM; ///< measured depths of the log samples, evenly spaced
    QVector<Curve> curves;
    QVector<FormationTop> tops;
    QVector<Perforation> perforations;
    QVector<CalibrationSet> calibrations;
    double kickOffM; ///< measured depth below which the well is inclined
    double inclinationDeg; ///< angle from vertical below the kick-off; 0 for a vertical well
};

/// The wells of the field and its two flat fluid contacts, in metres below datum.
struct Field
{
    QString name;
    QVector<Well> wells;
    double gasOilContactM, oilWaterContactM;
};

/// Makes the field: six wells with logs, tops, perforations and core data. Always the same.
Field makeField();

/// A further field: vertical wells on a line across the same dome, half a kilometre apart, with logs and tops.
Field makeSection(int wells);

/// Depth below datum (m) of a measured depth (m) in a well, and back.
double depthBelowDatum(const Well &well, double mdM);
double measuredDepth(const Well &well, double belowDatumM);

/// The curve with this mnemonic, or null.
const Curve *findCurve(const Well &well, const QString &mnemonic);

/// The logs as a LAS 2.0 file with the depth in metres.
QByteArray lasText(const Well &well);

/// The same logs with the depth in feet; coordinates and elevations stay in metres.
QByteArray lasTextInFeet(const Well &well);

/// Formation tops, tab-separated under the line "Name\tDepth"; depths in metres.
QByteArray topsText(const Well &well);

/// Perforations, tab-separated under the line "Name\tStart Depth\tEnd Depth\tZone Type"; metres.
QByteArray perforationsText(const Well &well);

/// Core data, tab-separated under the line "Depth\tValue"; depths in metres.
QByteArray calibrationText(const CalibrationSet &calibration);

} // namespace demo
