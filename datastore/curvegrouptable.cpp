#include "datastore/curvegrouptable.h"

#include "datastore/projectfile.h"

namespace {

} // namespace

QString CurveGroupTable::path(const QString &projectFolder)
{
    return projectFolder + QStringLiteral("/CurveGroups/CurveGroupTable.txt");
}

CurveGroupTable &CurveGroupTable::instance()
{
    static CurveGroupTable table;
    return table;
}

void CurveGroupTable::merge(const QByteArray &bytes)
{
    using namespace textfields;
    forEachLine(utf8Text(bytes), [this](Field line) {
        const size_t bar = line.find('|');
        if (bar == Field::npos)
            return;
        const Field group = line.substr(bar + 1);
        m_groups.insert(toString(trimmed(line.substr(0, bar))), toString(trimmed(group.substr(0, group.find('|')))));
    });
}

QByteArray CurveGroupTable::toBytes() const
{
    QByteArray bytes;
    for (auto entry = m_groups.begin(); entry != m_groups.end(); ++entry)
        bytes += entry.key().toUtf8() + " | " + entry.value().toUtf8() + '\n';
    return bytes;
}

void CurveGroupTable::read(const QString &projectFolder)
{
    m_lastRead.reset();
    const QString path = CurveGroupTable::path(projectFolder);
    const ProjectFile file = readProjectFile(projectFolder, path);
    if (file.state == ProjectFile::State::Missing)
        return;
    merge(file.bytes);
    m_lastRead = ReadFile{path, file};
}

bool CurveGroupTable::write(const QString &projectFolder, base::Flush flush)
{
    const QString path = CurveGroupTable::path(projectFolder);
    const bool isRead = m_lastRead && m_lastRead->path == path;
    const ProjectFile old = isRead ? m_lastRead->file : readProjectFile(projectFolder, path);
    m_lastRead.reset();
    const QByteArray bytes = toBytes();
    const bool isUnchanged = old.state == ProjectFile::State::Read && old.bytes == bytes;
    // Silence is what a user is to see here.
    return old.mayBeReplaced() && !isUnchanged && writeProjectFile(projectFolder, path, bytes, flush).ok();
}
