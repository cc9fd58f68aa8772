#include "datastore/curvegrouptable.h"
#include "datastore/groupfiles.h"
#include "las/importnotices.h"
#include "las/noticearea.h"
#include "support/testmain.h"
#include "tests/las/importfixture.h"

#include "las/lastextbrowser.h"

#include <QDoubleValidator>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTextDocument>

#include <unistd.h>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

/// The rights of a user who is nobody, as long as this lives; for others than the superuser those they have.
class OrdinaryRights
{
public:
    OrdinaryRights()
    {
        if (m_isRoot && ::seteuid(65534) != 0)
            qFatal("cannot give up the rights of the superuser");
    }
    ~OrdinaryRights()
    {
        if (m_isRoot && ::seteuid(0) != 0)
            qFatal("cannot get the rights of the superuser back");
    }

private:
    bool m_isRoot = ::geteuid() == 0;
};

} // namespace

/// The dialog before an import: widgets, tabs, binding and the test of names.
class TestWellImportDialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { CurveGroupTable::instance().clear(); }
    void widgets();
    void slotsHaveTheirNames();
    void choosingNothingChangesNothing();
    void closingBeforeTheFirstFileChoosesNothing();
    void choosingFiles();
    void filesMayBeChosenAgain();
    void curveTable();
    void groupsAreFound();
    void wellIsBoundByUwi();
    void textOfTheFile();
    void textOfAMissingFile();
    void longTextComesInSlices();
    void longLineIsCut();
    void existingNamesAreRed();
    void wellChangeTestsAgain();
    void editingANameTestsItsRow();
    void renamedRowKeepsItsBox();
    void closingATabRenumbers();
    void intervalBox();
    void wrappedFileHasANotice();
    void manyNoticesLeaveRoomForTheTable();
    void fileInFeetSaysSo();
    void manyCurvesAreCut();
    void groupBoxesOfManyCurves();
    void hugeNamesAreShortened();
    void fileThatIsTooLarge();
    void fileThatCannotBeOpened();
    void percentSignsInTheSummary();
    void markupIsShownToTheLetter();
    void addWellWidgetSlot();
    void hostileNames();
};

void TestWellImportDialog::widgets()
{
    ImportFixture f;
    QCOMPARE(f.dialog->windowTitle(), text("Well Log(s) Import (LAS Import)"));
    QCOMPARE(f.dialog->windowIcon().pixmap(16).toImage(), f.host.icon(text("import_wlc.png")).pixmap(16).toImage());
    QVERIFY(!f.dialog->windowIcon().isNull());
    QCOMPARE(f.button("selectButton")->text(), text("Select LAS File(s)"));
    QCOMPARE(f.button("importButton")->text(), text("Import Selected Curves"));
    QCOMPARE(f.button("closeButton")->text(), text("Close"));
    QVERIFY(!f.button("importButton")->isEnabled());
    QVERIFY(f.tabs()->tabsClosable());
    QCOMPARE(f.tabs()->count(), 0);
    auto *box = f.find<QCheckBox>("intervalBox");
    QCOMPARE(box->text(), text("Depth Interval (m):"));
    QVERIFY(!box->isChecked());
    auto *edit = f.find<QLineEdit>("intervalEdit");
    QCOMPARE(edit->text(), text("0.1524"));
    const auto *validator = qobject_cast<const QDoubleValidator *>(edit->validator());
    QVERIFY(validator);
    QCOMPARE(validator->locale().language(), QLocale::C);
    QVERIFY(f.find<QProgressBar>("progressBar")->isVisible());
}

void TestWellImportDialog::slotsHaveTheirNames()
{
    for (const char *slot : {"selectLasFilesClicked()", "intervalCheckBoxToggled(bool)", "importSelectedClicked()",
                             "tabClosedClicked(int)", "cancelBtnClicked()", "wellChanged(QString)",
                             "cellChanged(QTableWidgetItem*)", "addWellWidget(int,WellInfo,QString)"})
        QVERIFY2(WellImportDialog::staticMetaObject.indexOfSlot(slot) >= 0, slot);
}

