#include "tests/las/wellinfofixture.h"

#include <QElapsedTimer>
#include <QTextCodec>

#include <functional>
#include <malloc.h>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char sample20[] = "~Version\nVERS. 2.0 : CWLS\nWRAP. NO : one line\n# remark\n~Well\nSTRT.M 1000.5 : START\n"
                        "STOP.M 1001.5 : STOP\nSTEP.M 0.5 : STEP\nNULL. -999.25 : NULL\nUWI. 15/9-F-1 : UWI\n"
                        "~Parameter\nEKB.M 20 : KB\n~Curve\nDEPT.M : 1 DEPTH\nGR.GAPI : 2 gamma\nDT.US/M : 3 sonic\n"
                        "~A DEPT GR DT\n1000.5 10.25 -999.25\n1001.0 20 300\n\n#x\n1001.5 5e1 +310.125 7\n";

const char sampleOdd[] =
    "\xEF\xBB\xBFtext\r\n~V\r\nVERS.  1.20:\r~W\nNULL.9 -9999:\n~O\nfree\n~C\nA.\xC2\xB5 x:y\nB\nC.:\n"
    "~A\n1\n2 3\n4 5 6\n~C\nD.M :\n~A\n7 8 9\xC2\xA0 10\n~";

/// All characters of a literal, NULs too.
template<size_t Size>
QByteArray literalBytes(const char (&text)[Size])
{
    return QByteArray(text, static_cast<int>(Size) - 1);
}

QByteArray repeated(const QByteArray &unit, int count)
{
    QByteArray bytes;
    bytes.reserve(unit.size() * count);
    for (int i = 0; i < count; ++i)
        bytes.append(unit);
    return bytes;
}

} // namespace

/// Cut, damaged and malicious files: the reader ends, in time proportional to the bytes, and agrees with the
/// literal one.
class TestWellInfoHostile : public QObject
{
    Q_OBJECT

private slots:
    void everyPrefix_data() { samples(); }
    void everyPrefix();
    void byteFlips_data() { samples(); }
    void byteFlips();
    void mutatedRealFiles();
    void damagedUtf16();
    void rubbish();
    void validUtf8();
    void headerClaimsMoreThanIsThere();
    void oneLongLine_data();
    void oneLongLine();
    void longHeaderLinesAreCut();
    void memoryOfLargeFiles_data();
    void memoryOfLargeFiles();
    void millionTitles();
    void millionCurves();
    void manyLengths();
    void longSections();
    void endlessFiles();

private:
    void samples();
    /// Loads the bytes and compares with the literal reader.
    QString differs(const QByteArray &bytes) const
    {
        return difference(m_fixture.load(bytes), literal::Reader(bytes, m_fixture.path()));
    }

    LasFixture m_fixture;
};

void TestWellInfoHostile::samples()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("LAS 2.0") << QByteArray(sample20);
    QTest::newRow("odd") << QByteArray(sampleOdd);
}

void TestWellInfoHostile::everyPrefix()
{
    QFETCH(QByteArray, bytes);
    for (int size = 0; size <= bytes.size(); ++size)
        QVERIFY2(differs(bytes.left(size)).isEmpty(), QByteArray::number(size).constData());
}

void TestWellInfoHostile::byteFlips()
{
    QFETCH(QByteArray, bytes);
    std::mt19937 random(20);
    // Bytes that mean something to a reader come up more often than others.
    const QByteArray special = literalBytes("~~#.:  \t\r\n\0\x1A+-0eE\x80\xC2\xA0\xFF");
    for (int run = 0; run < 2500; ++run) {
        QByteArray damaged = bytes;
        const int at = static_cast<int>(random() % static_cast<unsigned>(bytes.size()));
        const bool isSpecial = random() % 2 == 0;
        damaged[at] = isSpecial ? special.at(static_cast<int>(random() % static_cast<unsigned>(special.size())))
                                : static_cast<char>(random() % 256);
        const QString problem = differs(damaged);
        QVERIFY2(problem.isEmpty(), qPrintable(QStringLiteral("run %1: %2").arg(run).arg(problem)));
    }
}

