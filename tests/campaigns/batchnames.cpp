#include "base/safename.h"
#include "batchtool.h"
#include "datastore/perforationfile.h"
#include "datastore/textfields.h"
#include "nameuses.h"
#include "operations.h"
#include "support/files.h"
#include "survey/laswellproposal.h"
#include "survey/odfile.h"
#include "templates/templatestore.h"
#include "tests/survey/surveyfixture.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace campaign {

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

// No word of a command line can hold it.
bool isWord(const QString &name)
{
    return !name.contains(QChar(0)) && QString::fromUtf8(name.toUtf8()) == name;
}

QString problemOf(const BatchOutcome &outcome)
{
    if (outcome.isDone())
        return {};
    const QString said = outcome.refusal + outcome.failures.join(QLatin1Char(' '));
    return said.isEmpty() ? text("it says nothing") : said;
}

QString copyTemplate(Place &place, const QString &name, int)
{
    if (!isWord(name))
        return text("no word");
    return problemOf(runBatchHere(place.survey(), {text("template"), text("copy")}, {text("Simple"), name}));
}

// A new name is taken without the blanks around it, as the template window takes it.
int findTemplate(Place &place, const QString &typed)
{
    const QString name = typed.trimmed();
    const bool isShown = runBatchHere(place.survey(), {text("template"), text("show")}, {name}).records.size() > 0;
    return isShown && !loadTemplate(place.data.project, TemplateId::global(name)).isEmpty() ? 0 : -1;
}

bool deleteTemplate(Place &place, const QString &name)
{
    return runBatchHere(place.survey(), {text("template"), text("delete")}, {name.trimmed()}).isDone();
}

// The well is stored first: its templates, its name and its files are what the tool is asked for.
QString addWell(Place &place, const QString &name, int number)
{
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.name == name.trimmed())
            return text("it is there");
    survey::WellProperties well = survey_fixture::properties("");
    well.name = name;
    well.totalDepth = 1000 + number;
    const host::Outcome<QString> added = place.wells().addWell(well);
    if (!added.ok())
        return added.error;
    return place.wells().writeLog(added.value, logOfState("GR", number)).error;
}

int findWell(Place &place, const QString &name)
{
    const QString asked = name.trimmed();
    if (!isWord(asked))
        return 0;
    for (const char *command : {"logs", "markers", "zones", "default-logs"})
        if (!runBatchHere(place.survey(), {text(command)}, {asked}).isDone())
            return -1;
    const QVector<batch::Record> records = runBatchHere(place.survey(), {text("info")}, {asked}).records;
    return records.size() == 1 ? qRound(records.first().value(QLatin1String("totalDepth")).toDouble()) - 1000 : -1;
}

QString exportWell(Place &place, const QString &name, int number)
{
    const QString refusal = addWell(place, name, number);
    const QString asked = name.trimmed();
    if (!refusal.isEmpty() || !isWord(asked))
        return refusal.isEmpty() ? QString() : refusal;
    QString problem;
    for (const char *format : {"las", "columns"})
        problem += problemOf(runBatchHere(place.survey(),
                                          {text("export"), text("--out"), place.file(""), text("--format"),
                                           text(format), text("--jobs"), text("1")},
                                          {asked}));
    if (!problem.isEmpty()) // the well is stored: that it has no file is a loss
        qWarning("%s", qPrintable(problem));
    return {};
}

int findExportedWell(Place &place, const QString &name)
{
    const QString asked = name.trimmed();
    if (!isWord(asked))
        return 0;
    const QString folder = place.file("") + base::fileNameFor(asked);
    const bool isLasThere = QFileInfo::exists(place.file("") + base::fileNameFor(asked, 4) + text(".las"));
    return isLasThere && files::read(folder + text("/GR.txt")).startsWith(asked.toUtf8() + "\tGR\n") ? 0 : -1;
}

QByteArray lasText(const QString &wellName, int number)
{
    return "~V\nVERS. 2.0:\nWRAP. NO:\n~W\nSTRT.M 100:\nSTOP.M 102:\nSTEP.M 1:\nNULL. -999.25:\nWELL. "
        + wellName.toUtf8() + ":\n~C\nDEPT.M :\nGR.GAPI :\n~A\n100 1\n101 1\n102 " + QByteArray::number(number)
        + '\n';
}

QString writeLas(const QString &path, const QString &wellName, int number)
{
    files::write(path, lasText(wellName, number));
    return path;
}

// As a reader of the header has it.
QString proposedName(const QString &name)
{
    const QTemporaryDir folder;
    const QString path = writeLas(folder.filePath(text("name.las")), name, 1);
    return survey::proposeWell(path, las::readHeader(path).header).name.trimmed();
}

QString importWell(Place &place, const QString &name, int number)
{
    const QTemporaryDir folder;
    return problemOf(runBatchHere(place.survey(), {text("import"), text("--new-wells"), text("--jobs"), text("1")},
                                  {writeLas(folder.filePath(text("name.las")), name, number)}));
}

int findImportedWell(Place &place, const QString &name)
{
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.name == proposedName(name))
            return static_cast<int>(place.wells().log(well.key, 0).value.values.value(2));
    return -1;
}

QString renameImportedLog(Place &place, const QString &name, int number)
{
    if (!isWord(name))
        return text("no word");
    const QTemporaryDir folder;
    return problemOf(runBatchHere(
        place.survey(),
        {text("import"), text("--well"), text("B"), text("--rename"), text("GR=") + name, text("--jobs"), text("1")},
        {writeLas(folder.filePath(text("log.las")), text("B"), number)}));
}

