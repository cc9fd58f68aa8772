#pragma once

#include <QByteArray>
#include <QString>

/// The LAS files of the benchmarks.
namespace bench {

constexpr int lasCurveCount = 40; ///< the depths among them
constexpr double lasStepM = 0.1524;
constexpr qint64 hundredMegabytes = 100 * 1000 * 1000;

/// A folder that goes at the end of the process.
QString lasFolder();
/// All that stands before the data of so many rows.
QByteArray lasHeader(int rows);
/// The path of a file of about \a size bytes with tokens of 8 to 10 characters, made once.
QString makeLasFile(qint64 size);

} // namespace bench
