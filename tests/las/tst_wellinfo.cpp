#include "tests/las/wellinfofixture.h"

/// What the import reader takes from a file, sentence by sentence.
class TestWellInfo : public QObject
{
    Q_OBJECT

private slots:
    void fields_data();
    void fields();
    void versionSection();
    void wellSection();
    void curveSection();
    void otherSections();
    void titleWithoutLetter();
    void numbers_data();
    void numbers();
    void dataLines();
    void fewerTokens();
    void surplusTokens();
    void minimumAndMaximum();
    void minimumAndMaximumOfLateCurve();
    void nullIsNoMinimum();
    void sectionsAfterData();
    void severalDataSections();
    void commentsAndBlankLines();
    void lineEnds_data();
    void lineEnds();
    void encodings_data();
    void encodings();
    void paddingAtEnd();
    void whiteSpaceAboveAscii();
    void displayLines();
    void sharedDepths();
    void loadTwice();
    void missingAndUnreadable();
    void fileGoneAfterLoading();

private:
    LasFixture m_fixture;
};

void TestWellInfo::fields_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("mnemonic");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("description");
    const auto row = [](const char *line, const char *mnemonic, const char *unit, const char *value,
                        const char *description) {
        QTest::newRow(line) << QString::fromUtf8(line) << QString::fromUtf8(mnemonic) << QString::fromUtf8(unit)
                            << QString::fromUtf8(value) << QString::fromUtf8(description);
    };
    row("STRT.M 1000.5 :START DEPTH", "STRT", "M", "1000.5", "START DEPTH");
    row("NULL.  -999.25 :NULL VALUE", "NULL", "", "-999.25", "NULL VALUE");
    row("WELL.  MY WELL :", "WELL", "", "MY WELL", "WELL.  MY WELL");
    row("WELL.X MY WELL :", "WELL", "X", "MYWELL", "WELL.X MY WELL");
    row("WELL.  MY WELL : ", "WELL", "", "MY WELL", "");
    row("  DEPT  .M       : 1  DEPTH ", "DEPT", "M", "", "1  DEPTH");
    row("DT.US/M 12 345 : sonic: compressional", "DT", "US/M", "12345", "compressional");
    row("X   ..1IN 7 : implied", "X", "1IN", "7", "implied");
    row(".M 5 :", "M 5 :", "", "", ".M 5");
    row("UNIT.\tM x : tab", "UNIT", "", "M x", "tab");
    row("UNIT.M\tx y : tab", "UNIT", "M\tx", "y", "tab");
    row("VERS. 2.0 : at 12:30", "VERS", "", "2.0", "30");
    row("VERS. 2.0", "VERS", "", "2.0.", "VERS. 2.0");
    row("STRT.M 1000", "STRT", "M", "1000.", "STRT.M 1000");
    row("A:B.C D:E", "A:B", "C", "D", "E");
    row("WELL.:NAME", "WELL", ":NAME", "", "NAME");
    row("WELL:NAME", "WELL:NAME", "", "", "NAME");
    row("DRHO.g/cm3 1.2.3 : x", "DRHO", "g/cm3", "1.2.3", "x");
    row("NAME. F/3-2. No. 1 :", "NAME", "", "F/3-2. No. 1", "NAME. F/3-2. No. 1");
    row("...", "", "", "", "...");
    row(":::", ":::", "", "", "");
    row("", "", "", "", "");
    row("   ", "", "", "", "");
}

void TestWellInfo::fields()
{
    QFETCH(QString, line);
    QTEST(WellInfo::mnemonic(line), "mnemonic");
    QTEST(WellInfo::unit(line), "unit");
    QTEST(WellInfo::value(line), "value");
    QTEST(WellInfo::description(line), "description");
    QCOMPARE(WellInfo::mnemonic(line), literal::mnemonic(line));
    QCOMPARE(WellInfo::unit(line), literal::unit(line));
    QCOMPARE(WellInfo::value(line), literal::value(line));
    QCOMPARE(WellInfo::description(line), literal::description(line));
}

