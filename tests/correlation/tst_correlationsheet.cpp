#include "correlation/correlationsheet.h"

#include "correlationviewfixture.h"
#include "logview/paper/sheetfile.h"
#include "logview/paper/sheetpainter.h"
#include "logview/paper/truefeet.h"
#include "logview/trackitem.h"
#include "support/pdfreader.h"
#include "support/testmain.h"

#include <QPainter>
#include <QScrollBar>

using namespace logview;

namespace {

Sheet layOut(ViewFixture &fixture, Paper paper)
{
    const SheetContents contents = correlation::sheetContents(*fixture.headers(), *fixture.view());
    return layOutSheet(contents, paper, pdfLimits());
}

} // namespace

class tst_correlationsheet : public QObject
{
    Q_OBJECT

private slots:
    void feetAreTrueToARuler_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::newRow("metres") << "METER";
        QTest::newRow("feet") << "FEET";
    }
    void feetAreTrueToARuler()
    {
        QFETCH(QString, unit);
        ViewFixture f;
        f.store("North", "2\nA:T\nB:T\n", "2\nTop\nBase\n", "1\nZ|Top|Base|#ff8000|1|0|0\n");
        CorrelationView *view = f.show();
        f.choose("depthUnitBox", unit);
        view->verticalScrollBar()->setValue(700);
        view->tracks().first()->setSelected(true);
        const QImage shown = picture(*view->scene());
        {
            const TrueFeet feet(*view->scene(), view->depthUnit());
            const Sheet sheet = layOut(f, Paper::Continuous);
            QVERIFY2(sheet.ok(), qPrintable(sheet.problem));
            const pdf::File file = pdf::read(pdfBytes(SheetPainter(*f.headers(), *view->scene(), sheet)));
            QCOMPARE(file.pages.size(), 1);
            const pdf::Page &page = file.pages.first();
            const QPointF origin = sheet.trackArea(sheet.pages.first()).topLeft() / pixelsPerMm;
            const auto hasCorner = [&](double x, double depthM) {
                return pdf::distanceOfCorner(page, origin + QPointF(x / pixelsPerMm, depthM)) < 0.1;
            };
            const correlation::WellColumn &b = view->columns().at(1);
            const double middle = static_cast<double>(view->tracks().at(2)->width()) / 2;
            QVERIFY(hasCorner(b.left + middle, 0)); // the curve's ends
            QVERIFY(hasCorner(b.left + middle, 2000));
            // The line between the wells, and the markers that it joins.
            const double left = view->columns().at(0).right;
            QVERIFY(hasCorner(left, 500));
            QVERIFY(hasCorner(b.left, 600));
            QVERIFY(hasCorner(left, 900));
            QVERIFY(hasCorner(b.left, 1000));
            QVERIFY(hasCorner(b.right, 1000));
            // What joins them and what lies between them.
            const QLineF line = f.lines().first()->line();
            QVERIFY(isNear(line.y1() / pixelsPerMm, 500) && isNear(line.y2() / pixelsPerMm, 600));
            const QPolygonF zone = f.zones().first()->polygon();
            QVERIFY(isNear(zone.at(0).y() / pixelsPerMm, 500) && isNear(zone.at(2).y() / pixelsPerMm, 1000));
            QCOMPARE(view->tracks().first()->scale(), 1000.0F);
        }
        QCOMPARE(view->verticalScrollBar()->value(), 700);
        QVERIFY(view->tracks().first()->isSelected());
        QCOMPARE(picture(*view->scene()), shown);
    }

    // A page begins with the gap before its first well, not with the border of the well on the page before.
    void aPageShowsNothingOfTheWellBeside()
    {
        ViewFixture f;
        f.store("North", "9\nA:T\nB:T\nC:T\nA:T\nB:T\nC:T\nA:T\nB:T\nC:T\n", "0\n");
        CorrelationView *view = f.show();
        view->makeAllWells();
        const Sheet sheet = layOut(f, Paper::A4);
        const auto second = std::find_if(sheet.pages.begin(), sheet.pages.end(),
                                         [](const SheetPage &page) { return page.firstTrack > 0; });
        QVERIFY(second != sheet.pages.end());
        QImage page(sheet.pageSize.toSize(), QImage::Format_RGB32);
        page.fill(Qt::white);
        {
            QPainter painter(&page);
            SheetPainter(*f.headers(), *view->scene(), sheet).paint(painter, int(second - sheet.pages.begin()));
        }
        const QRect tracks = sheet.trackArea(*second).toAlignedRect();
        const double gap = view->columns().at(second->firstTrack).left - second->left;
        QVERIFY(gap > 70 && gap < correlation::gapBetweenWells);
        const QImage beside = page.copy(0, 0, tracks.left() + int(gap) - 3, tracks.bottom());
        QImage blank(beside.size(), beside.format());
        blank.fill(Qt::white);
        QCOMPARE(beside, blank);
        // Hidden by a clip, it would show through in a viewer's coarse picture.
        const pdf::File file = pdf::read(pdfBytes(SheetPainter(*f.headers(), *view->scene(), sheet)));
        const double firstMm = (tracks.left() + gap - 3) / pixelsPerMm;
        for (const pdf::Path &path : file.pages.at(int(second - sheet.pages.begin())).paths)
            for (const QPolygonF &line : path.lines)
                QVERIFY2(path.painted != "S" || line.boundingRect().right() > firstMm, path.painted);
    }

private:
    static QImage picture(QGraphicsScene &scene)
    {
        QImage image(500, 800, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        scene.render(&painter, image.rect(), QRectF(0, 1700, 500, 800));
        return image;
    }
};

LORVA_TEST_MAIN(tst_correlationsheet)
#include "tst_correlationsheet.moc"
