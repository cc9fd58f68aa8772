// The manual: its pages, their links and pictures, and the PDF that is made of them.

#include "programrun.h"
#include "programs/manualdocument.h"
#include "programs/manualpages.h"
#include "support/files.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QDir>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QTextTable>

using programs::ManualChapter;
using programs::ManualDocument;
using programs::ManualHeading;

namespace {

const QString pages = QStringLiteral(LORVA_SOURCE_DIR "/docs/manual");
const QString pictures = QStringLiteral(LORVA_SOURCE_DIR "/docs/images");

/// One chapter on small pages: 60 by 40 mm at 1200 dots an inch.
struct Page
{
    explicit Page(const QString &text)
        : writer(&buffer)
    {
        writer.setResolution(1200);
        document = std::make_unique<ManualDocument>(ManualChapter{"x.md", "X", text}, pictures, &writer, size);
    }
    int pageOf(const QString &text) const
    {
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
            if (block.text() == text)
                return int(topOf(block) / size.height());
        return -1;
    }
    int pageOfLine(const QTextBlock &block, int line) const
    {
        const QTextLayout *lines = block.layout();
        return int((document->documentLayout()->blockBoundingRect(block).top() + lines->lineAt(line).y())
                   / size.height());
    }
    QSet<int> pagesOf(const QTextBlock &block) const
    {
        QSet<int> found;
        for (int line = 0; line < block.layout()->lineCount(); ++line)
            found.insert(pageOfLine(block, line));
        return found;
    }
    // Of its first line.
    double topOf(const QTextBlock &block) const
    {
        const QTextLayout *lines = block.layout();
        return document->documentLayout()->blockBoundingRect(block).top() + lines->lineAt(0).y();
    }
    const QSizeF size{2834, 1890};
    QBuffer buffer;
    QPdfWriter writer;
    std::unique_ptr<ManualDocument> document;
};

int pageCount(const QByteArray &pdf)
{
    return pdf.count("/Type /Page\n");
}

} // namespace

class tst_manual : public QObject
{
    Q_OBJECT

private slots:
    void chaptersStandInTheOrderOfTheFirstPage()
    {
        files::write(file("m/README.md"), "# M\n\n- [B](b.md): b\n- [A](a.md#place)\n- [D](d.md)\n- [B](b.md)\n");
        files::write(file("m/a.md"),
                     "# Alpha\n\nSee [the second](b.md), [it](a.md#p) and [web](https://x.org/a.md).\n");
        files::write(file("m/b.md"), "# Beta\n\n![A picture](../images/p.png) and ![](q.png)\n[gone](none.md)\n");
        files::write(file("m/c.md"), "# Gamma\n");
        const QVector<ManualChapter> chapters = programs::readManual(file("m"));
        QCOMPARE(chapters.size(), 3);
        QCOMPARE(chapters.at(0).title, QString("Beta"));
        QCOMPARE(chapters.at(1).file, QString("a.md"));
        QCOMPARE(chapters.at(2).text, QString("# 3  Gamma\n")); // nobody links it
        QCOMPARE(
            chapters.at(1).text,
            QString("# 2  Alpha\n\nSee the second (chapter 1), it (chapter 2) and [web](https://x.org/a.md).\n"));
        QVERIFY(chapters.at(0).text.endsWith("\ngone\n"));
        QCOMPARE(programs::picturesOf(chapters.at(0)), QStringList({"p.png", "q.png"}));
        QVERIFY(programs::readManual(file("none")).isEmpty());
    }

    // What the workbench shows under F1 leads to every page.
    void everyPageIsLinkedAndEveryPictureIsThere()
    {
        const QString first = QString::fromUtf8(files::read(pages + "/README.md"));
        const QVector<ManualChapter> chapters = programs::readManual(pages);
        QVERIFY(chapters.size() > 10);
        for (const ManualChapter &chapter : chapters) {
            QVERIFY2(first.contains("](" + chapter.file + ')'), qPrintable(chapter.file));
            for (const QString &picture : programs::picturesOf(chapter))
                QVERIFY2(QFileInfo::exists(pictures + '/' + picture), qPrintable(picture));
            // A link to a page that is not there has no chapter.
            QVERIFY2(!chapter.text.contains(".md)"), qPrintable(chapter.file));
        }
    }

