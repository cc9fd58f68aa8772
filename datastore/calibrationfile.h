#pragma once

#include "datastore/storeresult.h"

#include <QByteArray>
#include <QString>
#include <QVector>

namespace base {
class Asker;
}

/// Measured values of one well that are shown as points over the tracks of one curve group.
struct CalibrationRecord
{
    QString wellName;
    QString groupName;
    QVector<float> depths; ///< measured depth
    QVector<float> values; ///< as many as depths
};

QString calibrationPath(const QString &projectFolder, const QString &wellName, const QString &groupName);

/// A line break in a name is written as a blank, a number that is not finite as 0. Of unequal arrays the common part
/// is written.
QByteArray calibrationBytes(const CalibrationRecord &record);

/// What a calibration file came to: it may lack the ":" in one of its two heading lines.
struct CalibrationParse
{
    CalibrationRecord record;
    bool isMalformed = false;
};
/// Empty arrays when the file's names are not those asked for. A name is all that follows the first ":" of its
/// heading: a well's name may hold one too.
CalibrationParse parseCalibration(const QByteArray &bytes, const QString &wellName, const QString &groupName);

/// Asks before it replaces a file; one that is write-protected stays also after "Yes". Stored when the file exists
/// afterwards with the record in it.
StoreResult writeCalibration(const QString &projectFolder, const CalibrationRecord &record, base::Asker &asker);

/// Empty arrays when there is no file. A file that cannot be read or is malformed is told in a warning box.
CalibrationRecord readCalibration(const QString &projectFolder, const QString &wellName, const QString &groupName,
                                  base::Asker &asker);
