#include "mainwin/reportwriter.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QDir>

namespace {

const QString logsTitle = QStringLiteral("Wells Logs Information");

void compareBox(const base::Box &box, base::BoxIcon icon, const QString &title, const QString &text)
{
    QCOMPARE(box.icon, icon);
    QCOMPARE(box.title, title);
    QCOMPARE(box.text, text);
    QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
}

QString cannotCreate(const QString &path)
{
    return QStringLiteral("Unable to create logs information file.\nPlease check file read/write permision.\n")
        + path;
}

/// Looks at the report files and at the cursor at the moment each box appears.
class WatchingAsker : public ScriptedAsker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        contentAtBox.append(QFileInfo::exists(watched) ? files::read(watched) : QByteArray());
        cursorAtBox.append(QGuiApplication::overrideCursor() != nullptr);
        return ScriptedAsker::show(box);
    }
    QString watched;
    QVector<QByteArray> contentAtBox;
    QVector<bool> cursorAtBox;
};

/// Remembers the cursor's shape whenever a log or markers are read.
class CursorWatchingHost : public MemoryHost
{
public:
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        look();
        return MemoryHost::log(key, index);
    }
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override
    {
        look();
        return MemoryHost::markers(key);
    }
    QVector<Qt::CursorShape> shapes;

private:
    void look()
    {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        shapes.append(cursor ? cursor->shape() : Qt::ArrowCursor);
    }
};

/// A host with a well whose second and further logs, and whose markers, cannot be read.
class BrokenLogsHost : public MemoryHost
{
public:
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        if (key == brokenWell && index > 0)
            return {{}, QStringLiteral("damaged")};
        return MemoryHost::log(key, index);
    }
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override
    {
        if (key == brokenWell)
            return {{}, QStringLiteral("damaged")};
        return MemoryHost::markers(key);
    }
    void showError(const QString &text) override
    {
        cursorAtError.append(QGuiApplication::overrideCursor() != nullptr);
        MemoryHost::showError(text);
    }
    QString brokenWell;
    QVector<bool> cursorAtError;
};

} // namespace

class tst_reportwriter : public QObject
{
    Q_OBJECT

private slots:
    void withoutWellsBothWarn()
    {
        ProjectFixture fixture;
        fixture.open();
        writeLogsReport(*fixture.launch);
        writeMarkersReport(*fixture.launch);
        QCOMPARE(fixture.asker.boxes.size(), 2);
        for (const base::Box &box : fixture.asker.boxes)
            compareBox(box, base::BoxIcon::Warning, logsTitle, QStringLiteral("Well(s) doesn't exists."));
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
    }

    void logsReportWritesOneFileAWell()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR"), QStringLiteral("DT")});
        fixture.addWell(QStringLiteral("B"), {QStringLiteral("SP")});
        fixture.host.storedWells[1].logs[0].values = {1, host::undefinedValue, 3};
        fixture.open();
        writeLogsReport(*fixture.launch);
        const QByteArray header = "Curve Name      Start Depth End Depth  Break Zone Depth\n";
        QCOMPARE(files::read(fixture.path(QStringLiteral("/A_logsInfo.txt"))),
                 header
                     + "GR              100.0000     300.0000     0.0000      \n"
                       "DT              100.0000     300.0000     0.0000      \n");
        QCOMPARE(files::read(fixture.path(QStringLiteral("/B_logsInfo.txt"))),
                 header + "SP              100.0000     300.0000     200.0000    \n");
        QCOMPARE(fixture.asker.boxes.size(), 1);
        compareBox(fixture.asker.boxes.first(), base::BoxIcon::Information, logsTitle, QStringLiteral("Done !"));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void aWellWithoutLogsGetsAHeaderAndAWarning()
    {
        ProjectFixture fixture;
        WatchingAsker asker;
        fixture.launch = std::make_unique<ProjectData>(fixture.host, asker);
        fixture.addWell(QStringLiteral("Empty"));
        fixture.addWell(QStringLiteral("Full"), {QStringLiteral("GR")});
        fixture.open();
        asker.watched = fixture.path(QStringLiteral("/Empty_logsInfo.txt"));
        writeLogsReport(*fixture.launch);
        QCOMPARE(asker.boxes.size(), 2);
        compareBox(asker.boxes.at(0), base::BoxIcon::Warning, logsTitle,
                   QStringLiteral("logs are not available for this well :Empty"));
        QCOMPARE(asker.boxes.at(1).text, QStringLiteral("Done !"));
        QCOMPARE(asker.contentAtBox.at(0), QByteArray("Curve Name      Start Depth End Depth  Break Zone Depth\n"));
        QCOMPARE(asker.cursorAtBox, (QVector<bool>{false, false}));
        QVERIFY(QFileInfo::exists(fixture.path(QStringLiteral("/Full_logsInfo.txt"))));
    }

