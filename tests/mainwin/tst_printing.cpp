#include "base/keptlooks.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/printedpage.h"
#include "mainwin/projecttreewidget.h"
#include "support/files.h"
#include "support/modaldialog.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QAction>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QLabel>
#include <QPaintEngine>
#include <QPainter>
#include <QPrintEngine>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QThread>
#include <QTimer>

namespace {

/// Ends it when a view is given one size after the other without an end.
class ResizeLimit : public QObject
{
public:
    explicit ResizeLimit(QGraphicsView *view)
        : m_view(view)
    {
        view->viewport()->installEventFilter(this);
    }
    bool isReached() const { return m_resizes > most; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize && ++m_resizes > most)
            m_view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        return false;
    }

private:
    static constexpr int most = 2000;
    QGraphicsView *m_view;
    int m_resizes = 0;
};

/// A printer that keeps its page as a picture.
class PictureEngine : public QPaintEngine, public QPrintEngine
{
public:
    PictureEngine()
        : QPaintEngine(AllFeatures)
    {
    }
    bool begin(QPaintDevice *) override
    {
        page = QImage(width, 300, QImage::Format_RGB32);
        page.fill(Qt::white);
        return true;
    }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &changed) override { hints = changed.renderHints(); }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
    void drawImage(const QRectF &target, const QImage &image, const QRectF &source, Qt::ImageConversionFlags) override
    {
        QPainter(&page).drawImage(target, image, source);
    }
    Type type() const override { return User; }
    void setProperty(PrintEnginePropertyKey, const QVariant &) override { }
    QVariant property(PrintEnginePropertyKey) const override { return {}; }
    bool newPage() override { return true; }
    bool abort() override { return true; }
    int metric(QPaintDevice::PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case QPaintDevice::PdmWidth:
            return width;
        case QPaintDevice::PdmHeight:
            return 300;
        default:
            return 96;
        }
    }
    QPrinter::PrinterState printerState() const override { return QPrinter::Idle; }
    QImage page;
    int width = 400;
    QPainter::RenderHints hints;
};

class PicturePrinter : public QPrinter
{
public:
    PicturePrinter() { setEngines(&engine, &engine); }
    PictureEngine engine;
};

/// Takes its time for every paint.
class SlowItem : public QGraphicsItem
{
public:
    QRectF boundingRect() const override { return {0, 0, 300, 200000}; }
    void paint(QPainter *, const QStyleOptionGraphicsItem *, QWidget *) override
    {
        ++paints;
        QThread::msleep(static_cast<unsigned long>(delayMs));
    }
    int paints = 0;
    int delayMs = 20;
};

struct CountingView
{
    std::optional<PicturePage> saveCurrentPicture()
    {
        ++saved;
        return isCancelled ? std::nullopt : std::optional<PicturePage>(PicturePage(QSize(40, 30)));
    }
    bool isCancelled = false;
    int saved = 0;
};

struct PrintFixture : ProjectFixture
{
    PrintFixture()
    {
        for (const char *name : {"A", "B"})
            addWell(QString::fromLatin1(name), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        open();
        window = std::make_unique<MainWindow>(*launch);
        window->show();
        view = window->findChild<WellLogsViewWidget *>();
        emit window->projectTree()->sendWellDisplayProperties(QStringLiteral("A"), QStringLiteral("Default"));
        emit window->projectTree()->sendWellDisplayProperties(QStringLiteral("B"), QStringLiteral("Simple"));
    }
    QImage printed()
    {
        PicturePrinter printer;
        window->printPreView(&printer);
        return printer.engine.page;
    }
    QImage expected(int tab) const
    {
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        view->display(tab)->renderTo(painter);
        return image;
    }
    std::unique_ptr<MainWindow> window;
    WellLogsViewWidget *view = nullptr;
};

bool isBlank(const QImage &image)
{
    QImage white(image.size(), image.format());
    white.fill(Qt::white);
    return image == white;
}

} // namespace

class tst_printing : public QObject
{
    Q_OBJECT

private slots:
    void thePageIsTheDisplayInFront()
    {
        PrintFixture fixture;
        QVERIFY(!isBlank(fixture.expected(0)));
        QVERIFY(fixture.expected(0) != fixture.expected(1));
        fixture.view->setCurrentTab(0);
        QCOMPARE(fixture.printed(), fixture.expected(0));
        QVERIFY(QFileInfo::exists(fixture.path(QStringLiteral("/A.tiff"))));
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/B.tiff"))));
        fixture.view->setCurrentTab(1);
        QCOMPARE(fixture.printed(), fixture.expected(1));
    }

