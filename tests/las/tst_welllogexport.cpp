#include "exportfixture.h"
#include "las/welllogstabwidget.h"
#include "support/testmain.h"
#include "tests/las/strictlaschecker.h"

#include <QCheckBox>
#include <QDoubleValidator>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QSignalSpy>

Q_DECLARE_METATYPE(QListWidgetItem *)

class TestWellLogExport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<QListWidgetItem *>(); }
    void widgetsFromTopToBottom();
    void slotsHaveTheirNames();
    void checkedWellsGetTabs();
    void logsOfATab();
    void allBox();
    void browse();
    void theChooserBeginsInTheLastFolder();
    void intervalBox();
    void nothingToExport();
    void exportsTheCheckedLogs();
    void wholeFile();
    void resamplesWhereTheBoxIsChecked();
    void uncheckedBoxStillSteps();
    void wellDepthAboveTheLogs();
    void logWithOneSample();
    void undefinedSamples();
    void wellWithoutCheckedLog();
    void progress();
    void oddWellNames();
    void twoWellsOfOneName();
    void catalogueReadAnew();
    void logsOfOneName();
    void asciiButton();
    void nothingIsKept();
    void keyboardAlone();
};

void TestWellLogExport::widgetsFromTopToBottom()
{
    ExportFixture f;
    QCOMPARE(f.dialog->windowTitle(), exportTitle);
    QVERIFY(!f.dialog->windowIcon().isNull());
    QCOMPARE(f.dialog->windowIcon().pixmap(16).toImage(), f.host.icon(text("export_wlc.png")).pixmap(16).toImage());
    QStringList labels;
    for (const QLabel *label : f.dialog->findChildren<QLabel *>())
        labels.append(label->text());
    for (const char *expected : {"Select Well(s)", "Select Log(s)", "Depth Interval :", "Output Folder :"})
        QVERIFY2(labels.contains(text(expected)), expected);
    QCOMPARE(f.button("browseButton")->text(), text("Browse"));
    QCOMPARE(f.button("exportButton")->text(), text("Export"));
    QCOMPARE(f.button("closeButton")->text(), text("Close"));
    QCOMPARE(f.button("asciiButton")->text(), text("Curves in ASCII"));
    QCOMPARE(f.find<QLineEdit>("intervalEdit")->text(), text("0.1524"));
    QVERIFY(f.find<QLineEdit>("folderEdit")->text().isEmpty());
    QVERIFY(f.find<QCheckBox>("intervalBox")->isChecked());
    const auto y = [&f](const char *name) { return f.find<QWidget>(name)->mapTo(f.dialog.get(), QPoint()).y(); };
    const char *order[] = {"wellList", "wellTabs", "intervalEdit", "folderEdit", "progressBar", "exportButton"};
    for (size_t i = 1; i < std::size(order); ++i)
        QVERIFY2(y(order[i - 1]) < y(order[i]), order[i]);
    const auto x = [&f](const char *name) { return f.find<QWidget>(name)->mapTo(f.dialog.get(), QPoint()).x(); };
    QVERIFY(x("exportButton") < x("closeButton"));
    QVERIFY(x("closeButton") < x("asciiButton"));
    QCOMPARE(f.wells()->count(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(f.wells()->item(i)->text(), f.launch->catalogue.wellNames().at(i));
        QCOMPARE(f.wells()->item(i)->checkState(), Qt::Unchecked);
    }
}

void TestWellLogExport::slotsHaveTheirNames()
{
    for (const char *slot : {"wellSelected(QListWidgetItem*)", "intervalCheckBoxToggled(bool)", "browseBtnClicked()",
                             "exportBtnClicked()", "close()"})
        QVERIFY2(WellLogExport::staticMetaObject.indexOfSlot(slot) >= 0, slot);
    for (const char *slot : {"allLogsChecked(bool)", "checkLogsCheckState(QListWidgetItem*)"})
        QVERIFY2(WellLogsTabWidget::staticMetaObject.indexOfSlot(slot) >= 0, slot);
}

void TestWellLogExport::checkedWellsGetTabs()
{
    ExportFixture f;
    QCOMPARE(f.find<QLabel>("emptyHint")->text(), text("Check a well above: its logs are listed here."));
    QVERIFY(f.find<QLabel>("emptyHint")->isVisibleTo(f.dialog.get()));
    f.check(0);
    QVERIFY(!f.find<QLabel>("emptyHint")->isVisibleTo(f.dialog.get()));
    f.check(0, false);
    QVERIFY(f.find<QLabel>("emptyHint")->isVisibleTo(f.dialog.get()));
    f.check(1);
    f.check(0);
    QCOMPARE(f.tabTexts(), (QStringList{text("B"), text("A")})); // in the order of checking
    QCOMPARE(f.tabs()->currentIndex(), 1);
    QVERIFY(qobject_cast<WellLogsTabWidget *>(f.tabs()->widget(0)));
    f.check(2);
    f.check(0, false);
    QCOMPARE(f.tabTexts(), (QStringList{text("B"), text("C")}));
    // Hearing of the same item again changes nothing.
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "wellSelected", Q_ARG(QListWidgetItem *, f.wells()->item(1))));
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "wellSelected", Q_ARG(QListWidgetItem *, f.wells()->item(0))));
    QCOMPARE(f.tabTexts(), (QStringList{text("B"), text("C")}));
}

