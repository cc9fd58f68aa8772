// The program that draws the windows on a machine without a display: nobody is there to press a button, so it must
// come to its end whatever the survey is like.

#include "demo/demosurvey.h"
#include "programrun.h"
#include "support/files.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

namespace {

ProgramRun draw(const QString &survey, const QString &pictures)
{
    return runProgram(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-pictures"), {survey, pictures}, pictures);
}

} // namespace

class tst_pictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_original = m_root.filePath("original/Demo");
        QCOMPARE(demo::makeDemoSurvey(m_original), QString());
    }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_survey = m_folder->filePath("Demo");
        files::copyFolder(m_original, m_survey);
    }

    void aGoodSurveyGivesEveryPicture()
    {
        const ProgramRun run = runProgram(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-pictures"),
                                          {"--documents", m_survey, pictures()}, pictures());
        QVERIFY(run.hasEnded);
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.errors, QString());
        // All that the documents show, but for those of another program.
        QStringList names = QDir(QStringLiteral(LORVA_SOURCE_DIR "/docs/images")).entryList({"*.png"}, QDir::Files);
        names.erase(std::remove_if(names.begin(), names.end(),
                                   [](const QString &name) { return name.startsWith("opendtect-"); }),
                    names.end());
        QVERIFY(names.size() > 20);
        for (const QString &name : qAsConst(names)) {
            const QString file = pictures() + '/' + name;
            QVERIFY2(run.output.contains(file), qPrintable(name));
            QVERIFY2(!QImage(file).isNull(), qPrintable(name));
        }
    }

    void theDarkPaletteIsForAllPictures()
    {
        const ProgramRun run = runProgram(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-pictures"),
                                          {"--dark", m_survey, pictures()}, pictures());
        QCOMPARE(run.exitCode, 0);
        for (const char *name : {"workbench.png", "mainwindow.png", "las-import.png"})
            QVERIFY2(QColor(QImage(pictures() + '/' + name).pixel(1, 1)).lightness() < 80, name);
    }

    void aFolderThatIsNoSurveyIsNamed()
    {
        const QString none = m_folder->filePath("none");
        const ProgramRun run = draw(none, pictures());
        QVERIFY(run.hasEnded);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.errors.contains(none), qPrintable(run.errors));
    }

    void aDamagedWellIsNamedAndTheRestIsDrawn()
    {
        const QString well = firstFile("*.well");
        files::write(well, "damaged");
        const ProgramRun run = draw(m_survey, pictures());
        QVERIFY(run.hasEnded);
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.errors.contains(well), qPrintable(run.errors));
        // The box of the plug-in, which asks with boxes of its own.
        QVERIFY2(run.errors.contains("Reading Wells Data: Cannot get data for the well"), qPrintable(run.errors));
        QVERIFY(QFileInfo::exists(pictures() + "/mainwindow.png"));
    }

    void anUnreadableListIsNamed()
    {
        const QString list = m_survey + "/WellInfo/.omf";
        files::write(list, "rubbish");
        const ProgramRun run = draw(m_survey, pictures());
        QVERIFY(run.hasEnded);
        QVERIFY2(run.errors.contains(list), qPrintable(run.errors));
    }

    void aPictureThatCannotBeWrittenIsNamed()
    {
        const QString inTheWay = pictures() + "/launcher.png";
        QVERIFY(QDir().mkpath(inTheWay));
        const ProgramRun run = draw(m_survey, pictures());
        QVERIFY(run.hasEnded);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.errors.contains("Cannot draw " + inTheWay), qPrintable(run.errors));
        QVERIFY(!run.errors.contains("workbench.png"));
        QVERIFY(QFileInfo::exists(pictures() + "/mainwindow.png"));
    }

private:
    QString pictures() const { return m_folder->filePath("pictures"); }
    QString firstFile(const char *pattern) const
    {
        const QDir wells(m_survey + "/WellInfo");
        return wells.filePath(wells.entryList({pattern}, QDir::Files).first());
    }

    QTemporaryDir m_root;
    QString m_original;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_survey;
};

QTEST_GUILESS_MAIN(tst_pictures)
#include "tst_pictures.moc"
