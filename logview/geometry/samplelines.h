#pragma once

#include "logview/geometry/sampleplacer.h"
#include "logview/geometry/stepscan.h"
#include "logview/geometry/thinpen.h"

namespace logview {

/// Draws the lines between the samples of a log with a thin pen, some hundreds at a time.
///
/// Only special lines are drawn by the pen: those to another row, steep ones, and short ones that may set a pixel below their row.
/// The others that follow one another set, as a line is continuous, all pixels of the row from their smallest to their largest x;
/// only for the last one on the right it has to be looked how they turn there. What the pen remembers behind them is found by going
/// back to the last line over the middle of a column. Where many samples stand in one step and between pixels that are set, only
/// their smallest and their largest value are looked at.
class SampleLines
{
public:
    /// \a topY is the track's row that is row 0 of the pixels.
    SampleLines(PixelRows &pixels, ThinPen &pen, const CurveSamples &samples, const CurveKey &key, int topY);

    /// The first of the samples [from, end) that breaks the line.
    int firstBreak(int from, int end) const;
    /// Draws the lines from one sample on to another. The pen stands behind a line to the first; no sample breaks the line, and
    /// none stands farther from the pixels than 32 bits count.
    void draw(int from, int to);

private:
    static constexpr int most = 512; // lines that are placed together
    static constexpr int few = 32;
    static constexpr int together = 8; // marks that are looked at

    bool pass(int from, int to);
    void comeBack(int sample);
    void drawSome(int from, int lines);
    void placeSome(int from, int lines);
    int drawUntilInRow(int line);
    void drawLevel(int from, int to);
    void settleRight(int column, int from, int to);
    void mark(int lines);
    int next(int line, int marks) const;
    int lastCrossing(int point) const;
    void standAt(int line);
    void drawLine(int line);

    bool isSet(qint64 left, qint64 right) const;
    void placeValuesOf(int from, int count) { m_value.toSteps(m_samples.values() + from, count, m_x); }
    qint64 xOf(int sample) const { return painterSteps(m_value.toPixel(m_samples.value(sample))); }
    qint64 yOf(int sample) const { return painterSteps(m_placer.y(m_samples, sample) - m_topY); }

    const CurveSamples &m_samples;
    SamplePlacer m_placer;
    ValuePlacer m_value;
    int m_topY;
    PixelRows &m_pixels;
    ThinPen &m_pen;
    float m_aboveBreaks = 0; // no value between these two, they excluded, breaks the line
    float m_belowBreaks = 0;

    int m_passed = -1; // the first sample of lines that the pen did not follow
    qint64 m_row = 0;
    int m_lines = 0; // of those that are placed
    int m_known = 0; // the point of them where the pen stands
    int m_x[most + 1] = {};
    int m_y[most + 1] = {};
    unsigned char m_marks[together + most + together] = {}; // those between some that stop any search
};

} // namespace logview
