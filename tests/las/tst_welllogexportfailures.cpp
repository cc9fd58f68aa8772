#include "exportfixture.h"
#include "support/failingdisk.h"
#include "support/testmain.h"
#include "tests/las/deletingasker.h"
#include "tests/las/strictlaschecker.h"

#include <QCheckBox>
#include <QTimer>

#include <functional>
#include <new>

namespace {

/// A host that cannot read some logs, or has no memory for them, and remembers what it was asked for.
class BadLogsHost : public MemoryHost
{
public:
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        ++reads;
        if (onRead)
            onRead();
        const host::Outcome<host::LogData> data = MemoryHost::log(key, index);
        if (data.value.name == withoutMemory)
            throw std::bad_alloc();
        return data.value.name == unreadable ? host::Outcome<host::LogData>{{}, text("damaged")} : data;
    }
    QString unreadable = text("none");
    QString withoutMemory = text("none");
    int reads = 0;
    std::function<void()> onRead;
};

/// The same dialog over that host, with well D (RT and "NoGood") behind the others.
class BadLogsFixture : public ExportFixture
{
public:
    BadLogsFixture()
    {
        addWell(text("D"), {text("RT"), text("NoGood")});
        badHost.survey = host.survey;
        badHost.dataFolder = host.dataFolder;
        badHost.storedWells = host.storedWells;
        dialog.reset();
        launch = std::make_unique<ProjectData>(badHost, asker);
        launch->catalogue.build();
        makeDialog();
        setUp();
        for (int well : {0, 3, 1}) {
            check(well);
            tabs()->currentWidget()->findChild<QCheckBox *>(text("allBox"))->setChecked(true);
        }
        files::write(out("D.las"), "old");
    }
    ~BadLogsFixture()
    {
        dialog.reset();
        launch.reset();
    }
    QStringList filesWritten() const { return QDir(out()).entryList(QDir::Files | QDir::Hidden); }

    BadLogsHost badHost;
};

} // namespace

Q_DECLARE_METATYPE(QListWidgetItem *)

class TestWellLogExportFailures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<QListWidgetItem *>(); }
    void cannotCreateTheFile();
    void folderVanishes();
    void failingDisk();
    void leftoversOfADeadExportGo();
    void badIntervals_data();
    void badIntervals();
    void hugeGridIsRefused();
    void unreadableLogEndsTheExport();
    void unreadableWellEndsTheExport();
    void vanishedLogEndsTheExport();
    void vanishedWellEndsTheExport();
    void withoutMemory();
    void closeCancelsTheChecking();
    void deletedWhileChecking();
    void deletedWhileABoxStands_data();
    void deletedWhileABoxStands();
    void logsOfDifferentDepths();
    void unsuitedLogsAreAllNamed();
    void unsuitedDepths();
    void closeCancels();
    void deletedDialog();
};

void TestWellLogExportFailures::cannotCreateTheFile()
{
    ExportFixture f;
    f.setUp();
    QDir(f.out()).mkdir(text("B.las")); // a folder stands there
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("Unable to create file.\nPlease check file read/write permission for that folder.")});
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QVERIFY(QFile::exists(f.out("A.las")));
}

void TestWellLogExportFailures::folderVanishes()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    QVERIFY(QDir(f.out()).removeRecursively());
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("Unable to create file.\nPlease check file read/write permission for that folder.")});
    QVERIFY(!QFile::exists(f.out())); // not made by us
}

void TestWellLogExportFailures::failingDisk()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    files::write(f.out("A.las"), "old");
    FailingDisk disk(FailingDisk::Flush);
    const base::ScopedFileSystemCalls calls(disk);
    f.startExport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QVERIFY(f.boxTexts().first().startsWith(text("Unable to write file ") + f.out("A.las")));
    QVERIFY(f.boxTexts().first().endsWith(text("What was at this place before is unchanged.")));
    QCOMPARE(files::read(f.out("A.las")), QByteArray("old"));
}

void TestWellLogExportFailures::leftoversOfADeadExportGo()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    files::write(f.out(".lorva-abcDEF"), "half");
    files::write(f.out(".lorva-other name"), "not of a write");
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(QDir(f.out()).entryList(QDir::Files | QDir::Hidden),
             (QStringList{text(".lorva-other name"), text("A.las")}));
}

void TestWellLogExportFailures::badIntervals_data()
{
    QTest::addColumn<bool>("isChecked");
    for (const char *interval : {"0", "-1", "0.00001", "1e-300", "", "x"}) {
        QTest::newRow(qPrintable(text(interval) + text(" checked"))) << true;
        QTest::newRow(qPrintable(text(interval) + text(" unchecked"))) << false;
    }
}

