#include "support/testmain.h"
#include "support/unprivileged.h"
#include "workbench/basemap.h"
#include "workbench/messagespanel.h"
#include "workbench/wellmanagerdialog.h"
#include "workbenchwindowfixture.h"

#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>

using namespace survey;
using namespace workbench;

class TestWorkbenchWindow : public WorkbenchWindowTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void menusAreInOrder();
    void startsWithoutASurvey();
    void fitsTheScreen();
    void theDemoSurveyIsMadeOnce();
    void noSurveyFolderIsRefused_data();
    void noSurveyFolderIsRefused();
    void listenersAreToldOfASwitch();
    void openActionAsksForAFolder();
    void recentSurveys();
    void longPathsOfRecentSurveysAreShortened();
    void vanishedRecentSurveyIsTakenOff();
    void reopensTheLastSurvey();
    void newSurveyIsOpened();
    void changesOfTheManagerAreShown();
    void newWellsAreShown();
    void topsOfFilesAreImported();
    void refreshReadsAgain();
    void aReadOnlySurveyIsToldFromOthers();
    void activationReadsWhatOthersWrote();
    void rememberItsLook();
};

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

// Its buttons can be reached at the first start too. The screen of the offscreen platform is narrower than the window.
void TestWorkbenchWindow::fitsTheScreen()
{
    const QSize screen = m_window->screen()->availableSize();
    QVERIFY(screen.width() < 1280 || QGuiApplication::platformName() != QLatin1String("offscreen"));
    QVERIFY(m_startSize.width() <= qMin(screen.width() - 8, 1280));
    QVERIFY(m_startSize.height() <= qMin(screen.height(), 720) && m_startSize.height() > 500);
}

// The first one who comes has a survey to look at with one click.
void TestWorkbenchWindow::theDemoSurveyIsMadeOnce()
{
    QVERIFY(!find<QAction>("demoSurveyAction"));
    const QString folder = m_folder->filePath(QStringLiteral("share/Demo"));
    int made = 0;
    QString problem = QStringLiteral("The disk is full.");
    m_window->setDemoSurvey(folder, [&](const QString &path) {
        ++made;
        if (problem.isEmpty())
            [&] { QVERIFY(survey::createSurvey(path, {}).ok()); }();
        return problem;
    });
    QStringList entries;
    for (const QAction *action : find<QMenu>("surveyMenu")->actions())
        entries.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    QCOMPARE(entries.join(QLatin1Char('|')), QStringLiteral("&New…|&Open…|&Demo survey|Open &Recent|-|&Quit"));
    auto *button = find<QPushButton>("demoSurveyActionButton");
    QVERIFY(button);
    QTRY_VERIFY(button->isVisible());
    QVERIFY(find<QLabel>("hintText")->text().contains(QLatin1String("demo survey")));
    button->click();
    QCOMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(m_asker.boxes.first().text, problem);
    QVERIFY(!m_window->hasSurvey());
    problem.clear();
    button->click();
    QCOMPARE(m_host->surveyDirectory(), folder);
    QCOMPARE(made, 2);
    find<QAction>("demoSurveyAction")->trigger();
    QCOMPARE(made, 2); // it is there
    QCOMPARE(m_asker.boxes.size(), 1);
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

void TestWorkbenchWindow::longPathsOfRecentSurveysAreShortened()
{
    const QString parent = m_folder->filePath(QStringLiteral("disk"));
    QVERIFY(QDir().mkpath(parent + QLatin1Char('/') + QString(200, u'x')));
    const QString survey = newSurvey(QStringLiteral("disk/") + QString(200, u'x') + QStringLiteral("/Field & <b>"));
    QVERIFY(m_window->openSurvey(survey));
    const QString entry = recentEntries().first();
    QVERIFY2(entry.startsWith(QLatin1String("&1  /")) && entry.endsWith(QLatin1String("/Field && <b>")),
             qPrintable(entry));
    const QMenu *menu = find<QMenu>("recentMenu");
    const int width = menu->fontMetrics().horizontalAdvance(entry);
    QVERIFY2(width > 550 && width < 660, qPrintable(QString::number(width)));
    QVERIFY(menu->toolTipsVisible());
    QVERIFY(
        menu->actions().first()->toolTip().contains(QString(200, u'x') + QStringLiteral("/Field &amp; &lt;b&gt;")));
    trigger("recentSurvey1");
    QTRY_COMPARE(m_host->surveyDirectory(), survey);
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
    const auto create = [](QDialog *dialog) {
        onNextDialog(QStringLiteral("reportDialog"),
                     [](QDialog *report) { QTest::keyClick(report, Qt::Key_Escape); });
        QTest::keyClick(dialog, Qt::Key_Return);
    };
    const auto isRead = [](QDialog *dialog) {
        return dialog->findChild<QPushButton *>(QStringLiteral("createWellsButton"))->isEnabled();
    };
    onNextDialog(QStringLiteral("newWellsDialog"), create, isRead);
    QTest::mouseClick(find<QPushButton>("newWellsActionButton"), Qt::LeftButton);
    QVERIFY(isOverviewShown());
    QCOMPARE(rowTexts(table(), 0).join(QLatin1Char('|')), QStringLiteral("Fresh|0.00|0.00|0.00|1500.00|0|0"));
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWorkbenchWindow::topsOfFilesAreImported()
{
    QVERIFY(!find<QAction>("importTopsAction")->isEnabled());
    const QString survey = newSurvey(QStringLiteral("S"));
    addWell(survey, QStringLiteral("A"), 1000, 1000);
    QVERIFY(m_window->openSurvey(survey));
    trigger("importTopsAction"); // given up in the file dialog: no dialog at all
    m_chosenFiles = QStringList{m_folder->filePath(QStringLiteral("tops.csv"))};
    files::write(m_chosenFiles.first(), "Well,Name,MD\nA,Top,10\nA,Base,20\n");
    const auto import = [](QDialog *dialog) {
        onNextDialog(QStringLiteral("reportDialog"),
                     [](QDialog *report) { QTest::keyClick(report, Qt::Key_Escape); });
        QTest::keyClick(dialog, Qt::Key_Return);
    };
    onNextDialog(QStringLiteral("topsDialog"), import);
    trigger("importTopsAction");
    QCOMPARE(rowTexts(table(), 0).last(), QStringLiteral("2")); // the list counts the markers anew

    // Dropped on the window.
    files::write(m_chosenFiles.first(), "Well,Name,MD\nA,Further,30\n");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(m_chosenFiles.first())});
    bool isDone = false;
    onNextDialog(QStringLiteral("topsDialog"), [&](QDialog *dialog) {
        import(dialog);
        isDone = true;
    });
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &enter);
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &drop);
    QTRY_VERIFY(isDone);
    QTRY_COMPARE(rowTexts(table(), 0).last(), QStringLiteral("3"));
    QVERIFY(m_asker.boxes.isEmpty());
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

