#include "projecttreefixture.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QDir>

#include <functional>

namespace {

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

} // namespace

class tst_projecttreemenus : public QObject
{
    Q_OBJECT

private slots:
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
        QTest::newRow("correlations") << "Correlations" << strings({"Add Correlation"});
        QTest::newRow("template") << "Wells/A/Template" << strings({"Create New Template"});
        QTest::newRow("well template") << "Wells/A/Template/Own" << strings({"Edit", "Delete"});
        QTest::newRow("global template") << "Wells/A/Template/Global/Simple" << strings({"Edit", "Delete"});
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
        QCOMPARE(fixture.menuOf("Wells/A/Template/Template"), strings({"Edit", "Delete"}));
        QCOMPARE(fixture.menuOf("Wells/A/Template/Global/Correlations"), strings({"Edit", "Delete"}));
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
};

LORVA_TEST_MAIN(tst_projecttreemenus)
#include "tst_projecttreemenus.moc"
