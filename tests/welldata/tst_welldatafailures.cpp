// What the editors do when something fails under their hands: full disks, protected folders, vanished wells, windows
// that go while a box is up. Table, file and host hold the old state or the new one.

#include "support/failingdisk.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "tests/welldata/welldatafixture.h"

#include <QTableWidget>

using F = WellDataFixture;

namespace {

/// Does something while a box is up.
class ActingAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &) override
    {
        if (act)
            act();
        return base::BoxButton::Yes;
    }
    std::function<void()> act;
};

} // namespace

class tst_welldatafailures : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<WellDataFixture>();
        m->select("W-1");
        F::find<QComboBox>(m->points(), "groupBox")->setCurrentText("Gamma");
        m->zones()->addRow();
        F::typeName(m->zones(), 0, "Z");
        m->points()->addRow();
        F::type(m->points(), 0, 0, "1");
    }
    void cleanup() { m.reset(); }

    void aFullDiskKeepsTheOldFiles_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &step : failingSteps)
            QTest::newRow(step.name) << static_cast<int>(step.step);
    }
    void aFullDiskKeepsTheOldFiles()
    {
        QFETCH(int, step);
        files::write(m->path("/W-1_perforationZone.txt"), "1\nOld|1|2|Oil\n");
        files::write(m->path("/W-1_Gamma_calibrationPoints.txt"), "WellName :W-1\nGroupName :Gamma\n5|6\n");
        const auto before = files::snapshot(m->launch->project.projectFolder);
        FailingDisk disk(static_cast<FailingDisk::Step>(step));
        auto scope = std::make_unique<base::ScopedFileSystemCalls>(disk);
        m->asker.answers = {base::BoxButton::Yes, base::BoxButton::Ok, base::BoxButton::Yes, base::BoxButton::Ok};
        m->zones()->updateBtnClicked();
        m->points()->updateBtnClicked();
        check(0)->click();
        m->logs()->updateBtnClicked();
        scope.reset();
        QCOMPARE(m->asker.boxes.size(), 5);
        QCOMPARE(m->asker.boxes.at(1).title, QString("Well Perforation Data Write"));
        QCOMPARE(m->asker.boxes.at(1).text,
                 QString("Unable to create file please check file read/write permission."));
        QCOMPARE(m->asker.boxes.at(3).title, QString("Well Calibration Data Write"));
        QCOMPARE(m->asker.boxes.at(4).text,
                 QString("Unable to create file.\nPlease Check file read/write permission."));
        QCOMPARE(F::status(m->zones()), QString("Error in updating/saving Perforation zone data !"));
        QCOMPARE(F::status(m->points()), QString("Error in saving/updating Calibration data !"));
        QCOMPARE(F::name(m->zones(), 0), QString("Z"));
        QVERIFY(m->zones()->isModified() && m->points()->isModified() && m->logs()->isModified());
        QCOMPARE(files::snapshot(m->launch->project.projectFolder), before);
    }

    void aReadOnlyProjectFolderIsTold()
    {
        const QString folder = m->launch->project.projectFolder;
        QFile::setPermissions(m->survey.path(), QFile::Permissions(0x7755));
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
        if (!testing_support::canShowInChild())
            QSKIP("a child cannot share the connection to the window system");
        const int result = testing_support::runUnprivileged([this] {
            m->zones()->updateBtnClicked();
            return F::status(m->zones()) == "Error in updating/saving Perforation zone data !"
                    && !QFileInfo::exists(m->path("/W-1_perforationZone.txt"))
                ? 7
                : 1;
        });
        QFile::setPermissions(folder, QFile::Permissions(0x7755));
        QCOMPARE(result, 7);
    }

    void aWellThatVanishedTakesNoMarkers()
    {
        F::typeName(m->markers(), 0, "Upper");
        m->host.storedWells.removeFirst();
        F::click(m->markers(), "updateButton");
        QVERIFY(m->asker.boxes.isEmpty()); // nobody deleted its markers
        QCOMPARE(m->host.errors, QStringList({"Cannot get data for the selected well"}));
        QCOMPARE(F::status(m->markers()), QString("Error in updating Marker data !"));
        QCOMPARE(F::name(m->markers(), 0), QString("Upper"));
    }

    void theWindowMayGoWhileABoxIsUp_data()
    {
        QTest::addColumn<int>("act");
        for (int act = 0; act < 3; ++act)
            QTest::newRow(qPrintable(QString::number(act))) << act;
    }
    void theWindowMayGoWhileABoxIsUp()
    {
        QFETCH(int, act);
        files::write(m->path("/W-1_perforationZone.txt"), "1\nOld|1|2|Oil\n");
        files::write(m->path("/W-1_Gamma_calibrationPoints.txt"), "WellName :W-1\nGroupName :Gamma\n5|6\n");
        ActingAsker asker;
        asker.act = [this] { m_manager.reset(); };
        ProjectData data(m->host, asker);
        data.project = m->launch->project;
        data.catalogue.build();
        m_manager = std::make_unique<WellsDataManagerWidget>(data);
        m_manager->show();
        auto *wells = F::find<QComboBox>(m_manager.get(), "wellBox");
        wells->setCurrentText("W-1");
        QVERIFY(m_manager);
        F::find<QComboBox>(m_manager->points(), "groupBox")->setCurrentText("Gamma");
        switch (act) {
        case 0:
            m_manager->zones()->updateBtnClicked();
            break;
        case 1:
            m_manager->points()->updateBtnClicked();
            break;
        default:
            F::typeName(m_manager->markers(), 0, "");
            m_manager->markers()->updateBtnClicked();
        }
        QVERIFY(!m_manager);
    }
    void anImportMayLoseItsWindow()
    {
        files::write(m->path("/W-1_perforationZone.txt"), "1\nOld|1|2|Oil\n");
        ActingAsker asker;
        asker.act = [this] { m_manager.reset(); };
        ProjectData data(m->host, asker);
        data.project = m->launch->project;
        data.catalogue.build();
        m_manager = std::make_unique<WellsDataManagerWidget>(data);
        m_manager->show();
        F::find<QComboBox>(m_manager.get(), "wellBox")->setCurrentText("W-1");
        m_manager->zones()->fromAsciiFileButtonClicked();
        const QPointer<ColumnImportDialog> dialog = m_manager->zones()->findChild<ColumnImportDialog *>();
        F::find<QLineEdit>(dialog, "fileEdit")->setText(m->writeInput("A\t1\t2\tOil\n"));
        dialog->importBtnClicked();
        QVERIFY(!m_manager);
        QVERIFY(!dialog);
    }

private:
    QCheckBox *check(int row) const
    {
        return qobject_cast<QCheckBox *>(F::find<QTableWidget>(m->logs(), "defaultTable")->cellWidget(row, 2));
    }

    std::unique_ptr<WellDataFixture> m;
    std::unique_ptr<WellsDataManagerWidget> m_manager;
};

LORVA_TEST_MAIN(tst_welldatafailures)
#include "tst_welldatafailures.moc"
