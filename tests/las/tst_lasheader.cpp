#include "las/lasheader.h"

#include "tests/las/wellinfofixture.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <random>

namespace {

/// All fields of an item in one text, for comparison.
QString fields(const las::HeaderItem &item)
{
    return QStringList({QString(item.section), item.mnemonic, item.unit, item.value, item.description}).join(u'|');
}

/// What this process has read so far from files of any kind; -1 where the system does not tell.
qint64 bytesReadSoFar()
{
    QFile file(QStringLiteral("/proc/self/io"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith("rchar: "))
            return line.mid(7).toLongLong();
    return -1;
}

} // namespace

class TestLasHeader : public QObject
{
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void sections();
    void setsOfLas3();
    void wrapped();
    void valueBehindColon_data();
    void valueBehindColon();
    void find();
    void encodings();
    void stopsAtData();
    void readsNoMoreThanTheHeader();
    void longHeaders();
    void capsEndlessHeaders();
    void utf16AcrossBlocks();
    void errors();
    void damaged();
    void realFiles_data();
    void realFiles();

private:
    las::HeaderResult read(const QByteArray &bytes) const
    {
        if (!m_fixture.write(bytes))
            qFatal("cannot write %s", qPrintable(m_fixture.path()));
        return las::readHeader(m_fixture.path());
    }

    LasFixture m_fixture;
};

void TestLasHeader::lines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *line, const char *expected) {
        QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(expected);
    };
    row("STRT.M  1000.5 : START DEPTH", "STRT|M|1000.5|START DEPTH");
    row(" WELL  .    MY  WELL #1   : WELL", "WELL||MY  WELL #1|WELL");
    row("WELL.X MY WELL :", "WELL|X|MY WELL|");
    row("LOC. X: 12 Y: 30 : LOCATION", "LOC||X: 12 Y: 30|LOCATION");
    row("DATE.12:30 : x", "DATE|12:30||x");
    row("NULL.:x", "NULL|||x");
    row("DEPT.M:1 DEPTH", "DEPT|M||1 DEPTH");
    row("X   ..1IN   00 001 : implied", "X|.1IN|00 001|implied");
    row("WELL. F/3-2. No. 1", "WELL||F/3-2. No. 1|");
    row("TOOL.    7     Tool Number", "TOOL||7|Tool Number");
    row("WELL.\tHOLE\t5\t\tWELL", "WELL||HOLE 5|WELL");
    row("UWI\t.\t\tUNIQUE\tWELL", "UWI|||UNIQUE\tWELL");
    row("A.", "A|||");
    row("A.M", "A|M||");
    row(". x : y", "");
    row("no dot", "");
    row("#MNEM.UNIT VALUE : x", "");
    row("  # A.B C : x", "");
    row("", "");
}

void TestLasHeader::lines()
{
    QFETCH(QString, line);
    QFETCH(QString, expected);
    const las::HeaderResult result = read("~V\n~P\n" + line.toLatin1() + "\n~A\n");
    QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
    QCOMPARE(result.header.items.size(), expected.isEmpty() ? 0 : 1);
    if (!expected.isEmpty())
        QCOMPARE(fields(result.header.items.at(0)), QStringLiteral("P|") + expected);
}

void TestLasHeader::sections()
{
    const las::HeaderResult result = read("A.1 :\n~version\nB. :\n~W\nC. :\n ~Curve Information\nD. "
                                          ":\n~PARAMETER\nE. :\n~Other\nF. :\n~\nG. :\n"
                                          "~wELL\nH. :\n~ascii\nI. :\n~P\nJ. :\n");
    QStringList found;
    for (const las::HeaderItem &item : result.header.items)
        found += QString(item.section) + item.mnemonic;
    QCOMPARE(found.join(u' '), QStringLiteral("VB WC CD PE WH"));
}