void TestWellImportDialog::choosingNothingChangesNothing()
{
    ImportFixture f;
    f.choose({});
    QCOMPARE(f.captions, QStringList{text("Select Well(s)")});
    QCOMPARE(f.filters, QStringList{text("Las Files (*.Las *.LAS *.las)")});
    QCOMPARE(f.tabs()->count(), 0);
    QVERIFY(!f.button("importButton")->isEnabled());
}

void TestWellImportDialog::closingBeforeTheFirstFileChoosesNothing()
{
    ImportFixture f;
    QMetaObject::invokeMethod(f.dialog.get(), "cancelBtnClicked", Qt::QueuedConnection);
    f.chosen = QStringList{f.write(text("a.las"), ImportFixture::las("W-1", "100 1\n"))};
    f.dialog->selectLasFilesClicked();
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(f.tabs()->count(), 0);
    QVERIFY(!f.button("importButton")->isEnabled());
}

void TestWellImportDialog::choosingFiles()
{
    ImportFixture f;
    f.choose({f.write(text("b.las"), ImportFixture::las("W-1", "100 1\n")),
              f.write(text("sub.folder/a & b.las"), ImportFixture::las("W-2", "100 1\n")),
              f.survey.filePath(text("nowhere.las"))});
    QCOMPARE(f.tabs()->count(), 3);
    QCOMPARE(f.tabs()->tabText(0), text("b.las"));
    QCOMPARE(f.tabs()->tabText(1).replace(text("&&"), text("&")), text("a & b.las"));
    QCOMPARE(f.tabs()->tabText(2), text("nowhere.las"));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(f.wellBox(i)->property("tabIdx"), QVariant(i));
    QCOMPARE(f.table(2)->rowCount(), 0); // a path that does not exist: a tab without curves, no message
    QVERIFY(f.asker.boxes.isEmpty());
    QVERIFY(f.host.errors.isEmpty());
    QVERIFY(f.button("importButton")->isEnabled());
}

void TestWellImportDialog::filesMayBeChosenAgain()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-1", "100 1\n"));
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "selectLasFilesClicked"));
    QCOMPARE(f.tabs()->count(), 2);
    QCOMPARE(f.wellBox(1)->property("tabIdx"), QVariant(1));
    QCOMPARE(f.tabs()->currentIndex(), 1);
}

void TestWellImportDialog::curveTable()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1 2\n", {"GR.gapi", "RT.ohmm"}));
    QTableWidget *table = f.table();
    QStringList headers;
    for (int column = 0; column < table->columnCount(); ++column)
        headers.append(table->horizontalHeaderItem(column)->text());
    QCOMPARE(headers,
             (QStringList{text("Curve"), text("Curve Group"), text("Select"), text("Alternate Curve Name")}));
    QCOMPARE(table->rowCount(), 3);
    const QStringList names{text("DEPT"), text("GR"), text("RT")};
    for (int row = 0; row < 3; ++row) {
        QCOMPARE(table->item(row, 0)->text(), names.at(row));
        QVERIFY(!(table->item(row, 0)->flags() & Qt::ItemIsEditable));
        QStringList groups;
        for (int i = 0; i < f.groupBox(row)->count(); ++i)
            groups.append(f.groupBox(row)->itemText(i));
        QCOMPARE(groups, f.launch->project.groupNames);
        QCOMPARE(groups.first(), text("None"));
        QCOMPARE(f.checkItem(row)->checkState(), Qt::Checked);
        QVERIFY(f.checkItem(row)->flags() & Qt::ItemIsUserCheckable);
        QCOMPARE(f.nameItem(row)->text(), names.at(row));
        QVERIFY(f.nameItem(row)->flags() & Qt::ItemIsEditable);
        QCOMPARE(f.nameItem(row)->data(100), QVariant(text("W-2")));
    }
}

