#pragma once

#include "host/feet.h"

#include <QByteArray>
#include <QString>

namespace survey {

/// The unit in which a survey keeps its depths and elevations.
enum class DepthUnit { Metre, Foot };

/// The name of the unit in the survey's files.
inline QByteArray storedName(DepthUnit unit)
{
    return unit == DepthUnit::Foot ? QByteArray("Feet") : QByteArray("Meter");
}

/// As it stands behind a number.
inline QString symbol(DepthUnit unit)
{
    return unit == DepthUnit::Foot ? QStringLiteral("ft") : QStringLiteral("m");
}

/// As it stands in a sentence.
inline QString pluralName(DepthUnit unit)
{
    return unit == DepthUnit::Foot ? QStringLiteral("feet") : QStringLiteral("metres");
}

/// A column of depths or elevations.
inline QString titleWithUnit(const QString &title, DepthUnit unit)
{
    return QStringLiteral("%1 (%2)").arg(title, symbol(unit));
}

inline double toMetres(double length, DepthUnit unit)
{
    return unit == DepthUnit::Foot ? length * host::metresPerFoot : length;
}

inline double fromMetres(double metres, DepthUnit unit)
{
    return unit == DepthUnit::Foot ? metres / host::metresPerFoot : metres;
}

} // namespace survey
