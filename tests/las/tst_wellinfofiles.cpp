#include "tests/las/wellinfofixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace {

// Where the import reader is meant to differ from what an independent, lenient reader makes of the same file.
// An entry that stops being true fails, too.
const QHash<QString, QString> &intended()
{
    static const QHash<QString, QString> reasons = {
        // Words: what differs. The reasons stand beside them.
        {"1001178549.las", "data"}, // wrapped: every line is a depth step
        {"1044815255.las", "data"},
        {"P-135_out.LAS", "data unit"}, // wrapped; "ohm.m" is cut at its dot
        {"sample_wrapped.las", "data"},
        {"100_LAS1.las", "version unit"}, // the title " ~Version" does not begin with "~"; "ohm.m"
        {"34_7-13.las", "unit"},
        {"DILLSON-1_WELL_LOGS_FILE-037.LIS_0.las", "unit"}, // "X ..1IN": an empty part does not count
        {"1475IBK3.las", "mnemonic unit description"}, // CP866 bytes: there taken as Latin-1, here as Windows-1252
        {"260341080252801.19980915.NN.las", "step version"}, // tabs for blanks and no colon: "M<tab>1" is one word
        {"data_characters.las",
         "description data"}, // blank description: the last part is before the colon; text is 0
        {"las-30a-revised-2010.las", "curves data"}, // curves stand in ~Log_Definition, ~Core_... begins with "~C"
        {"null_policy_runon.las", "data"}, // numbers that run together make lines shorter
        {"Shamar-1-iso-8859-15.las", "curves data"}, // all sections twice: curves and rows of both
        {"Wellington_KGS-1-32-wDST2_LASv3.las", "data"}, // commas do not part tokens
    };
    return reasons;
}

QString text(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

QJsonObject object(const QJsonObject &parent, const char *key)
{
    return parent.value(QLatin1String(key)).toObject();
}

bool hasRow(const WellInfo &info, int row, const QJsonArray &expected)
{
    for (int i = 0; i < info.curves.size(); ++i) {
        const LogCurveData &curve = info.curves.at(i);
        if (row >= curve.values.size() || !expected.at(i).isDouble()
            || curve.values.at(row) != expected.at(i).toDouble() || curve.depths.at(row) != expected.at(0).toDouble())
            return false;
    }
    return true;
}

/// The words of intended() that are true of \a info.
QSet<QString> differences(const WellInfo &info, const QJsonObject &file)
{
    QSet<QString> found;
    const auto check = [&found](bool same, const char *word) {
        if (!same)
            found.insert(QLatin1String(word));
    };
    const QJsonObject header = object(file, "header");
    const auto number = [&header](const char *key) {
        return object(header, key).value(QStringLiteral("number")).toDouble(0);
    };
    check(info.version == text(object(header, "vers"), "value_text"), "version");
    const QString wrap = text(object(header, "wrap"), "value_text");
    check(info.wrapped == (wrap.compare(QLatin1String("YES"), Qt::CaseInsensitive) == 0), "wrapped");
    check(info.depthUnit == text(object(header, "strt"), "unit"), "depthUnit");
    check(info.startDepth == number("strt"), "start");
    check(info.stopDepth == number("stop"), "stop");
    check(info.step == number("step"), "step");
    check(info.nullValue == number("null"), "null");

    const QJsonArray curves = file.value(QStringLiteral("curves")).toArray();
    check(info.curves.size() == curves.size(), "curves");
    for (int i = 0; i < curves.size() && info.curves.size() == curves.size(); ++i) {
        const QJsonObject curve = curves.at(i).toObject();
        check(info.curves.at(i).logName == text(curve, "mnemonic"), "mnemonic");
        check(info.curves.at(i).unit == text(curve, "unit"), "unit");
        check(info.curves.at(i).description == text(curve, "descr"), "description");
    }

    const QJsonObject data = object(file, "data");
    const int rows = data.value(QStringLiteral("rows")).toInt();
    for (int i = 0; i < info.curves.size(); ++i) {
        const LogCurveData &curve = info.curves.at(i);
        check(curve.values.size() == rows && curve.depths.size() == rows, "data");
        const QJsonValue nulls = data.value(QStringLiteral("null_counts")).toArray().at(i);
        if (nulls.isDouble())
            check(curve.values.count(info.nullValue) == nulls.toInt(), "data");
    }
    if (rows > 0 && !info.curves.isEmpty()) {
        check(hasRow(info, 0, data.value(QStringLiteral("first")).toArray()), "data");
        check(hasRow(info, rows / 2, data.value(QStringLiteral("middle")).toArray()), "data");
        check(hasRow(info, rows - 1, data.value(QStringLiteral("last")).toArray()), "data");
    }
    return found;
}

} // namespace

