#include "mainwin/printpreview.h"

#include "base/keptlooks.h"
#include "base/nestedevents.h"
#include "mainwin/printedpage.h"

#include <QAction>
#include <QCoreApplication>
#include <QGraphicsView>
#include <QPrintPreviewDialog>

namespace {

// A page of a long log is read in it, where the screen has room.
constexpr QSize roomyPreview(960, 900);

// Without a printer the preview is of a PDF file, whose page Qt's dialog cannot set up: the button would do nothing.
void disablePageSetup(const QPrintPreviewDialog &dialog)
{
    const QString text = QCoreApplication::translate("QPrintPreviewDialog", "Page setup");
    for (QAction *action : dialog.findChildren<QAction *>())
        if (action->text() == text)
            action->setEnabled(false);
}

// Qt fits the page into what the scroll bars leave, and shows a scroll bar where the page does not fit: at some sizes of the
// window a bar would come and go for ever, and nothing else be served. Bars that stay leave the same place always.
void keepScrollBars(const QPrintPreviewDialog &dialog)
{
    for (auto *view : dialog.findChildren<QGraphicsView *>()) {
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }
}

} // namespace

PrintPreview::PrintPreview(std::unique_ptr<PrintedPage> page, QWidget *window)
    : QObject(window)
    , m_page(std::move(page))
    , m_dialog(new QPrintPreviewDialog(&m_printer, window, Qt::Window))
{
    if (m_printer.outputFormat() != QPrinter::NativeFormat)
        disablePageSetup(*m_dialog);
    keepScrollBars(*m_dialog);
    m_dialog->resize(roomyPreview);
    base::keepSize(m_dialog, QStringLiteral("printPreview"));
    connect(m_dialog, &QPrintPreviewDialog::paintRequested, this, &PrintPreview::paintRequested);
}

PrintPreview::~PrintPreview()
{
    delete m_dialog; // before its printer
}

void PrintPreview::close()
{
    QMetaObject::invokeMethod(m_dialog, &QDialog::reject, Qt::QueuedConnection);
}

void PrintPreview::run()
{
    const base::NestedEvents events;
    m_dialog->exec();
}
