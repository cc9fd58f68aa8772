// The table of a track's curves: its columns and what each does.

#include "base/gradientcombobox.h"
#include "support/testmain.h"
#include "templatefixture.h"
#include "templates/curverows.h"
#include "templates/definetemplate.h"
#include "templates/modifytemplate.h"

#include <QColorDialog>
#include <QDir>
#include <QHeaderView>
#include <QScrollBar>
#include <QSet>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOption>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>

using namespace curvecolumn;

namespace {

constexpr int allColumns[] = {Group,  Curve,    LeftValue, RightValue,  LeftFill,   RightFill, LeftLimit, RightLimit,
                              Remove, LineType, LineWidth, Calibration, PointColor, PointSize, PointShape};

QByteArray manyCurves(int count)
{
    QByteArray file = "Linear\n";
    for (int i = 0; i < count; ++i)
        file += "Gamma | GR | 0.00 | " + QByteArray::number(i) + ".00 | #000000|0,#ffffff|0,#ffffff|None | Curve_"
            + QByteArray::number(count - i) + " | 0 | 0 | 0 | #000000 | 1 | Circle\n";
    return file;
}

// Chooses a colour in the colour dialog that is about to come up; nothing for Escape.
void pickColor(const QColor &color, QString *title = nullptr)
{
    QTimer::singleShot(0, qApp, [color, title] {
        auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        if (title)
            *title = dialog->windowTitle();
        if (!color.isValid()) {
            dialog->reject();
            return;
        }
        dialog->setCurrentColor(color);
        dialog->accept();
    });
}

} // namespace