void TestWellInfo::versionSection()
{
    WellInfo info = m_fixture.load("~Version\nvers. 2.0 : x\nWrap. Yes : x\nPROD. y : x\n");
    QCOMPARE(info.version, QStringLiteral("2.0"));
    QVERIFY(info.wrapped);
    info = m_fixture.load("~V\nWRAP. NO :\n");
    QVERIFY(!info.wrapped);
    QVERIFY(info.version.isEmpty());
    info = m_fixture.load("~V\nWRAP. YES NO :\n");
    QVERIFY(!info.wrapped);
}

void TestWellInfo::wellSection()
{
    const WellInfo info = m_fixture.load("~Well\nstrt.FT 100.5 : x\nStop.M 200 :\nSTEP.M 0.5 :\nNULL. -9999 :\n"
                                         "UWI. 15/9-F-1 A :\nWELL. other :\nCOMP. other :\n");
    QCOMPARE(info.startDepth, 100.5);
    QCOMPARE(info.stopDepth, 200.0);
    QCOMPARE(info.step, 0.5);
    QCOMPARE(info.nullValue, -9999.0);
    QCOMPARE(info.depthUnit, QStringLiteral("FT"));
    QCOMPARE(info.uwi, QStringLiteral("15/9-F-1 A"));

    const WellInfo nothing = m_fixture.load("~Well\nSTRT.M none :\nSTOP.M\nSTEP\nNULL. :\n");
    QCOMPARE(nothing.startDepth, 0.0);
    QCOMPARE(nothing.depthUnit, QStringLiteral("M"));
    QCOMPARE(nothing.stopDepth, 0.0);
    QCOMPARE(nothing.step, 0.0);
    QCOMPARE(nothing.nullValue, 0.0);
}

void TestWellInfo::curveSection()
{
    const WellInfo info = m_fixture.load("~C\n#MNEM.UNIT : comment\nDEPT.M : 1 DEPTH\n\n   \nGR.GAPI 45 310 : gamma\n"
                                         "no fields here\n #not in front.X :\n");
    QCOMPARE(info.curves.size(), 4);
    QCOMPARE(info.curves.at(0).logName, QStringLiteral("DEPT"));
    QCOMPARE(info.curves.at(0).displayName, QStringLiteral("DEPT"));
    QCOMPARE(info.curves.at(0).unit, QStringLiteral("M"));
    QCOMPARE(info.curves.at(0).description, QStringLiteral("1 DEPTH"));
    QCOMPARE(info.curves.at(0).source, m_fixture.path());
    QCOMPARE(info.curves.at(1).logName, QStringLiteral("GR"));
    QCOMPARE(info.curves.at(2).logName, QStringLiteral("no fields here"));
    QCOMPARE(info.curves.at(2).unit, QString());
    QCOMPARE(info.curves.at(3).logName, QStringLiteral("#not in front"));
    QVERIFY(info.curves.at(0).values.isEmpty());
}

void TestWellInfo::otherSections()
{
    // Lower case titles are unknown sections as are ~P and ~O; what stands before the first title is skipped.
    const WellInfo info = m_fixture.load("VERS. 1 :\n~v\nVERS. 2 :\n~w\nSTRT.M 1 :\n~P\nNULL. 7 :\n~O\nfree text\n"
                                         "~c\nDEPT.M :\n~a\n1 2\n");
    QVERIFY(info.version.isEmpty());
    QCOMPARE(info.startDepth, 0.0);
    QCOMPARE(info.nullValue, 0.0);
    QVERIFY(info.curves.isEmpty());
    QCOMPARE(info.lines.count(), 14);
    QVERIFY(m_fixture.load("~C\nA. :\n~a\n1 2\n").curves.at(0).values.isEmpty());
}

void TestWellInfo::titleWithoutLetter()
{
    for (const char *bytes : {"~", "~\n", "~V\n~", "~A\n~", "~C\nA.M :\n~\nB.M :\n~"})
        QCOMPARE(m_fixture.load(bytes).curves.size(), bytes[1] == 'C' ? 1 : 0);
    QCOMPARE(m_fixture.load("~ V\nVERS. 2 :\n").version, QString());
    QCOMPARE(m_fixture.load(" ~V\nVERS. 2 :\n").version, QString());
}

