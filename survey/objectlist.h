#pragma once

#include "survey/odfile.h"

namespace survey {

/// One entry of an object list: its "Name: number" line and the lines up to "!". Everything that is not asked for
/// is kept byte by byte.
struct ObjectEntry
{
    QString name;
    int number = 0;
    KeyValues keys; ///< the lines after the first
    QByteArray firstLine;
    bool isFolder = false; ///< an "@number: folder" entry

    QByteArray group() const; ///< "Well" of "Well: dGB`Stream"
    QString fileName() const { return keys.text("$Name"); }
};

/// The object list of a folder (".omf").
class ObjectList
{
public:
    /// The error is a sentence without the file's name. \a problems receives a sentence for each entry that had to
    /// be passed over (its number is 0 then); such entries stay in the list and are written back as they were.
    static host::Outcome<ObjectList> parse(const QByteArray &bytes, QStringList *problems = nullptr);

    /// The list of a new folder: its own entry only.
    static ObjectList forFolder(const QByteArray &folderKey, const QByteArray &entryName, const QByteArray &group,
                                const QByteArray &folderName);

    /// The bytes ended within an entry: what stood behind it is unknown, so the list must not be written back.
    bool isCut() const { return m_isCut; }
    QByteArray folderKey() const { return m_folderKey; }
    const QVector<ObjectEntry> &entries() const { return m_entries; }
    /// Null when there is none.
    const ObjectEntry *entry(int number) const;

    /// Appends an object with the next free number, which is returned; 0 when no number is left.
    int append(const QString &name, const QByteArray &group, const QString &fileName);
    void appendFolder(int number, const QByteArray &folderName);
    bool rename(int number, const QString &name);
    bool remove(int number);

    QByteArray toBytes() const;

private:
    int indexOf(int number) const;

    KeyValues m_keys; ///< the first section
    QByteArray m_folderKey;
    int m_lastNumber = 0;
    bool m_isCut = false;
    QVector<ObjectEntry> m_entries;
};

} // namespace survey
