#include "displayfixture.h"
#include "logview/markeritempropertywidget.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitempropertywidget.h"
#include "logview/welldisplaydata.h"
#include "logview/welllogsviewwidget.h"
#include "support/testmain.h"

#include <QMenu>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>

namespace {

const QByteArray linearTrack = "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

struct WidgetFixture : DisplayFixture
{
    WidgetFixture()
    {
        addLog(QStringLiteral("GR"), {0, 500, 1000, 1500}, {75, 75, 75, 75});
        addTrack(1, linearTrack);
        addTrack(2, depthTrack);
        addTrack(3, linearTrack);
        addMarker(QStringLiteral("Top"), 100);
    }
    // Shows the menu for a place of the scene and chooses an entry; the texts it offered.
    QStringList menu(const QPointF &place, const char *choice = nullptr)
    {
        WellLogsView *view = display->logView();
        view->centerOn(place);
        const std::unique_ptr<QMenu> menu(view->createContextMenu(view->mapFromScene(place)));
        QStringList texts;
        QAction *chosen = nullptr;
        for (QAction *action : menu->actions()) {
            texts.append(action->text());
            if (choice && action->text() == QLatin1String(choice))
                chosen = action;
        }
        if (choice && !chosen)
            qFatal("no entry %s", choice);
        if (chosen)
            chosen->trigger();
        return texts;
    }
    void moveTo(const QPointF &place) const
    {
        QTest::mouseMove(display->logView()->viewport(), display->logView()->mapFromScene(place));
    }
    void click(const QPointF &place, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseClick(display->logView()->viewport(), button, {}, display->logView()->mapFromScene(place));
    }
};

// The log view as the main window has it: a dock and a tree with the wells W and X below its first item.
struct ViewFixture : WidgetFixture
{
    ViewFixture()
    {
        addWell(QStringLiteral("X"), {QStringLiteral("GR")}, {QStringLiteral("Other")});
        files::write(path(QStringLiteral("/Templates/X/T/Track_1.txt")), linearTrack);
        open();
        auto *wells = new QTreeWidgetItem(&tree, {QStringLiteral("Wells")});
        for (const char *name : {"W", "X"}) {
            auto *item = new QTreeWidgetItem(wells, {QString::fromLatin1(name)});
            item->setCheckState(0, Qt::Checked);
        }
        view = std::make_unique<WellLogsViewWidget>(*launch, &dock, &tree);
        tabs = view->findChild<QTabWidget *>(QStringLiteral("wellTabs"));
        view->resize(900, 600);
        view->show();
    }
    void add(const char *well, const char *name = "T") const
    {
        view->addWellDisWidget(QString::fromLatin1(well), QString::fromLatin1(name));
    }
    QTreeWidgetItem *treeItem(int number) const { return tree.topLevelItem(0)->child(number); }

    QTreeWidget tree;
    std::unique_ptr<WellLogsViewWidget> view;
    QTabWidget *tabs;
};

} // namespace

class tst_welldisplaywidget : public QObject
{
    Q_OBJECT

private slots:
    void layout();
    void headersScrollWithTheTracks();
    void startsAtTheTop();
    void headersGetTheRoomTheyNeed();
    void initialWidthsComeFromTheScreen();
    void deletingTracks();
    void markers();
    void contextMenus();
    void deletingThroughTheMenu();
    void aMenuEntryForWhatIsGone();
    void theScaleKeepsThePlace();
    void picking();
    void pickingWithOtherButtonsAndBeyondTheTracks();
    void pickingIsCancelled();
    void savingAPickedMarker();
    void aPickIsNoStoredMarkerOfItsName();
    void theDisplayMayGoWhileAMarkerIsSaved();
    void savingInSubseaFeet();
    void theDockLosesNothingItOwns();
    void savesItsPicture();
    void picturesOfWellsWithSlashes();
    void picturesThatCannotBeWritten();
    void missingTemplates();
    void aTemplateThatIsNotListedYet();
    void aListedTemplateWithoutTracks();
    void aWellThatVanished();

    void goneAndDroppedMarkers();
    void addsTabs();
    void replacesTheTabOfAWell();
    void closingATab();
    void namesWithMarksOfTabs();
    void withoutATree();
    void closingOneTabKeepsThePanelOfAnother();
    void removingADisplay();
    void markersOfOtherTabs();
    void switchingTabsSwitchesPanels();
    void picturesShowNoSelection();
    void picturesOfTheCurrentTab();
    void slotsByName();
};

