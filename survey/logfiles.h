#pragma once

#include "survey/logfile.h"

#include <QHash>

#include <functional>

namespace survey {

/// The log files "^1", "^2", … of wells, one well at a time: who reads or writes a well's logs one by one would
/// otherwise read all their headers for each of them. A header is held only as long as its file is unchanged. A stem
/// is the path of a well's files without "^1.wll".
class LogFiles
{
public:
    using Report = std::function<void(const QString &path, const QString &problem)>;

    /// Name and unit of every log, in the order of numbers up to the first missing one. Files that cannot be used are
    /// reported and passed over, and so is a second log of one name.
    QVector<host::LogInfo> infos(const QString &stem, const Report &report);
    /// The log at an index of infos().
    host::Outcome<host::LogData> read(const QString &stem, int index, const Report &report);
    /// The file of the log at an index of the infos() last read; empty when there is none.
    QString file(const QString &stem, int index) const;
    /// Replaces the log of that name, else adds one, where no file has that number. Refused when another program made
    /// or changed the log since the last infos().
    host::Status write(const QString &stem, const host::LogData &log, const QByteArray &depthUnit,
                       const Report &report);
    /// Deletes the log at an index of infos(). The last file takes its place. Refused when it is another log by now.
    host::Status remove(const QString &stem, int index, const Report &report);
    void forget();

    static QString path(const QString &stem, int number);

private:
    struct Entry
    {
        int number = 0; ///< the n of "^n"; 0 for a file that cannot be used
        LogFileHeader header;
        FileState state;
    };
    void readHeaders(const QString &stem, const Report &report);
    host::Outcome<host::LogData> readListed(const QString &stem, int index, const Report &report) const;

    QString m_stem;
    QVector<Entry> m_entries; ///< those that can be used
    QString m_givenStem; ///< the well of the last infos()
    QHash<QString, FileState> m_given; ///< the logs that they gave, by name
    int m_fileCount = 0; ///< all up to the first missing number
};

} // namespace survey
