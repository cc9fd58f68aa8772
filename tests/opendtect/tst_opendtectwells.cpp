// How the adapter treats the wells that the host has in memory, and wells that are damaged, locked or gone.

#include "base/filelock.h"
#include "host/opendtect/odwells.h"
#include "odprogram.h"
#include "odsurvey.h"
#include "support/files.h"
#include "support/unprivileged.h"
#include "survey/surveystore.h"
#include "surveycontents.h"

#include <QDirIterator>
#include <QTest>
#include <QThread>

#include <atomic>
#include <csignal>
#include <limits>
#include <sys/resource.h>
#include <thread>

#include <ioman.h>
#include <ioobj.h>
#include <ptrman.h>
#include <transl.h>
#include <welldata.h>
#include <welllog.h>
#include <welllogset.h>
#include <wellman.h>
#include <wellmarker.h>

namespace {

host::LogData smallLog(const QString &name, float value)
{
    return {name, QStringLiteral("gAPI"), {100, 101}, {value, value + 1}};
}

// Also the folders above it, which are the test's own.
void allowEverybody(const QString &folder)
{
    const QString root = OdProgram::dataRoot();
    for (const QString &above : {QFileInfo(root).path(), root, folder})
        QVERIFY(QFile::setPermissions(above, QFile::Permissions(0x7777)));
    QDirIterator it(folder, QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        QVERIFY(QFile::setPermissions(it.next(), QFile::Permissions(0x7777)));
}

MultiID idOf(const QString &key)
{
    return MultiID(key.toLatin1().constData());
}

/// No file of this process can grow beyond a size while it lives, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        m_handler = ::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    sighandler_t m_handler = nullptr;
};

} // namespace