void TestLasHeader::setsOfLas3()
{
    const las::HeaderResult result =
        read("~Core_Definition\nA. :\n~Core_Data[1] | Core_Definition\nB. :\n~Perforations_Definition\nC. :\n"
             "~Log_Parameter\nD. :\n~Log_Definition\nE. :\n~Parameter_Information\nF. :\n~Log_Data | "
             "Log_Definition\n"
             "~P\nG. :\n");
    QStringList found;
    for (const las::HeaderItem &item : result.header.items)
        found += QString(item.section) + item.mnemonic;
    QCOMPARE(found.join(u' '), QStringLiteral("PD CE PF"));
}

void TestLasHeader::wrapped()
{
    QVERIFY(read("~v\nwrap. yes : x\n").header.wrapped);
    QVERIFY(!read("~V\nWRAP. NO : x\n").header.wrapped);
    QVERIFY(!read("~W\nWRAP. YES : x\n").header.wrapped);
}

void TestLasHeader::valueBehindColon_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *version, const char *line, const char *value) {
        QTest::addRow("%s in %s", line, version)
            << QByteArray(version) << QByteArray(line) << QString::fromLatin1(value);
    };
    row("1.2", "WELL. WELL: ANY #12", "ANY #12");
    row("1.20", "SRVC. anything: ANY", "ANY");
    row("1.2", "WELL. : ANY #12", "ANY #12");
    row("1.2", "WELL. ANY #12 : WELL", "ANY #12"); // the order of 2.0 under the number of 1.2
    row("1.2", "WELL. ANY #12 :", "ANY #12");
    row("1.2", "STRT.M 1000 : 1 START", "1000");
    row("2.0", "WELL. ANY #12 : X", "ANY #12");
    row("2.0", "WELL. WELL: ANY #12", "ANY #12"); // and the other way round
    row("2.0", "UWI. UNIQUE WELL ID: 100", "100");
    row("2.0", "UWI. : UNIQUE WELL ID", "");
    row("2.0", "WELL. : X", "");
}

void TestLasHeader::valueBehindColon()
{
    QFETCH(QByteArray, version);
    QFETCH(QByteArray, line);
    QFETCH(QString, value);
    const las::HeaderResult result = read("~V\nVERS. " + version + " : x\n~W\n" + line + "\n");
    QCOMPARE(result.header.items.last().value, value);
    // Parameters have their value in front in either version.
    const QString parameter = read("~V\nVERS. " + version + " : x\n~P\nEKB.M 5 : 7\n").header.items.last().value;
    QCOMPARE(parameter, QStringLiteral("5"));
}

void TestLasHeader::find()
{
    const las::Header header = read("~W\nA. 1 :\nb. 2 :\nB. 3 :\n~P\nA. 4 :\nC. 5 :\n").header;
    const auto value = [&header](QChar section, const QStringList &mnemonics) {
        const las::HeaderItem *item = header.find(section, mnemonics);
        return item ? item->value : QString();
    };
    QCOMPARE(value(u'W', {QStringLiteral("B")}), QStringLiteral("2"));
    QCOMPARE(value(u'P', {QStringLiteral("B"), QStringLiteral("a")}), QStringLiteral("4"));
    QCOMPARE(value(u'W', {QStringLiteral("X"), QStringLiteral("B"), QStringLiteral("A")}), QStringLiteral("2"));
    QCOMPARE(value(QChar(), {QStringLiteral("C")}), QStringLiteral("5"));
    QVERIFY(!header.find(u'W', {QStringLiteral("C")}));
    QVERIFY(!header.find(u'W', {}));
}

void TestLasHeader::encodings()
{
    const QString name = QStringLiteral("Sh\u00e1mar 1");
    QCOMPARE(read("~W\r\nWELL. Sh\xe1mar 1 : WELL\r\n").header.items.last().value, name);
    QCOMPARE(read("~W\rWELL. Sh\xc3\xa1mar 1 : WELL\r").header.items.last().value, name);
    QCOMPARE(read("\xEF\xBB\xBF~W\nWELL. Sh\xc3\xa1mar 1 : WELL\n").header.items.last().value, name);
}

