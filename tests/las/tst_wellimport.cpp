#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "las/cubicspline.h"
#include "las/importplan.h"
#include "support/testmain.h"
#include "tests/las/importfixture.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <cmath>
#include <new>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString importTitle = QStringLiteral("Las Import");
const QString dialogTitle = QStringLiteral("Well Log(s) Import (LAS Import)");

const QString unsuitedText = QStringLiteral(
    "The depths of these curves do not run strictly up or down, or are not all numbers, so no interval could "
    "be applied.\nThey were imported as they stand in the file:\n");

/// A host without memory for logs.
class HostWithoutMemory : public MemoryHost
{
public:
    host::Status writeLog(const QString &key, const host::LogData &log) override
    {
        if (log.name == failingLog)
            throw std::bad_alloc();
        return MemoryHost::writeLog(key, log);
    }
    QString failingLog;
};

QVector<float> floats(const QVector<double> &numbers)
{
    QVector<float> result;
    for (double number : numbers)
        result.append(static_cast<float>(number));
    return result;
}

} // namespace

/// What an import writes, says and refuses.
class TestWellImport : public QObject
{
    Q_OBJECT

private slots:
    void init() { CurveGroupTable::instance().clear(); }
    void importsAsRead();
    void recordOfACurve();
    void onlySelectedRows();
    void descendingDepthsAreReversed();
    void resamples();
    void resamplesReversedDepths();
    void stepWithinToleranceIsNotResampled();
    void boxOffMeansAsRead();
    void nullsOfTheFile_data();
    void nullsOfTheFile();
    void groupIsAssigned();
    void groupNoneIsNotAssigned();
    void wellNotSelected();
    void depthsBeyondTheWell_data();
    void depthsBeyondTheWell();
    void maximumDepthFollowsTheWell();
    void aFileMayEndAtTheTotalDepth();
    void nothingSelected();
    void withoutFiles();
    void emptyNamesAreRefused();
    void badIntervals_data();
    void badIntervals();
    void badIntervalDoesNotMatterWhereNothingIsResampled();
    void hugeGridIsRefused();
    void headerPromisingTerabytes();
    void unsuitedDepths_data();
    void unsuitedDepths();
    void unreadableDepthOnAShortLine();
    void allUnsuitedCurvesAreNamed();
    void allNamelessRowsAreNamed();
    void namesWithPercentSigns();
    void withoutMemory();
    void existingLogAsksBeforeItIsReplaced();
    void failedWriteIsTold();
    void emptyCurves();
    void fileDeletedAfterChoosing();
    void changedWellsAreTold();
    void importedRowsTurnRed();
    void twoWellsOfOneName();
};

void TestWellImport::importsAsRead()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1.5\n100.5 -999.25\n101 3\n"));
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1); // no success box for each log
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Information);
    QCOMPARE(f.asker.boxes.first().title, importTitle);
    QCOMPARE(f.asker.boxes.first().text, importedText);
    const host::LogData *log = f.hostLog(text("W-2"), text("GR"));
    QVERIFY(log);
    QCOMPARE(log->unit, text("gapi"));
    QCOMPARE(log->depths, (QVector<float>{100, 100.5, 101}));
    QCOMPARE(log->values, (QVector<float>{1.5, host::undefinedValue, 3}));
    QCOMPARE(f.hostLog(text("W-2"), text("DEPT"))->values, (QVector<float>{100, 100.5, 101}));
    QCOMPARE(f.progressBar()->value(), f.progressBar()->maximum());
}

void TestWellImport::recordOfACurve()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n", {"RT.ohmm"}, "-9999"));
    f.groupBox(1)->setCurrentText(text("Resistivity"));
    f.nameItem(1)->setText(text(" Deep "));
    const las::ImportTab tab = f.tab()->plan();
    const LogCurveData record = las::importedCurve(tab, tab.rows.at(1), {}).record;
    QCOMPARE(record.wellName, text("W-2"));
    QCOMPARE(record.curveGroup, text("Resistivity"));
    QCOMPARE(record.logName, text("Deep"));
    QCOMPARE(record.unit, text("ohmm"));
    QCOMPARE(record.nullValue, -9999.0);
    QCOMPARE(record.isLogarithmic, 1);
    QCOMPARE(record.source, f.survey.filePath(text("las/test.las")));
    QCOMPARE(las::importedCurve(tab, tab.rows.at(0), {}).record.isLogarithmic, 0);
}

