#include "displayfixture.h"
#include "logview/curveheaderitem.h"
#include "logview/curveitempropertywidget.h"
#include "logview/geometry/displaystyle.h"
#include "logview/markeritempropertywidget.h"
#include "logview/trackitempropertywidget.h"
#include "logview/wellnameitem.h"
#include "support/testmain.h"
#include "textrecorder.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLayout>

namespace {

QByteArray curveLine(const char *curve, const char *limits = "0 | 150")
{
    return QByteArray("Gamma | ") + curve + " | " + limits + " | #0000ff|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
}
const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

// Without a size it has that of the desktop's letters.
QFont times(int points = QGuiApplication::font().pointSize())
{
    QFont font(QStringLiteral("Times"));
    font.setPointSize(points);
    return font;
}

struct TextFixture : DisplayFixture
{
    TextFixture()
    {
        addLog(QStringLiteral("GR"), {0, 500, 1000, 1500}, {75, 75, 75, 75});
        addTrack(1, "Linear\n" + curveLine("GR"));
        addTrack(2, depthTrack);
    }
    QVector<DrawnText> headerTexts(const QRectF &part) const
    {
        return TextRecorder::recordScene(*display->headerView()->scene(), part);
    }
    QVector<DrawnText> curveHeader(int number = 0) const { return headerTexts(QRectF(2, 22 + 45 * number, 180, 41)); }
    QVector<DrawnText> depthHeader() const { return headerTexts(QRectF(194, 22, 44, 40)); }
    // The texts of the depth track between two depths; their boxes have its left end at 0 and the first depth at 0.
    QVector<DrawnText> depthTexts(double from, double to) const
    {
        const TrackItem *depths = track(1);
        const double top = depths->axis().toPixel(from);
        return TextRecorder::recordScene(
            *scene(), QRectF(depths->x(), std::floor(top), 48, std::floor(depths->axis().toPixel(to) - top)));
    }
};

} // namespace

/// Fonts, places and colours of every text of a display, against the rules for them.
class tst_displaytexts : public QObject
{
    Q_OBJECT

private slots:
    void banner();
    void curveHeaders();
    void longUnitsAreSmaller();
    void limitsOfNarrowTracksAreWhole();
    void longWellNamesAreShortened();
    void depthTrackHeaders();
    void longDepthHeadersFit();
    void markerNames();
    void depthLabels();
    void zoneLabels();
    void depthsUnderAZoneAreLegible();
    void missingLogs();
    void longCurveNamesAreShortened();
    void missingDefaultLogs();
    void curvesOffALogarithmicScale();
    void namesWithMarkup();
    void longNamesWidenNoPanel();
};

void tst_displaytexts::banner()
{
    TextFixture f;
    f.show();
    QCOMPARE(f.headerTexts(QRectF(0, 0, 240, 15)), TextRecorder::record([](QPainter &painter) {
                 painter.setFont(times());
                 painter.drawText(QRectF(0, 0, 240, 20), Qt::AlignCenter, QStringLiteral("W"));
             }));
}

void tst_displaytexts::curveHeaders()
{
    TextFixture f;
    f.addTrack(1, "Linear\n" + curveLine("GR", "0.25 | 1500"));
    f.show();
    QCOMPARE(f.curveHeader(), TextRecorder::record([](QPainter &painter) {
                 painter.translate(-2, -2);
                 painter.setFont(times());
                 painter.drawText(QRectF(5, 1, 182, 20), Qt::AlignCenter, QStringLiteral("GR"));
                 const int c = 60; // a third of 182
                 painter.drawText(QRectF(5, 23, c, 20), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("0.25"));
                 painter.drawText(QRectF(c + 5, 23, c, 20), Qt::AlignCenter, QStringLiteral("gapi"));
                 painter.setFont(times(10));
                 painter.drawText(QRectF(2 * c + 5, 23, c, 20), Qt::AlignRight | Qt::AlignVCenter,
                                  QStringLiteral("1500"));
             }));
}

void tst_displaytexts::longUnitsAreSmaller()
{
    TextFixture f;
    const QString unit = QStringLiteral("ohm metres per m");
    f.addLog(QStringLiteral("RT"), {0, 1500}, {1, 2}, unit);
    f.addTrack(1, "Linear\n" + curveLine("RT"));
    f.show();
    const QVector<DrawnText> texts = f.curveHeader();
    QCOMPARE(texts.size(), 4);
    QCOMPARE(texts.at(2), TextRecorder::record([&](QPainter &painter) {
                              painter.translate(-2, -2);
                              painter.setFont(times(8));
                              painter.drawText(QRectF(65, 23, 60, 20), Qt::AlignCenter, unit);
                          }).first());
}

