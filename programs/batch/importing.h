#pragma once

#include "host/hostrecords.h"
#include "las/importplan.h"
#include "programs/batch/result.h"
#include "survey/newwells.h"

#include <QHash>
#include <QStringList>

namespace batch {

class Arguments;
class Session;

/// What the options of the import say of curves.
struct CurveChoice
{
    explicit CurveChoice(const Arguments &arguments);

    /// The name that the log of a curve gets.
    QString nameOf(const QString &mnemonic) const { return names.value(mnemonic, mnemonic); }
    bool isWanted(const QString &mnemonic) const { return curves.isEmpty() || curves.contains(mnemonic); }

    QStringList curves; ///< mnemonics; empty for all but the depths
    QHash<QString, QString> groups; ///< by mnemonic
    QHash<QString, QString> names; ///< by mnemonic
    las::ImportOptions options;
    bool convertsFeet = false;
};

/// What is unusual about a loaded file, as sentences.
QStringList fileNotices(const WellInfo &file, bool convertsFeet);
/// Why the import takes nothing of a loaded file, whatever the well: the end of a sentence on the file. Empty when it does.
QString importProblem(const WellInfo &file);

/// Brings the curves of files into a well that is there, as the import of the window does. The record tells what was
/// written; a file that is refused is a failure, and nothing of it is written.
Result importIntoWell(Session &session, const host::WellEntry &well, const QStringList &files,
                      const CurveChoice &choice);

/// Makes a proposed well with the logs of its files, as the workbench does: all of it or nothing.
Result importAsNewWell(Session &session, const survey::NewWell &well, const CurveChoice &choice);

/// Gives the logs of such results their curve groups, and brings the project up to date with the survey, as a launch does.
/// Gives what of it could not be written, as sentences that name the files.
QStringList assignGroups(Session &session, const Result &imported);

/// The fields of the records.
QVector<Field> importFields();

} // namespace batch