class TestOpendTectWells : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        static int number = 0;
        m_survey = odsurvey::open(QStringLiteral("Wells_%1").arg(++number));
        m_told.clear();
        m_wells = std::make_unique<opendtect::OdWells>([this](const QString &key) { m_told.append(key); });
        m_key = odsurvey::add(surveycontents::wells().first());
        m_stem = m_survey + "/WellInfo/15_9-F_1";
        QVERIFY(QFile::exists(m_stem + ".well"));
    }
    void cleanup() { m_wells.reset(); }

    void noWellStaysLoaded()
    {
        QVERIFY(m_wells->list().ok());
        QVERIFY(m_wells->header(m_key).ok());
        QVERIFY(m_wells->logs(m_key).ok());
        QVERIFY(m_wells->log(m_key, 0).ok());
        QVERIFY(m_wells->markers(m_key).ok());
        QVERIFY(m_wells->writeLog(m_key, smallLog("NEW", 1)).ok());
        QVERIFY(m_wells->writeMarkers(m_key, {{"Top", 10, Qt::red}}).ok());
        m_wells->reload(m_key);
        QVERIFY(!m_wells->log(m_key, 99).ok());
        QVERIFY(!Well::MGR().isLoaded(idOf(m_key)));
        QCOMPARE(Well::MGR().wells().size(), 0);
    }

    void aWellReadAfterAnotherHasNothingOfIt()
    {
        odsurvey::Well bare;
        bare.header.name = "Bare";
        bare.track = {{1, 2, 0, 0}, {1, 2, 100, 100}};
        const QString key = odsurvey::add(bare);
        for (int round = 0; round < 2; ++round) {
            const host::WellHeader full = m_wells->header(m_key).value;
            QVERIFY(full.totalDepth > 100);
            QVERIFY(!host::isUndefined(full.groundElevation));
            QCOMPARE(m_wells->logs(m_key).value.size(), 4);
            QCOMPARE(m_wells->markers(m_key).value.size(), 3);
            const host::WellHeader header = m_wells->header(key).value;
            QCOMPARE(header.name, QString("Bare"));
            QCOMPARE(header.totalDepth, 100.0);
            QVERIFY(host::isUndefined(header.groundElevation));
            QVERIFY(m_wells->logs(key).value.isEmpty());
            QVERIFY(m_wells->markers(key).value.isEmpty());
            QVERIFY(!m_wells->log(key, 0).ok());
        }
    }

    void aWellThatTheHostLoadedStaysLoaded()
    {
        const Well::Data *loaded = Well::MGR().get(idOf(m_key));
        const int references = loaded->nrRefs();
        QVERIFY(m_wells->header(m_key).ok());
        QVERIFY(m_wells->log(m_key, 1).ok());
        QVERIFY(m_wells->writeLog(m_key, smallLog("NEW", 1)).ok());
        QVERIFY(m_wells->writeMarkers(m_key, {{"Top", 10, Qt::red}}).ok());
        m_wells->reload(m_key);
        QVERIFY(Well::MGR().isLoaded(idOf(m_key)));
        QCOMPARE(Well::MGR().get(idOf(m_key)), const_cast<Well::Data *>(loaded));
        QCOMPARE(loaded->nrRefs(), references);
    }

    void theHostSeesAWrittenLogAtOnce()
    {
        Well::Data *loaded = Well::MGR().get(idOf(m_key));
        QVERIFY(m_wells->writeLog(m_key, smallLog("RHOB", 7)).ok());
        QVERIFY(m_wells->writeLog(m_key, smallLog("NEW", 3)).ok());
        QCOMPARE(loaded->getLog("RHOB")->value(1), 8.0f);
        QCOMPARE(loaded->getLog("NEW")->value(0), 3.0f);
        QCOMPARE(loaded->logs().indexOf("RHOB"), 1);
        QCOMPARE(loaded->logs().indexOf("NEW"), 4);
    }

    void theOtherLogsOfALoadedWellKeepTheirSamples()
    {
        Well::Data *loaded = Well::MGR().get(idOf(m_key), Well::LoadReqs(Well::Inf, Well::LogInfos));
        QVERIFY(m_wells->writeLog(m_key, smallLog("NEW", 3)).ok());
        m_wells->reload(m_key);
        const auto log = m_wells->log(m_key, 0).value;
        QCOMPARE(log.values.size(), surveycontents::wells().first().logs.first().values.size());
        QCOMPARE(loaded->logs().size(), 5);
    }

    void reloadTakesInWhatAnotherProgramWrote()
    {
        Well::Data *loaded = Well::MGR().get(idOf(m_key));
        survey::SurveyStore other(m_survey);
        QVERIFY(other.writeLog(m_key, smallLog("RHOB", 5)).ok());
        QVERIFY(other.writeMarkers(m_key, {{"Other", 10, Qt::red}}).ok());
        QCOMPARE(m_wells->log(m_key, 1).value.values.size(), 4);
        m_wells->reload(m_key);
        QCOMPARE(m_wells->log(m_key, 1).value.values, (QVector<float>{5, 6}));
        QCOMPARE(m_wells->markers(m_key).value.first().name, QString("Other"));
        QCOMPARE(loaded->logs().getLog("RHOB")->size(), 2);
    }

    void reloadForgetsMarkersThatAreGone()
    {
        Well::MGR().get(idOf(m_key));
        QVERIFY(!m_wells->markers(m_key).value.isEmpty());
        QVERIFY(QFile::remove(m_stem + ".wlm"));
        m_wells->reload(m_key);
        const host::Outcome<QVector<host::Marker>> none = m_wells->markers(m_key);
        QVERIFY2(none.ok(), qPrintable(none.error));
        QVERIFY(none.value.isEmpty());
        files::write(m_stem + ".wlm", "rubbish");
        m_wells->reload(m_key);
        QVERIFY(!m_wells->markers(m_key).ok());
    }

    void theHostsOwnChangeOfMarkersIsAnnounced()
    {
        Well::Data *loaded = Well::MGR().get(idOf(m_key));
        loaded->markerschanged.trigger();
        QCOMPARE(m_told, QStringList{}); // loaded behind our back
        m_wells->watchLoadedWells();
        m_wells->watchLoadedWells();
        loaded->markerschanged.trigger();
        QCOMPARE(m_told, QStringList{m_key});
    }

    void aMarkerKeepsItsLevelAsLongAsItsColourStays()
    {
        Well::Data *loaded = Well::MGR().get(idOf(m_key));
        loaded->markers().getByName("Base")->setLevelID(7);
        loaded->markers().getByName("Top A")->setLevelID(8);
        QVERIFY(m_wells->writeMarkers(m_key, {{"Top A", 5, Qt::blue}, {"Base", 300, Qt::black}}).ok());
        QCOMPARE(loaded->markers().getByName("Base")->levelID(), 7);
        QCOMPARE(loaded->markers().getByName("Top A")->levelID(), -1);
    }

    void markersThatCannotBeStoredAreLeftOut()
    {
        QVERIFY(m_wells
                    ->writeMarkers(m_key,
                                   {{"", 10, Qt::red},
                                    {"no depth", host::undefinedValue, Qt::red},
                                    {"below the track", 99999, Qt::red},
                                    {" Top ", 20, Qt::red}})
                    .ok());
        const auto markers = m_wells->markers(m_key).value;
        QCOMPARE(markers.size(), 1);
        QCOMPARE(markers.first().name, QString("Top"));
    }

    void aRemovedWellIsAnError()
    {
        Well::MGR().get(idOf(m_key)); // the host may keep it in memory
        odsurvey::remove(m_key);
        QVERIFY(!m_wells->header(m_key).ok());
        QVERIFY(!m_wells->writeLog(m_key, smallLog("NEW", 1)).ok());
        QVERIFY(!m_wells->writeMarkers(m_key, {}).ok());
        QVERIFY(m_wells->list().value.isEmpty());
        QVERIFY(!QFile::exists(m_stem + "^1.wll"));
    }

    void aWellWithoutItsFileIsAnErrorWithTheHostsReason()
    {
        QVERIFY(QFile::remove(m_stem + ".well"));
        const QString error = m_wells->header(m_key).error;
        QVERIFY2(error.startsWith("Cannot read the well 15/9-F 1: "), qPrintable(error));
        QVERIFY2(error.contains("15_9-F_1.well"), qPrintable(error));
        QCOMPARE(m_wells->list().value.size(), 1);
    }

    void aLogThatCannotBeReadIsAnError()
    {
        const QByteArray whole = files::read(m_stem + "^2.wll");
        files::write(m_stem + "^2.wll", whole.left(whole.indexOf("\n!\n", 60) + 4));
        QCOMPARE(m_wells->logs(m_key).value.size(), 4);
        QVERIFY(!m_wells->log(m_key, 1).ok());
        QVERIFY(m_wells->log(m_key, 2).ok());
        QCOMPARE(m_wells->logs(m_key).value.at(1).name, QString("RHOB"));
    }

    void markersThatCannotBeReadAreAnError()
    {
        files::write(m_stem + ".wlm", "damaged");
        const auto damaged = m_wells->markers(m_key);
        QVERIFY2(damaged.error.startsWith("Cannot read the markers of the well 15/9-F 1: "),
                 qPrintable(damaged.error));
        QVERIFY(QFile::remove(m_stem + ".wlm"));
        const auto missing = m_wells->markers(m_key);
        QVERIFY2(missing.ok(), qPrintable(missing.error));
        QVERIFY(missing.value.isEmpty());
    }

    // The host counts the logs that it can read and would take the fourth file for the third.
    void noOtherLogIsWrittenOver()
    {
        files::write(m_stem + "^2.wll", "damaged");
        const auto before = files::snapshot(m_survey);
        for (const char *name : {"one sample", "NEW"})
            QVERIFY(!m_wells->writeLog(m_key, smallLog(name, 1)).ok());
        QCOMPARE(files::snapshot(m_survey), before);
    }

    void namesOfLogsAreToldApartAsByTheHost()
    {
        QVERIFY(m_wells->writeLog(m_key, smallLog("rhob", 5)).ok());
        QCOMPARE(m_wells->logs(m_key).value.size(), 5);
        QVERIFY(m_wells->writeLog(m_key, smallLog("RHOB", 6)).ok());
        QCOMPARE(m_wells->logs(m_key).value.size(), 5);
        QCOMPARE(m_wells->log(m_key, 1).value.values, (QVector<float>{6, 7}));
        QCOMPARE(m_wells->log(m_key, 4).value.values, (QVector<float>{5, 6}));
        Well::Data *loaded = Well::MGR().get(idOf(m_key));
        QCOMPARE(loaded->logs().size(), 5);
        QCOMPARE(loaded->logs().indexOf("rhob"), 4);
    }

    // The same well takes both again when the permissions are back: nothing else was in the way.
    void aLockedWellStaysAsItIs()
    {
        allowEverybody(m_survey);
        const auto allow = [this](int filePermissions) {
            for (const QString &file : {m_stem + "^1.wll", m_stem + ".wlm", m_stem + ".well"})
                QVERIFY(QFile::setPermissions(file, QFile::Permissions(filePermissions)));
        };
        allow(0x4444);
        QVERIFY(QFile::setPermissions(m_survey + "/WellInfo", QFile::Permissions(0x5555)));
        const auto before = files::snapshot(m_survey);
        QCOMPARE(writesUnprivileged(), QString("read"));
        QCOMPARE(files::snapshot(m_survey), before);
        allowEverybody(m_survey);
        allow(0x6666);
        QCOMPARE(writesUnprivileged(), QString("read, GR, NEW, markers"));
    }

    void writingLeavesNoFilesOfItsOwn()
    {
        const QStringList before = files::snapshot(m_survey).keys();
        QVERIFY(m_wells->writeLog(m_key, smallLog("GR", 1)).ok());
        QVERIFY(m_wells->writeMarkers(m_key, {{"Top", 10, Qt::red}}).ok());
        QCOMPARE(files::snapshot(m_survey).keys(), before);
    }

    void whatIsNoNumberIsUndefined()
    {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        constexpr float infinity = std::numeric_limits<float>::infinity();
        QVERIFY(!m_wells->writeLog(m_key, {"NONE", "gapi", {100, 200}, {nan, infinity}}).ok());
        QVERIFY(m_wells->writeLog(m_key, {"SOME", "gapi", {100, 200, 300, 400}, {nan, 5, -infinity, 7}}).ok());
        const QVector<host::LogInfo> logs = m_wells->logs(m_key).value;
        const host::LogData stored = m_wells->log(m_key, logs.size() - 1).value;
        QCOMPARE(stored.name, QString("SOME"));
        QCOMPARE(stored.depths, (QVector<float>{200, 300, 400})); // nothing undefined at the top
        QCOMPARE(stored.values.at(0), 5.0F);
        QVERIFY(host::isUndefined(stored.values.at(1)));
        QCOMPARE(stored.values.at(2), 7.0F);
    }

    void aLinkStaysALink()
    {
        const QTemporaryDir folder;
        for (const char *ending : {".wlm", "^1.wll"}) {
            const QString path = m_stem + ending;
            const QString target = folder.filePath(QStringLiteral("target") + ending);
            QVERIFY(QFile::rename(path, target));
            QVERIFY(QFile::link(target, path));
        }
        QVERIFY(m_wells->writeLog(m_key, smallLog("GR", 9)).ok());
        QVERIFY(m_wells->writeMarkers(m_key, {{"New", 500, Qt::red}}).ok());
        for (const char *ending : {".wlm", "^1.wll"})
            QVERIFY(QFileInfo(m_stem + ending).isSymLink());
        QCOMPARE(m_wells->log(m_key, 0).value.values, (QVector<float>{9, 10}));
        QVERIFY(files::read(folder.filePath("target.wlm")).contains("New"));
    }

    // The host's well manager locks a well so: its main file, and no other.
    void aWellThatTheHostLockedTakesNothing()
    {
        const MultiID id = idOf(m_key);
        const PtrMan<IOObj> entry = IOM().get(id);
        const PtrMan<Translator> translator = entry->createTranslator();
        QVERIFY(translator->implSetReadOnly(entry, true));
        QVERIFY(QFileInfo(m_stem + "^1.wll").permissions() & QFile::WriteOwner);
        allowEverybody(m_survey);
        const auto before = files::snapshot(m_survey);
        const int result = testing_support::runUnprivileged([this] {
            const QString log = m_wells->writeLog(m_key, smallLog("NEW", 1)).error;
            const QString markers = m_wells->writeMarkers(m_key, {{"Top", 10, Qt::red}}).error;
            const bool isRead = m_wells->header(m_key).ok() && m_wells->log(m_key, 0).ok();
            return (log.startsWith("Cannot write the log \"NEW\" of the well 15/9-F 1: the well is locked") ? 1 : 0)
                + (markers.startsWith("Cannot write the markers of the well 15/9-F 1: the well is locked") ? 2 : 0)
                + (isRead ? 4 : 0);
        });
        QCOMPARE(result, 7);
        QCOMPARE(files::snapshot(m_survey), before);
        QVERIFY(translator->implSetReadOnly(entry, false));
        QVERIFY(m_wells->writeLog(m_key, smallLog("NEW", 1)).ok());
        QVERIFY(m_wells->writeMarkers(m_key, {{"Top", 10, Qt::red}}).ok());
    }

    void markersThatAnotherProgramChangedAreMerged()
    {
        QVector<host::Marker> mine = m_wells->markers(m_key).value;
        survey::SurveyStore other(m_survey);
        QVector<host::Marker> theirs = other.markers(m_key).value;
        theirs.append({"Theirs", 700, Qt::green});
        QVERIFY(other.writeMarkers(m_key, theirs).ok());
        mine.append({"Mine", 600, Qt::red});
        (void)m_wells->markersLostByWriting(m_key, mine); // asked before each write
        QVERIFY(m_wells->writeMarkers(m_key, mine).ok());
        QCOMPARE(m_wells->markers(m_key).value.size(), 5);

        mine = m_wells->markers(m_key).value;
        theirs = other.markers(m_key).value;
        theirs.last().depth += 1;
        QVERIFY(other.writeMarkers(m_key, theirs).ok());
        mine.last().depth += 2;
        const host::Status refused = m_wells->writeMarkers(m_key, mine);
        QVERIFY2(refused.error.contains('"' + mine.last().name + '"'), qPrintable(refused.error));
    }

    void markersThatCannotBeReadAreNotWrittenOver()
    {
        files::write(m_stem + ".wlm", "damaged");
        QVERIFY(!m_wells->writeMarkers(m_key, {{"New", 500, Qt::red}}).ok());
        QCOMPARE(files::read(m_stem + ".wlm"), QByteArray("damaged"));
    }

    void aWriterOfAnotherProgramIsWaitedFor()
    {
        auto other = std::make_unique<base::FolderLock>(m_survey + "/WellInfo");
        std::atomic<bool> hasEnded{false};
        std::thread end([&] {
            QThread::msleep(200);
            hasEnded = true;
            other.reset();
        });
        const bool isWritten = m_wells->writeLog(m_key, smallLog("NEW", 1)).ok();
        const bool hasWaited = hasEnded;
        end.join();
        QVERIFY(isWritten);
        QVERIFY(hasWaited);
    }

    void aFullDiskLeavesWhatWasThere_data()
    {
        QTest::addColumn<bool>("isLoaded");
        QTest::newRow("well in the host's memory") << true;
        QTest::newRow("well on disk") << false;
    }

    void aFullDiskLeavesWhatWasThere()
    {
        QFETCH(bool, isLoaded);
        if (isLoaded)
            Well::MGR().get(idOf(m_key));
        const auto before = files::snapshot(m_survey);
        host::LogData large = surveycontents::wells().first().logs.first();
        for (int i = 0; i < 20000; ++i) {
            large.depths.append(large.depths.last() + 1);
            large.values.append(1);
        }
        QVector<host::Marker> many;
        for (int i = 0; i < 3000; ++i)
            many.append({QStringLiteral("Marker with quite a long name %1").arg(i), static_cast<float>(i), Qt::red});
        {
            const FullDisk full(180000);
            const host::Status status = m_wells->writeLog(m_key, large);
            QVERIFY2(status.error.startsWith("Cannot write the log \"GR\""), qPrintable(status.error));
            large.name = "NEW";
            QVERIFY(!m_wells->writeLog(m_key, large).ok());
            QVERIFY(!m_wells->writeMarkers(m_key, many).ok());
        }
        QCOMPARE(files::snapshot(m_survey), before);
        QCOMPARE(m_told, QStringList{});
        QCOMPARE(m_wells->logs(m_key).value.size(), 4);
        QCOMPARE(m_wells->log(m_key, 0).value.values.size(), 20000);
        QCOMPARE(m_wells->markers(m_key).value.size(), 3);
    }

private:
    // What someone who is not the system's manager can do with the well.
    QString writesUnprivileged()
    {
        const int done = testing_support::runUnprivileged([this] {
            const bool isRead = m_wells->header(m_key).ok() && m_wells->log(m_key, 0).ok();
            const bool isLog = m_wells->writeLog(m_key, smallLog("GR", 1)).ok();
            const bool isNew = m_wells->writeLog(m_key, smallLog("NEW", 1)).ok();
            const bool isMarkers = m_wells->writeMarkers(m_key, {{"Top", 10, Qt::red}}).ok();
            return (isRead ? 1 : 0) + (isLog ? 2 : 0) + (isNew ? 4 : 0) + (isMarkers ? 8 : 0);
        });
        const QStringList all{"read", "GR", "NEW", "markers"};
        QStringList names;
        for (int i = 0; i < all.size(); ++i)
            if (done & 1 << i)
                names.append(all.at(i));
        return names.join(", ");
    }

    QString m_survey;
    QString m_key;
    QString m_stem;
    QStringList m_told;
    std::unique_ptr<opendtect::OdWells> m_wells;
};

OD_TEST_MAIN(TestOpendTectWells)
#include "tst_opendtectwells.moc"
