#include "mainwin/projecttreewidget.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>

#include <functional>

namespace {

/// The tree of a project with two wells, two global templates more than the seeds, and everything a branch can hold.
class TreeFixture : public ProjectFixture
{
public:
    TreeFixture() { fill(); }
    /// With another asker for all boxes.
    explicit TreeFixture(base::Asker &otherAsker)
    {
        launch = std::make_unique<ProjectData>(host, otherAsker);
        fill();
    }

    void fill()
    {
        addWell(QStringLiteral("A"), {QStringLiteral("GR"), QStringLiteral("DT")},
                {QStringLiteral("Top"), QStringLiteral("Base")});
        addWell(QStringLiteral("B"), {QStringLiteral("SP")});
        open();
        addTemplate(QStringLiteral("Own"), QStringLiteral("A"));
        addTemplate(QStringLiteral("Second"), QStringLiteral("A"));
        addCorrelation(QStringLiteral("East-West"));
        tree = std::make_unique<ProjectTreeWidget>(*launch);
        tree->resize(300, 900);
        tree->show();
        QObject::connect(tree.get(), &ProjectTreeWidget::sendWellDisplayProperties,
                         [this](const QString &well, const QString &name) {
                             sent.append(QStringLiteral("show %1 %2").arg(well, name));
                         });
        QObject::connect(tree.get(), &ProjectTreeWidget::removeWellDisplay,
                         [this](const QString &well) { sent.append(QStringLiteral("hide %1").arg(well)); });
        QObject::connect(tree.get(), &ProjectTreeWidget::displayMarker,
                         [this](const QString &well, const QString &name) {
                             sent.append(QStringLiteral("marker %1 %2").arg(well, name));
                         });
        QObject::connect(tree.get(), &ProjectTreeWidget::removeMarker,
                         [this](const QString &well, const QString &name) {
                             sent.append(QStringLiteral("no marker %1 %2").arg(well, name));
                         });
    }

    /// An item by its texts from the top: {"Wells", "A", "Logs"}.
    QTreeWidgetItem *item(const QStringList &path) const
    {
        QTreeWidgetItem *current = tree->invisibleRootItem();
        for (const QString &text : path) {
            QTreeWidgetItem *next = nullptr;
            for (int i = 0; i < current->childCount() && !next; ++i)
                if (current->child(i)->text(0) == text)
                    next = current->child(i);
            if (!next)
                return nullptr;
            current = next;
        }
        return current;
    }
    QTreeWidgetItem *item(const char *path) const { return item(QString::fromLatin1(path).split(QLatin1Char('/'))); }

    /// Toggles the item's check box with the mouse.
    void clickBox(const char *path)
    {
        QTreeWidgetItem *target = item(path);
        QVERIFY2(target, path);
        for (QTreeWidgetItem *parent = target->parent(); parent; parent = parent->parent())
            parent->setExpanded(true);
        tree->scrollToItem(target);
        const QRect rect = tree->visualItemRect(target);
        QStyleOptionViewItem option;
        option.initFrom(tree.get());
        option.rect = rect;
        option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
        if (!target->icon(0).isNull())
            option.features |= QStyleOptionViewItem::HasDecoration;
        option.text = target->text(0);
        lastBox = tree->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, tree.get()).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, lastBox);
    }

    /// The menu entries that a right click on the item offers; disabled ones in brackets. Chooses \a choose.
    QStringList menuOf(const char *path, const QString &choose = {})
    {
        QTreeWidgetItem *target = item(path);
        if (!target)
            return {QStringLiteral("no such item")};
        for (QTreeWidgetItem *parent = target->parent(); parent; parent = parent->parent())
            parent->setExpanded(true);
        tree->scrollToItem(target);
        const QPoint position = tree->visualItemRect(target).center();
        QStringList entries;
        QTimer::singleShot(0, tree.get(), [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction *action : menu->actions())
                entries.append(action->isEnabled() ? action->text() : QStringLiteral("[%1]").arg(action->text()));
            for (QAction *action : menu->actions())
                if (action->text() == choose)
                    menu->setActiveAction(action);
            QTest::keyClick(menu, choose.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, tree->viewport()->mapToGlobal(position));
        QApplication::sendEvent(tree->viewport(), &event);
        QCoreApplication::processEvents();
        return entries;
    }

    QStringList takeSent()
    {
        QStringList result;
        result.swap(sent);
        return result;
    }

    std::unique_ptr<ProjectTreeWidget> tree;
    QStringList sent;
    QPoint lastBox; ///< that clickBox() clicked
};

QStringList childTexts(const QTreeWidgetItem *parent)
{
    QStringList result;
    for (int i = 0; i < parent->childCount(); ++i)
        result.append(parent->child(i)->text(0));
    return result;
}

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList result;
    for (const char *text : texts)
        result.append(QString::fromLatin1(text));
    return result;
}

/// Calls back at the moment each box appears.
class CallingAsker : public ScriptedAsker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        if (atBox)
            atBox();
        return ScriptedAsker::show(box);
    }
    std::function<void()> atBox;
};

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

