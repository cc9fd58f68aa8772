#include "survey/laswellproposal.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using survey::WellProposal;

class TestLasWellProposal : public QObject
{
    Q_OBJECT

private slots:
    void complete();
    void ownExport();
    void names_data();
    void names();
    void nameSources();
    void promisedLogs();
    void coordinates_data();
    void coordinates();
    void elevations_data();
    void elevations();
    void totalDepths_data();
    void totalDepths();
    void feet();
    void notes_data();
    void notes();
    void emptyHeader();
    void realFiles_data();
    void realFiles();

private:
    /// The proposal for a header read from \a bytes in a file "My.Well.las"; " / " stands for a line end.
    WellProposal propose(QByteArray bytes) const
    {
        bytes.replace(" / ", "\n");
        const QString path = m_folder.filePath(QStringLiteral("My.Well.las"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        file.close();
        return survey::proposeWell(path, las::readHeader(path).header);
    }

    QTemporaryDir m_folder;
};

void TestLasWellProposal::complete()
{
    const WellProposal proposal =
        propose("~W\nSTRT.M 10 :\nSTOP.M 2000 :\nNULL. -999.25 :\nWELL. 15/9-F-1 : WELL\nUWI. 77 :\nX.M 500100.5 :\n"
                "Y.M 6000200.25 :\n~P\nEKB.M 25 :\nEGL.M -80 :\nTDD.M 2100 :\n");
    QVERIFY(proposal.file.endsWith(QLatin1String("My.Well.las")));
    QCOMPARE(proposal.name, QStringLiteral("15/9-F-1"));
    QCOMPARE(proposal.x, 500100.5);
    QCOMPARE(proposal.y, 6000200.25);
    QCOMPARE(proposal.kbM, 25.0);
    QCOMPARE(proposal.groundM, -80.0);
    QCOMPARE(proposal.totalDepthM, 2100.0);
    QCOMPARE(proposal.notes, QStringList());
}

void TestLasWellProposal::ownExport()
{
    const WellProposal proposal =
        propose("~Version Information Section\nVERS.            2.0                             :CWLS\n"
                "~Well Information Section\nSTRT.M           1000                            :START DEPTH\n"
                "STOP.M           1200                            :STOP DEPTH\n"
                "NULL.            -999.25                         :NULL VALUE\n"
                "WELL.            Well A 1                        :WELL\n"
                "LOC.             502500.00 , 6003000.00          :LOCATION\n"
                "LMF.             31.5                            :LOG MEASURED FROM (KB)\n"
                "UWI.             Well A 1                        :UNIQUE WELL ID\n~Curve Information Section\n");
    QCOMPARE(proposal.name, QStringLiteral("Well A 1"));
    QCOMPARE(proposal.x, 502500.0);
    QCOMPARE(proposal.y, 6003000.0);
    QCOMPARE(proposal.kbM, 31.5);
    QCOMPARE(proposal.totalDepthM, 1200.0);
}

void TestLasWellProposal::names_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *lines, const char *name) {
        QTest::newRow(lines) << QByteArray(lines) << QString::fromLatin1(name);
    };
    row("WELL.   A   1 : WELL", "A 1");
    row("WELL. : WELL / UWI. 100/01 : UWI", "100/01");
    row("WELL. -999.25 : WELL / UWI. 7 : UWI", "7");
    row("WELL. 23 : WELL", "23");
    row("WELL. 0 : WELL / NULL. 0 :", "0");
    row("WELL. n/a : WELL / UWI. unknown : UWI", "My.Well");
    row("Well_Name. M-14 : x", "M-14");
    row("COMP. x :", "My.Well");
}

void TestLasWellProposal::names()
{
    QFETCH(QByteArray, lines);
    QTEST(propose("~W\n" + lines + "\n").name, "name");
}