// Half a number is another number.
void tst_displaytexts::limitsOfNarrowTracksAreWhole()
{
    TextFixture f;
    f.addTrack(1, "Linear\n" + curveLine("GR", "-99999 | 200000"));
    f.show();
    f.type(f.panelOf(f.track(0)), "widthEdit", QStringLiteral("0.75"));
    const QVector<DrawnText> texts = f.headerTexts(QRectF(2, 22, 60, 41));
    const int c = 20; // a third of 62
    QCOMPARE(texts.size(), 4);
    QCOMPARE(texts.at(1).text, QString("-99999"));
    QCOMPARE(texts.at(3).text, QString("200000"));
    TextRecorder device;
    for (const DrawnText &limit : {texts.at(1), texts.at(3)}) {
        QVERIFY(limit.box.width() <= c);
        QVERIFY(QFontMetricsF(times(qRound(limit.pointSize) + 1), &device).horizontalAdvance(limit.text) > c);
    }
    QCOMPARE(QVector<DrawnText>({texts.at(2), texts.at(3)}), TextRecorder::record([&](QPainter &painter) {
                 painter.translate(-2, -2);
                 painter.setFont(times(8));
                 painter.drawText(QRectF(c + 5, 23, c, 20), Qt::AlignCenter, QStringLiteral("gapi"));
                 painter.setFont(times(qRound(texts.at(3).pointSize)));
                 painter.drawText(QRectF(2 * c + 5, 23, c, 20), Qt::AlignRight | Qt::AlignVCenter,
                                  QStringLiteral("200000"));
             }));
}

// Wells of a field begin alike and end differently: what is left out stands in the middle.
void tst_displaytexts::longWellNamesAreShortened()
{
    const QString name = QStringLiteral("15/9-F-1 <b>Northern</b> block, side track B T2");
    WellNameItem banner(name, 120, nullptr);
    const auto drawn = [&banner] {
        return TextRecorder::record([&](QPainter &painter) { banner.paint(&painter, nullptr, nullptr); });
    };
    const DrawnText text = drawn().first();
    QVERIFY2(text.text.startsWith("15/9-F") && text.text.endsWith("B T2"), qPrintable(text.text));
    QVERIFY(text.text.contains(QChar(0x2026)));
    QVERIFY(text.box.left() >= 2 && text.box.right() <= 118);
    QVERIFY(text.box.width() > 90); // no more than needed
    QVERIFY(banner.toolTip().contains(QLatin1String("&lt;b&gt;Northern&lt;/b&gt;")));
    banner.setWidth(600);
    QCOMPARE(drawn().first().text, name);
    QVERIFY(banner.toolTip().isEmpty());
}

void tst_displaytexts::depthTrackHeaders()
{
    TextFixture f;
    f.show();
    QCOMPARE(f.depthHeader(), TextRecorder::record([](QPainter &painter) {
                 painter.translate(-2, -2);
                 painter.setFont(times());
                 painter.drawText(QRectF(5, 1, 38, 20), Qt::AlignCenter, QStringLiteral("MD"));
                 painter.setFont(times(8));
                 painter.drawText(QRectF(0, 21, 48, 20), Qt::AlignCenter, QStringLiteral("1:1000"));
             }));
}

void tst_displaytexts::longDepthHeadersFit()
{
    TextFixture f;
    f.show();
    f.choose(f.panel(), "depthTypeBox", QStringLiteral("TVDSS"));
    f.type(f.panel(), "scaleEdit", QStringLiteral("1000000"));
    const QVector<DrawnText> texts = f.depthHeader();
    QCOMPARE(texts.size(), 2);
    const QString type = QStringLiteral("TVDSS");
    QCOMPARE(texts.at(0).text, type);
    QVERIFY(texts.at(0).box.width() <= 38);
    QVERIFY(texts.at(0).pointSize < 12);
    // A point more would not fit.
    TextRecorder device;
    const int points = qRound(texts.at(0).pointSize);
    QVERIFY(QFontMetricsF(times(points), &device).horizontalAdvance(type) <= 38);
    QVERIFY(QFontMetricsF(times(points + 1), &device).horizontalAdvance(type) > 38);
    QCOMPARE(texts.at(0), TextRecorder::record([&](QPainter &painter) {
                              painter.translate(-2, -2);
                              painter.setFont(times(points));
                              painter.drawText(QRectF(5, 1, 38, 20), Qt::AlignCenter, type);
                          }).first());
    QCOMPARE(texts.at(1).text, QString("1:1000000"));
    QCOMPARE(texts.at(1).pointSize, 8.0);
    QVERIFY(texts.at(1).box.left() >= -2 && texts.at(1).box.right() <= 46);
}

