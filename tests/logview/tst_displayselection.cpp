#include "logview/markeritempropertywidget.h"
#include "scenefixture.h"
#include "support/testmain.h"

#include <QGraphicsSceneMouseEvent>
#include <QSignalSpy>

#include <algorithm>

class tst_displayselection : public QObject
{
    Q_OBJECT

private slots:
    void pressingShowsPanels();
    void otherButtonsChangeNothing();
    void aModeKeepsPanelsAway();
    void headersSelectWhatTheyStandFor();
    void slotsSetTheModeAndDelete();
    void deleteCurveDestroysWhatIsSelected();
    void panelsAreMadeWhenAskedFor();
    void deletingTheItemOfTheShownPanelShowsTheScenes();
    void severalSelected();
    void doubleClicksCountAsPresses();
    void controlLeavesMovesToOthers();
};

void tst_displayselection::pressingShowsPanels()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    QCOMPARE(f.dock.widget(), f.panel());
    QSignalSpy shown(scene, &WellLogsScene::propertyWidgetChanged);
    f.press(Qt::LeftButton, QPointF(300, 300));
    QCOMPARE(f.dock.widget(), f.panelOf(f.track(2)));
    QCOMPARE(scene->selection().currentTrackIndex(), 2);
    QVERIFY(f.track(2)->isSelected());
    QVERIFY(f.headerOf(f.track(2))->isSelected());
    // The curve of track 0 passes x = y / 7559 × 192 × ... : value 50 of 150 at 500 m.
    const CurveItem *curve = f.curve(0, 0);
    const double y = f.track(0)->axis().toPixel(500);
    f.press(Qt::LeftButton, QPointF(64, y));
    QVERIFY(curve->isSelected());
    QVERIFY(!f.headerOf(f.track(2))->isSelected());
    const auto *title = f.dock.widget()->findChild<QLabel *>(QStringLiteral("titleLabel"));
    QCOMPARE(title->text(), QString("Curve Property"));
    QVERIFY(title->font().bold());
    f.press(Qt::LeftButton, QPointF(100, marker->y() + 1));
    QCOMPARE(f.dock.widget(), f.panelOf(marker));
    f.press(Qt::LeftButton, QPointF(100, scene->trackHeight() + 30));
    QCOMPARE(f.dock.widget(), f.panel());
    QCOMPARE(shown.size(), 4);
}

void tst_displayselection::otherButtonsChangeNothing()
{
    SceneFixture f;
    f.show();
    f.press(Qt::LeftButton, QPointF(300, 300));
    f.press(Qt::RightButton, QPointF(210, 300));
    QCOMPARE(f.dock.widget(), f.panelOf(f.track(2)));
    QVERIFY(f.track(2)->isSelected());
    f.press(Qt::MiddleButton, QPointF(210, 300));
    QVERIFY(f.track(2)->isSelected());
    QGraphicsSceneMouseEvent event(QEvent::GraphicsSceneMousePress);
    event.setButton(Qt::RightButton);
    event.ignore();
    QCoreApplication::sendEvent(f.scene(), &event);
    QVERIFY(event.isAccepted());
}

void tst_displayselection::aModeKeepsPanelsAway()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    scene->savePickedMarkerClicked();
    QCOMPARE(scene->mode(), WellLogsScene::Mode::SavePickedMarker);
    f.press(Qt::LeftButton, QPointF(300, 300));
    QVERIFY(f.track(2)->isSelected());
    QCOMPARE(f.dock.widget(), f.panel());
    QVERIFY(scene->selection().currentTrackIndex() < 0);
}

void tst_displayselection::headersSelectWhatTheyStandFor()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    QGraphicsView *headers = f.display->headerView();
    const auto click = [headers](const QPointF &position) {
        QTest::mouseClick(headers->viewport(), Qt::LeftButton, {}, headers->mapFromScene(position));
    };
    click(QPointF(210, 40)); // depth track
    QVERIFY(f.track(1)->isSelected());
    QCOMPARE(f.dock.widget(), f.panelOf(f.track(1)));
    QCOMPARE(scene->selection().currentTrackIndex(), 1);
    click(QPointF(600, 700)); // beside the headers
    QVERIFY(f.track(1)->isSelected());
    QVERIFY(f.headerOf(f.track(1))->isSelected());
    QTest::mouseClick(headers->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      headers->mapFromScene(QPointF(210, 40)));
    QVERIFY(f.headerOf(f.track(1))->isSelected());
    click(QPointF(300, 40)); // the header of the curve in track 2
    QVERIFY(f.curve(2, 0)->isSelected());
    QVERIFY(!f.track(1)->isSelected());
    QVERIFY(!f.headerOf(f.track(1))->isSelected());
}

