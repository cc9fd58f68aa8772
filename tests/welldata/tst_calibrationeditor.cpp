// The tab "Calibration Point(s)": its group, its table and the side files of well and group.

#include "datastore/calibrationfile.h"
#include "datastore/curvegroups.h"
#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"

#include <QApplication>
#include <QSignalSpy>

using F = WellDataFixture;

class tst_calibrationeditor : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<WellDataFixture>();
        m->show(m->points());
    }
    void cleanup() { m.reset(); }

    // Also where the first and the last cell are lines of numbers.
    void tabLeavesTheTableAtItsEnds()
    {
        store("Gamma", "100|50\n");
        m->select("W-1");
        chooseGroup("Gamma");
        QStringList outside;
        for (const bool isForward : {true, false}) {
            QLineEdit *edit = F::edit(m->points(), 0, isForward ? 1 : 0);
            edit->setFocus();
            QTest::keyClick(edit, isForward ? Qt::Key_Tab : Qt::Key_Backtab);
            const QWidget *focus = QApplication::focusWidget();
            QVERIFY(focus && focus != table() && !table()->isAncestorOf(focus));
            outside.append(focus->objectName());
        }
        QVERIFY2(outside.at(0) != outside.at(1), qPrintable(outside.join(' ')));
    }

    void itLooksAsPrescribed()
    {
        store("Gamma", "100|50\n");
        m->select("W-1");
        chooseGroup("Gamma");
        QStringList headers;
        for (int column = 0; column < table()->columnCount(); ++column)
            headers.append(table()->horizontalHeaderItem(column)->text());
        QCOMPARE(headers.join(';'), QString("Depth;Value"));
        QCOMPARE(m->points()->windowTitle(), QString("Calibration Point(s)"));
        QStringList groups;
        for (int i = 0; i < group()->count(); ++i)
            groups.append(group()->itemText(i));
        QCOMPARE(groups, curveGroupNames());
        bool hasLabel = false;
        for (const QLabel *label : m->points()->findChildren<QLabel *>())
            hasLabel |= label->text() == "Group" && label->buddy() == group();
        QVERIFY(hasLabel);
        QCOMPARE(F::find<QPushButton>(m->points(), "deleteButton")->toolTip(), QString("Delete"));
        QCOMPARE(F::find<QPushButton>(m->points(), "asciiFileButton")->text(), QString("ASCII File"));
        QCOMPARE(F::find<QPushButton>(m->points(), "updateButton")->text(), QString("Update"));
        for (int column : {0, 1}) {
            QCOMPARE(F::edit(m->points(), 0, column)->property("row").toInt(), 0);
            QCOMPARE(F::edit(m->points(), 0, column)->property("column").toInt(), column);
            QVERIFY(!F::edit(m->points(), 0, column)->hasFrame());
            QVERIFY(qobject_cast<const QDoubleValidator *>(F::edit(m->points(), 0, column)->validator()));
        }
        QCOMPARE(F::shown(m->points()), QVector<QStringList>({{"100", "50"}}));
        QCOMPARE(F::status(m->points()), QString());
    }

    void withoutAWellNothingCanBeDone()
    {
        m->select("W-1");
        QVERIFY(F::isEnabled(m->points(), "updateButton"));
        m->select("None");
        QCOMPARE(F::status(m->points()), QString("Well not selected !"));
        for (const char *button : {"addButton", "deleteButton", "asciiFileButton", "updateButton"})
            QVERIFY2(!F::isEnabled(m->points(), button), button);
        m->points()->updateBtnClicked();
        QCOMPARE(F::status(m->points()), QString("Well not selected !"));
    }

    void theGroupIsReadAnewWhenItChanges()
    {
        store("Gamma", "100|50\n200|60.5\n");
        m->select("W-1");
        QCOMPARE(F::status(m->points()), QString("Calibration data doesn't exist !"));
        chooseGroup("Gamma");
        QCOMPARE(F::shown(m->points()), QVector<QStringList>({{"100", "50"}, {"200", "60.5"}}));
        chooseGroup("Sonic");
        QCOMPARE(table()->rowCount(), 0);
        QCOMPARE(F::status(m->points()), QString("Calibration data doesn't exist !"));
        store("Sonic", "7|8\n");
        chooseGroup("Gamma");
        chooseGroup("Sonic");
        QCOMPARE(F::shown(m->points()), QVector<QStringList>({{"7", "8"}}));
        m->select("W-2");
        QCOMPARE(group()->currentText(), QString("Sonic"));
        QCOMPARE(table()->rowCount(), 0);
    }

    void updateReplacesThePointsOfTheGroup()
    {
        m->select("W-1");
        chooseGroup("Gamma");
        m->points()->addRow();
        F::type(m->points(), 0, 0, "100.25");
        F::type(m->points(), 0, 1, "1234567");
        QSignalSpy written(m->points(), &DefineCalibrationPoint::pointsWritten);
        F::click(m->points(), "updateButton");
        QCOMPARE(files::read(file("Gamma")), QByteArray("WellName :W-1\nGroupName :Gamma\n100.25|1.23457e+06\n"));
        QCOMPARE(F::status(m->points()), QString("Successfully updated !"));
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(written.size(), 1);
        QVERIFY(!m->points()->isModified());
        // Another group of the well keeps its points.
        chooseGroup("Sonic");
        m->points()->addRow();
        F::type(m->points(), 0, 0, "1");
        F::click(m->points(), "updateButton");
        QVERIFY(files::read(file("Gamma")).endsWith("100.25|1.23457e+06\n"));
        QCOMPARE(files::read(file("Sonic")), QByteArray("WellName :W-1\nGroupName :Sonic\n1|0\n"));
    }
    void anEmptyTableStoresAnEmptySet()
    {
        store("Gamma", "100|50\n");
        m->select("W-1");
        chooseGroup("Gamma");
        F::click(m->points(), "deleteButton");
        m->asker.answers = {base::BoxButton::Yes};
        F::click(m->points(), "updateButton");
        QCOMPARE(files::read(file("Gamma")), QByteArray("WellName :W-1\nGroupName :Gamma\n"));
        QCOMPARE(F::status(m->points()), QString("Successfully updated !"));
    }
    void noToTheQuestionLeavesEverything()
    {
        store("Gamma", "100|50\n");
        m->select("W-1");
        chooseGroup("Gamma");
        F::type(m->points(), 0, 1, "51");
        m->asker.answers = {base::BoxButton::No};
        F::click(m->points(), "updateButton");
        QCOMPARE(m->asker.boxes.at(0).title, QString("Well Calibration Data Write"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("Well Calibration data for this well is already exists.\nWould you like to update it?"));
        QVERIFY(files::read(file("Gamma")).endsWith("100|50\n"));
        QCOMPARE(F::status(m->points()), QString());
        QCOMPARE(F::number(m->points(), 0, 1), QString("51"));
    }
    void noneIsNoGroup()
    {
        m->select("W-1");
        m->points()->addRow();
        F::click(m->points(), "updateButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Calibration Point(s)"));
        QCOMPARE(m->asker.boxes.at(0).text, QString("Unable to set GroupName."));
        QVERIFY(!QFileInfo::exists(file("None")));
    }

    void anotherGroupAsksWhetherToSave()
    {
        store("Gamma", "100|50\n");
        m->select("W-1");
        chooseGroup("Gamma");
        F::type(m->points(), 0, 1, "51");
        m->asker.answers = {base::BoxButton::Yes, base::BoxButton::Yes};
        chooseGroup("Sonic");
        QCOMPARE(m->asker.boxes.at(0).title, QString("Calibration Point(s)"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("You changed the calibration points but not saved them.\nWould you like to save them ?"));
        QVERIFY(files::read(file("Gamma")).endsWith("100|51\n"));
        QCOMPARE(group()->currentText(), QString("Sonic"));
        QVERIFY(!QFileInfo::exists(file("Sonic")));
        chooseGroup("Gamma");
        F::type(m->points(), 0, 1, "52");
        m->asker.answers = {base::BoxButton::No};
        chooseGroup("Sonic");
        QVERIFY(files::read(file("Gamma")).endsWith("100|51\n"));
        QCOMPARE(table()->rowCount(), 0);
    }
    void aGroupThatCouldNotBeSavedStays()
    {
        store("Gamma", "100|50\n");
        m->select("W-1");
        chooseGroup("Gamma");
        F::type(m->points(), 0, 1, "51");
        m->asker.answers = {base::BoxButton::Yes, base::BoxButton::No}; // save; but not over the file
        chooseGroup("Sonic");
        QCOMPARE(group()->currentText(), QString("Gamma"));
        QCOMPARE(F::number(m->points(), 0, 1), QString("51"));
    }

    void pointsOfAnotherWellAreNotShown()
    {
        store("Gamma", "100|50\n");
        m->select("W-1");
        chooseGroup("Gamma");
        m->points()->setCalibrationData(onePoint("W-2"));
        QCOMPARE(F::status(m->points()), QString("Current wellName is not matching with calibration data."));
        QCOMPARE(F::shown(m->points()), QVector<QStringList>({{"100", "50"}}));
        m->points()->setCalibrationData(onePoint("W-1"));
        QCOMPARE(F::shown(m->points()), QVector<QStringList>({{"1", "2"}}));
        QCOMPARE(F::status(m->points()), QString());
    }

private:
    WellDataTable *table() const { return m->points()->table(); }
    QComboBox *group() const { return F::find<QComboBox>(m->points(), "groupBox"); }
    void chooseGroup(const QString &name) const { group()->setCurrentText(name); }
    QString file(const QString &groupName) const { return m->path("/W-1_" + groupName + "_calibrationPoints.txt"); }
    static CalibrationRecord onePoint(const QString &wellName)
    {
        CalibrationRecord record;
        record.wellName = wellName;
        record.groupName = "Gamma";
        record.depths = {1};
        record.values = {2};
        return record;
    }
    void store(const QString &groupName, const QByteArray &lines) const
    {
        files::write(file(groupName), "WellName :W-1\nGroupName :" + groupName.toUtf8() + "\n" + lines);
    }

    std::unique_ptr<WellDataFixture> m;
};

LORVA_TEST_MAIN(tst_calibrationeditor)
#include "tst_calibrationeditor.moc"
