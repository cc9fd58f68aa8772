#include "support/testmain.h"
#include "workbenchwindowfixture.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPointer>
#include <QStatusBar>
#include <QTableWidget>

using namespace workbench;

namespace {

/// A plug-in's window that may refuse to close.
class StubbornWindow : public QDialog
{
public:
    using QDialog::QDialog;
    bool refuses = true;
    int asked = 0;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++asked;
        event->setAccepted(!refuses);
    }
};

} // namespace

/// What the workbench's window tells of plug-ins, gives them, and owes to their windows.
class TestPluginsOfWindow : public WorkbenchWindowTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void aboutAndPlugins();
    void utilitiesMenuOfPlugins();
    void pluginWindowsMayRefuseToClose();
    void pluginWindowsGoBeforeTheWindow();
};

void TestPluginsOfWindow::aboutAndPlugins()
{
    trigger("aboutAction");
    QCOMPARE(m_asker.boxes.size(), 1);
    QVERIFY(m_asker.boxes.first().text.contains(QLatin1String("lorva-workbench 0.0")));

    int rows = -1;
    bool saysNone = false;
    QStringList good;
    QStringList bad;
    const auto look = [&](QDialog *dialog) {
        const auto *table = dialog->findChild<QTableWidget *>(QStringLiteral("pluginsTable"));
        rows = table->rowCount();
        const QString howTo = dialog->findChild<QLabel *>(QStringLiteral("howToLabel"))->text();
        QVERIFY(howTo.contains(QLatin1String("--plugin-dir"))); // how to get one
        saysNone = howTo.startsWith(QLatin1String("No plug-in library was found."));
        if (rows == 2) {
            good = rowTexts(table->model(), 0);
            bad = rowTexts(table->model(), 1);
        }
        QTest::keyClick(dialog, Qt::Key_Escape);
    };
    onNextDialog(QStringLiteral("loadedPluginsDialog"), look);
    trigger("loadedPluginsAction");
    QCOMPARE(rows, 0);
    QVERIFY(saysNone);
    PluginReport running;
    running.file = QStringLiteral("/p/libGood.so");
    running.name = QStringLiteral("Good");
    running.displayName = QStringLiteral("Good plug-in");
    running.productName = QStringLiteral("Product");
    running.creator = QStringLiteral("Creator");
    running.version = QStringLiteral("1.2");
    running.text = QStringLiteral("Does good.");
    running.license = 3;
    PluginReport failing;
    failing.file = QStringLiteral("/p/libBad.so");
    failing.name = QStringLiteral("Bad");
    failing.error = QStringLiteral("It does not export \"GetBadPluginInfo\".");
    m_window->setPluginReports({running, failing});
    onNextDialog(QStringLiteral("loadedPluginsDialog"), look);
    trigger("loadedPluginsAction");
    QCOMPARE(good.join(QLatin1Char('|')),
             QStringLiteral("Good plug-in|Product|Creator|1.2|Does good.|3|/p/libGood.so|Running"));
    QCOMPARE(bad.join(QLatin1Char('|')),
             QStringLiteral("Bad||||||/p/libBad.so|Left out. It does not export \"GetBadPluginInfo\"."));
    QVERIFY(!saysNone);
}

void TestPluginsOfWindow::utilitiesMenuOfPlugins()
{
    int triggered = 0;
    m_host->appendAction(
        {QStringLiteral("&Plug-in"), QStringLiteral("LORVA_wlc.png"), [&triggered] { ++triggered; }});
    m_window->setPluginReports({});
    QCOMPARE(m_window->utilitiesMenu()->actions().size(), 1);
    m_window->utilitiesMenu()->actions().first()->trigger();
    QCOMPARE(triggered, 1);
    makeWindow();
    m_window->setPluginReports({});
    QVERIFY(!m_window->utilitiesMenu()->actions().first()->isEnabled()); // says that there is none
}

void TestPluginsOfWindow::pluginWindowsMayRefuseToClose()
{
    SurveyListener listener;
    m_host->addListener(&listener);
    auto *other = new StubbornWindow(m_window.get());
    other->show();
    QVERIFY(!m_window->close());
    QCOMPARE(listener.closings, 0);
    QVERIFY(m_window->isVisible());
    QCOMPARE(other->asked, 1);
    QVERIFY(m_window->menuBar()->isVisible() && m_window->statusBar()->isVisible()); // nothing of its own is closed
    other->refuses = false;
    QVERIFY(m_window->close());
    QCOMPARE(listener.closings, 1);
    m_host->removeListener(&listener);
    QVERIFY(!m_window->isVisible());
    QVERIFY(!other->isVisible());
}

void TestPluginsOfWindow::pluginWindowsGoBeforeTheWindow()
{
    QPointer<QDialog> other = new QDialog(m_window.get());
    // What the window still was when they went: its own class, not the bare widget below it.
    QString parentClass;
    bool hadHost = false;
    WorkbenchWindow *window = m_window.get();
    connect(other, &QObject::destroyed, this, [this, window, &parentClass, &hadHost] {
        parentClass = QLatin1String(window->metaObject()->className());
        hadHost = m_host->mainWidget();
    });
    delete window;
    QVERIFY(!other);
    QCOMPARE(parentClass, QStringLiteral("workbench::WorkbenchWindow"));
    QVERIFY(hadHost);
    QVERIFY(!m_host->mainWidget());
    m_window.release(); // NOLINT: deleted above
}

LORVA_TEST_MAIN(TestPluginsOfWindow)
#include "tst_pluginsofwindow.moc"
