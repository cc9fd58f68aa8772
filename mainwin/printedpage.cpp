#include "mainwin/printedpage.h"

#include "base/atomicfile.h"

#include <QPainter>
#include <QPrinter>

namespace {

bool canStart(const QPrinter &printer)
{
    return printer.isValid()
        && (printer.outputFileName().isEmpty() || base::checkWritable(printer.outputFileName()).ok());
}

} // namespace

bool PrintedPage::paint(QPrinter &printer)
{
    QPainter painter;
    if (!canStart(printer) || !painter.begin(&printer))
        return false;
    if (!m_isPictureSaved)
        m_savePicture();
    m_isPictureSaved = true;
    const QRect viewport = painter.viewport();
    if (m_page.size() != viewport.size()) {
        m_page = QImage(viewport.size(), QImage::Format_RGB32);
        m_page.fill(Qt::white);
        QPainter pagePainter(&m_page);
        m_render(pagePainter);
    }
    painter.drawImage(viewport.topLeft(), m_page);
    return true;
}
