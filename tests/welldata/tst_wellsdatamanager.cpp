// The page "Well Data Manager": the choice of well, its tabs, and what is not saved.

#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"

#include <QSignalSpy>
#include <QTableWidget>

using F = WellDataFixture;

class tst_wellsdatamanager : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<WellDataFixture>(); }
    void cleanup() { m.reset(); }

    void wellsAndTabsAreAsPrescribed()
    {
        QStringList wells;
        for (int i = 0; i < m->wells()->count(); ++i)
            wells.append(m->wells()->itemText(i));
        QCOMPARE(wells, QStringList({"None", "W-1", "W-2"}));
        QStringList tabs;
        for (int i = 0; i < m->tabs()->count(); ++i)
            tabs.append(m->tabs()->tabText(i));
        QCOMPARE(tabs, QStringList({"Log(s)", "Marker(s)", "Perforation Zone(s)", "Calibration Point(s)"}));
        QCOMPARE(m->tabs()->widget(0), static_cast<QWidget *>(m->logs()));
        QCOMPARE(m->tabs()->widget(1), static_cast<QWidget *>(m->markers()));
        QCOMPARE(m->tabs()->widget(2), static_cast<QWidget *>(m->zones()));
        QCOMPARE(m->tabs()->widget(3), static_cast<QWidget *>(m->points()));
        for (int i = 0; i < 4; ++i)
            QCOMPARE(m->tabs()->widget(i)->windowTitle(), tabs.at(i));
        bool hasLabel = false;
        for (const QLabel *label : m->manager->findChildren<QLabel *>())
            hasLabel |= label->text() == "Well" && label->buddy() == m->wells();
        QVERIFY(hasLabel);
        QCOMPARE(m->manager->currentWellName(), QString("None"));
    }

    void classesAndSlotsHaveTheirNames()
    {
        const auto check = [](const QObject *object, const QByteArray &name, const QVector<const char *> &slots_) {
            QCOMPARE(QByteArray(object->metaObject()->className()), name);
            for (const char *slot : slots_)
                QVERIFY2(object->metaObject()->indexOfSlot(slot) >= 0, slot);
        };
        const QVector<const char *> tableSlots = {"addRow()", "deleteRow()", "fromAsciiFileButtonClicked()",
                                                  "updateBtnClicked()"};
        check(m->manager.get(), "WellsDataManagerWidget", {"wellChanged(int)"});
        check(m->logs(), "DefaultDataClass",
              {"updateBtnClicked()", "groupNameChanged(QString)", "checkBoxToggled(bool)",
               "logNameChanged(QTableWidgetItem*)"});
        check(m->markers(), "MarkerDataWidget",
              tableSlots + QVector<const char *>{"tableDoubleClicked(QTableWidgetItem*)", "tableItemChanged()"});
        check(m->zones(), "DefineWellPerforation", tableSlots);
        check(m->points(), "DefineCalibrationPoint", tableSlots + QVector<const char *>{"wellOrGrooupChanged()"});
        const QVector<const char *> importSlots = {"browseBtnClicked()", "importBtnClicked()"};
        m->select("W-1");
        check(m->openImport(m->markers(), QString()), "MarkerDataWidgetASCII", importSlots);
        check(m->openImport(m->zones(), QString()), "WellPerforationASCII", importSlots);
        check(m->openImport(m->points(), QString()), "CalibrationPointASCII", importSlots);
    }

    void theChosenWellGoesToAllEditors()
    {
        QCOMPARE(m->logs()->wellName(), QString("None"));
        QCOMPARE(m->markers()->wellName(), QString("None"));
        QCOMPARE(m->zones()->wellName(), QString("None"));
        QCOMPARE(m->points()->wellName(), QString("None"));
        m->select("W-1");
        QCOMPARE(m->manager->currentWellName(), QString("W-1"));
        QCOMPARE(m->logs()->wellName(), QString("W-1"));
        QCOMPARE(m->markers()->wellName(), QString("W-1"));
        QCOMPARE(m->zones()->wellName(), QString("W-1"));
        QCOMPARE(m->points()->wellName(), QString("W-1"));
        for (int tab = 0; tab < 4; ++tab)
            m->tabs()->setCurrentIndex(tab);
        QCOMPARE(m->manager->currentWellName(), QString("W-1"));
        QCOMPARE(m->markers()->table()->rowCount(), 2);
    }
    // Default data, calibration points, perforation zones, markers.
    void theyAreGivenTheWellInOrder()
    {
        QVERIFY(QDir().mkpath(m->path("/DefaultLogs/W-1.txt")));
        QVERIFY(QDir().mkpath(m->path("/W-1_None_calibrationPoints.txt")));
        QVERIFY(QDir().mkpath(m->path("/W-1_perforationZone.txt")));
        m->well(m->key1).isUnreadable = true;
        m->select("W-1");
        QStringList titles;
        for (const base::Box &box : m->asker.boxes)
            titles.append(box.title);
        QCOMPARE(titles, QStringList({"Log(s)", "Well Calibration Data Reader", "Perforation Zone(s)"}));
        QCOMPARE(m->host.errors, QStringList({"Cannot get data for the selected well"}));
        QCOMPARE(F::status(m->markers()), QString("Cannot get data for the selected well"));
        QVERIFY(!F::isEnabled(m->markers(), "updateButton")); // nobody knows what that would delete
    }

    void anotherWellAsksWhetherToSaveTheTables()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        m->zones()->addRow();
        F::typeName(m->zones(), 0, "Z");
        m->asker.answers = {base::BoxButton::No, base::BoxButton::Yes};
        m->select("W-2");
        QCOMPARE(m->asker.boxes.size(), 2);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Perforation Zone(s)"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("You changed the perforation zones but not saved them.\nWould you like to save them ?"));
        QCOMPARE(m->asker.boxes.at(0).buttons, QVector<base::BoxButton>({base::BoxButton::Yes, base::BoxButton::No}));
        QCOMPARE(m->asker.boxes.at(1).text,
                 QString("You changed the markers but not saved them.\nWould you like to save them ?"));
        QCOMPARE(m->storedNames(m->key1), QStringList({"Upper", "Base"}));
        QVERIFY(!QFileInfo::exists(m->path("/W-1_perforationZone.txt")));
        QCOMPARE(m->markers()->wellName(), QString("W-2"));
        QCOMPARE(m->markers()->table()->rowCount(), 0);
        m->select("W-1");
        QCOMPARE(m->asker.boxes.size(), 2);
    }
    void aTableThatCouldNotBeSavedKeepsItsWell()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        m->show(m->logs());
        m->host.markerWritesFail = true;
        m->asker.answers = {base::BoxButton::Yes};
        m->select("W-2");
        QCOMPARE(m->wells()->currentText(), QString("W-1"));
        QCOMPARE(m->manager->currentWellName(), QString("W-1"));
        QCOMPARE(F::name(m->markers(), 0), QString("Upper"));
        QCOMPARE(m->tabs()->currentWidget(), static_cast<QWidget *>(m->markers()));
        QVERIFY(m->markers()->isModified());
        m->asker.answers = {base::BoxButton::No};
        m->select("W-2");
        QCOMPARE(m->markers()->wellName(), QString("W-2"));
    }
    void tabsKeepWhatIsNotSaved()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        m->show(m->zones());
        m->show(m->markers());
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(F::name(m->markers(), 0), QString("Upper"));
    }

    void afterASynchronisationTheWellStaysChosen()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        m->addWell("A-0");
        m->launch->catalogue.build();
        m->manager->synchronise();
        QCOMPARE(m->wells()->itemText(1), QString("A-0"));
        QCOMPARE(m->wells()->currentText(), QString("W-1"));
        QCOMPARE(F::name(m->markers(), 0), QString("Upper")); // not saved, and not lost
        QVERIFY(m->asker.boxes.isEmpty());
    }
    void aSynchronisationShowsNewLogsAndMarkers()
    {
        m->select("W-1");
        m->well(m->key1).logs.append({"DT", "us/m", {1, 2}, {1, 2}});
        m->well(m->key1).markers.append({"Late", 300, Qt::red});
        m->launch->catalogue.build();
        m->manager->synchronise();
        QCOMPARE(F::find<QTableWidget>(m->logs(), "defaultTable")->rowCount(), 4);
        QCOMPARE(m->markers()->table()->rowCount(), 3);
    }
    void importedLogsComeIntoTheTable()
    {
        m->select("W-1");
        m->well(m->key1).logs.append({"DT", "us/m", {1, 2}, {1, 2}});
        m->launch->catalogue.refreshLogNames(0);
        m->manager->logsChanged(1);
        QCOMPARE(F::find<QTableWidget>(m->logs(), "defaultTable")->rowCount(), 3);
        m->manager->logsChanged(0);
        QCOMPARE(F::find<QTableWidget>(m->logs(), "defaultTable")->rowCount(), 4);
    }
    void aVanishedWellIsNoLongerChosen()
    {
        m->select("W-1");
        m->host.storedWells.removeFirst();
        m->launch->catalogue.build();
        m->manager->synchronise();
        QCOMPARE(m->wells()->currentText(), QString("None"));
        QCOMPARE(m->markers()->table()->rowCount(), 0);
        QCOMPARE(F::status(m->markers()), QString("Well not selected !"));
    }
    void whatTheStatusSaysIsTrueOfWhatIsShown()
    {
        m->select("W-2");
        QVERIFY(F::status(m->markers()).endsWith("doesn't exist !"));
        F::click(m->markers(), "addButton");
        QCOMPARE(F::status(m->markers()), QString());
        F::typeName(m->markers(), 0, "Top");
        F::type(m->markers(), 0, 1, "100");
        F::click(m->markers(), "updateButton");
        QVERIFY(F::status(m->markers()).contains("successfully"));
        F::typeName(m->markers(), 0, "Other");
        QCOMPARE(F::status(m->markers()), QString());
        for (WellTableEditor *editor :
             {static_cast<WellTableEditor *>(m->zones()), static_cast<WellTableEditor *>(m->points())}) {
            if (editor == m->points())
                F::find<QComboBox>(m->points(), "groupBox")->setCurrentText("Gamma");
            QVERIFY(F::status(editor).endsWith("doesn't exist !"));
            F::click(editor, "addButton");
            QCOMPARE(F::status(editor), QString());
            if (editor == m->zones())
                F::typeName(editor, 0, "DST");
            F::click(editor, "updateButton");
            QVERIFY(F::status(editor).startsWith("Successfully"));
            F::click(editor, "addButton");
            QCOMPARE(F::status(editor), QString());
        }
    }
    void whatWasNotSavedOfAVanishedWellIsNotAskedFor()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        F::click(m->zones(), "addButton");
        m->host.storedWells.removeFirst();
        m->launch->catalogue.build();
        m->manager->synchronise();
        QCOMPARE(m->asker.boxes.size(), 2);
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("The survey no longer has the well \"W-1\".\n"
                         "Your changes of its perforation zones are lost."));
        QCOMPARE(m->asker.boxes.at(1).title, QString("Marker(s)"));
        QCOMPARE(m->asker.boxes.at(1).icon, base::BoxIcon::Warning);
        QCOMPARE(m->wells()->currentText(), QString("None"));
        QCOMPARE(m->markers()->table()->rowCount(), 0);
        QVERIFY(m->host.errors.isEmpty());
        QVERIFY(!QFileInfo::exists(m->path("/W-1_perforationZone.txt")));
    }
    void whatWasNotSavedOfARenamedWellGetsTheNewName()
    {
        m->select("W-1");
        F::click(m->zones(), "addButton");
        F::typeName(m->zones(), 0, "DST");
        m->well(m->key1).header.name = "Z-9";
        m->launch->catalogue.build();
        m->asker.answers = {base::BoxButton::Yes};
        m->manager->synchronise();
        QCOMPARE(m->asker.boxes.size(), 1);
        QVERIFY(QFileInfo::exists(m->path("/Z-9_perforationZone.txt")));
        QVERIFY(!QFileInfo::exists(m->path("/W-1_perforationZone.txt")));
        QCOMPARE(F::name(m->zones(), 0), QString("DST"));
    }
    void aRenamedWellIsFollowed()
    {
        m->select("W-1");
        m->well(m->key1).header.name = "Z-9";
        m->launch->catalogue.build();
        m->manager->synchronise();
        QCOMPARE(m->wells()->currentText(), QString("Z-9"));
        QCOMPARE(m->markers()->wellName(), QString("Z-9"));
        QCOMPARE(m->markers()->table()->rowCount(), 2);
    }
    void wellsOfOneNameAreToldApart()
    {
        const QString twin = m->addWell("W-1", {}, {"Twin"});
        m->launch->catalogue.build();
        m->manager->synchronise();
        m->wells()->setCurrentIndex(m->wells()->findData(twin));
        QCOMPARE(F::name(m->markers(), 0), QString("Twin"));
        F::typeName(m->markers(), 0, "Other");
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->storedNames(twin), QStringList({"Other"}));
        QCOMPARE(m->storedNames(m->key1), QStringList({"Top", "Base"}));
    }
    void aWellCalledNoneIsAWell()
    {
        const QString key = m->addWell("None", {}, {"Mine"});
        m->launch->catalogue.build();
        m->manager->synchronise();
        m->wells()->setCurrentIndex(m->wells()->findData(key));
        QCOMPARE(F::name(m->markers(), 0), QString("Mine"));
        QVERIFY(F::isEnabled(m->markers(), "updateButton"));
        m->wells()->setCurrentIndex(0); // the entry that chooses no well
        QCOMPARE(m->markers()->table()->rowCount(), 0);
        QVERIFY(!F::isEnabled(m->markers(), "updateButton"));
        for (const QWidget *editor : {static_cast<QWidget *>(m->markers()), static_cast<QWidget *>(m->zones()),
                                      static_cast<QWidget *>(m->points())})
            QCOMPARE(F::status(editor), QString("Well not selected !"));
        QCOMPARE(F::status(m->logs()), QString());
    }

private:
    std::unique_ptr<WellDataFixture> m;
};

LORVA_TEST_MAIN(tst_wellsdatamanager)
#include "tst_wellsdatamanager.moc"
