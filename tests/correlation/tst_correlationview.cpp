#include "correlation/correlationview.h"

#include "correlation/correlationpropertiesdialog.h"
#include "correlationviewfixture.h"
#include "logview/curveitem.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitem.h"
#include "logview/wellnameitem.h"
#include "support/grabbed.h"
#include "support/testmain.h"

#include <QContextMenuEvent>
#include <QImageReader>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QSplitter>
#include <QTest>

class tst_correlationview : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ViewFixture>(); }
    void cleanup() { m.reset(); }

    void wellsStandSideBySide()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        const CorrelationView *view = m->show();
        QCOMPARE(view->tracks().size(), 6);
        QCOMPARE(view->tracks().at(0)->pos(), QPointF(0, 0));
        QVERIFY(isNear(view->tracks().at(1)->x(), trackWidth()));
        const double second = std::trunc(wellWidth() + 80);
        QVERIFY(isNear(view->tracks().at(2)->x(), second));
        const double third = std::trunc(second + wellWidth() + 80);
        QVERIFY(isNear(view->tracks().at(4)->x(), third));
        QVERIFY(isNear(static_cast<double>(view->tracks().at(0)->width()), trackWidth()));
        QVERIFY(isNear(static_cast<double>(view->tracks().at(1)->width()), depthTrackWidth));
        QCOMPARE(view->tracks().at(2)->trackNumber(), 0);
        QCOMPARE(view->tracks().at(3)->trackNumber(), 1);
        QCOMPARE(view->tracks().at(2)->wellName(), QString("B"));
        // The highest is B: 2000 m. The last 80 pixels count.
        const QRectF area = view->scene()->sceneRect();
        QCOMPARE(area.topLeft(), QPointF(0, 0));
        QCOMPARE(area.width(), std::trunc(third + wellWidth() + 80));
        QVERIFY(isNear(area.height(), y(2000) + 50));
        QCOMPARE(m->headers()->sceneRect(), QRectF(0, 0, area.width(), 720));
    }

    void headersStandAboveTheirTracks()
    {
        m->store("North");
        const CorrelationView *view = m->show();
        const auto headers = m->itemsOf<TrackHeaderItem>(m->headers());
        QCOMPARE(headers.size(), 4);
        for (int i = 0; i < headers.size(); ++i)
            QCOMPARE(headers.at(i)->pos(), QPointF(view->tracks().at(i)->x(), 20));
        m->type("scaleEdit", "2500");
        for (const TrackItem *track : view->tracks())
            QCOMPARE(track->scale(), 2500.0F); // depth tracks say so in their headers
        const auto banners = m->itemsOf<WellNameItem>(m->headers());
        QCOMPARE(banners.size(), 2);
        QCOMPARE(banners.at(1)->pos(), QPointF(view->tracks().at(2)->x(), 0));
    }

    void tracksSpanTheirWell()
    {
        m->store("North");
        const CorrelationView *view = m->show();
        const TrackItem *track = view->tracks().at(0);
        QCOMPARE(track->axis().start, 0.0F);
        QCOMPARE(track->axis().end, 1500.0F);
        QVERIFY(isNear(static_cast<double>(track->height()), y(1500)));
        QCOMPARE(view->tracks().at(2)->axis().end, 2000.0F);
        m->choose("depthTypeBox", "TVDSS");
        track = view->tracks().at(0);
        QCOMPARE(view->depthType(), 2);
        QCOMPARE(track->axis().start, -25.0F);
        QCOMPARE(track->axis().end, 1475.0F);
        QCOMPARE(track->depthReference().type, logview::TvdSubsea);
        m->choose("depthUnitBox", "FEET");
        track = view->tracks().at(0);
        QCOMPARE(track->axis().start, float(-25 * 3.28084));
        QCOMPARE(track->depthReference().unit, logview::Feet);
        m->choose("depthTypeBox", "MD");
        QCOMPARE(view->tracks().at(0)->axis().end, float(1500 * 3.28084));
        m->panel()->depthTypeChanged("TVDKB");
        QCOMPARE(view->depthType(), 1);
        QCOMPARE(view->tracks().at(0)->axis().start, 0.0F);
    }

    void equalNamesOfTemplatesAreToldApartByWell()
    {
        for (const char *track :
             {"/Templates/A/Own/Track_1.txt", "/Templates/B/Own/Track_1.txt", "/Templates/B/Own/Track_2.txt"})
            files::write(m->path(QString::fromLatin1(track)), CorrelationFixture::linearTrack);
        m->store("North", "3\nA:Own\nB:Own\nA:Own\n");
        QCOMPARE(m->show()->tracks().size(), 4);
        QCOMPARE(m->status(), QString());
    }

    // Tests and tools open a correlation without the launch that measures the screen.
    void tracksHaveWidthsWithoutALaunch()
    {
        m->store("North");
        m->openAt96Dots();
        m->launch->project.halfDotsPerInch = m->launch->project.doubleDotsPerInch = 0;
        const CorrelationView *view = m->show();
        QCOMPARE(view->tracks().at(1)->width(), static_cast<float>(view->logicalDpiX()) / 2);
    }

    void thePanelsFields()
    {
        m->store("North & <b>South");
        const CorrelationView *view = m->show("North & <b>South");
        QStringList labels;
        for (const QLabel *label : m->panel()->findChildren<QLabel *>())
            labels.append(label->text());
        QCOMPARE(labels,
                 QStringList({"Correlation Name", "North & <b>South", "Scale - 1", "Depth Type", "Depth Unit",
                              "Flat At Marker", "Well Distance - 1"}));
        QCOMPARE(ViewFixture::find<QLabel>(m->panel(), "correlationName")->textFormat(), Qt::PlainText);
        QCOMPARE(ViewFixture::find<QLabel>(m->display.get(), "statusLine")->textFormat(), Qt::PlainText);
        const auto entries = [this](const char *name) {
            const auto *box = ViewFixture::find<QComboBox>(m->panel(), name);
            QStringList texts{QString::number(box->currentIndex())};
            for (int i = 0; i < box->count(); ++i)
                texts.append(box->itemText(i));
            return texts;
        };
        QCOMPARE(entries("depthTypeBox"), QStringList({"0", "MD", "TVDSS"}));
        QCOMPARE(entries("depthUnitBox"), QStringList({"0", "METER", "FEET"}));
        QCOMPARE(entries("flatAtBox"), QStringList({"0", "None", "Top"}));
        QCOMPARE(m->text("scaleEdit"), QString("1000"));
        QCOMPARE(m->text("wellDistanceEdit"), QString("10000"));
        QCOMPARE(view->depthType(), 0);
        QCOMPARE(view->depthUnit(), logview::Metre);
        for (const char *slot : {"scaleChanged", "depthUnitTypeChanged", "wellsDisChanged"})
            QVERIFY2(QMetaObject::invokeMethod(m->panel(), slot), slot);
        for (const char *slot : {"depthTypeChanged", "flatAtMarkerChanged"})
            QVERIFY2(QMetaObject::invokeMethod(m->panel(), slot, Q_ARG(QString, "None")), slot);
        QCOMPARE(view->depthType(), 0);
    }

    void theScaleIsThatOfTheFile()
    {
        m->store("North");
        files::write(m->filePath("North"), files::read(m->filePath("North")).replace("Scale:1000", "Scale:750"));
        const CorrelationView *view = m->show();
        QCOMPARE(m->text("scaleEdit"), QString("750"));
        QCOMPARE(view->scaleFactor(), 750.0F);
        m->type("scaleEdit", "-5"); // no paper has that scale
        QCOMPARE(m->text("scaleEdit"), QString("750"));
        QCOMPARE(view->scaleFactor(), 750.0F);
        m->type("wellDistanceEdit", "far");
        QCOMPARE(m->text("wellDistanceEdit"), QString("10000"));
        m->type("wellDistanceEdit", "12.7");
        QCOMPARE(view->wellDistance(), 12);
        QCOMPARE(m->text("wellDistanceEdit"), QString("12"));
    }

    // In the tracks, as between the wells: by the same box.
    void perforationsNeedTheBox()
    {
        for (const char *flag : {"0", "1"}) {
            m->store("North", "1\nA:T\n", "0\n", "0\n", flag);
            for (const TrackItem *track : m->show()->tracks())
                QCOMPARE(track->arePerforationsShown(), *flag == '1');
        }
    }

    void aWellWithoutLengthHasNoMarkers()
    {
        m->addDeepWell("Flat", 0, 0, {{"Top", 0}});
        m->store("North", "2\nA:T\nFlat:T\n");
        const CorrelationView *view = m->show();
        QCOMPARE(m->markers().size(), 1);
        QVERIFY(m->lines().isEmpty());
        for (const TrackItem *track : view->tracks())
            QVERIFY(std::isfinite(track->height()));
        QCOMPARE(view->tracks().at(2)->axis().end, view->tracks().at(2)->axis().start);
    }

    void markersAndTheirLines()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n", "2\nTop\nBase\n");
        const CorrelationView *view = m->show();
        const auto markers = m->markers();
        QCOMPARE(markers.size(), 5); // C has no Base
        for (const MarkerItem *marker : markers) {
            QCOMPARE(marker->zValue(), 10.0);
            QVERIFY(isNear(static_cast<double>(marker->width()), wellWidth()));
        }
        const auto *top = *std::find_if(markers.begin(), markers.end(), [](const MarkerItem *marker) {
            return marker->wellName() == "B" && marker->markerName() == "Top";
        });
        QCOMPARE(top->x(), view->tracks().at(2)->x());
        QVERIFY(isNear(top->y(), y(630 - 30)));
        QCOMPARE(top->lineColor(), QColor(200, 0, 0));
        QCOMPARE(top->depth(), 600.0F);

        const auto lines = m->lines();
        QCOMPARE(lines.size(), 3);
        const QLineF first = lines.at(0)->line();
        QVERIFY(isNear(first.x1(), wellWidth()) && isNear(first.y1(), y(500)));
        QVERIFY(isNear(first.x2(), view->tracks().at(2)->x()) && isNear(first.y2(), y(600)));
        const QPen pen = lines.at(0)->pen();
        QCOMPARE(pen.color(), QColor(200, 0, 0));
        QCOMPARE(pen.widthF(), 2.0);
        QCOMPARE(pen.style(), Qt::SolidLine);
        QCOMPARE(pen.capStyle(), Qt::SquareCap);
        QCOMPARE(pen.joinStyle(), Qt::BevelJoin);
        QVERIFY(pen.isCosmetic());
    }

    void namesOfTopsThatStandCloseMoveApart()
    {
        m->addDeepWell("D", 0, 2000, {{"First", 1000}, {"Second", 1001}, {"Far", 1500}});
        m->store("North", "1\nD:T\n", "3\nFirst\nSecond\nFar\n");
        m->show();
        QMap<QString, MarkerItem *> named;
        for (MarkerItem *marker : m->markers())
            named.insert(marker->markerName(), marker);
        QCOMPARE(named.size(), 3);
        const auto place = [&named](const char *name) {
            const MarkerItem *marker = named.value(name);
            return marker->nameExtent(QApplication::font()).translated(0, marker->y() + marker->nameShift());
        };
        QVERIFY(isNear(named["First"]->y(), y(1000))
                && isNear(named["Second"]->y(), y(1001))); // the lines do not move
        QVERIFY(place("First").bottom() <= place("Second").top() + 0.001);
        QVERIFY(place("First").bottom() > place("Second").top() - 1); // no farther than needed
        QCOMPARE(named["Far"]->nameShift(), 0.0);
    }

    void namesWithoutRoomAreToldUnderTheMouse()
    {
        QVector<CorrelationFixture::Top> tops{{"Far", 100}};
        m->addDeepWell("D", 0, 2000, tops);
        for (int i = 0; i < 30; ++i)
            m->host.storedWells.last().markers.append(
                {QString("T<%1>").arg(i), 1000 + static_cast<float>(i) * 0.1F, Qt::red}); // 11 pixels in all
        QByteArray names = "31\nFar\n";
        for (int i = 0; i < 30; ++i)
            names += "T<" + QByteArray::number(i) + ">\n";
        m->store("North", "1\nD:T\n", names);
        m->show();
        int shown = 0;
        QVector<QRectF> places;
        QCOMPARE(m->markers().size(), 31);
        for (const MarkerItem *marker : m->markers()) {
            shown += marker->isNameShown();
            QCOMPARE(marker->toolTip().isEmpty(), marker->isNameShown());
            if (marker->isNameShown())
                places.append(
                    marker->nameExtent(QApplication::font()).translated(0, marker->y() + marker->nameShift()));
            else
                QVERIFY2(marker->toolTip().contains("T&lt;"), qPrintable(marker->toolTip()));
        }
        QVERIFY2(shown > 5 && shown < 20, qPrintable(QString::number(shown)));
        std::sort(places.begin(), places.end(), [](const QRectF &a, const QRectF &b) { return a.top() < b.top(); });
        for (int i = 1; i < places.size(); ++i)
            QVERIFY(places.at(i).top() >= places.at(i - 1).bottom() - 0.001);
        m->type("scaleEdit", "5"); // 20 pixels between the lines
        for (const MarkerItem *marker : m->markers())
            QVERIFY(marker->isNameShown());
    }

    void namesLieOnPaper()
    {
        m->store("North", "2\nA:T\nB:T\n", "2\nTop\nBase\n", "1\nZ|100|1400|#0000ff|1|1|1\n");
        CorrelationView *view = m->show();
        view->resize(1200, 900);
        view->centerOn(wellWidth(), y(600));
        const QImage image = grabbed(view);
        const auto at = [view, &image](double x, double sceneY) {
            const QPoint place = view->viewport()->mapTo(view, view->mapFromScene(x, sceneY));
            return image.pixelColor(place);
        };
        const double right = view->columns().at(1).left;
        const QColor shaded = at(right - 3, y(560)); // beside no name
        const QColor underName = at(right - 3, y(600) - 5);
        QVERIFY2(shaded.red() < 200, qPrintable(shaded.name()));
        QVERIFY2(underName.red() > 225, qPrintable(underName.name()));
    }

    void onlyTickedMarkersAreDrawn()
    {
        m->store("North", "2\nA:T\nB:T\n", "0\n");
        m->show();
        QVERIFY(m->markers().isEmpty());
        QVERIFY(m->lines().isEmpty());
    }

    void zonesAreShaded()
    {
        m->store("North", "2\nA:T\nB:T\n", "1\nTop\n", "2\nZ|Top|Base|#ff8000|1|0|0\nHidden|1|2|#ff8000|0|1|1\n");
        const CorrelationView *view = m->show();
        const auto zones = m->zones();
        QCOMPARE(zones.size(), 1);
        QCOMPARE(zones.at(0)->brush().color(), QColor(0xff, 0x80, 0, 80));
        QCOMPARE(zones.at(0)->pen().style(), Qt::NoPen);
        QVERIFY(zones.at(0)->zValue() < m->lines().at(0)->zValue());
        QVERIFY(m->lines().at(0)->zValue() < 10);
        QVERIFY(isNear(zones.at(0)->polygon().at(2).x(), view->tracks().at(2)->x()));
        QVERIFY(isNear(zones.at(0)->polygon().at(2).y(), y(1000)));
    }

    void zonesNeedTheBox()
    {
        m->store("North", "2\nA:T\nB:T\n", "0\n", "1\nZ|Top|Base|#ff8000|1|0|0\n", "0");
        m->show();
        QVERIFY(m->zones().isEmpty());
    }

    void flattening()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n", "2\nTop\nBase\n");
        const CorrelationView *view = m->show();
        QStringList offered;
        auto *flat = ViewFixture::find<QComboBox>(m->panel(), "flatAtBox");
        for (int i = 0; i < flat->count(); ++i)
            offered.append(flat->itemText(i));
        QCOMPARE(offered, QStringList({"None", "Top", "Base"}));
        flat->setCurrentText("Base");
        QCOMPARE(view->tracks().at(0)->axis().start, float(900 - 1000));
        QCOMPARE(view->tracks().at(2)->axis().start, float(1000 - 1000));
        QCOMPARE(view->tracks().at(4)->axis().start, 0.0F); // C has no Base
        // At one height in both wells.
        for (const QGraphicsLineItem *line : m->lines())
            if (isNear(line->line().x1(), wellWidth()) && isNear(line->line().y1(), y(1000)))
                QVERIFY(isNear(line->line().y2(), y(1000)));
        flat->setCurrentText("None");
        QCOMPARE(view->tracks().at(0)->axis().start, 0.0F);
    }

    void aMarkerCalledNone()
    {
        m->addDeepWell("D", 0, 3000, {{"None", 2000}});
        m->store("North", "1\nD:T\n", "1\nNone\n");
        const CorrelationView *view = m->show();
        auto *flat = ViewFixture::find<QComboBox>(m->panel(), "flatAtBox");
        QCOMPARE(view->tracks().at(0)->axis().start, 0.0F);
        flat->setCurrentIndex(1);
        QCOMPARE(view->tracks().at(0)->axis().start, 1000.0F);
        flat->setCurrentIndex(0);
        QCOMPARE(view->tracks().at(0)->axis().start, 0.0F);
    }

    void fieldsThatWereOnlyVisitedChangeNothing()
    {
        m->store("North");
        const CorrelationView *view = m->show();
        const int redraws = view->redrawCount();
        emit ViewFixture::find<QLineEdit>(m->panel(), "scaleEdit")->editingFinished();
        QCOMPARE(view->redrawCount(), redraws);
        m->type("scaleEdit", "rubbish");
        QCOMPARE(m->text("scaleEdit"), QString("1000"));
        QCOMPARE(view->redrawCount(), redraws);
        m->type("scaleEdit", "2000");
        QCOMPARE(view->redrawCount(), redraws + 1);
        QCOMPARE(view->wellDistance(), 10000);
        m->type("wellDistanceEdit", "55");
        QCOMPARE(view->wellDistance(), 55);
        QVERIFY(view->redrawCount() > redraws + 1);
        QVERIFY(isNear(view->tracks().at(2)->x(), std::trunc(wellWidth() + 80)));
    }

    void onlyWhatIsInViewIsReadForARedraw()
    {
        m->store("North", "6\nA:T\nB:T\nA:T\nB:T\nA:T\nB:T\n");
        CorrelationView *view = m->show();
        QCoreApplication::processEvents();
        view->grab();
        const QRectF area = view->mapToScene(view->viewport()->rect()).boundingRect();
        qint64 inView = 0;
        qint64 beside = 0;
        for (const TrackItem *track : view->tracks())
            for (const CurveItem *curve : track->curves())
                (track->sceneBoundingRect().intersects(area) ? inView : beside) += curve->samples().size();
        QVERIFY(inView > 0 && beside > 0);
        for (const char *scale : {"1100", "1200"}) {
            const qint64 read = logview::readSampleCount();
            m->type("scaleEdit", scale);
            QCoreApplication::processEvents();
            view->grab();
            const qint64 first = logview::readSampleCount() - read;
            QVERIFY2(first > 0 && first <= 8 * inView, qPrintable(QString::number(first)));
        }
    }

    void wellsAreMadeWhenTheyComeNearTheView()
    {
        QByteArray wells = "16\n";
        for (int i = 0; i < 8; ++i)
            wells += "A:T\nB:T\n";
        m->store("North", wells, "1\nTop\n");
        CorrelationView *view = m->show();
        QCoreApplication::processEvents();
        QCOMPARE(view->columns().size(), 16);
        const int made = view->tracks().size();
        QVERIFY(made >= 8 && made < 16);
        QCOMPARE(m->lines().size(), made / 2 - 1);
        // Scrolled to the right end, and back to the left one, step by step.
        QScrollBar *bar = view->horizontalScrollBar();
        QVERIFY(bar->maximum() > 1500);
        bar->setValue(bar->maximum());
        QCoreApplication::processEvents();
        QVERIFY(view->tracks().size() > made && view->tracks().size() < 32);
        QVERIFY(isNear(view->tracks().last()->x(), view->columns().last().right - depthTrackWidth));
        const QImage last = grabbed(view);
        for (int value = bar->maximum(); value >= 0; value -= 200) {
            bar->setValue(value);
            QCoreApplication::processEvents();
            const QRectF seen = view->mapToScene(view->viewport()->rect()).boundingRect();
            for (const correlation::WellColumn &column : view->columns())
                if (column.right > seen.left() && column.left < seen.right())
                    QVERIFY(std::any_of(view->tracks().begin(), view->tracks().end(),
                                        [&column](const TrackItem *track) { return track->x() == column.left; }));
        }
        QCOMPARE(view->tracks().size(), 32);
        QVERIFY(std::is_sorted(view->tracks().begin(), view->tracks().end(),
                               [](const TrackItem *a, const TrackItem *b) { return a->x() < b->x(); }));
        QCOMPARE(m->lines().size(), 15); // each pair of neighbours once
        QCOMPARE(m->markers().size(), 16);
        // It looks as if all had been made at once.
        view->redraw();
        bar->setValue(bar->maximum());
        view->makeAllWells();
        QCOMPARE(view->tracks().size(), 32);
        QCOMPARE(m->lines().size(), 15);
        QCoreApplication::processEvents();
        QCOMPARE(grabbed(view), last);
    }

    void aRedrawReadsNothing()
    {
        m->store("North", "2\nA:T\nB:Own\n", "1\nTop\n");
        files::write(m->path("/Templates/B/Own/Track_1.txt"), CorrelationFixture::linearTrack);
        const CorrelationView *view = m->show();
        QVERIFY(QDir(m->path("/Templates")).removeRecursively());
        for (MemoryHost::Well &well : m->host.storedWells)
            well.isUnreadable = true; // the next reading would show an error
        m->type("scaleEdit", "2000");
        m->choose("depthUnitBox", "FEET");
        m->choose("depthTypeBox", "TVDSS");
        m->choose("flatAtBox", "Top");
        QVERIFY(m->host.errors.isEmpty());
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(m->markers().size(), 2);
        QCOMPARE(view->tracks().size(), 3);
        QCOMPARE(m->status(), QString());
        QVERIFY(!view->tracks().at(0)->curves().at(0)->samples().isEmpty());
    }

    void whatIsGoneIsSaid()
    {
        m->store("North", "3\nGone:T\nA:Lost\nB:T\n");
        const CorrelationView *view = m->show();
        QCOMPARE(view->columns().size(), 2);
        QVERIFY2(m->status().contains("\"Gone\"") && m->status().contains("\"Lost\""), qPrintable(m->status()));
        QVERIFY(!view->tracks().isEmpty());
        QCOMPARE(view->tracks().at(0)->wellName(), QString("A"));
    }

    void aLogThatCannotBeReadIsSaid()
    {
        m->addDeepWell("D", 0, 500, {});
        m->store("North", "1\nD:T\n");
        m->openAt96Dots();
        m->host.storedWells.last().logs.clear(); // the catalogue still names them
        m->show();
        QCOMPARE(m->status(), QString("GR of \"D\" cannot be read"));
        QVERIFY(m->host.errors.isEmpty());
    }

    void headersAreAtMost200PixelsHigh()
    {
        QByteArray track = CorrelationFixture::linearTrack;
        const QByteArray curve = track.mid(track.indexOf('\n') + 1);
        for (int i = 0; i < 6; ++i)
            track += curve;
        files::write(m->path("/Templates/Global/T/Track_1.txt"), track);
        m->store("North");
        m->show();
        QCOMPARE(m->display->headerView()->maximumHeight(), 200);
        QVERIFY(m->display->headerView()->height() <= 200);
    }

    void aPictureThatIsTooLongIsScaledDown()
    {
        m->store("North");
        m->show();
        m->type("scaleEdit", "100"); // 2000 m are 75,590 pixels
        m->display->savePicture();
        QVERIFY2(m->status().endsWith(", scaled down to what a JPEG file can hold."), qPrintable(m->status()));
        QCOMPARE(QImageReader(m->path("/North.jpg")).size().height(), 65500);
    }

    void oddCorrelations_data()
    {
        QTest::addColumn<QByteArray>("wells");
        QTest::newRow("none") << QByteArray("0\n");
        QTest::newRow("one") << QByteArray("1\nA:T\n");
        QTest::newRow("twice the same") << QByteArray("2\nA:T\nA:T\n");
        QTest::newRow("no depth") << QByteArray("2\nFlat:T\nA:T\n");
        QTest::newRow("no tracks") << QByteArray("2\nA:Empty\nB:T\n");
        QTest::newRow("no logs") << QByteArray("1\nFlat:T\n");
        QTest::newRow("twins") << QByteArray("2\nTwin:T\nTwin:T\n");
    }

    void oddCorrelations()
    {
        QFETCH(QByteArray, wells);
        m->addDeepWell("Flat", 0, 0, {{"Top", 0}});
        m->addDeepWell("Twin", 0, 500, {{"Top", 10}});
        m->addDeepWell("Twin", 0, 600, {{"Top", 20}});
        QVERIFY(QDir().mkpath(m->path("/Templates/Global/Empty")));
        m->store("North", wells, "2\nTop\nBase\n", "1\nZ|Top|900|#ff8000|1|0|1\n");
        CorrelationView *view = m->show();
        for (const char *scale : {"0", "1e30", "1e-30", "1"})
            m->type("scaleEdit", QString::fromLatin1(scale));
        m->choose("flatAtBox", "Base");
        view->grab();
        QVERIFY(view->scene()->sceneRect().width() >= 0);
        QVERIFY(view->scene()->sceneRect().height() >= 150);
        QVERIFY(std::isfinite(view->scene()->sceneRect().height()));
    }

    void aNewCorrelationOpensItsDialog()
    {
        m->show("New Correlation");
        QVERIFY(m->display->dialog()->isVisible());
        QVERIFY(m->view()->tracks().isEmpty());
        m->wheel(-120);
        QCOMPARE(m->view()->redrawCount(), 0); // nothing before it was loaded
    }

    void theMenuOpensTheDialog()
    {
        m->store("North");
        m->show();
        QVERIFY(!m->display->dialog()->isVisible());
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(300, 300), m->view()->mapToGlobal(QPoint(300, 300)));
        QApplication::sendEvent(m->view()->viewport(), &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().at(0)->text(), QString("Correlation Template"));
        menu->actions().at(0)->trigger();
        menu->close();
        QVERIFY(m->display->dialog()->isVisible());
    }

    void aSaveRedrawsAtOnce()
    {
        m->store("North");
        CorrelationView *view = m->show();
        auto *dialog = m->display->dialog();
        dialog->addWellClicked();
        ViewFixture::find<QComboBox>(dialog, "scaleChooser")->setEditText("500");
        auto *flat = ViewFixture::find<QComboBox>(dialog, "flatAtChooser");
        flat->setCurrentText("Top");
        dialog->saveButtonClicked();
        QCOMPARE(view->columns().size(), 3);
        QCOMPARE(m->text("scaleEdit"), QString("500"));
        QCOMPARE(ViewFixture::find<QComboBox>(m->panel(), "flatAtBox")->currentText(), QString("Top"));
        QCOMPARE(view->tracks().at(0)->axis().start, float(500 - 1000));
    }

    void headersScrollWithTheTracks()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        CorrelationView *view = m->show();
        m->display->resize(300, 500);
        QCoreApplication::processEvents();
        view->horizontalScrollBar()->setValue(100);
        QCOMPARE(m->display->headerView()->horizontalScrollBar()->value(), 100);
        QVERIFY(m->display->headerView()->height() <= 200);
        QVERIFY(m->display->findChild<QSplitter *>()->orientation() == Qt::Vertical);
    }

    void savesItsPicture()
    {
        m->store("North & South");
        CorrelationView *view = m->show("North & South");
        m->display->savePicture();
        const QString path = m->path("/North & South.jpg");
        QVERIFY2(m->status().contains(path), qPrintable(m->status()));
        const QImage picture(path);
        QCOMPARE(picture.width(), static_cast<int>(view->scene()->sceneRect().width()));
        const int headerHeight = picture.height() - static_cast<int>(view->scene()->sceneRect().height());
        QVERIFY(headerHeight > 60);
        // White between the wells, and the outline of the second well's first track below its header.
        QVERIFY(qGray(picture.pixel(static_cast<int>(wellWidth()) + 40, headerHeight + 100)) > 240);
        QVERIFY(qGray(picture.pixel(static_cast<int>(view->tracks().at(2)->x()), headerHeight + 100)) < 128);
    }

    void aPictureShowsNoSelection()
    {
        m->store("North");
        CorrelationView *view = m->show();
        m->display->savePicture();
        const QByteArray plain = files::read(m->path("/North.jpg"));
        view->tracks().at(1)->setSelected(true);
        m->display->savePicture();
        QCOMPARE(files::read(m->path("/North.jpg")), plain);
        const auto page = [this] {
            QImage image(400, 300, QImage::Format_RGB32);
            QPainter painter(&image);
            m->display->renderTo(painter);
            return image;
        };
        const QImage selected = page();
        QVERIFY(view->tracks().at(1)->isSelected());
        view->tracks().at(1)->setSelected(false);
        QCOMPARE(selected, page());
    }

    void aHundredThousandMarkers()
    {
        constexpr int count = 100000;
        QByteArray names = QByteArray::number(count) + '\n';
        QVector<host::Marker> markers;
        for (int i = 0; i < count; ++i) {
            const QString name = "Marker " + QString::number(i);
            names += name.toUtf8() + '\n';
            markers.append({name, 1900.0F * static_cast<float>(i) / count, Qt::red});
        }
        m->addDeepWell("D", 0, 2000, {});
        m->host.storedWells.last().markers = markers;
        m->addDeepWell("E", 0, 2000, {});
        m->host.storedWells.last().markers = markers;
        m->store("North", "2\nD:T\nE:T\n", names);
        m->store("Lost", "1\nA:T\n", names);
        CorrelationView *view = m->show();
        QCoreApplication::processEvents();
        QCOMPARE(m->markers().size(), 2 * count);
        QCOMPARE(m->lines().size(), count);
        m->choose("flatAtBox", "Marker 50000");
        QCOMPARE(m->lines().size(), count);
        view->grab();
        m->show("Lost");
        auto *missing = ViewFixture::find<QLabel>(m->display->dialog(), "missingLabel");
        QVERIFY2(missing->text().endsWith(", and 99988 more."), qPrintable(missing->text().right(60)));
    }

    void picturesThatCannotBeWritten()
    {
        m->store("North");
        m->show();
        QVERIFY(QDir().mkpath(m->path("/North.jpg/in the way")));
        m->display->savePicture();
        QVERIFY2(m->status().contains("could not be written"), qPrintable(m->status()));
    }

    void theDockLosesNothingItOwns()
    {
        m->store("North");
        m->show();
        m->display->showPanel();
        QVERIFY(m->dock.widget());
        m->display.reset();
        QVERIFY(!m->dock.widget());
    }

private:
    std::unique_ptr<ViewFixture> m;
};

LORVA_TEST_MAIN(tst_correlationview)
#include "tst_correlationview.moc"
