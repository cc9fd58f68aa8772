#include "displayfixture.h"
#include "logview/curveheaderitem.h"
#include "logview/geometry/displaystyle.h"
#include "logview/trackheaderitem.h"
#include "logview/trackitempropertywidget.h"
#include "logview/wellnameitem.h"
#include "support/testmain.h"

#include <QSignalSpy>

namespace {

const QByteArray grLine = "Gamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";
const QColor lightGray(Qt::lightGray);

struct TrackFixture : DisplayFixture
{
    TrackFixture()
    {
        well().header.totalDepth = 1000;
        addTrack(1, "Linear\n");
        addTrack(2, depthTrack);
        addTrack(3, "Logrithmic\n");
    }
    QImage trackPicture(int number, int top, int height) const
    {
        const QRect area(static_cast<int>(track(number)->x()), top, static_cast<int>(track(number)->width()), height);
        return picture(scene(), area);
    }
    // How many pixels of a row have a colour.
    static int count(const QImage &image, int y, const QColor &color)
    {
        int pixels = 0;
        for (int x = 0; x < image.width(); ++x)
            pixels += image.pixelColor(x, y) == color;
        return pixels;
    }
};

} // namespace

class tst_trackitem : public QObject
{
    Q_OBJECT

private slots:
    void linearGrid();
    void theOutlineIsBlack();
    void logarithmicGrid();
    void depthScale();
    void perforationZones();
    void selectionFillsTrackAndHeader();
    void headers();
    void banner();
    void bannerWithoutTracks();
    void unresolvedDefaultsMakeNoCurve();
    void defaultsAreTheWellsDefaultLogs();
    void panel();
    void widthsTypedInACommaLocale();
    void gridLinesMoveByTheOffset();
    void dotsDoNotCrawl();
    void headersMayGoFirst();
    void absurdWidths();
    void readouts();
    void readoutOfSubseaDepthsAndFeet();
    void hoveringTellsTheStatusLine();
    void longTracksScroll();
};

void tst_trackitem::linearGrid()
{
    TrackFixture f;
    f.show();
    const auto y = [&f](int depth) { return static_cast<int>(f.track(0)->axis().toPixel(depth)); };
    QImage image = f.trackPicture(0, 0, f.scene()->trackHeight());
    QVERIFY(f.count(image, y(100), Qt::gray) > 150);
    QVERIFY(f.count(image, y(50), lightGray) > 150); // solid
    const int dotted = f.count(image, y(10), lightGray);
    QVERIFY2(dotted > 40 && dotted < 150, qPrintable(QString::number(dotted)));
    QCOMPARE(image.pixelColor(40, y(5)), QColor(Qt::white));
    QCOMPARE(image.pixelColor(96, y(5)), lightGray); // the middle line is solid
    QCOMPARE(image.pixelColor(96, y(5) + 1), lightGray);

    f.type(f.panel(), "scaleEdit", QStringLiteral("5000"));
    image = f.trackPicture(0, 0, f.scene()->trackHeight());
    QCOMPARE(image.pixelColor(40, y(10)), QColor(Qt::white));
    QVERIFY(f.count(image, y(100), Qt::gray) > 150);
    const int dottedFifty = f.count(image, y(50), lightGray);
    QVERIFY2(dottedFifty > 40 && dottedFifty < 150, qPrintable(QString::number(dottedFifty)));
}

void tst_trackitem::theOutlineIsBlack()
{
    TrackFixture f;
    f.show();
    for (int number = 0; number < 3; ++number) {
        const int left = static_cast<int>(f.track(number)->x());
        const int right = left + static_cast<int>(f.track(number)->width());
        for (const int x : {left, right - 1, right})
            QCOMPARE(f.pixel(x, 1234), QColor(Qt::black));
        QCOMPARE(f.pixel(left + 20, 0), QColor(Qt::black));
        const QImage corner = f.picture(f.scene(), QRect(left, -5, 10, 10));
        QCOMPARE(corner.pixelColor(0, 5), QColor(Qt::black));
        QCOMPARE(corner.pixelColor(0, 3), QColor(Qt::white)); // the sides do not stick out
        QCOMPARE(f.pixel(left + 20, f.scene()->trackHeight()), QColor(Qt::black));
        QCOMPARE(f.pixel(left + 20, f.scene()->trackHeight() + 3), QColor(Qt::white));
    }
}

