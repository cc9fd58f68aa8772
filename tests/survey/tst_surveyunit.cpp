#include "support/files.h"
#include "support/testmain.h"
#include "survey/surveyunit.h"
#include "surveyfixture.h"

#include <QTemporaryDir>

using survey::DepthUnit;
using survey::SurveyUnit;
using survey_fixture::header;

/// The unit is kept only as long as what tells it is unchanged.
class TestSurveyUnit : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aChangedSurveyFileIsRead()
    {
        write("s/.survey", depthSurvey('D'));
        SurveyUnit unit;
        QCOMPARE(unit.of(path("s")), DepthUnit::Metre);
        write("s/.survey", depthSurvey('F'));
        QCOMPARE(unit.of(path("s")), DepthUnit::Foot);
    }

    void changedDefaultsAreRead()
    {
        write("s/.survey", timeSurvey());
        write("s/.defs", defaults("No"));
        SurveyUnit unit;
        QCOMPARE(unit.of(path("s")), DepthUnit::Metre);
        write("s/.defs", defaults("Yes"));
        QCOMPARE(unit.of(path("s")), DepthUnit::Foot);
        QVERIFY(QFile::remove(path("s/.defs")));
        QCOMPARE(unit.of(path("s")), DepthUnit::Metre);
        write("s/.defs", defaults("Yes"));
        QCOMPARE(unit.of(path("s")), DepthUnit::Foot);
    }

    // Both have the same file, but of one of them it is outside.
    void anotherSurveyIsRead()
    {
        write("feet/.survey", depthSurvey('F'));
        QVERIFY(QDir().mkdir(path("linked")));
        QVERIFY(QFile::link(path("feet/.survey"), path("linked/.survey")));
        SurveyUnit unit;
        QCOMPARE(unit.of(path("feet")), DepthUnit::Foot);
        QCOMPARE(unit.of(path("linked")), DepthUnit::Metre);
        QCOMPARE(unit.of(path("feet")), DepthUnit::Foot);
    }

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }
    // And waits until another change would show in the file's time.
    void write(const char *name, const QByteArray &bytes) const
    {
        files::write(path(name), bytes);
        QTRY_VERIFY(base::fileState(path(name)).isSettled);
    }
    static QByteArray depthSurvey(char unit)
    {
        return header("Survey Info") + "Name: Probe\nZ range: 0`9000`5`" + unit + "\n!\n";
    }
    static QByteArray timeSurvey() { return header("Survey Info") + "Name: Probe\nZ range: 0`3`0.004`T\n!\n"; }
    static QByteArray defaults(const QByteArray &inFeet)
    {
        return header("Survey defaults") + "Show depth in feet: " + inFeet + "\n!\n";
    }
    std::unique_ptr<QTemporaryDir> m_folder;
};

LORVA_TEST_MAIN(TestSurveyUnit)
#include "tst_surveyunit.moc"
