// On a dark desktop every text of the workbench's windows can be read, and the windows are tidy.

#include "support/legiblewindow.h"
#include "support/testmain.h"
#include "workbench/manualdialog.h"
#include "workbench/messagespanel.h"
#include "workbench/newwellsdialog.h"
#include "workbench/renamewelldialog.h"
#include "workbench/reportdialog.h"
#include "workbench/welleditdialog.h"
#include "workbenchwindowfixture.h"

#include <QAction>
#include <QListView>
#include <QMenuBar>

using namespace workbench;

class TestDarkWorkbench : public WorkbenchWindowTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_before = QApplication::palette();
        QApplication::setPalette(legible::darkPalette());
    }
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void cleanupTestCase() { QApplication::setPalette(m_before); }

    void theWindow()
    {
        expectLegible(m_window.get(), 2); // without a survey it says what to do
        openSurvey();
        expectLegible(m_window.get(), 8);
        find<QTableView>("wellsTable")->selectRow(0);
        expectLegible(m_window.get(), 8);
    }

    void dialogs_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("dialog");
        QTest::addColumn<int>("texts");
        QTest::newRow("new survey") << "newSurveyAction"
                                    << "newSurveyDialog" << 8;
        QTest::newRow("wells") << "manageWellsAction"
                               << "wellManagerDialog" << 8;
        QTest::newRow("plug-ins") << "loadedPluginsAction"
                                  << "loadedPluginsDialog" << 2;
    }

    void dialogs()
    {
        QFETCH(QString, action);
        QFETCH(QString, dialog);
        QFETCH(int, texts);
        openSurvey();
        bool isDone = false;
        onNextDialog(dialog, [this, texts, &isDone](QDialog *shown) {
            if (auto *list = shown->findChild<QListView *>("wellsList"))
                list->setCurrentIndex(list->model()->index(0, 0));
            expectLegible(shown, texts);
            isDone = true;
            shown->reject();
        });
        trigger(qPrintable(action));
        QTRY_VERIFY(isDone);
    }

    // A wrong field is marked, and its sentence stands beside it.
    void wrongFields()
    {
        openSurvey();
        bool isDone = false;
        onNextDialog("newSurveyDialog", [this, &isDone](QDialog *shown) {
            for (QLineEdit *edit : shown->findChildren<QLineEdit *>())
                if (edit->objectName() != "rootEdit")
                    edit->setText("a/b");
            expectLegible(shown, 8);
            isDone = true;
            shown->reject();
        });
        trigger("newSurveyAction");
        QTRY_VERIFY(isDone);
    }

    void wells()
    {
        openSurvey();
        survey::SurveyStore store(m_host->surveyDirectory());
        const host::WellEntry well = store.list().value.first();
        RenameWellDialog rename(store, m_asker, well);
        rename.show();
        expectLegible(&rename, 3);
        WellEditDialog edit(store, m_asker);
        edit.show();
        expectLegible(&edit, 8);
        for (QLineEdit *line : edit.findChildren<QLineEdit *>())
            line->setText("Aldra-2");
        edit.accept(); // what is wrong with the fields is told
        QVERIFY(edit.isVisible());
        expectLegible(&edit, 9);
    }

    void newWells()
    {
        openSurvey();
        const QString good = m_folder->filePath("good.las");
        const QByteArray las = "~V\nVERS. 2.0:\nWRAP. NO:\n~W\nSTRT.M 1:\nSTOP.M 2:\nSTEP.M 1:\nNULL. -999.25:\n";
        files::write(good, las + "WELL. New:\nX.M 1:\nY.M 2:\n~C\nDEPT.M :\nGR.GAPI :\n~A\n1 2\n2 3\n");
        files::write(m_folder->filePath("taken.las"), las + "WELL. Aldra-1:\n~C\nDEPT.M :\n~A\n1\n");
        survey::SurveyStore store(m_host->surveyDirectory());
        NewWellsDialog dialog(store, m_asker, {});
        dialog.show();
        expectLegible(&dialog, 5);
        dialog.addFiles({good, m_folder->filePath("taken.las"), m_folder->filePath("none.las")});
        expectLegible(&dialog, 15); // rows that cannot be made are marked
    }

    void textsOfManyLines()
    {
        ReportDialog report("Title", "Three wells were made.", "One\nTwo\nThree", "report.txt", m_asker, {});
        report.show();
        expectLegible(&report, 4);
        const QString manual = m_folder->filePath("manual");
        files::write(manual + "/README.md", "# Manual\n\nText with a [link](b.md).\n");
        ManualDialog dialog(manual);
        dialog.show();
        expectLegible(&dialog, 1);
    }

    void messages()
    {
        openSurvey();
        auto *panel = m_window->findChild<MessagesPanel *>();
        QVERIFY(panel);
        panel->setMessages({"The file a.well cannot be read.", "Another one."});
        panel->setUnfolded(true);
        expectLegible(m_window.get(), 10);
    }

    void menus()
    {
        openSurvey();
        int count = 0;
        for (QMenu *menu : m_window->menuBar()->findChildren<QMenu *>()) {
            if (menu->isEmpty())
                continue;
            menu->popup(QPoint(10, 10));
            expectLegible(menu, 1);
            menu->close();
            ++count;
        }
        QVERIFY(count >= 3);
    }

private:
    void openSurvey()
    {
        const QString survey = newSurvey(QStringLiteral("Own"));
        for (const char *name : {"Aldra-1", "Aldra-2"})
            addWell(survey, QString::fromLatin1(name), 600000, 6000000);
        survey::SurveyStore store(survey);
        const QString key = store.list().value.first().key;
        QVERIFY(store.writeLog(key, {"GR", "gapi", {100, 101}, {1, 2}}).ok());
        QVERIFY(store.writeMarkers(key, {{"Top", 150, Qt::red}}).ok());
        QVERIFY(QFile::remove(survey + "/WellInfo/Aldra-2.well")); // a message
        QVERIFY(m_window->openSurvey(survey));
    }

    QPalette m_before;
};

LORVA_TEST_MAIN(TestDarkWorkbench)
#include "tst_darkworkbench.moc"
