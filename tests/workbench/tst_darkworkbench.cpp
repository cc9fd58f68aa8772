// On a dark desktop every text of the workbench's windows can be read, and the windows are tidy.

#include "support/legibletexts.h"
#include "support/testmain.h"
#include "support/tidywindows.h"
#include "workbenchwindowfixture.h"

#include <QAction>
#include <QListView>

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
    static void expectLegible(QWidget *window, int atLeast)
    {
        QCoreApplication::processEvents();
        int count = 0;
        const QStringList found = legible::illegibleTexts(window, &count);
        QVERIFY2(found.isEmpty(), qPrintable(found.join('\n')));
        QVERIFY2(count >= atLeast, qPrintable(QString::number(count)));
        count = 0;
        const QStringList untidy = tidy::faults(window, &count);
        QVERIFY2(untidy.isEmpty(), qPrintable(untidy.join('\n')));
        QVERIFY2(count >= atLeast, qPrintable(QString::number(count)));
    }

    QPalette m_before;
};

LORVA_TEST_MAIN(TestDarkWorkbench)
#include "tst_darkworkbench.moc"
