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

// Names are compared as the curve group table has them.
QByteArray comparable(textfields::Field entry)
{
    return QByteArray(entry.data(), static_cast<int>(entry.size())).replace('|', textfields::brokenBar);
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
        read.bytes.append(entry.data(), static_cast<int>(entry.size())).append('\n');
        read.known.insert(comparable(entry));
    });
    return *m_groups.insert(name, read);
}

void GroupFiles::add(const QString &groupName, const QString &logName)
{
    const QByteArray entry = textfields::trimmedLine(logName).toUtf8();
    const QByteArray name = comparable({entry.constData(), static_cast<size_t>(entry.size())});
    Group &target = group(groupName);
    if (target.known.contains(name))
        return;
    target.bytes += entry + '\n';
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
