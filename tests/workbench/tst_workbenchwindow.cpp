#include "dialogscript.h"
#include "support/files.h"
#include "support/memoryhost.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "workbench/basemap.h"
#include "workbench/messagespanel.h"
#include "workbench/wellmanagerdialog.h"
#include "workbench/wellsmodel.h"
#include "workbench/windowsettings.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTableWidget>
#include <QToolButton>

using namespace survey;
using namespace workbench;

namespace {

/// Counts what is read of wells.
class CountingHost : public MemoryHost
{
public:
    int lists = 0;
    int headers = 0;
    int logLists = 0;
    int logReads = 0;
    int markerReads = 0;

    host::Outcome<QVector<host::WellEntry>> list() override
    {
        ++lists;
        return MemoryHost::list();
    }
    host::Outcome<host::WellHeader> header(const QString &key) override
    {
        ++headers;
        return MemoryHost::header(key);
    }
    host::Outcome<QVector<host::LogInfo>> logs(const QString &key) override
    {
        ++logLists;
        return MemoryHost::logs(key);
    }
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        ++logReads;
        return MemoryHost::log(key, index);
    }
    host::Outcome<QVector<host::Marker>> markers(const QString &key) override
    {
        ++markerReads;
        return MemoryHost::markers(key);
    }
};

struct SurveyListener : host::Listener
{
    int changes = 0;
    void markersChanged(const QString &) override { }
    void surveyChanged() override { ++changes; }
    void hostClosing() override { ++closings; }
    int closings = 0;
};

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

QStringList rowTexts(const QAbstractItemModel *model, int row)
{
    QStringList texts;
    for (int column = 0; column < model->columnCount(); ++column)
        texts.append(model->index(row, column).data().toString());
    return texts;
}

QStringList columnTexts(const QAbstractItemModel *model, int column)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts.append(model->index(row, column).data().toString());
    return texts;
}

} // namespace

class TestWorkbenchWindow : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void menusAreInOrder();
    void startsWithoutASurvey();
    void showsTheRealSurvey();
    void sortsByNumber();
    void filters();
    void selectionGoesBothWays();
    void doubleClickOpensTheManagerAtTheWell();
    void emptySurveyShowsWhatToDo();
    void damagedFilesAreListed();
    void unreadableWellsStayInTheTable();
    void unreadableListIsToldOnce();
    void damageOfTheListStaysTold();
    void aCutLogIsTold();
    void whatAPluginFindsIsToldAtOnce();
    void feetAreCalledFeet();
    void noSurveyFolderIsRefused_data();
    void noSurveyFolderIsRefused();
    void listenersAreToldOfASwitch();
    void openActionAsksForAFolder();
    void recentSurveys();
    void vanishedRecentSurveyIsTakenOff();
    void reopensTheLastSurvey();
    void newSurveyIsOpened();
    void changesOfTheManagerAreShown();
    void newWellsAreShown();
    void refreshReadsAgain();
    void activationReadsWhatOthersWrote();
    void aboutAndPlugins();
    void utilitiesMenuOfPlugins();
    void pluginWindowsMayRefuseToClose();
    void pluginWindowsGoBeforeTheWindow();
    void rememberItsLook();
    void summariesAreReadInOnePass();
    void modelOfManyWells();
    void modelOfOddNumbers();

