// The Debian package that ./package makes, as the package manager reads it. What it leaves behind, a campaign tells.

#include "programrun.h"
#include "support/files.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class tst_package : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable("dpkg-deb").isEmpty()
            || QStandardPaths::findExecutable("dpkg-shlibdeps").isEmpty())
            QSKIP("the tools of Debian packages are not installed");
        if (!QFileInfo::exists(QStringLiteral(LORVA_BINARY_DIR "/share/lorva/doc/LORVA_doc.pdf")))
            QSKIP("this build made no manual: only optimised ones do");
        const ProgramRun packed = runProgram(
            QStringLiteral(LORVA_CPACK_COMMAND),
            {"--config", QStringLiteral(LORVA_BINARY_DIR "/CPackConfig.cmake"), "-B", m_folder.path()}, home());
        QVERIFY2(packed.exitCode == 0, qPrintable(packed.output + packed.errors));
        const QStringList names = QDir(m_folder.path()).entryList({"*.deb"});
        QCOMPARE(names.size(), 1);
        QVERIFY2(names.first().startsWith("lorva_0.0_"), qPrintable(names.first()));
        m_package = m_folder.filePath(names.first());
    }

    // The programs' libraries by themselves; of the rest, what no library tells.
    void itNeedsWhatItUses()
    {
        const QStringList depends = field("Depends").split(QStringLiteral(", "));
        for (const char *name : {"fonts-liberation", "qt5-image-formats-plugins"})
            QVERIFY2(depends.contains(QLatin1String(name)), name);
        for (const char *library : {"libqt5widgets5", "libqt5printsupport5", "libqt5network5", "libtiff", "zlib1g"})
            QVERIFY2(!depends.filter(QLatin1String(library)).isEmpty(), library);
        QVERIFY(!field("Depends").contains("lorva"));
        QCOMPARE(field("Recommends"), QString("xdg-utils")); // opens the manual
    }

    void itTellsWhatItIs()
    {
        QCOMPARE(field("Package"), QString("lorva"));
        QCOMPARE(field("Version"), QString("0.0"));
        QCOMPARE(field("Section"), QString("science"));
        const QStringList lines = field("Description").split('\n');
        QVERIFY(lines.size() >= 3);
        for (const QString &line : lines.mid(1)) // a line that begins with two blanks is not wrapped
            QVERIFY2(line.startsWith(' ') && !line.startsWith("  "), qPrintable(line));
    }

    void everythingLiesWhereItBelongs()
    {
        const QString listed = run({"-c", m_package});
        QMap<QString, QString> rights; // by path
        for (const QString &line : listed.split('\n', Qt::SkipEmptyParts)) {
            const QString path = line.mid(line.indexOf(" ./") + 2).section(" -> ", 0, 0);
            rights.insert(path, line.section(' ', 0, 1));
        }
        for (const char *program : {"lorva-workbench", "lorva-batch"})
            QCOMPARE(rights.value(QStringLiteral("/usr/bin/") + program), QString("-rwxr-xr-x root/root"));
        for (const char *file :
             {"lib/lorva/liblorva_workbench.so", "lib/lorva/plugins/libLORVAOS.so", "share/lorva/doc/LORVA_doc.pdf",
              "share/lorva/doc/start.md", "share/lorva/images/mainwindow.png", "share/lorva/ColorBars/cb_1.png",
              "share/applications/lorva-workbench.desktop", "share/mime/packages/lorva-las.xml",
              "share/man/man1/lorva-workbench.1.gz", "share/man/man1/lorva-batch.1.gz",
              "share/bash-completion/completions/lorva-batch", "share/doc/lorva/copyright",
              "share/doc/lorva/changelog.gz", "share/lintian/overrides/lorva",
              "share/icons/hicolor/scalable/apps/lorva-workbench.svg",
              "share/icons/hicolor/16x16/apps/lorva-workbench.png"})
            QVERIFY2(rights.value(QStringLiteral("/usr/") + file) == "-rw-r--r-- root/root", file);
        QCOMPARE(rights.value("/usr/share/lorva/Colorbars"), QString("lrwxrwxrwx root/root"));
        for (auto path = rights.begin(); path != rights.end(); ++path) {
            const bool isOurs = path.key().contains("lorva") || path.value().startsWith('d');
            QVERIFY2(path.key() == "/" || (path.key().startsWith("/usr/") && isOurs), qPrintable(path.key()));
            QVERIFY2(!path.key().contains(QRegularExpression("[.](a|h|cmake)$")), qPrintable(path.key()));
        }
        const QDir unpacked(m_folder.filePath("unpacked"));
        run({"-x", m_package, unpacked.path()});
        const QByteArray program = files::read(unpacked.filePath("usr/bin/lorva-workbench"));
        QVERIFY(program.startsWith("\x7f"
                                   "ELF")
                && !program.contains(".debug_info")); // stripped
        const ProgramRun version = runProgram(unpacked.filePath("usr/bin/lorva-batch"), {"--version"}, home());
        QCOMPARE(version.output, QString("lorva-batch 0.0\n"));
    }

    void itsChangesAreThoseOfItsVersion()
    {
        QVERIFY(files::read(QStringLiteral(LORVA_SOURCE_DIR "/packaging/changelog")).startsWith("lorva (0.0) "));
    }

private:
    QString home() const { return m_folder.path(); }
    QString run(const QStringList &words) const
    {
        return runProgram(QStandardPaths::findExecutable("dpkg-deb"), words, home()).output;
    }
    QString field(const char *name) const { return run({"-f", m_package, name}).trimmed(); }

    QTemporaryDir m_folder;
    QString m_package;
};

QTEST_GUILESS_MAIN(tst_package)
#include "tst_package.moc"
