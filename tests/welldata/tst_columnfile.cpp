// The reader of column files: bytes in, fields or the first problem out.

#include "support/badbytes.h"
#include "support/testmain.h"
#include "welldata/columnfile.h"
#include "welldata/tablerow.h"

using namespace welldata;

namespace {

QVector<QStringList> rowsOf(const ColumnFile &file)
{
    QVector<QStringList> rows;
    for (int row = 0; row < file.rowCount(); ++row) {
        QStringList fields;
        for (int column = 0; column < file.columns; ++column)
            fields.append(textfields::toString(file.field(row, column)));
        rows.append(fields);
    }
    return rows;
}

ColumnFile read(const QByteArray &bytes, int headerLines = 0, const std::vector<int> &columns = {1, 2},
                int fieldsAtLeast = 2)
{
    return readColumns(bytes, {headerLines, columns, fieldsAtLeast});
}

const QVector<QStringList> twoRows{{"A", "1"}, {"B", "2"}};

} // namespace

class tst_columnfile : public QObject
{
    Q_OBJECT

private slots:
    void readsTheWantedColumns_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("LF") << QByteArray("A\t1\nB\t2\n");
        QTest::newRow("CRLF") << QByteArray("A\t1\r\nB\t2\r\n");
        QTest::newRow("CR") << QByteArray("A\t1\rB\t2\r");
        QTest::newRow("no final line end") << QByteArray("A\t1\nB\t2");
        QTest::newRow("BOM") << QByteArray("\xEF\xBB\xBF"
                                           "A\t1\nB\t2\n");
        QTest::newRow("blanks and trailing tabs") << QByteArray("  A \t 1 \t\t\nB\t2\t\n");
        QTest::newRow("empty fields are dropped") << QByteArray("A\t\t1\n\tB\t2\n");
        QTest::newRow("surplus columns") << QByteArray("A\t1\tx\ty\nB\t2\n");
    }
    void readsTheWantedColumns()
    {
        QFETCH(QByteArray, bytes);
        const ColumnFile file = read(bytes);
        QVERIFY2(file.ok(), qPrintable(file.problem));
        QCOMPARE(rowsOf(file), twoRows);
        QCOMPARE(file.problemLine, 0);
    }

    void columnsComeInTheWantedOrder()
    {
        QCOMPARE(rowsOf(read("1\tx\tA\n2\ty\tB\n", 0, {3, 1})), twoRows);
        QCOMPARE(rowsOf(read("A\t1\n", 0, {2, 2})), QVector<QStringList>({{"1", "1"}}));
        QCOMPARE(rowsOf(read("A\t1\t2\tOil\n", 0, {1, 2, 3, 4}, 4)), QVector<QStringList>({{"A", "1", "2", "Oil"}}));
    }

    void headerLinesArePassedOver()
    {
        QCOMPARE(rowsOf(read("title\n\nA\t1\nB\t2\n", 2)), twoRows);
        QCOMPARE(rowsOf(read("A\t1\nB\t2\n", -3)), twoRows);
        QCOMPARE(read("A\t1\nB\t2\n", 2).rowCount(), 0);
        QVERIFY(read("A\t1\nB\t2\n", 99).ok());
        QCOMPARE(read("A\t1\nB\t2\n", 99).rowCount(), 0);
    }

    void theFirstProblemIsNamedWithItsLine_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("headerLines");
        QTest::addColumn<int>("line");
        QTest::newRow("a blank line in the middle") << QByteArray("A\t1\n\nB\t2\n") << 0 << 2;
        QTest::newRow("blanks only") << QByteArray("A\t1\n \t \nB\t2\n") << 0 << 2;
        QTest::newRow("a blank line at the end") << QByteArray("A\t1\n\n") << 0 << 2;
        QTest::newRow("one field") << QByteArray("h\nA\t1\nB\n") << 1 << 3;
        QTest::newRow("commas") << QByteArray("A,1\n") << 0 << 1;
        QTest::newRow("a field that is empty") << QByteArray("A\t1\nB\t\t\n") << 0 << 2;
        QTest::newRow("the header itself") << QByteArray("h\nA\t1\n") << 0 << 1;
    }
    void theFirstProblemIsNamedWithItsLine()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, headerLines);
        QFETCH(int, line);
        const ColumnFile file = read(bytes, headerLines);
        QVERIFY(!file.ok());
        QCOMPARE(file.problemLine, line);
        QVERIFY2(file.problem.startsWith(QString("Line %1 has ").arg(line)), qPrintable(file.problem));
        QCOMPARE(file.rowCount(), 0);
    }

    void badColumnNumbersAreProblems()
    {
        QCOMPARE(read("A\t1\n", 0, {0, 2}).problem, QString("Column numbers begin with 1."));
        QCOMPARE(read("A\t1\n", 0, {1, -1}).problem, QString("Column numbers begin with 1."));
        QCOMPARE(read("A\t1\n", 0, {1, 3}).problem, QString("Line 1 has 2 columns between tabs; 3 are needed."));
        QCOMPARE(read("A\t1\n", 0, {1, 2147483647}).problemLine, 1);
        QCOMPARE(read("A\t1\tx\n", 0, {1, 2}, 4).problem,
                 QString("Line 1 has 3 columns between tabs; 4 are needed."));
    }

    void textIsDecoded()
    {
        QCOMPARE(rowsOf(read("Kvit\xC3\xB8y\t1\n")).at(0).at(0), QString::fromUtf8("Kvit\xC3\xB8y"));
        QCOMPARE(rowsOf(read("Kvit\xF8y\t1\n")).at(0).at(0), QString::fromUtf8("Kvit\xC3\xB8y")); // Windows-1252
        QCOMPARE(rowsOf(read(QByteArray("\xFF\xFE"
                                        "A\0\t\0"
                                        "1\0\n\0",
                                        10)))
                     .at(0),
                 QStringList({"A", "1"}));
    }

    void survivesAnything()
    {
        QCOMPARE(read({}).rowCount(), 0);
        QVERIFY(read({}).ok());
        QVERIFY(!read(badbytes::binary(100000)).ok());
        const QByteArray longName(10000, 'n');
        QCOMPARE(rowsOf(read(longName + "\t1\n")).at(0).at(0), QString::fromLatin1(longName));
        QVERIFY(!read(QByteArray(1 << 20, '\t')).ok());
    }

    void fieldsOfALine()
    {
        const QByteArray line(" A\t\tB C \t1\t");
        const auto fields = fieldsOfLine({line.constData(), static_cast<size_t>(line.size())});
        QCOMPARE(fields.size(), size_t(3));
        QCOMPARE(textfields::toString(fields.at(1)), QString("B C "));
    }

    // Number cells: what a file or a user gives.
    void numbersAreReadAndKept_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isNumber");
        QTest::addColumn<double>("value");
        QTest::newRow("plain") << "1234.5" << true << 1234.5;
        QTest::newRow("sign") << "+7" << true << 7.0;
        QTest::newRow("exponent") << "1e3" << true << 1000.0;
        QTest::newRow("empty") << "" << false << 0.0;
        QTest::newRow("text") << "abc" << false << 0.0;
        QTest::newRow("nan") << "nan" << false << 0.0;
        QTest::newRow("inf") << "inf" << false << 0.0;
        QTest::newRow("too large for a double") << "1e400" << false << 0.0;
        QTest::newRow("too large for a float") << "1e39" << false << 0.0;
        QTest::newRow("groups") << "1,234.5" << false << 0.0;
    }
    void numbersAreReadAndKept()
    {
        QFETCH(QString, text);
        QFETCH(bool, isNumber);
        QFETCH(double, value);
        NumberCell typed;
        typed.setText("5");
        typed.setText(text);
        QCOMPARE(typed.isNumber(), isNumber);
        QCOMPARE(typed.value(), value);
        QCOMPARE(typed.text(), text);
        const QByteArray bytes = text.toUtf8();
        const NumberCell read = NumberCell::read({bytes.constData(), static_cast<size_t>(bytes.size())});
        QCOMPARE(read.isNumber(), isNumber);
        QCOMPARE(read.value(), value);
        if (!isNumber)
            QCOMPARE(read.text(), text);
    }
    void aDecimalCommaCountsWhereItIsTypedAndNotInAFile()
    {
        NumberCell typed;
        typed.setText("25,5");
        QCOMPARE(typed.value(), 25.5);
        QCOMPARE(typed.text(), QString("25,5"));
        QVERIFY(!NumberCell::read({"25,5", 4}).isNumber());
    }
    void aReadNumberKeepsAllItsDigitsUntilAnotherTextIsTyped()
    {
        NumberCell cell = NumberCell::of(1234.5678);
        QCOMPARE(cell.text(), QString("1234.57"));
        cell.setText("1234.57");
        QCOMPARE(cell.value(), 1234.5678);
        cell.setText("1234.5");
        cell.setText("1234.57");
        QCOMPARE(cell.value(), 1234.57);
        QCOMPARE(NumberCell::of(1234567).text(), QString("1.23457e+06"));
        QCOMPARE(NumberCell::of(double(1234.5678f), NumberCell::Digits::Shortest).text(), QString("1234.5677"));
    }
};

LORVA_TEST_MAIN(tst_columnfile)
#include "tst_columnfile.moc"
