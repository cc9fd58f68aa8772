#include "las/importnotices.h"
#include "tests/las/wellinfofixture.h"

#include <QDir>

namespace {

const QByteArray version2 = "~Version\nVERS. 2.0 :\nWRAP. NO :\n";
const QByteArray well = "~Well\nSTRT.M 1 :\nSTOP.M 2 :\nNULL. -999.25 :\n";
const QByteArray curves = "~Curve\nDEPT.M :\nGR.gapi :\nRT.ohmm :\n";
const QByteArray rows = "1 10 100\n2 20 200\n";

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

/// What the import tells of a file before anything of it is imported.
class TestImportNotices : public QObject
{
    Q_OBJECT

private slots:
    void usualFiles_data();
    void usualFiles();
    void commasInTheFileName();
    void unusualFiles_data();
    void unusualFiles();
    void gravestFirst();
    void tooLarge();
    void listedCurves();
    void realFiles();

private:
    LasFixture m_fixture;
};

void TestImportNotices::usualFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *name, const QByteArray &bytes) { QTest::newRow(name) << bytes; };
    const QByteArray header = version2 + well + curves;
    row("empty", {});
    row("plain", header + "~A\n" + rows);
    row("without data", header);
    row("without rows", header + "~A\n");
    row("version without colon", "~V\nVERS. 2.0\nWRAP. NO\n" + well + curves + "~A\n" + rows);
    row("version 1.2", "~V\nVERS. 1.2 :\n" + well + curves + "~A\n" + rows);
    row("words in the title", header + "~ASCII Log Data Section\n" + rows);
    row("one word in the title", header + "~Ascii DEPTH\n" + rows);
    row("names in the title", header + "~A  DEPT   GR     RT\n" + rows);
    row("another name of the depth in the title", header + "~A\tDepth, gr, Rt \r\n" + rows);
    row("units in the title", header + "~A DEPT[M] GR.gapi RT[ohmm]\n" + rows);
    row("names with blanks", version2 + well + "~C\nDEPT.M :\nGR EDTC.gapi :\n~A DEPTH GR EDTC\n1 2\n");
    row("punctuation of names",
        version2 + well + "~C\nDEPT.M :\nBHR vel.m :\nRES_16N.ohmm :\n~A DEPTH BHR_vel RES(16N)\n1 2 3\n");
    row("comments with tabs and commas", header + "#\ta,b\n~A\n# 1,\t2\n" + rows);
    row("tabs in other sections", header + "~Other\n\ta\n~A\n" + rows);
    row("other lower-case section", header + "~p\nX. :\n~A\n" + rows);
    for (const char *depth : {"DEPTH", "depth", "MD", "BDEP", "M_DEPTH", "DPTH", "DMEA", "TVD", "INDEX"}) {
        QByteArray bytes = header + "~A\n" + rows;
        row(depth, bytes.replace("DEPT.", QByteArray(depth) + '.'));
    }
}

void TestImportNotices::usualFiles()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(las::importNotices(m_fixture.load(bytes), 100), QStringList());
}

