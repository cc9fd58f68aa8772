#include "survey/newwellsreport.h"

#include "survey/reportlines.h"

#include <QDir>
#include <QFileInfo>

namespace survey {

namespace {

constexpr int otherFilesNamed = 20;

QString namesOf(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names.append(QFileInfo(path).fileName());
    return names.join(QStringLiteral(", "));
}

QStringList madeLines(const QVector<MadeWell> &wells)
{
    QStringList lines;
    for (const MadeWell &well : wells) {
        if (!well.error.isEmpty())
            continue;
        lines.append(QStringLiteral("  %1 (%2): %3")
                         .arg(well.name, namesOf(well.files), counted(well.logCount, "log", "logs")));
        for (const QString &notice : well.notices)
            lines.append(QStringLiteral("      ") + notice);
    }
    return lines;
}

QStringList failureLines(const QVector<MadeWell> &wells)
{
    QStringList lines;
    for (const MadeWell &well : wells)
        if (!well.error.isEmpty())
            lines.append(QStringLiteral("  %1 (%2): %3").arg(well.name, namesOf(well.files), well.error));
    return lines;
}

// Rows that were not tried.
QStringList leftOutLines(const NewWells &wells)
{
    QStringList lines;
    for (const NewWell &well : wells.wells()) {
        if (well.state == NewWell::State::Unreadable) {
            lines.append(QStringLiteral("  %1: %2").arg(fileNames(well), well.notes.join(QLatin1Char(' '))));
            continue;
        }
        if (well.state == NewWell::State::Created || !well.failure.isEmpty())
            continue;
        const QString reason = well.state == NewWell::State::Exists
            ? QStringLiteral("The survey has a well of this name.")
            : well.isChosen ? QStringLiteral("Cancelled before it was made.")
                            : QStringLiteral("Not checked.");
        lines.append(QStringLiteral("  %1 (%2): %3").arg(well.texts[WellField::Name], fileNames(well), reason));
    }
    return lines;
}

QStringList otherFileLines(const QStringList &paths)
{
    QStringList lines;
    for (const QString &path : paths.mid(0, otherFilesNamed))
        lines.append(QStringLiteral("  ") + path);
    if (paths.size() > otherFilesNamed)
        lines.append(QStringLiteral("  and %1 more").arg(paths.size() - otherFilesNamed));
    return lines;
}

} // namespace

QString outcomeSentence(const NewWellsOutcome &outcome)
{
    int made = 0;
    int failed = 0;
    int logs = 0;
    for (const MadeWell &well : outcome.wells) {
        (well.error.isEmpty() ? made : failed) += 1;
        logs += well.logCount;
    }
    QString text =
        QStringLiteral("%1 made with %2").arg(counted(made, "well was", "wells were"), counted(logs, "log", "logs"));
    if (failed > 0)
        text += QStringLiteral(", %1 could not be made").arg(failed);
    return text + (outcome.isCancelled ? QStringLiteral("; then it was cancelled.") : QStringLiteral("."));
}

QString newWellsReport(const NewWells &wells, const NewWellsOutcome &outcome, const QString &surveyDirectory)
{
    QStringList lines{outcomeSentence(outcome),
                      QStringLiteral("Survey: ") + QDir::toNativeSeparators(surveyDirectory)};
    addBlock(&lines, QStringLiteral("Not made:"), failureLines(outcome.wells));
    addBlock(&lines, QStringLiteral("Made:"), madeLines(outcome.wells));
    addBlock(&lines, QStringLiteral("Left out:"), leftOutLines(wells));
    addBlock(&lines, QStringLiteral("Other files in the folders, which are no LAS files by their names:"),
             otherFileLines(outcome.otherFiles));
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace survey