void TestWellInfo::numbers_data()
{
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<double>("expected");
    const auto row = [](const char *token, double expected) {
        QTest::newRow(token) << QByteArray(token) << expected;
    };
    row("1.5", 1.5);
    row("+1.5", 1.5);
    row("-1.5", -1.5);
    row("5.", 5);
    row(".5", 0.5);
    row("1e3", 1000);
    row("1E+3", 1000);
    row("1.e-3", 0.001);
    row("-0", -0.0);
    row("4.9e-324", 4.9e-324);
    row("1e-400", 0);
    for (const char *text : {"1e400",
                             "-1e400",
                             "nan",
                             "NaN",
                             "inf",
                             "-inf",
                             "infinity",
                             "nan(1)",
                             "1.5abc",
                             "1,5",
                             "abc",
                             "+",
                             "-",
                             "+-1",
                             "++1",
                             "--1",
                             ".",
                             "e5",
                             "1e",
                             "1e+",
                             "0x10",
                             "1d5",
                             "-999.25-999.25",
                             "1.2.3",
                             "1_000",
                             "1\x01",
                             "\x01"})
        row(text, 0);
}

void TestWellInfo::numbers()
{
    QFETCH(QByteArray, token);
    QFETCH(double, expected);
    const WellInfo info = m_fixture.load("~W\nSTRT.M " + token + " :\n~C\nA.M :\nB.M :\n~A\n7 " + token + " 8\n");
    QCOMPARE(info.curves.at(1).values, QVector<double>{expected});
    QCOMPARE(info.startDepth, expected);
    QCOMPARE(literal::number(QString::fromLatin1(token)), expected);
}

void TestWellInfo::dataLines()
{
    const WellInfo info =
        m_fixture.load("~C\nDEPT.M :\nGR. :\nDT. :\n~A DEPT GR DT\n 1.0\t10 100 \n\v2.0 \f 20  200\n3 30 300");
    QCOMPARE(info.curves.at(0).values, (QVector<double>{1, 2, 3}));
    QCOMPARE(info.curves.at(1).values, (QVector<double>{10, 20, 30}));
    QCOMPARE(info.curves.at(2).values, (QVector<double>{100, 200, 300}));
    for (const LogCurveData &curve : info.curves)
        QCOMPARE(curve.depths, (QVector<double>{1, 2, 3}));

    // Depths that decrease stay as they are: turning them round is the importer's work.
    const WellInfo falling = m_fixture.load("~C\nDEPT.M :\n~A\n3\n2\n1\n");
    QCOMPARE(falling.curves.at(0).depths, (QVector<double>{3, 2, 1}));
}

void TestWellInfo::fewerTokens()
{
    const WellInfo info = m_fixture.load("~C\nA. :\nB. :\nC. :\nD. :\n~A\n1 11\n2\n3 13 23\n4 14 24\n5 15\n");
    QCOMPARE(info.curves.at(0).values, (QVector<double>{1, 2, 3, 4, 5}));
    QCOMPARE(info.curves.at(1).values, (QVector<double>{11, 13, 14, 15}));
    QCOMPARE(info.curves.at(1).depths, (QVector<double>{1, 3, 4, 5}));
    QCOMPARE(info.curves.at(2).values, (QVector<double>{23, 24}));
    QCOMPARE(info.curves.at(2).depths, (QVector<double>{3, 4}));
    QVERIFY(info.curves.at(3).values.isEmpty());
    QVERIFY(info.curves.at(3).depths.isEmpty());
    // The wrapped flag changes nothing in this.
    const WellInfo wrapped = m_fixture.load("~V\nWRAP. YES :\n~C\nA. :\nB. :\n~A\n1\n10\n2\n20\n");
    QCOMPARE(wrapped.curves.at(0).values, (QVector<double>{1, 10, 2, 20}));
    QVERIFY(wrapped.curves.at(1).values.isEmpty());
}

void TestWellInfo::surplusTokens()
{
    const WellInfo info = m_fixture.load("~C\nA. :\nB. :\n~A\n1 10 100 1000\n2 20 200\n3\n");
    QCOMPARE(info.curves.at(0).values, (QVector<double>{1, 2, 3}));
    QCOMPARE(info.curves.at(1).values, (QVector<double>{10, 20}));
    const WellInfo none = m_fixture.load("~A\n1 10 100\n2 20 200\n");
    QVERIFY(none.curves.isEmpty());
    QCOMPARE(none.lines.count(), 4);
}

