#include "datastore/groupfiles.h"

#include "base/safename.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"

namespace {

// Names are compared as the curve group table has them.
QByteArray comparable(textfields::Field entry)
{
    return QByteArray(entry.data(), static_cast<int>(entry.size())).replace('|', textfields::brokenBar);
}

} // namespace

// A group that the table names may be called as the table's own file.
QString groupFilePath(const QString &projectFolder, const QString &group)
{
    const bool isTable = group == QLatin1String("CurveGroupTable");
    return projectFolder + QStringLiteral("/CurveGroups/")
        + (isTable ? QStringLiteral("%43urveGroupTable") : base::fileNameFor(group, 4)) + QStringLiteral(".txt");
}

QStringList readGroupFile(const QString &projectFolder, const QString &group)
{
    return parseGroupFile(readProjectFile(projectFolder, groupFilePath(projectFolder, group)).bytes);
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
    const ProjectFile file = readProjectFile(m_projectFolder, groupFilePath(m_projectFolder, name));
    Group read;
    read.isReadable = file.mayBeReplaced();
    forEachLine(utf8Text(file.bytes), [&read](Field line) {
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
    if (!target.isReadable || target.known.contains(name))
        return;
    target.bytes += entry + '\n';
    target.known.insert(name);
    target.isChanged = true;
}

bool GroupFiles::write(base::Flush flush)
{
    bool isWritten = false;
    for (auto entry = m_groups.begin(); entry != m_groups.end(); ++entry) {
        if (!entry->isChanged)
            continue;
        // Silent by requirement.
        isWritten |=
            writeProjectFile(m_projectFolder, groupFilePath(m_projectFolder, entry.key()), entry->bytes, flush).ok();
        entry->isChanged = false;
    }
    return isWritten;
}