void tst_displaytexts::markerNames()
{
    TextFixture f;
    const QString longName = QStringLiteral("Some very long formation name");
    f.addMarker(QStringLiteral("Top"), 400, QColor(10, 20, 30));
    f.addMarker(longName, 600);
    f.show();
    f.showMarker(QStringLiteral("Top"));
    f.showMarker(longName);
    const auto textsAt = [&f](double depth) {
        const double y = f.track(0)->axis().toScenePixel(depth);
        return TextRecorder::recordScene(*f.scene(), QRectF(-84, y - 20, 84, 60));
    };
    const auto expected = [](const QString &name, const QColor &color, int flags, int tallest, bool isWrapped) {
        return TextRecorder::record([&](QPainter &painter) {
            painter.translate(84, 20);
            QFont font = painter.font();
            font.setPixelSize(10);
            painter.setFont(font);
            painter.setPen(color);
            const int width = painter.fontMetrics().horizontalAdvance(name);
            painter.drawText(isWrapped ? QRectF(-50, -10, 50, tallest) : QRectF(-2 - width, -10, width, tallest),
                             flags, name);
        });
    };
    QCOMPARE(textsAt(400),
             expected(QStringLiteral("Top"), QColor(10, 20, 30), Qt::AlignRight | Qt::AlignVCenter, 20, false));
    const QVector<DrawnText> wrapped = textsAt(600);
    QCOMPARE(wrapped, expected(longName, QColor(200, 0, 0), Qt::TextWordWrap, 40, true));
    QVERIFY(wrapped.size() > 1);
}

void tst_displaytexts::depthLabels()
{
    TextFixture f;
    f.show();
    const QVector<DrawnText> texts = f.depthTexts(60, 190);
    QCOMPARE(texts.size(), 2);
    QCOMPARE(texts.first(), TextRecorder::record([&f](QPainter &painter) {
                                const logview::DepthAxis &axis = f.track(1)->axis();
                                QFont font = painter.font();
                                font.setPointSize(8);
                                painter.setFont(font);
                                const QString text = QStringLiteral("100");
                                const QFontMetrics metrics = painter.fontMetrics();
                                const int x = static_cast<int>(24 - metrics.horizontalAdvance(text) / 2.0);
                                const int y = static_cast<int>(metrics.height() / 2.0 + axis.toPixel(100) - 1);
                                painter.drawText(QPoint(x, y - static_cast<int>(axis.toPixel(60))), text);
                            }).first());
    QCOMPARE(texts.at(1).text, QString("150"));
}

void tst_displaytexts::zoneLabels()
{
    TextFixture f;
    files::write(f.path(QStringLiteral("/W_perforationZone.txt")),
                 "3\nA|110|140|Not Tested\nB|160|190|Oil-Gas\nC|310|340|Water\n");
    f.show();
    const auto label = [&f](double from, double to) {
        QVector<DrawnText> texts = f.depthTexts(from, to);
        for (const DrawnText &text : qAsConst(texts)) {
            if (text.pointSize != 8 || text.box.left() < 0 || text.box.right() > 48)
                qFatal("%s does not fit", qPrintable(text.text));
        }
        return texts;
    };
    const QVector<DrawnText> notTested = label(115, 135);
    QCOMPARE(notTested.size(), 2);
    QCOMPARE(notTested.at(0).text, QString("Not"));
    QCOMPARE(notTested.at(1).text, QString("Tested"));
    QCOMPARE(notTested.at(0).color, QColor(Qt::white));
    const double middle = (notTested.at(0).box.top() + notTested.at(1).box.bottom()) / 2;
    QVERIFY(qAbs(middle - f.track(1)->axis().toPixel(10)) < 2); // of the zone
    const QVector<DrawnText> water = label(315, 335);
    QCOMPARE(water.size(), 1);
    QCOMPARE(water.at(0).text, QString("Water"));
    QCOMPARE(water.at(0).color, QColor(Qt::black));
    QVERIFY(qAbs(water.at(0).box.center().x() - 24) < 1);
}

