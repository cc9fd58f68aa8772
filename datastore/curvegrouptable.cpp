#include "datastore/curvegrouptable.h"

#include "base/atomicfile.h"
#include "base/textbytes.h"

#include <QFile>

namespace {

QString tablePath(const QString &projectFolder)
{
    return projectFolder + QStringLiteral("/CurveGroups/CurveGroupTable.txt");
}

} // namespace

CurveGroupTable &CurveGroupTable::instance()
{
    static CurveGroupTable table;
    return table;
}

void CurveGroupTable::merge(const QByteArray &bytes)
{
    for (const QString &line : base::splitLines(base::decodeText(bytes))) {
        const QVector<QStringRef> parts = line.splitRef(QLatin1Char('|'));
        if (parts.size() >= 2)
            m_groups.insert(parts.at(0).trimmed().toString(), parts.at(1).trimmed().toString());
    }
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
    QFile file(tablePath(projectFolder));
    if (file.open(QIODevice::ReadOnly))
        merge(file.readAll());
}

void CurveGroupTable::write(const QString &projectFolder) const
{
    const QByteArray bytes = toBytes();
    QFile file(tablePath(projectFolder));
    if (file.open(QIODevice::ReadOnly) && file.readAll() == bytes)
        return;
    file.close();
    (void)base::writeFileAtomically(file.fileName(), bytes); // silence is what a user is to see here
}
