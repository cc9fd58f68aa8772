#pragma once

#include "base/atomicfile.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

/// The path of a curve group's file.
QString groupFilePath(const QString &projectFolder, const QString &group);

/// The mnemonics that a project lists for a curve group, one per line, in file order; empty lines are empty
/// strings, a missing file gives an empty list.
QStringList readGroupFile(const QString &projectFolder, const QString &group);

/// The same from the bytes of a group file.
QStringList parseGroupFile(const QByteArray &bytes);

/// Appends the trimmed name to the group's file unless it is listed there (letter case counts; a "|" and a broken
/// bar are the same). The file is rewritten whole, one trimmed entry a line; one that is there and cannot be read is
/// left alone. A failure is silent.
void addMnemonicToGroup(const QString &projectFolder, const QString &group, const QString &logName);

/// Several additions at once: each group file is read once and, where something was added, written once by write().
/// The files end up as if addMnemonicToGroup() had been called for each.
class GroupFiles
{
public:
    explicit GroupFiles(const QString &projectFolder);
    void add(const QString &group, const QString &logName);
    /// True when a file was written.
    bool write(base::Flush flush = base::Flush::Now);

private:
    struct Group
    {
        QByteArray bytes; ///< every entry with its line feed
        QSet<QByteArray> known; ///< in the form in which names are compared
        bool isReadable = true;
        bool isChanged = false;
    };
    Group &group(const QString &name);

    QString m_projectFolder;
    QHash<QString, Group> m_groups;
};
