// Tops of many wells from tables.

#include "batchfixture.h"
#include "support/testmain.h"
#include "survey/surveystore.h"

#include <QRegularExpression>

namespace {

const char fieldTable[] = "Well;Formation;MD (m)\nAldra-1;New A;1000\nBRISK 1;New B;1100\nBrisk-1;Deep;9000\n"
                          "Brisk-1;Gap;\nElsewhere;Top;5\n";

} // namespace

class TestBatchTops : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }
    void init()
    {
        m_survey = m_demo.copy();
        m_file = m_demo.newPath() + ".csv";
    }

    void oneTableServesManyWells()
    {
        files::write(m_file, fieldTable);
        const auto before = markersOf("Brisk-1");
        const BatchRun run = runBatch({"tops", m_file, "--json"}, m_survey);
        VERIFY_EXIT(1, run); // for the well that the survey has not; the others were written
        QCOMPARE(run.list("tops").size(), 2);
        QCOMPARE(text(run.record("tops", 0)), QString("Aldra-1>Aldra-1 +1 ~0 =0 -0 written"));
        QCOMPARE(text(run.record("tops", 1)), QString("BRISK 1>Brisk-1 +1 ~0 =0 -2 written"));
        QCOMPARE(run.list("failures").size(), 1);
        QVERIFY2(run.errors.contains("Elsewhere: the survey has no such well; --wells names those that are wanted."),
                 qPrintable(run.errors));
        for (const char *notice : {"line 5, no depth: Brisk-1;Gap;", "BRISK 1: Below the total depth: Deep.",
                                   "BRISK 1: Also called Brisk-1."})
            QVERIFY2(run.errors.contains(notice), qPrintable(run.errors));
        QCOMPARE(markersOf("Brisk-1").size(), before.size() + 1);
        QVERIFY(markersOf("Brisk-1").contains("New B@1100"));
        QVERIFY(markersOf("Aldra-1").contains("New A@1000"));
    }

    void onlyTheWantedWells()
    {
        files::write(m_file, fieldTable);
        const QStringList aldra = markersOf("Aldra-1");
        const BatchRun run = runBatch({"tops", m_file, "--wells", "Brisk-1,Brisk-2", "--json"}, m_survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.list("tops").size(), 1);
        QCOMPARE(run.record("tops").value("well").toString(), QString("Brisk-1"));
        QVERIFY2(run.errors.contains("Brisk-2: the files hold no top of it."), qPrintable(run.errors));
        QVERIFY(!run.errors.contains("Aldra-1"));
        QCOMPARE(markersOf("Aldra-1"), aldra);
        const BatchRun none = runBatch({"tops", m_file, "--wells", "brisk-1"}, m_survey);
        VERIFY_EXIT(1, none);
        QVERIFY2(none.errors.contains("The survey has no well \"brisk-1\""), qPrintable(none.errors));
    }

    void movingNeedsForce()
    {
        const QStringList before = markersOf("Aldra-1");
        const QString first = before.first().section('@', 0, 0);
        files::write(m_file, "Well,Name,MD\nAldra-1," + first.toUtf8() + ",900\nAldra-1,New,950\nAldra-2,New,950\n");
        const auto all = files::snapshot(m_survey);
        for (const QString &option : {QString(), QString("--dry-run")}) {
            const QStringList words = QStringList{"tops", m_file, "--json", "--wells", "Aldra-1", option};
            const BatchRun refused = runBatch(words.filter(QRegularExpression(".")), m_survey);
            VERIFY_EXIT(1, refused);
            QVERIFY2(refused.errors.contains("Aldra-1: 1 marker would move; --force moves them."),
                     qPrintable(refused.errors));
            QVERIFY(refused.list("tops").isEmpty());
            QCOMPARE(files::snapshot(m_survey), all);
        }
        const BatchRun dry = runBatch({"tops", m_file, "--force", "--dry-run", "--json"}, m_survey);
        VERIFY_EXIT(0, dry);
        QVERIFY(text(dry.record("tops", 0)).startsWith("Aldra-1>Aldra-1 +1 ~1 =0 -0"));
        QVERIFY(!dry.record("tops").value("isWritten").toBool(true));
        QCOMPARE(files::snapshot(m_survey), all);
        const BatchRun run = runBatch({"tops", m_file, "--force", "--json"}, m_survey);
        VERIFY_EXIT(0, run);
        const double way = std::abs(before.first().section('@', 1).toDouble() - 900);
        QVERIFY(std::abs(run.record("tops").value("furthest").toDouble() - way) < 0.01);
        QVERIFY(markersOf("Aldra-1").contains(first + "@900"));
        QVERIFY(markersOf("Aldra-2").contains("New@950"));
        const BatchRun again = runBatch({"tops", m_file, "--json"}, m_survey);
        VERIFY_EXIT(0, again); // nothing moves any more
        QCOMPARE(text(again.record("tops", 0)), QString("Aldra-1>Aldra-1 +0 ~0 =2 -0 written"));
    }

    void filesOfOneWell()
    {
        const QString named = m_demo.newPath() + "/aldra 1 picks.txt";
        files::write(named, "New\t1000\n");
        files::write(m_file, "Other\t1000\n");
        const BatchRun run = runBatch({"tops", named, m_file}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY(markersOf("Aldra-1").contains("New@1000"));
        QVERIFY2(run.errors.contains("the file does not say of which well it is; --well names it."),
                 qPrintable(run.errors));
        VERIFY_EXIT(0, runBatch({"tops", m_file, "--well", "Brisk-2"}, m_survey));
        QVERIFY(markersOf("Brisk-2").contains("Other@1000"));
        const BatchRun both = runBatch({"tops", m_file, named, "--well", "Brisk-2"}, m_survey);
        VERIFY_EXIT(1, both);
        QVERIFY2(both.errors.contains("go into the same well, \"Brisk-2\""), qPrintable(both.errors));
        const BatchRun none = runBatch({"tops", m_file, "--well", "Nothing"}, m_survey);
        VERIFY_EXIT(1, none);
        QVERIFY(none.errors.contains("The survey has no well \"Nothing\""));
    }

    void theUnitWhereTheFileDoesNotTellIt()
    {
        files::write(m_file, "Well,Name,MD\nAldra-1,New,1000\n");
        VERIFY_EXIT(0, runBatch({"tops", m_file, "--unit", "ft"}, m_survey));
        QVERIFY(markersOf("Aldra-1").contains("New@304.8"));
        VERIFY_EXIT(0, runBatch({"tops", m_file, "--unit", "m", "--force"}, m_survey));
        QVERIFY(markersOf("Aldra-1").contains("New@1000"));
        VERIFY_EXIT(2, runBatch({"tops", m_file, "--unit", "km"}, m_survey));
    }

    void filesThatAreNoTablesAreNamed()
    {
        files::write(m_file, "SitID\tHorID\tPick\n1\t1000\t335.5\n2\t1000\t340\n");
        const auto before = files::snapshot(m_survey);
        const BatchRun run = runBatch({"tops", m_file, "/none.csv", "/"}, m_survey);
        VERIFY_EXIT(1, run);
        for (const char *text :
             {".csv: no column holds names of tops. Its columns are SitID, HorID, Pick.",
              "/none.csv: it cannot be read (No such file or directory).", "/: it cannot be read ("})
            QVERIFY2(run.errors.contains(text), qPrintable(run.errors));
        QCOMPARE(files::snapshot(m_survey), before);
        VERIFY_EXIT(2, runBatch({"tops"}, m_survey));
    }

    void ofManyLinesThatAreNoTopsTheFirstAreTold()
    {
        QByteArray table = "Well,Name,MD\nAldra-1,New,1000\n";
        for (int i = 0; i < 25; ++i)
            table += "Aldra-1,,1\n";
        files::write(m_file, table);
        const BatchRun run = runBatch({"tops", m_file}, m_survey);
        VERIFY_EXIT(0, run);
        QCOMPARE(run.errors.count("no name: Aldra-1,,1"), 20);
        QVERIFY2(run.errors.contains("5 lines more are no tops."), qPrintable(run.errors));
    }

    void damagedMarkersStayAsTheyAre()
    {
        files::write(m_file, "Well,Name,MD\nAldra-1,New,1000\nAldra-2,New,1000\n");
        files::write(m_survey + "/WellInfo/Aldra-1.wlm", "no markers");
        const BatchRun run = runBatch({"tops", m_file, "--force", "--json"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("Aldra-1: Cannot read the file"), qPrintable(run.errors));
        QCOMPARE(files::read(m_survey + "/WellInfo/Aldra-1.wlm"), QByteArray("no markers"));
        QCOMPARE(run.list("tops").size(), 1);
        QVERIFY(markersOf("Aldra-2").contains("New@1000"));
    }

private:
    QStringList markersOf(const QString &well) const
    {
        survey::SurveyStore store(m_survey);
        QStringList texts;
        for (const host::WellEntry &entry : store.list().value)
            if (entry.name == well)
                for (const host::Marker &marker : store.markers(entry.key).value)
                    texts.append(QString("%1@%2").arg(marker.name).arg(static_cast<double>(marker.depth)));
        return texts;
    }
    static QString text(const QJsonObject &record)
    {
        return QString("%1>%2 +%3 ~%4 =%5 -%6%7")
            .arg(record.value("name").toString(), record.value("well").toString())
            .arg(record.value("added").toInt(-1))
            .arg(record.value("moved").toInt(-1))
            .arg(record.value("unchanged").toInt(-1))
            .arg(record.value("leftOut").toInt(-1))
            .arg(record.value("isWritten").toBool() ? " written" : "");
    }

    BatchFixture m_demo;
    QString m_survey;
    QString m_file;
};

LORVA_TEST_MAIN(TestBatchTops)
#include "tst_batchtops.moc"
