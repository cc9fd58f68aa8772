// The project tree and the displays in one window: clicks, renamed and vanished wells, markers, wells of one name.

#include "host/host.h"
#include "las/wellimportdialog.h"
#include "logview/curveitem.h"
#include "logview/markeritem.h"
#include "logview/trackitem.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsview.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"
#include "templates/templatestore.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QStyleOptionViewItem>
#include <QTabWidget>

namespace {

/// Counts the reads of headers and markers.
class CountingHost : public MemoryHost
{
public:
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override
    {
        ++markerReads;
        return MemoryHost::markers(key);
    }
    host::Outcome<host::WellHeader> header(const QString &key) override
    {
        ++headerReads;
        return MemoryHost::header(key);
    }
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        if (logsFail)
            return {{}, QStringLiteral("damaged")};
        return MemoryHost::log(key, index);
    }
    bool logsFail = false;
    int markerReads = 0;
    int headerReads = 0;
};

struct Window
{
    Window()
    {
        host.survey = project.survey.path();
        host.dataFolder = project.host.dataFolder;
    }

    QString addWell(const char *name, const QStringList &markers = {})
    {
        host::WellHeader header;
        header.name = QString::fromUtf8(name);
        header.totalDepth = 5000;
        header.x = 1000 + host.storedWells.size();
        const QString key = host.addWell(header);
        host.find(key)->logs = {{QStringLiteral("GR"), QStringLiteral("gapi"), {100, 200}, {1, 2}}};
        float depth = 10;
        for (const QString &marker : markers)
            host.find(key)->markers.append({marker, depth++, Qt::red});
        return key;
    }

    void open()
    {
        project.launch = std::make_unique<ProjectData>(host, project.asker);
        project.open();
        window = std::make_unique<MainWindow>(*project.launch);
        window->resize(1200, 900);
        window->show();
        view = window->findChild<WellLogsViewWidget *>();
        tree = window->projectTree();
        tabs = view->findChild<QTabWidget *>();
    }

    QTreeWidgetItem *well(int index) const { return tree->wellsItem()->child(index); }
    QTreeWidgetItem *templateOf(int index, const char *name) const
    {
        const QTreeWidgetItem *global = globalBranch(well(index));
        for (int i = 0; i < global->childCount(); ++i)
            if (global->child(i)->text(0) == QLatin1String(name))
                return global->child(i);
        return nullptr;
    }

    void show(QTreeWidgetItem *item) const
    {
        for (QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent())
            parent->setExpanded(true);
        tree->scrollToItem(item);
    }
    void clickBox(QTreeWidgetItem *item) const
    {
        show(item);
        QStyleOptionViewItem option;
        option.initFrom(tree);
        option.rect = tree->visualItemRect(item);
        option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
        if (!item->icon(0).isNull())
            option.features |= QStyleOptionViewItem::HasDecoration;
        option.text = item->text(0);
        const QRect box = tree->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, tree);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, box.center());
    }
    QPoint nameOf(QTreeWidgetItem *item) const
    {
        show(item);
        const QRect rect = tree->visualItemRect(item);
        return QPoint(rect.left() + 60, rect.center().y());
    }
    void clickName(QTreeWidgetItem *item) const
    {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, nameOf(item));
    }
    void sync() const { QMetaObject::invokeMethod(window.get(), "syncODDBActionClicked"); }
    QStringList tabTexts() const
    {
        QStringList texts;
        for (int i = 0; i < tabs->count(); ++i)
            texts.append(tabs->tabText(i));
        return texts;
    }
    QStringList shownMarkers(int tab) const
    {
        QStringList names;
        for (int i = 0; i < markersBranch(well(0))->childCount(); ++i) {
            const QString name = markersBranch(well(0))->child(i)->text(0);
            if (view->display(tab)->scene()->markers().find(name))
                names.append(name);
        }
        return names;
    }

    ProjectFixture project;
    CountingHost host;
    std::unique_ptr<MainWindow> window;
    WellLogsViewWidget *view = nullptr;
    ProjectTreeWidget *tree = nullptr;
    QTabWidget *tabs = nullptr;
};

