#include "datastore/groupfiles.h"

#include "base/atomicfile.h"
#include "base/safename.h"
#include "base/textbytes.h"

#include <QFile>

namespace {

QString groupPath(const QString &projectFolder, const QString &group)
{
    return projectFolder + QStringLiteral("/CurveGroups/") + base::fileNameFor(group, 4) + QStringLiteral(".txt");
}

} // namespace

QStringList readGroupFile(const QString &projectFolder, const QString &group)
{
    QStringList names;
    QFile file(groupPath(projectFolder, group));
    if (!file.open(QIODevice::ReadOnly))
        return names;
    for (const QString &line : base::splitLines(base::decodeText(file.readAll())))
        names.append(line.trimmed());
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
    const auto found = m_groups.find(name);
    if (found != m_groups.end())
        return *found;
    Group read;
    read.names = readGroupFile(m_projectFolder, name);
    read.known = QSet<QString>(read.names.begin(), read.names.end());
    return *m_groups.insert(name, read);
}

void GroupFiles::add(const QString &groupName, const QString &logName)
{
    const QString name = logName.trimmed();
    Group &target = group(groupName);
    if (target.known.contains(name))
        return;
    target.names.append(name);
    target.known.insert(name);
    target.isChanged = true;
}

void GroupFiles::write()
{
    for (auto entry = m_groups.begin(); entry != m_groups.end(); ++entry) {
        if (!entry->isChanged)
            continue;
        QByteArray bytes;
        for (const QString &name : qAsConst(entry->names))
            bytes += name.toUtf8() + '\n';
        (void)base::writeFileAtomically(groupPath(m_projectFolder, entry.key()), bytes); // silent by requirement
        entry->isChanged = false;
    }
}
