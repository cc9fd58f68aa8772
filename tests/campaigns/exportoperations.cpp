#include "base/leftovers.h"
#include "base/usersettings.h"
#include "las/laswriter.h"
#include "logview/jpegwriter.h"
#include "logview/paper/displaysheet.h"
#include "logview/pngwriter.h"
#include "logview/tiffwriter.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "mainwin/sheetsaving.h"
#include "mainwin/truescaledialog.h"
#include "operations.h"
#include "support/modaldialog.h"
#include "workbench/reportdialog.h"

#include <QComboBox>
#include <QDialog>
#include <QFileInfo>
#include <QGraphicsView>
#include <QPushButton>

namespace campaign {

namespace {

Saved lasFile(Place &place, int state)
{
    LogCurveData log;
    log.logName = QStringLiteral("GR");
    for (int i = 0; i < 400; ++i) {
        log.depths.append(i);
        log.values.append(i + state);
    }
    las::ExportFile file;
    file.well.wellName = QStringLiteral("A");
    file.interval = 1;
    file.logs.append({log, false});
    file.range.add(log);
    base::removeLeftovers(QFileInfo(place.file("A.las")).path()); // as the export does
    bool isCreated = false;
    return savedAs(las::writeLas(
                       place.file("A.las"), file, [] { return true; }, &isCreated)
                       .error);
}

// Rows that no library can make small: several writes.
QImage picture(int state)
{
    QImage image(200, 100, QImage::Format_RGB32);
    quint32 random = static_cast<quint32>(7 + state);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            random = random * 1664525 + 1013904223;
            image.setPixel(x, y, random >> 8);
        }
    return image;
}

template<class Writer>
Saved pictureFile(const QString &path, int state)
{
    const QImage image = picture(state);
    Writer writer;
    base::WriteResult result = writer.open(path, image.size());
    for (int part = 0; result.ok() && part < 4; ++part)
        result = writer.append(image.copy(0, 25 * part, image.width(), 25));
    if (result.ok())
        result = writer.commit();
    return savedAs(result.error);
}

Saved tiff(Place &place, int state)
{
    return pictureFile<TiffWriter>(place.file("picture.tiff"), state);
}

Saved jpeg(Place &place, int state)
{
    return pictureFile<JpegWriter>(place.file("picture.jpg"), state);
}

Saved png(Place &place, int state)
{
    const QImage image = picture(state);
    PngWriter writer;
    base::WriteResult result = writer.open(place.file("picture.png"), image.size(), 96);
    for (int part = 0; result.ok() && part < 4; ++part)
        result = writer.append(image.copy(0, 25 * part, image.width(), 25));
    if (result.ok())
        result = writer.commit();
    return savedAs(result.error);
}

// As a user saves it: the paper is chosen in a dialog, then the file.
Saved sheet(Place &place, int state)
{
    WellDisplayWidget display(place.data, QStringLiteral("A"), QStringLiteral("Simple"), nullptr);
    const sheetsaving::Display shown{display.headerView()->scene(), display.scene(),
                                     logview::sheetContents(*display.headerView()->scene(), *display.scene())};
    whenModal<TrueScaleDialog>(&display, [state](QDialog *dialog) {
        dialog->findChild<QComboBox *>()->setCurrentText(state == 1 ? QStringLiteral("A3") : QStringLiteral("A4"));
        dialog->accept();
    });
    const QString outcome =
        sheetsaving::saveSheet(place.data, shown, &display, [&place](auto &&...) { return place.file("sheet.pdf"); });
    return savedWithBoxes(place, !outcome.isEmpty());
}

// The summary of an import in the workbench.
Saved summary(Place &place, int state)
{
    base::keepSettingsIn(place.file("../../remembered")); // a path, and each place has its own
    workbench::FileChooser chooser;
    chooser.chooseNewFile = [&place](auto &&...) { return place.file("summary.txt"); };
    const workbench::ReportDialog dialog(QStringLiteral("Summary"), QString(),
                                         QString(3000, QLatin1Char(state == 1 ? '1' : '0')),
                                         QStringLiteral("summary.txt"), place.asker, chooser);
    dialog.findChild<QPushButton *>(QStringLiteral("saveReportButton"))->click();
    return savedWithBoxes(place, place.asker.texts.isEmpty());
}

Saved settings(Place &, int state)
{
    const base::UserSettings kept(QStringLiteral("campaign"));
    kept.setValue(QStringLiteral("sizes"), QByteArray(300, static_cast<char>('a' + state)));
    return savedAs({});
}

} // namespace

std::vector<Operation> exportOperations()
{
    using Unit = Operation::Unit;
    return {
        {"LAS file", ":", Unit::All, false, lasFile},
        {"TIFF picture", ":", Unit::All, false, tiff},
        {"JPEG picture", ":", Unit::All, false, jpeg},
        {"PNG picture", ":", Unit::All, false, png},
        {"PDF at true scale", "sheet.pdf", Unit::File, false, sheet, 50000},
        {"summary", "summary.txt", Unit::All, false, summary},
        {"settings", nullptr, Unit::All, false, settings},
    };
}

Saved save(const Operation &operation, Place &place, int state)
{
    place.asker.texts.clear();
    place.host.errors.clear();
    return operation.write(place, state);
}

std::vector<Operation> operations(const QByteArray &name)
{
    std::vector<Operation> all;
    for (const std::vector<Operation> &some :
         {surveyOperations(), projectOperations(), exportOperations(), batchOperations()})
        for (const Operation &operation : some)
            if (name.isEmpty() || name == operation.name)
                all.push_back(operation);
    return all;
}

} // namespace campaign
