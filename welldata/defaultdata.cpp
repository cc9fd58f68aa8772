#include "welldata/defaultdata.h"

#include "datastore/curvegroupassignment.h"
#include "datastore/projectdata.h"
#include "datastore/projectfile.h"
#include "datastore/textfields.h"

namespace welldata {

namespace {

// Decoding a file takes off some of the byte order marks in front, and with them those that a name begins with.
QString withoutMarksInFront(const QString &name)
{
    int marks = 0;
    while (marks < name.size() && name.at(marks) == QChar::ByteOrderMark)
        ++marks;
    return name.mid(marks);
}

} // namespace

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
            file.wellName = withoutMarksInFront(toString(line));
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
    return file.wellName.toUtf8() == textfields::oneLine(withoutMarksInFront(wellName));
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
