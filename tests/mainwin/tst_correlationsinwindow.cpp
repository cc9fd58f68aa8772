// Correlations in the main window: from the tree to their tabs and back, in step with the survey, printed.

#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationfixture.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationview.h"
#include "correlation/correlationviewproperty.h"
#include "correlation/correlationviewtabwidget.h"
#include "las/wellimportdialog.h"
#include "logview/markeritem.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "support/testmain.h"

#include <QAction>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QPrinter>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

namespace {

struct Window : CorrelationFixture
{
    Window()
    {
        store("North");
        store("South", "1\nC:T\n");
        openAt96Dots();
        window = std::make_unique<MainWindow>(*launch);
        window->resize(1200, 800);
        window->show();
        tree = window->projectTree();
        view = window->findChild<CorrelationViewTabWidget *>();
        pages = find<QTabWidget>(window.get(), "centralTabs");
        dock = find<QDockWidget>(window.get(), "propertiesDock");
        tree->correlationsItem()->setExpanded(true);
    }
    QTreeWidgetItem *item(const QString &name) const
    {
        for (int i = 0; i < tree->correlationsItem()->childCount(); ++i)
            if (tree->correlationsItem()->child(i)->text(0) == name)
                return tree->correlationsItem()->child(i);
        return nullptr;
    }
    QStringList names() const
    {
        QStringList texts;
        for (int i = 0; i < tree->correlationsItem()->childCount(); ++i)
            texts.append(tree->correlationsItem()->child(i)->text(0));
        return texts;
    }
    void doubleClick(const QString &name) const
    {
        const QPoint place = tree->visualItemRect(item(name)).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
    }
    // Chooses an entry of the context menu of an item.
    void choose(QTreeWidgetItem *of, const QString &entry) const
    {
        QTimer::singleShot(0, tree, [entry] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu)
                return;
            for (QAction *action : menu->actions())
                if (action->text() == entry && action->isEnabled())
                    action->trigger();
            menu->close();
        });
        const QPoint place = tree->visualItemRect(of).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree->viewport(), &event);
        QCoreApplication::processEvents();
    }
    void trigger(const char *action) const { window->findChild<QAction *>(QString::fromLatin1(action))->trigger(); }

    std::unique_ptr<MainWindow> window;
    ProjectTreeWidget *tree = nullptr;
    CorrelationViewTabWidget *view = nullptr;
    QTabWidget *pages = nullptr;
    QDockWidget *dock = nullptr;
};

} // namespace

