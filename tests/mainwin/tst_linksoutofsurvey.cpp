// Every kind of project file with a link in its place, or in the place of its folder, that leads out of the survey or
// nowhere.

#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationstore.h"
#include "correlation/correlationview.h"
#include "datastore/calibrationfile.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/groupfiles.h"
#include "datastore/perforationfile.h"
#include "datastore/projectseeds.h"
#include "las/curvetextwriter.h"
#include "logview/welldisplaywidget.h"
#include "mainwin/reportwriter.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"
#include "templates/templatestore.h"

#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>

#include <functional>

namespace {

correlation::KnownNames knownNames()
{
    return {[](const QString &) { return true; }, [](const QString &, const QString &) { return true; }};
}

/// The well "W" with a log and a marker, a template and a correlation of it.
class Links : public ProjectFixture
{
public:
    Links()
    {
        CurveGroupTable::instance().clear();
        addWell(QStringLiteral("W"), {QStringLiteral("MYGR")}, {QStringLiteral("Top")});
        open();
        launch->project.halfDotsPerInch = 48;
        launch->project.doubleDotsPerInch = 192;
        files::write(path("/Templates/W/T/Track_1.txt"), "Depth\n");
        files::write(path("/Correlations/North/properties.txt"),
                     "Correlation:North\nTrackWidth:1.2\nScale:1000\nNumber Of Wells:1\nW:T\nMarker:0\n"
                     "Perforation Flag:0\nZones:0\n");
    }
    ~Links() { CurveGroupTable::instance().clear(); }

    QString folder() const { return path(QString()); }
    QString outside(const char *name) const { return m_outside.filePath(QString::fromLatin1(name)); }
    auto outsideContent() const { return files::snapshot(m_outside.path()); }
    /// What the user was told: texts of boxes and status lines.
    QString told() const
    {
        QString text = status;
        for (const base::Box &box : asker.boxes)
            text += box.text;
        return text;
    }

    QString status;

private:
    QTemporaryDir m_outside;
};

struct Kind
{
    const char *name;
    QString path; ///< in the project folder
    std::function<void(Links &)> write;
    std::function<bool(Links &)> isRead; ///< whether the file's content is found; none where nothing reads it
    bool isSilent = false; ///< nobody is told when it cannot be written
};

void writeTiff(Links &links)
{
    QDockWidget dock;
    WellDisplayWidget display(*links.launch, QStringLiteral("W"), QStringLiteral("T"), &dock);
    display.savePicture();
    for (const QLabel *label : display.findChildren<QLabel *>())
        links.status += label->text();
}

void writeJpeg(Links &links)
{
    CorrelationDisplayWidget display(*links.launch, QStringLiteral("North"), nullptr);
    display.savePicture();
    for (const QLabel *label : display.findChildren<QLabel *>())
        links.status += label->text();
}

QVector<Kind> kinds()
{
    const auto pass = [](Links &links) {
        CurveGroupTable::instance().clear();
        runDefaultLogsPass(*links.launch);
    };
    return {
        {"calibration", calibrationPath({}, "W", "Gamma"),
         [](Links &links) {
             writeCalibration(links.folder(), {"W", "Gamma", {1}, {2}}, links.asker);
         },
         [](Links &links) { return !readCalibration(links.folder(), "W", "Gamma", links.asker).depths.isEmpty(); }},
        {"perforation", perforationPath({}, "W"),
         [](Links &links) {
             writePerforation(links.folder(), {"W", 1, {"Z"}, {1}, {2}, {"Gas"}}, links.asker);
         },
         [](Links &links) { return !readPerforation(links.folder(), "W").names.isEmpty(); }},
        {"default logs", defaultLogsPath({}, "W"), pass,
         [](Links &links) { return !readDefaultLogs(links.folder(), "W").logs.isEmpty(); }, true},
        {"curve group", "/CurveGroups/Gamma.txt",
         [](Links &links) { addMnemonicToGroup(links.folder(), "Gamma", "MYGR"); },
         [](Links &links) { return readGroupFile(links.folder(), "Gamma").contains("MYGR"); }, true},
        {"curve group in the pass", "/CurveGroups/Gamma.txt", pass, {}, true},
        {"curve group table", "/CurveGroups/CurveGroupTable.txt", pass,
         [](Links &links) {
             CurveGroupTable::instance().clear();
             CurveGroupTable::instance().read(links.folder());
             return CurveGroupTable::instance().size() > 0;
         },
         true},
        {"seed of a curve group",
         "/CurveGroups/Sonic.txt",
         [](Links &links) { seedProject(links.folder()); },
         {},
         true},
        {"seed of a template",
         "/Templates/Global/Simple",
         [](Links &links) { seedProject(links.folder()); },
         {},
         true},
        {"curve as text",
         "/Wells/W/MYGR.txt",
         [](Links &links) {
             const auto curve = links.launch->catalogue.readCurve(0, 0, WellsCatalogue::OnFailure::BeSilent);
             links.status += las::writeCurveText(links.folder(), "W", *curve).error;
         },
         {}},
        {"logs report", "/W_logsInfo.txt", [](Links &links) { writeLogsReport(*links.launch); }, {}},
        {"markers report", "/Well_Markers_Info.txt", [](Links &links) { writeMarkersReport(*links.launch); }, {}},
        {"TIFF picture", "/W.tiff", writeTiff, {}},
        {"JPEG picture", "/North.jpg", writeJpeg, {}},
        {"correlation", "/Correlations/South/properties.txt",
         [](Links &links) {
             CorrelationProperties properties;
             properties.name = QStringLiteral("South");
             links.status += correlation::write(links.launch->project, properties).error;
         },
         [](Links &links) { return correlation::load(links.launch->project, "South", knownNames()).has_value(); }},
    };
}

} // namespace