void TestWellLogExport::logsOfATab()
{
    ExportFixture f;
    f.check(0);
    QCOMPARE(f.logs(0)->count(), 2);
    QCOMPARE(f.logs(0)->item(0)->text(), text("GR"));
    QCOMPARE(f.logs(0)->item(1)->text(), text("RT"));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(f.logs(0)->item(i)->flags() & Qt::ItemIsUserCheckable);
        QCOMPARE(f.logs(0)->item(i)->checkState(), Qt::Unchecked);
    }
}

void TestWellLogExport::allBox()
{
    ExportFixture f;
    f.check(0);
    auto *all = f.tabs()->widget(0)->findChild<QCheckBox *>(text("allBox"));
    QCOMPARE(all->text(), text("All"));
    QSignalSpy items(f.logs(0), &QListWidget::itemChanged);
    all->setFocus();
    QTest::keyClick(all, Qt::Key_Space);
    QCOMPARE(f.logs(0)->item(0)->checkState(), Qt::Checked);
    QCOMPARE(f.logs(0)->item(1)->checkState(), Qt::Checked);
    QVERIFY(items.isEmpty()); // the list's signals are blocked
    QSignalSpy box(all, &QCheckBox::toggled);
    f.logs(0)->item(1)->setCheckState(Qt::Unchecked);
    QVERIFY(!all->isChecked());
    QCOMPARE(f.logs(0)->item(0)->checkState(), Qt::Checked);
    f.logs(0)->item(1)->setCheckState(Qt::Checked);
    QVERIFY(all->isChecked());
    QVERIFY(box.isEmpty()); // the box's signals are blocked
    auto *tab = f.tabs()->widget(0);
    QVERIFY(QMetaObject::invokeMethod(tab, "allLogsChecked", Q_ARG(bool, false)));
    QCOMPARE(f.logs(0)->item(0)->checkState(), Qt::Unchecked);
    QVERIFY(QMetaObject::invokeMethod(tab, "checkLogsCheckState", Q_ARG(QListWidgetItem *, f.logs(0)->item(0))));
    QVERIFY(!all->isChecked());
}

void TestWellLogExport::browse()
{
    ExportFixture f;
    f.chosen = text("/some/folder");
    QTest::mouseClick(f.button("browseButton"), Qt::LeftButton);
    QCOMPARE(f.titles, QStringList{text("Open Directory")});
    QCOMPARE(f.find<QLineEdit>("folderEdit")->text(), text("/some/folder"));
    f.chosen.clear(); // cancelled
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "browseBtnClicked"));
    QCOMPARE(f.find<QLineEdit>("folderEdit")->text(), text("/some/folder"));
    QCOMPARE(f.startFolders.last(), text("/some/folder"));
}