void tst_welldisplaywidget::layout()
{
    WidgetFixture f;
    f.show();
    QCOMPARE(f.display->windowTitle(), QString("W"));
    const auto *splitter = f.display->findChild<QSplitter *>();
    QCOMPARE(splitter->orientation(), Qt::Vertical);
    QCOMPARE(splitter->handleWidth(), 0);
    QCOMPARE(splitter->widget(0), f.display->headerView());
    QCOMPARE(splitter->widget(1), f.display->logView());
    QCOMPARE(splitter->widget(0)->sizePolicy().verticalStretch(), 1);
    QCOMPARE(splitter->widget(1)->sizePolicy().verticalStretch(), 0);
    QCOMPARE(f.display->logView()->scene(), f.scene());
    QCOMPARE(f.dock.widget(), f.panel());
    for (const char *slot : {"setPropertyWidget(QWidget*)", "deleteTrack(int)", "setStatusLabel(QString)"})
        QVERIFY(f.display->metaObject()->indexOfSlot(slot) >= 0);
}

void tst_welldisplaywidget::headersScrollWithTheTracks()
{
    WidgetFixture f;
    f.show();
    f.display->resize(300, 400);
    QTRY_VERIFY(f.display->logView()->horizontalScrollBar()->maximum() > 50);
    const QGraphicsView *headers = f.display->headerView();
    const QGraphicsView *log = f.display->logView();
    QCOMPARE(headers->horizontalScrollBar()->maximum(), log->horizontalScrollBar()->maximum());
    for (const int value : {40, 10, log->horizontalScrollBar()->maximum(), 0}) {
        log->horizontalScrollBar()->setValue(value);
        QCOMPARE(headers->horizontalScrollBar()->value(), log->horizontalScrollBar()->value());
        QCOMPARE(headers->mapFromScene(QPointF(200, 0)).x(), log->mapFromScene(QPointF(200, 0)).x());
    }
    // Also after tracks changed.
    f.track(0)->setWidthInches(4);
    log->horizontalScrollBar()->setValue(log->horizontalScrollBar()->maximum());
    QCOMPARE(headers->horizontalScrollBar()->maximum(), log->horizontalScrollBar()->maximum());
    QCOMPARE(headers->mapFromScene(QPointF(400, 0)).x(), log->mapFromScene(QPointF(400, 0)).x());
    f.display->deleteTrack(2);
    QCOMPARE(headers->horizontalScrollBar()->maximum(), log->horizontalScrollBar()->maximum());
}

void tst_welldisplaywidget::startsAtTheTop()
{
    WidgetFixture f;
    f.addTrack(1, linearTrack + linearTrack.mid(7) + linearTrack.mid(7));
    f.open();
    for (const QSize &size : {QSize(300, 400), QSize(470, 800), QSize(470, 300), QSize(900, 800)}) {
        QTabWidget tabs;
        tabs.resize(size); // most narrower than the tracks
        tabs.show();
        QCoreApplication::processEvents();
        auto *display = new WellDisplayWidget(*f.launch, QStringLiteral("W"), QStringLiteral("T"), nullptr);
        tabs.addTab(display, QString());
        QCoreApplication::processEvents();
        for (const QGraphicsView *view : {display->headerView(), static_cast<QGraphicsView *>(display->logView())}) {
            QCOMPARE(view->verticalScrollBar()->value(), view->verticalScrollBar()->minimum());
            QCOMPARE(view->horizontalScrollBar()->value(), view->horizontalScrollBar()->minimum());
            QVERIFY(view == display->headerView() || view->verticalScrollBar()->maximum() > 0);
        }
    }
}

void tst_welldisplaywidget::headersGetTheRoomTheyNeed()
{
    WidgetFixture f;
    f.addTrack(1, linearTrack + linearTrack.mid(7) + linearTrack.mid(7));
    f.show();
    const auto isWhole = [&f] {
        const int height = f.display->headerView()->height();
        return height >= 20 + 3 * 45 && height <= 20 + 3 * 45 + 10;
    };
    QTRY_VERIFY(isWhole());
    f.display->resize(800, 400);
    QTRY_VERIFY(isWhole());
    f.display->resize(800, 1200);
    QTRY_VERIFY(f.display->logView()->height() > 900);
    QVERIFY(f.display->headerView()->height() >= 20 + 45);
}

void tst_welldisplaywidget::initialWidthsComeFromTheScreen()
{
    WidgetFixture f;
    f.open(); // without the factors of a launch
    const WellDisplayWidget display(*f.launch, QStringLiteral("W"), QStringLiteral("T"), nullptr);
    const int dpi = display.logicalDpiX();
    QCOMPARE(display.scene()->tracks().at(0)->width(), static_cast<float>(2 * dpi));
    QCOMPARE(display.scene()->tracks().at(1)->width(), static_cast<float>(dpi) / 2);
    WellDisplayData data(*f.launch, QStringLiteral("W"));
    data.setDotsPerInch(97);
    QCOMPARE(data.initialTrackWidth(DepthTrack), 48.5);
    QCOMPARE(data.initialTrackWidth(LinearTrack), 194.0);
    WidgetFixture launched;
    launched.show();
    QCOMPARE(launched.track(0)->width(), 192.0F);
    QCOMPARE(launched.track(1)->width(), 48.0F);
    QCOMPARE(launched.text(launched.panelOf(launched.track(1)), "widthEdit"), QString("0.5"));
}

