#include "support/failingtarget.h"
#include "support/legiblewindow.h"
#include "support/testmain.h"
#include "topsdialogfixture.h"

#include <QPalette>

using namespace survey;
using namespace workbench;

class TestTopsDialog : public TopsDialogTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void showsWhatWellsWouldGet();
    void headersExplainThemselves();
    void enterImports();
    void cancelWritesNothing_data();
    void cancelWritesNothing();
    void theUnitIsAskedForWhereNoFileTellsIt();
    void aSurveyInFeet();
    void remarksAreListed();
    void moreFilesAreAdded();
    void aFileOfOneWell();
    void aFailureLeavesTheOtherWells();
    void cancelledBetweenWells();
    void damagedWellsAreMarked();
    void filesWithoutATopAreTold();
    void tablesAreToldFromOtherFiles_data();
    void tablesAreToldFromOtherFiles();
    void manyRowsWithLongNames_data();
    void manyRowsWithLongNames();
    void realFiles();
};

void TestTopsDialog::showsWhatWellsWouldGet()
{
    const auto dialog = open({write("tops.csv", threeWells)});
    QVERIFY(dialog);
    QCOMPARE(table(*dialog)->model()->rowCount(), 3);
    QCOMPARE(rowText(*dialog, 0), QStringLiteral("W-1|W-1|1|1|20.00|0|2"));
    QCOMPARE(rowText(*dialog, 1), QStringLiteral("w 2|W-2|0|1|50.00|0|0"));
    QCOMPARE(rowText(*dialog, 2), QStringLiteral("Elsewhere|(leave out)|||||1"));
    const auto notes = [&](int row) { return cell(*dialog, row, TopsModel::NotesColumn).data().toString(); };
    QCOMPARE(notes(0), QStringLiteral("Below the total depth: Deep.  Without a name or a depth: 1 line."));
    QCOMPARE(notes(1), QStringLiteral("The name is written in another way."));
    QCOMPARE(notes(2), QStringLiteral("The survey has no well of this name."));
    const auto *shown = dialog->findChild<QLabel *>("notesLabel");
    QCOMPARE(shown->text(), QStringLiteral("Below the total depth: Deep. Without a name or a depth: 1 line."));
    QTest::keyClick(table(*dialog), Qt::Key_Down);
    QCOMPARE(shown->text(), notes(1)); // of the current row in full
    QTest::keyClick(table(*dialog), Qt::Key_Up);
    QVERIFY(cell(*dialog, 0, TopsModel::NameColumn).data(Qt::ToolTipRole).toString().contains("tops.csv"));
    QVERIFY(cell(*dialog, 0, TopsModel::NotesColumn).data(Qt::ToolTipRole).toString().contains("Deep"));
    QVERIFY(!cell(*dialog, 0, 0).data(Qt::ForegroundRole).isValid());
    QVERIFY(cell(*dialog, 2, 0).data(Qt::ForegroundRole).isValid()); // of less weight
    QVERIFY(!table(*dialog)->model()->data(QModelIndex(), Qt::DisplayRole).isValid());
    QCOMPARE(state(*dialog), QStringLiteral("2 wells to change: 1 new marker, 2 moved ones; left out: 1 row."));
    QVERIFY(button(*dialog, "importButton")->isEnabled());
    QVERIFY(button(*dialog, "importButton")->isDefault());
    QCOMPARE(dialog->focusWidget(), table(*dialog));
    QCOMPARE(table(*dialog)->currentIndex(), cell(*dialog, 0, TopsModel::WellColumn));
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestTopsDialog::headersExplainThemselves()
{
    const auto dialog = open({write("tops.csv", threeWells)});
    QStringList titles;
    for (int column = 0; column < TopsModel::ColumnCount; ++column) {
        titles.append(table(*dialog)->model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        QVERIFY(!table(*dialog)->model()->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty());
    }
    QCOMPARE(titles.join(u'|'), QStringLiteral("In the file|Well|New|Moved|At most (m)|Same|Left out|Notes"));
}

void TestTopsDialog::enterImports()
{
    QStringList told;
    m_store->setMarkersChanged([&told](const QString &key) { told.append(key); });
    const auto dialog = open({write("tops.csv", threeWells)});
    expectSummary();
    QTest::keyClick(table(*dialog), Qt::Key_Return);
    QCOMPARE(markers(0), QStringLiteral("Top@120 New@800"));
    QCOMPARE(markers(1), QStringLiteral("Top@150"));
    QCOMPARE(markers(2), QStringLiteral("Top@100"));
    QVERIFY2(m_summary.startsWith(QLatin1String("Tops of 2 wells were written: 1 new, 2 moved.\n")),
             qPrintable(m_summary));
    QVERIFY(m_summary.contains(
        QLatin1String("\nWritten:\n  W-1: 1 new, 1 moved\n  W-2 (w 2 in the file): 0 new, 1 moved\n")));
    QVERIFY(dialog->hasWritten());
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    const QVector<host::WellEntry> wells = m_store->list().value;
    QCOMPARE(told, (QStringList{wells.at(0).key, wells.at(1).key})); // displays follow, once each

    // The same file again has nothing to say.
    const auto again = open({write("tops.csv", threeWells)});
    QCOMPARE(rowText(*again, 0), QStringLiteral("W-1|W-1|0|0||2|2"));
    QCOMPARE(state(*again), QStringLiteral("There is nothing to change; left out: 1 row."));
    QVERIFY(!button(*again, "importButton")->isEnabled());
    QTest::keyClick(table(*again), Qt::Key_Return);
    QVERIFY(again->isVisible());
}

void TestTopsDialog::cancelWritesNothing_data()
{
    QTest::addColumn<bool>("isByKey");
    QTest::newRow("Esc") << true;
    QTest::newRow("button") << false;
}

void TestTopsDialog::cancelWritesNothing()
{
    QFETCH(bool, isByKey);
    const QString file = write("tops.csv", threeWells);
    const auto before = files::snapshot(m_survey);
    const auto dialog = open({file});
    QCOMPARE(button(*dialog, "closeButton")->text(), QStringLiteral("Cancel"));
    if (isByKey)
        QTest::keyClick(table(*dialog), Qt::Key_Escape);
    else
        QTest::mouseClick(button(*dialog, "closeButton"), Qt::LeftButton);
    QVERIFY(!dialog->isVisible());
    QVERIFY(!dialog->hasWritten());
    QCOMPARE(files::snapshot(m_survey), before);
}

void TestTopsDialog::theUnitIsAskedForWhereNoFileTellsIt()
{
    const auto dialog = open({write("m.csv", "Well,Name,MD [m]\nW-1,Top,100\n")});
    auto *unit = dialog->findChild<QComboBox *>("unitBox");
    QVERIFY(!unit->isVisible());
    m_chosen = QStringList{write("f.csv", "Well,Name,MD\nW-2,Top,1000\n")};
    QTest::mouseClick(button(*dialog, "addFilesButton"), Qt::LeftButton);
    QVERIFY(unit->isVisible());
    QVERIFY(dialog->findChild<QLabel *>("unitLabel")->isVisible());
    QCOMPARE(unit->currentText(), QStringLiteral("metres"));
    QCOMPARE(rowText(*dialog, 1), QStringLiteral("W-2|W-2|0|1|900.00|0|0"));
    QTest::keyClick(dialog.get(), Qt::Key_D, Qt::AltModifier);
    QTRY_COMPARE(dialog->focusWidget(), unit);
    QTest::keyClick(unit, Qt::Key_Down);
    QCOMPARE(unit->currentText(), QStringLiteral("feet"));
    QCOMPARE(rowText(*dialog, 0), QStringLiteral("W-1|W-1|0|0||1|0"));
    QCOMPARE(rowText(*dialog, 1), QStringLiteral("W-2|W-2|0|1|204.80|0|0"));
}

void TestTopsDialog::aSurveyInFeet()
{
    const QString path = m_folder->filePath("feet");
    NewSurvey fresh;
    fresh.depthUnit = DepthUnit::Foot;
    QCOMPARE(createSurvey(path, fresh).error, QString());
    SurveyStore store(path);
    WellProperties well;
    well.name = QStringLiteral("W-1");
    well.totalDepth = 9000;
    const QString key = store.addWell(well).value;
    QVERIFY(store.writeMarkers(key, {{"Moved", 0.3048f * 7001.3f, Qt::red}, {"Same", 0.3048f * 5000, Qt::red}}).ok());
    TopsDialog dialog(store, m_asker, chooser());
    dialog.addFiles({write("tops.csv", "Well,Name,MD\nW-1,Moved,7101.3\nW-1,Same,5000\nW-1,Deep,9001\n")});
    QVERIFY(showActive(&dialog));
    QCOMPARE(dialog.findChild<QComboBox *>("unitBox")->currentText(), QStringLiteral("feet"));
    QCOMPARE(rowText(dialog, 0), QStringLiteral("W-1|W-1|0|1|100.00|1|1"));
    QCOMPARE(
        table(dialog)->model()->headerData(TopsModel::FurthestColumn, Qt::Horizontal, Qt::DisplayRole).toString(),
        QStringLiteral("At most (ft)"));
    const QByteArray before = files::read(path + "/WellInfo/W-1.wlm");
    expectSummary();
    QTest::keyClick(table(dialog), Qt::Key_Return);
    const QByteArray after = files::read(path + "/WellInfo/W-1.wlm");
    QVERIFY2(after.contains("7101.3\n") && after.contains("5000\n") && after != before, after);
}

void TestTopsDialog::remarksAreListed()
{
    const auto clean = open({write("clean.csv", "Well,Name,MD\nW-1,Top,5\n")});
    QVERIFY(!clean->findChild<QPlainTextEdit *>("remarksText")->isVisible());
    QVERIFY(!clean->findChild<QLabel *>("remarksLabel")->isVisible());
    const auto dialog =
        open({write("tops.csv", threeWells), write("no.csv", "Name,MD\n"), m_folder->filePath("gone.csv")});
    const auto *text = dialog->findChild<QPlainTextEdit *>("remarksText");
    QVERIFY(text->isVisible());
    QCOMPARE(text->toPlainText(),
             QStringLiteral("tops.csv, line 7, no depth: W-1,Gap,\nno.csv: the file holds no line with a name and a "
                            "depth.\ngone.csv: it cannot be read (No such file or directory)."));
    QCOMPARE(dialog->findChild<QLabel *>("remarksLabel")->text(), QStringLiteral("&Not understood (3):"));
    expectLegible(dialog.get(), 10);
}

void TestTopsDialog::moreFilesAreAdded()
{
    const auto dialog = open({write("tops.csv", "Well,Name,MD\nW-1,Top,5\n")});
    QTest::mouseClick(button(*dialog, "addFilesButton"), Qt::LeftButton); // given up
    QCOMPARE(table(*dialog)->model()->rowCount(), 1);
    m_chosen =
        QStringList{m_folder->filePath("tops.csv"), write("more.csv", "Well,Name,MD\nW-2,Top,5\nW-1,Base,9\n")};
    pressMnemonic(dialog.get(), Qt::Key_A);
    QCOMPARE(m_filter, QStringLiteral("Tables (*.csv *.txt *.tsv *.asc *.dat);;All files (*)"));
    QCOMPARE(rowText(*dialog, 0), QStringLiteral("W-1|W-1|1|1|95.00|0|0"));
    QCOMPARE(rowText(*dialog, 1), QStringLiteral("W-2|W-2|0|1|95.00|0|0"));
}

void TestTopsDialog::aFileOfOneWell()
{
    const auto dialog = open({write("picks.txt", "Top\t50\nBase\t60\n"), write("W-2_tops.txt", "Base\t70\n")});
    QCOMPARE(rowText(*dialog, 0), QStringLiteral("picks.txt|(leave out)|||||2"));
    QCOMPARE(rowText(*dialog, 1), QStringLiteral("W-2_tops.txt|W-2|1|0||0|0"));
    QTest::keyClick(table(*dialog), Qt::Key_F2);
    QTest::keyClick(editor(*dialog), Qt::Key_Down);
    QTest::keyClick(editor(*dialog), Qt::Key_Return);
    QTRY_COMPARE(rowText(*dialog, 0), QStringLiteral("picks.txt|W-1|1|1|50.00|0|0"));
    expectSummary();
    QTest::mouseClick(button(*dialog, "importButton"), Qt::LeftButton);
    QCOMPARE(markers(0), QStringLiteral("Top@50 Base@60"));
    QCOMPARE(markers(1), QStringLiteral("Base@70 Top@100"));
}

void TestTopsDialog::aFailureLeavesTheOtherWells()
{
    const auto dialog = open({write("tops.csv", "Well,Name,MD\nW-1,Top,5\nW-2,Top,6\nW-3,Top,7\n")});
    const auto before = files::snapshot(m_survey);
    {
        FailingTarget disk("/W-2.wlm");
        const base::ScopedFileSystemCalls scope(disk);
        expectSummary();
        QTest::mouseClick(button(*dialog, "importButton"), Qt::LeftButton);
    }
    QCOMPARE(markers(0), QStringLiteral("Top@5"));
    QCOMPARE(markers(1), QStringLiteral("Top@100"));
    QCOMPARE(markers(2), QStringLiteral("Top@7"));
    QCOMPARE(files::snapshot(m_survey).keys(), before.keys()); // nothing half-written is left
    QVERIFY2(m_summary.startsWith(QLatin1String(
                 "Tops of 2 wells were written: 0 new, 2 moved; those of 1 well could not be written.\n")),
             qPrintable(m_summary));
    QVERIFY(m_summary.contains(QLatin1String("\nFailed, and as they were before:\n  W-2: Cannot write")));
    QVERIFY(dialog->hasWritten());
    QVERIFY(dialog->isVisible()); // to try again
    QCOMPARE(button(*dialog, "closeButton")->text(), QStringLiteral("Close"));
    QVERIFY(cell(*dialog, 1, TopsModel::NotesColumn).data().toString().startsWith(QLatin1String("Cannot write")));
    QVERIFY(cell(*dialog, 1, 0).data(Qt::ForegroundRole).isValid());
    QCOMPARE(cell(*dialog, 0, TopsModel::NotesColumn).data().toString(), QStringLiteral("Written."));
    QVERIFY(!(cell(*dialog, 0, TopsModel::WellColumn).flags() & Qt::ItemIsEditable));
    QVERIFY(cell(*dialog, 1, TopsModel::WellColumn).flags() & Qt::ItemIsEditable);
    QCOMPARE(state(*dialog), QStringLiteral("1 well to change: 0 new markers, 1 moved one."));
    expectSummary();
    QTest::mouseClick(button(*dialog, "importButton"), Qt::LeftButton);
    QCOMPARE(markers(1), QStringLiteral("Top@6"));
    QVERIFY(!dialog->isVisible());
}

// Writing takes so long that it shows how far it is.
void TestTopsDialog::cancelledBetweenWells()
{
    m_store->setMarkersChanged([](const QString &) { QTest::qSleep(800); });
    const auto dialog = open({write("tops.csv", "Well,Name,MD\nW-1,Top,5\nW-2,Top,6\nW-3,Top,7\n")});
    onNextDialog(QStringLiteral("progressBox"),
                 [](QDialog *box) { QTest::mouseClick(box->findChild<QPushButton *>(), Qt::LeftButton); });
    expectSummary();
    QTest::mouseClick(button(*dialog, "importButton"), Qt::LeftButton);
    QCOMPARE(markers(0), QStringLiteral("Top@5"));
    QCOMPARE(markers(2), QStringLiteral("Top@100"));
    QVERIFY2(m_summary.contains(QLatin1String("; then it was cancelled.\n")), qPrintable(m_summary));
    QVERIFY(m_summary.contains(QLatin1String("\n  W-3: Cancelled before it was written.\n")));
    QVERIFY(dialog->isVisible());
    m_store->setMarkersChanged({});
    expectSummary();
    QTest::mouseClick(button(*dialog, "importButton"), Qt::LeftButton); // the rest
    QCOMPARE(markers(2), QStringLiteral("Top@7"));
    QVERIFY2(!m_summary.contains(QLatin1String("cancelled")), qPrintable(m_summary));
}

void TestTopsDialog::damagedWellsAreMarked()
{
    files::write(m_survey + QStringLiteral("/WellInfo/W-2.wlm"), "no markers");
    const auto dialog = open({write("tops.csv", "Well,Name,MD\nW-1,Top,5\nW-2,Top,6\n")});
    QVERIFY(cell(*dialog, 1, TopsModel::NotesColumn).data().toString().contains(QLatin1String("W-2.wlm")));
    QCOMPARE(state(*dialog), QStringLiteral("1 well to change: 0 new markers, 1 moved one."));
    expectSummary();
    QTest::keyClick(table(*dialog), Qt::Key_Return);
    QVERIFY2(m_summary.contains(QLatin1String("Failed, and as they were before:\n  W-2: ")), qPrintable(m_summary));
    QVERIFY(!dialog->isVisible()); // there is nothing to try again
    QCOMPARE(files::read(m_survey + QStringLiteral("/WellInfo/W-2.wlm")), QByteArray("no markers"));
}

void TestTopsDialog::filesWithoutATopAreTold()
{
    const QString numbers = write("PICKS.TXT", "SitID\tHorID\tPick\n1\t1000\t335.5\n1\t2000\t\n2\t1000\t340\n");
    QVERIFY(!importTops(*m_store, m_asker, chooser(), {numbers, m_folder->filePath("gone.csv")}, nullptr));
    QCOMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(m_asker.boxes.first().title, QStringLiteral("Import tops"));
    QCOMPARE(
        m_asker.boxes.first().text,
        QStringLiteral("PICKS.TXT: no column holds names of tops. Its columns are SitID, HorID, Pick. The title of "
                       "such a column is Formation, Marker, Surface, Zone or Name.\ngone.csv: it cannot be read "
                       "(No such file or directory)."));
    bool isShown = false;
    onNextDialog(QStringLiteral("topsDialog"), [&isShown](QDialog *dialog) {
        isShown = true;
        onNextDialog(QStringLiteral("reportDialog"), [](QDialog *report) { report->reject(); });
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QVERIFY(importTops(*m_store, m_asker, chooser(), {numbers, write("tops.csv", threeWells)}, nullptr));
    QVERIFY(isShown);
    QCOMPARE(m_asker.boxes.size(), 1);
}

void TestTopsDialog::tablesAreToldFromOtherFiles_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("areTables");
    QTest::newRow("none") << QStringList{} << false;
    for (const char *name : {"a.csv", "a.TXT", "a.tsv", "a.asc", "a.dat"})
        QTest::newRow(name) << QStringList{QString::fromLatin1(name)} << true;
    QTest::newRow("several") << QStringList{"a.csv", "b.txt"} << true;
    QTest::newRow("one is a LAS file") << QStringList{"a.csv", "a.las"} << false;
    QTest::newRow("a LAS file called so") << QStringList{"las.txt"} << false;
    QTest::newRow("a folder") << QStringList{"folder.csv"} << false;
    QTest::newRow("gone") << QStringList{"gone.csv"} << false;
}

void TestTopsDialog::tablesAreToldFromOtherFiles()
{
    QFETCH(QStringList, names);
    QFETCH(bool, areTables);
    for (const char *name : {"a.csv", "a.TXT", "a.tsv", "a.asc", "a.dat", "b.txt"})
        write(QString::fromLatin1(name), "A,1\n");
    for (const char *name : {"a.las", "las.txt"})
        write(QString::fromLatin1(name), "~V\nVERS. 2.0 :\n~W\nWELL. Fresh :\nSTOP.M 1500 :\n~A\n");
    QVERIFY(QDir(m_folder->path()).mkdir("folder.csv"));
    QStringList paths;
    for (const QString &name : qAsConst(names))
        paths.append(m_folder->filePath(name));
    QCOMPARE(workbench::areTables(paths), areTables);
}

void TestTopsDialog::manyRowsWithLongNames_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void TestTopsDialog::manyRowsWithLongNames()
{
    QFETCH(bool, isDark);
    const QPalette before = QApplication::palette();
    if (isDark)
        QApplication::setPalette(legible::darkPalette());
    QByteArray lines = "Well,Name,MD\n";
    for (int i = 0; i < 80; ++i)
        lines += "A well with a name that is longer than any column in block 25/" + QByteArray::number(i)
            + ",A top with a name of many words,9999\n";
    {
        const auto dialog = open({write("tops.csv", lines + threeWells.mid(threeWells.indexOf('\n') + 1))});
        QCOMPARE(table(*dialog)->model()->rowCount(), 83);
        const int width = dialog->width();
        table(*dialog)->model()->setData(cell(*dialog, 0, TopsModel::WellColumn), 2, Qt::EditRole);
        table(*dialog)->scrollToBottom();
        expectLegible(dialog.get(), 10);
        QCOMPARE(dialog->width(), width);
        QVERIFY(table(*dialog)->columnWidth(TopsModel::NameColumn) <= 180);
        table(*dialog)->scrollToTop();
        table(*dialog)->model()->setData(cell(*dialog, 1, TopsModel::WellColumn), 2, Qt::EditRole); // a problem
        expectLegible(dialog.get(), 10);
    }
    QApplication::setPalette(before);
}

void TestTopsDialog::realFiles()
{
    const QString folder = files::sharedFolder(QStringLiteral("tops"));
    if (folder.isEmpty())
        QSKIP("The folder of real data has no tops.");
    const auto dialog = open({folder + "/wfmp_tops.csv", folder + "/FieldData_StratigraphyWithGaps.csv",
                              folder + "/15_9_19_SR_Formations.csv", folder + "/athabasca_PICKS.TXT"});
    const auto *remarks = dialog->findChild<QPlainTextEdit *>("remarksText");
    QVERIFY(remarks->toPlainText().contains(QLatin1String("athabasca_PICKS.TXT: no column holds names of tops.")));
    QVERIFY(remarks->toPlainText().contains(QLatin1String("line 4, no name: 100,Stratigraphy,3131.056,-9999")));
    QCOMPARE(rowText(*dialog, 0), QStringLiteral("42383347460000|(leave out)|||||4"));
    table(*dialog)->model()->setData(cell(*dialog, 0, TopsModel::WellColumn), 0, Qt::EditRole);
    QCOMPARE(rowText(*dialog, 0), QStringLiteral("42383347460000|W-1|0|0||0|4")); // feet were taken for metres
    auto *unit = dialog->findChild<QComboBox *>("unitBox");
    unit->setFocus();
    QTest::keyClick(unit, Qt::Key_Down);
    QCOMPARE(rowText(*dialog, 0), QStringLiteral("42383347460000|W-1|0|0||0|4")); // the well ends at 2000 m
    expectLegible(dialog.get(), 10);
}

LORVA_TEST_MAIN(TestTopsDialog)
#include "tst_topsdialog.moc"
