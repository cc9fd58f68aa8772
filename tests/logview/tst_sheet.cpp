#include "logview/paper/sheet.h"
#include "support/testmain.h"

using namespace logview;

namespace {

constexpr double mm = pixelsPerMm;

// Tracks of two inches side by side over 0 to 2000 m.
SheetContents contentsOf(int tracks, float scale = 1000, float end = 2000)
{
    SheetContents contents;
    contents.title = QStringLiteral("W-1");
    contents.depthTypeText = QStringLiteral("MD");
    contents.scale = scale;
    contents.axis = DepthAxis::of(0, end, scale);
    contents.headerHeight = 65;
    for (int i = 0; i < tracks; ++i) {
        contents.trackStarts.append(192 * i);
        contents.trackEnds.append(192 * (i + 1));
    }
    return contents;
}

QString problemOf(const SheetContents &contents, Paper paper, const SheetLimits &limits = pdfLimits())
{
    return layOutSheet(contents, paper, limits).problem;
}

} // namespace

class tst_sheet : public QObject
{
    Q_OBJECT

private slots:
    void papers()
    {
        Paper paper = Paper::A4;
        QVERIFY(paperOfText(QStringLiteral("a3"), &paper));
        QCOMPARE(paper, Paper::A3);
        QVERIFY(paperOfText(QStringLiteral("Continuous"), &paper));
        QCOMPARE(paper, Paper::Continuous);
        QVERIFY(paperOfText(QStringLiteral("A4"), &paper));
        QCOMPARE(paper, Paper::A4);
        for (const char *text : {"", "A5", "A4 ", "letter"})
            QVERIFY(!paperOfText(QString::fromLatin1(text), &paper));
    }

    void pagesEndAtRoundDepths()
    {
        const DepthAxis axis = DepthAxis::of(3, 2000, 500);
        const double room = 230 * mm; // 115 m
        const QVector<double> ends = pageEnds(axis, room);
        QCOMPARE(ends.size(), 19);
        double before = 0;
        for (int i = 0; i < ends.size(); ++i) {
            QVERIFY(ends.at(i) - before <= room + 1e-6);
            const double depth = axis.toDepth(ends.at(i));
            if (i + 1 < ends.size())
                QVERIFY2(qAbs(depth / 10 - qRound(depth / 10)) < 1e-6, qPrintable(QString::number(depth)));
            before = ends.at(i);
        }
        QCOMPARE(axis.toDepth(ends.first()), 110.0);
        QCOMPARE(DepthAxis::of(0, 2000, 500).toDepth(pageEnds(DepthAxis::of(0, 2000, 500), 148 * mm).first()), 70.0);
        QCOMPARE(ends.last(), double(axis.height));
    }

    void pageEndsOfExtremes()
    {
        const DepthAxis axis = DepthAxis::of(0, 100, 1000);
        QCOMPARE(pageEnds(axis, 1e9), QVector<double>{double(axis.height)});
        QCOMPARE(pageEnds(axis, double(axis.height)), QVector<double>{double(axis.height)});
        QVERIFY(pageEnds(axis, 0).isEmpty());
        QVERIFY(pageEnds(axis, -5).isEmpty());
        QVERIFY(pageEnds(DepthAxis::of(100, 0, 1000), 100).isEmpty());
        QVERIFY(pageEnds(DepthAxis::of(0, 1e6F, 1), 100).isEmpty());
        const QVector<double> negative = pageEnds(DepthAxis::of(-25, 1475, 1000), 205 * mm);
        QCOMPARE(DepthAxis::of(-25, 1475, 1000).toDepth(negative.first()), 180.0);
    }

