#include "scenefixture.h"
#include "support/testmain.h"

#include <QSignalSpy>

class tst_welllogsscene : public QObject
{
    Q_OBJECT

private slots:
    void startsAsTheWellStands();
    void heightAndRectangles();
    void widthsAreTruncatedOneByOne();
    void panelRowsAndTexts();
    void depthTypeAndUnit();
    void feetTwiceOnTvdKbMultipliesTwice();
    void theDepthTypeSetterSelectsByOldIndexes();
    void anUnknownDepthTypeChangesNothing();
    void depthsEditedByTheUser();
    void aFieldLeftAsItWasMovesNothing();
    void scaleEditedByTheUser();
    void aScaleThatIsNoneIsPutBack();
    void markersArePlacedAndDropped();
    void markersFollowTypeAndUnit();
    void aMarkerInFeetIgnoresTheKellyBushing();
    void deletingAMarkerByName();
    void pickedMarkersAreNumbered();
    void slotsByNameActOnUntouchedFields();
    void droppedMarkersAreTold();
    void rebuildingForgetsMarkers();
    void markersOnTheEndsStay();
    void markersAtEditedDepthsAreTakenAsStored();
    void equalNames();
    void slotsByName();
    void absurdRanges_data();
    void absurdRanges();
    void itemTypes();
};

void tst_welllogsscene::startsAsTheWellStands()
{
    SceneFixture f;
    const WellLogsScene *scene = f.show();
    QCOMPARE(scene->mode(), WellLogsScene::Mode::None);
    QCOMPARE(scene->depthType(), 0);
    QCOMPARE(scene->depthUnit(), 0);
    QCOMPARE(scene->startDepth(), 0.0F);
    QCOMPARE(scene->endDepth(), 1500.0F);
    QCOMPARE(scene->totalDepth(), 1500.0F);
    QCOMPARE(scene->well().kbElevation, 25.0);
    QVERIFY(scene->selection().currentTrackIndex() < 0);
    QVERIFY(scene->markers().all().isEmpty());
    QVERIFY(!scene->markers().last());
    QCOMPARE(scene->tracks().size(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(scene->tracks().at(i)->trackNumber(), i);
}

void tst_welllogsscene::heightAndRectangles()
{
    SceneFixture f;
    f.well().header.totalDepth = 2000;
    WellLogsScene *scene = f.show();
    QVERIFY(qAbs(f.track(0)->height() - 7559.055F) < 0.01F);
    QCOMPARE(scene->trackHeight(), 7559);
    QCOMPARE(scene->sceneRect(), QRectF(0, 0, 192 + 48 + 192, 7609));
    QCOMPARE(f.display->headerView()->scene()->sceneRect(), QRectF(0, 0, 432, 720));
}

void tst_welllogsscene::widthsAreTruncatedOneByOne()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    f.track(0)->setWidthInches(1.3F);
    f.track(1)->setWidthInches(2.7F);
    QCOMPARE(f.track(0)->x(), 0.0);
    QCOMPARE(f.track(1)->x(), 124.0);
    QCOMPARE(f.track(2)->x(), 383.0);
    QCOMPARE(scene->sceneWidth(), 383 + 192);
    QCOMPARE(f.headerOf(f.track(1))->pos(), QPointF(124, 20));
    QCOMPARE(scene->sceneRect().width(), 575.0);
    QCOMPARE(f.display->headerView()->scene()->sceneRect(), QRectF(0, 0, 575, 720));
    f.track(0)->setWidthInches(1.5F);
    QCOMPARE(f.track(0)->width(), 144.0F);
    QCOMPARE(f.track(1)->x(), 144.0);
    // The banner spans all tracks.
    QGraphicsScene *headers = f.display->headerView()->scene();
    QCOMPARE(DisplayFixture::picture(headers, QRect(scene->sceneWidth() - 5, 10, 1, 1)).pixelColor(0, 0),
             QColor(240, 127, 33));
}

void tst_welllogsscene::panelRowsAndTexts()
{
    SceneFixture f;
    f.show();
    QStringList labels;
    labels = DisplayFixture::captions(f.panel());
    QCOMPARE(labels,
             (QStringList{"Wellname", "W", "Scale - 1", "Start Depth", "End Depth", "Depth Type",
                          "Depth Unit"})); // top to bottom
    QCOMPARE(f.text(f.panel(), "scaleEdit"), QString("1000"));
    QCOMPARE(f.text(f.panel(), "startDepthEdit"), QString("0"));
    QCOMPARE(f.text(f.panel(), "endDepthEdit"), QString("1500"));
    for (const char *field : {"scaleEdit", "startDepthEdit", "endDepthEdit"})
        QVERIFY(qobject_cast<const QDoubleValidator *>(
            f.panel()->findChild<QLineEdit *>(QString::fromLatin1(field))->validator()));
    const auto items = [&f](const char *name) {
        const auto *box = f.panel()->findChild<QComboBox *>(QString::fromLatin1(name));
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts.append(box->itemText(i));
        return texts;
    };
    QCOMPARE(items("depthTypeBox"), (QStringList{"MD", "TVDSS"}));
    QCOMPARE(items("depthUnitBox"), (QStringList{"METER", "FEET"}));
}

void tst_welllogsscene::depthTypeAndUnit()
{
    SceneFixture f;
    const WellLogsScene *scene = f.show();
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    QCOMPARE(scene->depthType(), 2);
    QCOMPARE(f.text(f.panel(), "startDepthEdit"), QString("-25"));
    QCOMPARE(f.text(f.panel(), "endDepthEdit"), QString("1475"));
    QCOMPARE(f.track(0)->depthTypeText(), QString("TVDSS"));
    QCOMPARE(f.track(2)->axis().start, -25.0F);
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    QCOMPARE(f.text(f.panel(), "startDepthEdit"), QString("-82.021"));
    QCOMPARE(f.text(f.panel(), "endDepthEdit"), QString("4839.24"));
    // One formula for both units: the display is 3.28 times as high.
    QCOMPARE(scene->trackHeight(), logview::DepthAxis::of(-82.021F, 4839.239F).heightPx());
    QCOMPARE(scene->sceneRect().height(), scene->trackHeight() + 50.0);
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("METER"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("MD"));
    QCOMPARE(f.text(f.panel(), "startDepthEdit"), QString("0"));
    QCOMPARE(f.text(f.panel(), "endDepthEdit"), QString("1500"));
    QCOMPARE(f.track(0)->depthTypeText(), QString("MD"));
}

void tst_welllogsscene::feetTwiceOnTvdKbMultipliesTwice()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    f.panel()->setDepthType(logview::TvdKb);
    f.panel()->setDepthUnit(logview::Feet);
    scene->applyDepthTypeAndUnit();
    QCOMPARE(scene->endDepth(), static_cast<float>(1500 * 3.28084));
    scene->applyDepthTypeAndUnit();
    QCOMPARE(f.text(f.panel(), "endDepthEdit"), QString("16145.9"));
    QVERIFY(f.track(0)->depthTypeText() != QLatin1String("TVDSS"));
}

