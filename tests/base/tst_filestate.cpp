#include "base/filestate.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>

using base::fileState;

class tst_filestate : public QObject
{
    Q_OBJECT

private slots:
    void aFileIsSettledATenthOfASecondAfterItWasTouched();
    void missingFilesAreNeverTheSame();

private:
    // The file systems' clock is that of the day.
    static int millisecondsOfTheSecond()
    {
        timespec now{};
        ::clock_gettime(CLOCK_REALTIME, &now);
        return static_cast<int>(now.tv_nsec / 1000000);
    }

    QTemporaryDir m_folder;
};

// In the middle of a second as where the next one begins.
void tst_filestate::aFileIsSettledATenthOfASecondAfterItWasTouched()
{
    const QString path = m_folder.filePath("file");
    for (const int beginning : {100, 960}) {
        QTRY_VERIFY(millisecondsOfTheSecond() >= beginning && millisecondsOfTheSecond() < beginning + 40);
        files::write(path, "text");
        QElapsedTimer sinceTouched;
        sinceTouched.start();
        QTest::qWait(50);
        const base::FileState early = fileState(path);
        if (sinceTouched.elapsed() < 90) // else the machine was too busy to tell
            QVERIFY(!early.isSettled && !early.isSame(early) && early.hasSameStamp(early));
        QTest::qWait(150);
        const base::FileState late = fileState(path);
        QVERIFY(late.isSettled && late.isSame(late) && late.hasSameStamp(early));
    }
}

void tst_filestate::missingFilesAreNeverTheSame()
{
    const base::FileState none = fileState(m_folder.filePath("none"));
    QVERIFY(!none.isSame(none));
}

LORVA_TEST_MAIN(tst_filestate)
#include "tst_filestate.moc"