void tst_welldisplaywidget::deletingTracks()
{
    WidgetFixture f;
    f.show();
    const TrackItem *second = f.track(1);
    const TrackItem *third = f.track(2);
    f.display->deleteTrack(0);
    QCOMPARE(f.scene()->tracks().size(), 2);
    QCOMPARE(second->trackNumber(), 0);
    QCOMPARE(third->trackNumber(), 1);
    QCOMPARE(second->x(), 0.0);
    QCOMPARE(third->x(), 48.0);
    QCOMPARE(f.headerOf(second)->pos(), QPointF(0, 20));
    QCOMPARE(f.headerOf(third)->pos(), QPointF(48, 20));
    QCOMPARE(f.scene()->sceneWidth(), 240);
    f.display->deleteTrack(7);
    f.display->deleteTrack(-1);
    QCOMPARE(f.scene()->tracks().size(), 2);
    f.display->deleteTrack(1);
    f.display->deleteTrack(0);
    QVERIFY(f.scene()->tracks().isEmpty());
    f.type(f.panel(), "scaleEdit", QStringLiteral("300"));
    f.type(f.panel(), "endDepthEdit", QStringLiteral("300"));
}

void tst_welldisplaywidget::markers()
{
    WidgetFixture f;
    f.show();
    f.display->addMarker(QStringLiteral("Other well"), QStringLiteral("Top"));
    f.display->addMarker(QStringLiteral("W"), QStringLiteral("None"));
    QVERIFY(f.scene()->markers().all().isEmpty());
    const MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    QCOMPARE(marker->depth(), 100.0F); // 125 m along hole less 25 m KB
    QCOMPARE(marker->lineColor(), QColor(200, 0, 0));
    QCOMPARE(marker->wellName(), QString("W"));
    f.display->addMarker(QStringLiteral("W"), QStringLiteral("Top")); // shown already
    QCOMPARE(f.scene()->markers().all().size(), 1);
    f.display->removeMarker(QStringLiteral("Other well"), QStringLiteral("Top"));
    QCOMPARE(f.scene()->markers().all().size(), 1);
    f.display->removeMarker(QStringLiteral("W"), QStringLiteral("Top"));
    QVERIFY(f.scene()->markers().all().isEmpty());
    f.type(f.panel(), "endDepthEdit", QStringLiteral("50"));
    QVERIFY(!f.showMarker(QStringLiteral("Top")));
    QVERIFY(f.statusText().contains(QLatin1String("\"Top\" is outside")));
}

void tst_welldisplaywidget::contextMenus()
{
    WidgetFixture f;
    f.show();
    const MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    f.scene()->selection().selectOnly(f.track(2));
    QCOMPARE(f.menu(QPointF(210, 300)), (QStringList{"Pick Marker", "Delete Track"}));
    QCOMPARE(f.menu(QPointF(96, 300)), (QStringList{"Pick Marker", "Delete Curve"}));
    QCOMPARE(f.menu(QPointF(20, marker->y() + 1)), (QStringList{"Pick Marker", "Delete Marker"}));
    QCOMPARE(f.menu(QPointF(100, f.scene()->trackHeight() + 40)), (QStringList{"Pick Marker"}));
    QVERIFY(f.track(2)->isSelected()); // looking changes nothing
}

void tst_welldisplaywidget::deletingThroughTheMenu()
{
    WidgetFixture f;
    f.show();
    f.showMarker(QStringLiteral("Top"));
    f.scene()->selection().selectOnly(f.track(2));
    f.menu(QPointF(96, 300), "Delete Curve");
    QVERIFY(f.track(0)->curves().isEmpty());
    QCOMPARE(f.track(2)->curves().size(), 1);
    QCOMPARE(f.scene()->mode(), WellLogsScene::Mode::None);
    f.menu(QPointF(20, f.scene()->markers().all().first()->y() + 1), "Delete Marker");
    QVERIFY(f.scene()->markers().all().isEmpty());
    f.menu(QPointF(210, 300), "Delete Track");
    QCOMPARE(f.scene()->tracks().size(), 2);
    QCOMPARE(f.track(1)->x(), 192.0);
    QCOMPARE(f.scene()->mode(), WellLogsScene::Mode::None);
    f.click(QPointF(20, 310));
    QCOMPARE(f.dock.widget(), f.panelOf(f.track(0))); // panels still follow the mouse
}

