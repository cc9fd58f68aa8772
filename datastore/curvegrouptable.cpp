#include "datastore/curvegrouptable.h"

#include "base/atomicfile.h"

#include <QFile>

namespace {

QString tablePath(const QString &projectFolder)
{
    return projectFolder + QStringLiteral("/CurveGroups/CurveGroupTable.txt");
}

// Nothing when there is no such file or it cannot be read.
std::optional<QByteArray> contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace

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
    const QString path = tablePath(projectFolder);
    const std::optional<QByteArray> bytes = contentOf(path);
    if (!bytes)
        return;
    merge(*bytes);
    m_lastRead = ReadFile{path, *bytes};
}

void CurveGroupTable::write(const QString &projectFolder)
{
    const QString path = tablePath(projectFolder);
    const bool isRead = m_lastRead && m_lastRead->path == path;
    const std::optional<QByteArray> old = isRead ? m_lastRead->bytes : contentOf(path);
    m_lastRead.reset();
    const QByteArray bytes = toBytes();
    if (old != bytes)
        (void)base::writeFileAtomically(path, bytes); // silence is what a user is to see here
}
