#include "correlation/correlationpropertiesdialog.h"
#include "correlationfixture.h"
#include "support/failingdisk.h"
#include "support/testmain.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

struct DialogFixture : CorrelationFixture
{
    CorrelationPropertiesDialog *show(const QString &name = QStringLiteral("North"))
    {
        openAt96Dots();
        dialog = std::make_unique<CorrelationPropertiesDialog>(*launch, name);
        dialog->show();
        return dialog.get();
    }

    QTableWidget *wells() const { return find<QTableWidget>(dialog.get(), "wellsTable"); }
    QTableWidget *markers() const { return find<QTableWidget>(dialog.get(), "markersTable"); }
    QTableWidget *zones() const { return find<QTableWidget>(dialog.get(), "zonesTable"); }
    QLineEdit *name() const { return find<QLineEdit>(dialog.get(), "nameEdit"); }
    QComboBox *box(const char *objectName) const { return find<QComboBox>(dialog.get(), objectName); }
    void click(const char *objectName) const
    {
        QTest::mouseClick(find<QPushButton>(dialog.get(), objectName), Qt::LeftButton);
    }
    void choose(QComboBox *chooser, const QString &text) const
    {
        chooser->setCurrentIndex(chooser->findText(text));
        emit chooser->activated(chooser->currentIndex());
    }
    QString missing() const
    {
        const auto *label = find<QLabel>(dialog.get(), "missingLabel");
        return label->isVisible() ? label->text() : QString();
    }
    QStringList tickedMarkers() const
    {
        QStringList names;
        for (int row = 0; row < markers()->rowCount(); ++row)
            if (markers()->item(row, 1)->checkState() == Qt::Checked)
                names.append(markers()->item(row, 0)->text());
        return names;
    }
    QByteArray file(const QString &correlation) const { return files::read(filePath(correlation)); }

    std::unique_ptr<CorrelationPropertiesDialog> dialog;
};

QStringList headings(const QTableWidget *table)
{
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column)
        texts.append(table->horizontalHeaderItem(column)->text());
    return texts;
}

QStringList entries(const QComboBox *box)
{
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
        texts.append(box->itemText(i));
    return texts;
}

} // namespace