private:
    QString copyOfRealSurvey(const QString &name = QStringLiteral("od-survey"))
    {
        const QString shared = files::sharedFolder(QStringLiteral("od-survey"));
        const QString path = m_folder->filePath(name);
        if (!shared.isEmpty())
            files::copyFolder(shared, path);
        return shared.isEmpty() ? QString() : path;
    }
    QString newSurvey(const QString &name)
    {
        NewSurvey survey;
        survey.name = name;
        const QString path = m_folder->filePath(name);
        return createSurvey(path, survey).ok() ? path : QString();
    }
    void addWell(const QString &survey, const QString &name, double x, double y)
    {
        WellProperties well;
        well.name = name;
        well.x = x;
        well.y = y;
        well.totalDepth = 1000;
        QVERIFY(SurveyStore(survey).addWell(well).ok());
    }
    void makeWindow()
    {
        m_window.reset();
        m_host = std::make_unique<WorkbenchHost>(QStringLiteral(LORVA_BINARY_DIR "/share/lorva"));
        const FileChooser chooser{
            [this](QWidget *, const QString &, const QString &) { return m_chosenFolder; },
            [this](QWidget *, const QString &, const QString &, const QString &) { return m_chosenFiles; }};
        m_window = std::make_unique<WorkbenchWindow>(*m_host, m_asker, chooser);
        m_host->setWindow(m_window.get(), m_window->utilitiesMenu());
        QVERIFY(showActive(m_window.get()));
    }
    template<class Widget>
    Widget *find(const char *name) const
    {
        return m_window->findChild<Widget *>(QLatin1String(name));
    }
    void trigger(const char *action) const { find<QAction>(action)->trigger(); }
    QAbstractItemModel *table() const { return find<QTableView>("wellsTable")->model(); }
    bool isOverviewShown() const { return find<QWidget>("surveyOverview")->isVisible(); }
    QStringList recentEntries() const
    {
        QStringList texts;
        for (const QAction *action : find<QMenu>("recentMenu")->actions())
            texts.append(action->text());
        return texts;
    }

    IsolatedSettings m_settings;
    std::unique_ptr<QTemporaryDir> m_folder;
    ScriptedAsker m_asker;
    std::unique_ptr<WorkbenchHost> m_host;
    std::unique_ptr<WorkbenchWindow> m_window;
    QString m_chosenFolder;
    QStringList m_chosenFiles;
};

void TestWorkbenchWindow::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_asker = ScriptedAsker();
    m_chosenFolder.clear();
    m_chosenFiles.clear();
    QSettings(QStringLiteral("LORVA"), QStringLiteral("workbench")).clear();
    makeWindow();
}

void TestWorkbenchWindow::cleanup()
{
    m_window.reset();
    m_host.reset();
}

void TestWorkbenchWindow::menusAreInOrder()
{
    QStringList menus;
    for (const QAction *action : m_window->menuBar()->actions())
        menus.append(action->text());
    QCOMPARE(menus.join(QLatin1Char(' ')), QStringLiteral("&Survey &Wells &Utilities &Help"));
    QStringList entries;
    for (const QAction *action : find<QMenu>("surveyMenu")->actions())
        entries.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    QCOMPARE(entries.join(QLatin1Char('|')), QStringLiteral("&New…|&Open…|Open &Recent|-|&Quit"));
    QCOMPARE(find<QAction>("newSurveyAction")->shortcut(), QKeySequence(QStringLiteral("Ctrl+N")));
    QCOMPARE(find<QAction>("openSurveyAction")->shortcut(), QKeySequence(QStringLiteral("Ctrl+O")));
    QCOMPARE(find<QAction>("quitAction")->shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
    QCOMPARE(find<QAction>("refreshAction")->shortcut(), QKeySequence(QStringLiteral("F5")));
    QCOMPARE(m_window->utilitiesMenu()->objectName(), QStringLiteral("utilitiesMenu"));
    QTest::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!m_window->isVisible());
}

