#include "demolaunch.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "tests/workbench/dialogscript.h"
#include "workbench/topsdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGraphicsView>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>

#include <cmath>

/// The well data manager of the built plug-in in the workbench, on the demo survey on disk: what is typed and imported is
/// there in tree, display and correlation, and after a new launch.
class tst_welldatainworkbench : public QObject
{
    Q_OBJECT

private slots:
    // A top of the demo's correlation is taken out of the first well and typed again at another depth.
    void aTypedMarkerIsThereEverywhereAndAfterARestart()
    {
        const QString name = "Sabrane Shale";
        DemoLaunch demo;
        sizeWindow(demo); // a correlation makes items of the wells near what is seen of it, and keeps them
        auto *tree = find<QTreeWidget>(demo.window, "ProjectTreeWidget");
        QTreeWidgetItem *well = tree->topLevelItem(0)->child(0);
        const QString wellName = well->text(0);
        well->setCheckState(0, Qt::Checked);
        emit tree->itemClicked(well, 0);
        emit tree->itemDoubleClicked(tree->topLevelItem(1)->child(0), 0);
        auto *display = find<QGraphicsView>(demo.window, "logView");
        auto *correlation = find<QGraphicsView>(demo.window, "correlationView");
        const int wells = markersOf(correlation, name).size();
        QVERIFY(wells > 1);

        auto *markers = openEditor(demo, wellName, 1);
        auto *table = find<QTableWidget>(*markers, "dataTable");
        const int count = table->rowCount();
        table->setCurrentCell(rowOf(table, name), 0);
        QTest::mouseClick(find<QPushButton>(*markers, "deleteButton"), Qt::LeftButton);
        QTest::mouseClick(find<QPushButton>(*markers, "updateButton"), Qt::LeftButton);
        QVERIFY(!childOf(childOf(well, "Markers"), name));
        QCOMPARE(markersOf(correlation, name).size(), wells - 1);

        QTest::mouseClick(find<QPushButton>(*markers, "addButton"), Qt::LeftButton);
        typeText(name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        typeText("1000");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::mouseClick(find<QPushButton>(*markers, "updateButton"), Qt::LeftButton);
        QCOMPARE(find<QLabel>(*markers, "statusLabel")->text(), QString("Marker data updated successfully !"));
        QVERIFY2(demo.boxes.seen.isEmpty(), qPrintable(demo.boxes.seen.value(0).text));

        QTreeWidgetItem *item = childOf(childOf(well, "Markers"), name);
        QVERIFY(item);
        QCOMPARE(item->checkState(0), Qt::Checked);
        QCOMPARE(markersOf(display, name).size(), 1);
        const float shownDepth = markersOf(display, name).first()->data(2).toFloat();
        const host::WellHeader header = demo.host.wells().header(demo.host.wells().list().value.first().key).value;
        QCOMPARE(header.name, wellName);
        QCOMPARE(shownDepth, 1000 - header.kbElevation - header.groundElevation);
        QCOMPARE(markersOf(correlation, name).size(), wells);

        // The host's own file holds it, and the next launch shows it.
        demo.window.menuBar()->actions().first()->menu()->actions().last()->trigger();
        auto *newTree = find<QTreeWidget>(demo.window, "ProjectTreeWidget");
        QVERIFY(newTree != tree);
        QVERIFY(childOf(childOf(newTree->topLevelItem(0)->child(0), "Markers"), name));
        auto *newMarkers = openEditor(demo, wellName, 1);
        auto *newTable = find<QTableWidget>(*newMarkers, "dataTable");
        QCOMPARE(newTable->rowCount(), count);
        const int row = rowOf(newTable, name);
        QVERIFY(row >= 0);
        QCOMPARE(qobject_cast<QLineEdit *>(newTable->cellWidget(row, 1))->text(), QString("1000"));
    }

    // The files that the demo puts aside for the imports.
    void theDemosFilesAreImported()
    {
        DemoLaunch demo;
        const QDir folder(demo.survey + "/Import");
        const QStringList tops = folder.entryList({"*_tops.txt"});
        QVERIFY(!tops.isEmpty());
        const QString wellName = tops.first().chopped(9);
        import(demo, openEditor(demo, wellName, 1), "MarkerDataWidgetASCII", folder.filePath(tops.first()));
        import(demo, openEditor(demo, wellName, 2), "WellPerforationASCII",
               folder.filePath(wellName + "_perforations.txt"));
        const QStringList cores = folder.entryList({wellName + "_core_*.txt"});
        QVERIFY(!cores.isEmpty());
        QWidget *points = openEditor(demo, wellName, 3);
        const QString group = cores.first().mid(wellName.size() + 6).chopped(4);
        auto *groups = find<QComboBox>(*points, "groupBox");
        groups->setCurrentIndex(groups->findText(group, Qt::MatchFixedString));
        import(demo, points, "CalibrationPointASCII", folder.filePath(cores.first()));
    }

    // A table of all wells: open displays and correlations follow while the workbench writes.
    void topsOfManyWellsAreThereAtOnce()
    {
        constexpr float wayM = 12;
        const QString name = "Sabrane Shale";
        DemoLaunch demo;
        sizeWindow(demo);
        auto *tree = find<QTreeWidget>(demo.window, "ProjectTreeWidget");
        QTreeWidgetItem *well = tree->topLevelItem(0)->child(0);
        well->setCheckState(0, Qt::Checked);
        emit tree->itemClicked(well, 0);
        QTreeWidgetItem *marker = childOf(childOf(well, "Markers"), name);
        QVERIFY(marker);
        marker->setCheckState(0, Qt::Checked);
        emit tree->itemClicked(marker, 0);
        emit tree->itemDoubleClicked(tree->topLevelItem(1)->child(0), 0);
        auto *display = find<QGraphicsView>(demo.window, "logView");
        auto *correlation = find<QGraphicsView>(demo.window, "correlationView");
        const auto depths = [&name](const QGraphicsView *view) {
            QVector<float> found;
            for (const QGraphicsItem *item : markersOf(view, name))
                found.append(item->data(2).toFloat());
            std::sort(found.begin(), found.end());
            return found;
        };
        const QVector<float> shown = depths(display);
        const QVector<float> joined = depths(correlation);
        QCOMPARE(shown.size(), 1);
        QVERIFY(joined.size() > 1);

        QByteArray table = "Well,Formation,MD (m)\n";
        for (const host::WellEntry &entry : demo.host.wells().list().value)
            for (const host::Marker &top : demo.host.wells().markers(entry.key).value)
                if (top.name == name)
                    table += entry.name.toUtf8() + ',' + name.toUtf8() + ','
                        + QByteArray::number(static_cast<double>(top.depth + wayM), 'f', 3) + '\n'
                        + entry.name.toUtf8() + ",Fresh,1000\n";
        const QString path = demo.folder.filePath("tops.csv");
        files::write(path, table);
        ScriptedAsker asker;
        onNextDialog("topsDialog", [](QDialog *dialog) {
            onNextDialog("reportDialog", [](QDialog *report) { report->reject(); });
            QTest::mouseClick(dialog->findChild<QPushButton *>("importButton"), Qt::LeftButton);
        });
        QVERIFY(workbench::importTops(demo.host.store(), asker, {}, {path}, &demo.window));
        QVERIFY2(demo.boxes.seen.isEmpty(), qPrintable(demo.boxes.seen.value(0).text));
        const auto haveMoved = [wayM](const QVector<float> &before, const QVector<float> &now) {
            return std::equal(before.begin(), before.end(), now.begin(), now.end(),
                              [wayM](float a, float b) { return std::abs(b - a - wayM) < 0.01f; });
        };
        QVERIFY(haveMoved(shown, depths(display)));
        QVERIFY(haveMoved(joined, depths(correlation)));
        QVERIFY(childOf(childOf(well, "Markers"), "Fresh"));
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
    static void typeText(const QString &text)
    {
        QTRY_VERIFY(QApplication::focusWidget());
        for (const QChar character : text)
            QTest::keyClicks(QApplication::focusWidget(), character);
    }
    static QTreeWidgetItem *childOf(const QTreeWidgetItem *parent, const QString &text)
    {
        for (int i = 0; parent && i < parent->childCount(); ++i)
            if (parent->child(i)->text(0) == text)
                return parent->child(i);
        return nullptr;
    }
    static QVector<QGraphicsItem *> markersOf(const QGraphicsView *view, const QString &name)
    {
        constexpr int markerNameKey = 1;
        QVector<QGraphicsItem *> markers;
        for (QGraphicsItem *item : view->scene()->items())
            if (item->data(markerNameKey).toString() == name)
                markers.append(item);
        return markers;
    }
    static int rowOf(const QTableWidget *table, const QString &name)
    {
        for (int row = 0; row < table->rowCount(); ++row)
            if (table->item(row, 0)->text() == name)
                return row;
        return -1;
    }
    static QMainWindow *sizeWindow(const DemoLaunch &demo)
    {
        auto *window = find<QMainWindow>(demo.window, "MainWindow");
        window->showNormal();
        window->resize(1400, 900);
        QCoreApplication::processEvents();
        return window;
    }
    static QWidget *openEditor(const DemoLaunch &demo, const QString &wellName, int tab)
    {
        QMainWindow *window = sizeWindow(demo);
        find<QTabWidget>(*window, "centralTabs")->setCurrentIndex(2);
        auto *manager = find<QWidget>(*window, "WellsDataManagerWidget");
        find<QComboBox>(*manager, "wellBox")->setCurrentText(wellName);
        auto *tabs = find<QTabWidget>(*manager, "editorTabs");
        tabs->setCurrentIndex(tab);
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window))
            qFatal("the window gets no focus");
        return tabs->currentWidget();
    }
    // Through the buttons and Qt's own choice of a file; what is there already is replaced.
    static void import(DemoLaunch &demo, QWidget *editor, const char *name, const QString &path)
    {
        demo.boxes.onDialog = [path](QWidget *widget) {
            if (auto *chooser = qobject_cast<QFileDialog *>(widget)) {
                chooser->selectFile(path);
                QMetaObject::invokeMethod(chooser, "accept");
            }
        };
        QTest::mouseClick(find<QPushButton>(*editor, "asciiFileButton"), Qt::LeftButton);
        const QPointer<QWidget> dialog = find<QWidget>(*editor, name);
        QTest::mouseClick(find<QPushButton>(*dialog, "browseButton"), Qt::LeftButton);
        QCOMPARE(find<QLineEdit>(*dialog, "fileEdit")->text(), path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromLatin1(file.readAll());
        QCOMPARE(find<QPlainTextEdit>(*dialog, "fileText")->toPlainText(), text);
        find<QLineEdit>(*dialog, "headerLinesEdit")->setText("1");
        QTest::mouseClick(find<QPushButton>(*dialog, "importButton"), Qt::LeftButton);
        QVERIFY(!dialog || !dialog->isVisible());
        QCOMPARE(find<QTableWidget>(*editor, "dataTable")->rowCount(), text.count('\n') - 1);
    }
};

LORVA_TEST_MAIN(tst_welldatainworkbench)
#include "tst_welldatainworkbench.moc"
