#include "datastore/curvegroupassignment.h"

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"

QString findCurveGroup(const QString &projectFolder, const QString &logName)
{
    const QString inTable = CurveGroupTable::instance().group(logName);
    if (!inTable.isEmpty())
        return inTable;
    for (const QString &group : curveGroupNames())
        if (readGroupFile(projectFolder, group).contains(logName))
            return group;
    return QStringLiteral("Others");
}

void assignCurveGroup(const QString &projectFolder, const QString &logName, const QString &group)
{
    if (group.isEmpty() || group == QLatin1String("None"))
        return;
    addMnemonicToGroup(projectFolder, group, logName);
    CurveGroupTable &table = CurveGroupTable::instance();
    table.read(projectFolder);
    table.set(logName.trimmed(), group);
    table.write(projectFolder);
}