void tst_welldisplaywidget::aMenuEntryForWhatIsGone()
{
    WidgetFixture f;
    f.show();
    f.display->logView()->centerOn(QPointF(210, 300));
    const std::unique_ptr<QMenu> menu(
        f.display->logView()->createContextMenu(f.display->logView()->mapFromScene(QPointF(210, 300))));
    f.display->deleteTrack(1);
    menu->actions().last()->trigger();
    QCOMPARE(f.scene()->tracks().size(), 2);
}

void tst_welldisplaywidget::theScaleKeepsThePlace()
{
    WidgetFixture f;
    f.show();
    QGraphicsView *view = f.display->logView();
    const auto depth = [&] {
        return f.track(0)->axis().toDepth(view->mapToScene(0, view->viewport()->height() / 2).y());
    };
    view->centerOn(0, f.track(0)->axis().toPixel(1000));
    for (const char *scale : {"200", "1000"}) {
        f.type(f.panel(), "scaleEdit", QString::fromLatin1(scale));
        QVERIFY2(qAbs(depth() - 1000) < 60, qPrintable(QString::number(depth())));
    }
}

void tst_welldisplaywidget::pickingWithOtherButtonsAndBeyondTheTracks()
{
    WidgetFixture f;
    f.show();
    QTest::keyClick(f.display->logView(), Qt::Key_Escape); // nothing to cancel
    f.display->logView()->startPicking();
    QVERIFY(f.statusText().contains(QLatin1String("New_0 at ")));
    f.click(QPointF(100, 300), Qt::MiddleButton);
    QVERIFY(f.display->logView()->isPicking());
    f.display->logView()->centerOn(100, f.scene()->trackHeight());
    f.click(QPointF(100, f.scene()->trackHeight() + 40));
    QVERIFY(!f.display->logView()->isPicking());
    QCOMPARE(f.scene()->markers().last()->depth(), 1500.0F);
    QVERIFY(f.statusText().isEmpty());
}

void tst_welldisplaywidget::picking()
{
    WidgetFixture f;
    f.show();
    f.menu(QPointF(210, 300), "Pick Marker");
    QVERIFY(f.display->logView()->isPicking());
    QCOMPARE(f.scene()->mode(), WellLogsScene::Mode::None);
    MarkerItem *marker = f.scene()->markers().last();
    f.moveTo(QPointF(100, 250));
    QCOMPARE(marker->y(), 250.0);
    f.moveTo(QPointF(150, 333));
    QCOMPARE(marker->y(), 333.0);
    f.click(QPointF(100, 400));
    QVERIFY(!f.display->logView()->isPicking());
    QCOMPARE(marker->y(), 400.0);
    QVERIFY(qAbs(marker->depth() - 600000.0F / static_cast<float>(f.scene()->trackHeight())) < 0.01F);
    QCOMPARE(f.dock.widget(), f.panelOf(marker));
    f.moveTo(QPointF(100, 200));
    QCOMPARE(marker->y(), 400.0);
    f.click(QPointF(300, 300));
    QCOMPARE(f.dock.widget(), f.panelOf(f.track(2)));
}

void tst_welldisplaywidget::pickingIsCancelled()
{
    WidgetFixture f;
    f.show();
    f.display->logView()->startPicking();
    QTest::keyClick(f.display->logView(), Qt::Key_Escape);
    QVERIFY(!f.display->logView()->isPicking());
    QVERIFY(f.scene()->markers().all().isEmpty());
    f.display->logView()->startPicking();
    f.display->logView()->startPicking(); // the first one goes
    QCOMPARE(f.scene()->markers().all().size(), 1);
    f.type(f.panel(), "startDepthEdit", QStringLiteral("1000")); // takes the marker away
    f.moveTo(QPointF(100, 250));
    QVERIFY(!f.display->logView()->isPicking());
    f.display->logView()->startPicking();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(20, 20));
    QCoreApplication::sendEvent(f.display->logView()->viewport(), &event);
    QVERIFY(f.scene()->markers().all().isEmpty());
}

void tst_welldisplaywidget::savingAPickedMarker()
{
    WidgetFixture f;
    f.show();
    f.display->logView()->startPicking();
    f.click(QPointF(100, 400));
    MarkerItem *marker = f.scene()->markers().last();
    marker->setMarkerName(QStringLiteral("Top")); // the well has one of that name
    marker->setLineColor(QColor(1, 2, 3));
    QCOMPARE(f.menu(QPointF(20, 401), "Save Picked Marker"),
             (QStringList{"Pick Marker", "Save Picked Marker", "Delete Marker"}));
    QCOMPARE(f.scene()->mode(), WellLogsScene::Mode::None);
    const QVector<host::Marker> stored = f.host.markers(f.wellKey).value;
    QCOMPARE(stored.size(), 2);
    const auto &saved = stored.at(stored.at(0).name == QLatin1String("Top_1") ? 0 : 1);
    QCOMPARE(saved.name, QString("Top_1"));
    QCOMPARE(saved.depth, marker->depth());
    QCOMPARE(saved.color, QColor(1, 2, 3));
    const auto &other = stored.at(stored.at(0).name == QLatin1String("Top_1") ? 1 : 0);
    QCOMPARE(other.depth, 125.0F); // as it was stored
    QCOMPARE(marker->markerName(), QString("Top_1"));
    QVERIFY(f.statusText().contains(QLatin1String("\"Top_1\" was saved")));
    QCOMPARE(f.menu(QPointF(20, 401)), (QStringList{"Pick Marker", "Delete Marker"})); // once
}

