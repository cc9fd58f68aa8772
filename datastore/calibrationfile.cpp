#include "datastore/calibrationfile.h"

#include "base/asker.h"
#include "base/safename.h"
#include "datastore/projectfile.h"
#include "datastore/sidefile.h"

#include <optional>

namespace {

constexpr char fileEnding[] = "_calibrationPoints.txt";

QString readerTitle()
{
    return QStringLiteral("Well Calibration Data Reader");
}

void warnUnreadable(base::Asker &asker)
{
    asker.warn(readerTitle(), QStringLiteral("Unable to read file please check file read/write permission."));
}

// What the heading holds behind its first ":"; nothing when there is none.
std::optional<QByteArray> headingValue(textfields::Field line)
{
    const size_t colon = line.find(':');
    if (colon == textfields::Field::npos)
        return std::nullopt;
    const textfields::Field value = line.substr(colon + 1);
    return QByteArray(value.data(), static_cast<int>(value.size()));
}

// What the group's name may take of the file name; every curve group's name is shorter.
constexpr int maximumGroupBytes = 100;

} // namespace

QString calibrationPath(const QString &projectFolder, const QString &wellName, const QString &groupName)
{
    const QString tail = QLatin1Char('_')
        + base::fileNameFor(groupName, base::maximumFileNameBytes - maximumGroupBytes) + QLatin1String(fileEnding);
    return projectFolder + QLatin1Char('/') + base::fileNameFor(wellName, tail.toUtf8().size()) + tail;
}

QByteArray calibrationBytes(const CalibrationRecord &record)
{
    QByteArray bytes = "WellName :" + textfields::oneLine(record.wellName) + '\n';
    bytes += "GroupName :" + textfields::oneLine(record.groupName) + '\n';
    const int count = qMin(record.depths.size(), record.values.size());
    for (int i = 0; i < count; ++i)
        bytes += sidefile::number(record.depths.at(i)) + '|' + sidefile::number(record.values.at(i)) + '\n';
    return bytes;
}

CalibrationParse parseCalibration(const QByteArray &bytes, const QString &wellName, const QString &groupName)
{
    using namespace textfields;
    CalibrationParse result;
    result.record.wellName = wellName;
    result.record.groupName = groupName;
    const QByteArray askedWell = oneLine(wellName);
    const QByteArray askedGroup = oneLine(groupName);
    std::optional<QByteArray> well;
    std::optional<QByteArray> group;
    std::vector<Field> parts;
    int lineNumber = 0;
    forEachLine(utf8Text(bytes), [&](Field line) {
        ++lineNumber;
        if (lineNumber == 1)
            well = headingValue(line);
        else if (lineNumber == 2)
            group = headingValue(line);
        if (lineNumber <= 2 || well != askedWell || group != askedGroup)
            return;
        splitSkippingEmpty(trimmed(line), '|', 2, &parts);
        if (parts.size() < 2)
            return;
        result.record.depths.append(sidefile::toFloat(parts[0]));
        result.record.values.append(sidefile::toFloat(parts[1]));
    });
    result.isMalformed = !well || !group;
    return result;
}

StoreResult writeCalibration(const QString &projectFolder, const CalibrationRecord &record, base::Asker &asker)
{
    return sidefile::writeAfterQuestion(
        projectFolder, calibrationPath(projectFolder, record.wellName, record.groupName), calibrationBytes(record),
        QStringLiteral("Well Calibration Data Write"),
        QStringLiteral("Well Calibration data for this well is already exists.\nWould you like to update it?"),
        asker);
}

CalibrationRecord readCalibration(const QString &projectFolder, const QString &wellName, const QString &groupName,
                                  base::Asker &asker)
{
    CalibrationRecord empty;
    empty.wellName = wellName;
    empty.groupName = groupName;
    const ProjectFile file = readProjectFile(projectFolder, calibrationPath(projectFolder, wellName, groupName));
    if (file.state == ProjectFile::State::Missing)
        return empty;
    if (file.state == ProjectFile::State::Unreadable) {
        warnUnreadable(asker);
        return empty;
    }
    const CalibrationParse parsed = parseCalibration(file.bytes, wellName, groupName);
    if (parsed.isMalformed)
        warnUnreadable(asker);
    return parsed.record;
}
