// The curve table of a track as plain data: what is read of a track file is given back, and references between the
// curves of a track hold.

#include "datastore/projectseeds.h"
#include "support/files.h"
#include "templates/curverows.h"
#include "templates/filllimit.h"
#include "templates/templatestore.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

CurveRows rowsOf(const QByteArray &file)
{
    return CurveRows(parseTrack(file, QStringLiteral("Track_1")));
}

// Curves whose fills go up to these limits on the left.
CurveRows filledUpTo(const QStringList &limits)
{
    TrackInfo track;
    track.type = LinearTrack;
    for (const QString &limit : limits) {
        TemplateCurveInfo curve;
        curve.group = QStringLiteral("Gamma");
        curve.curve = QString(QLatin1Char(static_cast<char>('A' + track.curves.size())));
        curve.leftUpTo = limit;
        curve.rightUpTo = QStringLiteral("None");
        track.curves.append(curve);
    }
    return CurveRows(track);
}

QStringList leftLimits(const CurveRows &rows)
{
    QStringList limits;
    for (int i = 0; i < rows.size(); ++i)
        limits.append(rows.at(i).leftUpTo);
    return limits;
}

QString curves(const CurveRows &rows)
{
    QString names;
    for (int i = 0; i < rows.size(); ++i)
        names += rows.at(i).curve;
    return names;
}

} // namespace