void TestWellLogExportFailures::badIntervals()
{
    QFETCH(bool, isChecked);
    ExportFixture f;
    f.setUp(QByteArray(QTest::currentDataTag()).split(' ').first().constData());
    f.find<QCheckBox>("intervalBox")->setChecked(isChecked);
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("The depth interval must be a number and at least 0.0001 m.\n"
                              "Nothing was written.")});
    QVERIFY(QDir(f.out()).isEmpty());
}

void TestWellLogExportFailures::hugeGridIsRefused()
{
    ExportFixture f;
    f.hostLog(1, 0).depths = {0, 1, 1e9f};
    f.setUp("0.5");
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    f.startExport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QVERIFY2(f.boxTexts().first().startsWith(text("B: the depths 0 to 1e+09 at an interval of 0.5 would give more")),
             qPrintable(f.boxTexts().first()));
    QVERIFY(QDir(f.out()).isEmpty()); // A, which comes first, is not written either
}

void TestWellLogExportFailures::unreadableLogEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.unreadable = text("NoGood");
    f.startExport();
    QCOMPARE(f.badHost.errors, QStringList{text("Cannot get data for the selected well\nD: NoGood")}); // once
    QVERIFY(f.asker.boxes.isEmpty()); // and no success
    QCOMPARE(f.filesWritten(), (QStringList{text("A.las"), text("D.las")})); // A, before it, stays; B is not begun
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
    QVERIFY(f.button("exportButton")->isEnabled());
}

void TestWellLogExportFailures::unreadableWellEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.storedWells[3].isUnreadable = true;
    f.badHost.storedWells[1].logs[0].depths = {0, 1, 1e9f}; // B, behind it, is not looked at
    f.setUp("0.5");
    f.startExport();
    QCOMPARE(f.badHost.errors, QStringList{text("Cannot get data for this well : D")});
    QVERIFY(f.asker.boxes.isEmpty());
    QCOMPARE(f.filesWritten(), (QStringList{text("A.las"), text("D.las")}));
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
}

// The log was listed when the well was checked; meanwhile it went.
void TestWellLogExportFailures::vanishedLogEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.storedWells[3].logs.removeLast();
    f.launch->catalogue.refreshLogNames(3);
    f.startExport();
    QCOMPARE(f.badHost.errors, QStringList{text("Cannot get data for the selected well\nD: NoGood")});
    QVERIFY(f.asker.boxes.isEmpty());
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
}

void TestWellLogExportFailures::vanishedWellEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.storedWells.remove(3);
    f.launch->catalogue.build();
    f.startExport();
    QCOMPARE(f.badHost.errors.size(), 1);
    QVERIFY(f.asker.boxes.isEmpty());
    QCOMPARE(f.filesWritten(), (QStringList{text("A.las"), text("D.las")}));
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
}

void TestWellLogExportFailures::withoutMemory()
{
    BadLogsFixture f;
    f.badHost.withoutMemory = text("NoGood");
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("There is not enough memory to export the logs of D.\n"
                              "Its file was not written; what was at its place before is unchanged.")});
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
    QVERIFY(f.button("exportButton")->isEnabled());
}

// Before anything is written the depths of all wells are looked at.
void TestWellLogExportFailures::closeCancelsTheChecking()
{
    BadLogsFixture f;
    f.badHost.onRead = [&f] {
        if (f.badHost.reads == 2)
            QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
    };
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QCOMPARE(f.badHost.reads, 2);
    QVERIFY(f.asker.boxes.isEmpty());
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(f.filesWritten(), QStringList{text("D.las")});
}

void TestWellLogExportFailures::deletedWhileChecking()
{
    BadLogsFixture f;
    f.badHost.onRead = [&f] { QTimer::singleShot(0, qApp, [&f] { f.dialog.reset(); }); };
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QVERIFY(!f.dialog);
    QCOMPARE(f.badHost.reads, 1);
    QCOMPARE(f.filesWritten(), QStringList{text("D.las")});
}

void TestWellLogExportFailures::deletedWhileABoxStands_data()
{
    QTest::addColumn<QString>("boxText");
    for (const char *box : {"Please first select log(s)", "There is not enough memory", "The depths of these logs",
                            "Unable to create file", "the depths 0 to", "Successfully"})
        QTest::newRow(box) << text(box);
}

// As when the survey changes: the owner deletes the dialog while the user reads.
void TestWellLogExportFailures::deletedWhileABoxStands()
{
    QFETCH(QString, boxText);
    BadLogsFixture f;
    f.dialog.reset();
    DeletingAsker asker;
    asker.trigger = boxText;
    asker.deleteDialog = [&f] { f.dialog.reset(); };
    f.launch = std::make_unique<ProjectData>(f.badHost, asker);
    f.launch->catalogue.build();
    f.makeDialog();
    f.setUp("50");
    f.check(0);
    if (!boxText.contains(text("select log")))
        f.checkLog(0, 0);
    if (boxText.contains(text("memory")))
        f.badHost.withoutMemory = text("GR");
    if (boxText.contains(text("these logs")))
        f.badHost.storedWells[0].logs[0].depths = {100, 300, 200};
    if (boxText.contains(text("create")))
        f.find<QLineEdit>("folderEdit")->setText(f.out("nowhere"));
    if (boxText.contains(text("0 to")))
        f.badHost.storedWells[0].logs[0].depths = {0, 1, 1e10f};
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QVERIFY(!f.dialog);
    QCOMPARE(asker.texts.size(), 1); // nothing more is said
}

