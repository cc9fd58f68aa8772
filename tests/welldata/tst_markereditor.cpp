// The tab "Marker(s)": its table, its buttons, what it computes and what it stores.

#include "support/testmain.h"
#include "tests/welldata/welldatafixture.h"

#include <QColorDialog>
#include <QSignalSpy>
#include <QTimer>

using F = WellDataFixture;

class tst_markereditor : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<WellDataFixture>(); }
    void cleanup() { m.reset(); }

    void withoutAWellNothingCanBeDone()
    {
        QCOMPARE(F::status(m->markers()), QString("Well not selected !"));
        for (const char *button : {"addButton", "deleteButton", "asciiFileButton", "updateButton"})
            QVERIFY2(!F::isEnabled(m->markers(), button), button);
        m->select("W-1");
        QCOMPARE(table()->rowCount(), 2);
        m->select("None");
        QCOMPARE(table()->rowCount(), 0);
        QCOMPARE(F::status(m->markers()), QString("Well not selected !"));
        for (const char *button : {"addButton", "deleteButton", "asciiFileButton", "updateButton"})
            QVERIFY2(!F::isEnabled(m->markers(), button), button);
    }

    void itLooksAsPrescribed()
    {
        m->select("W-1");
        QStringList headers;
        for (int column = 0; column < table()->columnCount(); ++column)
            headers.append(table()->horizontalHeaderItem(column)->text());
        QCOMPARE(headers.join(';'), QString("Name;MD;TVD;TVDSS;Color"));
        QCOMPARE(m->markers()->windowTitle(), QString("Marker(s)"));
        QCOMPARE(F::find<QPushButton>(m->markers(), "deleteButton")->toolTip(), QString("Delete"));
        QCOMPARE(F::find<QPushButton>(m->markers(), "asciiFileButton")->text(), QString("ASCII File"));
        QCOMPARE(F::find<QPushButton>(m->markers(), "updateButton")->text(), QString("Update"));
        QVERIFY(!F::find<QPushButton>(m->markers(), "addButton")->icon().isNull());
        QVERIFY(!F::find<QPushButton>(m->markers(), "deleteButton")->icon().isNull());
        for (const char *button : {"addButton", "deleteButton", "asciiFileButton", "updateButton"})
            QVERIFY2(F::isEnabled(m->markers(), button), button);
        for (int column = 1; column <= 3; ++column) {
            const CellEdit *line = F::edit(m->markers(), 1, column);
            QVERIFY(!line->hasFrame());
            QVERIFY(qobject_cast<const QDoubleValidator *>(line->validator()));
            QCOMPARE(line->property("row").toInt(), 1);
            QCOMPARE(line->property("column").toInt(), column);
            QVERIFY(line->alignment() & Qt::AlignRight);
            QVERIFY(!line->toolTip().isEmpty());
        }
        QVERIFY(table()->item(0, 0)->flags() & Qt::ItemIsEditable);
        QVERIFY(!(table()->item(0, 4)->flags() & Qt::ItemIsEditable));
    }

    void aStoredMarkerShowsItsMeasuredDepthAsTvd()
    {
        m->well(m->key1).markers = {{"Deep", 1234567.0F, QColor(1, 2, 3)}, {"Fine", 812.34567F, Qt::white}};
        m->select("W-1");
        QCOMPARE(F::shown(m->markers()),
                 QVector<QStringList>({{"Deep", "1.23457e+06", "1.23457e+06", "1.23455e+06", "#010203"},
                                       {"Fine", "812.346", "812.346", "792.346", "#000000"}}));
        QCOMPARE(F::status(m->markers()), QString());
    }

    void aWellWithoutMarkersSaysSo()
    {
        m->select("W-2");
        QCOMPARE(table()->rowCount(), 0);
        QCOMPARE(F::status(m->markers()), QString("Marker data doesn't exist !"));
        QVERIFY(F::isEnabled(m->markers(), "updateButton"));
    }

    // TVD of a loaded row is its MD; once edited it is MD less KB.
    void anEditedDepthGivesTheOthers()
    {
        m->select("W-1");
        F::type(m->markers(), 0, 1, "160.5");
        QCOMPARE(F::shown(m->markers()).at(0), QStringList({"Top", "160.5", "140.5", "135.5", "#0a141e"}));
        QCOMPARE(F::shown(m->markers()).at(1), QStringList({"Base", "250", "250", "230", "#0a141e"}));
        F::type(m->markers(), 0, 1, "160.50"); // the text stays as it was typed
        QCOMPARE(F::number(m->markers(), 0, 1), QString("160.50"));
    }
    void passingThroughALineIsNoEdit()
    {
        m->select("W-1");
        F::edit(m->markers(), 0, 1)->setFocus();
        table()->setFocus();
        QCOMPARE(F::number(m->markers(), 0, 2), QString("150"));
        QVERIFY(!m->markers()->isModified());
    }
    void theOtherDepthsCanBeTypedAndGiveNothing()
    {
        m->select("W-1");
        F::type(m->markers(), 0, 2, "1");
        F::type(m->markers(), 0, 3, "2");
        QCOMPARE(F::shown(m->markers()).at(0), QStringList({"Top", "150", "1", "2", "#0a141e"}));
    }
    void aTextThatIsNoNumberReadsAsZero()
    {
        m->select("W-1");
        F::type(m->markers(), 0, 1, "-");
        QCOMPARE(F::number(m->markers(), 0, 1), QString("-"));
        QCOMPARE(F::number(m->markers(), 0, 2), QString("-20"));
        QCOMPARE(F::number(m->markers(), 0, 3), QString("-25"));
    }
    void elevationsThatTheHostDoesNotKnowCountAsZero()
    {
        m->well(m->key1).header.kbElevation = host::undefinedValue;
        m->well(m->key1).header.groundElevation = host::undefinedValue;
        m->select("W-1");
        QCOMPARE(F::number(m->markers(), 0, 3), QString("150"));
        F::type(m->markers(), 0, 1, "10");
        QCOMPARE(F::number(m->markers(), 0, 3), QString("10"));
    }

    void aNewRowIsEmpty()
    {
        m->select("W-1");
        F::click(m->markers(), "addButton");
        QCOMPARE(table()->rowCount(), 3);
        QCOMPARE(F::shown(m->markers()).at(2), QStringList({"", "", "", "", "#000000"}));
        QVERIFY(!(table()->item(2, 4)->flags() & Qt::ItemIsEditable));
        QCOMPARE(F::edit(m->markers(), 2, 1)->property("row").toInt(), 2);
        F::type(m->markers(), 2, 1, "300");
        QCOMPARE(F::number(m->markers(), 2, 2), QString("280"));
        QCOMPARE(F::number(m->markers(), 2, 3), QString("275"));
    }

    void aRemovedRowRenumbersTheOthers()
    {
        m->well(m->key1).markers.append({"Third", 350, Qt::red});
        m->select("W-1");
        table()->setCurrentCell(0, 0);
        F::click(m->markers(), "deleteButton");
        QCOMPARE(table()->rowCount(), 2);
        QCOMPARE(F::name(m->markers(), 0), QString("Base"));
        QCOMPARE(F::edit(m->markers(), 0, 1)->property("row").toInt(), 0);
        QCOMPARE(F::edit(m->markers(), 1, 3)->property("row").toInt(), 1);
        F::type(m->markers(), 1, 1, "400"); // it is the row that it stands in
        QCOMPARE(F::shown(m->markers()).at(1), QStringList({"Third", "400", "380", "375", "#ff0000"}));
        QCOMPARE(F::number(m->markers(), 0, 2), QString("250"));
    }
    void withoutACurrentRowTheLastOneGoes()
    {
        m->select("W-1");
        table()->setCurrentItem(nullptr);
        table()->clearSelection();
        m->markers()->deleteRow();
        QCOMPARE(F::shown(m->markers()).size(), 1);
        QCOMPARE(F::name(m->markers(), 0), QString("Top"));
        m->markers()->deleteRow();
        m->markers()->deleteRow(); // of an empty table
        QCOMPARE(table()->rowCount(), 0);
    }
    void severalSelectedRowsGoAtOnce()
    {
        m->well(m->key1).markers = {{"A", 1, Qt::red}, {"B", 2, Qt::red}, {"C", 3, Qt::red}, {"D", 4, Qt::red}};
        m->select("W-1");
        table()->setRangeSelected({0, 0, 0, 0}, true);
        table()->setRangeSelected({2, 0, 2, 1}, true);
        F::click(m->markers(), "deleteButton");
        QCOMPARE(F::name(m->markers(), 0), QString("B"));
        QCOMPARE(F::name(m->markers(), 1), QString("D"));
        QCOMPARE(table()->rowCount(), 2);
        QCOMPARE(F::edit(m->markers(), 1, 2)->property("row").toInt(), 1);
    }

    void aDoubleClickChoosesAColor()
    {
        m->select("W-1");
        table()->setRangeSelected({0, 0, 1, 1}, true);
        chooseColor(QColor(9, 8, 7), [this] { doubleClick(0, 4); });
        QCOMPARE(table()->item(0, 4)->background().color(), QColor(9, 8, 7));
        QVERIFY(table()->selectedItems().isEmpty());
        QVERIFY(m->markers()->isModified());
        m->markers()->updateBtnClicked();
        QCOMPARE(m->well(m->key1).markers.at(0).color, QColor(9, 8, 7));
    }
    void aColorThatIsNotAcceptedChangesNothing()
    {
        m->select("W-1");
        chooseColor({}, [this] { doubleClick(0, 4); });
        QCOMPARE(table()->item(0, 4)->background().color(), QColor(10, 20, 30));
    }
    void otherColumnsChooseNone()
    {
        m->select("W-1");
        m_dialogs = 0;
        chooseColor({}, [this] { doubleClick(0, 0); });
        QCOMPARE(m_dialogs, 0);
    }
    void theKeyboardChoosesAColorToo()
    {
        m->select("W-1");
        table()->setFocus();
        table()->setCurrentCell(1, 4);
        for (const int key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_F2}) {
            m_dialogs = 0;
            chooseColor(QColor(key == Qt::Key_Space ? "#123456" : "#654321"),
                        [this, key] { QTest::keyClick(table(), static_cast<Qt::Key>(key)); });
            QCOMPARE(m_dialogs, 1);
            QCOMPARE(table()->item(1, 4)->background().color().name(),
                     QString(key == Qt::Key_Space ? "#123456" : "#654321"));
            table()->setCurrentCell(1, 4);
        }
    }

    void updateWritesNameDepthAndColor()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        F::type(m->markers(), 0, 1, "160.5");
        F::click(m->markers(), "addButton");
        F::typeName(m->markers(), 2, "New");
        F::type(m->markers(), 2, 1, "300");
        table()->item(2, 4)->setBackground(QColor(Qt::green));
        QSignalSpy added(m->markers(), &MarkerDataWidget::markersAdded);
        F::click(m->markers(), "updateButton");
        QCOMPARE(F::status(m->markers()), QString("Marker data updated successfully !"));
        QCOMPARE(m->storedNames(m->key1), QStringList({"Upper", "Base", "New"}));
        QCOMPARE(m->storedDepths(m->key1), QVector<float>({160.5F, 250, 300}));
        QCOMPARE(m->well(m->key1).markers.at(2).color, QColor(Qt::green));
        QCOMPARE(m->launch->catalogue.markerNames(0), QStringList({"Upper", "Base", "New"}));
        QVERIFY(m->asker.boxes.isEmpty());
        QVERIFY(!m->markers()->isModified());
        QCOMPARE(added.at(0).at(1).toStringList(), QStringList({"Upper", "New"}));
        QCOMPARE(F::number(m->markers(), 0, 2), QString("140.5")); // the table stays as it was typed
    }
    void aWhiteMarkerIsStoredBlack()
    {
        m->well(m->key1).markers[0].color = Qt::white;
        m->select("W-1");
        QCOMPARE(F::shown(m->markers()).at(0).at(4), QString("#000000"));
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->well(m->key1).markers.at(0).color, QColor(Qt::black));
    }
    // Six digits are shown; a depth that nobody touched is written as it was.
    void anUntouchedDepthKeepsItsDigits()
    {
        m->well(m->key1).markers[0].depth = 123.456789F;
        m->select("W-1");
        QCOMPARE(F::number(m->markers(), 0, 1), QString("123.457"));
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->storedDepths(m->key1).at(0), 123.456789F);
    }
    void anEmptyTableTakesAllMarkersAway()
    {
        m->select("W-1");
        m->markers()->deleteRow();
        m->markers()->deleteRow();
        F::click(m->markers(), "updateButton");
        QVERIFY(m->well(m->key1).markers.isEmpty());
        QCOMPARE(F::status(m->markers()), QString("Marker data updated successfully !"));
    }

    void whatTheHostWouldDropIsAskedFirst_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("depth");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("stored");
        const QStringList base{"Base"};
        const QStringList both{"Top", "Base"};
        QTest::newRow("empty") << "  "
                               << "10"
                               << "Row 1: the name is empty" << base;
        QTest::newRow("outside") << "Top"
                                 << "1000.5"
                                 << "Row 1: the depth 1000.5 is outside the well's track, 0 to 1000" << base;
        QTest::newRow("above") << "Top"
                               << "-1"
                               << "Row 1: the depth -1 is outside the well's track, 0 to 1000" << base;
        QTest::newRow("no number") << "Top"
                                   << ""
                                   << "Row 1: the depth \"\" is no number and becomes 0" << both;
        QTest::newRow("half a number") << "Top"
                                       << "1e"
                                       << "Row 1: the depth \"1e\" is no number and becomes 0" << both;
    }
    void whatTheHostWouldDropIsAskedFirst()
    {
        QFETCH(QString, name);
        QFETCH(QString, depth);
        QFETCH(QString, line);
        QFETCH(QStringList, stored);
        m->select("W-1");
        F::typeName(m->markers(), 0, name);
        F::type(m->markers(), 0, 1, depth);
        m->asker.answers = {base::BoxButton::No};
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("Marker(s)"));
        QVERIFY2(m->asker.boxes.at(0).text.contains('\n' + line + '\n'), qPrintable(m->asker.boxes.at(0).text));
        QCOMPARE(m->storedNames(m->key1), QStringList({"Top", "Base"}));
        QCOMPARE(F::status(m->markers()), QString());
        QCOMPARE(F::number(m->markers(), 0, 1), depth);
        QVERIFY(m->markers()->isModified());
        m->asker.answers = {base::BoxButton::Yes};
        F::click(m->markers(), "updateButton");
        QCOMPARE(F::status(m->markers()), QString("Marker data updated successfully !"));
        QCOMPARE(m->storedNames(m->key1), stored);
    }
    void ofTwoRowsOfAMarkerTheFirstCountsWhereverItLies()
    {
        m->select("W-1");
        F::type(m->markers(), 0, 1, "1200");
        F::typeName(m->markers(), 1, "Top");
        m->asker.answers = {base::BoxButton::Yes};
        F::click(m->markers(), "updateButton");
        QVERIFY(m->asker.boxes.at(0).text.contains("Row 1: the depth 1200 is outside"));
        QVERIFY(m->asker.boxes.at(0).text.contains("Row 2: the name \"Top\" occurs twice"));
        QCOMPARE(m->storedNames(m->key1), QStringList());
    }
    void namesThatOccurTwiceAreAskedInTheSameQuestion()
    {
        m->select("W-1");
        F::typeName(m->markers(), 1, "Top");
        F::click(m->markers(), "addButton");
        m->asker.answers = {base::BoxButton::Yes};
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QVERIFY(
            m->asker.boxes.at(0).text.contains("Row 2: the name \"Top\" occurs twice, in row 1 too\nRow 3: the "
                                               "name is empty\nRow 3: the depth \"\" is no number and becomes 0"));
        // What the host left out leaves the table too.
        QCOMPARE(table()->rowCount(), m->well(m->key1).markers.size());
        QCOMPARE(F::status(m->markers()), QString("Marker data updated successfully !"));
    }
    void theEndsOfTheTrackBelongToIt()
    {
        m->select("W-1");
        F::type(m->markers(), 0, 1, "0");
        F::type(m->markers(), 1, 1, "1000");
        F::click(m->markers(), "updateButton");
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(m->storedDepths(m->key1), QVector<float>({0, 1000}));
    }
    void aWellWithoutATrackTakesAnyDepth()
    {
        m->well(m->key1).header.totalDepth = 0;
        m->select("W-1");
        F::type(m->markers(), 0, 1, "5000");
        F::click(m->markers(), "updateButton");
        QVERIFY(m->asker.boxes.isEmpty());
    }
    void aLongListOfProblemsIsCutShort()
    {
        m->select("W-1");
        for (int i = 0; i < 20; ++i)
            m->markers()->addRow();
        m->asker.answers = {base::BoxButton::No};
        F::click(m->markers(), "updateButton");
        QVERIFY(m->asker.boxes.at(0).text.contains(QString::fromUtf8("\n… and 28 more\n")));
    }

    void aRefusalOfTheHostIsTold()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        m->host.markerWritesFail = true;
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->host.errors, QStringList({"Cannot write new markers to disk"}));
        QCOMPARE(F::status(m->markers()), QString("Error in updating Marker data !"));
        QCOMPARE(F::name(m->markers(), 0), QString("Upper"));
        QVERIFY(m->markers()->isModified());
        QCOMPARE(m->storedNames(m->key1), QStringList({"Top", "Base"}));
    }
    void aRefusedLossOfHiddenMarkersStoresNothing()
    {
        m->well(m->key1).hiddenMarkers = QStringList{"Hidden"};
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        m->asker.answers = {base::BoxButton::No};
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->storedNames(m->key1), QStringList({"Top", "Base"}));
        QCOMPARE(F::status(m->markers()), QString());
        QVERIFY(m->host.errors.isEmpty());
    }

    void aMarkerThatCameMeanwhileIsNotLostSilently()
    {
        m->select("W-1");
        F::typeName(m->markers(), 0, "Upper");
        m->well(m->key1).markers.append({"Late", 500, Qt::red});
        m->launch->catalogue.refreshMarkerNames(0);
        m->manager->markersChanged(0);
        QCOMPARE(F::name(m->markers(), 0), QString("Upper"));
        QVERIFY(F::status(m->markers()).contains("changed meanwhile"));
        m->asker.answers = {base::BoxButton::No};
        F::click(m->markers(), "updateButton");
        QVERIFY(m->asker.boxes.at(0).text.contains("The marker \"Late\" came into the well since"));
        QVERIFY(m->storedNames(m->key1).contains("Late"));
        QVERIFY(m->storedNames(m->key1).contains("Top"));
    }
    void aMarkerThatWasChangedMeanwhileIsNotLostSilently()
    {
        m->select("W-1");
        F::typeName(m->markers(), 1, "Lower");
        m->well(m->key1).markers[0].depth += 3;
        m->asker.answers = {base::BoxButton::No};
        F::click(m->markers(), "updateButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QVERIFY(m->asker.boxes.at(0).text.contains("The marker \"Top\" was changed in the well since the table was "
                                                   "shown, and becomes what the table shows"));
        QCOMPARE(m->storedNames(m->key1), QStringList({"Top", "Base"}));
    }
    void whatStoringWouldUndo_data()
    {
        QTest::addColumn<QVector<host::Marker>>("now");
        QTest::addColumn<QVector<host::Marker>>("table");
        QTest::addColumn<QString>("line");
        using Markers = QVector<host::Marker>;
        const host::Marker a{"A", 10, Qt::red};
        const host::Marker b{"B", 20, Qt::white};
        const host::Marker movedA{"A", 11, Qt::red};
        const host::Marker blueA{"A", 10, Qt::blue};
        const host::Marker farA{"A", 15, Qt::red};
        const host::Marker c{"C", 30, Qt::red};
        QTest::newRow("nobody") << Markers{a, b} << Markers{a, b} << "";
        QTest::newRow("only the table") << Markers{a, b} << Markers{farA} << "";
        QTest::newRow("came") << Markers{a, b, c} << Markers{a, b} << "\"C\" came";
        QTest::newRow("came, typed too") << Markers{a, b, c} << Markers{a, b, c} << "";
        QTest::newRow("moved") << Markers{movedA, b} << Markers{a, b} << "\"A\" was changed";
        QTest::newRow("another colour") << Markers{blueA, b} << Markers{a, b} << "\"A\" was changed";
        QTest::newRow("both moved it") << Markers{movedA, b} << Markers{farA, b} << "\"A\" was changed";
        QTest::newRow("both moved it there") << Markers{movedA, b} << Markers{movedA, b} << "";
        QTest::newRow("moved, deleted here") << Markers{movedA, b} << Markers{b} << "\"A\" was changed";
        QTest::newRow("deleted") << Markers{b} << Markers{a, b} << "\"A\" was deleted";
        QTest::newRow("both deleted it") << Markers{b} << Markers{b} << "";
        QTest::newRow("black for white") << Markers{a, {"B", 20, Qt::black}} << Markers{a, b} << "";
    }
    void whatStoringWouldUndo()
    {
        QFETCH(QVector<host::Marker>, now);
        QFETCH(QVector<host::Marker>, table);
        QFETCH(QString, line);
        const QVector<host::Marker> shown{{"A", 10, Qt::red}, {"B", 20, Qt::white}};
        const QStringList lines = welldata::undoneByStoring(shown, now, welldata::markerRows(table, {}));
        QCOMPARE(lines.size(), line.isEmpty() ? 0 : 1);
        QVERIFY2(line.isEmpty() || lines.first().startsWith("The marker " + line), qPrintable(lines.value(0)));
    }
    void anUntouchedTableFollowsTheHost()
    {
        m->select("W-1");
        m->well(m->key1).markers.append({"Late", 500, Qt::red});
        m->launch->catalogue.refreshMarkerNames(0);
        m->manager->markersChanged(1); // another well's
        QCOMPARE(table()->rowCount(), 2);
        m->manager->markersChanged(0);
        QCOMPARE(table()->rowCount(), 3);
        QCOMPARE(F::name(m->markers(), 2), QString("Late"));
    }

private:
    WellDataTable *table() const { return m->markers()->table(); }
    void doubleClick(int row, int column) const
    {
        const QPoint place = table()->visualItemRect(table()->item(row, column)).center();
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, place);
    }
    // Answers the dialog that comes up meanwhile: no color cancels it.
    template<class Act>
    void chooseColor(const QColor &color, const Act &act)
    {
        QTimer answer;
        connect(&answer, &QTimer::timeout, this, [this, color] {
            auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            ++m_dialogs;
            if (!color.isValid()) {
                dialog->reject();
                return;
            }
            dialog->setCurrentColor(color);
            dialog->accept();
        });
        answer.start(1);
        act();
    }

    std::unique_ptr<WellDataFixture> m;
    int m_dialogs = 0;
};

LORVA_TEST_MAIN(tst_markereditor)
#include "tst_markereditor.moc"

Q_DECLARE_METATYPE(QVector<host::Marker>)
