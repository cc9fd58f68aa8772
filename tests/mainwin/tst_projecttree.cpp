#include "mainwin/projecttreewidget.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QMenu>
#include <QTimer>

namespace {

/// The tree of a project with two wells, two global templates more than the seeds, and everything a branch can hold.
class TreeFixture : public ProjectFixture
{
public:
    TreeFixture()
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
                         [this](const QString &well, const QString &name) { sent.append(QStringLiteral("show %1 %2").arg(well, name)); });
        QObject::connect(tree.get(), &ProjectTreeWidget::removeWellDisplay,
                         [this](const QString &well) { sent.append(QStringLiteral("hide %1").arg(well)); });
        QObject::connect(tree.get(), &ProjectTreeWidget::displayMarker,
                         [this](const QString &well, const QString &name) { sent.append(QStringLiteral("marker %1 %2").arg(well, name)); });
        QObject::connect(tree.get(), &ProjectTreeWidget::removeMarker,
                         [this](const QString &well, const QString &name) { sent.append(QStringLiteral("no marker %1 %2").arg(well, name)); });
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
        const QRect box = tree->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, tree.get());
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, box.center());
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
            QCOMPARE(fixture.takeSent(), QStringList({QStringLiteral("show A %1").arg(chosen.section(QLatin1Char('/'), -1)),
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

    void aClickOnTheTextActsOnTheStateAsItStands()
    {
        TreeFixture fixture;
        fixture.clickBox("Wells/A");
        fixture.takeSent();
        const QRect rect = fixture.tree->visualItemRect(fixture.item("Wells/A"));
        QTest::mouseClick(fixture.tree->viewport(), Qt::LeftButton, {}, QPoint(rect.right() - 2, rect.center().y()));
        QCOMPARE(fixture.takeSent().first(), QStringLiteral("show A Default"));
        QCOMPARE(fixture.item("Wells/A")->checkState(0), Qt::Checked);
    }

    void spaceDoesWhatAClickOnTheBoxDoes()
    {
        TreeFixture fixture;
        fixture.tree->setCurrentItem(fixture.item("Wells/A"));
        QTest::keyClick(fixture.tree.get(), Qt::Key_Space);
        QCOMPARE(fixture.takeSent().first(), QStringLiteral("show A Default"));
        QTest::keyClick(fixture.tree.get(), Qt::Key_Space);
        QCOMPARE(fixture.takeSent(), strings({"hide A"}));
        fixture.tree->setCurrentItem(fixture.item("Wells"));
        QTest::keyClick(fixture.tree.get(), Qt::Key_Space);
        QVERIFY(fixture.sent.isEmpty());
    }

    void headingsLogsAndCorrelationsIgnoreClicks()
    {
        TreeFixture fixture;
        for (const char *path : {"Wells", "Wells/A/Logs", "Wells/A/Logs/GR", "Wells/A/Template", "Wells/A/Template/Global",
                                 "Correlations", "Correlations/East-West"})
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

    void deletionLeavesNoTraceInTheProject()
    {
        TreeFixture fixture;
        auto expected = files::snapshot(fixture.path({}));
        for (const QString &name : expected.keys())
            if (name.startsWith(QLatin1String("Templates/A/Own")))
                expected.remove(name);
        fixture.menuOf("Wells/A/Template/Own", QStringLiteral("Delete"));
        QCOMPARE(files::snapshot(fixture.path({})), expected);
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
        QCOMPARE(box.text, QStringLiteral("'New Correlation' is already exists.\nPlease first give different name to "
                                          "existing correlation and save it."));
        QCOMPARE(box.buttons, QVector<base::BoxButton> {base::BoxButton::Ok});
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
    static void compareDeletion(const TreeFixture &fixture, bool isDeleted, const QString &fragment)
    {
        QCOMPARE(fixture.asker.boxes.size(), 1);
        const base::Box &box = fixture.asker.boxes.first();
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, isDeleted ? QStringLiteral("Successfully deleted !") : QStringLiteral("Error in deleting !"));
        QCOMPARE(box.text, fixture.path(fragment));
        QCOMPARE(box.buttons, QVector<base::BoxButton> {base::BoxButton::Ok});
        if (isDeleted)
            QVERIFY(!QFileInfo::exists(fixture.path(fragment)));
    }
};

LORVA_TEST_MAIN(tst_projecttree)
#include "tst_projecttree.moc"
