#include "base/filestate.h"
#include "support/countedcalls.h"
#include "support/files.h"
#include "survey/surveyfolder.h"
#include "topsfixture.h"

using namespace survey;

namespace {

/// A survey with some wells of a marker each.
QString surveyWith(const QTemporaryDir &folder, int wellCount)
{
    const QString path = folder.filePath(QStringLiteral("survey %1").arg(wellCount));
    if (!createSurvey(path, {}).ok())
        return {};
    SurveyStore store(path);
    for (int i = 0; i < wellCount; ++i) {
        WellProperties well;
        well.name = QStringLiteral("W-%1").arg(i);
        well.totalDepth = 2000;
        const QString key = store.addWell(well).value;
        if (!store.writeMarkers(key, {{QStringLiteral("Top 0"), 10, Qt::red}}).ok())
            return {};
    }
    return path;
}

QByteArray tableOf(int wellCount, int topCount)
{
    QByteArray table = "Well,Name,MD\n";
    for (int top = 0; top < topCount; ++top) // the lines of a well do not follow one another
        for (int well = 0; well < wellCount; ++well)
            table += "w_" + QByteArray::number(well) + ",Top " + QByteArray::number(top) + ','
                + QByteArray::number(100 + top) + '\n';
    return table;
}

struct Calls
{
    double plan = 0; ///< of a well
    double write = 0;
};

Calls callsOf(const QString &survey, int wellCount, int topCount)
{
    SurveyStore store(survey);
    const QVector<host::WellEntry> wells = store.list().value;
    const TopsInput file = input(QStringLiteral("t.csv"), tableOf(wellCount, topCount));
    long before = counted_calls::total();
    TopsPlan plan(wells, store.depthUnit(), topsSource(store));
    plan.add({file});
    Calls calls;
    calls.plan = static_cast<double>(counted_calls::total() - before) / wellCount;
    before = counted_calls::total();
    for (const int row : plan.rowsToWrite())
        if (!writeTops(store, &plan, row).ok())
            return {};
    calls.write = static_cast<double>(counted_calls::total() - before) / wellCount;
    return calls;
}

} // namespace

/// A plan of tops on the files of a survey: what it reads and writes of them.
class TestTopsOfSurvey : public QObject
{
    Q_OBJECT

private slots:
    void filesOfTheSurveyAreReadOnce();
    void writingLeavesOtherWellsAlone();
};

// What a well costs does not depend on how many there are, nor on its tops.
void TestTopsOfSurvey::filesOfTheSurveyAreReadOnce()
{
    const QTemporaryDir folder;
    const QString few = surveyWith(folder, 10);
    const QString many = surveyWith(folder, 100);
    QVERIFY(!few.isEmpty() && !many.isEmpty());
    QTRY_VERIFY(base::fileState(many + "/WellInfo/.omf").isSettled); // until then it is read anew each time
    const Calls small = callsOf(few, 10, 5);
    const Calls large = callsOf(many, 100, 50);
    qInfo("calls of the system for a well: %.2f to plan it, %.2f to write it", large.plan, large.write);
    QVERIFY(large.plan > 0 && large.write > 0);
    QVERIFY2(large.plan <= small.plan + 0.5, "planning");
    QVERIFY2(large.write <= small.write + 0.5, "writing");
    SurveyStore store(many);
    const QString key = store.list().value.at(57).key;
    QCOMPARE(store.markers(key).value.size(), 50);
    const auto cost = [](const auto &work) {
        const long before = counted_calls::total();
        work();
        return static_cast<double>(counted_calls::total() - before);
    };
    WellHead head;
    const double headCost = cost([&] { head = store.head(key).value; });
    const double markersCost = cost([&] { QCOMPARE(store.markers(key, head).value.size(), 50); });
    const double bothAgain = cost([&] { QCOMPARE(store.markers(key).value.size(), 50); });
    QVERIFY2(markersCost < bothAgain, "the well's head is read with its markers");
    QVERIFY2(large.plan <= headCost + markersCost + 0.5, "a well is read more than once");
    QVERIFY2(large.write < 24, "each of the well's files once, the lock, and the new file with its flushes");
}

void TestTopsOfSurvey::writingLeavesOtherWellsAlone()
{
    const QTemporaryDir folder;
    const QString survey = surveyWith(folder, 3);
    SurveyStore store(survey);
    TopsPlan plan(store.list().value, store.depthUnit(), topsSource(store));
    plan.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nW-0,New,50\nW-1,New,60\nW-2,Top 0,10\n")});
    QCOMPARE(plan.rowsToWrite(), (QVector<int>{0, 1}));
    const auto before = files::snapshot(survey);
    QVERIFY(writeTops(store, &plan, 1).ok());
    const auto after = files::snapshot(survey);
    QCOMPARE(after.size(), before.size());
    for (auto file = before.begin(); file != before.end(); ++file)
        QCOMPARE(after.value(file.key()) == file.value(), !file.key().endsWith(QLatin1String("W-1.wlm")));
    QVERIFY(plan.rows().at(1).isWritten);
    QCOMPARE(plan.rowsToWrite(), QVector<int>{0});

    // Another program moves the marker that is to be moved: nothing is written, and the reason is kept.
    TopsPlan late(store.list().value, store.depthUnit(), topsSource(store));
    late.add({input(QStringLiteral("t.csv"), "Well,Name,MD\nW-0,Top 0,70\n")});
    SurveyStore other(survey);
    QVERIFY(other.writeMarkers(other.list().value.first().key, {{QStringLiteral("Top 0"), 80, Qt::red}}).ok());
    QVERIFY(!writeTops(store, &late, 0).ok());
    QVERIFY(late.rows().first().error.contains(QLatin1String("Another program")));
    QVERIFY(!late.rows().first().isWritten);
    QCOMPARE(SurveyStore(survey).markers(store.list().value.first().key).value.first().depth, 80.0f);
}

QTEST_GUILESS_MAIN(TestTopsOfSurvey)
#include "tst_topsofsurvey.moc"
