#include "base/filelock.h"
#include "support/testmain.h"
#include "workbench/manualdialog.h"
#include "workbenchwindowfixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QSysInfo>
#include <QTextBrowser>

#include <unistd.h>

using namespace workbench;

/// What a user meets beside the lists: the wells' context menu, the manual, the first steps, a survey that is open
/// elsewhere.
class TestWorkbenchUse : public WorkbenchWindowTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
    void theMenuOfAWell();
    void theMenuRenames();
    void theMenuEdits();
    void theMenuDeletes();
    void theMenuOpensTheContents();
    void f2RenamesTheSelectedWell();
    void deleteAsksAndTheNextWellIsSelected();
    void keysLeadFromTheFilterToTheWells();
    void keysWithoutAWellDoNothing();
    void theManualOpensAndLeads();
    void theManualStaysBesideTheWindow();
    void wordsAreFoundInAllPages();
    void aMissingManual();
    void firstStepsOfAnEmptySurvey();
    void stepsAreReadFromTheLeft();
    void lasFilesOfTheCommandLineBecomeWells();
    void lasFilesWithoutASurveyMakeOneFirst();
    void dialogsKeepTheirSizes();
    void aSurveyOpenInAnotherProgram();
    void whatDeadProgramsLeftIsIgnored();
    void theSameWindowIsNotAnother();

private:
    void openTwoWells()
    {
        const QString survey = newSurvey(QStringLiteral("S"));
        addWell(survey, QStringLiteral("A"), 1000, 1000);
        addWell(survey, QStringLiteral("B"), 5000, 3000);
        QVERIFY(m_window->openSurvey(survey));
    }
    /// A right click on a row of the table: selects it and asks for its menu, as the platform does.
    QMenu *menuOfRow(int row)
    {
        auto *view = find<QTableView>("wellsTable");
        const QPoint place = view->visualRect(table()->index(row, 0)).center();
        QTest::mouseClick(view->viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view->viewport(), &event);
        return find<QMenu>("wellMenu");
    }
    /// Clicks an entry of the menu of a row.
    void choose(int row, const char *action)
    {
        QMenu *menu = menuOfRow(row);
        QVERIFY(menu && menu->isVisible());
        QTest::mouseClick(menu, Qt::LeftButton, {},
                          menu->actionGeometry(menu->findChild<QAction *>(QLatin1String(action))).center());
        QTRY_VERIFY(!find<QMenu>("wellMenu")); // and what it led to is over
    }
    QString lockFile(const QString &survey, const QByteArray &host, const QByteArray &process) const
    {
        const QString path = survey + QStringLiteral("/.lorva.open.") + QString::fromUtf8(host + '.' + process);
        files::write(path, host + '\n' + process + '\n');
        return path;
    }
};

void TestWorkbenchUse::theMenuOfAWell()
{
    openTwoWells();
    QMenu *menu = menuOfRow(1);
    QVERIFY(menu && menu->isVisible());
    QStringList entries;
    for (const QAction *action : menu->actions())
        entries.append(action->text());
    QCOMPARE(entries.join(QLatin1Char(' ')),
             QStringLiteral("&Logs and markers…\tEnter &Edit… &Rename…\tF2 &Delete…\tDel"));
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!find<QMenu>("wellMenu"));
    // Below the wells there is none.
    auto *view = find<QTableView>("wellsTable");
    const QPoint empty(10, view->viewport()->height() - 3);
    QContextMenuEvent event(QContextMenuEvent::Mouse, empty, view->viewport()->mapToGlobal(empty));
    QCoreApplication::sendEvent(view->viewport(), &event);
    QVERIFY(!find<QMenu>("wellMenu"));
}

