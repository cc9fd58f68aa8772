#include "support/testmain.h"
#include "support/unprivileged.h"
#include "survey/odfile.h"
#include "surveyfixture.h"

#include <QDir>
#include <QRegularExpression>

#include <cerrno>
#include <clocale>
#include <sys/stat.h>

using namespace survey;
using survey_fixture::header;

class TestOdFile : public QObject
{
    Q_OBJECT

private slots:
    void parsesHeaderAndFirstSection();
    void acceptsOtherVersionsLineEndsAndLetterCase();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void tellsWhetherTheSectionIsCut();
    void takesTheFirstUnescapedColonAsSeparator();
    void keepsLinesItDoesNotKnow();
    void changesOnlyTheLineConcerned();
    void doesNotTouchALineWhoseValueStays();
    void storesLineEndsWithinAValue();
    void readsBackWhatItSet();
    void removesAllLinesOfAKey();
    void writesTheDateInEnglish();
    void readsFiles();
    void readsTheBeginningOfAFile();
    void namesTheFileItCannotRead();
    void doesNotWaitForAPipe();
    void tellsChangedFilesApart();
};

void TestOdFile::parsesHeaderAndFirstSection()
{
    const QByteArray head = header("Well") + "A: 1\nB:  two words \n!\n";
    const host::Outcome<OdFile> file = parseOdFile(head + "rest", "Well");
    QVERIFY(file.ok());
    QCOMPARE(file.value.version, QByteArray("dTect V6.6"));
    QCOMPARE(file.value.type, QByteArray("Well"));
    QCOMPARE(file.value.keys.size(), 2);
    QCOMPARE(file.value.keys.value("A"), QByteArray("1"));
    QCOMPARE(file.value.keys.text("B"), QStringLiteral("two words"));
    QVERIFY(file.value.keys.value("C").isNull());
    QCOMPARE(file.value.bodyOffset, head.size());
    QVERIFY(!file.value.isCut);
}

void TestOdFile::acceptsOtherVersionsLineEndsAndLetterCase()
{
    QVERIFY(parseOdFile("dTect V1.0\nWELL\nWed Oct 22 14:02:01 2003\n!\nA: 1\n!\n", "Well").ok());
    const host::Outcome<OdFile> file = parseOdFile("dTect V7.0.1\r\nWell\r\ndate\r\n!\r\nA: 1\r\n!\r\nx", "Well");
    QVERIFY(file.ok());
    QCOMPARE(file.value.keys.value("A"), QByteArray("1"));
    QCOMPARE(file.value.bodyOffset, 38);
}

void TestOdFile::saysWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("says");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("empty");
    QTest::newRow("no survey file") << QByteArray("~Version\n") << QStringLiteral("no survey file");
    QTest::newRow("rubbish") << QByteArray("\0\x01\xff\n!\n", 6) << QStringLiteral("no survey file");
    QTest::newRow("other type") << header("Well Log") << QStringLiteral("\"Well Log\" and not \"Well\"");
    QTest::newRow("cut after the first line") << QByteArray("dTect V6.6\n") << QStringLiteral("cut off");
    QTest::newRow("cut before the mark") << QByteArray("dTect V6.6\nWell\ndate\n") << QStringLiteral("cut off");
}

void TestOdFile::saysWhatIsWrong()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, says);
    const host::Outcome<OdFile> file = parseOdFile(bytes, "Well");
    QVERIFY(!file.ok());
    QVERIFY2(file.error.contains(says), qPrintable(file.error));
}

void TestOdFile::tellsWhetherTheSectionIsCut()
{
    const QByteArray whole = header("Well") + "Unit: stop!\n!\n";
    for (int size = 7; size < whole.size(); ++size)
        QVERIFY2(parseOdFile(whole.left(size), "Well").value.isCut, QByteArray::number(size));
    QVERIFY(!parseOdFile(whole, "Well").value.isCut);
    QVERIFY(!parseOdFile("rubbish\n", "Well").value.isCut);
}