// Its first line names the file; where there are no rows it is not taken for one.
void TestImportNotices::commasInTheFileName()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(text("a,b;c.las"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(version2 + well + curves + "~A\n");
    file.close();
    WellInfo info;
    QCOMPARE(info.load(path), 0);
    QCOMPARE(las::importNotices(info, 100), QStringList());
}

void TestImportNotices::unusualFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("notice");
    const auto row = [](const char *name, const QByteArray &bytes, const char *notice) {
        QTest::newRow(name) << bytes << text(notice);
    };
    const QByteArray header = version2 + well + curves;

    const char *wrapped =
        "This file is wrapped (WRAP YES): a depth step spans several lines. It is read line by line, so "
        "the values of its curves are wrong. Do not import them.";
    row("wrapped", "~V\nWRAP. YES :\n" + well + curves + "~A\n1\n10 100\n", wrapped);

    const char *sections = "This file has 2 data sections. Each fills only the curves named since the one before.";
    row("two data sections", header + "~A\n" + rows + "~C\nDEPTH.M :\nSP.mV :\n~A\n1 2\n", sections);
    row("two data sections for one curve section", header + "~A\n" + rows + "~A\n1 2 3\n\n# 4\n2 3 4\n",
        "This file has 2 data sections. Each fills only the curves named since the one before. Data lines for which "
        "no "
        "curves are named are left out: 2.");
    row("data before curves", version2 + well + "~A\n1 2\n" + curves,
        "Data lines for which no curves are named are left out: 1.");

    row("time comes first", version2 + well + "~C\nTIME.s :\nGR. :\n~A\n1 2\n",
        "The first curve is no depth by its name: TIME. Its values are taken as the depths all the same.");
    row("no name comes first", version2 + well + "~C\n.s\nGR. :\n~A\n1 2\n",
        "The first curve is no depth by its name: s. Its values are taken as the depths all the same.");

    const auto title = [&row, &header](const char *name, const char *shown) {
        row(name, header + "~A" + name + "\n" + rows,
            QByteArray("The title of the data section names other columns than the curve section (~A"
                       + QByteArray(shown) + "). The curve section counts.")
                .constData());
    };
    title(" DEPTH RT GR", " DEPTH RT GR");
    title(" DEPTH  GR", " DEPTH GR");
    title("SCII gr rt dept", "SCII gr rt dept");
    title(" DEPTH GR RT SP", " DEPTH GR RT SP");
    title(" GR RT", " GR RT");
    title(" DEPTH SP NPHI", " DEPTH SP NPHI");

    const char *uneven =
        "Data lines with more or fewer columns than there are curves: 2 of 4. Columns in excess are left "
        "out; curves without a column have no sample there.";
    row("uneven lines", header + "~A\n" + rows + "3 30\n4 40 400 4000\n", uneven);
    const QByteArray second = "~C\nMD.M :\nSP.mV :\n";
    row("uneven lines in two sections", header + "~A\n1 10\n" + second + "~A\n1 2\n2 3\n3 4 5\n",
        (QByteArray(sections) + '\n' + uneven).constData());

    const char *commas = "Data lines hold commas or semicolons. Only blanks separate columns, and values that are no "
                         "numbers with a decimal point become 0.";
    row("decimal commas", header + "~A\n1,0 10,5 100\n2,0 20 200\n", commas);
    row("semicolons", version2 + well + "~C\nDEPT.M :\n~A\n# a comment\n1;2\n", commas);
    row("comma in the second section", version2 + well + "~C\nDEPT.M :\n~A\n" + second + "~A\n1, 2\n",
        (QByteArray(commas) + '\n' + sections).constData());
    row("tabs between columns", header + "~A\n1\t10\t100\n",
        "Columns are separated by tabs. They count as blanks, so behind an empty column the values go to the wrong "
        "curves.");

    const char *version3 = "This is a file of LAS 3.0. It is read like LAS 2.0: only ~V, ~W, ~C and ~A, and columns "
                           "separated by blanks.";
    row("LAS 3.0", "~V\nVERS. 3.0 :\n" + well + curves + "~A\n" + rows, version3);
    row("LAS 3.0 without colon", "~V\nVERS. 3.0\n" + well + curves + "~A\n" + rows, version3);

    row("lower-case titles", "~v\nVERS. 2.0 :\n~w\nSTRT.F 1 :\n~v\n" + curves + "~A\n" + rows,
        "Section titles in lower case are not recognised; these sections are not read: ~v, ~w.");
    row("lower-case curves and data", version2 + well + "~c\nDEPT.M :\n~a\n1\n",
        "Section titles in lower case are not recognised; these sections are not read: ~c, ~a.");

    row("tabs in the header", version2 + "~W\nSTRT.M\t1 :\n" + curves + "~A\n" + rows,
        "The header holds tabs. They do not end a unit, so units and values behind them may be misread.");

    row("mnemonics twice", version2 + well + "~C\nDEPT.M :\nGR. :\nRT. :\nGR. :\nRT. :\nGR. :\ngr. :\n~A\n",
        "Curve names that stand more than once: GR, RT. Give them alternate names, or the later one replaces the "
        "earlier.");
    QByteArray many = version2 + well + "~C\nDEPT.M :\n";
    for (int i = 0; i < 14; ++i)
        many += 'C' + QByteArray::number(i % 7) + ". :\n";
    row("many mnemonics twice", many,
        "Curve names that stand more than once: C0, C1, C2, C3, C4 and 2 more. Give them alternate names, or the "
        "later "
        "one replaces the earlier.");
    row("no mnemonic twice", version2 + well + "~C\nDEPT.M :\n. :\n. :\n",
        "Curve names that stand more than once: :. Give them alternate names, or the later one replaces the "
        "earlier.");

    for (const char *unit : {"F", "ft", "FEET"})
        row(unit, version2 + "~W\nSTRT." + unit + " 1 :\n" + curves + "~A\n" + rows,
            ("Depths of this file are in feet (" + QByteArray(unit)
             + "). They are taken as metres unless \"Convert feet to metres\" is checked.")
                .constData());
    row(".1IN", version2 + "~W\nSTRT..1IN 1 :\n" + curves + "~A\n" + rows,
        "Depths of this file are in tenths of an inch (.1IN). They are taken as metres unless \"Convert feet to "
        "metres\" "
        "is checked.");
}

