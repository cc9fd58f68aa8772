#include "welldata/defaultdata.h"

#include "datastore/curvegroupassignment.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"

namespace welldata {

QStringList groupsWithDefaults(const QStringList &groupNames)
{
    constexpr int withoutDefaults = 2; // "None" and "Depth"
    return groupNames.mid(withoutDefaults);
}

DefaultDataFile parseDefaultData(const QByteArray &bytes)
{
    using namespace textfields;
    DefaultDataFile file;
    std::vector<Field> parts;
    bool isFirst = true;
    forEachLine(utf8Text(bytes), [&](Field line) {
        if (isFirst) {
            isFirst = false;
            file.wellName = toString(line);
            return;
        }
        splitSkippingEmpty(trimmed(line), '|', 3, &parts);
        if (parts.size() != 2)
            return;
        file.logs.groups.append(toString(parts[0]));
        file.logs.logs.append(toString(parts[1]));
    });
    return file;
}

bool isOfWell(const DefaultDataFile &file, const QString &wellName)
{
    return file.wellName == wellName || file.wellName.toUtf8() == textfields::oneLine(wellName);
}

bool storeDefaultData(ProjectData &data, const QString &wellName, const DefaultData &stored)
{
    const QString &folder = data.project.projectFolder;
    if (!writeProjectFile(folder, defaultLogsPath(folder, wellName), defaultLogsBytes(wellName, stored.defaults))
             .ok())
        return false;
    CurveGroupAssignments assignments(folder);
    for (const DefaultLogs *logs : {&stored.defaults, &stored.all})
        for (int i = 0; i < logs->logs.size(); ++i)
            assignments.add(logs->logs.at(i), logs->groups.at(i));
    assignments.write();
    runDefaultLogsPass(data);
    return true;
}

} // namespace welldata
