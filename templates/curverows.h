#pragma once

#include "templates/templatetrack.h"

#include <optional>

/// A value as an editor writes back what it has read: two decimals where these are exact, else the
/// fewest digits that read back as the same value.
QString writtenValue(double value);
/// The same as it is shown: with two decimals.
QString shownValue(double value);

/// One row of the curve table of a track: what is written of it, and what the table shows where that is another text.
struct CurveRow : TemplateCurveRow
{
    static constexpr int largestPointSize = 10; ///< of calibration points; the smallest is 1

    QString shownMinimum;
    QString shownMaximum;
    bool hasOwnValues = false; ///< loaded or typed, not proposed
    QString groupBeforeDepth; ///< while the track is a depth track; null where that changed nothing
    QString curveBeforeDepth;

    /// A row as it is added to a track.
    static CurveRow added(int trackType);
    static CurveRow of(const TemplateCurveInfo &curve);
    void setMinimum(const QString &text) { minimum = shownMinimum = text.trimmed(); }
    void setMaximum(const QString &text) { maximum = shownMaximum = text.trimmed(); }
};

/// Why a track cannot be written.
struct CurveRowProblem
{
    int row = 0;
    bool isMaximum = false;
    QString text; ///< names the row, counted from 1, and the value
};

/// The curve table of one track as plain data: filled from a track of a template, edited, and given back as one.
class CurveRows
{
public:
    CurveRows() = default;
    explicit CurveRows(const TrackInfo &track);

    int type() const { return m_type; }
    bool isDepth() const { return m_type == DepthTrack; }
    /// The rows of a depth track name the group "Depth"; of any other, again what they named before.
    void setType(int type);

    int size() const { return m_rows.size(); }
    const CurveRow &at(int row) const { return m_rows.at(row); }
    void replace(int row, const CurveRow &by) { m_rows[row] = by; }
    void append(const CurveRow &row) { m_rows.append(row); }
    /// Fills keep the number of the curve they go up to; of the last curve, which is gone, they become "None".
    void remove(int row);
    /// Fills go on to the same curves.
    void move(int from, int to);

    /// Of the first value that is no number. Values of a depth track are not written, and never wrong.
    std::optional<CurveRowProblem> problem() const;
    /// The track's file.
    QByteArray bytes() const;
    /// What a display reads from that file.
    TrackInfo track(const QString &name) const { return parseTrack(bytes(), name); }

private:
    int m_type = LinearTrack;
    QVector<CurveRow> m_rows;
};
