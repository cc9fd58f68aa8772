// The tab "Log(s)": groups and default logs of a well, and the files they stand in.

#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"
#include "welldata/defaultdata.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTableWidget>

using F = WellDataFixture;

namespace {

/// Notes whether boxes come up under a wait cursor.
class CursorAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &) override
    {
        isWaiting.append(QGuiApplication::overrideCursor() != nullptr);
        return base::BoxButton::Ok;
    }
    QVector<bool> isWaiting;
};

} // namespace

class tst_defaultdata : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        CurveGroupTable::instance().clear();
        m = std::make_unique<WellDataFixture>();
        CurveGroupTable::instance().set("GR", "Gamma");
        CurveGroupTable::instance().set("RHOB", "Density");
        CurveGroupTable::instance().set("NPHI", "Porosity");
        m->show(m->logs());
    }
    void cleanup() { m.reset(); }

    void theHeadersStandBeforeAWellIsChosen()
    {
        QVERIFY(table()->horizontalHeaderItem(0));
        QCOMPARE(table()->horizontalHeaderItem(2)->text(), QString("Default"));
    }
    void tabGoesThroughTheRowsToUpdate()
    {
        m->select("W-1");
        table()->setFocus(Qt::TabFocusReason);
        for (int cell = 0; cell < 9; ++cell) {
            QCOMPARE(qMakePair(table()->currentRow(), table()->currentColumn()), qMakePair(cell / 3, cell % 3));
            QVERIFY(table() == QApplication::focusWidget() || table()->isAncestorOf(QApplication::focusWidget()));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(update()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), table()->cellWidget(2, 2));
    }
    void everyLogHasARow()
    {
        QVERIFY(!update()->isEnabled());
        m->select("W-1");
        QCOMPARE(table()->columnCount(), 3);
        QCOMPARE(table()->horizontalHeaderItem(0)->text(), QString("Curve Name"));
        QCOMPARE(table()->horizontalHeaderItem(1)->text(), QString("Group Name"));
        QCOMPARE(table()->horizontalHeaderItem(2)->text(), QString("Default"));
        QCOMPARE(rows(), QStringList({"GR Gamma -", "RHOB Density -", "NPHI Porosity -"}));
        QStringList groups;
        for (int i = 0; i < group(0)->count(); ++i)
            groups.append(group(0)->itemText(i));
        QCOMPARE(groups, curveGroupNames().mid(2));
        QVERIFY(update()->isEnabled());
        QCOMPARE(F::status(m->logs()), QString());
        QVERIFY(hasLabel("Logs And Default Data:"));
        for (int row : {0, 2}) {
            for (QWidget *cell : {static_cast<QWidget *>(group(row)), static_cast<QWidget *>(check(row))}) {
                QCOMPARE(cell->property("row").toInt(), row);
                QCOMPARE(cell->property("column").toInt(), cell == group(row) ? 1 : 2);
                QCOMPARE(cell->property("logName").toString(), row == 0 ? QString("GR") : QString("NPHI"));
                QCOMPARE(cell->property("groupName").toString(), row == 0 ? QString("Gamma") : QString("Porosity"));
            }
        }
        QVERIFY(!m->logs()->isModified());
        QCOMPARE(m->logs()->allLogs(), QStringList({"GR", "RHOB", "NPHI"}));
        QCOMPARE(m->logs()->allGroups(), QStringList({"Gamma", "Density", "Porosity"}));
    }
    void aWellWithoutLogsSaysSo()
    {
        m->select("W-2");
        QCOMPARE(F::status(m->logs()), QString("Well logs ara not available for this Well !"));
        QVERIFY(!update()->isEnabled());
        QCOMPARE(table()->rowCount(), 0);
        m->select("W-1");
        QCOMPARE(F::status(m->logs()), QString());
        m->select("None");
        QCOMPARE(table()->rowCount(), 0);
        QVERIFY(!update()->isEnabled());
    }

    void theFileTicksItsLogs()
    {
        store("W-1\nSonic|RHOB\n Gamma|GR \nDensity|none such\n");
        m->select("W-1");
        QCOMPARE(rows(), QStringList({"GR Gamma x", "RHOB Sonic x", "NPHI Porosity -"}));
        QCOMPARE(group(1)->property("groupName").toString(), QString("Sonic"));
        QCOMPARE(check(1)->property("groupName").toString(), QString("Sonic"));
        QCOMPARE(m->logs()->defaultLogs(), QStringList({"GR", "RHOB"}));
        QCOMPARE(m->logs()->defaultGroups(), QStringList({"Gamma", "Sonic"}));
        QVERIFY(!m->logs()->isModified());
    }
    // As it was stored after a log was moved into a group that has a default already.
    void twoDefaultsOfOneGroupInTheFileAreBothTicked()
    {
        store("W-1\nGamma|GR\nGamma|RHOB\n");
        m->select("W-1");
        QCOMPARE(rows(), QStringList({"GR Gamma x", "RHOB Gamma x", "NPHI Porosity -"}));
    }
    void linesOfOtherThanTwoPartsAreIgnored()
    {
        store("W-1\nGamma|GR|x\nRHOB\n\n|Density||RHOB|\n");
        m->select("W-1");
        QCOMPARE(rows(), QStringList({"GR Gamma -", "RHOB Density x", "NPHI Porosity -"}));
    }
    void aFileOfAnotherWellIsToldAndIgnored()
    {
        store("W-9\nGamma|GR\n");
        m->select("W-1");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Log(s)"));
        QCOMPARE(m->asker.boxes.at(0).icon, base::BoxIcon::Warning);
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("Selected well's wellName is not match with file header's wellname."));
        QCOMPARE(rows(), QStringList({"GR Gamma -", "RHOB Density -", "NPHI Porosity -"}));
    }
    // Decoding takes off some; files that were joined have more, and so may the name of a well.
    void byteOrderMarksInFrontAreNoneOfTheName()
    {
        store(QByteArray("\xEF\xBB\xBF").repeated(4) + "W-1\nGamma|GR\n");
        m->select("W-1");
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(rows().at(0), QString("GR Gamma x"));

        const QString marks(4, QChar(QChar::ByteOrderMark));
        const auto file = welldata::parseDefaultData(defaultLogsBytes(marks + "W-1", {}));
        QVERIFY(isOfWell(file, marks + "W-1"));
        QVERIFY(!isOfWell(file, marks + "W-2"));
    }
    void anEmptyFileIsOfNoWell()
    {
        store("");
        m->select("W-1");
        QCOMPARE(m->asker.boxes.size(), 1);
    }
    void aFileThatCannotBeOpenedIsTold()
    {
        QVERIFY(QDir().mkpath(file()));
        m->select("W-1");
        QCOMPARE(m->asker.boxes.at(0).title, QString("Log(s)"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 "Unable to open this File : " + file() + "\nPlease check file read/write permission.");
        QCOMPARE(table()->rowCount(), 3);
    }

    void aGroupHasAtMostOneDefault()
    {
        CurveGroupTable::instance().set("RHOB", "Gamma");
        m->select("W-1");
        check(0)->click();
        QVERIFY(m->logs()->isModified());
        check(1)->click();
        check(2)->click();
        QCOMPARE(rows(), QStringList({"GR Gamma -", "RHOB Gamma x", "NPHI Porosity x"}));
        QCOMPARE(m->logs()->defaultLogs(), QStringList({"RHOB", "NPHI"}));
        check(1)->click();
        QCOMPARE(rows(), QStringList({"GR Gamma -", "RHOB Gamma -", "NPHI Porosity x"}));
    }
    void anotherGroupLeavesTheBoxesAsTheyAre()
    {
        m->select("W-1");
        check(0)->click();
        check(1)->click();
        group(1)->setCurrentText("Gamma");
        QCOMPARE(rows(), QStringList({"GR Gamma x", "RHOB Gamma x", "NPHI Porosity -"}));
        QCOMPARE(group(1)->property("groupName").toString(), QString("Gamma"));
        QCOMPARE(check(1)->property("groupName").toString(), QString("Gamma"));
        QCOMPARE(m->logs()->allGroups(), QStringList({"Gamma", "Gamma", "Porosity"}));
        QCOMPARE(m->logs()->defaultGroups(), QStringList({"Gamma", "Gamma"}));
        check(0)->click();
        check(0)->click();
        QCOMPARE(rows(), QStringList({"GR Gamma x", "RHOB Gamma -", "NPHI Porosity -"}));
    }
    void anEditedNameIsPutBack()
    {
        m->select("W-1");
        table()->item(1, 0)->setText("renamed");
        QCOMPARE(table()->item(1, 0)->text(), QString("RHOB"));
        QVERIFY(!m->logs()->isModified());
    }
    void slotsWithoutASenderDoNothing()
    {
        m->select("W-1");
        QVERIFY(QMetaObject::invokeMethod(m->logs(), "checkBoxToggled", Q_ARG(bool, true)));
        QVERIFY(QMetaObject::invokeMethod(m->logs(), "groupNameChanged", Q_ARG(QString, "Sonic")));
        QVERIFY(!m->logs()->isModified());
    }

    // "Depth" is not offered; a log of that group keeps it until the user chooses another.
    void aGroupThatIsNotOfferedStays()
    {
        CurveGroupTable::instance().set("NPHI", "Depth");
        store("W-1\nDepth|NPHI\n");
        m->select("W-1");
        QCOMPARE(group(2)->currentIndex(), -1);
        QCOMPARE(group(2)->placeholderText(), QString("Depth"));
        F::click(m->logs(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("W-1\nDepth|NPHI\n"));
        QCOMPARE(CurveGroupTable::instance().group("NPHI"), QString("Depth"));
        group(2)->setCurrentText("Sonic");
        F::click(m->logs(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("W-1\nSonic|NPHI\n"));
        QCOMPARE(CurveGroupTable::instance().group("NPHI"), QString("Sonic"));
    }

    void updateWritesFileGroupsAndTable()
    {
        m->select("W-1");
        check(1)->click();
        group(0)->setCurrentText("Caliper");
        check(0)->click();
        QSignalSpy written(m->logs(), &DefaultDataClass::defaultsWritten);
        F::click(m->logs(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("W-1\nCaliper|GR\nDensity|RHOB\n"));
        QCOMPARE(F::status(m->logs()), QString("Updated Successfully !"));
        QVERIFY(!m->logs()->isModified());
        QVERIFY(groupFile("Caliper").contains("GR"));
        QVERIFY(groupFile("Porosity").contains("NPHI"));
        QVERIFY(files::read(m->path("/CurveGroups/CurveGroupTable.txt")).contains("GR | Caliper\n"));
        QCOMPARE(written.size(), 1);
        QVERIFY(m->asker.boxes.isEmpty());
        // The pass ran: the other well has its file too.
        QCOMPARE(files::read(m->path("/DefaultLogs/W-2.txt")), QByteArray("W-2\n"));
        m->select("W-2");
        m->select("W-1");
        QCOMPARE(rows(), QStringList({"GR Caliper x", "RHOB Density x", "NPHI Porosity -"}));
    }
    void aFileThatCannotBeMadeChangesNothing()
    {
        QVERIFY(QDir(m->path("/DefaultLogs")).removeRecursively());
        m->select("W-1");
        group(0)->setCurrentText("Caliper");
        check(0)->click();
        F::click(m->logs(), "updateButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Log(s)"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("Unable to create file.\nPlease Check file read/write permission."));
        QVERIFY(m->logs()->isModified());
        QCOMPARE(F::status(m->logs()), QString());
        QVERIFY(!groupFile("Caliper").contains("GR"));
        QCOMPARE(CurveGroupTable::instance().group("GR"), QString("Gamma"));
        QCOMPARE(rows().at(0), QString("GR Caliper x"));
    }

    void anotherWellAsksWhetherToSave()
    {
        m->select("W-1");
        check(0)->click();
        m->asker.answers = {base::BoxButton::Yes};
        m->select("W-2");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Log(s)"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("You changed the default data but not saved them.\nWould you like to save them ?"));
        QCOMPARE(m->asker.boxes.at(0).buttons, QVector<base::BoxButton>({base::BoxButton::Yes, base::BoxButton::No}));
        QCOMPARE(files::read(file()), QByteArray("W-1\nGamma|GR\n"));
        QVERIFY(!m->logs()->isModified());
        QCOMPARE(F::status(m->logs()), QString("Well logs ara not available for this Well !"));

        m->select("W-1");
        check(0)->click();
        m->asker.answers = {base::BoxButton::No};
        m->select("None");
        QCOMPARE(files::read(file()), QByteArray("W-1\nGamma|GR\n"));
        QVERIFY(!m->logs()->isModified());
        m->select("W-1");
        QCOMPARE(m->asker.boxes.size(), 2);
    }
    void changesThatCouldNotBeSavedAreGivenUpWithTheirWell()
    {
        QVERIFY(QDir(m->path("/DefaultLogs")).removeRecursively());
        m->select("W-1");
        check(0)->click();
        m->asker.answers = {base::BoxButton::Yes, base::BoxButton::Ok};
        m->select("W-2");
        QCOMPARE(m->asker.boxes.size(), 2);
        QCOMPARE(m->asker.boxes.at(1).text,
                 QString("Unable to create file.\nPlease Check file read/write permission."));
        QCOMPARE(m->logs()->wellName(), QString("W-2"));
        QVERIFY(!m->logs()->isModified());
        m->select("None");
        QCOMPARE(m->asker.boxes.size(), 2);
    }

    void theWaitCursorStandsWhileUpdateRuns()
    {
        QVector<bool> isWaiting;
        connect(m->logs(), &DefaultDataClass::defaultsWritten, this,
                [&isWaiting] { isWaiting.append(QGuiApplication::overrideCursor() != nullptr); });
        m->select("W-1");
        F::click(m->logs(), "updateButton");
        check(0)->click();
        m->asker.answers = {base::BoxButton::Yes};
        m->select("W-2"); // saves without it
        QCOMPARE(isWaiting, QVector<bool>({true, false}));
        QVERIFY(!QGuiApplication::overrideCursor());
    }
    void aFailureIsToldWithoutTheWaitCursor()
    {
        CursorAsker asker;
        ProjectData data(m->host, asker);
        data.project = m->launch->project;
        data.catalogue.build();
        DefaultDataClass logs(data);
        logs.setWell("W-1");
        QVERIFY(QDir(m->path("/DefaultLogs")).removeRecursively());
        F::click(&logs, "updateButton");
        QCOMPARE(asker.isWaiting, QVector<bool>({false}));
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void tabsDoNotAsk()
    {
        m->select("W-1");
        check(0)->click();
        m->show(m->markers());
        m->show(m->logs());
        QVERIFY(m->asker.boxes.isEmpty());
        QVERIFY(m->logs()->isModified());
    }

    void namesWithBarsFindTheirLogs()
    {
        m->well(m->key2).logs = m->well(m->key1).logs;
        m->well(m->key2).logs[0].name = "A|B";
        m->launch->catalogue.build();
        m->select("W-2");
        check(0)->click();
        F::click(m->logs(), "updateButton");
        m->select("W-1");
        m->select("W-2");
        QVERIFY(check(0)->isChecked());
    }

private:
    QTableWidget *table() const { return F::find<QTableWidget>(m->logs(), "defaultTable"); }
    QPushButton *update() const { return F::find<QPushButton>(m->logs(), "updateButton"); }
    QComboBox *group(int row) const { return qobject_cast<QComboBox *>(table()->cellWidget(row, 1)); }
    QCheckBox *check(int row) const { return qobject_cast<QCheckBox *>(table()->cellWidget(row, 2)); }
    QStringList rows() const
    {
        QStringList lines;
        for (int row = 0; row < table()->rowCount(); ++row)
            lines.append(QStringList({table()->item(row, 0)->text(), group(row)->currentText(),
                                      check(row)->isChecked() ? "x" : "-"})
                             .join(' '));
        return lines;
    }
    bool hasLabel(const QString &text) const
    {
        for (const QLabel *label : m->logs()->findChildren<QLabel *>())
            if (label->text() == text)
                return true;
        return false;
    }
    QString file() const { return m->path("/DefaultLogs/W-1.txt"); }
    void store(const QByteArray &bytes) const { files::write(file(), bytes); }
    QList<QByteArray> groupFile(const QString &name) const
    {
        return files::read(m->path("/CurveGroups/" + name + ".txt")).split('\n');
    }

    std::unique_ptr<WellDataFixture> m;
};

LORVA_TEST_MAIN(tst_defaultdata)
#include "tst_defaultdata.moc"