void TestWellInfoHostile::mutatedRealFiles()
{
    if (realFiles().isEmpty())
        QSKIP("the folder with real LAS files is not there");
    std::mt19937 random(7);
    const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const QByteArray special("~#.: \t\r\nAVWC-9\xA0");
    for (const char *name :
         {"sample.las", "sample_2.0.las", "sample_wrapped.las", "data_characters.las", "23_discrete.las",
          "null_policy_runon.las", "issue79.las", "ex4_1044782786.las", "las-30a-revised-2010.las"}) {
        const QByteArray bytes = bytesOf(realFiles() + QLatin1String(name));
        QVERIFY2(!bytes.isEmpty(), name);
        for (int run = 0; run < 60; ++run) {
            QByteArray damaged = bytes;
            for (int change = below(12) + 1; change > 0; --change) {
                const int at = below(damaged.size());
                if (below(3) == 0)
                    damaged.remove(at, below(200));
                else if (below(2) == 0)
                    damaged.insert(at, damaged.mid(below(damaged.size()), below(300)));
                else
                    damaged.insert(at, special.at(below(special.size())));
                if (damaged.isEmpty())
                    damaged = "~";
            }
            const QString problem = differs(damaged);
            QVERIFY2(problem.isEmpty(),
                     qPrintable(QStringLiteral("%1, run %2: %3").arg(QLatin1String(name)).arg(run).arg(problem)));
        }
    }
}

void TestWellInfoHostile::damagedUtf16()
{
    QByteArray bytes("\xFF\xFE");
    for (const char c : QByteArray(sample20))
        bytes.append(c).append('\0');
    std::mt19937 random(3);
    for (int run = 0; run < 500; ++run) {
        QByteArray damaged = bytes;
        damaged[2 + static_cast<int>(random() % static_cast<unsigned>(bytes.size() - 2))] =
            static_cast<char>(random() % 256);
        damaged.truncate(bytes.size() - static_cast<int>(random() % 40));
        const WellInfo info = m_fixture.load(damaged);
        for (const LogCurveData &curve : info.curves)
            QCOMPARE(curve.depths.size(), curve.values.size());
    }
    QCOMPARE(m_fixture.load("\xFF\xFE").lines.count(), 1);
    QCOMPARE(m_fixture.load(QByteArray("\xFF\xFE~", 3)).curves.size(), 0);
}

void TestWellInfoHostile::rubbish()
{
    for (int byte = 0; byte < 256; ++byte)
        QCOMPARE(differs(QByteArray(1, static_cast<char>(byte))), QString());
    QCOMPARE(m_fixture.load(QByteArray()).lines.count(), 1);
    QCOMPARE(differs(QByteArray(5000, '\0')), QString());
    QCOMPARE(differs(QByteArray("~C\nA. :\n~A\n") + QByteArray(5000, '\0') + "\n1 2\n"), QString());
    QCOMPARE(differs(literalBytes("~C\nA\0B.M\0 :\n~A\n1\0\n\0 2\n")), QString());
    std::mt19937 random(11);
    for (int run = 0; run < 200; ++run) {
        QByteArray bytes("~C\nA. :\nB. :\n~A\n");
        for (int i = 0; i < 2000; ++i)
            bytes.append(static_cast<char>(random() % 256));
        const QString problem = differs(bytes);
        QVERIFY2(problem.isEmpty(), qPrintable(QStringLiteral("run %1: %2").arg(run).arg(problem)));
    }
}

/// All sequences of bytes at the edges of what UTF-8 allows, against Qt's decoder.
void TestWellInfoHostile::validUtf8()
{
    const QByteArray edges = literalBytes("\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC"
                                          "\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFF");
    const QTextCodec *codec = QTextCodec::codecForName("UTF-8");
    int valid = 0;
    for (const char first : edges) {
        for (const char second : edges) {
            for (const char third : edges) {
                for (const char fourth : edges) {
                    const char bytes[] = {'x', first, second, third, fourth};
                    QTextCodec::ConverterState state;
                    codec->toUnicode(bytes, 5, &state);
                    const bool expected = state.invalidChars == 0 && state.remainingChars == 0;
                    valid += expected ? 1 : 0;
                    if (las::isUtf8(bytes, bytes + 5) != expected)
                        QFAIL(QByteArray(bytes, 5).toHex().constData());
                }
            }
        }
    }
    QVERIFY(valid > 100);
}