void TestWorkbenchWindow::startsWithoutASurvey()
{
    m_window->openAtStart({});
    QCOMPARE(m_window->windowTitle(), QStringLiteral("LORVA Workbench"));
    QVERIFY(!isOverviewShown());
    QCOMPARE(find<QLabel>("hintHeading")->text(), QStringLiteral("No survey is open"));
    QVERIFY(find<QPushButton>("openSurveyActionButton")->isVisible());
    QVERIFY(!find<QAction>("manageWellsAction")->isEnabled());
    QVERIFY(!m_window->utilitiesMenu()->menuAction()->isEnabled());
    QVERIFY(!find<MessagesPanel>("messagesPanel")->isVisible());
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWorkbenchWindow::showsTheRealSurvey()
{
    const QString survey = copyOfRealSurvey();
    if (survey.isEmpty())
        QSKIP("The folder of real data has no od-survey.");
    const auto before = files::snapshot(survey);
    QVERIFY(m_window->openSurvey(survey + QStringLiteral("/"))); // a separator at the end does not matter
    QCOMPARE(m_host->surveyDirectory(), survey);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Probe survey - LORVA Workbench"));
    QVERIFY(isOverviewShown());
    QCOMPARE(table()->rowCount(), 2);
    QCOMPARE(rowTexts(table(), 0).join(QLatin1Char('|')),
             QStringLiteral("Probe 2/A|504000.25|6005000.50|30.00|2000.00|4|5"));
    QCOMPARE(rowTexts(table(), 1).join(QLatin1Char('|')),
             QStringLiteral("Probe-1|502500.00|6003000.00|25.00|2500.00|4|5"));
    QCOMPARE(table()->index(0, 1).data(Qt::TextAlignmentRole).toInt(),
             static_cast<int>(Qt::AlignRight | Qt::AlignVCenter));
    QCOMPARE(find<BaseMap>("baseMap")->wellPixels().size(), 2);
    QVERIFY(!find<MessagesPanel>("messagesPanel")->isVisible());
    QVERIFY(find<QLabel>("statusLabel")->text().startsWith(QLatin1String("2 wells")));
    QVERIFY(m_window->utilitiesMenu()->menuAction()->isEnabled());
    QVERIFY(m_asker.boxes.isEmpty());
    QCOMPARE(files::snapshot(survey), before); // opening changes nothing
}

void TestWorkbenchWindow::sortsByNumber()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    for (const auto &well : {std::make_pair("b", 900.0), std::make_pair("A", 10000.0), std::make_pair("C", 1000.0)})
        addWell(survey, QLatin1String(well.first), well.second, 5);
    QVERIFY(m_window->openSurvey(survey));
    QCOMPARE(columnTexts(table(), 0).join(QLatin1Char(' ')), QStringLiteral("A b C")); // as the host sorts names
    find<QTableView>("wellsTable")->sortByColumn(WellsModel::XColumn, Qt::AscendingOrder);
    QCOMPARE(columnTexts(table(), 0).join(QLatin1Char(' ')), QStringLiteral("b C A"));
    find<QTableView>("wellsTable")->sortByColumn(WellsModel::XColumn, Qt::DescendingOrder);
    QCOMPARE(columnTexts(table(), 0).join(QLatin1Char(' ')), QStringLiteral("A C b"));
    // The map still counts wells in the host's order.
    QSignalSpy clicked(find<BaseMap>("baseMap"), &BaseMap::wellClicked);
    auto *map = find<BaseMap>("baseMap");
    QTest::mouseClick(map, Qt::LeftButton, {}, map->wellPixels().at(0).toPoint());
    QCOMPARE(find<QTableView>("wellsTable")->currentIndex().siblingAtColumn(0).data().toString(),
             QStringLiteral("A"));
}

void TestWorkbenchWindow::filters()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    for (const char *name : {"Alpha 1", "Alpha 2", "Beta"})
        addWell(survey, QLatin1String(name), 100, 100);
    QVERIFY(m_window->openSurvey(survey));
    QTest::keyClick(find<QTableView>("wellsTable"), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(find<QLineEdit>("filterEdit")));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("alpha"));
    QCOMPARE(table()->rowCount(), 2);
    find<QLineEdit>("filterEdit")->setText(QStringLiteral(".*")); // a text, no pattern
    QCOMPARE(table()->rowCount(), 0);
}

void TestWorkbenchWindow::selectionGoesBothWays()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1000, 1000);
    addWell(survey, QStringLiteral("B"), 5000, 3000);
    QVERIFY(m_window->openSurvey(survey));
    auto *view = find<QTableView>("wellsTable");
    auto *map = find<BaseMap>("baseMap");
    QCOMPARE(map->selectedWell(), -1);
    QTest::mouseClick(map, Qt::LeftButton, {}, map->wellPixels().at(1).toPoint());
    QCOMPARE(view->selectionModel()->selectedRows().first().data().toString(), QStringLiteral("B"));
    QCOMPARE(map->selectedWell(), 1);
    QTest::keyClick(view, Qt::Key_Up);
    QCOMPARE(map->selectedWell(), 0);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(table()->index(1, 3)).center());
    QCOMPARE(map->selectedWell(), 1);
    // A well that a filter hides is shown again when the map is clicked.
    find<QLineEdit>("filterEdit")->setText(QStringLiteral("B"));
    QTest::mouseClick(map, Qt::LeftButton, {}, map->wellPixels().at(0).toPoint());
    QCOMPARE(view->currentIndex().siblingAtColumn(0).data().toString(), QStringLiteral("A"));
    // Reading again keeps the selection.
    trigger("refreshAction");
    QCOMPARE(map->selectedWell(), 0);
}