void TestLasWellProposal::nameSources()
{
    using survey::NameSource;
    const auto names = [this](const char *lines) {
        const WellProposal proposal = propose("~W\n" + QByteArray(lines) + "\n");
        QStringList texts;
        for (const NameSource source : {NameSource::Well, NameSource::Uwi, NameSource::File})
            texts.append(survey::nameFrom(proposal, source) + u'|' + survey::nameNote(proposal, source));
        return texts;
    };
    QCOMPARE(names("WELL. A : / UWI. 5 :"), (QStringList{"A|", "5|", "My.Well|"}));
    QCOMPARE(names("WELL. A :"),
             (QStringList{"A|", "A|There is no unique well id; the well name is used.", "My.Well|"}));
    QCOMPARE(names("API. 42 :"),
             (QStringList{"42|There is no well name; the unique well id is used.", "42|", "My.Well|"}));
    QCOMPARE(names("COMP. x :"),
             (QStringList{"My.Well|There is no well name; the file's name is used.",
                          "My.Well|There is no unique well id; the file's name is used.", "My.Well|"}));
}

void TestLasWellProposal::promisedLogs()
{
    QCOMPARE(propose("~W\nWELL. A :\n~C\nDEPT.M :\nGR. :\nRT. :\n~A\n").logs, (QStringList{"GR", "RT"}));
}

void TestLasWellProposal::coordinates_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    const auto row = [](const char *lines, double x, double y) {
        QTest::newRow(lines) << QByteArray(lines) << x << y;
    };
    row("X. 100 : / Y. 200 :", 100, 200);
    row("XCOORD.M 100 : / YCOORD.m 200 :", 100, 200);
    row("Easting. 100 : / Northing. 200 :", 100, 200);
    row("X. 0560160 : / Y. 6686430 :", 560160, 6686430);
    row("X.FT 100 : / Y.ft 200 :", 30.48, 60.96);
    row("X. 100 m : / Y. 200 m :", 100, 200);
    row("LOC. 502500.00 , 6003000.00 :LOCATION", 502500, 6003000);
    row("LOC. X=502500 Y=6003000 :LOCATION", 502500, 6003000);
    row("LOC. x: 502500.5, y: -3 :LOCATION", 502500.5, -3);
    row("LOC. 502500 6003000 :", 502500, 6003000);
    row("X. 1 : / Y. : / LOC. 5 , 6 :", 5, 6);
    // No coordinates.
    row("X. 100 :", 0, 0);
    row("X. -999.25 : / Y. 200 :", 0, 0);
    row("X. east : / Y. north :", 0, 0);
    row("X.DEG 5 : / Y.DEG 6 :", 0, 0);
    row("LATI.DEG 38.4 : / LONG.DEG -96.5 :", 0, 0);
    for (const char *location : {"12-34-12-34W5M", "A9-16-49-20W3M", "00/07-36-067-03W4/0", "5S-13E-17", "SECTION 17",
                                 "600' FNL & 330' FWL", "T31S R1W, Sec. 32", "-999.25 , -999.25", "12"})
        row(QByteArray("LOC. " + QByteArray(location) + " : LOCATION").constData(), 0, 0);
}

void TestLasWellProposal::coordinates()
{
    QFETCH(QByteArray, lines);
    QFETCH(double, x);
    QFETCH(double, y);
    const WellProposal proposal = propose("~W\nWELL. A :\n" + lines + "\n");
    QCOMPARE(proposal.x, x);
    QCOMPARE(proposal.y, y);
    QCOMPARE(proposal.notes.join(u' ').contains(QStringLiteral("X and Y are 0")), x == 0 && y == 0);
}

void TestLasWellProposal::elevations_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<double>("kb");
    QTest::addColumn<double>("ground");
    const auto row = [](const char *lines, double kb, double ground) {
        QTest::newRow(lines) << QByteArray(lines) << kb << ground;
    };
    row("KB.M 20 : / GL.M 10 :", 20, 10);
    row("EKB.M 20 : / EREF.M 30 : / EGL.M 10 :", 20, 10);
    row("EREF.M 30 : / GL.M 10 :", 30, 10);
    row("EREF.M 30 : / DREF. KB :", 30, 0);
    row("EREF.M 30 : / DREF. GL :", 0, 0);
    row("LMF. KB : / EREF.M 30 :", 30, 0);
    row("LMF. 33 : (KB)", 33, 0);
    row("ELEV.M 40 :", 40, 0);
    row("EDF.M 41 :", 41, 0);
    row("EKB.F 100 : / EGL.FEET 50 :", 30.48, 15.24);
    row("EKB.M -15240.006 : / EDF.M 35.8 : / EGL.M -15.3 :", 35.8, -15.3);
    row("EKB.ft 0 : / EGL.ft 1000 : / EDF.ft 1020 :", 310.896, 304.8);
    row("EKB.M -999.25 : / KB.M 5 :", 5, 0);
    row("EKB.M unknown : / EKB.M 6 :", 6, 0);
    row("EKB.C3 20 :", 0, 0);
    // Without a unit: that of the index.
    row("STRT.FT 0 : / EKB. 100 :", 30.48, 0);
    row("STRT.M 0 : / EKB. 100 :", 100, 0);
    row("STRT.M 0 : / EKB. 100 ft :", 30.48, 0);
}

