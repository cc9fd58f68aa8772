#include "mainwin/sheetsaving.h"

#include "base/asker.h"
#include "base/leftovers.h"
#include "base/nestedevents.h"
#include "base/progressbox.h"
#include "base/safename.h"
#include "datastore/projectdata.h"
#include "logview/paper/sheetfile.h"
#include "logview/paper/sheetpainter.h"
#include "logview/paper/truefeet.h"
#include "logview/withoutselection.h"
#include "mainwin/truescaledialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

namespace sheetsaving {

const char title[] = "Save as PDF at true scale";

PathChooser fileDialog()
{
    return [](QWidget *window, const QString &caption, const QString &proposed) {
        const base::NestedEvents events;
        return QFileDialog::getSaveFileName(window, caption, proposed, QStringLiteral("PDF (*.pdf)"));
    };
}

QString saveSheet(ProjectData &data, const Display &display, QWidget *window, const PathChooser &choosePath)
{
    const base::NestedEvents events; // the scenes stay until all is drawn
    const QString caption = QString::fromLatin1(title);
    if (!display.headerScene) {
        data.asker.inform(
            caption,
            QStringLiteral("Nothing is displayed. Check a well in the project tree, or open a correlation."));
        return {};
    }
    // On the heap: the window may go while the dialog is shown, and takes it along.
    const QPointer<QWidget> stays = window;
    const QPointer<TrueScaleDialog> dialog = new TrueScaleDialog(display.contents, window);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return {};
    const logview::Sheet sheet = dialog->sheet();
    delete dialog;
    const QString ending = QStringLiteral(".pdf");
    const QString name = base::fileNameFor(display.contents.title, ending.size()) + ending;
    QString path;
    if (isAccepted)
        path = choosePath(window, caption, data.project.projectFolder + QLatin1Char('/') + name);
    if (path.isEmpty() || !stays)
        return {};
    if (!path.endsWith(ending, Qt::CaseInsensitive)) {
        path += ending; // which the file dialog has not asked about
        if (QFileInfo::exists(path)
            && !data.asker.confirmLoss(caption, QStringLiteral("%1 exists already.\nReplace it?").arg(path)))
            return {};
    }

    const WithoutSelection plain(*display.logScene);
    const logview::TrueFeet feet(*display.logScene, display.contents.unit);
    base::ProgressBox progress(caption, QStringLiteral("Drawing %1").arg(display.contents.title), window);
    const QByteArray bytes =
        logview::pdfBytes(logview::SheetPainter(*display.headerScene, *display.logScene, sheet),
                          logview::paperDotsPerInch, [&](int pages, int all) { return progress.step(pages, all); });
    if (bytes.isEmpty())
        return QStringLiteral("Cancelled; nothing was saved.");
    base::removeLeftovers(QFileInfo(path).path()); // of programs that died while they wrote there
    const base::WriteResult written = base::writeFileAtomically(path, bytes);
    if (written.ok())
        return QStringLiteral("Saved as %1.").arg(path);
    data.asker.warn(caption, QStringLiteral("%1 could not be written: %2").arg(path, written.error));
    return {};
}

} // namespace sheetsaving
