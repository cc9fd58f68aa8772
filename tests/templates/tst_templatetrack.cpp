#include "templates/templatetrack.h"

#include "support/badbytes.h"
#include "support/commalocale.h"

#include <QTest>

#include <cmath>

namespace {

const QByteArray fullLine = "Gamma | Default | 0.00 | 200.00 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | "
                            "#000000 | 1 | Circle";

TrackInfo track(const QByteArray &bytes)
{
    return parseTrack(bytes, "Track_1");
}

// The full line with one field replaced by another text.
TemplateCurveInfo curveWith(int field, const QByteArray &text)
{
    QList<QByteArray> fields = fullLine.split('|');
    fields[field] = text;
    const TrackInfo result = track("Linear\n" + fields.join('|'));
    return result.curves.size() == 1 ? result.curves.first() : TemplateCurveInfo();
}

TemplateCurveRow row(const QString &group, const QString &curve)
{
    TemplateCurveRow result;
    result.group = group;
    result.curve = curve;
    result.minimum = "0.00";
    result.maximum = "200.00";
    result.color = QColor("#0e6f21");
    return result;
}

} // namespace

class tst_templatetrack : public QObject
{
    Q_OBJECT

private slots:
    void theFirstLineIsTheType_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("type");
        QTest::newRow("linear") << QByteArray("Linear") << 0;
        QTest::newRow("logarithmic") << QByteArray("Logrithmic") << 1;
        QTest::newRow("depth") << QByteArray("Depth") << 2;
        QTest::newRow("blanks") << QByteArray("  Linear\t ") << 0;
        QTest::newRow("the proper spelling") << QByteArray("Logarithmic") << 2;
        QTest::newRow("letter case") << QByteArray("linear") << 2;
        QTest::newRow("nothing") << QByteArray() << 2;
        QTest::newRow("anything") << QByteArray("Linear | 1") << 2;
    }

    void theFirstLineIsTheType()
    {
        QFETCH(QByteArray, line);
        QFETCH(int, type);
        QCOMPARE(track(line).type, type);
        QCOMPARE(track(line + "\n" + fullLine).type, type);
        QCOMPARE(track(line + "\n" + fullLine).curves.size(), 1);
    }

    void theNameIsGiven() { QCOMPARE(parseTrack("Linear\n", "Track_3").name, QString("Track_3")); }

    void everyFieldHasItsPlace()
    {
        const TrackInfo read = track("Linear\nSonic | DT | 40 | 240.5 | #2648ef|3,#ff0000|12,#00ff01|Left Boundary | "
                                     "Curve_2 | 1 | 2 | 1 | #0000ff | 10 | Rectangle\n");
        QCOMPARE(read.curves.size(), 1);
        const TemplateCurveInfo &curve = read.curves.first();
        QCOMPARE(curve.group, QString("Sonic"));
        QCOMPARE(curve.curve, QString("DT"));
        QCOMPARE(curve.minimum, 40.0);
        QCOMPARE(curve.maximum, 240.5);
        QCOMPARE(curve.color, QColor(0x26, 0x48, 0xef));
        QVERIFY(curve.isLeftFillOn);
        QCOMPARE(curve.leftFillIndex, 3);
        QCOMPARE(curve.leftFillColor, QColor(255, 0, 0));
        QVERIFY(curve.isRightFillOn);
        QCOMPARE(curve.rightFillIndex, 12);
        QCOMPARE(curve.rightFillColor, QColor(0, 255, 1));
        QCOMPARE(curve.leftUpTo, QString("Left Boundary"));
        QCOMPARE(curve.rightUpTo, QString("Curve_2"));
        QCOMPARE(curve.lineTypeIndex, 1);
        QCOMPARE(curve.penStyle, 2);
        QCOMPARE(curve.lineWidthIndex, 2);
        QCOMPARE(curve.penWidth, 3);
        QVERIFY(curve.isCalibrationShown);
        QCOMPARE(curve.pointColor, QColor(0, 0, 255));
        QCOMPARE(curve.pointSize, 10);
        QCOMPARE(curve.pointShape, 2);
    }

    void curvesComeInFileOrder()
    {
        QByteArray bytes = "Linear\n";
        for (const char *name : {"C", "A", "B"})
            bytes += QByteArray(fullLine).replace("Default", name) + '\n';
        const TrackInfo read = track(bytes);
        QCOMPARE(read.curves.size(), 3);
        QCOMPARE(read.curves.at(0).curve + read.curves.at(1).curve + read.curves.at(2).curve, QString("CAB"));
    }

    void aBareBarSeparatesLikeOneWithBlanks()
    {
        QByteArray bare = fullLine;
        bare.replace(" | ", "|");
        QByteArray wide = fullLine;
        wide.replace("|", "  \t|  ");
        for (const QByteArray &line : {bare, wide, "||" + bare + "||"}) {
            const TemplateCurveInfo curve = track("Linear\n" + line).curves.value(0);
            QCOMPARE(curve.group, QString("Gamma"));
            QCOMPARE(curve.maximum, 200.0);
            QCOMPARE(curve.color, QColor("#0e6f21"));
            QCOMPARE(curve.rightUpTo, QString("None"));
            QCOMPARE(curve.pointShape, 1);
        }
    }

    void emptyPartsAreSkippedAndBlankOnesAreNot()
    {
        const TemplateCurveInfo empty = curveWith(2, "");
        QCOMPARE(empty.minimum, 200.0); // everything moved one place to the left
        const TemplateCurveInfo blank = curveWith(2, " ");
        QCOMPARE(blank.minimum, 0.0);
        QCOMPARE(blank.maximum, 200.0);
    }

    void aSeedLineOfElevenFieldsHasNoCalibrationPoints()
    {
        const TrackInfo read =
            track("Logrithmic\n"
                  "Resistivity | LLS | 0.10 | 2000.00 | #4046fa|0,#ffffff|0,#ffffff|None | None | 1 | 1 ");
        QCOMPARE(read.type, int(LogarithmicTrack));
        QCOMPARE(read.curves.size(), 1);
        const TemplateCurveInfo &curve = read.curves.first();
        QCOMPARE(curve.penStyle, 2);
        QCOMPARE(curve.penWidth, 2);
        QVERIFY(!curve.isCalibrationShown);
        QCOMPARE(curve.pointColor, QColor(0, 0, 0));
        QCOMPARE(curve.pointSize, 1);
        QCOMPARE(curve.pointShape, 1);
    }

    void twelveToFourteenFieldsTakeTheDefaultsForTheRest()
    {
        const QByteArray eleven = "Linear\nG|C|1|2|red|0,red|0,red|None|None|0|0";
        TemplateCurveInfo curve = track(eleven + "|1").curves.value(0);
        QVERIFY(curve.isCalibrationShown);
        QCOMPARE(curve.pointColor, QColor(0, 0, 0));
        QCOMPARE(curve.pointSize, 1);
        QCOMPARE(curve.pointShape, 1);
        curve = track(eleven + "|0|#0000ff").curves.value(0);
        QVERIFY(!curve.isCalibrationShown);
        QCOMPARE(curve.pointColor, QColor(0, 0, 255));
        QCOMPARE(curve.pointSize, 1);
        curve = track(eleven + "|1|#0000ff|7").curves.value(0);
        QCOMPARE(curve.pointSize, 7);
        QCOMPARE(curve.pointShape, 1);
        curve = track(eleven + "|1|#0000ff|7|Rectangle|beyond|more").curves.value(0);
        QCOMPARE(curve.pointShape, 2);
    }

    void linesOfFewerThanElevenFieldsAreSkipped()
    {
        const QByteArray ten = "G|C|1|2|red|0,red|0,red|None|None|0";
        const TrackInfo read = track("Linear\n" + ten + "\n\n   \nx\n" + ten + "|\n||||||||||||||\n" + ten + "|4\n");
        QCOMPARE(read.curves.size(), 1);
        QCOMPARE(read.curves.first().lineWidthIndex, 4);
    }

    void theSeedDepthTrack()
    {
        const TrackInfo read = track("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0");
        QCOMPARE(read.type, int(DepthTrack));
        QCOMPARE(read.curves.size(), 1);
        expectDepthCurve(read.curves.first());
        QVERIFY(!read.curves.first().isCalibrationShown);
        QCOMPARE(read.curves.first().pointShape, 1);
    }

    void theWrittenDepthTrack()
    {
        const TrackInfo read = track(trackBytes("Depth", {row("Depth", "MD")}));
        QCOMPARE(read.type, int(DepthTrack));
        QCOMPARE(read.curves.size(), 1);
        expectDepthCurve(read.curves.first());
        QVERIFY(!read.curves.first().isCalibrationShown);
        QVERIFY(!read.curves.first().pointColor.isValid());
        QCOMPARE(read.curves.first().pointSize, 0);
        QCOMPARE(read.curves.first().pointShape, 2);
    }

    void numbersThatAreNoneReadAsZero_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("plain") << QByteArray("-100.00") << -100.0;
        QTest::newRow("plus") << QByteArray("+5") << 5.0;
        QTest::newRow("exponent") << QByteArray("1e3") << 1000.0;
        QTest::newRow("word") << QByteArray("none") << 0.0;
        QTest::newRow("comma") << QByteArray("1,5") << 0.0;
        QTest::newRow("followed by text") << QByteArray("5 m") << 0.0;
        QTest::newRow("not a number") << QByteArray("nan") << 0.0;
        QTest::newRow("infinite") << QByteArray("inf") << 0.0;
        QTest::newRow("too large") << QByteArray("1e400") << 0.0;
        QTest::newRow("hexadecimal") << QByteArray("0x10") << 0.0;
    }

    void numbersThatAreNoneReadAsZero()
    {
        QFETCH(QByteArray, text);
        QFETCH(double, value);
        QCOMPARE(curveWith(2, text).minimum, value);
        QCOMPARE(curveWith(3, ' ' + text + ' ').maximum, value);
    }

    void numbersDoNotDependOnTheLocale()
    {
        const testing_support::CommaLocale locale;
        if (!locale.isInForce())
            QSKIP("No locale with a decimal comma can be made here");
        QCOMPARE(curveWith(2, "0.5").minimum, 0.5);
        QCOMPARE(curveWith(2, "0,5").minimum, 0.0);
    }

    void coloursAreNames_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QColor>("color");
        QTest::newRow("lower case") << QByteArray("#a0b1ff") << QColor(0xa0, 0xb1, 0xff);
        QTest::newRow("upper case") << QByteArray("#A0B1FF") << QColor(0xa0, 0xb1, 0xff);
        QTest::newRow("three digits") << QByteArray("#f00") << QColor(255, 0, 0);
        QTest::newRow("a name") << QByteArray("steelblue") << QColor(70, 130, 180);
        QTest::newRow("wrong digit") << QByteArray("#a0b1fg") << QColor();
        QTest::newRow("sign in place of a digit") << QByteArray("#a0b1-1") << QColor();
        QTest::newRow("no digits") << QByteArray("#") << QColor();
        QTest::newRow("numbers") << QByteArray("0,0,0") << QColor();
        QTest::newRow("no name") << QByteArray("no colour") << QColor();
        QTest::newRow("blank") << QByteArray(" ") << QColor();
        QTest::newRow("long") << QByteArray(100000, 'a') << QColor();
    }

    void coloursAreNames()
    {
        QFETCH(QByteArray, text);
        QFETCH(QColor, color);
        QCOMPARE(curveWith(4, text).color, color);
        QCOMPARE(curveWith(12, text).pointColor, color);
        if (!text.contains(','))
            QCOMPARE(curveWith(5, "1," + text).leftFillColor, color);
    }

    void aFillIsOnUnlessItsIndexIsZero_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("index");
        QTest::addColumn<QColor>("color");
        QTest::newRow("off, colour kept") << QByteArray("0,#ff0000") << 0 << QColor(255, 0, 0);
        QTest::newRow("on") << QByteArray("3,#ff0000") << 3 << QColor(255, 0, 0);
        QTest::newRow("blanks") << QByteArray(" 3 , #ff0000 ") << 3 << QColor(255, 0, 0);
        QTest::newRow("negative") << QByteArray("-1,#ff0000") << -1 << QColor(255, 0, 0);
        QTest::newRow("no number") << QByteArray("x,#ff0000") << 0 << QColor(255, 0, 0);
        QTest::newRow("fraction") << QByteArray("1.5,#ff0000") << 0 << QColor(255, 0, 0);
        QTest::newRow("too large") << QByteArray("9999999999,#ff0000") << 0 << QColor(255, 0, 0);
        QTest::newRow("empty index") << QByteArray(",#ff0000") << 0 << QColor(255, 0, 0);
        QTest::newRow("empty colour") << QByteArray("2,") << 2 << QColor();
        QTest::newRow("index only") << QByteArray("2") << 2 << QColor();
        QTest::newRow("empty part between") << QByteArray("2,,#ff0000") << 2 << QColor();
        QTest::newRow("further parts") << QByteArray("2,#ff0000,3,4") << 2 << QColor(255, 0, 0);
        QTest::newRow("colour only") << QByteArray("#ff0000") << 0 << QColor();
    }

    void aFillIsOnUnlessItsIndexIsZero()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, index);
        QFETCH(QColor, color);
        const TemplateCurveInfo left = curveWith(5, text);
        QCOMPARE(left.isLeftFillOn, index != 0);
        QCOMPARE(left.leftFillIndex, index);
        QCOMPARE(left.leftFillColor, color);
        QVERIFY(!left.isRightFillOn);
        const TemplateCurveInfo right = curveWith(6, text);
        QCOMPARE(right.isRightFillOn, index != 0);
        QCOMPARE(right.rightFillIndex, index);
        QCOMPARE(right.rightFillColor, color);
        QVERIFY(!right.isLeftFillOn);
    }

    void fiveLineTypesAndWidthsAndTheDefaultForTheRest_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("pen");
        for (int i = 0; i < 5; ++i)
            QTest::newRow(qPrintable(QString::number(i))) << QByteArray::number(i) << i << i + 1;
        QTest::newRow("5") << QByteArray("5") << 5 << 1;
        QTest::newRow("-1") << QByteArray("-1") << -1 << 1;
        QTest::newRow("2147483647") << QByteArray("2147483647") << 2147483647 << 1;
        QTest::newRow("word") << QByteArray("dash") << 0 << 1;
    }

    void fiveLineTypesAndWidthsAndTheDefaultForTheRest()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, index);
        QFETCH(int, pen);
        QCOMPARE(curveWith(9, text).lineTypeIndex, index);
        QCOMPARE(curveWith(9, text).penStyle, pen);
        QCOMPARE(curveWith(10, text).lineWidthIndex, index);
        QCOMPARE(curveWith(10, text).penWidth, pen);
    }

    void calibrationPointsAreShownUnlessTheFieldIsZero()
    {
        QVERIFY(!curveWith(11, "0").isCalibrationShown);
        QVERIFY(!curveWith(11, " 0 ").isCalibrationShown);
        for (const char *text : {"1", "00", "false", "0.0", " "})
            QVERIFY2(curveWith(11, text).isCalibrationShown, text);
    }

    void onlyCircleIsACircle()
    {
        QCOMPARE(curveWith(14, "Circle").pointShape, 1);
        QCOMPARE(curveWith(14, " Circle\t").pointShape, 1);
        for (const char *text : {"Rectangle", "circle", "Triangle", "0", " "})
            QCOMPARE(curveWith(14, text).pointShape, 2);
    }

    void textFieldsAreKeptAsTheyAre()
    {
        QCOMPARE(curveWith(0, QString(" Größe \u2126 ").toUtf8()).group, QString("Größe \u2126"));
        QCOMPARE(curveWith(1, "15/9-F-1").curve, QString("15/9-F-1"));
        QCOMPARE(curveWith(7, "Curve_999").leftUpTo, QString("Curve_999"));
        QCOMPARE(curveWith(8, "anything").rightUpTo, QString("anything"));
        QCOMPARE(curveWith(1, QString("\u00A0GR\u2003").toUtf8()).curve, QString("GR"));
    }

    void aWrittenLineReadsSo()
    {
        QCOMPARE(trackBytes("Linear", {row("Gamma", "Default")}), "Linear\n" + fullLine + '\n');
    }

    void everyFieldIsWrittenInItsPlace()
    {
        TemplateCurveRow full = row("Sonic", "DT");
        full.minimum = " 40";
        full.maximum = "text as typed";
        full.color = QColor(0x26, 0x48, 0xef, 0x10);
        full.leftFillIndex = 3;
        full.leftFillColor = QColor(255, 0, 0);
        full.rightFillIndex = 12;
        full.rightFillColor = QColor(0, 255, 1);
        full.leftUpTo = "Left Boundary";
        full.rightUpTo = "Curve_2";
        full.lineTypeIndex = 4;
        full.lineWidthIndex = 3;
        full.isCalibrationShown = true;
        full.pointColor = QColor(0, 0, 255);
        full.pointSize = 10;
        full.pointShape = "Rectangle";
        QCOMPARE(trackBytes("Logrithmic", {row("Gamma", "GR"), full}),
                 "Logrithmic\n" + QByteArray(fullLine).replace("Default", "GR")
                     + "\nSonic | DT |  40 | text as typed | #2648ef|3,#ff0000|12,#00ff01|Left Boundary | Curve_2 | "
                       "4 | 3 | 1 | "
                       "#0000ff | 10 | Rectangle\n");
    }

    void aDepthTrackWritesItsFirstRowOnly()
    {
        const QByteArray line = "Depth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n";
        QCOMPARE(trackBytes("Depth", {row("Depth", "MD")}), "Depth\n" + line);
        QCOMPARE(trackBytes("Depth", {row("Depth", "MD"), row("Gamma", "GR")}), "Depth\n" + line);
        QCOMPARE(line.count('|'), 14);
        QCOMPARE(trackBytes("Depth", {}), QByteArray("Depth\n"));
    }

    void textsThatWouldBreakTheLineAreChanged()
    {
        TemplateCurveRow odd = row("Gam|ma", " G\nR ");
        odd.leftUpTo = "Left\rBoundary";
        odd.pointShape = "Circle\n";
        const QByteArray line = QByteArray(fullLine)
                                    .replace("Gamma", "Gam\xC2\xA6ma")
                                    .replace("Default", " G R ")
                                    .replace("|None |", "|Left Boundary |")
            + ' ';
        QCOMPARE(trackBytes("Linear", {odd}), "Linear\n" + line + '\n');
        for (const QString &name : badbytes::names()) {
            const TrackInfo read = track(trackBytes("Linear", {row(name, name), row("Gamma", "GR")}));
            QCOMPARE(read.curves.size(), 2);
            QCOMPARE(read.curves.at(1).curve, QString("GR"));
            QCOMPARE(track(trackBytes("Depth", {row(name, name)})).curves.size(), 1);
        }
    }

    void aTrackWithoutRowsIsItsTypeLine()
    {
        QCOMPARE(trackBytes("Linear", {}), QByteArray("Linear\n"));
        QCOMPARE(trackBytes("Logrithmic", {}), QByteArray("Logrithmic\n"));
    }

    void whatWasWrittenReadsBack()
    {
        TemplateCurveRow first = row("Größe", "");
        first.minimum = "";
        first.leftFillIndex = 2;
        first.lineTypeIndex = 4;
        first.leftUpTo = "";
        const TrackInfo read = track(trackBytes("Linear", {first, row("", "B")}));
        QCOMPARE(read.curves.size(), 2);
        QCOMPARE(read.curves.at(0).group, QString("Größe"));
        QCOMPARE(read.curves.at(0).curve, QString());
        QCOMPARE(read.curves.at(0).minimum, 0.0);
        QCOMPARE(read.curves.at(0).maximum, 200.0);
        QVERIFY(read.curves.at(0).isLeftFillOn);
        QCOMPARE(read.curves.at(0).penStyle, 5);
        QCOMPARE(read.curves.at(0).leftUpTo, QString());
        QCOMPARE(read.curves.at(0).rightUpTo, QString("None"));
        QCOMPARE(read.curves.at(1).group, QString());
        QCOMPARE(read.curves.at(1).curve, QString("B"));
        QCOMPARE(read.curves.at(1).pointShape, 1);
    }

    void allLineEndsAndEncodingsAreRead()
    {
        const QByteArray latin1 = QByteArray(fullLine).replace("Gamma",
                                                               "Gr\xF6\xDF"
                                                               "e");
        for (const QByteArray &bytes :
             {"Linear\r\n" + fullLine + "\r\n" + fullLine, "Linear\r" + fullLine + "\r" + fullLine + "\r",
              "\xEF\xBB\xBFLinear\n" + fullLine + "\n" + fullLine,
              "Linear\n" + fullLine + "\n\n" + fullLine + "\n\n"}) {
            QCOMPARE(track(bytes).type, int(LinearTrack));
            QCOMPARE(track(bytes).curves.size(), 2);
            QCOMPARE(track(bytes).curves.at(1).pointShape, 1);
        }
        QCOMPARE(track("Linear\n" + latin1).curves.value(0).group, QString("Größe"));
    }

    void everyPrefixIsRead()
    {
        const QByteArray whole = "Linear\r\n" + fullLine + "\n"
            + QByteArray(fullLine).replace("Gamma",
                                           "Gr\xC3\xB6"
                                           "e");
        for (int size = 0; size <= whole.size(); ++size) {
            const TrackInfo read = track(whole.left(size));
            QCOMPARE(read.name, QString("Track_1"));
            QVERIFY(read.curves.size() <= 2);
        }
        QCOMPARE(track(whole).curves.size(), 2);
    }

    void badBytesAreRead()
    {
        QVERIFY(track(badbytes::binary(1 << 20)).curves.size() < 100000);
        const TrackInfo many = track("Linear\n" + badbytes::manyFields("7"));
        QCOMPARE(many.curves.size(), 1);
        QCOMPARE(many.curves.first().pointSize, 7);
        QVERIFY(track("Linear\n" + QByteArray(10000, '|')).curves.isEmpty());
    }

    void aHugeFileIsRead()
    {
        const TrackInfo read = track(badbytes::huge("Linear\n" + fullLine + "\n"));
        QCOMPARE(read.type, int(LinearTrack));
        QCOMPARE(read.curves.first().group, QString("Gamma"));
        QCOMPARE(read.curves.size(), 1 + 4);
    }

    void hundredThousandCurvesAreRead()
    {
        QCOMPARE(track("Linear\n" + (fullLine + "\n").repeated(100000)).curves.size(), 100000);
    }

private:
    static void expectDepthCurve(const TemplateCurveInfo &curve)
    {
        QCOMPARE(curve.group, QString("Depth"));
        QCOMPARE(curve.curve, QString("MD"));
        QCOMPARE(curve.minimum, 0.0);
        QCOMPARE(curve.maximum, 0.0);
        QVERIFY(!curve.color.isValid());
        QVERIFY(!curve.isLeftFillOn && !curve.isRightFillOn);
        QCOMPARE(curve.leftFillIndex, 0);
        QVERIFY(!curve.leftFillColor.isValid() && !curve.rightFillColor.isValid());
        QCOMPARE(curve.leftUpTo, QString("0"));
        QCOMPARE(curve.rightUpTo, QString("0"));
        QCOMPARE(curve.penStyle, 1);
        QCOMPARE(curve.penWidth, 1);
    }
};

QTEST_GUILESS_MAIN(tst_templatetrack)
#include "tst_templatetrack.moc"
