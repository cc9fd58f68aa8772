#include "datastore/unitclassification.h"

#include <QTest>

class tst_unitclassification : public QObject
{
    Q_OBJECT

private slots:
    void groupOfUnit_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QString>("group");
        const QVector<QPair<const char *, const char *>> rows{
            // the table
            {"inches", "Caliper"},
            {"in", "Caliper"},
            {"kg/m3", "Density"},
            {"gram/cm3", "Density"},
            {"g/cc", "Density"},
            {"g/c3", "Density"},
            {"m", "Depth"},
            {"api", "Gamma"},
            {"gapi", "Gamma"},
            {"%", "Porosity"},
            {"ohmm", "Resistivity"},
            {"us/m", "Sonic"},
            {"s/m", "Sonic"},
            {"us/f", "Sonic"},
            {"us/ft", "Sonic"},
            {"microseconds/foot", "Sonic"},
            {"mv", "Sp"},
            // letter case does not count, so the row "ohmMeter" is never met
            {"INCHES", "Caliper"},
            {"In", "Caliper"},
            {"Kg/M3", "Density"},
            {"G/CC", "Density"},
            {"M", "Depth"},
            {"GAPI", "Gamma"},
            {"gAPI", "Gamma"},
            {"API", "Gamma"},
            {"OHMM", "Resistivity"},
            {"Ohmm", "Resistivity"},
            {"US/FT", "Sonic"},
            {"Microseconds/Foot", "Sonic"},
            {"MV", "Sp"},
            {"mV", "Sp"},
            {"ohmMeter", "Others"},
            {"ohmmeter", "Others"},
            {"OHMMETER", "Others"},
            // everything else must be equal to the last character
            {"", "Others"},
            {" ", "Others"},
            {" m", "Others"},
            {"m ", "Others"},
            {"meter", "Others"},
            {"ft", "Others"},
            {"inch", "Others"},
            {"ohm.m", "Others"},
            {"ohm-m", "Others"},
            {"v/v", "Others"},
            {"gr/cc", "Others"},
            {"g/cm3", "Others"},
            {"us/ft.", "Others"},
            {"%%", "Others"},
            {"\xc2\xb5s/ft", "Others"},
        };
        for (const auto &row : rows)
            QTest::newRow(row.first) << QString::fromUtf8(row.first) << QString::fromLatin1(row.second);
    }

    void groupOfUnit()
    {
        QFETCH(QString, unit);
        QFETCH(QString, group);
        const QString lower = unit.toLower();
        QCOMPARE(curveGroupOfUnit(unit), group);
        QCOMPARE(unit, lower);
    }

    void theArgumentIsLowerCased()
    {
        QString unit("GAPI");
        curveGroupOfUnit(unit);
        QCOMPARE(unit, QString("gapi"));
        QString unknown("ABC Def");
        curveGroupOfUnit(unknown);
        QCOMPARE(unknown, QString("abc def"));
    }

    void aNullUnitIsOthers()
    {
        QString unit;
        QCOMPARE(curveGroupOfUnit(unit), QString("Others"));
    }
};

QTEST_GUILESS_MAIN(tst_unitclassification)
#include "tst_unitclassification.moc"
