#include "logview/paper/deflate.h"
#include "logview/paper/dotdevice.h"
#include "logview/paper/pdflines.h"
#include "logview/paper/svgdevice.h"
#include "support/pdfreader.h"
#include "support/testmain.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <functional>

using namespace logview;

namespace {

QPainterPath zigzag(int corners, int from)
{
    QPainterPath path(QPointF(from, 0));
    for (int i = 1; i < corners; ++i)
        path.lineTo(from + i * 37 % 101, i * 7);
    return path;
}

// As they are, idle corners too.
DotLines linesOf(const QPainterPath &path)
{
    DotLines lines;
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isMoveTo())
            lines.starts.push_back(lines.corners.size());
        lines.corners.push_back(path.elementAt(i));
    }
    return lines;
}

QByteArray written(int pages, const std::function<void(QPainter &, int)> &paint)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(600);
    writer.setTitle(QStringLiteral("endobj stream"));
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0)
            writer.newPage();
        painter.drawText(100, 100, QStringLiteral("Page %1").arg(page));
        painter.setPen(QPen(Qt::black, 4));
        paint(painter, page);
    }
    painter.end();
    return bytes;
}

// On a page of 100 times 100 pixels, a dot each.
QByteArray svgOf(const std::function<void(QPainter &)> &paint)
{
    SvgDevice svg(QSizeF(100, 100), 96);
    QPainter target(&svg);
    {
        DotDevice dots(&target, 96, QSizeF(100, 100));
        QPainter painter(&dots);
        paint(painter);
    }
    target.end();
    return svg.bytes();
}

} // namespace

class tst_pdflines : public QObject
{
    Q_OBJECT

private slots:
    // Pages hold to the last byte what Qt's writer would have put there.
    void pagesHoldTheLinesInPlaceOfTheirMarks()
    {
        const auto lines = [](QPainter &painter, int page,
                              const std::function<QPainterPath(const QPainterPath &)> &of) {
            for (int line = 0; line < page; ++line) {
                painter.setPen(QPen(line % 2 ? Qt::red : Qt::blue, 4));
                QPainterPath path = zigzag(150 + line, line * 10 - 5);
                path.addPath(zigzag(20, 300)); // behind a gap
                painter.drawPath(of(path));
                painter.drawLine(0, 0, 100, line);
            }
        };
        const QByteArray plain = written(4, [&](QPainter &painter, int page) {
            lines(painter, page, [](const QPainterPath &line) { return line; });
        });
        PdfLines kept;
        QVERIFY(kept.isEmpty());
        const QByteArray marked = written(4, [&](QPainter &painter, int page) {
            lines(painter, page, [&kept](const QPainterPath &line) { return kept.markFor(linesOf(line)); });
        });
        QVERIFY(!kept.isEmpty());
        const pdf::File expected = pdf::read(plain);
        QVERIFY(expected.isComplete);
        QVERIFY(pdf::read(marked).contents != expected.contents);
        const pdf::File file = pdf::read(kept.writtenInto(marked));
        QVERIFY(file.isComplete);
        QVERIFY(file.hasEmbeddedFonts);
        QCOMPARE(file.contents, expected.contents);
    }

    void aFileWithoutAllMarksIsNotTaken()
    {
        PdfLines kept;
        const auto mark = [&kept](QPainter &painter, int) {
            painter.drawPath(kept.markFor(linesOf(zigzag(200, 0))));
        };
        const QByteArray marked = written(2, mark);
        QVERIFY(!kept.writtenInto(marked).isEmpty());
        QVERIFY(kept.writtenInto({}).isEmpty());
        QVERIFY(kept.writtenInto("%PDF-1.4\nstartxref\n5000000\n%%EOF\n").isEmpty());
        QVERIFY(kept.writtenInto(written(2, [](QPainter &, int) {})).isEmpty());
        // The same mark twice, and one that no line has.
        PdfLines one;
        const QPainterPath markOfOne = one.markFor(linesOf(zigzag(200, 0)));
        QVERIFY(one.writtenInto(written(2, [&](QPainter &painter, int) { painter.drawPath(markOfOne); })).isEmpty());
        PdfLines two;
        two.markFor(linesOf(zigzag(200, 0)));
        const QPainterPath second = two.markFor(linesOf(zigzag(200, 0)));
        QVERIFY(one.writtenInto(written(1, [&](QPainter &painter, int) { painter.drawPath(second); })).isEmpty());
        // Files that are laid out in another way.
        QByteArray other = marked;
        QVERIFY(kept.writtenInto(other.replace("/Type /Page\n", "/Type/Page \n")).isEmpty());
        other = marked;
        QVERIFY(kept.writtenInto(other.replace("xref\n0 ", "xref\n1 ")).isEmpty());
        other = marked;
        QVERIFY(kept.writtenInto(other.replace("trailer\n", "Trailer\n")).isEmpty());
        other = marked;
        QVERIFY(kept.writtenInto(other.replace("/Contents ", "/Contents -")).isEmpty());
        other = marked;
        QVERIFY(kept.writtenInto(other.replace("\nendstream", "\nEndstream")).isEmpty());
        QVERIFY(kept.writtenInto(marked.left(marked.size() / 2)).isEmpty());
    }

