#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "las/cubicspline.h"
#include "las/importplan.h"
#include "support/testmain.h"
#include "tests/las/importfixture.h"

#include <QSignalSpy>

#include <new>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString importTitle = QStringLiteral("Las Import");

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

/// What an import writes and says.
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
    void unsuitedDepths_data();
    void unsuitedDepths();
    void unreadableDepthOnAShortLine();
    void allUnsuitedCurvesAreNamed();
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