class tst_curverows : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreWrittenAsTheyWereRead_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("written");
        const auto row = [](const char *stored, const char *shown, const char *written) {
            QTest::newRow(stored) << QByteArray(stored) << QString(shown) << QString(written);
        };
        row("0", "0.00", "0.00");
        row("40", "40.00", "40.00");
        row("0.6", "0.60", "0.60");
        row("-100.00", "-100.00", "-100.00");
        row("0.125", "0.13", "0.125"); // not 0.13
        row("0.0001", "0.00", "0.0001");
        row("1.23456789", "1.23", "1.23456789");
        row("123456.75", "123456.75", "123456.75");
        row("12345.678", "12345.68", "12345.678");
        row("-100.0002", "-100.00", "-100.0002"); // written as -100, it would be -100.00 the next time
        row("1234567.125", "1234567.13", "1234567.125");
        row("1e300", "1e+300", "1e+300");
        row("none", "0.00", "0.00");
    }

    void valuesAreWrittenAsTheyWereRead()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, written);
        QFETCH(QString, shown);
        const QByteArray file = "Linear\nGamma | GR | " + stored + " | " + stored
            + " | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1\n";
        const CurveRows rows = rowsOf(file);
        QCOMPARE(rows.at(0).minimum, written);
        QCOMPARE(rows.at(0).maximum, written);
        QCOMPARE(rows.at(0).shownMinimum, shown);
        QCOMPARE(rows.at(0).shownMaximum, shown);
        QVERIFY(rows.bytes().contains("GR | " + written.toLatin1() + " | " + written.toLatin1() + " | #"));
        QVERIFY(!rows.problem());
    }

    void everyFieldGoesThereAndBack()
    {
        const QByteArray file =
            "Linear\n"
            "Gamma | GR | 0.00 | 150.00 | #0e6f21|3,#ff0000|0,#00ff00|Left Boundary | Curve_2 | 2 "
            "| 4 | 1 | #0000ff | 7 | Rectangle\n"
            "Sp | Default | -100.00 | 100.00 | #120202|0,#ffffff|16,#ffffff|None | Right Boundary "
            "| 0 | 0 | 0 | #000000 | 1 | Circle\n";
        QCOMPARE(rowsOf(file).bytes(), file);
        const TrackInfo read = parseTrack(file, QStringLiteral("Track_1"));
        QVERIFY(rowsOf(file).track(QStringLiteral("Track_1")) == read);
        QCOMPARE(rowsOf(file).track(QStringLiteral("Track_9")).name, QString("Track_9"));
    }

    void aDepthTrackGoesThereAndBack()
    {
        const CurveRows rows = rowsOf("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0");
        QVERIFY(rows.isDepth());
        QCOMPARE(rows.bytes(),
                 QByteArray("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n"));
        QCOMPARE(rowsOf("Depth\n").bytes(), QByteArray("Depth\n"));
        QCOMPARE(rowsOf("Logrithmic\n").bytes(), QByteArray("Logrithmic\n"));
    }

    void seedTemplatesBecomeTheWritersForm()
    {
        const QTemporaryDir folder;
        for (const char *name : {"CurveGroups", "Templates/Global"})
            QVERIFY(QDir().mkpath(folder.filePath(name)));
        seedProject(folder.path());
        QVector<QByteArray> written;
        for (int track = 1; track <= 4; ++track)
            written.append(rowsOf(files::read(folder.filePath(
                                      QStringLiteral("Templates/Global/Default/Track_%1.txt").arg(track))))
                               .bytes());
        const QByteArray tail = " | 0 | #000000 | 1 | Circle\n";
        const QByteArray noFill = "|0,#ffffff|0,#ffffff|None | None | ";
        QCOMPARE(written.at(0),
                 "Linear\nGamma | Default | 0.00 | 200.00 | #0e6f21" + noFill + "0 | 1" + tail
                     + "Sp | Default | -100.00 | 100.00 | #120202" + noFill + "0 | 1" + tail
                     + "Caliper | Default | 6.00 | 16.00 | #120202" + noFill + "1 | 1" + tail);
        QCOMPARE(written.at(1),
                 QByteArray("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n"));
        QCOMPARE(written.at(2),
                 "Logrithmic\nResistivity | Default | 0.10 | 2000.00 | #d01212" + noFill + "0 | 1" + tail
                     + "Resistivity | LLS | 0.10 | 2000.00 | #4046fa" + noFill + "1 | 1" + tail
                     + "Resistivity | MSFL | 0.10 | 2000.00 | #1d0f0f" + noFill + "0 | 1" + tail);
        QCOMPARE(written.at(3),
                 "Linear\nDensity | Default | 1.80 | 2.80 | #d21414" + noFill + "0 | 1" + tail
                     + "Porosity | Default | 0.60 | 0.00 | #2648ef" + noFill + "1 | 1" + tail
                     + "Sonic | Default | 40.00 | 240.00 | #2648ef" + noFill + "0 | 1" + tail);
    }

    void whatNoEditorCanShowBecomesWhatADisplayDraws()
    {
        const CurveRows rows = rowsOf("Linear\nGamma | GR | 0 | 1 | nonsense|99,none|x,|Curve_9 | Up | 9 | -1 | 1 | "
                                      "no | 99 | Star\n");
        QCOMPARE(
            rows.bytes(),
            QByteArray("Linear\nGamma | GR | 0.00 | 1.00 | #000000|99,#ffffff|0,#ffffff|Curve_9 | Up | 0 | 0 | 1 "
                       "| #000000 | 10 | Rectangle\n"));
        QCOMPARE(rowsOf("Linear\nG | C | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 1 | #000000 | -3 "
                        "| Circle\n")
                     .at(0)
                     .pointSize,
                 1);
    }

    void aNewRowHasTheDefaults()
    {
        CurveRows rows;
        CurveRow row = CurveRow::added(LinearTrack);
        QVERIFY(!row.hasOwnValues);
        row.setMinimum(QStringLiteral(" 1 "));
        row.setMaximum(QStringLiteral("2.50"));
        rows.append(row);
        QCOMPARE(rows.bytes(),
                 QByteArray("Linear\nNone | Default | 1 | 2.50 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 "
                            "| #000000 | 1 | Rectangle\n"));
        QCOMPARE(CurveRow::added(DepthTrack).group, QString("Depth"));
        QCOMPARE(CurveRow::added(DepthTrack).curve, QString("Default"));
    }

    void valuesThatAreNoNumbersAreFound_data()
    {
        QTest::addColumn<QString>("minimum");
        QTest::addColumn<QString>("maximum");
        QTest::addColumn<QString>("problem");
        QTest::newRow("good") << "0"
                              << "-1.5e3" << QString();
        QTest::newRow("equal") << "1"
                               << "1" << QString();
        QTest::newRow("no left") << ""
                                 << "1"
                                 << "row 2: the left value is empty.";
        QTest::newRow("no right") << "1"
                                  << " "
                                  << "row 2: the right value is empty.";
        QTest::newRow("comma") << "0,5"
                               << "1"
                               << "row 2: the left value is no number: \"0,5\".";
        QTest::newRow("text") << "1"
                              << "abc"
                              << "row 2: the right value is no number: \"abc\".";
        QTest::newRow("too large") << "1e400"
                                   << "1"
                                   << "row 2: the left value is no number: \"1e400\".";
        QTest::newRow("nan") << "nan"
                             << "1"
                             << "row 2: the left value is no number: \"nan\".";
    }

    void valuesThatAreNoNumbersAreFound()
    {
        QFETCH(QString, minimum);
        QFETCH(QString, maximum);
        QFETCH(QString, problem);
        CurveRows rows = filledUpTo({"None", "None"});
        CurveRow row = rows.at(1);
        row.setMinimum(minimum);
        row.setMaximum(maximum);
        rows.replace(1, row);
        const auto found = rows.problem();
        QCOMPARE(found ? found->text : QString(), problem);
        if (found) {
            QCOMPARE(found->row, 1);
            QCOMPARE(found->isMaximum, problem.contains("right"));
        }
        rows.setType(DepthTrack); // its values are not written
        QVERIFY(!rows.problem());
        QVERIFY(rows.bytes().startsWith("Depth\nDepth | Default | 0 | 0 | "));
    }

    void removingARowKeepsNumbers()
    {
        CurveRows rows = filledUpTo({"Curve_3", "Curve_2", "Left Boundary", "Curve_1", "Curve_4"});
        rows.remove(1);
        QCOMPARE(curves(rows), QString("ACDE"));
        QCOMPARE(leftLimits(rows), QStringList({"Curve_3", "Left Boundary", "Curve_1", "Curve_4"}));
        rows.remove(0);
        QCOMPARE(leftLimits(rows), QStringList({"Left Boundary", "Curve_1", "None"}));
        rows.remove(2);
        rows.remove(0);
        rows.remove(0);
        QCOMPARE(rows.size(), 0);
    }

    void limitsThatAreNoneStay()
    {
        CurveRows rows = filledUpTo({"Curve_9", "Right Boundary", "Curve_0", "Curve_x", ""});
        rows.remove(4);
        rows.move(0, 1);
        QCOMPARE(leftLimits(rows), QStringList({"Right Boundary", "Curve_9", "Curve_0", "Curve_x"}));
    }

    void fillsFollowAMovedCurve()
    {
        CurveRows rows = filledUpTo({"Curve_2", "Curve_3", "Curve_4", "Curve_1", "None"});
        rows.move(0, 2);
        QCOMPARE(curves(rows), QString("BCADE"));
        QCOMPARE(leftLimits(rows), QStringList({"Curve_2", "Curve_4", "Curve_1", "Curve_3", "None"}));
        rows.move(2, 0);
        QCOMPARE(curves(rows), QString("ABCDE"));
        QCOMPARE(leftLimits(rows), QStringList({"Curve_2", "Curve_3", "Curve_4", "Curve_1", "None"}));
    }

    void aDepthTrackNamesTheDepthAndForgetsNothing()
    {
        CurveRows rows = filledUpTo({"None"});
        const QByteArray before = rows.bytes();
        rows.setType(DepthTrack);
        QCOMPARE(rows.at(0).group, QString("Depth"));
        QCOMPARE(rows.at(0).curve, QString("Default"));
        rows.setType(DepthTrack);
        rows.setType(LinearTrack);
        QCOMPARE(rows.bytes(), before);
        rows.setType(LogarithmicTrack);
        QCOMPARE(rows.bytes(), "Logrithmic\n" + before.mid(7));
        CurveRows depth = rowsOf("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n");
        depth.setType(LinearTrack);
        QCOMPARE(depth.at(0).curve, QString("MD"));
    }

    // The zeros of its line stand for nothing.
    void aStoredDepthTrackBecomesAnotherWithTheDefaults()
    {
        CurveRows rows = rowsOf("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n"
                                "Depth | TVD | 0.125 | 7 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n");
        QCOMPARE(rows.at(1).shownMinimum, QString("0.13"));
        QCOMPARE(rows.at(1).shownMaximum, QString("7.00"));
        rows.setType(LinearTrack);
        const QByteArray defaults =
            " | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | #000000 | 1 | Rectangle\n";
        QCOMPARE(rows.bytes(),
                 "Linear\nDepth | MD | 0.00 | 0.00" + defaults + "Depth | TVD | 0.125 | 7.00" + defaults);
        QVERIFY(rows.at(0).hasOwnValues);
    }

    void limitsByIndex()
    {
        const QString left = filllimit::leftBoundary();
        QStringList texts;
        for (int i = 0; i < 4; ++i)
            texts.append(filllimit::text(i, left));
        QCOMPARE(texts, QStringList({"None", "Left Boundary", "Curve_1", "Curve_2"}));
        for (int i = 0; i < 4; ++i)
            QCOMPARE(filllimit::index(texts.at(i), left, 2), i);
        QCOMPARE(filllimit::index("Curve_3", left, 2), -1);
        QCOMPARE(filllimit::index("Right Boundary", left, 2), -1);
        QCOMPARE(filllimit::index("Right Boundary", filllimit::rightBoundary(), 2), 1);
        QCOMPARE(filllimit::index("Curve_", left, 2), -1);
    }

    void differencesOfEveryFieldCount()
    {
        const TemplateCurveInfo plain;
        QVERIFY(plain == TemplateCurveInfo());
        QVector<TemplateCurveInfo> others(22);
        others[0].group = others[1].curve = others[2].leftUpTo = others[3].rightUpTo = QStringLiteral("x");
        others[4].color = others[5].leftFillColor = others[6].rightFillColor = others[7].pointColor = Qt::red;
        others[8].minimum = others[9].maximum = 1;
        others[10].isLeftFillOn = others[11].isRightFillOn = others[12].isCalibrationShown = true;
        others[13].leftFillIndex = others[14].rightFillIndex = others[15].lineTypeIndex = 7;
        others[16].lineWidthIndex = others[17].penStyle = others[18].penWidth = 7;
        others[19].pointSize = others[20].pointShape = 7;
        others.removeLast();
        for (int i = 0; i < others.size(); ++i)
            QVERIFY2(!(others.at(i) == plain), qPrintable(QString::number(i)));
        TrackInfo a;
        TrackInfo b;
        b.name = QStringLiteral("other");
        QVERIFY(a == b);
        b.type = LinearTrack;
        QVERIFY(!(a == b));
        b = a;
        b.curves.append(plain);
        QVERIFY(!(a == b));
    }
};

QTEST_GUILESS_MAIN(tst_curverows)
#include "tst_curverows.moc"
