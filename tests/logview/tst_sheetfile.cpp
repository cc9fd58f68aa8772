#include "logview/headerpane.h"
#include "logview/visiblearea.h"
#include "sheetfixture.h"
#include "support/pdfreader.h"
#include "support/testmain.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QXmlStreamReader>
#include <QtMath>

using namespace logview;

namespace {

/// Eight tracks, more than a page is wide, of a curve that turns at each of its samples.
struct NoisyFixture : SheetFixture
{
    static constexpr int samples = 1500;
    static float value(int depth) { return depth % 2 == 0 ? 60 : 90; }

    NoisyFixture()
    {
        QVector<float> depths;
        QVector<float> values;
        for (int depth = 0; depth < samples; ++depth) {
            depths.append(static_cast<float>(depth));
            values.append(value(depth));
        }
        addLog(QStringLiteral("GR"), depths, values);
        for (int track = 1; track <= 8; ++track)
            addTrack(track, linearTrack);
        show();
        panel()->enterScale(1000);
    }
};

QVector<QPolygonF> longLines(const pdf::Page &page)
{
    QVector<QPolygonF> found;
    for (const pdf::Path &path : page.paths)
        for (const QPolygonF &line : path.lines)
            if (line.size() > 10)
                found.append(line);
    return found;
}

// Where a sample stands on its page, mm.
QPointF placeOf(const Sheet &sheet, const SheetPage &page, double depth, double value)
{
    const QPointF origin = sheet.trackArea(page).topLeft() / pixelsPerMm;
    return origin + QPointF(value / 150 * 2 * 25.4, (depth - page.startDepth) * 1000 / sheet.contents.scale);
}

QImage blankOf(const QImage &image)
{
    QImage blank(image.size(), image.format());
    blank.fill(Qt::white);
    return blank;
}

} // namespace

class tst_sheetfile : public QObject
{
    Q_OBJECT

private slots:
    void aContinuousPdfIsTrueToScale()
    {
        PaperFixture f;
        const Sheet sheet = f.sheet(Paper::Continuous);
        const QByteArray bytes = f.pdf(Paper::Continuous);
        const pdf::File file = pdf::read(bytes);
        QVERIFY(file.isComplete);
        QVERIFY(file.hasEmbeddedFonts);
        QByteArray title; // as the file has it
        for (const QChar character : f.scene()->well().wellName)
            title += QByteArray(1, '\0') + character.toLatin1();
        QVERIFY(!title.isEmpty() && bytes.contains("/Title (\xfe\xff" + title + ')'));
        QCOMPARE(file.pages.size(), 1);
        const pdf::Page &page = file.pages.first();
        QVERIFY(qAbs(page.sizeMm.height() - sheet.pageSize.height() / pixelsPerMm) < 0.01);
        QVERIFY(page.sizeMm.height() > 1500);
        const double depths[] = {0, 100, 500, 1000, 1500};
        const double values[] = {75, 30, 150, 0, 75};
        for (int i = 0; i < 5; ++i)
            QVERIFY2(pdf::distanceOfCorner(page, placeOf(sheet, sheet.pages.first(), depths[i], values[i])) < dotMm,
                     qPrintable(QString::number(depths[i])));
        QVERIFY(pdf::distanceOfCorner(page, placeOf(sheet, sheet.pages.first(), 501, 150)) > 0.5);
    }

    void otherScalesAreTrueToo()
    {
        PaperFixture f;
        f.panel()->enterScale(2500);
        const Sheet sheet = f.sheet(Paper::Continuous);
        const pdf::File file = pdf::read(f.pdf(Paper::Continuous));
        QVERIFY(pdf::distanceOfCorner(file.pages.first(), placeOf(sheet, sheet.pages.first(), 1000, 0)) < dotMm);
        QVERIFY(file.pages.first().sizeMm.height() < 650);
    }

    void pagesGoOnWhereTheLastOneEnded()
    {
        PaperFixture f;
        const Sheet sheet = f.sheet(Paper::A4);
        const pdf::File file = pdf::read(f.pdf(Paper::A4));
        QCOMPARE(file.pages.size(), sheet.pages.size());
        QVERIFY(file.pages.size() >= 6);
        for (int i = 0; i < file.pages.size(); ++i) {
            const pdf::Page &page = file.pages.at(i);
            QVERIFY(qAbs(page.sizeMm.height() - 297) < 0.2);
            // The line through 1000 and 1500 m crosses the page's ends at these places.
            const SheetPage &shown = sheet.pages.at(i);
            if (shown.startDepth < 1000 || i + 1 == file.pages.size())
                continue;
            QVERIFY(pdf::distanceOfCorner(page, placeOf(sheet, shown, 1000, 0)) < dotMm);
        }
        const auto first = std::find_if(sheet.pages.begin(), sheet.pages.end(),
                                        [](const SheetPage &page) { return page.endDepth > 500; });
        QVERIFY(pdf::distanceOfCorner(file.pages.at(first - sheet.pages.begin()), placeOf(sheet, *first, 500, 150))
                < dotMm);
    }

