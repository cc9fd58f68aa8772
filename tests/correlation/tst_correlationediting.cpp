// The properties beside the view: what a user who edits a correlation while looking at it expects.

#include "correlation/correlationmissing.h"
#include "correlation/correlationpropertiesdialog.h"
#include "correlationviewfixture.h"
#include "logview/trackitem.h"
#include "support/testmain.h"

#include <QScrollBar>
#include <QTest>

class tst_correlationediting : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ViewFixture>(); }
    void cleanup() { m.reset(); }

    void aFurtherRowIsInSight()
    {
        showDialog();
        auto *wells = ViewFixture::find<QTableWidget>(dialog(), "wellsTable");
        auto *zones = ViewFixture::find<QTableWidget>(dialog(), "zonesTable");
        for (int i = 0; i < 12; ++i) {
            click("addWellButton");
            click("addZoneButton");
        }
        for (const QTableWidget *table : {wells, zones})
            QVERIFY(table->viewport()->rect().contains(
                table->visualRect(table->model()->index(table->rowCount() - 1, 0)).center()));
    }

    // Turning it over the tables is how one gets to their further rows.
    void theWheelChangesNoChoice()
    {
        showDialog();
        auto *wells = ViewFixture::find<QTableWidget>(dialog(), "wellsTable");
        auto *zones = ViewFixture::find<QTableWidget>(dialog(), "zonesTable");
        for (int i = 0; i < 12; ++i)
            click("addZoneButton");
        for (int i = 0; i < 12; ++i)
            click("addWellButton");
        for (QTableWidget *table : {wells, zones})
            for (int column = table == wells ? 0 : 1; column < 2; ++column) {
                table->scrollToTop();
                QComboBox *chooser = CorrelationFixture::chooser(table, 0, column);
                const QString before = chooser->currentText();
                QVERIFY(!takesWheel(chooser));
                QVERIFY(!(chooser->focusPolicy() & (Qt::WheelFocus ^ Qt::StrongFocus))); // nor takes the focus
                chooser->setFocus();
                QVERIFY(!takesWheel(chooser));
                QCOMPARE(chooser->currentText(), before);
            }
    }

    void whatWasRefusedHasTheFocus()
    {
        showDialog();
        auto *name = ViewFixture::find<QLineEdit>(dialog(), "nameEdit");
        for (const char *refused : {"", "a/b"}) {
            name->setText(refused);
            click("saveButton");
            QCOMPARE(dialog()->focusWidget(), static_cast<QWidget *>(name));
        }
        QCOMPARE(name->selectedText(), QString("a/b"));
        name->setText("North");
        auto *scale = ViewFixture::find<QComboBox>(dialog(), "scaleChooser");
        scale->setEditText("wide");
        click("saveButton");
        QVERIFY(isAt(scale));
        scale->setEditText("1000");
        click("addZoneButton");
        auto *zones = ViewFixture::find<QTableWidget>(dialog(), "zonesTable");
        QComboBox *start = CorrelationFixture::chooser(zones, 0, 1);
        QComboBox *end = CorrelationFixture::chooser(zones, 0, 2);
        type(start, "x");
        type(end, "200");
        click("saveButton");
        QVERIFY(isAt(start));
        type(start, "100");
        type(end, "y");
        click("saveButton");
        QVERIFY(isAt(end));
        QCOMPARE(m->asker.boxes.size(), 5);
    }

    void aTypedCommaIsAPoint()
    {
        showDialog();
        click("addZoneButton");
        auto *zones = ViewFixture::find<QTableWidget>(dialog(), "zonesTable");
        type(CorrelationFixture::chooser(zones, 0, 1), "450,5");
        type(CorrelationFixture::chooser(zones, 0, 2), "600");
        QLineEdit *edit = CorrelationFixture::chooser(zones, 0, 1)->lineEdit();
        QCOMPARE(edit->text(), QString("450.5"));
        edit->setCursorPosition(1);
        QTest::keyClicks(edit, ",");
        QCOMPARE(edit->cursorPosition(), 2); // typing goes on where it was
        QTest::keyClick(edit, Qt::Key_Backspace);
        click("saveButton");
        QVERIFY(m->asker.boxes.isEmpty());
        QVERIFY(files::read(m->filePath("North")).contains("|450.5|600|"));
    }

    void aSaveKeepsScaleAndFlatteningOfTheView()
    {
        m->store("North");
        CorrelationView *view = m->show();
        m->type("scaleEdit", "2000");
        m->choose("flatAtBox", "Top");
        showDialog();
        QCOMPARE(ViewFixture::find<QComboBox>(dialog(), "flatAtChooser")->currentText(), QString("Top"));
        QVERIFY(!dialog()->isChanged());
        click("addWellButton");
        click("saveButton");
        QCOMPARE(view->columns().size(), 3);
        QCOMPARE(m->text("scaleEdit"), QString("2000"));
        QCOMPARE(view->tracks().at(0)->axis().start, float(500 - 1000));
        QVERIFY(isNear(view->columns().at(0).axis.height, y(2000) / 2)); // at 1:2000, from 1000 m above the marker
        ViewFixture::find<QComboBox>(dialog(), "scaleChooser")->setEditText("500");
        click("saveButton");
        QCOMPARE(m->text("scaleEdit"), QString("500"));
        m->choose("flatAtBox", "None");
        showDialog();
        QCOMPARE(ViewFixture::find<QComboBox>(dialog(), "flatAtChooser")->currentText(), QString("None"));
    }

    void aFileThatChangedIsReadAnew()
    {
        m->store("North");
        CorrelationView *view = m->show();
        m->type("scaleEdit", "2000");
        m->choose("flatAtBox", "Top");
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        m->display->synchronise();
        QCOMPARE(view->columns().size(), 3);
        QCOMPARE(ViewFixture::find<QTableWidget>(dialog(), "wellsTable")->rowCount(), 3);
        QCOMPARE(m->text("scaleEdit"), QString("2000"));
        QCOMPARE(view->tracks().at(0)->axis().start, float(500 - 1000));
        QVERIFY(!dialog()->isChanged());
        const int redraws = view->redrawCount();
        m->display->synchronise(); // nothing new
        QCOMPARE(view->redrawCount(), redraws);
        dialog()->addWellClicked();
        m->store("North");
        m->display->synchronise(); // edits go before
        QCOMPARE(view->columns().size(), 3);
        QCOMPARE(ViewFixture::find<QTableWidget>(dialog(), "wellsTable")->rowCount(), 4);
    }

    // A choice that waits for its save is not taken back by looking at the view.
    void anEditedDialogKeepsItsFlattening()
    {
        m->store("North");
        m->show();
        showDialog();
        auto *flat = ViewFixture::find<QComboBox>(dialog(), "flatAtChooser");
        flat->setFocus();
        QTest::keyClick(flat, Qt::Key_Down);
        QVERIFY(dialog()->isChanged());
        showDialog();
        QCOMPARE(flat->currentText(), QString("Top"));
    }

    void whatIsMissingIsASentence()
    {
        const correlation::KnownNames known{[](const QString &well) { return well == "A"; },
                                            [](const QString &, const QString &name) { return name == "T"; }};
        CorrelationProperties properties;
        properties.wells = {{"A", "T"}};
        properties.markers = QStringList{"Top "};
        QCOMPARE(correlation::missingText(properties, known, {" Top"}), QString());
        QCOMPARE(correlation::missingText(properties, known, {"Base"}),
                 QString("Not found in the survey, and lost when this is saved: the marker \"Top \"."));
        properties.wells = {{"A", "X"}, {"B", "T"}, {"B", "X"}};
        QCOMPARE(
            correlation::missingText(properties, known, {"Top"}),
            QString("Not found in the survey, and lost when this is saved: the template \"X\" of A, the well \"B\"."
                    " The row of such a well shows the survey's first one: choose another, or remove the row."));
        properties.wells.clear();
        for (int i = 0; i < 14; ++i)
            properties.wells.append({QString("B%1").arg(i), "T"});
        const QString many = correlation::missingText(properties, known, {"Top"});
        QVERIFY2(many.contains("the well \"B11\", and 2 more. "), qPrintable(many));
    }

    // The file holds a broken bar in place of a bar in a marker's name. It means that marker all the same.
    void zonesKeepMarkersWithABar()
    {
        const QString sand = QStringLiteral("Sand | upper");
        for (MemoryHost::Well &well : m->host.storedWells)
            well.markers.append({sand, 700, QColor(1, 2, 3)});
        const QByteArray zones = "1\nZ|Sand \xC2\xA6 upper|Base|#ff8000|1|0|0\n";
        m->store("North", "2\nA:T\nB:T\n", "1\nTop\n", zones);
        m->show();
        showDialog();
        auto *table = ViewFixture::find<QTableWidget>(dialog(), "zonesTable");
        QCOMPARE(CorrelationFixture::chooser(table, 0, 1)->currentText(), sand);
        QVERIFY(ViewFixture::find<QLabel>(dialog(), "missingLabel")->text().isEmpty());
        click("saveButton");
        QVERIFY(files::read(m->filePath("North")).endsWith("Zones:" + zones));
    }

    void wellsThatAreGoneAreNamedInSentences()
    {
        m->store("North", "3\nA:T\nX:T\nY:T\n");
        m->show();
        QCOMPARE(m->status(), QString("The survey has no well \"X\". The survey has no well \"Y\""));
    }

private:
    CorrelationPropertiesDialog *dialog() const { return m->display->dialog(); }
    void showDialog()
    {
        if (!m->display) {
            m->store("North");
            m->show();
        }
        m->display->showProperties();
        dialog()->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog()))
            qFatal("the dialog gets no focus");
    }
    // What it does not take, the table gets.
    static bool takesWheel(QObject *chooser)
    {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        chooser->event(&event);
        return event.isAccepted();
    }
    void click(const char *button) const
    {
        QTest::mouseClick(ViewFixture::find<QPushButton>(dialog(), button), Qt::LeftButton);
    }
    // The line of an editable chooser hands the focus to the chooser.
    bool isAt(QComboBox *chooser) const
    {
        return dialog()->focusWidget() == chooser || dialog()->focusWidget() == chooser->lineEdit();
    }
    static void type(QComboBox *chooser, const QString &text)
    {
        chooser->setFocus();
        chooser->lineEdit()->selectAll();
        QTest::keyClicks(chooser->lineEdit(), text);
    }

    std::unique_ptr<ViewFixture> m;
};

LORVA_TEST_MAIN(tst_correlationediting)
#include "tst_correlationediting.moc"
