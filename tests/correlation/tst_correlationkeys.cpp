#include "correlation/correlationpropertiesdialog.h"
#include "correlation/correlationwellstable.h"
#include "correlationfixture.h"
#include "support/testmain.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

struct KeysFixture : CorrelationFixture
{
    KeysFixture()
    {
        store(QStringLiteral("North"), "3\nA:T\nB:Default\nC:Simple\n", "1\nTop\n",
              "1\nSand|Top|Base|#112233|1|0|0\n");
        openAt96Dots();
        dialog = std::make_unique<CorrelationPropertiesDialog>(*launch, QStringLiteral("North"));
        dialog->show();
        dialog->activateWindow();
        isActive = QTest::qWaitForWindowActive(dialog.get());
    }
    QTableWidget *table(const char *name) const { return find<QTableWidget>(dialog.get(), name); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    /// The wells with their templates, from left to right.
    QString wells() const
    {
        QStringList texts;
        for (const CorrelationWell &well : find<CorrelationWellsTable>(dialog.get(), "wellsTable")->wells())
            texts.append(well.wellName + ':' + well.templateName);
        return texts.join(' ');
    }
    QMenu *menuOfRow(int row) const
    {
        QComboBox *box = chooser(table("wellsTable"), row, 0);
        QContextMenuEvent event(QContextMenuEvent::Mouse, box->rect().center(),
                                box->mapToGlobal(box->rect().center()));
        QApplication::sendEvent(box, &event);
        return dialog->findChild<QMenu *>(QStringLiteral("wellRowMenu"));
    }

    std::unique_ptr<CorrelationPropertiesDialog> dialog;
    bool isActive = false;
};

} // namespace