void TestWellImportDialog::groupsAreFound()
{
    ImportFixture f;
    CurveGroupTable::instance().set(text("ABC"), text("Sonic"));
    addMnemonicToGroup(f.launch->project.projectFolder, text("Caliper"), text("HOLE"));
    f.chooseBytes(ImportFixture::las("W-2", "1 2 3 4\n", {"ABC.us", "HOLE.in", "UNKNOWN.x"}));
    QCOMPARE(f.groupBox(1)->currentText(), text("Sonic"));
    QCOMPARE(f.groupBox(2)->currentText(), text("Caliper"));
    QCOMPARE(f.groupBox(3)->currentText(), text("Others"));
}

void TestWellImportDialog::wellIsBoundByUwi()
{
    ImportFixture f;
    f.choose({f.write(text("a.las"), ImportFixture::las("W-2", "1 2\n")),
              f.write(text("b.las"), ImportFixture::las("W-9", "1 2\n")),
              f.write(text("c.las"), ImportFixture::las("w-2", "1 2\n"))});
    QStringList wells;
    for (int i = 0; i < f.wellBox()->count(); ++i)
        wells.append(f.wellBox()->itemText(i));
    QCOMPARE(wells, (QStringList{text("None"), text("W-1"), text("W-2")}));
    QCOMPARE(f.wellBox(0)->currentText(), text("W-2"));
    QCOMPARE(f.wellBox(1)->currentText(), text("None"));
    QCOMPARE(f.wellBox(2)->currentText(), text("None"));
    QVERIFY(f.host.errors.isEmpty());
}

void TestWellImportDialog::textOfTheFile()
{
    ImportFixture f;
    const QByteArray bytes = ImportFixture::las("W-1", "100 <b>1</b> &amp;\n");
    f.chooseBytes(bytes);
    auto *browser = f.tab()->findChild<QTextBrowser *>();
    QVERIFY(browser->isReadOnly());
    QCOMPARE(browser->font().family(), text("Courier"));
    QCOMPARE(browser->font().pointSize(), 14);
    QVERIFY(browser->font().fixedPitch());
    QCOMPARE(browser->lineWrapMode(), QTextEdit::NoWrap);
    QStringList lines = browser->toPlainText().split(QLatin1Char('\n'));
    QCOMPARE(lines.takeFirst(), text("Filename : ") + f.survey.filePath(text("las/test.las")));
    QCOMPARE(lines.join(QLatin1Char('\n')) + QLatin1Char('\n'), QString::fromUtf8(bytes));
    QTextCursor title(browser->document());
    title.movePosition(QTextCursor::Right);
    QCOMPARE(title.charFormat().fontWeight(), int(QFont::Bold));
    title.movePosition(QTextCursor::Down);
    title.movePosition(QTextCursor::Right);
    QCOMPARE(title.charFormat().fontWeight(), int(QFont::Normal));
    QCOMPARE(browser->verticalScrollBar()->value(), 0);
    QCOMPARE(browser->textCursor().position(), 0);
    // Beside the table.
    QVERIFY(browser->mapTo(f.tab(), QPoint()).x() > f.table()->mapTo(f.tab(), QPoint()).x());
}

void TestWellImportDialog::textOfAMissingFile()
{
    ImportFixture f;
    f.choose({text("/no/such.las")});
    QCOMPARE(f.tab()->findChild<QTextBrowser *>()->toPlainText(), text("Filename : /no/such.las"));
}

