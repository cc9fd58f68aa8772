// The table that the three editors share: keyboard, clipboard, many rows.

#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"
#include "welldata/siderows.h"

#include <QApplication>
#include <QClipboard>
#include <QDoubleValidator>
#include <QHeaderView>
#include <QPixmapCache>
#include <QScrollBar>
#include <QSignalSpy>

#include <malloc.h>

using F = WellDataFixture;

class tst_welldatatable : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<WellDataFixture>();
        m->select("W-1");
        QCoreApplication::processEvents();
    }
    void cleanup() { m.reset(); }

    void tabWalksTheCells()
    {
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        for (const auto &[row, column] : {std::pair<int, int>{0, 1}, {0, 2}, {0, 3}, {0, 4}, {1, 0}, {1, 1}}) {
            key(Qt::Key_Tab);
            QCOMPARE(at(), qMakePair(row, column));
        }
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(F::edit(m->markers(), 1, 1)));
        QCOMPARE(F::edit(m->markers(), 1, 1)->selectedText(), QString("250"));
        key(Qt::Key_Backtab);
        QCOMPARE(at(), qMakePair(1, 0));
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(table()));
        key(Qt::Key_Backtab);
        QCOMPARE(at(), qMakePair(0, 4));
    }
    void tabLeavesTheTableAtItsEnds()
    {
        const QPair<int, int> last(table()->rowCount() - 1, table()->columnCount() - 1);
        for (const bool isInCell : {false, true}) { // the keyboard in the table itself, and in the line of a number
            table()->setFocus();
            table()->setCurrentCell(isInCell ? 0 : last.first, isInCell ? 1 : last.second);
            if (isInCell) {
                F::edit(m->markers(), 0, 1)->setFocus();
                key(Qt::Key_Backtab);
                key(Qt::Key_Backtab);
            } else {
                key(Qt::Key_Tab);
            }
            const QWidget *outside = QApplication::focusWidget();
            QVERIFY(outside && outside != table() && !table()->isAncestorOf(outside));
            key(isInCell ? Qt::Key_Tab : Qt::Key_Backtab); // and back, to the end that is next
            QCOMPARE(at(), isInCell ? qMakePair(0, 0) : last);
            QVERIFY(table()->hasFocus());
        }
    }
    // Every widget of the page is reached once, also with many lines of numbers in the table.
    void tabComesToTheButtons()
    {
        auto *update = F::find<QPushButton>(m->markers(), "updateButton");
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        F::edit(m->markers(), 0, 1)->setText("12"); // "Update" is there with a change
        QVERIFY(update->isEnabled());
        int steps = 0;
        for (; steps < 40 && QApplication::focusWidget() != update; ++steps)
            key(Qt::Key_Tab);
        QVERIFY2(steps < 40, "not reached");
        key(Qt::Key_Tab);
        const QWidget *behind = QApplication::focusWidget();
        QVERIFY(behind && !table()->isAncestorOf(behind));
    }
    void enterAndTheArrowsGoDownAndUp()
    {
        F::edit(m->markers(), 0, 1)->setFocus();
        key(Qt::Key_Return);
        QCOMPARE(at(), qMakePair(1, 1));
        key(Qt::Key_Up);
        QCOMPARE(at(), qMakePair(0, 1));
        key(Qt::Key_Down);
        QCOMPARE(at(), qMakePair(1, 1));
        key(Qt::Key_Enter); // there is no further row
        QCOMPARE(at(), qMakePair(1, 1));
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        key(Qt::Key_Right);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(F::edit(m->markers(), 0, 1)));
    }
    void typingOverANumberAndEnterEditsIt()
    {
        F::edit(m->markers(), 0, 1)->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(F::edit(m->markers(), 0, 1), "160");
        key(Qt::Key_Return);
        QCOMPARE(F::shown(m->markers()).at(0), QStringList({"Top", "160", "140", "135", "#0a141e"}));
    }
    void aTypedNameGoesOnToTheNextCell()
    {
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        typeText("Upper");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(F::name(m->markers(), 0), QString("Upper"));
        QCOMPARE(at(), qMakePair(0, 1));
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(F::edit(m->markers(), 0, 1)));
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        typeText("Top");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(F::name(m->markers(), 0), QString("Top"));
        QCOMPARE(at(), qMakePair(1, 0));
    }
    void enterBehindATypedNameGoesOneRowDown()
    {
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        paste("A\t100\nB\t110\nC\t120\nD\t130\nE\t140\nF\t150\n");
        table()->setCurrentCell(1, 0);
        for (int row = 1; row < 4; ++row) {
            typeText("Typed");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QCoreApplication::processEvents();
            QCOMPARE(at(), qMakePair(row + 1, 0));
            QCOMPARE(F::name(m->markers(), row), QString("Typed"));
        }
        QCOMPARE(F::name(m->markers(), 4), QString("E"));
    }
    void anotherCellTakesATypedNameAndStaysTheCurrentOne()
    {
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        paste("A\t100\nB\t110\nC\t120\nD\t130\nE\t140\nF\t150\n");
        table()->setCurrentCell(0, 0);
        typeText("Typed");
        table()->setCurrentCell(3, 0);
        QCoreApplication::processEvents();
        QCOMPARE(at(), qMakePair(3, 0));
        QCOMPARE(F::name(m->markers(), 0), QString("Typed"));
    }
    void theWholeMarkerIsTypedWithTheKeyboard()
    {
        F::click(m->markers(), "addButton");
        typeText("Third");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        typeText("300");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->storedNames(m->key1), QStringList({"Top", "Base", "Third"}));
        QCOMPARE(m->storedDepths(m->key1).at(2), 300.0F);
    }
    void anUnfinishedLineIsStoredToo()
    {
        F::edit(m->markers(), 0, 1)->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(F::edit(m->markers(), 0, 1), "170");
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->storedDepths(m->key1).at(0), 170.0F);
        QCOMPARE(F::number(m->markers(), 0, 2), QString("150"));
    }

    void columnsArePastedFromASpreadsheet()
    {
        table()->setFocus();
        table()->setCurrentCell(1, 0);
        paste("One\t100,5\r\nTwo\t200\r\nThree\tx\r\n");
        QCOMPARE(F::shown(m->markers()),
                 QVector<QStringList>({{"Top", "150", "150", "130", "#0a141e"},
                                       {"One", "100.5", "80.5", "75.5", "#0a141e"},
                                       {"Two", "200", "180", "175", "#000000"},
                                       {"Three", "x", "-20", "-25", "#000000"}}));
        QVERIFY(m->markers()->isModified());
        // In a line as well; a single value goes into the line itself.
        F::edit(m->markers(), 0, 1)->setFocus(Qt::TabFocusReason);
        paste("1\n2\n");
        QCOMPARE(F::number(m->markers(), 0, 1), QString("1"));
        QCOMPARE(F::number(m->markers(), 1, 1), QString("2"));
        F::edit(m->markers(), 0, 1)->setFocus(Qt::TabFocusReason);
        F::edit(m->markers(), 0, 1)->selectAll();
        paste("77");
        QCOMPARE(F::number(m->markers(), 0, 1), QString("77"));
    }
    void withoutAWellNothingIsPasted()
    {
        m->select("None");
        QApplication::clipboard()->setText("One\t100\n");
        QKeyEvent key(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier);
        if (table()->isEnabled())
            QCoreApplication::sendEvent(table(), &key);
        QCOMPARE(table()->rowCount(), 0);
        QVERIFY(!table()->isEnabled());
        m->select("W-1");
        QVERIFY(table()->isEnabled());
    }
    void zoneTypesArePastedWhereTheyAreKnown()
    {
        m->show(m->zones());
        m->zones()->addRow();
        m->zones()->table()->setFocus();
        m->zones()->table()->setCurrentCell(0, 0);
        paste("A\t1\t2\tGas\textra\nB\t3\t4\tHelium\n");
        QCOMPARE(F::shown(m->zones()), QVector<QStringList>({{"A", "1", "2", "Gas"}, {"B", "3", "4", "Oil"}}));
    }
    void selectedCellsAreCopied()
    {
        table()->setFocus();
        table()->clearSelection();
        table()->setRangeSelected({0, 0, 1, 1}, true);
        QTest::keyClick(table(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QString("Top\t150\nBase\t250"));
    }
    void deleteClears()
    {
        table()->setFocus();
        table()->clearSelection();
        table()->setRangeSelected({0, 0, 1, 1}, true);
        QTest::keyClick(table(), Qt::Key_Delete);
        QCOMPARE(F::shown(m->markers()).at(1), QStringList({"", "", "-20", "-25", "#0a141e"}));
        QVERIFY(m->markers()->isModified());
        F::edit(m->markers(), 0, 3)->setFocus(Qt::TabFocusReason);
        QTest::keyClick(F::edit(m->markers(), 0, 3), Qt::Key_Delete);
        table()->setFocus();
        QCOMPARE(F::number(m->markers(), 0, 3), QString()); // and it stays empty
    }

    // Its own context menu and another program come between as long as one types.
    void aBegunNumberIsTakenWhenItsLineIsLeftForAnotherOne()
    {
        const QDoubleValidator validator;
        CellEdit line(&validator, 0, 1);
        const QSignalSpy edited(&line, &CellEdit::edited);
        line.setText("-");
        for (const Qt::FocusReason reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::TabFocusReason}) {
            QFocusEvent left(QEvent::FocusOut, reason);
            QCoreApplication::sendEvent(&line, &left);
            QCOMPARE(edited.count(), reason == Qt::TabFocusReason ? 1 : 0);
        }
    }

    void aTextThatIsNoNumberStandsOut()
    {
        const CellEdit *line = F::edit(m->markers(), 0, 1);
        const QColor usual = line->palette().color(QPalette::Text);
        F::type(m->markers(), 0, 1, "-");
        QVERIFY(line->palette().color(QPalette::Text) != usual);
        F::type(m->markers(), 0, 1, "-1");
        QCOMPARE(line->palette().color(QPalette::Text), usual);
    }
    void aTypedCommaIsAPoint()
    {
        F::type(m->markers(), 0, 1, "12,5");
        QCOMPARE(F::number(m->markers(), 0, 1), QString("12.5"));
    }

    // Ten thousand rows: cells stand where they are seen, and nothing is done for all rows at once.
    void manyRowsHaveFewCells()
    {
        QCOMPARE(WellDataTable(welldata::pointColumns()).madeCells(), 0);
        fill(10000);
        QCOMPARE(table()->rowCount(), 10000);
        QVERIFY2(table()->madeCells() < 5 * 300, qPrintable(QString::number(table()->madeCells())));
        table()->verticalScrollBar()->setValue(table()->verticalScrollBar()->maximum());
        QCOMPARE(F::name(m->markers(), 9999), QString("M 9999"));
        QCOMPARE(F::number(m->markers(), 9999, 1), QString("999.9"));
        // Scrolled through, the table does not fill up with lines.
        for (int row = 0; row < 10000; row += 50) {
            table()->verticalScrollBar()->setValue(row);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QVERIFY(table()->findChildren<CellEdit *>().size() < 2500);
    }
    void theLineInUseStaysWhileTheTableIsScrolled()
    {
        fill(10000);
        table()->verticalScrollBar()->setValue(500);
        const QPointer<CellEdit> edit = F::edit(m->markers(), 505, 1);
        const QPointer<CellEdit> other = F::edit(m->markers(), 506, 1);
        edit->setFocus();
        for (int row = 1000; row < 10000; row += 50) {
            table()->verticalScrollBar()->setValue(row);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QVERIFY(!other);
        QVERIFY(edit && edit->hasFocus());
    }
    void anEditNeverFillsTheTableAnew()
    {
        fill(10000);
        const int fills = table()->fillCount();
        const int cells = table()->madeCells();
        F::type(m->markers(), 5, 1, "3");
        QCOMPARE(table()->madeCells(), cells);
        F::click(m->markers(), "addButton");
        QCOMPARE(table()->rowCount(), 10001);
        QVERIFY(table()->madeCells() - cells < 5 * 60); // those that came into view
        QCOMPARE(F::shownRow(m->markers(), 10000), QStringList({"", "", "", "", "#000000"}));
        F::click(m->markers(), "deleteButton");
        table()->setCurrentCell(0, 0);
        F::click(m->markers(), "deleteButton");
        QCOMPARE(table()->rowCount(), 9999);
        QCOMPARE(F::name(m->markers(), 0), QString("M 1"));
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->well(m->key1).markers.size(), 9999);
        QCOMPARE(table()->fillCount(), fills);
    }
    // Qt's view would remember each widget that went with its row: 40 bytes of some thousand widgets at each round.
    void rowsThatComeAndGoCostNoMemory()
    {
        constexpr int rounds = 30;
        constexpr int noise = 35000; // freed pieces that the C library keeps count as used
        for (int i = 0; i < 50; ++i)
            m->well(m->key1).logs.append({QString("L %1").arg(i), {}, {100, 200}, {1, 2}});
        fill(50);
        const auto use = [this] {
            for (int i = 0; i < rounds; ++i) {
                for (const char *well : {"W-2", "W-1", "W-2", "W-1"})
                    m->select(QString::fromLatin1(well));
                table()->selectAll();
                m->markers()->deleteRow();
                m->asker.boxes = {};
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QCoreApplication::processEvents();
            }
            QPixmapCache::clear();
            return static_cast<qint64>(::mallinfo2().uordblks);
        };
        const qint64 before = use();
        const qint64 grown = use() - before;
        QVERIFY2(grown < noise, qPrintable(QString::number(grown)));
    }
    void rowsThatGoAreNoLongerSeen()
    {
        m->show(m->logs());
        const QPointer<QWidget> check = m->logs()->findChild<QCheckBox *>();
        QVERIFY(check->isVisible());
        m->select("W-2");
        QVERIFY(!check || !check->isVisible());
        m->select("W-1");
        m->show(m->markers());
        const QPointer<QWidget> first = F::edit(m->markers(), 0, 1);
        const QPointer<QWidget> second = F::edit(m->markers(), 1, 1);
        QVERIFY(first->isVisible() && second->isVisible());
        table()->setCurrentCell(0, 0);
        m->markers()->deleteRow();
        QVERIFY(!first || !first->isVisible());
        QVERIFY(second && second->isVisible());
        m->select("W-2");
        QVERIFY(!second || !second->isVisible());
    }
    void rowsRemovedAboveLeaveTheOthersAsTheyAre()
    {
        fill(1000);
        table()->verticalScrollBar()->setValue(500);
        F::type(m->markers(), 510, 1, "7");
        table()->clearSelection();
        for (int row = 0; row < 400; row += 2)
            table()->setRangeSelected({row, 0, row, 0}, true);
        m->markers()->deleteRow();
        QCOMPARE(table()->rowCount(), 800);
        QCOMPARE(F::name(m->markers(), 0), QString("M 1"));
        table()->verticalScrollBar()->setValue(305);
        QCOMPARE(F::name(m->markers(), 310), QString("M 510"));
        QCOMPARE(F::number(m->markers(), 310, 1), QString("7"));
        QCOMPARE(F::edit(m->markers(), 310, 1)->property("row").toInt(), 310);
        F::type(m->markers(), 310, 1, "8");
        QCOMPARE(F::number(m->markers(), 310, 2), QString("-12"));
        QCOMPARE(table()->rows().at(310).name, QString("M 510"));
    }
    void manyPastedRowsAreTaken()
    {
        QString text;
        for (int i = 0; i < 10000; ++i)
            text += QString("P %1\t%2\n").arg(i).arg(i / 20.0);
        table()->setFocus();
        table()->setCurrentCell(0, 0);
        paste(text);
        QCOMPARE(table()->rowCount(), 10000);
        QCOMPARE(table()->rows().at(9999).name, QString("P 9999"));
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->well(m->key1).markers.size(), 10000);
    }

private:
    WellDataTable *table() const { return m->markers()->table(); }
    QPair<int, int> at() const { return {table()->currentRow(), table()->currentColumn()}; }
    static void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    // The first character may open an editor that takes the others.
    static void typeText(const QString &text)
    {
        for (const QChar character : text)
            QTest::keyClicks(QApplication::focusWidget(), character);
    }
    static void paste(const QString &text)
    {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    }
    void fill(int count)
    {
        QVector<host::Marker> markers;
        for (int i = 0; i < count; ++i)
            markers.append({QString("M %1").arg(i), static_cast<float>(i) / 10, Qt::red});
        m->well(m->key1).markers = markers;
        m->launch->catalogue.build();
        m->select("W-2");
        m->select("W-1");
        QCoreApplication::processEvents();
    }

    std::unique_ptr<WellDataFixture> m;
};

LORVA_TEST_MAIN(tst_welldatatable)
#include "tst_welldatatable.moc"
