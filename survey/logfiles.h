#pragma once

#include "survey/logfile.h"

#include <QHash>
#include <QList>

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
    /// or changed the log since the last infos(). The first of several writes reads the headers; a further one looks
    /// at the folder and two files, and reads them only when another program changed something.
    host::Status write(const QString &stem, const host::LogData &log, const QByteArray &depthUnit,
                       const Report &report);
    /// Deletes the log at an index of infos(). The last file takes its place. Refused when it is another log by now.
    host::Status remove(const QString &stem, int index, const Report &report);
    /// Gives the log \a oldName another name that none of the well's logs has. Its samples stay.
    host::Status rename(const QString &stem, const QString &oldName, const QString &newName, const Report &report);
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
    void append(const Entry &entry);
    const Entry *entryNamed(const QString &name) const;
    bool isAsWritten(const QString &stem, const QString &name) const;
    host::Status writeListed(const QString &stem, const host::LogData &log, const QByteArray &depthUnit,
                             bool *isTaken);
    void noteWritten(const QString &stem, int number, const QByteArray &bytes);
    host::Outcome<host::LogData> readListed(const QString &stem, int index, const Report &report) const;

    QString m_stem;
    QList<Entry> m_entries; ///< those that can be used
    QHash<QString, int> m_indexes; ///< of the entries, by name
    QString m_givenStem; ///< the well of the last infos()
    QHash<QString, FileState> m_given; ///< the logs that they gave, by name
    int m_fileCount = 0; ///< all up to the first missing number

    // The folder and the last log's file right after a write, since when nothing else was done here.
    bool m_isWritten = false;
    FileState m_writtenFolder;
    FileState m_writtenLast;
};

} // namespace survey
