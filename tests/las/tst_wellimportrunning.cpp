#include "datastore/curvegrouptable.h"
#include "support/testmain.h"
#include "tests/las/deletingasker.h"
#include "tests/las/importfixture.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <functional>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

/// Does something from the event loop when so many logs were written: what a click at that moment would do.
class DuringImport : public QObject
{
    Q_OBJECT

public:
    DuringImport(ImportFixture &fixture, int logs, std::function<void()> action)
        : m_fixture(fixture)
        , m_logs(logs)
        , m_action(std::move(action))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            if (m_fixture.host.storedWells.at(1).logs.size() < m_logs)
                return;
            m_timer.stop();
            hasRun = true;
            m_action();
        });
        m_timer.start(0);
    }
    bool hasRun = false;

private:
    ImportFixture &m_fixture;
    int m_logs;
    std::function<void()> m_action;
    QTimer m_timer;
};

QByteArray tenCurves()
{
    QByteArrayList curves;
    for (int i = 1; i < 10; ++i)
        curves.append('C' + QByteArray::number(i) + ".x");
    return ImportFixture::las("W-2", "100 1 2 3 4 5 6 7 8 9\n101 1 2 3 4 5 6 7 8 9\n", curves);
}

} // namespace

/// What happens while an import runs: progress, cancel, closing and deleting the dialog.
class TestWellImportRunning : public QObject
{
    Q_OBJECT

private slots:
    void init() { CurveGroupTable::instance().clear(); }
    void progressRunsOverTheRowsOfOneFile();
    void progressRunsOverTheTabs();
    void onlyCloseIsEnabled();
    void slotsDoNothingMeanwhile();
    void closeCancels_data();
    void closeCancels();
    void cancelAfterTheLastCurve();
    void cancelledImportCanBeRepeated();
    void closedDialogIsDeletedInTheEnd();
    void deletedDialog();
    void deletedWhileABoxStands_data();
    void deletedWhileABoxStands();
    void closingAnIdleDialog();
    void keyboardAlone();
};

void TestWellImportRunning::progressRunsOverTheRowsOfOneFile()
{
    ImportFixture f;
    f.chooseBytes(tenCurves());
    f.setChecked(3, false); // a row that is not imported counts too
    QSignalSpy values(f.progressBar(), &QProgressBar::valueChanged);
    f.startImport();
    QCOMPARE(f.progressBar()->minimum(), 0);
    QCOMPARE(f.progressBar()->maximum(), 10);
    QList<QList<QVariant>> expected;
    for (int i = values.first().first().toInt(); i <= 10; ++i)
        expected.append({i});
    QCOMPARE(values, expected);
    QVERIFY(values.size() >= 10);
}

void TestWellImportRunning::progressRunsOverTheTabs()
{
    ImportFixture f;
    QStringList paths;
    for (const char *name : {"a.las", "b.las", "c.las"})
        paths.append(f.write(text(name), ImportFixture::las("W-2", "100 1\n101 2\n", {QByteArray(name, 1) + ".x"})));
    f.choose(paths);
    for (int i = 1; i < 3; ++i)
        f.setChecked(0, false, i);
    QSignalSpy values(f.progressBar(), &QProgressBar::valueChanged);
    f.startImport();
    QCOMPARE(f.progressBar()->maximum(), 3);
    QCOMPARE(values.last(), QList<QVariant>{3});
    QCOMPARE(values.size(), 3); // 1, 2, 3
}

void TestWellImportRunning::onlyCloseIsEnabled()
{
    ImportFixture f;
    f.chooseBytes(tenCurves());
    f.setInterval(text("0.5"));
    QStringList enabled;
    DuringImport during(f, 3, [&] {
        for (QWidget *widget : f.dialog->findChildren<QWidget *>())
            if (widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus)
                enabled.append(widget->objectName());
    });
    f.startImport();
    QVERIFY(during.hasRun);
    QCOMPARE(enabled, QStringList{text("closeButton")});
    QVERIFY(f.button("selectButton")->isEnabled() && f.button("importButton")->isEnabled() && f.tabs()->isEnabled());
    QVERIFY(f.find<QLineEdit>("intervalEdit")->isEnabled());
}

void TestWellImportRunning::slotsDoNothingMeanwhile()
{
    ImportFixture f;
    f.chooseBytes(tenCurves());
    DuringImport during(f, 3, [&] {
        for (const char *slot : {"selectLasFilesClicked", "importSelectedClicked"})
            QMetaObject::invokeMethod(f.dialog.get(), slot);
        QMetaObject::invokeMethod(f.dialog.get(), "tabClosedClicked", Q_ARG(int, 0));
    });
    f.startImport();
    QVERIFY(during.hasRun);
    QCOMPARE(f.tabs()->count(), 1);
    QCOMPARE(f.captions.size(), 1);
    QCOMPARE(f.launch->catalogue.logNames(1).size(), 10);
    QCOMPARE(f.boxTexts(), QStringList{importedText});
}