void TestWorkbenchUse::theMenuRenames()
{
    openTwoWells();
    onNextDialog(QStringLiteral("renameWellDialog"), [](QDialog *dialog) {
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("nameEdit"));
        QCOMPARE(name->text(), QStringLiteral("B"));
        name->setText(QStringLiteral("Bee"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    choose(1, "renameWellAction");
    QCOMPARE(columnTexts(table(), 0), (QStringList{QStringLiteral("A"), QStringLiteral("Bee")}));
}

void TestWorkbenchUse::theMenuEdits()
{
    openTwoWells();
    onNextDialog(QStringLiteral("wellEditDialog"), [](QDialog *dialog) {
        dialog->findChild<QLineEdit *>(QStringLiteral("kbEdit"))->setText(QStringLiteral("33"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    choose(0, "editWellAction");
    QVERIFY(rowTexts(table(), 0).contains(QStringLiteral("33.00")));
    QVERIFY(!rowTexts(table(), 1).contains(QStringLiteral("33.00")));
}

void TestWorkbenchUse::theMenuDeletes()
{
    openTwoWells();
    m_asker.answers = {base::BoxButton::No};
    choose(0, "deleteWellAction");
    QCOMPARE(table()->rowCount(), 2);
    m_asker.answers = {base::BoxButton::Yes};
    choose(0, "deleteWellAction");
    QCOMPARE(columnTexts(table(), 0), QStringList{QStringLiteral("B")});
    QCOMPARE(m_asker.boxes.size(), 2);
    QVERIFY(m_asker.boxes.last().text.startsWith(QLatin1String("Delete the well \"A\"?")));
}

void TestWorkbenchUse::theMenuOpensTheContents()
{
    openTwoWells();
    QString header;
    onNextDialog(QStringLiteral("wellManagerDialog"), [&header](QDialog *dialog) {
        header = dialog->findChild<QLabel *>(QStringLiteral("wellHeaderLabel"))->text();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    choose(1, "wellContentsAction");
    QVERIFY2(header.contains(QLatin1Char('B')), qPrintable(header));
}

void TestWorkbenchUse::f2RenamesTheSelectedWell()
{
    openTwoWells();
    auto *view = find<QTableView>("wellsTable");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(table()->index(1, 0)).center());
    for (const char *name : {"Bee", "Zed"}) {
        onNextDialog(QStringLiteral("renameWellDialog"), [name](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(QStringLiteral("nameEdit"))->setText(QLatin1String(name));
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        QVERIFY(showActive(m_window.get()));
        QTest::keyClick(view, Qt::Key_F2); // the second time the same well, under its new name
        QCOMPARE(columnTexts(table(), 0), (QStringList{QStringLiteral("A"), QLatin1String(name)}));
    }
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWorkbenchUse::deleteAsksAndTheNextWellIsSelected()
{
    openTwoWells();
    addWell(m_host->surveyDirectory(), QStringLiteral("C"), 7000, 7000);
    addWell(m_host->surveyDirectory(), QStringLiteral("Far"), 9000, 9000);
    m_window->refresh();
    auto *view = find<QTableView>("wellsTable");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(table()->index(1, 0)).center());
    m_asker.answers = {base::BoxButton::No, base::BoxButton::Yes, base::BoxButton::Yes, base::BoxButton::Yes,
                       base::BoxButton::Yes};
    const auto press = [&] {
        QTest::keyClick(view, Qt::Key_Delete);
        return columnTexts(table(), 0).join(QString()) + QLatin1Char('>') + view->currentIndex().data().toString();
    };
    QCOMPARE(press(), QStringLiteral("ABCFar>B")); // the question was answered with No
    QVERIFY(m_asker.boxes.last().text.startsWith(QLatin1String("Delete the well \"B\"?")));
    QCOMPARE(press(), QStringLiteral("ACFar>C"));
    find<QLineEdit>("filterEdit")->setText(QStringLiteral("a"));
    view->setCurrentIndex(table()->index(1, 0));
    QCOMPARE(press(), QStringLiteral("A>A")); // the one above, where none is below
    find<QLineEdit>("filterEdit")->clear();
    QCOMPARE(press(), QStringLiteral("C>C"));
    QCOMPARE(press(), QStringLiteral(">"));
    QCOMPARE(m_asker.boxes.size(), 5);
}

void TestWorkbenchUse::keysLeadFromTheFilterToTheWells()
{
    openTwoWells();
    auto *view = find<QTableView>("wellsTable");
    auto *filter = find<QLineEdit>("filterEdit");
    view->clearSelection();
    filter->setFocus();
    QTest::keyClicks(filter, "B");
    QTest::keyClick(filter, Qt::Key_Down);
    QVERIFY(view->hasFocus());
    QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("B"));
    QVERIFY(view->selectionModel()->isRowSelected(0, {}));
    filter->setFocus();
    QTest::keyClick(filter, Qt::Key_Escape);
    QCOMPARE(filter->text(), QString());
    QCOMPARE(table()->rowCount(), 2);
    QTest::keyClick(filter, Qt::Key_Down); // the selected one stays
    QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("B"));
    filter->setFocus();
    QTest::keyClicks(filter, "nothing");
    QTest::keyClick(filter, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_F2);
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWorkbenchUse::keysWithoutAWellDoNothing()
{
    openTwoWells();
    auto *view = find<QTableView>("wellsTable");
    view->clearSelection();
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Delete})
        QTest::keyClick(view, key);
    auto *filter = find<QLineEdit>("filterEdit");
    view->selectRow(0);
    filter->setText(QStringLiteral("A"));
    filter->setCursorPosition(0);
    QTest::keyClick(filter, Qt::Key_Delete); // belongs to the text there
    QCOMPARE(filter->text(), QString());
    QVERIFY(m_asker.boxes.isEmpty());
    QCOMPARE(table()->rowCount(), 2);
    // A well that has gone since the table was filled.
    const QString key = survey::SurveyStore(m_host->surveyDirectory()).list().value.first().key;
    QVERIFY(survey::SurveyStore(m_host->surveyDirectory()).removeWell(key).ok());
    for (const Qt::Key pressed : {Qt::Key_F2, Qt::Key_Delete})
        QTest::keyClick(view, pressed);
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWorkbenchUse::theManualOpensAndLeads()
{
    QTest::keyClick(m_window.get(), Qt::Key_F1);
    auto *pages = find<QTextBrowser>("manualPages");
    auto *back = find<QPushButton>("backButton");
    QVERIFY(!back->isEnabled());
    const QString first = pages->toPlainText();
    QVERIFY(first.size() > 200);
    emit pages->anchorClicked(QUrl(QStringLiteral("newwells.md")));
    const QString second = pages->toPlainText();
    QVERIFY2(second.contains(QLatin1String("LAS")) && second != first, qPrintable(second));
    QTest::mouseClick(back, Qt::LeftButton);
    QCOMPARE(pages->toPlainText(), first);
}

// What it says is done while one reads it.
void TestWorkbenchUse::theManualStaysBesideTheWindow()
{
    openTwoWells();
    QTest::keyClick(m_window.get(), Qt::Key_F1);
    const QPointer<QDialog> manual = find<QDialog>("manualDialog");
    QVERIFY(manual && manual->isVisible() && !manual->isModal());
    QVERIFY(manual->findChild<QTextBrowser *>()->hasFocus() || !manual->isActiveWindow());
    emit find<QTextBrowser>("manualPages")->anchorClicked(QUrl(QStringLiteral("newwells.md")));
    const QString page = find<QTextBrowser>("manualPages")->toPlainText();
    trigger("manualAction"); // no second one
    QCOMPARE(m_window->findChildren<QDialog *>(QStringLiteral("manualDialog")).size(), 1);
    QCOMPARE(find<QTextBrowser>("manualPages")->toPlainText(), page);
    m_window->refresh();
    QVERIFY(manual->isVisible());
    QTest::keyClick(manual, Qt::Key_Escape);
    QTRY_VERIFY(!manual);
    trigger("manualAction");
    QVERIFY(find<QDialog>("manualDialog")->isVisible());
    QVERIFY(m_window->close());
    QVERIFY(!find<QDialog>("manualDialog") || !find<QDialog>("manualDialog")->isVisible());
}

void TestWorkbenchUse::wordsAreFoundInAllPages()
{
    const QString manual = m_folder->filePath(QStringLiteral("manual"));
    files::write(manual + "/README.md", "# Manual\n\nOne [shale](b.md).\n");
    files::write(manual + "/b.md", "# Second\n\nA *shale* **break** and a Shale.\n");
    files::write(manual + "/c.md", "# Third\n\nNothing but sand, and sand.\n");
    ManualDialog dialog(manual);
    QVERIFY(showActive(&dialog));
    auto *pages = dialog.findChild<QTextBrowser *>();
    auto *words = dialog.findChild<QLineEdit *>(QStringLiteral("findEdit"));
    auto *notFound = dialog.findChild<QLabel *>(QStringLiteral("notFoundLabel"));
    const auto place = [pages] {
        const QTextCursor found = pages->textCursor();
        return QStringLiteral("%1 %2 %3").arg(pages->source().fileName(), found.selectedText()).arg(found.position());
    };
    QTest::keyClick(pages, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(words->hasFocus());
    QTest::keyClicks(words, "shale");
    QTest::keyClick(words, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    const QString first = place();
    QVERIFY2(first.startsWith("README.md shale"), qPrintable(first));
    QTest::keyClick(words, Qt::Key_Enter);
    const QString second = place();
    QVERIFY2(second.startsWith("b.md shale"), qPrintable(second));
    QTest::keyClick(pages, Qt::Key_F3);
    QVERIFY2(place().startsWith("b.md Shale"), qPrintable(place()));
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("findNextButton")), Qt::LeftButton);
    QCOMPARE(place(), first); // around, past the page without it
    words->setText(QStringLiteral("shale break")); // which are marked in the file
    dialog.findNext();
    QVERIFY2(place().startsWith("b.md shale break"), qPrintable(place()));
    dialog.findNext();
    QVERIFY2(place().startsWith("b.md shale break"), qPrintable(place())); // the only one
    words->setText(QStringLiteral("sand"));
    QStringList places;
    for (int i = 0; i < 3; ++i) {
        dialog.findNext();
        places.append(place());
    }
    QVERIFY(places.at(0).startsWith("c.md sand") && places.at(1) != places.at(0));
    QCOMPARE(places.at(2), places.at(0)); // around in the page
    words->setText(QStringLiteral("granite"));
    dialog.findNext();
    QCOMPARE(notFound->text(), QStringLiteral("Not found"));
    QVERIFY(place().startsWith("c.md")); // stays where it was
    QTest::keyClicks(words, "s");
    QCOMPARE(notFound->text(), QString());
    words->clear();
    dialog.findNext();
    QCOMPARE(notFound->text(), QString());
}

void TestWorkbenchUse::aMissingManual()
{
    m_window.reset();
    m_host = std::make_unique<WorkbenchHost>(m_folder->path());
    m_window = std::make_unique<WorkbenchWindow>(*m_host, m_asker, FileChooser());
    QVERIFY(showActive(m_window.get()));
    trigger("manualAction");
    const QPointer<QDialog> manual = find<QDialog>("manualDialog");
    const QString text = manual->findChild<QTextBrowser *>()->toPlainText();
    QVERIFY2(text.contains(m_folder->path() + QStringLiteral("/doc/README.md")), qPrintable(text));
    manual->findChild<QLineEdit *>()->setText(QStringLiteral("well"));
    QTest::mouseClick(manual->findChild<QPushButton *>(QStringLiteral("findNextButton")), Qt::LeftButton);
    QCOMPARE(manual->findChild<QTextBrowser *>()->toPlainText(), text);
    QTest::keyClick(manual, Qt::Key_Return); // closes it
    QTRY_VERIFY(!manual);
}

void TestWorkbenchUse::firstStepsOfAnEmptySurvey()
{
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("S"))));
    QVERIFY(!isOverviewShown());
    QCOMPARE(find<QLabel>("hintHeading")->text(), QStringLiteral("This survey has no wells yet"));
    const auto *steps = find<QLabel>("hintText");
    for (const char *step : {"1.  Drop a folder of LAS files", "\n2.  Look through", "\n3.  Choose a plug-in"})
        QVERIFY2(steps->text().contains(QLatin1String(step)), step);
    QTRY_VERIFY(find<QPushButton>("newWellsActionButton")->isVisible());
    onNextDialog(QStringLiteral("wellManagerDialog"),
                 [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QTest::mouseClick(find<QPushButton>("manageWellsActionButton"), Qt::LeftButton);
    m_host->setSurvey({});
    trigger("refreshAction");
    QCOMPARE(find<QLabel>("hintHeading")->text(), QStringLiteral("No survey is open"));
}

void TestWorkbenchUse::stepsAreReadFromTheLeft()
{
    const auto *text = find<QLabel>("hintText");
    QVERIFY(text->alignment() & Qt::AlignHCenter);
    m_window->resize(1200, 700);
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("S"))));
    QVERIFY(text->alignment() & Qt::AlignLeft);
    QVERIFY(!(text->alignment() & Qt::AlignHCenter));
    // No step is broken, and the block stands in the middle.
    QTRY_VERIFY(text->height() < 7 * text->fontMetrics().lineSpacing());
    const auto middle = [text] { return text->mapTo(text->parentWidget(), QPoint(text->width() / 2, 0)).x(); };
    QTRY_VERIFY(qAbs(middle() - text->parentWidget()->width() / 2) < 20);
}

void TestWorkbenchUse::lasFilesOfTheCommandLineBecomeWells()
{
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("S"))));
    const QString file = m_folder->filePath(QStringLiteral("w.las"));
    files::write(file,
                 "~V\nVERS. 2.0:\n~W\nSTRT.M 1:\nSTOP.M 2:\nSTEP.M 1:\nNULL. -999.25:\nWELL. Ninian:\n~C\n"
                 "DEPT.M :\nGR.gapi :\n~A\n1 5\n2 6\n");
    onNextDialog(QStringLiteral("newWellsDialog"), [](QDialog *dialog) {
        const QAbstractItemModel *model = dialog->findChild<QTableView *>(QStringLiteral("newWellsTable"))->model();
        QCOMPARE(model->rowCount(), 1);
        QVERIFY(rowTexts(model, 0).contains(QStringLiteral("Ninian")));
        dialog->reject();
    });
    m_window->openLasFiles({file});
    QVERIFY(m_asker.boxes.isEmpty());
    QVERIFY(!isOverviewShown()); // nothing was written
}

void TestWorkbenchUse::lasFilesWithoutASurveyMakeOneFirst()
{
    onNextDialog(QStringLiteral("newSurveyDialog"), [](QDialog *dialog) { dialog->reject(); });
    m_window->openLasFiles({m_folder->filePath(QStringLiteral("w.las"))});
    QCOMPARE(m_asker.boxes.size(), 1);
    QVERIFY(m_asker.boxes.first().text.contains(QStringLiteral("need a survey")));
    QVERIFY(!m_window->hasSurvey());
}

void TestWorkbenchUse::dialogsKeepTheirSizes()
{
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("S"))));
    const QSize size(770, 433); // the screen of tests is small
    const auto resized = [size](QDialog *dialog) {
        dialog->resize(size);
        dialog->close();
    };
    onNextDialog(QStringLiteral("wellManagerDialog"), resized);
    trigger("manageWellsAction");
    QSize seen;
    onNextDialog(QStringLiteral("wellManagerDialog"), [&seen](QDialog *dialog) {
        seen = dialog->size();
        dialog->close();
    });
    trigger("manageWellsAction");
    QCOMPARE(seen, size);
    trigger("manualAction");
    resized(find<QDialog>("manualDialog"));
    QTRY_VERIFY(!find<QDialog>("manualDialog"));
    trigger("manualAction");
    QCOMPARE(find<QDialog>("manualDialog")->size(), size);
}

