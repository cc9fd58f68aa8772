#include "survey/topsreport.h"

#include "survey/reportlines.h"

#include <QDir>

namespace survey {

namespace {

constexpr int mostNamed = 10;
constexpr int mostRemarks = 1000;

QString firstOf(QStringList names)
{
    names.removeDuplicates();
    const QString listed = names.mid(0, mostNamed).join(QStringLiteral(", "));
    return names.size() <= mostNamed ? listed
                                     : QStringLiteral("%1 and %2 more").arg(listed).arg(names.size() - mostNamed);
}

QString foundNote(const TopsRow &row)
{
    switch (row.match) {
    case TopsRow::Match::None:
        return row.isWholeFile ? QStringLiteral("The file does not say of which well it is.")
                               : QStringLiteral("The survey has no well of this name.");
    case TopsRow::Match::Several:
        return QStringLiteral("Several wells may be meant: %1.").arg(firstOf(row.candidates));
    case TopsRow::Match::Alike:
        return row.isWholeFile ? QStringLiteral("Found by the file's name.")
                               : QStringLiteral("The name is written in another way.");
    case TopsRow::Match::Uwi:
        return QStringLiteral("Found by the unique well identifier.");
    default:
        return {};
    }
}

QString wellName(const TopsPlan &plan, const TopsRow &row)
{
    return row.well < 0 ? QString() : plan.wells().at(row.well).name;
}

QString lineOf(const TopsPlan &plan, const TopsRow &row, const QString &rest)
{
    const QString inFile = row.names.first();
    const QString well = wellName(plan, row);
    return well.isEmpty() || well == inFile ? QStringLiteral("  %1: %2").arg(inFile, rest)
                                            : QStringLiteral("  %1 (%2 in the file): %3").arg(well, inFile, rest);
}

QString changeText(const TopsRow &row)
{
    return QStringLiteral("%1 new, %2 moved").arg(row.merge.added).arg(row.merge.moved);
}

QString untouchedReason(const TopsRow &row)
{
    if (row.well < 0)
        return row.match == TopsRow::Match::User ? QStringLiteral("Left out.") : foundNote(row);
    return row.changesAnything() ? QStringLiteral("Cancelled before it was written.")
                                 : QStringLiteral("There is nothing to change.");
}

} // namespace

QStringList topsNotes(const TopsRow &row)
{
    QStringList notes;
    for (const QString &text : {row.problem, row.error})
        if (!text.isEmpty())
            notes.append(text);
    if (row.isWritten)
        notes.append(QStringLiteral("Written."));
    if (const QString found = foundNote(row); !found.isEmpty())
        notes.append(found);
    if (row.names.size() > 1)
        notes.append(QStringLiteral("Also called %1.").arg(firstOf(row.names.mid(1))));
    if (row.well < 0)
        return notes;
    if (!row.merge.outside.isEmpty())
        notes.append(QStringLiteral("Below the total depth: %1.").arg(firstOf(row.merge.outside)));
    if (row.unreadableLines > 0)
        notes.append(
            QStringLiteral("Without a name or a depth: %1.").arg(counted(row.unreadableLines, "line", "lines")));
    if (!row.merge.repeated.isEmpty())
        notes.append(QStringLiteral("At several depths, so the further ones get a number: %1.")
                         .arg(firstOf(row.merge.repeated)));
    return notes;
}

QString topsSentence(const TopsPlan &plan, bool isCancelled)
{
    int written = 0;
    int failed = 0;
    int added = 0;
    int moved = 0;
    for (const TopsRow &row : plan.rows()) {
        if (row.isWritten) {
            ++written;
            added += row.merge.added;
            moved += row.merge.moved;
        } else if (!row.error.isEmpty()) {
            ++failed;
        }
    }
    QString text = QStringLiteral("Tops of %1 written: %2 new, %3 moved")
                       .arg(counted(written, "well were", "wells were"))
                       .arg(added)
                       .arg(moved);
    if (failed > 0)
        text += QStringLiteral("; those of %1 could not be written").arg(counted(failed, "well", "wells"));
    return text + (isCancelled ? QStringLiteral("; then it was cancelled.") : QStringLiteral("."));
}

QString topsReport(const TopsPlan &plan, bool isCancelled, const QString &surveyDirectory)
{
    QStringList written;
    QStringList failed;
    QStringList untouched;
    for (const TopsRow &row : plan.rows()) {
        if (row.isWritten)
            written.append(lineOf(plan, row, changeText(row)));
        else if (!row.error.isEmpty())
            failed.append(lineOf(plan, row, row.error));
        else
            untouched.append(lineOf(plan, row, untouchedReason(row)));
    }
    QStringList remarks;
    for (const TopsRemark &remark : plan.remarks().mid(0, mostRemarks))
        remarks.append(QStringLiteral("  ") + remarkText(remark));
    if (plan.remarks().size() > mostRemarks)
        remarks.append(QStringLiteral("  and %1 more").arg(plan.remarks().size() - mostRemarks));
    QStringList lines{topsSentence(plan, isCancelled),
                      QStringLiteral("Survey: ") + QDir::toNativeSeparators(surveyDirectory)};
    addBlock(&lines, QStringLiteral("Failed, and as they were before:"), failed);
    addBlock(&lines, QStringLiteral("Written:"), written);
    addBlock(&lines, QStringLiteral("Left as they were:"), untouched);
    addBlock(&lines, QStringLiteral("Not understood:"), remarks);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace survey
