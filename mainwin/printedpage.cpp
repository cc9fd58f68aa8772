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

PrintedPage::Outcome PrintedPage::paint(QPrinter &printer)
{
    QPainter painter;
    if (!canStart(printer) || !painter.begin(&printer))
        return Outcome::NotStarted;
    if (!m_isPictureSaved) {
        m_isPictureSaved = true; // also when this asks again meanwhile
        m_picture = m_savePicture();
    }
    if (!m_picture)
        return Outcome::Cancelled;
    const QRect viewport = painter.viewport();
    if (m_page.size() != viewport.size()) {
        m_page = QImage(viewport.size(), QImage::Format_RGB32);
        m_page.fill(Qt::white);
        QPainter pagePainter(&m_page);
        m_picture->draw(pagePainter);
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform); // of the preview: thin lines stay whole
    painter.drawImage(viewport.topLeft(), m_page);
    return Outcome::Painted;
}
