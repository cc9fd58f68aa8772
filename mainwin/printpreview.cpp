#include "mainwin/printpreview.h"

#include "base/nestedevents.h"
#include "mainwin/printedpage.h"

#include <QPrintPreviewDialog>

PrintPreview::PrintPreview(std::unique_ptr<PrintedPage> page, QWidget *window)
    : QObject(window)
    , m_page(std::move(page))
    , m_dialog(new QPrintPreviewDialog(&m_printer, window, Qt::Window))
{
    connect(m_dialog, &QPrintPreviewDialog::paintRequested, this, &PrintPreview::paintRequested);
}

PrintPreview::~PrintPreview()
{
    delete m_dialog; // before its printer
}

void PrintPreview::run()
{
    const base::NestedEvents events;
    m_dialog->exec();
}
