#include "datastore/curvegrouptable.h"
#include "demo/demofield.h"
#include "las/resampling.h"
#include "support/files.h"
#include "support/testmain.h"
#include "tests/las/importfixture.h"
#include "tests/las/strictlaschecker.h"

#include "las/welllogexport.h"

#include <QDir>
#include <QListWidget>

#include <cmath>
#include <random>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

/// Printed and read back.
double printed(double value, int decimals)
{
    return QString::number(value, 'f', decimals).toDouble();
}

struct Grid
{
    double start, stop, interval;
};

/// The index truncated toward zero; what single precision of depths leaves of a whole number counts as that number.
double nudgedIndex(double depth, double first, double interval)
{
    const double quotient = (depth - first) / interval;
    const double noise = std::max(1e-6, std::min(0.1, depth * 1.1920929e-7 / interval));
    return std::fabs(quotient - std::round(quotient)) <= noise ? std::round(quotient) : std::trunc(quotient);
}

/// What the writer's rule puts into a log's column, worked out once more: depth and value as a reader finds them.
QVector<QPair<double, double>> expectedColumn(const Grid &grid, const LogCurveData &log)
{
    QVector<QPair<double, double>> column;
    for (double depth = grid.start; depth <= grid.stop; depth += grid.interval) {
        const double index = nudgedIndex(depth, log.depths.first(), grid.interval);
        double value = nullSampleValue;
        if (index >= 0 && index < log.values.size())
            value = log.values.at(static_cast<int>(index));
        column.append({printed(depth, 4), printed(value, 2)});
    }
    return column;
}

host::LogData withoutNullEnds(QVector<QPair<double, double>> column)
{
    while (!column.isEmpty() && column.last().second == nullSampleValue)
        column.removeLast();
    while (!column.isEmpty() && column.first().second == nullSampleValue)
        column.removeFirst();
    host::LogData log;
    for (const auto &sample : qAsConst(column)) {
        log.depths.append(static_cast<float>(sample.first));
        log.values.append(sample.second == nullSampleValue ? host::undefinedValue
                                                           : static_cast<float>(sample.second));
    }
    return log;
}

} // namespace

/// Logs that are exported and imported again, compared with what index rule and printed precision yield.
class TestLasRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void init() { CurveGroupTable::instance().clear(); }
    void exportedLogsComeBack_data();
    void exportedLogsComeBack();
    void demoLogsComeBackAtTheirDepths();
    void realFilesAreImported();

private:
    void exportWell(ImportFixture &f, const QString &interval, bool isResampling);
};

void TestLasRoundTrip::exportedLogsComeBack_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<bool>("isResampling");
    for (int seed = 0; seed < 25; ++seed) {
        QTest::addRow("%d, resampled", seed) << seed << true;
        QTest::addRow("%d, as it is", seed) << seed << false;
    }
}

void TestLasRoundTrip::exportWell(ImportFixture &f, const QString &interval, bool isResampling)
{
    WellLogExport dialog(*f.launch);
    dialog.show();
    dialog.findChild<QListWidget *>(text("wellList"))->item(0)->setCheckState(Qt::Checked);
    dialog.findChild<QCheckBox *>(text("allBox"))->setChecked(true);
    dialog.findChild<QCheckBox *>(text("intervalBox"))->setChecked(isResampling);
    dialog.findChild<QLineEdit *>(text("intervalEdit"))->setText(interval);
    dialog.findChild<QLineEdit *>(text("folderEdit"))->setText(f.survey.path());
    QTest::mouseClick(dialog.findChild<QPushButton *>(text("exportButton")), Qt::LeftButton);
}

