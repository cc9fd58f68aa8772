#include "support/files.h"
#include "support/testmain.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

namespace {

struct Source
{
    QString path; ///< relative to the project
    QString folder; ///< its first folder, or "host/opendtect"
    QStringList lines;
};

// Comments go and string literals become "", but include lines stay.
QString withoutTexts(const QString &source)
{
    static const QRegularExpression token(
        QStringLiteral("(?<include>^[ \\t]*#[ \\t]*include[^\\n]*)|R\"(?<mark>[^(\\s]*)\\((?s:.*?)\\)\\k<mark>\"|"
                       "\"(?:[^\"\\\\\\n]|\\\\.)*\"|'(?:[^'\\\\\\n]|\\\\.)+'|//[^\\n]*|/\\*(?s:.*?)\\*/"),
        QRegularExpression::MultilineOption);
    QString result;
    int done = 0;
    auto match = token.globalMatch(source);
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        result += source.midRef(done, found.capturedStart() - done);
        if (!found.captured(QStringLiteral("include")).isEmpty())
            result += found.captured();
        else if (found.captured().startsWith(QLatin1Char('/')))
            result += QString(found.captured().count(QLatin1Char('\n')), QLatin1Char('\n'));
        else
            result += QStringLiteral("\"\"");
        done = found.capturedEnd();
    }
    return result + source.midRef(done);
}

QString folderOf(const QString &path)
{
    if (path.startsWith(QLatin1String("host/opendtect/")))
        return QStringLiteral("host/opendtect");
    return path.section(QLatin1Char('/'), 0, 0);
}

const QStringList productFolders{
    QStringLiteral("base"),        QStringLiteral("host"),     QStringLiteral("workbench"), QStringLiteral("demo"),
    QStringLiteral("datastore"),   QStringLiteral("las"),      QStringLiteral("templates"), QStringLiteral("logview"),
    QStringLiteral("correlation"), QStringLiteral("welldata"), QStringLiteral("mainwin"),   QStringLiteral("plugin"),
    QStringLiteral("programs"),    QStringLiteral("survey"),
};

