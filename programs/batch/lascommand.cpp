#include "las/lasheader.h"
#include "las/logreader.h"
#include "las/rowcheck.h"
#include "las/wellinfo.h"
#include "programs/batch/commands.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"
#include "programs/batch/wellimport.h"
#include "programs/batch/workers.h"
#include "survey/laswellproposal.h"

#include <algorithm>

namespace batch {

namespace {

QString kindText(las::RowFinding::Kind kind)
{
    switch (kind) {
    case las::RowFinding::Kind::Text:
        return QStringLiteral("no number");
    case las::RowFinding::Kind::NoDepth:
        return QStringLiteral("no depth");
    case las::RowFinding::Kind::RepeatedDepth:
        return QStringLiteral("repeated depth");
    case las::RowFinding::Kind::TurningDepth:
        return QStringLiteral("depth turns");
    case las::RowFinding::Kind::OddStep:
        return QStringLiteral("other step");
    case las::RowFinding::Kind::OtherCount:
        return QStringLiteral("number of values");
    }
    return {};
}

Record curveRecord(const LogCurveData &curve, const WellInfo &file)
{
    const auto isMissing = [&file](double value) { return file.hasNullValue && value == file.nullValue; };
    Record record;
    record[QLatin1String("name")] = curve.logName;
    record[QLatin1String("unit")] = curve.unit;
    record[QLatin1String("description")] = curve.description;
    record[QLatin1String("sampleCount")] = curve.values.size();
    record[QLatin1String("missingCount")] =
        static_cast<int>(std::count_if(curve.values.begin(), curve.values.end(), isMissing));
    if (curve.depths.isEmpty())
        return record;
    record[QLatin1String("startDepth")] = jsonNumber(curve.depths.first());
    record[QLatin1String("endDepth")] = jsonNumber(curve.depths.last());
    return record;
}

QJsonArray findingsOf(const WellInfo &file)
{
    QJsonArray list;
    const las::RowFindings findings = las::checkRows(file);
    for (const las::RowFinding &finding : findings.first)
        list.append(QJsonObject{{QStringLiteral("line"), finding.line},
                                {QStringLiteral("kind"), kindText(finding.kind)},
                                {QStringLiteral("text"), finding.text},
                                {QStringLiteral("lineCount"), findings.count(finding.kind)}});
    return list;
}

int logCountOfUnwrapping(const QString &path)
{
    return las::readLogs(path).logCount();
}

QJsonArray sectionsOf(const WellInfo &file)
{
    QJsonArray list;
    for (const LasDataSection &section : file.dataSections)
        list.append(QJsonObject{{QStringLiteral("line"), section.titleLine},
                                {QStringLiteral("curveCount"), section.curveCount},
                                {QStringLiteral("rowCount"), section.rowCount},
                                {QStringLiteral("unevenRowCount"), section.unevenRowCount}});
    return list;
}

/// What the import leaves out or reads wrongly and las-unwrap does not.
bool needsUnwrapping(const WellInfo &file, int samples)
{
    int uneven = 0;
    for (const LasDataSection &section : file.dataSections)
        uneven += section.unevenRowCount;
    return file.wrapped || file.dataSections.isEmpty() || samples == 0 || uneven > 0;
}

Result describe(const QString &path)
{
    const las::HeaderResult header = las::readHeader(path);
    if (!header.error.isEmpty())
        return Result::failed(header.error);
    WellInfo file;
    if (file.load(path) != 0 && !file.isTooLarge)
        return Result::failed(QStringLiteral("%1: it cannot be read.").arg(path));
    Record record;
    record[QLatin1String("file")] = path;
    record[QLatin1String("well")] = survey::proposeWell(path, header.header).name;
    record[QLatin1String("uwi")] = file.uwi;
    record[QLatin1String("version")] = file.version;
    record[QLatin1String("isWrapped")] = file.wrapped;
    record[QLatin1String("depthUnit")] = file.depthUnit;
    record[QLatin1String("startDepth")] = jsonNumber(file.startDepth);
    record[QLatin1String("stopDepth")] = jsonNumber(file.stopDepth);
    record[QLatin1String("step")] = jsonNumber(file.step);
    record[QLatin1String("nullValue")] = file.hasNullValue ? jsonNumber(file.nullValue) : QJsonValue();
    record[QLatin1String("sections")] = sectionsOf(file);
    QJsonArray curves;
    int samples = 0;
    for (const LogCurveData &curve : qAsConst(file.curves)) {
        curves.append(curveRecord(curve, file));
        samples = qMax(samples, curve.values.size());
    }
    record[QLatin1String("curves")] = curves;
    QStringList notices = fileNotices(file, false);
    const QString problem = importProblem(file);
    if (!problem.isEmpty() && !file.wrapped && !file.isTooLarge) // those are among them
        notices.append(QStringLiteral("The import refuses it: ") + problem);
    if (needsUnwrapping(file, samples)) {
        const int logs = logCountOfUnwrapping(path);
        if (logs > 0)
            notices.append(
                QStringLiteral(
                    "\"lorva-batch las-unwrap\" would make a file of %1 logs of it that the import can take.")
                    .arg(logs));
    }
    record[QLatin1String("isImportable")] = problem.isEmpty();
    record[QLatin1String("notices")] = QJsonArray::fromStringList(notices);
    record[QLatin1String("findings")] = findingsOf(file);
    return Result::of(record);
}

Result run(Session &session, const Arguments &arguments)
{
    const QStringList &files = arguments.operands();
    return runPieces(QStringLiteral("Reading"), files, session.jobs(),
                     [&files](int number) { return describe(files.at(number)); });
}

} // namespace

Command lasCommand()
{
    Command command = makeCommand(
        "las", "Tell what LAS files hold and what the import would make of them",
        "Reads each file as the import of the window does and tells what it takes and what it would read wrongly: "
        "wrapped data, repeated sections, lines with too few or too many values, values that are no numbers, depths "
        "that repeat, turn or leave their step. Lines are counted from 1; of each kind the first ten are named, but "
        "of a wrapped file none. It tells why the import refuses a file, if it does; what is no LAS file is a "
        "failure. "
        "Nothing is written.",
        "las Demo/Import/Aldra-1.las");
    command.operands = {repeatable(operand("FILE", "a LAS file", {WordKind::File}))};
    command.usesSurvey = false;
    command.usesCores = true;
    command.form.key = QStringLiteral("files");
    command.form.layout = ResultForm::Layout::Sheet;
    command.form.fields = {
        textField("file", "File", "its path as given"),
        textField("well", "Well", "the name that a new well made from it would have"),
        textField("uwi", "UWI", "unique well id; the import looks for a well of this name"),
        textField("version", "LAS version", "as the file says"),
        flagField("isWrapped", "Wrapped", "whether a depth step spans several lines"),
        flagField("isImportable", "Importable",
                  "whether the import takes logs from it, for a well that is deep enough"),
        textField("depthUnit", "Depths in", "unit of the start depth"),
        numberField("startDepth", "Start", "start depth of the header, in that unit"),
        numberField("stopDepth", "Stop", "stop depth of the header"),
        numberField("step", "Step", "step of the header"),
        numberField("nullValue", "Null value", "what stands for no value; null where the file names none"),
        recordsField("sections", "Data sections", "the data sections that have curves",
                     {countField("line", "Line", "line of the title"), countField("curveCount", "Curves", "columns"),
                      countField("rowCount", "Rows", "data lines"),
                      countField("unevenRowCount", "Uneven", "lines with more or fewer values than columns")}),
        recordsField("curves", "Curves", "the curves that the file names, the depth among them",
                     {textField("name", "Curve", "mnemonic"), textField("unit", "Unit", "unit"),
                      numberField("startDepth", "From", "depth of the first sample, in the file's unit"),
                      numberField("endDepth", "To", "depth of the last sample"),
                      countField("sampleCount", "Samples", "number of samples"),
                      countField("missingCount", "Missing", "samples that are the null value"),
                      textField("description", "Description", "what the file says of it")}),
        textsField("notices", "Notices", "what to know before an import"),
        recordsField("findings", "Lines", "data lines that are unusual, the first ten of each kind",
                     {countField("line", "Line", "its number in the file"),
                      textField("kind", "What",
                                "no number, no depth, repeated depth, depth turns, other step or number of values"),
                      textField("text", "Text", "what stands there"),
                      countField("lineCount", "Of", "how many lines of this kind the file has")}),
    };
    command.run = run;
    return command;
}

} // namespace batch
