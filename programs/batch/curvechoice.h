#pragma once

#include "las/importplan.h"

#include <QHash>
#include <QStringList>

class CurveGroupFinder;

namespace batch {

class Arguments;

/// What the options of the import say of curves.
struct CurveChoice
{
    explicit CurveChoice(const Arguments &arguments);

    /// The name that the log of a curve gets.
    QString nameOf(const QString &mnemonic) const { return names.value(mnemonic, mnemonic); }
    bool isWanted(const QString &mnemonic) const { return curves.isEmpty() || curves.contains(mnemonic); }
    /// The group that the log of a curve has in the end: that of the options, else that of its name as \a known finds it. What
    /// has none there, or is one of Others, goes into that of its unit at every launch.
    QString groupOf(const QString &mnemonic, QString unit, CurveGroupFinder &known) const;
    /// What to tell of a group that was asked for and is not the log's in the end, a sentence; empty when it is.
    QString groupNotice(const QString &mnemonic, const QString &group) const;

    QStringList curves; ///< mnemonics; empty for all but the depths
    QHash<QString, QString> groups; ///< by mnemonic
    QHash<QString, QString> names; ///< by mnemonic
    las::ImportOptions options;
    bool convertsFeet = false;
};

/// That two curves would become one log, a sentence without a capital in front.
QString sameNameProblem(const QString &firstCurve, const QString &secondCurve, const QString &logName);

} // namespace batch
