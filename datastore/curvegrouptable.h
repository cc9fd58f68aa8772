#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// Which curve group each log name (mnemonic) belongs to. Names are compared exactly. Entries are kept in the order
/// of their names, so that an unchanged table gives unchanged bytes.
class CurveGroupTable
{
public:
    /// The table of the process: it keeps its content from one launch to the next.
    static CurveGroupTable &instance();

    /// Empty when the name has no entry.
    QString group(const QString &logName) const { return m_groups.value(logName); }
    void set(const QString &logName, const QString &group) { m_groups.insert(logName, group); }
    void clear() { m_groups.clear(); }
    int size() const { return m_groups.size(); }

    /// Takes in the entries of a table file: "name | group" a line, further parts ignored, a line without "|"
    /// skipped, a later entry of a name replaces an earlier one.
    void merge(const QByteArray &bytes);
    QByteArray toBytes() const;

    /// Merges the project's table file; a missing or unreadable file changes nothing.
    void read(const QString &projectFolder);
    /// Writes the project's table file unless it holds the same bytes. A failure is silent.
    void write(const QString &projectFolder) const;

private:
    QMap<QString, QString> m_groups;
};