void TestLasWellProposal::elevations()
{
    QFETCH(QByteArray, lines);
    const WellProposal proposal = propose("~W\nNULL. -999.25 :\n" + lines + "\n");
    QTEST(proposal.kbM, "kb");
    QTEST(proposal.groundM, "ground");
}

void TestLasWellProposal::totalDepths_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<double>("depth");
    const auto row = [](const char *lines, double depth) { QTest::newRow(lines) << QByteArray(lines) << depth; };
    row("STRT.M 10 : / STOP.M 200 :", 200);
    row("STRT.M 200 : / STOP.M 10 :", 200);
    row("STRT.F 100 : / STOP.F 1000 :", 304.8);
    row("STOP.F 1000 : / TD.M 300 :", 304.8);
    row("STOP.F 1000 : / TD.M 310 :", 310);
    row("STOP.M 100 : / TDD. 136 m :", 136);
    row("STOP.M -999.25 : / TDD.M 136 :", 136);
    row("STRT.S 0 : / STOP.S 3600 :", 0);
    row("STRT. 01-JAN-2020 00:00:00 : / STOP. 01-JAN-2020 00:00:01 :", 0);
    row("STOP.M 99999999 :", 0);
    row("STOP.M -5 :", 0);
}

void TestLasWellProposal::totalDepths()
{
    QFETCH(QByteArray, lines);
    QTEST(propose("~W\n" + lines + "\n").totalDepthM, "depth");
}

void TestLasWellProposal::feet()
{
    for (const char *unit : {"F", "f", "FT", "ft", "Feet", "FEET", "Ft."}) {
        const WellProposal proposal = propose(QByteArray("~W\nSTOP.") + unit + " 100 :\n");
        QCOMPARE(proposal.totalDepthM, 30.48);
        QVERIFY(proposal.notes.contains(QStringLiteral("Converted from feet: STOP.")));
    }
    for (const char *unit : {"M", "m", "METERS", "Metres", "\xD0\x9C", "\xD0\xBC"})
        QCOMPARE(propose(QByteArray("~W\nSTOP.") + unit + " 100 :\n").totalDepthM, 100.0);
}

void TestLasWellProposal::notes_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("part");
    const auto row = [](const char *lines, const char *part) {
        QTest::newRow(lines) << QByteArray(lines) << QString::fromLatin1(part);
    };
    row("WELL. A :", "no map coordinates");
    row("LAT. 5 :", "has latitude and longitude but no map coordinates");
    row("WELL. A :", "no elevation of the kelly bushing");
    row("WELL. A :", "no ground elevation");
    row("WELL. A :", "no total depth");
    row("EDF.M 5 :", "that of the derrick floor");
    row("EKB.M 5 : / EGL.M 10 :", "below the ground");
    row("EKB.F 12 : / EPD.F 1391 :", "permanent datum");
    row("STOP.S 5 :", "STOP is left out: its unit \"S\"");
    row("EKB.M 99999.5 :", "EKB is left out");
}

void TestLasWellProposal::notes()
{
    QFETCH(QByteArray, lines);
    QFETCH(QString, part);
    const QStringList sentences = propose("~W\n" + lines + "\n").notes;
    const QString notes = sentences.join(u'\n');
    QVERIFY2(notes.contains(part), qPrintable(notes));
    for (const QString &sentence : sentences)
        QVERIFY2(sentence.endsWith(u'.'), qPrintable(sentence));
}

void TestLasWellProposal::emptyHeader()
{
    const WellProposal proposal = survey::proposeWell(QStringLiteral("/a/b.c.las"), las::Header());
    QCOMPARE(proposal.name, QStringLiteral("b.c"));
    QCOMPARE(proposal.notes.size(), 4);
    QVERIFY(survey::proposeWell(QString(), las::Header()).name.isEmpty());
}