void TestLasRoundTrip::exportedLogsComeBack()
{
    QFETCH(int, seed);
    QFETCH(bool, isResampling);
    std::mt19937 random(static_cast<unsigned>(seed));
    const auto pick = [&random](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random);
    };
    ImportFixture f;
    f.host.storedWells[0].header.totalDepth = 9000; // of W-1, which is exported
    f.host.storedWells[1].header.totalDepth = 9000; // of W-2, which gets the logs
    auto &logs = f.host.storedWells[0].logs;
    logs.clear();
    const int logCount = 1 + seed % 4;
    for (int i = 0; i < logCount; ++i) {
        host::LogData log;
        log.name = text("LOG%1").arg(i);
        log.unit = text("gapi");
        const double first = pick(0, 4000);
        const double step = pick(0.05, 1);
        const int samples = 2 + static_cast<int>(pick(0, 300));
        for (int s = 0; s < samples; ++s) {
            log.depths.append(static_cast<float>(first + s * step));
            log.values.append(pick(0, 1) < 0.1 ? host::undefinedValue : static_cast<float>(pick(-500, 500)));
        }
        logs.append(log);
    }
    f.launch->catalogue.refreshLogNames(0);
    const double interval = seed % 5 == 0 ? 0.1524 : printed(pick(0.06, 2), 3);
    exportWell(f, QString::number(interval, 'g', 10), isResampling);
    QCOMPARE(f.boxTexts(), QStringList{text("Successfully Exported !")});

    Grid grid{9000, 0, interval};
    QVector<LogCurveData> written;
    for (int i = 0; i < logCount; ++i) {
        LogCurveData log = f.launch->catalogue.curve(0, i);
        grid.start = std::min(grid.start, log.depths.first());
        grid.stop = std::max(grid.stop, log.depths.last());
        if (isResampling && las::differsFromStep(log.depths, interval)) {
            const las::Samples samples = las::resample(log.depths, log.values, interval);
            log.depths = samples.depths;
            log.values = samples.values;
        }
        written.append(log);
    }
    QByteArray bytes = files::read(f.survey.filePath(text("W-1.las")));
    QVERIFY(StrictLas(bytes).rows.size() > 1);

    f.asker.boxes.clear();
    f.chooseBytes(bytes);
    QCOMPARE(f.wellBox()->currentText(), text("W-1")); // UWI is the well's name
    f.wellBox()->setCurrentText(text("W-2"));
    for (int row = 0; row <= logCount; ++row)
        f.setChecked(row, row > 0);
    f.startImport();
    for (int i = 0; i < logCount; ++i) {
        const host::LogData expected = withoutNullEnds(expectedColumn(grid, written.at(i)));
        const host::LogData *read = f.hostLog(text("W-2"), text("LOG%1").arg(i));
        if (expected.values.isEmpty()) {
            QVERIFY(!read);
            continue;
        }
        QVERIFY(read);
        QCOMPARE(read->unit, text("gapi"));
        QCOMPARE(read->depths, expected.depths);
        QCOMPARE(read->values, expected.values);
    }
}

