#pragma once

#include "logview/paper/sheet.h"
#include "programs/batch/command.h"

QT_BEGIN_NAMESPACE
class QGraphicsScene;
QT_END_NAMESPACE

/// What the commands that draw a display into a file have in common.
namespace batch {

/// Adds their options, the form of their records and the check of options that exclude each other. \a markers: of which
/// kind the markers are that may be drawn. The helps of --scale and --markers tell what is drawn without them.
void makeDrawing(Command *command, WordKind markers, const char *scaleHelp, const char *markersHelp);

/// How a display is to be drawn, from the options.
struct Drawing
{
    enum class Markers { AsTheyAre, All, None, Named };

    QString path;
    std::optional<double> scale;
    std::optional<double> from; ///< in the display's depth type and unit
    std::optional<double> to;
    int depthType = logview::MeasuredDepth;
    logview::DepthUnit unit = logview::Metre;
    Markers markers = Markers::AsTheyAre;
    QStringList markerNames;
    std::optional<logview::Paper> paper;
    std::optional<int> dotsPerInch;
};
Drawing drawingOf(const Arguments &arguments);
/// Whether its file is one of paper, not a picture with the window's pixels.
bool isPaper(const Drawing &drawing);

/// "0 to 2610 m"
QString depthsText(const logview::DepthLimits &limits, logview::DepthUnit unit);

/// The depths that are drawn of those that there are, both in the display's unit.
struct DrawnDepths
{
    logview::DepthLimits limits;
    QString problem; ///< why none of those that are asked for can be drawn, a sentence; empty when some can
    QString notice; ///< that less is drawn than was asked for; empty when all is
};
DrawnDepths drawnDepths(const Drawing &drawing, const logview::DepthLimits &whole);

/// Why no file can be written there, before anything is drawn; empty when it can.
QString targetProblem(const Session &session, const QString &path);

/// Draws the display into the file, as a picture or on paper by its ending, and tells what it came to. The log scene's
/// rectangle is what a picture shows of it.
Result drawFile(const Session &session, const Drawing &drawing, QGraphicsScene &headerScene, QGraphicsScene &logScene,
                const logview::SheetContents &contents);

} // namespace batch
