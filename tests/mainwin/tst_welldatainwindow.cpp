// The page "Well Data Manager" in the main window: what it stores shows in the tree, in displays and in correlations.

#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationfixture.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewtabwidget.h"
#include "datastore/curvegrouptable.h"
#include "las/wellimportdialog.h"
#include "logview/curveitem.h"
#include "logview/markeritem.h"
#include "logview/trackitem.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsview.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"

#include <QAction>

using F = WellDataFixture;

namespace {

constexpr char defaultTrack[] =
    "Linear\nGamma | Default | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0|1|#000000|3|Circle\n";
constexpr char namedTrack[] = "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";

/// Tells the window of changed markers as the plug-in's manager does.
class Announcer : public host::Listener
{
public:
    void markersChanged(const QString &wellKey) override
    {
        ++calls;
        const int well = data->catalogue.indexOfKey(wellKey);
        data->catalogue.refreshMarkerNames(well);
        window->markersChanged(well);
    }
    void surveyChanged() override { }
    ProjectData *data = nullptr;
    MainWindow *window = nullptr;
    int calls = 0;
};

/// The wells "A", "B", "C" in a window, "A" displayed with the template "D" and a correlation of "A" and "B" open.
struct Window : CorrelationFixture
{
    Window()
    {
        store("North");
        find("A")->logs.append({"GR2", "gapi", {0, 100}, {1, 2}});
        files::write(path("/Templates/Global/D/Track_1.txt"), defaultTrack);
        files::write(path("/Templates/Global/D/Track_2.txt"), depthTrack);
        files::write(path("/Templates/Global/N/Track_1.txt"), namedTrack);
        files::write(path("/DefaultLogs/A.txt"), "A\nGamma|GR\n");
        openAt96Dots();
        CurveGroupTable::instance().clear();
        CurveGroupTable::instance().set("GR", "Gamma");
        CurveGroupTable::instance().set("GR2", "Gamma");
        window = std::make_unique<MainWindow>(*launch);
        window->resize(1200, 800);
        window->show();
        tree = window->projectTree();
        manager = window->findChild<WellsDataManagerWidget *>();
        logsView = window->findChild<WellLogsViewWidget *>();
        display("D");
        emit tree->sendCorrelation(tree->correlationsItem()->child(0));
        CorrelationFixture::find<QComboBox>(manager, "wellBox")->setCurrentText("A");
    }
    MemoryHost::Well *find(const char *name)
    {
        for (MemoryHost::Well &well : host.storedWells)
            if (well.header.name == QLatin1String(name))
                return &well;
        return nullptr;
    }
    void click(QTreeWidgetItem *item, Qt::CheckState state) const
    {
        item->setCheckState(0, state);
        emit tree->itemClicked(item, 0);
    }
    void display(const char *templateName) const
    {
        click(wellItem(), Qt::Checked);
        QTreeWidgetItem *global = globalBranch(wellItem());
        for (int i = 0; i < global->childCount(); ++i)
            if (global->child(i)->text(0) == QLatin1String(templateName))
                click(global->child(i), Qt::Checked);
    }
    QTreeWidgetItem *wellItem() const { return tree->wellsItem()->child(0); }
    QTreeWidgetItem *markerItem(const char *name) const
    {
        QTreeWidgetItem *branch = markersBranch(wellItem());
        for (int i = 0; i < branch->childCount(); ++i)
            if (branch->child(i)->text(0) == QLatin1String(name))
                return branch->child(i);
        return nullptr;
    }
    WellLogsScene *scene() const { return logsView->currentDisplay()->scene(); }
    MarkerItem *shown(const char *name) const { return scene()->markers().findStored(QString::fromUtf8(name)); }
    CorrelationView *correlation() const
    {
        return window->findChild<CorrelationViewTabWidget *>()->currentDisplay()->view();
    }

    std::unique_ptr<MainWindow> window;
    ProjectTreeWidget *tree = nullptr;
    WellsDataManagerWidget *manager = nullptr;
    WellLogsViewWidget *logsView = nullptr;
};

} // namespace