void TestWellImportRunning::closeCancels_data()
{
    QTest::addColumn<int>("how");
    QTest::newRow("the button") << 0;
    QTest::newRow("the slot") << 1;
    QTest::newRow("Escape") << 2;
    QTest::newRow("the window") << 3;
}

void TestWellImportRunning::closeCancels()
{
    QFETCH(int, how);
    ImportFixture f;
    f.chooseBytes(tenCurves());
    QSignalSpy imported(f.dialog.get(), &WellImportDialog::logsImported);
    DuringImport during(f, 3, [&] {
        if (how == 0)
            QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
        else if (how == 1)
            QMetaObject::invokeMethod(f.dialog.get(), "cancelBtnClicked");
        else if (how == 2)
            QTest::keyClick(f.dialog.get(), Qt::Key_Escape);
        else
            f.dialog->close();
    });
    f.startImport();
    QVERIFY(during.hasRun);
    QCOMPARE(f.host.storedWells.at(1).logs.size(), 3); // what was written stays, nothing more is
    QVERIFY(f.asker.boxes.isEmpty()); // no success is told
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(imported, (QList<QList<QVariant>>{{1}})); // the tree hears of the three
}

void TestWellImportRunning::cancelAfterTheLastCurve()
{
    ImportFixture f;
    f.chooseBytes(tenCurves());
    DuringImport during(f, 10, [&] { QMetaObject::invokeMethod(f.dialog.get(), "cancelBtnClicked"); });
    f.startImport();
    QVERIFY(during.hasRun);
    QVERIFY(f.asker.boxes.isEmpty());
}

void TestWellImportRunning::cancelledImportCanBeRepeated()
{
    ImportFixture f;
    f.chooseBytes(tenCurves());
    {
        DuringImport during(f, 3, [&] { QMetaObject::invokeMethod(f.dialog.get(), "cancelBtnClicked"); });
        f.startImport();
    }
    f.dialog->show();
    f.startImport();
    QCOMPARE(f.launch->catalogue.logNames(1).size(), 10);
    QCOMPARE(f.boxTexts(), QStringList{importedText});
    QVERIFY(f.dialog->isVisible());
}

void TestWellImportRunning::closedDialogIsDeletedInTheEnd()
{
    ImportFixture f;
    f.chooseBytes(tenCurves());
    f.dialog->setAttribute(Qt::WA_DeleteOnClose);
    QPointer<WellImportDialog> dialog(f.dialog.get());
    int heard = 0;
    connect(dialog, &WellImportDialog::logsImported, this, [&] { ++heard; });
    DuringImport during(f, 3, [&] { QTest::mouseClick(f.button("closeButton"), Qt::LeftButton); });
    f.startImport();
    static_cast<void>(f.dialog.release());
    QCOMPARE(heard, 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!dialog);
}

void TestWellImportRunning::deletedDialog()
{
    ImportFixture f;
    f.chooseBytes(tenCurves());
    // As when the survey changes: the owner deletes the dialog from an event.
    DuringImport during(f, 3, [&] { f.dialog.reset(); });
    QMetaObject::invokeMethod(f.dialog.get(), "importSelectedClicked");
    QVERIFY(during.hasRun);
    QVERIFY(!f.dialog);
    QCOMPARE(f.host.storedWells.at(1).logs.size(), 3);
    QCOMPARE(f.host.reloaded, QStringList{f.launch->catalogue.wellKey(1)});
    QVERIFY(f.asker.boxes.isEmpty());
}

void TestWellImportRunning::deletedWhileABoxStands_data()
{
    QTest::addColumn<QString>("boxText");
    for (const char *box :
         {"Would you like to overwrite", "Cannot write new log", "Well is not selected", "maximum depth",
          "do not run strictly", "successfully", "Please first select them", "no alternate curve name"})
        QTest::newRow(box) << text(box);
}

