#include "datastore/project.h"
#include "datastore/projectseeds.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/memoryhost.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace {

// What the test's own mkdir below saw and was told to refuse.
QStringList madeFolders;
QString refusedFolder;

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace

// Stands before the C library's: Qt makes its folders through it, so the test sees them in their order and can make
// a single one fail.
extern "C" __attribute__((visibility("default"))) int mkdir(const char *path, mode_t mode)
{
    const QString name = QFile::decodeName(path);
    madeFolders.append(name);
    if (!refusedFolder.isEmpty() && name.endsWith(refusedFolder)) {
        errno = EACCES;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

class tst_project : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_host = std::make_unique<MemoryHost>();
        m_host->survey = m_folder->filePath("F3 Demo");
        m_host->dataFolder = "/opt/host/data";
        QVERIFY(QDir().mkdir(m_host->survey));
        m_project = Project();
        madeFolders.clear();
        refusedFolder.clear();
    }

    void valuesOfTheLaunch()
    {
        openProject(*m_host, &m_project);
        QCOMPARE(m_project.surveyName, QString("F3 Demo"));
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        QCOMPARE(m_project.setupDataFolder, QString("/opt/host/data"));
        QCOMPARE(m_project.iconFolder, QString("/opt/host/data/icons.Default/"));
        QVERIFY(m_project.globalTemplateNames.isEmpty());
    }

    void aSurveyWithAnyNameGetsItsFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("blanks") << " two  words ";
        QTest::newRow("percent") << "50%1 of %2";
        QTest::newRow("arabic") << QString::fromUtf8("حقل النفط");
        QTest::newRow("chinese") << QString::fromUtf8("油田");
        QTest::newRow("quotes") << "it's \"it\"";
    }

    void aSurveyWithAnyNameGetsItsFolder()
    {
        QFETCH(QString, name);
        m_host->survey = m_folder->filePath(name);
        QVERIFY(QDir().mkdir(m_host->survey));
        openProject(*m_host, &m_project);
        QCOMPARE(m_project.surveyName, name);
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        QVERIFY(QFileInfo(m_host->survey + "/WLC/Templates/Global").isDir());
    }

    void aMissingProjectGetsItsSixFoldersAndItsSeeds()
    {
        files::write(m_host->survey + "/.survey", "dTect");
        openProject(*m_host, &m_project);
        QStringList folders;
        for (const QString &name : files::snapshot(m_host->survey).keys())
            if (name.endsWith('/'))
                folders.append(name);
        const QStringList expected{"WLC/",
                                   "WLC/Correlations/",
                                   "WLC/CurveGroups/",
                                   "WLC/DefaultLogs/",
                                   "WLC/Templates/",
                                   "WLC/Templates/Global/",
                                   "WLC/Templates/Global/Default/",
                                   "WLC/Templates/Global/Simple/"};
        QCOMPARE(folders, expected);
        const auto made = files::snapshot(m_host->survey);
        QCOMPARE(made.size(), 1 + expected.size() + 21 + 2 * 4);
        QVERIFY(seedProject(m_project.projectFolder)); // nothing is missing
        QVERIFY(files::snapshot(m_host->survey) == made);
    }

    void itIsBuiltAsideInOrderAndTakesItsNameAtTheEnd()
    {
        FailingDisk disk; // writes down what is renamed
        const base::ScopedFileSystemCalls scope(disk);
        openProject(*m_host, &m_project);
        const QString wlc = m_host->survey + "/WLC";
        QCOMPARE(disk.written.last(), wlc);
        QCOMPARE(disk.written.filter(wlc), QStringList{wlc});
        QCOMPARE(disk.flushes, 0);
        QCOMPARE(disk.commonFlushes, 1);
        QCOMPARE(disk.writtenAtCommonFlush, disk.written.size() - 1); // before it takes its name
        const int first = madeFolders.indexOf(QRegularExpression(".*/WLC"));
        QVERIFY(first >= 0);
        const QString aside = madeFolders.at(first);
        QVERIFY2(aside.startsWith(m_host->survey + "/.lorva-"), qPrintable(aside));
        const QStringList expected{aside,
                                   aside + "/Correlations",
                                   aside + "/CurveGroups",
                                   aside + "/Templates",
                                   aside + "/DefaultLogs",
                                   aside + "/Templates/Global"};
        QCOMPARE(madeFolders.mid(first, expected.size()), expected);
    }

    // A project folder that lacked a part would be trusted as it is, for ever.
    void aFolderThatCannotBeMadeKeepsTheProjectFromBeingMade_data()
    {
        QTest::addColumn<QString>("refused");
        for (const char *folder :
             {"WLC", "Correlations", "CurveGroups", "Templates", "DefaultLogs", "Global", "Default", "Simple"})
            QTest::newRow(folder) << QString("/") + folder;
    }

    void aFolderThatCannotBeMadeKeepsTheProjectFromBeingMade()
    {
        QFETCH(QString, refused);
        refusedFolder = refused;
        openProject(*m_host, &m_project);
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        refusedFolder.clear();
        openProject(*m_host, &m_project); // the next launch makes it whole
        QVERIFY(seedProject(m_project.projectFolder));
        QCOMPARE(files::snapshot(m_host->survey).size(), 8 + 21 + 2 * 4);
    }

    void aDiskThatFailsKeepsTheProjectFromBeingMade_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &row : failingSteps)
            QTest::newRow(row.name) << int(row.step);
    }

    void aDiskThatFailsKeepsTheProjectFromBeingMade()
    {
        QFETCH(int, step);
        {
            FailingDisk disk(static_cast<FailingDisk::Step>(step));
            const base::ScopedFileSystemCalls scope(disk);
            openProject(*m_host, &m_project);
        }
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
        QVERIFY(m_host->errors.isEmpty());
    }

    void aLinkToNothingIsNoMissingProject()
    {
        QVERIFY(QFile::link(m_folder->filePath("share not mounted"), m_host->survey + "/WLC"));
        openProject(*m_host, &m_project);
        QCOMPARE(QFileInfo(m_host->survey + "/WLC").symLinkTarget(), m_folder->filePath("share not mounted"));
        QVERIFY(!QFileInfo::exists(m_folder->filePath("share not mounted")));
    }

    void aSwapThatADeadProcessLeftIsFinished()
    {
        openProject(*m_host, &m_project);
        const QString wlc = m_project.projectFolder;
        files::write(wlc + "/.lorva-swap-abcdef/place", "Templates/Global/Mine");
        files::write(wlc + "/.lorva-swap-abcdef/old/Track_1.txt", "old");
        files::write(wlc + "/.lorva-swap-abcdef/new/Track_1.txt", "new");
        openProject(*m_host, &m_project);
        QCOMPARE(files::read(wlc + "/Templates/Global/Mine/Track_1.txt"), QByteArray("new"));
        QVERIFY(m_project.globalTemplateNames.contains("Mine"));
        QVERIFY(!QFileInfo::exists(wlc + "/.lorva-swap-abcdef"));
    }

    void leftoversOfWritesGo()
    {
        openProject(*m_host, &m_project);
        const QString wlc = m_host->survey + "/WLC";
        files::write(wlc + "/Correlations/C/properties.txt", "C\n");
        files::write(wlc + "/Wells/A/GR.txt", "GR\n");
        const auto before = files::snapshot(wlc);
        for (const char *place : {"", "/Correlations", "/Correlations/C", "/CurveGroups", "/Templates", "/Templates/Global",
                                  "/DefaultLogs", "/Wells/A"})
            files::write(wlc + place + "/.lorva-abcDEF", "half");
        openProject(*m_host, &m_project);
        QCOMPARE(files::snapshot(wlc), before);
    }

    void namesWithADotInFrontAreTemplatesAndOurHiddenFoldersAreNot()
    {
        const QString global = m_host->survey + "/WLC/Templates/Global";
        for (const char *name : {".mine", ".lorva-abcdef", ".lorva-deleted", "..x", ".lorva", "lorva-x"})
            QDir().mkpath(global + '/' + name);
        openProject(*m_host, &m_project);
        QCOMPARE(sorted(m_project.globalTemplateNames), (QStringList{"..x", ".lorva", ".mine", "lorva-x"}));
    }

    void aProjectThatCannotBeMadeIsNamedAllTheSame()
    {
        refusedFolder = "/WLC";
        m_project.globalTemplateNames = QStringList{"Old"};
        openProject(*m_host, &m_project);
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        QVERIFY(m_project.globalTemplateNames.isEmpty());
        QVERIFY(m_host->errors.isEmpty());
    }

    void aMissingSurveyFolderIsNotMade()
    {
        m_host->survey = m_folder->filePath("gone");
        openProject(*m_host, &m_project);
        QVERIFY(!QFileInfo::exists(m_host->survey));
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        QVERIFY(m_host->errors.isEmpty());
    }

    void aReadOnlySurveyIsOpenedInSilence()
    {
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));
        QFile::setPermissions(m_host->survey, QFile::Permissions(0x5555));
        const int result = testing_support::runUnprivileged([this] {
            openProject(*m_host, &m_project);
            return m_project.projectFolder == m_host->survey + "/WLC" && m_host->errors.isEmpty() ? 0 : 1;
        });
        QFile::setPermissions(m_host->survey, QFile::Permissions(0x7755));
        QCOMPARE(result, 0);
        QVERIFY(files::snapshot(m_host->survey).isEmpty());
    }

    void anExistingProjectIsTaken_data()
    {
        QTest::addColumn<QStringList>("folders");
        QTest::newRow("empty") << QStringList{};
        QTest::newRow("no DefaultLogs") << QStringList{"Correlations", "CurveGroups", "Templates",
                                                       "Templates/Global"};
        QTest::newRow("no Global") << QStringList{"Correlations", "CurveGroups", "Templates", "DefaultLogs"};
    }

    void anExistingProjectIsTaken()
    {
        QFETCH(QStringList, folders);
        for (const QString &folder : QStringList{"."} + folders)
            QDir().mkpath(m_host->survey + "/WLC/" + folder);
        const auto before = files::snapshot(m_host->survey);
        openProject(*m_host, &m_project);
        QVERIFY(files::snapshot(m_host->survey) == before);
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        QVERIFY(m_project.globalTemplateNames.isEmpty());
    }

    void aFileInThePlaceOfTheProjectIsLeftAlone()
    {
        files::write(m_host->survey + "/WLC", "not a folder");
        openProject(*m_host, &m_project);
        QCOMPARE(files::read(m_host->survey + "/WLC"), QByteArray("not a folder"));
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        QVERIFY(m_project.globalTemplateNames.isEmpty());
    }

    void globalTemplatesAreTheFoldersDirectlyInGlobal()
    {
        const QString global = m_host->survey + "/WLC/Templates/Global";
        QDir().mkpath(global + "/Default/Nested");
        QDir().mkpath(global + "/My template");
        QDir().mkpath(global + QString::fromUtf8("/قالب"));
        QDir().mkpath(m_host->survey + "/WLC/Templates/Well A");
        files::write(global + "/Notes.txt", "no template");
        files::write(global + "/Default/Track_1.txt", "Linear");
        openProject(*m_host, &m_project);
        QCOMPARE(sorted(m_project.globalTemplateNames),
                 (QStringList{"Default", "My template", QString::fromUtf8("قالب")}));
    }

    void globalTemplatesReplaceThoseOfTheLaunchBefore()
    {
        QDir().mkpath(m_host->survey + "/WLC/Templates/Global/New");
        m_project.globalTemplateNames = QStringList{"Old", "New"};
        openProject(*m_host, &m_project);
        QCOMPARE(m_project.globalTemplateNames, QStringList{"New"});
    }

    void globalTemplatesComeInTheOrderOfTheFolder()
    {
        const QString global = m_host->survey + "/WLC/Templates/Global";
        for (const char *name : {"Zeta", "alpha", "Mid", "beta", "Nu", "10", "9", "Xi", "gamma", "Eta", "a b", "Rho"})
            QDir().mkpath(global + '/' + name);
        QStringList expected;
        QDirIterator folder(global, QDir::Dirs | QDir::NoDotAndDotDot);
        while (folder.hasNext())
            expected.append(QFileInfo(folder.next()).fileName());
        QCOMPARE(expected.size(), 12);
        openProject(*m_host, &m_project);
        QCOMPARE(m_project.globalTemplateNames, expected);
    }

    void seededTemplatesAreKnownFromTheNextLaunch()
    {
        m_project.globalTemplateNames = QStringList{"Old"};
        openProject(*m_host, &m_project);
        QVERIFY(m_project.globalTemplateNames.isEmpty());
        Project next;
        openProject(*m_host, &next);
        QCOMPARE(sorted(next.globalTemplateNames), (QStringList{"Default", "Simple"}));
    }

    void openingAgainChangesNothing()
    {
        openProject(*m_host, &m_project);
        files::write(m_project.projectFolder + "/DefaultLogs/Well A.txt", "Well A\n");
        const auto before = files::snapshot(m_host->survey);
        madeFolders.clear();
        openProject(*m_host, &m_project);
        QVERIFY(files::snapshot(m_host->survey) == before);
        QVERIFY(madeFolders.isEmpty());
    }

    void aFolderAloneOpensWithoutAHost()
    {
        openProjectFolder(m_host->survey, &m_project);
        QCOMPARE(m_project.projectFolder, m_host->survey + "/WLC");
        QVERIFY(QFileInfo(m_host->survey + "/WLC/DefaultLogs").isDir());
        QVERIFY(m_project.surveyName.isEmpty());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MemoryHost> m_host;
    Project m_project;
};

QTEST_GUILESS_MAIN(tst_project)
#include "tst_project.moc"