// The field begins empty, but the chooser where the user was last.
void TestWellLogExport::theChooserBeginsInTheLastFolder()
{
    ExportFixture f;
    f.check(0);
    f.logs(0)->item(0)->setCheckState(Qt::Checked);
    f.find<QLineEdit>("folderEdit")->setText(f.out());
    QTest::mouseClick(f.button("exportButton"), Qt::LeftButton);
    QVERIFY(QFile::exists(f.out("A.las")));
    f.makeDialog();
    QVERIFY(f.find<QLineEdit>("folderEdit")->text().isEmpty());
    QTest::mouseClick(f.button("browseButton"), Qt::LeftButton);
    QCOMPARE(f.startFolders.last(), f.out());
    f.find<QLineEdit>("folderEdit")->setText(text("/typed"));
    QTest::mouseClick(f.button("browseButton"), Qt::LeftButton);
    QCOMPARE(f.startFolders.last(), text("/typed"));
}

void TestWellLogExport::intervalBox()
{
    ExportFixture f;
    const QString hint = f.find<QLabel>("intervalHint")->text();
    QVERIFY(hint.contains(text("are resampled")));
    QTest::mouseClick(f.find<QCheckBox>("intervalBox"), Qt::LeftButton);
    QVERIFY(f.find<QLabel>("intervalHint")->text().contains(text("not resampled")));
    QVERIFY(f.find<QLineEdit>("intervalEdit")->isEnabled()); // it is the step of the data lines in either case
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "intervalCheckBoxToggled", Q_ARG(bool, true)));
    QCOMPARE(f.find<QLabel>("intervalHint")->text(), hint);
    const auto *validator = qobject_cast<const QDoubleValidator *>(f.find<QLineEdit>("intervalEdit")->validator());
    QVERIFY(validator);
    QCOMPARE(validator->locale().language(), QLocale::C);
}

void TestWellLogExport::nothingToExport()
{
    ExportFixture f;
    f.startExport();
    f.check(0);
    f.startExport(); // the folder is asked for first
    f.check(0, false);
    f.setUp();
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked"));
    QCOMPARE(f.boxTexts(),
             (QStringList{text("Please first select output folder."), text("Please first select output folder."),
                          text("Please first select Well(s).")}));
    for (const base::Box &box : f.asker.boxes) {
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, exportTitle);
    }
}

void TestWellLogExport::exportsTheCheckedLogs()
{
    ExportFixture f;
    f.setUp();
    f.check(1);
    f.check(0);
    f.checkLog(0, 0);
    f.checkLog(1, 1);
    const QVector<MemoryHost::Well> before = f.host.storedWells;
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Information);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QCOMPARE(QDir(f.out()).entryList(QDir::Files | QDir::Hidden), (QStringList{text("A.las"), text("B.las")}));
    const StrictLas a(files::read(f.out("A.las")));
    QVERIFY2(a.problems.isEmpty(), qPrintable(QStringList(a.problems.keys()).join(QLatin1Char(' '))));
    QCOMPARE(a.sections.value(QLatin1Char('C')).size(), 2);
    QVERIFY(a.item('C', "RT") && !a.item('C', "GR"));
    QCOMPARE(a.rows, (QVector<QVector<double>>{{100, 1}, {200, 2}, {300, 3}}));
    for (int i = 0; i < before.size(); ++i)
        for (int log = 0; log < before.at(i).logs.size(); ++log) { // wells are never changed
            QCOMPARE(f.host.storedWells.at(i).logs.size(), before.at(i).logs.size());
            QCOMPARE(f.host.storedWells.at(i).logs.at(log).depths, before.at(i).logs.at(log).depths);
            QCOMPARE(f.host.storedWells.at(i).logs.at(log).values, before.at(i).logs.at(log).values);
        }
}

void TestWellLogExport::wholeFile()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    const QByteArray bytes = files::read(f.out("A.las"));
    QVERIFY(bytes.startsWith("~Version Information Section\nVERS.            2.0 "));
    QVERIFY(bytes.contains("\nLOC.             500000.50 , 6000000.25          :LOCATION\n"));
    QVERIFY(bytes.contains("\nLMF.             20                              :LOG MEASURED FROM (KB)\n"));
    QVERIFY(bytes.contains("\nWELL.            A                               :WELL\n"));
    QVERIFY(bytes.contains("\nGR.gapi                                          :2 Gamma\n"));
    QVERIFY(bytes.endsWith("\n~A DEPT GR         \n100.0000 1.00 \n200.0000 2.00 \n300.0000 3.00 \n"));
}