    void aHeadingStandsWithItsText()
    {
        QString text = "# 1  X\n";
        for (int lines = 0; lines < 12; ++lines) { // the heading wanders over the end of the page
            const Page page(text + "\n## Heading\n\nIts text\n");
            QVERIFY(page.pageOf("Heading") >= 0);
            QCOMPARE(page.pageOf("Heading"), page.pageOf("Its text"));
            const Page list(text + "\n## Heading\n\n- Its text\n");
            QCOMPARE(list.pageOf("Heading"), list.pageOf("Its text"));
            text += "\nline\n";
        }
        const Page last(text + "\n## Heading\n\nIts text\n");
        QVERIFY(last.document->pageCount() > 1);
        const QVector<ManualHeading> headings = last.document->headings();
        QCOMPARE(headings.size(), 2);
        QCOMPARE(headings.at(0).text, QString("1  X"));
        QCOMPARE(headings.at(1).level, 2);
        QCOMPARE(headings.at(1).page, last.pageOf("Heading") + 1);
    }

    void aTableStandsOnOnePageWithWhatAnnouncesIt()
    {
        const QString table = "| a | b |\n|---|---|\n| cell one | x |\n| cell two | y |\n";
        QString text = "# 1  X\n";
        for (int lines = 0; lines < 12; ++lines) { // it wanders over the end of the page
            const Page headed(text + "\n## Heading\n\n" + table);
            QCOMPARE(headed.pageOf("Heading"), headed.pageOf("cell one"));
            QCOMPARE(headed.pageOf("cell one"), headed.pageOf("cell two"));
            const Page announced(text + "\nThe fields:\n\n" + table);
            QCOMPARE(announced.pageOf("The fields:"), announced.pageOf("cell two"));
            const Page both(text + "\n## Heading\n\nFields:\n\n| a |\n|---|\n| cell two |\n");
            QCOMPARE(both.pageOf("Heading"), both.pageOf("cell two"));
            const Page alone(text + '\n' + table + "\nEnd\n");
            QCOMPARE(alone.pageOf("a"), alone.pageOf("cell two"));
            text += "\nline\n";
        }
    }

    // A heading that goes to the next page moves what stands behind it.
    void tablesBehindWhatMovesStandOnOnePageToo()
    {
        for (int before = 3; before < 9; ++before) {
            for (int between = 0; between < 8; ++between) {
                const Page page("# 1  X\n" + QStringLiteral("\nline\n").repeated(before)
                                + "\n## Heading\n\nIts text\n" + QStringLiteral("\nline\n").repeated(between)
                                + "\n| a | b |\n|---|---|\n| one | x |\n| two | y |\n");
                QCOMPARE(page.pageOf("Heading"), page.pageOf("Its text"));
                QCOMPARE(page.pageOf("one"), page.pageOf("two"));
            }
        }
    }

    // Each row of a table that no page holds is read at one glance.
    void rowsOfALargeTableStandOnOnePage()
    {
        QString text = "# 1  X\n\n| a | b |\n|---|---|\n";
        for (int row = 0; row < 20; ++row)
            text += "| r | a text that needs several lines in its column, on pages as small as these are here |\n";
        for (int lines = 0; lines < 4; ++lines) {
            const Page page(text);
            QVERIFY(page.document->pageCount() > 3);
            for (QTextBlock block = page.document->begin(); block.isValid(); block = block.next())
                if (block.text().startsWith("a text"))
                    QCOMPARE(page.pagesOf(block).size(), 1);
            text.replace("# 1  X\n", "# 1  X\n\nline\n");
        }
    }

    // It would leave most of a page white; its heading stays with its first rows.
    void aLargeTableBeginsWhereItStands()
    {
        QString table = "| a | b |\n|---|---|\n";
        for (int row = 1; row <= 7; ++row)
            table += QStringLiteral("| r%1 | x |\n").arg(row);
        const Page page("# 1  X\n\nline\n\n" + table);
        QCOMPARE(page.pageOf("r1"), 0);
        QCOMPARE(page.pageOf("r7"), 1);
        const Page most("# 1  X\n\nline\n\n" + table.left(table.indexOf("| r5"))); // a page could hold it
        QCOMPARE(most.pageOf("r1"), 0);
        QCOMPARE(most.pageOf("r4"), 1);
        QString text = "# 1  X\n";
        for (int lines = 0; lines < 12; ++lines) {
            const Page headed(text + "\n## Heading\n\n" + table);
            QCOMPARE(headed.pageOf("Heading"), headed.pageOf("a"));
            QCOMPARE(headed.pageOf("Heading"), headed.pageOf("r1"));
            text += "\nline\n";
        }
    }

