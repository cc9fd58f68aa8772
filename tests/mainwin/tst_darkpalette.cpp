// On a dark desktop every text of the plug-in's windows can be read, and the windows are tidy.

#include "base/messageboxasker.h"
#include "base/progressbox.h"
#include "correlation/correlationdisplaywidget.h"
#include "correlation/correlationfixture.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationviewtabwidget.h"
#include "las/exportcurvesinascii.h"
#include "las/wellimportdialog.h"
#include "logview/paper/displaysheet.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "mainwin/truescaledialog.h"
#include "plugin/launcher.h"
#include "support/legiblewindow.h"
#include "support/testmain.h"
#include "templates/definetemplate.h"
#include "templates/modifytemplate.h"

#include <QAction>
#include <QGraphicsView>
#include <QMenuBar>
#include <QProgressDialog>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

struct Window : CorrelationFixture
{
    Window()
    {
        store("North", "2\nA:T\nGone:T\n", "1\nTop\n", "1\nZ|Top|1500|#ff8000|1|0|1\n");
        openAt96Dots();
        window = std::make_unique<MainWindow>(*launch);
        window->resize(1300, 850);
        window->show();
    }
    QTabWidget *pages() const { return find<QTabWidget>(window.get(), "centralTabs"); }

    std::unique_ptr<MainWindow> window;
};

} // namespace

class tst_darkpalette : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_before = QApplication::palette();
        QApplication::setPalette(legible::darkPalette());
    }
    void init() { m = std::make_unique<Window>(); }
    void cleanup() { m.reset(); }
    void cleanupTestCase() { QApplication::setPalette(m_before); }

    // The measure itself: text of the paper's colour is found, text on coloured paper is not.
    void theMeasure()
    {
        QWidget window;
        QLabel good(QStringLiteral("good"), &window);
        QLabel bad(QStringLiteral("bad"), &window);
        bad.move(0, 40);
        bad.setStyleSheet(QStringLiteral("color: #2e2e2e"));
        window.resize(200, 100);
        window.show();
        int count = 0;
        const QStringList found = legible::illegibleTexts(&window, &count);
        QCOMPARE(count, 2);
        QCOMPARE(found.size(), 1);
        QVERIFY2(found.first().contains("\"bad\""), qPrintable(found.first()));
        QCOMPARE(legible::contrast(qRgb(0, 0, 0), qRgb(255, 255, 255)), 21.0);
    }

    void emptyWorkAreas()
    {
        m->window->projectTree()->expandAll();
        for (int page = 0; page < 3; ++page) {
            m->pages()->setCurrentIndex(page);
            expectLegible(m->window.get(), 12);
        }
    }

    void displaysAndTheirPanels()
    {
        auto *logs = m->window->findChild<WellLogsViewWidget *>();
        logs->addWellDisWidget("A", "T");
        logs->addMarkerInScene("A", "Top");
        expectLegible(m->window.get(), 20);
        QTreeWidgetItem item(QStringList{"North"});
        auto *correlations = m->window->findChild<CorrelationViewTabWidget *>();
        correlations->addCorrelation(&item);
        expectLegible(m->window.get(), 20);
        CorrelationPropertiesDialog *dialog = correlations->currentDisplay()->dialog();
        dialog->show();
        expectLegible(dialog, 20);
    }

    void wellData()
    {
        m->pages()->setCurrentIndex(2);
        CorrelationFixture::find<QComboBox>(m->window.get(), "wellBox")->setCurrentText("A");
        auto *editors = CorrelationFixture::find<QTabWidget>(m->window.get(), "editorTabs");
        for (int editor = 0; editor < editors->count(); ++editor) {
            editors->setCurrentIndex(editor);
            expectLegible(m->window.get(), 12);
        }
        for (int editor = 0; editor < editors->count(); ++editor) {
            auto *import = editors->widget(editor)->findChild<QPushButton *>("asciiFileButton");
            if (!import || !import->isEnabled())
                continue;
            editors->setCurrentIndex(editor);
            QTimer::singleShot(0, this, [this] {
                auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
                QVERIFY(dialog);
                expectLegible(dialog, 5);
                dialog->reject();
            });
            import->click();
            QCoreApplication::processEvents();
        }
    }

    void imports()
    {
        const QString path = m->survey.filePath("one.las");
        files::write(path,
                     "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 100 :\nSTOP.M 102 :\nSTEP.M 1 :\nNULL. -999.25 :\n"
                     "WELL. A :\n~C\nDEPT.M :\nGR.GAPI :\nNEW.V/V :\n~A\n100 1 2\n101 2 3\n102 3 4\n");
        CorrelationFixture::find<QAction>(m->window.get(), "importAction")->trigger();
        auto *dialog = m->window->findChild<WellImportDialog *>();
        dialog->chooseFiles = [path](QWidget *, const QString &, const QString &) { return QStringList{path}; };
        expectLegible(dialog, 3);
        dialog->resize(1280, 720);
        CorrelationFixture::find<QPushButton>(dialog, "selectButton")->click();
        expectLegible(dialog, 20); // the rows of logs that the well has are red
        dialog->close();
    }

    void exports()
    {
        CorrelationFixture::find<QAction>(m->window.get(), "exportAction")->trigger();
        auto *dialog = m->window->findChild<QDialog *>("WellLogExport");
        QVERIFY(dialog);
        expectLegible(dialog, 8);
        dialog->close();
    }

    void templates()
    {
        DefineTemplate dialog(*m->launch, "A");
        dialog.show();
        expectLegible(&dialog, 7);
        dialog.populateFromDefaultBtnClicked();
        expectLegible(&dialog, 15);
        ModifyTemplate modify(*m->launch, TemplateId::ofWell("A", "T"), "A");
        modify.show();
        expectLegible(&modify, 8);
    }

    void launch()
    {
        Launcher launcher(*m->launch);
        launcher.show();
        launcher.setStatus("Reading the wells");
        launcher.setProgress(40);
        expectLegible(&launcher, 4);
    }

    void exportsOfTextAndPaper()
    {
        ExportCurvesInAscii text(*m->launch);
        text.show();
        expectLegible(&text, 5);
        auto *logs = m->window->findChild<WellLogsViewWidget *>();
        logs->addWellDisWidget("A", "T");
        WellDisplayWidget *shown = logs->currentDisplay();
        TrueScaleDialog paper(logview::sheetContents(*shown->headerView()->scene(), *shown->scene()));
        paper.show();
        expectLegible(&paper, 5);
    }

    void boxes()
    {
        base::MessageBoxAsker asker(m->window.get());
        bool isDone = false;
        QTimer::singleShot(0, this, [&isDone] {
            auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(box);
            expectLegible(box, 2);
            isDone = true;
            box->reject();
        });
        asker.warn("Title", "What went wrong.");
        QVERIFY(isDone);
        const base::ProgressBox progress("Print", "Drawing A", m->window.get());
        auto *box = m->window->findChild<QProgressDialog *>();
        QVERIFY(box);
        box->show();
        box->setValue(50);
        expectLegible(box, 3);
    }

    void menus()
    {
        int count = 0;
        for (QMenu *menu : m->window->menuBar()->findChildren<QMenu *>()) {
            menu->popup(QPoint(10, 10));
            expectLegible(menu, 1);
            menu->close();
            ++count;
        }
        QVERIFY(count >= 3);
    }

private:
    QPalette m_before;
    std::unique_ptr<Window> m;
};

LORVA_TEST_MAIN(tst_darkpalette)
#include "tst_darkpalette.moc"
