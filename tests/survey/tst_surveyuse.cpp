#include "base/filelock.h"
#include "support/files.h"
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
    QProcess ended;
    ended.start(QStringLiteral("true"), QStringList());
    const QByteArray process = QByteArray::number(ended.processId());
    QVERIFY(ended.waitForFinished());
    const QString path = write(QSysInfo::machineHostName().toUtf8(), process);
    SurveyUse use;
    QCOMPARE(use.open(m_folder->path()), QStringList());
    QVERIFY(!QFile::exists(path));
}

void TestSurveyUse::aFolderThatCannotBeWritten()
{
    SurveyUse use;
    QCOMPARE(use.open(m_folder->filePath(QStringLiteral("missing"))), QStringList());
}

QTEST_GUILESS_MAIN(TestSurveyUse)
#include "tst_surveyuse.moc"