QVector<Source> sourcesIn(const QStringList &folders)
{
    QVector<Source> sources;
    const QDir project(QStringLiteral(LORVA_SOURCE_DIR));
    for (const QString &folder : folders) {
        QDirIterator entries(project.filePath(folder), {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = project.relativeFilePath(entries.next());
            const QString text = withoutTexts(QString::fromUtf8(files::read(project.filePath(path))));
            sources.append({path, folderOf(path), text.split(QLatin1Char('\n'))});
        }
    }
    return sources;
}

QStringList linesMatching(const QVector<Source> &sources, const QRegularExpression &pattern,
                          const QStringList &except)
{
    QStringList found;
    for (const Source &source : sources)
        for (int i = 0; i < source.lines.size() && !except.contains(source.path); ++i)
            if (pattern.match(source.lines.at(i)).hasMatch())
                found.append(
                    QStringLiteral("%1:%2: %3").arg(source.path).arg(i + 1).arg(source.lines.at(i).trimmed()));
    return found;
}

// A stream into bytes opens no file.
const QRegularExpression
    opensForWriting(QStringLiteral("^(?!.*\\bQDataStream "
                                   "\\w+\\(&bytes,).*(\\b(WriteOnly|ReadWrite|Append|Truncate|NewOnly)\\b|"
                                   "\\bQSaveFile\\b|\\bQTemporaryFile\\b|\\b(w?ofstream|w?"
                                   "fstream)\\b"
                                   "|\\bfopen(64)?\\s*\\(|\\bfreopen\\s*\\(|\\bO_(WRONLY|RDWR|CREAT|TRUNC)\\b|"
                                   "\\bcreat\\s*\\(|\\bmkos?temp\\s*\\()"));

const QRegularExpression
    writesByItself(QStringLiteral("\\bQSettings\\b|\\bQFile::copy\\b"
                                  "|(image|pixmap|picture|grab\\(\\))(\\.|->)save\\s*\\(\\s*[^&\\s]"),
                   QRegularExpression::CaseInsensitiveOption);

const QRegularExpression movesFiles(
    QStringLiteral(
        "\\bstd::rename\\b|(^|[^:\\w])::(rename|link)\\s*\\(|\\brenameat2?\\b|\\bQ(File|Dir)\\b.*\\brename\\s*\\("
        "|\\b(file|dir|folder)\\.rename\\s*\\(|\\bQFile::link\\b"),
    QRegularExpression::CaseInsensitiveOption);

const QRegularExpression obeysTheLocale(
    QStringLiteral("\\b(strtod|strtof|strtold|atof|stod|stof|stold|sscanf|fscanf|scanf|vsscanf|setlocale|sprintf|"
                   "snprintf|asprintf)\\b"
                   "|\\bstd::locale\\b|\\bQLocale::system\\b|\\bQLocale\\(\\)|\\bQString::asprintf\\b"));

// Qt keeps names of fonts as long as the program runs; a literal goes with the plug-in.
const QRegularExpression fontOfALiteral(QStringLiteral("\\bQFont\\b[^;]*\\(\\s*QStringLiteral"
                                                       "|\\bsetFamily\\s*\\(\\s*QStringLiteral"));

// What lets other code of ours run before it returns. Menus that are popped up, and Qt's own loops, do not.
const QRegularExpression
    handlesEvents(QStringLiteral("(\\.|->)exec\\s*\\(|\\bprocessEvents\\s*\\("
                                 "|\\bQ(File|Color|Input|Font)Dialog::get|\\bQEventLoop\\b(?!::)"));
const QRegularExpression standsNested(QStringLiteral("\\bNestedEvents\\b"));

bool isOfThePlugin(const Source &source)
{
    return !QStringList{QStringLiteral("survey"), QStringLiteral("workbench"), QStringLiteral("demo"),
                        QStringLiteral("programs"), QStringLiteral("host/opendtect")}
                .contains(source.folder);
}

// Hundreds of headers, which nothing precompiles: one such line took a third of a test's compilation.
const QRegularExpression
    includesAWholeModule(QStringLiteral("^\\s*#\\s*include\\s*<Qt(Core|Gui|Widgets|PrintSupport|Test)(/Qt\\w+)?>"));

// Who may include whom; every folder may include itself and base.
QStringList allowedFolders(const QString &folder)
{
    static const QHash<QString, QString> table{
        {QStringLiteral("base"), QString()},
        {QStringLiteral("host"), QString()},
        {QStringLiteral("host/opendtect"), QStringLiteral("host plugin")},
        {QStringLiteral("survey"), QStringLiteral("host las")},
        {QStringLiteral("workbench"), QStringLiteral("survey host las")},
        {QStringLiteral("demo"), QStringLiteral("survey datastore las templates correlation welldata host")},
        {QStringLiteral("datastore"), QStringLiteral("host")},
        {QStringLiteral("las"), QStringLiteral("datastore host")},
        {QStringLiteral("templates"), QStringLiteral("datastore host")},
        {QStringLiteral("logview"), QStringLiteral("datastore templates host")},
        {QStringLiteral("correlation"), QStringLiteral("logview templates datastore host")},
        {QStringLiteral("welldata"), QStringLiteral("datastore host")},
        {QStringLiteral("mainwin"), QStringLiteral("host datastore las templates logview correlation welldata")},
        {QStringLiteral("plugin"), QStringLiteral("mainwin datastore host")},
    };
    if (folder == QLatin1String("programs")) // they put the parts together; nothing includes them
        return productFolders;
    return table.value(folder).split(QLatin1Char(' '), Qt::SkipEmptyParts)
        + QStringList{folder, QStringLiteral("base")};
}

const QRegularExpression includeLine(QStringLiteral("^\\s*#\\s*include\\s*[\"<]([^\">]+)[\">]"));

// The first named namespace of a file that is neither its folder's (a program of several files has a folder of its own)
// nor its own, but for blocks that only announce classes.
QString foreignNamespace(const Source &source)
{
    static const QRegularExpression opening(QStringLiteral("^namespace (\\w+)(::\\w+)* \\{"));
    static const QRegularExpression announcement(QStringLiteral("^\\s*((class|struct|enum class) \\w+;)?$"));
    const QString own = source.folder.section(QLatin1Char('/'), -1);
    for (int i = 0; i < source.lines.size(); ++i) {
        const QString name = opening.match(source.lines.at(i)).captured(1);
        if (name.isEmpty() || name == own || source.path.contains(QLatin1Char('/') + name + QLatin1Char('.'))
            || (source.folder == QLatin1String("programs")
                && source.path.contains(QLatin1Char('/') + name + QLatin1Char('/'))))
            continue;
        int line = i + 1;
        while (line < source.lines.size() && announcement.match(source.lines.at(line)).hasMatch())
            ++line;
        if (!source.lines.value(line).startsWith(QLatin1Char('}')))
            return name;
    }
    return {};
}

// Why an include is against the rules; empty when it is not.
QString includeProblem(const Source &source, const QString &included)
{
    const QString folder = folderOf(included);
    if (!included.contains(QLatin1Char('/')) || !productFolders.contains(included.section(QLatin1Char('/'), 0, 0)))
        return {};
    if (source.path == QLatin1String("plugin/workbenchentry.cpp")
        && (included == QLatin1String("workbench/hostaccess.h")
            || included == QLatin1String("workbench/plugininforecord.h")))
        return {};
    if (source.path.startsWith(QLatin1String("host/opendtect/plainfiles."))
        && (included == QLatin1String("survey/odfile.h") || included == QLatin1String("survey/wellfile.h")))
        return {};
    if (!allowedFolders(source.folder).contains(folder))
        return QStringLiteral("%1 may not include %2").arg(source.path, included);
    if ((source.folder == QLatin1String("workbench") || source.folder == QLatin1String("survey"))
        && folder == QLatin1String("las")
        && (included.contains(QLatin1String("dialog")) || included.contains(QLatin1String("widget"))))
        return QStringLiteral("%1 may not include a dialog (%2)").arg(source.path, included);
    return {};
}

} // namespace

class TestSourceRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void findsWhatItLooksFor();
    void nothingIncludesAWholeModule();
    void onlyTheAtomicWriterOpensFilesForWriting();
    void nothingElseOfQtWritesFiles();
    void onlyTheSeamMovesFiles();
    void nothingTouchesTheProcessMask();
    void nothingReadsOrWritesNumbersByTheLocale();
    void fontsAreNotNamedByLiterals();
    void whoHandlesEventsSaysSo();
    void includesFollowTheArrows();
    void includesNameExistingFiles();
    void aFoldersNamesLiveInItsNamespace();
    void noFileIsTooLong();
    void whiteSpaceAndLinesAreToldInOnePlace();

private:
    QVector<Source> m_sources;
};

void TestSourceRules::initTestCase()
{
    m_sources = sourcesIn(productFolders);
    QVERIFY(m_sources.size() > 60);
}

// The patterns and the table against made-up sources, so that the tests below cannot pass by finding nothing.
void TestSourceRules::findsWhatItLooksFor()
{
    for (const char *line :
         {"f.open(QIODevice::WriteOnly)", "f.open(QFile::ReadWrite)", "QIODevice::Append", "QSaveFile f",
          "std::ofstream out", "fopen(name, \"w\")", "open(p, O_WRONLY)", "open(p, O_CREAT | O_RDWR)"})
        QVERIFY2(opensForWriting.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line : {"f.open(QIODevice::ReadOnly)", "Appended", "open(p, O_RDONLY)", "isWriteOnlyOnce",
                             "QDataStream stream(&bytes, QIODevice::Append);"})
        QVERIFY2(!opensForWriting.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line : {"QSettings settings;", "QFile::copy(a, b)", "image.save(path)", "grab().save( path, 0)",
                             "pixmap->save(name)", "m_image.save(path)"})
        QVERIFY2(writesByItself.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line : {"image.save(&buffer, 0)", "image.saved(path)", "store.save(well)", "QFile::copyright"})
        QVERIFY2(!writesByItself.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line : {"strtod(a, &b)", "std::stod(s)", "atof(s)", "sscanf(s, f)", "setlocale(LC_ALL, \"\")"})
        QVERIFY2(obeysTheLocale.match(QString::fromLatin1(line)).hasMatch(), line);
    QCOMPARE(withoutTexts(
                 QStringLiteral("a(\"x // y\"); // strtod\n#include \"a/b.h\"\n/* atof\n*/ b('\"', R\"(q\"q)\")")),
             QStringLiteral("a(\"\"); \n#include \"a/b.h\"\n\n b(\"\", \"\")"));

    const auto problem = [](const char *path, const char *included) {
        const QString name = QString::fromLatin1(path);
        return !includeProblem({name, folderOf(name), {}}, QString::fromLatin1(included)).isEmpty();
    };
    QVERIFY(problem("base/x.cpp", "host/host.h"));
    QVERIFY(problem("host/host.h", "survey/odfile.h"));
    QVERIFY(problem("workbench/x.cpp", "datastore/project.h"));
    QVERIFY(problem("survey/x.cpp", "workbench/workbenchhost.h"));
    QVERIFY(problem("survey/x.cpp", "datastore/project.h"));
    QVERIFY(problem("survey/x.cpp", "las/lasdialog.h"));
    QVERIFY(problem("demo/x.cpp", "workbench/workbenchhost.h"));
    QVERIFY(problem("mainwin/x.cpp", "survey/surveystore.h"));
    QVERIFY(problem("workbench/x.cpp", "plugin/launcher.h"));
    QVERIFY(problem("workbench/x.cpp", "las/lasdialog.h"));
    QVERIFY(problem("plugin/launcher.cpp", "workbench/hostaccess.h"));
    QVERIFY(problem("plugin/workbenchentry.cpp", "survey/surveystore.h"));
    QVERIFY(problem("datastore/x.cpp", "las/lasreader.h"));
    QVERIFY(problem("templates/x.cpp", "logview/x.h"));
    QVERIFY(problem("logview/x.cpp", "correlation/x.h"));
    QVERIFY(problem("welldata/x.cpp", "mainwin/x.h"));
    QVERIFY(problem("mainwin/x.cpp", "workbench/x.h"));
    QVERIFY(problem("mainwin/x.cpp", "plugin/x.h"));
    QVERIFY(problem("plugin/x.cpp", "host/opendtect/x.h"));
    QVERIFY(problem("host/opendtect/plainfiles.cpp", "survey/surveystore.h"));
    QVERIFY(problem("host/opendtect/storedwell.cpp", "survey/wellfile.h"));
    QVERIFY(problem("workbench/x.cpp", "demo/demosurvey.h"));
    QVERIFY(problem("demo/x.cpp", "programs/unattended.h"));
    QVERIFY(!problem("programs/x.cpp", "demo/demosurvey.h"));
    QVERIFY(!problem("programs/x.cpp", "programs/unattended.h"));
    QVERIFY(!problem("plugin/workbenchentry.cpp", "workbench/hostaccess.h"));
    QVERIFY(!problem("workbench/x.cpp", "las/lasheader.h"));
    QVERIFY(!problem("correlation/x.cpp", "logview/x.h"));
    QVERIFY(!problem("base/x.cpp", "sys/stat.h"));
    QVERIFY(!problem("host/opendtect/x.cpp", "plugin/launcher.h"));
    QVERIFY(!problem("host/opendtect/plainfiles.h", "survey/wellfile.h"));
}

