// A display in feet on paper, where a foot is as long as a ruler says.

#include "logview/paper/truefeet.h"
#include "sheetfixture.h"
#include "support/pdfreader.h"
#include "support/testmain.h"
#include "textrecorder.h"

using namespace logview;

class tst_truefeet : public QObject
{
    Q_OBJECT

private slots:
    // On the screen a foot is as long as a metre; on paper it is what a ruler says.
    void feetAreTrueToARuler()
    {
        PaperFixture f;
        f.showMarker(QStringLiteral("Top"));
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
        const DepthAxis onScreen = f.track(0)->axis();
        const double markerOnScreen = f.scene()->markers().all().first()->y();
        const QImage shown = DisplayFixture::picture(f.scene(), QRect(-90, 3200, 400, 300));
        {
            const TrueFeet feet(*f.scene(), Feet);
            const Sheet sheet = f.sheet(Paper::Continuous);
            QCOMPARE(footerTexts(sheet, 0).at(1), QString("1:1000   MD 0 – 4921.26 ft"));
            QCOMPARE(f.track(0)->scale(), 1000.0F); // as its header tells
            const pdf::File file = pdf::read(f.pdf(Paper::Continuous));
            QCOMPARE(file.pages.size(), 1);
            const QPointF origin = sheet.trackArea(sheet.pages.first()).topLeft() / pixelsPerMm;
            const double depthsM[] = {0, 100, 500, 1000, 1500};
            const double values[] = {75, 30, 150, 0, 75};
            for (int i = 0; i < 5; ++i)
                QVERIFY2(pdf::distanceOfCorner(file.pages.first(),
                                               origin + QPointF(values[i] / 150 * 2 * 25.4, depthsM[i]))
                             < dotMm,
                         qPrintable(QString::number(depthsM[i])));
            QVERIFY(qAbs(f.scene()->markers().all().first()->y() / pixelsPerMm - 300) < 0.3);
        }
        QCOMPARE(f.track(0)->axis(), onScreen);
        QCOMPARE(f.scene()->markers().all().first()->y(), markerOnScreen);
        QCOMPARE(DisplayFixture::picture(f.scene(), QRect(-90, 3200, 400, 300)), shown);
    }

    // Lines that had room on the screen come close: their names move apart, and back.
    void namesOfMarkersMakeRoomForFeet()
    {
        PaperFixture f;
        f.addMarker(QStringLiteral("Near"), 303);
        f.open();
        f.showMarker(QStringLiteral("Top"));
        f.showMarker(QStringLiteral("Near"));
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
        const QVector<MarkerItem *> &markers = f.scene()->markers().all();
        QCOMPARE(markers.size(), 2);
        const auto apart = [&markers] {
            return qAbs(markers.at(1)->y() + markers.at(1)->nameShift() - markers.at(0)->y()
                        - markers.at(0)->nameShift());
        };
        QCOMPARE(markers.at(1)->nameShift(), 0.0);
        {
            const TrueFeet feet(*f.scene(), Feet);
            QVERIFY(qAbs(markers.at(1)->y() - markers.at(0)->y()) < 12);
            QVERIFY2(apart() > 12.5, qPrintable(QString::number(apart())));
        }
        QCOMPARE(markers.at(0)->nameShift(), 0.0);
        QCOMPARE(markers.at(1)->nameShift(), 0.0);
    }

    void namesThatFindNoRoomInFeetComeBack()
    {
        PaperFixture f;
        constexpr int count = 40;
        for (int i = 0; i < count; ++i)
            f.addMarker(QStringLiteral("M%1").arg(i), static_cast<float>(400 + i));
        f.open();
        for (int i = 0; i < count; ++i)
            f.showMarker(QStringLiteral("M%1").arg(i));
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
        const auto shown = [&f] {
            int names = 0;
            for (const MarkerItem *marker : f.scene()->markers().all())
                names += marker->isNameShown() && marker->toolTip().isEmpty();
            return names;
        };
        QCOMPARE(shown(), count);
        {
            const TrueFeet feet(*f.scene(), Feet);
            QVERIFY(shown() < count - 5);
            QVERIFY(!f.display->logView()->viewport()->updatesEnabled()); // it shows the screen's places
        }
        QCOMPARE(shown(), count);
        QVERIFY(f.display->logView()->viewport()->updatesEnabled());
    }

    // As many of them as at the scale that has the same length in metres.
    void depthsAreRuledAndWrittenByTheirLength()
    {
        PaperFixture f;
        f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
        f.panel()->enterScale(2000);
        const auto labels = [&f] {
            QStringList texts;
            const QRectF part(f.track(1)->x(), 0, f.track(1)->boundingRect().width(), 2000);
            for (const DrawnText &text : TextRecorder::recordScene(*f.scene(), part))
                texts.append(text.text);
            return texts;
        };
        QVERIFY(labels().contains("50"));
        const TrueFeet feet(*f.scene(), Feet); // 1:6562 to the screen's rule
        QVERIFY(labels().contains("100") && !labels().contains("50"));
        QImage tracks = DisplayFixture::picture(f.scene(), QRect(10, 0, 100, 500)); // 868 feet
        int rules = 0;
        for (int y = 1; y < tracks.height(); ++y) {
            int inked = 0;
            for (int x = 0; x < tracks.width(); ++x)
                inked += tracks.pixel(x, y) != qRgb(255, 255, 255);
            rules += inked > 25;
        }
        QVERIFY2(rules > 14 && rules < 21, qPrintable(QString::number(rules))); // one at 50 ft, not at 10
    }

    void aDisplayInMetresIsTrueAsItIs()
    {
        PaperFixture f;
        const DepthAxis onScreen = f.track(0)->axis();
        const TrueFeet feet(*f.scene(), Metre);
        QCOMPARE(f.track(0)->axis(), onScreen);
        QVERIFY(f.display->logView()->viewport()->updatesEnabled());
    }
};

LORVA_TEST_MAIN(tst_truefeet)
#include "tst_truefeet.moc"