void tst_displayselection::slotsSetTheModeAndDelete()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    QSignalSpy deleteTrack(scene, &WellLogsScene::sendDeleteTrack);
    QVERIFY(QMetaObject::invokeMethod(scene, "deleteTrack"));
    QCOMPARE(scene->mode(), WellLogsScene::Mode::DeleteTrackOrCurve);
    QVERIFY(deleteTrack.isEmpty()); // no track was clicked
    scene->selection().selectOnly(f.track(1));
    scene->deleteTrack();
    QCOMPARE(deleteTrack.size(), 1);
    QCOMPARE(deleteTrack.first().first().toInt(), 1);
    QCOMPARE(scene->tracks().size(), 2);
    scene->deleteTrack(); // the number that was clicked counts: its neighbour has moved up
    QCOMPARE(deleteTrack.last().first().toInt(), 1);
    QCOMPARE(scene->tracks().size(), 1);
    scene->deleteTrack(); // nobody has that number any more
    QCOMPARE(deleteTrack.size(), 3);
    QCOMPARE(scene->tracks().size(), 1);

    MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    scene->selection().selectOnly(marker);
    QVERIFY(QMetaObject::invokeMethod(scene, "deleteMarker"));
    QCOMPARE(scene->mode(), WellLogsScene::Mode::DeleteMarker);
    QVERIFY(scene->markers().all().isEmpty());

    CurveItem *curve = f.curve(0, 0);
    scene->selection().selectOnly(curve);
    scene->deleteMarker();
    QCOMPARE(f.track(0)->curves().size(), 1);
    scene->deleteCurve();
    QCOMPARE(scene->mode(), WellLogsScene::Mode::DeleteTrackOrCurve);
    QVERIFY(f.track(0)->curves().isEmpty());
    scene->deleteCurve();
    scene->deleteMarker();
    DisplayFixture::picture(scene, QRect(0, 0, 240, 600));
}

void tst_displayselection::deleteCurveDestroysWhatIsSelected()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    scene->selection().selectOnly(f.track(1));
    scene->deleteCurve();
    QCOMPARE(scene->tracks().size(), 2);
    QCOMPARE(f.track(1)->trackNumber(), 1);
    QCOMPARE(f.track(1)->x(), 192.0);
    scene->selection().selectOnly(f.showMarker(QStringLiteral("Top")));
    scene->deleteCurve();
    QVERIFY(scene->markers().all().isEmpty());
    scene->clearSelection();
    scene->deleteCurve();
    QCOMPARE(scene->tracks().size(), 2);
}

void tst_displayselection::panelsAreMadeWhenAskedFor()
{
    SceneFixture f;
    constexpr int markers = 300;
    for (int i = 0; i < markers; ++i)
        f.addMarker(QStringLiteral("M%1").arg(i), 5.0F * static_cast<float>(i));
    WellLogsScene *scene = f.show();
    const auto widgets = [] { return QApplication::allWidgets().size(); };
    const auto markerPanels = [] {
        const QWidgetList all = QApplication::allWidgets();
        return std::count_if(all.begin(), all.end(), [](const QWidget *widget) {
            return qobject_cast<const MarkerItemPropertyWidget *>(widget) != nullptr;
        });
    };
    const int before = widgets();
    for (int i = 0; i < markers; ++i)
        f.showMarker(QStringLiteral("M%1").arg(i));
    QCOMPARE(scene->markers().all().size(), markers);
    ItemPanels &panels = scene->selection().panels();
    QCOMPARE(widgets(), before); // nor one of a track or curve
    QVERIFY(!panels.existingPanelOf(f.track(0)));

    MarkerItem *marker = scene->markers().all().at(7);
    scene->selection().selectOnly(marker);
    scene->selection().showPanelOfSelection();
    const QPointer<QWidget> panel = f.dock.widget();
    QCOMPARE(panel.data(), panels.existingPanelOf(marker));
    QCOMPARE(DisplayFixture::text(panel, "markerNameEdit"), QString("M7"));
    scene->selection().showPanelOfSelection();
    QCOMPARE(f.dock.widget(), panel.data()); // the same one
    QCOMPARE(markerPanels(), 1);
    scene->deleteMarker();
    QCOMPARE(markerPanels(), 0);
    QVERIFY(!panel);

    // One that went with its dock is made anew.
    f.dock.setWidget(panels.panelOf(f.track(0)));
    delete f.dock.widget();
    QVERIFY(!panels.existingPanelOf(f.track(0)));
    QVERIFY(f.panelOf(f.track(0)));
    QVERIFY(!panels.panelOf(scene->addRect(0, 0, 5, 5)));
    const QPointer<QWidget> last = panels.panelOf(f.curve(0, 0));
    f.display.reset();
    QVERIFY(!last);
}