// Two logs that begin and end at different depths.
void TestWellLogExportFailures::logsOfDifferentDepths()
{
    ExportFixture f;
    f.host.storedWells[0].header.totalDepth = 2000;
    const float firsts[] = {1000, 1050};
    const int counts[] = {101, 151};
    for (int log = 0; log < 2; ++log) {
        host::LogData &data = f.hostLog(0, log);
        data.depths.clear();
        data.values.clear();
        for (int i = 0; i < counts[log]; ++i) {
            data.depths.append(firsts[log] + static_cast<float>(i));
            data.values.append(static_cast<float>(10 * (log + 1)));
        }
    }
    f.setUp("0.1524");
    f.check(0);
    f.tabs()->widget(0)->findChild<QCheckBox *>(text("allBox"))->setChecked(true);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    const QByteArray bytes = files::read(f.out("A.las"));
    QVERIFY(bytes.contains("\nSTRT.M           1000  "));
    QVERIFY(bytes.contains("\nSTOP.M           1200  "));
    const StrictLas read(bytes);
    QVERIFY(read.rows.size() > 1300);
    const double interval = 0.1524;
    for (const QVector<double> &row : read.rows) {
        const double depth = row.at(0);
        // Within one interval of an end the index rule decides.
        if (depth < 1100 || depth > 1100 + interval)
            QCOMPARE(row.at(1), depth > 1100 ? -999.25 : 10.0);
        if (depth < 1050 - interval || depth > 1050)
            QCOMPARE(row.at(2), depth < 1050 ? -999.25 : 20.0);
    }
}

void TestWellLogExportFailures::unsuitedLogsAreAllNamed()
{
    ExportFixture f;
    QStringList names;
    for (int i = 0; i < 40; ++i) {
        names.append(text("%1 ") + QString::number(i));
        f.host.storedWells[1].logs.append({names.last(), text("u"), {3, 2, 1}, {1, 2, 3}});
    }
    f.launch->catalogue.build();
    f.makeDialog();
    f.hostLog(0, 1).depths = {300, 200, 100};
    f.setUp("50");
    for (int well : {0, 1}) {
        f.check(well);
        f.tabs()->currentWidget()->findChild<QCheckBox *>(text("allBox"))->setChecked(true);
    }
    f.startExport();
    QVERIFY2(f.boxTexts().value(0).endsWith(text(":\nA: RT\nB: ") + names.join(text(", "))),
             qPrintable(f.boxTexts().value(0)));
    QCOMPARE(f.boxTexts().value(1), exportedText);
}

void TestWellLogExportFailures::unsuitedDepths()
{
    ExportFixture f;
    f.hostLog(0, 0).depths = {100, 300, 200};
    f.setUp("50");
    f.check(0);
    f.checkLog(0, 0);
    f.checkLog(0, 1);
    f.startExport();
    QCOMPARE(f.boxTexts(),
             (QStringList{text("The depths of these logs do not increase strictly, so the interval could not "
                               "be applied.\nThey were written sample by sample, whatever their depths:\nA: GR"),
                          exportedText}));
    QCOMPARE(rows(f.out("A.las")).at(1), text("150.0000 2.00 1.50 "));
}

void TestWellLogExportFailures::closeCancels()
{
    ExportFixture f;
    f.setUp();
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    QStringList enabled;
    bool isDone = false;
    // The first event of the export: before the first log of the first well is read.
    QTimer::singleShot(0, f.dialog.get(), [&] {
        isDone = true;
        for (QWidget *widget : f.dialog->findChildren<QWidget *>())
            if (widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus)
                enabled.append(widget->objectName());
        QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
    });
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked"));
    QVERIFY(isDone);
    QCOMPARE(enabled, QStringList{text("closeButton")});
    QVERIFY(f.asker.boxes.isEmpty());
    QVERIFY(!f.dialog->isVisible());
    QVERIFY(QDir(f.out()).isEmpty());
    f.dialog->show();
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QVERIFY(f.dialog->isVisible());
    QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
    QVERIFY(!f.dialog->isVisible());
}

void TestWellLogExportFailures::deletedDialog()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    QTimer::singleShot(0, qApp, [&] { f.dialog.reset(); });
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QVERIFY(!f.dialog);
    QVERIFY(QDir(f.out()).isEmpty());
}

LORVA_TEST_MAIN(TestWellLogExportFailures)
#include "tst_welllogexportfailures.moc"