void TestLasHeader::stopsAtData()
{
    const las::HeaderResult result = read("~W\nWELL. A :\n~A DEPT. GR.\nB. 1 : x\n~W\nWELL. C :\n");
    QVERIFY(result.error.isEmpty());
    QCOMPARE(result.header.items.size(), 1);
}

/// A very large file is a sparse one here: reading it whole would take seconds and gigabytes.
void TestLasHeader::readsNoMoreThanTheHeader()
{
    QVERIFY(m_fixture.write("~W\nWELL. A :\n~A\n1 2\n"));
    QFile file(m_fixture.path());
    if (!file.open(QIODevice::ReadWrite) || !file.resize(Q_INT64_C(3) << 30))
        QSKIP("no sparse file of 3 GB can be made here");
    file.close();
    const qint64 before = bytesReadSoFar();
    if (before < 0)
        QSKIP("this system does not tell how much a program has read");
    const las::HeaderResult result = las::readHeader(m_fixture.path());
    QVERIFY(bytesReadSoFar() - before < 1 << 20);
    QCOMPARE(result.header.items.size(), 1);
    // The import reader needs all of it and says so.
    WellInfo info;
    QCOMPARE(info.load(m_fixture.path()), -2);
    QVERIFY(m_fixture.write("~"));
}

void TestLasHeader::longHeaders()
{
    // Headers that end around the sizes of the blocks.
    for (const int size : {65000, 65530, 65535, 65536, 65537, 131072, 300000, 1000000}) {
        QByteArray bytes("~V\n~P\nA. first :\n");
        while (bytes.size() < size - 60)
            bytes += "# comment\n";
        bytes += QByteArray(size - bytes.size() - 11, '#') + "\nB. last :\n";
        bytes += "~A\n1 2 3\n";
        const las::HeaderResult result = read(bytes);
        QCOMPARE(result.header.items.size(), 2);
        QCOMPARE(result.header.items.at(1).value, QStringLiteral("last"));
    }
}

void TestLasHeader::capsEndlessHeaders()
{
    QByteArray bytes("~V\n~P\n");
    while (bytes.size() < 6000000)
        bytes += "ABCD. 12345678 :\n";
    const las::HeaderResult result = read(bytes);
    QVERIFY(result.error.isEmpty());
    QVERIFY(result.header.items.size() > 200000);
    QVERIFY(result.header.items.size() <= 4 * 1024 * 1024 / 17);
    QCOMPARE(result.header.items.last().value, QStringLiteral("12345678"));
    QCOMPARE(read("~V\n~P\nA." + QByteArray(6000000, 'x')).header.items.size(), 0);
}

void TestLasHeader::utf16AcrossBlocks()
{
    QByteArray text("~V\n~P\nA. first :\n");
    while (text.size() < 100000)
        text += "# 123456789\n";
    text += "B. last :\n~A\n1 2\n";
    QByteArray little("\xFF\xFE");
    QByteArray big("\xFE\xFF");
    for (const char c : text) {
        little.append(c).append('\0');
        big.append('\0').append(c);
    }
    for (const QByteArray &bytes : {little, big, little.left(65537), big.left(65537)}) {
        const las::HeaderResult result = read(bytes);
        QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
        QCOMPARE(result.header.items.size(), bytes.size() > 100000 ? 2 : 1);
    }
}

void TestLasHeader::errors()
{
    QTemporaryDir folder;
    const QString missing = folder.filePath(QStringLiteral("missing.las"));
    QCOMPARE(las::readHeader(missing).error, QStringLiteral("The LAS file %1 does not exist.").arg(missing));
    QVERIFY(las::readHeader(folder.path()).error.contains(folder.path()));
    QVERIFY(read("").error.contains(m_fixture.path()));
    QVERIFY(read("GIF89a\n1 2 3\n").error.contains(QStringLiteral("is no LAS file")));
    QVERIFY(read(QByteArray(100000, '\0')).error.contains(m_fixture.path()));
    QVERIFY(read("~\n~Parameter\n").error.contains(QStringLiteral("no section ~Version, ~Well or ~Curve")));
}