void TestOdFile::takesTheFirstUnescapedColonAsSeparator()
{
    KeyValues keys;
    keys.appendLine("Probe\\: 2: 5");
    keys.appendLine("Time: 17:09:32");
    keys.appendLine("Empty:");
    keys.appendLine(":x: 1");
    keys.appendLine("Tight:17");
    QCOMPARE(keys.value("Tight"), QByteArray("17"));
    QCOMPARE(keys.keyAt(0), QByteArray("Probe: 2"));
    QCOMPARE(keys.valueAt(0), QByteArray("5"));
    QCOMPARE(keys.value("Time"), QByteArray("17:09:32"));
    QVERIFY(keys.contains("Empty"));
    QVERIFY(!keys.value("Empty").isNull());
    QCOMPARE(keys.keyAt(3), QByteArray(":x"));
    for (const char *name : {"a:b", "::", "a\\:b", "a: b: c", "x:"}) {
        KeyValues one;
        one.appendLine(escapedKey(name) + ": 7");
        QCOMPARE(one.keyAt(0), QByteArray(name).trimmed());
        QCOMPARE(one.valueAt(0), QByteArray("7"));
    }
}

void TestOdFile::keepsLinesItDoesNotKnow()
{
    const QByteArray lines =
        "A: 1\n  odd   spacing :  kept \t\nno separator\n\n\xff\xfe\x01: \x80\nA: second\nEsc\\:aped: 1\n";
    KeyValues keys;
    for (const QByteArray &line : lines.left(lines.size() - 1).split('\n'))
        keys.appendLine(line);
    QCOMPARE(keys.toBytes(), lines);
    QCOMPARE(keys.value("A"), QByteArray("1"));
}

void TestOdFile::changesOnlyTheLineConcerned()
{
    KeyValues keys;
    keys.appendLine("X:  keep  ");
    keys.appendLine("A: 1");
    keys.appendLine("A: second");
    keys.set("A", QByteArray("2"));
    keys.set("New:key", QByteArray("3"));
    QCOMPARE(keys.toBytes(), QByteArray("X:  keep  \nA: 2\nA: second\nNew\\:key: 3\n"));
}

void TestOdFile::doesNotTouchALineWhoseValueStays()
{
    KeyValues keys;
    keys.appendLine("A:   1\t");
    keys.appendLine("B:  one#-NL-#two ");
    keys.set("A", QByteArray("1"));
    keys.set("B", QByteArray("one\ntwo"));
    QCOMPARE(keys.toBytes(), QByteArray("A:   1\t\nB:  one#-NL-#two \n"));
}

void TestOdFile::storesLineEndsWithinAValue()
{
    KeyValues keys;
    keys.set("A", QByteArray("one\r\ntwo"));
    QCOMPARE(keys.toBytes(), QByteArray("A: one#-NL-#two\n"));
    QCOMPARE(keys.value("A"), QByteArray("one\ntwo"));
}

void TestOdFile::readsBackWhatItSet()
{
    for (const char *text : {"x", " x ", "", "a\nb", "\na", "a:b", "!", "  ", "a\r", "Größe"}) {
        KeyValues keys;
        keys.set("K", QString::fromUtf8(text));
        const QByteArray bytes = keys.toBytes();
        QCOMPARE(bytes.count('\n'), 1);
        KeyValues again;
        again.appendLine(bytes.left(bytes.size() - 1));
        QCOMPARE(again.text("K"), storedText(QString::fromUtf8(text)));
        QCOMPARE(keys.value("K"), again.value("K"));
    }
    const QString withNull = QString::fromUtf16(u"a\0b", 3); // readers would see no more than "a"
    QCOMPARE(storedText(withNull), QStringLiteral("a b"));
    KeyValues keys;
    keys.set("K", withNull);
    QCOMPARE(keys.toBytes(), QByteArray("K: a b\n"));
}

void TestOdFile::removesAllLinesOfAKey()
{
    KeyValues keys;
    for (const char *line : {"A: 1", "B: 2", "A: 3", "strange"})
        keys.appendLine(line);
    keys.remove("A");
    QCOMPARE(keys.toBytes(), QByteArray("B: 2\nstrange\n"));
}