void TestWellLogExport::resamplesWhereTheBoxIsChecked()
{
    ExportFixture f;
    f.setUp("50");
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")),
             (QStringList{text("100.0000 1.00 "), text("150.0000 1.50 "), text("200.0000 2.00 "),
                          text("250.0000 2.50 "), text("300.0000 3.00 ")}));
}

void TestWellLogExport::uncheckedBoxStillSteps()
{
    ExportFixture f;
    f.setUp("50");
    f.find<QCheckBox>("intervalBox")->setChecked(false);
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QVERIFY(files::read(f.out("A.las")).contains("\nSTEP.M           50  "));
    QCOMPARE(rows(f.out("A.las")),
             (QStringList{text("100.0000 1.00 "), text("150.0000 2.00 "), text("200.0000 3.00 "),
                          text("250.0000 -999.25 "), text("300.0000 -999.25 ")}));
}

void TestWellLogExport::wellDepthAboveTheLogs()
{
    ExportFixture f;
    f.host.storedWells[0].header.totalDepth = 50;
    f.setUp("50");
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    const QStringList lines = rows(f.out("A.las"));
    QCOMPARE(lines.at(0), text("50.0000 -999.25 "));
    QCOMPARE(lines.at(1), text("100.0000 1.00 "));
    QCOMPARE(lines.size(), 6);
}

void TestWellLogExport::logWithOneSample()
{
    ExportFixture f;
    f.hostLog(0, 0).depths = {150};
    f.hostLog(0, 0).values = {7};
    f.setUp("0.5");
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")), QStringList{text("150.0000 7.00 ")});
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
}

void TestWellLogExport::undefinedSamples()
{
    ExportFixture f;
    f.hostLog(0, 0).values = {1, host::undefinedValue, 3};
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")).at(1), text("200.0000 -999.25 "));
}

void TestWellLogExport::wellWithoutCheckedLog()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.check(2);
    f.check(1);
    f.checkLog(0, 0);
    f.checkLog(2, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{text("Please first select log(s) for this Well :C.")});
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QCOMPARE(QDir(f.out()).entryList(QDir::Files), QStringList{text("A.las")}); // A stays, B is not begun
    QCOMPARE(f.tabs()->currentIndex(), 1); // where logs are to be checked
    QVERIFY(f.button("exportButton")->isEnabled());
}

void TestWellLogExport::progress()
{
    ExportFixture f;
    f.setUp();
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    QSignalSpy values(f.find<QProgressBar>("progressBar"), &QProgressBar::valueChanged);
    f.startExport();
    QCOMPARE(f.find<QProgressBar>("progressBar")->maximum(), 2);
    QCOMPARE(values.last(), QList<QVariant>{2});
    QCOMPARE(values.at(values.size() - 2), QList<QVariant>{1});
}

void TestWellLogExport::oddWellNames()
{
    ProjectFixture project;
    ExportFixture f;
    const QString name = text("15/9-F-1 & æ");
    f.addWell(name, {text("GR")});
    f.launch->catalogue.build();
    f.makeDialog();
    f.setUp();
    f.check(0);
    QCOMPARE(f.wells()->item(0)->text(), name);
    QCOMPARE(f.tabs()->tabText(0), text("15/9-F-1 && æ")); // so that one "&" is seen
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(QDir(f.out()).entryList(QDir::Files), QStringList{text("15%2F9-F-1 & æ.las")});
    QVERIFY(files::read(f.out("15%2F9-F-1 & æ.las")).contains(("\nUWI.             " + name.toUtf8() + "    ")));
}