    void streamsComeBackAsTheyWere()
    {
        QByteArray bytes;
        for (int i = 0; i < 20000; ++i)
            bytes += QByteArray::number(i * 7919 % 1001) + ' ' + QByteArray::number(i * 7) + " l\n";
        for (const StreamKind kind : {StreamKind::Lines, StreamKind::Operators}) {
            const QByteArray stream = deflated(bytes, kind);
            QVERIFY2(stream.size() > 1000 && stream.size() < bytes.size() / 2,
                     qPrintable(QString::number(stream.size())));
            QCOMPARE(inflated(stream), bytes);
            QCOMPARE(pdf::inflated(stream), bytes); // by Qt's own
            QCOMPARE(inflated(deflated("q Q", kind)), QByteArray("q Q"));
            QByteArray damaged = stream;
            damaged[damaged.size() / 2] = char(damaged.at(damaged.size() / 2) ^ 0x55);
            QCOMPARE(inflated(damaged), QByteArray());
            QCOMPARE(inflated(stream.left(stream.size() / 2)), QByteArray());
        }
        QCOMPARE(inflated({}), QByteArray());
        QCOMPARE(inflated("no stream"), QByteArray());
    }

    void onlySmallNumbersAreHeld()
    {
        QVERIFY(PdfLines::canHold(linesOf(zigzag(200, -5))));
        QPainterPath path = zigzag(3, 0);
        path.lineTo(1e9, 3);
        QVERIFY(!PdfLines::canHold(linesOf(path)));
        path = zigzag(3, 0);
        path.lineTo(3, -1e9);
        QVERIFY(!PdfLines::canHold(linesOf(path)));
    }

    void linesComeOntoDots()
    {
        QPainterPath path(QPointF(1, 1));
        path.lineTo(2.6, 1.2);
        path.lineTo(5.3, 10);
        path.moveTo(-300, 2); // beside the area
        path.lineTo(-300, 50);
        path.moveTo(20, 5);
        path.lineTo(20.2, 5.2); // one dot
        path.moveTo(30, 5);
        path.lineTo(30, 500);
        path.lineTo(60, 500); // below it
        path.lineTo(60, 5);
        const DotLines lines = linesOnDots(path, QTransform::fromScale(2, 1), QRectF(0, 0, 200, 100));
        QVERIFY(!lines.hasCurves);
        QCOMPARE(lines.starts, (std::vector<size_t>{0, 3, 5, 7}));
        QCOMPARE(lines.corners,
                 (std::vector<QPointF>{
                     {2, 1}, {5, 1}, {11, 10}, {40, 5}, {40, 5}, {60, 5}, {60, 500}, {120, 500}, {120, 5}}));
        path.quadTo(30, 30, 60, 60);
        QVERIFY(linesOnDots(path, {}, QRectF(0, 0, 200, 100)).hasCurves);
        QVERIFY(linesOnDots({}, {}, QRectF(0, 0, 200, 100)).corners.empty());
    }

    // Nearly every text of a header has a clip of its own, which cuts nothing of it.
    void textsThatShowWholeNeedNoClipOfTheirOwn()
    {
        const auto clips = [](const QRectF &clip, const QString &text) {
            const QByteArray svg = svgOf([&](QPainter &painter) {
                painter.setClipRect(QRectF(0, 0, 100, 60));
                painter.drawLine(0, 10, 100, 20);
                painter.setClipRect(clip, Qt::IntersectClip);
                painter.drawText(QPointF(12, 30), text);
            });
            return svg.count("<clipPath");
        };
        QCOMPARE(clips(QRectF(10, 10, 60, 40), "ab"), 1);
        QCOMPARE(clips(QRectF(10, 10, 8, 40), "abcdef"), 2); // cut on its right
        QCOMPARE(clips(QRectF(10, 25, 60, 20), "ab"), 2); // and above
    }

    // Lines of a font are a little higher than their letters.
    void clipsMayCutTheAirAroundLetters()
    {
        const auto clips = [](double sides, double air) {
            const QByteArray svg = svgOf([=](QPainter &painter) {
                const QFontMetricsF metrics(painter.font(), painter.device());
                const QRectF letters(12, 30 - metrics.ascent(), metrics.horizontalAdvance("ab"), metrics.height());
                painter.setClipRect(letters.adjusted(-1 + sides, air, 1 - sides, -air));
                painter.drawText(QPointF(12, 30), "ab");
            });
            return svg.count("<clipPath");
        };
        QCOMPARE(clips(0, 0), 0);
        QCOMPARE(clips(0, 1), 0);
        QCOMPARE(clips(0, 3), 1);
        QCOMPARE(clips(2, 0), 1); // there they have none
    }

