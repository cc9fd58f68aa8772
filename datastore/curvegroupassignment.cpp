#include "datastore/curvegroupassignment.h"

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "datastore/textfields.h"

CurveGroupFinder::CurveGroupFinder(const QString &projectFolder)
    : m_projectFolder(projectFolder)
{
}

QString CurveGroupFinder::group(const QString &logName)
{
    const QString inTable = CurveGroupTable::instance().group(logName);
    if (!inTable.isEmpty())
        return inTable;
    if (!m_isRead) {
        m_isRead = true;
        for (const QString &group : curveGroupNames()) {
            for (const QString &entry : readGroupFile(m_projectFolder, group)) {
                const QString name = textfields::fieldName(entry);
                if (!m_groupOfName.contains(name))
                    m_groupOfName.insert(name, group);
            }
        }
    }
    return m_groupOfName.value(textfields::fieldName(logName), QStringLiteral("Others"));
}

QString findCurveGroup(const QString &projectFolder, const QString &logName)
{
    return CurveGroupFinder(projectFolder).group(logName);
}

void assignCurveGroup(const QString &projectFolder, const QString &logName, const QString &group)
{
    CurveGroupAssignments assignments(projectFolder);
    assignments.add(logName, group);
    assignments.write();
}

CurveGroupAssignments::CurveGroupAssignments(const QString &projectFolder)
    : m_projectFolder(projectFolder)
{
}

void CurveGroupAssignments::write()
{
    GroupFiles groupFiles(m_projectFolder);
    CurveGroupTable &table = CurveGroupTable::instance();
    bool hasRead = false;
    for (const auto &[logName, group] : qAsConst(m_assignments)) {
        if (group.isEmpty() || group == QLatin1String("None"))
            continue;
        if (!hasRead)
            table.read(m_projectFolder);
        hasRead = true;
        groupFiles.add(group, logName);
        table.set(logName, group);
    }
    m_assignments.clear();
    if (!hasRead)
        return;
    groupFiles.write();
    table.write(m_projectFolder);
}
