#include "correlation/correlationviewtabwidget.h"

#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewproperty.h"
#include "correlationfixture.h"
#include "support/testmain.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <algorithm>
#include <malloc.h>
#include <memory>

namespace {

struct TabsFixture : CorrelationFixture
{
    TabsFixture()
    {
        store("North");
        store("South & East", "1\nC:T\n");
        openAt96Dots();
        for (const char *page : {"Well Logs View", "Correlation View", "Well Data Manager"})
            pages.addTab(new QWidget, QString::fromLatin1(page));
        view = std::make_unique<CorrelationViewTabWidget>(*launch, &dock, &pages);
        view->resize(900, 600);
        view->show();
        tabs = find<QTabWidget>(view.get(), "correlationTabs");
    }
    void add(const QString &name)
    {
        auto *item = new QTreeWidgetItem(&tree, {name});
        view->addCorrelation(item);
    }
    void edit(int tab) const { view->display(tab)->dialog()->addWellClicked(); }

    QTreeWidget tree;
    QTabWidget pages;
    QDockWidget dock;
    std::unique_ptr<CorrelationViewTabWidget> view;
    QTabWidget *tabs;
};

} // namespace

class tst_correlationtabs : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<TabsFixture>(); }
    void cleanup() { m.reset(); }

    void opensATab()
    {
        QVERIFY(m->tabs->tabsClosable());
        QVERIFY(!m->tabs->isMovable());
        m->add("North");
        QCOMPARE(m->pages.currentIndex(), 1);
        QCOMPARE(m->tabs->count(), 1);
        QCOMPARE(m->tabs->tabText(0), QString("North"));
        QCOMPARE(m->view->names(), QStringList({"North"}));
        QCOMPARE(m->dock.widget(), static_cast<QWidget *>(m->view->currentDisplay()->view()->panel()));
        m->add("South & East");
        QCOMPARE(m->tabs->currentIndex(), 1);
        QCOMPARE(m->tabs->tabText(1), QString("South && East"));
        QCOMPARE(m->view->names(), QStringList({"North", "South & East"}));
        QCOMPARE(m->view->currentDisplay()->windowTitle(), QString("South & East"));
    }

    void anOpenOneComesForward()
    {
        m->add("North");
        m->add("South & East");
        const auto *first = m->view->display(0);
        m->pages.setCurrentIndex(0);
        m->add("North");
        QCOMPARE(m->pages.currentIndex(), 1);
        QCOMPARE(m->tabs->count(), 2);
        QCOMPARE(m->tabs->currentIndex(), 0);
        QCOMPARE(m->view->display(0), first);
    }

    void itTakesATreesItem()
    {
        QTreeWidgetItem item(QStringList{"North"});
        QVERIFY(QMetaObject::invokeMethod(m->view.get(), "addCorrelation", Q_ARG(QTreeWidgetItem *, &item)));
        QCOMPARE(m->tabs->count(), 1);
        m->view->addCorrelation(nullptr);
        QCOMPARE(m->tabs->count(), 1);
    }

    void closingAnUnchangedOneAsksNothing()
    {
        m->add("North");
        m->add("South & East");
        emit m->tabs->tabCloseRequested(0);
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(m->view->names(), QStringList({"South & East"}));
        QCOMPARE(m->dock.widget(), static_cast<QWidget *>(m->view->currentDisplay()->view()->panel()));
        m->view->closeCorrTab(0);
        QCOMPARE(m->tabs->count(), 0);
        QVERIFY(!m->dock.widget());
        m->view->closeCorrTab(5);
    }

    void panelEditsAreNoChange()
    {
        m->add("North");
        auto *scale = CorrelationFixture::find<QLineEdit>(m->view->currentDisplay()->view()->panel(), "scaleEdit");
        scale->setText("500");
        emit scale->editingFinished();
        m->view->closeCorrTab(0);
        QVERIFY(m->asker.boxes.isEmpty());
    }

    void closingAChangedOneAsks()
    {
        m->add("North");
        m->edit(0);
        const QByteArray before = files::read(m->filePath("North"));
        m->asker.answers = {base::BoxButton::No};
        m->view->closeCorrTab(0);
        QCOMPARE(m->asker.boxes.size(), 1);
        const base::Box &box = m->asker.boxes.at(0);
        QCOMPARE(box.icon, base::BoxIcon::Question);
        QCOMPARE(box.title, QString("Correlation View"));
        QCOMPARE(box.text,
                 QString("Correlation Properties has been changed.\nWould you like to saved it before close it ?"));
        QCOMPARE(box.buttons, QVector<base::BoxButton>({base::BoxButton::Yes, base::BoxButton::No}));
        QCOMPARE(m->tabs->count(), 0);
        QCOMPARE(files::read(m->filePath("North")), before);

        m->add("North");
        m->edit(0);
        m->asker.answers = {base::BoxButton::Yes};
        m->view->closeCorrTab(0);
        QCOMPARE(m->tabs->count(), 0);
        QVERIFY(files::read(m->filePath("North")).contains("Number Of Wells:3\n"));
    }

    void aTabThatCannotBeSavedStays()
    {
        m->add("North");
        m->edit(0);
        CorrelationFixture::find<QLineEdit>(m->view->display(0)->dialog(), "nameEdit")->clear();
        m->asker.answers = {base::BoxButton::Yes};
        m->view->closeCorrTab(0);
        QCOMPARE(m->asker.boxes.size(), 2);
        QCOMPARE(m->asker.boxes.at(1).text, QString("Please give correlation name."));
        QCOMPARE(m->tabs->count(), 1);
    }

    void aRenameRetitlesTheTab()
    {
        m->add("South & East");
        m->add("North");
        QSignalSpy renamed(m->view.get(), &CorrelationViewTabWidget::correlationRenamed);
        auto *dialog = m->view->display(1)->dialog();
        CorrelationFixture::find<QLineEdit>(dialog, "nameEdit")->setText("Up & over");
        dialog->saveButtonClicked();
        QCOMPARE(m->tabs->tabText(1), QString("Up && over"));
        QCOMPARE(m->view->names(), QStringList({"South & East", "Up & over"}));
        QCOMPARE(m->view->display(1)->windowTitle(), QString("Up & over"));
        QCOMPARE(renamed.size(), 1);
        QCOMPARE(renamed.at(0), QVariantList({"North", "Up & over"}));
        m->add("Up & over");
        QCOMPARE(m->tabs->count(), 2);
    }

    void changingTheTabShowsItsPanel()
    {
        m->add("North");
        m->add("South & East");
        m->tabs->setCurrentIndex(0);
        QCOMPARE(m->dock.widget(), static_cast<QWidget *>(m->view->display(0)->view()->panel()));
        m->view->tabChanged(1);
        QCOMPARE(m->dock.widget(), static_cast<QWidget *>(m->view->display(1)->view()->panel()));
        m->view->tabChanged(-1);
    }

    void tabsFollowWhatExists()
    {
        m->add("North");
        m->add("South & East");
        m->add("New Correlation"); // never saved
        m->edit(1);
        m->view->keepOnly({"North", "Other"});
        QCOMPARE(m->view->names(), QStringList({"North", "New Correlation"}));
        m->view->forget("New Correlation");
        m->view->forget("Unknown");
        QCOMPARE(m->view->names(), QStringList({"North"}));
        QVERIFY(m->asker.boxes.isEmpty());
    }

    void openOnesFollowTheirWells()
    {
        m->add("North");
        const auto *view = m->view->display(0)->view();
        QCOMPARE(view->columns().at(0).markers.value("Top").depthM, 500.0);
        m->host.find(m->launch->catalogue.wellKey(0))->markers[0].depth = 625;
        m->view->wellChanged("A");
        QCOMPARE(view->columns().at(0).markers.value("Top").depthM, 600.0);
    }

    // A well that was renamed elsewhere has its new name in the file; one well's change does not read it.
    void aSynchronisationReadsTheFiles()
    {
        m->add("North");
        const int before = m->view->display(0)->view()->columns().size();
        QByteArray file = files::read(m->filePath("North"));
        const QByteArray count = "Number Of Wells:" + QByteArray::number(before);
        QVERIFY(file.contains(count));
        file.replace(count, "Number Of Wells:" + QByteArray::number(before + 1) + "\nC:T");
        files::write(m->filePath("North"), file);
        m->view->wellChanged("A");
        QCOMPARE(m->view->display(0)->view()->columns().size(), before);
        m->view->wellChanged(QString());
        QCOMPARE(m->view->display(0)->view()->columns().size(), before + 1);
    }

    // The dialog of an open correlation offers what the survey has now.
    void dialogsFollowTheirWells()
    {
        m->add("North");
        m->add("South & East"); // has not the well
        auto *dialog = m->view->display(0)->dialog();
        auto *markers = CorrelationFixture::find<QTableWidget>(dialog, "markersTable");
        const auto rows = [markers] {
            QStringList names;
            for (int row = 0; row < markers->rowCount(); ++row)
                names.append((markers->item(row, 1)->checkState() == Qt::Checked ? "+" : "-")
                             + markers->item(row, 0)->text());
            return names;
        };
        QCOMPARE(rows(), QStringList({"+Top", "-Base", "-Only B"}));
        QVector<host::Marker> &stored = m->host.find(m->launch->catalogue.wellKey(0))->markers;
        stored.append({"New pick", 700, Qt::red});
        m->launch->catalogue.refreshMarkerNames(0);
        m->view->wellChanged("A");
        QCOMPARE(rows(), QStringList({"+Top", "-Base", "-New pick", "-Only B"}));
        QVERIFY(!dialog->isChanged());
        QCOMPARE(dialog->saved().markers, QStringList("Top"));

        // A ticked marker that vanishes is told of, and ticked again when it comes back.
        const QVector<host::Marker> before = stored;
        QVector<host::Marker> &storedOfB = m->host.find(m->launch->catalogue.wellKey(1))->markers;
        const QVector<host::Marker> beforeOfB = storedOfB;
        stored.remove(0);
        storedOfB.remove(0);
        for (const int well : {0, 1})
            m->launch->catalogue.refreshMarkerNames(well);
        m->view->wellChanged("A");
        const auto *missing = CorrelationFixture::find<QLabel>(dialog, "missingLabel");
        QVERIFY(missing->text().contains("the marker \"Top\""));
        QVERIFY(!missing->isHidden());
        QCOMPARE(rows(), QStringList({"-Base", "-New pick", "-Only B"}));
        stored = before;
        storedOfB = beforeOfB;
        for (const int well : {0, 1})
            m->launch->catalogue.refreshMarkerNames(well);
        m->view->wellChanged("A");
        QVERIFY(missing->isHidden());
        QCOMPARE(rows(), QStringList({"+Top", "-Base", "-New pick", "-Only B"}));
    }

    void dialogsFollowASynchronisation()
    {
        m->add("North");
        auto *dialog = m->view->display(0)->dialog();
        auto *wells = CorrelationFixture::find<QTableWidget>(dialog, "wellsTable");
        m->addDeepWell("D", 0, 500, {});
        m->launch->catalogue.build();
        m->view->wellChanged(QString());
        QCOMPARE(CorrelationFixture::chooser(wells, 1, 0)->count(), 4);
        QCOMPARE(CorrelationFixture::chooser(wells, 1, 0)->currentText(), QString("B"));
        QCOMPARE(CorrelationFixture::chooser(wells, 1, 1)->currentText(), QString("T"));
        QVERIFY(!dialog->isChanged());
        // With unsaved edits these stay.
        CorrelationFixture::find<QLineEdit>(dialog, "nameEdit")->setText("Other");
        CorrelationFixture::chooser(wells, 0, 0)->setCurrentText("C");
        CorrelationFixture::chooser(wells, 0, 1)->setCurrentText("Simple");
        QVERIFY(dialog->isChanged());
        m->addDeepWell("F", 0, 500, {});
        m->launch->catalogue.build();
        m->view->wellChanged(QString());
        QCOMPARE(CorrelationFixture::chooser(wells, 0, 0)->count(), 5);
        QCOMPARE(CorrelationFixture::chooser(wells, 0, 0)->currentText(), QString("C"));
        QCOMPARE(CorrelationFixture::chooser(wells, 0, 1)->currentText(), QString("Simple"));
        QCOMPARE(CorrelationFixture::find<QLineEdit>(dialog, "nameEdit")->text(), QString("Other"));
        QVERIFY(dialog->isChanged());
        m->view->closeCorrTab(0);
    }

    void aThousandOpeningsLeaveNothingBehind()
    {
        QTreeWidgetItem item(QStringList{"North"});
        const auto openAndClose = [this, &item](int times) {
            for (int i = 0; i < times; ++i) {
                m->view->addCorrelation(&item);
                m->view->closeCorrTab(0);
                QCoreApplication::processEvents();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // tab buttons
            }
        };
        openAndClose(50); // caches fill
        const int widgets = QApplication::allWidgets().size();
        const int objects = m->view->findChildren<QObject *>().size();
        // Caches of Qt grow in steps; what is left behind each time shows in every stretch.
        double leastGrowth = 1e9;
        for (int stretch = 0; stretch < 4; ++stretch) {
            const auto before = static_cast<double>(mallinfo2().uordblks);
            openAndClose(250);
            leastGrowth = std::min(leastGrowth, static_cast<double>(mallinfo2().uordblks) - before);
        }
        QCOMPARE(QApplication::allWidgets().size(), widgets);
        QCOMPARE(m->view->findChildren<QObject *>().size(), objects);
        QVERIFY2(leastGrowth < 250 * 64, qPrintable(QString::number(leastGrowth))); // less than the smallest object
        QVERIFY(!m->dock.widget());
    }

private:
    std::unique_ptr<TabsFixture> m;
};

LORVA_TEST_MAIN(tst_correlationtabs)
#include "tst_correlationtabs.moc"
