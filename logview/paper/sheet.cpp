#include "logview/paper/sheet.h"

#include <algorithm>
#include <cmath>

namespace logview {

namespace {

constexpr double marginMm = 7; // which every printer leaves
constexpr double footerMm = 7;
constexpr double leastTracksMm = 30; // below the header: less is no log any more
constexpr double outlinePx = 1; // of a track's outline, beside the track
constexpr double bleedPx = 8; // what stands at the depth where a page ends, a number above all, is whole on both
constexpr double tolerancePx = 1e-6;

const QSizeF a4Mm(210, 297);

// The name of a footer's well, without its middle where the name of the sheet would have no room beside it.
QString shortName(const QString &name)
{
    constexpr int longest = 24;
    constexpr int head = 15;
    return name.size() <= longest ? name : name.left(head) + QChar(0x2026) + name.right(longest - head - 1);
}

QSizeF pageSizeOf(Paper paper)
{
    return (paper == Paper::A3 ? QSizeF(a4Mm.height(), 2 * a4Mm.width()) : a4Mm) * pixelsPerMm;
}

QString mmText(double px)
{
    return QStringLiteral("%1 mm").arg(shortNumber(std::ceil(px / pixelsPerMm), 0));
}

/// Tracks that stand on one part of the display.
struct Part
{
    int first = 0;
    int last = 0;
    double left = 0;
    double right = 0;
};

// Whole tracks, as many as find room; none where one alone does not.
QVector<Part> partsOf(const SheetContents &contents, double room)
{
    const auto fits = [&](int part, double left, double right) {
        const double names = part == 0 || contents.hasOneWell ? contents.leftMargin : 0;
        return names + right - left <= room + tolerancePx;
    };
    QVector<Part> parts;
    for (int i = 0; i < contents.trackEnds.size(); ++i) {
        const double start = contents.trackStarts.at(i);
        const double end = contents.trackEnds.at(i);
        if (!parts.isEmpty() && fits(parts.size() - 1, parts.last().left, end)) {
            parts.last().last = i;
            parts.last().right = end;
        } else if (fits(parts.size(), start, end)) {
            parts.append({i, i, start, end});
        } else {
            return {};
        }
    }
    return parts;
}

// The largest of 1, 2, 5, 10, 20… that is no larger.
double roundStep(double most)
{
    const double power = std::pow(10, std::floor(std::log10(most)));
    for (const double digit : {5, 2})
        if (digit * power <= most)
            return digit * power;
    return power;
}

Sheet emptySheet(const SheetContents &contents)
{
    Sheet sheet;
    sheet.contents = contents;
    sheet.margin = marginMm * pixelsPerMm;
    sheet.footerHeight = footerMm * pixelsPerMm;
    return sheet;
}

double tracksRoom(const Sheet &sheet)
{
    return sheet.pageSize.height() - 2 * sheet.margin - sheet.footerHeight - sheet.contents.headerHeight
        - 2 * bleedPx;
}

double widthRoom(const Sheet &sheet)
{
    return sheet.pageSize.width() - 2 * sheet.margin - 2 * outlinePx;
}

QString widestTrack(const SheetContents &contents)
{
    double widest = 0;
    for (int i = 0; i < contents.trackEnds.size(); ++i)
        widest = std::max(widest, contents.trackEnds.at(i) - contents.trackStarts.at(i));
    return mmText(widest + contents.leftMargin);
}

// The sheet on pages of this size, or what is in the way.
Sheet onPages(const SheetContents &contents, const QSizeF &pageSize, const QString &paperName)
{
    Sheet sheet = emptySheet(contents);
    sheet.pageSize = pageSize;
    if (tracksRoom(sheet) < leastTracksMm * pixelsPerMm) {
        sheet.problem = QStringLiteral("The header is %1 high: it leaves no room for the tracks on %2.")
                            .arg(mmText(contents.headerHeight), paperName);
        return sheet;
    }
    const QVector<Part> parts = partsOf(contents, widthRoom(sheet));
    if (parts.isEmpty()) {
        sheet.problem = QStringLiteral("One %4 takes %1 of width; %2 has %3.")
                            .arg(widestTrack(contents), paperName, mmText(widthRoom(sheet)),
                                 contents.hasOneWell ? QStringLiteral("track") : QStringLiteral("well"));
        return sheet;
    }
    const double height = static_cast<double>(contents.axis.height);
    const QVector<double> ends = pageEnds(contents.axis, tracksRoom(sheet));
    if (ends.isEmpty() || ends.size() * parts.size() > mostPages) {
        const double count = ends.isEmpty() ? height / tracksRoom(sheet) * parts.size() : ends.size() * parts.size();
        sheet.problem =
            QStringLiteral("The sheet would take %1 pages of %2; no more than %3 are made. Take a part of "
                           "the log, another scale or a continuous sheet.")
                .arg(std::ceil(count), 0, 'f', 0)
                .arg(paperName)
                .arg(mostPages);
        return sheet;
    }
    double top = 0;
    for (const double bottom : ends) {
        for (const Part &part : parts)
            sheet.pages.append({part.left, part.right, top, bottom, contents.axis.toDepth(top),
                                contents.axis.toDepth(bottom), part.first, part.last,
                                contents.hasOneWell || part.first == 0});
        top = bottom;
    }
    return sheet;
}

Sheet onOneSheet(const SheetContents &contents, const SheetLimits &limits)
{
    Sheet sheet = emptySheet(contents);
    const double height = static_cast<double>(contents.axis.height);
    const double right = contents.trackEnds.last();
    const auto wholePoints = [](double px) { return std::ceil(px / pixelsPerPoint - 1e-9) * pixelsPerPoint; };
    sheet.pageSize =
        QSizeF(wholePoints(contents.leftMargin + right + 2 * sheet.margin + 2 * outlinePx),
               wholePoints(contents.headerHeight + height + 2 * sheet.margin + sheet.footerHeight + 2 * outlinePx));
    const double longest = std::max(sheet.pageSize.width(), sheet.pageSize.height());
    if (limits.longestSidePx > 0 && longest > limits.longestSidePx) {
        sheet.problem = QStringLiteral("A continuous sheet would be %1 long; %2 Take pages (A4 or A3), a part of the "
                                       "log or another scale.")
                            .arg(mmText(longest), limits.longestSideText);
        return sheet;
    }
    sheet.pages.append({0, right, 0, height, static_cast<double>(contents.axis.start),
                        static_cast<double>(contents.axis.end), 0, contents.trackEnds.size() - 1, true});
    return sheet;
}

} // namespace

bool paperOfText(const QString &text, Paper *paper)
{
    for (const Paper each : {Paper::A4, Paper::A3, Paper::Continuous}) {
        if (text.compare(paperText(each), Qt::CaseInsensitive) == 0) {
            *paper = each;
            return true;
        }
    }
    return false;
}

QString paperText(Paper paper)
{
    if (paper == Paper::Continuous)
        return QStringLiteral("continuous");
    return paper == Paper::A3 ? QStringLiteral("A3") : QStringLiteral("A4");
}

SheetLimits pdfLimits()
{
    constexpr double longestPoints = 14400;
    return {longestPoints * pixelsPerPoint, QStringLiteral("a PDF page ends at 5080 mm (14,400 units of 1/72 inch)."),
            true};
}

SheetLimits svgLimits()
{
    return {0, QString(), false};
}

Sheet layOutSheet(const SheetContents &contents, Paper paper, const SheetLimits &limits)
{
    Sheet none = emptySheet(contents);
    if (contents.trackEnds.isEmpty() || !(contents.trackEnds.last() > 0)) {
        none.problem = QStringLiteral("There are no tracks to be printed.");
        return none;
    }
    if (!contents.axis.isDrawable()) {
        none.problem = QStringLiteral("There are no depths to be printed: the range is empty.");
        return none;
    }
    if (paper == Paper::Continuous)
        return onOneSheet(contents, limits);
    if (!limits.hasPages) {
        none.problem =
            QStringLiteral("An SVG file is one sheet without pages: take the paper \"continuous\", or a PDF file.");
        return none;
    }
    const QSizeF upright = pageSizeOf(paper);
    const Sheet tall = onPages(contents, upright, paperText(paper));
    const Sheet broad = onPages(contents, upright.transposed(), paperText(paper));
    if (!broad.ok() || (tall.ok() && tall.pages.size() <= broad.pages.size()))
        return tall;
    return broad;
}

QVector<double> pageEnds(const DepthAxis &axis, double roomPx)
{
    if (!axis.isDrawable() || !(roomPx > 0))
        return {};
    const double height = static_cast<double>(axis.height);
    const double start = static_cast<double>(axis.start);
    const double end = static_cast<double>(axis.end);
    const double room = (end - start) * roomPx / height; // in depth
    if (height / roomPx > mostPages)
        return {};
    const double step = roundStep(room / 10);
    QVector<double> ends;
    double depth = start;
    while (end - depth > room * (1 + 1e-9)) {
        const double round = std::floor((depth + room) / step + 1e-6) * step;
        depth = round > depth ? round : depth + room;
        ends.append(axis.toPixel(depth));
        if (ends.size() > mostPages)
            return {};
    }
    ends.append(height);
    return ends;
}

QRectF Sheet::headerArea(const SheetPage &page) const
{
    const double names = page.hasNames ? contents.leftMargin : 0;
    return {margin + outlinePx + names, margin, page.right - page.left, contents.headerHeight};
}

QRectF Sheet::trackArea(const SheetPage &page) const
{
    const QRectF header = headerArea(page);
    return {header.left(), header.bottom() + bleedAbove(page), header.width(), page.bottom - page.top};
}

double Sheet::bleedAbove(const SheetPage &page) const
{
    return page.top > 0 ? bleedPx : 0;
}

double Sheet::bleedBelow(const SheetPage &page) const
{
    return page.bottom < static_cast<double>(contents.axis.height) ? bleedPx : outlinePx;
}

QRectF Sheet::footerArea() const
{
    return {margin, pageSize.height() - margin - footerHeight, pageSize.width() - 2 * margin, footerHeight};
}

QStringList footerTexts(const Sheet &sheet, int page)
{
    const SheetContents &contents = sheet.contents;
    const SheetPage &shown = sheet.pages.at(page);
    QString depths = QStringLiteral("1:%1   %2 %3 – %4 %5")
                         .arg(shortNumber(static_cast<double>(contents.scale), 2), contents.depthTypeText,
                              shortNumber(shown.startDepth, 2), shortNumber(shown.endDepth, 2),
                              contents.unit == Feet ? QStringLiteral("ft") : QStringLiteral("m"));
    if (!contents.depthsOf.isEmpty())
        depths += QStringLiteral(" in %1").arg(shortName(contents.depthsOf));
    if (shown.lastTrack - shown.firstTrack + 1 < contents.trackEnds.size())
        depths += QStringLiteral("   %4 %1–%2 of %3")
                      .arg(shown.firstTrack + 1)
                      .arg(shown.lastTrack + 1)
                      .arg(contents.trackEnds.size())
                      .arg(contents.hasOneWell ? QStringLiteral("Tracks") : QStringLiteral("Wells"));
    return {contents.title, depths, QStringLiteral("Page %1 of %2").arg(page + 1).arg(sheet.pages.size())};
}

QString shortNumber(double value, int decimals)
{
    QString text = QString::number(value, 'f', decimals);
    if (decimals > 0) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

} // namespace logview
