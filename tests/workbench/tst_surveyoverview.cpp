#include "support/testmain.h"
#include "workbench/basemap.h"
#include "workbench/messagespanel.h"
#include "workbench/surveyoverview.h"
#include "workbench/wellmanagerdialog.h"
#include "workbench/wellsmodel.h"
#include "workbenchwindowfixture.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSplitter>
#include <QToolButton>

using namespace survey;
using namespace workbench;

class TestSurveyOverview : public WorkbenchWindowTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void showsTheRealSurvey();
    void aWideTableTakesItsPlaceFromTheMap();
    void sortsByNumber();
    void filters();
    void columnsFitInEachSurvey();
    void theBorderFollowsTheSurvey();
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
    void withoutACurrentCellNothingIsCopied();
};

void TestSurveyOverview::showsTheRealSurvey()
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
    QVERIFY(!find<QTableView>("wellsTable")->wordWrap()); // a long name is cut, its row stays as high as the others
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

// With a large font the columns need more than their usual part of the window.
void TestSurveyOverview::aWideTableTakesItsPlaceFromTheMap()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QString(40, QLatin1Char(0x57)), 1000000000, 5);
    survey::SurveyStore store(survey);
    const auto wells = survey::readWellSummaries(store, survey::DepthUnit::Metre).value;
    const auto show = [&wells](SurveyOverview &overview, int width) {
        overview.setWells(wells, survey::DepthUnit::Metre);
        overview.resize(width, 400);
        overview.show();
        return overview.findChild<QTableView *>(QStringLiteral("wellsTable"));
    };
    SurveyOverview wide;
    const int columns = show(wide, 2000)->horizontalHeader()->length();
    SurveyOverview narrow;
    const QTableView *table = show(narrow, columns + 340);
    QVERIFY(columns > narrow.width() * 2 / 3);
    QTRY_VERIFY(table->viewport()->width() >= columns);
    QVERIFY(narrow.findChild<BaseMap *>()->width() >= 290);
    SurveyOverview small;
    QTRY_VERIFY(qAbs(show(small, 600)->parentWidget()->width() - 400) < 10); // the map keeps a third
}

void TestSurveyOverview::withoutACurrentCellNothingIsCopied()
{
    const QString survey = newSurvey(QStringLiteral("Own"));
    QVERIFY(m_window->openSurvey(survey));
    auto *view = find<QTableView>("wellsTable");
    for (int wells = 0; wells < 2; ++wells) {
        view->setCurrentIndex(QModelIndex());
        QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!table()->data(QModelIndex()).isValid());
        if (wells == 0)
            addWell(survey, QStringLiteral("A"), 10, 20);
        trigger("refreshAction");
        QCOMPARE(table()->rowCount(), 1);
    }
}

void TestSurveyOverview::sortsByNumber()
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

void TestSurveyOverview::filters()
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

    // An empty table says why, and the next survey shows its wells.
    auto *hint = find<QTableView>("wellsTable")->findChild<QLabel *>(QStringLiteral("emptyHint"));
    QVERIFY(hint->isVisible());
    QCOMPARE(hint->text(), QStringLiteral("No well has \".*\" in its name."));
    trigger("refreshAction");
    QVERIFY(hint->isVisible());
    find<QLineEdit>("filterEdit")->setText(QStringLiteral("Beta"));
    QVERIFY(!hint->isVisible());
    const QString other = newSurvey(QStringLiteral("T"));
    addWell(other, QStringLiteral("Gamma"), 100, 100);
    QVERIFY(m_window->openSurvey(other));
    QCOMPARE(table()->rowCount(), 1);
    QVERIFY(!hint->isVisible());
}

void TestSurveyOverview::columnsFitInEachSurvey()
{
    m_window->resize(1200, 700);
    auto *view = find<QTableView>("wellsTable");
    int columns = 0;
    for (const char *name : {"S", "T", "U"}) {
        const QString survey = newSurvey(QLatin1String(name));
        QVERIFY(m_window->openSurvey(survey)); // as a new one, without wells
        addWell(survey, QStringLiteral("A"), 1000, 1000);
        trigger("refreshAction");
        QCoreApplication::processEvents();
        QCOMPARE(view->horizontalScrollBar()->maximum(), 0);
        const int width = view->horizontalHeader()->length();
        QVERIFY(columns == 0 || width == columns);
        columns = width;
    }
}

