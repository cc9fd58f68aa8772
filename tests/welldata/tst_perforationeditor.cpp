// The tab "Perforation Zone(s)": its table and the well's side file.

#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>

using F = WellDataFixture;

namespace {

const char oneZone[] = "1\nA|100|110.5|Gas\n";

} // namespace

class tst_perforationeditor : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<WellDataFixture>();
        m->show(m->zones());
    }
    void cleanup() { m.reset(); }

    void itLooksAsPrescribed()
    {
        store(oneZone);
        m->select("W-1");
        QStringList headers;
        for (int column = 0; column < table()->columnCount(); ++column)
            headers.append(table()->horizontalHeaderItem(column)->text());
        QCOMPARE(headers.join(';'), QString("Name;Start Depth;End Depth;Zone Type"));
        QCOMPARE(m->zones()->windowTitle(), QString("Perforation Zone(s)"));
        QCOMPARE(F::find<QPushButton>(m->zones(), "deleteButton")->toolTip(), QString("Delete"));
        for (int column : {1, 2}) {
            QVERIFY(!F::edit(m->zones(), 0, column)->hasFrame());
            QVERIFY(qobject_cast<const QDoubleValidator *>(F::edit(m->zones(), 0, column)->validator()));
        }
        QCOMPARE(F::find<QPushButton>(m->zones(), "asciiFileButton")->text(), QString("ASCII File"));
        QCOMPARE(F::find<QPushButton>(m->zones(), "updateButton")->text(), QString("Update"));
        for (int column : {1, 2, 3}) {
            QCOMPARE(table()->cellWidget(0, column)->property("row").toInt(), 0);
            QCOMPARE(table()->cellWidget(0, column)->property("column").toInt(), column);
        }
        QLineEdit *start = F::edit(m->zones(), 0, 1);
        const QColor usual = start->palette().color(QPalette::Text);
        QTest::keyClick(start, Qt::Key_1); // a number is no problem, also while it is typed
        QCOMPARE(start->palette().color(QPalette::Text), usual);
        QTest::keyClick(start, Qt::Key_Backspace);
        QStringList types;
        for (int i = 0; i < F::box(m->zones(), 0, 3)->count(); ++i)
            types.append(F::box(m->zones(), 0, 3)->itemText(i));
        QCOMPARE(types,
                 QStringList({"Oil", "Gas", "Water", "Dry", "Oil-Gas", "Oil-Water", "Gas-Water", "Not Tested"}));
        QCOMPARE(F::shown(m->zones()), QVector<QStringList>({{"A", "100", "110.5", "Gas"}}));
        QCOMPARE(F::status(m->zones()), QString());
    }

    void withoutAWellNothingCanBeDone()
    {
        m->select("W-1");
        m->select("None");
        QCOMPARE(F::status(m->zones()), QString("Well not selected !"));
        for (const char *button : {"addButton", "deleteButton", "asciiFileButton", "updateButton"})
            QVERIFY2(!F::isEnabled(m->zones(), button), button);
    }

    void withoutAFileTheFirstRowEnablesUpdate()
    {
        m->select("W-1");
        QCOMPARE(F::status(m->zones()), QString("Perforation Zone data doesn't exist !"));
        QVERIFY(!F::isEnabled(m->zones(), "updateButton"));
        QVERIFY(F::isEnabled(m->zones(), "asciiFileButton"));
        F::click(m->zones(), "addButton");
        QVERIFY(F::isEnabled(m->zones(), "updateButton"));
        QCOMPARE(F::shown(m->zones()), QVector<QStringList>({{"", "", "", "Oil"}}));
        F::typeName(m->zones(), 0, "A");
        F::type(m->zones(), 0, 1, "200"); // start below end is not checked
        F::type(m->zones(), 0, 2, "100.25");
        F::box(m->zones(), 0, 3)->setCurrentText("Not Tested");
        QSignalSpy written(m->zones(), &DefineWellPerforation::zonesWritten);
        F::click(m->zones(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("1\nA|200|100.25|Not Tested\n"));
        QCOMPARE(F::status(m->zones()), QString("Successfully updated !"));
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(written.size(), 1);
        m->select("W-2");
        QCOMPARE(F::status(m->zones()), QString("Perforation Zone data doesn't exist !"));
        QVERIFY(!F::isEnabled(m->zones(), "updateButton"));
    }

    void pastedZonesEnableUpdateToo()
    {
        m->select("W-1");
        QVERIFY(!F::isEnabled(m->zones(), "updateButton"));
        QApplication::clipboard()->setText("A\t1\t2\tGas\n");
        table()->setFocus();
        QTest::keyClick(table(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(table()->rowCount(), 1);
        F::click(m->zones(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("1\nA|1|2|Gas\n"));
    }

    void linesOfOtherThanFourPartsAreSkipped()
    {
        store("4\nA|1|2|Oil\nB|1|2\nC|1|2|Oil|x\n|D||3|4|Gas\n");
        m->select("W-1");
        QCOMPARE(F::shown(m->zones()), QVector<QStringList>({{"A", "1", "2", "Oil"}, {"D", "3", "4", "Gas"}}));
    }
    void depthsShowAsTheyWereRead()
    {
        store("1\nA|1234.5678|1e-3|Oil\n");
        m->select("W-1");
        QCOMPARE(F::shown(m->zones()), QVector<QStringList>({{"A", "1234.5677", "0.001", "Oil"}}));
    }
    void anUnknownTypeStandsAtTheFirstOneAndIsTold()
    {
        store("3\nA|1|2|Gas\nB|1|2|Helium\nC|1|2|gas\n");
        m->select("W-1");
        QCOMPARE(F::shown(m->zones()).at(1), QStringList({"B", "1", "2", "Oil"}));
        QCOMPARE(F::status(m->zones()),
                 QString("The zone type of rows 2, 3 is none of the list and shows as \"Oil\"."));
        m->asker.answers = {base::BoxButton::Yes};
        F::click(m->zones(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("3\nA|1|2|Gas\nB|1|2|Oil\nC|1|2|Oil\n"));
    }
    void aFileThatCannotBeOpenedIsTold()
    {
        QVERIFY(QDir().mkpath(file())); // a folder is in its place
        m->select("W-1");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Perforation Zone(s)"));
        QCOMPARE(m->asker.boxes.at(0).text, QString("Unable to read file please check file read/write permission."));
        QCOMPARE(m->asker.boxes.at(0).icon, base::BoxIcon::Warning);
        QCOMPARE(table()->rowCount(), 0);
        QVERIFY(!F::isEnabled(m->zones(), "updateButton"));
    }

    void anExistingFileIsReplacedAfterAQuestion()
    {
        store(oneZone);
        m->select("W-1");
        F::typeName(m->zones(), 0, "B");
        m->asker.answers = {base::BoxButton::No};
        F::click(m->zones(), "updateButton");
        QCOMPARE(m->asker.boxes.at(0).title, QString("Well Perforation Data Write"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("Well Perforation data for this well is already exists.\nWould you like to update it?"));
        QCOMPARE(files::read(file()), QByteArray(oneZone));
        QCOMPARE(F::status(m->zones()), QString());
        QCOMPARE(F::name(m->zones(), 0), QString("B"));
        QVERIFY(m->zones()->isModified());
        m->asker.answers = {base::BoxButton::Yes};
        F::click(m->zones(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("1\nB|100|110.5|Gas\n"));
        QCOMPARE(F::status(m->zones()), QString("Successfully updated !"));
        QVERIFY(!m->zones()->isModified());
    }
    void anEmptyTableWritesNoZones()
    {
        store(oneZone);
        m->select("W-1");
        F::click(m->zones(), "deleteButton");
        m->asker.answers = {base::BoxButton::Yes};
        F::click(m->zones(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("0\n"));
        m->select("W-2");
        m->select("W-1");
        QCOMPARE(F::status(m->zones()), QString());
        QVERIFY(F::isEnabled(m->zones(), "updateButton"));
    }
    void textThatIsNoNumberIsStoredAsZero()
    {
        m->select("W-1");
        m->zones()->addRow();
        F::typeName(m->zones(), 0, "A");
        F::type(m->zones(), 0, 2, "25,5"); // a comma is a point
        F::click(m->zones(), "updateButton");
        QCOMPARE(files::read(file()), QByteArray("1\nA|0|25.5|Oil\n"));
    }

    void namesThatTheFileCannotHoldAreRefused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("bar") << "a|b"
                             << "the name holds a \"|\"";
        QTest::newRow("line feed") << "a\nb"
                                   << "the name holds a line break";
        QTest::newRow("carriage return") << "a\rb"
                                         << "the name holds a line break";
        QTest::newRow("line separator") << QString(QChar(0x2028)) << "the name holds a line break";
        QTest::newRow("empty") << ""
                               << "the name is empty";
        QTest::newRow("blanks") << "  "
                                << "the name is empty";
    }
    void namesThatTheFileCannotHoldAreRefused()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        store("2\nA|1|2|Oil\nB|3|4|Oil\n");
        m->select("W-1");
        F::typeName(m->zones(), 1, name);
        F::click(m->zones(), "updateButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Perforation Zone(s)"));
        QCOMPARE(m->asker.boxes.at(0).text,
                 "These zones cannot be stored:\nRow 2: " + reason + "\nNothing was written.");
        QCOMPARE(files::read(file()), QByteArray("2\nA|1|2|Oil\nB|3|4|Oil\n"));
        QVERIFY(m->zones()->isModified());
    }
    void longAndForeignNamesAreKept()
    {
        m->select("W-1");
        for (const QString &name : {QString(10000, 'n'), QString::fromUtf8("Зона 日本 ø")}) {
            m->zones()->addRow();
            F::typeName(m->zones(), table()->rowCount() - 1, name);
        }
        F::click(m->zones(), "updateButton");
        m->select("W-2");
        m->select("W-1");
        QCOMPARE(F::name(m->zones(), 0), QString(10000, 'n'));
        QCOMPARE(F::name(m->zones(), 1), QString::fromUtf8("Зона 日本 ø"));
    }

private:
    WellDataTable *table() const { return m->zones()->table(); }
    QString file() const { return m->path("/W-1_perforationZone.txt"); }
    void store(const QByteArray &bytes) const { files::write(file(), bytes); }

    std::unique_ptr<WellDataFixture> m;
};

LORVA_TEST_MAIN(tst_perforationeditor)
#include "tst_perforationeditor.moc"