void TestWellInfo::minimumAndMaximum()
{
    const auto curve = [this](const QByteArray &samples) {
        return m_fixture.load("~W\nNULL. -999.25 :\n~C\nA. :\n~A\n" + samples).curves.at(0);
    };
    LogCurveData data = curve("10\n");
    QCOMPARE(data.minimum, 1e8);
    QCOMPARE(data.maximum, 10.0);
    data = curve("10\n20\n");
    QCOMPARE(data.minimum, 20.0);
    QCOMPARE(data.maximum, 10.0);
    data = curve("10\n20\n30\n");
    QCOMPARE(data.minimum, 20.0);
    QCOMPARE(data.maximum, 30.0);
    data = curve("10\n20\n15\n5\n");
    QCOMPARE(data.minimum, 5.0);
    QCOMPARE(data.maximum, 10.0);
    // The null value of the first line counts as maximum, and the next value is a minimum only.
    data = curve("-999.25\n-5\n");
    QCOMPARE(data.minimum, -5.0);
    QCOMPARE(data.maximum, -999.25);
}

void TestWellInfo::minimumAndMaximumOfLateCurve()
{
    const WellInfo info = m_fixture.load("~C\nA. :\nB. :\nC. :\n~A\n1\n2 50\n3 70\n");
    QCOMPARE(info.curves.at(1).minimum, 70.0);
    QCOMPARE(info.curves.at(1).maximum, 50.0);
    QCOMPARE(info.curves.at(2).minimum, 0.0);
    QCOMPARE(info.curves.at(2).maximum, 0.0);
}

void TestWellInfo::nullIsNoMinimum()
{
    const WellInfo info = m_fixture.load("~W\nNULL. -1 :\n~C\nA. :\n~A\n5\n7\n-1\n-0.95\n-0.85\n-20\n");
    // -0.95 is within 0.1 of the null value, -20 is below it: neither becomes the minimum.
    QCOMPARE(info.curves.at(0).minimum, -0.85);
    QCOMPARE(info.curves.at(0).maximum, 5.0);
}

void TestWellInfo::sectionsAfterData()
{
    WellInfo info = m_fixture.load("~C\nA. :\n~A\n~W\nNULL. 5 :\n~O\n1\n");
    QCOMPARE(info.nullValue, 5.0);
    QVERIFY(info.curves.at(0).values.isEmpty());
    info = m_fixture.load("~C\nA. :\n~A\n1\n2\n~Other\n3\n~V\nVERS. 3.0 :\n");
    QCOMPARE(info.curves.at(0).values, (QVector<double>{1, 2}));
    QCOMPARE(info.version, QStringLiteral("3.0"));
}

void TestWellInfo::severalDataSections()
{
    const WellInfo info = m_fixture.load("~C\nA. :\nB. :\n~A\n1 10\n2 20\n~C\nX. :\nY. :\n~W\nSTRT.M 9 :\n"
                                         "~A\n3 30 300\n4\n#\nno 50\n~A\n6 60\n\n#\n7 70\n~C\nZ. :\n~A\n~A\n8\n");
    QCOMPARE(info.curves.size(), 5);
    QCOMPARE(info.curves.at(0).values, (QVector<double>{1, 2}));
    QCOMPARE(info.curves.at(1).values, (QVector<double>{10, 20}));
    QCOMPARE(info.curves.at(1).maximum, 10.0);
    QCOMPARE(info.curves.at(2).values, (QVector<double>{3, 4, 0}));
    QCOMPARE(info.curves.at(2).depths, (QVector<double>{3, 4, 0}));
    QCOMPARE(info.curves.at(3).values, (QVector<double>{30, 50}));
    QCOMPARE(info.curves.at(3).depths, (QVector<double>{3, 0})); // its own section's first column
    QVERIFY(info.curves.at(4).values.isEmpty()); // the section behind its own names no curves
    QCOMPARE(info.startDepth, 9.0);
    for (int curve = 0; curve < 5; ++curve)
        QCOMPARE(info.hasUnreadableDepth(curve), curve == 2 || curve == 3);
    QCOMPARE(info.dataSectionCount, 5);
    QCOMPARE(info.rowsWithoutCurves, 3);
    QCOMPARE(info.dataSections.size(), 3);
    const LasDataSection &second = info.dataSections.at(1);
    QCOMPARE(info.lines.line(second.titleLine), QStringLiteral("~A"));
    QCOMPARE(info.lines.line(second.firstRowLine), QStringLiteral("3 30 300"));
    QCOMPARE(second.firstCurve, 2);
    QCOMPARE(second.curveCount, 2);
    QCOMPARE(second.rowCount, 3);
    QCOMPARE(second.unevenRowCount, 2); // one with more, one with fewer columns
    QCOMPARE(info.dataSections.at(0).unevenRowCount, 0);
    QCOMPARE(info.dataSections.at(2).firstRowLine, 0);
}

