#include "datastore/projectseeds.h"

#include "base/filesystemcalls.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/unprivileged.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

namespace {

using Files = QMap<QString, QByteArray>;

// Every byte of a fresh project, written out once more.
Files seededGroups()
{
    return {
        {"CurveGroups/Depth.txt", "MD\nTVDSS"},
        {"CurveGroups/Sonic.txt", "DT"},
        {"CurveGroups/Resistivity.txt", "LLD\nLLS\nMSFL"},
        {"CurveGroups/Gamma.txt", "GR"},
        {"CurveGroups/Sp.txt", "SP"},
        {"CurveGroups/Caliper.txt", "CALI"},
        {"CurveGroups/Porosity.txt", "NPHI"},
        {"CurveGroups/Density.txt", "RHOB"},
        {"CurveGroups/Impedance.txt", ""},
        {"CurveGroups/Shale Volume.txt", "VSH_log\nSP_VSH_log"},
        {"CurveGroups/Effective Porosity.txt", "PHIE_log\nPHIT_log"},
        {"CurveGroups/Water Saturation.txt", "WS_log"},
        {"CurveGroups/Shear Modulus.txt", "U_log"},
        {"CurveGroups/Lames Modulus.txt", "LAMBDA_log"},
        {"CurveGroups/Poisons Ratio.txt", "PRV_log"},
        {"CurveGroups/Youngs Modulus.txt", "E_log"},
        {"CurveGroups/Overburden Pressure.txt", "OBP_log"},
        {"CurveGroups/Pore Pressure.txt", "PP_log"},
        {"CurveGroups/Horizontal Stress.txt", "MINIHS_log\nMAXIHS_log"},
        {"CurveGroups/Rock Strength.txt", "UCS_log"},
        {"CurveGroups/Others.txt", ""},
    };
}

Files seededDefault()
{
    return {
        {"Templates/Global/Default/", ""},
        {"Templates/Global/Default/Track_1.txt",
         "Linear\n"
         "Gamma | Default | 0.00 | 200.00 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"
         "Sp | Default | -100.00 | 100.00 | #120202|0,#ffffff|0,#ffffff|None | None | 0 | 1 \n"
         "Caliper | Default | 6.00 | 16.00 | #120202|0,#ffffff|0,#ffffff|None | None | 1 | 1"},
        {"Templates/Global/Default/Track_2.txt",
         "Depth\n"
         "Depth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0"},
        {"Templates/Global/Default/Track_3.txt",
         "Logrithmic\n"
         "Resistivity | Default | 0.10 | 2000.00 | #d01212|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"
         "Resistivity | LLS | 0.10 | 2000.00 | #4046fa|0,#ffffff|0,#ffffff|None | None | 1 | 1\n"
         "Resistivity | MSFL | 0.10 | 2000.00 | #1d0f0f|0,#ffffff|0,#ffffff|None | None | 0 | 1"},
        {"Templates/Global/Default/Track_4.txt",
         "Linear\n"
         "Density | Default | 1.80 | 2.80 | #d21414|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"
         "Porosity | Default | 0.60 | 0 | #2648ef|0,#ffffff|0,#ffffff|None | None | 1 | 1\n"
         "Sonic | Default | 40 | 240 | #2648ef|0,#ffffff|0,#ffffff|None | None | 0 | 1 "},
    };
}

Files seededSimple()
{
    return {
        {"Templates/Global/Simple/", ""},
        {"Templates/Global/Simple/Track_1.txt",
         "Linear\n"
         "Gamma | Default | 0.00 | 200.00 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"},
        {"Templates/Global/Simple/Track_2.txt",
         "Depth\n"
         "Depth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0"},
        {"Templates/Global/Simple/Track_3.txt",
         "Logrithmic\n"
         "Resistivity | Default | 0.10 | 2000.00 | #d01212|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"},
        {"Templates/Global/Simple/Track_4.txt",
         "Linear\n"
         "Density | Default | 1.80 | 2.80 | #0000ff|0,#ffffff|0,#ffffff|None | None | 0 | 1\n"},
    };
}

Files emptyProject()
{
    return {{"Correlations/", ""},
            {"CurveGroups/", ""},
            {"DefaultLogs/", ""},
            {"Templates/", ""},
            {"Templates/Global/", ""}};
}

Files joined(std::initializer_list<Files> parts)
{
    Files all;
    for (const Files &part : parts)
        for (auto entry = part.begin(); entry != part.end(); ++entry)
            all.insert(entry.key(), entry.value());
    return all;
}

// The groups in the order in which they are made.
const QStringList &groupOrder()
{
    static const QStringList order{"Depth",
                                   "Sonic",
                                   "Resistivity",
                                   "Gamma",
                                   "Sp",
                                   "Caliper",
                                   "Porosity",
                                   "Density",
                                   "Impedance",
                                   "Shale Volume",
                                   "Effective Porosity",
                                   "Water Saturation",
                                   "Shear Modulus",
                                   "Lames Modulus",
                                   "Poisons Ratio",
                                   "Youngs Modulus",
                                   "Overburden Pressure",
                                   "Pore Pressure",
                                   "Horizontal Stress",
                                   "Rock Strength",
                                   "Others"};
    return order;
}

QString groupFile(int index)
{
    return "CurveGroups/" + groupOrder().at(index) + ".txt";
}

// A disk that refuses the n-th new file and all that follow, or only that one.
class RefusingDisk : public base::FileSystemCalls
{
public:
    RefusingDisk(int firstRefused, int lastRefused)
        : m_first(firstRefused)
        , m_last(lastRefused)
    {
    }