void TestWellImport::onlySelectedRows()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1 2\n101 2 3\n", {"GR.gapi", "SP.mv"}));
    f.setChecked(0, false);
    f.setChecked(1, false);
    f.nameItem(2)->setText(text("Spontaneous"));
    f.startImport();
    QCOMPARE(f.launch->catalogue.logNames(1), QStringList{text("Spontaneous")});
    QCOMPARE(f.hostLog(text("W-2"), text("Spontaneous"))->values, (QVector<float>{2, 3}));
}

void TestWellImport::descendingDepthsAreReversed()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "102 3\n101.5 2\n100 1\n"));
    f.startImport();
    const host::LogData *log = f.hostLog(text("W-2"), text("GR"));
    QCOMPARE(log->depths, (QVector<float>{100, 101.5, 102}));
    QCOMPARE(log->values, (QVector<float>{1, 2, 3}));
}

void TestWellImport::resamples()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 5\n102 -999.25\n103 2\n"));
    f.setInterval(text("0.3"));
    f.startImport();
    const CubicSpline spline({100, 101, 102, 103}, {1, 5, -999.25, 2}, 4); // nulls take part
    QVector<double> depths;
    QVector<double> values;
    for (double depth = 100; depth <= 103; depth += static_cast<double>(0.3f)) {
        depths.append(depth);
        values.append(spline.valueAt(depth));
    }
    const host::LogData *log = f.hostLog(text("W-2"), text("GR"));
    QCOMPARE(log->depths, floats(depths));
    QCOMPARE(log->values, floats(values));
    QCOMPARE(f.boxTexts(), QStringList{importedText});
}

void TestWellImport::resamplesReversedDepths()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "103 2\n102 7\n101 5\n100 1\n"));
    f.setInterval(text("0.5"));
    f.startImport();
    const CubicSpline spline({100, 101, 102, 103}, {1, 5, 7, 2}, 4);
    const host::LogData *log = f.hostLog(text("W-2"), text("GR"));
    QCOMPARE(log->depths, (QVector<float>{100, 100.5, 101, 101.5, 102, 102.5, 103}));
    QCOMPARE(log->values.at(1), static_cast<float>(spline.valueAt(100.5)));
    QCOMPARE(log->values.at(6), 2.0f);
}

void TestWellImport::stepWithinToleranceIsNotResampled()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n100.15240005 2\n100.7 3\n"));
    f.setInterval(text("0.1524"));
    f.startImport();
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->depths, floats({100, 100.15240005, 100.7}));
}

void TestWellImport::boxOffMeansAsRead()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n107 3\n"));
    f.setInterval(text("0.5"));
    f.find<QCheckBox>("intervalBox")->setChecked(false);
    f.startImport();
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->depths, (QVector<float>{100, 101, 107}));
}

void TestWellImport::nullsOfTheFile_data()
{
    QTest::addColumn<QByteArray>("null");
    QTest::addColumn<QVector<float>>("expected");
    const float undefined = host::undefinedValue;
    QTest::newRow("-9999") << QByteArray("-9999") << QVector<float>{1, undefined, 0, undefined, 7};
    QTest::newRow("0") << QByteArray("0") << QVector<float>{1, -9999, undefined, undefined, 7};
    QTest::newRow("-999.25") << QByteArray("-999.25") << QVector<float>{1, -9999, 0, undefined, 7};
    QTest::newRow("none that can be read") << QByteArray("n/a") << QVector<float>{1, -9999, 0, undefined, 7};
}

void TestWellImport::nullsOfTheFile()
{
    QFETCH(QByteArray, null);
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 -9999\n102 0\n103 -999.25\n104 7\n", {"GR.gapi"}, null));
    f.startImport();
    QTEST(f.hostLog(text("W-2"), text("GR"))->values, "expected");
    // What the dialog holds of the file is not touched.
    QCOMPARE(f.tab()->file().curves.at(1).values, (QVector<double>{1, -9999, 0, -999.25, 7}));
}

