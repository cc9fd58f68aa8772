#include "datastore/curvegrouptable.h"
#include "las/cubicspline.h"
#include "las/feet.h"
#include "support/testmain.h"
#include "tests/las/importfixture.h"

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

QByteArray inUnit(QByteArray bytes, const QByteArray &unit)
{
    return bytes.replace("STRT.M", "STRT." + unit);
}

} // namespace

/// Depths and nulls on their way into a well: files in feet, the interval, what the spline leaves of a null value.
class TestImportDepths : public QObject
{
    Q_OBJECT

private slots:
    void init() { CurveGroupTable::instance().clear(); }
    void unitsThatCountAsFeet_data();
    void unitsThatCountAsFeet();
    void boxIsEnabledWhereAFileIsInFeet();
    void boxOffImportsAsRead();
    void feetBecomeMetres_data();
    void feetBecomeMetres();
    void filesInMetresStay();
    void convertedDepthsAreComparedWithTheWells();
    void intervalIsInMetres();
    void gridIsCheckedInMetres();
    void stepAndInterval_data();
    void stepAndInterval();
    void typedCommaIsAPoint();
    void nullsAfterResampling_data();
    void nullsAfterResampling();
};

void TestImportDepths::unitsThatCountAsFeet_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<double>("metres");
    for (const char *unit : {"F", "FT", "FEET", "ft", "Feet"})
        QTest::newRow(unit) << text(unit) << 0.3048;
    for (const char *unit : {".1IN", "1IN", ".1in"})
        QTest::newRow(unit) << text(unit) << 0.00254;
    for (const char *unit : {"M", "", "S", "IN", "FTS", "F T"})
        QTest::newRow(unit) << text(unit) << 0.0;
}

void TestImportDepths::unitsThatCountAsFeet()
{
    QFETCH(QString, unit);
    QTEST(las::metresPerFeetUnit(unit).value_or(0), "metres");
}

void TestImportDepths::boxIsEnabledWhereAFileIsInFeet()
{
    ImportFixture f;
    auto *box = f.find<QCheckBox>("feetBox");
    QCOMPARE(box->text(), text("Convert feet to metres"));
    QVERIFY(!box->isChecked() && !box->isEnabled());
    QCOMPARE(box->parentWidget(), f.find<QCheckBox>("intervalBox")->parentWidget());
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n"));
    QVERIFY(!box->isEnabled());
    f.chooseBytes(inUnit(ImportFixture::las("W-2", "100 1\n"), "FT"));
    QVERIFY(box->isEnabled() && !box->isChecked());
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(6, box->height() / 2));
    QVERIFY(box->isChecked());
    f.startImport();
    QVERIFY(box->isEnabled());
    emit f.tabs()->tabCloseRequested(1);
    QVERIFY(!box->isEnabled() && !box->isChecked());
}

void TestImportDepths::boxOffImportsAsRead()
{
    ImportFixture f;
    f.chooseBytes(inUnit(ImportFixture::las("W-2", "100 1\n101 2\n"), "F"));
    f.startImport();
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->depths, (QVector<float>{100, 101}));
}

void TestImportDepths::feetBecomeMetres_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<double>("metres");
    QTest::newRow("feet") << QByteArray("FEET") << 0.3048;
    QTest::newRow("tenths of an inch") << QByteArray(".1IN") << 0.00254;
}

void TestImportDepths::feetBecomeMetres()
{
    QFETCH(QByteArray, unit);
    QFETCH(double, metres);
    ImportFixture f;
    f.chooseBytes(inUnit(ImportFixture::las("W-2", "101 1\n100.5 2\n100 3\n"), unit));
    f.find<QCheckBox>("feetBox")->setChecked(true);
    f.startImport();
    const host::LogData *log = f.hostLog(text("W-2"), text("GR"));
    QCOMPARE(log->depths,
             (QVector<float>{static_cast<float>(100 * metres), static_cast<float>(100.5 * metres),
                             static_cast<float>(101 * metres)}));
    QCOMPARE(log->values, (QVector<float>{3, 2, 1}));
    QCOMPARE(f.tab()->file().curves.at(1).depths, (QVector<double>{101, 100.5, 100})); // the file's own stay
}

void TestImportDepths::filesInMetresStay()
{
    ImportFixture f;
    f.choose({f.write(text("a.las"), inUnit(ImportFixture::las("W-2", "100 1\n", {"FEET.x"}), "FT")),
              f.write(text("b.las"), ImportFixture::las("W-2", "100 1\n", {"METRES.x"}))});
    f.find<QCheckBox>("feetBox")->setChecked(true);
    f.setChecked(0, false, 1);
    f.startImport();
    QCOMPARE(f.hostLog(text("W-2"), text("FEET"))->depths, QVector<float>{30.48f});
    QCOMPARE(f.hostLog(text("W-2"), text("METRES"))->depths, QVector<float>{100});
}

void TestImportDepths::convertedDepthsAreComparedWithTheWells()
{
    ImportFixture f; // the wells are 1000 m deep: 3280.8 feet
    QByteArray bytes = inUnit(ImportFixture::las("W-2", "3000 1\n3280 2\n"), "FT");
    bytes.replace("100 :", "3000 :").replace("200 :", "3280 :");
    f.chooseBytes(bytes);
    f.startImport();
    QVERIFY(f.boxTexts().last().startsWith(text("W-2's maximum depth is less than LAS files start depth.")));
    f.find<QCheckBox>("feetBox")->setChecked(true);
    f.startImport();
    QCOMPARE(f.boxTexts().last(), importedText);
    f.chooseBytes(bytes.replace("3280 :", "3281 :"));
    emit f.tabs()->tabCloseRequested(0);
    f.find<QCheckBox>("feetBox")->setChecked(true);
    f.startImport();
    QVERIFY(f.boxTexts().last().startsWith(text("W-2's maximum depth is less than LAS files end depth.")));
}