    int openTemporary(char *pathTemplate) override
    {
        ++asked;
        if (asked >= m_first && asked <= m_last) {
            errno = ENOSPC;
            return -1;
        }
        return FileSystemCalls::openTemporary(pathTemplate);
    }

    int asked = 0;

private:
    int m_first;
    int m_last;
};

} // namespace

namespace {

/// Folders of templates do not come into place; their files do.
class TemplateRefusingDisk : public base::FileSystemCalls
{
public:
    int rename(const char *from, const char *to) override
    {
        if (!QByteArray(to).endsWith("/Default"))
            return FileSystemCalls::rename(from, to);
        errno = EACCES;
        return -1;
    }
};

} // namespace

class tst_projectseeds : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_project = m_folder->filePath("WLC");
        for (const char *name : {"Correlations", "CurveGroups", "DefaultLogs", "Templates/Global"})
            QVERIFY(QDir().mkpath(m_project + '/' + name));
    }

    void aNewProjectGetsEveryFileToTheByte()
    {
        seedProject(m_project);
        const Files made = files::snapshot(m_project);
        const Files expected = joined({emptyProject(), seededGroups(), seededDefault(), seededSimple()});
        QCOMPARE(made.keys(), expected.keys());
        for (auto entry = expected.begin(); entry != expected.end(); ++entry)
            QVERIFY2(made.value(entry.key()) == entry.value(), qPrintable(entry.key()));
        QCOMPARE(seededGroups().size(), 21);
    }

    void seedingAgainTouchesNothing()
    {
        seedProject(m_project);
        const QString file = m_project + "/CurveGroups/Sonic.txt";
        const QDateTime then = QDateTime::fromSecsSinceEpoch(1000000);
        QFile touched(file);
        QVERIFY(touched.open(QIODevice::ReadWrite) && touched.setFileTime(then, QFileDevice::FileModificationTime));
        touched.close();
        const Files before = files::snapshot(m_project);
        seedProject(m_project);
        QVERIFY(files::snapshot(m_project) == before);
        QCOMPARE(QFileInfo(file).lastModified(), then);
    }

    void itTellsWhetherNothingIsMissing()
    {
        QVERIFY(seedProject(m_project));
        QVERIFY(seedProject(m_project));
        QVERIFY(QDir(m_project + "/Templates/Global/Default").removeRecursively());
        {
            TemplateRefusingDisk broken;
            const base::ScopedFileSystemCalls scope(broken);
            QVERIFY(!seedProject(m_project));
        }
        QVERIFY(QDir(m_project + "/Templates/Global/Simple").removeRecursively());
        files::write(m_project + "/Templates/Global/Simple", "a file"); // counts as a user's
        QVERIFY(seedProject(m_project));
        QVERIFY(QDir(m_project + "/Templates").removeRecursively());
        QVERIFY(!seedProject(m_project));
        QVERIFY(QDir(m_project + "/CurveGroups").removeRecursively());
        QVERIFY(!seedProject(m_project));
    }

    void allSeedsAreFlushedTogether()
    {
        FailingDisk disk;
        const base::ScopedFileSystemCalls scope(disk);
        QVERIFY(seedProject(m_project));
        QCOMPARE(disk.flushes, 0);
        QCOMPARE(disk.commonFlushes, 1);
        QVERIFY(seedProject(m_project));
        QCOMPARE(disk.commonFlushes, 1); // nothing was made
        QVERIFY(QFile::remove(m_project + "/CurveGroups/Sp.txt"));
        FailingDisk broken(FailingDisk::Flush);
        const base::ScopedFileSystemCalls brokenScope(broken);
        QVERIFY(!seedProject(m_project));
    }

    void aGroupFileOfTheUserStays()
    {
        files::write(m_project + "/CurveGroups/Sonic.txt", "DTC\nDTS\n");
        files::write(m_project + "/CurveGroups/Others.txt", "MINE");
        seedProject(m_project);
        Files expected = joined({emptyProject(), seededGroups(), seededDefault(), seededSimple()});
        expected["CurveGroups/Sonic.txt"] = "DTC\nDTS\n";
        expected["CurveGroups/Others.txt"] = "MINE";
        QVERIFY(files::snapshot(m_project) == expected);
    }

    void aDeletedGroupFileComesBack()
    {
        seedProject(m_project);
        QVERIFY(QFile::remove(m_project + "/CurveGroups/Resistivity.txt"));
        seedProject(m_project);
        QCOMPARE(files::read(m_project + "/CurveGroups/Resistivity.txt"), QByteArray("LLD\nLLS\nMSFL"));
    }

    void aDeletedTemplateComesBackWhole()
    {
        seedProject(m_project);
        QVERIFY(QDir(m_project + "/Templates/Global/Default").removeRecursively());
        seedProject(m_project);
        QVERIFY(files::snapshot(m_project)
                == joined({emptyProject(), seededGroups(), seededDefault(), seededSimple()}));
    }

    void aTemplateOfTheUserStays()
    {
        seedProject(m_project);
        files::write(m_project + "/Templates/Global/Simple/Track_1.txt", "Linear\nedited");
        QVERIFY(QFile::remove(m_project + "/Templates/Global/Simple/Track_3.txt"));
        const Files before = files::snapshot(m_project);
        seedProject(m_project);
        QVERIFY(files::snapshot(m_project) == before);
    }

    void anExistingTemplateFolderGetsNoTracks_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("Default") << "Default";
        QTest::newRow("Simple") << "Simple";
    }

    void anExistingTemplateFolderGetsNoTracks()
    {
        QFETCH(QString, name);
        QDir().mkpath(m_project + "/Templates/Global/" + name);
        seedProject(m_project);
        const Files folder{{"Templates/Global/" + name + '/', ""}};
        const Files other = name == "Default" ? seededSimple() : seededDefault();
        QVERIFY(files::snapshot(m_project) == joined({emptyProject(), seededGroups(), folder, other}));
    }

    void aFileInThePlaceOfATemplateIsNoReasonToEnd()
    {
        files::write(m_project + "/Templates/Global/Default", "a file");
        seedProject(m_project);
        const Files file{{"Templates/Global/Default", "a file"}};
        QVERIFY(files::snapshot(m_project) == joined({emptyProject(), seededGroups(), file, seededSimple()}));
    }

    void aLinkToNothingInThePlaceOfATemplateIsNoReasonToEnd()
    {
        QVERIFY(QFile::link("nowhere", m_project + "/Templates/Global/Default"));
        seedProject(m_project);
        QVERIFY(QFileInfo(m_project + "/Templates/Global/Default").isSymLink());
        QVERIFY(!QFileInfo::exists(m_project + "/Templates/Global/nowhere"));
        QCOMPARE(files::read(m_project + "/Templates/Global/Simple/Track_3.txt"),
                 seededSimple().value("Templates/Global/Simple/Track_3.txt"));
    }

    void withoutAFolderForTemplatesOnlyGroupsAreSeeded()
    {
        QVERIFY(QDir().rmdir(m_project + "/Templates/Global"));
        seedProject(m_project);
        Files expected = joined({emptyProject(), seededGroups()});
        expected.remove("Templates/Global/");
        QVERIFY(files::snapshot(m_project) == expected);
    }

    void withoutAFolderForGroupsNothingIsSeeded()
    {
        QVERIFY(QDir().rmdir(m_project + "/CurveGroups"));
        Files expected = emptyProject();
        expected.remove("CurveGroups/");
        seedProject(m_project);
        QVERIFY(files::snapshot(m_project) == expected);
    }

    void aFileInThePlaceOfTheGroupFolderEndsTheSeeding()
    {
        QVERIFY(QDir().rmdir(m_project + "/CurveGroups"));
        files::write(m_project + "/CurveGroups", "a file");
        const Files before = files::snapshot(m_project);
        seedProject(m_project);
        QVERIFY(files::snapshot(m_project) == before);
    }

    void aMissingProjectIsNotMade()
    {
        seedProject(m_folder->filePath("gone"));
        QVERIFY(!QFileInfo::exists(m_folder->filePath("gone")));
    }

    void theFirstGroupThatCannotBeMadeEndsTheSeeding_data()
    {
        QTest::addColumn<int>("refused");
        for (int i = 0; i < 21; ++i)
            QTest::newRow(qPrintable(groupOrder().at(i))) << i;
    }

    // Also the order of the groups: exactly those before the refused one are there.
    void theFirstGroupThatCannotBeMadeEndsTheSeeding()
    {
        QFETCH(int, refused);
        RefusingDisk disk(refused + 1, refused + 1);
        {
            const base::ScopedFileSystemCalls scope(disk);
            seedProject(m_project);
        }
        Files expected = emptyProject();
        for (int i = 0; i < refused; ++i)
            expected.insert(groupFile(i), seededGroups().value(groupFile(i)));
        QVERIFY(files::snapshot(m_project) == expected);
        QCOMPARE(disk.asked, refused + 1);
    }

    void groupsThatExistDoNotEndTheSeedingAndOneThatCannotBeMadeDoes()
    {
        files::write(m_project + "/CurveGroups/Depth.txt", "mine");
        files::write(m_project + "/CurveGroups/Resistivity.txt", "mine");
        RefusingDisk disk(2, 2); // Sonic is made, Gamma is refused
        {
            const base::ScopedFileSystemCalls scope(disk);
            seedProject(m_project);
        }
        const Files expected = joined({emptyProject(),
                                       {{"CurveGroups/Depth.txt", "mine"},
                                        {"CurveGroups/Sonic.txt", "DT"},
                                        {"CurveGroups/Resistivity.txt", "mine"}}});
        QVERIFY(files::snapshot(m_project) == expected);
    }

    void aTrackThatCannotBeMadeEndsTheSeedingAndLeavesNoHalfTemplate_data()
    {
        QTest::addColumn<int>("refused");
        QTest::addColumn<bool>("defaultIsMade");
        for (int track = 1; track <= 4; ++track) {
            QTest::addRow("Default %d", track) << 21 + track << false;
            QTest::addRow("Simple %d", track) << 25 + track << true;
        }
    }

    void aTrackThatCannotBeMadeEndsTheSeedingAndLeavesNoHalfTemplate()
    {
        QFETCH(int, refused);
        QFETCH(bool, defaultIsMade);
        RefusingDisk disk(refused, refused);
        {
            const base::ScopedFileSystemCalls scope(disk);
            seedProject(m_project);
        }
        QVERIFY(files::snapshot(m_project)
                == joined({emptyProject(), seededGroups(), defaultIsMade ? seededDefault() : Files()}));
        QCOMPARE(disk.asked, refused);
        seedProject(m_project);
        QVERIFY(files::snapshot(m_project)
                == joined({emptyProject(), seededGroups(), seededDefault(), seededSimple()}));
    }

    void aFullDiskLeavesNothingHalfWritten()
    {
        RefusingDisk disk(1, 1000);
        {
            const base::ScopedFileSystemCalls scope(disk);
            seedProject(m_project);
        }
        QCOMPARE(disk.asked, 1);
        QVERIFY(files::snapshot(m_project) == emptyProject());
    }

    void aReadOnlyGroupFolderEndsTheSeedingInSilence()
    {
        files::write(m_project + "/CurveGroups/Depth.txt", "MD\nTVDSS");
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777));
        openToAll();
        QFile::setPermissions(m_project + "/CurveGroups", QFile::Permissions(0x5555));
        const Files before = files::snapshot(m_project);
        QCOMPARE(testing_support::runUnprivileged([this] {
                     seedProject(m_project);
                     return 0;
                 }),
                 0);
        QVERIFY(files::snapshot(m_project) == before);
    }

    void aReadOnlyTemplateFolderKeepsTheGroups()
    {
        openToAll();
        QFile::setPermissions(m_project + "/Templates/Global", QFile::Permissions(0x5555));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     seedProject(m_project);
                     return 0;
                 }),
                 0);
        QVERIFY(files::snapshot(m_project) == joined({emptyProject(), seededGroups()}));
    }

    void seededTemplatesAreAsOpenAsOtherFolders()
    {
        seedProject(m_project);
        QCOMPARE(QFileInfo(m_project + "/Templates/Global/Default").permissions(),
                 QFileInfo(m_project + "/Templates/Global").permissions());
    }

    void writeIfMissingMakesTheFile()
    {
        const QString path = m_folder->filePath("new.txt");
        QCOMPARE(writeIfMissing(path, "a\nb"), 1);
        QCOMPARE(files::read(path), QByteArray("a\nb"));
    }

    void writeIfMissingTakesNoTextAsAnEmptyFile()
    {
        QCOMPARE(writeIfMissing(m_folder->filePath("null.txt"), QByteArray()), 1);
        QCOMPARE(files::read(m_folder->filePath("null.txt")), QByteArray());
        QCOMPARE(writeIfMissing(m_folder->filePath("empty.txt"), ""), 1);
        QCOMPARE(files::read(m_folder->filePath("empty.txt")), QByteArray());
        const char *none = nullptr;
        QCOMPARE(writeIfMissing(m_folder->filePath("none.txt"), none), 1);
        QVERIFY(QFileInfo::exists(m_folder->filePath("none.txt")));
    }

    void writeIfMissingLeavesWhatExists()
    {
        const QString path = m_folder->filePath("old.txt");
        files::write(path, "old");
        QCOMPARE(writeIfMissing(path, "new"), 0);
        QCOMPARE(files::read(path), QByteArray("old"));
        QCOMPARE(writeIfMissing(path, QByteArray()), 0);
        QCOMPARE(files::read(path), QByteArray("old"));
        QCOMPARE(writeIfMissing(m_project, "new"), 0);
        QVERIFY(QFileInfo(m_project).isDir());
    }

    void writeIfMissingTellsWhatCannotBeMade()
    {
        QCOMPARE(writeIfMissing(m_folder->filePath("no folder/new.txt"), "text"), -1);
        QVERIFY(!QFileInfo::exists(m_folder->filePath("no folder")));
        files::write(m_folder->filePath("file"), "");
        QCOMPARE(writeIfMissing(m_folder->filePath("file/new.txt"), "text"), -1);
        QCOMPARE(writeIfMissing(QString(), "text"), -1);
        RefusingDisk disk(1, 1);
        const base::ScopedFileSystemCalls scope(disk);
        QCOMPARE(writeIfMissing(m_folder->filePath("new.txt"), "text"), -1);
        QVERIFY(!QFileInfo::exists(m_folder->filePath("new.txt")));
    }

private:
    // The test's folder with everything in it as a folder in which any user may write.
    void openToAll()
    {
        for (const QString &path : {QString("."), QString("WLC"), QString("WLC/CurveGroups"),
                                    QString("WLC/Templates"), QString("WLC/Templates/Global")})
            QVERIFY(QFile::setPermissions(m_folder->filePath(path), QFile::Permissions(0x7777)));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_projectseeds)
#include "tst_projectseeds.moc"
