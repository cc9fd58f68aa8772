// Hours of work on the demo survey in one process: displays and correlations opened and closed, the plug-in launched, files
// imported, tables edited. At the end of each kind no more memory is in use, and no more files are open, than early on.
//
//     campaign_soak [--count 1000] [--only imports]

#include "demo/demosurvey.h"
#include "options.h"

#include "base/asker.h"
#include "correlation/correlationviewtabwidget.h"
#include "datastore/curvegroups.h"
#include "datastore/defaultlogs.h"
#include "datastore/projectdata.h"
#include "las/wellimportdialog.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "plugin/lorvaosmgr.h"
#include "support/boxdriver.h"
#include "support/testmain.h"
#include "welldata/celledit.h"
#include "welldata/markerdatawidget.h"
#include "welldata/welldatatable.h"
#include "welldata/wellsdatamanagerwidget.h"
#include "workbench/workbenchhost.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenuBar>
#include <QPixmapCache>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>

#include <functional>
#include <malloc.h>
#include <memory>

namespace {

constexpr double allowedGrowth = 1.05;
constexpr int perMille = 1000; ///< of the counts below
constexpr int displays = 2000;
constexpr int correlations = 1000;
constexpr int launches = 500;
constexpr int imports = 200;
constexpr int edits = 10000;
constexpr int warmUp = 12; ///< of short forms

class YesAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        return box.buttons.contains(base::BoxButton::Yes) ? base::BoxButton::Yes : box.buttons.first();
    }
};

struct Use
{
    double bytes = 0; ///< in use
    int files = 0;
    int widgets = 0;
};

Use currentUse()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QPixmapCache::clear();
    ::malloc_trim(0);
    const struct mallinfo2 info = ::mallinfo2();
    Use use;
    use.bytes = static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
    use.files = static_cast<int>(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size());
    use.widgets = static_cast<int>(QApplication::allWidgets().size());
    return use;
}

/// The plug-in's window on a demo survey on the disk.
struct Soaked
{
    explicit Soaked(const QString &survey)
        : host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , menu(window.menuBar()->addMenu(QStringLiteral("&Utilities")))
    {
        window.show();
        host.setWindow(&window, menu);
        host.setSurvey(survey);
        data = std::make_unique<ProjectData>(host, asker);
        data->project.groupNames = curveGroupNames();
        data->project.zoneTypes = zoneTypeNames();
        data->catalogue.build();
        openProject(host, &data->project);
        data->project.halfDotsPerInch = window.logicalDpiX() / 2.0;
        data->project.doubleDotsPerInch = 2 * window.logicalDpiX();
        runDefaultLogsPass(*data);
        main = std::make_unique<MainWindow>(*data);
        main->resize(1400, 900);
        main->show();
        QCoreApplication::processEvents();
    }

