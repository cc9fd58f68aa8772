// What "cmake --install" leaves is complete: the program starts from there and finds its plug-in and its resources.

#include "programrun.h"
#include "support/files.h"
#include "survey/surveyfolder.h"

#include <QDir>
#include <QDirIterator>
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
        if (QFileInfo::exists(listOfInstalled()))
            m_earlierList = files::read(listOfInstalled());
        const ProgramRun installed =
            runProgram(QStringLiteral(LORVA_CMAKE_COMMAND),
                       {"--install", QStringLiteral(LORVA_BINARY_DIR), "--prefix", prefix()}, home());
        QVERIFY2(installed.exitCode == 0, qPrintable(installed.errors));
    }

    // CMake's list is that of the last installation: it may be one of the user's.
    void cleanupTestCase()
    {
        if (m_earlierList.isEmpty())
            QFile::remove(listOfInstalled());
        else
            files::write(listOfInstalled(), m_earlierList);
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

    // By the lines that README gives, from a folder that others use too.
    void aRemovalLeavesNothing()
    {
        const QString shared = m_folder.filePath("shared");
        const QStringList others{"bin/other", "share/icons/hicolor/16x16/apps/other.png", "share/man/man1/other.1"};
        for (const QString &other : others) {
            QVERIFY(QDir().mkpath(QFileInfo(shared + '/' + other).path()));
            files::write(shared + '/' + other, "other");
        }
        for (int again = 0; again < 2; ++again) {
            const ProgramRun installed =
                runProgram(QStringLiteral(LORVA_CMAKE_COMMAND),
                           {"--install", QStringLiteral(LORVA_BINARY_DIR), "--prefix", shared}, home());
            QVERIFY2(installed.exitCode == 0, qPrintable(installed.errors));
        }
        QVERIFY(filesBelow(shared).size() > 80);
        QString lines = removalLines("README.md");
        QCOMPARE(lines.count('\n'), 2);
        lines.replace("build/release/", QStringLiteral(LORVA_BINARY_DIR "/")).replace("DIR/", shared + '/');
        const ProgramRun removed = runProgram("bash", {"-ec", lines}, home());
        QVERIFY2(removed.exitCode == 0 && removed.errors.isEmpty(), qPrintable(removed.errors));
        QCOMPARE(filesBelow(shared), others);
        QDirIterator folders(shared, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (folders.hasNext())
            QVERIFY2(!folders.next().contains("lorva", Qt::CaseInsensitive), qPrintable(folders.filePath()));
    }

    // The same for the pictures in the folder of the host, whose own stay as they are.
    void aRemovalFromTheHostLeavesItsOwn()
    {
        const QString software = m_folder.filePath("software");
        const QString icons = software + "/data/icons.Default/";
        QVERIFY(QDir().mkpath(icons));
        files::write(icons + "plus.png", "the host's");
        files::write(icons + "save.png", "the host's");
        const QString list = m_folder.filePath("build/opendtect/install_manifest_opendtect.txt");
        const QString script = m_folder.filePath("install.cmake");
        files::write(script,
                     QStringLiteral("set(CMAKE_INSTALL_PREFIX %1)\nset(source %2/icons)\n"
                                    "include(%2/cmake/InstallOpendTectData.cmake)\n"
                                    "list(JOIN CMAKE_INSTALL_MANIFEST_FILES \"\\n\" content)\n"
                                    "file(WRITE %3 \"${content}\\n\")\n")
                         .arg(software, QStringLiteral(LORVA_SOURCE_DIR), list)
                         .toUtf8());
        for (int again = 0; again < 2; ++again) {
            const ProgramRun installed = runProgram(QStringLiteral(LORVA_CMAKE_COMMAND), {"-P", script}, home());
            QVERIFY2(installed.exitCode == 0, qPrintable(installed.errors));
        }
        QVERIFY(QFileInfo(icons + "marker.png").size() > 100);
        QVERIFY(!QFileInfo::exists(icons + "plus.small.png")); // goes with the host's own
        QVERIFY(QFileInfo(software + "/data/Colorbars").isSymLink());
        QVERIFY(QDir().mkpath(software + "/doc/LORVAOS/manual"));
        QString lines = removalLines("docs/opendtect.md");
        QCOMPARE(lines.count('\n'), 2);
        const ProgramRun removed = runProgram(
            "bash", {"-ec", "cd \"$0\"\n" + lines.replace("/opt/OpendTect/6.6.0/", software + '/'), home()}, home());
        QVERIFY2(removed.exitCode == 0 && removed.errors.isEmpty(), qPrintable(removed.errors));
        QCOMPARE(filesBelow(software), QStringList({"data/icons.Default/plus.png", "data/icons.Default/save.png"}));
        QCOMPARE(files::read(icons + "plus.png"), QByteArray("the host's"));
        QCOMPARE(QDir(software + "/data").entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{"icons.Default"});
        QVERIFY(!QFileInfo::exists(software + "/doc/LORVAOS"));
    }

private:
    static QString listOfInstalled() { return QStringLiteral(LORVA_BINARY_DIR "/install_manifest.txt"); }

    /// The shell's lines of a page of ours that remove an installation.
    static QString removalLines(const QString &page)
    {
        const QString text = QString::fromUtf8(files::read(QStringLiteral(LORVA_SOURCE_DIR "/") + page));
        static const QRegularExpression lines(QStringLiteral("^    (xargs .*)\\n    (find .*)$"),
                                              QRegularExpression::MultilineOption);
        const QRegularExpressionMatch found = lines.match(text);
        return found.captured(1) + '\n' + found.captured(2) + '\n';
    }

    /// Files and links below a folder, from there.
    static QStringList filesBelow(const QString &folder)
    {
        QStringList found;
        QDirIterator entries(folder, QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
        while (entries.hasNext())
            found.append(QDir(folder).relativeFilePath(entries.next()));
        found.sort();
        return found;
    }

    QString prefix() const { return m_folder.filePath("installed"); }
    QString home() const { return m_folder.path(); }

    QTemporaryDir m_folder;
    QByteArray m_earlierList;
};

QTEST_GUILESS_MAIN(tst_installation)
#include "tst_installation.moc"
