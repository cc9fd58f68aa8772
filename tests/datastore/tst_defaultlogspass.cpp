#include "base/filesystemcalls.h"
#include "defaultlogsfixture.h"
#include "support/failingdisk.h"
#include "support/unprivileged.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <sys/inotify.h>
#include <sys/stat.h>

namespace {

// What was written since: a file that is replaced gets another inode, one that is written in place another time.
QMap<QString, QString> fileStates(const QString &folder)
{
    QMap<QString, QString> states;
    for (const QString &name : files::snapshot(folder).keys()) {
        struct stat info;
        if (::stat(QFile::encodeName(folder + '/' + name).constData(), &info) == 0)
            states.insert(name,
                          QString("%1 %2 %3").arg(info.st_ino).arg(info.st_mtim.tv_sec).arg(info.st_mtim.tv_nsec));
    }
    return states;
}

// How often each of some files is opened while it lives.
class OpenCounter
{
public:
    explicit OpenCounter(const QStringList &paths)
        : m_queue(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        // With the closings in between no two events are alike: equal ones in a row would be merged.
        for (const QString &path : paths)
            m_watches.append(
                ::inotify_add_watch(m_queue, QFile::encodeName(path).constData(), IN_OPEN | IN_CLOSE_NOWRITE));
    }
    ~OpenCounter() { ::close(m_queue); }
    OpenCounter(const OpenCounter &) = delete;
    OpenCounter &operator=(const OpenCounter &) = delete;

    bool isWatching() const { return m_queue >= 0 && !m_watches.contains(-1); }

    QVector<int> counts() const
    {
        QVector<int> result(m_watches.size());
        alignas(inotify_event) char events[4096];
        for (ssize_t size = 0; (size = ::read(m_queue, events, sizeof events)) > 0;)
            for (const char *at = events; at < events + size;) {
                const auto *event = reinterpret_cast<const inotify_event *>(at);
                if ((event->mask & IN_OPEN) != 0)
                    ++result[m_watches.indexOf(event->wd)];
                at += sizeof(inotify_event) + event->len;
            }
        return result;
    }

private:
    int m_queue;
    QVector<int> m_watches;
};

// Surveys and project folders of all kinds, the same for a seed.
class Generator
{
public:
    explicit Generator(quint32 seed)
        : m_random(seed)
    {
    }

    void fill(Survey *survey)
    {
        const int wells = number(6);
        for (int i = 0; i < wells; ++i) {
            QVector<Log> logs;
            for (int log = number(9); log > 0; --log)
                logs.append({pick(logNames()), pick(units())});
            const QString key = survey->addWell(pick(wellNames()), logs);
            survey->host.find(key)->isUnreadable = number(10) == 0;
        }
        fillProject(survey);
    }

private:
    static QStringList logNames()
    {
        return {"GR",       "gr",    "GR1", "DT",        "RHOB", "NPHI", "LLD", "LLS",  "SP", "CALI", "TENS",
                "BIT SIZE", "Größe", "A/B", "G|Density", "A\nB", "C\rD", " GR", "DT\t", "|",  "",     "x || y"};
    }
    // What a line of a file may hold.
    static QStringList fileNames() { return logNames().filter(QRegularExpression("^[^|\n\r]*$")); }
    static QStringList units()
    {
        return {"gapi", "API", "us/ft", "ohmm", "g/cc", "%", "mv", "in", "m", "", "furlong", "Inches"};
    }
    static QStringList wellNames() { return {"A", "B", "15/9-F-1", "Global", ".", "..", "", "%2F", "A", "Well 3"}; }
    static QStringList groups()
    {
        return {"Gamma",    "gamma", "SONIC", "Others",          "others", "None",
                "My Group", "../x",  "",      "CurveGroupTable", "Depth",  "Rock Strength"};
    }

    int number(int limit) { return static_cast<int>(m_random.bounded(limit)); }
    QString pick(const QStringList &list) { return list.at(number(list.size())); }
    QByteArray lineEnd() { return number(4) == 0 ? "\r\n" : "\n"; }

