#include "base/leftovers.h"
#include "las/lascopy.h"
#include "programs/batch/commands.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/progress.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"

#include <QFileInfo>

namespace batch {

namespace {

/// "out.las" for the first file, "out_2.las" for the second.
QString pathOf(const QString &out, int number)
{
    if (number == 1)
        return out;
    const QFileInfo file(out);
    const QString name = file.suffix().isEmpty()
        ? QStringLiteral("%1_%2").arg(file.fileName()).arg(number)
        : QStringLiteral("%1_%2.%3").arg(file.completeBaseName()).arg(number).arg(file.suffix());
    return file.path() + QLatin1Char('/') + name;
}

QString writeProblem(const Session &session, const QString &path, const las::LasCopy &copy, Progress *progress)
{
    if (QFileInfo::exists(path) && !session.isForced())
        return existsProblem(path);
    if (session.isDryRun())
        return {};
    const HeldSignals held;
    base::removeLeftovers(QFileInfo(path).path()); // of programs that died while they wrote there
    const base::WriteResult written = las::writeLasCopy(path, copy, [progress](int rows) {
        progress->setDone(rows);
        return !HeldSignals::isOneWaiting();
    });
    return written.ok() ? QString() : QStringLiteral("Cannot write the file %1: %2.").arg(path, written.error);
}

Result run(Session &session, const Arguments &arguments)
{
    const QString path = arguments.operand(0);
    Progress progress(QStringLiteral("Writing rows"), 1); // the second before it shows begins with the reading
    const las::LogFile file = las::readLogs(path);
    if (!file.error.isEmpty())
        return Result::failed(file.error);
    Result result;
    for (const QString &notice : file.notices)
        result.notices.append(QStringLiteral("%1: %2").arg(path, notice));
    const QVector<las::LogSet> sets = las::joinedSets(file.sets);
    if (sets.isEmpty())
        result.failures.append(QStringLiteral("%1 holds no log that could be written.").arg(path));
    las::LasCopy copy{las::readHeader(path).header, {}};
    for (int i = 0; i < sets.size(); ++i) {
        copy.set = sets.at(i);
        const QString out = pathOf(arguments.value(QStringLiteral("--out")), i + 1);
        progress.setTotal(copy.set.depths.size());
        const QString problem = writeProblem(session, out, copy, &progress);
        if (!problem.isEmpty()) {
            result.failures.append(problem);
            continue;
        }
        Record record;
        record[QLatin1String("file")] = out;
        record[QLatin1String("logs")] = QJsonArray::fromStringList(las::copiedNames(copy.set));
        record[QLatin1String("rowCount")] = copy.set.depths.size();
        result.records.append(record);
    }
    return result;
}

} // namespace

Command lasUnwrapCommand()
{
    Command command =
        makeCommand("las-unwrap", "Write a LAS file as a plain one that every program reads",
                    "Reads a LAS file of version 1.2, 2.0 or 3.0 as it is meant (wrapped rows, values between "
                    "blanks, commas, semicolons or tabs, sections of LAS 3.0) and writes its logs as LAS 2.0, one "
                    "line a depth, columns between blanks. Columns of texts are left out and named. Logs that have "
                    "depths of their own go into files FILE_2, FILE_3 and so on.",
                    "las-unwrap Demo/Import/Aldra-1.las --out plain.las");
    command.operands = {operand("FILE", "a LAS file", {WordKind::File})};
    command.options = {required(valueOption("--out", "FILE", "The file to write", {WordKind::File}))};
    command.usesSurvey = false;
    command.writes = true;
    command.replaces = true;
    command.form.key = QStringLiteral("files");
    command.form.fields = {
        textField("file", "File", "path of a file that was written"),
        textsField("logs", "Logs", "names of its logs"),
        countField("rowCount", "Rows", "number of its data lines"),
        isWrittenField(),
    };
    command.run = run;
    return command;
}

} // namespace batch
