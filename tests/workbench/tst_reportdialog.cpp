#include "dialogscript.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "workbench/reportdialog.h"

#include <QPushButton>

/// The summary of what was done, which can be kept as a file.
class TestReportDialog : public QObject
{
    Q_OBJECT

private slots:
    void savesItsText()
    {
        save();
        QCOMPARE(files::read(path()), QByteArray("All is well: å\n"));
        QVERIFY(m_asker.boxes.isEmpty());
    }

    void whatADeadSaveLeftGoes()
    {
        const QString left = m_folder.filePath(QStringLiteral(".lorva-abcDEF"));
        files::write(left, "half");
        save();
        QVERIFY(!QFileInfo::exists(left));
    }

    void aDiskThatFailsIsToldAndLosesNothing_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &failing : failingSteps)
            QTest::newRow(failing.name) << static_cast<int>(failing.step);
    }

    void aDiskThatFailsIsToldAndLosesNothing()
    {
        QFETCH(int, step);
        files::write(path(), "before");
        const int boxes = m_asker.boxes.size();
        {
            FailingDisk disk(static_cast<FailingDisk::Step>(step));
            const base::ScopedFileSystemCalls calls(disk);
            save();
        }
        QCOMPARE(m_asker.boxes.size(), boxes + 1);
        const QString said = m_asker.boxes.last().text;
        QVERIFY2(said.startsWith(QStringLiteral("Cannot write the file %1: ").arg(path())), qPrintable(said));
        QVERIFY2(said.endsWith(QStringLiteral(". What was there is unchanged.")), qPrintable(said));
        QCOMPARE(files::read(path()), QByteArray("before"));
    }

private:
    QString path() const { return m_folder.filePath(QStringLiteral("report.txt")); }
    void save()
    {
        workbench::FileChooser chooser;
        chooser.chooseNewFile = [this](QWidget *, const QString &, const QString &, const QString &) {
            return path();
        };
        workbench::ReportDialog dialog(QStringLiteral("Title"), QStringLiteral("Sentence"),
                                       QString::fromUtf8("All is well: å\n"), QStringLiteral("report.txt"), m_asker,
                                       chooser);
        dialog.show();
        QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("saveReportButton")), Qt::LeftButton);
    }

    const IsolatedSettings m_settings;
    QTemporaryDir m_folder;
    ScriptedAsker m_asker;
};

LORVA_TEST_MAIN(TestReportDialog)
#include "tst_reportdialog.moc"