void tst_welldisplaywidget::aPickIsNoStoredMarkerOfItsName()
{
    WidgetFixture f;
    f.addMarker(QStringLiteral("New_0"), 200);
    f.show();
    f.display->logView()->startPicking();
    f.click(QPointF(100, 400));
    f.display->addMarker(QStringLiteral("W"), QStringLiteral("New_0"));
    QCOMPARE(f.scene()->markers().all().size(), 2);
    f.display->removeMarker(QStringLiteral("W"), QStringLiteral("New_0"));
    f.display->removeMarker(QStringLiteral("W"), QStringLiteral("New_0"));
    QCOMPARE(f.scene()->markers().all().size(), 1); // the pick stays
    QCOMPARE(f.scene()->markers().unsaved().size(), 1);
}

// The box of a failed save may see the display go.
void tst_welldisplaywidget::theDisplayMayGoWhileAMarkerIsSaved()
{
    struct DeletingAsker : base::Asker
    {
        base::BoxButton show(const base::Box &) override
        {
            onShow();
            return base::BoxButton::Ok;
        }
        std::function<void()> onShow;
    };
    WidgetFixture f;
    f.show();
    DeletingAsker asker;
    ProjectData launch(f.host, asker);
    launch.catalogue.build();
    launch.project = f.launch->project;
    auto display = std::make_unique<WellDisplayWidget>(launch, QStringLiteral("W"), QStringLiteral("T"), nullptr);
    display->resize(500, 500);
    display->show();
    WellLogsScene *scene = display->scene();
    scene->pickedMarkerClicked();
    scene->movePickedMarker(scene->markers().last(), 100);
    scene->markers().last()->setMarkerName(QString());
    bool isShown = false;
    asker.onShow = [&] {
        isShown = true;
        display.reset();
    };
    QMenu *menu = display->logView()->createContextMenu(display->logView()->mapFromScene(QPointF(20, 101)));
    QCOMPARE(menu->actions().at(1)->text(), QString("Save Picked Marker"));
    menu->actions().at(1)->trigger();
    QVERIFY(isShown);
}

void tst_welldisplaywidget::savingInSubseaFeet()
{
    WidgetFixture f;
    f.show();
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    f.display->logView()->startPicking();
    const double y = 4000;
    f.display->logView()->centerOn(100, y);
    f.click(QPointF(100, y));
    const MarkerItem *marker = f.scene()->markers().last();
    const auto start = static_cast<double>(f.scene()->startDepth());
    const auto end = static_cast<double>(f.scene()->endDepth());
    const double shown = start + (end - start) * marker->y() / f.scene()->trackHeight();
    QVERIFY(qAbs(static_cast<double>(marker->depth()) - (shown / 3.28084 + 25)) < 0.01);
    // Where the rules of the scene put it, it stays.
    const double placed = marker->y();
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("METER"));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    QVERIFY(qAbs(marker->y() - placed) < 0.1);
}

void tst_welldisplaywidget::theDockLosesNothingItOwns()
{
    WidgetFixture f;
    f.show();
    f.scene()->selection().selectOnly(f.curve(0, 0));
    f.scene()->selection().showPanelOfSelection();
    const QPointer<QWidget> panel = f.dock.widget();
    f.display.reset();
    QVERIFY(!panel);
    QVERIFY(!f.dock.widget());

    // The dock may go first.
    auto dock = std::make_unique<QDockWidget>();
    WellDisplayWidget display(*f.launch, QStringLiteral("W"), QStringLiteral("T"), dock.get());
    dock.reset();
    display.scene()->selection().selectOnly(display.scene()->tracks().first());
    display.scene()->selection().showPanelOfSelection();
}

