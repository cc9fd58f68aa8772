#include "displaywidgetfixture.h"
#include "logview/welllogsviewwidget.h"
#include "support/testmain.h"

#include <QSignalSpy>
#include <QTabWidget>
#include <QTreeWidget>

namespace {

// The log view as the main window has it: a dock and a tree with the wells W and X below its first item.
struct ViewFixture : WidgetFixture
{
    ViewFixture()
    {
        addWell(QStringLiteral("X"), {QStringLiteral("GR")}, {QStringLiteral("Other")});
        files::write(path(QStringLiteral("/Templates/X/T/Track_1.txt")), linearTrack);
        open();
        auto *wells = new QTreeWidgetItem(&tree, {QStringLiteral("Wells")});
        for (const char *name : {"W", "X"}) {
            auto *item = new QTreeWidgetItem(wells, {QString::fromLatin1(name)});
            item->setCheckState(0, Qt::Checked);
        }
        view = std::make_unique<WellLogsViewWidget>(*launch, &dock, &tree);
        tabs = view->findChild<QTabWidget *>(QStringLiteral("wellTabs"));
        view->resize(900, 600);
        view->show();
    }
    void add(const char *well, const char *name = "T") const
    {
        view->addWellDisWidget(QString::fromLatin1(well), QString::fromLatin1(name));
    }
    QTreeWidgetItem *treeItem(int number) const { return tree.topLevelItem(0)->child(number); }

    QTreeWidget tree;
    std::unique_ptr<WellLogsViewWidget> view;
    QTabWidget *tabs;
};

} // namespace

class tst_welllogsviewwidget : public QObject
{
    Q_OBJECT

private slots:
    void goneAndDroppedMarkers();
    void addsTabs();
    void replacesTheTabOfAWell();
    void closingATab();
    void namesWithMarksOfTabs();
    void withoutATree();
    void closingOneTabKeepsThePanelOfAnother();
    void removingADisplay();
    void markersOfOtherTabs();
    void switchingTabsSwitchesPanels();
    void picturesShowNoSelection();
    void picturesOfTheCurrentTab();
    void slotsByName();
};

void tst_welllogsviewwidget::goneAndDroppedMarkers()
{
    ViewFixture f;
    f.addMarker(QStringLiteral("Upper"), 100);
    f.addMarker(QStringLiteral("Base"), 900);
    f.launch->catalogue.build();
    f.add("W");
    f.add("X");
    QSignalSpy dropped(f.view.get(), &WellLogsViewWidget::markersDropped);
    for (const char *name : {"Upper", "Base"})
        f.view->addMarkerInScene(QStringLiteral("W"), QString::fromLatin1(name));
    WellLogsScene *scene = f.view->display(0)->scene();
    scene->pickedMarkerClicked();
    QCOMPARE(scene->markers().all().size(), 3);
    f.view->removeGoneMarkers();
    QCOMPARE(scene->markers().all().size(), 3);
    f.well().markers.removeAt(f.well().markers.size() - 2);
    f.view->removeGoneMarkers(); // the catalogue does not know yet
    QCOMPARE(scene->markers().all().size(), 3);
    f.launch->catalogue.refreshMarkerNames(f.launch->catalogue.indexOf(QStringLiteral("W")));
    f.view->removeGoneMarkers();
    QVERIFY(!scene->markers().find(QStringLiteral("Upper")));
    QVERIFY(scene->markers().find(QStringLiteral("Base")));
    QVERIFY(scene->markers().find(QStringLiteral("New_0"))); // picked, not saved
    f.view->removeMarkerFromScene(QStringLiteral("W"), QStringLiteral("Base"));
    f.view->addMarkerInScene(QStringLiteral("W"), QStringLiteral("Base"));
    QCOMPARE(dropped.size(), 0); // whoever asked knows
    f.type(scene->panel(), "startDepthEdit", QStringLiteral("1000"));
    QCOMPARE(dropped.size(), 1);
    QCOMPARE(dropped.first().at(0).toString(), QString("W"));
    QCOMPARE(dropped.first().at(1).toStringList(), QStringList{"Base"});
}

