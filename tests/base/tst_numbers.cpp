#include "base/numbers.h"
#include "support/commalocale.h"
#include "support/testmain.h"

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// NaN stands for "no number".
struct Parsed
{
    const char *text;
    double number;
};

constexpr Parsed parsed[] = {
    {"1.5", 1.5},
    {"+1", 1},
    {"-1", -1},
    {" 1 ", 1},
    {"\t\r\n1\v\f", 1},
    {"1e3", 1000},
    {"1E+3", 1000},
    {"-1.5e-3", -0.0015},
    {".5", 0.5},
    {"5.", 5},
    {"+.5", 0.5},
    {"007", 7},
    {"-999.25", -999.25},
    {"4.9406564584124654e-324", 4.9406564584124654e-324},
    {"1.7976931348623157e308", 1.7976931348623157e308},
    {"0.1", 0.1},
    {"", nan},
    {" ", nan},
    {"+", nan},
    {"-", nan},
    {".", nan},
    {"e5", nan},
    {"+-1", nan},
    {"++1", nan},
    {"- 1", nan},
    {"+ 1", nan},
    {"1e400", nan},
    {"-1e400", nan},
    {"nan", nan},
    {"NaN", nan},
    {"nan(1)", nan},
    {"inf", nan},
    {"-inf", nan},
    {"+inf", nan},
    {"infinity", nan},
    {"1,5", nan},
    {"1.5abc", nan},
    {"1.5 2", nan},
    {"-999.25-999.25", nan},
    {"1.5e", nan},
    {"1.5e+", nan},
    {"0x10", nan},
    {"1'000", nan},
    {"1_000", nan},
};

std::vector<double> manyNumbers()
{
    std::vector<double> numbers{0.0,
                                -0.0,
                                1,
                                -1,
                                0.1,
                                1.0 / 3,
                                1e-5,
                                9.99999e-5,
                                1e-4,
                                0.00012345678,
                                999999,
                                999999.4,
                                999999.5,
                                999999.6,
                                1000000,
                                1234567,
                                123456.5,
                                12345.65,
                                1e15,
                                1e16,
                                1e21,
                                1e22,
                                -999.25,
                                1e30,
                                5e-324,
                                1.7976931348623157e308,
                                0.5,
                                1.5,
                                2.5,
                                100000,
                                100,
                                2310.15,
                                static_cast<double>(1e30f),
                                3.28084,
                                0.3048};
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-320, 308);
    for (int i = 0; i < 6000; ++i) {
        const double number = mantissa(random) * std::pow(10.0, i % 2 ? exponent(random) : exponent(random) % 9);
        if (std::isfinite(number))
            numbers.push_back(number);
    }
    return numbers;
}

QByteArray printed(const char *format, int digits, double value)
{
    char buffer[2000];
    const int size = std::snprintf(buffer, sizeof buffer, format, digits, value);
    return QByteArray(buffer, size);
}

struct Expected
{
    double value;
    int digits;
    QByteArray general;
    QByteArray fixed;
};

// What printf gives in the "C" locale, to be compared under another one.
std::vector<Expected> printedNumbers()
{
    std::vector<Expected> expected;
    for (const double value : manyNumbers())
        for (const int digits : {6, 2, 17})
            expected.push_back({value, digits, printed("%.*g", digits, value), printed("%.*f", digits, value)});
    return expected;
}

void compareParsing()
{
    for (const Parsed &row : parsed) {
        const QByteArray text(row.text);
        const std::optional<double> number = base::parseNumber(text);
        QVERIFY2(number.has_value() != std::isnan(row.number), row.text);
        QVERIFY2(!number || *number == row.number, row.text);
        QCOMPARE(base::parseNumber(QString::fromLatin1(text)), number);
        const QByteArray longer = text + "9";
        QCOMPARE(base::parseNumber(longer.constData(), longer.constData() + text.size()), number);
    }
}

void compareFormatting(const std::vector<Expected> &expected)
{
    for (const Expected &row : expected) {
        QCOMPARE(base::formatGeneral(row.value, row.digits), row.general);
        QCOMPARE(base::formatFixed(row.value, row.digits), row.fixed);
    }
}

void compareShortest()
{
    for (const double value : manyNumbers()) {
        const QByteArray text = base::formatShortest(value);
        QVERIFY2(base::parseNumber(text) == std::optional<double>(value), text.constData()); // QCOMPARE is fuzzy
        QVERIFY(!text.contains(','));
        const auto narrow = static_cast<float>(value);
        const QByteArray plain = base::formatPlain(value);
        QVERIFY2(base::parseNumber(plain) == std::optional<double>(value) && !plain.contains('e'), plain.constData());
        if (std::isfinite(narrow))
            QVERIFY(static_cast<float>(base::parseNumber(base::formatShortest(narrow)).value_or(0)) == narrow);
    }
}

} // namespace