void TestWellImport::groupIsAssigned()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n", {"XYZ.gapi"}));
    f.groupBox(1)->setCurrentText(text("Sonic"));
    f.nameItem(1)->setText(text("Mine"));
    f.startImport();
    QVERIFY(readGroupFile(f.launch->project.projectFolder, text("Sonic")).contains(text("Mine")));
    QVERIFY(!readGroupFile(f.launch->project.projectFolder, text("Sonic")).contains(text("XYZ")));
    QCOMPARE(CurveGroupTable::instance().group(text("Mine")), text("Sonic"));
    QVERIFY(files::read(f.path(text("/CurveGroups/CurveGroupTable.txt"))).contains("Mine | Sonic\n"));
}

void TestWellImport::groupNoneIsNotAssigned()
{
    ImportFixture f;
    const auto before = files::snapshot(f.path(text("/CurveGroups")));
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    f.groupBox(0)->setCurrentText(text("None"));
    f.groupBox(1)->setCurrentText(text("None"));
    f.startImport();
    QVERIFY(f.hostLog(text("W-2"), text("GR")));
    QCOMPARE(files::snapshot(f.path(text("/CurveGroups"))), before);
    QVERIFY(CurveGroupTable::instance().group(text("GR")).isEmpty());
}

void TestWellImport::wellNotSelected()
{
    ImportFixture f;
    f.choose({f.write(text("a.las"), ImportFixture::las("W-2", "100 1\n101 2\n")),
              f.write(text("b.las"), ImportFixture::las("unknown", "100 1\n101 2\n")),
              f.write(text("c.las"), ImportFixture::las("W-2", "100 1\n101 2\n", {"SP.mv"}))});
    QSignalSpy imported(f.dialog.get(), &WellImportDialog::logsImported);
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, dialogTitle);
    QCOMPARE(f.asker.boxes.first().text,
             text("Well is not selected in 2 tab.\nPlease select Well name for importing well logs."));
    // What came before stays, what comes behind is not imported.
    QVERIFY(f.hostLog(text("W-2"), text("GR")));
    QVERIFY(!f.hostLog(text("W-2"), text("SP")));
    QCOMPARE(imported.size(), 1);
    QVERIFY(f.button("importButton")->isEnabled());
}

void TestWellImport::depthsBeyondTheWell_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("stop");
    QTest::addColumn<QString>("word");
    QTest::newRow("start") << 1000.5 << 1001.0 << text("start");
    QTest::newRow("stop") << 1000.0 << 1000.5 << text("end");
    QTest::newRow("start of a falling file") << 1000.5 << 900.0 << text("start");
    QTest::newRow("exactly") << 1000.0 << 1000.0 << QString();
}

void TestWellImport::depthsBeyondTheWell()
{
    QFETCH(double, start);
    QFETCH(double, stop);
    QFETCH(QString, word);
    ImportFixture f;
    QByteArray bytes = ImportFixture::las("W-2", "100 1\n101 2\n");
    bytes.replace("STRT.M 100", "STRT.M " + QByteArray::number(start));
    bytes.replace("STOP.M 200", "STOP.M " + QByteArray::number(stop));
    f.chooseBytes(bytes);
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1);
    if (word.isEmpty()) {
        QCOMPARE(f.asker.boxes.first().text, importedText);
        return;
    }
    QCOMPARE(f.asker.boxes.first().title, dialogTitle);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().text,
             text("W-2's maximum depth is less than LAS files %1 depth.\n"
                  "Please update Well defination or changed the LAS file")
                 .arg(word));
    QVERIFY(f.launch->catalogue.logNames(1).isEmpty());
}

void TestWellImport::maximumDepthFollowsTheWell()
{
    ImportFixture f;
    f.host.find(f.launch->catalogue.wellKey(1))->header.totalDepth = 50;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n", {"SP.mv"}));
    f.startImport();
    QVERIFY(f.asker.boxes.takeFirst().text.startsWith(text("W-2's maximum depth")));
    f.wellBox()->setCurrentText(text("W-1"));
    f.startImport();
    QCOMPARE(f.asker.boxes.takeFirst().text, importedText);
    QVERIFY(f.hostLog(text("W-1"), text("SP")));
    // It is taken when the well is chosen, not at the import.
    f.host.find(f.launch->catalogue.wellKey(0))->header.totalDepth = 50;
    f.nameItem(1)->setText(text("SP2"));
    f.setChecked(1, true);
    f.startImport();
    QCOMPARE(f.asker.boxes.takeFirst().text, importedText);
}

