#pragma once

#include "datastore/storeresult.h"

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

/// The bytes of a perforation file. Names and types stand as textfields::fieldName() gives them: otherwise the zone
/// would not be read again. A depth that is not finite is written as 0. Of unequal lists the common part is written.
QByteArray perforationBytes(const PerforationRecord &record);
/// Reads all zone lines of four parts, also beyond the count of the first line. A count below 1 gives an empty
/// record. A name or a type may be empty, so that every file of ours reads back, where the two parts between are
/// numbers.
PerforationRecord parsePerforation(const QByteArray &bytes, const QString &wellName);

/// Asks before it replaces a file; one that is write-protected stays also after "Yes". Stored when the file exists
/// afterwards with the record in it.
StoreResult writePerforation(const QString &projectFolder, const PerforationRecord &record, base::Asker &asker);

/// Empty when there is no file or it cannot be opened.
PerforationRecord readPerforation(const QString &projectFolder, const QString &wellName);
