#include "datastore/calibrationfile.h"

#include "base/asker.h"
#include "base/safename.h"
#include "base/textbytes.h"
#include "datastore/sidefile.h"

#include <QFile>

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

// The text behind the first ":"; null when there is none.
QString headingValue(const QString &line)
{
    const int colon = line.indexOf(QLatin1Char(':'));
    return colon < 0 ? QString() : line.mid(colon + 1) + QLatin1String("");
}

} // namespace

QString calibrationPath(const QString &projectFolder, const QString &wellName, const QString &groupName)
{
    const QString tail = QLatin1Char('_') + base::fileNameFor(groupName) + QLatin1String(fileEnding);
    return projectFolder + QLatin1Char('/') + base::fileNameFor(wellName, tail.toUtf8().size()) + tail;
}

QByteArray calibrationBytes(const CalibrationRecord &record)
{
    QByteArray bytes = "WellName :" + record.wellName.toUtf8() + '\n';
    bytes += "GroupName :" + record.groupName.toUtf8() + '\n';
    const int count = qMin(record.depths.size(), record.values.size());
    for (int i = 0; i < count; ++i)
        bytes += sidefile::number(record.depths.at(i)) + '|' + sidefile::number(record.values.at(i)) + '\n';
    return bytes;
}

CalibrationParse parseCalibration(const QByteArray &bytes, const QString &wellName, const QString &groupName)
{
    CalibrationParse result;
    result.record.wellName = wellName;
    result.record.groupName = groupName;
    const QVector<QString> lines = base::splitLines(base::decodeText(bytes));
    const QString well = headingValue(lines.value(0));
    const QString group = headingValue(lines.value(1));
    result.isMalformed = well.isNull() || (well == wellName && group.isNull());
    if (well != wellName || group != groupName)
        return result;
    for (int i = 2; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        const QVector<QStringRef> parts = sidefile::parts(line);
        if (parts.size() < 2)
            continue;
        result.record.depths.append(sidefile::toFloat(parts.at(0)));
        result.record.values.append(sidefile::toFloat(parts.at(1)));
    }
    return result;
}

bool writeCalibration(const QString &projectFolder, const CalibrationRecord &record, base::Asker &asker)
{
    return sidefile::writeAfterQuestion(
        calibrationPath(projectFolder, record.wellName, record.groupName), calibrationBytes(record),
        QStringLiteral("Well Calibration Data Write"),
        QStringLiteral("Well Calibration data for this well is already exists.\nWould you like to update it?"), asker);
}

CalibrationRecord readCalibration(const QString &projectFolder, const QString &wellName, const QString &groupName,
                                  base::Asker &asker)
{
    CalibrationRecord empty;
    empty.wellName = wellName;
    empty.groupName = groupName;
    QFile file(calibrationPath(projectFolder, wellName, groupName));
    if (!file.exists())
        return empty;
    if (!file.open(QIODevice::ReadOnly)) {
        warnUnreadable(asker);
        return empty;
    }
    const CalibrationParse parsed = parseCalibration(file.readAll(), wellName, groupName);
    if (parsed.isMalformed)
        warnUnreadable(asker);
    return parsed.record;
}