// A host keeps total depths in single precision: 1670.1 comes back as 1670.0999755859375.
void TestWellImport::aFileMayEndAtTheTotalDepth()
{
    las::ImportTab tab;
    tab.wellKey = text("1");
    tab.wellName = text("A");
    tab.wellMaximumDepth = static_cast<double>(1670.1f);
    tab.startDepth = 1670.1;
    tab.stopDepth = 1670.1;
    QCOMPARE(las::stopReason(tab, 1), QString());
    tab.stopDepth = static_cast<double>(std::nextafter(1670.1f, 2000.0f));
    QVERIFY(las::stopReason(tab, 1).contains(text("LAS files end depth")));
    std::swap(tab.startDepth, tab.stopDepth);
    QVERIFY(las::stopReason(tab, 1).contains(text("LAS files start depth")));
    // And where the well's depth has more digits than the file's.
    tab.wellMaximumDepth = 1670.1;
    tab.startDepth = 0;
    tab.stopDepth = static_cast<double>(1670.1f) + 1e-5;
    QCOMPARE(las::stopReason(tab, 1), QString());
}

void TestWellImport::nothingSelected()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    f.setChecked(0, false);
    f.setChecked(1, false);
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, importTitle);
    QCOMPARE(f.asker.boxes.first().text, text("To import required well log(s), Please first select them."));
    // The well is asked for first.
    f.wellBox()->setCurrentIndex(0);
    f.asker.boxes.clear();
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QVERIFY(f.asker.boxes.first().text.startsWith(text("Well is not selected in 1 tab.")));
}

void TestWellImport::withoutFiles()
{
    ImportFixture f;
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "importSelectedClicked"));
    QCOMPARE(f.boxTexts(), QStringList{text("To import required well log(s), Please first select them.")});
    QVERIFY(!f.button("importButton")->isEnabled());
}

void TestWellImport::emptyNamesAreRefused()
{
    ImportFixture f;
    f.choose({f.write(text("a.las"), ImportFixture::las("W-2", "100 1 2\n101 2 3\n", {"AA.x", "BB.x"})),
              f.write(text("b.las"), ImportFixture::las("W-1", "100 1 2\n101 2 3\n", {"CC.x", "DD.x"}))});
    f.nameItem(1)->setText({});
    f.nameItem(2)->setText(text("  "));
    f.setChecked(2, false); // not selected, so its name does not matter
    f.nameItem(2, 1)->setText(text(" "));
    const QVector<MemoryHost::Well> before = f.host.storedWells;
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, importTitle);
    QCOMPARE(f.asker.boxes.first().text,
             text("These selected rows have no alternate curve name:\na.las: row 2 (AA)\nb.las: row 3 (DD)\n"
                  "Please give them a name or clear their check boxes. Nothing was imported."));
    QVERIFY(f.hostLog(text("W-2"), text("DEPT")) == nullptr);
    QCOMPARE(f.host.storedWells.at(0).logs.size(), before.at(0).logs.size());
}

void TestWellImport::badIntervals_data()
{
    QTest::addColumn<QString>("interval");
    for (const char *interval : {"0", "-0.5", "0.00001", "1e-30", "", "-", "1e60"})
        QTest::newRow(interval) << text(interval);
}

void TestWellImport::badIntervals()
{
    QFETCH(QString, interval);
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    f.setInterval(interval);
    f.startImport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("The depth interval must be a number and at least 0.0001 m.\n"
                              "Nothing was written.")});
    QVERIFY(f.launch->catalogue.logNames(1).isEmpty());
}

void TestWellImport::badIntervalDoesNotMatterWhereNothingIsResampled()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    f.setInterval(text("0"));
    f.find<QCheckBox>("intervalBox")->setChecked(false);
    f.startImport();
    QCOMPARE(f.boxTexts(), QStringList{importedText});
    // One sample has no step, and what is not selected is not resampled either.
    f.asker.boxes.clear();
    f.choose({f.write(text("one.las"), ImportFixture::las("W-2", "100 1\n", {"ONE.x"}))});
    emit f.tabs()->tabCloseRequested(0);
    f.setInterval(text("0"));
    f.setChecked(0, false);
    f.startImport();
    QCOMPARE(f.boxTexts(), QStringList{importedText});
    QCOMPARE(f.hostLog(text("W-2"), text("ONE"))->values, QVector<float>{1});
}