void TestSourceRules::nothingIncludesAWholeModule()
{
    for (const char *line : {"#include <QtTest>", "#include <QtCore/QtCore>", "#  include <QtWidgets>"})
        QVERIFY2(includesAWholeModule.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line : {"#include <QTest>", "#include <QtGlobal>", "#include <QtCore/qglobal.h>"})
        QVERIFY2(!includesAWholeModule.match(QString::fromLatin1(line)).hasMatch(), line);
    const QVector<Source> sources =
        sourcesIn(productFolders + QStringList{QStringLiteral("tests"), QStringLiteral("benchmarks")});
    QVERIFY(sources.size() > m_sources.size() + 100);
    const QStringList found = linesMatching(sources, includesAWholeModule, {});
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void TestSourceRules::onlyTheAtomicWriterOpensFilesForWriting()
{
    // The last ones open buffers in memory.
    const QStringList writers{QStringLiteral("base/atomicfile.cpp"), QStringLiteral("base/filelock.cpp"),
                              QStringLiteral("base/filesystemcalls.cpp"), QStringLiteral("base/usersettings.cpp"),
                              QStringLiteral("logview/paper/sheetfile.cpp"),
                              QStringLiteral("programs/manualpages.cpp")};
    const QStringList found = linesMatching(m_sources, opensForWriting, writers);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    QVERIFY(!linesMatching(m_sources, opensForWriting, {}).isEmpty());
}

// What programs remember of a user is no data: losing it loses a window's size, or the folder of a file dialog.
void TestSourceRules::nothingElseOfQtWritesFiles()
{
    const QStringList found = linesMatching(m_sources, writesByItself, {QStringLiteral("base/usersettings.cpp")});
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    QVERIFY(!linesMatching(m_sources, writesByItself, {}).isEmpty());
}

// A move that tests cannot make fail is one whose failure nobody has seen.
void TestSourceRules::onlyTheSeamMovesFiles()
{
    for (const char *line :
         {"std::rename(a, b);", "return ::rename(a, b) == 0;", "renameat(d, a, d, b)", "::renameat2(d, a, d, b, 0)",
          "QFile::rename(a, b)", "QDir().rename(a, b)", "QDir(folder).rename(a, b);", "QFile file(a); file.rename(b)",
          "dir.rename(a, b)", "::link(a, b)"})
        QVERIFY2(movesFiles.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line :
         {"fileSystemCalls().rename(a, b)", "list.value.rename(number, name)", "bool rename(int number)",
          "ObjectList::rename(int number)", "renamed(a)", "well->rename(a)", "&FileSystemCalls::rename"})
        QVERIFY2(!movesFiles.match(QString::fromLatin1(line)).hasMatch(), line);
    const QStringList found = linesMatching(m_sources, movesFiles, {QStringLiteral("base/filesystemcalls.cpp")});
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    QVERIFY(!linesMatching(m_sources, movesFiles, {}).isEmpty());
}

// It is the host's, and its threads make files too.
void TestSourceRules::nothingTouchesTheProcessMask()
{
    const QStringList found = linesMatching(m_sources, QRegularExpression(QStringLiteral("\\bumask\\b")), {});
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void TestSourceRules::nothingReadsOrWritesNumbersByTheLocale()
{
    QStringList found = linesMatching(m_sources, obeysTheLocale, {});
    // Names on the command line are in the user's encoding; the application object would set the same locale.
    const QRegularExpression programStart(
        QStringLiteral("^programs/(workbench|batch/main)\\.cpp:\\d+: std::setlocale\\(LC_ALL, \"\"\\)"));
    for (int i = found.size(); i-- > 0;)
        if (programStart.match(found.at(i)).hasMatch())
            found.removeAt(i);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void TestSourceRules::fontsAreNotNamedByLiterals()
{
    for (const char *line :
         {"QFont f(QStringLiteral(\"\"), 14);", "QFont(QStringLiteral(\"\"))", "f.setFamily(QStringLiteral(\"\"))"})
        QVERIFY2(fontOfALiteral.match(QString::fromLatin1(line)).hasMatch(), line);
    const QStringList found = linesMatching(m_sources, fontOfALiteral, {});
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

// Otherwise the plug-in's manager would delete windows that this code still works with.
void TestSourceRules::whoHandlesEventsSaysSo()
{
    for (const char *line : {"menu.exec(place);", "dialog->exec()", "QCoreApplication::processEvents();",
                             "return QFileDialog::getOpenFileNames(", "QEventLoop loop;"})
        QVERIFY2(handlesEvents.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line : {"int executed = execute();", "base::handleEvents(QEventLoop::ExcludeUserInputEvents);"})
        QVERIFY2(!handlesEvents.match(QString::fromLatin1(line)).hasMatch(), line);
    int seen = 0;
    for (const Source &source : qAsConst(m_sources)) {
        if (!isOfThePlugin(source) || linesMatching({source}, handlesEvents, {}).isEmpty())
            continue;
        ++seen;
        QVERIFY2(!linesMatching({source}, standsNested, {}).isEmpty(), qPrintable(source.path));
    }
    QVERIFY(seen > 4);
}

void TestSourceRules::includesFollowTheArrows()
{
    QStringList found;
    int seen = 0;
    for (const Source &source : qAsConst(m_sources)) {
        for (const QString &line : source.lines) {
            const QRegularExpressionMatch match = includeLine.match(line);
            if (!match.hasMatch())
                continue;
            ++seen;
            const QString problem = includeProblem(source, match.captured(1));
            if (!problem.isEmpty())
                found.append(problem);
        }
    }
    QVERIFY(seen > 200);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

// A header named by its file name alone, or by a path with "..", would slip through the table above.
void TestSourceRules::includesNameExistingFiles()
{
    const QRegularExpression quoted(QStringLiteral("^\\s*#\\s*include\\s*\"([^\"]+)\""));
    const QDir project(QStringLiteral(LORVA_SOURCE_DIR));
    QStringList found;
    for (const Source &source : qAsConst(m_sources)) {
        for (const QString &line : source.lines) {
            const QString included = quoted.match(line).captured(1);
            if (!included.isEmpty() && !included.endsWith(QLatin1String(".moc"))
                && source.folder != QLatin1String("host/opendtect")
                && (included.contains(QLatin1String("..")) || !project.exists(included)))
                found.append(QStringLiteral("%1: %2").arg(source.path, included));
        }
    }
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void TestSourceRules::aFoldersNamesLiveInItsNamespace()
{
    const auto foreign = [](const char *folder, const char *text) {
        return foreignNamespace(
            {{}, QString::fromLatin1(folder), QString::fromLatin1(text).split(QLatin1Char('\n'))});
    };
    QCOMPARE(foreign("survey", "namespace workbench {\nint a();\n}"), QStringLiteral("workbench"));
    QCOMPARE(foreign("survey", "namespace workbench::settings {\nclass A { };\n}"), QStringLiteral("workbench"));
    QCOMPARE(foreign("survey", "namespace base {\nclass A;\n\nstruct B;\n}\nnamespace survey {\nint a();\n}"),
             QString());
    QCOMPARE(foreign("host/opendtect", "namespace opendtect {\nint a();\n}\nnamespace {\nint b();\n}"), QString());
    int seen = 0;
    for (const Source &source : qAsConst(m_sources)) {
        QVERIFY2(foreignNamespace(source).isEmpty(), qPrintable(source.path));
        seen += source.lines.filter(QStringLiteral("namespace survey {")).size();
    }
    QVERIFY(seen > 20);
}

// A file is about one thing; one that is longer than this has become two.
void TestSourceRules::noFileIsTooLong()
{
    const QDir project(QStringLiteral(LORVA_SOURCE_DIR));
    QStringList found;
    const auto compare = [&](const QString &path, int lines, int most) {
        if (lines > most)
            found.append(QStringLiteral("%1: %2 lines").arg(path).arg(lines));
    };
    for (const Source &source : qAsConst(m_sources))
        compare(source.path, source.lines.size() - 1, 550);
    int seen = 0;
    QDirIterator tests(project.filePath(QStringLiteral("tests")), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                       QDir::Files, QDirIterator::Subdirectories);
    for (; tests.hasNext(); ++seen) {
        const QString path = tests.next();
        compare(project.relativeFilePath(path), files::read(path).count('\n'), 700);
    }
    QVERIFY(seen > 100);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

// What is white space and where lines end decides what a file holds: two answers would be two contents.
void TestSourceRules::whiteSpaceAndLinesAreToldInOnePlace()
{
    const QRegularExpression second(QStringLiteral("\\bisw?space\\b|^(inline |static |constexpr )*[\\w:<>]+ "
                                                   "(isSpace|isLineEnd|splitLines|labelText)\\((?!const DepthTick)"));
    for (const char *line : {"std::isspace(c)", "bool isSpace(char c)", "static bool isLineEnd(char c)",
                             "inline bool isSpace(char c)", "QVector<QString> splitLines(const QString &text)"})
        QVERIFY2(second.match(QString::fromLatin1(line)).hasMatch(), line);
    for (const char *line : {"    if (isSpace(*at))", "base::splitLines(text)", "text.at(0).isSpace()"})
        QVERIFY2(!second.match(QString::fromLatin1(line)).hasMatch(), line);
    const QStringList places{QStringLiteral("base/textbytes.h"), QStringLiteral("base/textbytes.cpp"),
                             QStringLiteral("base/labeltext.h")};
    const QStringList found = linesMatching(m_sources, second, places);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    QCOMPARE(linesMatching(m_sources, second, {}).size(), 5); // each once, splitLines() with its declaration
}

LORVA_TEST_MAIN(TestSourceRules)
#include "tst_sourcerules.moc"
