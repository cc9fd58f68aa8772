#include "correlation/correlationstore.h"

#include "datastore/project.h"
#include "support/failingdisk.h"
#include "support/files.h"

#include <QTemporaryDir>
#include <QTest>

/// The files of correlations.
class tst_correlationstore : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        openProjectFolder(m_folder->path(), &m_project);
        files::write(m_folder->filePath("WLC/properties.txt"), "somebody's");
        files::write(m_folder->filePath("WLC/Correlations/properties.txt"), "somebody's");
    }

    void writtenReadAndTakenAway()
    {
        QVERIFY(correlation::write(m_project, named("A: b", 500)).ok());
        QVERIFY(correlation::exists(m_project, "A: b"));
        QCOMPARE(correlation::load(m_project, "A: b", m_known)->scale, 500.0);
        QVERIFY(correlation::remove(m_project, "A: b"));
        QVERIFY(!correlation::exists(m_project, "A: b"));
    }

    void whatNoFolderCanBeCalledIsNoCorrelation_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"", ".", "..", "../x", "/", "a/b", ".lorva-abcDEF"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }

    void whatNoFolderCanBeCalledIsNoCorrelation()
    {
        QFETCH(QString, name);
        const auto before = files::snapshot(m_folder->path());
        QVERIFY(!correlation::write(m_project, named(name, 1)).ok());
        QVERIFY(!correlation::exists(m_project, name));
        QVERIFY(!correlation::load(m_project, name, m_known));
        QVERIFY(correlation::remove(m_project, name));
        QCOMPARE(files::snapshot(m_folder->path()), before);
    }

    void aDiskThatFailsLeavesWhatWasThere_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &failing : failingSteps)
            QTest::newRow(failing.name) << static_cast<int>(failing.step);
    }

    void aDiskThatFailsLeavesWhatWasThere()
    {
        QFETCH(int, step);
        QVERIFY(correlation::write(m_project, named("Old", 1)).ok());
        const auto before = files::snapshot(m_folder->path());
        {
            FailingDisk disk(static_cast<FailingDisk::Step>(step));
            const base::ScopedFileSystemCalls calls(disk);
            for (const char *name : {"Old", "New"}) {
                const QString error = correlation::write(m_project, named(name, 2)).error;
                QVERIFY2(error.contains(QString(name) + "/properties.txt"), qPrintable(error));
            }
        }
        QCOMPARE(files::snapshot(m_folder->path()), before);
    }

    // Whoever looks at the folder sees it with its file.
    void aNewOneAppearsWhole()
    {
        FailingDisk disk; // remembers what came into place
        {
            const base::ScopedFileSystemCalls calls(disk);
            QVERIFY(correlation::write(m_project, named("New", 1)).ok());
        }
        QCOMPARE(disk.written.last(), m_folder->filePath("WLC/Correlations/New"));
    }

private:
    static CorrelationProperties named(const QString &name, double scale)
    {
        CorrelationProperties properties;
        properties.name = name;
        properties.scale = scale;
        return properties;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    Project m_project;
    const correlation::KnownNames m_known{[](const QString &) { return true; },
                                          [](const QString &, const QString &) { return true; }};
};

QTEST_GUILESS_MAIN(tst_correlationstore)
#include "tst_correlationstore.moc"
