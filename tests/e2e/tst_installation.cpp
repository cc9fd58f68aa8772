// What "cmake --install" leaves is complete: the program starts from there and finds its plug-in and its resources.

#include "programrun.h"
#include "support/files.h"
#include "survey/surveyfolder.h"

#include <QDir>
#include <QImage>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QStandardPaths>
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

    void noResourceIsLeftOut()
    {
        const QDir data(prefix() + "/share/lorva");
        const QDir source(QStringLiteral(LORVA_SOURCE_DIR));
        const auto names = [](const QString &folder, const QStringList &kinds) {
            return QDir(folder).entryList(kinds, QDir::Files, QDir::Name);
        };
        for (const char *folder : {"icons.Default", "ColorBars"})
            QCOMPARE(names(data.filePath(QLatin1String(folder)), {"*.png"}),
                     names(source.filePath(QStringLiteral("icons/") + QLatin1String(folder)), {"*.png"}));
        const QStringList pages = names(data.filePath("doc"), {"*.md"});
        QCOMPARE(pages, names(source.filePath("docs/manual"), {"*.md"}));
        int pictures = 0;
        static const QRegularExpression picture(QStringLiteral("!\\[[^\\]]*\\]\\(([^)]+)\\)"));
        for (const QString &page : pages) {
            auto found = picture.globalMatch(QString::fromUtf8(files::read(data.filePath("doc/" + page))));
            while (found.hasNext()) {
                const QString name = found.next().captured(1);
                QVERIFY2(QFileInfo::exists(data.filePath("doc/" + name)), qPrintable(page + ' ' + name));
                ++pictures;
            }
        }
        QVERIFY(pictures > 20);
        QVERIFY(names(data.filePath("images"), {"opendtect-*"}).isEmpty()); // of the developers' pages
        const QString manual = QStringLiteral(LORVA_BINARY_DIR "/share/lorva/doc/LORVA_doc.pdf");
        if (QFileInfo::exists(manual)) // not every build makes it
            QCOMPARE(files::read(data.filePath("doc/LORVA_doc.pdf")), files::read(manual));
        QVERIFY(files::read(prefix() + "/share/doc/lorva/copyright").contains("Copyright"));
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

    void theDesktopEntryIsSound()
    {
        const QString entry = prefix() + "/share/applications/lorva-workbench.desktop";
        const QString text = QString::fromUtf8(files::read(entry));
        QVERIFY(text.startsWith("[Desktop Entry]\n"));
        for (const char *line :
             {"Type=Application", "Name=LORVA Workbench", "Terminal=false", "Categories=Science;Geoscience;"})
            QVERIFY2(text.contains(QStringLiteral("\n%1\n").arg(line)), line);
        const QString program = QStandardPaths::findExecutable("desktop-file-validate");
        if (program.isEmpty())
            QSKIP("desktop-file-validate is not installed");
        const ProgramRun run = runProgram(program, {entry}, home());
        QVERIFY2(run.exitCode == 0 && run.output.isEmpty(), qPrintable(run.output));
    }

    // As a file manager asks: by the ending, and by what is in a file without one.
    void lasFilesAreOfTheirKind()
    {
        const QByteArray before = qgetenv("XDG_DATA_DIRS");
        qputenv("XDG_DATA_DIRS", QFile::encodeName(prefix()) + "/share:/usr/share");
        const QMimeDatabase kinds; // the first one of this process
        const auto kindOf = [&kinds](const char *name, const QByteArray &content) {
            return kinds.mimeTypeForFileNameAndData(QLatin1String(name), content).name();
        };
        const QString las("text/x-las-well-log");
        const QByteArray header("~Version Information\n VERS. 2.0 :\n");
        QCOMPARE(kindOf("a.las", header), las);
        QCOMPARE(kindOf("A.LAS", header), las);
        QCOMPARE(kindOf("a.LAS", "# made by hand\n~V\n"), las);
        QCOMPARE(kindOf("a", header), las);
        QCOMPARE(kindOf("a", "# made by hand\n" + header.toLower()), las);
        QVERIFY(kindOf("a.txt", "plain") != las);
        QVERIFY(kinds.mimeTypeForName(las).inherits("text/plain"));
        QCOMPARE(kinds.mimeTypeForName(las).comment(), QString("LAS well logs"));
        qputenv("XDG_DATA_DIRS", before);
    }

private:
    QString prefix() const { return m_folder.filePath("installed"); }
    QString home() const { return m_folder.path(); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_installation)
#include "tst_installation.moc"
