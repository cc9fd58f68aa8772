#include "templates/templatestore.h"

#include "base/filesystemcalls.h"
#include "datastore/project.h"
#include "datastore/projectseeds.h"
#include "support/badbytes.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/unprivileged.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray trackOf(const QByteArray &curve)
{
    return "Linear\nGamma|" + curve + "|0|1|#000000|0,#ffffff|0,#ffffff|None|None|0|0\n";
}

TemplateCurveRow row()
{
    TemplateCurveRow result;
    result.group = "Gamma";
    result.curve = "GR";
    result.minimum = "0.00";
    result.maximum = "200.00";
    return result;
}

const QByteArray rowBytes =
    "Linear\nGamma | GR | 0.00 | 200.00 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | "
    "#000000 | 1 | Circle\n";

} // namespace

class tst_templatestore : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = {};
        for (const char *name : {"Correlations", "CurveGroups", "DefaultLogs", "Templates/Global"})
            QVERIFY(QDir().mkpath(m_folder->filePath(QString("WLC/") + name)));
        openProjectFolder(m_folder->path(), &m_project);
    }

    void foldersAreCalledAfterWellAndTemplate()
    {
        const QString templates = m_folder->path() + "/WLC/Templates/";
        QCOMPARE(templateFolder(m_project, "My template", "Well 1"), templates + "Well 1/My template");
        QCOMPARE(globalTemplateFolder(m_project, "My template"), templates + "Global/My template");
        QCOMPARE(templateFolder(m_project, "T", "15/9-F-1"), templates + "15%2F9-F-1/T");
        QCOMPARE(templateFolder(m_project, "T", "Global"), templates + "%47lobal/T");
        QCOMPARE(templateFolder(m_project, "T", "%47lobal"), templates + "%2547lobal/T");
        QCOMPARE(templateFolder(m_project, "T", "global"), templates + "global/T");
    }

    void aWellWithoutANameIsNotTheGlobalOne()
    {
        seedProject(m_project.projectFolder);
        openProjectFolder(m_folder->path(), &m_project);
        for (const QString &nameless : {QString(), QString("")}) {
            QCOMPARE(QFileInfo(templateFolder(m_project, "T", nameless)).path(),
                     wellTemplatesFolder(m_project, nameless));
            QVERIFY(wellTemplatesFolder(m_project, nameless) != templates("Global"));
            QCOMPARE(QFileInfo(wellTemplatesFolder(m_project, nameless)).path() + '/', templates(""));
            QVERIFY(wellTemplateNames(m_project, nameless).isEmpty());
        }
        QCOMPARE(wellTemplatesFolder(m_project, QString()), wellTemplatesFolder(m_project, QString("")));
    }

    void theTemplatesOfAWellAreItsFolders()
    {
        for (const char *name : {"b", "A", "c d", ".mine", ".lorva-abcdef"})
            QVERIFY(QDir().mkpath(templates(QString("Well 1/") + name)));
        files::write(templates("Well 1/file"), "");
        QVERIFY(QDir().mkpath(templates("Well 2/other")));
        QCOMPARE(wellTemplateNames(m_project, "Well 1"), QStringList({".mine", "A", "b", "c d"}));
        QCOMPARE(wellTemplateNames(m_project, "Well 2"), QStringList("other"));
    }

    void aMissingFolderIsAnEmptyList()
    {
        QCOMPARE(wellTemplateNames(m_project, "nowhere"), QStringList());
        QVERIFY(!QFile::exists(templates("nowhere")));
        QVERIFY(QDir().rmdir(templates("Global")));
        QCOMPARE(globalTemplateNames(m_project), QStringList());
        files::write(templates("Global"), "a file");
        QCOMPARE(globalTemplateNames(m_project), QStringList());
    }

    void theGlobalTemplatesAreTheirFolders()
    {
        seedProject(m_project.projectFolder);
        QVERIFY(QDir().mkpath(templates("Global/Another")));
        files::write(templates("Global/file"), "");
        QStringList names = globalTemplateNames(m_project);
        names.sort(); // they come as the folder is read
        QCOMPARE(names, QStringList({"Another", "Default", "Simple"}));
    }

    void aWellCalledGlobalHasItsOwnFolder()
    {
        seedProject(m_project.projectFolder);
        QVERIFY(QDir().mkpath(templates("%47lobal/Mine")));
        QCOMPARE(wellTemplateNames(m_project, "Global"), QStringList("Mine"));
        files::write(templates("%47lobal/Mine/Track_1.txt"), trackOf("mine"));
        QCOMPARE(loadTemplate(m_project, "Mine", "Global").size(), 1);
    }

    void aWellCalledLikeALeftoverKeepsItsTemplates()
    {
        const TemplateId which = TemplateId::ofWell(".lorva-abcDEF", "Mine");
        QVERIFY(saveTemplate(m_project, which, {trackOf("mine")}).ok());
        openProjectFolder(m_folder->path(), &m_project); // the next launch, which takes leftovers away
        QCOMPARE(wellTemplateNames(m_project, ".lorva-abcDEF"), QStringList("Mine"));
    }

    void tracksComeInTheOrderOfTheirNumbers()
    {
        const QStringList expected{"Track_1",
                                   "Track_2",
                                   "Track_009",
                                   "Track_10",
                                   "Track_2147483647",
                                   "Track_2147483648",
                                   "Track_9999999999",
                                   "Track_12345678901234567890",
                                   "Another",
                                   "Track_ 4",
                                   "Track_+3",
                                   "Track_-1",
                                   "Track_",
                                   "Track_1x",
                                   "Track_x",
                                   QString("Track_\u0663"), // a digit, but not one of ours
                                   "notes"};
        for (const QString &name : expected)
            files::write(templates(QString("W/T/%1.txt").arg(name)), trackOf("x"));
        QStringList names;
        for (const TrackInfo &track : loadTemplate(m_project, "T", "W")) {
            QCOMPARE(track.curves.size(), 1);
            names.append(track.name);
        }
        QCOMPARE(names, expected);
    }

    void everyRegularFileIsATrack()
    {
        files::write(templates("W/T/Track_1.txt"), trackOf("A"));
        files::write(templates("W/T/Track_2"), trackOf("B"));
        files::write(templates("W/T/Track_3.old.txt"), trackOf("C"));
        files::write(templates("W/T/Track_4.txt"), "");
        files::write(templates("W/T/.hidden.txt"), trackOf("D"));
        QVERIFY(QDir().mkpath(templates("W/T/Track_5.txt")));
        const QVector<TrackInfo> tracks = loadTemplate(m_project, "T", "W");
        QCOMPARE(tracks.size(), 4);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(tracks.at(i).name, QString("Track_%1").arg(i + 1)); // up to the first "."
        QCOMPARE(tracks.at(3).type, int(DepthTrack));
    }

    void aGlobalTemplateWinsOverTheWellsOwn()
    {
        files::write(templates("Global/X/Track_1.txt"), trackOf("global"));
        files::write(templates("W/X/Track_1.txt"), trackOf("own"));
        files::write(templates("W/Y/Track_1.txt"), trackOf("own"));
        m_project.globalTemplateNames = QStringList("X");
        QCOMPARE(loadTemplate(m_project, "X", "W").value(0).curves.value(0).curve, QString("global"));
        QCOMPARE(loadTemplate(m_project, "Y", "W").value(0).curves.value(0).curve, QString("own"));
    }

    void theListOfGlobalTemplatesDecides()
    {
        files::write(templates("Global/X/Track_1.txt"), trackOf("global"));
        files::write(templates("W/X/Track_1.txt"), trackOf("own"));
        QCOMPARE(loadTemplate(m_project, "X", "W").value(0).curves.value(0).curve, QString("own"));
        m_project.globalTemplateNames = QStringList("Gone");
        files::write(templates("W/Gone/Track_1.txt"), trackOf("own"));
        QVERIFY(loadTemplate(m_project, "Gone", "W").isEmpty());
    }

    void aMissingTemplateIsEmpty()
    {
        QVERIFY(loadTemplate(m_project, "T", "W").isEmpty());
        QVERIFY(!QFile::exists(templates("W")));
    }

    void theSeededTemplatesLoad()
    {
        seedProject(m_project.projectFolder);
        openProjectFolder(m_folder->path(), &m_project);
        const QVector<TrackInfo> tracks = loadTemplate(m_project, "Default", "W");
        QCOMPARE(tracks.size(), 4);
        QStringList shape;
        for (const TrackInfo &track : tracks) {
            shape.append(QString("%1 %2").arg(track.name).arg(track.type));
            for (const TemplateCurveInfo &curve : track.curves) {
                shape.append(QString("%1/%2 %3 %4 %5 %6 %7")
                                 .arg(curve.group, curve.curve)
                                 .arg(curve.minimum)
                                 .arg(curve.maximum)
                                 .arg(curve.color.isValid() ? curve.color.name() : "none")
                                 .arg(curve.penStyle)
                                 .arg(curve.penWidth));
                QVERIFY(!curve.isCalibrationShown && !curve.isLeftFillOn && !curve.isRightFillOn);
            }
        }
        QCOMPARE(
            shape,
            QStringList({"Track_1 0", "Gamma/Default 0 200 #0e6f21 1 2", "Sp/Default -100 100 #120202 1 2",
                         "Caliper/Default 6 16 #120202 2 2", "Track_2 2", "Depth/MD 0 0 none 1 1", "Track_3 1",
                         "Resistivity/Default 0.1 2000 #d01212 1 2", "Resistivity/LLS 0.1 2000 #4046fa 2 2",
                         "Resistivity/MSFL 0.1 2000 #1d0f0f 1 2", "Track_4 0", "Density/Default 1.8 2.8 #d21414 1 2",
                         "Porosity/Default 0.6 0 #2648ef 2 2", "Sonic/Default 40 240 #2648ef 1 2"}));
        QCOMPARE(loadTemplate(m_project, "Simple", "W").size(), 4);
    }

    void aTrackFileIsReadByItsPath()
    {
        files::write(templates("W/T/Track_3.txt"), trackOf("GR"));
        const TrackInfo track = readTrackFile(m_project, templates("W/T/Track_3.txt"));
        QCOMPARE(track.name, QString("Track_3"));
        QCOMPARE(track.type, int(LinearTrack));
        QCOMPARE(track.curves.value(0).curve, QString("GR"));
    }

    void aFileThatCannotBeOpenedIsAnEmptyTrack()
    {
        for (const QString &path : {templates("W/T/Track_1.txt"), templates("Global")}) {
            const TrackInfo track = readTrackFile(m_project, path);
            QVERIFY(track.name.isNull() || track.name.isEmpty());
            QVERIFY(track.curves.isEmpty());
        }
    }

    void anUnreadableTrackOfATemplateIsEmpty()
    {
        files::write(templates("W/T/Track_1.txt"), trackOf("A"));
        files::write(templates("W/T/Track_2.txt"), trackOf("B"));
        QVERIFY(QFile::setPermissions(templates("W/T/Track_1.txt"), QFile::Permissions()));
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     const QVector<TrackInfo> tracks = loadTemplate(m_project, "T", "W");
                     const bool isRight = tracks.size() == 2 && tracks.at(0).name.isEmpty()
                         && tracks.at(0).curves.isEmpty() && tracks.at(1).name == "Track_2";
                     return isRight ? 0 : 1;
                 }),
                 0);
    }

    void aTrackIsWritten()
    {
        QVERIFY(QDir().mkpath(templates("W/T")));
        QVERIFY(QDir().mkpath(templates("Global/T")));
        QVERIFY(writeTrack(templateFolder(m_project, "T", "W"), "Track_1", "Linear", {row()}));
        QCOMPARE(files::read(templates("W/T/Track_1.txt")), rowBytes);
        QVERIFY(writeTrack(globalTemplateFolder(m_project, "T"), "Track_7", "Depth", {}));
        QCOMPARE(files::read(templates("Global/T/Track_7.txt")), QByteArray("Depth\n"));
    }

    void anOldTrackIsReplacedAsAWhole()
    {
        files::write(templates("W/T/Track_1.txt"), QByteArray(100000, 'x'));
        QVERIFY(writeTrack(templateFolder(m_project, "T", "W"), "Track_1", "Linear", {row()}));
        QCOMPARE(files::read(templates("W/T/Track_1.txt")), rowBytes);
        QCOMPARE(files::snapshot(templates("W/T")).size(), 1);
    }

    void theTemplateFolderIsNotMade()
    {
        QVERIFY(!writeTrack(templateFolder(m_project, "T", "W"), "Track_1", "Linear", {row()}));
        QVERIFY(!QFile::exists(templates("W")));
    }

    void aFailingDiskIsSilentAndTheOldTrackStays_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &row : failingSteps)
            QTest::newRow(row.name) << int(row.step);
    }

    void aFailingDiskIsSilentAndTheOldTrackStays()
    {
        QFETCH(int, step);
        files::write(templates("W/T/Track_1.txt"), "old");
        FailingDisk disk(static_cast<FailingDisk::Step>(step));
        const base::ScopedFileSystemCalls scope(disk);
        QVERIFY(!writeTrack(templateFolder(m_project, "T", "W"), "Track_1", "Linear", {row()}));
        QVERIFY(!writeTrack(templateFolder(m_project, "T", "W"), "Track_2", "Linear", {row()}));
        QCOMPARE(files::snapshot(templates("W/T")).size(), 1);
        QCOMPARE(files::read(templates("W/T/Track_1.txt")), QByteArray("old"));
    }

    void aFolderInPlaceOfTheTrackStays()
    {
        QVERIFY(QDir().mkpath(templates("W/T/Track_1.txt")));
        QVERIFY(!writeTrack(templateFolder(m_project, "T", "W"), "Track_1", "Linear", {row()}));
        QVERIFY(QFileInfo(templates("W/T/Track_1.txt")).isDir());
    }

    void aFileInPlaceOfAWellsFolderIsNoTemplates()
    {
        files::write(templates("W"), "a file");
        QVERIFY(wellTemplateNames(m_project, "W").isEmpty());
        QVERIFY(loadTemplate(m_project, "T", "W").isEmpty());
        QVERIFY(!writeTrack(templateFolder(m_project, "T", "W"), "Track_1", "Linear", {row()}));
        QCOMPARE(files::read(templates("W")), QByteArray("a file"));
    }

    void linksInsideTheSurveyAreFollowed()
    {
        const QString inside = m_folder->filePath("elsewhere");
        files::write(inside + "/T/Track_1.txt", trackOf("elsewhere"));
        files::write(inside + "/track", trackOf("linked"));
        QVERIFY(QDir().mkpath(templates("W/Own")));
        QVERIFY(QFile::link(inside + "/T", templates("W/Linked")));
        QVERIFY(QFile::link(inside + "/track", templates("W/Own/Track_1.txt")));
        QCOMPARE(wellTemplateNames(m_project, "W"), QStringList({"Linked", "Own"}));
        QCOMPARE(loadTemplate(m_project, "Linked", "W").value(0).curves.value(0).curve, QString("elsewhere"));
        QCOMPARE(loadTemplate(m_project, "Own", "W").value(0).curves.value(0).curve, QString("linked"));
    }

    void linksOutOfTheSurveyAreLeftAlone()
    {
        const QTemporaryDir outside;
        files::write(outside.filePath("T/Track_1.txt"), trackOf("outside"));
        files::write(outside.filePath("track"), trackOf("outside"));
        QVERIFY(QDir().mkpath(templates("W/Own")));
        QVERIFY(QFile::link(outside.filePath("T"), templates("W/Linked")));
        QVERIFY(QFile::link("/no such folder", templates("W/Broken")));
        QVERIFY(QFile::link(outside.filePath("track"), templates("W/Own/Track_1.txt")));
        QVERIFY(QFile::link("/no such file", templates("W/Own/Track_2.txt")));
        const auto before = files::snapshot(outside.path());
        QCOMPARE(wellTemplateNames(m_project, "W"), QStringList({"Own"}));
        QVERIFY(loadTemplate(m_project, "Linked", "W").isEmpty());
        QVERIFY(loadTemplate(m_project, "Broken", "W").isEmpty());
        QVERIFY(loadTemplate(m_project, "Own", "W").isEmpty());
        QCOMPARE(files::snapshot(outside.path()), before);
    }

    void aReadOnlyFolderIsSilent()
    {
        QVERIFY(QDir().mkpath(templates("W/T")));
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(templates("W/T"), QFile::Permissions(0x5555)));
        QCOMPARE(testing_support::runUnprivileged([this] {
                     return writeTrack(templateFolder(m_project, "T", "W"), "Track_1", "Linear", {row()}) ? 1 : 0;
                 }),
                 0);
        QVERIFY(files::snapshot(templates("W/T")).isEmpty());
    }

    void whatIsListedCanBeLoaded()
    {
        const QStringList names{"a%20b", "%2F", "%", "50%", "%FF", "a\\b", "a\tb", " x ", "Größe", QString(250, 'n')};
        for (const QString &name : names) {
            files::write(templates("W/" + name + "/Track_1.txt"), trackOf("own"));
            files::write(templates("Global/" + name + "!/Track_1.txt"), trackOf("global"));
        }
        m_project.globalTemplateNames = globalTemplateNames(m_project);
        QStringList listed = wellTemplateNames(m_project, "W");
        QCOMPARE(listed.size(), names.size());
        for (const QString &name : listed)
            QCOMPARE(loadTemplate(m_project, name, "W").value(0).curves.value(0).curve, QString("own"));
        QCOMPARE(m_project.globalTemplateNames.size(), names.size());
        for (const QString &name : qAsConst(m_project.globalTemplateNames))
            QCOMPARE(loadTemplate(m_project, name, "W").value(0).curves.value(0).curve, QString("global"));
    }

    void hostileNamesStayInTheFolder()
    {
        files::write(m_folder->filePath("WLC/x/Track_1.txt"), trackOf("outside"));
        files::write(templates("x/Track_1.txt"), trackOf("outside"));
        files::write(templates("Track_1.txt"), trackOf("outside"));
        files::write(templates("Global/Track_1.txt"), trackOf("outside"));
        const auto before = files::snapshot(m_folder->path());
        for (const QString &name : badbytes::names()) {
            QVERIFY(loadTemplate(m_project, name, "W").isEmpty());
            QVERIFY(loadTemplate(m_project, "T", name).isEmpty());
            QVERIFY(!writeTrack(globalTemplateFolder(m_project, name), "Track_1", "Linear", {}));
            QVERIFY(!writeTrack(templateFolder(m_project, "T", name), "Track_1", "Linear", {}));
            QVERIFY(wellTemplateNames(m_project, name).isEmpty());
            const QString folder = templateFolder(m_project, name, name);
            QVERIFY(folder.startsWith(templates("")));
            QCOMPARE(folder.mid(templates("").size()).count('/'), 1);
            QCOMPARE(QDir::cleanPath(folder), folder);
        }
        QVERIFY(files::snapshot(m_folder->path()) == before);
    }

    void hostileWellsHaveTheirTemplates()
    {
        QStringList wells = badbytes::names();
        wells << "Global"
              << "%47lobal";
        int number = 0;
        for (const QString &well : wells) {
            QVERIFY(QDir().mkpath(templateFolder(m_project, "T", well)));
            TemplateCurveRow own = row();
            own.curve = QString::number(++number);
            QVERIFY(writeTrack(templateFolder(m_project, "T", well), "Track_1", "Linear", {own}));
        }
        number = 0;
        for (const QString &well : wells) {
            QCOMPARE(wellTemplateNames(m_project, well), QStringList("T"));
            QCOMPARE(loadTemplate(m_project, "T", well).value(0).curves.value(0).curve, QString::number(++number));
        }
        QVERIFY(globalTemplateNames(m_project).isEmpty());
    }

    void aHostileTrackNameStaysInTheTemplate()
    {
        QVERIFY(QDir().mkpath(templates("W/T")));
        for (const QString &name : badbytes::names())
            QVERIFY(writeTrack(templateFolder(m_project, "T", "W"), name, "Linear", {}));
        QCOMPARE(QDir(templates("W/T")).entryList(QDir::Files | QDir::Hidden).size(), badbytes::names().size());
        QCOMPARE(QDir(templates("W")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList("T"));
    }

private:
    QString templates(const QString &file) const { return m_project.projectFolder + "/Templates/" + file; }

    std::unique_ptr<QTemporaryDir> m_folder;
    Project m_project;
};

QTEST_GUILESS_MAIN(tst_templatestore)
#include "tst_templatestore.moc"