void tst_welldisplaywidget::savesItsPicture()
{
    WidgetFixture f;
    f.show();
    f.display->savePicture();
    const QImage image(f.path(QStringLiteral("/W.tiff")));
    const int headerHeight = static_cast<int>(f.display->headerView()->scene()->itemsBoundingRect().height());
    QCOMPARE(image.size(), QSize(432, headerHeight + f.scene()->trackHeight() + 50));
    QCOMPARE(image.pixelColor(20, 12), QColor(240, 127, 33));
    QCOMPARE(image.pixelColor(96, headerHeight + 1000), QColor(0x0e, 0x6f, 0x21));
    QVERIFY(f.statusText().startsWith(QLatin1String("Saved as ")));
    QVERIFY(f.statusText().contains(QLatin1String("/W.tiff")));
}

void tst_welldisplaywidget::picturesOfWellsWithSlashes()
{
    WidgetFixture f;
    f.addWell(QStringLiteral("1/2-3"));
    files::write(f.path(QStringLiteral("/Templates/Global/G/Track_1.txt")), linearTrack);
    f.open();
    f.launch->project.globalTemplateNames = globalTemplateNames(f.launch->project);
    WellDisplayWidget display(*f.launch, QStringLiteral("1/2-3"), QStringLiteral("G"), nullptr);
    QCOMPARE(display.scene()->tracks().size(), 1);
    display.savePicture();
    QCOMPARE(QDir(f.path(QString())).entryList({QStringLiteral("*.tiff")}).size(), 1);
}

void tst_welldisplaywidget::picturesThatCannotBeWritten()
{
    WidgetFixture f;
    f.show();
    QDir().mkpath(f.path(QStringLiteral("/W.tiff/folder in its place")));
    f.display->savePicture();
    QVERIFY2(f.statusText().contains(QLatin1String("W.tiff could not be written")), qPrintable(f.statusText()));
}

void tst_welldisplaywidget::missingTemplates()
{
    WidgetFixture f;
    f.open();
    WellDisplayWidget display(*f.launch, QStringLiteral("W"), QStringLiteral("Gone"), nullptr);
    display.resize(300, 300);
    display.show();
    QVERIFY(display.scene()->tracks().isEmpty());
    QCOMPARE(display.findChild<QLabel *>(QStringLiteral("statusLine"))->text(),
             QString("The template \"Gone\" has no tracks."));
    display.scene()->applyDepthTypeAndUnit();
    display.savePicture();
}

// As at the first launch of a survey, which makes the template after the names were listed.
void tst_welldisplaywidget::aTemplateThatIsNotListedYet()
{
    WidgetFixture f;
    f.open();
    files::write(f.path(QStringLiteral("/Templates/Global/G/Track_1.txt")), linearTrack);
    {
        WellDisplayWidget display(*f.launch, QStringLiteral("W"), QStringLiteral("G"), nullptr);
        QVERIFY(display.scene()->tracks().isEmpty());
        QCOMPARE(display.findChild<QLabel *>(QStringLiteral("statusLine"))->text(),
                 QString("The template \"G\" is new: it can be shown after \"Sync Data\", or from the next "
                         "launch on."));
    }
    f.launch->project.globalTemplateNames = globalTemplateNames(f.launch->project); // what "Sync Data" does
    WellDisplayWidget display(*f.launch, QStringLiteral("W"), QStringLiteral("G"), nullptr);
    QVERIFY(!display.scene()->tracks().isEmpty());
    QCOMPARE(display.findChild<QLabel *>(QStringLiteral("statusLine"))->text(), QString());
}

// One that is there and listed but empty is not helped by that.
void tst_welldisplaywidget::aListedTemplateWithoutTracks()
{
    WidgetFixture f;
    f.open();
    QVERIFY(QDir().mkpath(f.path(QStringLiteral("/Templates/Global/Empty"))));
    f.launch->project.globalTemplateNames = globalTemplateNames(f.launch->project);
    WellDisplayWidget display(*f.launch, QStringLiteral("W"), QStringLiteral("Empty"), nullptr);
    QCOMPARE(display.findChild<QLabel *>(QStringLiteral("statusLine"))->text(),
             QString("The template \"Empty\" has no tracks."));
}

void tst_welldisplaywidget::aWellThatVanished()
{
    WidgetFixture f;
    f.show();
    f.host.storedWells.clear();
    f.showMarker(QStringLiteral("Top"));
    QVERIFY(f.scene()->markers().all().isEmpty());
    const WellDisplayWidget gone(*f.launch, QStringLiteral("W"), QStringLiteral("T"), nullptr);
    QCOMPARE(gone.scene()->tracks().size(), 3);
}

