#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "support/failingdisk.h"
#include "support/testmain.h"
#include "tests/las/importfixture.h"

#include <QApplication>
#include <QLabel>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

/// Counts what a run asks of the host, and refuses logs of some names.
class CountingHost : public MemoryHost
{
public:
    host::Outcome<host::WellHeader> header(const QString &key) override
    {
        ++headers;
        return MemoryHost::header(key);
    }
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override
    {
        ++lists;
        return MemoryHost::logs(key);
    }
    host::Status writeLog(const QString &key, const host::LogData &log) override
    {
        if (refused.contains(log.name))
            return {text("no")};
        return MemoryHost::writeLog(key, log);
    }
    void showError(const QString &error) override
    {
        hadWaitCursor = hadWaitCursor || QApplication::overrideCursor();
        MemoryHost::showError(error);
    }

    int headers = 0;
    int lists = 0;
    QStringList refused;
    bool hadWaitCursor = false;
};

/// The import dialog over such a host.
class RunFixture : public ImportFixture
{
public:
    RunFixture()
    {
        counting.survey = host.survey;
        counting.dataFolder = host.dataFolder;
        counting.storedWells = host.storedWells;
        dialog.reset();
        launch = std::make_unique<ProjectData>(counting, asker);
        open();
        makeDialog();
    }
    ~RunFixture()
    {
        dialog.reset();
        launch.reset();
    }
    // As the fixture's own, but of this host.
    void open()
    {
        launch->project.groupNames = QStringList{text("None"), text("Gamma"), text("Sonic"), text("Others")};
        launch->catalogue.build();
        openProject(counting, &launch->project);
    }
    QVector<host::LogData> logs(int well) const { return counting.storedWells.at(well).logs; }
    QString status() const { return find<QLabel>("statusLabel")->text(); }

    CountingHost counting;
};

QByteArray manyCurves(int count, const QByteArray &well = "W-2")
{
    QByteArrayList curves;
    QByteArray row = "100";
    for (int i = 0; i < count; ++i) {
        curves.append('C' + QByteArray::number(i) + ".x");
        row += " 1";
    }
    return ImportFixture::las(well, row + '\n', curves);
}

} // namespace

/// What an import of many curves costs, and how it tells what became of them.
class TestImportRun : public QObject
{
    Q_OBJECT

private slots:
    void init() { CurveGroupTable::instance().clear(); }
    void costsDoNotGrowWithTheCurves();
    void filesOfOneWellAreOneRun();
    void failedCurvesAreOneBoxAWell();
    void unreadableWellIsOneBox();
    void unreadableWellIsToldOnceAndNotUnderAWaitCursor();
    void declinedLogsStandInTheStatus();
    void declinedLogGetsItsGroupAllTheSame();
    void sameNameTwiceInAFileIsAskedAbout();
    void wellsAreKnownByTheirKeys();
    void vanishedWell();
};

void TestImportRun::costsDoNotGrowWithTheCurves()
{
    QVector<int> lists;
    QVector<int> headers;
    QVector<QStringList> written;
    for (int count : {20, 200}) {
        CurveGroupTable::instance().clear();
        RunFixture f;
        f.chooseBytes(manyCurves(count));
        for (int row = 0; row <= count; ++row)
            f.groupBox(row)->setCurrentText(row % 2 == 0 ? text("Sonic") : text("Gamma"));
        f.counting.lists = f.counting.headers = 0;
        FailingDisk disk;
        {
            const base::ScopedFileSystemCalls calls(disk);
            f.startImport();
        }
        QCOMPARE(f.logs(1).size(), count + 1);
        QCOMPARE(f.launch->catalogue.logNames(1).size(), count + 1);
        QCOMPARE(f.counting.reloaded, QStringList{f.launch->catalogue.wellKey(1)});
        lists.append(f.counting.lists);
        headers.append(f.counting.headers);
        written.append(disk.written);
        disk.written.sort();
        QCOMPARE(disk.written,
                 (QStringList{f.path(text("/CurveGroups/CurveGroupTable.txt")),
                              f.path(text("/CurveGroups/Gamma.txt")), f.path(text("/CurveGroups/Sonic.txt"))}));
        QVERIFY(readGroupFile(f.launch->project.projectFolder, text("Gamma")).contains(text("C18")));
        QCOMPARE(CurveGroupTable::instance().group(text("C17")), text("Sonic"));
    }
    QVERIFY(lists.at(0) <= 2); // at the beginning and for the catalogue
    QCOMPARE(lists.at(1), lists.at(0));
    QCOMPARE(headers.at(1), headers.at(0));
}