// A second workbench on the same survey, in a process of its own.
void TestWorkbenchUse::aSurveyOpenInAnotherProgram()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    QProcess living;
    living.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QVERIFY(living.waitForStarted());
    const QByteArray process = QByteArray::number(living.processId());
    const QString path = lockFile(survey, QSysInfo::machineHostName().toUtf8(), process);
    const int file = base::openToLock(QFile::encodeName(path));
    QCOMPARE(base::tryLock(file), base::LockState::Locked);
    QVERIFY(m_window->openSurvey(survey)); // it opens all the same
    QCOMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(m_asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(m_asker.boxes.first().text,
             QStringLiteral("The survey is open elsewhere too: process %1 on %2.\nBoth may change it; what the other "
                            "one writes shows here after Refresh (F5).")
                 .arg(QString::fromLatin1(process), QSysInfo::machineHostName()));
    QCOMPARE(m_host->surveyDirectory(), survey);
    QVERIFY(QFile::exists(path));
    ::close(file);
    living.kill();
    QVERIFY(living.waitForFinished());
    m_asker.boxes.clear();
    QVERIFY(m_window->openSurvey(survey));
    QVERIFY(m_asker.boxes.isEmpty());
    QVERIFY(!QFile::exists(path));
}

void TestWorkbenchUse::whatDeadProgramsLeftIsIgnored()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    QProcess ended;
    ended.start(QStringLiteral("true"), QStringList());
    const QByteArray process = QByteArray::number(ended.processId());
    QVERIFY(ended.waitForFinished());
    const QString path = lockFile(survey, QSysInfo::machineHostName().toUtf8(), process);
    QVERIFY(m_window->openSurvey(survey));
    QVERIFY(m_asker.boxes.isEmpty());
    QVERIFY(!QFile::exists(path));
}

void TestWorkbenchUse::theSameWindowIsNotAnother()
{
    const QString survey = newSurvey(QStringLiteral("S"));
    QVERIFY(m_window->openSurvey(survey));
    QVERIFY(m_window->openSurvey(newSurvey(QStringLiteral("T"))));
    QVERIFY(m_window->openSurvey(survey));
    makeWindow(); // closed and started again
    QVERIFY(m_window->openSurvey(survey));
    QVERIFY(m_asker.boxes.isEmpty());
}

LORVA_TEST_MAIN(TestWorkbenchUse)
#include "tst_workbenchuse.moc"
