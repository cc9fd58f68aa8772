#include "projecttreefixture.h"
#include "support/testmain.h"

#include <QSignalSpy>

namespace {

/// Keys typed within the interval (milliseconds) belong to one search: by default all, however slow the machine is.
class PatientSearch
{
public:
    explicit PatientSearch(int interval = 600000) { QApplication::setKeyboardInputInterval(interval); }
    ~PatientSearch() { QApplication::setKeyboardInputInterval(m_before); }
    PatientSearch(const PatientSearch &) = delete;
    PatientSearch &operator=(const PatientSearch &) = delete;

private:
    int m_before = QApplication::keyboardInputInterval();
};

/// The tree of wells without content, with all signals of displays counted.
struct WellsFixture : ProjectFixture
{
    explicit WellsFixture(const QStringList &names)
    {
        for (const QString &name : names)
            addWell(name, {QStringLiteral("GR")});
        open();
        tree = std::make_unique<ProjectTreeWidget>(*launch);
        tree->resize(300, 600);
        tree->show();
        tree->setCurrentItem(tree->wellsItem());
        const auto count = [this] { ++sent; };
        QObject::connect(tree.get(), &ProjectTreeWidget::sendWellDisplayProperties, count);
        QObject::connect(tree.get(), &ProjectTreeWidget::removeWellDisplay, count);
    }
    QString current() const { return tree->currentItem()->text(0); }
    QTreeWidgetItem *well(int index) const { return tree->wellsItem()->child(index); }

    std::unique_ptr<ProjectTreeWidget> tree;
    int sent = 0;
};

} // namespace

class tst_projecttreekeys : public QObject
{
    Q_OBJECT

private slots:
    void spaceDoesWhatAClickOnTheBoxDoes_data()
    {
        QTest::addColumn<QString>("path");
        for (const char *path : {"Wells/A", "Wells/A/Markers", "Wells/A/Markers/Base", "Wells/A/Template/Own",
                                 "Wells/A/Template/Global/Simple"})
            QTest::newRow(path) << path;
    }

    void spaceDoesWhatAClickOnTheBoxDoes()
    {
        QFETCH(QString, path);
        TreeFixture byMouse;
        TreeFixture byKeyboard;
        for (TreeFixture *fixture : {&byMouse, &byKeyboard}) {
            if (path != QLatin1String("Wells/A"))
                fixture->clickBox("Wells/A");
            fixture->takeSent();
        }
        byKeyboard.tree->setCurrentItem(byKeyboard.item(qPrintable(path)));
        for (int i = 0; i < 2; ++i) {
            byMouse.clickBox(qPrintable(path));
            QTest::keyClick(byKeyboard.tree.get(), Qt::Key_Space);
            QCOMPARE(byKeyboard.item(qPrintable(path))->checkState(0), i == 0 ? Qt::Checked : Qt::Unchecked);
            QVERIFY(i == 1 || !byMouse.sent.isEmpty());
            QCOMPARE(byKeyboard.takeSent(), byMouse.takeSent());
        }
    }

    void spaceOnAnItemWithoutABoxSendsNothing()
    {
        TreeFixture fixture;
        for (const char *path :
             {"Wells", "Wells/A/Logs", "Wells/A/Logs/GR", "Wells/A/Template", "Correlations/East-West"}) {
            fixture.tree->setCurrentItem(fixture.item(path));
            QTest::keyClick(fixture.tree.get(), Qt::Key_Space);
        }
        QVERIFY(fixture.sent.isEmpty());
    }

