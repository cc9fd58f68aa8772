#include "demolaunch.h"
#include "support/testmain.h"

#include <QDir>
#include <QDockWidget>
#include <QGraphicsView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>
#include <QTreeWidget>

/// A well display through the built plug-in in the workbench: opened, read out, edited, closed.
class tst_displayinworkbench : public QObject
{
    Q_OBJECT

private slots:
    void aCheckedWellIsDisplayed()
    {
        DemoLaunch demo;
        auto *tree = demo.window.findChild<QTreeWidget *>("ProjectTreeWidget");
        QTreeWidgetItem *well = tree->topLevelItem(0)->child(0);
        well->setCheckState(0, Qt::Checked);
        emit tree->itemClicked(well, 0);

        auto *tabs = demo.window.findChild<QTabWidget *>("wellTabs");
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), well->text(0) + ":Default");
        auto *view = demo.window.findChild<QGraphicsView *>("logView");
        QVERIFY(view);
        view->window()->showNormal(); // the screen of the tests has no room for the docks and a view
        view->window()->resize(1400, 900);
        QCoreApplication::processEvents();
        view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum() / 2);
        QVERIFY(count(view->grab().toImage(), QColor(0x0e, 0x6f, 0x21)) > 100); // the gamma ray curve of the template

        view->centerOn(QPointF(100, 5000));
        QTest::mouseMove(view->viewport(), view->mapFromScene(QPointF(100, 5000)));
        QTest::mouseMove(view->viewport(), view->mapFromScene(QPointF(105, 5005)));
        QTRY_VERIFY(demo.window.findChild<QLabel *>("statusLine")->text().contains("GR:"));

        auto *properties = demo.window.findChild<QDockWidget *>("propertiesDock");
        auto *scale = properties->widget()->findChild<QLineEdit *>("scaleEdit");
        const int before = view->verticalScrollBar()->maximum();
        scale->setText("500");
        QTest::keyClick(scale, Qt::Key_Return);
        QVERIFY(view->verticalScrollBar()->maximum() > before + before / 2);

        emit tabs->tabCloseRequested(0);
        QCOMPARE(tabs->count(), 0);
        QCOMPARE(well->checkState(0), Qt::Unchecked);
        QVERIFY(demo.boxes.seen.isEmpty());
    }

    // The plug-in's code goes before the application: nothing of it may be left behind in Qt.
    void theWorkbenchMayEndWithADisplayOpen()
    {
        DemoLaunch demo;
        auto *tree = demo.window.findChild<QTreeWidget *>("ProjectTreeWidget");
        QTreeWidgetItem *well = tree->topLevelItem(0)->child(1);
        well->setCheckState(0, Qt::Checked);
        emit tree->itemClicked(well, 0);
        QCOMPARE(demo.window.findChild<QTabWidget *>("wellTabs")->count(), 1);
        QCoreApplication::processEvents();
    }

private:
    static int count(const QImage &image, const QColor &color)
    {
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                pixels += image.pixelColor(x, y) == color;
        return pixels;
    }
};

LORVA_TEST_MAIN(tst_displayinworkbench)
#include "tst_displayinworkbench.moc"