    template<class Widget>
    Widget *find(const char *name) const
    {
        auto *found = main->findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    QString well(int number) const { return data->catalogue.wellNames().at(number % data->catalogue.wellCount()); }

    void display(int round) const
    {
        auto *view = main->findChild<WellLogsViewWidget *>();
        find<QTabWidget>("centralTabs")->setCurrentIndex(0);
        view->addWellDisWidget(well(round), round % 2 == 0 ? QStringLiteral("Default") : QStringLiteral("Simple"));
        WellDisplayWidget *shown = view->currentDisplay();
        const QWidget *panel = shown->scene()->panel();
        auto *scale = panel->findChild<QLineEdit *>(QStringLiteral("scaleEdit"));
        scale->setText(QString::number(500 + round % 7 * 250));
        emit scale->editingFinished();
        panel->findChild<QComboBox *>(QStringLiteral("depthTypeBox"))->setCurrentIndex(1);
        panel->findChild<QComboBox *>(QStringLiteral("depthUnitBox"))->setCurrentIndex(1);
        shown->grab();
        shown->deleteTrack(0);
        shown->grab();
        view->tabClose(0);
    }
    void correlation(int) const
    {
        auto *view = main->findChild<CorrelationViewTabWidget *>();
        view->addCorrelation(main->projectTree()->correlationsItem()->child(0));
        view->grab();
        view->closeCorrTab(0);
    }
    void importFile(int round) const
    {
        find<QAction>("importAction")->trigger();
        auto *dialog = main->findChild<WellImportDialog *>();
        const QStringList files =
            QDir(data->host.surveyDirectory() + QStringLiteral("/Import")).entryList({QStringLiteral("*.las")});
        const QString path =
            data->host.surveyDirectory() + QStringLiteral("/Import/") + files.at(round % files.size());
        dialog->chooseFiles = [path](QWidget *, const QString &, const QString &) { return QStringList(path); };
        dialog->findChild<QPushButton *>(QStringLiteral("selectButton"))->click();
        auto *table = dialog->findChild<QTableWidget *>(QStringLiteral("curveTable"));
        for (int row = 0; row < table->rowCount(); ++row) {
            const bool isOne = row == 1;
            if (isOne)
                table->item(row, 3)->setText(QStringLiteral("SOAK"));
            table->item(row, 2)->setCheckState(isOne ? Qt::Checked : Qt::Unchecked);
        }
        dialog->findChild<QPushButton *>(QStringLiteral("importButton"))->click();
        dialog->close();
    }
    void showMarkers(const QString &wellName) const
    {
        auto *manager = main->findChild<WellsDataManagerWidget *>();
        find<QTabWidget>("centralTabs")->setCurrentIndex(2);
        manager->findChild<QTabWidget *>(QStringLiteral("editorTabs"))->setCurrentWidget(manager->markers());
        manager->findChild<QComboBox *>(QStringLiteral("wellBox"))->setCurrentText(wellName);
        QCoreApplication::processEvents();
    }
    void edit(int round) const
    {
        constexpr int editsBetweenStores = 100;
        auto *manager = main->findChild<WellsDataManagerWidget *>();
        MarkerDataWidget *markers = manager->markers();
        if (round % editsBetweenStores == 0)
            showMarkers(well(round / editsBetweenStores));
        auto *line = qobject_cast<CellEdit *>(markers->table()->cellWidget(round % 3, 1));
        if (!line)
            qFatal("no line in the table");
        line->setText(QString::number(1000 + round % 500));
        emit line->editingFinished();
        if (round % editsBetweenStores == editsBetweenStores - 1)
            markers->findChild<QPushButton *>(QStringLiteral("updateButton"))->click();
    }

    YesAsker asker;
    QMainWindow window;
    workbench::WorkbenchHost host;
    QMenu *menu;
    std::unique_ptr<ProjectData> data;
    std::unique_ptr<MainWindow> main;
};

/// Goes round and round; says what grew. \a rest makes the same state for each look.
void soak(
    const char *name, int rounds, campaign::Findings *findings, const std::function<void(int)> &round,
    const std::function<void()> &rest = [] {})
{
    Use early;
    const int tenth = qMax(rounds / 10, qMin(rounds / 2, warmUp)); // caches fill first
    for (int i = 0; i < rounds; ++i) {
        round(i);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        if (i + 1 != tenth)
            continue;
        rest();
        early = currentUse();
    }
    rest();
    const Use late = currentUse();
    std::printf(
        "%s: %d times, %.2f MB after a tenth, %.2f MB at the end (%+.1f bytes a time), %d and %d files open\n", name,
        rounds, early.bytes / 1e6, late.bytes / 1e6, (late.bytes - early.bytes) / qMax(rounds - tenth, 1),
        early.files, late.files);
    std::fflush(stdout);
    if (late.bytes > allowedGrowth * early.bytes)
        findings->add(QString::fromLatin1(name), QStringLiteral("memory grows"));
    if (late.files > early.files)
        findings->add(QString::fromLatin1(name), QStringLiteral("files stay open"));
    if (late.widgets > early.widgets)
        findings->add(QString::fromLatin1(name),
                      QStringLiteral("%1 widgets become %2").arg(early.widgets).arg(late.widgets));
}

void launchMany(const QString &survey, int rounds, campaign::Findings *findings)
{
    QMainWindow window;
    QMenu *menu = window.menuBar()->addMenu(QStringLiteral("&Utilities"));
    window.show();
    workbench::WorkbenchHost host(QStringLiteral(LORVA_SOURCE_DIR "/icons"));
    host.setWindow(&window, menu);
    host.setSurvey(survey);
    const lorvaosMgr manager(host);
    soak("launches", rounds, findings, [menu](int) { menu->actions().constLast()->trigger(); });
}

} // namespace

int main(int argc, char *argv[])
{
    testing_support::prepare();
    QApplication application(argc, argv);
    const campaign::Options options(
        "Uses the plug-in for a long time and looks for what stays behind.",
        "Per mille of the long form: 2,000 displays, 1,000 correlations, 500 launches, 200 imports, "
        "10,000 edits.",
        20);
    testing_support::failOnWarnings();
    const QTemporaryDir folder;
    const QString survey = folder.filePath(QStringLiteral("Demo"));
    const QString problem = demo::makeDemoSurvey(survey);
    if (!problem.isEmpty())
        qFatal("%s", qPrintable(problem));

    campaign::Findings findings;
    const auto isWanted = [&options](const char *name) { return options.only.isEmpty() || options.only == name; };
    const auto times = [&options](int all) { return qMax(all * options.count / perMille, 2 * warmUp); };
    BoxDriver boxes;
    {
        const Soaked soaked(survey);
        if (isWanted("displays"))
            soak("displays", times(displays), &findings, [&](int i) { soaked.display(i); });
        if (isWanted("correlations"))
            soak("correlations", times(correlations), &findings, [&](int i) { soaked.correlation(i); });
        if (isWanted("imports"))
            soak("imports", times(imports), &findings, [&](int i) { soaked.importFile(i); });
        if (isWanted("edits"))
            soak(
                "edits", times(edits), &findings, [&](int i) { soaked.edit(i); },
                [&] { soaked.showMarkers(soaked.well(0)); });
    }
    if (isWanted("launches"))
        launchMany(survey, times(launches), &findings);
    return findings.count() == 0 ? 0 : 1;
}