/// The properties of a correlation without a mouse, and the order of its wells.
class tst_correlationkeys : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<KeysFixture>();
        QVERIFY(m->isActive);
    }
    void cleanup() { m.reset(); }

    void tabGoesOnceThroughAll()
    {
        auto *name = KeysFixture::find<QLineEdit>(m->dialog.get(), "nameEdit");
        name->setFocus();
        QStringList way;
        for (int i = 0; i < 60 && (i == 0 || QApplication::focusWidget() != name); ++i) {
            m->press(Qt::Key_Tab);
            const QWidget *focus = QApplication::focusWidget();
            way.append(focus->objectName());
            if (auto *table = qobject_cast<const QTableWidget *>(focus))
                way.last() += QString::number(table->currentColumn());
        }
        const QStringList cells{"wellChooser", "templateChooser"};
        const QStringList others{"addWellButton",    "removeWellButton",  "allMarkersBox", "markersTable0",
                                 "flatAtChooser",    "zonesBox",          "zonesTable0",   "startChooser",
                                 "endChooser",       "zonesTable3",       "zonesTable4",   "addZoneButton",
                                 "removeZoneButton", "trackWidthChooser", "scaleChooser",  "saveButton",
                                 "closeButton",      "nameEdit"};
        QCOMPARE(way, cells + cells + cells + others);
    }

    void spaceTicksAMarker()
    {
        QTableWidget *markers = m->table("markersTable");
        markers->setFocus();
        markers->setCurrentCell(1, 0);
        m->press(Qt::Key_Space); // beside the name
        QCOMPARE(markers->item(1, 1)->checkState(), Qt::Checked);
        QVERIFY(m->dialog->isChanged());
        markers->setCurrentCell(1, 1);
        m->press(Qt::Key_Space); // on the box itself, once
        QCOMPARE(markers->item(1, 1)->checkState(), Qt::Unchecked);
        m->press(Qt::Key_Up);
        QCOMPARE(markers->currentRow(), 0);
    }

    void wellsMoveWithTheirTemplates()
    {
        QTableWidget *wells = m->table("wellsTable");
        KeysFixture::chooser(wells, 0, 1)->setFocus();
        wells->setCurrentCell(0, 1);
        m->press(Qt::Key_Up, Qt::AltModifier); // it is the first
        QCOMPARE(m->wells(), QString("A:T B:Default C:Simple"));
        QVERIFY(!m->dialog->isChanged());
        m->press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(m->wells(), QString("B:Default A:T C:Simple"));
        QVERIFY(m->dialog->isChanged());
        m->press(Qt::Key_Down, Qt::AltModifier); // the same well further on
        QCOMPARE(m->wells(), QString("B:Default C:Simple A:T"));
        QCOMPARE(QApplication::focusWidget(), KeysFixture::chooser(wells, 2, 1));
        m->press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(m->wells(), QString("B:Default C:Simple A:T"));
        // The markers stand in the order of the wells.
        QCOMPARE(m->table("markersTable")->item(2, 0)->text(), QString("Only B"));
        QTest::mouseClick(KeysFixture::find<QPushButton>(m->dialog.get(), "saveButton"), Qt::LeftButton);
        QVERIFY(files::read(m->filePath(QStringLiteral("North"))).contains("3\nB:Default\nC:Simple\nA:T\n"));
    }

    void theMenuMovesTheWellUnderTheMouse()
    {
        QMenu *menu = m->menuOfRow(2);
        QVERIFY(menu && menu->isVisible());
        QCOMPARE(menu->actions().size(), 2);
        QVERIFY(menu->actions().at(0)->isEnabled() && !menu->actions().at(1)->isEnabled());
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(0)).center());
        QCOMPARE(m->wells(), QString("A:T C:Simple B:Default"));
        QTRY_VERIFY(!m->dialog->findChild<QMenu *>(QStringLiteral("wellRowMenu")));
        menu = m->menuOfRow(0);
        QVERIFY(!menu->actions().at(0)->isEnabled() && menu->actions().at(1)->isEnabled());
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(1)).center());
        QCOMPARE(m->wells(), QString("C:Simple A:T B:Default"));
    }

    // What was chosen before it was deleted elsewhere is not lost by a move.
    void aTemplateThatIsGoneMovesAlong()
    {
        QTableWidget *wells = m->table("wellsTable");
        m->launch->project.globalTemplateNames.removeAll(QStringLiteral("T"));
        wells->setCurrentCell(0, 0);
        KeysFixture::chooser(wells, 0, 0)->setFocus();
        m->press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(m->wells(), QString("B:Default A:T C:Simple"));
    }

    void userDepthIsTypedOver()
    {
        QTableWidget *zones = m->table("zonesTable");
        QTest::mouseClick(KeysFixture::find<QPushButton>(m->dialog.get(), "addZoneButton"), Qt::LeftButton);
        QLineEdit *start = KeysFixture::chooser(zones, 1, 1)->lineEdit();
        QLineEdit *end = KeysFixture::chooser(zones, 1, 2)->lineEdit();
        QTest::mouseClick(start, Qt::LeftButton, {}, QPoint(8, start->height() / 2));
        QTest::keyClicks(start, "1500");
        QCOMPARE(start->text(), QString("1500"));
        QTest::keyClick(KeysFixture::chooser(zones, 1, 1), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), "1600");
        QCOMPARE(end->text(), QString("1600"));
        // A typed depth is corrected where the click was.
        QTest::mouseClick(start, Qt::LeftButton, {}, QPoint(start->width() - 2, start->height() / 2));
        QVERIFY(!start->hasSelectedText());
        QTest::keyClicks(start, ".5");
        QCOMPARE(start->text(), QString("1500.5"));
    }

    void aLongMarkerShowsItsBeginning()
    {
        QLineEdit *start = KeysFixture::chooser(m->table("zonesTable"), 0, 1)->lineEdit();
        QCOMPARE(start->text(), QString("Top"));
        QCOMPARE(start->cursorPosition(), 0);
        QComboBox *end = KeysFixture::chooser(m->table("zonesTable"), 0, 2);
        end->setFocus();
        QTest::keyClick(end, Qt::Key_Down);
        QCOMPARE(end->currentText(), QString("Only B"));
        QCOMPARE(end->lineEdit()->cursorPosition(), 0);
    }

    // 1920 by 1080 pixels are 960 by 540 where the desktop magnifies by two.
    void theButtonsStayInSightOnALowScreen()
    {
        m->dialog->resize(720, 420);
        QCOMPARE(m->dialog->size(), QSize(720, 420));
        const auto isInSight = [](const QWidget *widget) {
            return widget->visibleRegion().boundingRect() == widget->rect();
        };
        for (const char *name : {"nameEdit", "scaleChooser", "saveButton", "closeButton"})
            QVERIFY2(isInSight(KeysFixture::find<QWidget>(m->dialog.get(), name)), name);
        auto *zones = KeysFixture::find<QWidget>(m->dialog.get(), "addZoneButton");
        QVERIFY(!isInSight(zones));
        KeysFixture::find<QWidget>(m->dialog.get(), "removeZoneButton")->setFocus();
        m->press(Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), zones);
        QVERIFY(isInSight(zones)); // Tab brings it there
        m->dialog->resize(720, 760);
        QTRY_VERIFY(!KeysFixture::find<QScrollArea>(m->dialog.get(), "partsArea")->verticalScrollBar()->isVisible());
        QVERIFY(isInSight(KeysFixture::find<QWidget>(m->dialog.get(), "addWellButton")));
    }

    void theColourWithTheKeyboardHasAFrame()
    {
        QTableWidget *zones = m->table("zonesTable");
        const QColor color(0x11, 0x22, 0x33);
        const QRect cell = zones->visualRect(zones->model()->index(0, 3));
        const auto cornerAndMiddle = [&] {
            const QImage cells = zones->viewport()->grab().toImage();
            return qMakePair(cells.pixelColor(cell.right() - 1, cell.center().y()), cells.pixelColor(cell.center()));
        };
        zones->setCurrentCell(0, 3);
        KeysFixture::find<QLineEdit>(m->dialog.get(), "nameEdit")->setFocus();
        QCOMPARE(cornerAndMiddle().second, color);
        const QColor edge = cornerAndMiddle().first;
        zones->setFocus();
        QVERIFY(cornerAndMiddle().first != edge);
        QCOMPARE(cornerAndMiddle().first, zones->palette().color(QPalette::Highlight));
        QCOMPARE(cornerAndMiddle().second, color);
    }

    void spaceChoosesTheColour()
    {
        QTableWidget *zones = m->table("zonesTable");
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
            int seen = 0;
            QTimer::singleShot(0, m->dialog.get(), [&seen] {
                auto *colors = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
                if (!colors)
                    return;
                ++seen;
                colors->reject();
            });
            zones->setFocus();
            zones->setCurrentCell(0, 3);
            QTest::keyClick(zones, key);
            QCOMPARE(seen, 1);
        }
        zones->setCurrentCell(0, 4);
        QTest::keyClick(zones, Qt::Key_Space); // of the next column: its box
        QCOMPARE(zones->item(0, 4)->checkState(), Qt::Unchecked);
    }

private:
    std::unique_ptr<KeysFixture> m;
};

LORVA_TEST_MAIN(tst_correlationkeys)
#include "tst_correlationkeys.moc"