void TestLasWellProposal::realFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
#ifdef LORVA_SHARED_DIR
    const bool isThere = QDir(QStringLiteral(LORVA_SHARED_DIR "/las")).exists();
#else
    const bool isThere = false;
#endif
    if (!isThere)
        QSKIP("the folder with real LAS files is not there");
    const auto row = [](const char *file, const char *expected) {
        QTest::newRow(file) << QString::fromLatin1(file) << QString::fromUtf8(expected);
    };
    // Name, X, Y, KB, ground, total depth; metres.
    row("00-07-36-067-03W4-0.LAS", "07-36-067-03W4 | 0.0 0.0 | 704.3 701.1 | 622.0");
    row("1001178549.las", "1-28 | 0.0 0.0 | 978.4 972.3 | 543.9");
    row("100_LAS1.las", "100 | 229503.0 240117.0 | 137.7 0.0 | 3283.0");
    row("1044815255.las",
        "Burhoop Trust # 1 | 0.0 0.0 | 3.7 0.0 | 780.3"); // noted: above the permanent datum
    row("1475IBK3.las", "1475 | 0.0 0.0 | 0.0 0.0 | 410.4");
    row("15-9-19_SR_COMP.LAS", "15/9-19 | 0.0 0.0 | 0.0 0.0 | 4636.5");
    row("1609901672340.las", "M-14-001P | 0.0 0.0 | 0.0 299.9 | 33.5");
    row("260341080252801.19980915.NN.las", "HOLE 5 | 0.0 0.0 | 0.0 0.0 | 25.8");
    row("42303347740000.las", "UNIVERSITY 6-17 NO.1 | 0.0 0.0 | 808.9 808.6 | 2776.7");
    row("6038187_v1.2.las", "Scorpio E1 | 560160.0 6686430.0 | 0.0 0.0 | 136.6");
    row("DILLSON-1_WELL_LOGS_FILE-037.LIS_0.las",
        "DILLSON-1_WELL_LOGS_FILE-037.LIS_0 | 0.0 0.0 | 35.8 -15.3 | 1612.2");
    row("F03-02.las", "F/3-2 | 0.0 0.0 | 0.0 0.0 | 2153.9");
    row("P-135_out.LAS", "Eastrock Lauren #1 | 0.0 0.0 | 123.0 119.0 | 951.9");
    row("Shamar-1-iso-8859-15.las", "Shámarça 1 | 244102.8 4388921.0 | 397.2 394.4 | 1168.0");
    row("Wellington_KGS-1-32-wDST2_LASv3.las", "Wellington KGS 1-32 | 638021.2 4130800.0 | 387.7 0.0 | 1600.8");
    row("data_characters.las", "data_characters | 0.0 0.0 | 0.0 0.0 | 0.0");
    row("encodings_utf16lebom.las", "ANY ET AL OIL WELL #12 | 0.0 0.0 | 0.0 0.0 | 1670.0");
    row("ex4_1044782786.las", "Schrock 3510 12-1SWD | 621863.9 38403.0 | 404.5 397.8 | 1700.8");
    row("missing_a_section.las", "missing_a_section | 0.0 0.0 | 0.0 0.0 | 0.0");
    row("sample_2.0_based.las", "ANY ET 12-34-12-34 | 0.0 0.0 | 0.0 0.0 | 0.0");
}

void TestLasWellProposal::realFiles()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
#ifdef LORVA_SHARED_DIR
    const QString path = QStringLiteral(LORVA_SHARED_DIR "/las/") + name;
    const las::HeaderResult header = las::readHeader(path);
    QVERIFY2(header.error.isEmpty(), qPrintable(header.error));
    const WellProposal p = survey::proposeWell(path, header.header);
    const auto text = [](double value) { return QString::number(value, 'f', 1); };
    QCOMPARE(QStringLiteral("%1 | %2 %3 | %4 %5 | %6")
                 .arg(p.name, text(p.x), text(p.y), text(p.kbM), text(p.groundM), text(p.totalDepthM)),
             expected);
#endif
}

QTEST_APPLESS_MAIN(TestLasWellProposal)
#include "tst_laswellproposal.moc"