void TestWorkbenchWindow::doubleClickOpensTheManagerAtTheWell()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1000, 1000);
    addWell(survey, QStringLiteral("B"), 5000, 3000);
    QVERIFY(m_window->openSurvey(survey));
    QString key;
    onNextDialog(QStringLiteral("wellManagerDialog"), [&key](QDialog *dialog) {
        key = static_cast<WellManagerDialog *>(dialog)->currentWellKey();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    auto *view = find<QTableView>("wellsTable");
    view->setCurrentIndex(table()->index(1, 0));
    QTest::keyClick(view, Qt::Key_Return);
    QCOMPARE(key, QStringLiteral("100050.3"));
}

void TestWorkbenchWindow::emptySurveyShowsWhatToDo()
{
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("Empty"))));
    QVERIFY(!isOverviewShown());
    QCOMPARE(find<QLabel>("hintHeading")->text(), QStringLiteral("This survey has no wells yet"));
    QTRY_VERIFY(find<QPushButton>("newWellsActionButton")->isVisible());
    QVERIFY(find<QAction>("manageWellsAction")->isEnabled());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Empty - LORVA Workbench"));
}

void TestWorkbenchWindow::damagedFilesAreListed()
{
    const QString survey = copyOfRealSurvey();
    if (survey.isEmpty())
        QSKIP("The folder of real data has no od-survey.");
    files::write(survey + QStringLiteral("/WellInfo/Probe-1^2.wll"), "rubbish");
    QVERIFY(m_window->openSurvey(survey));
    auto *panel = find<MessagesPanel>("messagesPanel");
    QVERIFY(panel->isVisible());
    QCOMPARE(panel->messages().size(), 1);
    QVERIFY(panel->messages().first().contains(QLatin1String("Probe-1^2.wll")));
    QCOMPARE(table()->index(1, WellsModel::LogsColumn).data().toString(), QStringLiteral("3"));
    // It folds away and comes back.
    auto *title = find<QToolButton>("messagesTitle");
    QVERIFY(title->text().startsWith(QLatin1String("1 message")));
    QTest::mouseClick(title, Qt::LeftButton);
    QVERIFY(!find<QListWidget>("messagesList")->isVisible());
    QTest::mouseClick(title, Qt::LeftButton);
    QVERIFY(find<QListWidget>("messagesList")->isVisible());
    // Repaired and read again: gone.
    QVERIFY(QFile::remove(survey + QStringLiteral("/WellInfo/Probe-1^4.wll")));
    QVERIFY(QFile::remove(survey + QStringLiteral("/WellInfo/Probe-1^3.wll")));
    QVERIFY(QFile::remove(survey + QStringLiteral("/WellInfo/Probe-1^2.wll")));
    trigger("refreshAction");
    QVERIFY(!panel->isVisible());
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWorkbenchWindow::unreadableWellsStayInTheTable()
{
    const QString survey = copyOfRealSurvey();
    if (survey.isEmpty())
        QSKIP("The folder of real data has no od-survey.");
    QVERIFY(QFile::remove(survey + QStringLiteral("/WellInfo/Probe-1.well")));
    QVERIFY(m_window->openSurvey(survey));
    QCOMPARE(table()->rowCount(), 2);
    QCOMPARE(rowTexts(table(), 1).join(QLatin1Char('|')), QStringLiteral("Probe-1|?|?|?|?|4|?"));
    QVERIFY(table()->index(1, 0).data(Qt::ToolTipRole).toString().contains(QLatin1String("Probe-1.well")));
    QVERIFY(find<MessagesPanel>("messagesPanel")->messages().first().contains(QLatin1String("Probe-1.well")));
    for (Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        find<QTableView>("wellsTable")->sortByColumn(WellsModel::XColumn, order);
        QCOMPARE(table()->rowCount(), 2);
    }
}

void TestWorkbenchWindow::unreadableListIsToldOnce()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    files::write(survey + QStringLiteral("/WellInfo/.omf"), "rubbish");
    QVERIFY(m_window->openSurvey(survey));
    QCOMPARE(m_asker.boxes.size(), 1);
    QVERIFY(m_asker.boxes.first().text.contains(survey + QStringLiteral("/WellInfo/.omf")));
    QCOMPARE(find<MessagesPanel>("messagesPanel")->messages(), QStringList{m_asker.boxes.first().text});
    QCOMPARE(find<QLabel>("hintText")->text(), m_asker.boxes.first().text);
    trigger("refreshAction");
    QCOMPARE(m_asker.boxes.size(), 1);
    QVERIFY(m_window->openSurvey(survey)); // opened anew: told anew
    QCOMPARE(m_asker.boxes.size(), 2);
}