void tst_welllogsscene::theDepthTypeSetterSelectsByOldIndexes()
{
    SceneFixture f;
    f.show();
    const auto *box = f.panel()->findChild<QComboBox *>(QStringLiteral("depthTypeBox"));
    f.panel()->setDepthType(logview::TvdKb);
    QCOMPARE(box->currentText(), QString("MD"));
    QCOMPARE(f.scene()->depthType(), 1);
    f.panel()->setDepthType(logview::TvdSubsea); // index 2 of two items: nothing
    QCOMPARE(box->currentIndex(), -1);
    QCOMPARE(f.scene()->depthType(), 2);
    f.panel()->setDepthType(logview::MeasuredDepth);
    QCOMPARE(box->currentIndex(), 0);
}

void tst_welllogsscene::anUnknownDepthTypeChangesNothing()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    scene->setDepthType(7);
    scene->setDepthUnit(logview::Feet);
    scene->applyDepthTypeAndUnit();
    QCOMPARE(scene->endDepth(), 1500.0F);
    QCOMPARE(f.track(0)->depthReference().unit, logview::Metre);
}

void tst_welllogsscene::depthsEditedByTheUser()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    f.type(f.panel(), "startDepthEdit", QStringLiteral("500"));
    f.type(f.panel(), "endDepthEdit", QStringLiteral("1000"));
    QCOMPARE(scene->startDepth(), 500.0F);
    QCOMPARE(scene->endDepth(), 1000.0F);
    for (const TrackItem *track : scene->tracks()) {
        QCOMPARE(track->axis().start, 500.0F);
        QCOMPARE(track->axis().end, 1000.0F);
    }
    QCOMPARE(scene->trackHeight(), 1889);
    QCOMPARE(scene->sceneRect().height(), 1939.0);
    QVERIFY(QMetaObject::invokeMethod(f.panel(), "startDepthChanged"));
    f.type(f.panel(), "startDepthEdit", QStringLiteral("no number"));
    QCOMPARE(scene->startDepth(), 0.0F);
}

