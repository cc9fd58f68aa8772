#include "demolaunch.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QGraphicsView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
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

    // From the entry in the tree to a panel that is there again after the next launch.
    void aCorrelationIsMadeByMouse()
    {
        DemoLaunch demo;
        const DoubleClicksAreOver quick;
        auto *window = find<QMainWindow>(demo.window, "MainWindow");
        window->showNormal();
        window->resize(1400, 900);
        addCorrelation(demo);
        auto *dialog = find<QDialog>(demo.window, "CorrelationPropertiesDialog");
        QVERIFY(dialog->isVisible());
        fillDialog(demo, dialog);
        QTest::mouseClick(find<QPushButton>(*dialog, "saveButton"), Qt::LeftButton);
        QTest::mouseClick(find<QPushButton>(*dialog, "closeButton"), Qt::LeftButton);
        QVERIFY2(demo.boxes.seen.isEmpty(),
                 qPrintable(demo.boxes.seen.isEmpty() ? QString() : demo.boxes.seen.first().text));
        QCOMPARE(files::read(demo.survey + "/WLC/Correlations/West flank/properties.txt"),
                 QByteArray("Correlation:West flank\nTrackWidth:1.5\nScale:750\nNumber Of Wells:2\n"
                            "Aldra-2:Simple\nBrisk-1:Triple Combo\nMarker:2\nKestrane Upper Sst\n"
                            "Kestrane Middle Shale\nPerforation Flag:1\nZones:1\n"
                            "Sand|Kestrane Upper Sst|2090|#3060c0|1|0|1\n"));
        QCOMPARE(correlationNames(demo), QStringList({"Kestrane reservoir", "West flank"}));
        auto *tabs = find<QTabWidget>(demo.window, "correlationTabs");
        QCOMPARE(tabs->tabText(0), QString("West flank"));
        const auto shownWells = [&demo] {
            QStringList texts;
            for (const QComboBox *chooser :
                 find<QTableWidget>(demo.window, "wellsTable")->findChildren<QComboBox *>())
                texts.append(chooser->currentText());
            texts.sort();
            return texts;
        };
        const QStringList wells{"Aldra-2", "Brisk-1", "Simple", "Triple Combo"};
        QCOMPARE(shownWells(), wells);
        auto *view = find<QGraphicsView>(demo.window, "correlationView");
        const QRectF scene = view->sceneRect();
        view->centerOn(500, 2060.0 / 750 * 100 * 96 / 2.54);
        QVERIFY(count(view->grab().toImage(), shaded(QColor("#3060c0"))) > 100);

        // The next launch replaces this one.
        demo.window.menuBar()->actions().first()->menu()->actions().last()->trigger();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window = find<QMainWindow>(demo.window, "MainWindow");
        window->showNormal();
        window->resize(1400, 900);
        QCoreApplication::processEvents();
        QCOMPARE(correlationNames(demo), QStringList({"Kestrane reservoir", "West flank"}));
        QCOMPARE(find<QTabWidget>(demo.window, "correlationTabs")->count(), 0);
        open(demo, 1);
        QCOMPARE(find<QTabWidget>(demo.window, "correlationTabs")->tabText(0), QString("West flank"));
        view = find<QGraphicsView>(demo.window, "correlationView");
        QCOMPARE(view->sceneRect().size(), scene.size());
        dialog = find<QDialog>(demo.window, "CorrelationPropertiesDialog");
        QVERIFY(!dialog->isVisible());
        QCOMPARE(shownWells(), wells);
        QCOMPARE(find<QComboBox>(*dialog, "trackWidthChooser")->currentText(), QString("1.5"));
        QCOMPARE(find<QComboBox>(*dialog, "scaleChooser")->currentText(), QString("750"));
        QVERIFY(find<QCheckBox>(*dialog, "zonesBox")->isChecked());
        QCOMPARE(find<QTableWidget>(*dialog, "zonesTable")->rowCount(), 1);
        view->centerOn(500, 2060.0 / 750 * 100 * 96 / 2.54);
        QVERIFY(count(view->grab().toImage(), shaded(QColor("#3060c0"))) > 100);
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
    /// A list that opens under the mouse takes no choice within the time of a double click.
    struct DoubleClicksAreOver
    {
        DoubleClicksAreOver() { QApplication::setDoubleClickInterval(0); }
        ~DoubleClicksAreOver() { QApplication::setDoubleClickInterval(before); }
        int before = QApplication::doubleClickInterval();
    };
    static QStringList correlationNames(const DemoLaunch &demo)
    {
        const QTreeWidgetItem *correlations = find<QTreeWidget>(demo.window, "ProjectTreeWidget")->topLevelItem(1);
        QStringList names;
        for (int i = 0; i < correlations->childCount(); ++i)
            names.append(correlations->child(i)->text(0));
        return names;
    }
    static void addCorrelation(const DemoLaunch &demo)
    {
        auto *tree = find<QTreeWidget>(demo.window, "ProjectTreeWidget");
        QTimer::singleShot(0, tree, [] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction *action : menu->actions())
                if (action->text() == "Add Correlation")
                    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            menu->close();
        });
        tree->scrollToItem(tree->topLevelItem(1));
        const QPoint place = tree->visualItemRect(tree->topLevelItem(1)).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree->viewport(), &event);
        QCoreApplication::processEvents();
    }
    static void choose(QComboBox *chooser, const QString &text)
    {
        // The arrow: a click into the text of one that can be typed into opens nothing.
        QTest::mouseClick(chooser, Qt::LeftButton, {}, QPoint(chooser->width() - 8, chooser->height() / 2));
        QAbstractItemView *list = chooser->view();
        const QModelIndex index = list->model()->index(chooser->findText(text), 0);
        list->scrollTo(index);
        const QPoint place = list->visualRect(index).center();
        QTest::mouseMove(list->viewport(), place);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(chooser->currentText(), text);
    }
    static void clickCell(QTableWidget *table, int row, int column)
    {
        table->scrollToItem(table->item(row, column));
        const QRect cell = table->visualItemRect(table->item(row, column));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 10, cell.center().y()));
    }
    static QComboBox *chooserAt(const QTableWidget *table, int row, int column)
    {
        return qobject_cast<QComboBox *>(table->cellWidget(row, column));
    }
    static void fillDialog(DemoLaunch &demo, QDialog *dialog)
    {
        auto *name = find<QLineEdit>(*dialog, "nameEdit");
        QTest::mouseDClick(name, Qt::LeftButton);
        name->selectAll();
        QTest::keyClicks(name, "West flank");
        auto *wells = find<QTableWidget>(*dialog, "wellsTable");
        for (int row = 0; row < 2; ++row) {
            QTest::mouseClick(find<QPushButton>(*dialog, "addWellButton"), Qt::LeftButton);
            choose(chooserAt(wells, row, 0), row == 0 ? "Aldra-2" : "Brisk-1");
            choose(chooserAt(wells, row, 1), row == 0 ? "Simple" : "Triple Combo");
        }
        auto *markers = find<QTableWidget>(*dialog, "markersTable");
        for (const char *marker : {"Kestrane Upper Sst", "Kestrane Middle Shale"}) {
            const QList<QTableWidgetItem *> found = markers->findItems(marker, Qt::MatchExactly);
            QCOMPARE(found.size(), 1);
            clickCell(markers, found.first()->row(), 1);
        }
        QTest::mouseClick(find<QCheckBox>(*dialog, "zonesBox"), Qt::LeftButton, {}, QPoint(8, 8));
        QTest::mouseClick(find<QPushButton>(*dialog, "addZoneButton"), Qt::LeftButton);
        auto *zones = find<QTableWidget>(*dialog, "zonesTable");
        const QPoint nameCell = zones->visualItemRect(zones->item(0, 0)).center();
        QTest::mouseClick(zones->viewport(), Qt::LeftButton, {}, nameCell);
        QTest::mouseDClick(zones->viewport(), Qt::LeftButton, {}, nameCell);
        auto *editor = zones->viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        QTest::keyClicks(editor, "Sand");
        QTest::keyClick(editor, Qt::Key_Return);
        choose(chooserAt(zones, 0, 1), "Kestrane Upper Sst");
        QLineEdit *end = chooserAt(zones, 0, 2)->lineEdit();
        QTest::mouseClick(end, Qt::LeftButton);
        end->selectAll();
        QTest::keyClicks(end, "2090");
        demo.boxes.onDialog = [](QWidget *widget) {
            if (auto *colors = qobject_cast<QColorDialog *>(widget)) {
                colors->setCurrentColor(QColor("#3060c0"));
                colors->accept();
            }
        };
        clickCell(zones, 0, 3);
        demo.boxes.onDialog = nullptr;
        // By keys: at the lower end of the small screen of the tests the list does not open under the mouse.
        QTest::keyClicks(find<QComboBox>(*dialog, "trackWidthChooser"), "1.5");
        auto *scale = find<QComboBox>(*dialog, "scaleChooser");
        scale->lineEdit()->selectAll();
        QTest::keyClicks(scale->lineEdit(), "750");
    }
    static void open(const DemoLaunch &demo, int index = 0)
    {
        auto *tree = find<QTreeWidget>(demo.window, "ProjectTreeWidget");
        QTreeWidgetItem *correlations = tree->topLevelItem(1);
        correlations->setExpanded(true);
        tree->scrollToItem(correlations->child(index));
        const QPoint place = tree->visualItemRect(correlations->child(index)).center();
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