    void anUprightSheet()
    {
        const Sheet sheet = layOutSheet(contentsOf(3), Paper::A4, pdfLimits());
        QVERIFY2(sheet.ok(), qPrintable(sheet.problem));
        QVERIFY(qAbs(sheet.pageSize.width() - 210 * mm) < 0.001);
        QVERIFY(qAbs(sheet.pageSize.height() - 297 * mm) < 0.001);
        QCOMPARE(sheet.pages.size(), 9); // 297 - 14 - 7 - 17.2 - 4.2 mm: 254 m, of which 240
        QCOMPARE(sheet.pages.first().startDepth, 0.0);
        for (int i = 1; i < sheet.pages.size(); ++i) {
            QCOMPARE(sheet.pages.at(i).startDepth, sheet.pages.at(i - 1).endDepth);
            QCOMPARE(sheet.pages.at(i).top, sheet.pages.at(i - 1).bottom);
        }
        QCOMPARE(sheet.pages.last().endDepth, 2000.0);
        const QRectF tracks = sheet.trackArea(sheet.pages.first());
        QCOMPARE(tracks.width(), 576.0);
        QCOMPARE(tracks.height(), sheet.pages.first().bottom);
        QCOMPARE(tracks.top(), sheet.headerArea(sheet.pages.first()).bottom());
        for (const SheetPage &page : sheet.pages)
            QVERIFY(sheet.trackArea(page).bottom() + sheet.bleedBelow(page) < sheet.footerArea().top());
        QVERIFY(sheet.footerArea().bottom() <= sheet.pageSize.height() - 7 * mm + 0.001);
    }

    void aBroadDisplayTakesTheBroadSideOrParts()
    {
        const Sheet broad = layOutSheet(contentsOf(5, 2000), Paper::A4, pdfLimits()); // 254 mm
        QVERIFY(broad.ok());
        QVERIFY(broad.pageSize.width() > broad.pageSize.height());
        QCOMPARE(broad.pages.first().lastTrack, 4);

        const Sheet parts = layOutSheet(contentsOf(8, 2000), Paper::A4, pdfLimits());
        QVERIFY(parts.ok());
        int next = 0;
        for (const SheetPage &page : parts.pages) {
            QCOMPARE(page.firstTrack, next);
            QCOMPARE(page.left, 192.0 * page.firstTrack);
            QCOMPARE(page.right, 192.0 * (page.lastTrack + 1));
            QVERIFY(parts.trackArea(page).right() <= parts.pageSize.width() - parts.margin);
            next = page.lastTrack == 7 ? 0 : page.lastTrack + 1;
        }
        QCOMPARE(next, 0);
        QVERIFY(footerTexts(parts, 0).at(1).contains(QStringLiteral("of 8")));
        QVERIFY(!footerTexts(broad, 0).at(1).contains(QStringLiteral("Tracks")));
    }

    void namesTakeTheirMargin()
    {
        SheetContents contents = contentsOf(8, 2000);
        contents.leftMargin = 84;
        const Sheet each = layOutSheet(contents, Paper::A4, pdfLimits());
        for (const SheetPage &page : each.pages) {
            QVERIFY(page.hasNames);
            QCOMPARE(each.trackArea(page).left(), each.margin + 1 + 84);
            QVERIFY(each.trackArea(page).right() <= each.pageSize.width() - each.margin);
        }
        contents.hasOneWell = false;
        const Sheet once = layOutSheet(contents, Paper::A4, pdfLimits());
        for (const SheetPage &page : once.pages) {
            QCOMPARE(page.hasNames, page.firstTrack == 0);
            QCOMPARE(once.trackArea(page).left(), once.margin + 1 + (page.hasNames ? 84 : 0));
        }
        QVERIFY(footerTexts(once, 0).at(1).endsWith(
            QStringLiteral("Wells 1–%1 of 8").arg(once.pages.first().lastTrack + 1)));
        contents.trackEnds[7] = 8 * 192 + 2000;
        QVERIFY(problemOf(contents, Paper::A4).startsWith(QStringLiteral("One well takes")));
    }

    void aContinuousSheetIsAsLongAsTheLog()
    {
        const Sheet sheet = layOutSheet(contentsOf(3), Paper::Continuous, pdfLimits());
        QVERIFY(sheet.ok());
        QCOMPARE(sheet.pages.size(), 1);
        QVERIFY(qAbs(sheet.trackArea(sheet.pages.first()).height() - 2000 * mm) < 0.01);
        const double points = sheet.pageSize.height() / pixelsPerPoint;
        QVERIFY(qAbs(points - qRound(points)) < 1e-6);
        QVERIFY(sheet.trackArea(sheet.pages.first()).bottom() <= sheet.footerArea().top());
        QVERIFY(sheet.pageSize.height() < 2000 * mm + 65 + 30 * mm);
    }

