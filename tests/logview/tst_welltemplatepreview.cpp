// The preview beside the tables of a template editor: the template with the logs of the well.

#include "datastore/curvegrouptable.h"
#include "logview/curveitem.h"
#include "logview/trackitem.h"
#include "logview/welltemplatepreview.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"
#include "templates/curverowwidgets.h"
#include "templates/definetemplate.h"
#include "templates/deftemptrackwidget.h"
#include "templates/modifytemplate.h"

#include <QComboBox>
#include <QGraphicsView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>

namespace {

/// Counts the logs that are read.
class CountingHost : public MemoryHost
{
public:
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        ++logReads;
        return MemoryHost::log(key, index);
    }
    int logReads = 0;
};

TrackInfo trackOf(const QByteArray &color, const QByteArray &curve = "GR", const QByteArray &right = "100")
{
    return parseTrack("Linear\nGamma | " + curve + " | 0 | " + right + " | " + color
                          + "|0,#ffffff|0,#ffffff|None | None | 0 | 1\n",
                      "Track");
}

struct Fixture
{
    Fixture()
    {
        CurveGroupTable::instance().clear();
        host.survey = project.survey.path();
        host.dataFolder = project.host.dataFolder;
        host::WellHeader header;
        header.name = "W";
        header.totalDepth = 3000;
        QVector<float> depths;
        QVector<float> values;
        for (int depth = 1000; depth <= 2000; ++depth) {
            depths.append(static_cast<float>(depth));
            values.append(50);
        }
        host.find(host.addWell(header))->logs = {{"GR", "gapi", depths, values}};
        header.name = "Bare";
        header.totalDepth = 90;
        host.addWell(header);
        project.launch = std::make_unique<ProjectData>(host, project.asker);
        project.open();
        project.launch->project.halfDotsPerInch = 48;
        project.launch->project.doubleDotsPerInch = 192;
        files::write(project.path("/DefaultLogs/W.txt"), "W\nGamma|GR\n");
    }
    WellTemplatePreview *make(const QString &well = "W")
    {
        preview = std::make_unique<WellTemplatePreview>(*project.launch, well);
        preview->resize(500, 600);
        return preview.get();
    }
    int count(const QColor &color) const
    {
        const QImage image = preview->findChild<QGraphicsView *>("previewView")->viewport()->grab().toImage();
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                pixels += image.pixelColor(x, y) == color;
        return pixels;
    }
    void type(const char *field, const QString &text) const
    {
        auto *edit = preview->findChild<QLineEdit *>(QString::fromLatin1(field));
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }

    CountingHost host;
    ProjectFixture project;
    std::unique_ptr<WellTemplatePreview> preview;
};

} // namespace