class tst_correlationsinwindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<Window>(); }
    void cleanup() { m.reset(); }

    void aDoubleClickOpensItsTab()
    {
        QCOMPARE(m->pages->tabText(1), QString("Correlation View"));
        QCOMPARE(m->pages->widget(1), static_cast<QWidget *>(m->view));
        m->doubleClick("North");
        QCOMPARE(m->pages->currentIndex(), 1);
        QCOMPARE(m->view->names(), QStringList({"North"}));
        QCOMPARE(m->dock->widget(), static_cast<QWidget *>(m->view->currentDisplay()->view()->panel()));
        m->pages->setCurrentIndex(0);
        m->dock->setWidget(nullptr);
        m->doubleClick("North");
        QCOMPARE(m->pages->currentIndex(), 1);
        QCOMPARE(m->view->names(), QStringList({"North"}));
        QCOMPARE(m->dock->widget(), static_cast<QWidget *>(m->view->currentDisplay()->view()->panel()));
    }

    void enterOpensItsTab()
    {
        for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
            m->pages->setCurrentIndex(0);
            m->tree->setCurrentItem(m->item("North"));
            QTest::keyClick(m->tree, Qt::Key(key));
            QCOMPARE(m->pages->currentIndex(), 1);
            QCOMPARE(m->view->names(), QStringList({"North"}));
        }
        m->tree->setCurrentItem(m->tree->correlationsItem());
        QTest::keyClick(m->tree, Qt::Key_Return);
        QCOMPARE(m->view->names(), QStringList({"North"}));
    }

    void aNewOneGetsItsNameInTheTree()
    {
        m->choose(m->tree->correlationsItem(), "Add Correlation");
        QCOMPARE(m->names(), QStringList({"North", "South", "New Correlation"}));
        QCOMPARE(m->view->names(), QStringList({"New Correlation"}));
        CorrelationPropertiesDialog *dialog = m->view->currentDisplay()->dialog();
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->isModal());
        m->choose(m->tree->correlationsItem(), "Add Correlation"); // one is there already
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->view->names().size(), 1);
        auto *name = Window::find<QLineEdit>(dialog, "nameEdit");
        name->selectAll();
        QTest::keyClicks(name, "West");
        QTest::mouseClick(Window::find<QPushButton>(dialog, "addWellButton"), Qt::LeftButton);
        QTest::mouseClick(Window::find<QPushButton>(dialog, "saveButton"), Qt::LeftButton);
        QCOMPARE(m->names(), QStringList({"North", "South", "West"}));
        QCOMPARE(m->view->names(), QStringList({"West"}));
        QVERIFY(QFileInfo::exists(m->filePath("West")));
        QCOMPARE(m->view->currentDisplay()->view()->columns().size(), 1);
        m->choose(m->tree->correlationsItem(), "Add Correlation");
        QCOMPARE(m->view->names(), QStringList({"West", "New Correlation"}));
        QCOMPARE(m->asker.boxes.size(), 1);
    }

    void aNameThatTheTreeForgotComesBackWithTheSave()
    {
        m->choose(m->tree->correlationsItem(), "Add Correlation");
        m->trigger("syncAction"); // nothing is stored of the new one yet
        QVERIFY(!m->item("New Correlation"));
        QCOMPARE(m->view->names(), QStringList({"New Correlation"}));
        CorrelationPropertiesDialog *dialog = m->view->currentDisplay()->dialog();
        dialog->addWellClicked();
        Window::find<QLineEdit>(dialog, "nameEdit")->setText("West");
        QVERIFY(dialog->save());
        QCOMPARE(m->names(), QStringList({"North", "South", "West"}));
    }

    void aDeletedOneClosesItsTab()
    {
        m->doubleClick("North");
        m->doubleClick("South");
        m->view->display(0)->dialog()->addWellClicked(); // unsaved, and yet nothing is asked
        m->choose(m->item("North"), "Delete");
        QCOMPARE(m->view->names(), QStringList({"South"}));
        QCOMPARE(m->names(), QStringList({"South"}));
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Successfully deleted !"));
    }

    void aFailedDeletionKeepsTheTab()
    {
        m->doubleClick("North");
        QVERIFY(QDir(m->path("/Correlations/North")).removeRecursively());
        m->choose(m->item("North"), "Delete");
        QCOMPARE(m->asker.boxes.at(0).title, QString("Error in deleting !"));
        QCOMPARE(m->view->names(), QStringList({"North"}));
    }

    void openOnesFollowASynchronisation()
    {
        m->doubleClick("North");
        m->doubleClick("South");
        QVERIFY(QDir(m->path("/Correlations/South")).removeRecursively());
        m->host.find(m->launch->catalogue.wellKey(0))->markers[0].depth = 625;
        m->trigger("syncAction");
        QCOMPARE(m->view->names(), QStringList({"North"}));
        QCOMPARE(m->view->display(0)->view()->columns().at(0).markers.value("Top").depthM, 600.0);
        QCOMPARE(m->asker.boxes.size(), 1);
    }

    void openOnesFollowTheirMarkers()
    {
        m->doubleClick("North");
        m->doubleClick("South"); // has not the well
        const int redraws = m->view->display(1)->view()->redrawCount();
        m->host.find(m->launch->catalogue.wellKey(0))->markers[0].depth = 625;
        m->launch->catalogue.refreshMarkerNames(0);
        m->window->markersChanged(0);
        QCOMPARE(m->view->display(0)->view()->columns().at(0).markers.value("Top").depthM, 600.0);
        QCOMPARE(m->view->display(1)->view()->redrawCount(), redraws);
    }

    void openOnesFollowAnImport()
    {
        m->doubleClick("North");
        m->doubleClick("South"); // has not the well
        const int redraws = m->view->display(0)->view()->redrawCount();
        const int othersRedraws = m->view->display(1)->view()->redrawCount();
        m->trigger("importAction");
        auto *dialog = m->window->findChild<WellImportDialog *>();
        QVERIFY(dialog);
        emit dialog->logsImported(0);
        QCOMPARE(m->view->display(0)->view()->redrawCount(), redraws + 1);
        QCOMPARE(m->view->display(1)->view()->redrawCount(), othersRedraws);
        dialog->close();
    }

    // The dock shows the panel of the work area in front, whatever changes behind it.
    void theDockFollowsTheWorkArea()
    {
        auto *logs = m->window->findChild<WellLogsViewWidget *>();
        logs->addWellDisWidget("A", "T");
        QWidget *logPanel = logs->currentDisplay()->scene()->panel();
        QCOMPARE(m->dock->widget(), logPanel);
        m->doubleClick("North");
        QWidget *correlationPanel = m->view->currentDisplay()->view()->panel();
        const auto clickPage = [this](int page) {
            QTabBar *bar = m->pages->tabBar();
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
            QCOMPARE(m->pages->currentIndex(), page);
        };
        clickPage(0);
        QCOMPARE(m->dock->widget(), logPanel);
        QVERIFY(logPanel->isVisible());
        QVERIFY(!correlationPanel->isVisible());
        clickPage(1);
        QCOMPARE(m->dock->widget(), correlationPanel);
        clickPage(2); // has none
        QVERIFY(!m->dock->widget());
        QVERIFY(!correlationPanel->isVisible());
        clickPage(1);
        QCOMPARE(m->dock->widget(), correlationPanel);
        logs->addWellDisWidget("B", "T");
        logs->addMarkerInScene("A", "Top");
        logs->synchronise();
        logs->removeWellDisWidget("B");
        QCOMPARE(m->dock->widget(), correlationPanel);
        clickPage(0);
        QCOMPARE(m->dock->widget(), static_cast<QWidget *>(logs->currentDisplay()->scene()->panel()));
        m->view->closeCorrTab(0);
        QCOMPARE(m->dock->widget(), static_cast<QWidget *>(logs->currentDisplay()->scene()->panel()));
        clickPage(1); // nothing is open there
        QVERIFY(!m->dock->widget());
    }

    // A marker that goes from a display behind another one leaves the panel that is shown alone.
    void theDockKeepsThePanelOfTheTabInFront()
    {
        auto *logs = m->window->findChild<WellLogsViewWidget *>();
        logs->addWellDisWidget("A", "T");
        logs->addMarkerInScene("A", "Top");
        WellLogsScene *behind = logs->currentDisplay()->scene();
        behind->selection().selectOnly(behind->markers().find("Top"));
        behind->selection().showPanelOfSelection();
        QVERIFY(m->dock->widget() != behind->panel());
        logs->addWellDisWidget("B", "T");
        QWidget *panel = logs->currentDisplay()->scene()->panel();
        QCOMPARE(m->dock->widget(), panel);
        behind->deleteMarker("Top");
        QVERIFY(!behind->markers().find("Top"));
        QCOMPARE(m->dock->widget(), panel);
        logs->setCurrentTab(0);
        QCOMPARE(m->dock->widget(), static_cast<QWidget *>(behind->panel()));
    }

    void thePageIsTheCorrelationInFront()
    {
        m->doubleClick("North");
        m->doubleClick("South");
        const auto print = [this] {
            QPrinter printer(QPrinter::ScreenResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(m->survey.filePath("page.pdf"));
            m->window->printPreView(&printer);
            return QFileInfo(printer.outputFileName()).size();
        };
        QVERIFY(print() > 3000); // holds a picture
        QVERIFY(QFileInfo::exists(m->path("/South.jpg")));
        QVERIFY(!QFileInfo::exists(m->path("/North.jpg")));
        const QImage picture(m->path("/South.jpg"));
        const QRectF scene = m->view->display(1)->view()->scene()->sceneRect();
        QCOMPARE(picture.width(), static_cast<int>(scene.width()));
        QVERIFY(picture.height() > scene.height());
        m->view->closeCorrTab(1);
        m->view->closeCorrTab(0);
        QFile::remove(m->path("/South.jpg"));
        print();
        QVERIFY(!QFileInfo::exists(m->path("/South.jpg")));
        QVERIFY(m->asker.boxes.isEmpty());
    }

    void theWindowMayGoWithACorrelationOpen()
    {
        m->doubleClick("North");
        m->doubleClick("South");
        const QPointer<QWidget> panel = m->view->currentDisplay()->view()->panel();
        QCOMPARE(m->dock->widget(), panel.data());
        m->window.reset();
        QVERIFY(!panel);
    }

private:
    std::unique_ptr<Window> m;
};

LORVA_TEST_MAIN(tst_correlationsinwindow)
#include "tst_correlationsinwindow.moc"