    void whatNoSheetHolds()
    {
        QCOMPARE(problemOf(contentsOf(3, 500, 3000), Paper::Continuous),
                 QString("A continuous sheet would be 6039 mm long; a PDF page ends at 5080 mm (14,400 units of 1/72 "
                         "inch). Take pages (A4 or A3), a part of the log or another scale."));
        QVERIFY(layOutSheet(contentsOf(3, 500, 3000), Paper::Continuous, svgLimits()).ok());
        QVERIFY(
            problemOf(contentsOf(3), Paper::A4, svgLimits()).startsWith(QStringLiteral("An SVG file is one sheet")));
        QVERIFY(problemOf(contentsOf(3, 20, 3000), Paper::A4)
                    .contains(QStringLiteral("pages of A4; no more than 200 are made.")));
        QVERIFY(problemOf(contentsOf(3, 1, 3000), Paper::A3).contains(QStringLiteral("pages of A3")));
        QCOMPARE(problemOf(contentsOf(0), Paper::A4), QString("There are no tracks to be printed."));
        QCOMPARE(problemOf(contentsOf(2, 1000, 0), Paper::A4),
                 QString("There are no depths to be printed: the range is empty."));
        SheetContents narrow = contentsOf(1);
        narrow.trackEnds[0] = 1;
        QVERIFY(problemOf(narrow, Paper::A4).isEmpty());
        narrow.trackEnds[0] = 0;
        QCOMPARE(problemOf(narrow, Paper::A4), QString("There are no tracks to be printed."));
        SheetContents high = contentsOf(3);
        high.headerHeight = 5000;
        QVERIFY(problemOf(high, Paper::A4).startsWith(QStringLiteral("The header is 1323 mm high")));
        SheetContents wide = contentsOf(1);
        wide.trackEnds[0] = 1200;
        QCOMPARE(problemOf(wide, Paper::A4), QString("One track takes 318 mm of width; A4 has 196 mm."));
        QVERIFY(problemOf(wide, Paper::A3).isEmpty());
    }

    void footers()
    {
        SheetContents contents = contentsOf(3, 500);
        const Sheet sheet = layOutSheet(contents, Paper::A4, pdfLimits());
        QCOMPARE(footerTexts(sheet, 0),
                 (QStringList{QStringLiteral("W-1"), QStringLiteral("1:500   MD 0 – 120 m"),
                              QStringLiteral("Page 1 of %1").arg(sheet.pages.size())}));
        QVERIFY(footerTexts(sheet, 1).at(1).contains(QStringLiteral("120 – 240 m")));
        contents.unit = Feet;
        contents.depthsOf = QStringLiteral("B");
        contents.depthTypeText = QStringLiteral("TVDSS");
        contents.axis = DepthAxis::of(-82.021F, 100.5F, 500);
        QCOMPARE(footerTexts(layOutSheet(contents, Paper::Continuous, pdfLimits()), 0).at(1),
                 QString("1:500   TVDSS -82.02 – 100.5 ft in B"));
        // The name of the whole sheet stands beside it.
        contents.depthsOf = QStringLiteral("15/9-F-1 of the northern block, side track B T2");
        QCOMPARE(footerTexts(layOutSheet(contents, Paper::Continuous, pdfLimits()), 0).at(1),
                 QString("1:500   TVDSS -82.02 – 100.5 ft in 15/9-F-1 of the…ack B T2"));
        contents.depthsOf = QString(24, u'W');
        QVERIFY(
            footerTexts(layOutSheet(contents, Paper::Continuous, pdfLimits()), 0).at(1).endsWith(contents.depthsOf));
    }

    void numbersAreShort()
    {
        QCOMPARE(shortNumber(100, 2), QString("100"));
        QCOMPARE(shortNumber(100.5, 2), QString("100.5"));
        QCOMPARE(shortNumber(-0.001, 2), QString("0"));
        QCOMPARE(shortNumber(1230, 0), QString("1230"));
    }
};

LORVA_TEST_MAIN(tst_sheet)
#include "tst_sheet.moc"