void TestWellInfo::commentsAndBlankLines()
{
    const WellInfo info = m_fixture.load("~C\nA. :\n~A\n\n   \n#1\n# 99\n10\n\n#\n20\n");
    QCOMPARE(info.curves.at(0).values, (QVector<double>{10, 20}));
    QCOMPARE(info.curves.at(0).minimum, 20.0);
    QCOMPARE(info.curves.at(0).maximum, 10.0);
}

void TestWellInfo::lineEnds_data()
{
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::newRow("LF") << QByteArray("\n");
    QTest::newRow("CRLF") << QByteArray("\r\n");
    QTest::newRow("CR") << QByteArray("\r");
}

void TestWellInfo::lineEnds()
{
    QFETCH(QByteArray, lineEnd);
    QByteArray bytes("~V\nVERS. 2.0 :\n~C\nA.M : a\nB.M : b\n\n~A\n1 10\n2 20\n");
    const literal::Reader expected(bytes, m_fixture.path());
    bytes.replace("\n", lineEnd);
    const WellInfo info = m_fixture.load(bytes);
    QCOMPARE(difference(info, expected), QString());
    QCOMPARE(info.lines.count(), 10);
    QCOMPARE(info.lines.line(6), QString());
}

void TestWellInfo::encodings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QString text =
        QStringLiteral("~W\nUWI. Sh\u00e1mar\u00e7a \u2013 1 :\n~C\nA.\u00b5S : \u201ca\u201d\n~A\n1\n2\n");
    QByteArray windows("~W\nUWI. Sh\xe1mar\xe7"
                       "a \x96 1 :\n~C\nA.\xb5S : \x93"
                       "a\x94\n~A\n1\n2\n");
    QTest::newRow("UTF-8") << text.toUtf8();
    QTest::newRow("UTF-8 with mark") << "\xEF\xBB\xBF" + text.toUtf8();
    QTest::newRow("Windows-1252") << windows;
    QByteArray little("\xFF\xFE");
    QByteArray big("\xFE\xFF");
    for (const QChar c : text) {
        little.append(static_cast<char>(c.cell())).append(static_cast<char>(c.row()));
        big.append(static_cast<char>(c.row())).append(static_cast<char>(c.cell()));
    }
    QTest::newRow("UTF-16 little endian") << little;
    QTest::newRow("UTF-16 big endian") << big;
    QTest::newRow("UTF-16 with half a character at the end") << little + "~";
}

void TestWellInfo::encodings()
{
    QFETCH(QByteArray, bytes);
    const WellInfo info = m_fixture.load(bytes);
    QCOMPARE(info.uwi, QStringLiteral("Sh\u00e1mar\u00e7a \u2013 1"));
    QCOMPARE(info.curves.size(), 1);
    QCOMPARE(info.curves.at(0).unit, QStringLiteral("\u00b5S"));
    QCOMPARE(info.curves.at(0).description, QStringLiteral("\u201ca\u201d"));
    QCOMPARE(info.curves.at(0).values.mid(0, 2), (QVector<double>{1, 2}));
    QCOMPARE(info.lines.line(2), QStringLiteral("UWI. Sh\u00e1mar\u00e7a \u2013 1 :"));
}

void TestWellInfo::paddingAtEnd()
{
    QByteArray bytes("~C\nA. :\n~A\n1\n2\n\x1A");
    bytes.append(QByteArray(20, '\0'));
    const WellInfo info = m_fixture.load(bytes);
    QCOMPARE(info.curves.at(0).values, (QVector<double>{1, 2}));
    QCOMPARE(info.lines.count(), 6);
}