    void fillProject(Survey *survey)
    {
        if (number(3) > 0) {
            QByteArray table;
            for (int i = number(8); i > 0; --i)
                table += pick(fileNames()).toUtf8() + pick({"|", " | ", "  |", ""}).toUtf8() + pick(groups()).toUtf8()
                    + pick({"", "", "", "| third", "  "}).toUtf8() + lineEnd();
            files::write(survey->path("CurveGroups/CurveGroupTable.txt"), table);
        }
        for (int i = number(5); i > 0; --i) {
            QByteArray names;
            for (int name = number(6); name > 0; --name)
                names += pick({"", " ", "\t"}).toUtf8() + pick(fileNames()).toUtf8() + lineEnd();
            if (number(2) == 0)
                names = names.trimmed();
            files::write(survey->path("CurveGroups/" + pick(curveGroupNames()) + ".txt"), names);
        }
        if (number(3) == 0)
            files::write(survey->path("DefaultLogs/A.txt"), "A\nGamma|GR\n");
        if (number(12) == 0)
            QDir(survey->path("DefaultLogs")).removeRecursively();
        if (number(12) == 0)
            QDir(survey->path("CurveGroups")).removeRecursively();
    }

    QRandomGenerator m_random;
};

} // namespace

class tst_defaultlogspass : public QObject
{
    Q_OBJECT

private slots:
    void everyFileIsReadOncePerPass()
    {
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}, {"DT", "us/ft"}, {"ECGR", "gapi"}});
        survey.addWell("B", {{"GR1", "gapi"}});
        survey.run();
        OpenCounter counter({survey.path("CurveGroups/CurveGroupTable.txt"), survey.path("CurveGroups/Gamma.txt"),
                             survey.path("CurveGroups/Sonic.txt"), survey.path("DefaultLogs/A.txt"),
                             survey.path("DefaultLogs/B.txt")});
        if (!counter.isWatching())
            QSKIP("Opened files cannot be watched here");
        survey.run();
        QCOMPARE(counter.counts(), QVector<int>({1, 1, 1, 0, 0}));
    }

    void itEqualsTheDescriptionOnGeneratedSurveys()
    {
        for (quint32 seed = 0; seed < 500; ++seed) {
            Survey survey;
            Generator(seed).fill(&survey);
            const QTemporaryDir copy;
            files::copyFolder(survey.path(""), copy.path());
            survey.data.catalogue.build();
            for (int pass = 1; pass <= 3; ++pass) {
                CurveGroupTable::instance().clear();
                runDefaultLogsPass(survey.data);
                LiteralPass(copy.path(), survey.data.catalogue, survey.host).run();
                const auto done = files::snapshot(survey.path(""));
                const auto described = files::snapshot(copy.path());
                if (done != described) {
                    for (const QString &name : (done.keys() + described.keys()))
                        if (done.value(name) != described.value(name)
                            || done.contains(name) != described.contains(name))
                            qWarning("%s: \"%s\" instead of \"%s\"", qPrintable(name), done.value(name).constData(),
                                     described.value(name).constData());
                    QFAIL(qPrintable(QString("seed %1, pass %2").arg(seed).arg(pass)));
                }
            }
            for (const base::Box &box : survey.asker.boxes)
                QCOMPARE(box.title, QString("Reading Wells Data")); // of the catalogue, not of the pass
            QVERIFY(survey.host.errors.isEmpty());
        }
    }

    void aSecondPassOverAnUnchangedSurveyWritesNothing()
    {
        int written = 0;
        for (quint32 seed = 1000; seed < 1200; ++seed) {
            Survey survey;
            Generator(seed).fill(&survey);
            survey.run();
            const auto states = fileStates(survey.path(""));
            written += states.size();
            FailingDisk disk;
            const base::ScopedFileSystemCalls scope(disk);
            survey.run();
            survey.runInNewProcess();
            // Where a folder is missing each pass tries again, without effect.
            QVERIFY2(fileStates(survey.path("")) == states, qPrintable(QString("seed %1").arg(seed)));
            QCOMPARE(disk.written, QStringList());
        }
        QVERIFY(written > 1000);
    }

    void everyFileIsWrittenOnce()
    {
        Survey survey;
        for (int well = 0; well < 20; ++well)
            survey.addWell(QString("Well %1").arg(well),
                           {{QString("GR%1").arg(well), "gapi"}, {QString("DT%1").arg(well), "us/f"}});
        FailingDisk disk;
        {
            const base::ScopedFileSystemCalls scope(disk);
            survey.run();
        }
        QCOMPARE(QSet<QString>(disk.written.begin(), disk.written.end()).size(), disk.written.size());
        QCOMPARE(disk.written.size(), 20 + 2 + 1);
        QCOMPARE(disk.written.last(), survey.path("CurveGroups/CurveGroupTable.txt"));
    }

    void aFailingDiskIsSilentAndLosesNothing_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &row : failingSteps)
            if (row.step != FailingDisk::Flush)
                QTest::newRow(row.name) << int(row.step);
    }

    void aFailingDiskIsSilentAndLosesNothing()
    {
        QFETCH(int, step);
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}});
        survey.addWell("B", {{"GR1", "gapi"}});
        files::write(survey.path("CurveGroups/Gamma.txt"), "OLD");
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "OLD | Gamma\n");
        const auto before = files::snapshot(survey.path(""));
        {
            FailingDisk disk(static_cast<FailingDisk::Step>(step));
            const base::ScopedFileSystemCalls scope(disk);
            survey.run();
        }
        QVERIFY(files::snapshot(survey.path("")) == before);
        QVERIFY(survey.asker.boxes.isEmpty() && survey.host.errors.isEmpty());
        survey.run(); // with room on the disk again everything is made
        QCOMPARE(survey.defaults("B"), QByteArray("B\nGamma|GR1\n"));
        QCOMPARE(survey.group("Gamma"), QByteArray("OLD\nGR\nGR1\n"));
    }

    void everythingIsFlushedTogetherAtTheEnd()
    {
        Survey survey;
        for (int well = 0; well < 20; ++well)
            survey.addWell(QString("Well %1").arg(well), {{QString("GR%1").arg(well), "gapi"}});
        FailingDisk disk(FailingDisk::Flush); // and a failure there is silent
        {
            const base::ScopedFileSystemCalls scope(disk);
            survey.run();
            QCOMPARE(disk.flushes, 0);
            QCOMPARE(disk.commonFlushes, 1);
            QCOMPARE(disk.writtenAtCommonFlush, 20 + 1 + 1);
            survey.run(); // writes nothing
        }
        QCOMPARE(disk.commonFlushes, 1);
        QVERIFY(survey.asker.boxes.isEmpty() && survey.host.errors.isEmpty());
        QCOMPARE(survey.defaults("Well 19"), QByteArray("Well 19\nGamma|GR19\n"));
    }

    void eachWellIsAskedForBeforeItIsReadAndBeforeItsFileIsMade()
    {
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}});
        survey.addWell("B", {{"DT", "us/f"}});
        survey.data.catalogue.build();
        QStringList seen;
        runDefaultLogsPass(survey.data, [&] {
            seen.append(QString("table %1, files %2")
                            .arg(CurveGroupTable::instance().size())
                            .arg(QDir(survey.path("DefaultLogs")).entryList(QDir::Files).size()));
            return true;
        });
        QCOMPARE(seen, (QStringList{"table 0, files 0", "table 1, files 0", "table 2, files 0", "table 2, files 1"}));
    }

    void aNoEndsThePass()
    {
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}});
        survey.addWell("B", {{"DT", "us/f"}});
        survey.data.catalogue.build();
        const auto before = files::snapshot(survey.path(""));
        int asked = 0;
        runDefaultLogsPass(survey.data, [&asked] { return ++asked < 2; });
        QCOMPARE(asked, 2);
        QVERIFY(files::snapshot(survey.path("")) == before);
        asked = 0;
        FailingDisk disk;
        const base::ScopedFileSystemCalls scope(disk);
        runDefaultLogsPass(survey.data, [&asked] { return ++asked < 4; });
        QCOMPARE(asked, 4);
        QVERIFY(QFile::exists(survey.path("DefaultLogs/A.txt")));
        QVERIFY(!QFile::exists(survey.path("DefaultLogs/B.txt")));
        QCOMPARE(survey.table(), QByteArray("DT | Sonic\nGR | Gamma\n"));
        QCOMPARE(disk.commonFlushes, 1);
    }

    void aWellThatCannotBeReadGetsNoFileUntilItCan()
    {
        Survey survey;
        const QString key = survey.addWell("W", {{"GR", "gapi"}});
        survey.addWell("W", {{"DT", "us/f"}}); // shares the file
        survey.host.find(key)->isUnreadable = true;
        survey.run();
        QVERIFY(!QFile::exists(survey.path("DefaultLogs/W.txt")));
        QCOMPARE(survey.asker.boxes.size(), 1);
        survey.host.find(key)->isUnreadable = false;
        runDefaultLogsPass(survey.data); // the catalogue still does not know its logs
        QVERIFY(!QFile::exists(survey.path("DefaultLogs/W.txt")));
        survey.data.catalogue.refreshLogNames(0);
        runDefaultLogsPass(survey.data);
        QCOMPARE(survey.defaults("W"), QByteArray("W\nGamma|GR\n"));
    }

    void whatCannotBeReadIsNotWrittenOver()
    {
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}, {"DT", "us/f"}});
        files::write(survey.path("CurveGroups/Gamma.txt"), "mine");
        files::write(survey.path("CurveGroups/CurveGroupTable.txt"), "mine | Sp\n");
        for (const QString &folder : {survey.root.path(), survey.path(""), survey.path("CurveGroups")})
            QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x7777)));
        for (const char *file : {"CurveGroups/Gamma.txt", "CurveGroups/CurveGroupTable.txt"})
            QVERIFY(QFile::setPermissions(survey.path(file), QFile::Permissions(0x2222)));
        QCOMPARE(testing_support::runUnprivileged([&survey] {
                     survey.run();
                     return 0;
                 }),
                 0);
        for (const char *file : {"CurveGroups/Gamma.txt", "CurveGroups/CurveGroupTable.txt"})
            QVERIFY(QFile::setPermissions(survey.path(file), QFile::Permissions(0x6666)));
        QCOMPARE(survey.group("Gamma"), QByteArray("mine"));
        QCOMPARE(survey.table(), QByteArray("mine | Sp\n"));
        QCOMPARE(survey.group("Sonic"), QByteArray("DT\n"));
    }

    void aFileThatCannotBeMadeIsSkipped()
    {
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}});
        survey.addWell("B", {{"DT", "us/f"}});
        QVERIFY(QDir().mkdir(survey.path("DefaultLogs/A.txt")));
        QVERIFY(QDir().mkdir(survey.path("CurveGroups/Gamma.txt")));
        survey.run();
        QCOMPARE(survey.defaults("B"), QByteArray("B\nSonic|DT\n"));
        QCOMPARE(survey.group("Sonic"), QByteArray("DT\n"));
        QCOMPARE(survey.table(), QByteArray("DT | Sonic\nGR | Gamma\n"));
        QVERIFY(survey.asker.boxes.isEmpty() && survey.host.errors.isEmpty());
    }

    void readOnlyFoldersAreSilent()
    {
        Survey survey;
        survey.addWell("A", {{"GR", "gapi"}});
        for (const QString &folder : {survey.root.path(), survey.path("")})
            QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x7777)));
        for (const QString &folder : {survey.path("CurveGroups"), survey.path("DefaultLogs")})
            QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x5555)));
        const auto before = files::snapshot(survey.path(""));
        QCOMPARE(testing_support::runUnprivileged([&survey] {
                     survey.run();
                     return survey.asker.boxes.size() + survey.host.errors.size();
                 }),
                 0);
        QVERIFY(files::snapshot(survey.path("")) == before);
    }

    void thousandLogsOfOneWellAreClassified()
    {
        Survey survey;
        QVector<Log> logs;
        for (int i = 0; i < 1000; ++i)
            logs.append({QString("LOG%1").arg(i), "gapi"});
        survey.addWell("W", logs);
        survey.run();
        QCOMPARE(survey.group("Gamma").count('\n'), 1000);
        QCOMPARE(survey.table().count('\n'), 1000);
        QCOMPARE(survey.defaults("W"), QByteArray("W\nGamma|LOG0\n"));
    }
};

QTEST_GUILESS_MAIN(tst_defaultlogspass)
#include "tst_defaultlogspass.moc"
