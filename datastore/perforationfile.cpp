#include "datastore/perforationfile.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "base/safename.h"
#include "datastore/projectfile.h"
#include "datastore/sidefile.h"

#include <algorithm>
#include <optional>

namespace {

constexpr char fileEnding[] = "_perforationZone.txt";

int zoneCountOf(const PerforationRecord &record)
{
    return qMin(qMin(record.names.size(), record.zoneTypes.size()), qMin(record.tops.size(), record.bottoms.size()));
}

QByteArray fieldBytes(const QString &name)
{
    return textfields::fieldName(name).toUtf8();
}

bool isNumber(textfields::Field field)
{
    return base::parseNumber(field.data(), field.data() + field.size()).has_value();
}

// The four parts of a zone line. Empty parts do not count, but for a name or a type that was written empty.
bool splitZone(textfields::Field line, std::vector<textfields::Field> *parts)
{
    textfields::splitSkippingEmpty(line, '|', 5, parts);
    if (parts->size() == 4)
        return true;
    if (std::count(line.begin(), line.end(), '|') != 3)
        return false;
    textfields::split(line, '|', parts);
    return isNumber(parts->at(1)) && isNumber(parts->at(2));
}

} // namespace

QString perforationPath(const QString &projectFolder, const QString &wellName)
{
    return projectFolder + QLatin1Char('/') + base::fileNameFor(wellName, static_cast<int>(sizeof fileEnding) - 1)
        + QLatin1String(fileEnding);
}

QByteArray perforationBytes(const PerforationRecord &record)
{
    const int count = zoneCountOf(record);
    QByteArray bytes = QByteArray::number(count) + '\n';
    for (int i = 0; i < count; ++i)
        bytes += fieldBytes(record.names.at(i)) + '|' + sidefile::number(record.tops.at(i)) + '|'
            + sidefile::number(record.bottoms.at(i)) + '|' + fieldBytes(record.zoneTypes.at(i)) + '\n';
    return bytes;
}

PerforationRecord parsePerforation(const QByteArray &bytes, const QString &wellName)
{
    using namespace textfields;
    PerforationRecord record;
    record.wellName = wellName;
    std::vector<Field> parts;
    std::optional<int> count;
    forEachLine(utf8Text(bytes), [&](Field line) {
        if (!count) {
            count = base::parseInteger(QByteArray(line.data(), static_cast<int>(line.size()))).value_or(0);
            return;
        }
        if (*count < 1 || !splitZone(trimmed(line), &parts))
            return;
        record.names.append(toString(trimmed(parts[0])));
        record.tops.append(sidefile::toFloat(parts[1]));
        record.bottoms.append(sidefile::toFloat(parts[2]));
        record.zoneTypes.append(toString(trimmed(parts[3])));
    });
    record.zoneCount = record.names.size();
    return record;
}

StoreResult writePerforation(const QString &projectFolder, const PerforationRecord &record, base::Asker &asker)
{
    return sidefile::writeAfterQuestion(
        projectFolder, perforationPath(projectFolder, record.wellName), perforationBytes(record),
        QStringLiteral("Well Perforation Data Write"),
        QStringLiteral("Well Perforation data for this well is already exists.\nWould you like to update it?"),
        asker);
}

PerforationRecord readPerforation(const QString &projectFolder, const QString &wellName)
{
    const ProjectFile file = readProjectFile(projectFolder, perforationPath(projectFolder, wellName));
    if (file.state != ProjectFile::State::Read) {
        PerforationRecord empty;
        empty.wellName = wellName;
        return empty;
    }
    return parsePerforation(file.bytes, wellName);
}
