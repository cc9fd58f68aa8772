// What a newcomer sees at the first start: the plug-in's window with a well and a correlation open.

#include "demo/demosurvey.h"
#include "programs/guidedtour.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QAction>
#include <QDir>
#include <QGraphicsView>
#include <QMainWindow>
#include <QMenu>
#include <QScrollBar>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace workbench;

namespace {

struct Program
{
    explicit Program(const QString &survey, bool hasPlugin = true)
        : host(QStringLiteral(LORVA_BINARY_DIR "/share/lorva"))
        , window(host, asker, dialogFileChooser())
    {
        host.setWindow(&window, window.utilitiesMenu());
        window.show();
        if (hasPlugin)
            loader.loadAll({QStringLiteral(LORVA_BINARY_DIR "/lib/lorva/plugins")});
        window.setPluginReports(loader.reports());
        window.openAtStart(survey);
    }
    QMainWindow *pluginWindow() const
    {
        for (auto *child : window.findChildren<QMainWindow *>(QString(), Qt::FindDirectChildrenOnly))
            return child;
        return nullptr;
    }
    // The texts of the tabs of one of the work areas.
    QStringList tabs(const char *area) const
    {
        const auto *widget = pluginWindow()->findChild<QWidget *>(QString::fromLatin1(area));
        auto *tabWidget = widget ? qobject_cast<const QTabWidget *>(widget) : nullptr;
        if (widget && !tabWidget)
            tabWidget = widget->findChild<QTabWidget *>();
        QStringList texts;
        for (int i = 0; tabWidget && i < tabWidget->count(); ++i)
            texts.append(tabWidget->tabText(i));
        return texts;
    }

    WorkbenchHost host;
    ScriptedAsker asker;
    PluginLoader loader;
    WorkbenchWindow window;
};

} // namespace

class tst_guidedtour : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_root.filePath("settings"));
        QCOMPARE(demo::makeDemoSurvey(m_root.filePath("Demo")), QString());
    }

    void aWellAndACorrelationAreOpen()
    {
        BoxDriver boxes;
        const Program program(m_root.filePath("Demo"));
        programs::showTour(program.window);
        const QMainWindow *window = program.pluginWindow();
        QVERIFY(window && window->isVisible());
        QCOMPARE(program.tabs("WellLogsViewWidget"), QStringList("Aldra-1:Petrophysics"));
        QCOMPARE(program.tabs("CorrelationViewTabWidget"), QStringList("Kestrane reservoir"));
        QCOMPARE(window->findChild<QTabWidget *>("centralTabs")->currentIndex(), 0);
        const auto *tree = window->findChild<QTreeWidget *>("ProjectTreeWidget");
        QCOMPARE(tree->topLevelItem(0)->child(0)->checkState(0), Qt::Checked);
        QVERIFY(tree->topLevelItem(0)->child(0)->isExpanded());
        QCOMPARE(tree->currentItem(), tree->topLevelItem(0)->child(0));
        QVERIFY(tree->visualItemRect(tree->currentItem()).top() >= 0);
        const QScrollBar *bar = window->findChild<QGraphicsView *>("logView")->verticalScrollBar();
        QVERIFY(bar->maximum() > 0 && bar->value() == static_cast<int>(bar->maximum() * 0.8));
        // Aldra-1 is 2610 m deep, at 1:1000; the deepest well would have 0.8 below all of it.
        const auto *correlation = window->findChild<QGraphicsView *>("correlationView");
        const double middle = correlation->mapToScene(0, correlation->viewport()->height() / 2).y();
        QVERIFY2(qAbs(middle / 96 * 25.4 - 0.8 * 2610) < 3, qPrintable(QString::number(middle)));
        QVERIFY(boxes.seen.isEmpty());
        QVERIFY(program.asker.boxes.isEmpty());
    }

    void whatTheSurveyHasNotIsLeftOut()
    {
        BoxDriver boxes;
        const QString empty = m_root.filePath("Empty");
        QCOMPARE(survey::createSurvey(empty, {}).error, QString());
        const Program program(empty);
        programs::showTour(program.window);
        QVERIFY(program.pluginWindow() && program.pluginWindow()->isVisible());
        QCOMPARE(program.tabs("WellLogsViewWidget"), QStringList());
        QVERIFY(boxes.seen.isEmpty());
    }

    void withoutTheTemplateTheDefaultOneShows()
    {
        const QString survey = m_root.filePath("Plain");
        files::copyFolder(m_root.filePath("Demo"), survey);
        QVERIFY(QDir(survey + "/WLC/Templates/Global/Petrophysics").removeRecursively());
        QVERIFY(QDir(survey + "/WLC/Correlations/Kestrane reservoir").removeRecursively());
        const Program program(survey);
        programs::showTour(program.window);
        QCOMPARE(program.tabs("WellLogsViewWidget"), QStringList("Aldra-1:Default"));
        QCOMPARE(program.tabs("CorrelationViewTabWidget"), QStringList());
    }

    void withoutSurveyOrPluginNothingHappens()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_root.filePath("other"));
        const Program none{QString()};
        QVERIFY(!none.window.hasSurvey());
        programs::showTour(none.window);
        QVERIFY(!none.pluginWindow());
        const Program bare(m_root.filePath("Demo"), false);
        programs::showTour(bare.window);
        QVERIFY(!bare.pluginWindow());
    }

private:
    QTemporaryDir m_root;
};

LORVA_TEST_MAIN(tst_guidedtour)
#include "tst_guidedtour.moc"
