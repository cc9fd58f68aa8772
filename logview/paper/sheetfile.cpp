#include "logview/paper/sheetfile.h"

#include "logview/paper/dotdevice.h"
#include "logview/paper/pdflines.h"
#include "logview/paper/sheetpainter.h"
#include "logview/paper/svgdevice.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

namespace logview {

namespace {

/// A PDF file whose fonts have the sizes of the display, whatever its resolution.
class PdfPages : public QPdfWriter
{
public:
    using QPdfWriter::QPdfWriter;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        const bool isOfFonts = metric == PdmDpiX || metric == PdmDpiY;
        return isOfFonts ? static_cast<int>(pixelsPerInch) : QPdfWriter::metric(metric);
    }
};

void paintPage(QPainter &target, const SheetPainter &sheet, int page, int dotsPerInch, PdfLines *longLines = nullptr)
{
    DotDevice device(&target, dotsPerInch, sheet.sheet().pageSize, longLines);
    QPainter painter(&device);
    painter.scale(device.dotsPerPixel(), device.dotsPerPixel());
    sheet.paint(painter, page);
}

// All pages by Qt's writer; long lines go to \a longLines where that is given.
QByteArray writtenPages(const SheetPainter &sheet, int dotsPerInch, const PageDone &pageDone, PdfLines *longLines)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    PdfPages writer(&buffer);
    writer.setCreator(QStringLiteral("LORVA"));
    writer.setTitle(sheet.sheet().contents.title);
    writer.setResolution(dotsPerInch);
    const QSizeF points = sheet.sheet().pageSize / pixelsPerPoint;
    writer.setPageLayout(
        {QPageSize(QSize(qRound(points.width()), qRound(points.height()))), QPageLayout::Portrait, QMarginsF()});
    QPainter painter(&writer);
    const int count = sheet.sheet().pages.size();
    for (int page = 0; page < count; ++page) {
        if (page > 0)
            writer.newPage();
        paintPage(painter, sheet, page, dotsPerInch, longLines);
        if (pageDone && !pageDone(page + 1, count))
            return {};
    }
    painter.end();
    return bytes;
}

} // namespace

QByteArray pdfBytes(const SheetPainter &sheet, int dotsPerInch, const PageDone &pageDone)
{
    PdfLines longLines;
    const QByteArray pages = writtenPages(sheet, dotsPerInch, pageDone, &longLines);
    if (pages.isEmpty() || longLines.isEmpty())
        return pages;
    const QByteArray bytes = longLines.writtenInto(pages);
    // A writer that lays its files out in another way writes them alone.
    return bytes.isEmpty() ? writtenPages(sheet, dotsPerInch, pageDone, nullptr) : bytes;
}

QByteArray svgBytes(const SheetPainter &sheet, int dotsPerInch)
{
    SvgDevice device(sheet.sheet().pageSize, dotsPerInch);
    QPainter painter(&device);
    paintPage(painter, sheet, 0, dotsPerInch);
    painter.end();
    return device.bytes();
}

} // namespace logview
