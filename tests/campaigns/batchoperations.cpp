#include "batchtool.h"
#include "correlation/correlationstore.h"
#include "operations.h"
#include "support/files.h"
#include "templates/templatestore.h"
#include "tests/survey/surveyfixture.h"

#include <QDir>
#include <QFileInfo>

namespace campaign {

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

Saved runTool(const Place &place, const QStringList &words)
{
    const BatchOutcome outcome = runBatchHere(place.survey(), words);
    if (!outcome.refusal.isEmpty())
        qFatal("%s", qPrintable(outcome.refusal));
    return {outcome.failures.isEmpty(), outcome.failures};
}

// A file to be read, which is there before anything fails.
QString input(const Place &place, const char *name, int state, const QByteArray &bytes)
{
    const QString path = place.file("") + QString::number(state) + QString::fromUtf8(name);
    if (!QFileInfo::exists(path))
        files::write(path, bytes);
    return path;
}

QByteArray lasText(int state)
{
    QByteArray rows;
    for (int i = 0; i < 60; ++i)
        rows += QByteArray::number(100 + i) + ' ' + QByteArray::number(i % 7 + state) + ' ' + QByteArray::number(i)
            + '\n';
    return "~V\nVERS. 2.0:\nWRAP. NO:\n~W\nSTRT.M 100:\nSTOP.M 159:\nSTEP.M 1:\nNULL. -999.25:\nWELL. New one:\n"
           "~C\nDEPT.M :\nGR.GAPI :\nRT.OHMM :\n~A\n"
        + rows;
}

std::function<Saved(Place &, int)> drawing(const char *file)
{
    return [file](Place &place, int state) {
        return runTool(place,
                       {text("render"), text("A:Simple"), text("--out"), place.file(file), text("--scale"),
                        state == 1 ? text("3000") : text("5000")});
    };
}

std::function<Saved(Place &, int)> correlation(const char *file)
{
    return [file](Place &place, int state) {
        const Project &project = place.data.project;
        if (!correlation::exists(project, text("Drawn"))) {
            CorrelationProperties properties;
            properties.name = text("Drawn");
            properties.wells = {{text("A"), text("Simple")}, {text("B"), text("Simple")}};
            (void)correlation::write(project, properties);
        }
        return runTool(place,
                       {text("correlate"), text("Drawn"), text("--out"), place.file(file), text("--scale"),
                        state == 1 ? text("3000") : text("5000")});
    };
}

Saved exportLas(Place &place, int state)
{
    return runTool(place,
                   {text("export"), text("B"), text("--interval"), state == 1 ? text("1") : text("0.5"),
                    text("--out"), place.file(""), text("--jobs"), text("1")});
}

Saved exportColumns(Place &place, int state)
{
    if (state == 0) {
        QDir(place.file("B")).removeRecursively();
        return savedAs({});
    }
    return runTool(place,
                   {text("export"), text("B"), text("--logs"), text("GR"), text("--format"), text("columns"),
                    text("--out"), place.file(""), text("--jobs"), text("1")});
}

Saved importLog(Place &place, int state)
{
    return runTool(place,
                   {text("import"), input(place, "import.las", state, lasText(state)), text("--well"), text("A"),
                    text("--curves"), text("GR"), text("--jobs"), text("1")});
}

Saved importNewWell(Place &place, int state)
{
    QString key;
    for (const host::WellEntry &well : place.wells().list().value)
        if (well.name == QLatin1String("New one"))
            key = well.key;
    if (key.isEmpty() == (state == 0))
        return savedAs({});
    if (state == 0)
        return savedAs(place.wells().removeWell(key).error);
    return runTool(
        place,
        {text("import"), input(place, "import.las", 1, lasText(1)), text("--new-wells"), text("--jobs"), text("1")});
}

Saved unwrap(Place &place, int state)
{
    return runTool(place,
                   {text("las-unwrap"), input(place, "import.las", state, lasText(state)), text("--out"),
                    place.file("plain.las")});
}

std::function<Saved(Place &, int)> report(const char *name, const QStringList &files)
{
    return [=](Place &place, int state) {
        if (state == 1)
            return runTool(place, {text("report"), text(name)});
        for (const QString &file : files)
            QFile::remove(place.project() + QLatin1Char('/') + file);
        return savedAs({});
    };
}

// Lines of names or depths, and what else the columns hold.
std::function<Saved(Place &, int)> tableImport(const QStringList &command, const char *firstColumn,
                                               const char *otherColumns)
{
    return [=](Place &place, int state) {
        QByteArray rows;
        for (int i = 0; i < 30; ++i)
            rows += QByteArray(firstColumn) + QByteArray::number(10 * i + state) + QByteArray(otherColumns)
                + QByteArray::number(10 * i + 5 + state) + '\n';
        const QByteArray name = command.first().toLatin1() + ".txt";
        return runTool(place, command + QStringList{text("--import"), input(place, name.constData(), state, rows)});
    };
}

Saved defaultLogs(Place &place, int state)
{
    return runTool(place,
                   {text("default-logs"), text("B"), text("Gamma="), text("Resistivity="),
                    state == 1 ? text("Porosity=GR") : text("Porosity=RT")});
}

Saved copyTemplate(Place &place, int state)
{
    return runTool(place,
                   {text("template"), text("copy"), state == 1 ? text("Default") : text("Simple"), text("Copied")});
}

Saved addOrDeleteTemplate(Place &place, int state)
{
    if (state == 1)
        return runTool(place,
                       {text("template"), text("copy"), text("Simple"), text("Tool"), text("--to-well"), text("B")});
    if (!templateExists(place.data.project, TemplateId::ofWell(text("B"), text("Tool"))))
        return savedAs({});
    return runTool(place, {text("template"), text("delete"), text("Tool"), text("--well"), text("B")});
}

} // namespace

