#include "datastore/unitclassification.h"

namespace {

struct UnitRow
{
    const char *unit;
    const char *group;
};

// Compared in this order with the lower-cased unit. "ohmMeter" with its capital can therefore never be met, and
// "kg/m3" stands twice: both are kept, surveys classified with this table depend on it.
constexpr UnitRow unitTable[] = {
    {"inches", "Caliper"},
    {"in", "Caliper"},
    {"kg/m3", "Density"},
    {"gram/cm3", "Density"},
    {"kg/m3", "Density"},
    {"g/cc", "Density"},
    {"g/c3", "Density"},
    {"m", "Depth"},
    {"api", "Gamma"},
    {"gapi", "Gamma"},
    {"%", "Porosity"},
    {"ohmMeter", "Resistivity"},
    {"ohmm", "Resistivity"},
    {"us/m", "Sonic"},
    {"s/m", "Sonic"},
    {"us/f", "Sonic"},
    {"us/ft", "Sonic"},
    {"microseconds/foot", "Sonic"},
    {"mv", "Sp"},
};

} // namespace

QString curveGroupOfUnit(QString &unit)
{
    unit = unit.toLower();
    for (const UnitRow &row : unitTable)
        if (unit == QLatin1String(row.unit))
            return QString::fromLatin1(row.group);
    return QStringLiteral("Others");
}
