// A well that gets another name in the workbench takes along what the project keeps by its name.

#include "programs/wellrenaming.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "survey/surveystore.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class tst_wellrenaming : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        write("DefaultLogs/A 1.txt", "A 1\nGamma|GR\n");
        write("A 1_perforationZone.txt", "1\nDST|1|2|Oil\n");
        write("A 1_Gamma_calibrationPoints.txt", "WellName :A 1\nGroupName :Gamma\n5|6\n");
        write("Templates/A 1/Mine/Track_1.txt", "Linear\n");
        write("Templates/Global/T/Track_1.txt", "Linear\n");
        write("Correlations/North/properties.txt", correlationOf("A 1:T\nA:B:T\n"));
        write("Correlations/South/properties.txt", correlationOf("A:B:T\nA 12:T\n", "South"));
    }

    void allFollows()
    {
        QCOMPARE(rename("A 1", "15/9-F"), QStringList());
        QCOMPARE(read("DefaultLogs/15%2F9-F.txt"), QByteArray("15/9-F\nGamma|GR\n"));
        QCOMPARE(read("15%2F9-F_perforationZone.txt"), QByteArray("1\nDST|1|2|Oil\n"));
        QCOMPARE(read("15%2F9-F_Gamma_calibrationPoints.txt"),
                 QByteArray("WellName :15/9-F\nGroupName :Gamma\n5|6\n"));
        QCOMPARE(read("Templates/15%2F9-F/Mine/Track_1.txt"), QByteArray("Linear\n"));
        QCOMPARE(read("Correlations/North/properties.txt"), correlationOf("15/9-F:T\nA:B:T\n"));
        QCOMPARE(read("Correlations/South/properties.txt"), correlationOf("A:B:T\nA 12:T\n", "South"));
        for (const char *old :
             {"DefaultLogs/A 1.txt", "A 1_perforationZone.txt", "A 1_Gamma_calibrationPoints.txt", "Templates/A 1"})
            QVERIFY2(!QFileInfo::exists(path(old)), old);
        QCOMPARE(rename("15/9-F", "A 1"), QStringList()); // and back
        QCOMPARE(read("DefaultLogs/A 1.txt"), QByteArray("A 1\nGamma|GR\n"));
        QCOMPARE(read("Correlations/North/properties.txt"), correlationOf("A 1:T\nA:B:T\n"));
    }

    void namesWithColonsAreToldApart()
    {
        QCOMPARE(programs::followRenamedWell(m_folder->path(), "A:B", "C", {"A 1", "A 12"}), QStringList());
        QCOMPARE(read("Correlations/North/properties.txt"), correlationOf("A 1:T\nC:T\n"));
        QCOMPARE(read("Correlations/South/properties.txt"), correlationOf("C:T\nA 12:T\n", "South"));
    }

    void whatIsThereIsNotReplaced()
    {
        write("New_perforationZone.txt", "0\n");
        write("DefaultLogs/New.txt", "New\n");
        write("Templates/New/Other/Track_1.txt", "Depth\n");
        const QStringList problems = rename("A 1", "New");
        QCOMPARE(problems.size(), 3);
        for (const QString &problem : problems)
            QVERIFY2(problem.contains("keeps the name \"A 1\"") && problem.contains("exists already"),
                     qPrintable(problem));
        QCOMPARE(read("New_perforationZone.txt"), QByteArray("0\n"));
        QCOMPARE(read("A 1_perforationZone.txt"), QByteArray("1\nDST|1|2|Oil\n"));
        QVERIFY(QFileInfo::exists(path("Templates/A 1/Mine/Track_1.txt")));
        QVERIFY(QFileInfo::exists(path("New_Gamma_calibrationPoints.txt"))); // this one could
    }

    void anEmptyFolderOfTemplatesIsInNobodysWay()
    {
        QVERIFY(QDir().mkpath(path("Templates/New")));
        QCOMPARE(rename("A 1", "New"), QStringList());
        QVERIFY(QFileInfo::exists(path("Templates/New/Mine/Track_1.txt")));
    }

    void linksOutOfTheSurveyAreNotFollowed()
    {
        const QTemporaryDir elsewhere;
        QVERIFY(QDir(path("Templates/A 1")).removeRecursively());
        QVERIFY(QFile::link(elsewhere.path(), path("Templates/A 1")));
        const QStringList problems = rename("A 1", "New");
        QCOMPARE(problems.size(), 1);
        QVERIFY(problems.first().contains("link"));
        QVERIFY(QFileInfo(path("Templates/A 1")).isSymLink());
    }

    void aFullDiskLosesNothing()
    {
        FailingDisk disk(FailingDisk::Rename);
        const base::ScopedFileSystemCalls on(disk);
        const auto before = files::snapshot(m_folder->path());
        const QStringList problems = rename("A 1", "New");
        QCOMPARE(problems.size(), 5);
        QCOMPARE(files::snapshot(m_folder->path()), before);
    }

    // Both wells have these files, whichever is renamed.
    void anotherWellOfTheNameKeepsThem()
    {
        const auto before = files::snapshot(m_folder->path());
        QCOMPARE(programs::followRenamedWell(m_folder->path(), "A 1", "New", {"A 1"}), QStringList());
        QCOMPARE(programs::followRenamedWell(m_folder->path(), "A 1", "A 1", {}), QStringList());
        QCOMPARE(files::snapshot(m_folder->path()), before);
        const QTemporaryDir bare;
        QCOMPARE(programs::followRenamedWell(bare.path(), "A 1", "New", {}), QStringList());
        QVERIFY(QDir(bare.path()).isEmpty());
    }

    void theStoreTellsOfANewName()
    {
        const QTemporaryDir root;
        survey::NewSurvey order;
        order.name = "S";
        const QString survey = root.path() + "/S";
        QVERIFY(survey::createSurvey(survey, order).ok());
        survey::SurveyStore store;
        store.setSurveyDirectory(survey);
        const QString key = store.addWell({"One", 0, 0, 0, 0, 100}).value;
        QVERIFY(store.addWell({"Two", 0, 0, 0, 0, 100}).ok());
        QStringList told;
        store.setWellRenamed([&told](const QString &oldName, const QString &newName, const QStringList &others) {
            told.append(oldName + '>' + newName + ' ' + others.join(','));
        });
        QVERIFY(store.renameWell(key, "One").ok());
        QVERIFY(!store.renameWell(key, " ").ok());
        QVERIFY(store.renameWell(key, " Three ").ok());
        QCOMPARE(told, QStringList({"One>Three Two"}));
    }

private:
    QStringList rename(const QString &oldName, const QString &newName) const
    {
        return programs::followRenamedWell(m_folder->path(), oldName, newName, {"A:B", "A 12"});
    }
    static QByteArray correlationOf(const QByteArray &wells, const QByteArray &name = "North")
    {
        return "Correlation:" + name + "\nTrackWidth:1.2\nScale:1000\nNumber Of Wells:2\n" + wells
            + "Marker:1\nTop\nPerforation Flag:0\nZones:0\n";
    }
    QString path(const char *file) const { return m_folder->path() + "/WLC/" + QString::fromUtf8(file); }
    void write(const char *file, const QByteArray &bytes) const { files::write(path(file), bytes); }
    QByteArray read(const char *file) const { return files::read(path(file)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

LORVA_TEST_MAIN(tst_wellrenaming)
#include "tst_wellrenaming.moc"
