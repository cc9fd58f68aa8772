#include "datastore/groupfiles.h"

#include "base/atomicfile.h"
#include "base/safename.h"
#include "datastore/textfields.h"

#include <QFile>

namespace {

// A group that the table names may be called as the table's own file.
QString groupPath(const QString &projectFolder, const QString &group)
{
    const bool isTable = group == QLatin1String("CurveGroupTable");
    return projectFolder + QStringLiteral("/CurveGroups/")
        + (isTable ? QStringLiteral("%43urveGroupTable") : base::fileNameFor(group, 4)) + QStringLiteral(".txt");
}

QByteArray groupFileBytes(const QString &projectFolder, const QString &group)
{
    QFile file(groupPath(projectFolder, group));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QStringList readGroupFile(const QString &projectFolder, const QString &group)
{
    return parseGroupFile(groupFileBytes(projectFolder, group));
}

QStringList parseGroupFile(const QByteArray &bytes)
{
    using namespace textfields;
    QStringList names;
    forEachLine(utf8Text(bytes), [&names](Field line) { names.append(toString(trimmed(line))); });
    return names;
}

void addMnemonicToGroup(const QString &projectFolder, const QString &group, const QString &logName)
{
    GroupFiles files(projectFolder);
    files.add(group, logName);
    files.write();
}

GroupFiles::GroupFiles(const QString &projectFolder)
    : m_projectFolder(projectFolder)
{
}

GroupFiles::Group &GroupFiles::group(const QString &name)
{
    using namespace textfields;
    const auto found = m_groups.find(name);
    if (found != m_groups.end())
        return *found;
    Group read;
    forEachLine(utf8Text(groupFileBytes(m_projectFolder, name)), [&read](Field line) {
        const Field entry = trimmed(line);
        const int size = static_cast<int>(entry.size());
        read.bytes.append(entry.data(), size).append('\n');
        if (!read.known.contains(QByteArray::fromRawData(entry.data(), size)))
            read.known.insert(QByteArray(entry.data(), size));
    });
    return *m_groups.insert(name, read);
}

void GroupFiles::add(const QString &groupName, const QString &logName)
{
    const QByteArray line = textfields::oneLine(logName);
    const textfields::Field entry = textfields::trimmed({line.constData(), static_cast<size_t>(line.size())});
    const QByteArray name(entry.data(), static_cast<int>(entry.size()));
    Group &target = group(groupName);
    if (target.known.contains(name))
        return;
    target.bytes += name + '\n';
    target.known.insert(name);
    target.isChanged = true;
}

void GroupFiles::write()
{
    for (auto entry = m_groups.begin(); entry != m_groups.end(); ++entry) {
        if (!entry->isChanged)
            continue;
        (void)base::writeFileAtomically(groupPath(m_projectFolder, entry.key()),
                                        entry->bytes); // silent by requirement
        entry->isChanged = false;
    }
}
