#include "datastore/curvegroupassignment.h"

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "datastore/textfields.h"

#include <algorithm>

QString findCurveGroup(const QString &projectFolder, const QString &logName)
{
    const QString inTable = CurveGroupTable::instance().group(logName);
    if (!inTable.isEmpty())
        return inTable;
    const QString name = textfields::fieldName(logName);
    const auto isName = [&name](const QString &entry) { return textfields::fieldName(entry) == name; };
    for (const QString &group : curveGroupNames()) {
        const QStringList entries = readGroupFile(projectFolder, group);
        if (std::any_of(entries.begin(), entries.end(), isName))
            return group;
    }
    return QStringLiteral("Others");
}

void assignCurveGroup(const QString &projectFolder, const QString &logName, const QString &group)
{
    if (group.isEmpty() || group == QLatin1String("None"))
        return;
    addMnemonicToGroup(projectFolder, group, logName);
    CurveGroupTable &table = CurveGroupTable::instance();
    table.read(projectFolder);
    table.set(logName, group);
    table.write(projectFolder);
}