class tst_projecttree : public QObject
{
    Q_OBJECT

private slots:
    void structureTypesAndIcons_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("isCheckable");
        QTest::addColumn<QString>("icon");
        QTest::newRow("wells") << "Wells" << 0 << false << "multisimplewell.png";
        QTest::newRow("well") << "Wells/A" << 1 << true << "well.png";
        QTest::newRow("logs") << "Wells/A/Logs" << 0 << false << "welllog.small.png";
        QTest::newRow("log") << "Wells/A/Logs/GR" << 2 << false << "";
        QTest::newRow("markers") << "Wells/A/Markers" << 3 << true << "marker.small.png";
        QTest::newRow("marker") << "Wells/A/Markers/Top" << 4 << true << "";
        QTest::newRow("template") << "Wells/A/Template" << 0 << false << "display_wlc.png";
        QTest::newRow("global") << "Wells/A/Template/Global" << 0 << false << "display_wlc.png";
        QTest::newRow("global template") << "Wells/A/Template/Global/Default" << 6 << true << "";
        QTest::newRow("well template") << "Wells/A/Template/Own" << 5 << true << "";
        QTest::newRow("correlations") << "Correlations" << 0 << false << "display_wlc.png";
        QTest::newRow("correlation") << "Correlations/East-West" << 7 << false << "";
    }

    void structureTypesAndIcons()
    {
        QFETCH(QString, path);
        QFETCH(bool, isCheckable);
        QFETCH(QString, icon);
        TreeFixture fixture;
        const QTreeWidgetItem *item = fixture.item(qPrintable(path));
        QVERIFY(item);
        QTEST(item->type(), "type");
        QCOMPARE(item->data(0, Qt::CheckStateRole).isValid(), isCheckable);
        if (isCheckable)
            QCOMPARE(item->checkState(0), Qt::Unchecked);
        QCOMPARE(item->icon(0).isNull(), icon.isEmpty());
        if (!icon.isEmpty())
            QCOMPARE(item->icon(0).pixmap(16).toImage(), fixture.host.icon(icon).pixmap(16).toImage());
    }

    void orderOfBranches()
    {
        TreeFixture fixture;
        QCOMPARE(childTexts(fixture.tree->invisibleRootItem()), strings({"Wells", "Correlations"}));
        QCOMPARE(childTexts(fixture.item("Wells")), strings({"A", "B"}));
        QCOMPARE(childTexts(fixture.item("Wells/A")), strings({"Logs", "Markers", "Template"}));
        QCOMPARE(childTexts(fixture.item("Wells/A/Logs")), strings({"GR", "DT"}));
        QCOMPARE(childTexts(fixture.item("Wells/A/Markers")), strings({"Top", "Base"}));
        QCOMPARE(childTexts(fixture.item("Wells/A/Template")), strings({"Global", "Own", "Second"}));
        // Global templates stand in the order in which the project lists them.
        QCOMPARE(childTexts(fixture.item("Wells/A/Template/Global")), fixture.launch->project.globalTemplateNames);
        QCOMPARE(fixture.item("Wells/B/Template/Global")->childCount(), 2);
        QCOMPARE(childTexts(fixture.item("Wells/B/Template")), strings({"Global"}));
        QCOMPARE(childTexts(fixture.item("Correlations")), strings({"East-West"}));
        QVERIFY(fixture.tree->isHeaderHidden());
    }

    void checkingAWellWithoutATemplateShowsDefault()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        QCOMPARE(fixture.item("Wells/A")->checkState(0), Qt::Checked);
        QCOMPARE(fixture.takeSent(), strings({"show A Default", "no marker A Top", "no marker A Base"}));
    }

    void uncheckingAWellRemovesItsDisplay()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.takeSent();
        fixture.clickBox("Wells/A");
        QCOMPARE(fixture.takeSent(), strings({"hide A"}));
    }

    void aTemplateOfAnUncheckedWellShowsNothing()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A/Template/Own");
        fixture.clickBox("Wells/A/Template/Global/Simple");
        QVERIFY(fixture.sent.isEmpty());
        QCOMPARE(fixture.item("Wells/A/Template/Own")->checkState(0), Qt::Checked);
    }

    void checkingAWellTakesItsCheckedTemplateGlobalFirst()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A/Template/Second");
        fixture.clickBox("Wells/A");
        QCOMPARE(fixture.takeSent().first(), QStringLiteral("show A Second"));
        fixture.clickBox("Wells/A");
        fixture.item("Wells/A/Template/Global/Simple")->setCheckState(0, Qt::Checked);
        fixture.takeSent();
        fixture.clickBox("Wells/A");
        QCOMPARE(fixture.takeSent().first(), QStringLiteral("show A Simple"));
    }

    void atMostOneTemplateOfAWellIsChecked()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.takeSent();
        const QStringList paths = strings({"Wells/A/Template/Own", "Wells/A/Template/Global/Simple",
                                           "Wells/A/Template/Second", "Wells/A/Template/Global/Default"});
        for (const QString &chosen : paths) {
            fixture.clickBox(qPrintable(chosen));
            QCOMPARE(fixture.takeSent(),
                     QStringList({QStringLiteral("show A %1").arg(chosen.section(QLatin1Char('/'), -1)),
                                  QStringLiteral("no marker A Top"), QStringLiteral("no marker A Base")}));
            for (const QString &path : paths)
                QCOMPARE(fixture.item(qPrintable(path))->checkState(0), path == chosen ? Qt::Checked : Qt::Unchecked);
        }
    }

    void uncheckingATemplateSendsNothing()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.clickBox("Wells/A/Template/Own");
        fixture.takeSent();
        fixture.clickBox("Wells/A/Template/Own");
        QVERIFY(fixture.sent.isEmpty());
    }

    void choosingATemplateEmitsNoItemSignalsForTheOthers()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.clickBox("Wells/A/Template/Own");
        int changes = 0;
        connect(fixture.tree.get(), &QTreeWidget::itemChanged, this, [&changes] { ++changes; });
        fixture.clickBox("Wells/A/Template/Second");
        QCOMPARE(changes, 1); // the click itself
    }

    void markersOfAnUncheckedWellAreCheckedButNotShown()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A/Markers");
        QCOMPARE(fixture.item("Wells/A/Markers/Top")->checkState(0), Qt::Checked);
        QCOMPARE(fixture.item("Wells/A/Markers/Base")->checkState(0), Qt::Checked);
        QVERIFY(fixture.sent.isEmpty());
        fixture.clickBox("Wells/A");
        QCOMPARE(fixture.takeSent(), strings({"show A Default", "marker A Top", "marker A Base"}));
    }

    void markersOfACheckedWellAreShownAndRemoved()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.takeSent();
        fixture.clickBox("Wells/A/Markers");
        QCOMPARE(fixture.takeSent(), strings({"marker A Top", "marker A Base"}));
        fixture.clickBox("Wells/A/Markers/Top");
        QCOMPARE(fixture.takeSent(), strings({"no marker A Top"}));
        fixture.clickBox("Wells/A/Markers/Top");
        QCOMPARE(fixture.takeSent(), strings({"marker A Top"}));
        fixture.clickBox("Wells/A/Markers");
        QCOMPARE(fixture.takeSent(), strings({"no marker A Top", "no marker A Base"}));
    }

    void aMarkerOfAnUncheckedWellSendsNothing()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A/Markers/Top");
        QVERIFY(fixture.sent.isEmpty());
    }

    void refreshingMarkersKeepsTheirStates()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A/Markers/Base");
        fixture.clickBox("Wells/A");
        QCOMPARE(fixture.takeSent(), strings({"show A Default", "no marker A Top", "marker A Base"}));
        QCOMPARE(fixture.item("Wells/A/Markers/Top")->checkState(0), Qt::Unchecked);
        QCOMPARE(fixture.item("Wells/A/Markers/Base")->checkState(0), Qt::Checked);
    }

    void aClickOnTheTextChangesNothing()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.takeSent();
        const QSignalSpy clicked(fixture.tree.get(), &ProjectTreeWidget::wellClicked);
        const QRect rect = fixture.tree->visualItemRect(fixture.item("Wells/A"));
        QTest::mouseClick(fixture.tree->viewport(), Qt::LeftButton, {}, QPoint(rect.right() - 2, rect.center().y()));
        QCOMPARE(fixture.takeSent(), QStringList());
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(clicked.first(), QVariantList({"A"}));
        QCOMPARE(fixture.item("Wells/A")->checkState(0), Qt::Checked);
        const QRect other = fixture.tree->visualItemRect(fixture.item("Wells/B"));
        QTest::mouseClick(fixture.tree->viewport(), Qt::LeftButton, {},
                          QPoint(other.right() - 2, other.center().y()));
        QCOMPARE(fixture.takeSent(), QStringList());
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(fixture.item("Wells/B")->checkState(0), Qt::Unchecked);
    }

    void aClickOnTheTextOfMarkersChangesNothing()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.clickBox("Wells/A/Markers/Top");
        fixture.takeSent();
        const QRect rect = fixture.tree->visualItemRect(fixture.item("Wells/A/Markers"));
        QTest::mouseClick(fixture.tree->viewport(), Qt::LeftButton, {}, QPoint(rect.right() - 2, rect.center().y()));
        QCOMPARE(fixture.takeSent(), QStringList());
        QCOMPARE(fixture.item("Wells/A/Markers/Top")->checkState(0), Qt::Checked);
    }

    void aDoubleClickOnABoxEndsInAgreement()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/B");
        fixture.takeSent();
        const QPoint box = fixture.lastBox;
        QTest::mouseClick(fixture.tree->viewport(), Qt::LeftButton, {}, box);
        QTest::mouseDClick(fixture.tree->viewport(), Qt::LeftButton, {}, box);
        const bool isShown = fixture.item("Wells/B")->checkState(0) == Qt::Checked;
        QCOMPARE(fixture.sent.last(), isShown ? QStringLiteral("show B Default") : QStringLiteral("hide B"));
    }

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

    void headingsLogsAndCorrelationsIgnoreClicks()
    {
        TreeFixture fixture;
        for (const char *path : {"Wells", "Wells/A/Logs", "Wells/A/Logs/GR", "Wells/A/Template",
                                 "Wells/A/Template/Global", "Correlations", "Correlations/East-West"})
            fixture.tree->itemSelected(fixture.item(path), 0);
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

    void doubleClickOpensACorrelationOnly()
    {
        TreeFixture fixture;
        QVector<QTreeWidgetItem *> opened;
        connect(fixture.tree.get(), &ProjectTreeWidget::sendCorrelation, this,
                [&opened](QTreeWidgetItem *item) { opened.append(item); });
        fixture.item("Correlations")->setExpanded(true);
        const QPoint position = fixture.tree->visualItemRect(fixture.item("Correlations/East-West")).center();
        QTest::mouseClick(fixture.tree->viewport(), Qt::LeftButton, {}, position);
        QTest::mouseDClick(fixture.tree->viewport(), Qt::LeftButton, {}, position);
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first(), fixture.item("Correlations/East-West"));
        fixture.tree->itemDoubleClick(fixture.item("Wells/A/Logs"), 0);
        QCOMPARE(opened.size(), 1);
    }

    void contextMenus_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("entries");
        // Entries in brackets are disabled: their editors do not exist yet.
        QTest::newRow("correlations") << "Correlations" << strings({"Add Correlation"});
        QTest::newRow("template") << "Wells/A/Template" << strings({"[Create New Template]"});
        QTest::newRow("well template") << "Wells/A/Template/Own" << strings({"[Edit]", "Delete"});
        QTest::newRow("global template") << "Wells/A/Template/Global/Simple" << strings({"[Edit]", "Delete"});
        QTest::newRow("correlation") << "Correlations/East-West" << strings({"Delete"});
        for (const char *path : {"Wells", "Wells/A", "Wells/A/Logs", "Wells/A/Logs/GR", "Wells/A/Markers",
                                 "Wells/A/Markers/Top", "Wells/A/Template/Global"})
            QTest::newRow(path) << path << QStringList();
    }

    void contextMenus()
    {
        QFETCH(QString, path);
        TreeFixture fixture;
        QTEST(fixture.menuOf(qPrintable(path)), "entries");
        QVERIFY(fixture.asker.boxes.isEmpty());
    }

    void namesThatLookLikeHeadingsChangeNoMenu()
    {
        TreeFixture fixture;
        fixture.addWell(QStringLiteral("Template"), {QStringLiteral("Template")}, {QStringLiteral("Correlations")});
        fixture.addWell(QStringLiteral("Correlations"));
        fixture.addTemplate(QStringLiteral("Template"), QStringLiteral("A"));
        fixture.addTemplate(QStringLiteral("Correlations"));
        fixture.addCorrelation(QStringLiteral("Template"));
        fixture.launch->catalogue.build();
        fixture.tree->synchronise();
        QCOMPARE(fixture.menuOf("Wells/Template"), QStringList());
        QCOMPARE(fixture.menuOf("Wells/Template/Logs/Template"), QStringList());
        QCOMPARE(fixture.menuOf("Wells/Template/Markers/Correlations"), QStringList());
        QCOMPARE(fixture.menuOf("Wells/Correlations"), QStringList());
        QCOMPARE(fixture.menuOf("Wells/A/Template/Template"), strings({"[Edit]", "Delete"}));
        QCOMPARE(fixture.menuOf("Wells/A/Template/Global/Correlations"), strings({"[Edit]", "Delete"}));
        QCOMPARE(fixture.menuOf("Correlations/Template"), strings({"Delete"}));
    }

    void theMenuKeyOpensTheMenuOfTheCurrentItem()
    {
        TreeFixture fixture;
        fixture.tree->setCurrentItem(fixture.item("Correlations"));
        QStringList entries;
        QTimer::singleShot(0, fixture.tree.get(), [&entries] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction *action : menu->actions())
                entries.append(action->text());
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5));
        QApplication::sendEvent(fixture.tree->viewport(), &event);
        QCoreApplication::processEvents();
        QCOMPARE(entries, strings({"Add Correlation"}));
    }

    void besideTheItemsThereIsNoMenu()
    {
        TreeFixture fixture;
        const QPoint below(20, fixture.tree->viewport()->height() - 2);
        QVERIFY(!fixture.tree->itemAt(below));
        bool isOpen = false;
        QTimer::singleShot(0, fixture.tree.get(), [&isOpen] { isOpen = QApplication::activePopupWidget(); });
        QContextMenuEvent event(QContextMenuEvent::Mouse, below, fixture.tree->viewport()->mapToGlobal(below));
        QApplication::sendEvent(fixture.tree->viewport(), &event);
        QCoreApplication::processEvents();
        QVERIFY(!isOpen);
    }

    void theItemIsGoneWhenTheBoxAppears_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("folder");
        QTest::newRow("well template") << "Wells/A/Template/Own"
                                       << "/Templates/A/Own";
        QTest::newRow("global template") << "Wells/A/Template/Global/Simple"
                                         << "/Templates/Global/Simple";
        QTest::newRow("correlation") << "Correlations/East-West"
                                     << "/Correlations/East-West";
    }

    // Nothing then waits behind the box to touch an item that somebody else may have removed meanwhile.
    void theItemIsGoneWhenTheBoxAppears()
    {
        QFETCH(QString, path);
        QFETCH(QString, folder);
        CallingAsker asker;
        TreeFixture fixture(asker);
        bool isItemGone = false;
        bool isFolderGone = false;
        asker.atBox = [&] {
            isItemGone = !fixture.item(qPrintable(path));
            isFolderGone = !QFileInfo::exists(fixture.path(folder));
        };
        fixture.menuOf(qPrintable(path), QStringLiteral("Delete"));
        QCOMPARE(asker.boxes.size(), 1);
        QVERIFY(isFolderGone);
        QVERIFY(isItemGone);
    }

    void aDiskThatFailsKeepsFolderAndItem_data() { theItemIsGoneWhenTheBoxAppears_data(); }

    void aDiskThatFailsKeepsFolderAndItem()
    {
        QFETCH(QString, path);
        QFETCH(QString, folder);
        TreeFixture fixture;
        const auto before = files::snapshot(fixture.path({}));
        {
            FailingDisk disk(FailingDisk::Rename);
            const base::ScopedFileSystemCalls inForce(disk);
            fixture.menuOf(qPrintable(path), QStringLiteral("Delete"));
        }
        compareDeletion(fixture, false, folder);
        QVERIFY(fixture.item(qPrintable(path)));
        QVERIFY(files::snapshot(fixture.path({})) == before);
    }

    void whatSomebodyElseDeletedGoesAtTheNextSynchronisation()
    {
        TreeFixture fixture;
        for (const char *folder : {"/Templates/A/Own", "/Templates/Global/Simple", "/Correlations/East-West"})
            QVERIFY(QDir(fixture.path(QLatin1String(folder))).removeRecursively());
        fixture.menuOf("Correlations/East-West", QStringLiteral("Delete"));
        compareDeletion(fixture, false, QStringLiteral("/Correlations/East-West"));
        QVERIFY(fixture.item("Correlations/East-West"));
        fixture.tree->synchronise();
        QVERIFY(!fixture.item("Wells/A/Template/Own"));
        QVERIFY(!fixture.item("Wells/A/Template/Global/Simple"));
        QVERIFY(!fixture.item("Wells/B/Template/Global/Simple"));
        QVERIFY(!fixture.item("Correlations/East-West"));
        QCOMPARE(fixture.launch->project.globalTemplateNames, strings({"Default"}));
        QCOMPARE(fixture.asker.boxes.size(), 1);
    }

    void templatesOfAWellWhoseNameIsNoPath()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("15/9-F-1"));
        fixture.open();
        fixture.addTemplate(QStringLiteral("Mine"), QStringLiteral("15%2F9-F-1"));
        ProjectTreeWidget tree(*fixture.launch);
        QTreeWidgetItem *branch = templateBranch(tree.wellsItem()->child(0));
        QCOMPARE(childTexts(branch), strings({"Global", "Mine"}));
        tree.setCurrentItem(branch->child(1));
        tree.deleteWellTemplate();
        QCOMPARE(fixture.asker.boxes.size(), 1);
        QCOMPARE(fixture.asker.boxes.first().text, fixture.path(QStringLiteral("/Templates/15%2F9-F-1/Mine")));
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/Templates/15%2F9-F-1/Mine"))));
        QCOMPARE(childTexts(branch), strings({"Global"}));
    }

    void aWellTemplateNamedLikeAGlobalOneIsAnother()
    {
        TreeFixture fixture;
        fixture.addTemplate(QStringLiteral("Simple"), QStringLiteral("A"));
        fixture.tree->synchronise();
        fixture.clickBox("Wells/A");
        fixture.clickBox("Wells/A/Template/Global/Simple");
        fixture.clickBox("Wells/A/Template/Simple");
        QCOMPARE(fixture.item("Wells/A/Template/Global/Simple")->checkState(0), Qt::Unchecked);
        fixture.menuOf("Wells/A/Template/Simple", QStringLiteral("Delete"));
        compareDeletion(fixture, true, QStringLiteral("/Templates/A/Simple"));
        QVERIFY(fixture.item("Wells/A/Template/Global/Simple"));
        QVERIFY(fixture.item("Wells/B/Template/Global/Simple"));
    }

    void whatIsDeletedIsKeptUnderItsPlace_data() { theItemIsGoneWhenTheBoxAppears_data(); }

    void whatIsDeletedIsKeptUnderItsPlace()
    {
        QFETCH(QString, path);
        QFETCH(QString, folder);
        TreeFixture fixture;
        const auto before = files::snapshot(fixture.path(folder));
        fixture.menuOf(qPrintable(path), QStringLiteral("Delete"));
        compareDeletion(fixture, true, folder);
        QVERIFY(files::snapshot(fixture.path(QStringLiteral("/.lorva-deleted/000001") + folder)) == before);
    }

    void namesWithADotInFrontAreListedAndOurHiddenFoldersAreNot()
    {
        TreeFixture fixture;
        for (const char *name : {".mine", ".lorva-abcdef"}) {
            fixture.addTemplate(QString::fromLatin1(name));
            fixture.addTemplate(QString::fromLatin1(name), QStringLiteral("A"));
            fixture.addCorrelation(QString::fromLatin1(name));
        }
        fixture.tree->synchronise();
        for (const char *branch : {"Wells/A/Template/Global/", "Wells/A/Template/", "Correlations/"}) {
            QVERIFY(fixture.item(qPrintable(QLatin1String(branch) + QStringLiteral(".mine"))));
            QVERIFY(!fixture.item(qPrintable(QLatin1String(branch) + QStringLiteral(".lorva-abcdef"))));
        }
        fixture.menuOf("Wells/A/Template/.mine", QStringLiteral("Delete"));
        compareDeletion(fixture, true, QStringLiteral("/Templates/A/.mine"));
    }

    void deletingAWellTemplate()
    {
        TreeFixture fixture;
        fixture.menuOf("Wells/A/Template/Own", QStringLiteral("Delete"));
        compareDeletion(fixture, true, QStringLiteral("/Templates/A/Own"));
        QVERIFY(!fixture.item("Wells/A/Template/Own"));
        QVERIFY(fixture.item("Wells/A/Template/Second"));
    }

    void deletingAGlobalTemplateTakesItFromEveryWell()
    {
        TreeFixture fixture;
        fixture.menuOf("Wells/A/Template/Global/Simple", QStringLiteral("Delete"));
        compareDeletion(fixture, true, QStringLiteral("/Templates/Global/Simple"));
        QCOMPARE(childTexts(fixture.item("Wells/A/Template/Global")), strings({"Default"}));
        QCOMPARE(childTexts(fixture.item("Wells/B/Template/Global")), strings({"Default"}));
        QCOMPARE(fixture.launch->project.globalTemplateNames, strings({"Default"}));
    }

    void deletingACorrelation()
    {
        TreeFixture fixture;
        fixture.menuOf("Correlations/East-West", QStringLiteral("Delete"));
        compareDeletion(fixture, true, QStringLiteral("/Correlations/East-West"));
        QVERIFY(!fixture.item("Correlations/East-West"));
    }

    void whatCannotBeDeletedStaysInTheTree()
    {
        TreeFixture fixture;
        QDir(fixture.path(QStringLiteral("/Templates/A/Own"))).removeRecursively(); // somebody else was faster
        fixture.menuOf("Wells/A/Template/Own", QStringLiteral("Delete"));
        compareDeletion(fixture, false, QStringLiteral("/Templates/A/Own"));
        QVERIFY(fixture.item("Wells/A/Template/Own"));
    }

    void aLinkIsNotDeletedAndNotFollowed()
    {
        TreeFixture fixture;
        const QString outside = fixture.survey.filePath(QStringLiteral("outside"));
        files::write(outside + QStringLiteral("/precious.txt"), "precious");
        QVERIFY(QFile::link(outside, fixture.path(QStringLiteral("/Templates/A/Linked"))));
        fixture.tree->synchronise();
        fixture.menuOf("Wells/A/Template/Linked", QStringLiteral("Delete"));
        compareDeletion(fixture, false, QStringLiteral("/Templates/A/Linked"));
        QCOMPARE(files::read(outside + QStringLiteral("/precious.txt")), QByteArray("precious"));
    }

    void aWellCalledGlobalHasItsOwnTemplates()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("Global"));
        fixture.open();
        fixture.addTemplate(QStringLiteral("Mine"), QStringLiteral("%47lobal"));
        ProjectTreeWidget tree(*fixture.launch);
        QTreeWidgetItem *well = tree.wellsItem()->child(0);
        QCOMPARE(childTexts(templateBranch(well)), strings({"Global", "Mine"}));
        tree.setCurrentItem(templateBranch(well)->child(1));
        tree.deleteWellTemplate();
        QVERIFY(!QFileInfo::exists(fixture.path(QStringLiteral("/Templates/%47lobal/Mine"))));
        QVERIFY(QFileInfo::exists(fixture.path(QStringLiteral("/Templates/Global/Default"))));
    }

    void deletionTouchesNothingElseInTheProject()
    {
        TreeFixture fixture;
        auto expected = files::snapshot(fixture.path({}));
        for (const QString &name : expected.keys())
            if (name.startsWith(QLatin1String("Templates/A/Own")))
                expected.remove(name);
        fixture.menuOf("Wells/A/Template/Own", QStringLiteral("Delete"));
        auto left = files::snapshot(fixture.path({}));
        for (const QString &name : left.keys())
            if (name.startsWith(QLatin1String(".lorva-deleted/")))
                left.remove(name);
        QCOMPARE(left, expected);
    }

    void slotsIgnoreOtherCurrentItems()
    {
        TreeFixture fixture;
        const auto before = files::snapshot(fixture.path({}));
        for (const char *path : {"Wells", "Wells/A", "Wells/A/Logs/GR", "Correlations"}) {
            fixture.tree->setCurrentItem(fixture.item(path));
            for (const char *slot : {"deleteWellTemplate", "deleteGlobalTemplate", "deleteCorrelationFromData",
                                     "createNewTemplate", "editWellTemplate", "editGlobalTemplate"})
                QVERIFY2(QMetaObject::invokeMethod(fixture.tree.get(), slot), slot);
        }
        QCOMPARE(files::snapshot(fixture.path({})), before);
        QVERIFY(fixture.asker.boxes.isEmpty());
    }

    void addingACorrelation()
    {
        TreeFixture fixture;
        QVector<QTreeWidgetItem *> opened;
        connect(fixture.tree.get(), &ProjectTreeWidget::sendCorrelation, this,
                [&opened](QTreeWidgetItem *item) { opened.append(item); });
        fixture.menuOf("Correlations", QStringLiteral("Add Correlation"));
        QTreeWidgetItem *added = fixture.item("Correlations/New Correlation");
        QVERIFY(added);
        QCOMPARE(added->type(), 7);
        QCOMPARE(fixture.tree->currentItem(), added);
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first(), added);
        QVERIFY(fixture.asker.boxes.isEmpty());
    }

    void aSecondNewCorrelationIsRefused()
    {
        TreeFixture fixture;
        fixture.tree->addNewCorrelationDialog();
        QVector<QTreeWidgetItem *> opened;
        connect(fixture.tree.get(), &ProjectTreeWidget::sendCorrelation, this,
                [&opened](QTreeWidgetItem *item) { opened.append(item); });
        fixture.tree->addNewCorrelationDialog();
        QCOMPARE(opened.size(), 0);
        QCOMPARE(fixture.item("Correlations")->childCount(), 2);
        QCOMPARE(fixture.asker.boxes.size(), 1);
        const base::Box &box = fixture.asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, QStringLiteral("Project Data"));
        QCOMPARE(box.text,
                 QStringLiteral("'New Correlation' is already exists.\nPlease first give different name to "
                                "existing correlation and save it."));
        QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
    }

    void editorsAddItems()
    {
        TreeFixture fixture;
        fixture.tree->addLog(QStringLiteral("A"), QStringLiteral("NEW"));
        fixture.tree->addLog(QStringLiteral("A"), QStringLiteral("NEW"));
        fixture.tree->addLog(QStringLiteral("a"), QStringLiteral("OTHER"));
        QCOMPARE(childTexts(fixture.item("Wells/A/Logs")), strings({"GR", "DT", "NEW"}));
        fixture.tree->addMarker(QStringLiteral("B"), QStringLiteral("Pick"));
        QCOMPARE(fixture.item("Wells/B/Markers/Pick")->type(), 4);
        QCOMPARE(fixture.item("Wells/B/Markers/Pick")->checkState(0), Qt::Unchecked);
        fixture.tree->addTemplate(QStringLiteral("B"), QStringLiteral("Fresh"));
        QCOMPARE(fixture.item("Wells/B/Template/Fresh")->type(), 5);
        QCOMPARE(fixture.item("Wells/B/Template/Fresh")->checkState(0), Qt::Unchecked);
        QCOMPARE(fixture.item("Wells/B/Logs/SP")->type(), 2);
    }

    void synchronisingKeepsWhatStillExists()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.clickBox("Wells/A/Markers/Base");
        fixture.clickBox("Wells/A/Template/Own");
        QTreeWidgetItem *a = fixture.item("Wells/A");
        fixture.takeSent();
        fixture.addWell(QStringLiteral("AA"), {QStringLiteral("GR")});
        std::swap(fixture.host.storedWells[1], fixture.host.storedWells[2]); // sorted: A, AA, B
        fixture.host.storedWells[0].logs.removeFirst();
        fixture.host.storedWells[0].markers.append({QStringLiteral("Extra"), 500, QColor()});
        fixture.addTemplate(QStringLiteral("Third"), QStringLiteral("A"));
        fixture.addCorrelation(QStringLiteral("North-South"));
        fixture.launch->catalogue.build();
        fixture.tree->synchronise();
        QCOMPARE(childTexts(fixture.item("Wells")), strings({"A", "AA", "B"}));
        QCOMPARE(fixture.item("Wells/A"), a);
        QCOMPARE(a->checkState(0), Qt::Checked);
        QVERIFY(a->isExpanded());
        QCOMPARE(childTexts(fixture.item("Wells/A/Logs")), strings({"DT"}));
        QCOMPARE(childTexts(fixture.item("Wells/A/Markers")), strings({"Top", "Base", "Extra"}));
        QCOMPARE(fixture.item("Wells/A/Markers/Base")->checkState(0), Qt::Checked);
        QCOMPARE(fixture.item("Wells/A/Markers/Extra")->checkState(0), Qt::Unchecked);
        QCOMPARE(fixture.item("Wells/A/Template/Own")->checkState(0), Qt::Checked);
        QVERIFY(fixture.item("Wells/A/Template/Third"));
        QVERIFY(fixture.item("Correlations/North-South"));
        QVERIFY(fixture.sent.isEmpty());
    }

    void synchronisingFollowsAWellThatWasRenamed()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.host.storedWells[0].header.name = QStringLiteral("Z");
        fixture.launch->catalogue.build();
        fixture.tree->synchronise();
        QVERIFY(!fixture.item("Wells/A"));
        QCOMPARE(fixture.item("Wells/Z")->checkState(0), Qt::Checked);
    }

    void twoWellsOfOneNameStayApart()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("Twin"), {QStringLiteral("GR")});
        fixture.addWell(QStringLiteral("Twin"), {QStringLiteral("DT")});
        fixture.open();
        ProjectTreeWidget tree(*fixture.launch);
        QCOMPARE(childTexts(logsBranch(tree.wellsItem()->child(0))), strings({"GR"}));
        QCOMPARE(childTexts(logsBranch(tree.wellsItem()->child(1))), strings({"DT"}));
        fixture.host.storedWells.removeFirst();
        fixture.launch->catalogue.build();
        tree.synchronise();
        QCOMPARE(childTexts(tree.wellsItem()), strings({"Twin"}));
        QCOMPARE(childTexts(logsBranch(tree.wellsItem()->child(0))), strings({"DT"}));
    }

    void synchronisingKeepsWhatIsExpanded()
    {
        TreeFixture fixture;
        for (const char *path :
             {"Correlations", "Wells/B", "Wells/B/Logs", "Wells/B/Template", "Wells/B/Template/Global"})
            fixture.item(path)->setExpanded(true);
        fixture.tree->setCurrentItem(fixture.item("Wells/B/Logs/SP"));
        fixture.host.storedWells[1].header.name = QStringLiteral("1"); // comes to stand in front of A
        fixture.addCorrelation(QStringLiteral("Another"));
        fixture.launch->catalogue.build();
        fixture.tree->synchronise();
        QCOMPARE(childTexts(fixture.item("Wells")), strings({"1", "A"}));
        QCOMPARE(childTexts(fixture.item("Correlations")), strings({"Another", "East-West"}));
        for (const char *path :
             {"Correlations", "Wells", "Wells/1", "Wells/1/Logs", "Wells/1/Template", "Wells/1/Template/Global"})
            QVERIFY2(fixture.item(path)->isExpanded(), path);
        for (const char *path : {"Wells/A", "Wells/A/Logs", "Wells/1/Markers"})
            QVERIFY2(!fixture.item(path)->isExpanded(), path);
        QCOMPARE(fixture.tree->currentItem(), fixture.item("Wells/1/Logs/SP"));
    }

    void globalTemplatesKeepTheOrderOfTheirFolder()
    {
        TreeFixture fixture;
        for (const char *name : {"Zeta", "alpha", "Mid", "beta", "Nu", "10", "9", "Xi"})
            fixture.addTemplate(QString::fromLatin1(name));
        fixture.tree->synchronise();
        const QStringList synchronised = childTexts(fixture.item("Wells/A/Template/Global"));
        QCOMPARE(synchronised.size(), 10);
        openProject(fixture.host, &fixture.launch->project); // as at the next launch
        QCOMPARE(synchronised, fixture.launch->project.globalTemplateNames);
        QCOMPARE(synchronised, childTexts(fixture.item("Wells/B/Template/Global")));
    }

    void wellsThatVanishAreClickedInPeace()
    {
        TreeFixture fixture;
        fixture.host.storedWells.clear();
        fixture.clickBox("Wells/A");
        QCOMPARE(fixture.takeSent(), strings({"show A Default", "no marker A Top", "no marker A Base"}));
        fixture.launch->catalogue.build();
        fixture.tree->synchronise();
        QCOMPARE(fixture.item("Wells")->childCount(), 0);
        QVERIFY(fixture.sent.isEmpty()); // open displays stay
    }

    void aCorrelationFolderWithoutItsFileIsListedAndDeleted()
    {
        TreeFixture fixture;
        QVERIFY(QDir().mkpath(fixture.path(QStringLiteral("/Correlations/Bare"))));
        files::write(fixture.path(QStringLiteral("/Correlations/stray.txt")), "no correlation");
        fixture.tree->synchronise();
        QCOMPARE(childTexts(fixture.item("Correlations")), strings({"Bare", "East-West"}));
        fixture.menuOf("Correlations/Bare", QStringLiteral("Delete"));
        compareDeletion(fixture, true, QStringLiteral("/Correlations/Bare"));
        QVERIFY(!fixture.item("Correlations/Bare"));
    }

    void folderThatCannotBeRead_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("correlations") << "/Correlations";
        QTest::newRow("templates of a well") << "/Templates/A";
        QTest::newRow("global templates") << "/Templates/Global";
        QTest::newRow("all templates") << "/Templates";
    }

    // A file in the folder's place cannot be read as a folder by anybody.
    void folderThatCannotBeRead()
    {
        QFETCH(QString, folder);
        TreeFixture fixture;
        fixture.clickBox("Wells/A/Template/Own");
        const QString path = fixture.path(folder);
        QVERIFY(QDir().rename(path, path + QStringLiteral(" away")));
        files::write(path, "a file");
        fixture.tree->synchronise();
        QCOMPARE(fixture.asker.boxes.size(), 1);
        compareUnreadable(fixture.asker.boxes.first(), {path});
        // What is shown stays as it was.
        QCOMPARE(fixture.item("Wells/A/Template/Own")->checkState(0), Qt::Checked);
        QVERIFY(fixture.item("Wells/A/Template/Global/Simple"));
        QVERIFY(fixture.item("Wells/B/Template/Global/Simple"));
        QVERIFY(fixture.item("Correlations/East-West"));

        QVERIFY(QFile::remove(path));
        QVERIFY(QDir().rename(path + QStringLiteral(" away"), path));
        fixture.addTemplate(QStringLiteral("Third"), QStringLiteral("A"));
        fixture.addTemplate(QStringLiteral("Fourth"));
        fixture.addCorrelation(QStringLiteral("Fifth"));
        fixture.tree->synchronise();
        QCOMPARE(fixture.asker.boxes.size(), 1);
        QVERIFY(fixture.item("Wells/A/Template/Third"));
        QVERIFY(fixture.item("Wells/B/Template/Global/Fourth"));
        QVERIFY(fixture.item("Correlations/Fifth"));
    }

    void foldersThatCannotBeReadAtTheStart()
    {
        ProjectFixture fixture;
        QStringList paths;
        for (int i = 10; i < 22; ++i) {
            const QString name = QStringLiteral("W%1").arg(i);
            fixture.addWell(name);
            paths.append(fixture.path(QStringLiteral("/Templates/")) + name);
        }
        fixture.open();
        for (const QString &path : qAsConst(paths))
            files::write(path, "a file");
        ProjectTreeWidget tree(*fixture.launch);
        QCOMPARE(tree.wellsItem()->childCount(), 12);
        QVERIFY(tree.wellsItem()->isExpanded());
        QCOMPARE(fixture.asker.boxes.size(), 1); // one for all
        compareUnreadable(fixture.asker.boxes.first(), paths.mid(0, 10) << QStringLiteral("and 2 more"));
    }

    void longNamesScrollAndShortOnesFillTheWidth()
    {
        TreeFixture fixture;
        fixture.tree->resize(300, 900);
        QTRY_COMPARE(fixture.tree->visualItemRect(fixture.item("Wells")).right(),
                     fixture.tree->viewport()->rect().right());
        QCOMPARE(fixture.tree->horizontalScrollBar()->maximum(), 0);
        fixture.tree->addTemplate(QStringLiteral("A"), QString(100, QLatin1Char('m')));
        fixture.item("Wells/A")->setExpanded(true);
        fixture.item("Wells/A/Template")->setExpanded(true);
        QTRY_VERIFY(fixture.tree->horizontalScrollBar()->maximum() > 0);
        QVERIFY(fixture.tree->header()->sectionSize(0) > fixture.tree->fontMetrics().averageCharWidth() * 100);
    }

    void itsInterfaceHasTheRequiredNames()
    {
        const QMetaObject &meta = ProjectTreeWidget::staticMetaObject;
        QCOMPARE(meta.className(), "ProjectTreeWidget");
        QCOMPARE(meta.superClass(), &QTreeWidget::staticMetaObject);
        for (const char *signal :
             {"sendWellDisplayProperties(QString,QString)", "sendCorrelation(QTreeWidgetItem*)",
              "removeWellDisplay(QString)", "displayMarker(QString,QString)", "removeMarker(QString,QString)"})
            QVERIFY2(meta.indexOfSignal(signal) >= 0, signal);
        for (const char *slot :
             {"itemSelected(QTreeWidgetItem*,int)", "itemDoubleClick(QTreeWidgetItem*,int)", "createNewTemplate()",
              "editWellTemplate()", "editGlobalTemplate()", "deleteWellTemplate()", "deleteGlobalTemplate()",
              "addNewCorrelationDialog()", "deleteCorrelationFromData()"})
            QVERIFY2(meta.indexOfSlot(slot) >= 0, slot);
    }

    void aProjectWithoutFoldersGivesEmptyBranches()
    {
        ProjectFixture fixture;
        fixture.addWell(QStringLiteral("A"));
        fixture.open();
        QDir(fixture.path({})).removeRecursively();
        fixture.launch->project.globalTemplateNames.clear();
        ProjectTreeWidget tree(*fixture.launch);
        QCOMPARE(tree.correlationsItem()->childCount(), 0);
        QCOMPARE(childTexts(templateBranch(tree.wellsItem()->child(0))), strings({"Global"}));
    }

private:
    static void compareUnreadable(const base::Box &box, const QStringList &lines)
    {
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, QStringLiteral("Project Data"));
        QCOMPARE(box.text,
                 QStringLiteral("These folders cannot be read; what is shown of them is left as it was:\n")
                     + lines.join(QLatin1Char('\n')));
        QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
    }

    static void compareDeletion(const TreeFixture &fixture, bool isDeleted, const QString &fragment)
    {
        QCOMPARE(fixture.asker.boxes.size(), 1);
        const base::Box &box = fixture.asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title,
                 isDeleted ? QStringLiteral("Successfully deleted !") : QStringLiteral("Error in deleting !"));
        QCOMPARE(box.text, fixture.path(fragment));
        QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
        if (isDeleted)
            QVERIFY(!QFileInfo::exists(fixture.path(fragment)));
    }
};

LORVA_TEST_MAIN(tst_projecttree)
#include "tst_projecttree.moc"