// The list can be read but for an entry: it is told as long as the list is what it is.
void TestWorkbenchWindow::damageOfTheListStaysTold()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1, 1);
    const QString list = survey + QStringLiteral("/WellInfo/.omf");
    const QByteArray whole = files::read(list);
    files::write(list, whole + "Lost\nWell: dGB`Stream\n!\n");
    QTest::qWait(20); // a file whose time is settled is not read again
    QVERIFY(m_window->openSurvey(survey));
    const auto *panel = find<MessagesPanel>("messagesPanel");
    const QStringList told = panel->messages();
    QCOMPARE(told.size(), 1);
    QVERIFY(told.first().contains(list) && told.first().contains(QLatin1String("Lost")));
    for (int i = 0; i < 2; ++i) {
        QTest::keyClick(m_window.get(), Qt::Key_F5);
        QCOMPARE(panel->messages(), told);
    }
    QVERIFY(QFile::remove(list));
    files::write(list, whole);
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QVERIFY(panel->messages().isEmpty());
}

void TestWorkbenchWindow::aCutLogIsTold()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1, 1);
    {
        SurveyStore store(survey);
        QVERIFY(
            store.writeLog(store.list().value.first().key, {QStringLiteral("GR"), {}, {1, 2, 3}, {4, 5, 6}}).ok());
    }
    const QString file = survey + QStringLiteral("/WellInfo/A^1.wll");
    const QByteArray whole = files::read(file);
    files::write(file, whole.left(whole.size() - 3));
    QVERIFY(m_window->openSurvey(survey)); // which reads no samples
    const auto *panel = find<MessagesPanel>("messagesPanel");
    QCOMPARE(panel->messages(), QStringList{file + QStringLiteral(": its last sample is cut off.")});
}

void TestWorkbenchWindow::whatAPluginFindsIsToldAtOnce()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1, 1);
    const QString file = survey + QStringLiteral("/WellInfo/A^1.wll");
    const QByteArray header =
        "dTect V6.6\nWell Log\nFri 20 Nov 2026, 17:09:32\n!\nName: GR\nStorage type: Ascii\n!\n";
    files::write(file, header + "1 2\n3 four\n");
    QVERIFY(m_window->openSurvey(survey));
    const auto *panel = find<MessagesPanel>("messagesPanel");
    QVERIFY(panel->messages().isEmpty()); // only its samples are damaged
    const QString key = m_host->wells().list().value.first().key;
    QVERIFY(m_host->wells().log(key, 0).ok());
    QTRY_VERIFY(panel->isVisible());
    const QStringList told = panel->messages();
    QCOMPARE(told.size(), 1);
    QVERIFY(told.first().startsWith(file));
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QCOMPARE(panel->messages(), told);
    // Repaired, or left with its survey: gone.
    QVERIFY(QFile::remove(file));
    files::write(file, header + "1 2\n3 4\n");
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QVERIFY(panel->messages().isEmpty());
    QVERIFY(QFile::remove(file));
    files::write(file, header + "1 2\n3 four\n");
    QVERIFY(m_host->wells().log(key, 0).ok());
    QTRY_VERIFY(!panel->messages().isEmpty());
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("Other"))));
    QVERIFY(panel->messages().isEmpty());
}

void TestWorkbenchWindow::feetAreCalledFeet()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1, 1);
    const auto title = [this] {
        return table()->headerData(WellsModel::TotalDepthColumn, Qt::Horizontal).toString();
    };
    QVERIFY(m_window->openSurvey(survey));
    QCOMPARE(title(), QStringLiteral("TD"));
    const auto totalDepth = [this] { return table()->index(0, WellsModel::TotalDepthColumn).data().toString(); };
    QCOMPARE(totalDepth(), QStringLiteral("1000.00"));
    QByteArray info = files::read(survey + QStringLiteral("/.survey"));
    files::write(survey + QStringLiteral("/.survey"), info.replace("`D\n", "`F\n"));
    trigger("refreshAction");
    QCOMPARE(title(), QStringLiteral("TD (ft)"));
    QCOMPARE(totalDepth(), QStringLiteral("1000.00")); // what lies in the file
}

void TestWorkbenchWindow::noSurveyFolderIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("missing") << "missing"
                             << "The folder %1 does not exist.";
    QTest::newRow("file") << "file"
                          << "%1 is not a folder.";
    QTest::newRow("plain folder") << "plain"
                                  << "The folder %1 is no survey: it holds no file \".omf\".";
    QTest::newRow("data root") << "root"
                               << "The folder %1 is no survey: it holds no file \".survey\".";
}