void tst_welldisplaywidget::goneAndDroppedMarkers()
{
    ViewFixture f;
    f.addMarker(QStringLiteral("Upper"), 100);
    f.addMarker(QStringLiteral("Base"), 900);
    f.launch->catalogue.build();
    f.add("W");
    f.add("X");
    QSignalSpy dropped(f.view.get(), &WellLogsViewWidget::markersDropped);
    for (const char *name : {"Upper", "Base"})
        f.view->addMarkerInScene(QStringLiteral("W"), QString::fromLatin1(name));
    WellLogsScene *scene = f.view->display(0)->scene();
    scene->pickedMarkerClicked();
    QCOMPARE(scene->markers().all().size(), 3);
    f.view->removeGoneMarkers();
    QCOMPARE(scene->markers().all().size(), 3);
    f.well().markers.removeAt(f.well().markers.size() - 2);
    f.view->removeGoneMarkers(); // the catalogue does not know yet
    QCOMPARE(scene->markers().all().size(), 3);
    f.launch->catalogue.refreshMarkerNames(f.launch->catalogue.indexOf(QStringLiteral("W")));
    f.view->removeGoneMarkers();
    QVERIFY(!scene->markers().find(QStringLiteral("Upper")));
    QVERIFY(scene->markers().find(QStringLiteral("Base")));
    QVERIFY(scene->markers().find(QStringLiteral("New_0"))); // picked, not saved
    f.view->removeMarkerFromScene(QStringLiteral("W"), QStringLiteral("Base"));
    f.view->addMarkerInScene(QStringLiteral("W"), QStringLiteral("Base"));
    QCOMPARE(dropped.size(), 0); // whoever asked knows
    f.type(scene->panel(), "startDepthEdit", QStringLiteral("1000"));
    QCOMPARE(dropped.size(), 1);
    QCOMPARE(dropped.first().at(0).toString(), QString("W"));
    QCOMPARE(dropped.first().at(1).toStringList(), QStringList{"Base"});
}

void tst_welldisplaywidget::addsTabs()
{
    ViewFixture f;
    QVERIFY(f.tabs->tabsClosable());
    f.add("W");
    f.add("X");
    QCOMPARE(f.tabs->count(), 2);
    QCOMPARE(f.tabs->tabText(0), QString("W:T"));
    QCOMPARE(f.tabs->tabText(1), QString("X:T"));
    QCOMPARE(f.tabs->currentIndex(), 1);
    QCOMPARE(f.view->displayedWells(), (QStringList{"W", "X"}));
}

void tst_welldisplaywidget::replacesTheTabOfAWell()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    const QPointer<QWidget> old = f.tabs->widget(0);
    f.add("W", "Default");
    QCOMPARE(f.tabs->count(), 2);
    QVERIFY(!old);
    QCOMPARE(f.tabs->tabText(0), QString("W:Default"));
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.view->displayedWells(), (QStringList{"W", "X"}));
    QCOMPARE(f.dock.widget(), f.view->currentDisplay()->scene()->panel());
}

void tst_welldisplaywidget::closingATab()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    int changes = 0;
    connect(&f.tree, &QTreeWidget::itemChanged, this, [&changes] { ++changes; });
    const QPointer<QWidget> display = f.tabs->widget(1);
    const QPointer<QWidget> panel = f.dock.widget();
    emit f.tabs->tabCloseRequested(1);
    QVERIFY(!display);
    QVERIFY(!panel);
    QCOMPARE(f.tabs->count(), 1);
    QCOMPARE(f.view->displayedWells(), (QStringList{"W"}));
    QCOMPARE(f.treeItem(1)->checkState(0), Qt::Unchecked);
    QCOMPARE(f.treeItem(0)->checkState(0), Qt::Checked);
    QCOMPARE(changes, 0);
    QVERIFY(!f.tree.signalsBlocked());
    QCOMPARE(f.dock.widget(), f.view->currentDisplay()->scene()->panel());
    emit f.tabs->tabCloseRequested(0);
    QVERIFY(!f.dock.widget());
    f.view->tabClose(0);
    f.view->tabClose(-1);
}

void tst_welldisplaywidget::namesWithMarksOfTabs()
{
    ViewFixture f;
    f.addWell(QStringLiteral("A:B & C"));
    f.launch->catalogue.build();
    auto *item = new QTreeWidgetItem(f.tree.topLevelItem(0), {QStringLiteral("A:B & C")});
    item->setCheckState(0, Qt::Checked);
    f.add("A:B & C");
    QCOMPARE(f.view->displayedWells(), QStringList{QStringLiteral("A:B & C")});
    f.view->tabClose(0);
    QCOMPARE(item->checkState(0), Qt::Unchecked);
    QVERIFY(f.view->displayedWells().isEmpty());
}

void tst_welldisplaywidget::withoutATree()
{
    ViewFixture f;
    WellLogsViewWidget view(*f.launch, nullptr, nullptr);
    view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
    view.tabClose(0);
    QVERIFY(view.displayedWells().isEmpty());
    f.tree.clear();
    f.add("W");
    f.view->tabClose(0);
    QVERIFY(f.view->displayedWells().isEmpty());
}