int findLog(Place &place, const QString &name)
{
    const int index = indexOfLog(place, Place::secondWell, name);
    return index < 0 ? -1 : static_cast<int>(place.wells().log(Place::secondWell, index).value.values.value(2));
}

bool isField(const QString &name)
{
    return !name.contains(QLatin1Char('\t')) && textfields::trimmedLine(name) == name.trimmed()
        && QString::fromUtf8(name.toUtf8()) == name && !name.contains(QChar(0)) && !name.trimmed().isEmpty();
}

QString importTable(Place &place, const QString &command, const QString &name, const QByteArray &columns)
{
    if (!isField(name))
        return text("no field of a file");
    const QTemporaryDir folder;
    const QString path = folder.filePath(text("table.txt"));
    files::write(path, "Other\t5\t6\tOil\n" + name.toUtf8() + columns + '\n');
    return problemOf(runBatchHere(place.survey(), {command, text("--import"), path}, {text("B")}));
}

QString importMarkers(Place &place, const QString &name, int number)
{
    return importTable(place, text("markers"), name, '\t' + QByteArray::number(10 + number));
}

int findMarker(Place &place, const QString &name)
{
    for (const host::Marker &marker : place.wells().markers(Place::secondWell).value)
        if (marker.name == survey::storedText(name.trimmed()))
            return static_cast<int>(marker.depth) - 10;
    return -1;
}

QString importZones(Place &place, const QString &name, int number)
{
    const QByteArray top = QByteArray::number(number);
    return importTable(place, text("zones"), name, '\t' + top + '\t' + top + "\tOil");
}

int findZone(Place &place, const QString &name)
{
    const PerforationRecord record = readPerforation(place.project(), text("B"));
    const int index = record.names.indexOf(name.trimmed());
    return index < 0 ? -1 : static_cast<int>(record.tops.at(index));
}

// Each command that is given the name of something that is not there.
QString askForNothing(Place &place, const QString &name, int)
{
    if (!isWord(name))
        return {};
    const QString out = place.file("nothing.pdf");
    const QVector<QStringList> commands{
        {text("info")},
        {text("logs")},
        {text("markers")},
        {text("zones")},
        {text("default-logs")},
        {text("export"), text("--out"), place.file("")},
        {text("render"), text("--out"), out},
        {text("correlate"), text("--out"), out},
        {text("template"), text("show")},
        {text("template"), text("delete"), text("--well=A")},
        {text("template"), text("list"), text("--well=") + name},
        {text("las")},
        {text("las-unwrap"), text("--out"), place.file("nothing.las")},
        {text("import"), text("--well=") + name, text("--jobs"), text("1")},
        {text("wells"), text("--survey=") + name},
    };
    for (const QStringList &command : commands)
        (void)runBatchHere(place.survey(), command, {name});
    (void)runBatchHere(place.survey(), {text("render"), text("--out"), out}, {text("A:no such ") + name});
    (void)runBatchHere(place.survey(), {text("points")}, {name, text("Gamma")});
    (void)runBatchHere(place.survey(), {text("points")}, {text("A"), name});
    (void)runBatchHere(place.survey(), {text("default-logs")}, {text("A"), text("Gamma=") + name});
    (void)runBatchHere(place.survey(), {text("correlate"), text("--out"), out, text("--flat=") + name}, {name});
    (void)runBatchHere(place.survey(), {text("markers"), text("--import=") + name}, {text("A")});
    return {};
}

int findNothing(Place &, const QString &)
{
    return 0;
}

// A file that the user names, where there can be one.
QString writeFile(Place &place, const QString &name, int number)
{
    if (!isWord(name) || !base::isPathComponent(name) || base::isReservedName(name))
        return text("no name of a file");
    const QTemporaryDir folder;
    const QString in = writeLas(folder.filePath(text("in.las")), text("A"), number);
    return problemOf(
        runBatchHere(place.survey(), {text("las-unwrap"), text("--out=") + place.file("") + name}, {in}));
}

int findFile(Place &place, const QString &name)
{
    const QString path = place.file("") + name;
    if (!QFileInfo::exists(path))
        return -1;
    const QByteArray bytes = files::read(path).trimmed();
    return static_cast<int>(bytes.mid(bytes.lastIndexOf(' ') + 1).toDouble());
}

} // namespace

std::vector<NameUse> batchNameUses()
{
    const QStringList out{text("out/")};
    const QStringList wells{text("survey/WellInfo/")};
    const QStringList import = wells + QStringList{text("survey/WLC/CurveGroups/"), text("survey/WLC/DefaultLogs/")};
    const auto trimmed = [](const QString &name) { return name.trimmed(); };
    return {
        {"template copied by the batch tool",
         {text("survey/WLC/Templates/Global/")},
         copyTemplate,
         findTemplate,
         deleteTemplate,
         trimmed},
        {"well that the batch tool reads", wells, addWell, findWell, {}, trimmed},
        {"well exported by the batch tool", wells + out, exportWell, findExportedWell, {}, trimmed},
        {"well imported by the batch tool", import, importWell, findImportedWell, {}, proposedName},
        {"log named by the batch tool", import, renameImportedLog, findLog, {}, logForm},
        {"marker imported by the batch tool",
         wells,
         importMarkers,
         findMarker,
         {},
         [](const QString &) { return text("A"); }},
        {"zone imported by the batch tool",
         {text("survey/WLC/")},
         importZones,
         findZone,
         {},
         [](const QString &) { return text("A"); }},
        {"name of nothing, given to the batch tool", {}, askForNothing, findNothing, {}, {}},
        {"file written by the batch tool", out, writeFile, findFile, {}, {}},
    };
}

} // namespace campaign