void tst_trackitem::logarithmicGrid()
{
    TrackFixture f;
    f.show();
    const QImage image = f.trackPicture(2, 100, 12); // between two horizontal lines
    const double decade = 192 / (std::log10(2000.0) + 1);
    const auto x = [decade](double value) { return static_cast<int>((std::log10(value) + 1) * decade); };
    for (const double value : {1.1, 11.1, 111.1}) // decades add up from 0.1
        for (int row = 0; row < 8; ++row)
            QVERIFY2(image.pixelColor(x(value), row) == lightGray || image.pixelColor(x(value) + 1, row) == lightGray,
                     qPrintable(QString::number(value)));
    QVERIFY(f.count(image, 3, Qt::gray) == 0);
}

void tst_trackitem::depthScale()
{
    TrackFixture f;
    f.show();
    const auto y = [&f](int depth) { return qRound(f.track(1)->axis().toPixel(depth)); };
    const QImage image = f.trackPicture(1, 0, f.scene()->trackHeight());
    const auto isTick = [&image](int row) {
        const auto isBlack = [&](int x, int r) { return image.pixelColor(x, r) == QColor(Qt::black); };
        return (isBlack(3, row) || isBlack(3, row - 1)) && (isBlack(45, row) || isBlack(45, row - 1));
    };
    QVERIFY(isTick(y(10)));
    QVERIFY(isTick(y(990)));
    QVERIFY(!isTick(y(5)));
    // Labels at every 50 m: dark pixels in the middle of the track.
    const auto hasLabel = [&image](int row) {
        for (int r = row - 6; r <= row + 6; ++r)
            for (int x = 8; x < 40; ++x)
                if (image.pixelColor(x, r).lightness() < 128)
                    return true;
        return false;
    };
    QVERIFY(hasLabel(y(50)));
    QVERIFY(hasLabel(y(100)));
    QVERIFY(!hasLabel(y(70)));
    f.type(f.panel(), "scaleEdit", QStringLiteral("5000"));
    const QImage small = f.trackPicture(1, 0, f.scene()->trackHeight());
    const auto smallLabel = [&](int depth) {
        const int row = qRound(f.track(1)->axis().toPixel(depth));
        for (int x = 8; x < 40; ++x)
            if (small.pixelColor(x, row).lightness() < 128)
                return true;
        return false;
    };
    QVERIFY(smallLabel(100));
    QVERIFY(!smallLabel(150));
}

void tst_trackitem::perforationZones()
{
    TrackFixture f;
    f.addTrack(2, depthTrack);
    files::write(f.path(QStringLiteral("/W_perforationZone.txt")),
                 "3\nA|100|200|Oil-Gas\nB|300|400|Water\nC|500|500.1|Dry\n");
    f.show();
    const auto color = [&f](int x, int depth) {
        return f.pixel(192 + x, static_cast<int>(f.track(1)->axis().toPixel(depth)));
    };
    QCOMPARE(color(6, 120), QColor(0, 100, 0));
    QCOMPARE(color(40, 120), QColor(255, 0, 0));
    QCOMPARE(color(6, 320), QColor(64, 164, 223));
    QCOMPARE(color(40, 320), QColor(64, 164, 223)); // one colour fills both halves
    QCOMPARE(color(6, 250), QColor(Qt::white));
    // Outlined and labelled, but for what has no room.
    const auto dark = [&](double from, double to) {
        const int top = static_cast<int>(f.track(1)->axis().toPixel(from)) + 1;
        const int bottom = static_cast<int>(f.track(1)->axis().toPixel(to));
        const QImage zone = f.trackPicture(1, top, bottom - top);
        for (int y = 0; y < zone.height(); ++y)
            for (int x = 5; x < 43; ++x)
                if (zone.pixelColor(x, y) == QColor(Qt::black))
                    return true;
        return false;
    };
    QVERIFY(dark(340, 360));
    QVERIFY(!dark(301, 340));
    QCOMPARE(f.pixel(192 + 6, static_cast<int>(f.track(1)->axis().toPixel(300))), QColor(Qt::black));
    f.track(1)->setPerforationsShown(false);
    QCOMPARE(color(6, 120), QColor(Qt::white));
    f.track(0)->setPerforationsShown(true); // no depth track
    QCOMPARE(f.pixel(30, static_cast<int>(f.track(0)->axis().toPixel(121))), QColor(Qt::white));
}

