#include "datastore/curvegroups.h"

namespace {

QStringList listOf(std::initializer_list<const char *> names)
{
    QStringList list;
    for (const char *name : names)
        list.append(QString::fromLatin1(name));
    return list;
}

} // namespace

QStringList curveGroupNames()
{
    return listOf({"None",
                   "Depth",
                   "Sonic",
                   "Resistivity",
                   "Gamma",
                   "Caliper",
                   "Sp",
                   "Porosity",
                   "Density",
                   "Impedance",
                   "Shale Volume",
                   "Effective Porosity",
                   "Water Saturation",
                   "Shear Modulus",
                   "Lames Modulus",
                   "Poisons Ratio",
                   "Youngs Modulus",
                   "Overburden Pressure",
                   "Pore Pressure",
                   "Horizontal Stress",
                   "Rock Strength",
                   "Others"});
}

QStringList zoneTypeNames()
{
    return listOf({"Oil", "Gas", "Water", "Dry", "Oil-Gas", "Oil-Water", "Gas-Water", "Not Tested"});
}