    void anEarlierReportIsReplaced()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR")});
        fixture.open();
        files::write(fixture.path(QStringLiteral("/A_logsInfo.txt")), QByteArray(5000, 'x'));
        writeLogsReport(*fixture.launch);
        QVERIFY(files::read(fixture.path(QStringLiteral("/A_logsInfo.txt"))).startsWith("Curve Name"));
    }

    void aFileThatCannotBeMadeEndsTheReportThere()
    {
        ProjectFixture fixture;
        for (const char *name : {"A", "B", "C"})
            fixture.addWell(QLatin1String(name), {QStringLiteral("GR")});
        fixture.open();
        QDir().mkpath(fixture.path(QStringLiteral("/B_logsInfo.txt"))); // a folder in the file's place
        writeLogsReport(*fixture.launch);
        QVERIFY(QFileInfo(fixture.path(QStringLiteral("/A_logsInfo.txt"))).isFile());
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/C_logsInfo.txt"))));
        QCOMPARE(fixture.asker.boxes.size(), 1);
        compareBox(fixture.asker.boxes.first(), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/B_logsInfo.txt"))));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void aWellsNameIsNoPath()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("15/9-F-1"), {QStringLiteral("GR")});
        fixture.open();
        writeLogsReport(*fixture.launch);
        QVERIFY(QFileInfo(fixture.path(QStringLiteral("/15%2F9-F-1_logsInfo.txt"))).isFile());
    }

    void aWellThatVanishedIsReportedByTheHostAndTheReportGoesOn()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR"), QStringLiteral("DT")});
        fixture.addWell(QStringLiteral("B"), {QStringLiteral("GR")});
        fixture.open();
        fixture.host.storedWells.removeFirst();
        writeLogsReport(*fixture.launch);
        // One box for the well, not one for each log.
        QCOMPARE(fixture.host.errors, QStringList{QStringLiteral("Cannot get data for this well : A")});
        QCOMPARE(files::read(fixture.path(QStringLiteral("/A_logsInfo.txt"))),
                 QByteArray("Curve Name      Start Depth End Depth  Break Zone Depth\n"
                            "GR              0.0000       0.0000       0.0000      \n"
                            "DT              0.0000       0.0000       0.0000      \n"));
        QVERIFY(files::read(fixture.path(QStringLiteral("/B_logsInfo.txt"))).contains("GR              100.0000"));
    }

    void wellsOfOneNameHaveTheirOwnLogsAndMarkers()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("DT")}, {QStringLiteral("Base")});
        fixture.host.storedWells[1].header.x = 7;
        fixture.host.storedWells[1].logs[0].depths = {1, 2, 4};
        fixture.open();
        writeLogsReport(*fixture.launch);
        // One file for the name; the second well has the last word.
        QCOMPARE(files::read(fixture.path(QStringLiteral("/A_logsInfo.txt"))),
                 QByteArray("Curve Name      Start Depth End Depth  Break Zone Depth\n"
                            "DT              1.0000       4.0000       0.0000      \n"));
        writeMarkersReport(*fixture.launch);
        const QList<QByteArray> lines =
            files::read(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))).split('\n');
        QCOMPARE(lines.size(), 4);
        QVERIFY(lines.at(1).contains("500000.50") && lines.at(1).contains("Top"));
        QVERIFY(lines.at(2).contains("7.00 ") && lines.at(2).contains("Base"));
    }

    void logsThatCannotBeReadAreToldInOneBoxAWellWithoutTheWaitCursor()
    {
        ProjectFixture fixture;
        BrokenLogsHost host;
        host.survey = fixture.survey.path();
        host.dataFolder = fixture.host.dataFolder;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR"), QStringLiteral("DT"), QStringLiteral("SP")},
                        {QStringLiteral("Top")});
        fixture.addWell(QStringLiteral("B"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        host.storedWells = fixture.host.storedWells;
        fixture.launch = std::make_unique<ProjectData>(host, fixture.asker);
        fixture.open();
        host.brokenWell = host.storedWells.at(0).key;
        writeLogsReport(*fixture.launch);
        QCOMPARE(host.errors, QStringList{QStringLiteral("Cannot get data for the selected well\nA: DT, SP")});
        QCOMPARE(files::read(fixture.path(QStringLiteral("/A_logsInfo.txt"))),
                 QByteArray("Curve Name      Start Depth End Depth  Break Zone Depth\n"
                            "GR              100.0000     300.0000     0.0000      \n"
                            "DT              0.0000       0.0000       0.0000      \n"
                            "SP              0.0000       0.0000       0.0000      \n"));
        writeMarkersReport(*fixture.launch);
        QCOMPARE(host.errors.size(), 2);
        QCOMPARE(host.errors.last(), QStringLiteral("Cannot get data for the selected well\nA"));
        QCOMPARE(host.cursorAtError, (QVector<bool>{false, false}));
        QCOMPARE(files::read(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))).count('\n'), 2); // B's
    }

    void markersReportListsAllMarkersOfAllWells()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top"), QStringLiteral("Base")});
        fixture.addWell(QStringLiteral("None"));
        fixture.addWell(QStringLiteral("B"), {}, {QStringLiteral("Top")});
        fixture.open();
        writeMarkersReport(*fixture.launch);
        QCOMPARE(files::read(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))),
                 QByteArray("Well Name       X          Y          MD         TVDSS      Marker Name    \n"
                            "A               500000.50  6000000.25 150.00     125.00     Top            \n"
                            "A               500000.50  6000000.25 250.00     225.00     Base           \n"
                            "B               500000.50  6000000.25 150.00     125.00     Top            \n"));
        QCOMPARE(fixture.asker.boxes.size(), 1);
        compareBox(fixture.asker.boxes.first(), base::BoxIcon::Information,
                   QStringLiteral("Wells Markers Information"), QStringLiteral("Done !"));
        QVERIFY(fixture.host.errors.isEmpty());
    }

    void markersReportThatCannotBeMadeWarnsBeforeReading()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {}, {QStringLiteral("Top")});
        fixture.open();
        QDir().mkpath(fixture.path(QStringLiteral("/Well_Markers_Info.txt")));
        fixture.host.storedWells[0].isUnreadable = true; // reading it would show the host's error box
        writeMarkersReport(*fixture.launch);
        QCOMPARE(fixture.asker.boxes.size(), 1);
        compareBox(fixture.asker.boxes.first(), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
        QVERIFY(fixture.host.errors.isEmpty());
    }

    void logsReportThatCannotBeMadeWarnsBeforeReading()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR")});
        fixture.open();
        QDir().mkpath(fixture.path(QStringLiteral("/A_logsInfo.txt")));
        fixture.host.storedWells[0].isUnreadable = true;
        writeLogsReport(*fixture.launch);
        QCOMPARE(fixture.asker.boxes.size(), 1);
        compareBox(fixture.asker.boxes.first(), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/A_logsInfo.txt"))));
        QVERIFY(fixture.host.errors.isEmpty());
    }

    void aWellThatVanishedHasNoMarkersAndTheReportGoesOn()
    {
        ProjectFixture fixture;
        for (const char *name : {"A", "B"})
            fixture.addWell(QLatin1String(name), {}, {QStringLiteral("Top"), QStringLiteral("Base")});
        fixture.open();
        fixture.host.storedWells.removeFirst();
        writeMarkersReport(*fixture.launch);
        QCOMPARE(fixture.host.errors, QStringList{QStringLiteral("Cannot get data for this well : A")});
        const QList<QByteArray> lines =
            files::read(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))).split('\n');
        QCOMPARE(lines.size(), 4); // header, two markers of B, nothing behind the last line end
        QVERIFY(lines.at(1).startsWith("B  "));
        QVERIFY(lines.at(2).startsWith("B  "));
    }

    void aProjectFolderThatIsGoneGivesTheWarnings()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        fixture.open();
        QVERIFY(QDir(fixture.path({})).removeRecursively());
        writeLogsReport(*fixture.launch);
        writeMarkersReport(*fixture.launch);
        QCOMPARE(fixture.asker.boxes.size(), 2);
        compareBox(fixture.asker.boxes.at(0), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/A_logsInfo.txt"))));
        compareBox(fixture.asker.boxes.at(1), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
        QVERIFY(!QFileInfo::exists(fixture.path({})));
    }

    void aDiskThatFailsLeavesTheEarlierReports_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &failing : failingSteps)
            if (failing.step != FailingDisk::Flush)
                QTest::newRow(failing.name) << static_cast<int>(failing.step);
    }

    void aDiskThatFailsLeavesTheEarlierReports()
    {
        QFETCH(int, step);
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        fixture.addWell(QStringLiteral("B"), {QStringLiteral("GR")});
        fixture.open();
        files::write(fixture.path(QStringLiteral("/A_logsInfo.txt")), "earlier");
        const auto before = files::snapshot(fixture.path({}));
        {
            FailingDisk disk(static_cast<FailingDisk::Step>(step));
            const base::ScopedFileSystemCalls inForce(disk);
            writeLogsReport(*fixture.launch);
            writeMarkersReport(*fixture.launch);
        }
        QVERIFY(files::snapshot(fixture.path({})) == before); // no half file, no trace
        QCOMPARE(fixture.asker.boxes.size(), 2); // the logs report ended at the first well
        compareBox(fixture.asker.boxes.at(0), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/A_logsInfo.txt"))));
        compareBox(fixture.asker.boxes.at(1), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void allReportsAreFlushedTogetherAtTheEnd()
    {
        ProjectFixture fixture;
        for (const char *name : {"A", "B", "C"})
            fixture.addWell(QLatin1String(name), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        fixture.open();
        FailingDisk disk;
        const base::ScopedFileSystemCalls inForce(disk);
        writeLogsReport(*fixture.launch);
        QCOMPARE(disk.flushes, 0);
        QCOMPARE(disk.commonFlushes, 1);
        QCOMPARE(disk.writtenAtCommonFlush, 3);
        writeMarkersReport(*fixture.launch);
        QCOMPARE(disk.flushes, 0);
        QCOMPARE(disk.commonFlushes, 2);
        QCOMPARE(disk.writtenAtCommonFlush, 4);
    }

    void aFlushThatFailsIsNotDone()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        fixture.open();
        FailingDisk disk(FailingDisk::Flush);
        const base::ScopedFileSystemCalls inForce(disk);
        writeLogsReport(*fixture.launch);
        writeMarkersReport(*fixture.launch);
        QCOMPARE(fixture.asker.boxes.size(), 2);
        compareBox(fixture.asker.boxes.at(0), base::BoxIcon::Warning, logsTitle, cannotCreate(fixture.path({})));
        compareBox(fixture.asker.boxes.at(1), base::BoxIcon::Warning, logsTitle,
                   cannotCreate(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
    }

    void eachWellIsAskedForAndANoEndsInSilence()
    {
        ProjectFixture fixture;
        for (const char *name : {"A", "B", "C"})
            fixture.addWell(QLatin1String(name), {QStringLiteral("GR")}, {QStringLiteral("Top")});
        fixture.open();
        int asked = 0;
        const auto always = [&asked] {
            ++asked;
            return !QGuiApplication::overrideCursor(); // events may put up a box
        };
        writeLogsReport(*fixture.launch, always);
        QCOMPARE(asked, 3);
        writeMarkersReport(*fixture.launch, always);
        QCOMPARE(asked, 6);
        QCOMPARE(fixture.asker.boxes.size(), 2);
        QVERIFY(QFile::remove(fixture.path(QStringLiteral("/C_logsInfo.txt"))));
        QVERIFY(QFile::remove(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
        asked = 0;
        const auto twice = [&asked] { return ++asked <= 2; };
        writeLogsReport(*fixture.launch, twice);
        QCOMPARE(asked, 3);
        asked = 0;
        writeMarkersReport(*fixture.launch, twice);
        QCOMPARE(asked, 3);
        QCOMPARE(fixture.asker.boxes.size(), 2); // none more
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/C_logsInfo.txt"))));
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))));
    }

    void theWaitCursorIsShownWhileWellsAreRead()
    {
        ProjectFixture fixture;
        CursorWatchingHost host;
        host.survey = fixture.survey.path();
        host.dataFolder = fixture.host.dataFolder;
        fixture.addWell(QStringLiteral("A"), {QStringLiteral("GR"), QStringLiteral("DT")}, {QStringLiteral("Top")});
        host.storedWells = fixture.host.storedWells;
        fixture.launch = std::make_unique<ProjectData>(host, fixture.asker);
        fixture.open();
        host.shapes.clear();
        writeLogsReport(*fixture.launch);
        QCOMPARE(host.shapes, QVector<Qt::CursorShape>(2, Qt::WaitCursor));
        host.shapes.clear();
        writeMarkersReport(*fixture.launch);
        QCOMPARE(host.shapes, QVector<Qt::CursorShape>(1, Qt::WaitCursor));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void wellsAndLogsAndMarkersKeepTheirOrder()
    {
        ProjectFixture fixture;
        WatchingAsker asker;
        fixture.launch = std::make_unique<ProjectData>(fixture.host, asker);
        for (const char *name : {"B", "a", "C"})
            fixture.addWell(QLatin1String(name), {}, {QStringLiteral("Z"), QStringLiteral("Y")});
        fixture.open();
        writeLogsReport(*fixture.launch);
        QStringList texts;
        for (const base::Box &box : qAsConst(asker.boxes))
            texts.append(box.text);
        const QString none = QStringLiteral("logs are not available for this well :");
        QCOMPARE(texts,
                 QStringList({none + QLatin1Char('a'), none + QLatin1Char('B'), none + QLatin1Char('C'),
                              QStringLiteral("Done !")}));
        writeMarkersReport(*fixture.launch);
        QStringList rows;
        for (const QByteArray &line : files::read(fixture.path(QStringLiteral("/Well_Markers_Info.txt"))).split('\n'))
            rows.append(QString::fromUtf8(line.left(1) + line.mid(60).trimmed()));
        QCOMPARE(rows,
                 QStringList({QStringLiteral("WMarker Name"), QStringLiteral("aZ"), QStringLiteral("aY"),
                              QStringLiteral("BZ"), QStringLiteral("BY"), QStringLiteral("CZ"), QStringLiteral("CY"),
                              QString()}));
    }
};

LORVA_TEST_MAIN(tst_reportwriter)
#include "tst_reportwriter.moc"