void tst_displayselection::deletingTheItemOfTheShownPanelShowsTheScenes()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    const auto select = [scene](QGraphicsItem *item) {
        scene->selection().selectOnly(item);
        scene->selection().showPanelOfSelection();
    };
    select(marker);
    scene->deleteMarker();
    QCOMPARE(f.dock.widget(), f.panel());
    select(f.curve(0, 0));
    scene->deleteCurve();
    QCOMPARE(f.dock.widget(), f.panel());
    select(f.curve(2, 0)); // goes with its track
    QVERIFY(f.dock.widget() != f.panel());
    f.display->deleteTrack(2);
    QCOMPARE(f.dock.widget(), f.panel());
    select(f.track(0));
    f.display->deleteTrack(1); // another one
    QCOMPARE(f.dock.widget(), f.panelOf(f.track(0)));
}

void tst_displayselection::severalSelected()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    QSignalSpy shown(scene, &WellLogsScene::propertyWidgetChanged);
    f.track(0)->setSelected(true);
    f.track(1)->setSelected(true);
    scene->selection().showPanelOfSelection();
    QCOMPARE(shown.size(), 2); // one for each
    QVERIFY(shown.last().first().value<QWidget *>() != f.panel());
    auto *other = scene->addRect(0, 0, 5, 5);
    other->setFlag(QGraphicsItem::ItemIsSelectable);
    scene->selection().selectOnly(other);
    scene->selection().showPanelOfSelection(); // none of ours
    QCOMPARE(shown.last().first().value<QWidget *>(), f.panel());
}

void tst_displayselection::doubleClicksCountAsPresses()
{
    SceneFixture f;
    f.show();
    f.press(Qt::LeftButton, QPointF(300, 300));
    QGraphicsView *view = f.display->logView();
    for (const Qt::MouseButton button : {Qt::MiddleButton, Qt::RightButton}) {
        QTest::mouseDClick(view->viewport(), button, {}, view->mapFromScene(QPointF(210, 300)));
        QVERIFY(f.track(2)->isSelected());
        QCOMPARE(f.dock.widget(), f.panelOf(f.track(2)));
    }
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->mapFromScene(QPointF(210, 300)));
    QCOMPARE(f.dock.widget(), f.panelOf(f.track(1)));
}

void tst_displayselection::controlLeavesMovesToOthers()
{
    SceneFixture f;
    f.show();
    for (const QEvent::Type type : {QEvent::GraphicsSceneMouseMove, QEvent::GraphicsSceneMouseRelease})
        for (const Qt::KeyboardModifier modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
            QGraphicsSceneMouseEvent event(type);
            event.setModifiers(modifier);
            event.ignore();
            QCoreApplication::sendEvent(f.scene(), &event);
            if (modifier != Qt::ControlModifier)
                QVERIFY(event.isAccepted());
            else if (type == QEvent::GraphicsSceneMouseRelease) // nothing was grabbed: the scene leaves it alone
                QVERIFY(!event.isAccepted());
        }
}

LORVA_TEST_MAIN(tst_displayselection)
#include "tst_displayselection.moc"
