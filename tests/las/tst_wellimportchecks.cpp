#include "datastore/curvegrouptable.h"
#include "support/testmain.h"
#include "tests/las/importfixture.h"

#include <QSignalSpy>
#include <QTabWidget>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString importTitle = QStringLiteral("Las Import");
const QString dialogTitle = QStringLiteral("Well Log(s) Import (LAS Import)");

} // namespace

/// What an import asks of the well, the names and the interval before it writes.
class TestWellImportChecks : public QObject
{
    Q_OBJECT

private slots:
    void init() { CurveGroupTable::instance().clear(); }
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
    void allNamelessRowsAreNamed();
    void namesWithPercentSigns();
};

void TestWellImportChecks::wellNotSelected()
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
    QCOMPARE(f.dialog->findChild<QTabWidget *>()->currentIndex(), 1); // where a well is to be chosen
}

void TestWellImportChecks::depthsBeyondTheWell_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("stop");
    QTest::addColumn<QString>("word");
    QTest::newRow("start") << 1000.5 << 1001.0 << text("start");
    QTest::newRow("stop") << 1000.0 << 1000.5 << text("end");
    QTest::newRow("start of a falling file") << 1000.5 << 900.0 << text("start");
    QTest::newRow("exactly") << 1000.0 << 1000.0 << QString();
}

void TestWellImportChecks::depthsBeyondTheWell()
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

void TestWellImportChecks::maximumDepthFollowsTheWell()
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
void TestWellImportChecks::aFileMayEndAtTheTotalDepth()
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

void TestWellImportChecks::nothingSelected()
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

void TestWellImportChecks::withoutFiles()
{
    ImportFixture f;
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "importSelectedClicked"));
    QCOMPARE(f.boxTexts(), QStringList{text("To import required well log(s), Please first select them.")});
    QVERIFY(!f.button("importButton")->isEnabled());
}

void TestWellImportChecks::emptyNamesAreRefused()
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

void TestWellImportChecks::badIntervals_data()
{
    QTest::addColumn<QString>("interval");
    for (const char *interval : {"0", "-0.5", "0.00001", "1e-30", "", "-", "1e60"})
        QTest::newRow(interval) << text(interval);
}

void TestWellImportChecks::badIntervals()
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

void TestWellImportChecks::badIntervalDoesNotMatterWhereNothingIsResampled()
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

void TestWellImportChecks::hugeGridIsRefused()
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

void TestWellImportChecks::headerPromisingTerabytes()
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

void TestWellImportChecks::allNamelessRowsAreNamed()
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
void TestWellImportChecks::namesWithPercentSigns()
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

LORVA_TEST_MAIN(TestWellImportChecks)
#include "tst_wellimportchecks.moc"
