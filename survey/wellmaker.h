#pragma once

#include "survey/surveystore.h"

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace survey {

constexpr double deepestPossibleM = 30000; ///< far below the deepest well

/// A well to be made from LAS files.
struct WellOrder
{
    WellProperties properties; ///< in the survey's depth unit
    QStringList files; ///< paths
    bool withLogs = true;
    QByteArray codec; ///< of files that are no Unicode, as in las::prepareText()
    /// Where set, changes the logs before they are written, in the survey's depth unit, and adds to the notices: logs may go
    /// or get another name or other samples. Each that is left has a sample and a name of its own. Gives why there can be no
    /// such well, a sentence; empty when there can.
    std::function<QString(QVector<host::LogData> *logs, QStringList *notices)> changeLogs;
    bool isTrial = false; ///< everything but the writing: what would be made, without a key
};

/// What became of one.
struct MadeWell
{
    QString name;
    QStringList files;
    QString key; ///< empty when it was not made
    QString error; ///< why it was not, a sentence
    int logCount = 0;
    QStringList notices; ///< sentences: what of the files was left out or changed, and why
};

/// Makes the well with the logs of its files, all of it or nothing. Depths are converted to the survey's unit. A log that
/// repeats another of the same mnemonic sample by sample is left out; one that only has its name gets a number. The
/// well ends no higher than its deepest sample, whatever the properties say. A file that cannot be read is an error.
/// After the last of several the store is to be flushed.
MadeWell makeWell(SurveyStore &store, const WellOrder &order);

/// A length in metres as a text in a depth unit, rounded up to four decimals: in the single precision of the host, too,
/// a well with this total depth ends no higher.
QString roundedUpText(double metres, DepthUnit unit);

} // namespace survey