/// Real files from many sources: against an independent reader and against the slow literal one.
class TestWellInfoFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void asExpected_data() { files(); }
    void asExpected();
    void asLiteralReader_data() { files(); }
    void asLiteralReader();
    void intendedDifferences();

private:
    void files();

    QString m_folder = realFiles();
    QVector<QJsonObject> m_expected;
};

void TestWellInfoFiles::initTestCase()
{
    if (m_folder.isEmpty())
        QSKIP("the folder with real LAS files is not there");
    const QByteArray json = bytesOf(m_folder + QStringLiteral("expected.json"));
    const QJsonArray list = QJsonDocument::fromJson(json).object().value(QStringLiteral("files")).toArray();
    for (const QJsonValue &file : list)
        m_expected.append(file.toObject());
    QVERIFY(!m_expected.isEmpty());
}

void TestWellInfoFiles::files()
{
    QTest::addColumn<QJsonObject>("file");
    for (const QJsonObject &file : m_expected)
        QTest::newRow(text(file, "file").toUtf8().constData()) << file;
}

void TestWellInfoFiles::asExpected()
{
    QFETCH(QJsonObject, file);
    const QString name = text(file, "file");
    WellInfo info;
    QCOMPARE(info.load(m_folder + name), 0);
    const QStringList words = intended().value(name).split(u' ', Qt::SkipEmptyParts);
    QCOMPARE(differences(info, file), QSet<QString>(words.begin(), words.end()));
}

void TestWellInfoFiles::asLiteralReader()
{
    QFETCH(QJsonObject, file);
    const QString path = m_folder + text(file, "file");
    WellInfo info;
    QCOMPARE(info.load(path), 0);
    QCOMPARE(difference(info, literal::Reader(bytesOf(path), path)), QString());
}

/// What the files of intended() give instead, where it is worth a number.
void TestWellInfoFiles::intendedDifferences()
{
    const auto load = [this](const char *name) {
        WellInfo info;
        info.load(m_folder + QLatin1String(name));
        return info;
    };
    if (m_folder.isEmpty())
        QSKIP("the folder with real LAS files is not there");

    WellInfo info = load("P-135_out.LAS");
    QVERIFY(info.wrapped);
    QCOMPARE(info.curves.at(0).values.size(), 24755);
    QCOMPARE(info.curves.at(0).values.mid(0, 2), (QVector<double>{197.5104, -999.25}));
    QVERIFY(info.curves.at(22).values.isEmpty());

    info = load("Wellington_KGS-1-32-wDST2_LASv3.las");
    QCOMPARE(info.curves.at(0).values, QVector<double>(9341, 0.0));
    QVERIFY(info.curves.at(1).values.isEmpty());

    info = load("Shamar-1-iso-8859-15.las");
    QCOMPARE(info.curves.size(), 8);
    QCOMPARE(info.curves.at(3).values.size(), 161);
    QCOMPARE(info.curves.at(4).values.size(), 161); // the second data section has curves of its own

    info = load("null_policy_runon.las");
    QCOMPARE(info.curves.at(0).values.size(), 5);
    QCOMPARE(info.curves.at(6).values.size(), 2);

    info = load("data_characters.las");
    QCOMPARE(info.curves.at(0).values, (QVector<double>{0, 0}));

    // In LAS 1.2 the value follows the colon; the reader takes what stands before it.
    QCOMPARE(load("sample.las").uwi, QStringLiteral("UNIQUE WELL ID"));
    QCOMPARE(load("sample_2.0.las").uwi, QStringLiteral("100123401234W500"));
    QCOMPARE(load("encodings_utf16lebom.las").curves.size(), 8);
}

QTEST_APPLESS_MAIN(TestWellInfoFiles)
#include "tst_wellinfofiles.moc"