class tst_welldatainwindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<Window>(); }
    void cleanup() { m.reset(); }

    void itIsTheThirdPage()
    {
        auto *pages = m->window->findChild<QTabWidget *>("centralTabs");
        QCOMPARE(pages->tabText(2), QString("Well Data Manager"));
        QCOMPARE(pages->widget(2), static_cast<QWidget *>(m->manager));
        m->click(m->wellItem(), Qt::Unchecked);
        QCOMPARE(m->manager->currentWellName(), QString("A"));
    }

    // "Top" at 525 and "Base" at 925 are stored; KB is 25 m.
    void storedMarkersShowEverywhere_data()
    {
        QTest::addColumn<bool>("isAnnounced");
        QTest::newRow("the host announces them") << true;
        QTest::newRow("the host is silent") << false;
    }
    void storedMarkersShowEverywhere()
    {
        QFETCH(bool, isAnnounced);
        Announcer announcer;
        announcer.data = m->launch.get();
        announcer.window = m->window.get();
        if (isAnnounced)
            m->host.addListener(&announcer);
        m->click(m->markerItem("Top"), Qt::Checked);
        QVERIFY(m->shown("Top"));
        const int redraws = m->correlation()->redrawCount();
        MarkerDataWidget *markers = m->manager->markers();
        F::type(markers, 0, 1, "625");
        markers->table()->item(0, 4)->setBackground(QColor(Qt::blue));
        markers->addRow();
        F::typeName(markers, 2, "New");
        F::type(markers, 2, 1, "700");
        F::click(markers, "updateButton");
        QCOMPARE(F::status(markers), QString("Marker data updated successfully !"));

        QCOMPARE(m->markerItem("Top")->checkState(0), Qt::Checked);
        QCOMPARE(m->markerItem("Base")->checkState(0), Qt::Unchecked);
        QVERIFY(m->markerItem("New"));
        QCOMPARE(m->markerItem("New")->checkState(0), Qt::Checked);
        QCOMPARE(m->shown("Top")->depth(), 600.0F);
        QCOMPARE(m->shown("Top")->lineColor(), QColor(Qt::blue));
        QVERIFY(m->shown("New"));
        QVERIFY(!m->shown("Base"));
        QCOMPARE(m->correlation()->columns().at(0).markers.value("Top").depthM, 600.0);
        QVERIFY(m->correlation()->columns().at(0).markers.contains("New"));
        QCOMPARE(m->correlation()->redrawCount(), redraws + 1);
        m->host.removeListener(&announcer);
    }
    void theMovedMarkerStandsAtItsNewDepth()
    {
        m->click(m->markerItem("Top"), Qt::Checked);
        const double before = m->shown("Top")->y();
        F::type(m->manager->markers(), 0, 1, "1025");
        F::click(m->manager->markers(), "updateButton");
        QVERIFY(qAbs(m->shown("Top")->y() - 2 * before) < 0.01); // 1000 m instead of 500
    }
    void aMarkerOutOfTheRangeIsUncheckedInTheTree()
    {
        m->click(m->markerItem("Top"), Qt::Checked);
        m->scene()->setEndDepth(800);
        m->scene()->applyDepthRange();
        F::type(m->manager->markers(), 0, 1, "1025");
        F::click(m->manager->markers(), "updateButton");
        QVERIFY(!m->shown("Top"));
        QCOMPARE(m->markerItem("Top")->checkState(0), Qt::Unchecked);
    }
    void removedMarkersGo()
    {
        m->click(m->markerItem("Top"), Qt::Checked);
        m->manager->markers()->table()->setCurrentCell(0, 0);
        m->manager->markers()->deleteRow();
        F::click(m->manager->markers(), "updateButton");
        QVERIFY(!m->markerItem("Top"));
        QVERIFY(!m->shown("Top"));
    }
    void newMarkersOfAWellThatIsNotDisplayedStayUnchecked()
    {
        m->click(m->wellItem(), Qt::Unchecked);
        m->manager->markers()->addRow();
        F::typeName(m->manager->markers(), 2, "New");
        F::type(m->manager->markers(), 2, 1, "700");
        F::click(m->manager->markers(), "updateButton");
        QCOMPARE(m->markerItem("New")->checkState(0), Qt::Unchecked);
    }
    // What the user changed in the display alone is not overwritten by what did not change in the well.
    void aColorOfTheDisplayStays()
    {
        m->click(m->markerItem("Top"), Qt::Checked);
        m->shown("Top")->setLineColor(Qt::magenta);
        F::type(m->manager->markers(), 1, 1, "930");
        F::click(m->manager->markers(), "updateButton");
        QCOMPARE(m->shown("Top")->lineColor(), QColor(Qt::magenta));
    }
    void aMarkerPickedInADisplayComesIntoTheTable()
    {
        m->find("A")->markers.append({"Picked", 300, Qt::red});
        m->launch->catalogue.refreshMarkerNames(0);
        m->window->markersChanged(0);
        QCOMPARE(m->manager->markers()->table()->rowCount(), 3);
    }

    void importedLogsComeIntoTheTable()
    {
        const auto *table = CorrelationFixture::find<QTableWidget>(m->manager->defaultData(), "defaultTable");
        const int rows = table->rowCount();
        m->find("A")->logs.append({"SP", "mv", {0, 100}, {1, 2}});
        m->launch->catalogue.refreshLogNames(0);
        m->window->findChild<QAction *>("importAction")->trigger();
        auto *dialog = m->window->findChild<WellImportDialog *>();
        emit dialog->logsImported(0);
        QCOMPARE(table->rowCount(), rows + 1);
        dialog->close();
    }

    void storedZonesShow()
    {
        const QImage before = m->logsView->currentDisplay()->logView()->grab().toImage();
        const int redraws = m->correlation()->redrawCount();
        DefineWellPerforation *zones = m->manager->zones();
        zones->addRow();
        F::typeName(zones, 0, "Z");
        F::type(zones, 0, 1, "5");
        F::type(zones, 0, 2, "50");
        F::click(zones, "updateButton");
        QVERIFY(m->logsView->currentDisplay()->logView()->grab().toImage() != before);
        QCOMPARE(m->correlation()->redrawCount(), redraws + 1);
    }
    void storedPointsShow()
    {
        const CurveItem *curve = m->scene()->tracks().at(0)->curves().at(0);
        QVERIFY(curve->calibrationPoints().isEmpty());
        DefineCalibrationPoint *points = m->manager->points();
        CorrelationFixture::find<QComboBox>(points, "groupBox")->setCurrentText("Gamma");
        points->addRow();
        F::type(points, 0, 0, "100");
        F::type(points, 0, 1, "75");
        const int redraws = m->correlation()->redrawCount();
        F::click(points, "updateButton");
        QCOMPARE(curve->calibrationPoints().size(), 1);
        QCOMPARE(m->correlation()->redrawCount(), redraws + 1);
    }

    // The look of a display survives other default logs.
    void otherDefaultLogsShowOnTheSameDepths()
    {
        m->click(m->markerItem("Top"), Qt::Checked);
        WellLogsScene *scene = m->scene();
        scene->panel()->setScale(500);
        scene->applyScale(500);
        scene->setDepthUnit(logview::Feet);
        scene->applyDepthTypeAndUnit();
        scene->setStartDepth(100);
        scene->setEndDepth(4000);
        scene->applyDepthRange();
        MarkerItem *picked = scene->markers().pick("A");
        const double y = m->shown("Top")->y();
        const QRectF rect = scene->sceneRect();
        QCOMPARE(scene->tracks().at(0)->curves().at(0)->curveName(), QString("GR"));
        const int redraws = m->correlation()->redrawCount();

        tick(1); // GR2
        F::click(m->manager->defaultData(), "updateButton");
        QCOMPARE(m->scene(), scene);
        QCOMPARE(scene->tracks().size(), 2);
        QCOMPARE(scene->tracks().at(0)->curves().at(0)->curveName(), QString("GR2"));
        QCOMPARE(scene->sceneRect(), rect);
        QCOMPARE(scene->startDepth(), 100.0F);
        QCOMPARE(scene->endDepth(), 4000.0F);
        QCOMPARE(scene->depthUnit(), int(logview::Feet));
        for (const TrackItem *track : scene->tracks()) {
            QCOMPARE(track->scale(), 500.0F);
            QCOMPARE(track->axis().start, 100.0F);
            QCOMPARE(track->axis().end, 4000.0F);
            QCOMPARE(track->depthReference().unit, logview::Feet);
        }
        QVERIFY(m->shown("Top"));
        QCOMPARE(m->shown("Top")->y(), y);
        QCOMPARE(m->markerItem("Top")->checkState(0), Qt::Checked);
        QVERIFY(scene->markers().unsaved().contains(picked));
        QCOMPARE(m->correlation()->redrawCount(), redraws + 1);
    }
    void theDepthTypeStaysToo()
    {
        WellLogsScene *scene = m->scene();
        scene->setDepthType(logview::TvdSubsea);
        scene->applyDepthTypeAndUnit();
        tick(1);
        F::click(m->manager->defaultData(), "updateButton");
        QCOMPARE(scene->depthType(), int(logview::TvdSubsea));
        QCOMPARE(scene->tracks().at(0)->depthTypeText(), QString("TVDSS"));
    }
    void aDisplayWithoutDefaultLogsIsLeftAlone()
    {
        m->display("N");
        const TrackItem *track = m->scene()->tracks().at(0);
        tick(1);
        F::click(m->manager->defaultData(), "updateButton");
        QCOMPARE(m->scene()->tracks().at(0), track);
    }

    // What is not saved is asked for when another well is chosen, and only then.
    void closingTheWindowAsksForNothingButTheExit()
    {
        tick(1);
        QVERIFY(m->manager->defaultData()->isModified());
        m->asker.boxes.clear();
        m->asker.answers = {base::BoxButton::Yes};
        m->window->close();
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Exit"));
        QVERIFY(!m->window->isVisible());
    }

    void theSynchronisationReachesTheEditors()
    {
        m->addDeepWell("Z", 0, 100, {});
        QMetaObject::invokeMethod(m->window.get(), "syncODDBActionClicked");
        QCOMPARE(CorrelationFixture::find<QComboBox>(m->manager, "wellBox")->count(), 5);
        QCOMPARE(m->manager->currentWellName(), QString("A"));
        QCOMPARE(m->asker.boxes.last().text, QString("synchronization done !"));
    }

private:
    void tick(int row) const
    {
        auto *table = CorrelationFixture::find<QTableWidget>(m->manager->defaultData(), "defaultTable");
        QVERIFY(table->rowCount() > row);
        qobject_cast<QCheckBox *>(table->cellWidget(row, 2))->click();
    }

    std::unique_ptr<Window> m;
};

LORVA_TEST_MAIN(tst_welldatainwindow)
#include "tst_welldatainwindow.moc"