void TestWellImportDialog::longTextComesInSlices()
{
    ImportFixture f;
    QByteArray rows;
    for (int i = 0; i < 1000000; ++i)
        rows += QByteArray::number(i) + " 1\n";
    f.chooseBytes(ImportFixture::las("W-1", rows));
    auto *browser = f.tab()->findChild<LasTextBrowser *>();
    QVERIFY(browser->shownLines() > 100);
    QVERIFY(browser->shownLines() < 20000);
    QCOMPARE(browser->verticalScrollBar()->value(), 0);
    const int before = browser->shownLines();
    browser->verticalScrollBar()->setValue(browser->verticalScrollBar()->maximum());
    QVERIFY(browser->shownLines() > before);
    const int scrolled = browser->shownLines();
    browser->setFocus();
    QTest::keyClick(browser, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(browser, Qt::Key_End, Qt::ControlModifier);
    QVERIFY(browser->shownLines() > scrolled);
    QVERIFY(browser->shownLines() < 60000);
    // The text is the file's, without a gap where slices meet.
    const QStringList lines = browser->toPlainText().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), browser->shownLines());
    for (int i = 1; i < lines.size(); ++i)
        QCOMPARE(lines.at(i), f.tab()->file().lines.line(i));
    // Lines that are given again take the place of those before.
    browser->setLines(f.tab()->file().lines);
    QCOMPARE(browser->toPlainText().split(QLatin1Char('\n')).size(), browser->shownLines());
    QVERIFY(browser->shownLines() < scrolled);
    QCOMPARE(browser->verticalScrollBar()->value(), 0);
}

void TestWellImportDialog::longLineIsCut()
{
    ImportFixture f;
    f.chooseBytes("~Other\n" + QByteArray(99999, 'y') + "\n" + QByteArray(5000000, 'x') + "\nnext\n");
    const QStringList shown = f.tab()->findChild<QTextBrowser *>()->toPlainText().split(QLatin1Char('\n'));
    QCOMPARE(shown.value(2), QString(99999, QLatin1Char('y')));
    QCOMPARE(shown.value(3), QString(100000, QLatin1Char('x')) + text(" …"));
    QCOMPARE(shown.value(4), text("next"));
    auto *browser = f.tab()->findChild<LasTextBrowser *>();
    browser->setLines(f.tab()->file().lines);
    QVERIFY(browser->horizontalScrollBar()->maximum() > 0);
    QCOMPARE(browser->horizontalScrollBar()->value(), 0); // lines are read from their beginning
}

void TestWellImportDialog::existingNamesAreRed()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-1", "100 1 2\n", {"GR.gapi", "RT.ohmm"}));
    QVERIFY(f.isPlain(0));
    QVERIFY(f.isRed(1));
    QVERIFY(f.isPlain(2));
    QCOMPARE(f.checkItem(0)->checkState(), Qt::Checked);
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Unchecked);
    QCOMPARE(f.checkItem(2)->checkState(), Qt::Checked);
}

void TestWellImportDialog::wellChangeTestsAgain()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-2", "100 1\n"));
    QVERIFY(f.isPlain(1));
    f.wellBox()->setFocus();
    QTest::keyClick(f.wellBox(), Qt::Key_Up); // to W-1
    QCOMPARE(f.wellBox()->currentText(), text("W-1"));
    QVERIFY(f.isRed(1));
    QVERIFY(f.isPlain(0));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Unchecked);
    for (int row = 0; row < 2; ++row)
        QCOMPARE(f.nameItem(row)->data(100), QVariant(text("W-1")));
    f.wellBox()->setCurrentText(text("None"));
    QVERIFY(f.isPlain(1));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Unchecked); // the box stays as it is
    QCOMPARE(f.nameItem(1)->data(100), QVariant(text("None")));

    // The slot itself finds its tab by the sender's property; without a sender it means the tab in front.
    f.host.find(f.launch->catalogue.wellKey(0))->logs.append({text("DEPT"), {}, {1}, {1}});
    f.wellBox()->setCurrentText(text("W-1"));
    f.launch->catalogue.refreshLogNames(0);
    QVERIFY(f.isPlain(0));
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "wellChanged", Q_ARG(QString, text("W-1"))));
    QVERIFY(f.isRed(0));
}

