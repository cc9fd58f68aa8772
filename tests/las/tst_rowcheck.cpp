#include "las/rowcheck.h"
#include "support/testmain.h"
#include "tests/las/wellinfofixture.h"

using Kind = las::RowFinding::Kind;

class tst_rowcheck : public QObject
{
    Q_OBJECT

private slots:
    void rowsEndWithTheirSection();
    void remarksAndEmptyLinesAreNoRows();

private:
    las::RowFindings check(const QByteArray &data) const
    {
        return las::checkRows(
            m_las.load("~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 1 :\nNULL. -999.25 :\n~C\nDEPT.M :\n"
                       "GR. :\n~A\n"
                       + data));
    }
    LasFixture m_las;
};

void tst_rowcheck::rowsEndWithTheirSection()
{
    QVERIFY(check("1 5\n2 6\n3 7\n").first.isEmpty());
    QVERIFY(check("1 5\n2 6\n3 7\n~Other\nlogged by hand\n").first.isEmpty());
    QCOMPARE(check("1 5\n2 x\n3 7\n").count(Kind::Text), 1);
}

void tst_rowcheck::remarksAndEmptyLinesAreNoRows()
{
    const las::RowFindings findings = check("1 5\n# no row\n\n2 6\nx 7\n");
    QCOMPARE(findings.first.size(), 1);
    QCOMPARE(findings.first.first().kind, Kind::NoDepth);
    QCOMPARE(findings.first.first().text, QStringLiteral("x"));
}

LORVA_TEST_MAIN(tst_rowcheck)
#include "tst_rowcheck.moc"