void tst_displaytexts::depthsUnderAZoneAreLegible()
{
    TextFixture f;
    files::write(f.path(QStringLiteral("/W_perforationZone.txt")), "2\nA|300|400|Not Tested\nB|500|501|Oil\n");
    f.show();
    const QVector<DrawnText> texts = f.depthTexts(330, 370);
    QStringList words;
    QRectF depth;
    for (const DrawnText &text : texts) {
        words.append(text.text);
        if (text.text == QLatin1String("350"))
            depth = text.box;
    }
    QCOMPARE(words, QStringList({"350", "350", "Not", "Tested"})); // once more over the zone
    for (const DrawnText &text : texts)
        QVERIFY(text.text == QLatin1String("350") || !text.box.adjusted(0, 1, 0, -1).intersects(depth));
    const auto whiteAround = [&f](double at) {
        const int y = static_cast<int>(f.track(1)->axis().toPixel(at));
        const QImage image = f.picture(f.scene(), QRect(192, y - 4, 48, 8));
        int white = 0;
        for (int x = 12; x < 36; ++x)
            white += image.pixelColor(x, 4) == QColor(Qt::white);
        return white;
    };
    QVERIFY(whiteAround(350) > 5);
    QVERIFY(whiteAround(500) > 5); // a zone lower than the text
    QCOMPARE(whiteAround(330), 0);
}

void tst_displaytexts::missingLogs()
{
    TextFixture f;
    f.addTrack(1, "Linear\n" + curveLine("GR") + curveLine("NOT"));
    f.show();
    QVERIFY(!f.curve(0, 0)->isLogMissing());
    QVERIFY(f.curve(0, 1)->isLogMissing());
    QCOMPARE(f.headerOf(f.curve(0, 0))->toolTip(), QString());
    QCOMPARE(f.headerOf(f.curve(0, 1))->toolTip(), QString("No such log in W"));
    for (const DrawnText &text : f.curveHeader(0))
        QCOMPARE(text.color, QColor(Qt::black));
    const QVector<DrawnText> texts = f.curveHeader(1);
    QVERIFY(texts.size() >= 3);
    for (const DrawnText &text : texts)
        QCOMPARE(text.color, QColor(Qt::gray));
    const QImage image = f.picture(f.display->headerView()->scene(), QRect(0, 20, 192, 90));
    QCOMPARE(image.pixelColor(96, 22), QColor(0, 0, 255));
    QCOMPARE(image.pixelColor(96, 45 + 22), QColor(Qt::gray));
    f.curve(0, 1)->setSelected(true);
    const QImage selected = f.picture(f.display->headerView()->scene(), QRect(0, 20, 192, 90));
    QCOMPARE(selected.pixelColor(96, 45 + 22), logview::selectionPen(QPen()).color());
}

void tst_displaytexts::longCurveNamesAreShortened()
{
    const QString name = QStringLiteral("FORCE_2020_LITHOFACIES_<b>CONFIDENCE</b>");
    TextFixture f;
    f.addLog(name, {0, 1500}, {1, 2});
    f.addTrack(1, "Linear\n" + curveLine(name.toUtf8().constData()) + curveLine("FORCE_2020_LITHOFACIES_LITHOLOGY"));
    f.show();
    const DrawnText text = f.curveHeader().first();
    QVERIFY2(text.text.startsWith("FORCE_") && text.text.endsWith("</b>"), qPrintable(text.text));
    QVERIFY(text.text.contains(QChar(0x2026)));
    QVERIFY(text.box.left() >= 0 && text.box.right() <= 185);
    QVERIFY(text.box.width() > 150); // no more than needed
    QVERIFY(f.headerOf(f.curve(0, 0))->toolTip().contains(QLatin1String("&lt;b&gt;CONFIDENCE")));
    QCOMPARE(f.headerOf(f.curve(0, 1))->toolTip(), QString("FORCE_2020_LITHOFACIES_LITHOLOGY\nNo such log in W"));
    f.type(f.panelOf(f.track(0)), "widthEdit", QStringLiteral("6"));
    QCOMPARE(f.headerTexts(QRectF(2, 22, 572, 41)).first().text, name);
    QCOMPARE(f.headerOf(f.curve(0, 0))->toolTip(), QString());
}

