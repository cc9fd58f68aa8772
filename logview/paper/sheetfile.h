#pragma once

#include "base/atomicfile.h"

#include <functional>

namespace logview {

class SheetPainter;

/// Dots an inch of the printer that a file of vectors is made for.
constexpr int paperDotsPerInch = 600;
constexpr int leastDotsPerInch = 50;
constexpr int mostDotsPerInch = 2400;

/// Told after each page; false to stop.
using PageDone = std::function<bool(int pages, int ofPages)>;

/// The sheet as the bytes of a PDF file, one page of it each; empty when \a pageDone stopped it.
QByteArray pdfBytes(const SheetPainter &sheet, int dotsPerInch = paperDotsPerInch, const PageDone &pageDone = {});
/// The first page of the sheet as the bytes of an SVG file; its texts are outlines.
QByteArray svgBytes(const SheetPainter &sheet, int dotsPerInch = paperDotsPerInch);

} // namespace logview