void tst_welllogsviewwidget::addsTabs()
{
    ViewFixture f;
    QVERIFY(f.tabs->tabsClosable());
    f.add("W");
    f.add("X");
    QCOMPARE(f.tabs->count(), 2);
    QCOMPARE(f.tabs->tabText(0), QString("W:T"));
    QCOMPARE(f.tabs->tabText(1), QString("X:T"));
    QCOMPARE(f.tabs->currentIndex(), 1);
    QCOMPARE(f.view->displayedWells(), (QStringList{"W", "X"}));
}

void tst_welllogsviewwidget::replacesTheTabOfAWell()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    const QPointer<QWidget> old = f.tabs->widget(0);
    f.add("W", "Default");
    QCOMPARE(f.tabs->count(), 2);
    QVERIFY(!old);
    QCOMPARE(f.tabs->tabText(0), QString("W:Default"));
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.view->displayedWells(), (QStringList{"W", "X"}));
    QCOMPARE(f.dock.widget(), f.view->currentDisplay()->scene()->panel());
}

void tst_welllogsviewwidget::closingATab()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    int changes = 0;
    connect(&f.tree, &QTreeWidget::itemChanged, this, [&changes] { ++changes; });
    const QPointer<QWidget> display = f.tabs->widget(1);
    const QPointer<QWidget> panel = f.dock.widget();
    emit f.tabs->tabCloseRequested(1);
    QVERIFY(!display);
    QVERIFY(!panel);
    QCOMPARE(f.tabs->count(), 1);
    QCOMPARE(f.view->displayedWells(), (QStringList{"W"}));
    QCOMPARE(f.treeItem(1)->checkState(0), Qt::Unchecked);
    QCOMPARE(f.treeItem(0)->checkState(0), Qt::Checked);
    QCOMPARE(changes, 0);
    QVERIFY(!f.tree.signalsBlocked());
    QCOMPARE(f.dock.widget(), f.view->currentDisplay()->scene()->panel());
    emit f.tabs->tabCloseRequested(0);
    QVERIFY(!f.dock.widget());
    f.view->tabClose(0);
    f.view->tabClose(-1);
}

void tst_welllogsviewwidget::namesWithMarksOfTabs()
{
    ViewFixture f;
    f.addWell(QStringLiteral("A:B & C"));
    f.launch->catalogue.build();
    auto *item = new QTreeWidgetItem(f.tree.topLevelItem(0), {QStringLiteral("A:B & C")});
    item->setCheckState(0, Qt::Checked);
    f.add("A:B & C");
    QCOMPARE(f.view->displayedWells(), QStringList{QStringLiteral("A:B & C")});
    f.view->tabClose(0);
    QCOMPARE(item->checkState(0), Qt::Unchecked);
    QVERIFY(f.view->displayedWells().isEmpty());
}

void tst_welllogsviewwidget::withoutATree()
{
    ViewFixture f;
    WellLogsViewWidget view(*f.launch, nullptr, nullptr);
    view.addWellDisWidget(QStringLiteral("W"), QStringLiteral("T"));
    view.tabClose(0);
    QVERIFY(view.displayedWells().isEmpty());
    f.tree.clear();
    f.add("W");
    f.view->tabClose(0);
    QVERIFY(f.view->displayedWells().isEmpty());
}

void tst_welllogsviewwidget::closingOneTabKeepsThePanelOfAnother()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    WellLogsScene *scene = f.view->display(1)->scene();
    scene->selection().selectOnly(scene->tracks().first());
    scene->selection().showPanelOfSelection();
    QWidget *panel = f.dock.widget();
    f.view->tabClose(0);
    QCOMPARE(f.dock.widget(), panel);
    QVERIFY(scene->tracks().first()->isSelected());
}

void tst_welllogsviewwidget::removingADisplay()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    f.view->removeWellDisWidget(QStringLiteral("Y"));
    QCOMPARE(f.tabs->count(), 2);
    const QPointer<QWidget> display = f.tabs->widget(0);
    f.view->removeWellDisWidget(QStringLiteral("W"));
    QVERIFY(!display);
    QCOMPARE(f.view->displayedWells(), (QStringList{"X"}));
    QCOMPARE(f.treeItem(0)->checkState(0), Qt::Checked); // the tree asked for it
    f.view->removeWellDisWidget(QStringLiteral("X"));
    QCOMPARE(f.tabs->count(), 0);
}

