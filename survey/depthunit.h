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

/// A column of depths or elevations; metres go without saying.
inline QString titleWithUnit(const QString &title, DepthUnit unit)
{
    return unit == DepthUnit::Foot ? QStringLiteral("%1 (ft)").arg(title) : title;
}

inline double fromMetres(double metres, DepthUnit unit)
{
    return unit == DepthUnit::Foot ? metres / host::metresPerFoot : metres;
}

} // namespace survey
