// What is damaged of a survey: a failure where it was asked for, else a notice. Both name the file.

#include "batchfixture.h"
#include "datastore/calibrationfile.h"
#include "datastore/defaultlogs.h"
#include "datastore/perforationfile.h"
#include "support/testmain.h"

class TestBatchDamage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_demo.make(); }
    void init()
    {
        m_survey = m_demo.copy();
        m_out = m_demo.newPath();
        QVERIFY(QDir().mkpath(m_out));
    }

    void damageIsToldWhereItIsMet_data()
    {
        QTest::addColumn<QString>("file"); ///< below the survey
        QTest::addColumn<int>("size"); ///< what of it stays, or -1 for junk, -2 for a line too much
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("exitCode");
        const auto rows = [](const QString &file, int size, const QVector<QStringList> &asked,
                             const QVector<QStringList> &others) {
            for (const QStringList &words : asked)
                QTest::newRow(qPrintable(file + ", asked by " + words.join(' '))) << file << size << words << 1;
            for (const QStringList &words : others)
                QTest::newRow(qPrintable(file + ", met by " + words.join(' '))) << file << size << words << 0;
        };
        const QStringList exportTo{"--out", "OUT"};
        const QStringList drawn{"--out", "OUT/a.png", "--scale", "5000"};
        rows("WellInfo/Brisk-2.well", 0,
             {{"export", "Brisk-2", "--out", "OUT"},
              {"render", "Brisk-2:Simple", "--out", "OUT/a.png"},
              {"correlate", "Kestrane reservoir", "--out", "OUT/a.png"},
              {"info", "Brisk-2"},
              {"wells"},
              {"markers", "Brisk-2"},
              {"markers", "Brisk-2", "--import", "ROWS", "--force"},
              {"import", "LAS", "--well", "Brisk-2"},
              {"report", "logs", "--force"},
              {"report", "markers", "--force"}},
             {{"export", "Aldra-1", "--out", "OUT", "--logs", "GR"},
              {"render", "Aldra-1:Simple", "--out", "OUT/a.png"},
              {"import", "LAS", "--well", "Aldra-1"},
              {"import", "LAS", "--new-wells"},
              {"markers", "Aldra-1"},
              {"template", "copy", "Simple", "Mine"},
              {"default-logs", "Aldra-1", "Gamma=GR"}});
        rows("WellInfo/Aldra-1^1.wll", 300, // the samples of GR
             {{"export", "Aldra-1", "--out", "OUT", "--logs", "GR"},
              {"export", "Aldra-1", "--out", "OUT"},
              {"export", "Aldra-1", "--out", "OUT", "--format", "columns"},
              {"render", "Aldra-1:Petrophysics", "--out", "OUT/a.png"},
              {"logs", "Aldra-1"},
              {"info", "Aldra-1"},
              {"report", "logs", "--force"}},
             {{"export", "Aldra-1", "--out", "OUT", "--logs", "SP"},
              {"export", "Brisk-1", "--out", "OUT"},
              {"render", "Aldra-1:Saturation", "--out", "OUT/a.png"},
              {"report", "markers", "--force"},
              {"wells"}});
        rows("WellInfo/Aldra-1.wlm", 100,
             {{"markers", "Aldra-1"},
              {"render", "Aldra-1:Simple", "--out", "OUT/a.png", "--markers", "all"},
              {"report", "markers", "--force"}},
             {{"render", "Aldra-1:Simple", "--out", "OUT/a.png"}, {"report", "logs", "--force"}});
        const QString zones = "WLC/Aldra-1_perforationZone.txt";
        rows(zones, -1,
             {{"zones", "Aldra-1"}, {"info", "Aldra-1"}, {"render", "Aldra-1:Simple", "--out", "OUT/a.png"}}, {});
        rows(zones, -2, {{"zones", "Aldra-1"}, {"info", "Aldra-1"}}, {});
        const QString track = "WLC/Templates/Global/Petrophysics/Track_3.txt";
        rows(track, -1,
             {{"template", "show", "Petrophysics"},
              {"template", "copy", "Petrophysics", "Mine"},
              {"render", "Aldra-1:Petrophysics", "--out", "OUT/a.png"}},
             {});
        rows("WLC/DefaultLogs/Aldra-1.txt", -1,
             {{"info", "Aldra-1"}, {"default-logs", "Aldra-1"}, {"render", "Aldra-1", "--out", "OUT/a.png"}},
             {{"logs", "Aldra-1"}});
        rows("WLC/Correlations/Kestrane reservoir/properties.txt", 100,
             {{"correlate", "Kestrane reservoir", "--out", "OUT/a.png"}}, {});
        rows("WLC/Aldra-1_Porosity_calibrationPoints.txt", -1,
             {{"points", "Aldra-1", "Porosity"},
              {"info", "Aldra-1"},
              {"render", "Aldra-1:Petrophysics", "--out", "OUT/a.png"}},
             {});
    }
    void damageIsToldWhereItIsMet()
    {
        QFETCH(QString, file);
        QFETCH(int, size);
        QFETCH(QStringList, words);
        QFETCH(int, exitCode);
        const QString path = m_survey + '/' + file;
        QVERIFY2(QFileInfo::exists(path), qPrintable(path));
        const QByteArray good = files::read(path);
        files::write(path, size >= 0 ? good.left(size) : size == -1 ? QByteArray("junk\n") : good + "junk\n");
        const QString rows = m_out + "/rows.txt";
        files::write(rows, "Top\t1000\n");
        const QString las = m_out + "/in.las";
        files::write(las,
                     "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 1000 :\nSTOP.M 1001 :\nSTEP.M 1 :\nNULL. -9 :\n"
                     "WELL. Nova-1 :\n~C\nDEPT.M :\nNEW.API :\n~A\n1000 1\n1001 2\n");
        for (QString &word : words)
            word.replace("OUT", m_out).replace("ROWS", rows).replace("LAS", las);
        const BatchRun run = runBatch(words + QStringList{"--json"}, m_survey);
        VERIFY_EXIT(exitCode, run);
        QVERIFY2(run.errors.contains(path), qPrintable(run.errors));
        for (const char *windowsWords : {"get crashed", "permission.", "Cannot get data"})
            QVERIFY2(!run.errors.contains(windowsWords), qPrintable(run.errors));
        const auto texts = [&run](const char *key) {
            QString all;
            for (const QJsonValue &text : run.list(key))
                all += text.toString() + '\n';
            return all;
        };
        QVERIFY2(texts(exitCode == 1 ? "failures" : "notices").contains(path), run.output.constData());
    }

    // The host reads a well's logs up to the first that is missing.
    void aMissingLogIsTold()
    {
        const QString path = m_survey + "/WellInfo/Aldra-2^3.wll";
        QVERIFY(QFile::remove(path));
        for (const QStringList &words :
             {QStringList{"logs", "Aldra-2"}, {"info", "Aldra-2"}, {"export", "Aldra-2", "--out", m_out}}) {
            const BatchRun run = runBatch(words, m_survey);
            VERIFY_EXIT(1, run);
            QVERIFY2(run.errors.contains(path + ": it is missing, and the logs behind it are not shown."),
                     qPrintable(run.errors));
        }
        const BatchRun wells = runBatch({"wells"}, m_survey);
        VERIFY_EXIT(0, wells);
        QVERIFY2(wells.errors.contains(path), qPrintable(wells.errors));
    }

    void aFailedImportOfSideDataNamesItsFile()
    {
        const QString path = perforationPath(m_survey + "/WLC", "Aldra-1");
        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().mkpath(path)); // nobody writes a file there
        const QString rows = m_out + "/rows.txt";
        files::write(rows, "A\t1\t2\tGas\n");
        const BatchRun run = runBatch({"zones", "Aldra-1", "--import", rows, "--force"}, m_survey);
        VERIFY_EXIT(1, run);
        QVERIFY2(run.errors.contains("The file to write is " + path + '.'), qPrintable(run.errors));
    }

private:
    BatchFixture m_demo;
    QString m_survey;
    QString m_out;
};

LORVA_TEST_MAIN(TestBatchDamage)
#include "tst_batchdamage.moc"