void TestImportNotices::unusualFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, notice);
    QCOMPARE(las::importNotices(m_fixture.load(bytes), 100).join(QLatin1Char('\n')), notice);
}

void TestImportNotices::gravestFirst()
{
    const QStringList notices = las::importNotices(
        m_fixture.load("~V\nVERS. 3.0 :\nWRAP. YES :\n~w\n~W\nSTRT.FT\t 1 :\nSTRT.FT 1 :\n~C\nTIME. :\nGR. :\nGR. :\n"
                       "~A TIME GR\n1,2\n~A\n"),
        2);
    const char *begins[] = {"This file is wrapped",
                            "Depths of this file are in feet (FT)",
                            "This is a file of LAS 3.0",
                            "Section titles in lower case",
                            "Data lines hold commas",
                            "This file has 2 data sections",
                            "The first curve is no depth by its name: TIME.",
                            "The title of the data section",
                            "Curve names that stand more than once: GR.",
                            "The header holds tabs",
                            "The file names 3 curves. Only the first 2 are listed."};
    QCOMPARE(notices.size(), 11);
    for (int i = 0; i < notices.size(); ++i)
        QVERIFY2(notices.at(i).startsWith(text(begins[i])), qPrintable(notices.at(i)));
}

void TestImportNotices::tooLarge()
{
    WellInfo info;
    info.isTooLarge = true;
    QCOMPARE(
        las::importNotices(info, 100),
        QStringList(text("This file is too large and was not read: it holds 2 GB or more, or more than fits into "
                         "the memory.")));
}

void TestImportNotices::listedCurves()
{
    const WellInfo info = m_fixture.load(version2 + well + curves);
    QCOMPARE(las::importNotices(info, 3), QStringList());
    QCOMPARE(las::importNotices(info, 2), QStringList(text("The file names 3 curves. Only the first 2 are listed.")));
}

// Whatever a file holds, a notice is a line that can be read.
void TestImportNotices::realFiles()
{
    const QByteArray longName(1000, 'n');
    QStringList notices = las::importNotices(
        m_fixture.load("~V\nVERS. 3 :\n~C\n" + longName + ". :\n" + longName + ". :\n~A DEPT " + longName + "\n1\n"),
        10);
    QCOMPARE(notices.size(), 5);
    const QDir folder(::realFiles());
    if (!::realFiles().isEmpty())
        for (const QFileInfo &file : folder.entryInfoList(QDir::Files)) {
            WellInfo info;
            QCOMPARE(info.load(file.filePath()), 0);
            notices += las::importNotices(info, 10'000);
            if (qEnvironmentVariableIsSet("SHOWNOTICES"))
                qInfo() << file.fileName() << las::importNotices(info, 10'000);
        }
    for (const QString &notice : qAsConst(notices)) {
        QVERIFY2(notice.size() < 500, qPrintable(notice));
        QVERIFY(!notice.contains(QLatin1Char('\n')));
    }
}

QTEST_GUILESS_MAIN(TestImportNotices)
#include "tst_importnotices.moc"
