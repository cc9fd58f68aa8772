#pragma once

#include "host/hostrecords.h"
#include "programs/batch/command.h"
#include "welldata/columnfile.h"
#include "welldata/tablerow.h"

/// What the commands for markers, perforation zones and calibration points have in common: each lists what a well has, after an
/// import from a text file where one is asked for.
namespace batch {

/// A column of an import: the option that gives its number, and the number that it has without.
struct ImportColumn
{
    const char *option;
    const char *help;
    int usual;
};

/// What is of its own in such a command.
struct WellDataWork
{
    QVector<ImportColumn> columns;
    std::function<Result(Session &session, const host::WellEntry &well, const Arguments &arguments)> import;
    std::function<void(Session &session, const host::WellEntry &well, const Arguments &arguments, Result *result)>
        list;
};

/// A command with its texts, options and work; \a example without the program's name. The form of its records is still missing.
Command wellDataCommand(const char *name, const char *summary, const char *description, const char *example,
                        const WellDataWork &work);

bool isImporting(const Arguments &arguments);
/// The wanted columns of the file to import. The error names the file, and the line where it is one's.
host::Outcome<welldata::ColumnFile> readImport(const Arguments &arguments, const QVector<ImportColumn> &columns);
/// What notices name: the file, and the line behind which its rows are counted.
QString placeOfRows(const Arguments &arguments);

/// That \a what is there and is replaced only by force, a sentence. \a count is of what is there; the file at \a path may be
/// there and hold none.
QString refusalToReplace(const QString &what, int count, const QString &path = {});
/// What storing came to, as failures of a command. \a target is the file that was to be written, empty where several were.
void addOutcome(Session &session, const Arguments &arguments, const QString &what, bool isStored, Result *result,
                const QString &target = {});
/// Tells of rows of zones or points in which a text stands where a number is wanted.
void noteZeros(const QVector<welldata::TableRow> &rows, const Arguments &arguments, Result *result);
/// What people read in front of the records of a dry run.
QString wouldBe(const QString &what);

} // namespace batch
