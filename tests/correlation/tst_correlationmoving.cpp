// Moving in a correlation with mouse and keys: what is in view, and what a press shows.

#include "correlationviewfixture.h"
#include "logview/trackitem.h"
#include "support/testmain.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

class tst_correlationmoving : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ViewFixture>(); }
    void cleanup() { m.reset(); }

    void theWheelChangesTheScale()
    {
        m->store("North");
        CorrelationView *view = m->show();
        m->wheel(-120);
        QCOMPARE(view->scaleFactor(), 1050.0F);
        QCOMPARE(m->text("scaleEdit"), QString("1050"));
        m->wheel(-15);
        QCOMPARE(view->scaleFactor(), 1100.0F); // one step whatever its size
        m->wheel(360);
        QCOMPARE(view->scaleFactor(), 1050.0F);
        const int redraws = view->redrawCount();
        m->wheel(0, Qt::ControlModifier, 120);
        m->wheel(120, Qt::ControlModifier | Qt::ShiftModifier);
        m->wheel(120, Qt::NoModifier);
        QCOMPARE(view->redrawCount(), redraws);
        m->type("scaleEdit", "40");
        m->wheel(120);
        QCOMPARE(view->scaleFactor(), 10.0F);
        m->type("scaleEdit", "50");
        m->wheel(120);
        QCOMPARE(view->scaleFactor(), 0.0F);
        QCOMPARE(m->text("scaleEdit"), QString("0"));
        QCOMPARE(view->tracks().at(0)->height(), 0.0F);
        QCOMPARE(view->scene()->sceneRect().height(), 150.0);
        m->wheel(-120);
        QCOMPARE(view->scaleFactor(), 50.0F);
        QVERIFY(view->tracks().at(0)->height() > 0);
        m->type("scaleEdit", "1234567");
        m->wheel(-120);
        QCOMPARE(m->text("scaleEdit"), QString("1.23462e+06"));
    }

    void theWheelKeepsThePlace()
    {
        m->store("North");
        CorrelationView *view = m->show();
        QScrollBar *bar = view->verticalScrollBar();
        m->type("scaleEdit", "500");
        bar->setValue(bar->maximum() / 2);
        const int before = bar->maximum();
        const double place = bar->value() / static_cast<double>(before);
        m->wheel(-120);
        QVERIFY(bar->maximum() < before);
        QCOMPARE(bar->value(), static_cast<int>(place * bar->maximum()));
    }

    void aClickShowsThePanel()
    {
        m->store("North");
        CorrelationView *view = m->show();
        m->dock.setWidget(nullptr);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(400, 300));
        QCOMPARE(m->dock.widget(), static_cast<QWidget *>(view->panel()));
        QSignalSpy changes(view, &CorrelationView::propertyWidgetChanged);
        QTest::mouseClick(view->viewport(), Qt::RightButton, {}, QPoint(400, 300));
        QTest::mouseClick(view->viewport(), Qt::MiddleButton, {}, QPoint(400, 300));
        QVERIFY(changes.isEmpty());
        // The panel that a press shows is also shown by one that begins to pan.
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::ControlModifier, QPoint(400, 300));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.at(0).at(0).value<QWidget *>(), static_cast<QWidget *>(view->panel()));
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::ControlModifier, QPoint(400, 300));
    }

    void otherPressesAreAccepted()
    {
        m->store("North");
        CorrelationView *view = m->show();
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
            QMouseEvent press(QEvent::MouseButtonPress, QPointF(400, 300), button, button, Qt::NoModifier);
            press.ignore();
            QApplication::sendEvent(view->viewport(), &press);
            QVERIFY(press.isAccepted());
            QTest::mouseRelease(view->viewport(), button, {}, QPoint(400, 300));
        }
    }

    // A press begins with what the view does with any: a click with Ctrl selects a further track.
    void panningSelectsNothing()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        CorrelationView *view = m->show();
        const QPoint place = view->mapFromScene(view->tracks().at(1)->x() + 20, 300);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::ControlModifier, place);
        QVERIFY(view->tracks().at(1)->isSelected());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::ControlModifier, place);
        QVERIFY(!view->tracks().at(1)->isSelected());
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::ControlModifier, place);
        const QPoint end = place - QPoint(0, 60);
        QMouseEvent move(QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton, Qt::ControlModifier);
        QApplication::sendEvent(view->viewport(), &move);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::ControlModifier, end);
        QCOMPARE(view->verticalScrollBar()->value(), 60);
        QVERIFY(!view->tracks().at(1)->isSelected());
        QVERIFY(!view->scene()->mouseGrabberItem());
    }

    void aPanWhoseReleaseWentElsewhereEnds()
    {
        m->store("North");
        CorrelationView *view = m->show();
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::ControlModifier, QPoint(300, 300));
        QMouseEvent move(QEvent::MouseMove, QPointF(300, 200), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &move);
        QCOMPARE(view->verticalScrollBar()->value(), 0);
    }

    void opensAtTheFirstSample()
    {
        m->addDeepWell("D", 0, 3000, {{"Top", 2500}});
        host::LogData &log = m->host.storedWells.last().logs[0];
        log.values.fill(1e30F, log.depths.size()); // nothing there
        log.values[24] = 75; // at 2400 m
        log.values[25] = 75;
        m->store("North", "2\nD:T\nE:T\n");
        m->addDeepWell("E", 0, 3000, {});
        m->host.storedWells.last().logs[0].depths = {2200, 2700};
        m->host.storedWells.last().logs[0].values = {75, 75};
        CorrelationView *view = m->show();
        QCoreApplication::processEvents();
        QScrollBar *bar = view->verticalScrollBar();
        QVERIFY(std::abs(bar->value() - (y(2200) - 0.05 * view->viewport()->height())) <= 1);
        QCOMPARE(view->scene()->sceneRect().top(), 0.0); // the scene is the whole wells all the same
        // What comes later moves from where the user is.
        bar->setValue(1000);
        m->display->resize(900, 500);
        m->display->updateData();
        QCoreApplication::processEvents();
        QCOMPARE(bar->value(), 1000);
    }

    // What moves the view sideways before it was seen does not keep it from its place.
    void aPanSidewaysDoesNotPlaceIt()
    {
        m->addDeepWell("D", 0, 3000, {});
        m->host.storedWells.last().logs[0].depths = {2200, 2700};
        m->host.storedWells.last().logs[0].values = {75, 75};
        m->store("North", "3\nD:T\nD:T\nD:T\n");
        CorrelationView *view = m->show();
        m->display->resize(300, 700);
        view->horizontalScrollBar()->setValue(60);
        QCOMPARE(view->horizontalScrollBar()->value(), 60);
        m->display->resize(300, 400);
        QCoreApplication::processEvents();
        QVERIFY(std::abs(view->verticalScrollBar()->value() - (y(2200) - 0.05 * view->viewport()->height())) <= 1);
    }

    void flatteningKeepsTheDepthInView()
    {
        m->addDeepWell("D", 0, 3000, {{"Top", 2500}});
        m->addDeepWell("E", 100, 3000, {{"Top", 2000}});
        m->store("North", "2\nD:T\nE:T\n");
        CorrelationView *view = m->show();
        QCoreApplication::processEvents();
        QScrollBar *bar = view->verticalScrollBar();
        const auto rowOf = [view](double depthM) {
            return view->mapFromScene(0, *view->columns().at(0).toY(depthM)).y();
        };
        view->centerOn(0, y(2500));
        QCoreApplication::processEvents();
        const int row = rowOf(2500);
        using Change = QPair<const char *, const char *>;
        const QVector<Change> changes{{"flatAtBox", "Top"},      {"depthUnitBox", "FEET"}, {"depthTypeBox", "TVDSS"},
                                      {"depthUnitBox", "METER"}, {"flatAtBox", "None"},    {"depthTypeBox", "MD"}};
        for (const Change &change : changes) {
            m->choose(change.first, change.second);
            QVERIFY2(std::abs(rowOf(2500) - row) <= 3, change.second);
        }
        QVERIFY(bar->value() > 0);
    }

    void aRedrawThatChangesNothingStays()
    {
        m->store("North");
        CorrelationView *view = m->show();
        QCoreApplication::processEvents();
        QScrollBar *bar = view->verticalScrollBar();
        for (int value = 1; value < bar->maximum(); value += 37) {
            bar->setValue(value);
            view->redraw();
            QCOMPARE(bar->value(), value);
        }
    }

    void controlAndTheMousePan()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        CorrelationView *view = m->show();
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::ControlModifier, QPoint(300, 300));
        QMouseEvent move(QEvent::MouseMove, QPointF(280, 200), Qt::NoButton, Qt::LeftButton, Qt::ControlModifier);
        QApplication::sendEvent(view->viewport(), &move);
        QCOMPARE(view->verticalScrollBar()->value(), view->verticalScrollBar()->minimum() + 100);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::ControlModifier, QPoint(280, 200));
        QMouseEvent after(QEvent::MouseMove, QPointF(280, 100), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &after);
        QCOMPARE(view->verticalScrollBar()->value(), view->verticalScrollBar()->minimum() + 100);
    }

    void theMiddleButtonDragsToo()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        CorrelationView *view = m->show();
        QScrollBar *bar = view->verticalScrollBar();
        bar->setValue(500);
        QTest::mousePress(view->viewport(), Qt::MiddleButton, {}, QPoint(200, 300));
        QMouseEvent move(QEvent::MouseMove, QPointF(200, 250), Qt::NoButton, Qt::MiddleButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &move);
        QCOMPARE(bar->value(), 550);
        QTest::mouseRelease(view->viewport(), Qt::MiddleButton, {}, QPoint(200, 250));
        QTest::keyClick(view, Qt::Key_End);
        QCOMPARE(bar->value(), bar->maximum());
        QTest::keyClick(view, Qt::Key_Home);
        QCOMPARE(bar->value(), bar->minimum());
    }

    void controlAndZeroShowAllDepths()
    {
        m->store("North");
        CorrelationView *view = m->show();
        view->setFocus();
        QTest::keyClick(view, Qt::Key_0, Qt::ControlModifier);
        QVERIFY(view->scene()->sceneRect().height() <= view->viewport()->height() + 1);
        QVERIFY(view->scene()->sceneRect().height() > view->viewport()->height() * 0.9);
        QCOMPARE(m->text("scaleEdit").toFloat(), view->scaleFactor());
    }

    void controlAndZeroLeadToTheFirstWell()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        CorrelationView *view = m->show();
        m->display->resize(300, 500);
        QCoreApplication::processEvents();
        QScrollBar *bar = view->horizontalScrollBar();
        bar->setValue(bar->maximum());
        QVERIFY(bar->value() > bar->minimum());
        QTest::keyClick(view, Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(bar->value(), bar->minimum());
    }

    // The well that is looked at keeps its depth, not one that was scrolled away.
    void theWellInViewKeepsItsDepth()
    {
        m->addDeepWell("D", 0, 3000, {{"Top", 2500}});
        m->addDeepWell("E", 0, 3000, {{"Top", 2000}});
        m->store("North", "2\nD:T\nE:T\n");
        CorrelationView *view = m->show();
        m->display->resize(250, 700);
        QCoreApplication::processEvents();
        view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->maximum());
        view->verticalScrollBar()->setValue(static_cast<int>(y(2200)));
        const int middle = view->viewport()->height() / 2;
        const auto depthInMiddle = [&] {
            const correlation::WellColumn &well = view->columns().at(1);
            return well.reference.toMeasuredM(well.axis.toDepth(view->mapToScene(0, middle).y()));
        };
        const double before = static_cast<double>(depthInMiddle());
        m->choose("flatAtBox", "Top");
        QVERIFY(std::abs(static_cast<double>(depthInMiddle()) - before) < 1);
    }

    void aRedrawKeepsTheReadOut()
    {
        m->store("North");
        m->show();
        m->view()->setStatusLabel("read out");
        m->type("scaleEdit", "2000");
        QCOMPARE(m->status(), QString("read out"));
    }

    void hoveringNamesTheWell()
    {
        m->store("North");
        CorrelationView *view = m->show();
        view->centerOn(view->tracks().at(2)->sceneBoundingRect().left() + 20, 500);
        const QPoint place = view->mapFromScene(view->tracks().at(2)->x() + 20, 500);
        QTest::mouseMove(view->viewport(), place + QPoint(3, 3));
        QTest::mouseMove(view->viewport(), place);
        QTRY_VERIFY2(m->status().startsWith("B | Track :0 | "), qPrintable(m->status()));
        QVERIFY(m->status().contains("GR:75"));
    }

private:
    std::unique_ptr<ViewFixture> m;
};

LORVA_TEST_MAIN(tst_correlationmoving)
#include "tst_correlationmoving.moc"