// As when the survey changes: the owner deletes the dialog while the user reads.
void TestWellImportRunning::deletedWhileABoxStands()
{
    QFETCH(QString, boxText);
    ImportFixture f;
    f.dialog.reset();
    DeletingAsker asker;
    asker.trigger = boxText;
    asker.deleteDialog = [&f] { f.dialog.reset(); };
    f.launch = std::make_unique<ProjectData>(f.host, asker);
    f.launch->catalogue.build();
    openProject(f.host, &f.launch->project);
    f.makeDialog();
    QByteArray bytes = ImportFixture::las("W-1", "100 1\n101 2\n");
    if (boxText.contains(text("strictly")))
        bytes.replace("101 2", "100 2");
    if (boxText.contains(text("Cannot write")))
        bytes.replace("100 1\n101 2\n", "");
    if (boxText.contains(text("maximum depth")))
        bytes.replace("STOP.M 200", "STOP.M 2000");
    f.chooseBytes(bytes);
    f.setInterval(text("0.5"));
    if (boxText.contains(text("overwrite")))
        f.setChecked(1, true);
    if (boxText.contains(text("not selected")))
        f.wellBox()->setCurrentIndex(0);
    if (boxText.contains(text("select them")))
        f.setChecked(0, false);
    if (boxText.contains(text("alternate")))
        f.nameItem(0)->setText({});
    QMetaObject::invokeMethod(f.dialog.get(), "importSelectedClicked");
    QVERIFY(!f.dialog);
    QVERIFY(asker.texts.last().contains(asker.trigger)); // nothing more is said
    QCOMPARE(f.host.storedWells.at(0).logs.at(0).values, (QVector<float>{1, 2, 3}));
}

void TestWellImportRunning::closingAnIdleDialog()
{
    ImportFixture f;
    QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
    QVERIFY(!f.dialog->isVisible());
    f.dialog->show();
    QTest::keyClick(f.dialog.get(), Qt::Key_Escape);
    QVERIFY(!f.dialog->isVisible());
}

// From the file choice to the import without a mouse: Tab moves between the widgets, arrows inside the table.
void TestWellImportRunning::keyboardAlone()
{
    ImportFixture f;
    const auto press = [&f](int key) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); };
    const auto tabTo = [&](const QWidget *widget) {
        for (int i = 0; i < 30 && QApplication::focusWidget() != widget; ++i)
            press(Qt::Key_Tab);
        return QApplication::focusWidget() == widget;
    };
    f.chosen =
        QStringList{f.write(text("a.las"), ImportFixture::las("?", "100 1 2\n101 2 3\n", {"GR.gapi", "RT.ohmm"}))};
    QCOMPARE(QApplication::focusWidget(), f.button("selectButton"));
    press(Qt::Key_Return);
    QCOMPARE(f.tabs()->count(), 1);
    QVERIFY(tabTo(f.wellBox()));
    press(Qt::Key_Down); // W-1
    QCOMPARE(f.wellBox()->currentText(), text("W-1"));
    QVERIFY(f.isRed(1));
    QVERIFY(tabTo(f.table()));
    // The depth curve is not wanted: its check box.
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    QCOMPARE(f.table()->currentColumn(), int(WellImportTab::SelectColumn));
    press(Qt::Key_Space);
    QCOMPARE(f.checkItem(0)->checkState(), Qt::Unchecked);
    // A new name for GR, and its check box again.
    press(Qt::Key_Down);
    press(Qt::Key_Right);
    press(Qt::Key_F2);
    QTest::keyClicks(QApplication::focusWidget(), text("GR_NEW"));
    press(Qt::Key_Return);
    QTRY_COMPARE(f.nameItem(1)->text(), text("GR_NEW"));
    QTRY_COMPARE(QApplication::focusWidget(), f.table());
    press(Qt::Key_Left);
    press(Qt::Key_Space);
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Checked);
    // Its group.
    const int group = f.groupBox(1)->currentIndex();
    press(Qt::Key_Left);
    press(Qt::Key_F2);
    QCOMPARE(QApplication::focusWidget(), f.groupBox(1));
    press(Qt::Key_Up);
    QCOMPARE(f.groupBox(1)->currentIndex(), group - 1);
    press(Qt::Key_Escape); // back to the table, and not out of the dialog
    QCOMPARE(QApplication::focusWidget(), f.table());
    QVERIFY(f.dialog->isVisible());
    // The interval, and Enter imports.
    QVERIFY(tabTo(f.find<QCheckBox>("intervalBox")));
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), f.find<QLineEdit>("intervalEdit"));
    QTest::keySequence(QApplication::focusWidget(), QKeySequence::SelectAll);
    QTest::keyClicks(QApplication::focusWidget(), text("0.5"));
    press(Qt::Key_Return);
    QCOMPARE(f.boxTexts(), QStringList{importedText});
    QCOMPARE(f.launch->catalogue.logNames(0), (QStringList{text("GR"), text("GR_NEW"), text("RT")}));
    QCOMPARE(f.hostLog(text("W-1"), text("GR_NEW"))->depths, (QVector<float>{100, 100.5, 101}));
    QCOMPARE(QApplication::focusWidget(), f.find<QLineEdit>("intervalEdit"));
    QVERIFY(tabTo(f.button("closeButton")));
    press(Qt::Key_Space);
    QVERIFY(!f.dialog->isVisible());
}

LORVA_TEST_MAIN(TestWellImportRunning)
#include "tst_wellimportrunning.moc"