void tst_welllogsscene::aFieldLeftAsItWasMovesNothing()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 1000);
    WellLogsScene *scene = f.show();
    const MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    const double y = marker->y();
    emit f.panel()->findChild<QLineEdit *>(QStringLiteral("startDepthEdit"))->editingFinished();
    emit f.panel()->findChild<QLineEdit *>(QStringLiteral("endDepthEdit"))->editingFinished();
    QCOMPARE(marker->y(), y);
    QCOMPARE(scene->endDepth(), static_cast<float>(1500 * 3.28084));
}

void tst_welllogsscene::scaleEditedByTheUser()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    const MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    f.type(f.panel(), "scaleEdit", QStringLiteral("500"));
    QCOMPARE(f.track(0)->scale(), 500.0F);
    QCOMPARE(scene->trackHeight(), 11338);
    QCOMPARE(scene->sceneRect().height(), 11388.0);
    QCOMPARE(marker->y(), 5669.0);
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    const double part = marker->y() / scene->trackHeight();
    f.type(f.panel(), "scaleEdit", QStringLiteral("200"));
    QVERIFY(qAbs(marker->y() / scene->trackHeight() - part) < 1e-6); // at its depth in the display's unit
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("METER"));
    // A marker that is out of the range stays where it is.
    MarkerItem *deep = nullptr;
    scene->pickedMarkerClicked();
    deep = scene->markers().last();
    deep->setDepth(9000);
    deep->setPos(0, 77);
    f.type(f.panel(), "scaleEdit", QStringLiteral("500"));
    QCOMPARE(deep->y(), 77.0);
    QVERIFY(QMetaObject::invokeMethod(f.panel(), "scaleChanged"));
}

void tst_welllogsscene::aScaleThatIsNoneIsPutBack()
{
    SceneFixture f;
    const WellLogsScene *scene = f.show();
    const int height = scene->trackHeight();
    for (const char *scale : {"0", "-5", "", "nan", "inf", "1e39"}) {
        f.type(f.panel(), "scaleEdit", QString::fromLatin1(scale));
        QCOMPARE(f.text(f.panel(), "scaleEdit"), QString("1000"));
        QCOMPARE(scene->trackHeight(), height);
    }
}

void tst_welllogsscene::markersArePlacedAndDropped()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    f.addMarker(QStringLiteral("Deep"), 1400);
    WellLogsScene *scene = f.show();
    const MarkerItem *top = f.showMarker(QStringLiteral("Top"));
    const MarkerItem *deep = f.showMarker(QStringLiteral("Deep"));
    QCOMPARE(scene->markers().last(), deep);
    QCOMPARE(top->width(), 432.0F);
    QCOMPARE(top->x(), 0.0);
    QCOMPARE(top->y(), 750.0 * scene->trackHeight() / 1500);
    f.type(f.panel(), "endDepthEdit", QStringLiteral("1000"));
    QCOMPARE(scene->markers().all().size(), 1);
    QVERIFY(!scene->markers().find(QStringLiteral("Deep")));
    QVERIFY(!scene->markers().last());
    QCOMPARE(top->y(), 750.0 * scene->trackHeight() / 1000);
    f.type(f.panel(), "endDepthEdit", QStringLiteral("1500"));
    QCOMPARE(scene->markers().all().size(), 1);
    // Ends count as inside, beyond them nothing is shown.
    QVERIFY(!f.showMarker(QStringLiteral("None")));
    f.type(f.panel(), "startDepthEdit", QStringLiteral("750"));
    QCOMPARE(scene->markers().all().size(), 1);
    QCOMPARE(top->y(), 0.0);
}