    void noFirstOrLastLineStandsAlone()
    {
        QString text = "# 1  X\n";
        for (int lines = 0; lines < 12; ++lines) {
            const Page page(text
                            + "\nA paragraph of some lines on a small page, since it says more than one of them can "
                              "hold, and so it has a last one.\n");
            const QTextBlock last = page.document->lastBlock();
            QVERIFY(last.layout()->lineCount() > 2);
            const QTextLayout *layout = last.layout();
            const int end = layout->lineCount() - 1;
            QCOMPARE(page.pageOfLine(last, end), page.pageOfLine(last, end - 1));
            QCOMPARE(page.pageOfLine(last, 0), page.pageOfLine(last, 1));
            text += "\nline\n";
        }
    }

    void realPagesAreTidy()
    {
        QBuffer buffer;
        QPdfWriter writer(&buffer);
        writer.setResolution(1200);
        const QSizeF size(7842, 11470); // within the margins of A4
        int tables = 0;
        for (const ManualChapter &chapter : programs::readManual(pages)) {
            const ManualDocument document(chapter, pictures, &writer, size);
            const auto pageAt = [&size](double y) { return int(y / size.height()); };
            const int pageCount = document.pageCount();
            const double end = document.documentLayout()->blockBoundingRect(document.lastBlock()).bottom();
            QVERIFY2(pageAt(end - 1) == pageCount - 1, qPrintable(chapter.file));
            const auto firstLine = [&](const QTextBlock &block) {
                const double top = document.documentLayout()->blockBoundingRect(block).top(); // lays it out
                return block.layout()->lineCount() > 0 ? top + block.layout()->lineAt(0).y() : top;
            };
            for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
                if (block.blockFormat().headingLevel() > 0 && block.next().isValid())
                    QVERIFY2(pageAt(firstLine(block)) == pageAt(firstLine(block.next())), qPrintable(block.text()));
            for (QTextFrame *frame : document.rootFrame()->childFrames()) {
                const QRectF place = document.documentLayout()->frameBoundingRect(frame);
                if (place.height() > size.height() * 0.6)
                    continue;
                ++tables;
                const QString text = chapter.file + ": " + frame->firstCursorPosition().block().text();
                QVERIFY2(pageAt(place.top()) == pageAt(place.bottom()), qPrintable(text));
            }
        }
        QVERIFY(tables > 10);
    }

    void commandsAreNotBroken()
    {
        const QString command = "lorva-batch report --survey Demo and more";
        for (const QString &text : {"# 1  X\n\n    " + command + '\n', "# 1  X\n\n```sh\n" + command + "\n```\n"}) {
            const Page page(text);
            int found = 0;
            for (QTextBlock block = page.document->begin(); block.isValid(); block = block.next())
                if (block.text() == command) {
                    ++found;
                    QCOMPARE(block.layout()->lineCount(), 1);
                    QVERIFY(block.begin().fragment().charFormat().fontPointSize() < 9);
                }
            QCOMPARE(found, 1);
        }
        const Page page("# 1  X\n\n    short\n");
        for (QTextBlock block = page.document->begin(); block.isValid(); block = block.next())
            if (block.text() == QLatin1String("short"))
                QCOMPARE(block.begin().fragment().charFormat().fontPointSize(), 9.0);
    }