    void otherTabsPrintNothing()
    {
        PrintFixture fixture;
        auto *tabs = qobject_cast<QTabWidget *>(fixture.window->centralWidget());
        for (int tab : {1, 2}) {
            tabs->setCurrentIndex(tab);
            PicturePrinter printer;
            fixture.window->printPreView(&printer);
            QVERIFY(printer.engine.page.isNull());
        }
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/B.tiff"))));
        QVERIFY(fixture.asker.boxes.isEmpty());
    }

    // What no printer is there for cannot be set up, and Qt only warns of it.
    void thePageSetupNeedsAPrinter()
    {
        const bool hasPrinter = QPrinter(QPrinter::ScreenResolution).outputFormat() == QPrinter::NativeFormat;
        int found = 0;
        PrintFixture fixture;
        whenModal<QPrintPreviewDialog>(fixture.window.get(), [&found, hasPrinter](QPrintPreviewDialog *preview) {
            for (const QAction *action : preview->findChildren<QAction *>()) {
                if (action->text() != "Page setup")
                    continue;
                ++found;
                QCOMPARE(action->isEnabled(), hasPrinter);
            }
            preview->reject();
        });
        fixture.window->printActionClicked();
        QCOMPARE(found, 1);
    }

    void thePreviewIsLargeAndKeepsItsSize()
    {
        PrintFixture fixture;
        const QSize room = base::roomOnScreen(*fixture.window);
        QVector<QSize> sizes;
        for (int i = 0; i < 2; ++i) {
            whenModal<QPrintPreviewDialog>(fixture.window.get(), [&sizes](QPrintPreviewDialog *preview) {
                sizes.append(preview->size());
                preview->resize(640, 480);
                preview->reject();
            });
            fixture.window->printActionClicked();
        }
        QCOMPARE(sizes, QVector<QSize>({QSize(960, 900).boundedTo(room), QSize(640, 480)}));
    }

    // The preview draws the page smaller than it is: a thin line must not come and go along its way.
    void thePageIsDrawnSmoothly()
    {
        PrintFixture fixture;
        PicturePrinter printer;
        fixture.window->printPreView(&printer);
        QVERIFY(printer.engine.hints & QPainter::SmoothPixmapTransform);
    }

    // A scroll bar takes from the page that is fitted into the rest, which then needs none, and so on.
    void noSizeOfThePreviewKeepsItBusy()
    {
        PrintFixture fixture;
        bool areBarsShown = false; // whatever there is to see
        QSize busyAt;
        whenModal<QPrintPreviewDialog>(fixture.window.get(), [&](QPrintPreviewDialog *preview) {
            auto *view = preview->findChild<QGraphicsView *>();
            areBarsShown = view->horizontalScrollBar()->isVisible() && view->verticalScrollBar()->isVisible();
            const ResizeLimit limit(view);
            for (QAction *action : preview->findChildren<QAction *>())
                if (action->text() == "Fit width")
                    action->trigger();
            for (int height = 410; height < 460 && !limit.isReached(); ++height) {
                preview->resize(300, height);
                QCoreApplication::processEvents();
                busyAt = preview->size();
            }
            if (!limit.isReached())
                busyAt = QSize();
            preview->reject();
        });
        fixture.window->printActionClicked();
        QVERIFY(areBarsShown);
        QCOMPARE(busyAt, QSize());
    }

    void aSecondPreviewHasAPageOfItsOwn()
    {
        PrintFixture fixture;
        QVector<QImage> pages;
        const auto preview = [&fixture, &pages] {
            whenModal<QPrintPreviewDialog>(fixture.window.get(), [&fixture, &pages](QPrintPreviewDialog *dialog) {
                pages.append(fixture.printed());
                pages.append(fixture.printed());
                dialog->reject();
            });
            fixture.window->printActionClicked();
        };
        fixture.view->setCurrentTab(0);
        preview();
        fixture.view->setCurrentTab(1);
        preview();
        QCOMPARE(pages.size(), 4);
        QVERIFY(QFileInfo::exists(fixture.path(QStringLiteral("/B.tiff"))));
        for (int i = 0; i < 4; ++i)
            QCOMPARE(pages.at(i), fixture.expected(i / 2));
    }