void TestWellImport::hugeGridIsRefused()
{
    ImportFixture f;
    f.choose({f.write(text("good.las"), ImportFixture::las("W-2", "100 1\n101 2\n")),
              f.write(text("huge.las"), ImportFixture::las("W-2", "0 1\n1e9 2\n", {"SP.mv"}))});
    f.setInterval(text("0.5"));
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QVERIFY(f.boxTexts().first().startsWith(text(
        "huge.las, DEPT: the depths 0 to 1e+09 at an interval of 0.5 would give more than 50 million samples.")));
    QVERIFY(f.launch->catalogue.logNames(1).isEmpty()); // the good file before it is not begun
}

void TestWellImport::headerPromisingTerabytes()
{
    ImportFixture f;
    QByteArray bytes = ImportFixture::las("W-2", "0 1\n1 2\n2 3\n");
    bytes.replace("STRT.M 100", "STRT.M 0").replace("STOP.M 200", "STOP.M 1e12").replace("STEP.M 0.5", "STEP.M 1e-6");
    f.chooseBytes(bytes);
    QCOMPARE(f.tab()->file().curves.at(1).values.size(), 3);
    f.startImport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QVERIFY(f.boxTexts().first().startsWith(text("W-2's maximum depth is less than LAS files end depth.")));
}

void TestWellImport::unsuitedDepths_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QVector<float>>("depths"); // as the host stores them
    QTest::newRow("constant") << QByteArray("5 1\n5 2\n5 3\n") << QVector<float>{5, 5, 5};
    QTest::newRow("turning") << QByteArray("5 1\n6 2\n5.5 3\n") << QVector<float>{5, 5.5, 6};
    QTest::newRow("falling, then turning") << QByteArray("6 1\n5 2\n5.5 3\n") << QVector<float>{5, 5.5, 6};
    QTest::newRow("no number first, rising") << QByteArray("nan 1\n6 2\n7 3\n") << QVector<float>{0, 6, 7};
    QTest::newRow("no number first, falling") << QByteArray("x 1\n6 2\n5 3\n") << QVector<float>{0, 5, 6};
    QTest::newRow("no number inside, rising") << QByteArray("5 1\ninf 2\n7 3\n") << QVector<float>{0, 5, 7};
    QTest::newRow("no number inside, falling") << QByteArray("7 1\n- 2\n5 3\n") << QVector<float>{0, 5, 7};
    QTest::newRow("no number last, rising") << QByteArray("5 1\n6 2\n1e400 3\n") << QVector<float>{0, 5, 6};
    QTest::newRow("no number last, falling") << QByteArray("7 1\n6 2\nNaN 3\n") << QVector<float>{0, 6, 7};
    QTest::newRow("no number of two") << QByteArray("NULL 1\n6 2\n") << QVector<float>{0, 6};
    QTest::newRow("a no-break space behind it") << QByteArray("?\xC2\xA0"
                                                              "1\n6 2\n")
                                                << QVector<float>{0, 6};
}

void TestWellImport::unsuitedDepths()
{
    QFETCH(QByteArray, rows);
    QFETCH(QVector<float>, depths);
    ImportFixture f;
    f.choose({f.write(text("bad.las"), ImportFixture::las("W-2", rows)),
              f.write(text("good.las"), ImportFixture::las("W-2", "100 1\n101 2\n", {"SP.mv"}))});
    f.setChecked(0, false, 1);
    f.setInterval(text("0.25"));
    f.startImport();
    QCOMPARE(f.boxTexts(), (QStringList{unsuitedText + text("bad.las: DEPT, GR"), importedText}));
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->depths, depths);
    QCOMPARE(f.hostLog(text("W-2"), text("SP"))->depths.size(), 5);
    // Without resampling there is nothing to warn of.
    ImportFixture other;
    other.chooseBytes(ImportFixture::las("W-2", rows));
    other.startImport();
    QCOMPARE(other.boxTexts(), QStringList{importedText});
}

