#pragma once

#include <QString>
#include <QVector>

namespace demo {

/// What the grains of a bed are made of; the shale in it comes on top.
enum class Rock { Sandstone, Limestone, Dolomite, Anhydrite };

/// A package of beds inside a formation: a channel, a coarsening-upward unit, a shale.
struct Element
{
    double thicknessM; ///< at the centre of the field; scaled to the formation in each well
    Rock rock;
    double shaleTop, shaleBase; ///< shale fraction at its top and base
    double scatter; ///< standard deviation of the shale fraction from bed to bed
    double bedM; ///< usual thickness of one bed
    double quality; ///< porosity relative to a good bed of that rock at that depth
    double lateral; ///< 0..1, how much it changes from well to well
    bool interbedded; ///< beds alternate between shaleTop and shaleBase
    double stringers; ///< chance that a bed is followed by a thin cemented streak
};

/// A formation of the field, from its top down to the top of the next one.
struct Formation
{
    QString name;
    double topM; ///< depth of the top below datum at the centre of the field
    double grShale, grClean; ///< gamma ray of pure shale and of clean rock, gAPI
    double shaleResistivity; ///< relative to ordinary shale at that depth
    double organic; ///< 0..1, how much organic matter the shale holds
    Rock rock; ///< the rock an interpreter takes as matrix
    bool charged; ///< belongs to the hydrocarbon reservoir
    quint32 colour; ///< 0xRRGGBB; dark, since lines and names of tops stand on white
    QVector<Element> elements;
};

/// The stratigraphic column of the field, downwards.
QVector<Formation> stratigraphicColumn();

/// Depth below datum (m) at which a horizon lies that is at centreM in the middle of the field.
double horizonDepth(double centreM, double xM, double yM);

} // namespace demo