void TestImportRun::filesOfOneWellAreOneRun()
{
    RunFixture f;
    f.choose({f.write(text("a.las"), ImportFixture::las("W-2", "100 1\n", {"A.x"})),
              f.write(text("b.las"), ImportFixture::las("W-1", "100 1\n", {"B.x"})),
              f.write(text("c.las"), ImportFixture::las("W-2", "100 1\n", {"C.x"}))});
    for (int tab = 0; tab < 3; ++tab)
        f.setChecked(0, false, tab);
    f.startImport();
    QStringList reloaded = f.counting.reloaded;
    reloaded.sort();
    QCOMPARE(reloaded, (QStringList{f.launch->catalogue.wellKey(0), f.launch->catalogue.wellKey(1)}));
    QCOMPARE(f.launch->catalogue.logNames(0), (QStringList{text("GR"), text("B")}));
    QCOMPARE(f.launch->catalogue.logNames(1), (QStringList{text("A"), text("C")}));
}

void TestImportRun::failedCurvesAreOneBoxAWell()
{
    RunFixture f;
    f.counting.refused = QStringList{text("A"), text("B"), text("D")};
    f.choose({f.write(text("a.las"), ImportFixture::las("W-2", "100 1 2 3\n", {"A.x", "B.x", "OK.x"})),
              f.write(text("b.las"), ImportFixture::las("W-1", "100 1\n", {"D.x"})),
              f.write(text("c.las"), ImportFixture::las("W-2", "100 1\n", {"D.x"}))});
    f.setChecked(0, false, 2);
    f.startImport();
    QCOMPARE(f.boxTexts().size(), 3);
    QStringList boxes = f.boxTexts().mid(0, 2);
    boxes.sort();
    QCOMPARE(boxes,
             (QStringList{text("Cannot write new log for W-1\nD"), text("Cannot write new log for W-2\nA, B, D")}));
    QCOMPARE(f.asker.boxes.first().title, text("Writing Well Logs"));
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.boxTexts().last(), importedText);
    QCOMPARE(f.launch->catalogue.logNames(1), (QStringList{text("DEPT"), text("OK")}));
}

void TestImportRun::unreadableWellIsOneBox()
{
    RunFixture f;
    f.chooseBytes(manyCurves(30));
    f.counting.storedWells[1].isUnreadable = true;
    f.startImport();
    QCOMPARE(f.boxTexts().size(), 2);
    QVERIFY(f.boxTexts().first().startsWith(text("Cannot get data for this well : W-2\nDEPT, C0, C1, ")));
    QVERIFY(f.boxTexts().first().endsWith(text("C29")));
    QVERIFY(f.counting.errors.isEmpty());
    QVERIFY(f.counting.reloaded.isEmpty());
}

void TestImportRun::unreadableWellIsToldOnceAndNotUnderAWaitCursor()
{
    RunFixture f;
    f.counting.storedWells[1].isUnreadable = true;
    f.choose({f.write(text("a.las"), ImportFixture::las("W-2", "100 1\n")),
              f.write(text("b.las"), ImportFixture::las("W-1", "100 1\n")),
              f.write(text("c.las"), ImportFixture::las("W-2", "100 1\n"))});
    QCOMPARE(f.counting.errors, QStringList{text("Cannot get data for this well : W-2")});
    QVERIFY(!f.counting.hadWaitCursor);
    f.wellBox(1)->setCurrentText(text("W-2"));
    QCOMPARE(f.counting.errors.size(), 2);
    f.wellBox(1)->setCurrentIndex(0); // "None" has nothing to read
    QCOMPARE(f.counting.errors.size(), 2);
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "addWellWidget", Q_ARG(int, 3),
                                      Q_ARG(WellInfo, f.tab(0)->file()), Q_ARG(QString, text("/x/d.las"))));
    QCOMPARE(f.counting.errors.size(), 3);
}

