// What surveys of many wells and wells of many logs cost, counted in files that are opened.

#include "datastore/wellscatalogue.h"
#include "host/opendtect/odwells.h"
#include "manywells.h"
#include "odprogram.h"
#include "odsurvey.h"
#include "support/files.h"
#include "support/scriptedasker.h"

#include <QTest>

#include <ioman.h>
#include <welldata.h>
#include <wellman.h>

class TestOpendTectManyWells : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_wells.reset(); }

    // 1,000 wells: each call would read the list of all of them anew, for itself and in the host's library.
    void theListOfWellsIsReadOnce()
    {
        openSurvey({1000, 1, 2});
        const QVector<host::WellEntry> list = m_wells->list().value;
        QCOMPARE(list.size(), 1000);
        odsurvey::OpenedFiles opened(m_survey + "/WellInfo");
        for (const host::WellEntry &well : list) {
            QVERIFY(m_wells->header(well.key).ok());
            QCOMPARE(m_wells->logs(well.key).value.size(), 1);
            QVERIFY(m_wells->log(well.key, 0).ok());
            QCOMPARE(m_wells->markers(well.key).value.size(), 10);
        }
        QVERIFY(opened.take(".omf") <= 2);
    }

    void aChangedListIsReadAgain()
    {
        openSurvey({2, 1, 2});
        QCOMPARE(m_wells->list().value.size(), 2);
        odsurvey::Well another;
        another.header.name = "Another";
        another.track = {{1, 1, 0, 0}, {1, 1, 100, 100}};
        const QString key = odsurvey::add(another);
        QCOMPARE(m_wells->list().value.size(), 3);
        QCOMPARE(m_wells->header(key).value.name, QString("Another"));
        odsurvey::remove(key);
        QCOMPARE(m_wells->list().value.size(), 2);
        QVERIFY(!m_wells->header(key).ok());
    }

    // Header and track are two looks at one file in a row, which count as one.
    void buildingTheCatalogueOpensEachFileOnce()
    {
        openSurvey({50, 20, 2});
        odsurvey::OpenedFiles opened(m_survey + "/WellInfo");
        ScriptedAsker asker;
        WellsCatalogue catalogue(*m_wells, asker, [](const QString &text) { QFAIL(qPrintable(text)); });
        catalogue.build();
        QCOMPARE(catalogue.wellCount(), 50);
        QCOMPARE(catalogue.logNames(49).size(), 20);
        QCOMPARE(opened.take(""), 50 * (20 + 1 + 1) + 1 /* the list */);
    }

    // Files in the host's own form are not read by its library, which would open them again.
    void theHostsLibraryIsAskedOnlyForOtherForms()
    {
        openSurvey({2, 1, 2});
        const QString stem = m_survey + "/WellInfo/Well_";
        QVERIFY(QFile::remove(stem + "0.wlm"));
        files::write(stem + "1.wlm", files::read(stem + "1.wlm") + "!\n");
        odsurvey::OpenedFiles opened(m_survey + "/WellInfo");
        for (const host::WellEntry &well : m_wells->list().value) {
            QVERIFY(m_wells->header(well.key).ok());
            QCOMPARE(m_wells->logs(well.key).value.size(), 1);
            QCOMPARE(m_wells->markers(well.key).value.size(), well.name == "Well_0" ? 0 : 10);
            const int count = opened.take(".well");
            QVERIFY(well.name == "Well_0" ? count == 1 : count > 1);
        }
    }

    void theLogsOfAWellCostTheirFiles()
    {
        openSurvey({2, 20, 2});
        const QString key = m_wells->list().value.first().key;
        QCOMPARE(m_wells->logs(key).value.size(), 20);
        odsurvey::OpenedFiles opened(m_survey + "/WellInfo");
        for (int i = 0; i < 20; ++i)
            QCOMPARE(m_wells->log(key, i).value.name, QStringLiteral("LOG%1").arg(i));
        QCOMPARE(opened.take(".wll"), 20);
    }

    void manyLogsAreWrittenWithoutReadingThoseBefore()
    {
        openSurvey({1, 20, 2});
        const QString key = m_wells->list().value.first().key;
        odsurvey::OpenedFiles opened(m_survey + "/WellInfo");
        for (int i = 0; i < 100; ++i)
            QVERIFY(m_wells->writeLog(key, {QStringLiteral("NEW%1").arg(i), "gAPI", {100, 101}, {1, 2}}).ok());
        const int count = opened.take(".wll");
        QVERIFY2(count <= 20 + 100, qPrintable(QString::number(count)));
        QCOMPARE(m_wells->logs(key).value.size(), 120);
        QCOMPARE(m_wells->log(key, 119).value.name, QString("NEW99"));
        m_wells->reload(key);
        QCOMPARE(m_wells->logs(key).value.size(), 120);
        QCOMPARE(m_wells->log(key, 60).value.values, (QVector<float>{1, 2}));
    }

    void logsThatAnotherProgramWritesAreSeen()
    {
        openSurvey({1, 3, 2});
        const QString key = m_wells->list().value.first().key;
        QCOMPARE(m_wells->logs(key).value.size(), 3);
        opendtect::OdWells other([](const QString &) {});
        QVERIFY(other.writeLog(key, {"OTHER", "m", {100, 101}, {1, 2}}).ok());
        QVERIFY(other.writeLog(key, {"LOG1", "m", {100, 101, 102}, {7, 8, 9}}).ok());
        QCOMPARE(m_wells->logs(key).value.size(), 4);
        QCOMPARE(m_wells->logs(key).value.at(1).unit, QString("m"));
        QCOMPARE(m_wells->log(key, 1).value.values, (QVector<float>{7, 8, 9}));
        QVERIFY(m_wells->writeLog(key, {"MINE", "m", {100, 101}, {1, 2}}).ok());
        QCOMPARE(m_wells->logs(key).value.at(3).name, QString("OTHER"));
        QCOMPARE(m_wells->logs(key).value.at(4).name, QString("MINE"));
    }

private:
    void openSurvey(const odsurvey::SurveySize &size)
    {
        static int number = 0;
        m_survey = odsurvey::openManyWells(QStringLiteral("Many_%1").arg(++number), size);
        m_wells = std::make_unique<opendtect::OdWells>([](const QString &) {});
        QTest::qWait(150); // a file that was changed just now is read again
    }

    QString m_survey;
    std::unique_ptr<opendtect::OdWells> m_wells;
};

OD_TEST_MAIN(TestOpendTectManyWells)
#include "tst_opendtectmanywells.moc"
