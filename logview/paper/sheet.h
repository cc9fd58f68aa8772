#pragma once

#include "logview/geometry/depthaxis.h"

#include <QMarginsF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QVector>

/// How a display comes onto paper at its true scale. Everything is in pixels of the display, 96 an inch, which are
/// also the pixels of the paper: 1:N on the screen is 1:N on the sheet.
namespace logview {

constexpr double pixelsPerInch = 96;
constexpr double pixelsPerMm = pixelsPerInch / 25.4;
constexpr double pixelsPerPoint = pixelsPerInch / 72;

enum class Paper { A4, A3, Continuous };
/// "A4", "A3" or "continuous", upper or lower case. False for any other text.
bool paperOfText(const QString &text, Paper *paper);
QString paperText(Paper paper);

/// What a file of pages can hold.
struct SheetLimits
{
    /// Longest side of a page; 0 for any.
    double longestSidePx = 0;
    QString longestSideText = {}; ///< how the limit is told
    bool hasPages = true; ///< more than one
};
/// A PDF page ends at 14,400 units of 1/72 inch.
SheetLimits pdfLimits();
/// An SVG file is one sheet of any length.
SheetLimits svgLimits();

/// A printed display in numbers.
struct SheetContents
{
    QString title; ///< well or correlation
    /// Whose depths the footer tells, where the wells of the display stand at different depths; else empty.
    QString depthsOf = {};
    QString depthTypeText; ///< "MD"
    DepthUnit unit = Metre;
    float scale = defaultDepthScale; ///< N of 1:N
    DepthAxis axis; ///< over the height of the tracks that are printed
    double top = 0; ///< y of the display where these begin
    double headerHeight = 0;
    double leftMargin = 0; ///< what the names of markers take left of the first track
    /// Of one well every part has the names of markers; where there are more, they stand before each well.
    bool hasOneWell = true;
    /// x where each track begins and ends, from left to right, or each well where there are more: pages part the display
    /// only there.
    QVector<double> trackStarts;
    QVector<double> trackEnds;
};

/// What one page shows.
struct SheetPage
{
    double left = 0; ///< x of the display
    double right = 0;
    double top = 0; ///< y of the tracks
    double bottom = 0;
    double startDepth = 0; ///< display unit
    double endDepth = 0;
    int firstTrack = 0;
    int lastTrack = 0;
    bool hasNames = true;
};

/// The sheet of a display: equal pages, each with the header at its top and a line of text at its bottom.
struct Sheet
{
    QString problem; ///< why there is none, as a sentence; empty when there is one
    QSizeF pageSize;
    double margin = 0; ///< on all four sides
    double footerHeight = 0;
    SheetContents contents;
    QVector<SheetPage> pages;

    bool ok() const { return problem.isEmpty(); }
    /// Where the header of a page goes, and its tracks, without what stands left of them.
    QRectF headerArea(const SheetPage &page) const;
    QRectF trackArea(const SheetPage &page) const;
    /// How much of the pages before and behind shows above and below that area.
    double bleedAbove(const SheetPage &page) const;
    double bleedBelow(const SheetPage &page) const;
    QRectF footerArea() const;
};

/// More pages than this are refused.
constexpr int mostPages = 200;

/// Lays a display out. Pages begin at the depth where the one before ended, which is a round one. Upright or broad,
/// whatever takes fewer pages; a display wider than its pages continues beside, with whole tracks on each part.
Sheet layOutSheet(const SheetContents &contents, Paper paper, const SheetLimits &limits);

/// The y at which pages with room for \a roomPx of tracks end, the last one at the end of the axis. Empty where nothing
/// can be mapped, and where it took more than mostPages.
QVector<double> pageEnds(const DepthAxis &axis, double roomPx);

/// The texts of a page's footer: on its left, in its middle, on its right.
QStringList footerTexts(const Sheet &sheet, int page);

/// A depth or length for people: at most \a decimals, none that are zero.
QString shortNumber(double value, int decimals);

} // namespace logview