// The steps of these logs count as equal to the default interval, so every sample is written as it is.
void TestLasRoundTrip::demoLogsComeBackAtTheirDepths()
{
    // The depths of the grid are summed up, so its end can pass the deepest sample by the noise of single precision;
    // that sample then has no line.
    const auto rowsFrom = [](float first, const QVector<host::LogData> &logs) {
        double depth = 9000;
        float stop = 0;
        for (const host::LogData &log : logs) {
            depth = std::min(depth, static_cast<double>(log.depths.first()));
            stop = std::max(stop, log.depths.last());
        }
        int rows = 0;
        for (; depth <= static_cast<double>(stop); depth += 0.1524)
            rows += depth > static_cast<double>(first) - 0.0762 ? 1 : 0;
        return rows;
    };
    int samples = 0;
    int expected = 0;
    for (const demo::Well &well : demo::makeField().wells) {
        ImportFixture f;
        for (MemoryHost::Well &stored : f.host.storedWells) {
            stored.logs.clear();
            stored.header.totalDepth = 9000;
        }
        f.launch->catalogue.build();
        f.chooseBytes(demo::lasText(well));
        f.wellBox()->setCurrentText(text("W-1"));
        f.setChecked(0, false);
        f.startImport();
        exportWell(f, text("0.1524"), true);
        QCOMPARE(f.boxTexts(), (QStringList{importedText, text("Successfully Exported !")}));
        emit f.tabs()->tabCloseRequested(0);
        f.chooseBytes(files::read(f.survey.filePath(text("W-1.las"))));
        f.wellBox()->setCurrentText(text("W-2"));
        for (int row = 0; row < f.table()->rowCount(); ++row)
            f.setChecked(row, row > 0); // without the writer's own depth column
        f.startImport();
        const QVector<host::LogData> logs = f.host.storedWells.at(0).logs;
        QVERIFY(logs.size() > 5);
        for (const host::LogData &log : logs) {
            const host::LogData *read = f.hostLog(text("W-2"), log.name);
            QVERIFY2(read, qPrintable(log.name));
            const QByteArray where = (well.name + QLatin1Char(' ') + log.name).toUtf8();
            QCOMPARE(read->depths.size(), qMin(log.depths.size(), rowsFrom(log.depths.first(), logs)));
            samples += read->depths.size();
            expected += log.depths.size();
            for (int i = 0; i < read->depths.size(); ++i) {
                // The grid begins at one single-precision depth, every log at its own.
                QVERIFY2(std::fabs(read->depths.at(i) - log.depths.at(i)) < 0.0006f,
                         where + " at " + QByteArray::number(i));
                // Two decimals are printed.
                const float value = log.values.at(i);
                const float back = read->values.at(i);
                QVERIFY2(host::isUndefined(value) ? host::isUndefined(back) : std::fabs(back - value) < 0.0051f,
                         where + " at " + QByteArray::number(i));
            }
        }
    }
    QVERIFY(samples > 100000);
    QVERIFY(expected - samples < 5);
}

// Every real file goes through the dialog into a well: no crash, no box but those of the import.
void TestLasRoundTrip::realFilesAreImported()
{
    const QString folder = files::sharedFolder(text("las"));
    if (folder.isEmpty())
        QSKIP("the folder with real LAS files is not there");
    ImportFixture f;
    f.host.storedWells[1].header.totalDepth = 1e9;
    const QFileInfoList entries = QDir(folder).entryInfoList({text("*.las"), text("*.LAS")}, QDir::Files);
    QVERIFY(entries.size() > 30);
    int written = 0;
    for (const QFileInfo &entry : entries) {
        f.choose({entry.filePath()});
        QCOMPARE(f.tabs()->tabText(0), QString(entry.fileName()).replace(text("&"), text("&&")));
        f.wellBox()->setCurrentText(text("W-2"));
        f.setInterval(text("0.5"));
        f.asker.boxes.clear();
        f.host.storedWells[1].logs.clear();
        f.launch->catalogue.refreshLogNames(1);
        f.tab()->testAllRows();
        for (int row = 0; row < f.table()->rowCount(); ++row)
            f.setChecked(row, !f.nameItem(row)->text().isEmpty());
        f.startImport();
        QVERIFY(!f.asker.boxes.isEmpty());
        const QString last = f.boxTexts().last();
        QVERIFY2(last == importedText || last.startsWith(text("To import required"))
                     || last.startsWith(text("W-2's maximum depth")) || last.contains(text("50 million")),
                 qPrintable(entry.fileName() + text(": ") + last));
        for (const host::LogData &log : qAsConst(f.host.storedWells[1].logs))
            QCOMPARE(log.depths.size(), log.values.size());
        written += f.host.storedWells[1].logs.size();
        emit f.tabs()->tabCloseRequested(0);
    }
    QVERIFY(written > 200);
    QVERIFY(f.host.errors.isEmpty());
}

LORVA_TEST_MAIN(TestLasRoundTrip)
#include "tst_lasroundtrip.moc"