void TestWellImportDialog::editingANameTestsItsRow()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-1", "100 1 2\n", {"RT.ohmm", "SP.mv"}));
    QVERIFY(f.isPlain(1));
    f.table()->setCurrentCell(1, WellImportTab::NameColumn);
    f.table()->setFocus();
    QTest::keyClick(f.table(), Qt::Key_F2);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY(editor);
    QTest::keyClicks(editor, text("GR"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(f.nameItem(1)->text(), text("GR")); // the view takes it over from an event
    QVERIFY(f.isRed(1));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Unchecked);
    QVERIFY(f.isPlain(2));
    QVERIFY(f.dialog->isVisible());
    // An edit of another column is no new name.
    f.setChecked(1, true);
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Checked);
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "cellChanged", Q_ARG(QTableWidgetItem *, f.checkItem(1))));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Checked);
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "cellChanged", Q_ARG(QTableWidgetItem *, f.nameItem(1))));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Unchecked);
}

void TestWellImportDialog::renamedRowKeepsItsBox()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-1", "100 1\n"));
    QVERIFY(f.isRed(1));
    f.nameItem(1)->setText(text("GR_2"));
    QVERIFY(f.isPlain(1));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Unchecked);
    f.setChecked(1, true);
    f.nameItem(1)->setText(text("GR_3"));
    QCOMPARE(f.checkItem(1)->checkState(), Qt::Checked);
}

void TestWellImportDialog::closingATabRenumbers()
{
    ImportFixture f;
    f.choose({f.write(text("a.las"), ImportFixture::las("W-1", "1 2\n")),
              f.write(text("b.las"), ImportFixture::las("W-2", "1 2\n")),
              f.write(text("c.las"), ImportFixture::las("W-2", "1 2\n", {"GR.gapi", "X.y"}))});
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "tabClosedClicked", Q_ARG(int, 1)));
    QCOMPARE(f.tabs()->count(), 2);
    QCOMPARE(f.tabs()->tabText(1), text("c.las"));
    QCOMPARE(f.wellBox(0)->property("tabIdx"), QVariant(0));
    QCOMPARE(f.wellBox(1)->property("tabIdx"), QVariant(1));
    QCOMPARE(f.table(1)->rowCount(), 3);
    f.wellBox(1)->setCurrentText(text("W-1")); // reaches the right tab
    QVERIFY(f.isRed(1, 1));
    emit f.tabs()->tabCloseRequested(0);
    QCOMPARE(f.tabs()->count(), 1);
    for (int bad : {-1, 1, 99})
        QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "tabClosedClicked", Q_ARG(int, bad)));
    QCOMPARE(f.tabs()->count(), 1);
}

void TestWellImportDialog::intervalBox()
{
    ImportFixture f;
    auto *edit = f.find<QLineEdit>("intervalEdit");
    QVERIFY(!edit->isEnabled());
    auto *box = f.find<QCheckBox>("intervalBox");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Space);
    QVERIFY(edit->isEnabled());
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "intervalCheckBoxToggled", Q_ARG(bool, false)));
    QVERIFY(!edit->isEnabled());
}

void TestWellImportDialog::wrappedFileHasANotice()
{
    ImportFixture f;
    const QByteArray straight = ImportFixture::las("W-1", "100 1\n");
    QByteArray wrapped = straight;
    wrapped.replace("NO", "YES");
    f.choose({f.write(text("a.las"), straight), f.write(text("b.las"), wrapped)});
    QVERIFY(!f.tab(0)->findChild<QLabel *>(text("notice"))->isVisibleTo(f.dialog.get()));
    f.tabs()->setCurrentIndex(1);
    auto *notice = f.tab(1)->findChild<QLabel *>(text("notice"));
    QVERIFY(notice->isVisible());
    QVERIFY(notice->text().contains(text("WRAP YES")));
    QVERIFY(notice->mapTo(f.dialog.get(), QPoint(0, notice->height())).y()
            <= f.table(1)->mapTo(f.dialog.get(), QPoint()).y());
    QCOMPARE(f.checkItem(0, 1)->checkState(), Qt::Checked); // the boxes start as always
}

