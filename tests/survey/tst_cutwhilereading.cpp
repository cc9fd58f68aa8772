// Another program cuts a log's file at any moment of its being read.

#include "support/countedcalls.h"
#include "support/testmain.h"
#include "survey/logfile.h"
#include "surveyfixture.h"

#include <unistd.h>

using namespace survey_fixture;

namespace {

constexpr int sampleCount = 100000;
constexpr int leftBytes = 300000;

QByteArray cutPath;
int callsBefore = 0;

void cut()
{
    if (callsBefore-- == 0)
        (void)!::truncate(cutPath.constData(), leftBytes);
}

} // namespace

class TestCutWhileReading : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { ::alarm(60); } // reading that does not end fails
    void cleanup() { ::alarm(0); }
    void readingEnds();
    void checkingEnds();

private:
    /// Runs \a work once for each of its calls of the system, with the cut at that call, and once without.
    template<class Work>
    void atEachCall(const Work &work)
    {
        for (int call = 0, remaining = -1; remaining < 0; ++call) {
            m_survey.write("a^1.wll", m_whole);
            callsBefore = call;
            counted_calls::setOnCall(cut);
            work();
            counted_calls::setOnCall(nullptr);
            remaining = callsBefore;
        }
    }

    Survey m_survey;
    QByteArray m_whole;
};

void TestCutWhileReading::initTestCase()
{
    QVector<float> numbers;
    for (int i = 0; i < sampleCount; ++i)
        numbers << static_cast<float>(i) << 1;
    m_whole = logFile("GR", numbers);
    cutPath = QFile::encodeName(m_survey.file("a^1.wll"));
}

void TestCutWhileReading::readingEnds()
{
    QVector<int> counts;
    QStringList problems;
    atEachCall([&] {
        survey::LogFileHeader header;
        QString problem;
        const host::Outcome<host::LogData> log = survey::readLogFile(m_survey.file("a^1.wll"), &header, &problem);
        counts.append(log.value.values.size());
        problems.append(log.error + problem);
    });
    const int left = (leftBytes - (m_whole.size() - sampleCount * 8)) / 8;
    QVERIFY2(counts.size() > 3, qPrintable(QString::number(counts.size())));
    for (int i = 0; i < counts.size(); ++i) {
        QVERIFY(counts.at(i) >= left);
        QCOMPARE(problems.at(i),
                 counts.at(i) < sampleCount ? QStringLiteral("its last sample is cut off") : QString());
    }
    QVERIFY(counts.contains(left));
    QCOMPARE(counts.last(), sampleCount);
}

void TestCutWhileReading::checkingEnds()
{
    QStringList problems;
    atEachCall([&] {
        QString problem;
        const auto header = survey::checkLogFile(m_survey.file("a^1.wll"), &problem);
        problems.append(header.error + problem);
    });
    QVERIFY(problems.contains(QStringLiteral("its last sample is cut off")));
    problems.removeAll(QStringLiteral("its last sample is cut off"));
    problems.removeAll(QString());
    QCOMPARE(problems, QStringList());
}

LORVA_TEST_MAIN(TestCutWhileReading)
#include "tst_cutwhilereading.moc"