// A depth that is no number concerns the curves with a sample on its line, and no others.
void TestWellImport::unreadableDepthOnAShortLine()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "nan 1\n100 1 1\n101 2 2\n", {"GR.gapi", "SP.mv"}));
    f.setInterval(text("0.5"));
    f.startImport();
    QCOMPARE(f.boxTexts(), (QStringList{unsuitedText + text("test.las: DEPT, GR"), importedText}));
    QCOMPARE(f.hostLog(text("W-2"), text("SP"))->depths, (QVector<float>{100, 100.5, 101}));
}

void TestWellImport::allUnsuitedCurvesAreNamed()
{
    ImportFixture f;
    QByteArrayList curves;
    QByteArray row = "5";
    QStringList names{text("DEPT")};
    for (int i = 1; i <= 40; ++i) {
        curves.append('C' + QByteArray::number(i) + ".x");
        row += " 1";
        names.append(text("C") + QString::number(i));
    }
    const QByteArray bytes = ImportFixture::las("W-2", row + '\n' + row + '\n', curves);
    f.choose(
        {f.write(text("a%2.las"), bytes), f.write(text("b.las"), ImportFixture::las("W-1", "5 1\n5 1\n", {"%1.x"}))});
    f.setInterval(text("0.5"));
    f.startImport();
    QCOMPARE(f.boxTexts().value(0),
             unsuitedText + text("a%2.las: ") + names.join(text(", ")) + text("\nb.las: DEPT, %1"));
    QCOMPARE(f.boxTexts().value(1), importedText);
}

void TestWellImport::allNamelessRowsAreNamed()
{
    ImportFixture f;
    QByteArrayList curves;
    for (int i = 1; i <= 40; ++i)
        curves.append("%1.x");
    f.choose({f.write(text("a%2.las"), ImportFixture::las("W-2", "5 1\n", curves))});
    QStringList rows;
    for (int row = 1; row <= 40; ++row) {
        f.nameItem(row)->setText({});
        rows.append(text("row ") + QString::number(row + 1) + text(" (%1)"));
    }
    f.startImport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("These selected rows have no alternate curve name:\na%2.las: ") + rows.join(text(", "))
                         + text("\nPlease give them a name or clear their check boxes. Nothing was imported.")});
}

// Names that look like places for other texts.
void TestWellImport::namesWithPercentSigns()
{
    ImportFixture f;
    f.addWell(text("A%1"));
    f.launch->catalogue.build();
    f.makeDialog();
    const QByteArray bytes = ImportFixture::las("A%1", "0 1\n1e9 2\n", {"%3.x"});
    f.chooseBytes(bytes);
    QCOMPARE(f.wellBox()->currentText(), text("A%1"));
    f.setInterval(text("0.5"));
    f.startImport();
    QVERIFY(f.boxTexts().takeLast().startsWith(
        text("test.las, DEPT: the depths 0 to 1e+09 at an interval of 0.5 would")));
    const auto tooDeep = [&](const char *from, const char *to) {
        f.choose({f.write(text("a%2.las"), QByteArray(bytes).replace(from, to))});
        emit f.tabs()->tabCloseRequested(0);
        f.startImport();
        return f.boxTexts().last();
    };
    const QString ending = text(" depth.\nPlease update Well defination or changed the LAS file");
    const QString beginning = text("A%1's maximum depth is less than LAS files ");
    QCOMPARE(tooDeep("STRT.M 100", "STRT.M 2000"), beginning + text("start") + ending);
    QCOMPARE(tooDeep("STOP.M 200", "STOP.M 2000"), beginning + text("end") + ending);
}

void TestWellImport::withoutMemory()
{
    ImportFixture f;
    HostWithoutMemory host;
    host.survey = f.host.survey;
    host.dataFolder = f.host.dataFolder;
    host.storedWells = f.host.storedWells;
    host.failingLog = text("SP");
    f.dialog.reset();
    f.launch = std::make_unique<ProjectData>(host, f.asker);
    f.launch->catalogue.build();
    openProject(host, &f.launch->project);
    f.makeDialog();
    f.chooseBytes(ImportFixture::las("W-2", "100 1 2 3\n101 2 3 4\n", {"GR.gapi", "SP.mv", "RT.ohmm"}));
    QSignalSpy imported(f.dialog.get(), &WellImportDialog::logsImported);
    f.startImport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("There is not enough memory to import the curve SP of test.las.\n"
                              "The import ends here; the curves before it were imported.")});
    QCOMPARE(f.launch->catalogue.logNames(1), (QStringList{text("DEPT"), text("GR")}));
    QCOMPARE(imported.size(), 1);
    QVERIFY(f.button("importButton")->isEnabled());
    f.dialog.reset();
    f.launch.reset();
}

