// What "cmake --install" leaves is complete: the program starts from there and finds its plug-in and its resources.

#include "programrun.h"
#include "support/files.h"
#include "survey/surveyfolder.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

class tst_installation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const ProgramRun installed =
            runProgram(QStringLiteral(LORVA_CMAKE_COMMAND),
                       {"--install", QStringLiteral(LORVA_BINARY_DIR), "--prefix", prefix()}, home());
        QVERIFY2(installed.exitCode == 0, qPrintable(installed.errors));
    }

    void theProgramStarts()
    {
        const ProgramRun version = runProgram(prefix() + "/bin/lorva-workbench", {"--version"}, home());
        QCOMPARE(version.exitCode, 0);
        QCOMPARE(version.output, QString("lorva-workbench 0.0\n"));
    }

    void theBatchToolIsThereWithItsTexts()
    {
        const ProgramRun version = runProgram(prefix() + "/bin/lorva-batch", {"--version"}, home());
        QCOMPARE(version.exitCode, 0);
        QCOMPARE(version.output, QString("lorva-batch 0.0\n"));
        QVERIFY(QFileInfo(prefix() + "/share/man/man1/lorva-batch.1").size() > 1000);
        QVERIFY(QFileInfo(prefix() + "/share/bash-completion/completions/lorva-batch").size() > 1000);
    }

    void thePluginIsLoadedFromThere()
    {
        const QString survey = m_folder.filePath("survey");
        QCOMPARE(survey::createSurvey(survey, {}).error, QString());
        // The other plug-in closes the window; both are listed before.
        const ProgramRun started =
            runProgram(prefix() + "/bin/lorva-workbench",
                       {"--plugin-dir", QStringLiteral(LORVA_BINARY_DIR "/tests/plugins"), survey}, home());
        QCOMPARE(started.exitCode, 0);
        QCOMPARE(started.errors, QString());
        QVERIFY2(started.output.contains("action: &LORVA OS 0.0\n"), qPrintable(started.output));
    }

    void resourcesAreThere()
    {
        const QDir data(prefix() + "/share/lorva");
        QVERIFY(!QImage(data.filePath("icons.Default/LORVA_wlc.png")).isNull());
        for (const char *folder : {"ColorBars", "Colorbars"})
            QVERIFY2(!QImage(data.filePath(QLatin1String(folder) + "/cb_1.png")).isNull(), folder);
        const QString page = data.filePath("doc/mainwindow.md");
        QVERIFY(QFileInfo(page).isFile() && !QFileInfo(page).isSymLink());
        // The pages show the pictures beside their folder.
        QVERIFY(QString::fromUtf8(files::read(page)).contains("](../images/mainwindow.png)"));
        QVERIFY(!QImage(data.filePath("images/mainwindow.png")).isNull());
    }

    void theDesktopKnowsTheProgramAndItsFiles()
    {
        const QDir share(prefix() + "/share");
        const QString entry = QString::fromUtf8(files::read(share.filePath("applications/lorva-workbench.desktop")));
        QVERIFY(entry.contains("\nExec=lorva-workbench %F\n"));
        const QString kinds = QString::fromUtf8(files::read(share.filePath("mime/packages/lorva-las.xml")));
        const QString kind = QString("text/x-las-well-log");
        QVERIFY(entry.contains("\nMimeType=" + kind + ";\n"));
        QVERIFY(kinds.contains("<mime-type type=\"" + kind + "\">") && kinds.contains("<glob pattern=\"*.las\"/>"));
        const QString icon = QString("icons/hicolor/16x16/apps/lorva-workbench.png");
        QVERIFY(entry.contains("\nIcon=lorva-workbench\n"));
        QVERIFY(!QImage(share.filePath(icon)).isNull());
        QVERIFY(QFileInfo(share.filePath("icons/hicolor/scalable/apps/lorva-workbench.svg")).isFile());
        QVERIFY(QFileInfo(share.filePath("man/man1/lorva-workbench.1")).isFile());
    }

private:
    QString prefix() const { return m_folder.filePath("installed"); }
    QString home() const { return m_folder.path(); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_installation)
#include "tst_installation.moc"