    // A page holds the pieces of curves that it shows, neither those of other pages nor those of the tracks beside.
    void aPageHoldsNoMoreThanItShows()
    {
        NoisyFixture f;
        const Sheet sheet = f.sheet(Paper::A4);
        const pdf::File file = pdf::read(f.pdf(Paper::A4));
        QCOMPARE(file.pages.size(), sheet.pages.size());
        int curves = 0;
        int corners = 0;
        for (int i = 0; i < file.pages.size(); ++i) {
            const SheetPage &shown = sheet.pages.at(i);
            // To the next sample, 1 mm away, and to the width of a pen.
            const QRectF tracks = sheet.trackArea(shown)
                                      .adjusted(0, -sheet.bleedAbove(shown), 0, sheet.bleedBelow(shown))
                                      .adjusted(-16, -16, 16, 16);
            const QRectF areaMm(tracks.topLeft() / pixelsPerMm, tracks.size() / pixelsPerMm);
            for (const QPolygonF &line : longLines(file.pages.at(i))) {
                ++curves;
                corners += line.size();
                QVERIFY(areaMm.contains(line.boundingRect()));
            }
        }
        const int tracks = sheet.contents.trackStarts.size();
        QVERIFY(sheet.pages.last().firstTrack > 0); // the display continues beside
        QCOMPARE(curves, tracks * sheet.pages.size() / 2);
        // Where a page ends both have the samples around.
        QVERIFY2(corners >= tracks * NoisyFixture::samples, qPrintable(QString::number(corners)));
        QVERIFY2(corners <= tracks * (NoisyFixture::samples + sheet.pages.size() * 8),
                 qPrintable(QString::number(corners)));
    }

    void longCurvesStandExactToADot()
    {
        NoisyFixture f;
        const Sheet sheet = f.sheet(Paper::A4);
        const pdf::File file = pdf::read(f.pdf(Paper::A4));
        const SheetPage &shown = sheet.pages.first();
        for (int depth = 1; depth < shown.endDepth; depth += 10)
            QVERIFY2(pdf::distanceOfCorner(file.pages.first(),
                                           placeOf(sheet, shown, depth, double(NoisyFixture::value(depth))))
                         < dotMm,
                     qPrintable(QString::number(depth)));
    }

    // Pages whose long lines Qt's writer wrote would be painted twice.
    void longCurvesAreWrittenPastQtsWriter()
    {
        NoisyFixture f;
        const SheetPainter painter(f.headers(), *f.scene(), f.sheet(Paper::A4));
        int told = 0;
        const pdf::File file = pdf::read(pdfBytes(painter, 600, [&told](int, int) { return ++told > 0; }));
        QVERIFY(file.isComplete);
        QCOMPARE(told, painter.sheet().pages.size());
        for (const QByteArray &content : file.contents)
            QVERIFY(!content.contains("-1000000"));
    }

    // Small numbers make a small file: corners of a long curve count from its middle.
    void longCurvesHaveAnOriginOfTheirOwn()
    {
        NoisyFixture f;
        const Sheet sheet = layOutSheet(sheetContents(f.headers(), *f.scene()), Paper::Continuous, svgLimits());
        const QByteArray svg = svgBytes(SheetPainter(f.headers(), *f.scene(), sheet));
        QCOMPARE(svg.count(" transform=\"matrix(1 0 0 1 "), sheet.contents.trackStarts.size());
    }

    // What a page cuts off need not be reduced to its dots first.
    void itemsShowNoMoreThanTheClip()
    {
        QImage image(200, 100, QImage::Format_RGB32);
        QPainter painter(&image);
        painter.scale(2, 2);
        QStyleOptionGraphicsItem option;
        option.exposedRect = QRectF(0, 0, 1000, 1000);
        QCOMPARE(visibleArea(painter, option), QRectF(0, 0, 100, 50));
        painter.setClipRect(QRectF(10, 20, 30, 40));
        QCOMPARE(visibleArea(painter, option), QRectF(10, 20, 30, 30));
    }

    void nothingPaintsOverHeaderOrFooter()
    {
        PaperFixture f;
        f.showMarker(QStringLiteral("Top"));
        const Sheet sheet = f.sheet(Paper::A4);
        QImage page(sheet.pageSize.toSize(), QImage::Format_RGB32);
        QImage firstHeader;
        for (int i = 0; i < sheet.pages.size(); ++i) {
            page.fill(Qt::white);
            {
                QPainter painter(&page);
                SheetPainter(f.headers(), *f.scene(), sheet).paint(painter, i);
            }
            // Between the tracks' end and the footer, and beside the tracks, the paper is white.
            const QRectF tracks = sheet.trackArea(sheet.pages.at(i));
            const double end = tracks.bottom() + sheet.bleedBelow(sheet.pages.at(i));
            const QRect below(0, qCeil(end) + 2, page.width(), qFloor(sheet.footerArea().bottom() - 16 - end - 2));
            QCOMPARE(page.copy(below), blankOf(page.copy(below)));
            const QImage header = page.copy(sheet.headerArea(sheet.pages.at(i)).toAlignedRect());
            if (i == 0)
                firstHeader = header;
            QCOMPARE(header.copy(0, 0, header.width(), header.height() - 2),
                     firstHeader.copy(0, 0, header.width(), header.height() - 2));
        }
        QVERIFY(firstHeader != blankOf(firstHeader));
    }