void TestOdFile::writesTheDateInEnglish()
{
    const QRegularExpression date(QStringLiteral(
        "^(Mon|Tue|Wed|Thu|Fri|Sat|Sun) \\d\\d (Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) \\d{4}, "
        "\\d\\d:\\d\\d:\\d\\d$"));
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    const QString text = QString::fromUtf8(odFileDate());
    QLocale::setDefault(before);
    QVERIFY2(date.match(text).hasMatch(), qPrintable(text));
    const QList<QByteArray> lines = odFileHeader("Well Log").split('\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0), QByteArray("dTect V6.6"));
    QCOMPARE(lines.at(1), QByteArray("Well Log"));
    QCOMPARE(lines.at(3) + lines.at(4), QByteArray("!"));
}

void TestOdFile::readsFiles()
{
    QTemporaryDir folder;
    const QByteArray bytes = QByteArray(100000, 'x') + QByteArray("\0\n\r", 3);
    files::write(folder.filePath(QStringLiteral("a")), bytes);
    files::write(folder.filePath(QStringLiteral("empty")), {});
    QCOMPARE(readFileBytes(folder.filePath(QStringLiteral("a"))).value, bytes);
    QVERIFY(readFileBytes(folder.filePath(QStringLiteral("empty"))).ok());
    QVERIFY(QFile::link(folder.filePath(QStringLiteral("a")), folder.filePath(QStringLiteral("link"))));
    QCOMPARE(readFileBytes(folder.filePath(QStringLiteral("link"))).value, bytes);
}

void TestOdFile::readsTheBeginningOfAFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    files::write(path, "0123456789");
    QCOMPARE(readFile(path, 4).bytes, QByteArray("0123"));
    QCOMPARE(readFile(path, 400).bytes, QByteArray("0123456789"));
    QCOMPARE(readFile(path).bytes, QByteArray("0123456789"));
}

void TestOdFile::namesTheFileItCannotRead()
{
    QTemporaryDir folder;
    ::chmod(QFile::encodeName(folder.path()).constData(), 0755);
    const QString missing = folder.filePath(QStringLiteral("missing"));
    QCOMPARE(readFile(missing).errorCode, ENOENT);
    const host::Outcome<QByteArray> none = readFileBytes(missing);
    QVERIFY(!none.ok());
    QVERIFY(none.error.contains(missing));
    QVERIFY(none.error.contains(QString::fromLocal8Bit(std::strerror(ENOENT))));
    const host::Outcome<QByteArray> directory = readFileBytes(folder.path());
    QVERIFY(!directory.ok());
    QVERIFY(directory.error.contains(folder.path()));
    const QString secret = folder.filePath(QStringLiteral("secret"));
    files::write(secret, "x");
    ::chmod(QFile::encodeName(secret).constData(), 0);
    const int result = testing_support::runUnprivileged(
        [&] { return readFile(secret).errorCode == EACCES && readFileBytes(secret).error.contains(secret) ? 0 : 1; });
    QCOMPARE(result, 0);
}

void TestOdFile::doesNotWaitForAPipe()
{
    QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0666), 0);
    QVERIFY(!readFileBytes(pipe).ok());
    QVERIFY(!readFileBytes(QStringLiteral("/dev/zero")).ok());
}

void TestOdFile::tellsChangedFilesApart()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    files::write(path, "one");
    const auto settled = [&path](qint64 modifiedNs) {
        FileState state = fileState(path);
        state.isSettled = true; // as if some time had gone by
        state.modifiedNs += modifiedNs;
        return state;
    };
    QVERIFY(settled(0).isSame(settled(0)));
    QVERIFY(!settled(0).isSame(settled(1)));
    QVERIFY(!fileState(path).isSame(fileState(path)));
    const FileState before = settled(0);
    files::write(path, "longer");
    QVERIFY(!settled(0).isSame(before));
    QVERIFY(!fileState(folder.filePath(QStringLiteral("none"))).isSame(FileState{}));
}

LORVA_TEST_MAIN(TestOdFile)
#include "tst_odfile.moc"
