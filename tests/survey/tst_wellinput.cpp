#include "support/testmain.h"
#include "survey/wellinput.h"

using namespace survey;

class TestWellInput : public QObject
{
    Q_OBJECT

private slots:
    void fieldProblems_data();
    void fieldProblems();
    void unchangedTextsKeepTheirValuesExactly();
    void roundNumbersAreWrittenOut();
    void namesAreTakenWhateverTheirCase();
};

void TestWellInput::fieldProblems_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    const auto row = [](WellField field, const char *text, const char *problem) {
        QTest::newRow(
            qPrintable(QString::number(static_cast<int>(field)) + QLatin1Char(' ') + QString::fromUtf8(text)))
            << static_cast<int>(field) << QString::fromUtf8(text) << QString::fromUtf8(problem);
    };
    row(WellField::Name, "15/9-F-1", "");
    row(WellField::Name, "", "A well needs a name.");
    row(WellField::Name, "  ", "A well needs a name.");
    row(WellField::Name, "a\tb", "The well name \"a\tb\" holds a control character.");
    QTest::newRow("byte order mark") << static_cast<int>(WellField::Name)
                                     << QString(QChar(0xFEFF) + QStringLiteral("a"))
                                     << QStringLiteral("A well name cannot begin like \"%1a\".").arg(QChar(0xFEFF));
    QTest::newRow("half of a character")
        << static_cast<int>(WellField::Name) << QString(QStringLiteral("a") + QChar(0xD800))
        << QStringLiteral("The well name \"a%1\" holds half of a character.").arg(QChar(0xD800));
    // What the survey's files cannot hold is told at once, not only when it is written.
    row(WellField::Name, " @base", "A well name cannot begin like \"@base\".");
    row(WellField::Name, "!x", "A well name cannot begin like \"!x\".");
    row(WellField::Name, "--x", "A well name cannot begin like \"--x\".");
    row(WellField::Name, "x\\", "A well name cannot end like \"x\\\".");
    row(WellField::Name, "a@b!c--d:e", "");
    row(WellField::X, "504000.25", "");
    row(WellField::X, " +5e5 ", "");
    row(WellField::X, "", "X is missing.");
    row(WellField::X, "12,5", "X is written with a comma; please write a decimal point.");
    row(WellField::X, "east", "X is not a number.");
    row(WellField::X, "nan", "X is not a number.");
    row(WellField::X, "1e400", "X is not a number.");
    row(WellField::Y, "1e9", "Y must lie between -100000000 and 100000000.");
    row(WellField::KbElevation, "-12.5", "");
    row(WellField::KbElevation, "", "The KB elevation is missing.");
    row(WellField::KbElevation, "1e30", "The KB elevation must lie between -100000 and 100000.");
    row(WellField::GroundElevation, "", "");
    row(WellField::GroundElevation, "-300", "");
    row(WellField::GroundElevation, "x", "The ground elevation is not a number.");
    row(WellField::TotalDepth, "2000", "");
    row(WellField::TotalDepth, "0", "The total depth must be greater than 0.");
    row(WellField::TotalDepth, "-5", "The total depth must be greater than 0.");
    row(WellField::TotalDepth, "deep", "The total depth is not a number.");
    row(WellField::TotalDepth, "", "The total depth is missing.");
}

void TestWellInput::fieldProblems()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    QFETCH(QString, problem);
    QCOMPARE(wellFieldProblem(static_cast<WellField>(field), text), problem);
}

void TestWellInput::unchangedTextsKeepTheirValuesExactly()
{
    WellProperties before;
    before.name = QStringLiteral("A");
    before.x = 504000.123456789;
    before.kbElevation = static_cast<double>(3000.1f); // not 3000.1: single precision
    before.groundElevation = static_cast<double>(host::undefinedValue);
    before.totalDepth = 1.0 / 3;
    before.typeCode = 4;
    const WellTexts texts = wellTexts(before);
    QCOMPARE(texts[WellField::KbElevation], QStringLiteral("3000.1"));
    QCOMPARE(texts[WellField::GroundElevation], QString());
    const WellProperties same = wellProperties(texts, before);
    QVERIFY(same.x == before.x && same.kbElevation == before.kbElevation && same.totalDepth == before.totalDepth);
    QVERIFY(host::isUndefined(static_cast<float>(same.groundElevation)));
    QCOMPARE(same.typeCode, 4);

    WellTexts changed = texts;
    changed[WellField::KbElevation] = QStringLiteral(" 25.5 ");
    changed[WellField::GroundElevation] = QStringLiteral("-300");
    changed[WellField::Name] = QStringLiteral(" B ");
    const WellProperties other = wellProperties(changed, before);
    QCOMPARE(other.kbElevation, 25.5);
    QCOMPARE(other.groundElevation, -300.0);
    QCOMPARE(other.name, QStringLiteral("B"));
    changed[WellField::GroundElevation] = QString();
    QVERIFY(host::isUndefined(static_cast<float>(wellProperties(changed, other).groundElevation)));
}

void TestWellInput::roundNumbersAreWrittenOut()
{
    WellProperties well;
    well.x = 500000;
    well.y = 6e6;
    well.kbElevation = 1e5;
    well.totalDepth = 1e5;
    const WellTexts texts = wellTexts(well);
    QCOMPARE(texts[WellField::X], QStringLiteral("500000"));
    QCOMPARE(texts[WellField::Y], QStringLiteral("6000000"));
    QCOMPARE(texts[WellField::KbElevation], QStringLiteral("100000"));
    QCOMPARE(texts[WellField::TotalDepth], QStringLiteral("100000"));
}

void TestWellInput::namesAreTakenWhateverTheirCase()
{
    const QVector<host::WellEntry> wells{{QStringLiteral("A-1"), QStringLiteral("k1")},
                                         {QStringLiteral("a-1"), QStringLiteral("k2")},
                                         {QStringLiteral("B"), QStringLiteral("k3")}};
    QCOMPARE(wellNameProblem(QStringLiteral(" b "), wells, {}), QStringLiteral("A well named \"b\" exists already."));
    QCOMPARE(wellNameProblem(QStringLiteral("b"), wells, QStringLiteral("k3")), QString());
    QCOMPARE(wellNameProblem(QStringLiteral("a-1"), wells, QStringLiteral("k2")), QString()); // unchanged
    QVERIFY(!wellNameProblem(QStringLiteral("A-1"), wells, QStringLiteral("k3")).isEmpty());
    QCOMPARE(wellNameProblem(QStringLiteral("C"), wells, {}), QString());
}

LORVA_TEST_MAIN(TestWellInput)
#include "tst_wellinput.moc"
