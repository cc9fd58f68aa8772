#include "datastore/curvegrouptable.h"

#include "base/atomicfile.h"
#include "datastore/textfields.h"

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
        bytes += textfields::oneLine(entry.key()) + " | " + textfields::oneLine(entry.value()) + '\n';
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
