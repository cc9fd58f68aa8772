#pragma once

#include "survey/odfile.h"

#include <QStringList>

namespace survey {

constexpr int maximumLogHeaderSize = 16 << 20; // bytes; no file has more in front of its samples

enum class LogStorage { Ascii, LittleEndian, BigEndian };

/// The text in front of a log file's samples.
struct LogFileHeader
{
    QString name; ///< empty when the file gives none
    QString unit;
    LogStorage storage = LogStorage::Ascii;
    KeyValues keys;
    QByteArray parameters; ///< a second section, kept as it is; empty when there is none
    int dataOffset = 0;
};

/// Parses the header from the first bytes of a log file. \a isCut tells that the header may go on behind \a bytes.
/// The error is a sentence without the file's name.
host::Outcome<LogFileHeader> parseLogHeader(const QByteArray &bytes, bool *isCut = nullptr);

/// What the size of a log's file tells of its samples without reading them, as the sentence that reading them would
/// give; empty when nothing is wrong.
QString sampleSizeProblem(const LogFileHeader &header, qint64 fileSize);

/// The samples behind the header: those without a depth left out, values that are no number undefined, undefined
/// ones at the top and the bottom left out. \a problem receives a sentence
/// when the samples are cut off or hold something unreadable; what stands before it is read.
host::LogData parseLogSamples(const LogFileHeader &header, const QByteArray &bytes, QString *problem = nullptr);

/// Reads a log file from disk as the two functions above do from its bytes, block by block. The error is a sentence
/// that names the file.
host::Outcome<host::LogData> readLogFile(const QString &path, LogFileHeader *header, QString *problem = nullptr);
/// Reads the whole file and tells what readLogFile() would tell, without keeping its samples.
host::Outcome<LogFileHeader> checkLogFile(const QString &path, QString *problem);

/// The bytes of a log file with another name in its header; parameters and samples stay byte by byte. The error is a
/// sentence without the file's name.
host::Outcome<QByteArray> renamedLogFile(const QByteArray &bytes, const QString &name);

/// The bytes of a log file. \a old is the header of the file to be replaced, whose other keys and parameters stay,
/// or null. Samples are stored in ascending order of depth, otherwise as parseLogSamples() gives them back. The error says why the log cannot be stored (no
/// defined sample, arrays of unequal length).
host::Outcome<QByteArray> logFileBytes(const host::LogData &log, const QByteArray &depthUnit,
                                       const LogFileHeader *old);

} // namespace survey
