// What the table of wells is made of, without its window.

#include "support/memoryhost.h"
#include "support/testmain.h"
#include "survey/wellsummary.h"
#include "workbench/wellsmodel.h"
#include "workbenchwindowfixture.h"

#include <QSignalSpy>
#include <QTableView>

#include <cmath>
#include <limits>

using namespace survey;
using namespace workbench;

namespace {

/// Counts what is read of wells.
class CountingHost : public MemoryHost
{
public:
    int lists = 0;
    int headers = 0;
    int logLists = 0;
    int logReads = 0;
    int markerReads = 0;

    host::Outcome<QVector<host::WellEntry>> list() override
    {
        ++lists;
        return MemoryHost::list();
    }
    host::Outcome<host::WellHeader> header(const QString &key) override
    {
        ++headers;
        return MemoryHost::header(key);
    }
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override
    {
        ++logLists;
        return MemoryHost::logs(key);
    }
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        ++logReads;
        return MemoryHost::log(key, index);
    }
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override
    {
        ++markerReads;
        return MemoryHost::markers(key);
    }
};

} // namespace

class TestWellsModel : public QObject
{
    Q_OBJECT

private slots:
    void summariesAreReadInOnePass();
    void modelOfManyWells();
    void modelOfOddNumbers();
};

void TestWellsModel::summariesAreReadInOnePass()
{
    CountingHost wells;
    for (int i = 0; i < 2000; ++i) {
        host::WellHeader header;
        header.name = QStringLiteral("Well %1").arg(i, 4, 10, QLatin1Char('0'));
        header.x = 1000 + i;
        header.kbElevation = i == 0 ? host::undefinedValue : 25;
        const QString key = wells.addWell(header);
        host::LogData log;
        log.name = QStringLiteral("GR");
        wells.find(key)->logs.append(log);
    }
    wells.storedWells[5].isUnreadable = true;
    int told = 0;
    const host::Outcome<QVector<WellSummary>> summaries =
        readWellSummaries(wells, DepthUnit::Metre, [&told](int done, int all) {
            QCOMPARE(done, told++);
            QCOMPARE(all, 2000);
        });
    QCOMPARE(told, 2000);
    QCOMPARE(summaries.value.size(), 2000);
    QCOMPARE(wells.lists, 1);
    QCOMPARE(wells.headers, 2000);
    QCOMPARE(wells.logLists, 2000);
    QCOMPARE(wells.markerReads, 2000);
    QCOMPARE(wells.logReads, 0);
    QVERIFY(std::isnan(summaries.value.at(0).kbElevation));
    QCOMPARE(summaries.value.at(1).logCount, 1);
    QVERIFY(!summaries.value.at(5).error.isEmpty());
    QCOMPARE(summaries.value.at(5).logCount, WellSummary::unknownCount);
    wells.listFails = true;
    QVERIFY(!readWellSummaries(wells).ok());

    // Showing, sorting and selecting read nothing more.
    const int reads = wells.headers + wells.logLists + wells.markerReads;
    WellsModel model;
    model.setWells(summaries.value);
    QCOMPARE(model.rowCount(model.index(0, 0)), 0); // no well has wells below it
    QCOMPARE(model.columnCount(model.index(0, 0)), 0);
    QTableView view;
    view.setModel(&model);
    view.show();
    view.scrollToBottom();
    QCOMPARE(wells.headers + wells.logLists + wells.markerReads, reads);
}

void TestWellsModel::modelOfManyWells()
{
    QVector<WellSummary> wells(2000);
    for (int i = 0; i < wells.size(); ++i) {
        wells[i].key = QString::number(i);
        wells[i].name = QStringLiteral("Well %1").arg(i);
        wells[i].x = (i * 7919) % 2000;
    }
    WellsModel model;
    QSignalSpy reset(&model, &WellsModel::modelReset);
    QSignalSpy inserted(&model, &WellsModel::rowsInserted);
    model.setWells(wells);
    QCOMPARE(reset.size(), 1); // one step, not one per well
    QCOMPARE(inserted.size(), 0);
    QCOMPARE(model.rowCount(), 2000);
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.rowOf(QStringLiteral("1999")), 1999);
    QCOMPARE(model.rowOf(QStringLiteral("2000")), -1);
}

void TestWellsModel::modelOfOddNumbers()
{
    WellSummary well;
    well.name = QStringLiteral("<b>A</b>");
    well.x = -0.001;
    well.y = 1e300;
    well.kbElevation = std::numeric_limits<double>::infinity();
    well.totalDepth = 1234.567;
    well.logCount = 1000;
    well.error = QStringLiteral("<i>");
    WellsModel model;
    model.setWells({well});
    QCOMPARE(rowTexts(&model, 0).join(QLatin1Char('|')), QStringLiteral("<b>A</b>|0.00|1e+300|?|1234.57|1000|?"));
    QVERIFY(!model.index(0, WellsModel::MarkersColumn).data(WellsModel::sortRole).isValid());
    QCOMPARE(model.index(0, WellsModel::LogsColumn).data(WellsModel::sortRole).toDouble(), 1000.0);
}

LORVA_TEST_MAIN(TestWellsModel)
#include "tst_wellsmodel.moc"