class tst_welltemplatepreview : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<Fixture>(); }
    void cleanup() { m.reset(); }

    void drawsTheWellsLogs()
    {
        WellTemplatePreview *preview = m->make();
        preview->showTracks({trackOf("#ff0000"), trackOf("#0000ff", "Default")}, 0);
        preview->show();
        QCOMPARE(preview->tracks().size(), 2);
        for (const TrackItem *track : preview->tracks())
            QCOMPARE(track->curves().first()->samples().size(), 1001); // the default log as well
        QCOMPARE(preview->tracks().at(1)->x(), 192.0);
        QVERIFY(m->count(Qt::red) > 200);
        QVERIFY(m->count(Qt::blue) > 200);
        QCOMPARE(m->host.logReads, 1);
    }

    // It shows no markers, whose names would stand left of the tracks.
    void theTracksBeginAtTheLeft()
    {
        WellTemplatePreview *preview = m->make();
        preview->showTracks({trackOf("#ff0000")}, 0);
        preview->show();
        for (const char *name : {"previewView", "headerView"}) {
            const auto *view = preview->findChild<QGraphicsView *>(name);
            QCOMPARE(view->mapFromScene(QPointF(0, 0)).x(), 1);
        }
    }

    // 200 m in the middle of what the curves show.
    void theWindowIsWhereTheLogsAre()
    {
        WellTemplatePreview *preview = m->make();
        preview->showTracks({parseTrack("Depth\n", "Track_1")}, 0);
        preview->show();
        QCOMPARE(preview->window().top, 1400.0); // no log yet: the middle of the well
        preview->showTracks({parseTrack("Depth\n", "Track_1"), trackOf("#ff0000")}, 0);
        QCOMPARE(preview->window().top, 1400.0);
        QCOMPARE(preview->window().bottom, 1600.0);
        for (const TrackItem *track : preview->tracks())
            QCOMPARE(track->axis(), logview::DepthAxis::of(1400, 1600));
        m->type("previewFromEdit", "1500");
        m->type("previewToEdit", "1550");
        preview->showTracks({trackOf("#00ff00")}, 0); // stays
        QCOMPARE(preview->tracks().first()->axis(), logview::DepthAxis::of(1500, 1550));
        QVERIFY(m->count(QColor("#00ff00")) > 100);
    }

    void aWellWithoutLogsIsDrawnToo()
    {
        WellTemplatePreview *preview = m->make("Bare");
        preview->showTracks({trackOf("#ff0000"), parseTrack("Logrithmic\n", "t"), parseTrack("Depth\n", "t")}, 2);
        preview->show();
        QCOMPARE(preview->tracks().size(), 3);
        QCOMPARE(preview->window().top, 0.0);
        QCOMPARE(preview->window().bottom, 90.0);
        QCOMPARE(m->count(Qt::red), 0);
        m->make("No such well");
        m->preview->showTracks({trackOf("#ff0000")}, 0);
        m->preview->show();
        QVERIFY(m->preview->window().bottom > m->preview->window().top);
        QVERIFY(m->project.asker.boxes.isEmpty());
    }

    void onlyWhatChangedIsMadeAnew()
    {
        WellTemplatePreview *preview = m->make();
        QVector<TrackInfo> tracks{trackOf("#ff0000"), trackOf("#0000ff"), trackOf("#00ff00")};
        preview->showTracks(tracks, 0);
        QCOMPARE(preview->builtTracks(), 0); // nobody sees it
        QCOMPARE(m->host.logReads, 0);
        preview->show();
        QCOMPARE(preview->builtTracks(), 3);
        const QVector<TrackItem *> before = preview->tracks();
        tracks[1] = trackOf("#0000ff", "GR", "200");
        preview->showTracks(tracks, 1);
        QCOMPARE(preview->builtTracks(), 4);
        QCOMPARE(preview->tracks().at(0), before.at(0));
        QCOMPARE(preview->tracks().at(2), before.at(2));
        tracks.move(0, 2);
        preview->showTracks(tracks, 2);
        QCOMPARE(preview->builtTracks(), 4);
        QCOMPARE(preview->tracks().at(2), before.at(0));
        QCOMPARE(preview->tracks().at(2)->x(), 2 * 192.0);
        tracks.removeFirst();
        preview->showTracks(tracks, 0);
        QCOMPARE(preview->builtTracks(), 4);
        QCOMPARE(preview->tracks(), QVector<TrackItem *>({before.at(2), before.at(0)}));
        tracks.append(tracks.first()); // an equal one needs an item of its own
        preview->showTracks(tracks, 0);
        QCOMPARE(preview->builtTracks(), 5);
        preview->showTracks({}, -1);
        QVERIFY(preview->tracks().isEmpty());
        QCOMPARE(m->host.logReads, 1);
    }

    void theCurrentTrackComesIntoSight()
    {
        WellTemplatePreview *preview = m->make();
        QVector<TrackInfo> tracks;
        for (int i = 0; i < 20; ++i)
            tracks.append(trackOf("#ff0000", "GR", QByteArray::number(i + 1)));
        preview->showTracks(tracks, 0);
        preview->show();
        const auto *view = preview->findChild<QGraphicsView *>("previewView");
        for (const int current : {15, 3, 19, 0}) {
            preview->showTracks(tracks, current);
            const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
            QVERIFY(seen.left() <= current * 192.0 && seen.right() >= (current + 1) * 192.0);
        }
        QCOMPARE(preview->builtTracks(), 20);
    }

    void ofTooManyCurvesTheFirstAreDrawn()
    {
        TrackInfo many = trackOf("#ff0000");
        many.curves.insert(0, 9999, many.curves.first());
        WellTemplatePreview *preview = m->make();
        preview->show();
        preview->showTracks({many}, 0);
        QCOMPARE(preview->tracks().first()->curves().size(), 100);
        many.curves[5000].color = Qt::blue; // which changes nothing that is seen
        preview->showTracks({many}, 0);
        QCOMPARE(preview->builtTracks(), 1);
        many.curves[99].color = Qt::blue;
        preview->showTracks({many}, 0);
        QCOMPARE(preview->builtTracks(), 2);
    }

    void theEditorUpdatesIt()
    {
        files::write(m->project.path("/Templates/W/T/Track_1.txt"), trackBytes("Linear", {}));
        files::write(m->project.path("/Templates/W/T/Track_2.txt"), "Depth\n");
        ModifyTemplate dialog(*m->project.launch, TemplateId::ofWell("W", "T"), "W");
        auto *preview = new WellTemplatePreview(*m->project.launch, "W");
        dialog.setPreview(preview);
        dialog.show();
        QCOMPARE(preview->parentWidget(), static_cast<QWidget *>(dialog.findChild<QSplitter *>("previewSplitter")));
        QVERIFY(preview->x() > dialog.findChild<QTabWidget *>("trackTabs")->x());
        QCOMPARE(preview->builtTracks(), 2);
        DefTempTrackWidget *track = dialog.tracks().first();
        track->addCurveClicked();
        auto *table = track->findChild<QTableWidget *>();
        QCOMPARE(preview->builtTracks(), 3);
        qobject_cast<QComboBox *>(table->cellWidget(0, curvecolumn::Group))->setCurrentText("Gamma");
        qobject_cast<QComboBox *>(table->cellWidget(0, curvecolumn::Curve))->setCurrentText("GR");
        QTest::keyClicks(table->cellWidget(0, curvecolumn::RightValue), "60");
        QCOMPARE(preview->tracks().first()->curves().first()->curveName(), QString("GR"));
        QCOMPARE(preview->tracks().first()->definition().curves.first().maximum, 60.0);
        const TrackItem *depth = preview->tracks().last();
        const int built = preview->builtTracks();
        table->item(0, curvecolumn::Color)->setBackground(QColor(Qt::red));
        QCOMPARE(preview->builtTracks(), built + 1);
        QCOMPARE(preview->tracks().last(), depth);
        dialog.findChild<QTabWidget *>("trackTabs")->tabBar()->moveTab(0, 1);
        QCOMPARE(preview->tracks().first(), depth);
        QCOMPARE(preview->builtTracks(), built + 1);
        dialog.removeTrackTab(0);
        QCOMPARE(preview->tracks().size(), 1);
        dialog.addTrackClicked();
        QCOMPARE(preview->tracks().size(), 2);
    }

    void aClickOnATabBringsItsTrackIntoSight()
    {
        for (int track = 1; track <= 20; ++track)
            files::write(m->project.path("/Templates/W/T/Track_%1.txt").arg(track), "Depth\n");
        ModifyTemplate dialog(*m->project.launch, TemplateId::ofWell("W", "T"), "W");
        auto *preview = new WellTemplatePreview(*m->project.launch, "W");
        dialog.setPreview(preview);
        dialog.show();
        const auto *view = preview->findChild<QGraphicsView *>("previewView");
        const auto isSeen = [&](int track) {
            const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
            return seen.intersects(preview->tracks().at(track)->sceneBoundingRect());
        };
        QVERIFY(isSeen(0) && !isSeen(19));
        dialog.findChild<QTabWidget *>("trackTabs")->setCurrentIndex(19);
        QVERIFY(isSeen(19));
    }

    // Dragged to nothing with the splitter's handle.
    void collapsedItCostsNothing()
    {
        files::write(m->project.path("/Templates/W/T/Track_1.txt"), "Linear\n");
        ModifyTemplate dialog(*m->project.launch, TemplateId::ofWell("W", "T"), "W");
        auto *preview = new WellTemplatePreview(*m->project.launch, "W");
        dialog.setPreview(preview);
        dialog.show();
        QCOMPARE(preview->builtTracks(), 1);
        auto *splitter = dialog.findChild<QSplitter *>("previewSplitter");
        splitter->setSizes({0, 1});
        QVERIFY(splitter->sizes().first() > 100); // the tracks themselves stay
        splitter->setSizes({1, 0});
        dialog.tracks().first()->setTrack(trackOf("#00ff00"), 1);
        dialog.addTrackClicked();
        dialog.resize(dialog.size() + QSize(10, 10));
        dialog.hide();
        dialog.show();
        QCoreApplication::processEvents();
        QCOMPARE(preview->builtTracks(), 1);
        QCOMPARE(preview->tracks().size(), 1);
        QCOMPARE(m->host.logReads, 0);
        splitter->setSizes({2, 1});
        QCOMPARE(preview->builtTracks(), 2); // the empty track that was drawn is the added one now
        QCOMPARE(preview->tracks().size(), 2);
        QCOMPARE(preview->tracks().first()->definition().curves.first().color, QColor("#00ff00"));
        QCOMPARE(m->host.logReads, 1);
        const QVector<TrackItem *> shown = preview->tracks();
        splitter->setSizes({1, 0});
        splitter->setSizes({2, 1}); // nothing changed meanwhile
        QCOMPARE(preview->tracks(), shown);
        QCOMPARE(preview->builtTracks(), 2);
        dialog.tracks().last()->setTrack(trackOf("#0000ff"), 1); // followed again
        QCOMPARE(preview->builtTracks(), 3);
    }

    void aTemplateOfManyTracksIsDrawnOnce()
    {
        QByteArray file = "Linear\n";
        for (int i = 0; i < 50; ++i)
            file += "Gamma | GR | 0 | " + QByteArray::number(i + 1)
                + " | #ff0000|0,#ffffff|0,#ffffff|Left Boundary | None | 0 | 1\n";
        for (int track = 1; track <= 50; ++track)
            files::write(m->project.path(QStringLiteral("/Templates/W/T/Track_%1.txt").arg(track)), file);
        ModifyTemplate dialog(*m->project.launch, TemplateId::ofWell("W", "T"), "W");
        auto *preview = new WellTemplatePreview(*m->project.launch, "W");
        dialog.setPreview(preview);
        dialog.show();
        QCoreApplication::processEvents();
        QCOMPARE(preview->builtTracks(), 50);
        dialog.findChild<QTabWidget *>("trackTabs")->setCurrentIndex(40);
        QCoreApplication::processEvents();
        QCOMPARE(preview->builtTracks(), 50);
        dialog.tracks().at(40)->addCurveClicked();
        QCOMPARE(preview->builtTracks(), 51);
        QCOMPARE(m->host.logReads, 1);
    }

private:
    std::unique_ptr<Fixture> m;
};

LORVA_TEST_MAIN(tst_welltemplatepreview)
#include "tst_welltemplatepreview.moc"
