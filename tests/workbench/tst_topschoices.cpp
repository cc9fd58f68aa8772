#include "support/testmain.h"
#include "topsdialogfixture.h"

using namespace survey;
using namespace workbench;

/// How the user chooses the wells that tops go into.
class TestTopsChoices : public TopsDialogTest
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void wellsAreChosenByMouse();
    void theListShowsLongNames();
    void wellsAreChosenByKeys();
    void whatIsBeingChosenCounts();
    void twoRowsOfOneWellBlock();
};

void TestTopsChoices::wellsAreChosenByMouse()
{
    const auto dialog = open({write("tops.csv", threeWells)});
    const auto place = [&](int row, int column) {
        return table(*dialog)->visualRect(cell(*dialog, row, column)).center();
    };
    QTest::mouseClick(table(*dialog)->viewport(), Qt::LeftButton, {}, place(2, TopsModel::NameColumn));
    QVERIFY(!editor(*dialog)); // only wells are chosen
    QTest::mouseClick(table(*dialog)->viewport(), Qt::LeftButton, {}, place(2, TopsModel::WellColumn));
    QVERIFY(editor(*dialog));
    QAbstractItemView *list = editor(*dialog)->view();
    QVERIFY(list->isVisible()); // the list of wells is open at once
    QCOMPARE(list->model()->rowCount(), 4);
    QCOMPARE(editor(*dialog)->currentText(), leaveOutText());
    QTest::qWait(QApplication::doubleClickInterval()); // the list takes no click that follows at once
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(3, 0)).center());
    QTRY_VERIFY(!editor(*dialog));
    QCOMPARE(rowText(*dialog, 2), QStringLiteral("Elsewhere|W-3|0|1|93.00|0|0"));
    QCOMPARE(state(*dialog), QStringLiteral("3 wells to change: 1 new marker, 3 moved ones."));
}

// Names may differ only where a cell has no room for them.
void TestTopsChoices::theListShowsLongNames()
{
    WellProperties well;
    well.name = QStringLiteral("A well of a name that is longer than any column is wide");
    well.totalDepth = 100;
    QVERIFY(m_store->addWell(well).ok());
    const QString longName = well.name;
    well.name = QStringLiteral("W-10");
    QVERIFY(m_store->addWell(well).ok());
    const auto dialog = open({write("tops.csv", threeWells)});
    QTest::mouseClick(table(*dialog)->viewport(), Qt::LeftButton, {},
                      table(*dialog)->visualRect(cell(*dialog, 0, TopsModel::WellColumn)).center());
    const QAbstractItemView *list = editor(*dialog)->view();
    const int textWidth = list->fontMetrics().horizontalAdvance(longName);
    QVERIFY(textWidth > table(*dialog)->columnWidth(TopsModel::WellColumn));
    QVERIFY(list->viewport()->width() > textWidth);
    QStringList names;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        names.append(list->model()->index(row, 0).data().toString());
    QCOMPARE(names.mid(2), (QStringList{"W-1", "W-2", "W-3", "W-10"})); // as people count
    editor(*dialog)->hidePopup();
}

void TestTopsChoices::wellsAreChosenByKeys()
{
    const auto dialog = open({write("tops.csv", threeWells)});
    QTest::keyClick(table(*dialog), Qt::Key_Down);
    QTest::keyClick(table(*dialog), Qt::Key_Down);
    QTest::keyClick(table(*dialog), Qt::Key_F2);
    QVERIFY(editor(*dialog));
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(editor(*dialog), Qt::Key_Down);
    QCOMPARE(rowText(*dialog, 2), QStringLiteral("Elsewhere|(leave out)|||||1")); // not yet
    QTest::keyClick(editor(*dialog), Qt::Key_Escape);
    QTRY_VERIFY(!editor(*dialog));
    QVERIFY(dialog->isVisible());
    QCOMPARE(rowText(*dialog, 2), QStringLiteral("Elsewhere|(leave out)|||||1"));
    QTest::keyClick(table(*dialog), Qt::Key_F2);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(editor(*dialog), Qt::Key_Down);
    QTest::keyClick(editor(*dialog), Qt::Key_Return);
    QTRY_VERIFY(!editor(*dialog));
    QVERIFY(dialog->isVisible());
    QCOMPARE(rowText(*dialog, 2), QStringLiteral("Elsewhere|W-3|0|1|93.00|0|0"));

    // A well that was found can be left out.
    QTest::keyClick(table(*dialog), Qt::Key_Up);
    QTest::keyClick(table(*dialog), Qt::Key_F2);
    QTest::keyClick(editor(*dialog), Qt::Key_Home);
    QTest::keyClick(editor(*dialog), Qt::Key_Return);
    QTRY_VERIFY(!editor(*dialog));
    QCOMPARE(rowText(*dialog, 1), QStringLiteral("w 2|(leave out)|||||1"));
    expectSummary();
    QTest::keyClick(table(*dialog), Qt::Key_Return);
    QCOMPARE(markers(1), QStringLiteral("Top@100"));
    QCOMPARE(markers(2), QStringLiteral("Top@7"));
    QVERIFY2(m_summary.contains(QLatin1String("  w 2: Left out.\n")), qPrintable(m_summary));
}

// The button is pressed while the arrow keys have chosen another well.
void TestTopsChoices::whatIsBeingChosenCounts()
{
    const auto dialog = open({write("tops.csv", "Well,Name,MD\nW-1,Top,5\n")});
    QTest::keyClick(table(*dialog), Qt::Key_F2);
    QTest::keyClick(editor(*dialog), Qt::Key_Down);
    expectSummary();
    pressMnemonic(dialog.get(), Qt::Key_I);
    QCOMPARE(markers(0), QStringLiteral("Top@100"));
    QCOMPARE(markers(1), QStringLiteral("Top@5"));
}

void TestTopsChoices::twoRowsOfOneWellBlock()
{
    const auto dialog = open({write("tops.csv", threeWells)});
    table(*dialog)->model()->setData(cell(*dialog, 2, TopsModel::WellColumn), 0, Qt::EditRole);
    QCOMPARE(state(*dialog),
             QStringLiteral("\"W-1\" and \"Elsewhere\" go into the same well, \"W-1\": leave one of them out."));
    QVERIFY(!button(*dialog, "importButton")->isEnabled());
    QVERIFY(cell(*dialog, 0, TopsModel::WellColumn).data(Qt::BackgroundRole).isValid());
    QVERIFY(cell(*dialog, 2, TopsModel::WellColumn).data(Qt::BackgroundRole).isValid());
    QVERIFY(!cell(*dialog, 1, TopsModel::WellColumn).data(Qt::BackgroundRole).isValid());
    const auto before = files::snapshot(m_survey);
    QTest::keyClick(table(*dialog), Qt::Key_Return);
    QCOMPARE(files::snapshot(m_survey), before);
    QVERIFY(!table(*dialog)->model()->setData(cell(*dialog, 2, TopsModel::NameColumn), 0, Qt::EditRole));
    table(*dialog)->model()->setData(cell(*dialog, 0, TopsModel::WellColumn), -1, Qt::EditRole);
    QVERIFY(button(*dialog, "importButton")->isEnabled());
}

LORVA_TEST_MAIN(TestTopsChoices)
#include "tst_topschoices.moc"