void tst_welllogsviewwidget::markersOfOtherTabs()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    f.view->addMarkerInScene(QStringLiteral("W"), QStringLiteral("Top"));
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.view->display(0)->scene()->markers().all().size(), 1);
    f.tabs->setCurrentIndex(1);
    f.view->removeMarkerFromScene(QStringLiteral("W"), QStringLiteral("Top"));
    QCOMPARE(f.tabs->currentIndex(), 0);
    QVERIFY(f.view->display(0)->scene()->markers().all().isEmpty());
    f.view->addMarkerInScene(QStringLiteral("Y"), QStringLiteral("Top"));
    f.view->removeMarkerFromScene(QStringLiteral("Y"), QStringLiteral("Top"));
    QCOMPARE(f.tabs->currentIndex(), 0);
}

void tst_welllogsviewwidget::switchingTabsSwitchesPanels()
{
    ViewFixture f;
    f.add("W");
    f.add("X");
    f.view->setCurrentTab(0);
    QCOMPARE(f.tabs->currentIndex(), 0);
    QCOMPARE(f.dock.widget(), f.view->display(0)->scene()->panel());
    f.tabs->setCurrentIndex(1); // by the keyboard
    QCOMPARE(f.dock.widget(), f.view->display(1)->scene()->panel());
    f.view->setCurrentTab(9);
    QCOMPARE(f.tabs->currentIndex(), 1);
}

void tst_welllogsviewwidget::picturesShowNoSelection()
{
    ViewFixture f;
    f.add("W");
    WellLogsScene *scene = f.view->currentDisplay()->scene();
    const QString path = f.path(QStringLiteral("/W.tiff"));
    f.view->saveCurrentPicture();
    const QByteArray plain = files::read(path);
    QVERIFY(!plain.isEmpty());
    for (QGraphicsItem *item :
         std::initializer_list<QGraphicsItem *>{scene->tracks().at(1), scene->tracks().at(0)->curves().at(0)}) {
        QVERIFY(QFile::remove(path));
        scene->selection().selectOnly(item);
        f.view->saveCurrentPicture();
        QCOMPARE(files::read(path), plain);
        QVERIFY(item->isSelected());
    }
}

void tst_welllogsviewwidget::picturesOfTheCurrentTab()
{
    ViewFixture f;
    QImage page(100, 100, QImage::Format_RGB32);
    page.fill(Qt::yellow);
    {
        QPainter painter(&page);
        f.view->renderCurrent(painter); // nothing displayed
    }
    f.view->saveCurrentPicture();
    QCOMPARE(page.pixelColor(50, 50), QColor(Qt::yellow));
    f.add("W");
    f.add("X");
    f.view->saveCurrentPicture();
    QVERIFY(QFile::exists(f.path(QStringLiteral("/X.tiff"))));
    QVERIFY(!QFile::exists(f.path(QStringLiteral("/W.tiff"))));
    QPainter painter(&page);
    f.view->currentDisplay()->scene()->selection().selectOnly(f.view->currentDisplay()->scene()->tracks().first());
    f.view->renderCurrent(painter);
    painter.end();
    QVERIFY(f.view->currentDisplay()->scene()->tracks().first()->isSelected()); // selected, but not in the picture
    QVERIFY(page.pixelColor(50, 50) != QColor(Qt::yellow));
}

void tst_welllogsviewwidget::slotsByName()
{
    ViewFixture f;
    for (const char *slot :
         {"addWellDisWidget(QString,QString)", "removeWellDisWidget(QString)", "addMarkerInScene(QString,QString)",
          "removeMarkerFromScene(QString,QString)", "tabClose(int)", "setCurrentTab(int)"})
        QVERIFY2(f.view->metaObject()->indexOfSlot(slot) >= 0, slot);
}

LORVA_TEST_MAIN(tst_welllogsviewwidget)
#include "tst_welllogsviewwidget.moc"
