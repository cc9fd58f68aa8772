#include "logview/markeritem.h"
#include "logview/paper/displaysheet.h"
#include "logview/paper/truefeet.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "programs/batch/commands.h"
#include "programs/batch/damage.h"
#include "programs/batch/drawing.h"
#include "programs/batch/session.h"
#include "programs/batch/surveynames.h"
#include "programs/batch/tables.h"

#include <QGraphicsView>

namespace batch {

namespace {

// Why the well cannot be drawn with the template, a sentence; empty when it can.
QString shownProblem(const ProjectData &data, const DrawnWell &shown)
{
    // A display knows its well by name.
    if (data.catalogue.wellKey(data.catalogue.indexOf(shown.wellName)) != shown.wellKey)
        return QStringLiteral("Of several wells \"%1\" only the first one can be drawn.").arg(shown.wellName);
    const QStringList known = templatesOf(data.project, shown.wellName);
    if (known.contains(shown.templateName))
        return {};
    if (known.isEmpty())
        return QStringLiteral("The survey has no templates yet. The first command that writes into its project makes "
                              "them, as \"lorva-batch default-logs WELL GROUP=LOG\" or an import; so does the first "
                              "launch of the plug-in.");
    return QStringLiteral("The well \"%1\" has no template \"%2\"%3.")
        .arg(shown.wellName, shown.templateName, insteadOf(shown.templateName, known));
}

// The markers in the order of the well's; \a missing those of other names.
QVector<WellMarker> wantedMarkers(const Drawing &drawing, const QVector<WellMarker> &all, QStringList *missing)
{
    if (drawing.markers == Drawing::Markers::All)
        return all;
    QVector<WellMarker> wanted;
    *missing = drawing.markerNames;
    for (const WellMarker &marker : all) {
        if (!drawing.markerNames.contains(marker.name))
            continue;
        wanted.append(marker);
        missing->removeAll(marker.name);
    }
    return wanted;
}

QStringList namesOf(const QVector<WellMarker> &markers)
{
    QStringList names;
    for (const WellMarker &marker : markers)
        names.append(marker.name);
    return names;
}

/// Puts the markers where the display has their depths; gives the names of those that it has not.
QStringList addMarkers(WellLogsScene &scene, const QString &wellName, const QVector<WellMarker> &markers)
{
    QStringList outside;
    scene.markers().beginChanges();
    for (const WellMarker &marker : markers) {
        const auto depth = static_cast<double>(scene.depthReference().toDisplay(marker.subseaDepth));
        if (!scene.depthAxis().contains(depth)) {
            outside.append(marker.name);
            continue;
        }
        auto *item = new MarkerItem;
        item->setWellName(wellName);
        item->setMarkerName(marker.name);
        item->setDepth(static_cast<float>(marker.subseaDepth));
        item->setLineColor(marker.color);
        item->setPos(0, scene.depthAxis().toScenePixel(depth));
        scene.markers().add(item);
    }
    scene.markers().endChanges();
    return outside;
}

DrawnDepths applyDepths(WellLogsScene &scene, const Drawing &drawing)
{
    WellLogsScenePropertyWidget *panel = scene.panel();
    panel->setDepthType(drawing.depthType);
    panel->setDepthUnit(drawing.unit);
    scene.setDepthType(drawing.depthType);
    scene.setDepthUnit(drawing.unit);
    scene.applyDepthTypeAndUnit();
    DrawnDepths drawn = drawnDepths(drawing, {scene.startDepth(), scene.endDepth()});
    if (!drawn.problem.isEmpty())
        return drawn;
    panel->setStartDepth(drawn.limits.start);
    panel->setEndDepth(drawn.limits.end);
    scene.applyDepthRange();
    if (drawing.scale) {
        panel->setScale(static_cast<float>(*drawing.scale));
        scene.applyScale(static_cast<float>(*drawing.scale));
    }
    return drawn;
}

Result run(Session &session, const Arguments &arguments)
{
    const Drawing drawing = drawingOf(arguments);
    if (const QString problem = targetProblem(session, drawing.path); !problem.isEmpty())
        return Result::failed(problem);
    const DrawnWell shown = drawnWell(session, arguments.operand(0));
    if (!shown.problem.isEmpty())
        return Result::failed(shown.problem);
    ProjectData &data = session.project();
    if (const QString problem = shownProblem(data, shown); !problem.isEmpty())
        return Result::failed(problem);

    const host::WellEntry well{shown.wellName, shown.wellKey};
    const Damage damage(session);
    if (const QStringList unreadable = damage.ofWell(well); !unreadable.isEmpty())
        return Result::failed(unreadable);
    WellDisplayWidget display(data, shown.wellName, shown.templateName, nullptr);
    WellLogsScene &scene = *display.scene();
    if (scene.tracks().isEmpty())
        return Result::failed(QStringLiteral("The template \"%1\" has no tracks.").arg(shown.templateName));
    display.tellUnread();
    const DrawnDepths depths = applyDepths(scene, drawing);
    if (!depths.problem.isEmpty())
        return Result::failed(QStringLiteral("The well \"%1\": ").arg(shown.wellName) + depths.problem);

    Result result;
    result.failures = damage.ofDrawing(well, shown.templateName, scene);
    if (!result.failures.isEmpty())
        session.asker().takeWarnings(); // the window's words on points name no file
    if (!depths.notice.isEmpty())
        result.notices.append(QStringLiteral("The well \"%1\": ").arg(shown.wellName) + depths.notice);
    if (drawing.markers == Drawing::Markers::All || drawing.markers == Drawing::Markers::Named) {
        result.failures += damage.ofMarkers(well);
        const auto all = data.catalogue.readWellMarkers(data.catalogue.indexOf(shown.wellName));
        QStringList missing;
        const QVector<WellMarker> wanted = wantedMarkers(drawing, all.value_or(QVector<WellMarker>()), &missing);
        if (!missing.isEmpty())
            return Result::failed(QStringLiteral("The well \"%1\" has no marker \"%2\"%3.")
                                      .arg(shown.wellName, missing.join(QStringLiteral("\", \"")),
                                           insteadOf(missing.first(), namesOf(all.value_or(QVector<WellMarker>())))));
        for (const QString &name : addMarkers(scene, shown.wellName, wanted))
            if (drawing.markers == Drawing::Markers::Named)
                result.notices.append(QStringLiteral("The marker \"%1\" is outside the depth range.").arg(name));
        scene.markers().setWidth(static_cast<float>(scene.sceneWidth()));
    }
    if (!display.statusText().isEmpty()) // with the way here instead of that in the window
        result.notices.append(display.statusText().replace(
            QStringLiteral("see Well Data Manager"), QStringLiteral("\"lorva-batch default-logs\" sets them.")));
    QGraphicsScene &headers = *display.headerView()->scene();
    const logview::TrueFeet feet(scene, isPaper(drawing) ? drawing.unit : logview::Metre);
    result.add(drawFile(session, drawing, headers, scene, logview::sheetContents(headers, scene)));
    return result;
}

} // namespace

Command renderCommand()
{
    Command command =
        makeCommand("render", "Draw a well's log display into a picture, or on paper at true scale",
                    "Draws a well with a display template as the window shows it. A picture has the window's pixels: "
                    "it is the one that the window's print saves. A PDF or SVG file is paper: 1:N is 1:N when it is "
                    "printed without fitting it to the page; each page has the headers, continues at the depth where "
                    "the last one ended, and tells well, scale, depths and its number.",
                    "render Aldra-1:Simple --out Aldra-1.pdf --scale 500 --markers all --survey Demo");
    command.operands = {operand("WELL[:TEMPLATE]",
                                "the well's name, and behind a colon the template's: \"Default\" without one",
                                {WordKind::DrawnWell})};
    makeDrawing(&command, WordKind::Marker, "Draw at 1:N; 1000 without it",
                "Draw all markers, those of these names, or none: so without the option");
    command.run = run;
    return command;
}

} // namespace batch
