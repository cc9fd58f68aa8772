#pragma once

#include "programs/batch/result.h"

namespace batch {

/// What an import brought into one well.
struct ImportedWell
{
    QString well; ///< its name
    bool isNew = false; ///< whether it was made
    QStringList files; ///< paths
    QJsonArray logs; ///< as addLog() makes them
    QStringList notices; ///< sentences

    /// \a curve is the mnemonic in the file.
    void addLog(const QString &name, const QString &curve, const QString &group);
    Record record() const;
};

/// The fields of these records.
QVector<Field> importFields();

} // namespace batch