void TestWellLogExport::twoWellsOfOneName()
{
    ExportFixture f;
    f.addWell(text("A"), {text("SP")});
    f.launch->catalogue.build();
    f.makeDialog();
    f.check(0);
    f.check(1);
    QCOMPARE(f.tabTexts(), (QStringList{text("A"), text("A")}));
    QCOMPARE(f.logs(1)->item(0)->text(), text("SP"));
    f.check(0, false);
    QCOMPARE(f.tabs()->count(), 1);
    QCOMPARE(f.logs(0)->item(0)->text(), text("SP"));
    f.setUp();
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QVERIFY(f.host.errors.isEmpty());
    QVERIFY(files::read(f.out("A.las")).contains("\nSP.gapi"));
}

// The catalogue may be read anew while the dialog stands; what was checked stays what it was.
void TestWellLogExport::catalogueReadAnew()
{
    ExportFixture f;
    f.setUp();
    f.check(1);
    f.checkLog(0, 0);
    f.addWell(text("0 first"), {text("XX")});
    f.hostLog(1, 0).values = {7, 8, 9};
    f.host.storedWells[1].logs.prepend({text("ZZ"), text("u"), {1, 2}, {3, 4}});
    f.launch->catalogue.build();
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(rows(f.out("B.las")).first(), text("100.0000 7.00 "));
}

void TestWellLogExport::logsOfOneName()
{
    ExportFixture f;
    f.hostLog(0, 1).name = text("GR");
    f.hostLog(0, 1).values = {7, 8, 9};
    f.launch->catalogue.build();
    f.makeDialog();
    f.setUp();
    f.check(0);
    f.checkLog(0, 1);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")).first(), text("100.0000 7.00 "));
}

void TestWellLogExport::asciiButton()
{
    ExportFixture f;
    QTest::mouseClick(f.button("asciiButton"), Qt::LeftButton);
    auto *ascii = f.dialog->findChild<QDialog *>(text("ExportCurvesInAscii"));
    QVERIFY(ascii && ascii->isVisible());
    QPointer<QDialog> pointer(ascii);
    ascii->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!pointer);
}

void TestWellLogExport::nothingIsKept()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.makeDialog();
    QVERIFY(f.find<QLineEdit>("folderEdit")->text().isEmpty());
    QCOMPARE(f.tabs()->count(), 0);
    QCOMPARE(f.find<QLineEdit>("intervalEdit")->text(), text("0.1524"));
}

void TestWellLogExport::keyboardAlone()
{
    ExportFixture f;
    const auto press = [](int key) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); };
    const auto tabTo = [&](const QWidget *widget) {
        for (int i = 0; i < 30 && QApplication::focusWidget() != widget; ++i)
            press(Qt::Key_Tab);
        return QApplication::focusWidget() == widget;
    };
    QVERIFY(tabTo(f.wells()));
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    QCOMPARE(f.tabTexts(), (QStringList{text("A"), text("B")}));
    QVERIFY(tabTo(f.logs(1)));
    press(Qt::Key_Space);
    QVERIFY(tabTo(f.wells()));
    press(Qt::Key_Tab);
    press(Qt::Key_Left); // the tab bar: to A
    QCOMPARE(f.tabs()->currentIndex(), 0);
    QVERIFY(tabTo(f.tabs()->widget(0)->findChild<QCheckBox *>(text("allBox"))));
    press(Qt::Key_Space);
    QVERIFY(tabTo(f.find<QLineEdit>("intervalEdit")));
    QTest::keySequence(QApplication::focusWidget(), QKeySequence::SelectAll);
    QTest::keyClicks(QApplication::focusWidget(), text("100"));
    QVERIFY(tabTo(f.find<QLineEdit>("folderEdit")));
    QTest::keyClicks(QApplication::focusWidget(), f.out());
    press(Qt::Key_Return);
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(rows(f.out("A.las")).first(), text("100.0000 1.00 1.00 "));
    QCOMPARE(rows(f.out("B.las")).first(), text("100.0000 1.00 "));
    QVERIFY(tabTo(f.button("closeButton")));
    press(Qt::Key_Space);
    QVERIFY(!f.dialog->isVisible());
}

LORVA_TEST_MAIN(TestWellLogExport)
#include "tst_welllogexport.moc"
