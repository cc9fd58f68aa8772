#include "datastore/perforationfile.h"

#include "base/asker.h"
#include "base/numbers.h"
#include "base/safename.h"
#include "base/textbytes.h"
#include "datastore/sidefile.h"

#include <QFile>

namespace {

constexpr char fileEnding[] = "_perforationZone.txt";

int zoneCountOf(const PerforationRecord &record)
{
    return qMin(qMin(record.names.size(), record.zoneTypes.size()), qMin(record.tops.size(), record.bottoms.size()));
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
        bytes += record.names.at(i).toUtf8() + '|' + sidefile::number(record.tops.at(i)) + '|'
            + sidefile::number(record.bottoms.at(i)) + '|' + record.zoneTypes.at(i).toUtf8() + '\n';
    return bytes;
}

PerforationRecord parsePerforation(const QByteArray &bytes, const QString &wellName)
{
    PerforationRecord record;
    record.wellName = wellName;
    const QVector<QString> lines = base::splitLines(base::decodeText(bytes));
    if (base::parseInteger(lines.value(0).toUtf8()).value_or(0) < 1)
        return record;
    for (int i = 1; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        const QVector<QStringRef> parts = sidefile::parts(line);
        if (parts.size() != 4)
            continue;
        record.names.append(parts.at(0).trimmed().toString());
        record.tops.append(sidefile::toFloat(parts.at(1)));
        record.bottoms.append(sidefile::toFloat(parts.at(2)));
        record.zoneTypes.append(parts.at(3).trimmed().toString());
    }
    record.zoneCount = record.names.size();
    return record;
}

bool writePerforation(const QString &projectFolder, const PerforationRecord &record, base::Asker &asker)
{
    return sidefile::writeAfterQuestion(
        perforationPath(projectFolder, record.wellName), perforationBytes(record),
        QStringLiteral("Well Perforation Data Write"),
        QStringLiteral("Well Perforation data for this well is already exists.\nWould you like to update it?"), asker);
}

PerforationRecord readPerforation(const QString &projectFolder, const QString &wellName)
{
    QFile file(perforationPath(projectFolder, wellName));
    if (!file.open(QIODevice::ReadOnly)) {
        PerforationRecord empty;
        empty.wellName = wellName;
        return empty;
    }
    return parsePerforation(file.readAll(), wellName);
}