void TestWorkbenchWindow::noSurveyFolderIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, sentence);
    files::write(m_folder->filePath(QStringLiteral("file")), "x");
    files::write(m_folder->filePath(QStringLiteral("plain/x")), "x");
    files::write(m_folder->filePath(QStringLiteral("root/.omf")), "x");
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1, 1);
    QVERIFY(m_window->openSurvey(survey));
    SurveyListener listener;
    m_host->addListener(&listener);
    QVERIFY(!m_window->openSurvey(m_folder->filePath(path)));
    QCOMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(m_asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(m_asker.boxes.first().text, sentence.arg(m_folder->filePath(path)));
    // The old survey stays open, and the bad folder is not remembered.
    QCOMPARE(listener.changes, 0);
    QCOMPARE(m_host->surveyDirectory(), survey);
    QCOMPARE(table()->rowCount(), 1);
    QCOMPARE(settings::recentSurveys(), QStringList{survey});
    m_host->removeListener(&listener);
}

void TestWorkbenchWindow::listenersAreToldOfASwitch()
{
    SurveyListener listener;
    m_host->addListener(&listener);
    const QString first = newSurvey(QStringLiteral("First"));
    addWell(first, QStringLiteral("A"), 1, 1);
    QVERIFY(m_window->openSurvey(first));
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("Second"))));
    QCOMPARE(listener.changes, 2);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Second - LORVA Workbench"));
    QVERIFY(!isOverviewShown());
    QCOMPARE(table()->rowCount(), 0);
    m_host->removeListener(&listener);
}