void TestWellInfo::whiteSpaceAboveAscii()
{
    // No-break space and em space part tokens; a line of them only is blank.
    const WellInfo info =
        m_fixture.load("~C\nA. :\nB. :\nC. :\n~A\n1\u00a010\u2003100 1000\n\u00a0\n2\u00e4 20\u00a0\n");
    QCOMPARE(info.curves.at(0).values, (QVector<double>{1, 0}));
    QCOMPARE(info.curves.at(1).values, (QVector<double>{10, 20}));
    QCOMPARE(info.curves.at(2).values, (QVector<double>{100}));
    const WellInfo windows = m_fixture.load("~C\nA. :\nB. :\n~A\n1\xa0"
                                            "10\n");
    QCOMPARE(windows.curves.at(1).values, (QVector<double>{10}));
}

void TestWellInfo::displayLines()
{
    QCOMPARE(LasLines().count(), 0);
    QCOMPARE(LasLines().line(0), QString());
    const WellInfo info = m_fixture.load("comment\n~V\r\n\n  VERS. 2 :  \r~X\nlast");
    const QStringList expected = {QStringLiteral("<b>Filename : ") + m_fixture.path() + QStringLiteral("</b>"),
                                  QStringLiteral("comment"),
                                  QStringLiteral("~V"),
                                  QString(),
                                  QStringLiteral("  VERS. 2 :  "),
                                  QStringLiteral("~X"),
                                  QStringLiteral("last")};
    QCOMPARE(info.lines.count(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(info.lines.line(i), expected.at(i));
    QCOMPARE(info.lines.line(-1), QString());
    QCOMPARE(info.lines.line(7), QString());
}

void TestWellInfo::sharedDepths()
{
    const WellInfo info = m_fixture.load("~C\nA. :\nB. :\nC. :\nD. :\n~A\n1 2 3 4\n5 6 7 8\n9 10\n");
    const double *full = info.curves.at(0).values.constData();
    QCOMPARE(info.curves.at(0).depths.constData(), full);
    QCOMPARE(info.curves.at(1).depths.constData(), full);
    QVERIFY(info.curves.at(2).depths.constData() != full);
    QCOMPARE(info.curves.at(3).depths.constData(), info.curves.at(2).depths.constData());
    const WellInfo copy = info;
    QCOMPARE(copy.curves.at(0).values.constData(), full);
}

void TestWellInfo::loadTwice()
{
    WellInfo info = m_fixture.load("~V\nVERS. 2.0 :\n~C\nA. :\n~A\n1\n");
    QVERIFY(m_fixture.write("~C\nB. :\n"));
    QCOMPARE(info.load(m_fixture.path()), 0);
    QVERIFY(info.version.isEmpty());
    QCOMPARE(info.curves.size(), 1);
    QCOMPARE(info.curves.at(0).logName, QStringLiteral("B"));
    QCOMPARE(info.lines.count(), 3);
}

void TestWellInfo::missingAndUnreadable()
{
    WellInfo info = m_fixture.load("~C\nA. :\n");
    QTemporaryDir folder;
    const QString missing = folder.filePath(QStringLiteral("missing.las"));
    QCOMPARE(info.load(missing), -1);
    QVERIFY(info.curves.isEmpty());
    QCOMPARE(info.lines.count(), 1);
    QCOMPARE(info.lines.line(0), QStringLiteral("<b>Filename : ") + missing + QStringLiteral("</b>"));
    QCOMPARE(info.load(QString()), -1);
    QCOMPARE(info.load(folder.path()), -2);
    QVERIFY(info.curves.isEmpty());

    QVERIFY(m_fixture.write("~C\nA. :\n"));
    QVERIFY(QFile::setPermissions(m_fixture.path(), QFileDevice::WriteOwner));
    const bool isRefused = !QFile(m_fixture.path()).open(QIODevice::ReadOnly);
    const int result = info.load(m_fixture.path());
    QVERIFY(QFile::setPermissions(m_fixture.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    if (!isRefused)
        QSKIP("this user may read every file");
    QCOMPARE(result, -2);
}

void TestWellInfo::fileGoneAfterLoading()
{
    const WellInfo info = m_fixture.load("~C\nA. : x\n~A\n1\n");
    QVERIFY(QFile::remove(m_fixture.path()));
    QCOMPARE(info.lines.line(2), QStringLiteral("A. : x"));
    QCOMPARE(info.curves.at(0).values, QVector<double>{1});
}

QTEST_APPLESS_MAIN(TestWellInfo)
#include "tst_wellinfo.moc"
