#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace base {
class Asker;
}

/// The perforation zones of one well: parallel lists.
struct PerforationRecord
{
    QString wellName;
    int zoneCount = 0;
    QStringList names;
    QVector<float> tops; ///< measured depth
    QVector<float> bottoms;
    QStringList zoneTypes; ///< as a rule one of zoneTypeNames(); any text is kept
};

QString perforationPath(const QString &projectFolder, const QString &wellName);

/// The bytes of a perforation file. A "|" in a name or a type becomes a broken bar, a line break a blank: with them
/// the zone would not be read again.
QByteArray perforationBytes(const PerforationRecord &record);
/// Reads all zone lines of four parts, also beyond the count of the first line. A count below 1 gives an empty record.
PerforationRecord parsePerforation(const QByteArray &bytes, const QString &wellName);

/// Asks before it replaces a file. True when the file exists afterwards with the record in it.
bool writePerforation(const QString &projectFolder, const PerforationRecord &record, base::Asker &asker);

/// Empty when there is no file or it cannot be opened.
PerforationRecord readPerforation(const QString &projectFolder, const QString &wellName);