void tst_welldisplaywidget::closingOneTabKeepsThePanelOfAnother()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    WellLogsScene *scene = f.view->display(1)->scene();
    scene->selection().selectOnly(scene->tracks().first());
    scene->selection().showPanelOfSelection();
    QWidget *panel = f.dock.widget();
    f.view->tabClose(0);
    QCOMPARE(f.dock.widget(), panel);
    QVERIFY(scene->tracks().first()->isSelected());
}

void tst_welldisplaywidget::removingADisplay()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    f.view->removeWellDisWidget(QStringLiteral("Y"));
    QCOMPARE(f.tabs->count(), 2);
    const QPointer<QWidget> display = f.tabs->widget(0);
    f.view->removeWellDisWidget(QStringLiteral("W"));
    QVERIFY(!display);
    QCOMPARE(f.view->displayedWells(), (QStringList{"X"}));
    QCOMPARE(f.treeItem(0)->checkState(0), Qt::Checked); // the tree asked for it
    f.view->removeWellDisWidget(QStringLiteral("X"));
    QCOMPARE(f.tabs->count(), 0);
}

void tst_welldisplaywidget::markersOfOtherTabs()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    f.view->addMarkerInScene(QStringLiteral("W"), QStringLiteral("Top"));
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.view->display(0)->scene()->markers().all().size(), 1);
    f.tabs->setCurrentIndex(1);
    f.view->removeMarkerFromScene(QStringLiteral("W"), QStringLiteral("Top"));
    QCOMPARE(f.tabs->currentIndex(), 0);
    QVERIFY(f.view->display(0)->scene()->markers().all().isEmpty());
    f.view->addMarkerInScene(QStringLiteral("Y"), QStringLiteral("Top"));
    f.view->removeMarkerFromScene(QStringLiteral("Y"), QStringLiteral("Top"));
    QCOMPARE(f.tabs->currentIndex(), 0);
}

void tst_welldisplaywidget::switchingTabsSwitchesPanels()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    f.view->setCurrentTab(0);
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.dock.widget(), f.view->display(0)->scene()->panel());
    f.tabs->setCurrentIndex(1); // by the keyboard
    QCOMPARE(f.dock.widget(), f.view->display(1)->scene()->panel());
    f.view->setCurrentTab(9);
    QCOMPARE(f.tabs->currentIndex(), 1);
}

void tst_welldisplaywidget::picturesShowNoSelection()
{
    ViewFixture f;
    f.add("W");
    WellLogsScene *scene = f.view->currentDisplay()->scene();
    const QString path = f.path(QStringLiteral("/W.tiff"));
    f.view->saveCurrentPicture();
    const QByteArray plain = files::read(path);
    QVERIFY(!plain.isEmpty());
    for (QGraphicsItem *item :
         std::initializer_list<QGraphicsItem *>{scene->tracks().at(1), scene->tracks().at(0)->curves().at(0)}) {
        QVERIFY(QFile::remove(path));
        scene->selection().selectOnly(item);
        f.view->saveCurrentPicture();
        QCOMPARE(files::read(path), plain);
        QVERIFY(item->isSelected());
    }
}

void tst_welldisplaywidget::picturesOfTheCurrentTab()
{
    ViewFixture f;
    QImage page(100, 100, QImage::Format_RGB32);
    page.fill(Qt::yellow);
    {
        QPainter painter(&page);
        f.view->renderCurrent(painter); // nothing displayed
    }
    f.view->saveCurrentPicture();
    QCOMPARE(page.pixelColor(50, 50), QColor(Qt::yellow));
    f.add("W");
    f.add("X");
    f.view->saveCurrentPicture();
    QVERIFY(QFile::exists(f.path(QStringLiteral("/X.tiff"))));
    QVERIFY(!QFile::exists(f.path(QStringLiteral("/W.tiff"))));
    QPainter painter(&page);
    f.view->currentDisplay()->scene()->selection().selectOnly(f.view->currentDisplay()->scene()->tracks().first());
    f.view->renderCurrent(painter);
    painter.end();
    QVERIFY(f.view->currentDisplay()->scene()->tracks().first()->isSelected()); // selected, but not in the picture
    QVERIFY(page.pixelColor(50, 50) != QColor(Qt::yellow));
}

void tst_welldisplaywidget::slotsByName()
{
    ViewFixture f;
    for (const char *slot :
         {"addWellDisWidget(QString,QString)", "removeWellDisWidget(QString)", "addMarkerInScene(QString,QString)",
          "removeMarkerFromScene(QString,QString)", "tabClose(int)", "setCurrentTab(int)"})
        QVERIFY2(f.view->metaObject()->indexOfSlot(slot) >= 0, slot);
}

LORVA_TEST_MAIN(tst_welldisplaywidget)
#include "tst_welldisplaywidget.moc"