void TestWellImport::existingLogAsksBeforeItIsReplaced()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-1", "100 50\n101 60\n"));
    f.setChecked(0, false);
    f.setChecked(1, true); // against the red
    f.asker.answers = {base::BoxButton::No};
    QSignalSpy imported(f.dialog.get(), &WellImportDialog::logsImported);
    f.startImport();
    QCOMPARE(f.asker.boxes.first().title, text("Writing Well Logs"));
    QCOMPARE(f.hostLog(text("W-1"), text("GR"))->values, (QVector<float>{1, 2, 3}));
    QVERIFY(imported.isEmpty());
    f.setChecked(1, true);
    f.asker.answers = {base::BoxButton::Yes};
    f.startImport();
    QCOMPARE(f.hostLog(text("W-1"), text("GR"))->values, (QVector<float>{50, 60}));
    QCOMPARE(imported.size(), 1);
}

void TestWellImport::failedWriteIsTold()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    f.host.find(f.launch->catalogue.wellKey(1))->isUnreadable = true;
    f.startImport();
    QCOMPARE(f.asker.boxes.first().text, text("Cannot get data for this well : W-2\nDEPT, GR"));
    QVERIFY(f.button("importButton")->isEnabled());
}

void TestWellImport::emptyCurves()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "", {"GR.gapi"}));
    f.setInterval(text("0.5"));
    f.startImport();
    // The host refuses each log without samples.
    QCOMPARE(f.boxTexts(), (QStringList{text("Cannot write new log for W-2\nDEPT, GR"), importedText}));
    f.asker.boxes.clear();
    f.choose({text("/no/such/file.las")});
    emit f.tabs()->tabCloseRequested(0);
    f.wellBox()->setCurrentText(text("W-2"));
    f.startImport();
    QCOMPARE(f.boxTexts(), QStringList{text("To import required well log(s), Please first select them.")});
}

void TestWellImport::fileDeletedAfterChoosing()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    QVERIFY(QFile::remove(f.survey.filePath(text("las/test.las"))));
    f.startImport();
    QCOMPARE(f.boxTexts(), QStringList{importedText});
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->values, (QVector<float>{1, 2}));
}

void TestWellImport::changedWellsAreTold()
{
    ImportFixture f;
    f.choose({f.write(text("a.las"), ImportFixture::las("W-2", "100 1 3\n101 2 4\n", {"GR.gapi", "SP.mv"})),
              f.write(text("b.las"), ImportFixture::las("W-1", "100 1\n101 2\n", {"SP.mv"}))});
    QSignalSpy imported(f.dialog.get(), &WellImportDialog::logsImported);
    f.startImport();
    QCOMPARE(imported, (QList<QList<QVariant>>{{0}, {1}}));
    QCOMPARE(f.launch->catalogue.logNames(1), (QStringList{text("DEPT"), text("GR"), text("SP")}));
    QVERIFY(f.host.reloaded.contains(f.launch->catalogue.wellKey(0)));
    QCOMPARE(f.progressBar()->maximum(), 2);
    QCOMPARE(f.progressBar()->value(), 2);
}

void TestWellImport::importedRowsTurnRed()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    f.startImport();
    QVERIFY(f.isRed(0) && f.isRed(1));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Unchecked);
}

void TestWellImport::twoWellsOfOneName()
{
    ImportFixture f;
    f.addWell(text("W-2"));
    f.launch->catalogue.build();
    f.makeDialog();
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    QCOMPARE(f.wellBox()->currentIndex(), 2); // the first of that name
    f.wellBox()->setCurrentIndex(3);
    f.startImport();
    QVERIFY(f.launch->catalogue.logNames(1).isEmpty());
    QCOMPARE(f.launch->catalogue.logNames(2).size(), 2);
}

LORVA_TEST_MAIN(TestWellImport)
#include "tst_wellimport.moc"