class tst_deftemptrackwidget : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<TemplateFixture>();
        m->open<DefineTemplate>(QStringLiteral("W"));
        m->addTrack();
        QApplication::setActiveWindow(m->dialog.get());
    }
    void cleanup() { m.reset(); }

    void theTextsOfFillLimitsAreWhole()
    {
        m->addCurve(0);
        for (const int column : {LeftLimit, RightLimit}) {
            QComboBox *box = m->box(0, 0, column);
            box->setCurrentIndex(1);
            QStyleOptionComboBox option;
            option.initFrom(box);
            const QRect text =
                box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
            QVERIFY(text.width() > box->fontMetrics().horizontalAdvance(box->currentText()));
        }
    }

    void theColumns()
    {
        const QTableWidget *table = m->table(0);
        QStringList headings;
        for (int column = 0; column < table->columnCount(); ++column)
            headings.append(table->horizontalHeaderItem(column)->text());
        QCOMPARE(headings,
                 QStringList({"Select Group", "Select Curve", "Left Value", "Right Value", "Curve Color", "Left Fill",
                              "Right Fill", "Left upto", "Right upto", "Remove Curve", "Line Type", "Line Width",
                              "Calibration Points", "Point Color", "Point Size", "Point Shape"}));
        auto *type = m->track(0)->findChild<QComboBox *>("trackTypeBox");
        QCOMPARE(TemplateFixture::entries(type), QStringList({"Linear", "Logrithmic", "Depth"}));
        QCOMPARE(type->currentText(), QString("Linear"));
        QCOMPARE(m->track(0)->findChild<QPushButton *>("addCurveButton")->text(), QString("Add Curve"));
        for (const char *slot :
             {"addCurveClicked()", "cellSelected(int,int)", "trackTypeChanged()", "repopulateCurveBox()",
              "removeClicked()", "pointVisiCheckChanged(bool)", "pointClrBtnClicked()"})
            QVERIFY2(m->track(0)->metaObject()->indexOfSlot(slot) >= 0, slot);
    }

    void aNewRow()
    {
        m->addCurve(0);
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, Group)), m->launch->project.groupNames);
        QCOMPARE(m->box(0, 0, Group)->currentText(), QString("None"));
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, Curve)), QStringList("Default"));
        for (const int column : {LeftValue, RightValue}) {
            QCOMPARE(m->edit(0, 0, column)->text(), QString());
            QCOMPARE(m->edit(0, 0, column)->maximumWidth(), 40);
            QVERIFY(!m->edit(0, 0, column)->hasFrame()); // it would take the room of a digit
        }
        QTableWidgetItem *color = m->table(0)->item(0, Color);
        QCOMPARE(color->background().color(), QColor(Qt::black));
        QVERIFY(!(color->flags() & Qt::ItemIsEditable));
        for (const int column : {LeftFill, RightFill}) {
            auto *fill = m->cell<GradientComboBox>(0, 0, column);
            QVERIFY(fill);
            QCOMPARE(fill->barNumber(), 0);
            QCOMPARE(fill->count(), 17);
            QVERIFY(!fill->itemIcon(5).isNull());
        }
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, LeftLimit)),
                 QStringList({"None", "Left Boundary", "Curve_1"}));
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, RightLimit)),
                 QStringList({"None", "Right Boundary", "Curve_1"}));
        QCOMPARE(m->cell<QPushButton>(0, 0, Remove)->text(), QString("Remove"));
        for (const int column : {LineType, LineWidth}) {
            QCOMPARE(m->box(0, 0, column)->count(), 5);
            QCOMPARE(m->box(0, 0, column)->width(), 80);
            QVERIFY(!m->box(0, 0, column)->itemIcon(4).isNull());
        }
        QCOMPARE(m->box(0, 0, LineType)->currentIndex(), 0);
        QCOMPARE(m->box(0, 0, LineWidth)->currentIndex(), 1);
        auto *check = m->cell<QCheckBox>(0, 0, Calibration);
        QCOMPARE(check->text(), QString("Visibility"));
        QVERIFY(!check->isChecked());
        auto *pointColor = m->cell<QPushButton>(0, 0, PointColor);
        QCOMPARE(pointColor->property("clr").toString(), QString("#000000"));
        QVERIFY(!pointColor->autoDefault()); // Enter in a line opens no colours
        QCOMPARE(pointColor->icon().actualSize(QSize(500, 500)), QSize(100, 100));
        QCOMPARE(swatch(0), QColor(Qt::black));
        auto *size = m->cell<QSpinBox>(0, 0, PointSize);
        QCOMPARE(size->minimum(), 1);
        QCOMPARE(size->maximum(), 10);
        QCOMPARE(size->value(), 1);
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, PointShape)), QStringList({"Rectangle", "Circle"}));
        for (const int column : {PointColor, PointSize, PointShape})
            QVERIFY(!m->table(0)->cellWidget(0, column)->isEnabled());
        for (const int column : allColumns)
            QCOMPARE(m->table(0)->cellWidget(0, column)->property("row").toInt(), 0);
    }

    void everyColumnIsWritten()
    {
        m->addCurve(0, "Gamma", "0.5", "1e2");
        m->addCurve(0);
        TemplateFixture::choose(m->box(0, 0, Curve), "GR");
        pickColor(QColor("#12ab34"));
        clickCell(0, Color);
        m->cell<GradientComboBox>(0, 0, LeftFill)->setBarNumber(3);
        m->cell<GradientComboBox>(0, 0, RightFill)->setBarNumber(16);
        TemplateFixture::choose(m->box(0, 0, LeftLimit), "Left Boundary");
        TemplateFixture::choose(m->box(0, 0, RightLimit), "Curve_2");
        m->box(0, 0, LineType)->setCurrentIndex(4);
        m->box(0, 0, LineWidth)->setCurrentIndex(2);
        QTest::mouseClick(m->cell<QCheckBox>(0, 0, Calibration), Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(m->cell<QCheckBox>(0, 0, Calibration)->isChecked());
        QString title;
        pickColor(QColor("#0000ff"), &title);
        QTest::mouseClick(m->cell<QPushButton>(0, 0, PointColor), Qt::LeftButton);
        QCOMPARE(title, QString("Select Color"));
        QCOMPARE(m->cell<QPushButton>(0, 0, PointColor)->property("clr").toString(), QString("#0000ff"));
        QCOMPARE(swatch(0), QColor("#0000ff"));
        m->cell<QSpinBox>(0, 0, PointSize)->setValue(9);
        TemplateFixture::choose(m->box(0, 0, PointShape), "Circle");
        QCOMPARE(line(0),
                 QByteArray("Gamma | GR | 0.5 | 1e2 | #12ab34|3,#ffffff|16,#ffffff|Left Boundary | Curve_2 "
                            "| 4 | 2 | 1 | #0000ff | 9 | Circle"));
        QCOMPARE(line(1),
                 QByteArray("None | Default |  |  | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | "
                            "#000000 | 1 | Rectangle"));
    }

    // What is written is the number of the bar, whatever its place in the list.
    void fillsAreWrittenByTheNumberOfTheirBar()
    {
        const QTemporaryDir data;
        QVERIFY(QDir(data.path()).mkdir("ColorBars"));
        QImage bar(100, 10, QImage::Format_RGB32);
        bar.fill(Qt::red);
        for (const char *name : {"cb_5.png", "cb_12.png"})
            QVERIFY(bar.save(data.filePath(QStringLiteral("ColorBars/") + QLatin1String(name))));
        m = std::make_unique<TemplateFixture>();
        m->host.dataFolder = data.path();
        m->open<DefineTemplate>(QStringLiteral("W"));
        m->addTrack();
        m->addCurve(0, "Gamma", "0", "1");
        QCOMPARE(m->box(0, 0, LeftFill)->count(), 3);
        m->box(0, 0, LeftFill)->setCurrentIndex(1);
        m->box(0, 0, RightFill)->setCurrentIndex(2);
        QVERIFY(line(0).contains("|5,#ffffff|12,#ffffff|"));
        m->track(0)->setTrack(
            parseTrack("Linear\nGamma | GR | 0 | 1 | #000000|7,#ffffff|12,#ffffff|None | None | 0 | "
                       "0\n",
                       "Track_1"),
            1);
        QCOMPARE(m->box(0, 0, LeftFill)->currentText(), QString("cb_7")); // which is no more
        QCOMPARE(m->box(0, 0, RightFill)->currentIndex(), 2);
        QCOMPARE(m->track(0)->rows().track("t").curves.first().leftFillIndex, 7);
    }

    void theColoursBesideABarStay()
    {
        m->track(0)->setTrack(parseTrack("Linear\nGamma | GR | 0 | 1 | #000000|3,#ff0000|0,#00ff00|Left Boundary | "
                                         "None | 0 | 0\n",
                                         "Track_1"),
                              10);
        m->cell<GradientComboBox>(0, 0, LeftFill)->setBarNumber(0);
        m->cell<GradientComboBox>(0, 0, RightFill)->setBarNumber(12);
        QVERIFY(line(0).contains("|0,#ff0000|12,#00ff00|"));
    }

    void clicksBesideTheColourOpenNothing()
    {
        m->addCurve(0);
        pickColor(Qt::red);
        m->track(0)->cellSelected(0, Group);
        m->track(0)->cellSelected(5, Color);
        QCoreApplication::processEvents();
        QVERIFY(line(0).contains("#000000|0"));
        QString title;
        pickColor(QColor(), &title); // Escape changes nothing
        m->track(0)->cellSelected(0, Color);
        QCOMPARE(title, QString("Select Color"));
        QVERIFY(line(0).contains("#000000|0"));
    }

    // They may be called by name.
    void slotsWithoutTheirWidgetDoNothing()
    {
        m->addCurve(0);
        const TrackInfo before = m->track(0)->track();
        for (const char *slot : {"pointClrBtnClicked", "removeClicked", "repopulateCurveBox"})
            QVERIFY2(QMetaObject::invokeMethod(m->track(0), slot), slot);
        QVERIFY(QMetaObject::invokeMethod(m->track(0), "pointVisiCheckChanged", Q_ARG(bool, true)));
        QCOMPARE(m->table(0)->rowCount(), 1);
        QVERIFY(m->track(0)->track() == before);
    }

    void theGroupFillsTheCurves()
    {
        m->addCurve(0, "Resistivity");
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, Curve)), QStringList({"Default", "LLD", "LLS"}));
        TemplateFixture::choose(m->box(0, 0, Curve), "LLS");
        TemplateFixture::choose(m->box(0, 0, Group), "Others");
        // As it can stand in a file.
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, Curve)), QStringList({"Default", u8"ODD\u00a6LOG"}));
        QCOMPARE(m->box(0, 0, Curve)->currentText(), QString("Default"));
        QVERIFY(line(0).startsWith("Others | Default | "));
    }

    void aWellWithoutLogsOffersTheDefault()
    {
        m->open<DefineTemplate>(QStringLiteral("Bare"));
        m->addTrack();
        m->addCurve(0, "Gamma", "0", "1");
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, Curve)), QStringList("Default"));
        m->open<DefineTemplate>(QStringLiteral("No such well"));
        m->addTrack();
        m->addCurve(0, "Gamma", "0", "1");
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, Curve)), QStringList("Default"));
    }

    void aGroupsLastValuesAreProposed()
    {
        m->addCurve(0, "Gamma", "0", "150");
        m->addTrack();
        m->addCurve(1, "Gamma");
        QCOMPARE(m->edit(1, 0, LeftValue)->text(), QString("0"));
        QCOMPARE(m->edit(1, 0, RightValue)->text(), QString("150"));
        TemplateFixture::choose(m->box(1, 0, Group), "Sp");
        QCOMPARE(m->edit(1, 0, RightValue)->text(), QString());
        TemplateFixture::choose(m->box(1, 0, Group), "Gamma");
        m->type(1, 0, RightValue, "99");
        TemplateFixture::choose(m->box(1, 0, Group), "Sp"); // what was typed stays
        QCOMPARE(m->edit(1, 0, RightValue)->text(), QString("99"));
        m->addCurve(0, "Gamma");
        QCOMPARE(m->edit(0, 1, RightValue)->text(), QString("99"));
        m->addCurve(0, "Sp");
        QCOMPARE(m->edit(0, 2, RightValue)->text(), QString("99"));
        m->open<DefineTemplate>(QStringLiteral("W")); // of this dialog
        m->addTrack();
        m->addCurve(0, "Gamma");
        QCOMPARE(m->edit(0, 0, RightValue)->text(), QString());
        m->click("defaultTemplateButton"); // what is loaded counts as used
        m->addCurve(0, "Caliper");
        QCOMPARE(m->edit(0, 3, RightValue)->text(), QString("16.00"));
    }

    void aCommaBecomesAPoint()
    {
        m->addCurve(0, "Gamma", "0,5", "-1,5e-3");
        QVERIFY(line(0).startsWith("Gamma | Default | 0.5 | -1.5e-3 | "));
    }

    void limitsFollowTheNumberOfRows()
    {
        for (int i = 0; i < 3; ++i)
            m->addCurve(0);
        for (int row = 0; row < 3; ++row)
            QCOMPARE(TemplateFixture::entries(m->box(0, row, LeftLimit)),
                     QStringList({"None", "Left Boundary", "Curve_1", "Curve_2", "Curve_3"}));
        TemplateFixture::choose(m->box(0, 0, LeftLimit), "Curve_3");
        TemplateFixture::choose(m->box(0, 0, RightLimit), "Right Boundary");
        TemplateFixture::choose(m->box(0, 2, LeftLimit), "Curve_2");
        m->addCurve(0);
        QCOMPARE(m->box(0, 0, LeftLimit)->currentText(), QString("Curve_3"));
        m->remove(0, 3);
        QCOMPARE(m->box(0, 0, LeftLimit)->currentText(), QString("Curve_3"));
        m->remove(0, 1);
        QCOMPARE(m->table(0)->rowCount(), 2);
        for (int row = 0; row < 2; ++row)
            for (const int column : {LeftLimit, RightLimit})
                QCOMPARE(TemplateFixture::entries(m->box(0, row, column)).mid(2),
                         QStringList({"Curve_1", "Curve_2"}));
        QCOMPARE(m->box(0, 0, LeftLimit)->currentText(), QString("None")); // it was one past the end
        QCOMPARE(m->box(0, 0, RightLimit)->currentText(), QString("Right Boundary"));
        QCOMPARE(m->box(0, 1, LeftLimit)->currentText(), QString("Curve_2"));
        QVERIFY(line(0).contains("|None | Right Boundary | "));
    }

    void removingRowsKeepsTheOthers()
    {
        for (const char *group : {"Gamma", "Sp", "Caliper", "Density"})
            m->addCurve(0, group, "0", "1");
        m->remove(0, 0);
        m->remove(0, 1);
        QCOMPARE(groups(), QStringList({"Sp", "Density"}));
        for (int row = 0; row < 2; ++row)
            for (const int column : allColumns)
                QCOMPARE(m->table(0)->cellWidget(row, column)->property("row").toInt(), row);
        m->type(0, 1, RightValue, "7");
        QVERIFY(line(1).startsWith("Density | Default | 0 | 7 | "));
        m->remove(0, 1);
        m->remove(0, 0);
        QCOMPARE(m->track(0)->rows().bytes(), QByteArray("Linear\n"));
        m->addCurve(0);
        QCOMPARE(TemplateFixture::entries(m->box(0, 0, LeftLimit)).mid(2), QStringList("Curve_1"));
    }

    void theCheckBoxEnablesThePoints()
    {
        m->addCurve(0);
        auto *check = m->cell<QCheckBox>(0, 0, Calibration);
        for (const bool isOn : {true, false}) {
            check->setChecked(isOn);
            for (const int column : {PointColor, PointSize, PointShape})
                QCOMPARE(m->table(0)->cellWidget(0, column)->isEnabled(), isOn);
            QVERIFY(line(0).contains(isOn ? " | 1 | #000000 | 1 | " : " | 0 | #000000 | 1 | "));
        }
        m->track(0)->setTrack(
            parseTrack("Linear\nG | C | 0 | 1 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0 | 1 "
                       "| #ff0000 | 3 | Rectangle\n",
                       "Track_1"),
            1);
        QVERIFY(m->table(0)->cellWidget(0, PointSize)->isEnabled());
        QCOMPARE(m->cell<QSpinBox>(0, 0, PointSize)->value(), 3);
    }

    void aDepthTrackHasFourCellsAndTheButton()
    {
        m->addTrack("Depth");
        m->addCurve(1);
        for (int column = 0; column < Count; ++column) {
            const bool isThere = column <= RightValue || column == Remove;
            QCOMPARE(m->table(1)->cellWidget(0, column) != nullptr, isThere);
            QVERIFY(!m->table(1)->item(0, column));
        }
        QCOMPARE(m->box(1, 0, Group)->currentText(), QString("Depth"));
        QVERIFY(m->box(1, 0, Curve)->findText("Default") >= 0);
        QCOMPARE(m->box(1, 0, Curve)->currentText(), QString("Default"));
        m->addCurve(1);
        m->edit(1, 0, LeftValue)->setText("never written");
        m->setName("T");
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList("Saved Successfully !"));
        QCOMPARE(
            m->trackFile("W", "T", 2),
            QByteArray("Depth\nDepth | Default | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n"));
        m->track(1)->cellSelected(0, Color); // opens nothing
    }

    void theTypeChangesTheCells()
    {
        m->addCurve(0, "Gamma", "0", "150");
        TemplateFixture::choose(m->box(0, 0, Curve), "GR");
        const QByteArray before = m->track(0)->rows().bytes();
        setType("Depth");
        QVERIFY(!m->table(0)->cellWidget(0, LeftFill));
        QVERIFY(!m->table(0)->item(0, Color));
        QCOMPARE(m->box(0, 0, Group)->currentText(), QString("Depth"));
        setType("Linear");
        QVERIFY(m->table(0)->cellWidget(0, LeftFill));
        QCOMPARE(m->box(0, 0, Curve)->currentText(), QString("GR"));
        QCOMPARE(m->track(0)->rows().bytes(), before);
        setType("Logrithmic");
        QCOMPARE(m->track(0)->rows().bytes(), "Logrithmic\n" + before.mid(7));
    }

    void logarithmicTracksSayWhatTheySpan()
    {
        const QTableWidgetItem *heading = m->table(0)->horizontalHeaderItem(LeftValue);
        QCOMPARE(heading->toolTip(), QString());
        setType("Logrithmic");
        for (const int column : {LeftValue, RightValue})
            QCOMPARE(m->table(0)->horizontalHeaderItem(column)->toolTip(),
                     QString("A logarithmic track always spans 0.1 to 2000, whatever stands here."));
        m->addCurve(0, "Gamma", "0", "1");
        QCOMPARE(m->edit(0, 0, LeftValue)->toolTip(), heading->toolTip());
        setType("Linear");
        QCOMPARE(heading->toolTip(), QString());
        QCOMPARE(m->edit(0, 0, RightValue)->toolTip(), QString());
        m->click("defaultTemplateButton");
        QVERIFY(!m->table(2)->horizontalHeaderItem(RightValue)->toolTip().isEmpty());
        QVERIFY(m->edit(2, 0, LeftValue)->toolTip().endsWith("whatever stands here."));
    }

    void rowsMoveWithTheKeyboard()
    {
        for (const char *group : {"Gamma", "Sp", "Caliper"})
            m->addCurve(0, group, "0", "1");
        TemplateFixture::choose(m->box(0, 0, LeftLimit), "Curve_2");
        TemplateFixture::choose(m->box(0, 2, RightLimit), "Curve_1");
        m->edit(0, 0, RightValue)->setFocus();
        QTest::keyClick(m->edit(0, 0, RightValue), Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(groups(), QStringList({"Sp", "Gamma", "Caliper"}));
        QCOMPARE(m->box(0, 0, Group)->currentText(), QString("Sp"));
        QCOMPARE(m->box(0, 1, LeftLimit)->currentText(), QString("Curve_1"));
        QCOMPARE(m->box(0, 2, RightLimit)->currentText(), QString("Curve_2"));
        QCOMPARE(m->dialog->focusWidget(), m->edit(0, 1, RightValue)); // goes along
        QTest::keyClick(m->edit(0, 1, RightValue), Qt::Key_Down, Qt::AltModifier);
        QTest::keyClick(m->edit(0, 2, RightValue), Qt::Key_Down, Qt::AltModifier); // at the end
        QCOMPARE(groups(), QStringList({"Sp", "Caliper", "Gamma"}));
        QTest::keyClick(m->edit(0, 2, RightValue), Qt::Key_Up, Qt::AltModifier);
        QTest::keyClick(m->edit(0, 1, RightValue), Qt::Key_Up, Qt::AltModifier);
        QTest::keyClick(m->edit(0, 0, RightValue), Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(groups(), QStringList({"Gamma", "Sp", "Caliper"}));
        QCOMPARE(m->box(0, 0, LeftLimit)->currentText(), QString("Curve_2"));
        m->box(0, 1, Group)->setFocus(); // and of a chooser, which would open its list
        QTest::keyClick(m->box(0, 1, Group), Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(groups(), QStringList({"Sp", "Gamma", "Caliper"}));
    }

    void aMovedValueIsStillWhatWasTyped()
    {
        m->addCurve(0, "Gamma", "0.125", "1");
        m->addCurve(0, "Sp", "0", "1");
        m->edit(0, 0, LeftValue)->setFocus();
        QTest::keyClick(m->edit(0, 0, LeftValue), Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(m->edit(0, 1, LeftValue)->text(), QString("0.125"));
        QVERIFY(line(1).startsWith("Gamma | Default | 0.125 | 1 | "));
    }

    void theTabKeyVisitsEveryCell()
    {
        m->addCurve(0, "Gamma", "0", "1");
        m->addCurve(0, "Sp", "0", "1");
        m->cell<QCheckBox>(0, 0, Calibration)->setChecked(true);
        m->box(0, 0, Group)->setFocus();
        QVector<int> visited;
        for (int i = 0; i < Count; ++i) {
            QWidget *focus = m->dialog->focusWidget();
            visited.append(focus == m->table(0) ? m->table(0)->currentColumn() : focus->property("column").toInt());
            QTest::keyClick(focus, Qt::Key_Tab);
        }
        QVector<int> expected;
        for (int column = 0; column < Count; ++column)
            expected.append(column);
        QCOMPARE(visited, expected);
        QCOMPARE(m->dialog->focusWidget(), m->box(0, 1, Group)); // the next row
        for (int i = 0; i < Count - Color; ++i)
            QTest::keyClick(m->dialog->focusWidget(), Qt::Key_Backtab);
        QCOMPARE(m->dialog->focusWidget(), m->table(0));
        QCOMPARE(m->table(0)->currentRow(), 0);
        pickColor(QColor("#00ff00"));
        QTest::keyClick(m->table(0), Qt::Key_Space);
        QVERIFY(line(0).contains("#00ff00|0,"));
        QApplication::setActiveWindow(m->dialog.get());
        QTest::keyClick(m->table(0), Qt::Key_Backtab);
        QCOMPARE(m->dialog->focusWidget(), m->edit(0, 0, RightValue));
    }

    // Rows made later, above others, still stand in front of them.
    void theTabKeyFollowsTheRowsHoweverTheyWereMade()
    {
        m->track(0)->setTrack(parseTrack(manyCurves(500), "Track_1"), 0);
        const QVector<int> rows{200, 201, 250, 300};
        for (const int row : {300, 200, 250, 201})
            m->track(0)->makeRow(row);
        for (int i = 0; i + 1 < rows.size(); ++i) {
            const int row = rows.at(i);
            QWidget *next = m->cell<QPushButton>(0, row, Remove);
            do
                next = next->nextInFocusChain();
            while (next->property("column").toInt() != Group || !next->property("row").isValid()
                   || !qobject_cast<QComboBox *>(next));
            QCOMPARE(next->property("row").toInt(), rows.at(i + 1));
        }
    }

    void theWheelTurnsNothingItOnlyPasses()
    {
        m->addCurve(0, "Gamma", "0", "1");
        m->edit(0, 0, LeftValue)->setFocus();
        const QByteArray before = line(0);
        for (const int column : {Group, LineWidth, PointSize}) {
            QWidget *cell = m->table(0)->cellWidget(0, column);
            QWheelEvent turn(QPointF(5, 5), cell->mapToGlobal(QPoint(5, 5)), {}, QPoint(0, -120), Qt::NoButton, {},
                             Qt::NoScrollPhase, false);
            QApplication::sendEvent(cell, &turn);
        }
        QCOMPARE(line(0), before);
    }

    void changesAreTold()
    {
        m->addCurve(0, "Gamma", "0", "1");
        QSignalSpy changed(m->track(0), &DefTempTrackWidget::changed);
        const auto counts = [&changed](const std::function<void()> &change) {
            changed.clear();
            change();
            return changed.count();
        };
        QCOMPARE(counts([this] { m->box(0, 0, LineType)->setCurrentIndex(3); }), 1);
        QCOMPARE(counts([this] { m->edit(0, 0, LeftValue)->setText("3"); }), 1);
        QCOMPARE(counts([this] { TemplateFixture::choose(m->box(0, 0, Group), "Sp"); }), 1);
        QCOMPARE(counts([this] { m->cell<QCheckBox>(0, 0, Calibration)->setChecked(true); }), 1);
        QCOMPARE(counts([this] { m->track(0)->addCurveClicked(); }), 1);
        QCOMPARE(counts([this] { m->remove(0, 1); }), 1);
        QCOMPARE(counts([this] { setType("Depth"); }), 1);
        QCOMPARE(counts([this] { m->edit(0, 0, LeftValue)->setFocus(); }), 0);
        QCOMPARE(m->track(0)->track().type, int(DepthTrack));
        QCOMPARE(m->track(0)->track().name, QString("Track_1"));
    }

    // One more curve is one more item in each list of limits, whatever the number of rows.
    void aChangeOfTheLimitsIsLinearWork()
    {
        constexpr int rows = 60;
        m->track(0)->setTrack(parseTrack(manyCurves(rows), "Track_1"), rows);
        QSet<QAbstractItemModel *> models;
        for (int row = 0; row < rows; ++row)
            for (const int column : {LeftLimit, RightLimit})
                models.insert(m->box(0, row, column)->model());
        QCOMPARE(models.size(), 2);
        int inserted = 0;
        int removed = 0;
        int resets = 0;
        for (QAbstractItemModel *model : qAsConst(models)) {
            connect(model, &QAbstractItemModel::rowsInserted, this,
                    [&](const QModelIndex &, int first, int last) { inserted += last - first + 1; });
            connect(model, &QAbstractItemModel::rowsRemoved, this,
                    [&](const QModelIndex &, int first, int last) { removed += last - first + 1; });
            connect(model, &QAbstractItemModel::modelReset, this, [&] { ++resets; });
        }
        m->track(0)->addCurveClicked();
        QCOMPARE(inserted, 2);
        m->remove(0, 10);
        QCOMPARE(removed, 2);
        QCOMPARE(resets, 0);
        QCOMPARE(m->box(0, 5, LeftLimit)->count(), rows + 2);
        QCOMPARE(m->box(0, 5, RightLimit)->currentText(), QString("Curve_55"));
    }

    // Widgets are made for what is looked at.
    void tenThousandCurvesOpen()
    {
        files::write(m->templatePath("W", "Many") + "/Track_1.txt", manyCurves(10000));
        m->open<ModifyTemplate>(TemplateId::ofWell("W", "Many"), QStringLiteral("W"));
        QCoreApplication::processEvents();
        QCOMPARE(m->table(0)->rowCount(), 10000);
        QVERIFY(made() < 300);
        QVERIFY(!m->table(0)->cellWidget(5000, Group));
        m->table(0)->scrollToItem(m->table(0)->item(0, Color));
        m->table(0)->verticalScrollBar()->setValue(m->table(0)->verticalScrollBar()->maximum());
        QVERIFY(m->table(0)->cellWidget(9999, Group));
        QCOMPARE(m->edit(0, 9999, RightValue)->text(), QString("9999.00"));
        QCOMPARE(m->box(0, 9999, RightLimit)->currentText(), QString("Curve_1"));
        QVERIFY(made() < 400);
        m->type(0, 9999, RightValue, "5");
        m->remove(0, 0);
        QCOMPARE(m->table(0)->rowCount(), 9999);
        QVERIFY(line(9998).startsWith("Gamma | GR | 0.00 | 5 | "));
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList("Saved Successfully !"));
        QCOMPARE(parseTrack(m->trackFile("W", "Many", 1), "Track_1").curves.size(), 9999);
    }

    void ofManyTracksOnlyTheFirstRowsAreMadeAtOnce()
    {
        for (int track = 1; track <= 50; ++track)
            files::write(m->templatePath("W", "Many") + QStringLiteral("/Track_%1.txt").arg(track), manyCurves(50));
        m->open<ModifyTemplate>(TemplateId::ofWell("W", "Many"), QStringLiteral("W"));
        QCoreApplication::processEvents();
        QVERIFY(m->table(1)->cellWidget(49, Group));
        QVERIFY(!m->table(2)->cellWidget(0, Group));
        m->tabs()->setCurrentIndex(30);
        QCoreApplication::processEvents();
        QVERIFY(m->table(30)->cellWidget(0, Group));
        m->addCurve(30, "Gamma", "0", "1");
        QCOMPARE(m->table(30)->rowCount(), 51);
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList("Saved Successfully !"));
        QCOMPARE(m->trackFile("W", "Many", 40), manyCurves(50));
        QCOMPARE(m->trackFile("W", "Many", 31).count('\n'), 52);
    }

    // The value that is wrong may stand where no widget was made yet.
    void aWrongValueOutOfSightIsShown()
    {
        m->track(0)->setTrack(parseTrack(manyCurves(500), "Track_1"), 10);
        QCoreApplication::processEvents();
        m->track(0)->showProblem({400, true, QString()});
        QVERIFY(m->edit(0, 400, RightValue));
        QCOMPARE(m->dialog->focusWidget(), m->edit(0, 400, RightValue));
        QVERIFY(m->table(0)->cellWidget(399, Group)); // what came into sight around it
    }

private:
    QByteArray line(int row) const { return m->track(0)->rows().bytes().split('\n').value(row + 1); }
    QColor swatch(int row) const
    {
        return m->cell<QPushButton>(0, row, PointColor)->icon().pixmap(100, 100).toImage().pixelColor(50, 50);
    }
    QStringList groups() const
    {
        QStringList names;
        for (int row = 0; row < m->table(0)->rowCount(); ++row) {
            names.append(QString::fromUtf8(line(row).split('|').first().trimmed()));
            if (m->box(0, row, Group)->currentText() != names.last())
                qFatal("row %d shows another group", row);
        }
        return names;
    }
    void setType(const char *type) const
    {
        TemplateFixture::choose(m->track(0)->findChild<QComboBox *>("trackTypeBox"), QString::fromLatin1(type));
    }
    void clickCell(int row, int column) const
    {
        QTableWidget *table = m->table(0);
        const QRect place = table->visualItemRect(table->item(row, column));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place.center());
    }
    int made() const
    {
        int rows = 0;
        for (int row = 0; row < m->table(0)->rowCount(); ++row)
            rows += m->table(0)->cellWidget(row, Group) != nullptr;
        return rows;
    }

    std::unique_ptr<TemplateFixture> m;
};

LORVA_TEST_MAIN(tst_deftemptrackwidget)
#include "tst_deftemptrackwidget.moc"
