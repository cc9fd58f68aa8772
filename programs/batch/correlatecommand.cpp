#include "correlation/correlationsheet.h"
#include "correlation/correlationstore.h"
#include "correlation/correlationview.h"
#include "logview/paper/truefeet.h"
#include "logview/trackitem.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/drawing.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"

#include <QGraphicsScene>

namespace batch {

namespace {

// What is wrong with the names of markers that are asked for; empty when nothing is.
QString markersProblem(const QStringList &wanted, const QStringList &known, const QString &correlationName)
{
    for (const QString &name : wanted)
        if (!known.contains(name))
            return QStringLiteral("No well of the correlation \"%1\" has a marker \"%2\"%3.")
                .arg(correlationName, name, insteadOf(name, known));
    return {};
}

// Cuts the panel to depths of the well that stands for it.
DrawnDepths cut(const Drawing &drawing, QGraphicsScene *scene, logview::SheetContents *contents)
{
    if (!drawing.from && !drawing.to)
        return {};
    const logview::DepthAxis whole = contents->axis;
    const DrawnDepths drawn = drawnDepths(drawing, {whole.start, whole.end});
    const double top = whole.toPixel(static_cast<double>(drawn.limits.start));
    const double bottom = whole.toPixel(static_cast<double>(drawn.limits.end));
    contents->top = top;
    contents->axis = {drawn.limits.start, drawn.limits.end, static_cast<float>(bottom - top)};
    scene->setSceneRect(QRectF(0, top, scene->sceneRect().width(), bottom - top));
    return drawn;
}

// What is damaged of all that the panel shows.
QStringList damageOf(Session &session, const CorrelationProperties &properties, const QString &name,
                     const QGraphicsScene &scene)
{
    const WellsCatalogue &catalogue = session.project().catalogue;
    const Damage damage(session);
    QStringList all = damage.ofCorrelation(name);
    QStringList unreadable;
    for (const CorrelationWell &shown : properties.wells) {
        const int index = catalogue.indexOf(shown.wellName);
        if (index < 0)
            continue; // the view's notes tell it
        const host::WellEntry well{shown.wellName, catalogue.wellKey(index)};
        unreadable += damage.ofWell(well);
        all += damage.ofDrawing(well, shown.templateName, scene);
        if (!properties.markers.isEmpty())
            all += damage.ofMarkers(well);
    }
    // The window's words on points and wells name no file.
    if (!all.isEmpty())
        session.asker().takeWarnings();
    if (!unreadable.isEmpty())
        session.host().takeErrors();
    all.removeDuplicates();
    return all;
}

Result run(Session &session, const Arguments &arguments)
{
    const Drawing drawing = drawingOf(arguments);
    if (const QString problem = targetProblem(session, drawing.path); !problem.isEmpty())
        return Result::failed(problem);
    ProjectData &data = session.project();
    const QString name = arguments.operand(0);
    if (const QStringList names = correlationNames(data.project); !names.contains(name))
        return Result::failed(
            QStringLiteral("The survey has no correlation \"%1\"%2.").arg(name, insteadOf(name, names)));
    std::optional<CorrelationProperties> properties =
        correlation::load(data.project, name, correlation::knownNames(data));
    if (!properties)
        return Result::failed(QStringLiteral("The correlation \"%1\" could not be read.").arg(name));
    if (properties->wells.isEmpty())
        return Result::failed(QStringLiteral("The correlation \"%1\" has no wells.").arg(name));

    const QStringList known = markersOf(data, *properties);
    const QString flat = arguments.value(QStringLiteral("--flat"));
    const QString problem =
        markersProblem(drawing.markerNames + (flat.isEmpty() ? QStringList() : QStringList{flat}), known, name);
    if (!problem.isEmpty())
        return Result::failed(problem);
    if (drawing.markers == Drawing::Markers::All)
        properties->markers = known;
    else if (drawing.markers != Drawing::Markers::AsTheyAre)
        properties->markers = drawing.markerNames;
    if (drawing.scale)
        properties->scale = *drawing.scale;

    QGraphicsScene headers;
    CorrelationView view(data, &headers);
    view.setDepthType(drawing.depthType);
    view.setDepthUnit(drawing.unit);
    view.load(*properties, flat);
    view.setFlatMarker(flat); // also at a marker that is not drawn
    view.makeAllWells();
    if (view.tracks().isEmpty())
        return Result::failed(QStringLiteral("The correlation \"%1\" has no tracks: ").arg(name) + view.notes());

    Result result;
    result.failures = damageOf(session, *properties, name, *view.scene());
    if (!view.notes().isEmpty())
        result.notices.append(view.notes());
    const logview::TrueFeet feet(*view.scene(), isPaper(drawing) ? drawing.unit : logview::Metre);
    logview::SheetContents contents = correlation::sheetContents(headers, view);
    const DrawnDepths depths = cut(drawing, view.scene(), &contents);
    if (!depths.problem.isEmpty())
        return Result::failed(QStringLiteral("The correlation \"%1\": ").arg(name) + depths.problem);
    if (!depths.notice.isEmpty())
        result.notices.append(QStringLiteral("The correlation \"%1\": ").arg(name) + depths.notice);
    result.add(drawFile(session, drawing, headers, *view.scene(), contents));
    return result;
}

} // namespace

Command correlateCommand()
{
    Command command = makeCommand(
        "correlate", "Draw a correlation into a picture, or on paper at true scale",
        "Draws a saved correlation as the window shows it, with its own scale and markers where no option says "
        "otherwise. Depths of --from and --to are those of the longest well: flattened, wells stand at different "
        "ones. A correlation that is broader than its paper goes on beside, with whole tracks on each page.",
        "correlate \"Kestrane reservoir\" --out panel.pdf --paper continuous --survey Demo");
    command.operands = {operand("NAME", "the correlation's name", {WordKind::Correlation})};
    command.options = {valueOption("--flat", "MARKER", "Flatten the wells at this marker", {WordKind::PanelMarker})};
    makeDrawing(&command, WordKind::PanelMarker, "Draw at 1:N; the correlation's own scale without it",
                "Draw all markers, none, or those of these names; the correlation's own without it");
    command.run = run;
    return command;
}

} // namespace batch