QStringList list(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class tst_treeanddisplays : public QObject
{
    Q_OBJECT

private slots:
    void aClickOnADisplayedWellBringsItsTabForward()
    {
        Window w;
        w.addWell("A", list("Top"));
        w.addWell("B");
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(w.well(1));
        QCOMPARE(w.tabTexts(), list("A:Default B:Default"));
        QCOMPARE(w.tabs->currentIndex(), 1);
        const QPointer<WellDisplayWidget> first = w.view->display(0);
        w.clickName(w.well(0));
        QCOMPARE(w.tabs->currentIndex(), 0);
        QCOMPARE(w.view->display(0), first.data());
        QVERIFY(first);
        QCOMPARE(w.well(0)->checkState(0), Qt::Checked);
        // The same of a double click, which opens the branch.
        w.clickName(w.well(1));
        QTest::mouseDClick(w.tree->viewport(), Qt::LeftButton, {}, w.nameOf(w.well(0)));
        QTest::mouseRelease(w.tree->viewport(), Qt::LeftButton, {}, w.nameOf(w.well(0)));
        QVERIFY(first && w.view->display(0) == first);
    }

    void aClickOnTheCheckedTemplateBringsItsTabForward()
    {
        Window w;
        w.addWell("A");
        w.addWell("B");
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(w.templateOf(0, "Simple"));
        w.clickBox(w.well(1));
        QCOMPARE(w.tabTexts(), list("A:Simple B:Default"));
        const QPointer<WellDisplayWidget> first = w.view->display(0);
        w.clickName(w.templateOf(0, "Simple"));
        QCOMPARE(w.tabs->currentIndex(), 0);
        QVERIFY(first && w.view->display(0) == first);
        // One that is not checked is not displayed.
        w.clickName(w.well(1));
        w.clickName(w.templateOf(0, "Default"));
        QCOMPARE(w.tabs->currentIndex(), 1);
    }

    void aClickOnAnUncheckedNameDoesNothing()
    {
        Window w;
        w.addWell("A", list("Top Base"));
        w.open();
        w.clickName(w.well(0));
        QCOMPARE(w.tabs->count(), 0);
        w.clickBox(w.well(0));
        QTreeWidgetItem *markers = markersBranch(w.well(0));
        w.clickBox(markers->child(0));
        QCOMPARE(w.shownMarkers(0), list("Top"));
        w.clickName(markers); // its box did not change: what single markers say stays
        QCOMPARE(w.shownMarkers(0), list("Top"));
        QCOMPARE(markers->child(0)->checkState(0), Qt::Checked);
        w.clickName(markers->child(1));
        QCOMPARE(w.shownMarkers(0), list("Top"));
    }

    void keyAndMouseTakeTurns()
    {
        Window w;
        w.addWell("A");
        w.open();
        QTest::mousePress(w.tree->viewport(), Qt::LeftButton, {}, w.nameOf(w.well(0)));
        QTest::mouseRelease(w.tree->viewport(), Qt::LeftButton, {}, QPoint(5, w.tree->viewport()->height() - 5));
        w.tree->setCurrentItem(w.well(0));
        QTest::keyClick(w.tree, Qt::Key_Space);
        QCOMPARE(w.tabs->count(), 1);
        QTest::keyClick(w.tree, Qt::Key_Space);
        QCOMPARE(w.tabs->count(), 0);
        w.clickBox(w.well(0));
        QCOMPARE(w.tabs->count(), 1);
        w.view->tabClose(0);
        w.clickBox(w.well(0)); // the tree heard of the closing
        QCOMPARE(w.tabs->count(), 1);
    }

    // ---- Sync Data

    void theDisplayOfARenamedWellFollows()
    {
        Window w;
        const QString key = w.addWell("A", list("Top Base"));
        w.addWell("B");
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(w.templateOf(0, "Simple"));
        w.clickBox(markersBranch(w.well(0))->child(1));
        w.clickBox(w.well(1));
        const QPointer<WellDisplayWidget> other = w.view->display(1);
        w.host.find(key)->header.name = QStringLiteral("Z");
        w.sync();
        QCOMPARE(w.tree->wellsItem()->child(1)->text(0), QString("Z"));
        QCOMPARE(w.tabTexts(), list("Z:Simple B:Default"));
        QCOMPARE(w.view->displayedWells(), list("Z B"));
        QCOMPARE(w.view->display(0)->wellName(), QString("Z"));
        QCOMPARE(w.view->display(0)->scene()->markers().all().size(), 1);
        QVERIFY(w.view->display(0)->scene()->markers().find(QStringLiteral("Base")));
        QVERIFY(other && w.view->display(1) == other);
        QCOMPARE(w.tabs->currentIndex(), 1);
        // And the tree governs it under its new name.
        w.clickBox(w.well(1));
        QCOMPARE(w.tabTexts(), list("B:Default"));
    }

    void theDisplayOfAVanishedWellCloses()
    {
        Window w;
        w.addWell("A");
        w.addWell("B");
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(w.well(1));
        const QPointer<WellDisplayWidget> kept = w.view->display(1);
        w.host.storedWells.removeFirst();
        w.sync();
        QCOMPARE(w.tabTexts(), list("B:Default"));
        QCOMPARE(w.view->displayedWells(), list("B"));
        QVERIFY(kept && w.view->currentDisplay() == kept);
    }

    void aSyncThatChangesNothingRebuildsNothing()
    {
        Window w;
        w.addWell("A");
        w.addWell("B");
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(w.well(1));
        const QPointer<WellDisplayWidget> first = w.view->display(0);
        w.addWell("0"); // all indexes move
        w.sync();
        QCOMPARE(w.tabTexts(), list("A:Default B:Default"));
        QVERIFY(first && w.view->display(0) == first);
        QCOMPARE(w.tabs->currentIndex(), 1);
    }

    void aWellRenamedToAnothersNameClosesItsDisplay()
    {
        Window w;
        w.addWell("A");
        const QString key = w.addWell("B");
        w.open();
        w.clickBox(w.well(1));
        w.host.find(key)->header.name = QStringLiteral("A");
        w.sync();
        QCOMPARE(w.tabs->count(), 0); // by that name, the first well would be shown
        for (int i = 0; i < 2; ++i)
            QCOMPARE(w.well(i)->checkState(0), Qt::Unchecked);
    }

    // ---- markers

    void tickingMarkersReadsThemOnce_data()
    {
        QTest::addColumn<int>("count");
        QTest::newRow("few") << 5;
        QTest::newRow("a thousand") << 1000;
    }

    void tickingMarkersReadsThemOnce()
    {
        QFETCH(int, count);
        Window w;
        QStringList names;
        for (int i = 0; i < count; ++i)
            names.append(QStringLiteral("M%1").arg(i));
        w.addWell("A", names);
        w.open();
        w.clickBox(w.well(0));
        w.host.markerReads = w.host.headerReads = 0;
        w.clickBox(markersBranch(w.well(0)));
        QCOMPARE(w.view->display(0)->scene()->markers().all().size(), count);
        QCOMPARE(w.host.markerReads, 1);
        QCOMPARE(w.host.headerReads, 1);
        // Another template shows them anew, and reads them anew.
        w.clickBox(w.templateOf(0, "Simple"));
        QCOMPARE(w.view->display(0)->scene()->markers().all().size(), count);
        QCOMPARE(w.host.markerReads, 2);
        w.clickBox(markersBranch(w.well(0)));
        QCOMPARE(w.view->display(0)->scene()->markers().all().size(), 0);
        QCOMPARE(w.host.markerReads, 2);
        // A single one is read by itself, as the host has it now.
        w.host.storedWells[0].markers[0].depth = 2000;
        w.clickBox(markersBranch(w.well(0))->child(0));
        QCOMPARE(w.host.markerReads, 3);
        // Also after a click that read all of them.
        w.clickBox(markersBranch(w.well(0)));
        QCOMPARE(w.host.markerReads, 4);
        w.clickBox(markersBranch(w.well(0))->child(0));
        w.host.storedWells[0].markers[0].depth = 2100;
        w.clickBox(markersBranch(w.well(0))->child(0));
        QCOMPARE(w.host.markerReads, 5);
    }

    void markersThatCannotBeReadAreOneBox()
    {
        Window w;
        w.addWell("A", list("Top Middle Base"));
        w.open();
        w.clickBox(w.well(0));
        w.host.storedWells[0].isUnreadable = true;
        w.clickBox(markersBranch(w.well(0)));
        QCOMPARE(w.host.errors, QStringList{QStringLiteral("Cannot get data for the selected well\nA")});
    }

    void logsThatCannotBeReadAreNamedInOneBox()
    {
        Window w;
        const QString key = w.addWell("A");
        w.host.find(key)->logs.append({QStringLiteral("RHOB"), QStringLiteral("g/cc"), {100, 200}, {2, 3}});
        w.open();
        files::write(w.project.path(QStringLiteral("/DefaultLogs/A.txt")), "A\nGamma|GR\nDensity|RHOB\n");
        w.host.logsFail = true;
        w.clickBox(w.well(0));
        QCOMPARE(w.host.errors.size(), 1);
        const QString text = w.host.errors.first();
        QVERIFY2(text.startsWith(QStringLiteral("Cannot get data for the selected well\nA: ")), qPrintable(text));
        QVERIFY(text.contains(QStringLiteral("GR")) && text.contains(QStringLiteral("RHOB")));
        QCOMPARE(w.tabs->count(), 1);
    }

    void logsThatCannotBeReadForASavedTemplateAreNamedToo()
    {
        Window w;
        w.addWell("A");
        w.open();
        files::write(w.project.path(QStringLiteral("/DefaultLogs/A.txt")), "A\nGamma|GR\n");
        w.clickBox(w.well(0));
        QVERIFY(w.host.errors.isEmpty());
        w.host.logsFail = true;
        emit w.tree->templateApplied(TemplateId::global(QStringLiteral("Default")), {});
        QCOMPARE(w.host.errors, QStringList{QStringLiteral("Cannot get data for the selected well\nA: GR")});
    }

    void aWellThatCannotBeReadIsOneBox()
    {
        Window w;
        w.addWell("A");
        w.open();
        w.host.storedWells[0].isUnreadable = true;
        w.clickBox(w.well(0));
        QCOMPARE(w.host.errors, QStringList{QStringLiteral("Cannot get data for this well : A")});
        QCOMPARE(w.tabs->count(), 1);
    }

    void markersThatADisplayDropsAreUnchecked()
    {
        Window w;
        w.addWell("A", list("Top Base"));
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(markersBranch(w.well(0)));
        emit w.view->display(0)->markersDropped(QStringLiteral("A"), list("Base"));
        QCOMPARE(markersBranch(w.well(0))->child(0)->checkState(0), Qt::Checked);
        QCOMPARE(markersBranch(w.well(0))->child(1)->checkState(0), Qt::Unchecked);
    }

    // The box of "Markers" tells whether all of them are checked, however they came to be.
    void theBoxOfTheMarkersFollowsThem()
    {
        Window w;
        const QString key = w.addWell("A", list("Top Base"));
        w.addWell("B");
        w.open();
        QTreeWidgetItem *branch = markersBranch(w.well(0));
        w.clickBox(w.well(0));
        w.clickBox(branch->child(0));
        QCOMPARE(branch->checkState(0), Qt::Unchecked);
        w.clickBox(branch->child(1));
        QCOMPARE(branch->checkState(0), Qt::Checked);
        QCOMPARE(w.shownMarkers(0), list("Top Base"));
        w.clickBox(branch->child(0));
        QCOMPARE(branch->checkState(0), Qt::Unchecked);
        QCOMPARE(w.shownMarkers(0), list("Base"));
        w.tree->checkShownMarker("A", "Top");
        QCOMPARE(branch->checkState(0), Qt::Checked);
        w.tree->uncheckDroppedMarkers("A", list("Top"));
        QCOMPARE(branch->checkState(0), Qt::Unchecked);
        w.clickBox(branch->child(0));
        // Imported markers of a displayed well come checked, others do not.
        w.host.find(key)->markers.append({QStringLiteral("New"), 900, Qt::red});
        w.project.launch->catalogue.refreshMarkerNames(0);
        w.tree->synchroniseMarkers(0);
        QCOMPARE(branch->checkState(0), Qt::Unchecked);
        w.tree->showNewMarkers(0, list("New"));
        QCOMPARE(branch->checkState(0), Qt::Checked);
        QCOMPARE(w.shownMarkers(0), list("Top Base New"));
        w.clickBox(markersBranch(w.well(1))); // has none
        QCOMPARE(markersBranch(w.well(1))->checkState(0), Qt::Checked);
    }

    // What an import brought is seen at once, and the display stays where it is.
    void anOpenDisplayFollowsAnImport()
    {
        Window w;
        const QString key = w.addWell("A", list("Top"));
        w.addWell("A"); // its twin
        files::write(w.project.path("/Templates/Global/Default/Track_1.txt"),
                     "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n");
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(markersBranch(w.well(0)));
        WellLogsScene *scene = w.view->display(0)->scene();
        const auto samples = [scene] {
            for (const TrackItem *track : scene->tracks())
                for (const CurveItem *curve : track->curves())
                    if (curve->curveName() == "GR")
                        return QVector<double>{curve->samples().value(0), curve->samples().value(1)};
            return QVector<double>();
        };
        QCOMPARE(samples(), QVector<double>({1, 2}));
        w.view->display(0)->logView()->verticalScrollBar()->setValue(300);
        w.host.find(key)->logs[0].values = {7, 8};
        w.window->findChild<QAction *>("importAction")->trigger();
        auto *dialog = w.window->findChild<WellImportDialog *>();
        emit dialog->logsImported(1);
        QCOMPARE(samples(), QVector<double>({1, 2}));
        emit dialog->logsImported(0);
        QCOMPARE(samples(), QVector<double>({7, 8}));
        QCOMPARE(w.shownMarkers(0), list("Top"));
        QCOMPARE(w.view->display(0)->logView()->verticalScrollBar()->value(), 300);
        dialog->close();
    }

    // Who checks a well in the tree while another work area is in front sees its display.
    void aCheckedWellComesToTheFront()
    {
        Window w;
        w.addWell("A", list("Top"));
        w.open();
        auto *pages = w.window->findChild<QTabWidget *>("centralTabs");
        pages->setCurrentIndex(2);
        w.clickBox(w.well(0));
        QCOMPARE(pages->currentWidget(), w.view);
        pages->setCurrentIndex(1);
        w.clickName(w.well(0));
        QCOMPARE(pages->currentWidget(), w.view);
        pages->setCurrentIndex(1);
        w.clickBox(w.templateOf(0, "Simple"));
        QCOMPARE(pages->currentWidget(), w.view);
        pages->setCurrentIndex(1);
        w.clickBox(w.well(0)); // nothing comes
        QCOMPARE(pages->currentIndex(), 1);
    }

    // Elevations on land may take all markers out of the range: then no box says that they show.
    void markersOutsideOfTheRangeAreUnchecked()
    {
        Window w;
        const QString key = w.addWell("A", list("M1 M2 M3 M4"));
        w.host.find(key)->header.kbElevation = 704.28F;
        w.host.find(key)->markers[3].depth = 900;
        w.open();
        QTreeWidgetItem *branch = markersBranch(w.well(0));
        w.clickBox(w.well(0));
        w.clickBox(branch);
        QCOMPARE(w.shownMarkers(0), list("M4"));
        for (int i = 0; i < 4; ++i)
            QCOMPARE(branch->child(i)->checkState(0), i == 3 ? Qt::Checked : Qt::Unchecked);
        QCOMPARE(branch->checkState(0), Qt::Unchecked);
        QCOMPARE(
            w.view->display(0)->statusText(),
            QString("3 markers are outside the depth range: M1, M2, M3. Lines stand at their depth along hole less "
                    "kelly bushing and ground level, here 704.28 m."));
        w.host.find(key)->markers[3].depth = 13;
        w.clickBox(w.well(0));
        branch->setCheckState(0, Qt::Unchecked);
        w.clickBox(branch);
        w.clickBox(w.well(0));
        QVERIFY(w.view->display(0)->statusText().startsWith(
            QStringLiteral("4 markers are outside the depth range: M1, M2, M3, …. Lines")));
        w.host.find(key)->header.kbElevation = 0;
        w.sync();
        w.clickBox(branch->child(0));
        QCOMPARE(w.shownMarkers(0), list("M1"));
        w.view->display(0)->scene()->panel()->findChild<QLineEdit *>("startDepthEdit")->setText("50");
        QMetaObject::invokeMethod(w.view->display(0)->scene()->panel(), "startDepthChanged");
        w.clickBox(branch->child(1));
        QCOMPARE(branch->child(1)->checkState(0), Qt::Unchecked);
        QCOMPARE(w.view->display(0)->statusText(), QString("The marker \"M2\" is outside the depth range."));
    }

    // What another program did to the well meanwhile shows after "Sync Data", at the same depths.
    void anOpenDisplayFollowsItsWell()
    {
        Window w;
        const QString key = w.addWell("A", list("Top Base"));
        files::write(w.project.path("/Templates/Global/Default/Track_1.txt"),
                     "Linear\nGamma | GR | 0 | 150 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 0\n");
        w.open();
        w.clickBox(w.well(0));
        w.clickBox(markersBranch(w.well(0)));
        const WellDisplayWidget *display = w.view->display(0);
        const WellLogsScene *scene = display->scene();
        display->logView()->verticalScrollBar()->setValue(300);
        auto *well = w.host.find(key);
        well->logs[0].values = {7, 8};
        well->markers[0].depth = 200;
        w.sync();
        QCOMPARE(scene->tracks().first()->curves().first()->samples().value(0), 7.0);
        QCOMPARE(scene->markers().find("Top")->depth(), 200.0F);
        QCOMPARE(display->logView()->verticalScrollBar()->value(), 300);
        well->header.totalDepth = 5500;
        w.sync();
        QCOMPARE(scene->endDepth(), 5500.0F);
        display->scene()->panel()->setDepthType(2);
        display->scene()->setDepthType(2);
        well->header.kbElevation = 30;
        w.sync();
        QCOMPARE(scene->startDepth(), -30.0F);
        display->scene()->panel()->setDepthType(0);
        display->scene()->setDepthType(0);
        well->header.totalDepth = 6000;
        w.sync();
        QCOMPARE(scene->markers().find("Top")->depth(), 170.0F);
        QVERIFY(!scene->markers().find("Base")); // 11 m less 30 m
        QCOMPARE(markersBranch(w.well(0))->child(1)->checkState(0), Qt::Unchecked);
        QCOMPARE(scene->endDepth(), 6000.0F);
        QCOMPARE(scene->well().kbElevation, 30.0);
        QVERIFY(QDir(w.project.path("/Templates/Global/Default")).removeRecursively());
        w.sync();
        QVERIFY(!scene->tracks().isEmpty());
    }

    void newsOfMarkersReachTheirWellAmongWellsOfOneName()
    {
        Window w;
        w.addWell("A", list("Top"));
        const QString key = w.addWell("A", list("Base"));
        w.open();
        w.host.find(key)->markers.append({QStringLiteral("New"), 900, Qt::red});
        w.project.launch->catalogue.refreshMarkerNames(1);
        w.window->markersChanged(1);
        QCOMPARE(markersBranch(w.well(0))->childCount(), 1);
        QCOMPARE(markersBranch(w.well(1))->childCount(), 2);
        w.host.find(key)->logs.append({QStringLiteral("DT"), QStringLiteral("us/ft"), {1, 2}, {3, 4}});
        w.project.launch->catalogue.refreshLogNames(1);
        w.tree->synchroniseLogs(1);
        QCOMPARE(logsBranch(w.well(0))->childCount(), 1);
        QCOMPARE(logsBranch(w.well(1))->childCount(), 2);
    }

    void namesKeepTheirAmpersand()
    {
        Window w;
        w.addWell("B&C");
        w.open();
        w.clickBox(w.well(0));
        QCOMPARE(w.tabTexts(), list("B&&C:Default")); // as a tab writes "&"
        QCOMPARE(w.view->display(0)->windowTitle(), QString("B&C"));
        QCOMPARE(w.view->displayedWells(), list("B&C"));
        w.view->tabClose(0);
        QCOMPARE(w.well(0)->checkState(0), Qt::Unchecked);
    }
};

LORVA_TEST_MAIN(tst_treeanddisplays)
#include "tst_treeanddisplays.moc"