void TestWorkbenchWindow::openActionAsksForAFolder()
{
    trigger("openSurveyAction"); // given up
    QVERIFY(!m_window->hasSurvey());
    QVERIFY(m_asker.boxes.isEmpty());
    m_chosenFolder = newSurvey(QStringLiteral("S"));
    QTest::keyClick(m_window.get(), Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(m_host->surveyDirectory(), m_chosenFolder);
}

void TestWorkbenchWindow::recentSurveys()
{
    QCOMPARE(recentEntries(), QStringList{QStringLiteral("No survey yet")});
    QStringList surveys;
    for (int i = 0; i < 10; ++i) {
        surveys.prepend(newSurvey(QStringLiteral("S&%1").arg(i)));
        QVERIFY(m_window->openSurvey(surveys.first()));
    }
    QCOMPARE(settings::recentSurveys(), QStringList(surveys.mid(0, 8)));
    QCOMPARE(recentEntries().size(), 8);
    QCOMPARE(recentEntries().first(),
             QStringLiteral("&1  ") + QString(surveys.first()).replace(QLatin1Char('&'), QLatin1String("&&")));
    trigger("recentSurvey4");
    QTRY_COMPARE(m_host->surveyDirectory(), surveys.at(3));
    QCOMPARE(settings::recentSurveys().first(), surveys.at(3));
    QCOMPARE(settings::recentSurveys().size(), 8);
    QCOMPARE(settings::recentSurveys().count(surveys.at(3)), 1);
}

void TestWorkbenchWindow::vanishedRecentSurveyIsTakenOff()
{
    const QString gone = newSurvey(QStringLiteral("Gone"));
    const QString there = newSurvey(QStringLiteral("There"));
    QVERIFY(m_window->openSurvey(gone));
    QVERIFY(m_window->openSurvey(there));
    QVERIFY(QDir(gone).removeRecursively());
    trigger("recentSurvey2");
    QTRY_COMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(m_asker.boxes.first().text,
             QStringLiteral("The folder %1 does not exist any more. It is taken off the list of recent surveys.")
                 .arg(gone));
    QCOMPARE(settings::recentSurveys(), QStringList{there});
    QCOMPARE(recentEntries().size(), 1);
    QCOMPARE(m_host->surveyDirectory(), there);
}

void TestWorkbenchWindow::reopensTheLastSurvey()
{
    const QString survey = newSurvey(QStringLiteral("Last"));
    const QString given = newSurvey(QStringLiteral("Given"));
    QVERIFY(m_window->openSurvey(survey));
    makeWindow();
    QVERIFY(!m_window->hasSurvey());
    m_window->openAtStart({});
    QCOMPARE(m_host->surveyDirectory(), survey);
    makeWindow();
    m_window->openAtStart(given);
    QCOMPARE(m_host->surveyDirectory(), given);
    QVERIFY(QDir(given).removeRecursively());
    makeWindow();
    m_window->openAtStart({}); // vanished: no box, no survey
    QVERIFY(!m_window->hasSurvey());
    QVERIFY(m_asker.boxes.isEmpty());
    m_window->openAtStart(given); // asked for: told
    QCOMPARE(m_asker.boxes.size(), 1);
}

void TestWorkbenchWindow::newSurveyIsOpened()
{
    onNextDialog(QStringLiteral("newSurveyDialog"), [this](QDialog *dialog) {
        dialog->findChild<QLineEdit *>(QStringLiteral("rootEdit"))->setText(m_folder->path());
        QTest::keyClicks(dialog->findChild<QLineEdit *>(QStringLiteral("nameEdit")), QStringLiteral("Brand new"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QTest::keyClick(m_window.get(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(m_host->surveyDirectory(), m_folder->filePath(QStringLiteral("Brand_new")));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Brand new - LORVA Workbench"));
    QCOMPARE(settings::recentSurveys().size(), 1);
}

void TestWorkbenchWindow::changesOfTheManagerAreShown()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1000, 1000);
    addWell(survey, QStringLiteral("B"), 5000, 3000);
    QVERIFY(m_window->openSurvey(survey));
    m_asker.answers = {base::BoxButton::Yes};
    onNextDialog(QStringLiteral("wellManagerDialog"), [](QDialog *dialog) {
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("deleteWellButton")), Qt::LeftButton);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    trigger("manageWellsAction");
    QCOMPARE(columnTexts(table(), 0), QStringList{QStringLiteral("B")});
    QCOMPARE(find<BaseMap>("baseMap")->wellPixels().size(), 1);
}

void TestWorkbenchWindow::newWellsAreShown()
{
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("S"))));
    trigger("newWellsAction"); // given up in the file dialog: no dialog at all
    m_chosenFiles = QStringList{m_folder->filePath(QStringLiteral("a.las"))};
    files::write(m_chosenFiles.first(), "~V\nVERS. 2.0 :\n~W\nWELL. Fresh :\nSTOP.M 1500 :\n~A\n");
    onNextDialog(QStringLiteral("newWellsDialog"), [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    QTest::mouseClick(find<QPushButton>("newWellsActionButton"), Qt::LeftButton);
    QVERIFY(isOverviewShown());
    QCOMPARE(rowTexts(table(), 0).join(QLatin1Char('|')), QStringLiteral("Fresh|0.00|0.00|0.00|1500.00|0|0"));
    QCOMPARE(m_asker.boxes.size(), 1);
}

void TestWorkbenchWindow::refreshReadsAgain()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    QVERIFY(m_window->openSurvey(survey));
    addWell(survey, QStringLiteral("A"), 1000, 1000);
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QCOMPARE(table()->rowCount(), 1);
    QVERIFY(isOverviewShown());
}

void TestWorkbenchWindow::activationReadsWhatOthersWrote()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1000, 1000);
    QVERIFY(m_window->openSurvey(survey));
    QDialog pluginWindow(m_window.get());
    QVERIFY(showActive(&pluginWindow));
    QTest::qWait(20); // a file time of its own
    addWell(survey, QStringLiteral("B"), 2000, 1000);
    QCOMPARE(table()->rowCount(), 1);
    pluginWindow.close();
    m_window->activateWindow();
    QTRY_COMPARE(table()->rowCount(), 2);
}

void TestWorkbenchWindow::aboutAndPlugins()
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
        saysNone = dialog->findChild<QLabel *>(QStringLiteral("noPluginsLabel"));
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

void TestWorkbenchWindow::utilitiesMenuOfPlugins()
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

void TestWorkbenchWindow::pluginWindowsMayRefuseToClose()
{
    SurveyListener listener;
    m_host->addListener(&listener);
    auto *other = new StubbornWindow(m_window.get());
    other->show();
    QVERIFY(!m_window->close());
    QCOMPARE(listener.closings, 0);
    QVERIFY(m_window->isVisible());
    QCOMPARE(other->asked, 1);
    other->refuses = false;
    QVERIFY(m_window->close());
    QCOMPARE(listener.closings, 1);
    m_host->removeListener(&listener);
    QVERIFY(!m_window->isVisible());
    QVERIFY(!other->isVisible());
}

void TestWorkbenchWindow::pluginWindowsGoBeforeTheWindow()
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

void TestWorkbenchWindow::rememberItsLook()
{
    const QString survey = copyOfRealSurvey();
    if (survey.isEmpty())
        QSKIP("The folder of real data has no od-survey.");
    QVERIFY(m_window->openSurvey(survey));
    m_window->resize(777, 555);
    auto *splitter = find<QWidget>("overviewSplitter");
    QCOMPARE(splitter->metaObject()->className(), "QSplitter");
    find<MessagesPanel>("messagesPanel")->setUnfolded(false);
    const int mapWidth = find<BaseMap>("baseMap")->width();
    QVERIFY(m_window->close());
    makeWindow();
    QCOMPARE(m_window->size(), QSize(777, 555));
    QVERIFY(!find<MessagesPanel>("messagesPanel")->isUnfolded());
    QVERIFY(m_window->openSurvey(survey));
    QTRY_COMPARE(find<BaseMap>("baseMap")->width(), mapWidth);
}

void TestWorkbenchWindow::summariesAreReadInOnePass()
{
    CountingHost wells;
    for (int i = 0; i < 2000; ++i) {
        host::WellHeader header;
        header.name = QStringLiteral("Well %1").arg(i, 4, 10, QLatin1Char('0'));
        header.x = 1000 + i;
        header.kbElevation = i == 0 ? host::undefinedValue : 25;
        const QString key = wells.addWell(header);
        host::LogData log;
        log.name = QStringLiteral("GR");
        wells.find(key)->logs.append(log);
    }
    wells.storedWells[5].isUnreadable = true;
    const host::Outcome<QVector<WellSummary>> summaries = readWellSummaries(wells);
    QCOMPARE(summaries.value.size(), 2000);
    QCOMPARE(wells.lists, 1);
    QCOMPARE(wells.headers, 2000);
    QCOMPARE(wells.logLists, 2000);
    QCOMPARE(wells.markerReads, 2000);
    QCOMPARE(wells.logReads, 0);
    QVERIFY(std::isnan(summaries.value.at(0).kbElevation));
    QCOMPARE(summaries.value.at(1).logCount, 1);
    QVERIFY(!summaries.value.at(5).error.isEmpty());
    QCOMPARE(summaries.value.at(5).logCount, WellSummary::unknownCount);
    wells.listFails = true;
    QVERIFY(!readWellSummaries(wells).ok());

    // Showing, sorting and selecting read nothing more.
    const int reads = wells.headers + wells.logLists + wells.markerReads;
    WellsModel model;
    model.setWells(summaries.value);
    QTableView view;
    view.setModel(&model);
    view.show();
    view.scrollToBottom();
    QCOMPARE(wells.headers + wells.logLists + wells.markerReads, reads);
}

void TestWorkbenchWindow::modelOfManyWells()
{
    QVector<WellSummary> wells(2000);
    for (int i = 0; i < wells.size(); ++i) {
        wells[i].key = QString::number(i);
        wells[i].name = QStringLiteral("Well %1").arg(i);
        wells[i].x = (i * 7919) % 2000;
    }
    WellsModel model;
    QSignalSpy reset(&model, &WellsModel::modelReset);
    QSignalSpy inserted(&model, &WellsModel::rowsInserted);
    model.setWells(wells);
    QCOMPARE(reset.size(), 1); // one step, not one per well
    QCOMPARE(inserted.size(), 0);
    QCOMPARE(model.rowCount(), 2000);
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.rowOf(QStringLiteral("1999")), 1999);
    QCOMPARE(model.rowOf(QStringLiteral("2000")), -1);
}

void TestWorkbenchWindow::modelOfOddNumbers()
{
    WellSummary well;
    well.name = QStringLiteral("<b>A</b>");
    well.x = -0.001;
    well.y = 1e300;
    well.kbElevation = std::numeric_limits<double>::infinity();
    well.totalDepth = 1234.567;
    well.logCount = 1000;
    well.error = QStringLiteral("<i>");
    WellsModel model;
    model.setWells({well});
    QCOMPARE(rowTexts(&model, 0).join(QLatin1Char('|')), QStringLiteral("<b>A</b>|0.00|1e+300|?|1234.57|1000|?"));
    QVERIFY(!model.index(0, WellsModel::MarkersColumn).data(WellsModel::sortRole).isValid());
    QCOMPARE(model.index(0, WellsModel::LogsColumn).data(WellsModel::sortRole).toDouble(), 1000.0);
}

LORVA_TEST_MAIN(TestWorkbenchWindow)
#include "tst_workbenchwindow.moc"