void TestImportRun::declinedLogsStandInTheStatus()
{
    RunFixture f;
    QCOMPARE(f.status(), QString());
    f.chooseBytes(ImportFixture::las("W-1", "100 1 2 3\n", {"GR.gapi", "GR.gapi", "RT.ohmm"}));
    f.setChecked(1, true);
    f.setChecked(2, true);
    f.asker.answers = {base::BoxButton::No, base::BoxButton::No};
    f.startImport();
    QCOMPARE(f.status(), text("Not overwritten and so left out: GR, GR of W-1."));
    QCOMPARE(f.logs(0).first().values, (QVector<float>{1, 2, 3}));
    QCOMPARE(f.boxTexts().last(), importedText);
    QVERIFY(f.find<QLabel>("statusLabel")->isVisible());
    QCOMPARE(f.find<QLabel>("statusLabel")->textFormat(), Qt::PlainText);
    f.setChecked(1, true);
    f.asker.answers = {base::BoxButton::Yes};
    f.startImport();
    QCOMPARE(f.status(), QString());
}

void TestImportRun::declinedLogGetsItsGroupAllTheSame()
{
    RunFixture f;
    f.chooseBytes(ImportFixture::las("W-1", "100 1\n", {"GR.gapi"}));
    f.setChecked(0, false);
    f.setChecked(1, true);
    f.groupBox(1)->setCurrentText(text("Sonic"));
    f.asker.answers = {base::BoxButton::No};
    f.startImport();
    QVERIFY(readGroupFile(f.launch->project.projectFolder, text("Sonic")).contains(text("GR")));
    QCOMPARE(CurveGroupTable::instance().group(text("GR")), text("Sonic"));
    QVERIFY(f.counting.reloaded.isEmpty());
}

void TestImportRun::sameNameTwiceInAFileIsAskedAbout()
{
    RunFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1 2\n", {"RT.ohmm", "RT.ohmm"}));
    f.asker.answers = {base::BoxButton::No};
    f.startImport();
    QCOMPARE(f.boxTexts().size(), 2);
    QVERIFY(f.boxTexts().first().startsWith(text("A log with this name RT is already exists.")));
    QCOMPARE(f.logs(1).last().values, QVector<float>{1});
    QCOMPARE(f.status(), text("Not overwritten and so left out: RT of W-2."));
}

// The list of wells in the dialog is that of its beginning; meanwhile the catalogue is read anew.
void TestImportRun::wellsAreKnownByTheirKeys()
{
    RunFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n", {"RT.ohmm"}));
    QCOMPARE(f.wellBox()->currentText(), text("W-2"));
    host::WellHeader header;
    header.name = text("A-0"); // sorted in front
    header.totalDepth = 10;
    f.counting.addWell(header);
    const QString key = text("another");
    f.counting.storedWells.last().key = key;
    f.counting.find(key)->logs.append({text("DEPT"), text("m"), {1}, {1}});
    f.launch->catalogue.build();
    QCOMPARE(f.launch->catalogue.indexOf(text("W-2")), 2);
    f.tab()->testAllRows();
    QVERIFY(!f.isRed(0));
    f.startImport();
    QCOMPARE(f.boxTexts(), QStringList{importedText});
    QCOMPARE(f.counting.find(key)->logs.size(), 1);
    QCOMPARE(f.launch->catalogue.logNames(2), (QStringList{text("DEPT"), text("RT")}));
    QCOMPARE(f.launch->catalogue.logNames(1), QStringList{text("GR")});
    QVERIFY(f.isRed(1));
}

void TestImportRun::vanishedWell()
{
    RunFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n", {"RT.ohmm"}));
    f.counting.storedWells.removeLast();
    f.launch->catalogue.build();
    f.startImport();
    QCOMPARE(f.boxTexts(), (QStringList{text("Cannot get data for this well : W-2\nDEPT, RT"), importedText}));
    QVERIFY(f.counting.errors.isEmpty());
    QCOMPARE(f.logs(0).size(), 1);
}

LORVA_TEST_MAIN(TestImportRun)
#include "tst_importrun.moc"
