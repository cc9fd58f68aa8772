#include "base/safename.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include <random>

namespace {

QStringList hostileNames()
{
    QStringList names{QString(),
                      QStringLiteral("."),
                      QStringLiteral(".."),
                      QStringLiteral("..."),
                      QStringLiteral(". ."),
                      QStringLiteral("/"),
                      QStringLiteral("//"),
                      QStringLiteral("../.."),
                      QStringLiteral("../../etc/passwd"),
                      QStringLiteral("/etc/passwd"),
                      QStringLiteral("a/b"),
                      QStringLiteral("a%2Fb"),
                      QStringLiteral("a%2fb"),
                      QStringLiteral("a%252Fb"),
                      QStringLiteral("a%25252Fb"),
                      QStringLiteral("a%25b"),
                      QStringLiteral("%"),
                      QStringLiteral("%%"),
                      QStringLiteral("%2"),
                      QStringLiteral("%2E"),
                      QStringLiteral("%2E%2E"),
                      QStringLiteral("%2e"),
                      QStringLiteral("%FF"),
                      QStringLiteral("%25FF"),
                      QStringLiteral("%FE"),
                      QStringLiteral("%/"),
                      QStringLiteral("%2/"),
                      QStringLiteral("/%2F"),
                      QStringLiteral("50%"),
                      QStringLiteral("50%/a"),
                      QStringLiteral("%41"),
                      QStringLiteral("A"),
                      QStringLiteral("%47lobal"),
                      QStringLiteral("Global"),
                      QStringLiteral("a\nb"),
                      QStringLiteral("a\tb"),
                      QStringLiteral("a%0Ab"),
                      QStringLiteral("a\x7f"),
                      QStringLiteral("a%7F"),
                      QStringLiteral(" "),
                      QStringLiteral(" a"),
                      QStringLiteral("a "),
                      QStringLiteral("a"),
                      QStringLiteral("a\\b"),
                      QStringLiteral("a:b"),
                      QStringLiteral("a*b?"),
                      QStringLiteral("-rf"),
                      QStringLiteral("~"),
                      QStringLiteral("$HOME"),
                      QString::fromUtf8("Скважина-1"),
                      QString::fromUtf8("井 1"),
                      QString::fromUtf8("بئر"),
                      QString::fromUtf8("\xEF\xBB\xBF"),
                      QString::fromUtf8("x\xEF\xBB\xBF").mid(1) + QStringLiteral("a"),
                      QString::fromUtf8("\xEF\xBF\xBE"),
                      QString::fromUtf8("e\xCC\x81"),
                      QString::fromUtf8("\xC3\xA9")};
    names.append(QChar(0xFEFF) + QStringLiteral("a/b"));
    names.append(QString(2, QChar(0xFEFF)) + QStringLiteral("a"));
    names.append(QStringLiteral("a") + QChar(0) + QStringLiteral("b"));
    for (const int size : {211, 212, 213, 254, 255, 256, 257, 300, 5000}) {
        names.append(QString(size, QLatin1Char('n')));
        names.append(QString(size, QLatin1Char('/')));
        names.append(QString(size, QLatin1Char('%')));
        names.append(QString(size, QChar(0x4E95)));
        names.append(QString(size - 1, QLatin1Char('n')) + QLatin1Char('/'));
        names.append(QString(size - 1, QLatin1Char('n')) + QLatin1Char('m'));
        names.append(QString(size, QLatin1Char('n')) + QString::fromUtf8("\xF0\x9F\x98\x80"));
    }
    // What the shortened form of a long name looks like is a name of its own too.
    const QStringList soFar = names;
    for (const QString &name : soFar)
        names.append(base::fileNameFor(name));
    names.removeDuplicates();
    return names;
}

void checkInjective(const QStringList &names, int otherBytes)
{
    QHash<QByteArray, QString> seen;
    for (const QString &name : names) {
        const QByteArray file = QFile::encodeName(base::fileNameFor(name, otherBytes));
        QVERIFY2(!seen.contains(file),
                 qPrintable(QStringLiteral("\"%1\" and \"%2\" share \"%3\"")
                                .arg(name.left(50), seen.value(file).left(50), QString::fromUtf8(file))));
        seen.insert(file, name);
        QVERIFY(!file.isEmpty() && file != "." && file != "..");
        QVERIFY(!file.contains('/') && !file.contains('\0') && !file.contains('\n'));
        QVERIFY(file.size() + otherBytes <= base::maximumFileNameBytes);
    }
}

} // namespace

class TestSafeName : public QObject
{
    Q_OBJECT

private slots:
    void leavesOrdinaryNamesAsTheyAre_data();
    void leavesOrdinaryNamesAsTheyAre();
    void escapesWhatNoFileCanBeCalled_data();
    void escapesWhatNoFileCanBeCalled();
    void cutsOverLongNamesAtWholeCharacters();
    void givesEveryHostileNameAFileOfItsOwn();
    void givesEveryRandomNameAFileOfItsOwn();
    void namesAreFilesOfTheirFolder();
    void judgesTypedNames_data();
    void judgesTypedNames();
    void judgesTheLengthOfTypedNames();
};

void TestSafeName::leavesOrdinaryNamesAsTheyAre_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"GR",  "Probe 2", "15.9-F-1", "RHOB_corrected (2)", "50%",  "% of sand", "%zz",   "100%2", "a\\b",   "a:b",
          "...", ". .",     " a ",      "Скважина-1",         "井 1", "بئر",       "Brønn", "😀",     "Global", "~",
          "-rf"})
        QTest::newRow(name) << QString::fromUtf8(name);
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('n'));
    QTest::newRow("byte order mark") << QChar(0xFEFF) + QStringLiteral("a");
}