void TestWellInfoHostile::headerClaimsMoreThanIsThere()
{
    const WellInfo info =
        m_fixture.load("~W\nSTRT.M 0 :\nSTOP.M 1e12 :\nSTEP.M 1e-6 :\n~C\nA. :\nB. :\n~A\n0 1\n1 2\n2 3\n");
    QCOMPARE(info.stopDepth, 1e12);
    QCOMPARE(info.curves.at(1).values, (QVector<double>{1, 2, 3}));
    QVERIFY(info.curves.at(1).values.capacity() < 100);
}

void TestWellInfoHostile::oneLongLine_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<QByteArray>("end");
    const QByteArray curve("~C\nA. :\n");
    const QByteArray none;
    QTest::newRow("no section") << none << QByteArray("abc ") << none;
    QTest::newRow("tokens") << curve + "~A\n" << QByteArray("12.5 ") << none;
    QTest::newRow("digits") << curve + "~A\n" << QByteArray("12345678") << none;
    QTest::newRow("fraction") << curve + "~A\n0." << QByteArray("12345678") << none;
    QTest::newRow("exponent") << curve + "~A\n1e" << QByteArray("12345678") << none;
    QTest::newRow("blanks") << curve + "~A\n" << QByteArray("        ") << QByteArray("1");
    QTest::newRow("no-break spaces") << curve + "~A\n" << QByteArray("1\xC2\xA0") << none;
    QTest::newRow("well value") << QByteArray("~W\nUWI. ") << QByteArray("a b.") << QByteArray(":");
    QTest::newRow("well words") << QByteArray("~W\nUWI.M ") << QByteArray("a b ") << QByteArray(":");
    QTest::newRow("dots") << QByteArray("~C\n") << QByteArray("....") << QByteArray("M");
    QTest::newRow("colons") << QByteArray("~C\nA.M") << QByteArray("::::") << QByteArray("M");
    QTest::newRow("title") << QByteArray("~") << QByteArray("~~~~") << none;
}

void TestWellInfoHostile::oneLongLine()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, unit);
    QFETCH(QByteArray, end);
    const QByteArray bytes = start + repeated(unit, 4000000 / unit.size()) + end;
    QElapsedTimer timer;
    timer.start();
    const WellInfo info = m_fixture.load(bytes);
    // Linear is some 10 ms; quadratic would be hours.
    QVERIFY(timer.elapsed() < 20000);
    QVERIFY(info.lines.line(info.lines.count() - 1).size() > 1000000);
}

void TestWellInfoHostile::longHeaderLinesAreCut()
{
    const int limit = 64 * 1024;
    // A two-byte character stands across the limit; it is left out whole.
    const QByteArray value(limit - 1 - 5, 'x');
    const WellInfo utf8 = m_fixture.load("~W\nUWI. " + value + "\xC3\xA6" + repeated("y", 1000));
    QCOMPARE(utf8.uwi, QString::fromUtf8(value + '.'));
    const WellInfo latin = m_fixture.load("~W\nUWI. " + value + "\xE6" + repeated("y", 1000));
    QCOMPARE(latin.uwi, QString::fromLatin1(value + "\xE6."));
    const WellInfo exact = m_fixture.load("~W\nUWI. " + value + ":\n~C\n" + repeated("m", limit + 1) + ".u : d\n");
    QCOMPARE(exact.uwi, QString::fromUtf8(value));
    QCOMPARE(exact.curves.at(0).logName, QString(limit, QLatin1Char('m')));
    QCOMPARE(exact.curves.at(0).unit, QString());
    QCOMPARE(exact.lines.line(4).size(), limit + 1 + 6); // the line itself is kept whole
}

namespace {

/// What loading adds to the memory of a process of its own at its peak, in bytes; -1 when it failed.
qint64 peakOfLoading(const QString &path)
{
    const auto peak = [](const std::function<bool()> &work) -> qint64 {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(work() ? 0 : 1);
        int status = 0;
        rusage usage{};
        if (child < 0 || ::wait4(child, &status, 0, &usage) != child || status != 0)
            return -1;
        return 1024 * qint64(usage.ru_maxrss);
    };
    ::malloc_trim(0); // else the child begins with what the parent no longer uses
    const qint64 before = peak([] { return true; });
    const qint64 after = peak([&path] {
        WellInfo info;
        return info.load(path) == 0;
    });
    return before < 0 || after < 0 ? -1 : after - before;
}

} // namespace

