#include "base/filelock.h"
#include "support/files.h"
#include "support/unprivileged.h"
#include "survey/surveyuse.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using survey::SurveyUse;

class TestSurveyUse : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void leavesNothingBehind();
    void tellsWhoElse();
    void staleFilesAreTakenAway();
    void whereNothingCanBeLockedItsProcessIsLookedFor_data();
    void whereNothingCanBeLockedItsProcessIsLookedFor();
    void aProcessOfAnotherUserIsAlive();
    void aFolderThatCannotBeWritten();

private:
    QStringList names() const { return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
    QString write(const QByteArray &host, const QByteArray &process)
    {
        const QString path =
            m_folder->filePath(QStringLiteral(".lorva.open.") + QString::fromUtf8(host + '.' + process));
        files::write(path, host + '\n' + process + '\n');
        return path;
    }

    // A file that cannot be locked, as none can on some shares: links are not opened for that.
    void writeUnlockable(const QByteArray &host, const QByteArray &process)
    {
        files::write(m_folder->filePath(QStringLiteral("real")), host + '\n' + process + '\n');
        QVERIFY(QFile::link(m_folder->filePath(QStringLiteral("real")),
                            m_folder->filePath(QStringLiteral(".lorva.open.link"))));
    }
    static QByteArray endedProcess()
    {
        QProcess ended;
        ended.start(QStringLiteral("true"), QStringList());
        const QByteArray process = QByteArray::number(ended.processId());
        return ended.waitForFinished() ? process : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestSurveyUse::leavesNothingBehind()
{
    {
        SurveyUse use;
        QCOMPARE(use.open(m_folder->path()), QStringList());
        QCOMPARE(names().size(), 1);
        const QByteArray text = files::read(m_folder->filePath(names().first()));
        QVERIFY(text.contains(QByteArray::number(static_cast<qint64>(::getpid()))));
        QCOMPARE(use.open(m_folder->path()), QStringList()); // again: it is ours
        QCOMPARE(names().size(), 1);
        QCOMPARE(use.open(QString()), QStringList());
        QCOMPARE(names().size(), 0);
        use.open(m_folder->path());
    }
    QCOMPARE(names().size(), 0);
}

void TestSurveyUse::tellsWhoElse()
{
    const QString path = write("othermachine", "77");
    const int file = base::openToLock(QFile::encodeName(path));
    QCOMPARE(base::tryLock(file), base::LockState::Locked);
    SurveyUse use;
    QCOMPARE(use.open(m_folder->path()), QStringList{QStringLiteral("process 77 on othermachine")});
    QVERIFY(QFile::exists(path));
    ::close(file);
    QCOMPARE(use.open(m_folder->path()), QStringList()); // its process has gone
    QVERIFY(!QFile::exists(path));
}

void TestSurveyUse::staleFilesAreTakenAway()
{
    const QString path = write(QSysInfo::machineHostName().toUtf8(), endedProcess());
    SurveyUse use;
    QCOMPARE(use.open(m_folder->path()), QStringList());
    QVERIFY(!QFile::exists(path));
}

void TestSurveyUse::whereNothingCanBeLockedItsProcessIsLookedFor_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<QByteArray>("process");
    QTest::addColumn<bool>("isTold");
    const QByteArray here = QSysInfo::machineHostName().toUtf8();
    QTest::newRow("ended") << here << endedProcess() << false;
    QTest::newRow("alive") << here << QByteArray::number(static_cast<qint64>(::getppid())) << true;
    QTest::newRow("elsewhere") << QByteArray("othermachine") << endedProcess() << true;
    QTest::newRow("no number") << here << QByteArray("abc") << true;
    QTest::newRow("a group of processes") << here << QByteArray("-999999") << true;
}

void TestSurveyUse::whereNothingCanBeLockedItsProcessIsLookedFor()
{
    QFETCH(QByteArray, host);
    QFETCH(QByteArray, process);
    QFETCH(bool, isTold);
    writeUnlockable(host, process);
    SurveyUse use;
    QCOMPARE(use.open(m_folder->path()).size(), isTold ? 1 : 0);
    QCOMPARE(names().contains(QStringLiteral(".lorva.open.link")), isTold);
}

void TestSurveyUse::aProcessOfAnotherUserIsAlive()
{
    writeUnlockable(QSysInfo::machineHostName().toUtf8(), "1"); // the system's first process
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777)));
    const int told = testing_support::runUnprivileged([this] {
        SurveyUse use;
        return use.open(m_folder->path()).size();
    });
    QCOMPARE(told, 1);
}

void TestSurveyUse::aFolderThatCannotBeWritten()
{
    SurveyUse use;
    QCOMPARE(use.open(m_folder->filePath(QStringLiteral("missing"))), QStringList());
}

QTEST_GUILESS_MAIN(TestSurveyUse)
#include "tst_surveyuse.moc"
