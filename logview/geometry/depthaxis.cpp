#include "logview/geometry/depthaxis.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace logview {

namespace {

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

double mapped(const DepthAxis &axis, double depth, double height)
{
    const double extent = static_cast<double>(axis.end) - static_cast<double>(axis.start);
    if (!std::isfinite(extent) || extent == 0)
        return 0;
    return (depth - static_cast<double>(axis.start)) * height / extent;
}

} // namespace

int toInt(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (value <= std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

float trackHeight(float start, float end, float scale)
{
    const float range = std::abs(end - start);
    if (!std::isfinite(range))
        return 0;
    const float denominator = std::isfinite(scale) && scale > 0 ? scale : defaultDepthScale;
    const float product = range / denominator * 100.0F * 96.0F;
    if (!(product <= std::numeric_limits<float>::max()))
        return maximumTrackHeight;
    return std::min(static_cast<float>(static_cast<double>(product) / 2.54), maximumTrackHeight);
}

float trueScale(float scale, DepthUnit unit)
{
    return unit == Feet ? static_cast<float>(static_cast<double>(scale) * feetPerMetre) : scale;
}

DepthAxis DepthAxis::of(float startDepth, float endDepth, float scale)
{
    return {startDepth, endDepth, trackHeight(startDepth, endDepth, scale)};
}

double DepthAxis::toPixel(double depth) const
{
    return mapped(*this, depth, static_cast<double>(height));
}

double DepthAxis::toScenePixel(double depth) const
{
    return mapped(*this, depth, static_cast<double>(static_cast<float>(heightPx())));
}

double DepthAxis::toDepth(double y) const
{
    if (!(height > 0) || !std::isfinite(y))
        return static_cast<double>(start);
    return static_cast<double>(start)
        + (static_cast<double>(end) - static_cast<double>(start)) * y / static_cast<double>(height);
}

bool DepthAxis::contains(double depth) const
{
    return depth >= static_cast<double>(start) && depth <= static_cast<double>(end);
}

bool DepthAxis::isDrawable() const
{
    return std::isfinite(start) && std::isfinite(end) && end > start && std::isfinite(end - start)
        && std::isfinite(height) && height > 0;
}

bool operator==(const DepthAxis &a, const DepthAxis &b)
{
    return isSame(static_cast<double>(a.start), static_cast<double>(b.start))
        && isSame(static_cast<double>(a.end), static_cast<double>(b.end))
        && isSame(static_cast<double>(a.height), static_cast<double>(b.height));
}

DepthRange visibleRange(const DepthAxis &axis, double topY, double bottomY)
{
    if (!axis.isDrawable() || !(topY <= bottomY) || topY > static_cast<double>(axis.height) || bottomY < 0)
        return {1, 0};
    return {axis.toDepth(std::max(topY, 0.0)), axis.toDepth(std::min(bottomY, static_cast<double>(axis.height)))};
}

double DepthReference::toMeasuredM(double displayDepth) const
{
    const double depthM = unit == Feet ? displayDepth / feetPerMetre : displayDepth;
    return type == TvdSubsea ? depthM + kbElevationM : depthM;
}

bool operator==(const DepthReference &a, const DepthReference &b)
{
    return a.type == b.type && a.unit == b.unit && isSame(a.kbElevationM, b.kbElevationM);
}

DepthLimits limitsAfterChange(const DepthLimits &current, int depthType, int depthUnit, float totalDepthM,
                              double kbElevationM)
{
    DepthLimits limits = current;
    if (depthType == MeasuredDepth)
        limits = {0, totalDepthM};
    else if (depthType == TvdSubsea)
        limits = {static_cast<float>(-kbElevationM),
                  static_cast<float>(static_cast<double>(totalDepthM) - kbElevationM)};
    else if (depthType != TvdKb)
        return current;
    if (depthUnit == Feet) {
        limits.start = static_cast<float>(static_cast<double>(limits.start) * feetPerMetre);
        limits.end = static_cast<float>(static_cast<double>(limits.end) * feetPerMetre);
    }
    return limits;
}

int depthTypeOfText(const QString &text, int previous)
{
    const QString name = text.trimmed();
    if (name == QLatin1String("MD"))
        return MeasuredDepth;
    if (name == QLatin1String("TVDKB"))
        return TvdKb;
    return name == QLatin1String("TVDSS") ? static_cast<int>(TvdSubsea) : previous;
}

} // namespace logview
