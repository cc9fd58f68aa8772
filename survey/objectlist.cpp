#include "survey/objectlist.h"

#include "base/numbers.h"

#include <QSet>
#include <QStringList>

namespace survey {

namespace {

constexpr char objectListType[] = "Object Management file";
constexpr int maximumNumber = 999999999;

// 0 for what cannot be an object's number.
int objectNumber(const QByteArray &text)
{
    const int number = base::parseInteger(text).value_or(0);
    return number > 0 && number <= maximumNumber ? number : 0;
}

QByteArray entryLine(const QString &name, int number)
{
    return escapedKey(name.toUtf8()) + ": " + QByteArray::number(number);
}

ObjectEntry parseFirstLine(const QByteArray &line)
{
    KeyValues first;
    first.appendLine(line);
    ObjectEntry entry;
    entry.firstLine = line;
    if (line.startsWith('@')) {
        entry.isFolder = true;
        entry.number = objectNumber(first.keyAt(0).mid(1));
        entry.name = shownText(first.valueAt(0));
        return entry;
    }
    entry.name = shownText(first.keyAt(0));
    entry.number = objectNumber(first.valueAt(0));
    return entry;
}

} // namespace

QByteArray ObjectEntry::group() const
{
    for (int i = 0; i < keys.size(); ++i) {
        const QByteArray key = keys.keyAt(i);
        if (!key.startsWith('$') && !key.startsWith('#'))
            return key;
    }
    return {};
}

host::Outcome<ObjectList> ObjectList::parse(const QByteArray &bytes, QStringList *problems)
{
    const host::Outcome<OdFile> file = parseOdFile(bytes, objectListType);
    if (!file.ok())
        return {{}, file.error};
    ObjectList list;
    if (!file.value.keys.contains("ID"))
        return {{}, QStringLiteral("it has no \"ID\" line")};
    const QList<QByteArray> id = file.value.keys.value("ID").split('`');
    list.m_keys = file.value.keys;
    list.m_folderKey = id.value(0).trimmed();
    list.m_lastNumber = objectNumber(id.value(1));
    list.m_isCut = file.value.isCut;
    QStringList ignored;
    QStringList *report = problems ? problems : &ignored;
    if (list.m_isCut)
        report->append(QStringLiteral("it is cut off within its first section"));

    QByteArray first;
    KeyValues rest;
    QSet<int> numbers;
    const auto finishEntry = [&] {
        if (first.isNull())
            return;
        ObjectEntry entry = parseFirstLine(first);
        entry.keys = rest;
        const QString line = shownText(first);
        if (list.m_isCut) {
            report->append(QStringLiteral("it is cut off within the entry \"%1\", which is passed over").arg(line));
            entry.number = 0;
        } else if (entry.number == 0) {
            report->append(QStringLiteral("the entry \"%1\" has no number and is passed over").arg(line));
        } else if (!entry.isFolder && numbers.contains(entry.number)) {
            report->append(
                QStringLiteral("the entry \"%1\" has the number of another one and is passed over").arg(line));
            entry.number = 0;
        }
        if (!entry.isFolder)
            numbers.insert(entry.number);
        list.m_lastNumber = qMax(list.m_lastNumber, entry.isFolder ? 0 : entry.number);
        list.m_entries.append(entry);
        first = QByteArray();
        rest = KeyValues();
    };
    const QByteArray body = bytes.mid(file.value.bodyOffset);
    const QList<QByteArray> lines = body.split('\n');
    for (QByteArray line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.startsWith('!'))
            finishEntry();
        else if (!first.isNull())
            rest.appendLine(line);
        else if (!line.trimmed().isEmpty())
            first = line;
    }
    list.m_isCut = list.m_isCut || !first.isNull();
    finishEntry();
    return {list, {}};
}

ObjectList ObjectList::forFolder(const QByteArray &folderKey, const QByteArray &entryName, const QByteArray &group,
                                 const QByteArray &folderName)
{
    ObjectList list;
    list.m_folderKey = folderKey;
    list.m_lastNumber = 1;
    list.m_keys.set("ID", folderKey);
    ObjectEntry own;
    own.name = QString::fromUtf8(entryName);
    own.number = 1;
    own.firstLine = entryLine(own.name, 1);
    own.keys.appendLine(group + ": dGB`Stream");
    own.keys.appendLine("$Name: " + folderName);
    list.m_entries.append(own);
    return list;
}

int ObjectList::indexOf(int number) const
{
    for (int i = 0; i < m_entries.size(); ++i)
        if (m_entries.at(i).number == number && !m_entries.at(i).isFolder)
            return i;
    return -1;
}

const ObjectEntry *ObjectList::entry(int number) const
{
    const int i = indexOf(number);
    return i < 0 ? nullptr : &m_entries.at(i);
}

int ObjectList::append(const QString &name, const QByteArray &group, const QString &fileName)
{
    if (m_lastNumber >= maximumNumber)
        return 0;
    ObjectEntry entry;
    entry.name = name;
    entry.number = ++m_lastNumber;
    entry.firstLine = entryLine(name, entry.number);
    entry.keys.appendLine(group + ": dGB`Stream");
    entry.keys.appendLine("$Name: " + fileName.toUtf8());
    entry.keys.appendLine("#Version: 6.6");
    entry.keys.appendLine("#Created.At: " + odFileDate());
    m_entries.append(entry);
    return entry.number;
}

void ObjectList::appendFolder(int number, const QByteArray &folderName)
{
    m_entries.append(parseFirstLine('@' + QByteArray::number(number) + ": " + folderName));
}

bool ObjectList::rename(int number, const QString &name)
{
    const int i = indexOf(number);
    if (i < 0)
        return false;
    m_entries[i].name = name;
    m_entries[i].firstLine = entryLine(name, number);
    return true;
}

bool ObjectList::remove(int number)
{
    const int i = indexOf(number);
    if (i < 0)
        return false;
    m_entries.removeAt(i);
    return true;
}

QByteArray ObjectList::toBytes() const
{
    KeyValues keys = m_keys;
    keys.set("ID", m_lastNumber > 0 ? m_folderKey + '`' + QByteArray::number(m_lastNumber) : m_folderKey);
    QByteArray bytes = odFileHeader(objectListType) + keys.toBytes() + "!\n";
    for (const ObjectEntry &entry : m_entries)
        bytes += entry.firstLine + '\n' + entry.keys.toBytes() + "!\n";
    return bytes;
}

} // namespace survey
