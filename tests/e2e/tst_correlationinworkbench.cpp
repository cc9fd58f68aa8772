#include "demolaunch.h"
#include "support/testmain.h"

#include <QComboBox>
#include <QDockWidget>
#include <QGraphicsView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <QWheelEvent>

/// The demo's correlation through the built plug-in in the workbench, by mouse: opened, zoomed, flattened, closed.
class tst_correlationinworkbench : public QObject
{
    Q_OBJECT

private slots:
    void aDoubleClickShowsTheDemosCorrelation()
    {
        DemoLaunch demo;
        auto *window = find<QMainWindow>(demo.window, "MainWindow");
        window->showNormal();
        window->resize(1400, 900);
        open(demo);
        QCOMPARE(find<QTabWidget>(demo.window, "centralTabs")->currentIndex(), 1);
        auto *tabs = find<QTabWidget>(demo.window, "correlationTabs");
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), QString("Kestrane reservoir"));

        auto *view = find<QGraphicsView>(demo.window, "correlationView");
        QScrollBar *bar = view->verticalScrollBar();
        view->centerOn(0, 7780); // the reservoir
        QCoreApplication::processEvents();
        QVERIFY(count(view->grab().toImage(), QColor(0x0e, 0x6f, 0x21)) > 100); // gamma ray of the template
        QVERIFY(count(view->grab().toImage(), shaded(QColor("#e6b800"))) > 100); // a zone between wells

        for (const QPoint place : {QPoint(150, 300), QPoint(155, 305)}) {
            QMouseEvent move(QEvent::MouseMove, place, view->viewport()->mapToGlobal(place), Qt::NoButton,
                             Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(view->viewport(), &move);
        }
        QVERIFY2(statusLine(tabs)->text().startsWith("Aldra-1 | "), qPrintable(statusLine(tabs)->text()));
        QVERIFY2(statusLine(tabs)->text().contains("GR:"), qPrintable(statusLine(tabs)->text()));

        const auto *properties = find<QDockWidget>(demo.window, "propertiesDock");
        auto *scale = properties->widget()->findChild<QLineEdit *>("scaleEdit");
        QCOMPARE(scale->text(), QString("1000"));
        const int before = bar->maximum();
        QWheelEvent turn(QPointF(50, 50), view->viewport()->mapToGlobal(QPoint(50, 50)), {}, QPoint(0, 120),
                         Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &turn);
        QCOMPARE(scale->text(), QString("950"));
        QVERIFY(bar->maximum() > before);
        properties->widget()->findChild<QComboBox *>("flatAtBox")->setCurrentText("Kestrane Upper Sst");
        // All wells hang on that top now, 1000 m below their upper end.
        view->centerOn(0, 1000.0 / 950 * 100 * 96 / 2.54);
        QVERIFY(count(view->grab().toImage(), shaded(QColor("#e6b800"))) > 100);

        emit tabs->tabCloseRequested(0);
        QCOMPARE(tabs->count(), 0);
        QVERIFY(demo.boxes.seen.isEmpty());
    }

    // The plug-in's code goes before the application: nothing of it may be left behind in Qt.
    void theWorkbenchMayEndWithACorrelationOpen()
    {
        DemoLaunch demo;
        open(demo);
        QCOMPARE(find<QTabWidget>(demo.window, "correlationTabs")->count(), 1);
        QCoreApplication::processEvents();
    }

private:
    template<class Widget>
    static Widget *find(const QWidget &parent, const char *name)
    {
        auto *found = parent.findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    static QLabel *statusLine(const QWidget *tabs) { return tabs->findChild<QLabel *>("statusLine"); }
    static void open(const DemoLaunch &demo)
    {
        auto *tree = find<QTreeWidget>(demo.window, "ProjectTreeWidget");
        QTreeWidgetItem *correlations = tree->topLevelItem(1);
        correlations->setExpanded(true);
        tree->scrollToItem(correlations->child(0));
        const QPoint place = tree->visualItemRect(correlations->child(0)).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
    }
    // A colour of alpha 80 over white paper.
    static QColor shaded(const QColor &color)
    {
        QImage pixel(1, 1, QImage::Format_RGB32);
        pixel.fill(Qt::white);
        QColor ink = color;
        ink.setAlpha(80);
        QPainter(&pixel).fillRect(0, 0, 1, 1, ink);
        return pixel.pixelColor(0, 0);
    }
    // Blending may round either way.
    static bool isAlike(const QColor &a, const QColor &b)
    {
        return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue()) <= 3;
    }
    static int count(const QImage &image, const QColor &color)
    {
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                pixels += isAlike(image.pixelColor(x, y), color);
        return pixels;
    }
};

LORVA_TEST_MAIN(tst_correlationinworkbench)
#include "tst_correlationinworkbench.moc"
