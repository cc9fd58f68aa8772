#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <limits>

/// The logs of a LAS file as they are meant: what the workbench makes wells from. The import of the plug-in reads
/// files in its own, plainer way (WellInfo).
namespace las {

struct Header;

/// A log of a file. Its samples are undefined (host::undefinedValue) where the file has none.
struct FileLog
{
    QString mnemonic;
    QString name; ///< the mnemonic; a repeated one has a number behind it
    QString unit;
    QVector<float> values; ///< one a depth of its set
};

/// A data section: logs that share their depths.
struct LogSet
{
    QVector<double> depths; ///< in the file's unit, in its order
    double metresPerUnit = 1;
    bool isInFeet = false;
    QVector<FileLog> logs; ///< those with a sample

    /// The deepest depth with a sample of any log, in the file's unit; -infinity without one.
    double deepest() const;
};

struct LogFile
{
    QVector<LogSet> sets; ///< those with a log
    QStringList notices; ///< sentences: what was left out and why, what was changed
    QString error; ///< why the file cannot be read, a sentence that names it; empty when it was read

    int logCount() const;
    /// The deepest of its sets, in metres.
    double deepestM() const;
};

/// Reads a LAS file of version 1.2, 2.0 or 3.0: each data section by its own curves, rows that span lines put together,
/// values separated by blanks, commas, semicolons or tabs (as DLM says, or as they are), texts in quotes. The depth is
/// the first column, or the one that its name and the header's STRT tell. The file's null value, -999.25 and what is no
/// number are undefined. Left out, with a notice: columns of texts and columns without a sample, sections whose
/// first column is no depth, rows without a depth. \a codec as in prepareText().
///
/// Never fails for a file's content; an error is a file that cannot be opened and read as a whole, or holds no section.
LogFile readLogs(const QString &path, const QByteArray &codec = {});

/// The names of the logs that a header promises: its curves but the first.
QStringList promisedLogs(const Header &header);

} // namespace las
