// LAS files that a second start of the workbench is given go to the one that runs.

#include "programrun.h"
#include "programs/lashandover.h"
#include "support/files.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"

#include <QDialog>
#include <QDir>
#include <QPointer>
#include <QTemporaryDir>
#include <QtNetwork/QLocalSocket>

#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString program = QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-workbench");
const QString plugins = QStringLiteral(LORVA_BINARY_DIR "/tests/plugins");
constexpr char lasText[] = "~V\nVERS. 2.0:\n~W\nSTRT.M 1:\nSTOP.M 2:\nSTEP.M 1:\nNULL. -999.25:\nWELL. Ninian:\n~C\n"
                           "DEPT.M :\nGR.gapi :\n~A\n1 5\n2 6\n";

/// A window that takes files, and what it got.
struct Receiver
{
    QWidget window;
    QVector<QStringList> opened;
    programs::LasReceiver receiver{window, [this](const QStringList &paths) { opened.append(paths); }};
};

} // namespace

class tst_lashandover : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_runtime = m_folder->filePath("run");
        QVERIFY(QDir().mkpath(m_runtime));
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_runtime));
        qputenv("DISPLAY", ":7.0");
        qunsetenv("WAYLAND_DISPLAY");
        m_las = m_folder->filePath(QString::fromUtf8("Ölfeld \"7\".las"));
        files::write(m_las, lasText);
    }

    void filesGoToTheRunningWorkbench()
    {
        Receiver running;
        QVERIFY(running.receiver.isListening());
        QProcess second;
        second.setWorkingDirectory(m_folder->path());
        start(&second, {QFileInfo(m_las).fileName(), "/tmp/other.LAS"});
        QTRY_COMPARE_WITH_TIMEOUT(running.opened.size(), 1, 20000);
        QCOMPARE(running.opened.first(), QStringList({m_las, "/tmp/other.LAS"}));
        QVERIFY(running.window.isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(second.state(), QProcess::NotRunning, 20000);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.readAllStandardOutput(), QByteArray("The workbench that runs already takes the files.\n"));
    }

    // Both are the program: the first has a survey open and shows the dialog with what the second was given.
    void theRunningWorkbenchProposesTheWells()
    {
        const QString survey = m_folder->filePath("survey");
        QCOMPARE(survey::createSurvey(survey, {}).error, QString());
        QProcess first;
        start(&first, {"--plugin-dir", plugins, survey}, {{"LORVA_TEST_AWAIT_DIALOG", "1"}});
        QTRY_COMPARE_WITH_TIMEOUT(sockets().size(), 1, 20000);
        const ProgramRun second = runProgram(program, {m_las}, m_folder->path());
        QVERIFY(second.hasEnded);
        QCOMPARE(second.exitCode, 0);
        QVERIFY2(second.output.contains("takes the files"), qPrintable(second.output));
        QVERIFY(first.waitForFinished(20000));
        QCOMPARE(first.exitCode(), 0);
        const QByteArray output = first.readAllStandardOutput();
        QVERIFY2(output.contains("dialog: newWellsDialog\n"), output);
        QVERIFY2(output.contains("cell: Ninian\n"), output);
        QVERIFY(sockets().isEmpty());
    }

    // Who names a survey, or asks for the tour, wants a workbench of his own; so does who has none yet.
    void otherStartsAreTheirOwn_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("isThereOne");
        QTest::newRow("survey") << QStringList{"--survey", "SURVEY", "LAS"} << true;
        QTest::newRow("tour") << QStringList{"--tour", "LAS"} << true;
        QTest::newRow("plug-ins") << QStringList{"--plugin-dir", "/tmp", "LAS"} << true;
        QTest::newRow("nothing") << QStringList() << true;
        QTest::newRow("no files") << QStringList{"SURVEY"} << true;
        QTest::newRow("none runs") << QStringList{"LAS"} << false;
    }
    void otherStartsAreTheirOwn()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, isThereOne);
        const QString survey = m_folder->filePath("survey");
        QCOMPARE(survey::createSurvey(survey, {}).error, QString());
        std::unique_ptr<Receiver> running(isThereOne ? new Receiver : nullptr);
        const int before = sockets().size();
        arguments.replaceInStrings("SURVEY", survey).replaceInStrings("LAS", m_las);
        QProcess second;
        start(&second, arguments);
        QTRY_COMPARE_WITH_TIMEOUT(sockets().size(), before + 1, 20000);
        QVERIFY(!running || running->opened.isEmpty());
        second.kill();
        QVERIFY(second.waitForFinished());
    }

    void theLastOneStartedGetsTheFiles()
    {
        Receiver older;
        QTest::qWait(30); // times of files have steps
        const QString own = m_runtime + "/lorva-workbench-_7_0-0";
        QLocalServer newer;
        QVERIFY(newer.listen(own));
        QByteArray got;
        connect(&newer, &QLocalServer::newConnection, this, [&] {
            QLocalSocket *socket = newer.nextPendingConnection();
            connect(socket, &QLocalSocket::readyRead, this, [socket, &got] {
                got += socket->readAll();
                socket->write("taken\n");
            });
        });
        QProcess second;
        start(&second, {m_las});
        QTRY_VERIFY_WITH_TIMEOUT(got.endsWith('\n'), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(second.state(), QProcess::NotRunning, 20000);
        QVERIFY(older.opened.isEmpty());
    }

    void anotherDisplayIsNotThisOne()
    {
        qputenv("DISPLAY", ":8");
        Receiver elsewhere;
        QVERIFY(elsewhere.receiver.isListening());
        qputenv("DISPLAY", ":7.0");
        QVERIFY(!programs::handOverLasFiles({m_las}));
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        QVERIFY(!programs::handOverLasFiles({m_las}));
    }

    void withoutAPlaceEachStartIsItsOwn()
    {
        qunsetenv("XDG_RUNTIME_DIR");
        const Receiver running;
        QVERIFY(!running.receiver.isListening());
        QVERIFY(!programs::handOverLasFiles({m_las}));
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder->filePath("none")));
        QVERIFY(!programs::handOverLasFiles({m_las}));
    }

    void whatDeadOnesLeftGoes()
    {
        const pid_t child = ::fork();
        if (child == 0) {
            QLocalServer server;
            ::_exit(server.listen(m_runtime + "/lorva-workbench-_7_0-1") ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        QCOMPARE(status, 0);
        QCOMPARE(sockets().size(), 1);
        QVERIFY(!programs::handOverLasFiles({m_las}));
        QVERIFY(sockets().isEmpty());
    }

    // It hangs: the files are not lost.
    void oneThatDoesNotAnswerGetsNothing()
    {
        QLocalServer hung;
        QVERIFY(hung.listen(m_runtime + "/lorva-workbench-_7_0-1"));
        QVERIFY(!programs::handOverLasFiles({m_las}));
        QCOMPARE(sockets().size(), 1);
    }

    void filesWaitForTheDialogThatIsUp()
    {
        Receiver running;
        running.window.show();
        running.window.setWindowState(Qt::WindowMinimized);
        QDialog dialog(&running.window);
        dialog.setModal(true);
        dialog.show();
        QTRY_COMPARE(QApplication::activeModalWidget(), &dialog);
        for (const char *paths : {"[\"/a.las\"]\n", "[\"/b.las\", \"/a.las\"]\n"})
            send(paths);
        QTRY_VERIFY(!running.window.isMinimized());
        QTest::qWait(500);
        QVERIFY(running.opened.isEmpty());
        dialog.reject();
        QTRY_COMPARE(running.opened.size(), 1);
        QCOMPARE(running.opened.first(), QStringList({"/a.las", "/b.las"}));
        send("[\"/c.las\"]\n");
        QTRY_COMPARE(running.opened.size(), 2);
        QCOMPARE(running.opened.last(), QStringList("/c.las"));
    }

    void nonsenseIsNotOpened()
    {
        Receiver running;
        for (const char *message : {"\n", "nothing\n", "[1, {}, \"\", \"relative.las\"]\n", "{\"a\": \"/b.las\"}\n"})
            QCOMPARE(send(message), QByteArray("taken\n"));
        QVERIFY(running.opened.isEmpty());
        QCOMPARE(send(QByteArray(3 << 20, 'x')), QByteArray()); // without an end
        QVERIFY(running.opened.isEmpty());
    }

    void nobodyElseMayConnect()
    {
        const Receiver running;
        QCOMPARE(sockets().size(), 1);
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(!(QFile::permissions(m_runtime + '/' + sockets().first()) & others));
    }

private:
    void start(QProcess *process, const QStringList &arguments, const QMap<QString, QString> &more = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", m_folder->path());
        environment.insert("XDG_CONFIG_HOME", m_folder->path());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("ASAN_OPTIONS", "detect_leaks=0"); // the platform leaks
        for (auto variable = more.begin(); variable != more.end(); ++variable)
            environment.insert(variable.key(), variable.value());
        process->setProcessEnvironment(environment);
        process->start(program, arguments);
        QVERIFY(process->waitForStarted());
    }
    QStringList sockets() const { return QDir(m_runtime).entryList({"lorva-workbench-*"}, QDir::System); }
    // What the receiver answers.
    QByteArray send(const QByteArray &message) const
    {
        QLocalSocket socket;
        socket.connectToServer(m_runtime + '/' + sockets().value(0));
        if (!socket.waitForConnected())
            return "no connection";
        socket.write(message);
        for (int i = 0; i < 100 && socket.state() == QLocalSocket::ConnectedState; ++i)
            QTest::qWait(20);
        return socket.readAll();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_runtime;
    QString m_las;
};

LORVA_TEST_MAIN(tst_lashandover)
#include "tst_lashandover.moc"
