#include "base/safename.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"
#include "templates/templatestore.h"

namespace batch {

namespace {

constexpr char wellOption[] = "--well";
constexpr char toWellOption[] = "--to-well";

/// The template of that name: the well's own where an option names one, else a global one.
host::Outcome<TemplateId> templateOf(Session &session, const Arguments &arguments, const QString &name,
                                     const char *option)
{
    const QString given = arguments.value(QLatin1String(option));
    if (given.isEmpty())
        return {TemplateId::global(name), {}};
    const host::Outcome<host::WellEntry> well = session.well(given);
    return {TemplateId::ofWell(well.value.name, name), well.error};
}

QString shown(const TemplateId &which)
{
    return which.isGlobal ? QStringLiteral("The template \"%1\"").arg(which.name)
                          : QStringLiteral("The template \"%1\" of the well \"%2\"").arg(which.name, which.wellName);
}

QString missingProblem(const Project &project, const TemplateId &which)
{
    QStringList known = which.isGlobal ? project.globalTemplateNames : wellTemplateNames(project, which.wellName);
    known.sort();
    return shown(which) + QStringLiteral(" does not exist%1.").arg(insteadOf(which.name, known));
}

/// The template that the first operand names; an error where there is none.
host::Outcome<TemplateId> existingTemplate(Session &session, const Project &project, const Arguments &arguments)
{
    const auto which = templateOf(session, arguments, arguments.operand(0), wellOption);
    if (which.ok() && !templateExists(project, which.value))
        return {{}, missingProblem(project, which.value)};
    return which;
}

Record recordOf(const Project &project, const TemplateId &which)
{
    Record record;
    record[QLatin1String("name")] = which.name;
    record[QLatin1String("well")] = which.isGlobal ? QJsonValue() : QJsonValue(which.wellName);
    record[QLatin1String("trackCount")] = loadTemplate(project, which).size();
    return record;
}

QVector<Field> listFields()
{
    return {textField("name", "Template", "its name"),
            textField("well", "Well", "the well that it belongs to; null for one that every well may use"),
            countField("trackCount", "Tracks", "number of its tracks")};
}

Result runList(Session &session, const Arguments &arguments)
{
    const Project project = session.projectPaths();
    Result result;
    QStringList wells;
    if (arguments.has(QLatin1String(wellOption))) {
        const host::Outcome<host::WellEntry> well = session.well(arguments.value(QLatin1String(wellOption)));
        if (!well.ok())
            return Result::failed(well.error);
        wells.append(well.value.name);
    } else {
        QStringList globals = project.globalTemplateNames;
        globals.sort();
        for (const QString &name : qAsConst(globals))
            result.records.append(recordOf(project, TemplateId::global(name)));
        for (const host::WellEntry &well : session.store().list().value)
            wells.append(well.name);
        wells.removeDuplicates();
    }
    for (const QString &well : qAsConst(wells))
        for (const QString &name : wellTemplateNames(project, well))
            result.records.append(recordOf(project, TemplateId::ofWell(well, name)));
    return result;
}

Result runShow(Session &session, const Arguments &arguments)
{
    const Project project = session.projectPaths();
    const auto which = existingTemplate(session, project, arguments);
    if (!which.ok())
        return Result::failed(which.error);
    Result result;
    result.failures = Damage(session).ofTemplate(which.value);
    for (const TrackInfo &track : loadTemplate(project, which.value)) {
        Record record;
        record[QLatin1String("track")] = track.name;
        record[QLatin1String("type")] = track.type == LinearTrack ? QStringLiteral("linear")
            : track.type == LogarithmicTrack                      ? QStringLiteral("logarithmic")
                                                                  : QStringLiteral("depth");
        QJsonArray curves;
        for (const TemplateCurveInfo &curve : track.curves)
            curves.append(QJsonObject{
                {QStringLiteral("group"), curve.group},
                {QStringLiteral("curve"), curve.curve},
                {QStringLiteral("left"), jsonNumber(curve.minimum)},
                {QStringLiteral("right"), jsonNumber(curve.maximum)},
                {QStringLiteral("color"), curve.color.isValid() ? QJsonValue(curve.color.name()) : QJsonValue()},
                {QStringLiteral("showsPoints"), curve.isCalibrationShown}});
        record[QLatin1String("curves")] = curves;
        result.records.append(record);
    }
    return result;
}

Result runCopy(Session &session, const Arguments &arguments)
{
    const auto from = templateOf(session, arguments, arguments.operand(0), wellOption);
    const auto to = templateOf(session, arguments, arguments.operand(1).trimmed(), toWellOption);
    for (const QString &error : {from.error, to.error, base::typedNameProblem(to.value.name)})
        if (!error.isEmpty())
            return Result::failed(error);
    const Project project = session.projectPaths();
    if (!templateExists(project, from.value))
        return Result::failed(missingProblem(project, from.value));
    const auto files = templateFiles(project, from.value);
    if (!files)
        return Result::failed(shown(from.value) + QStringLiteral(" cannot be read."));
    if (const QStringList damage = Damage(session).ofTemplate(from.value); !damage.isEmpty())
        return Result::failed(
            QStringLiteral("%1 is damaged and not copied. %2").arg(shown(from.value), damage.join(QLatin1Char(' '))));
    if (templateExists(project, to.value) && !session.isForced())
        return Result::failed(existsProblem(shown(to.value)));
    if (session.isDryRun()) {
        Record copy = recordOf(project, from.value);
        copy[QLatin1String("name")] = to.value.name;
        copy[QLatin1String("well")] = to.value.isGlobal ? QJsonValue() : QJsonValue(to.value.wellName);
        return Result::of(copy, QStringLiteral("Nothing is written. The copy would be:"));
    }
    const HeldSignals held;
    const base::ReplaceResult saved = saveTemplate(session.projectToWrite().project, to.value, *files);
    if (!saved.ok())
        return Result::failed(
            QStringLiteral("%1 was not saved; what was stored is as it was. %2").arg(shown(to.value), saved.error));
    return Result::of(recordOf(project, to.value), QStringLiteral("The copy is:"));
}

Result runDelete(Session &session, const Arguments &arguments)
{
    const Project project = session.projectPaths();
    const auto which = existingTemplate(session, project, arguments);
    if (!which.ok())
        return Result::failed(which.error);
    if (!session.isForced())
        return Result::failed(shown(which.value) + QStringLiteral(" is deleted only with --force."));
    const Record record = recordOf(project, which.value);
    if (session.isDryRun())
        return Result::of(record, QStringLiteral("Nothing is written. This template would be deleted:"));
    const HeldSignals held;
    if (!removeTemplate(project, which.value))
        return Result::failed(shown(which.value) + QStringLiteral(" cannot be deleted."));
    return Result::of(record, QStringLiteral("This template is deleted:"));
}

Command templateCommand(const char *name, const char *summary, const char *description, const char *example)
{
    Command command = makeCommand(name, summary, description, example);
    command.form.key = QStringLiteral("templates");
    command.form.fields = listFields();
    return command;
}

void makeWriting(Command *command)
{
    command->writes = true;
    command->replaces = true;
    command->form.fields.append(isWrittenField(""));
}

Option ofWell(const char *name, const char *help)
{
    return valueOption(name, "WELL", help, {WordKind::Well});
}

} // namespace

Command templateListCommand()
{
    Command command =
        templateCommand("template list", "List the display templates",
                        "Lists the templates that every well may use, then those of the wells, by name.",
                        "template list --survey Demo");
    command.options = {ofWell(wellOption, "Only the templates of this well")};
    command.form.whenEmpty = QStringLiteral("There are no templates.");
    command.run = runList;
    return command;
}

Command templateShowCommand()
{
    Command command = templateCommand("template show", "Tell the tracks and curves of a display template",
                                      "Tells the tracks from left to right, each with its curves.",
                                      "template show Petrophysics --survey Demo");
    command.operands = {operand("NAME", "the template", {WordKind::Template})};
    command.options = {ofWell(wellOption, "The well that the template belongs to")};
    command.form.key = QStringLiteral("tracks");
    command.form.layout = ResultForm::Layout::Sheet;
    command.form.fields = {
        textField("track", "Track", "its name"),
        textField("type", "Type", "linear, logarithmic or depth"),
        recordsField(
            "curves", "Curves", "its curves",
            {textField("group", "Group", "curve group"),
             textField("curve", "Curve", "name of a log, or Default for the well's default log of the group"),
             numberField("left", "Left", "value at the left side of the track"),
             numberField("right", "Right", "value at its right side"),
             textField("color", "Colour", "colour of the line as #rrggbb; null for a depth, which has no line"),
             flagField("showsPoints", "Points", "whether calibration points are shown")}),
    };
    command.run = runShow;
    return command;
}

Command templateCopyCommand()
{
    Command command = templateCommand("template copy", "Copy a display template",
                                      "Copies a template, a global one or a well's own, to a new name. The copy is "
                                      "for every well unless --to-well names one.",
                                      "template copy Petrophysics Mine --to-well Aldra-1 --survey Demo");
    command.operands = {operand("FROM", "the template", {WordKind::Template}), operand("TO", "the name of the copy")};
    command.options = {ofWell(wellOption, "The well that the template belongs to"),
                       ofWell(toWellOption, "The well that the copy is to belong to")};
    makeWriting(&command);
    command.run = runCopy;
    return command;
}

Command templateDeleteCommand()
{
    Command command = templateCommand(
        "template delete", "Delete a display template",
        "Deletes a template; --force is needed. The templates Default and Simple come back with the next launch.",
        "template delete Mine --well Aldra-1 --force --survey Demo");
    command.operands = {operand("NAME", "the template", {WordKind::Template})};
    command.options = {ofWell(wellOption, "The well that the template belongs to")};
    makeWriting(&command);
    command.run = runDelete;
    return command;
}

} // namespace batch