// The border between table and map follows the columns until the user moves it.
void TestSurveyOverview::theBorderFollowsTheSurvey()
{
    auto *view = find<QTableView>("wellsTable");
    auto *splitter = find<QSplitter>("overviewSplitter");
    const auto hasRoom = [&view] { return view->viewport()->width() >= view->horizontalHeader()->length(); };
    const QString narrow = newSurvey(QStringLiteral("N"));
    addWell(narrow, QStringLiteral("A"), 1, 1);
    const QString broad = newSurvey(QStringLiteral("B"));
    addWell(broad, QStringLiteral("A well with a long name"), 123456789, 123456789);
    QVERIFY(m_window->openSurvey(narrow));
    const int columns = view->horizontalHeader()->length();
    QTRY_VERIFY(hasRoom());
    QVERIFY(m_window->openSurvey(broad));
    QVERIFY(view->columnWidth(WellsModel::XColumn) + view->columnWidth(WellsModel::NameColumn) > columns / 3);
    QTRY_VERIFY(view->horizontalHeader()->length() > columns && hasRoom());
    QVERIFY(m_window->openSurvey(narrow));
    m_window->close();
    makeWindow();
    view = find<QTableView>("wellsTable");
    splitter = find<QSplitter>("overviewSplitter");
    QVERIFY(m_window->openSurvey(narrow));
    QVERIFY(m_window->openSurvey(broad)); // in the next session too
    QTRY_VERIFY(hasRoom());
    // Where the user put it, it stays, also in the next session.
    dragBorder(splitter, 120);
    const int placed = splitter->sizes().first();
    QVERIFY(m_window->openSurvey(narrow));
    QCOMPARE(splitter->sizes().first(), placed);
    m_window->close();
    makeWindow();
    QVERIFY(m_window->openSurvey(broad));
    QTRY_COMPARE(find<QSplitter>("overviewSplitter")->sizes().first(), placed);
}

void TestSurveyOverview::selectionGoesBothWays()
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

void TestSurveyOverview::doubleClickOpensTheManagerAtTheWell()
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

void TestSurveyOverview::emptySurveyShowsWhatToDo()
{
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("Empty"))));
    QVERIFY(!isOverviewShown());
    QCOMPARE(find<QLabel>("hintHeading")->text(), QStringLiteral("This survey has no wells yet"));
    QTRY_VERIFY(find<QPushButton>("newWellsActionButton")->isVisible());
    QVERIFY(find<QAction>("manageWellsAction")->isEnabled());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Empty - LORVA Workbench"));
}

void TestSurveyOverview::damagedFilesAreListed()
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

void TestSurveyOverview::unreadableWellsStayInTheTable()
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

void TestSurveyOverview::unreadableListIsToldOnce()
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
void TestSurveyOverview::damageOfTheListStaysTold()
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

void TestSurveyOverview::aCutLogIsTold()
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

void TestSurveyOverview::whatAPluginFindsIsToldAtOnce()
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

void TestSurveyOverview::feetAreCalledFeet()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1, 1);
    const auto title = [this] {
        return table()->headerData(WellsModel::TotalDepthColumn, Qt::Horizontal).toString();
    };
    QVERIFY(m_window->openSurvey(survey));
    QCOMPARE(title(), QStringLiteral("TD (m)"));
    const auto totalDepth = [this] { return table()->index(0, WellsModel::TotalDepthColumn).data().toString(); };
    QCOMPARE(totalDepth(), QStringLiteral("1000.00"));
    QByteArray info = files::read(survey + QStringLiteral("/.survey"));
    files::write(survey + QStringLiteral("/.survey"), info.replace("`D\n", "`F\n"));
    trigger("refreshAction");
    QCOMPARE(title(), QStringLiteral("TD (ft)"));
    QCOMPARE(totalDepth(), QStringLiteral("1000.00")); // what lies in the file
}

LORVA_TEST_MAIN(TestSurveyOverview)
#include "tst_surveyoverview.moc"