    void markerNamesStandInTheMargin()
    {
        PaperFixture f;
        QCOMPARE(f.sheet(Paper::A4).contents.leftMargin, 0.0);
        f.showMarker(QStringLiteral("Top"));
        const Sheet sheet = f.sheet(Paper::Continuous);
        QCOMPARE(sheet.contents.leftMargin, markerNamesWidth);
        QImage page(sheet.pageSize.toSize(), QImage::Format_RGB32);
        page.fill(Qt::white);
        {
            QPainter painter(&page);
            SheetPainter(f.headers(), *f.scene(), sheet).paint(painter, 0);
        }
        const QRectF tracks = sheet.trackArea(sheet.pages.first());
        const double y = tracks.top() + 300 * pixelsPerMm;
        QImage blank(80, 20, QImage::Format_RGB32);
        blank.fill(Qt::white);
        QVERIFY(page.copy(QRect(qRound(tracks.left()) - 82, qRound(y) - 10, 80, 20)) != blank);
        QCOMPARE(page.copy(QRect(qRound(tracks.left()) - 82, qRound(y) + 30, 80, 20)), blank);
    }

    void anSvgSheetIsTrueToScale()
    {
        PaperFixture f;
        const Sheet sheet = layOutSheet(sheetContents(f.headers(), *f.scene()), Paper::Continuous, svgLimits());
        const QByteArray bytes = svgBytes(SheetPainter(f.headers(), *f.scene(), sheet));
        QXmlStreamReader reader(bytes);
        double width = 0;
        double dotsPerMm = 0;
        QVector<QPointF> corners;
        int texts = 0;
        const QRegularExpression pair(QStringLiteral("[ML](-?[\\d.]+) (-?[\\d.]+)"));
        while (!reader.atEnd()) {
            reader.readNext();
            if (!reader.isStartElement())
                continue;
            const QXmlStreamAttributes attributes = reader.attributes();
            if (reader.name() == QLatin1String("svg")) {
                QString text = attributes.value(QLatin1String("width")).toString();
                QVERIFY(text.endsWith(QLatin1String("mm")));
                text.chop(2);
                width = text.toDouble();
                dotsPerMm =
                    attributes.value(QLatin1String("viewBox")).toString().split(QLatin1Char(' ')).at(2).toDouble()
                    / width;
            }
            texts += reader.name() == QLatin1String("text");
            if (reader.name() == QLatin1String("path") && !attributes.hasAttribute(QLatin1String("transform"))) {
                auto found = pair.globalMatch(attributes.value(QLatin1String("d")).toString());
                while (found.hasNext()) {
                    const QRegularExpressionMatch match = found.next();
                    corners.append(QPointF(match.captured(1).toDouble(), match.captured(2).toDouble()) / dotsPerMm);
                }
            }
        }
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
        QCOMPARE(texts, 0); // outlines look the same everywhere
        QVERIFY(qAbs(width - sheet.pageSize.width() / pixelsPerMm) < 0.01);
        for (const auto &sample : {QPointF(0, 75), QPointF(500, 150), QPointF(1000, 0), QPointF(1500, 75)}) {
            const QPointF place = placeOf(sheet, sheet.pages.first(), sample.x(), sample.y());
            const bool isThere = std::any_of(corners.begin(), corners.end(), [&](const QPointF &corner) {
                return std::hypot(corner.x() - place.x(), corner.y() - place.y()) < dotMm;
            });
            QVERIFY2(isThere, qPrintable(QString::number(sample.x())));
        }
    }

    void pagesTellThatTheyAreDoneAndCanBeStopped()
    {
        PaperFixture f;
        const SheetPainter painter(f.headers(), *f.scene(), f.sheet(Paper::A4));
        int told = 0;
        QVERIFY(!pdfBytes(painter, 600, [&](int page, int of) {
                     ++told;
                     return page == told && of == painter.sheet().pages.size();
                 }).isEmpty());
        QCOMPARE(told, painter.sheet().pages.size());
        QVERIFY(pdfBytes(painter, 600, [&](int page, int) { return page < 2; }).isEmpty());
    }

    // A line without scaled width is as thick on paper as on the screen.
    void cosmeticLinesKeepTheirWidth()
    {
        QGraphicsScene header;
        QGraphicsScene log;
        header.addRect(0, 0, 100, 20);
        QPen pen(Qt::red, 2);
        pen.setCosmetic(true);
        log.addLine(10, 10, 90, 10, pen);
        SheetContents contents;
        contents.axis = DepthAxis::of(0, 10, 100);
        contents.trackStarts = {0};
        contents.trackEnds = {100};
        contents.headerHeight = 20;
        const QByteArray svg =
            svgBytes(SheetPainter(header, log, layOutSheet(contents, Paper::Continuous, svgLimits())));
        QVERIFY(svg.contains("stroke=\"#ff0000\" stroke-width=\"12.5\""));
    }
};

LORVA_TEST_MAIN(tst_sheetfile)
#include "tst_sheetfile.moc"