    // The clip that was set for what was painted before may be smaller than that of a text.
    void aTextIsNotCutByTheClipInForce()
    {
        const QByteArray svg = svgOf([](QPainter &painter) {
            painter.setClipRect(QRectF(0, 0, 20, 20));
            painter.drawLine(0, 10, 100, 20);
            painter.setClipRect(QRectF(0, 0, 90, 90));
            painter.drawText(QPointF(12, 30), "ab");
        });
        QCOMPARE(svg.count("<clipPath"), 2);
    }

    void longLinesGoPastTheWriter()
    {
        PdfLines kept;
        const auto paint = [&kept](int corners, double clip) {
            written(1, [&](QPainter &target, int) {
                DotDevice dots(&target, 600, QSizeF(500, 500), &kept);
                QPainter painter(&dots);
                painter.setClipRect(QRectF(0, 0, clip, clip));
                painter.drawPath(zigzag(corners, 5));
            });
        };
        paint(90, 3000);
        QVERIFY(kept.isEmpty()); // a short one
        paint(300, 3);
        QVERIFY(kept.isEmpty()); // too little of it shows
        paint(300, 3000);
        QVERIFY(!kept.isEmpty());
    }

    void whatIsClippedAlikeIsClippedOnce()
    {
        const QByteArray svg = svgOf([](QPainter &painter) {
            for (int i = 0; i < 3; ++i) {
                painter.save();
                painter.setClipRect(QRectF(0, 0, 50, 50));
                painter.save();
                painter.setClipRect(QRectF(20, 20, 50, 50), Qt::IntersectClip);
                painter.drawLine(0, 0, 50, 40 + i);
                painter.restore();
                painter.restore();
            }
        });
        QCOMPARE(svg.count("<clipPath"), 1);
        QVERIFY(svg.contains("<clipPath id=\"c1\"><path d=\"M20 20L50 20L50 50L20 50L20 20\"/>"));
        QCOMPARE(svg.count("<path d=\"M0 0L50 4"), 3);
    }

    void clipsEndWhereTheyEnd()
    {
        const QByteArray svg = svgOf([](QPainter &painter) {
            painter.drawLine(1, 1, 5, 9);
            painter.setClipRect(QRectF(0, 0, 50, 50));
            painter.drawLine(2, 1, 5, 9);
            painter.setClipRect(QRectF(0, 0, 60, 60));
            painter.drawLine(3, 1, 5, 9);
            painter.setClipping(false);
            painter.drawLine(4, 1, 5, 9);
        });
        QCOMPARE(svg.count("<clipPath"), 2);
        const QByteArray body = svg.mid(svg.indexOf("M1 1"));
        QVERIFY(body.indexOf("<clipPath id=\"c1\"") < body.indexOf("M2 1"));
        QVERIFY(body.indexOf("M2 1") < body.indexOf("<clipPath id=\"c2\""));
        QVERIFY(body.lastIndexOf("</g>") > body.indexOf("M3 1"));
        QVERIFY(body.lastIndexOf("</g>") < body.indexOf("M4 1"));
    }

    void whatIsClippedAwayIsNotWritten()
    {
        const QByteArray svg = svgOf([](QPainter &painter) {
            painter.setClipRect(QRectF(0, 0, 10, 10));
            painter.setClipRect(QRectF(20, 20, 10, 10), Qt::IntersectClip);
            painter.drawLine(0, 0, 50, 40);
            painter.drawText(5, 25, QStringLiteral("Hidden"));
            painter.drawImage(QPointF(5, 5), QImage(30, 30, QImage::Format_RGB32));
            painter.drawEllipse(0, 0, 50, 50);
        });
        QCOMPARE(svg.count("<path"), 0);
        QCOMPARE(svg.count("<image"), 0);
    }

    void aClipOfAnyShapeIsKept()
    {
        const QByteArray svg = svgOf([](QPainter &painter) {
            QPainterPath triangle;
            triangle.addPolygon(QPolygonF({{0, 0}, {40, 0}, {0, 40}, {0, 0}}));
            painter.setClipPath(triangle);
            painter.setClipRect(QRectF(0, 0, 20, 50), Qt::IntersectClip);
            painter.drawLine(0, 0, 50, 40);
        });
        QCOMPARE(svg.count("<clipPath"), 1);
        const QByteArray clip =
            svg.mid(svg.indexOf("<clipPath"), svg.indexOf("</clipPath>") - svg.indexOf("<clipPath"));
        QVERIFY2(clip.contains("20 20") && clip.contains("20 0") && clip.contains("0 40"), clip);
    }
};

LORVA_TEST_MAIN(tst_pdflines)
#include "tst_pdflines.moc"
