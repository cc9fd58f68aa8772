#include "projecttreefixture.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QDir>
#include <QSignalSpy>

namespace {

void compareUnreadable(const base::Box &box, const QStringList &lines)
{
    QCOMPARE(box.icon, base::BoxIcon::Warning);
    QCOMPARE(box.title, QStringLiteral("Project Data"));
    QCOMPARE(box.text,
             QStringLiteral("These folders cannot be read; what is shown of them is left as it was:\n")
                 + lines.join(QLatin1Char('\n')));
    QCOMPARE(box.buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
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

    void headingsLogsAndCorrelationsIgnoreClicks()
    {
        TreeFixture fixture;
        for (const char *path : {"Wells", "Wells/A/Logs", "Wells/A/Logs/GR", "Wells/A/Template",
                                 "Wells/A/Template/Global", "Correlations", "Correlations/East-West"})
            fixture.tree->itemSelected(fixture.item(path), 0);
        QVERIFY(fixture.sent.isEmpty());
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
};

LORVA_TEST_MAIN(tst_projecttree)
#include "tst_projecttree.moc"
