#pragma once

#include <QObject>
#include <QPointer>
#include <QPrinter>

#include <memory>

QT_BEGIN_NAMESPACE
class QPrintPreviewDialog;
QT_END_NAMESPACE

class PrintedPage;

/// One print preview, from its opening to its closing: the dialog, its printer and the page it shows.
class PrintPreview : public QObject
{
    Q_OBJECT

public:
    /// \a page is null where there is nothing to print. The preview goes with \a window.
    PrintPreview(std::unique_ptr<PrintedPage> page, QWidget *window);
    ~PrintPreview() override;

    /// Returns when the user has closed it. It may be gone then, with its window.
    void run();
    /// Closes it as soon as it has painted what it is painting.
    void close();
    PrintedPage *page() const { return m_page.get(); }

signals:
    void paintRequested(QPrinter *printer);

private:
    std::unique_ptr<PrintedPage> m_page;
    QPrinter m_printer{QPrinter::ScreenResolution};
    QPointer<QPrintPreviewDialog> m_dialog; ///< a child of the window; ours
};