void tst_welllogsscene::markersFollowTypeAndUnit()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 1000);
    f.addMarker(QStringLiteral("Shallow"), 10);
    WellLogsScene *scene = f.show();
    const MarkerItem *top = f.showMarker(QStringLiteral("Top"));
    f.showMarker(QStringLiteral("Shallow"));
    const double mdY = top->y();
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    QCOMPARE(top->y(), mdY); // the range moves with the depths
    QCOMPARE(scene->markers().all().size(), 2);
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    const double d = (1000.0 - 25) * 3.28084;
    const auto start = static_cast<double>(scene->startDepth());
    const auto end = static_cast<double>(scene->endDepth());
    QVERIFY(qAbs(top->y() - (d - start) * scene->trackHeight() / (end - start)) < 0.02);
}

void tst_welllogsscene::aMarkerInFeetIgnoresTheKellyBushing()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 1000);
    WellLogsScene *scene = f.show();
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    const MarkerItem *top = f.showMarker(QStringLiteral("Top"));
    const auto start = static_cast<double>(scene->startDepth());
    const auto end = static_cast<double>(scene->endDepth());
    QVERIFY(qAbs(top->y() - (1000 * 3.28084 - start) * scene->trackHeight() / (end - start)) < 0.02);
}

void tst_welllogsscene::deletingAMarkerByName()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    f.showMarker(QStringLiteral("Top"));
    scene->deleteMarker(QStringLiteral("Unknown"));
    QCOMPARE(scene->markers().all().size(), 1);
    const int items = scene->items().size();
    scene->deleteMarker(QStringLiteral("Top"));
    QVERIFY(scene->markers().all().isEmpty());
    QVERIFY(scene->items().size() < items);
}

void tst_welllogsscene::pickedMarkersAreNumbered()
{
    SceneFixture f;
    WellLogsScene *scene = f.show();
    QVERIFY(QMetaObject::invokeMethod(scene, "pickedMarkerClicked"));
    QCOMPARE(scene->mode(), WellLogsScene::Mode::PickMarker);
    QCOMPARE(scene->markers().last()->markerName(), QString("New_0"));
    QCOMPARE(scene->markers().last()->wellName(), QString("W"));
    QCOMPARE(scene->markers().last()->depth(), 0.0F);
    QCOMPARE(scene->markers().last()->width(), 432.0F);
    scene->pickedMarkerClicked();
    QCOMPARE(scene->markers().last()->markerName(), QString("New_1"));
    QCOMPARE(scene->markers().all().size(), 2);
    QVERIFY(scene->items().contains(scene->markers().last()));
}

void tst_welllogsscene::slotsByNameActOnUntouchedFields()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 1000);
    const WellLogsScene *scene = f.show();
    const MarkerItem *marker = f.showMarker(QStringLiteral("Top"));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    const double inFeet = marker->y();
    for (const char *field : {"startDepthEdit", "endDepthEdit", "scaleEdit"}) {
        auto *edit = f.panel()->findChild<QLineEdit *>(QString::fromLatin1(field));
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Return);
        QTest::keyClick(edit, Qt::Key_Tab);
    }
    QCOMPARE(marker->y(), inFeet);
    for (const char *slot : {"startDepthChanged", "endDepthChanged"}) {
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("METER"));
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
        QCOMPARE(marker->y(), inFeet);
        QVERIFY(QMetaObject::invokeMethod(f.panel(), slot));
        const auto end = static_cast<double>(scene->endDepth());
        QVERIFY(qAbs(marker->y() - 1000 * scene->trackHeight() / end) < 1e-6); // 1000, as it is stored
    }
    QVERIFY(QMetaObject::invokeMethod(f.panel(), "scaleChanged"));
    QCOMPARE(marker->y(), inFeet);
}

