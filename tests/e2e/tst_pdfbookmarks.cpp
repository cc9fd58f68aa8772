// Bookmarks and links in a PDF file of Qt's writer, read from the file's own bytes.

#include "pdfoutline.h"
#include "programs/pdfbookmarks.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QTest>

using programs::PdfBookmark;
using programs::PdfLink;

namespace {

QByteArray written(int pages)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4)); // 842 points high
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0)
            writer.newPage();
        painter.drawText(1000, 1000, QStringLiteral("Page %1").arg(page));
    }
    painter.end();
    return bytes;
}

} // namespace

class tst_pdfbookmarks : public QObject
{
    Q_OBJECT

private slots:
    void bookmarksFormTheOutline()
    {
        const QByteArray plain = written(3);
        const QByteArray bytes = programs::withBookmarks(plain,
                                                         {{"1  Wells (all)", 1, {0, 0}},
                                                          {"At the depth \u2013 of the KB", 2, {1, 100}},
                                                          {"Below", 2, {1, 442.5}},
                                                          {"2  Logs", 1, {2, 20}},
                                                          {"Deep", 3, {2, 30}},
                                                          {"Less", 2, {2, 40}}},
                                                         {});
        QVERIFY(bytes.startsWith(plain));
        QVERIFY(outline::hasSoundTables(bytes));
        const outline::File file = outline::read(bytes);
        QCOMPARE(file.pageCount, 3);
        QStringList lines;
        for (const outline::Entry &entry : file.entries)
            lines.append(
                QStringLiteral("%1 %2 p%3 %4").arg(entry.level).arg(entry.title).arg(entry.page).arg(entry.y));
        QCOMPARE(lines,
                 QStringList({"1 1  Wells (all) p0 842", "2 At the depth \u2013 of the KB p1 742", "2 Below p1 399.5",
                              "1 2  Logs p2 822", "2 Deep p2 812", "2 Less p2 802"}));
        QVERIFY(bytes.contains("/PageMode /UseOutlines"));
        QCOMPARE(bytes.count("/Count -2\n"), 2); // closed to begin with
        QVERIFY(bytes.contains("/Count 2\n"));
    }

    void linksLeadToTheirPlaces()
    {
        const QByteArray plain = written(3);
        const QByteArray bytes = programs::withBookmarks(plain, {},
                                                         {{1, QRectF(50, 100, 400, 12), {2, 42}},
                                                          {1, QRectF(50, 112, 400, 12), {0, 0}},
                                                          {0, QRectF(1, 2, 3, 4), {1, 842}}});
        QVERIFY(outline::hasSoundTables(bytes));
        const outline::File file = outline::read(bytes);
        QCOMPARE(file.links.size(), 3);
        QCOMPARE(file.links.at(0).page, 0);
        QCOMPARE(file.links.at(0).area, QRectF(QPointF(1, 836), QPointF(4, 840)));
        QCOMPARE(file.links.at(0).toPage, 1);
        QCOMPARE(file.links.at(1).page, 1);
        QCOMPARE(file.links.at(1).area, QRectF(QPointF(50, 730), QPointF(450, 742)));
        QCOMPARE(file.links.at(1).toPage, 2);
        QCOMPARE(file.links.at(1).toY, 800.0);
        QCOMPARE(file.links.at(2).toPage, 0);
        QVERIFY(!bytes.contains("/Outlines"));
        QCOMPARE(bytes.count("/Border [0 0 0]\n"), 3); // none is framed
    }

    void whatHasAnotherFormIsNotTaken()
    {
        const QByteArray plain = written(2);
        const QVector<PdfBookmark> bookmarks{{"A", 1, {1, 0}}};
        QVERIFY(!programs::withBookmarks(plain, bookmarks, {}).isEmpty());
        QVERIFY(programs::withBookmarks(plain, {{"A", 1, {2, 0}}}, {}).isEmpty());
        QVERIFY(programs::withBookmarks(plain, {{"A", 1, {-1, 0}}}, {}).isEmpty());
        QVERIFY(programs::withBookmarks(plain, {}, {{0, QRectF(0, 0, 1, 1), {2, 0}}}).isEmpty());
        QVERIFY(programs::withBookmarks(plain, {}, {{2, QRectF(0, 0, 1, 1), {0, 0}}}).isEmpty());
        QVERIFY(programs::withBookmarks({}, bookmarks, {}).isEmpty());
        QVERIFY(programs::withBookmarks("%PDF-1.4\nstartxref\n5000000\n%%EOF\n", bookmarks, {}).isEmpty());
        for (const char *word : {"/Kids", "/Root", "/Pages", "trailer", "startxref"}) {
            QByteArray other = plain;
            QVERIFY2(programs::withBookmarks(other.replace(word, "/Other"), bookmarks, {}).isEmpty(), word);
        }
        QVERIFY(programs::withBookmarks(plain.left(plain.size() / 2), bookmarks, {}).isEmpty());
    }
};

QTEST_MAIN(tst_pdfbookmarks)
#include "tst_pdfbookmarks.moc"