void tst_trackitem::selectionFillsTrackAndHeader()
{
    TrackFixture f;
    f.show();
    QCOMPARE(f.pixel(30, 3), QColor(Qt::white));
    f.track(0)->setSelected(true);
    QCOMPARE(f.pixel(30, 3), logview::highlightColor());
    QVERIFY(f.headerOf(f.track(0))->isSelected());
    const auto headerPixel = [&f] {
        return f.picture(f.display->headerView()->scene(), QRect(30, 60, 1, 1)).pixelColor(0, 0);
    };
    QCOMPARE(headerPixel(), logview::highlightColor());
    f.track(0)->setSelected(false);
    QCOMPARE(f.pixel(30, 3), QColor(Qt::white));
    QCOMPARE(headerPixel(), QColor(Qt::white));
}

void tst_trackitem::headers()
{
    TrackFixture f;
    f.show();
    QCOMPARE(f.headerOf(f.track(1))->width(), 48.0F);
    QCOMPARE(f.headerOf(f.track(1))->pos(), QPointF(192, 20));
    QCOMPARE(f.track(1)->depthTypeText(), QString("MD"));
    const auto header = [&f] { return f.picture(f.display->headerView()->scene(), QRect(192, 20, 48, 45)); };
    const QImage md = header();
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    const QImage subsea = header();
    QVERIFY(md.copy(5, 1, 38, 20) != subsea.copy(5, 1, 38, 20));
    QCOMPARE(md.copy(5, 21, 38, 20), subsea.copy(5, 21, 38, 20));
    f.type(f.panel(), "scaleEdit", QStringLiteral("200"));
    QVERIFY(header().copy(5, 21, 38, 20) != subsea.copy(5, 21, 38, 20)); // 1:200
    f.track(1)->setDepthType(logview::TvdKb);
    QCOMPARE(f.track(1)->depthTypeText(), QString("TVDKB"));
}