// Half a foot is the default interval in metres.
void TestImportDepths::intervalIsInMetres()
{
    ImportFixture f;
    f.chooseBytes(inUnit(ImportFixture::las("W-2", "100 1\n100.5 2\n101 3\n"), "FT"));
    f.setInterval(text("0.1524"));
    f.find<QCheckBox>("feetBox")->setChecked(true);
    f.startImport();
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->values, (QVector<float>{1, 2, 3}));
    f.asker.answers = {base::BoxButton::Yes, base::BoxButton::Yes};
    f.setInterval(text("0.05"));
    for (int row : {0, 1})
        f.setChecked(row, true);
    f.startImport();
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->values.size(), 7); // 0.3048 m
}

void TestImportDepths::gridIsCheckedInMetres()
{
    ImportFixture f;
    f.chooseBytes(inUnit(ImportFixture::las("W-2", "0 1\n60000 2\n"), "FT"));
    f.setInterval(text("0.001")); // 60 million steps in feet, 18 million in metres
    const las::ImportOptions options{true, 0.001f};
    QVERIFY(!las::refusal({f.tab()->plan(false)}, options).isEmpty());
    QCOMPARE(las::refusal({f.tab()->plan(true)}, options), QString());
}

void TestImportDepths::stepAndInterval_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QString>("interval");
    QTest::addColumn<int>("samples");
    const QByteArray rising("100 1\n100.5 2\n101 3\n");
    const QByteArray falling("101 3\n100.5 2\n100 1\n");
    const QByteArray uneven("101 4\n100.5 3\n100.25 2\n100 1\n"); // the file's step is 0.5, the ascending one 0.25
    for (const auto &[name, rows] : {std::make_pair("rising", rising), std::make_pair("falling", falling)}) {
        QTest::addRow("%s, its own step", name) << rows << text("0.5") << 3;
        QTest::addRow("%s, finer", name) << rows << text("0.25") << 5;
        QTest::addRow("%s, coarser", name) << rows << text("1") << 2;
        QTest::addRow("%s, a little coarser", name) << rows << text("0.50009") << 3;
        QTest::addRow("%s, a little too coarse", name) << rows << text("0.5002") << 2;
        QTest::addRow("%s, a little finer", name) << rows << text("0.49991") << 3;
        QTest::addRow("%s, a little too fine", name) << rows << text("0.4998") << 3;
    }
    QTest::newRow("falling, uneven: as the file begins") << uneven << text("0.5") << 4;
    QTest::newRow("falling, uneven: as it ends") << uneven << text("0.25") << 5;
}

void TestImportDepths::stepAndInterval()
{
    QFETCH(QByteArray, rows);
    QFETCH(QString, interval);
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", rows));
    f.setInterval(interval);
    f.startImport();
    const host::LogData *log = f.hostLog(text("W-2"), text("GR"));
    QTEST(log->depths.size(), "samples");
    const bool isResampled = interval != text("0.5") && interval != text("0.50009") && interval != text("0.49991");
    if (isResampled)
        QCOMPARE(log->depths.at(1), static_cast<float>(100 + static_cast<double>(interval.toFloat())));
    QCOMPARE(log->values.first(), 1.0f);
}

void TestImportDepths::typedCommaIsAPoint()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n101 2\n"));
    f.setInterval(text(""));
    QTest::keyClicks(f.find<QLineEdit>("intervalEdit"), text("0,5"));
    QCOMPARE(f.find<QLineEdit>("intervalEdit")->text(), text("0.5"));
    f.startImport();
    QCOMPARE(f.hostLog(text("W-2"), text("GR"))->depths, (QVector<float>{100, 100.5, 101}));
}

void TestImportDepths::nullsAfterResampling_data()
{
    QTest::addColumn<QByteArray>("null");
    for (const char *null : {"-999.25", "-9999", "-999.9", "-32767.1", "1e30"})
        QTest::newRow(null) << QByteArray(null);
}

// In the middle of nulls the spline gives the null value but for the last bits of a double.
void TestImportDepths::nullsAfterResampling()
{
    QFETCH(QByteArray, null);
    QByteArray rows;
    for (int i = 0; i < 400; ++i) {
        const bool isNull = i >= 100 && i < 300;
        rows += QByteArray::number(1000 + i * 0.1523, 'f', 4) + ' '
            + (isNull ? null : QByteArray::number(50 + (i * 37) % 90)) + '\n';
    }
    ImportFixture f;
    f.host.storedWells[1].header.totalDepth = 2000;
    f.chooseBytes(ImportFixture::las("W-2", rows, {"GR.gapi"}, null));
    f.setInterval(text("0.05"));
    f.startImport();
    const host::LogData *log = f.hostLog(text("W-2"), text("GR"));
    QVERIFY(log);
    int undefined = 0;
    for (int i = 0; i < log->depths.size(); ++i) {
        if (log->depths.at(i) < 1000 + 130 * 0.1523f || log->depths.at(i) > 1000 + 270 * 0.1523f)
            continue;
        QVERIFY2(host::isUndefined(log->values.at(i)), qPrintable(QString::number(log->values.at(i), 'g', 10)));
        ++undefined;
    }
    QVERIFY(undefined > 300);
    QVERIFY(!host::isUndefined(log->values.at(10)));
}

LORVA_TEST_MAIN(TestImportDepths)
#include "tst_importdepths.moc"