void TestLasHeader::damaged()
{
    const QByteArray bytes("~V\nVERS. 1.2 : x\nWRAP. NO :\n~W\nSTRT.M 1 :\nWELL. WELL : A\n~P\nEKB .M 1.5 : "
                           "x\n~C\nD.M :\n~A\n1\n");
    for (int size = 0; size <= bytes.size(); ++size)
        read(bytes.left(size));
    std::mt19937 random(5);
    for (int run = 0; run < 2000; ++run) {
        QByteArray damaged = bytes;
        damaged[static_cast<int>(random() % static_cast<unsigned>(bytes.size()))] = static_cast<char>(random() % 256);
        const las::HeaderResult result = read(damaged);
        for (const las::HeaderItem &item : result.header.items)
            QVERIFY(!item.mnemonic.isEmpty());
    }
}

void TestLasHeader::realFiles_data()
{
    QTest::addColumn<QJsonObject>("file");
    if (::realFiles().isEmpty())
        QSKIP("the folder with real LAS files is not there");
    const QByteArray json = bytesOf(::realFiles() + QStringLiteral("expected.json"));
    const QJsonArray files = QJsonDocument::fromJson(json).object().value(QStringLiteral("files")).toArray();
    for (const QJsonValue &file : files) {
        const QString name = file.toObject().value(QStringLiteral("file")).toString();
        QTest::newRow(name.toUtf8().constData()) << file.toObject();
    }
}

void TestLasHeader::realFiles()
{
    QFETCH(QJsonObject, file);
    const QString name = file.value(QStringLiteral("file")).toString();
    const las::HeaderResult result = las::readHeader(::realFiles() + name);
    QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
    const QJsonObject header = file.value(QStringLiteral("header")).toObject();
    const auto found = [&result](QChar section, const char *mnemonic) {
        const las::HeaderItem *item = result.header.find(section, {QLatin1String(mnemonic)});
        return item ? *item : las::HeaderItem();
    };
    QString wellName = header.value(QStringLiteral("well_name")).toString();
    // Its fields are parted by tabs; two in a row end the value here, which the independent reader does not
    // do.
    const bool hasTabs = name.startsWith(QLatin1String("260341080252801"));
    if (hasTabs)
        wellName = QStringLiteral("HOLE 5");
    QCOMPARE(found(u'W', "WELL").value, wellName);
    QCOMPARE(result.header.wrapped, found(u'V', "WRAP").value == QLatin1String("YES"));
    for (const char *key : {"strt", "stop", "step", "null"}) {
        const QJsonObject expected = header.value(QLatin1String(key)).toObject();
        const las::HeaderItem item = found(u'W', key);
        QCOMPARE(item.unit, expected.value(QStringLiteral("unit")).toString());
        if (!hasTabs)
            QCOMPARE(item.value, expected.value(QStringLiteral("value_text")).toString());
    }
    const QJsonArray curves = file.value(QStringLiteral("curves")).toArray();
    QVector<las::HeaderItem> items;
    for (const las::HeaderItem &item : result.header.items) {
        if (item.section == u'C')
            items.append(item);
    }
    QCOMPARE(items.size(), curves.size());
    // Bytes of a Russian code page, which no mark tells: the independent reader takes them for Latin-1.
    if (name == QLatin1String("1475IBK3.las"))
        return;
    for (int i = 0; i < items.size(); ++i) {
        const QJsonObject curve = curves.at(i).toObject();
        QCOMPARE(items.at(i).mnemonic, curve.value(QStringLiteral("mnemonic")).toString());
        QCOMPARE(items.at(i).unit, curve.value(QStringLiteral("unit")).toString());
        QCOMPARE(items.at(i).value, curve.value(QStringLiteral("value")).toString());
        QCOMPARE(items.at(i).description, curve.value(QStringLiteral("descr")).toString());
    }
}

QTEST_APPLESS_MAIN(TestLasHeader)
#include "tst_lasheader.moc"
