#include "programs/batch/welldatacommand.h"

#include "base/folderlinks.h"
#include "programs/batch/arguments.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "welldata/siderows.h"

namespace batch {

namespace {

constexpr char importOption[] = "--import";
constexpr char skipOption[] = "--skip";

/// Options of the import belong to it.
QString aloneProblem(const Arguments &arguments, const QVector<ImportColumn> &columns)
{
    if (arguments.has(QLatin1String(importOption)))
        return {};
    QStringList alone{QLatin1String(skipOption), QStringLiteral("--force"), QStringLiteral("--dry-run")};
    for (const ImportColumn &column : columns)
        alone.append(QLatin1String(column.option));
    for (const QString &option : qAsConst(alone))
        if (arguments.has(option))
            return QStringLiteral("The option %1 belongs to --import.").arg(option);
    return {};
}

} // namespace

Command wellDataCommand(const char *name, const char *summary, const char *description, const char *example,
                        const WellDataWork &work)
{
    Command command = makeCommand(name, summary, description, example);
    command.operands = {wellOperand()};
    command.options = {valueOption(importOption, "FILE",
                                   "Replace them by those of a text file of columns between tabs", {WordKind::File})};
    for (const ImportColumn &column : work.columns)
        command.options.append(valueOption(column.option, "N", column.help, countRule(1, 1000000)));
    command.options.append(valueOption(
        skipOption, "N", "Pass over so many lines at the top of the file; 0 without it", countRule(0, 1000000)));
    command.writes = true;
    command.replaces = true;
    command.problem = [columns = work.columns](const Arguments &arguments) {
        return aloneProblem(arguments, columns);
    };
    command.run = [work](Session &session, const Arguments &arguments) {
        const host::Outcome<host::WellEntry> well = session.well(arguments.operand(0));
        if (!well.ok())
            return Result::failed(well.error);
        Result result;
        if (isImporting(arguments))
            result = work.import(session, well.value, arguments);
        if (result.failures.isEmpty() && !session.isDryRun())
            work.list(session, well.value, arguments, &result);
        return result;
    };
    return command;
}

bool isImporting(const Arguments &arguments)
{
    return arguments.has(QLatin1String(importOption));
}

host::Outcome<welldata::ColumnFile> readImport(const Arguments &arguments, const QVector<ImportColumn> &columns)
{
    const QString path = arguments.value(QLatin1String(importOption));
    const base::RegularFile bytes = welldata::readImportFile(path);
    if (!bytes.ok())
        return {{}, QStringLiteral("Cannot read the file %1: %2.").arg(path, base::systemErrorText(bytes.errorCode))};
    welldata::ColumnRequest request;
    request.headerLines = arguments.count(QLatin1String(skipOption), 0);
    request.fieldsAtLeast = qMax(2, columns.size());
    for (const ImportColumn &column : columns)
        request.columns.push_back(arguments.count(QLatin1String(column.option), column.usual));
    const welldata::ColumnFile file = readColumns(bytes.bytes, request);
    if (!file.ok())
        return {{}, path + QStringLiteral(": ") + file.problem};
    if (file.rowCount() == 0)
        return {{}, QStringLiteral("%1 has no line to import.").arg(path)};
    return {file, {}};
}

QString placeOfRows(const Arguments &arguments)
{
    const QString path = arguments.value(QLatin1String(importOption));
    const int skipped = arguments.count(QLatin1String(skipOption), 0);
    return skipped == 0 ? path : QStringLiteral("%1 behind line %2").arg(path).arg(skipped);
}

QString refusalToReplace(const QString &what, int count, const QString &path)
{
    if (count == 0)
        return existsProblem(path);
    return QStringLiteral("%1: %2 there already; --force replaces them.")
        .arg(what, count == 1 ? QStringLiteral("one is") : QStringLiteral("%1 are").arg(count));
}

void addOutcome(Session &session, const Arguments &arguments, const QString &what, bool isStored, Result *result,
                const QString &target)
{
    const QString end = target.isEmpty() ? QString() : QStringLiteral(" The file to write is %1.").arg(target);
    for (const QString &failure : session.takeFailures())
        result->failures.append(QStringLiteral("%1 from %2: %3").arg(what, placeOfRows(arguments), failure) + end);
    if (!isStored && result->failures.isEmpty())
        result->failures.append(QStringLiteral("%1: nothing was written.").arg(what));
}

void noteZeros(const QVector<welldata::TableRow> &rows, const Arguments &arguments, Result *result)
{
    const QVector<int> without = welldata::rowsWithoutNumber(rows);
    if (!without.isEmpty())
        result->notices.append(QStringLiteral("%1: no number in %2; it is read as 0.")
                                   .arg(placeOfRows(arguments), welldata::rowList(without)));
}

QString wouldBe(const QString &what)
{
    return QStringLiteral("Nothing is written. %1 would be:").arg(what);
}

} // namespace batch
