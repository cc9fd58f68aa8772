#pragma once

#include "datastore/logcurvedata.h"
#include "las/laslines.h"

#include <QString>
#include <QVector>

/// A data section of a LAS file: its columns are the curves that were named since the data section before it.
struct LasDataSection
{
    int titleLine = 0; ///< in WellInfo::lines, as is firstRowLine
    int firstRowLine = 0; ///< 0 when it has no rows
    int firstCurve = 0; ///< in WellInfo::curves
    int curveCount = 0;
    int rowCount = 0;
    int unevenRowCount = 0; ///< rows with more or fewer columns than it has curves
};

/// One LAS file as read for import. The reader never rejects a file for its content, it takes what it
/// recognises; lines that are malformed give empty text or 0. A copy is cheap, the large parts are shared.
///
/// Of a header line the first 64 kB count; what a longer line holds behind them is left out.
///
/// Numbers are decimal and independent of the locale; a leading "+" is allowed. Text that is no number as a
/// whole ("1.5abc", "580.0,12"), "nan", "inf" and what a double cannot hold ("1e400") all yield 0.
class WellInfo
{
public:
    QString version; ///< VERS of ~V
    bool wrapped = false; ///< WRAP of ~V is "YES"; stored only, every line stays one depth step
    double startDepth = 0; ///< STRT of ~W, in depthUnit, as are step and stopDepth; 0 when absent
    double step = 0;
    double stopDepth = 0;
    double nullValue = 0;
    QString depthUnit; ///< the unit of the STRT line
    QString uwi; ///< UWI of ~W
    /// One a ~C line, in file order. Filled in: logName and displayName (the mnemonic), unit, description,
    /// minimum, maximum, source (the path), values and depths. The two lists have equal length in each curve
    /// and are shorter where data lines hold fewer tokens than there are curves; curves of equal length share
    /// one depth list. Nulls stay as they are in the file. More than a million curves are not listed.
    QVector<LogCurveData> curves;
    /// Whether a sample of the curve stands on a line whose depth is no number (and so reads as 0).
    bool hasUnreadableDepth(int curve) const { return m_hasUnreadableDepth.value(curve); }
    QVector<LasDataSection> dataSections; ///< those that have curves
    int dataSectionCount = 0; ///< with those for which no curves were named
    int rowsWithoutCurves = 0; ///< data lines of the latter, which are left out
    QString lowerCaseSections; ///< titles "v", "w", "c", "a", each once; such sections are not recognised
    bool hasTabsInHeader = false; ///< in a line of ~V, ~W or ~C that is no comment
    bool isTooLarge = false; ///< load() gave -2 because of the file's size
    bool hasNullValue = false; ///< a NULL line with a number was there; without one 0 is a value like any other
    LasLines lines; ///< the title and every line of the file

    /// Forgets what was read before and reads the file at \a path. Returns 0 on success, -1 when the file
    /// does not exist, -2 when it cannot be opened and read as a whole (a folder, no permission, 2 GB or
    /// more, more data than memory holds). After an error only the title of lines is there.
    ///
    /// A line that begins with "~" ends any section, the data section too. Where sections stand twice, a
    /// later version or well section overwrites single values, curves of a later curve section come after
    /// those before, and a later data section fills only the curves that were named since the one before it: its
    /// first column belongs to the first of them and is their depth. Without such curves its rows are left out. Blank lines add neither a curve nor a data line; lines that begin with "#" are
    /// comments in both sections. For a curve without a token on the first data line, the first line that has
    /// one counts as its first.
    int load(const QString &path);

    /// The fields of a header line. Parts between dots (and words between blanks) that are empty do not
    /// count: "X..1IN" has the unit "1IN".
    static QString mnemonic(const QString &line);
    static QString unit(const QString &line);
    /// The text between the first dot and the next colon. Blanks inside it are lost where a unit stands after
    /// the dot; without a colon a dot is added at the end. Both are intended.
    static QString value(const QString &line);
    /// What follows the last colon with text after it; the whole line where there is none.
    static QString description(const QString &line);

private:
    void read(const QString &path);

    QVector<bool> m_hasUnreadableDepth; ///< of the curves that have columns
};