class TestNumbers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void parsesWholeTextsOnly();
    void parsesUnicodeTextAsNoNumber();
    void parsesIntegers();
    void formatsAsPrintfDoes();
    void formatsKnownNumbers();
    void formatsWithManyDigits();
    void formatsTheShortestTextThatReadsBack();
    void doesTheSameUnderADecimalComma();

private:
    std::vector<Expected> m_expected;
};

void TestNumbers::initTestCase()
{
    const QByteArray before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    m_expected = printedNumbers();
    std::setlocale(LC_ALL, before.constData());
}

void TestNumbers::parsesWholeTextsOnly()
{
    compareParsing();
}

void TestNumbers::parsesUnicodeTextAsNoNumber()
{
    QVERIFY(!base::parseNumber(QString::fromUtf8("١٢٣")));
    QVERIFY(!base::parseNumber(QString::fromUtf8("1\xC2\xA0")));
    QVERIFY(!base::parseNumber(QString::fromUtf8("−1")));
    QVERIFY(!base::parseNumber(QByteArray("1\0", 2)));
}

void TestNumbers::parsesIntegers()
{
    QCOMPARE(base::parseInteger("12"), std::optional<int>(12));
    QCOMPARE(base::parseInteger(" +12\r"), std::optional<int>(12));
    QCOMPARE(base::parseInteger("-2147483648"), std::optional<int>(std::numeric_limits<int>::min()));
    for (const char *text :
         {"", "+", "-", "1.5", "1e3", "2147483648", "99999999999999999999", "12x", "0x1", "+-1", "1 2"})
        QVERIFY2(!base::parseInteger(text), text);
}

void TestNumbers::formatsAsPrintfDoes()
{
    compareFormatting(m_expected);
}

void TestNumbers::formatsKnownNumbers()
{
    QCOMPARE(base::formatGeneral(999999.5), QByteArray("1e+06"));
    QCOMPARE(base::formatGeneral(999999.4), QByteArray("999999"));
    QCOMPARE(base::formatGeneral(1e-5), QByteArray("1e-05"));
    QCOMPARE(base::formatGeneral(0.0001), QByteArray("0.0001"));
    QCOMPARE(base::formatGeneral(1234567), QByteArray("1.23457e+06"));
    QCOMPARE(base::formatGeneral(-0.0), QByteArray("-0"));
    QCOMPARE(base::formatGeneral(2310.15), QByteArray("2310.15"));
    QCOMPARE(base::formatFixed(2.345, 2), QByteArray("2.35"));
    QCOMPARE(base::formatFixed(-0.001, 2), QByteArray("-0.00"));
    QCOMPARE(base::formatShortest(0.1), QByteArray("0.1"));
    QCOMPARE(base::formatShortest(0.1f), QByteArray("0.1"));
    QCOMPARE(base::formatShortest(1e30f), QByteArray("1e+30"));
    QCOMPARE(base::formatShortest(6e6), QByteArray("6e+06"));
    QCOMPARE(base::formatPlain(6e6), QByteArray("6000000"));
    QCOMPARE(base::formatPlain(6e6f), QByteArray("6000000"));
    QCOMPARE(base::formatPlain(504000.25), QByteArray("504000.25"));
    QCOMPARE(base::formatPlain(-1e-7), QByteArray("-0.0000001"));
    QCOMPARE(base::formatPlain(400.1f), QByteArray("400.1"));
    QCOMPARE(base::formatWritten(6e6), QByteArray("6000000"));
    QCOMPARE(base::formatWritten(-5e5f), QByteArray("-500000"));
    QCOMPARE(base::formatWritten(400.1f), QByteArray("400.1"));
    QCOMPARE(base::formatWritten(0.0), QByteArray("0"));
    QCOMPARE(base::formatWritten(1e-6), QByteArray("0.000001"));
    QCOMPARE(base::formatWritten(9e-7), QByteArray("9e-07"));
    QCOMPARE(base::formatWritten(9e11), QByteArray("900000000000"));
    QCOMPARE(base::formatWritten(-1e12), QByteArray("-1e+12"));
    QCOMPARE(base::formatWritten(1e30f), QByteArray("1e+30"));
}

void TestNumbers::formatsWithManyDigits()
{
    for (const double value : {1e308, -1e308, 0.1, 5e-324}) {
        QCOMPARE(base::formatFixed(value, 400), printed("%.*f", 400, value).replace(',', '.'));
        QCOMPARE(base::formatGeneral(value, 400), printed("%.*g", 400, value).replace(',', '.'));
        QCOMPARE(base::formatFixed(value, 0), printed("%.*f", 0, value));
    }
}

void TestNumbers::formatsTheShortestTextThatReadsBack()
{
    compareShortest();
}

void TestNumbers::doesTheSameUnderADecimalComma()
{
    testing_support::CommaLocale german;
    if (!german.isInForce())
        QSKIP("no locale with a decimal comma could be made here");
    compareParsing();
    compareFormatting(m_expected);
    compareShortest();
}

LORVA_TEST_MAIN(TestNumbers)
#include "tst_numbers.moc"
