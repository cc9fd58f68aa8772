#pragma once

#include <QString>

/// The depth-to-pixel mapping of the log display and its depth conversions.
namespace logview {

enum DepthType { MeasuredDepth = 0, TvdKb = 1, TvdSubsea = 2 };
enum DepthUnit { Metre = 0, Feet = 1 };

/// The display's factor from metre to feet.
constexpr double feetPerMetre = 3.28084;
constexpr float defaultDepthScale = 1000.0F;
/// Heights stop here, so that every pixel position fits an int with room to spare.
constexpr float maximumTrackHeight = 1.0e9F;

/// Truncates toward zero; what an int cannot hold gives the nearest int, NaN gives 0.
int toInt(double value);

/// Height in pixels of the depth range at the paper scale 1:\a scale and 96 pixels an inch; the same formula for
/// metre and feet. A range upside down is as high as its mirror image. A scale that is no positive number counts as
/// the default. Never negative, never above maximumTrackHeight, 0 for a range that is not finite.
float trackHeight(float start, float end, float scale);

/// The scale at which trackHeight() makes the paper scale 1:\a scale true to a ruler: its rule gives a foot the length of a
/// metre.
float trueScale(float scale, DepthUnit unit);

/// The rectangle of the scene is this much higher than its tracks.
constexpr int sceneMarginBelow = 50;

/// The depth range of a display in its unit, and its height. A value: compare with ==.
struct DepthAxis
{
    float start = 0; ///< display unit
    float end = 1;
    float height = 0; ///< pixels, of the tracks; not negative

    /// The axis of a range at a scale.
    static DepthAxis of(float startDepth, float endDepth, float scale = defaultDepthScale);

    /// Height of the scene in whole pixels; scenes, markers and perforation zones use it.
    int heightPx() const { return toInt(static_cast<double>(height)); }

    /// y of a depth in the tracks: curves, grid lines. 0 on a range without extent; never NaN for a finite depth.
    double toPixel(double depth) const;
    /// y of a depth by the whole-pixel height: markers, perforation zones.
    double toScenePixel(double depth) const;
    /// Inverse of toPixel(). The start on an axis without height.
    double toDepth(double y) const;
    /// The depth the hover read-out shows for a scene position, whose y it truncates first.
    double hoverDepth(double sceneY) const { return toDepth(static_cast<double>(toInt(sceneY))); }

    /// Whether a depth stands in the range, ends included.
    bool contains(double depth) const;
    /// False where nothing can be mapped: an empty, reversed or not finite range, no height.
    bool isDrawable() const;
};
bool operator==(const DepthAxis &a, const DepthAxis &b);
inline bool operator!=(const DepthAxis &a, const DepthAxis &b)
{
    return !(a == b);
}

/// A stretch of depths, top first.
struct DepthRange
{
    double top = 0;
    double bottom = 0;
};
/// The depths of the pixel rows \a topY to \a bottomY, cut to the axis. Empty (top above bottom) outside of it.
DepthRange visibleRange(const DepthAxis &axis, double topY, double bottomY);

/// How a measured depth in metres becomes a depth of the display.
struct DepthReference
{
    DepthType type = MeasuredDepth;
    DepthUnit unit = Metre;
    double kbElevationM = 0; ///< taken off for TVDSS only

    /// As samples are placed: single precision after every step.
    float toDisplay(double depthM) const
    {
        float depth = static_cast<float>(depthM);
        if (type == TvdSubsea)
            depth = static_cast<float>(static_cast<double>(depth) - kbElevationM);
        if (unit == Feet)
            depth = static_cast<float>(static_cast<double>(depth) * feetPerMetre);
        return depth;
    }
    /// Measured depth in metres of a display depth (feet divided by the factor, TVDSS plus KB).
    double toMeasuredM(double displayDepth) const;
};
bool operator==(const DepthReference &a, const DepthReference &b);
inline bool operator!=(const DepthReference &a, const DepthReference &b)
{
    return !(a == b);
}

/// Start and end depth as the scene keeps them.
struct DepthLimits
{
    float start = 0;
    float end = 1;
};
/// The depth range after a change of the depth type or the unit. \a current is what it was before: TVDKB keeps it,
/// and with feet multiplies it again at every call. A type that is none of the three changes nothing.
DepthLimits limitsAfterChange(const DepthLimits &current, int depthType, int depthUnit, float totalDepthM,
                              double kbElevationM);

/// The depth type a chooser's text stands for ("MD", "TVDKB", "TVDSS", white space around it ignored);
/// \a previous for any other text.
int depthTypeOfText(const QString &text, int previous);

} // namespace logview
