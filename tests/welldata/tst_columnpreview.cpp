// The preview of an import: the file's text in slices, the column numbers above it, the chosen columns.

#include "support/grabbed.h"
#include "support/testmain.h"
#include "welldata/columnfiletext.h"
#include "welldata/columnpreview.h"

#include <QLabel>
#include <QScrollBar>

namespace {

QByteArray lines(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += "Marker " + QByteArray::number(i) + '\t' + QByteArray::number(i) + ".5\n";
    return bytes;
}

} // namespace

class tst_columnpreview : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_preview = std::make_unique<ColumnPreview>();
        m_preview->resize(500, 300);
        m_preview->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_preview.get()));
    }
    void cleanup() { m_preview.reset(); }

    void showsTheTextAndNothingElse_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QByteArray() << "";
        QTest::newRow("LF") << QByteArray("a\tb\n\nc\n") << "a\tb\n\nc\n";
        QTest::newRow("CRLF") << QByteArray("a\r\nb") << "a\nb";
        QTest::newRow("CR") << QByteArray("a\rb\r") << "a\nb\n";
        QTest::newRow("UTF-8") << QByteArray("\xC3\xB8") << QString::fromUtf8("\xC3\xB8");
        QTest::newRow("Windows-1252") << QByteArray("\xF8") << QString::fromUtf8("\xC3\xB8");
    }
    void showsTheTextAndNothingElse()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        m_preview->setBytes("before\n");
        m_preview->setBytes(bytes);
        QCOMPARE(view()->toPlainText(), text);
        QVERIFY(!note()->isVisible());
    }

    void aLongFileComesInSlices()
    {
        m_preview->setBytes(lines(25000));
        QCOMPARE(view()->shownLines(), 10000);
        QCOMPARE(view()->lineCount(), 25000);
        QCOMPARE(view()->document()->blockCount(), 10001);
        QVERIFY(note()->isVisible());
        QVERIFY(note()->text().startsWith("The first 10000 of 25000 lines are shown"));
        QScrollBar *bar = view()->verticalScrollBar();
        bar->setValue(bar->maximum() / 2);
        QCOMPARE(view()->shownLines(), 10000);
        bar->setValue(bar->maximum());
        QCOMPARE(view()->shownLines(), 20000);
        bar->setValue(bar->maximum());
        QVERIFY(view()->isWhole());
        QVERIFY(!note()->isVisible());
        QCOMPARE(view()->toPlainText(), QString::fromLatin1(lines(25000)));
    }
    void exactlyTenThousandLinesAreWhole()
    {
        m_preview->setBytes(lines(10000));
        QVERIFY(view()->isWhole());
        QVERIFY(!note()->isVisible());
    }
    void oneEndlessLineDoesNotHang()
    {
        m_preview->setBytes(QByteArray(20 << 20, 'x'));
        QVERIFY(view()->toPlainText().size() <= 100000);
    }

    void columnsAreNumberedAndTheChosenOnesNamed()
    {
        m_preview->setBytes("h e a d\nA\t\t12\tOil\n");
        m_preview->setChoice(1, {3, 1}, {"Depth", "Name"});
        QCOMPARE(m_preview->rulerTexts(), QStringList({"1 Name", "2", "3 Depth"}));
        const QVector<ColumnFileText::Column> columns = view()->columnsInView();
        QVERIFY(columns.at(0).left < columns.at(1).left && columns.at(1).left < columns.at(2).left);
        m_preview->setChoice(0, {1, 1}, {"Name", "Depth"});
        QCOMPARE(m_preview->rulerTexts(), QStringList({"1 Name Depth"}));
        m_preview->setChoice(0, {0, -1}, {"Name", "Depth"});
        QCOMPARE(m_preview->rulerTexts(), QStringList({"1"}));
    }
    void fieldsOfUnlikeLengthStandBelowEachOther()
    {
        m_preview->setBytes("A\t1\nA much longer name than that\t2\nB\t3\n");
        m_preview->setChoice(0, {2}, {"Depth"});
        QVector<int> lefts;
        for (int headings : {0, 1, 2}) {
            m_preview->setChoice(headings, {2}, {"Depth"});
            lefts.append(view()->columnsInView().at(1).left);
        }
        QCOMPARE(lefts, QVector<int>(3, lefts.first()));
    }
    void theNumbersStandOverTheirColumns()
    {
        m_preview->setBytes("A\tB\tC\n");
        m_preview->setChoice(0, {2}, {"Depth"});
        const QWidget *ruler = m_preview->findChild<QWidget *>("columnRuler");
        const QImage image = grabbed(m_preview.get(), ruler->geometry());
        const QRgb chosen = m_preview->palette().color(QPalette::Highlight).rgb();
        const int left = view()->columnsInView().at(1).left + view()->viewport()->mapTo(m_preview.get(), QPoint()).x()
            - ruler->x();
        QCOMPARE(image.pixel(left + 1, image.height() / 2), chosen);
        QVERIFY(image.pixel(left - 3, image.height() / 2) != chosen);
    }
    void whatStandsOverANarrowColumnIsWhole()
    {
        const QStringList labels{"Name", "Start Depth", "End Depth"};
        m_preview->setBytes("A\t1\t2\t3\n");
        m_preview->setChoice(0, {1, 2, 3}, labels);
        const auto isWhole = [this] {
            const QStringList texts = m_preview->rulerTexts();
            const auto columns = view()->columnsInView();
            for (int i = 0; i + 1 < columns.size(); ++i)
                if (columns.at(i + 1).left - columns.at(i).left
                    < m_preview->fontMetrics().horizontalAdvance(texts.at(i)) + 8)
                    return false;
            return true;
        };
        QVERIFY(isWhole());
        m_preview->setBytes("A\t1\t2\t3\n"); // another file
        QVERIFY(isWhole());
    }
    void marksFollowThePalette()
    {
        m_preview->setBytes("A\t1\n");
        m_preview->setChoice(0, {1}, {"Name"});
        QVERIFY(view()->extraSelections().first().format.background().color().lightness() > 150);
        QPalette dark(QColor(53, 53, 53));
        dark.setColor(QPalette::Base, QColor(35, 35, 35));
        view()->setPalette(dark);
        QVERIFY(view()->extraSelections().first().format.background().color().lightness() < 100);
    }
    void theChosenFieldsAreMarkedInView()
    {
        m_preview->setBytes("head\tline\n" + lines(500));
        m_preview->setChoice(1, {2}, {"Depth"});
        QStringList marked;
        for (const QTextEdit::ExtraSelection &selection : view()->extraSelections())
            marked.append(selection.cursor.selectedText());
        QCOMPARE(marked.mid(0, 3), QStringList({"head\tline", "0.5", "1.5"}));
        QVERIFY(marked.size() < 100); // and no more than is in view
        view()->verticalScrollBar()->setValue(100);
        QCOMPARE(view()->extraSelections().first().cursor.selectedText(), QString("99.5"));
    }

private:
    ColumnFileText *view() const { return m_preview->text(); }
    QLabel *note() const { return m_preview->findChild<QLabel *>("previewNote"); }

    std::unique_ptr<ColumnPreview> m_preview;
};

LORVA_TEST_MAIN(tst_columnpreview)
#include "tst_columnpreview.moc"