void tst_welllogsscene::droppedMarkersAreTold()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 100);
    f.addMarker(QStringLiteral("Middle"), 700);
    f.addMarker(QStringLiteral("Base"), 1490);
    f.addMarker(QStringLiteral("Sea"), -10);
    WellLogsScene *scene = f.show();
    QSignalSpy dropped(scene, &WellLogsScene::markersDropped);
    for (const char *name : {"Top", "Middle", "Base"})
        f.showMarker(QString::fromLatin1(name));
    scene->pickedMarkerClicked(); // at 0: goes without a word, the well does not know it
    f.type(f.panel(), "startDepthEdit", QStringLiteral("50"));
    QCOMPARE(scene->markers().all().size(), 3);
    QCOMPARE(dropped.size(), 0);
    f.type(f.panel(), "startDepthEdit", QStringLiteral("800"));
    QCOMPARE(dropped.size(), 1);
    QCOMPARE(dropped.last().first().toStringList(), (QStringList{"Top", "Middle"}));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS")); // Base stays: the range moves with it
    QCOMPARE(dropped.size(), 1);
    f.type(f.panel(), "endDepthEdit", QStringLiteral("1000"));
    QCOMPARE(dropped.last().first().toStringList(), QStringList{"Base"});
    // A change of the type: added in feet below sea level, a marker stands at its depth without the bushing.
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("MD"));
    f.type(f.panel(), "startDepthEdit", QStringLiteral("-20"));
    QVERIFY(f.showMarker(QStringLiteral("Sea")));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    QCOMPARE(dropped.last().first().toStringList(), QStringList{"Sea"});
    // The user's own deletion.
    QVERIFY(f.showMarker(QStringLiteral("Middle")));
    scene->selection().selectOnly(scene->markers().last());
    scene->deleteMarker();
    QCOMPARE(dropped.last().first().toStringList(), QStringList{"Middle"});
    QCOMPARE(dropped.size(), 4);
    scene->pickedMarkerClicked();
    scene->selection().selectOnly(scene->markers().last());
    scene->deleteMarker();
    QCOMPARE(dropped.size(), 4);
}

void tst_welllogsscene::rebuildingForgetsMarkers()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    f.showMarker(QStringLiteral("Top"));
    scene->pickedMarkerClicked();
    const WellRecord well = scene->well();
    scene->beginDisplay(well);
    scene->endDisplay();
    QVERIFY(scene->markers().all().isEmpty());
    QVERIFY(scene->tracks().isEmpty());
    QVERIFY(scene->markers().unsaved().isEmpty());
    QVERIFY(!scene->markers().last());
    QVERIFY(scene->items().isEmpty());
    QCOMPARE(f.display->headerView()->scene()->items().size(), 1); // the banner
    QCOMPARE(scene->sceneRect(), QRectF(0, 0, 0, 5669 + 50));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.type(f.panel(), "scaleEdit", QStringLiteral("200"));
}

void tst_welllogsscene::markersOnTheEndsStay()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Base"), 1500);
    f.addMarker(QStringLiteral("Start"), 0);
    WellLogsScene *scene = f.show();
    const MarkerItem *base = f.showMarker(QStringLiteral("Base"));
    f.showMarker(QStringLiteral("Start"));
    for (const char *unit : {"FEET", "METER"}) {
        f.choose(f.panel(), "depthUnitBox", QString::fromLatin1(unit));
        QCOMPARE(scene->markers().all().size(), 2);
        QCOMPARE(base->y(), static_cast<double>(scene->trackHeight()));
    }
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    QCOMPARE(scene->markers().all().size(), 2);
    scene->deleteMarker(QStringLiteral("Base"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("MD"));
    QVERIFY(f.showMarker(QStringLiteral("Base"))); // added in feet
}

void tst_welllogsscene::markersAtEditedDepthsAreTakenAsStored()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 1000);
    WellLogsScene *scene = f.show();
    const MarkerItem *top = f.showMarker(QStringLiteral("Top"));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.type(f.panel(), "startDepthEdit", QStringLiteral("500"));
    QVERIFY(QMetaObject::invokeMethod(f.panel(), "endDepthChanged"));
    const auto end = static_cast<double>(scene->endDepth());
    QVERIFY(qAbs(top->y() - 500 * scene->trackHeight() / (end - 500)) < 1e-6); // 1000, as it is stored
}

