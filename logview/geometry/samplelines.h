#pragma once

#include "logview/geometry/curvepath.h"
#include "logview/geometry/thinpen.h"
#include "logview/geometry/valuescan.h"

namespace logview {

/// Draws the lines between the samples of a log with a thin pen, some dozens at a time.
///
/// Most lines stay in their row of pixels or set none. Those that follow one another in a row set one run of pixels, from
/// their smallest to their largest x, and the pen is where the last of them leaves it that sets one. Only special lines are
/// drawn by the pen: those to another row, those that are so steep that they set a pixel or go over the middle of a column,
/// and those that may go on into the next row, beyond their end.
class SampleLines
{
public:
    /// \a topY is the track's row that is row 0 of the pixels.
    SampleLines(PixelRows &pixels, ThinPen &pen, const CurveSamples &samples, const CurveKey &key, int topY);

    /// Draws the lines from one sample on to another. The pen stands behind a line to the first; no sample breaks the line.
    void draw(int from, int to);

private:
    static constexpr int together = 64; // lines
    static constexpr int block = scannedTogether;
    /// What is known of a line before the lines before it are. Some of it depends on whether the last one that set pixels
    /// went to the left or to the right: bits that stand side by side.
    enum Kind { Special = 1, SetsAfterLeft = 2, SetsAfterRight = 4, IsRightAfterLeft = 8, IsRightAfterRight = 16 };

    PenPoint pointOf(int sample) const;
    bool place(int first, int lines);
    void classify(int lines);
    void drawPlaced(int lines);
    int drawRun(int line, int lines);

    const CurveSamples &m_samples;
    SamplePlacer m_placer;
    ValuePlacer m_value;
    int m_topY;
    PixelRows &m_pixels;
    ThinPen &m_pen;
    // Of the samples that are placed.
    int m_x[together + block] = {};
    int m_y[together + block] = {};
    int m_column[together + block] = {}; // the first one with its middle there or to the right
    // Of the lines from each of them to the next.
    int m_kind[together] = {};
    int m_end[2][together] = {}; // column behind the pixels, after a line to the left and after one to the right
};

} // namespace logview