class tst_correlationpropertiesdialog : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<DialogFixture>(); }
    void cleanup() { m.reset(); }

    void aNewCorrelationBeginsWithTheDefaults()
    {
        auto *dialog = m->show("New Correlation");
        QCOMPARE(dialog->windowTitle(), QString("New Correlation"));
        QVERIFY(!dialog->isStored());
        QVERIFY(!dialog->isModal());
        QVERIFY(!dialog->isChanged());
        QCOMPARE(m->name()->selectedText(), QString("New Correlation")); // typed over
        QCOMPARE(m->wells()->rowCount(), 0);
        QCOMPARE(headings(m->wells()), QStringList({"Well", "Template"}));
        QCOMPARE(headings(m->markers()), QStringList({"Marker Name", "Visibility"}));
        QCOMPARE(headings(m->zones()), QStringList({"Zone Name", "Start Depth", "End Depth", "Color", "Visibility"}));
        QCOMPARE(entries(m->box("trackWidthChooser")), QStringList({"0.75", "1", "1.2", "1.5", "1.75", "2"}));
        QCOMPARE(m->box("trackWidthChooser")->currentText(), QString("1.2"));
        QVERIFY(!m->box("trackWidthChooser")->isEditable());
        QCOMPARE(entries(m->box("scaleChooser")), QStringList({"1", "500", "1000", "2000", "5000", "10000"}));
        QCOMPARE(m->box("scaleChooser")->currentText(), QString("1000"));
        QVERIFY(m->box("scaleChooser")->isEditable());
        QCOMPARE(entries(m->box("flatAtChooser")), QStringList({"None"}));
        QVERIFY(!find<QCheckBox>("allMarkersBox")->isChecked()); // there are none
        QStringList texts;
        for (const QLabel *label : dialog->findChildren<QLabel *>())
            texts.append(label->text());
        for (const char *text : {"Name :", "Flat At Marker :", "Track Width:", "Scale Factor  1:", "Meters"})
            QVERIFY2(texts.contains(QString::fromLatin1(text)), text);
        QStringList titles;
        for (const QGroupBox *box : dialog->findChildren<QGroupBox *>())
            titles.append(box->title());
        QCOMPARE(titles, QStringList({"Wells", "Markers", "Perforation Zone"}));
        QCOMPARE(find<QCheckBox>("allMarkersBox")->text(), QString("All Markers"));
        QCOMPARE(find<QCheckBox>("zonesBox")->text(), QString("Zone(s)"));
        QCOMPARE(find<QPushButton>("saveButton")->text(), QString("Save"));
        QCOMPARE(find<QPushButton>("closeButton")->text(), QString("Close"));
    }

    void buttonsHaveTheHostsIcons()
    {
        m->host.dataFolder = m->survey.filePath("data");
        const QVector<QPair<QString, QString>> icons{{"addWellButton", "plus"},
                                                     {"removeWellButton", "minus.png"},
                                                     {"addZoneButton", "add_wlc.png"},
                                                     {"removeZoneButton", "sub_wlc.png"}};
        QVERIFY(QDir().mkpath(m->host.dataFolder + "/icons.Default"));
        for (int i = 0; i < icons.size(); ++i) {
            QImage icon(16, 16, QImage::Format_RGB32);
            icon.fill(QColor(10, 20, 40 * i));
            QVERIFY(icon.save(m->host.dataFolder + "/icons.Default/" + icons.at(i).second, "PNG"));
        }
        m->show("New Correlation");
        for (int i = 0; i < icons.size(); ++i) {
            const auto *button = find<QPushButton>(qPrintable(icons.at(i).first));
            QCOMPARE(button->icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(10, 20, 40 * i));
            QVERIFY(!button->toolTip().isEmpty());
        }
    }

    void theFoldersNameCounts()
    {
        m->store("North");
        files::write(m->filePath("North"), QByteArray(m->file("North")).replace(":North\n", ":Another\n"));
        m->show();
        QCOMPARE(m->name()->text(), QString("North"));
        m->click("saveButton");
        QVERIFY(m->asker.boxes.isEmpty());
        QVERIFY(m->file("North").startsWith("Correlation:North\n"));
        QVERIFY(!QFile::exists(m->path("/Correlations/Another")));
    }

    void aTemplateThatGlobalAndWellHaveIsOfferedOnce()
    {
        m->addTemplate("T", "A"); // the global one of that name is drawn
        m->store("North");
        m->show();
        QCOMPARE(entries(CorrelationFixture::chooser(m->wells(), 0, 1)).count("T"), 1);
        m->dialog->templatesChanged();
        QCOMPARE(entries(CorrelationFixture::chooser(m->wells(), 0, 1)).count("T"), 1);
    }

    // Each field for itself: what the user changed is asked about when the tab is closed.
    void eachEditIsAChange()
    {
        m->addTemplate("Own of A", "A");
        m->store("North", "1\nA:T\n", "1\nTop\n", "1\nZ|Top|1500|#ff8000|1|0|1\n");
        const auto chooseByKey = [](QComboBox *chooser) {
            chooser->setFocus();
            const int before = chooser->currentIndex();
            QTest::keyClick(chooser, before > 0 ? Qt::Key_Up : Qt::Key_Down);
            QVERIFY(chooser->currentIndex() != before);
        };
        const QVector<std::function<void()>> edits{
            [&] { QTest::keyClicks(m->name(), "x"); },
            [&] { chooseByKey(CorrelationFixture::chooser(m->wells(), 0, 0)); },
            [&] { chooseByKey(CorrelationFixture::chooser(m->wells(), 0, 1)); },
            [&] { m->markers()->item(0, 1)->setCheckState(Qt::Unchecked); },
            [&] { find<QCheckBox>("allMarkersBox")->click(); },
            [&] { chooseByKey(m->box("flatAtChooser")); },
            [&] { find<QCheckBox>("zonesBox")->click(); },
            [&] { m->zones()->item(0, 0)->setText("Other"); },
            [&] { chooseByKey(CorrelationFixture::chooser(m->zones(), 0, 1)); },
            [&] { QTest::keyClicks(CorrelationFixture::chooser(m->zones(), 0, 2)->lineEdit(), "1"); },
            [&] { m->zones()->item(0, 4)->setCheckState(Qt::Unchecked); },
            [&] { m->click("addZoneButton"); },
            [&] { m->click("removeZoneButton"); },
            [&] { m->click("addWellButton"); },
            [&] { m->click("removeWellButton"); },
            [&] { chooseByKey(m->box("trackWidthChooser")); },
            [&] { QTest::keyClicks(m->box("scaleChooser")->lineEdit(), "0"); },
        };
        for (int i = 0; i < edits.size(); ++i) {
            m->show();
            QVERIFY(!m->dialog->isChanged());
            edits.at(i)();
            QVERIFY2(m->dialog->isChanged(), qPrintable(QString("edit %1").arg(i)));
        }
    }

    void showsWhatTheFileSays()
    {
        m->store("North", "2\nA:T\nB:Simple\n", "1\nBase\n",
                 "2\nUpper|Top|Base|#ff8000|1|0|0\nTyped|1500|Only B|#0000ff|0|1|0\n");
        files::write(m->filePath("North"),
                     m->file("North").replace("Width:1.2", "Width:1.75").replace("Scale:1000", "Scale:2500"));
        auto *dialog = m->show();
        QVERIFY(dialog->isStored());
        QVERIFY(!dialog->isChanged());
        QCOMPARE(CorrelationFixture::chooser(m->wells(), 0, 0)->currentText(), QString("A"));
        QCOMPARE(CorrelationFixture::chooser(m->wells(), 1, 0)->currentText(), QString("B"));
        QCOMPARE(CorrelationFixture::chooser(m->wells(), 1, 1)->currentText(), QString("Simple"));
        QCOMPARE(m->tickedMarkers(), QStringList({"Base"}));
        QVERIFY(find<QCheckBox>("zonesBox")->isChecked());
        QVERIFY(!find<QCheckBox>("allMarkersBox")->isChecked());
        QCOMPARE(m->zones()->item(0, 0)->text(), QString("Upper"));
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 0, 1)->currentText(), QString("Top"));
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 0, 1)->currentIndex(), 1);
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 1, 1)->currentIndex(), 0);
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 1, 1)->currentText(), QString("1500"));
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 1, 2)->currentText(), QString("Only B"));
        QCOMPARE(m->zones()->item(0, 4)->checkState(), Qt::Checked);
        QCOMPARE(m->zones()->item(1, 4)->checkState(), Qt::Unchecked);
        const auto swatch = m->zones()->item(0, 3)->data(Qt::DecorationRole).value<QPixmap>();
        QCOMPARE(swatch.width(), m->zones()->columnWidth(3));
        QCOMPARE(swatch.height(), m->zones()->rowHeight(0));
        QCOMPARE(swatch.toImage().pixelColor(10, 10), QColor(0xff, 0x80, 0));
        QCOMPARE(m->missing(), QString());
        QCOMPARE(m->name()->text(), QString("North"));
        QCOMPARE(m->box("trackWidthChooser")->currentText(), QString("1.75"));
        QCOMPARE(m->box("scaleChooser")->currentText(), QString("2500"));

        // Saving what was not touched gives the same file.
        const QByteArray before = m->file("North");
        m->click("saveButton");
        QCOMPARE(m->file("North"), before);
        QVERIFY(m->asker.boxes.isEmpty());
    }

    void wellsAreChosenWithTheirTemplates()
    {
        m->addTemplate("Own of B", "B");
        auto *dialog = m->show("New Correlation");
        m->click("addWellButton");
        QVERIFY(dialog->isChanged());
        QComboBox *well = CorrelationFixture::chooser(m->wells(), 0, 0);
        QComboBox *templates = CorrelationFixture::chooser(m->wells(), 0, 1);
        QCOMPARE(entries(well), QStringList({"A", "B", "C"}));
        QVERIFY(!entries(templates).contains("Own of B"));
        QVERIFY(entries(templates).contains("T"));
        templates->setCurrentText("T");
        m->choose(well, "B");
        QVERIFY(entries(templates).contains("Own of B"));
        QCOMPARE(templates->currentText(), QString("T"));
        QCOMPARE(well->property("row").toInt(), 0);
        QCOMPARE(m->markers()->rowCount(), 3);
        m->choose(well, "C");
        QCOMPARE(m->markers()->rowCount(), 1);
    }

    void removingARowRenumbersTheOthers()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        m->show();
        m->wells()->setCurrentCell(0, 0);
        m->click("removeWellButton");
        QCOMPARE(m->wells()->rowCount(), 2);
        QComboBox *first = CorrelationFixture::chooser(m->wells(), 0, 0);
        QCOMPARE(first->currentText(), QString("B"));
        QCOMPARE(first->property("row").toInt(), 0);
        QVERIFY(m->dialog->isChanged());
        m->click("removeWellButton");
        m->click("removeWellButton");
        m->click("removeWellButton");
        QCOMPARE(m->wells()->rowCount(), 0);
        QCOMPARE(m->markers()->rowCount(), 0);
    }

    void aFurtherWellKeepsTicksAndDepths()
    {
        m->store("North", "1\nA:T\n", "1\nBase\n", "1\nZ|Base|700|#ff8000|1|0|1\n");
        m->show();
        m->box("flatAtChooser")->setCurrentText("Top");
        m->click("addWellButton");
        m->choose(CorrelationFixture::chooser(m->wells(), 1, 0), "B");
        QCOMPARE(m->tickedMarkers(), QStringList({"Base"}));
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 0, 1)->currentText(), QString("Base"));
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 0, 2)->currentText(), QString("700"));
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 0, 2)->currentIndex(), 0);
        QCOMPARE(m->box("flatAtChooser")->currentText(), QString("Top"));
        QCOMPARE(entries(CorrelationFixture::chooser(m->zones(), 0, 1)),
                 QStringList({"User Depth", "Top", "Base", "Only B"}));
    }

    void allMarkers()
    {
        m->store("North");
        m->show();
        auto *all = find<QCheckBox>("allMarkersBox");
        all->click();
        QCOMPARE(m->tickedMarkers(), QStringList({"Top", "Base", "Only B"}));
        QVERIFY(m->dialog->isChanged());
        m->markers()->item(1, 1)->setCheckState(Qt::Unchecked);
        QVERIFY(!all->isChecked());
        m->markers()->item(1, 1)->setCheckState(Qt::Checked);
        QVERIFY(all->isChecked());
        all->click();
        QCOMPARE(m->tickedMarkers(), QStringList());
    }

    void slotsCanBeCalledByName()
    {
        m->store("North");
        auto *dialog = m->show();
        QVERIFY(QMetaObject::invokeMethod(dialog, "allTopsChecked", Q_ARG(bool, true)));
        QCOMPARE(m->tickedMarkers().size(), 3);
        QVERIFY(QMetaObject::invokeMethod(dialog, "setAllTopCheckBox", Q_ARG(bool, false)));
        QVERIFY(!find<QCheckBox>("allMarkersBox")->isChecked());
        for (const char *slot : {"correlationNameChanged", "wellChanged", "addWellClicked", "removeWellClicked",
                                 "zoneAddClicked", "zoneDeleteClicked", "saveButtonClicked", "close"})
            QVERIFY2(QMetaObject::invokeMethod(dialog, slot), slot);
        QVERIFY(QMetaObject::invokeMethod(dialog, "zoneTableCellClicked", Q_ARG(int, 99), Q_ARG(int, 3)));
        dialog->show();
        QVERIFY(QMetaObject::invokeMethod(dialog, "okButtonClicked"));
        QVERIFY(!dialog->isVisible());
    }

    void typingMakesADepthOfAMarker()
    {
        m->store("North", "1\nA:T\n", "0\n", "1\nZ|Top|Base|#ff8000|1|0|0\n");
        m->show();
        QComboBox *start = CorrelationFixture::chooser(m->zones(), 0, 1);
        start->setFocus();
        start->lineEdit()->selectAll();
        QTest::keyClicks(start->lineEdit(), "812.5");
        QCOMPARE(start->currentIndex(), 0);
        QCOMPARE(start->currentText(), QString("812.5"));
        QTest::keyClick(start->lineEdit(), Qt::Key_Return);
        QCOMPARE(start->count(), 3);
        QVERIFY(m->dialog->isChanged());
        m->click("saveButton");
        QVERIFY(m->file("North").endsWith("Zones:1\nZ|812.5|Base|#ff8000|1|1|0\n"));
    }

    void aZoneIsAddedAndSaved()
    {
        m->store("North");
        m->show();
        m->click("addZoneButton");
        QVERIFY(m->dialog->isChanged());
        // The colour that is stored is seen, also when the row is selected.
        const QTableWidgetItem *color = m->zones()->item(0, 3);
        QCOMPARE(color->data(Qt::DecorationRole).value<QPixmap>().toImage().pixelColor(10, 10), QColor("#c0c0c0"));
        QVERIFY(!(color->flags() & Qt::ItemIsSelectable));
        m->zones()->item(0, 0)->setText("New | zone");
        m->choose(CorrelationFixture::chooser(m->zones(), 0, 1), "Top");
        CorrelationFixture::chooser(m->zones(), 0, 2)->lineEdit()->clear();
        QTest::keyClicks(CorrelationFixture::chooser(m->zones(), 0, 2)->lineEdit(), "1500");
        m->click("saveButton");
        QVERIFY(m->file("North").endsWith("Zones:1\nNew \xC2\xA6 zone|Top|1500|#c0c0c0|1|0|1\n"));
        m->click("removeZoneButton");
        m->click("saveButton");
        QVERIFY(m->file("North").endsWith("Zones:0\n"));
    }

    void aZoneWithoutADepthIsRefused()
    {
        m->store("North");
        m->show();
        const QByteArray before = m->file("North");
        m->click("addZoneButton");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.at(0).text, QString("The start depth of zone 1 is neither a marker nor a number."));
        m->asker.boxes.clear();
        m->zones()->item(0, 0)->setText("Sand");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("North"));
        QVERIFY2(m->asker.boxes.at(0).text.contains("\"Sand\""), qPrintable(m->asker.boxes.at(0).text));
        QCOMPARE(m->file("North"), before);
        QVERIFY(m->dialog->isChanged());
    }

    void theColorIsChosenByAClick()
    {
        m->store("North", "1\nA:T\n", "0\n", "1\nZ|Top|Base|#ff8000|1|0|0\n");
        m->show();
        m->dialog->zoneTableCellClicked(0, 0); // another column: no dialog
        QTimer::singleShot(0, this, [] {
            auto *colors = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
            QVERIFY(colors);
            QCOMPARE(colors->currentColor(), QColor(0xff, 0x80, 0));
            colors->setCurrentColor(QColor(1, 2, 3));
            colors->accept();
        });
        m->dialog->zoneTableCellClicked(0, 3);
        QVERIFY(m->dialog->isChanged());
        QTimer::singleShot(0, this, [] { qobject_cast<QDialog *>(QApplication::activeModalWidget())->reject(); });
        m->dialog->zoneTableCellClicked(0, 3);
        m->click("saveButton");
        QVERIFY(m->file("North").contains("Z|Top|Base|#010203|1|0|0"));
        // A zone that goes while its colour is chosen.
        QTimer::singleShot(0, this, [this] {
            m->zones()->removeRow(0);
            qobject_cast<QDialog *>(QApplication::activeModalWidget())->accept();
        });
        m->dialog->zoneTableCellClicked(0, 3);
        QCOMPARE(m->zones()->rowCount(), 0);
    }

    void warnings()
    {
        m->show("New Correlation");
        m->name()->clear();
        m->click("saveButton");
        m->name()->setText("Panel");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 2);
        QCOMPARE(m->asker.boxes.at(0).icon, base::BoxIcon::Warning);
        QCOMPARE(m->asker.boxes.at(0).title, QString("New Correlation"));
        QCOMPARE(m->asker.boxes.at(0).text, QString("Please give correlation name."));
        QCOMPARE(m->asker.boxes.at(1).title, QString("New Correlation"));
        QCOMPARE(m->asker.boxes.at(1).text, QString("Please first add well(s)."));
        QVERIFY(!QFile::exists(m->path("/Correlations/Panel")));
    }

    void namesThatAreNoFolders()
    {
        m->store("North");
        m->show();
        for (const QString &name : {QString("a/b"), QString(".."), QString("."), QString(300, 'x')}) {
            m->name()->setText(name);
            m->click("saveButton");
        }
        QCOMPARE(m->asker.boxes.size(), 4);
        QCOMPARE(QDir(m->path("/Correlations")).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList({"North"}));
    }

    void theFirstSaveNamesTheCorrelation()
    {
        auto *dialog = m->show("New Correlation");
        const QSignalSpy renamed(dialog, &CorrelationPropertiesDialog::sendCorrelationNameChanged);
        const QSignalSpy changed(dialog, &CorrelationPropertiesDialog::correlationDataChanged);
        m->click("addWellButton");
        m->name()->setText(" Panel ");
        m->click("saveButton");
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(renamed.size(), 1);
        QCOMPARE(renamed.at(0).at(0).toString(), QString("Panel"));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(dialog->windowTitle(), QString("Panel"));
        QVERIFY(dialog->isStored());
        QVERIFY(!dialog->isChanged());
        QVERIFY(m->file("Panel").startsWith("Correlation:Panel\nTrackWidth:1.2\nScale:1000\nNumber Of Wells:1\nA:"));
        QVERIFY(m->file("Panel").endsWith("\nMarker:0\nPerforation Flag:0\nZones:0\n"));
        m->click("saveButton");
        QCOMPARE(renamed.size(), 1);
        QCOMPARE(changed.size(), 2);
    }

    void aRenameTakesTheOldFolderAway()
    {
        m->store("North");
        files::write(m->path("/Correlations/North/more.txt"), "more");
        m->show();
        m->name()->setText("South");
        m->click("saveButton");
        QVERIFY(m->asker.boxes.isEmpty());
        QCOMPARE(QDir(m->path("/Correlations")).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList({"South"}));
        QVERIFY(m->file("South").startsWith("Correlation:South\n"));
        files::write(m->path("/Correlations/South/more.txt"), "more");
        m->click("saveButton");
        QVERIFY(QFile::exists(m->path("/Correlations/South/more.txt")));
    }

    void aTakenNameIsRefused()
    {
        m->store("North");
        m->store("South", "1\nC:T\n");
        m->show();
        const QByteArray south = m->file("South");
        m->name()->setText("South");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).text,
                 QString("'South' is already exists.\nPlease give a different correlation name."));
        QCOMPARE(m->asker.boxes.at(0).title, QString("North"));
        QCOMPARE(m->file("South"), south);
        QVERIFY(QFile::exists(m->filePath("North")));
    }

    void aNameThatALinkHasIsTaken()
    {
        m->store("North");
        QVERIFY(QFile::link("/nowhere", m->path("/Correlations/South")));
        m->show();
        m->name()->setText("South");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QVERIFY(m->asker.boxes.at(0).text.startsWith("'South' is already exists."));
        QVERIFY(QFile::exists(m->filePath("North")));
    }

    void aFirstSaveThatFailsLeavesNoFolder()
    {
        m->show("New Correlation");
        m->click("addWellButton");
        m->name()->setText("Panel");
        FailingDisk disk(FailingDisk::Write);
        {
            const base::ScopedFileSystemCalls failing(disk);
            m->click("saveButton");
        }
        QCOMPARE(m->asker.boxes.size(), 1);
        QVERIFY(!QFile::exists(m->path("/Correlations/Panel")));
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QVERIFY(QFile::exists(m->filePath("Panel")));
    }

    void aFileThatCannotBeReadIsNotWrittenOver()
    {
        m->store("North");
        QFile huge(m->filePath("North"));
        QVERIFY(huge.open(QIODevice::ReadWrite) && huge.resize(100 << 20)); // more than any correlation
        huge.close();
        m->show();
        QVERIFY2(m->missing().contains("not written over"), qPrintable(m->missing()));
        m->click("addWellButton");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(QFileInfo(m->filePath("North")).size(), qint64(100) << 20);
    }

    void aScaleThatIsNoNumberIsRefused()
    {
        m->store("North");
        m->show();
        const QByteArray before = m->file("North");
        m->box("scaleChooser")->setEditText("wide");
        QVERIFY(m->dialog->isChanged());
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->file("North"), before);
        m->box("scaleChooser")->setEditText("750");
        m->click("saveButton");
        QVERIFY(m->file("North").contains("\nScale:750\n"));
        QCOMPARE(m->dialog->saved().scale, 750.0);
    }

    void whatTheSurveyHasNotIsNamed()
    {
        m->store("North", "2\nGone:T\nA:Lost\n", "2\nTop\nVanished\n",
                 "2\nZ|Other|700|#ff8000|1|0|1\nY|Top|End|#ff8000|1|0|0\n");
        const QByteArray before = m->file("North");
        m->show();
        for (const char *text : {"\"Gone\"", "\"Lost\" of A", "\"Vanished\"", "\"Other\"", "\"End\""})
            QVERIFY2(m->missing().contains(QString::fromLatin1(text)), qPrintable(m->missing()));
        QVERIFY(!m->missing().contains("Top"));
        QCOMPARE(CorrelationFixture::chooser(m->wells(), 0, 0)->currentText(), QString("A")); // its current entry
        QCOMPARE(CorrelationFixture::chooser(m->zones(), 0, 1)->currentIndex(), 0);
        QCOMPARE(m->dialog->saved().wells.at(0).wellName, QString("Gone")); // what the view is told
        QCOMPARE(m->file("North"), before);
        QVERIFY(!m->dialog->isChanged());
    }

    void whatASaveLostIsNotNamedAnyLonger()
    {
        m->store("North", "2\nGone:T\nA:T\n");
        m->show();
        QVERIFY(!m->missing().isEmpty());
        m->click("saveButton");
        QCOMPARE(m->missing(), QString());
    }

    void withoutACurrentRowTheLastGoes()
    {
        m->store("North", "3\nA:T\nB:T\nC:T\n");
        m->show();
        m->wells()->setCurrentCell(-1, -1);
        m->click("removeWellButton");
        QCOMPARE(CorrelationFixture::chooser(m->wells(), 0, 0)->currentText(), QString("A"));
        QCOMPARE(CorrelationFixture::chooser(m->wells(), 1, 0)->currentText(), QString("B"));
    }

    void swatchesFollowTheirColumn()
    {
        m->store("North", "1\nA:T\n", "0\n", "1\nZ|Top|Base|#ff8000|1|0|0\n");
        m->show();
        m->zones()->setColumnWidth(3, 150);
        QCOMPARE(m->zones()->item(0, 3)->data(Qt::DecorationRole).value<QPixmap>().width(), 150);
        QVERIFY(!m->dialog->isChanged());
    }

    // What is typed stays as it is typed: neither completed to a marker nor with the cursor sent to its end.
    void typedDepthsAreLeftAlone()
    {
        m->store("North", "1\nA:T\n", "0\n", "1\nZ|Top|Base|#ff8000|1|0|0\n");
        m->show();
        QLineEdit *line = CorrelationFixture::chooser(m->zones(), 0, 1)->lineEdit();
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, "T");
        QCOMPARE(line->text(), QString("T"));
        line->selectAll();
        QTest::keyClicks(line, "812");
        QTest::keyClick(line, Qt::Key_Home);
        QTest::keyClicks(line, "45");
        QCOMPARE(line->text(), QString("45812"));
    }

    void aFileThatCannotBeReadLeavesTheDialogEmpty()
    {
        QVERIFY(QDir().mkpath(m->filePath("North")));
        m->show();
        QCOMPARE(m->wells()->rowCount(), 0);
        QVERIFY(!m->dialog->isStored());
        QVERIFY(!m->missing().isEmpty());
    }

    void aWriteThatFailsIsTold()
    {
        m->store("North");
        m->show();
        const QSignalSpy changed(m->dialog.get(), &CorrelationPropertiesDialog::correlationDataChanged);
        QVERIFY(QFile::remove(m->filePath("North")));
        QVERIFY(QDir().mkpath(m->filePath("North") + "/in the way"));
        m->click("addWellButton");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QCOMPARE(m->asker.boxes.at(0).title, QString("North"));
        QVERIFY2(m->asker.boxes.at(0).text.contains("was not saved"), qPrintable(m->asker.boxes.at(0).text));
        QVERIFY(m->dialog->isChanged());
        QVERIFY(changed.isEmpty());
        m->name()->setText("South"); // a first save elsewhere works, and takes the old folder away
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 1);
        QVERIFY(QFile::exists(m->filePath("South")));
    }

    void theFlatMarkerIsHandedOnButNotStored()
    {
        m->store("North");
        m->show();
        const QByteArray before = m->file("North");
        QCOMPARE(m->dialog->flatMarker(), QString());
        m->choose(m->box("flatAtChooser"), "Top");
        QVERIFY(m->dialog->isChanged());
        QCOMPARE(m->dialog->flatMarker(), QString());
        m->click("saveButton");
        QCOMPARE(m->dialog->flatMarker(), QString("Top"));
        QCOMPARE(m->file("North"), before);
        m->choose(m->box("flatAtChooser"), "None"); // no marker of that name
        m->click("saveButton");
        QCOMPARE(m->dialog->flatMarker(), QString());
    }

    void closingAsksNothingAndKeepsTheEdits()
    {
        m->store("North");
        m->show();
        m->click("addWellButton");
        m->click("closeButton");
        QVERIFY(!m->dialog->isVisible());
        QVERIFY(m->asker.boxes.isEmpty());
        QVERIFY(m->dialog->isChanged());
        m->dialog->show();
        QCOMPARE(m->wells()->rowCount(), 3);
    }

    void namesAreShownAsTheyAre()
    {
        m->addDeepWell("<b>W</b>:x|y", 0, 100, {{" blank ", 10}});
        m->store("North", "1\n<b>W</b>:x|y:T\n", "1\nblank\n");
        m->show();
        QCOMPARE(CorrelationFixture::chooser(m->wells(), 0, 0)->currentText(), QString("<b>W</b>:x|y"));
        QCOMPARE(m->tickedMarkers(), QStringList({" blank "}));
        const QByteArray before = m->file("North");
        m->click("saveButton");
        QCOMPARE(m->file("North"), before);
        QCOMPARE(CorrelationFixture::find<QLabel>(m->dialog.get(), "missingLabel")->textFormat(), Qt::PlainText);
    }

private:
    template<class Widget>
    Widget *find(const char *name) const
    {
        return CorrelationFixture::find<Widget>(m->dialog.get(), name);
    }

    std::unique_ptr<DialogFixture> m;
};

LORVA_TEST_MAIN(tst_correlationpropertiesdialog)
#include "tst_correlationpropertiesdialog.moc"
