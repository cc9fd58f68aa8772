#pragma once

#include "logview/geometry/curvepath.h"
#include "logview/geometry/samplelines.h"
#include "logview/geometry/thinpen.h"
#include "logview/geometry/valuescan.h"

namespace logview {

/// How long lines to the left and to the right are, in the painter's steps, that are not short.
struct LineLengths
{
    int left = 0;
    int right = 0;
};

/// Draws the lines between the samples of a log with a thin pen.
///
/// Where rows have many samples, hardly any line sets a pixel that others do not set as well. The line is continuous: what
/// lies between its smallest and its largest x in a row is set for certain, and lines between these x are passed over,
/// many at a time. Special ones are drawn: those that go beyond, and short ones, as steep as to set pixels in the next
/// row. What the pen remembers when it comes to one is found from the lines just before.
class DenseLine
{
public:
    /// \a topY is the track's row that is row 0 of the pixels.
    DenseLine(PixelRows &pixels, ThinPen &pen, const CurveSamples &samples, const CurveKey &key, int topY);

    /// The first of the samples [from, end) that breaks the line.
    int firstBreak(int from, int end) const;
    /// Draws the lines from one sample on to another. The pen stands behind a line to the first; no sample breaks the
    /// line, neither these nor the one behind the last.
    void draw(int from, int to);

private:
    /// The samples of a row of pixels: the first one, that below the row's middle, that near its lower edge, and the one
    /// behind the last.
    struct Row
    {
        qint64 number = 0;
        int begin = 0;
        int middle = 0;
        int edge = 0;
        int end = 0;
        bool isCrowded = false; ///< many samples stand in each of the painter's steps
    };
    /// Lines that are passed over: those that are not short between pixels which some rows have in common, and short ones
    /// that stay in their row.
    struct Rule
    {
        qint64 topRow = 0;
        qint64 bottomRow = 0;
        LineLengths least;
        LineLengths leastAbove; ///< for lines that end above this sample
        int middle = 0;
    };
    void drawRows();
    void sweepRow(const Row &row);
    bool passSetting(const Row &row, const Rule &rule);
    void sweep(int to, const Rule &rule);
    void walk(int to, const Rule &rule);
    void passSilent(int to);
    void drawNext();
    void catchUp();
    bool standBehind(int sample, qint64 from, qint64 to);
    void setCertain(const Row &row, int first);
    std::pair<qint64, qint64> setAround(const Rule &rule) const;
    int firstSpecial(int from, int end, std::pair<qint64, qint64> set, const Rule &rule);
    bool goesBelow(int sample, qint64 along) const;
    ValueWindow windowOf(std::pair<qint64, qint64> x, const LineLengths &least);
    Row rowFrom(int sample, qint64 number, qint64 steps);
    int firstAt(qint64 y, int before, double ahead) const;
    qint64 keptY(int sample);

    bool isPassing() const { return m_known < m_sample; }
    bool isVertical(int sample) const { return xOf(sample - 1) == xOf(sample); }
    qint64 xOf(int sample) const { return static_cast<qint64>(m_value.toPixel(m_samples.value(sample)) * 64); }
    qint64 yOf(int sample) const { return painterSteps(m_placer.y(m_samples, sample) - m_topY); }

    const CurveSamples &m_samples;
    SamplePlacer m_placer;
    ValuePlacer m_value;
    int m_topY;
    PixelRows &m_pixels;
    ThinPen &m_pen;
    SampleLines m_lines;
    qint64 m_farthestDown = 0; // that a line goes down or up
    bool m_isDense = false; // it goes no more than a step down
    bool m_isEdgeInMiddle = false; // the right edge of the track in that of a column, or hardly beyond it

    int m_last = 0; // sample to be reached
    int m_sample = 0; // that is reached,
    qint64 m_x = 0; // at this x
    int m_known = 0; // behind the line to which the pen stands
    Row m_row;
    double m_perStep = 0; // samples
    int m_silent = 0; // lines that set no pixel, one by one
    int m_patience = 8; // after so many of them it is tried with many
    std::pair<int, qint64> m_keptY{-1, 0}; // of a sample

    std::pair<qint64, qint64> m_windowX; // what the window was made for
    bool m_isWindowLimited = false;
    ValueWindow m_window;
};

} // namespace logview