std::vector<Operation> batchOperations()
{
    using Unit = Operation::Unit;
    return {
        {"PNG picture of the batch tool", "tool.png", Unit::All, false, drawing("tool.png"), 50000},
        {"JPEG picture of the batch tool", "tool.jpg", Unit::All, false, drawing("tool.jpg"), 50000},
        {"TIFF picture of the batch tool", "tool.tiff", Unit::All, false, drawing("tool.tiff"), 50000},
        {"PDF of the batch tool", "tool.pdf", Unit::All, false, drawing("tool.pdf"), 50000},
        {"SVG of the batch tool", "tool.svg", Unit::All, false, drawing("tool.svg"), 50000},
        {"picture of a correlation", "correlated.png", Unit::All, false, correlation("correlated.png"), 50000},
        {"PDF of a correlation", "correlated.pdf", Unit::All, false, correlation("correlated.pdf"), 50000},
        {"export of the batch tool", "B.las", Unit::All, false, exportLas, 20000},
        {"columns of the batch tool", "B/GR.txt", Unit::All, true, exportColumns},
        {"log imported by the batch tool", "", Unit::File, false, importLog, 20000},
        {"well imported by the batch tool", "", Unit::File, false, importNewWell, 20000},
        {"LAS file made plain by the batch tool", "plain.las", Unit::All, false, unwrap, 20000},
        {"logs report of the batch tool", "Unable to create logs information file", Unit::File, true,
         report("logs", {text("A_logsInfo.txt"), text("B_logsInfo.txt")})},
        {"markers report of the batch tool", "Unable to create logs information file", Unit::All, true,
         report("markers", {text("Well_Markers_Info.txt")})},
        {"markers imported by the batch tool", "Cannot write new markers to disk", Unit::All, false,
         tableImport({text("markers"), text("A")}, "Top ", "\t"), 20000},
        {"zones imported by the batch tool", "Unable to create file", Unit::All, false,
         tableImport({text("zones"), text("A"), text("--type-column"), text("2"), text("--start-column"), text("3"),
                      text("--end-column"), text("4")},
                     "Zone ", "\tOil\t1\t"),
         20000},
        {"points imported by the batch tool", "Unable to create file", Unit::All, false,
         tableImport({text("points"), text("A"), text("Gamma")}, "", "\t"), 20000},
        {"default logs of the batch tool", "DefaultLogs/B", Unit::File, false, defaultLogs, 20000},
        {"template copied by the batch tool", "\"Copied\"", Unit::All, false, copyTemplate, 20000},
        {"template added or deleted by the batch tool", "\"Tool\"", Unit::All, false, addOrDeleteTemplate, 20000},
    };
}

} // namespace campaign
