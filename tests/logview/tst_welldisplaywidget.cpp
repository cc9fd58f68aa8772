#include "displaywidgetfixture.h"
#include "logview/welldisplaydata.h"
#include "support/testmain.h"

#include <QSplitter>
#include <QTabWidget>

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
    void aRangeThatTakesMarkersOutOfSightSaysSo();
    void aRangeUpsideDownSaysSo();
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

void tst_welldisplaywidget::aRangeThatTakesMarkersOutOfSightSaysSo()
{
    WidgetFixture f;
    f.show();
    QVERIFY(f.showMarker(QStringLiteral("Top"))); // at 100
    QVERIFY(f.statusText().isEmpty());
    f.type(f.panel(), "startDepthEdit", QStringLiteral("90"));
    QVERIFY(f.statusText().isEmpty());
    f.type(f.panel(), "startDepthEdit", QStringLiteral("200"));
    QCOMPARE(f.statusText(), QString("The marker \"Top\" is outside the depth range."));
}

void tst_welldisplaywidget::aRangeUpsideDownSaysSo()
{
    const QString told("Nothing can be drawn: the start depth is not above the end depth.");
    WidgetFixture f;
    f.show();
    f.type(f.panel(), "endDepthEdit", QStringLiteral("300"));
    QCOMPARE(f.statusText(), QString());
    f.type(f.panel(), "startDepthEdit", QStringLiteral("300"));
    QCOMPARE(f.statusText(), told);
    f.type(f.panel(), "startDepthEdit", QStringLiteral("400"));
    QCOMPARE(f.statusText(), told);
    f.type(f.panel(), "endDepthEdit", QStringLiteral("500"));
    QCOMPARE(f.statusText(), QString());
    f.display->setStatusLabel(QStringLiteral("another line"));
    f.type(f.panel(), "endDepthEdit", QStringLiteral("600"));
    QCOMPARE(f.statusText(), QString("another line"));
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
    f.moveTo(QPointF(150, 332));
    QCOMPARE(marker->y(), 332.0);
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

LORVA_TEST_MAIN(tst_welldisplaywidget)
#include "tst_welldisplaywidget.moc"