class tst_linksoutofsurvey : public QObject
{
    Q_OBJECT

private slots:
    void isLeftAlone_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("place");
        const QVector<Kind> all = kinds();
        for (int kind = 0; kind < all.size(); ++kind) {
            QTest::addRow("%s that leads out", all.at(kind).name) << kind << int(Out);
            QTest::addRow("%s that leads nowhere", all.at(kind).name) << kind << int(Nowhere);
            QTest::addRow("%s, its folder leads out", all.at(kind).name) << kind << int(FolderOut);
            QTest::addRow("%s, its folder leads nowhere", all.at(kind).name) << kind << int(FolderNowhere);
        }
    }

    void isLeftAlone()
    {
        QFETCH(int, kind);
        QFETCH(int, place);
        const Kind tested = kinds().at(kind);
        Links links;
        const QString path = links.path(tested.path);
        // Without a link it is written, and read.
        QFile::remove(path);
        QDir(path).removeRecursively();
        tested.write(links);
        QVERIFY2(QFileInfo::exists(path), qPrintable(links.told()));
        QVERIFY(!tested.isRead || tested.isRead(links));

        const bool isFolder = place == FolderOut || place == FolderNowhere;
        const QString linked = isFolder ? QFileInfo(path).path() : path;
        const QString away = links.outside("away");
        move(linked, away);
        if (place == FolderOut && !QFileInfo(away + path.mid(linked.size())).isDir())
            QVERIFY(QFile::remove(away + path.mid(linked.size()))); // where it would be made
        const QString target = place == Out || place == FolderOut ? away : links.outside("not mounted");
        QVERIFY(QFile::link(target, linked));
        const auto before = links.outsideContent();
        links.asker.boxes.clear();
        links.status.clear();
        links.asker.answers.fill(base::BoxButton::Yes, 3);
        tested.write(links);
        QCOMPARE(links.outsideContent(), before);
        QCOMPARE(QFileInfo(linked).symLinkTarget(), target);
        QVERIFY(QFileInfo(linked).isSymLink());
        QVERIFY2(tested.isSilent || isTold(links.told()), qPrintable(links.told()));
    }

    void isNotRead_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("isFolder");
        const QVector<Kind> all = kinds();
        for (int kind = 0; kind < all.size(); ++kind) {
            if (!all.at(kind).isRead)
                continue;
            QTest::addRow("%s", all.at(kind).name) << kind << false;
            QTest::addRow("%s, its folder", all.at(kind).name) << kind << true;
        }
    }

    void isNotRead()
    {
        QFETCH(int, kind);
        QFETCH(bool, isFolder);
        const Kind tested = kinds().at(kind);
        Links links;
        const QString path = links.path(tested.path);
        tested.write(links);
        QVERIFY(tested.isRead(links));
        const QString linked = isFolder ? QFileInfo(path).path() : path;
        move(linked, links.outside("away"));
        QVERIFY(QFile::link(links.outside("away"), linked));
        QVERIFY(!tested.isRead(links));
    }

private:
    enum Place { Out, Nowhere, FolderOut, FolderNowhere };

    // Between file systems too.
    static void move(const QString &from, const QString &to)
    {
        if (QFileInfo(from).isDir()) {
            files::copyFolder(from, to);
            QVERIFY(QDir(from).removeRecursively());
        } else {
            QVERIFY(QFile::rename(from, to));
        }
    }
    static bool isTold(const QString &text)
    {
        for (const char *words : {"Unable to create", "could not be written", "it is reached by a link",
                                  "cannot be read, and is not written over"})
            if (text.contains(QLatin1String(words)))
                return true;
        return false;
    }
};

LORVA_TEST_MAIN(tst_linksoutofsurvey)
#include "tst_linksoutofsurvey.moc"