void tst_welllogsscene::equalNames()
{
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 100);
    WellLogsScene *scene = f.show();
    MarkerItem *first = f.showMarker(QStringLiteral("Top"));
    scene->pickedMarkerClicked();
    MarkerItem *second = scene->markers().last();
    second->setMarkerName(QStringLiteral("Top"));
    scene->selection().selectOnly(second);
    scene->deleteMarker();
    QCOMPARE(scene->markers().all(), QVector<MarkerItem *>{first});
    QVERIFY(scene->items().contains(first));
    scene->deleteMarker(QStringLiteral("Top"));
    QVERIFY(scene->markers().all().isEmpty());
}

void tst_welllogsscene::slotsByName()
{
    SceneFixture f;
    f.show();
    for (const char *slot : {"scaleChanged()", "startDepthChanged()", "endDepthChanged()", "depthTypeChanged()",
                             "depthUnitTypeChanged()"})
        QVERIFY2(f.panel()->metaObject()->indexOfSlot(slot) >= 0, slot);
    const QMetaObject *scene = f.scene()->metaObject();
    int last = -1;
    for (const char *slot :
         {"pickedMarkerClicked()", "savePickedMarkerClicked()", "deleteTrack()", "deleteCurve()", "deleteMarker()"}) {
        QVERIFY2(scene->indexOfSlot(slot) > last, slot); // in this order
        last = scene->indexOfSlot(slot);
    }
    QVERIFY(scene->indexOfSignal("propertyWidgetChanged(QWidget*)") >= 0);
    QVERIFY(scene->indexOfSignal("sendDeleteTrack(int)") >= 0);
    // Through the box and its slot: in feet on TVDKB every run multiplies again.
    f.panel()->setDepthType(logview::TvdKb);
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    QVERIFY(QMetaObject::invokeMethod(f.panel(), "depthUnitTypeChanged"));
    QCOMPARE(f.text(f.panel(), "endDepthEdit"), QString("16145.9"));
}

void tst_welllogsscene::absurdRanges_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("scale");
    QTest::newRow("start = end") << "100"
                                 << "100"
                                 << "1000";
    QTest::newRow("upside down") << "1000"
                                 << "100"
                                 << "1000";
    QTest::newRow("beyond single precision") << "-1e39"
                                             << "1e39"
                                             << "1000";
    QTest::newRow("one to one") << "0"
                                << "5000"
                                << "1";
    QTest::newRow("one to a million") << "0"
                                      << "5000"
                                      << "1000000";
    QTest::newRow("tiny scale") << "0"
                                << "5000"
                                << "1e-30";
    QTest::newRow("huge scale") << "0"
                                << "5000"
                                << "1e30";
    QTest::newRow("not a number") << "nan"
                                  << "nan"
                                  << "nan";
}

void tst_welllogsscene::absurdRanges()
{
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QString, scale);
    SceneFixture f;
    f.addMarker(QStringLiteral("Top"), 750);
    WellLogsScene *scene = f.show();
    f.showMarker(QStringLiteral("Top"));
    f.type(f.panel(), "startDepthEdit", start);
    f.type(f.panel(), "endDepthEdit", end);
    f.type(f.panel(), "scaleEdit", scale);
    const int middle = scene->trackHeight() / 2;
    DisplayFixture::picture(scene, QRect(0, middle, 432, 500));
    DisplayFixture::picture(f.display->headerView()->scene(), QRect(0, 0, 432, 100));
    f.press(Qt::LeftButton, QPointF(100, middle));
    f.track(0)->readout(QPointF(100, middle));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    QVERIFY(std::isfinite(scene->sceneRect().height()));
    QVERIFY(scene->trackHeight() >= 0);
    QVERIFY(f.pixel(0, scene->trackHeight() / 2) != QColor(Qt::white)); // still outlined
}

void tst_welllogsscene::itemTypes()
{
    QCOMPARE(static_cast<int>(TrackItem::Type), 65537);
    QCOMPARE(static_cast<int>(CurveItem::Type), 65538);
    QCOMPARE(static_cast<int>(MarkerItem::Type), 65539);
    SceneFixture f;
    f.show();
    QCOMPARE(f.track(0)->type(), 65537);
    QCOMPARE(f.curve(0, 0)->type(), 65538);
    const MarkerItem marker;
    QCOMPARE(marker.type(), 65539);
}

LORVA_TEST_MAIN(tst_welllogsscene)
#include "tst_welllogsscene.moc"