    // A preview paints its page again for every change of the zoom.
    void aPageIsDrawnAndItsPictureSavedOnce()
    {
        CountingView view;
        PrintedPage page(view);
        PicturePrinter printer;
        for (int i = 0; i < 3; ++i)
            QCOMPARE(page.paint(printer), PrintedPage::Outcome::Painted);
        QCOMPARE(view.saved, 1);
        printer.engine.width = 500; // another paper: the page comes from the picture
        QCOMPARE(page.paint(printer), PrintedPage::Outcome::Painted);
        QCOMPARE(view.saved, 1);
    }

    void aCancelledPageStaysEmpty()
    {
        CountingView view;
        view.isCancelled = true;
        PrintedPage page(view);
        PicturePrinter printer;
        for (int i = 0; i < 2; ++i)
            QCOMPARE(page.paint(printer), PrintedPage::Outcome::Cancelled);
        QCOMPARE(view.saved, 1);
        QVERIFY(isBlank(printer.engine.page));
    }

    // The whole way, with a display that takes long: the box comes up over the preview, and its button ends both.
    void aLongPrintCanBeCancelled()
    {
        PrintFixture fixture;
        fixture.view->setCurrentTab(0);
        WellLogsScene *scene = fixture.view->display(0)->scene();
        auto *slow = new SlowItem;
        scene->addItem(slow);
        scene->setSceneRect(0, 0, 300, 200000);
        bool wasShown = false;
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&wasShown] {
            auto *box = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            if (!box || wasShown)
                return;
            wasShown = true;
            QCOMPARE(box->windowTitle(), QString("Print"));
            QCOMPARE(box->labelText(), QString("Drawing A"));
            box->findChild<QPushButton *>()->click();
        });
        watch.start(10);
        fixture.window->printActionClicked(); // returns when the preview has closed
        QVERIFY(wasShown);
        QVERIFY(slow->paints < 150);
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/A.tiff"))));
        QCOMPARE(QDir(fixture.path(QString())).entryList({QStringLiteral(".lorva-*")}, QDir::Files | QDir::Hidden),
                 QStringList());
        QCOMPARE(fixture.view->display(0)->findChild<QLabel *>(QStringLiteral("statusLine"))->text(),
                 QString("The picture was cancelled; nothing was saved."));
        QVERIFY(fixture.asker.boxes.isEmpty());
    }

    void aPrintPaintsEachBandOnce()
    {
        PrintFixture fixture;
        fixture.view->setCurrentTab(0);
        WellLogsScene *scene = fixture.view->display(0)->scene();
        auto *counter = new SlowItem;
        counter->delayMs = 0;
        scene->addItem(counter);
        scene->setSceneRect(0, 0, 300, 20000);
        bool isPrinted = false;
        whenModal<QPrintPreviewDialog>(fixture.window.get(), [&fixture, &isPrinted](QPrintPreviewDialog *preview) {
            isPrinted = QFileInfo::exists(fixture.path(QStringLiteral("/A.tiff")));
            fixture.printed();
            fixture.printed();
            preview->reject();
        });
        fixture.window->printActionClicked();
        QVERIFY(isPrinted);
        // 20 bands of 1,024 rows, and a few of the window's own
        QVERIFY2(counter->paints < 30, qPrintable(QString::number(counter->paints)));
    }

    void aPrintThatCannotStartSaysSo()
    {
        PrintFixture fixture;
        QPrinter printer;
        const QString path = fixture.path(QStringLiteral("/no such folder/page.pdf"));
        printer.setOutputFileName(path);
        fixture.window->printPreView(&printer);
        QCOMPARE(fixture.asker.boxes.size(), 1);
        QCOMPARE(fixture.asker.boxes.first().icon, base::BoxIcon::Warning);
        QCOMPARE(fixture.asker.boxes.first().title, QString("Print"));
        QCOMPARE(fixture.asker.boxes.first().text,
                 QString("The print could not be started; nothing was printed.\n") + path);
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/B.tiff"))));
    }
};

LORVA_TEST_MAIN(tst_printing)
#include "tst_printing.moc"