void TestWellImportDialog::manyNoticesLeaveRoomForTheTable()
{
    ImportFixture f;
    f.dialog->resize(900, 500);
    const QByteArray odd =
        "~V\nVERS. 3.0 :\nWRAP. YES :\n~w\n~W\nSTRT.FT\t 1 :\nSTRT.FT 1 :\n~C\nTIME. :\n<b>GR</b>. "
        ":\n<b>GR</b>. :\n~A TIME GR\n1,2\n~A\n";
    const QByteArray wrapped = ImportFixture::las("W-1", "100\n1\n").replace("NO", "YES");
    f.choose({f.write(text("a.las"), odd), f.write(text("b.las"), wrapped)});
    for (const int tab : {0, 1}) {
        f.tabs()->setCurrentIndex(tab);
        QCoreApplication::processEvents(); // the page gets its place
        auto *notice = f.tab(tab)->findChild<QLabel *>(text("notice"));
        auto *area = f.tab(tab)->findChild<NoticeArea *>();
        QVERIFY(area->isVisible());
        QCOMPARE(notice->text().split(QLatin1Char('\n')), las::importNotices(f.tab(tab)->file(), 10'000));
        QCOMPARE(notice->size(), notice->size().expandedTo(area->viewport()->size()));
        QVERIFY(notice->height() >= notice->heightForWidth(notice->width())); // no line is cut
        QCOMPARE(area->verticalScrollBar()->maximum() > 0, tab == 0);
        QVERIFY(area->height() < 8 * area->fontMetrics().lineSpacing());
        QVERIFY(area->mapTo(f.dialog.get(), QPoint(0, area->height())).y()
                <= f.table(tab)->mapTo(f.dialog.get(), QPoint()).y());
        QVERIFY(f.table(tab)->viewport()->height() > 80);
    }
    QVERIFY(f.tab(0)->findChild<QLabel *>(text("notice"))->text().contains(text("<b>GR</b>")));
}

void TestWellImportDialog::fileInFeetSaysSo()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("W-1", "100 1\n").replace("STRT.M", "STRT.ft"));
    auto *notice = f.tab()->findChild<QLabel *>(text("notice"));
    QVERIFY(notice->isVisible());
    QVERIFY(notice->text().startsWith(text("Depths of this file are in feet (ft).")));
    QVERIFY(notice->text().contains(f.find<QCheckBox>("feetBox")->text()));
    QVERIFY(f.find<QCheckBox>("feetBox")->isEnabled());
}

void TestWellImportDialog::manyCurvesAreCut()
{
    ImportFixture f;
    QByteArrayList curves;
    for (int i = 0; i < WellImportTab::maximumRows + 10; ++i)
        curves.append('C' + QByteArray::number(i) + ".x");
    f.chooseBytes(ImportFixture::las("W-2", "1 2\n", curves));
    QCOMPARE(f.table()->rowCount(), WellImportTab::maximumRows);
    QVERIFY(f.tab()->findChild<QLabel *>(text("notice"))->text().contains(text("10011 curves")));
}

// Boxes of rows far down are made when they come into view; what is not seen is imported all the same.
void TestWellImportDialog::groupBoxesOfManyCurves()
{
    ImportFixture f;
    addMnemonicToGroup(f.launch->project.projectFolder, text("Caliper"), text("C900"));
    addMnemonicToGroup(f.launch->project.projectFolder, text("Sonic"), text("C700"));
    QByteArrayList curves;
    for (int i = 1; i < 1200; ++i)
        curves.append('C' + QByteArray::number(i) + ".x");
    f.host.storedWells[1].logs = {{text("C900"), {}, {1}, {1}}};
    f.launch->catalogue.refreshLogNames(1);
    f.chooseBytes(ImportFixture::las("W-2", "1 2\n", curves));
    QVERIFY(f.groupBox(200));
    QVERIFY(!f.groupBox(900));
    QVERIFY(f.isRed(900));
    f.table()->setCurrentCell(900, WellImportTab::GroupColumn);
    f.table()->scrollToItem(f.table()->item(900, 0));
    QVERIFY(f.groupBox(900));
    QCOMPARE(f.groupBox(900)->currentText(), text("Caliper"));
    QVERIFY(f.groupBox(900)->palette().color(QPalette::Button).red() > 150);
    QVERIFY(!f.groupBox(700));
    const las::ImportTab plan = f.tab()->plan();
    QCOMPARE(plan.rows.at(700).group, text("Sonic"));
    QCOMPARE(plan.rows.at(701).group, text("Others"));
    QCOMPARE(plan.rows.at(900).group, text("Caliper"));
}