void TestWorkbenchWindow::aReadOnlySurveyIsToldFromOthers()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    QVERIFY(m_window->openSurvey(survey));
    QCOMPARE(find<QLabel>("statusLabel")->text(), QStringLiteral("0 wells  -  ") + survey);
    if (!testing_support::canShowInChild())
        QSKIP("a child cannot share the connection to the window system");
    for (const QString &folder : {m_folder->path(), survey, survey + QStringLiteral("/WellInfo")})
        QFile::setPermissions(folder, QFile::Permissions(0x7755));
    const int result = testing_support::runUnprivileged([&] {
        trigger("refreshAction");
        return find<QLabel>("statusLabel")->text().endsWith(QLatin1String("/S (read-only)")) ? 0 : 1;
    });
    if (result == 254)
        QSKIP("there is no user without rights");
    QCOMPARE(result, 0);
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

void TestWorkbenchWindow::rememberItsLook()
{
    const QString survey = copyOfRealSurvey();
    if (survey.isEmpty())
        QSKIP("The folder of real data has no od-survey.");
    QVERIFY(m_window->openSurvey(survey));
    m_window->resize(777, 555);
    dragBorder(find<QSplitter>("overviewSplitter"), -40);
    find<MessagesPanel>("messagesPanel")->setUnfolded(false);
    const int mapWidth = find<BaseMap>("baseMap")->width();
    QVERIFY(m_window->close());
    makeWindow();
    QCOMPARE(m_startSize, QSize(777, 555));
    m_window->resize(m_startSize);
    QVERIFY(!find<MessagesPanel>("messagesPanel")->isUnfolded());
    QVERIFY(m_window->openSurvey(survey));
    QTRY_COMPARE(find<BaseMap>("baseMap")->width(), mapWidth);
}

LORVA_TEST_MAIN(TestWorkbenchWindow)
#include "tst_workbenchwindow.moc"