// A display without tracks has no banner to draw.
void tst_trackitem::bannerWithoutTracks()
{
    QImage image(60, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage empty = image;
    QPainter painter(&image);
    painter.translate(20, 10);
    WellNameItem(QStringLiteral("W"), 0, nullptr).paint(&painter, nullptr, nullptr);
    QCOMPARE(image, empty);
}

void tst_trackitem::banner()
{
    TrackFixture f;
    f.show();
    const QImage image = f.picture(f.display->headerView()->scene(), QRect(0, 0, 432, 22));
    QCOMPARE(image.pixelColor(20, 10), QColor(240, 127, 33));
    QCOMPARE(image.pixelColor(420, 4), QColor(240, 127, 33));
    QCOMPARE(image.pixelColor(100, 0), QColor(Qt::black));
    bool hasText = false;
    for (int x = 200; x < 232; ++x)
        for (int y = 3; y < 18; ++y)
            hasText = hasText || image.pixelColor(x, y).lightness() < 60;
    QVERIFY(hasText);
}

void tst_trackitem::unresolvedDefaultsMakeNoCurve()
{
    TrackFixture f;
    f.addTrack(1,
               "Linear\nSonic | Default | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n" + grLine
                   + "No Group | Default | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n");
    f.setDefaultLogs("Gamma|GR\nNo Group|GR\n");
    f.show();
    QCOMPARE(f.track(0)->curves().size(), 1);
    QCOMPARE(f.curve(0, 0)->curveName(), QString("GR")); // the well has no such log: a header without a line
    QVERIFY(f.curve(0, 0)->samples().isEmpty());
    QVERIFY(f.track(1)->curves().size() == 1 && !f.curve(1, 0)->isVisible()); // "MD" of a depth track
    QVERIFY(!f.headerOf(f.curve(1, 0))->isVisible());
}

void tst_trackitem::defaultsAreTheWellsDefaultLogs()
{
    TrackFixture f;
    f.addLog(QStringLiteral("GR_2"), {0, 100}, {1, 2});
    f.addTrack(1, "Linear\nGamma | Default | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n");
    f.setDefaultLogs("Sp|SP\nGamma|GR_2\n");
    f.show();
    QCOMPARE(f.curve(0, 0)->curveName(), QString("GR_2"));
    QCOMPARE(f.curve(0, 0)->samples().size(), 2);
    QCOMPARE(f.curve(0, 0)->unit(), QString("gapi"));
}

void tst_trackitem::panel()
{
    TrackFixture f;
    WellLogsScene *scene = f.show();
    TrackItemPropertyWidget *panel = f.panelOf(f.track(0));
    QCOMPARE(f.captions(panel), (QStringList{"Track Property", "Width", "Well Name", "W", "Track Type"}));
    QCOMPARE(f.text(panel, "widthEdit"), QString("2"));
    f.type(panel, "widthEdit", QStringLiteral("1.5"));
    QCOMPARE(f.track(0)->width(), 144.0F);
    QCOMPARE(f.track(1)->x(), 144.0);
    QVERIFY(QMetaObject::invokeMethod(panel, "trackWidthEditChanged"));
    f.choose(panel, "trackTypeBox", QStringLiteral("Depth"));
    QCOMPARE(f.track(0)->trackType(), 2);
    f.choose(panel, "trackTypeBox", QStringLiteral("Logrithmic"));
    QCOMPARE(f.track(0)->trackType(), 1);
    for (const char *unknown : {"Linear", "", "depth"})
        QVERIFY(QMetaObject::invokeMethod(panel, "trackTypeChanged", Q_ARG(QString, QString::fromLatin1(unknown))));
    QCOMPARE(f.track(0)->trackType(), 1);
    f.choose(panel, "trackTypeBox", QStringLiteral("Normal"));
    QCOMPARE(f.track(0)->trackType(), 0);
    QCOMPARE(scene->sceneWidth(), 384);
}

void tst_trackitem::widthsTypedInACommaLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    TrackFixture f;
    f.show();
    QLocale::setDefault(before);
    auto *edit = f.panelOf(f.track(0))->findChild<QLineEdit *>(QStringLiteral("widthEdit"));
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("1,.5"));
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(f.track(0)->width(), 144.0F);
}

void tst_trackitem::gridLinesMoveByTheOffset()
{
    TrackFixture f;
    f.show();
    const int y = static_cast<int>(f.track(0)->axis().toPixel(100));
    f.track(0)->setVerticalOffset(7);
    const QImage image = f.trackPicture(0, 0, y + 20);
    QVERIFY(f.count(image, y - 7, Qt::gray) > 150);
    QVERIFY(f.count(image, y, Qt::gray) < 20);
}

void tst_trackitem::dotsDoNotCrawl()
{
    TrackFixture f;
    f.show();
    const int y = static_cast<int>(f.track(0)->axis().toPixel(110));
    QImage whole = f.picture(f.scene(), QRect(0, y, 180, 1));
    for (const int left : {50, 51, 52})
        QCOMPARE(f.picture(f.scene(), QRect(left, y, 100, 1)), whole.copy(left, 0, 100, 1));
}

void tst_trackitem::headersMayGoFirst()
{
    TrackFixture f;
    f.addTrack(1, "Linear\n" + grLine);
    f.show();
    f.display->headerView()->scene()->clear();
    QVERIFY(!f.headerOf(f.track(0)));
    QVERIFY(!f.headerOf(f.curve(0, 0)));
    f.track(0)->setSelected(true);
    f.curve(0, 0)->setSelected(true);
    f.track(0)->setWidthInches(3);
    f.curve(0, 0)->setLineColor(Qt::red);
    f.picture(f.scene(), QRect(0, 0, 192, 100));
}

