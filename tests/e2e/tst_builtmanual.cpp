// The manual that the build made, as "Documentation" opens it.

#include "pdfoutline.h"
#include "programs/manualtext.h"
#include "support/files.h"
#include "support/pdfreader.h"

#include <QFileInfo>
#include <QImageReader>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

using programs::ManualChapter;

class tst_builtmanual : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(manualFile()))
            QSKIP("this build made no manual: only optimised ones do, others with the target \"manual\"");
        m_bytes = files::read(manualFile());
        m_chapters = programs::readManual(QStringLiteral(LORVA_SOURCE_DIR "/docs/manual"));
        QVERIFY(m_chapters.size() > 10);
    }

    void everyChapterIsABookmark()
    {
        QVERIFY(outline::hasSoundTables(m_bytes));
        const outline::File file = outline::read(m_bytes);
        QStringList titles;
        int page = 0;
        for (const outline::Entry &entry : file.entries) {
            QVERIFY2(entry.page >= page && entry.page < file.pageCount, qPrintable(entry.title));
            page = entry.page;
            if (entry.level > 1)
                continue;
            titles.append(entry.title);
            QVERIFY(entry.y > 780 && entry.y < 790); // 20 mm below the edge of A4
        }
        QStringList expected;
        for (int i = 0; i < m_chapters.size(); ++i)
            expected.append(QStringLiteral("%1 %2").arg(i + 1).arg(m_chapters.at(i).title));
        QCOMPARE(titles, expected);
        QVERIFY(file.entries.size() > 3 * titles.size());
    }

    void everyLineOfTheContentsLeadsToItsHeading()
    {
        const outline::File file = outline::read(m_bytes);
        QVERIFY(file.links.size() > file.entries.size());
        for (int i = 0; i < file.entries.size(); ++i) {
            QVERIFY(file.links.at(i).page >= 1 && file.links.at(i).page <= 3); // behind the title
            QCOMPARE(file.links.at(i).toPage, file.entries.at(i).page);
            QCOMPARE(file.links.at(i).toY, file.entries.at(i).y);
        }
    }

    void namesOfOtherChaptersLeadThere()
    {
        int named = 0;
        for (const ManualChapter &chapter : m_chapters)
            named += chapter.text.count(QRegularExpression(QStringLiteral("\\(chapter \\d+\\)")));
        QVERIFY(named > 10);
        const outline::File file = outline::read(m_bytes);
        QVector<int> firstPages; // of the chapters
        for (const outline::Entry &entry : file.entries)
            if (entry.level == 1)
                firstPages.append(entry.page);
        const QVector<outline::Link> links = file.links.mid(file.entries.size());
        QCOMPARE(links.size(), named);
        for (const outline::Link &link : links) {
            QVERIFY(link.page >= firstPages.first() && firstPages.contains(link.toPage));
            QVERIFY(link.area.width() > 20 && link.area.width() < 80 && link.area.height() < 25);
            QVERIFY(QRectF(60, 60, 480, 730).contains(link.area)); // the text of a page
        }
        const QString program = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
        if (program.isEmpty())
            QSKIP("pdftotext is not installed");
        for (const outline::Link &link : {links.first(), links.last()}) { // what stands there
            const QString page = QString::number(link.page + 1);
            QProcess process;
            process.start(program,
                          {"-f", page, "-l", page, "-x", QString::number(qRound(link.area.left()) - 1), "-y",
                           QString::number(qRound(842 - link.area.bottom())), "-W",
                           QString::number(qRound(link.area.width()) + 2), "-H",
                           QString::number(qRound(link.area.height())), manualFile(), "-"});
            QVERIFY(process.waitForFinished(60000));
            const int chapter = firstPages.indexOf(link.toPage) + 1;
            const QString there = QString::fromUtf8(process.readAllStandardOutput()).simplified();
            QVERIFY2(there.startsWith(QStringLiteral("(chapter %1)").arg(chapter)), qPrintable(there));
        }
    }

    // By their sizes, those that the programs of this build drew.
    void everyPictureIsThere()
    {
        QVector<QSize> inFile;
        static const QRegularExpression image(QStringLiteral("/Subtype /Image\n/Width (\\d+)\n/Height (\\d+)\n"));
        auto found = image.globalMatch(QString::fromLatin1(m_bytes.constData(), m_bytes.size()));
        while (found.hasNext()) {
            const QRegularExpressionMatch match = found.next();
            inFile.append(QSize(match.captured(1).toInt(), match.captured(2).toInt()));
        }
        int pictures = 0;
        for (const ManualChapter &chapter : m_chapters) {
            for (const QString &name : programs::picturesOf(chapter)) {
                ++pictures;
                const QSize size = QImageReader(QStringLiteral(LORVA_BINARY_DIR "/manual/images/") + name).size();
                QVERIFY2(size.isValid(), qPrintable(name));
                QVERIFY2(inFile.removeOne(size), qPrintable(name));
            }
        }
        QVERIFY(pictures > 20);
        int painted = 0; // one that begins a page is no part of the page before
        for (const QByteArray &content : pdf::read(m_bytes).contents)
            painted += content.count(" Do\n");
        QCOMPARE(painted, pictures);
    }

    void pageNumbersAreTrue()
    {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
        if (program.isEmpty())
            QSKIP("pdftotext is not installed");
        QProcess process;
        process.start(program, {QStringLiteral("-layout"), manualFile(), QStringLiteral("-")});
        QVERIFY(process.waitForFinished(60000));
        const QStringList pages = QString::fromUtf8(process.readAllStandardOutput()).split(QChar('\f'));
        const outline::File file = outline::read(m_bytes);
        QCOMPARE(pages.size() - 1, file.pageCount);
        QString contents;
        for (const QString &page : pages.mid(1, file.entries.first().page - 1))
            contents += page.simplified() + ' ';
        for (const outline::Entry &entry : file.entries) {
            const QString number = QString::number(entry.page + 1);
            QVERIFY2(contents.contains(entry.title + ' ' + number + ' '), qPrintable(entry.title));
            const QString page = pages.at(entry.page).simplified();
            QVERIFY2(page.contains(entry.title), qPrintable(entry.title));
            QVERIFY2(page.endsWith(' ' + number), qPrintable(number)); // its footer
        }
    }

private:
    static QString manualFile() { return QStringLiteral(LORVA_BINARY_DIR "/share/lorva/doc/LORVA_doc.pdf"); }

    QByteArray m_bytes;
    QVector<ManualChapter> m_chapters;
};

QTEST_GUILESS_MAIN(tst_builtmanual)
#include "tst_builtmanual.moc"
