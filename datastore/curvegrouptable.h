#pragma once

#include "base/atomicfile.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

/// Which curve group each log name (mnemonic) belongs to. Names are compared exactly, in the form in which the file
/// can hold them (textfields::fieldName). Entries are kept in the order of their names, so that an unchanged table
/// gives unchanged bytes.
class CurveGroupTable
{
public:
    /// The table of the process: it keeps its content from one launch to the next.
    static CurveGroupTable &instance();
    /// The path of the project's table file.
    static QString path(const QString &projectFolder);

    /// Empty when the name has no entry, or one without a group, which counts as none.
    QString group(const QString &logName) const { return m_groups.value(textfields::fieldName(logName)); }
    void set(const QString &logName, const QString &group)
    {
        m_groups.insert(textfields::fieldName(logName), textfields::fieldName(group));
    }
    void clear() { m_groups.clear(); }
    int size() const { return m_groups.size(); }

    /// Takes in the entries of a table file: "name | group" a line, further parts ignored, a line without "|"
    /// skipped, a later entry of a name replaces an earlier one.
    void merge(const QByteArray &bytes);
    QByteArray toBytes() const;

    /// Merges the project's table file; a missing or unreadable file changes nothing.
    void read(const QString &projectFolder);
    /// Writes the project's table file unless it holds the same bytes: those of the read() before, else the file is
    /// looked at. One that is there and cannot be read is left alone. A failure is silent; true when it was written.
    bool write(const QString &projectFolder, base::Flush flush = base::Flush::Now);

private:
    struct ReadFile
    {
        QString path;
        ProjectFile file;
    };

    QMap<QString, QString> m_groups;
    std::optional<ReadFile> m_lastRead; ///< since the last write
};