    void picturesFitThePage()
    {
        const Page page("# 1  X\n\n![a](../images/correlation-20wells.png)\n\n![b](../images/launcher.png)\n");
        int seen = 0;
        for (QTextBlock block = page.document->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat image = part.fragment().charFormat().toImageFormat();
                if (!image.isValid())
                    continue;
                ++seen;
                QVERIFY(image.width() > 10 && image.width() <= page.size.width() / 1200 * 96);
                QVERIFY(image.height() > 5 && image.height() <= page.size.height() / 1200 * 96 * 0.55);
            }
        }
        QCOMPARE(seen, 2);
    }

    void tablesFillThePage()
    {
        const Page page("# 1  X\n\n| a | b |\n|---|---|\n| 1 | a text that is much longer than the other one |\n");
        const QTextTable *table = nullptr;
        for (QTextFrame *frame : page.document->rootFrame()->childFrames())
            table = qobject_cast<QTextTable *>(frame);
        QVERIFY(table);
        QCOMPARE(table->format().headerRowCount(), 1);
        QCOMPARE(table->format().width().rawValue(), 100.0);
        const QVector<QTextLength> widths = table->format().columnWidthConstraints();
        QVERIFY(widths.at(1).rawValue() > 3 * widths.at(0).rawValue());
        QVERIFY(qAbs(widths.at(0).rawValue() + widths.at(1).rawValue() - 100) < 0.01);
    }

    void commandsStandTogether()
    {
        QString text = "# 1  X\n";
        for (int lines = 0; lines < 12; ++lines) { // they wander over the end of the page
            const Page page(text + "\nDo this:\n\n    one\n    two\n    three\n\nThen that.\n");
            QCOMPARE(page.pageOf("Do this:"), page.pageOf("one"));
            QCOMPARE(page.pageOf("one"), page.pageOf("three"));
            text += "\nline\n";
        }
        const Page page("# 1  X\n\n    one\n    two\n\nafter\n\n## Y\n\n    long " + QString(80, 'g') + "\n\n## Z\n");
        QStringList blocks;
        QVector<double> sizes;
        for (QTextBlock block = page.document->begin(); block.isValid(); block = block.next()) {
            blocks.append(block.text().left(5));
            sizes.append(block.begin().fragment().charFormat().fontPointSize());
        }
        QCOMPARE(blocks, QStringList({"1  X", "one", "two", "after", "Y", "long ", "Z"})); // none is empty
        QCOMPARE(sizes.at(1), 9.0);
        QVERIFY(sizes.at(5) < 8); // only those that need it are small
        QVERIFY(page.document->findBlockByNumber(1).blockFormat().leftMargin() > 100);
        QCOMPARE(page.document->headings().size(), 3);
    }

    void commandsStandInLettersOfOneWidth()
    {
        const Page page("# 1  X\n\nsee `./run --bare` there\n\n    a code line\n");
        QStringList seen;
        for (QTextBlock block = page.document->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part)
                if (part.fragment().charFormat().fontFamily() == "Liberation Mono")
                    seen.append(part.fragment().text());
        QCOMPARE(seen, QStringList({"./run --bare", "a code line"}));
    }

    // A name in angle brackets is no mark of a web page.
    void anglesAreLetters()
    {
        const Page page("# 1  X\n\n- a <well> b\n- c\n");
        QVERIFY(page.document->toPlainText().contains("a <well> b\nc"));
    }

    void theProgramWritesThePdf()
    {
        const QString pdf = file("manual.pdf");
        const ProgramRun run = make(pages, pictures, pdf);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.exitCode, 0);
        const QByteArray bytes = files::read(pdf);
        QVERIFY(bytes.startsWith("%PDF-"));
        QVERIFY(pageCount(bytes) > programs::readManual(pages).size() + 2);
        QVERIFY(!bytes.contains("/Type1") && bytes.contains("/FontFile2")); // fonts lie in it
    }

    void whatIsMissingIsNamed()
    {
        files::write(file("n/README.md"), "# M\n\n- [A](a.md)\n");
        files::write(file("n/a.md"), "# A\n\n![](../images/gone.png)\n");
        const ProgramRun run = make(file("n"), pictures, file("n.pdf"));
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.errors.contains("a.md shows gone.png"), qPrintable(run.errors));
        QVERIFY(!QFileInfo::exists(file("n.pdf")));
        QCOMPARE(make(file("none"), pictures, file("n.pdf")).exitCode, 1);
        files::write(file("n/a.md"), "# A\n");
        QCOMPARE(make(file("n"), pictures, file("n.pdf")).exitCode, 0);
        QCOMPARE(make(file("n"), pictures, file("none/n.pdf")).exitCode, 1);
        QCOMPARE(runProgram(program(), {pages}, m_folder.path()).exitCode, 2);
    }

private:
    QString file(const char *name) const { return m_folder.filePath(QLatin1String(name)); }
    static QString program() { return QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-manual"); }
    ProgramRun make(const QString &from, const QString &with, const QString &to) const
    {
        return runProgram(program(), {from, with, to}, m_folder.path());
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(tst_manual)
#include "tst_manual.moc"