void TestWellInfoHostile::memoryOfLargeFiles_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<double>("bound");
    QTest::newRow("one long UWI") << QByteArray("~W\nUWI. ") << QByteArray("n") << 1.5;
    QTest::newRow("one long mnemonic") << QByteArray("~C\n") << QByteArray("n") << 1.5;
    QByteArray curves("~C\n");
    QByteArray row;
    for (int i = 0; i < 40; ++i) {
        curves += 'C' + QByteArray::number(i) + ".x :\n";
        row += " 1234.5678";
    }
    QTest::newRow("40 curves") << curves + "~A\n" << row + '\n' << 3.0;
}

void TestWellInfoHostile::memoryOfLargeFiles()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("the address sanitizer keeps freed memory");
#endif
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, unit);
    QFETCH(double, bound);
    const int size = 20'000'000;
    QVERIFY(m_fixture.write(start + repeated(unit, size / unit.size())));
    const qint64 peak = peakOfLoading(m_fixture.path());
    QVERIFY(peak > size / 2); // the measurement sees the bytes themselves
    QVERIFY2(double(peak) < bound * size, QByteArray::number(double(peak) / size).constData());
}

void TestWellInfoHostile::millionTitles()
{
    QCOMPARE(m_fixture.load(repeated("~A\n", 1000000)).lines.count(), 1000001);
    QCOMPARE(m_fixture.load(repeated("~C\nA\n", 100000)).curves.size(), 100000);
    QCOMPARE(m_fixture.load(repeated("\n", 1000000)).lines.count(), 1000001);
}

void TestWellInfoHostile::millionCurves()
{
    const WellInfo info = m_fixture.load("~C\n" + repeated("C\n", 1100000) + "~A\n" + repeated("1\n", 1000000));
    // Beyond a little more than a million, curve lines are left out.
    QCOMPARE(info.curves.size(), 1 << 20);
    QCOMPARE(info.curves.at(0).values.size(), 1000000);
    QVERIFY(info.curves.at(1).values.isEmpty());
    QCOMPARE(info.lines.count(), 2100003);
}

/// Lines of 1, 2, 3 ... tokens, then very many with one: each curve has a depth list of its own.
void TestWellInfoHostile::manyLengths()
{
    QByteArray bytes("~C\n" + repeated("C\n", 1000) + "~A\n");
    for (int tokens = 1; tokens <= 1000; ++tokens)
        bytes += repeated("1 ", tokens) + "\n";
    bytes += repeated("2\n", 500000);
    QElapsedTimer timer;
    timer.start();
    const WellInfo info = m_fixture.load(bytes);
    QVERIFY(timer.elapsed() < 20000);
    QCOMPARE(info.curves.at(0).values.size(), 501000);
    QCOMPARE(info.curves.at(1).depths.size(), 999);
    QCOMPARE(info.curves.at(999).depths, QVector<double>{1});
}

/// Rows are taken into the columns some thousand tokens at a time: short and long rows at all places among them,
/// lowest and highest values that come late, and a second section with another null value.
void TestWellInfoHostile::longSections()
{
    std::mt19937 random(5);
    const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int run = 0; run < 20; ++run) {
        QByteArray bytes;
        const int chanceOfUneven = run % 2 == 0 ? 2000 : 20;
        for (const char *null : {"-999.25", "-20"}) {
            bytes += "~W\nNULL. " + QByteArray(null) + " :\n~C\n";
            const int curves = 1 + below(5);
            for (int i = 0; i < curves; ++i)
                bytes += "C. :\n";
            bytes += "~A\n";
            const int rows = below(6000);
            for (int row = 0; row < rows; ++row) {
                const int tokens = below(chanceOfUneven) == 0 ? below(8) : curves;
                for (int i = 0; i < tokens; ++i)
                    bytes += below(100) == 0 ? QByteArray(null) + ' '
                                             : QByteArray::number((below(200) - 100) * (1 + row / 1000)) + ' ';
                bytes += '\n';
            }
        }
        const QString problem = differs(bytes);
        QVERIFY2(problem.isEmpty(), qPrintable(QStringLiteral("run %1: %2").arg(run).arg(problem)));
    }
}

void TestWellInfoHostile::endlessFiles()
{
    if (!QFile::exists(QStringLiteral("/dev/zero")))
        QSKIP("there are no device files here");
    WellInfo info;
    QCOMPARE(info.load(QStringLiteral("/dev/zero")), -2);
}

QTEST_APPLESS_MAIN(TestWellInfoHostile)
#include "tst_wellinfohostile.moc"
