#pragma once

#include "las/namelist.h"
#include "las/wellinfo.h"

#include <QStringList>
#include <QVector>

/// What an import of LAS files is about to do, as plain data, and the rules for it. The dialog fills it from its
/// widgets, asks these functions and hands the records on.
namespace las {

/// A line of a curve table.
struct ImportRow
{
    int curve = 0; ///< index into the file's curves
    bool isSelected = false;
    QString logName; ///< the alternate name without white space around it: that is how the host keeps it
    QString group;
};

/// A file's tab.
struct ImportTab
{
    const WellInfo *file = nullptr; ///< not owned
    QString title;
    QString wellName;
    QString wellKey; ///< empty for "None"
    double metresPerUnit = 1; ///< what depths of the file are multiplied by on their way into the well
    double startDepth = 0; ///< of the file's header, multiplied
    double stopDepth = 0;
    double wellMaximumDepth = 0;
    QVector<ImportRow> rows;
};

/// The tab of a loaded file without a well and without rows. \a convertsFeet: of a file in feet, depths are converted to
/// metres. The file must outlive it.
ImportTab importTab(const WellInfo &file, const QString &title, bool convertsFeet);

struct ImportOptions
{
    bool isResampling = false;
    float interval = 0;
};

/// One curve as it goes to its well.
struct ImportedCurve
{
    LogCurveData record; ///< with the file's null value, depths ascending where they descended
    /// Should have been resampled, but its depths are not strictly monotonic or not all numbers.
    bool isUnsuited = false;
};

/// Why the import ends at this tab, the text of a warning; empty when it goes on. Tab numbers count from 1.
QString stopReason(const ImportTab &tab, int tabNumber);

/// Why nothing at all is imported: selected rows without a name, an interval that cannot be used, a grid that is too
/// large. Tabs behind one that ends the import do not count. Empty when the import may begin.
QString refusal(const QVector<ImportTab> &tabs, const ImportOptions &options);

bool hasSelection(const QVector<ImportTab> &tabs);

/// The record of one selected row. refusal() must have been asked.
ImportedCurve importedCurve(const ImportTab &tab, const ImportRow &row, const ImportOptions &options);

/// The record for the host writer, which knows one null value only: samples with the file's null value get it.
LogCurveData withHostNulls(LogCurveData record, const WellInfo &file);

/// The warning that names all curves which were imported without resampling.
QString unsuitedWarning(const NameList &curves);

} // namespace las