void TestSafeName::leavesOrdinaryNamesAsTheyAre()
{
    QFETCH(QString, name);
    QCOMPARE(base::fileNameFor(name), name);
}

void TestSafeName::escapesWhatNoFileCanBeCalled_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    const auto row = [](const char *name, const char *file) {
        QTest::newRow(file) << QString::fromUtf8(name) << QString::fromUtf8(file);
    };
    row("15/9-F-1", "15%2F9-F-1");
    row("RHOB/2", "RHOB%2F2");
    row("/", "%2F");
    row("50%/a", "50%25%2Fa");
    row("a%2Fb", "a%252Fb");
    row("100%2fx%", "100%252fx%25");
    row("a\tb\nc", "a%09b%0Ac");
    row("a\x7f", "a%7F");
    row(".", "%2E");
    row("..", "%2E%2E");
    row("../x", "..%2Fx");
    row("", "%FF");
    row("井/1", "井%2F1");
    row(".lorva-abcDEF", "%2Elorva-abcDEF"); // else it would be taken away as a leftover
    row(".lorva-a.b", "%2Elorva-a%2Eb");
    row("%2Elorva-a", "%252Elorva-a");
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0)) << QStringLiteral("a%00");
    QTest::newRow("byte order mark") << QString(QChar(0xFEFF) + QStringLiteral("a/b"))
                                     << QString(QChar(0xFEFF) + QStringLiteral("a%2Fb"));
}

void TestSafeName::escapesWhatNoFileCanBeCalled()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    QCOMPARE(base::fileNameFor(name), file);
}

void TestSafeName::cutsOverLongNamesAtWholeCharacters()
{
    const QString wide(300, QChar(0x4E95));
    const QString file = base::fileNameFor(wide);
    QVERIFY(file.toUtf8().size() <= 255);
    QVERIFY(file.toUtf8().size() > 250);
    QVERIFY(!file.contains(QChar(QChar::ReplacementCharacter)));
    QVERIFY(file.startsWith(wide.left(50)));
    QVERIFY(base::fileNameFor(QString(255, QLatin1Char('n')), 4).size() <= 251);
    QCOMPARE(base::fileNameFor(QString(251, QLatin1Char('n')), 4), QString(251, QLatin1Char('n')));
    QVERIFY(base::fileNameFor(QString(252, QLatin1Char('n')), 4) != QString(252, QLatin1Char('n')));
}

void TestSafeName::givesEveryHostileNameAFileOfItsOwn()
{
    const QStringList names = hostileNames();
    QVERIFY(names.size() > 150);
    for (const int otherBytes : {0, 4, 40})
        checkInjective(names, otherBytes);
}

void TestSafeName::givesEveryRandomNameAFileOfItsOwn()
{
    // Few letters and many escapes, so that two of the names come close to each other.
    const QString alphabet = QStringLiteral("%%%225FfEe0.a/\n") + QChar(0x7f) + QChar(0xFEFF);
    std::mt19937 random(11);
    std::uniform_int_distribution<int> letter(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> length(0, 7);
    QSet<QString> names;
    for (int i = 0; i < 60000; ++i) {
        QString name;
        for (int n = length(random); n > 0; --n)
            name += alphabet.at(letter(random));
        names.insert(name);
    }
    QVERIFY(names.size() > 20000);
    checkInjective(names.values(), 0);
}

void TestSafeName::namesAreFilesOfTheirFolder()
{
    QTemporaryDir folder;
    const QStringList names = hostileNames();
    for (const QString &name : names) {
        QFile file(folder.path() + QLatin1Char('/') + base::fileNameFor(name));
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.fileName()));
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
             names.size());
}

void TestSafeName::judgesTypedNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isGood");
    const auto row = [](const char *name, bool isGood) { QTest::newRow(name) << QString::fromUtf8(name) << isGood; };
    row("Default", true);
    row("Track 1 (GR)", true);
    row("50%", true);
    row("%2F", true);
    row("...", true);
    row("a.b", true);
    row("井 1", true);
    row("", false);
    row(".", false);
    row("..", false);
    row("a/b", false);
    row("/", false);
    row("a\\b", false);
    row("a\nb", false);
    row("a\tb", false);
    row("\x7f", false);
    row("a\xC2\x85", false);
    row(".lorva-x", false); // our hidden folders are called so
    row(".lorva-", false);
    row(".lorva", true);
    row(".mine", true);
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0)) << false;
    QTest::newRow("half of a character") << QString(QStringLiteral("a") + QChar(0xD800)) << false;
    QTest::newRow("both halves") << QString::fromUtf8("\xF0\x9F\x9B\xA2") << true;
}

void TestSafeName::judgesTypedNames()
{
    QFETCH(QString, name);
    QFETCH(bool, isGood);
    const QString problem = base::typedNameProblem(name);
    QCOMPARE(problem.isEmpty(), isGood);
    QVERIFY(isGood || problem.endsWith(QLatin1Char('.')));
}

void TestSafeName::judgesTheLengthOfTypedNames()
{
    QVERIFY(base::typedNameProblem(QString(255, QLatin1Char('n'))).isEmpty());
    QVERIFY(!base::typedNameProblem(QString(256, QLatin1Char('n'))).isEmpty());
    QVERIFY(base::typedNameProblem(QString(85, QChar(0x4E95))).isEmpty());
    QVERIFY(!base::typedNameProblem(QString(86, QChar(0x4E95))).isEmpty());
    QVERIFY(base::typedNameProblem(QString(251, QLatin1Char('n')), 4).isEmpty());
    QVERIFY(!base::typedNameProblem(QString(252, QLatin1Char('n')), 4).isEmpty());
}

LORVA_TEST_MAIN(TestSafeName)
#include "tst_safename.moc"