void tst_trackitem::absurdWidths()
{
    TrackFixture f;
    WellLogsScene *scene = f.show();
    TrackItemPropertyWidget *panel = f.panelOf(f.track(0));
    for (const char *width : {"0", "-3", "", "nan", "no"}) {
        f.type(panel, "widthEdit", QString::fromLatin1(width));
        QCOMPARE(f.track(0)->width(), 192.0F);
        QCOMPARE(f.text(panel, "widthEdit"), QString("2"));
    }
    f.type(panel, "widthEdit", QStringLiteral("1e30"));
    QVERIFY(f.track(0)->width() < 1e6F);
    QVERIFY(scene->sceneWidth() > 0);
    f.picture(scene, QRect(scene->sceneWidth() - 300, 0, 300, 300));
    f.type(panel, "widthEdit", QStringLiteral("1e-9"));
    f.picture(scene, QRect(0, 0, 300, 300));
    f.picture(f.display->headerView()->scene(), QRect(0, 0, 300, 100));
}

void tst_trackitem::readouts()
{
    TrackFixture f;
    f.addLog(QStringLiteral("GR"), {100, 200, 300}, {10, 1234567, 30});
    f.addTrack(1, "Linear\n" + grLine + grLine);
    f.show();
    const auto y = [&f](double depth) { return f.track(0)->axis().toPixel(depth); };
    QCOMPARE(f.track(0)->readout(QPointF(5, y(102))), QString("Track :0 | 100 | GR:10 | GR:10 | "));
    QCOMPARE(f.track(0)->readout(QPointF(5, y(190))), QString("Track :0 | 200 | GR:1.23457e+06 | GR:1.23457e+06 | "));
    const QString outside = f.track(0)->readout(QPointF(5, y(900)));
    QVERIFY2(outside.endsWith(QLatin1String(" | GR:-999.25 | GR:-999.25 | ")), qPrintable(outside));
    QCOMPARE(f.track(1)->readout(QPointF(200, y(500))), QString("Track :1 | Depth"));
    QCOMPARE(f.track(2)->readout(QPointF(300, y(500))), QString("Track :2 | "));
}

void tst_trackitem::readoutOfSubseaDepthsAndFeet()
{
    TrackFixture f;
    f.addLog(QStringLiteral("GR"), {100, 200, 300}, {10, 20, 30});
    f.addTrack(1, "Linear\n" + grLine);
    f.show();
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("FEET"));
    const auto y = [&f](double depth) { return f.track(0)->axis().toPixel(depth); };
    QCOMPARE(f.track(0)->readout(QPointF(5, y(210 * 3.28084))), QString("Track :0 | 656.168 | GR:20 | "));
    f.choose(f.panel(), "depthUnitBox", QStringLiteral("METER"));
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    QCOMPARE(f.track(0)->readout(QPointF(5, y(275))), QString("Track :0 | 275 | GR:30 | ")); // 300 m less KB
}

void tst_trackitem::hoveringTellsTheStatusLine()
{
    TrackFixture f;
    f.show();
    QVERIFY(QTest::qWaitForWindowExposed(f.display.get()));
    QGraphicsView *view = f.display->logView();
    QTest::mouseMove(view->viewport(), view->mapFromScene(QPointF(205, 100)));
    QTest::mouseMove(view->viewport(), view->mapFromScene(QPointF(210, 120)));
    QTRY_COMPARE(f.statusText(), QString("Track :1 | Depth"));
    QVERIFY(QMetaObject::invokeMethod(f.display.get(), "setStatusLabel", Q_ARG(QString, QStringLiteral("x"))));
    QCOMPARE(f.statusText(), QString("x"));
}

void tst_trackitem::longTracksScroll()
{
    TrackFixture f;
    f.well().header.totalDepth = 5000;
    f.show();
    f.type(f.panel(), "scaleEdit", QStringLiteral("1"));
    QVERIFY(f.scene()->trackHeight() > 18800000);
    // Far down, the grid stands where its depth is.
    const int y = static_cast<int>(f.track(0)->axis().toPixel(4900));
    const QImage image = f.picture(f.scene(), QRect(0, y - 2, 192, 5));
    int gray = 0;
    for (int row = 0; row < 5; ++row)
        gray = qMax(gray, TrackFixture::count(image, row, Qt::gray));
    QVERIFY(gray > 150);
}

LORVA_TEST_MAIN(tst_trackitem)
#include "tst_trackitem.moc"