// A file of one line: what is shown and what is taken of it stays small.
void TestWellImportDialog::hugeNamesAreShortened()
{
    const int twentyMegabytes = 20'000'000;
    const QByteArray huge(twentyMegabytes, 'n');
    ImportFixture f;
    f.choose({f.write(text("uwi.las"), "~W\nSTRT." + huge + " 1 :\nUWI. " + huge),
              f.write(text("mnemonic.las"),
                      "~C\nDEPT.M :\n" + huge + ".x : d\nGR." + huge + " : " + huge + "\n~A\n1 2 3\n")});
    const auto isShort = [](const QString &shown) { return shown.size() < 1000; };
    const auto *summary = f.tab(0)->findChild<QLabel *>(text("fileSummary"));
    QVERIFY(summary->text().contains(text("UWI nnn")) && isShort(summary->text()));
    QVERIFY(summary->textInteractionFlags().testFlag(Qt::TextSelectableByMouse)); // to be copied
    QCOMPARE(f.tab(0)->minimumSizeHint().width(), f.tab(1)->minimumSizeHint().width());
    QCOMPARE(f.table(1)->rowCount(), 3);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            const QTableWidgetItem *item = f.table(1)->item(row, column);
            auto *delegate = qobject_cast<QStyledItemDelegate *>(f.table(1)->itemDelegate());
            QVERIFY(delegate && isShort(delegate->displayText(item->text(), QLocale::c())));
            QVERIFY(item->text().size() <= 64 * 1024);
            QVERIFY(isShort(item->toolTip()));
        }
    }
    QVERIFY(f.nameItem(1, 1)->text().size() > 60'000); // what is edited and imported is not cut further
    f.nameItem(1, 1)->setText({});
    f.wellBox(1)->setCurrentText(text("W-2"));
    f.tabs()->setCurrentIndex(1);
    emit f.tabs()->tabCloseRequested(0);
    f.startImport();
    QVERIFY(f.boxTexts().value(0).contains(text("row 2 (nnn")) && isShort(f.boxTexts().value(0)));
    for (QTextBrowser *browser : f.dialog->findChildren<QTextBrowser *>())
        QVERIFY(browser->toPlainText().size() < 600'000);
}

void TestWellImportDialog::fileThatIsTooLarge()
{
    ImportFixture f;
    const QString path = f.write(text("huge.las"), "~V\n");
    QVERIFY(QFile::resize(path, qint64(2) << 30)); // a hole
    f.choose({path, f.survey.filePath(text("missing.las"))});
    QCOMPARE(f.table(0)->rowCount(), 0);
    auto *notice = f.tab(0)->findChild<QLabel *>(text("notice"));
    QVERIFY(notice->isVisibleTo(f.dialog.get()));
    QVERIFY(notice->text().startsWith(text("This file is too large and was not read")));
    QVERIFY(!f.tab(1)->findChild<QLabel *>(text("notice"))->isVisibleTo(f.dialog.get()));
    QVERIFY(f.asker.boxes.isEmpty());
}

void TestWellImportDialog::fileThatCannotBeOpened()
{
    ImportFixture f;
    const QString path = f.write(text("locked.las"), ImportFixture::las("W-1", "1 2\n"));
    for (const QString &folder : {f.survey.path(), f.survey.filePath(text("las"))})
        QVERIFY(QFile::setPermissions(folder, QFile::permissions(folder) | QFile::ReadOther | QFile::ExeOther));
    QVERIFY(QFile::setPermissions(path, {}));
    {
        const OrdinaryRights rights;
        WellInfo info;
        QCOMPARE(info.load(path), -2);
        f.choose({path, f.survey.path()}); // a file without permission, and a folder
    }
    QCOMPARE(f.tabs()->count(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(f.table(i)->rowCount(), 0);
        QCOMPARE(f.wellBox(i)->currentText(), text("None"));
    }
    QCOMPARE(f.tab(0)->findChild<QTextBrowser *>()->toPlainText(), text("Filename : ") + path);
    QVERIFY(f.asker.boxes.isEmpty());
}

// "A%1", "UWI %7" and the like are names, not places for other texts.
void TestWellImportDialog::percentSignsInTheSummary()
{
    ImportFixture f;
    QByteArray bytes = ImportFixture::las("%7", "1 2\n");
    bytes.replace("STRT.M", "STRT.%7").replace("UWI.  ", "UWI.  %1 %4 ");
    f.choose({f.write(text("a%2.las"), bytes)});
    QCOMPARE(f.tab()->findChild<QLabel *>(text("fileSummary"))->text(),
             text("UWI %1 %4 %7   ·   100 to 200 %7, step 0.5 %7   ·   null -999.25   ·   2 curves"));
    QCOMPARE(f.tabs()->tabText(0), text("a%2.las"));
    f.chooseBytes("~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 1 :\n~C\nDEPT.M :\nGR. :\n~A\n1 2\n");
    QVERIFY(f.tab(1)->findChild<QLabel *>(text("fileSummary"))->text().contains(text("null not given")));
}

// What a file holds is text, also where it looks like markup.
void TestWellImportDialog::markupIsShownToTheLetter()
{
    ImportFixture f;
    const QString path =
        f.write(text("<i>&amp;.las"), ImportFixture::las("<b>W</b>", "1 2\n", {"<b>GR</b>.<i>u</i>"}));
    f.choose({path});
    const auto plain = [](const QString &tip) {
        QTextDocument document;
        if (Qt::mightBeRichText(tip))
            document.setHtml(tip);
        else
            document.setPlainText(tip);
        return document.toPlainText().replace(QChar(QChar::Nbsp), QLatin1Char(' '));
    };
    QCOMPARE(plain(f.tabs()->tabToolTip(0)), path);
    QCOMPARE(plain(f.table()->item(1, 0)->toolTip()), text("curve [<i>u</i>]"));
    for (const char *label : {"fileSummary", "notice"})
        QCOMPARE(f.tab()->findChild<QLabel *>(text(label))->textFormat(), Qt::PlainText);
}

void TestWellImportDialog::addWellWidgetSlot()
{
    ImportFixture f;
    WellInfo info;
    QCOMPARE(info.load(f.write(text("x.las"), ImportFixture::las("W-1", "1 2\n"))), 0);
    for (const char *name : {"/a/first.las", "second.las"})
        QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "addWellWidget", Q_ARG(int, 0), Q_ARG(WellInfo, info),
                                          Q_ARG(QString, text(name))));
    QCOMPARE(f.tabs()->tabText(0), text("second.las"));
    QCOMPARE(f.tabs()->tabText(1), text("first.las"));
    QCOMPARE(f.wellBox(0)->property("tabIdx"), QVariant(0));
    QCOMPARE(f.wellBox(1)->property("tabIdx"), QVariant(1));
    QVERIFY(f.button("importButton")->isEnabled());
}

void TestWellImportDialog::hostileNames()
{
    ImportFixture f;
    f.chooseBytes(ImportFixture::las("<b>W</b>", "1 2 3 4\n", {"../../x.y", "<img src=x>.u", "%n%s%1.u"}));
    QCOMPARE(f.wellBox()->currentText(), text("None"));
    QVERIFY(!f.tab()->findChild<QLabel *>(text("fileSummary"))->text().isEmpty());
    QCOMPARE(f.nameItem(2)->text(), text("<img src=x>"));
}

LORVA_TEST_MAIN(TestWellImportDialog)
#include "tst_wellimportdialog.moc"
