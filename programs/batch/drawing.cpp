#include "programs/batch/drawing.h"

#include "base/atomicfile.h"
#include "base/leftovers.h"
#include "logview/curveitem.h"
#include "logview/displaypicture.h"
#include "logview/paper/sheetfile.h"
#include "logview/paper/sheetpainter.h"
#include "logview/trackitem.h"
#include "programs/batch/heldsignals.h"
#include "programs/batch/progress.h"
#include "programs/batch/session.h"
#include "programs/batch/tables.h"

#include <QFileInfo>
#include <QGraphicsScene>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <limits>

namespace batch {

namespace {

constexpr double largestScale = 1e6;
constexpr double deepest = 1e6;

QString option(const char *name)
{
    return QString::fromLatin1(name);
}

QString endingOf(const QString &path)
{
    return QFileInfo(path).suffix().toLower();
}

std::optional<PictureFormat> pictureFormat(const QString &ending)
{
    if (ending == QLatin1String("png"))
        return PictureFormat::Png;
    if (ending == QLatin1String("jpg") || ending == QLatin1String("jpeg"))
        return PictureFormat::Jpeg;
    if (ending == QLatin1String("tif") || ending == QLatin1String("tiff"))
        return PictureFormat::Tiff;
    return std::nullopt;
}

bool isSvg(const QString &ending)
{
    return ending == QLatin1String("svg");
}

const QString allMarkers = QStringLiteral("all");
const QString noMarkers = QStringLiteral("none");

// A marker that is called like one of these words stands behind a backslash.
QString markerName(const QString &word)
{
    static const QRegularExpression escaped(QStringLiteral("^\\\\+(all|none)$"));
    return escaped.match(word).hasMatch() ? word.mid(1) : word;
}

// What is wrong with the options together.
QString problemOf(const Arguments &arguments)
{
    const QString path = arguments.value(option("--out"));
    const QString ending = endingOf(path);
    const bool isPicture = pictureFormat(ending).has_value();
    if (!isPicture && !isSvg(ending) && ending != QLatin1String("pdf"))
        return QStringLiteral(
                   "The file of the option --out ends in .png, .jpg, .jpeg, .tif, .tiff, .pdf or .svg, not \"%1\".")
            .arg(path);
    if (QFileInfo(path).completeBaseName().isEmpty())
        return QStringLiteral("The file of the option --out has no name before its ending: \"%1\".").arg(path);
    if (isPicture && arguments.has(option("--paper")))
        return QStringLiteral("The option --paper is for files of paper: .pdf and .svg.");
    if (isSvg(ending) && arguments.has(option("--paper"))
        && arguments.value(option("--paper")) != QLatin1String("continuous"))
        return QStringLiteral(
            "An SVG file is one sheet without pages: the paper is \"continuous\", or the file a PDF file.");
    const std::optional<double> from = arguments.number(option("--from"));
    const std::optional<double> to = arguments.number(option("--to"));
    if (from && to && *from >= *to)
        return QStringLiteral("The depth of the option --from does not lie above that of the option --to.");
    const QStringList markers = arguments.values(option("--markers"));
    if (markers.size() > 1 && (markers.contains(allMarkers) || markers.contains(noMarkers)))
        return QStringLiteral("The option --markers is \"all\", \"none\" or names, not several of these; a marker "
                              "that is called so stands behind a backslash (\\all).");
    return {};
}

QString unitText(logview::DepthUnit unit)
{
    return unit == logview::Feet ? QStringLiteral("ft") : QStringLiteral("m");
}

QString fileProblem(const QString &path, const QString &why)
{
    return QStringLiteral("The file %1 could not be written: %2.").arg(path, why);
}

Record recordOf(const Drawing &drawing, const logview::SheetContents &contents)
{
    Record record;
    record[QLatin1String("file")] = drawing.path;
    record[QLatin1String("format")] = endingOf(drawing.path);
    record[QLatin1String("title")] = contents.title;
    record[QLatin1String("scale")] = jsonNumber(contents.scale);
    record[QLatin1String("depthType")] = contents.depthTypeText;
    record[QLatin1String("unit")] = unitText(contents.unit);
    record[QLatin1String("from")] = jsonNumber(contents.axis.start);
    record[QLatin1String("to")] = jsonNumber(contents.axis.end);
    record[QLatin1String("depthsOf")] = contents.depthsOf.isEmpty() ? QJsonValue() : QJsonValue(contents.depthsOf);
    return record;
}

/// That there are logs, but no value of them in the depths that are drawn; empty where there are some, or no logs at all.
QString emptinessNotice(const Drawing &drawing, const QGraphicsScene &logScene,
                        const logview::SheetContents &contents)
{
    double top = std::numeric_limits<double>::infinity();
    double bottom = -top;
    for (const QGraphicsItem *item : logScene.items()) {
        const auto *curve = qgraphicsitem_cast<const CurveItem *>(item);
        if (!curve)
            continue;
        const auto &track = static_cast<const TrackItem &>(*curve->parentItem());
        const logview::CurveSamples &samples = curve->samples();
        for (int i = 0; i < samples.size(); ++i) {
            if (samples.isNull(i))
                continue;
            const auto depth = static_cast<double>(track.depthReference().toDisplay(samples.depthM(i)));
            const double y = track.y() + track.axis().toPixel(depth) - contents.top;
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    const logview::DepthAxis &axis = contents.axis;
    if (top > bottom || (top <= static_cast<double>(axis.height) && bottom >= 0))
        return {};
    const logview::DepthLimits values{static_cast<float>(axis.toDepth(top)),
                                      static_cast<float>(axis.toDepth(bottom))};
    return QStringLiteral("%1: no log has a value in these depths; their values lie at %2.")
        .arg(contents.title, depthsText(values, drawing.unit));
}

Result drawPicture(const Session &session, const Drawing &drawing, PictureFormat format, QGraphicsScene &headerScene,
                   QGraphicsScene &logScene, Record record)
{
    const DisplayPicture picture(headerScene, logScene, format,
                                 drawing.dotsPerInch.value_or(DisplayPicture::screenDotsPerInch));
    if (picture.isEmpty())
        return Result::failed(QStringLiteral("There is nothing to be drawn: no tracks or no depths."));
    if (picture.isScaledDown())
        return Result::failed(
            QStringLiteral("The picture would be of %1 x %2 pixels, and a .%3 file holds %4. A larger --scale, a "
                           "part of the depths (--from, --to), a smaller --dpi or paper (.pdf, .svg) fits.")
                .arg(picture.wantedWidth())
                .arg(picture.wantedHeight())
                .arg(endingOf(drawing.path), logview::mostOfFormat(format)));
    record[QLatin1String("width")] = picture.size().width();
    record[QLatin1String("height")] = picture.size().height();
    Result result;
    if (!session.isDryRun()) {
        Progress progress(QStringLiteral("Drawing"), picture.size().height());
        int done = 0;
        const HeldSignals held; // one ends it between two bands, without a trace
        const auto oldFile = session.isForced() ? DisplayPicture::OldFile::Replace : DisplayPicture::OldFile::Keep;
        const base::WriteResult written = picture.write(
            drawing.path,
            [&](const QImage &rows) {
                progress.setDone(done += rows.height());
                return !HeldSignals::isOneWaiting();
            },
            oldFile);
        if (!written.ok())
            return Result::failed(fileProblem(drawing.path, written.error));
    }
    result.records.append(record);
    return result;
}

base::WriteResult writeBytes(const Session &session, const QString &path, const QByteArray &bytes)
{
    base::removeLeftovers(QFileInfo(path).path()); // of programs that died while they wrote there
    const HeldSignals held;
    bool isTaken = false;
    return session.isForced() ? base::writeFileAtomically(path, bytes)
                              : base::writeNewFileAtomically(path, bytes, &isTaken);
}

Result drawPaper(const Session &session, const Drawing &drawing, QGraphicsScene &headerScene,
                 QGraphicsScene &logScene, const logview::SheetContents &contents, Record record)
{
    const bool isOneSheet = isSvg(endingOf(drawing.path));
    const logview::Paper paper = drawing.paper.value_or(isOneSheet ? logview::Paper::Continuous : logview::Paper::A4);
    const logview::Sheet sheet =
        logview::layOutSheet(contents, paper, isOneSheet ? logview::svgLimits() : logview::pdfLimits());
    if (!sheet.ok())
        return Result::failed(sheet.problem);
    record[QLatin1String("pages")] = sheet.pages.size();
    record[QLatin1String("widthMm")] = jsonNumber(sheet.pageSize.width() / logview::pixelsPerMm);
    record[QLatin1String("heightMm")] = jsonNumber(sheet.pageSize.height() / logview::pixelsPerMm);
    Result result;
    if (!session.isDryRun()) {
        const logview::SheetPainter painter(headerScene, logScene, sheet);
        const int dots = drawing.dotsPerInch.value_or(logview::paperDotsPerInch);
        Progress progress(QStringLiteral("Drawing"), sheet.pages.size());
        const QByteArray bytes = isOneSheet ? logview::svgBytes(painter, dots)
                                            : logview::pdfBytes(painter, dots, [&progress](int pages, int) {
                                                  progress.setDone(pages);
                                                  return true;
                                              });
        const base::WriteResult written = writeBytes(session, drawing.path, bytes);
        if (!written.ok())
            return Result::failed(fileProblem(drawing.path, written.error));
    }
    result.records.append(record);
    return result;
}

} // namespace

void makeDrawing(Command *command, WordKind markers, const char *scaleHelp, const char *markersHelp)
{
    const QString paperHelp =
        QStringLiteral("Of paper: pages A4 (without the option) or A3, no more than %1 of them, or "
                       "one continuous sheet as long as the log; an SVG file is always continuous")
            .arg(logview::mostPages);
    command->options += {
        required(valueOption("--out", "FILE",
                             "The file to be written; its ending says what it is: .png, .jpg, .jpeg, .tif or .tiff "
                             "for a picture, .pdf or .svg for paper at true scale",
                             {WordKind::File})),
        valueOption("--scale", "N", scaleHelp, numberRule(1, largestScale)),
        valueOption("--from", "DEPTH",
                    "Begin at this depth, of the depth type and unit that are drawn; at the first one without it",
                    numberRule(-deepest, deepest)),
        valueOption("--to", "DEPTH", "End at this depth; at the last one without it", numberRule(-deepest, deepest)),
        valueOption("--type", "TYPE",
                    "Draw measured depths (MD, without the option) or depths below sea level (TVDSS)",
                    choiceOf({QStringLiteral("MD"), QStringLiteral("TVDSS")})),
        valueOption("--unit", "UNIT",
                    "Draw in metres (METER, without the option) or in feet (FEET); pictures give a foot as much room "
                    "as a metre, as the window does, paper is true to scale",
                    choiceOf({QStringLiteral("METER"), QStringLiteral("FEET")})),
        listOption("--markers", "MARKERS", markersHelp, {markers, {allMarkers, noMarkers}}),
        valueOption("--paper", "PAPER", qPrintable(paperHelp),
                    choiceOf({QStringLiteral("A4"), QStringLiteral("A3"), QStringLiteral("continuous")})),
        valueOption("--dpi", "N", "Dots an inch: of a picture, 96 without the option; of the printer, 600",
                    countRule(logview::leastDotsPerInch, logview::mostDotsPerInch)),
    };
    command->writes = true;
    command->replaces = true;
    command->drawsPictures = true;
    command->problem = problemOf;
    command->form.key = QStringLiteral("files");
    command->form.layout = ResultForm::Layout::Sheet;
    command->form.fields = {
        textField("file", "File", "the file"),
        isWrittenField(),
        textField("format", "", "its ending"),
        textField("title", "Shows", "the well or correlation"),
        numberField("scale", "Scale (1:N)", "N of 1:N"),
        textField("depthType", "Depths", "\"MD\" or \"TVDSS\""),
        textField("unit", "Unit", "of depths: \"m\" or \"ft\""),
        numberField("from", "From", "depth where it begins", 2),
        numberField("to", "To", "depth where it ends", 2),
        textField("depthsOf", "", "the well whose depths these are, where wells stand at different ones; else null"),
        countField("pages", "Pages", "number of pages; only of paper"),
        numberField("widthMm", "Page width (mm)", "millimetres; only of paper", 0),
        numberField("heightMm", "Page height (mm)", "millimetres; only of paper", 0),
        countField("width", "Width (pixels)", "pixels; only of pictures"),
        countField("height", "Height (pixels)", "pixels; only of pictures"),
    };
}

Drawing drawingOf(const Arguments &arguments)
{
    Drawing drawing;
    drawing.path = arguments.value(option("--out"));
    drawing.scale = arguments.number(option("--scale"));
    drawing.from = arguments.number(option("--from"));
    drawing.to = arguments.number(option("--to"));
    if (arguments.value(option("--type")) == QLatin1String("TVDSS"))
        drawing.depthType = logview::TvdSubsea;
    if (arguments.value(option("--unit")) == QLatin1String("FEET"))
        drawing.unit = logview::Feet;
    const QStringList markers = arguments.values(option("--markers"));
    if (markers == QStringList{allMarkers})
        drawing.markers = Drawing::Markers::All;
    else if (markers == QStringList{noMarkers})
        drawing.markers = Drawing::Markers::None;
    else if (!markers.isEmpty())
        drawing.markers = Drawing::Markers::Named;
    if (drawing.markers == Drawing::Markers::Named)
        std::transform(markers.begin(), markers.end(), std::back_inserter(drawing.markerNames), markerName);
    logview::Paper paper = logview::Paper::A4;
    if (logview::paperOfText(arguments.value(option("--paper")), &paper))
        drawing.paper = paper;
    if (arguments.has(option("--dpi")))
        drawing.dotsPerInch = arguments.count(option("--dpi"), 0);
    return drawing;
}

bool isPaper(const Drawing &drawing)
{
    return !pictureFormat(endingOf(drawing.path));
}

QString depthsText(const logview::DepthLimits &limits, logview::DepthUnit unit)
{
    const auto depth = [](float value) { return logview::shortNumber(static_cast<double>(value), 2); };
    return QStringLiteral("%1 to %2 %3").arg(depth(limits.start), depth(limits.end), unitText(unit));
}

namespace {

/// Only the ends that were given: the other one would be one of the well's.
QString wantedText(const Drawing &drawing, const logview::DepthLimits &wanted)
{
    const auto depth = [&drawing](float value) {
        return logview::shortNumber(static_cast<double>(value), 2) + QLatin1Char(' ') + unitText(drawing.unit);
    };
    if (!drawing.to)
        return QStringLiteral("below ") + depth(wanted.start);
    if (!drawing.from)
        return QStringLiteral("above ") + depth(wanted.end);
    return QStringLiteral("at ") + depthsText(wanted, drawing.unit);
}

} // namespace

DrawnDepths drawnDepths(const Drawing &drawing, const logview::DepthLimits &whole)
{
    logview::DepthLimits wanted = whole;
    if (drawing.from)
        wanted.start = static_cast<float>(*drawing.from);
    if (drawing.to)
        wanted.end = static_cast<float>(*drawing.to);
    const auto text = [unit = drawing.unit](const logview::DepthLimits &limits) { return depthsText(limits, unit); };
    if (!(wanted.start < wanted.end) || wanted.start >= whole.end || wanted.end <= whole.start)
        return {whole,
                QStringLiteral("Nothing lies %1: its depths are %2.").arg(wantedText(drawing, wanted), text(whole)),
                {}};
    DrawnDepths drawn;
    drawn.limits = {qMax(wanted.start, whole.start), qMin(wanted.end, whole.end)};
    if (drawn.limits.start > wanted.start || drawn.limits.end < wanted.end)
        drawn.notice = QStringLiteral("Drawn is %1 instead of %2: its depths are %3.")
                           .arg(text(drawn.limits), text(wanted), text(whole));
    return drawn;
}

QString targetProblem(const Session &session, const QString &path)
{
    const QFileInfo target(path);
    if (!session.isForced() && (target.exists() || target.isSymLink()))
        return existsProblem(path);
    const base::WriteResult writable = base::checkWritable(path);
    return writable.ok() ? QString() : fileProblem(path, writable.error);
}

Result drawFile(const Session &session, const Drawing &drawing, QGraphicsScene &headerScene, QGraphicsScene &logScene,
                const logview::SheetContents &contents)
{
    const Record record = recordOf(drawing, contents);
    const auto format = pictureFormat(endingOf(drawing.path));
    Result result = format ? drawPicture(session, drawing, *format, headerScene, logScene, record)
                           : drawPaper(session, drawing, headerScene, logScene, contents, record);
    if (const QString notice = emptinessNotice(drawing, logScene, contents); !notice.isEmpty())
        result.notices.append(notice);
    return result;
}

} // namespace batch