void tst_displaytexts::missingDefaultLogs()
{
    TextFixture f;
    f.addTrack(1,
               "Linear\nSonic | Default | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n"
                   + curveLine("Default"));
    f.addTrack(3, "Linear\nDensity | Default | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n");
    f.addTrack(4, "Linear\nSonic | Default | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n");
    f.addTrack(5,
               "Depth\nCaliper | Default | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n"); // shows none
    f.setDefaultLogs("Gamma|GR\n");
    f.show();
    QCOMPARE(f.statusText(), QString("No default log for Sonic, Density in W: see Well Data Manager"));
    TextFixture whole;
    whole.setDefaultLogs("Gamma|GR\n");
    whole.addTrack(1, "Linear\n" + curveLine("Default"));
    whole.show();
    QCOMPARE(whole.statusText(), QString());
    // Where no log is, none can be chosen.
    TextFixture bare;
    bare.well().logs.clear();
    bare.addTrack(1, "Linear\n" + curveLine("Default"));
    bare.show();
    QCOMPARE(bare.statusText(), QString("The well W has no logs."));
    TextFixture depths;
    depths.well().logs.clear();
    depths.addTrack(1, depthTrack);
    depths.show();
    QCOMPARE(depths.statusText(), QString());
    TextFixture unread; // which is told in a box
    unread.addTrack(1, "Linear\n" + curveLine("Default"));
    unread.well().logs.clear();
    unread.well().isUnreadable = true;
    unread.show();
    QVERIFY(!unread.statusText().contains(QLatin1String("has no logs")));
}

// 0 to 150 is a usual mistake: nothing tells it from a log without samples.
void tst_displaytexts::curvesOffALogarithmicScale()
{
    const QString rule(
        ". On a logarithmic track the left value has to be above 0, and the right one above the left one.");
    const auto line = [](const char *name, const char *limits) {
        return QByteArray("Gamma | ") + name + " | " + limits
            + " | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
    };
    TextFixture f;
    f.addTrack(1,
               "Logrithmic\n" + line("Zero", "0 | 150") + line("Fine", "0.2 | 2000") + line("Below", "-1 | 150")
                   + line("Turned", "2000 | 0.2") + line("Equal", "5 | 5") + line("Default", "0 | 1"));
    f.addTrack(2, "Linear\n" + line("GR", "0 | 150"));
    f.addTrack(3, "Logrithmic\n" + line("Zero", "0 | 10"));
    f.show();
    QCOMPARE(f.statusText(),
             QString("No default log for Gamma in W: see Well Data Manager | Not drawn: Zero, Below, Turned, Equal")
                 + rule);
    TrackItem *linear = f.scene()->tracks().at(1);
    linear->setTrackType(LogarithmicTrack);
    QCOMPARE(f.statusText(), QString("Not drawn: GR") + rule);
    linear->setTrackType(LinearTrack);
    QCOMPARE(f.statusText(), QString());
}

void tst_displaytexts::namesWithMarkup()
{
    TextFixture f;
    f.addMarker(QStringLiteral("Top"), 100);
    f.show();
    const QVector<QWidget *> panels{f.panel(), f.panelOf(f.track(0)), f.panelOf(f.curve(0, 0)),
                                    f.panelOf(f.showMarker(QStringLiteral("Top")))};
    for (const QWidget *panel : panels)
        QCOMPARE(panel->findChild<QLabel *>(QStringLiteral("wellNameLabel"))->textFormat(), Qt::PlainText);
    for (const char *name : {"groupNameLabel", "unitLabel"})
        QCOMPARE(panels.at(2)->findChild<QLabel *>(QString::fromLatin1(name))->textFormat(), Qt::PlainText);
}

// The dock is as wide as its panel needs: a name would take the room of the tracks.
void tst_displaytexts::longNamesWidenNoPanel()
{
    TextFixture f;
    f.addMarker(QStringLiteral("Top"), 100);
    f.show();
    const QString longName = QStringLiteral("A well of the northern block with a name of many words, ").repeated(3);
    const QString oneWord = QString(150, u'W');
    for (QWidget *panel : {static_cast<QWidget *>(f.panel()), static_cast<QWidget *>(f.panelOf(f.track(0))),
                           static_cast<QWidget *>(f.panelOf(f.curve(0, 0))),
                           static_cast<QWidget *>(f.panelOf(f.showMarker(QStringLiteral("Top"))))}) {
        auto *label = panel->findChild<QLabel *>(QStringLiteral("wellNameLabel"));
        const auto narrowest = [panel, label](const QString &name) {
            label->setText(name);
            panel->layout()->activate();
            return panel->minimumSizeHint().width();
        };
        const int width = narrowest(QStringLiteral("W"));
        QCOMPARE(narrowest(oneWord), width);
        QCOMPARE(narrowest(longName), width);
        panel->resize(width + 80, panel->heightForWidth(width + 80));
        panel->layout()->activate();
        QVERIFY(label->height() >= label->heightForWidth(label->width()));
        QVERIFY(label->height() > 2 * label->fontMetrics().height());
    }
}

LORVA_TEST_MAIN(tst_displaytexts)
#include "tst_displaytexts.moc"