    void arrowKeysWalkThroughTheTree()
    {
        TreeFixture fixture;
        fixture.tree->setCurrentItem(fixture.item("Wells"));
        for (Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Right, Qt::Key_Down})
            QTest::keyClick(fixture.tree.get(), key);
        QCOMPARE(fixture.tree->currentItem(), fixture.item("Wells/A/Logs/GR"));
        for (Qt::Key key : {Qt::Key_Left, Qt::Key_Left, Qt::Key_Left})
            QTest::keyClick(fixture.tree.get(), key);
        QCOMPARE(fixture.tree->currentItem(), fixture.item("Wells/A"));
        QTest::keyClick(fixture.tree.get(), Qt::Key_End);
        QCOMPARE(fixture.tree->currentItem(), fixture.item("Correlations"));
        QVERIFY(fixture.sent.isEmpty());
    }

    void typingFindsAWell()
    {
        TreeFixture fixture;
        fixture.tree->setFocus();
        fixture.tree->setCurrentItem(fixture.item("Wells"));
        QTest::keyClicks(fixture.tree.get(), QStringLiteral("B"));
        QCOMPARE(fixture.tree->currentItem(), fixture.item("Wells/B"));
    }

    void typingANameFindsTheWell_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::newRow("with a blank") << "b 2"
                                      << "B 2";
        QTest::newRow("signs that open and close branches") << "15/9-F*1+"
                                                            << "15/9-F*1+";
        QTest::newRow("the whole name, not a longer one") << "aldra-1"
                                                          << "Aldra-1";
        QTest::newRow("the longer one") << "aldra-10"
                                        << "Aldra-10";
        QTest::newRow("a beginning") << "al"
                                     << "Aldra-1";
        QTest::newRow("two equal letters") << "zz"
                                           << "ZZ";
    }

    void typingANameFindsTheWell()
    {
        QFETCH(QString, typed);
        const PatientSearch patient;
        WellsFixture fixture({QStringLiteral("15/9-F*1+"), QStringLiteral("Aldra-1"), QStringLiteral("Aldra-10"),
                              QStringLiteral("B"), QStringLiteral("B 2"), QStringLiteral("Z"), QStringLiteral("ZZ")});
        for (int well = 0; well < 7; ++well)
            fixture.well(well)->setExpanded(true);
        QTest::keyClicks(fixture.tree.get(), typed);
        QTEST(fixture.current(), "expected");
        for (int well = 0; well < 7; ++well) {
            QVERIFY(fixture.well(well)->isExpanded());
            QVERIFY(!templateBranch(fixture.well(well))->isExpanded());
            QCOMPARE(fixture.well(well)->checkState(0), Qt::Unchecked);
        }
        QCOMPARE(fixture.sent, 0);
    }

    void typingTheWholeNameFindsItFromALongerOne()
    {
        const PatientSearch patient;
        WellsFixture fixture({QStringLiteral("Aldra-1"), QStringLiteral("Aldra-10"), QStringLiteral("Aldra-11")});
        fixture.tree->setCurrentItem(fixture.well(1));
        QTest::keyClicks(fixture.tree.get(), QStringLiteral("aldra-1"));
        QCOMPARE(fixture.current(), QStringLiteral("Aldra-1"));
    }

    void typingFindsAWellInTheClosedBranch()
    {
        const PatientSearch patient;
        WellsFixture fixture({QStringLiteral("Aldra-1"), QStringLiteral("Brent-2")});
        fixture.tree->wellsItem()->setExpanded(false);
        QTest::keyClicks(fixture.tree.get(), QStringLiteral("brent"));
        QCOMPARE(fixture.current(), QStringLiteral("Brent-2"));
        QVERIFY(fixture.tree->wellsItem()->isExpanded());
    }

    void aLetterPressedAgainGoesToTheNextWell_data()
    {
        QTest::addColumn<int>("interval");
        QTest::newRow("at once") << 600000;
        QTest::newRow("after a while") << 0; // every key begins a search of its own
    }

    void aLetterPressedAgainGoesToTheNextWell()
    {
        QFETCH(int, interval);
        const PatientSearch search(interval);
        WellsFixture fixture({QStringLiteral("B"), QStringLiteral("B 2"), QStringLiteral("B 3")});
        QStringList visited;
        for (int i = 0; i < 4; ++i) {
            if (interval == 0)
                QTest::qSleep(2);
            QTest::keyClicks(fixture.tree.get(), QStringLiteral("b"));
            visited.append(fixture.current());
        }
        QCOMPARE(visited, strings({"B", "B 2", "B 3", "B"}));
    }

    void spaceTogglesWhenItIsNotPartOfATypedName()
    {
        const PatientSearch patient;
        WellsFixture fixture({QStringLiteral("Aldra"), QStringLiteral("B 2")});
        QTest::keyClicks(fixture.tree.get(), QStringLiteral("aldra "));
        QCOMPARE(fixture.well(0)->checkState(0), Qt::Checked);
        QCOMPARE(fixture.sent, 1);
    }

    void spaceTogglesWhenTheSearchIsOver()
    {
        const PatientSearch impatient(0);
        WellsFixture fixture({QStringLiteral("B"), QStringLiteral("B 2")});
        QTest::keyClicks(fixture.tree.get(), QStringLiteral("b"));
        QTest::qSleep(2);
        QTest::keyClick(fixture.tree.get(), Qt::Key_Space);
        QCOMPARE(fixture.current(), QStringLiteral("B"));
        QCOMPARE(fixture.well(0)->checkState(0), Qt::Checked);
    }

    void logsAreFoundByTypingToo()
    {
        const PatientSearch patient;
        TreeFixture fixture;
        fixture.item("Wells/A")->setExpanded(true);
        fixture.item("Wells/A/Logs")->setExpanded(true);
        fixture.tree->setCurrentItem(fixture.item("Wells/A"));
        QTest::keyClicks(fixture.tree.get(), QStringLiteral("dt"));
        QCOMPARE(fixture.tree->currentItem(), fixture.item("Wells/A/Logs/DT"));
    }

    void twoThousandWells()
    {
        const PatientSearch patient;
        QStringList names;
        for (int i = 0; i < 2000; ++i)
            names.append(QStringLiteral("Well %1").arg(i, 4, 10, QLatin1Char('0')));
        WellsFixture fixture(names);
        QCOMPARE(childTexts(fixture.tree->wellsItem()), names);
        QTest::keyClicks(fixture.tree.get(), QStringLiteral("well 1987"));
        QCOMPARE(fixture.current(), QStringLiteral("Well 1987"));
        QVERIFY(fixture.tree->viewport()->rect().contains(fixture.tree->visualItemRect(fixture.well(1987))));
        QTest::keyClick(fixture.tree.get(), Qt::Key_Home);
        QCOMPARE(fixture.tree->currentItem(), fixture.tree->wellsItem());

        QSignalSpy inserted(fixture.tree->model(), &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(fixture.tree->model(), &QAbstractItemModel::rowsRemoved);
        QSignalSpy changed(fixture.tree->model(), &QAbstractItemModel::dataChanged);
        fixture.tree->synchronise();
        QCOMPARE(inserted.size() + removed.size() + changed.size(), 0); // nothing new, nothing touched
        fixture.addWell(QStringLiteral("Well 0500 B"), {QStringLiteral("GR"), QStringLiteral("DT")});
        fixture.launch->catalogue.build();
        fixture.tree->synchronise();
        QCOMPARE(inserted.size(), 1); // the new well with all it holds
        QCOMPARE(removed.size() + changed.size(), 0);
    }
};

LORVA_TEST_MAIN(tst_projecttreekeys)
#include "tst_projecttreekeys.moc"
