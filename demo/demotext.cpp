#include "demo/demofield.h"

#include <cmath>

namespace demo {

constexpr double metresPerFoot = 0.3048;
constexpr int columnWidth = 11;

/// Appends a number with fixed decimals, filled with blanks from the left up to the width.
static void appendNumber(QByteArray &text, double value, int decimals, int width)
{
    qint64 scale = 1;
    for (int i = 0; i < decimals; ++i)
        scale *= 10;
    const qint64 scaled = std::llround(value * static_cast<double>(scale));
    const QByteArray whole = QByteArray::number(qAbs(scaled) / scale);
    QByteArray number = scaled < 0 ? "-" + whole : whole;
    if (decimals > 0)
        number += '.' + QByteArray::number(qAbs(scaled) % scale).rightJustified(decimals, '0');
    text += number.rightJustified(width, ' ');
}

static QByteArray number(double value, int decimals)
{
    QByteArray text;
    appendNumber(text, value, decimals, 0);
    return text;
}

/// A header line: mnemonic, unit, value and description.
static QByteArray headerLine(const QByteArray &mnemonic, const QByteArray &unit, const QByteArray &value,
                             const QByteArray &description)
{
    const QByteArray start = (mnemonic + '.' + unit).leftJustified(14, ' ');
    return start + ' ' + value.rightJustified(26, ' ') + " : " + description + '\n';
}

static QByteArray wellSection(const Well &well, const QByteArray &unit, double unitsPerMetre)
{
    const double stepM = well.depthsM.at(1) - well.depthsM.at(0);
    QByteArray text = "~Well information\n"
                      "#MNEM.UNIT                          DATA   DESCRIPTION\n";
    text += headerLine("STRT", unit, number(well.depthsM.first() * unitsPerMetre, 4), "First depth");
    text += headerLine("STOP", unit, number(well.depthsM.last() * unitsPerMetre, 4), "Last depth");
    text += headerLine("STEP", unit, number(stepM * unitsPerMetre, 4), "Depth step");
    text += headerLine("NULL", "", number(nullValue, 2), "Null value");
    text += headerLine("COMP", "", "Vellorn Petroleum", "Company (fictional)");
    text += headerLine("WELL", "", well.name.toLatin1(), "Well");
    text += headerLine("FLD", "", "Vellorn", "Field (fictional)");
    text += headerLine("LOC", "", "Block 7, Lowmere Basin", "Location");
    text += headerLine("PROV", "", "Lowmere", "Province (fictional)");
    text += headerLine("CNTY", "", "East Lowmere", "County");
    text += headerLine("SRVC", "", "Halvard Wireline", "Service company (fictional)");
    text += headerLine("DATE", "", "2019-05-14", "Log date");
    text += headerLine("UWI", "", well.uwi.toLatin1(), "Unique well identifier");
    text += headerLine("X", "M", number(well.xM, 1), "Easting of the well head");
    text += headerLine("Y", "M", number(well.yM, 1), "Northing of the well head");
    text += headerLine("EKB", "M", number(well.kbM, 2), "Elevation of the kelly bushing");
    text += headerLine("EGL", "M", number(well.groundM, 2), "Elevation of the seabed");
    text += headerLine("TD", "M", number(well.totalDepthM, 2), "Total depth");
    return text;
}

static QByteArray curveSection(const Well &well, const QByteArray &unit)
{
    QByteArray text = "~Curve information\n"
                      "#MNEM.UNIT                      API CODE   DESCRIPTION\n";
    text += headerLine("DEPT", unit, "", "Measured depth");
    for (const Curve &curve : well.curves) {
        text += headerLine(curve.mnemonic.toLatin1(), curve.unit.toLatin1(), "", curve.description.toLatin1());
    }
    return text;
}

static QByteArray parameterSection(const Well &well)
{
    QByteArray text = "~Parameter information\n"
                      "#MNEM.UNIT                         VALUE   DESCRIPTION\n";
    text += headerLine("PDAT", "", "MSL", "Permanent datum");
    text += headerLine("LMF", "", "KB", "Logs measured from");
    text += headerLine("MUD", "", "Fresh water gel", "Mud type");
    text += headerLine("DFD", "K/M3", "1180.0", "Mud density");
    text += headerLine("RMF", "OHMM", "0.620", "Mud filtrate resistivity at 25 C");
    text += headerLine("RW", "OHMM", "0.140", "Water resistivity at 25 C, main reservoir");
    const double bottomM = depthBelowDatum(well, well.totalDepthM) + well.kbM;
    text += headerLine("BHT", "DEGC", number(9.0 + 0.031 * bottomM, 1), "Bottom hole temperature");
    text += headerLine("MATR", "", "LIME", "Neutron matrix");
    text += headerLine("DEVI", "DEG", number(well.inclinationDeg, 1), "Inclination below kick-off");
    return text;
}

static QByteArray dataSection(const Well &well, double unitsPerMetre)
{
    QByteArray text = "~A" + QByteArray("DEPT").rightJustified(columnWidth - 2, ' ');
    for (const Curve &curve : well.curves)
        text += curve.mnemonic.toLatin1().rightJustified(columnWidth, ' ');
    text += '\n';
    text.reserve(text.size() + well.depthsM.size() * (columnWidth * (well.curves.size() + 1) + 1));
    for (int i = 0; i < well.depthsM.size(); ++i) {
        appendNumber(text, well.depthsM.at(i) * unitsPerMetre, 4, columnWidth);
        for (const Curve &curve : well.curves)
            appendNumber(text, curve.values.at(i), curve.decimals, columnWidth);
        text += '\n';
    }
    return text;
}

static QByteArray lasTextIn(const Well &well, const QByteArray &unit, double unitsPerMetre)
{
    QByteArray text = "~Version information\n";
    text += headerLine("VERS", "", "2.0", "CWLS Log ASCII Standard, version 2.0");
    text += headerLine("WRAP", "", "NO", "One line per depth step");
    text += wellSection(well, unit, unitsPerMetre);
    text += curveSection(well, unit);
    text += parameterSection(well);
    text += "~Other\n"
            "Synthetic data of a fictional field: computed, not measured in any well.\n";
    text += dataSection(well, unitsPerMetre);
    return text;
}

QByteArray lasText(const Well &well)
{
    return lasTextIn(well, "M", 1.0);
}

QByteArray lasTextInFeet(const Well &well)
{
    return lasTextIn(well, "F", 1.0 / metresPerFoot);
}

QByteArray topsText(const Well &well)
{
    QByteArray text = "Name\tDepth\n";
    for (const FormationTop &top : well.tops)
        text += top.name.toLatin1() + '\t' + number(top.mdM, 2) + '\n';
    return text;
}

QByteArray perforationsText(const Well &well)
{
    QByteArray text = "Name\tStart Depth\tEnd Depth\tZone Type\n";
    for (const Perforation &perforation : well.perforations) {
        text += perforation.name.toLatin1() + '\t' + number(perforation.topM, 2) + '\t'
            + number(perforation.bottomM, 2) + '\t' + perforation.zoneType.toLatin1() + '\n';
    }
    return text;
}

QByteArray calibrationText(const CalibrationSet &calibration)
{
    QByteArray text = "Depth\tValue\n";
    for (const CalibrationPoint &point : calibration.points)
        text += number(point.mdM, 2) + '\t' + number(point.value, 3) + '\n';
    return text;
}

} // namespace demo
