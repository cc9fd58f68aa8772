// The worked example of the manual, step by step through the windows of the built programs. What a step says is looked up
// in the chapter, and the buttons are found by the words that stand there: neither can change alone.

#include "demo/demosurvey.h"
#include "ownprogram.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QListView>
#include <QMainWindow>
#include <QPointer>
#include <QScrollBar>
#include <QTableWidget>
#include <QTimer>

#include <cmath>

namespace {

const IsolatedSettings isolated;

const QStringList wells{"Aldra-1", "Aldra-2", "Aldra-3 A", "Brisk-1", "Brisk-2", "Corrin-1 Deep"};
const QStringList section{"Corrin-1 Deep", "Aldra-3 A", "Aldra-1", "Aldra-2", "Brisk-1", "Brisk-2"};

template<class Widget>
Widget *find(const QWidget *parent, const char *name)
{
    auto *found = parent->findChild<Widget *>(QString::fromLatin1(name));
    if (!found)
        qFatal("no %s", name);
    return found;
}

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}

/// Presses the button with this text.
void press(const QWidget *parent, const char *text)
{
    for (QPushButton *button : parent->findChildren<QPushButton *>())
        if (button->isVisible() && withoutMnemonic(button->text()) == QString::fromUtf8(text)) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    qFatal("no button %s", text);
}

QTreeWidgetItem *childOf(const QTreeWidgetItem *parent, const char *text)
{
    for (int i = 0; parent && i < parent->childCount(); ++i)
        if (parent->child(i)->text(0) == QLatin1String(text))
            return parent->child(i);
    qFatal("no %s", text);
    return nullptr;
}

QComboBox *chooserAt(const QTableWidget *table, int row, int column)
{
    return qobject_cast<QComboBox *>(table->cellWidget(row, column));
}

} // namespace

class tst_workedexample : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_chapter = QString::fromUtf8(files::read(QStringLiteral(LORVA_SOURCE_DIR "/docs/manual/example.md")));
        m_chapter = m_chapter.simplified();
    }

    void fromFilesToAFlattenedCorrelation();

private:
    /// Whether the chapter says so.
    bool says(const char *words) const { return m_chapter.contains(QString::fromUtf8(words)); }
    QMainWindow *window() const { return find<QMainWindow>(&m_program->window, "MainWindow"); }
    QTreeWidget *tree() const { return find<QTreeWidget>(window(), "ProjectTreeWidget"); }
    QString project(const char *path) const { return m_program->survey() + "/WLC/" + path; }
    QString import(const char *name) const { return m_folder.filePath("Demo/Import/") + name; }

    void makeWells();
    void importTops();
    void lookAtDefaultLogs();
    void importPerforationsAndCores();
    void display();
    void defineTemplate();
    void correlate();
    void flatten();

    void check(QTreeWidgetItem *item) const
    {
        item->setCheckState(0, Qt::Checked);
        emit tree()->itemClicked(item, 0);
    }
    void chooseInMenu(QTreeWidgetItem *item, const char *entry) const;
    QWidget *editor(const char *tab) const;
    void importText(QWidget *editor, const QString &file, const QStringList &columns);

    QString m_chapter;
    QTemporaryDir m_folder;
    std::unique_ptr<OwnProgram> m_program;
};

void tst_workedexample::fromFilesToAFlattenedCorrelation()
{
    QCOMPARE(demo::makeDemoSurvey(m_folder.filePath("Demo")), QString());
    QVERIFY(says("**Survey > New…**, name it *Vellorn*, depths in metres"));
    m_program = std::make_unique<OwnProgram>(false, QStringLiteral("Vellorn"));
    QVERIFY(m_program->window.hasSurvey());
    QCOMPARE(m_program->window.findChild<QAction *>("newSurveyAction")->text(), QString("&New…"));
    makeWells();
    importTops();
    QVERIFY(says("Choose **Utilities > LORVA OS 0.0**"));
    QCOMPARE(m_program->window.utilitiesMenu()->actions().last()->text(), QString("&LORVA OS 0.0"));
    m_program->launch();
    lookAtDefaultLogs();
    importPerforationsAndCores();
    display();
    defineTemplate();
    correlate();
    flatten();
    for (const char *entry : {"Print", "Export Well logs"}) {
        QVERIFY2(says(qPrintable(QStringLiteral("**File > %1**").arg(entry))), entry);
        QStringList actions;
        for (const QAction *action : find<QMenu>(window(), "fileMenu")->actions())
            actions.append(action->text());
        QVERIFY2(actions.contains(entry), entry);
    }
    QVERIFY(m_program->asker.boxes.isEmpty());
    m_program.reset();
}

void tst_workedexample::makeWells()
{
    QVERIFY(says("surveys/Demo/Import` on the window"));
    QVERIFY(says("Press **Create wells**"));
    m_program->drop(m_folder.filePath("Demo/Import"));
    QVERIFY(says("The table shows six wells"));
    QVERIFY2(m_program->summary.startsWith("6 wells were made with "), qPrintable(m_program->summary));
    // The logs of the file in feet: said, and no second GR.
    QVERIFY(says("the same logs in feet"));
    QVERIFY2(m_program->summary.contains("Aldra-1_feet.las"), qPrintable(m_program->summary));
    QVERIFY2(m_program->summary.contains("repeat"), qPrintable(m_program->summary));
    for (const host::WellEntry &well : m_program->host.wells().list().value)
        QVERIFY(wells.contains(well.name));
}

void tst_workedexample::importTops()
{
    QVERIFY(says("Choose the six files `*_tops.txt` in **Wells > Import tops…**"));
    m_program->chosenFiles.clear();
    for (const QString &well : wells)
        m_program->chosenFiles.append(import(qPrintable(QString(well).replace(' ', '_') + "_tops.txt")));
    QVERIFY(says("2. Press **Import**."));
    onNextDialog(QStringLiteral("topsDialog"), [this](QDialog *dialog) {
        onNextDialog(QStringLiteral("reportDialog"), [this](QDialog *report) {
            m_program->summary = report->findChild<QPlainTextEdit *>("reportText")->toPlainText();
            QTest::keyClick(report, Qt::Key_Escape);
        });
        press(dialog, "Import");
    });
    m_program->window.findChild<QAction *>("importTopsAction")->trigger();
    QVERIFY2(m_program->summary.startsWith("Tops of 6 wells were written: "), qPrintable(m_program->summary));
    QVERIFY2(m_program->summary.contains(" new, 0 moved.\n"), qPrintable(m_program->summary));
    QVERIFY(says("Each top has a colour, the same in all wells"));
    QHash<QString, QColor> colors;
    for (const host::WellEntry &well : m_program->host.wells().list().value) {
        const QVector<host::Marker> markers = m_program->host.wells().markers(well.key).value;
        QVERIFY(markers.size() > 10);
        for (const host::Marker &marker : markers)
            QCOMPARE(marker.color, *colors.insert(marker.name, colors.value(marker.name, marker.color)));
    }
}

QWidget *tst_workedexample::editor(const char *tab) const
{
    find<QTabWidget>(window(), "centralTabs")->setCurrentIndex(2);
    auto *manager = find<QWidget>(window(), "WellsDataManagerWidget");
    find<QComboBox>(manager, "wellBox")->setCurrentText("Aldra-1");
    auto *tabs = find<QTabWidget>(manager, "editorTabs");
    for (int i = 0; i < tabs->count(); ++i)
        if (tabs->tabText(i) == QLatin1String(tab))
            tabs->setCurrentIndex(i);
    return tabs->currentWidget();
}

void tst_workedexample::lookAtDefaultLogs()
{
    QVERIFY(says("page *Well Data Manager*, tab *Log(s)*"));
    QVERIFY(
        says("BS has the unit inch and so came into the group \"Caliper\", behind CALI: CALI stays the default log"));
    const auto *table = find<QTableWidget>(editor("Log(s)"), "defaultTable");
    int seen = 0;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString log = table->item(row, 0)->text();
        if (log != "BS" && log != "CALI")
            continue;
        ++seen;
        QCOMPARE(chooserAt(table, row, 1)->currentText(), QString("Caliper"));
        const auto *box = table->cellWidget(row, 2) ? table->cellWidget(row, 2)->findChild<QCheckBox *>() : nullptr;
        const auto *direct = qobject_cast<QCheckBox *>(table->cellWidget(row, 2));
        const bool isDefault = direct ? direct->isChecked()
            : box                     ? box->isChecked()
                                      : table->item(row, 2)->checkState() == Qt::Checked;
        QCOMPARE(isDefault, log == "CALI");
    }
    QCOMPARE(seen, 2);
}

void tst_workedexample::importText(QWidget *editor, const QString &file, const QStringList &columns)
{
    m_program->boxes.onDialog = [file](QWidget *widget) {
        if (auto *chooser = qobject_cast<QFileDialog *>(widget)) {
            chooser->selectFile(file);
            QMetaObject::invokeMethod(chooser, "accept");
        }
    };
    press(editor, "ASCII File");
    QDialog *dialog = nullptr;
    for (QDialog *child : editor->findChildren<QDialog *>())
        dialog = child->isVisible() ? child : dialog;
    QVERIFY(dialog);
    press(dialog, "Browse");
    find<QLineEdit>(dialog, "headerLinesEdit")->setText("1");
    QStringList proposed;
    for (const QLineEdit *edit : dialog->findChildren<QLineEdit *>())
        if (edit->objectName() != "fileEdit" && edit->objectName() != "headerLinesEdit")
            proposed.append(edit->text());
    QCOMPARE(proposed, columns);
    press(dialog, "Import");
    press(editor, "Update");
    m_program->boxes.onDialog = {};
}

void tst_workedexample::importPerforationsAndCores()
{
    QVERIFY(says("Tab *Perforation Zone(s)*: **ASCII File**, choose `Aldra-1_perforations.txt`, one heading line, "
                 "columns 1, 2, 3, 4, **Import**. Then **Update** stores them."));
    importText(editor("Perforation Zone(s)"), import("Aldra-1_perforations.txt"), {"1", "2", "3", "4"});
    QVERIFY(files::read(project("Aldra-1_perforationZone.txt")).contains("Perf 1|2026.5|2040.5|Gas"));
    QVERIFY(says("Tab *Calibration Point(s)*: choose the group *Porosity*, **ASCII File**, "
                 "`Aldra-1_core_porosity.txt`, one heading line, columns 1 and 2, **Import**, **Update**"));
    QWidget *points = editor("Calibration Point(s)");
    find<QComboBox>(points, "groupBox")->setCurrentText("Porosity");
    importText(points, import("Aldra-1_core_porosity.txt"), {"1", "2"});
    QVERIFY(files::read(project("Aldra-1_Porosity_calibrationPoints.txt")).contains("2021.59|0.1\n"));
}

void tst_workedexample::display()
{
    QVERIFY(says("It is displayed after the template \"Default\""));
    QTreeWidgetItem *well = m_program->well("Aldra-1");
    check(well);
    auto *tabs = find<QTabWidget>(window(), "wellTabs");
    QCOMPARE(tabs->tabText(0), QString("Aldra-1:Default"));
    QVERIFY(says("Check *Markers*: lines with names appear"));
    QTreeWidgetItem *markers = childOf(well, "Markers");
    check(markers);
    QVERIFY(markers->childCount() > 10);
    for (int i = 0; i < markers->childCount(); ++i) // those that no line shows lose their check
        QCOMPARE(markers->child(i)->checkState(0), Qt::Checked);
}

void tst_workedexample::chooseInMenu(QTreeWidgetItem *item, const char *entry) const
{
    QTreeWidget *items = tree();
    QTimer::singleShot(0, items, [entry] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        for (QAction *action : menu->actions())
            if (action->text() == QLatin1String(entry))
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        menu->close();
    });
    for (QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent())
        parent->setExpanded(true);
    items->scrollToItem(item);
    const QPoint place = items->visualItemRect(item).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, items->viewport()->mapToGlobal(place));
    QApplication::sendEvent(items->viewport(), &event);
    QCoreApplication::processEvents();
}

void tst_workedexample::defineTemplate()
{
    QVERIFY(says("Right-click *Template* > *Create New Template*. Press *Default Template*"));
    QTreeWidgetItem *well = m_program->well("Aldra-1");
    chooseInMenu(childOf(well, "Template"), "Create New Template");
    const QPointer<QDialog> dialog = find<QDialog>(window(), "DefineTemplate");
    QVERIFY(dialog->isVisible());
    press(dialog, "Default Template");
    auto *tracks = find<QTabWidget>(dialog, "trackTabs");
    const int count = tracks->count();
    QVERIFY(says("remove a track with the cross on its tab"));
    emit tracks->tabCloseRequested(count - 1);
    QCOMPARE(tracks->count(), count - 1);
    QVERIFY(says("give the gamma ray a left fill up to the left boundary with a colour bar"));
    const auto *table = find<QTableWidget>(tracks->widget(0), "curveTable");
    constexpr int leftFill = 5;
    constexpr int leftUpto = 7;
    QCOMPARE(chooserAt(table, 0, 0)->currentText(), QString("Gamma"));
    chooserAt(table, 0, leftUpto)->setCurrentText("Left Boundary");
    chooserAt(table, 0, leftFill)->setCurrentIndex(2);
    QVERIFY(says("name it *Mine* and press *Save as Global*: every well has it"));
    find<QLineEdit>(dialog, "nameEdit")->setText("Mine");
    m_program->boxes.seen.clear();
    press(dialog, "Save as Global");
    QCOMPARE(m_program->boxes.seen.size(), 1);
    QCOMPARE(m_program->boxes.seen.first().text, QString("Saved Successfully !"));
    m_program->boxes.seen.clear();
    press(dialog, "Close");
    QTRY_VERIFY(!dialog);
    QVERIFY(files::read(project("Templates/Global/Mine/Track_1.txt")).contains("Left Boundary"));

    QVERIFY(says("Check *Mine* below *Global*: the display changes and stays at the same depth"));
    const auto depth = [this] { // in the middle of the view
        QCoreApplication::processEvents();
        const auto *view = find<QGraphicsView>(find<QTabWidget>(window(), "wellTabs")->currentWidget(), "logView");
        return view->mapToScene(view->viewport()->rect().center()).y();
    };
    const double before = depth();
    check(childOf(childOf(childOf(well, "Template"), "Global"), "Mine"));
    QCOMPARE(find<QTabWidget>(window(), "wellTabs")->tabText(0), QString("Aldra-1:Mine"));
    QVERIFY2(std::abs(depth() - before) <= 1, qPrintable(QStringLiteral("%1 %2").arg(depth()).arg(before)));
    for (const QString &name : wells)
        QVERIFY(childOf(childOf(childOf(m_program->well(name), "Template"), "Global"), "Mine"));
}

void tst_workedexample::correlate()
{
    QVERIFY(says("Right-click *Correlations* > *Add Correlation*. An empty view opens with its properties."));
    chooseInMenu(tree()->topLevelItem(1), "Add Correlation");
    auto *dialog = find<QDialog>(window(), "CorrelationPropertiesDialog");
    QVERIFY(dialog->isVisible());
    QVERIFY(says("Name it *Reservoir*. With \"+\" add six rows"));
    QTest::keyClicks(find<QLineEdit>(dialog, "nameEdit"), "Reservoir"); // over the proposed name
    auto *table = find<QTableWidget>(dialog, "wellsTable");
    for (int row = 0; row < section.size(); ++row) {
        QTest::mouseClick(find<QPushButton>(dialog, "addWellButton"), Qt::LeftButton);
        QVERIFY(says(qPrintable(section.at(row))));
        chooserAt(table, row, 0)->setCurrentText(section.at(row));
        chooserAt(table, row, 1)->setCurrentText("Simple");
    }
    QVERIFY(says("(from west to east: Corrin-1 Deep, Aldra-3 A, Aldra-1, Aldra-2, Brisk-1, Brisk-2)"));
    QVERIFY(says("*Kestrane Upper Sst*, *Kestrane Middle Shale*, *Kestrane Lower Sst* and *Thessane Mudstone*"));
    auto *markers = find<QTableWidget>(dialog, "markersTable");
    for (const char *name :
         {"Kestrane Upper Sst", "Kestrane Middle Shale", "Kestrane Lower Sst", "Thessane Mudstone"})
        markers->item(markers->findItems(name, Qt::MatchExactly).first()->row(), 1)->setCheckState(Qt::Checked);
    QVERIFY(says("Check *Zone(s)* and add one: start *Kestrane Upper Sst*, end *Kestrane Middle Shale*"));
    find<QCheckBox>(dialog, "zonesBox")->click();
    QTest::mouseClick(find<QPushButton>(dialog, "addZoneButton"), Qt::LeftButton);
    auto *zones = find<QTableWidget>(dialog, "zonesTable");
    chooserAt(zones, 0, 1)->setCurrentIndex(chooserAt(zones, 0, 1)->findText("Kestrane Upper Sst"));
    chooserAt(zones, 0, 2)->setCurrentIndex(chooserAt(zones, 0, 2)->findText("Kestrane Middle Shale"));
    press(dialog, "Save");
    QVERIFY2(m_program->boxes.seen.isEmpty(), qPrintable(m_program->boxes.seen.value(0).text));
    press(dialog, "Close");
    QByteArray rows;
    for (const QString &well : section)
        rows += well.toUtf8() + ":Simple\n";
    const QByteArray stored = files::read(project("Correlations/Reservoir/properties.txt"));
    QVERIFY2(stored.contains("Number Of Wells:6\n" + rows), stored);
    QVERIFY2(stored.contains("Marker:4\n") && stored.contains("|Kestrane Upper Sst|Kestrane Middle Shale|"), stored);
    QCOMPARE(tree()->topLevelItem(1)->child(0)->text(0), QString("Reservoir"));
}

// All wells hang at that top, 1000 m below the upper end of the view.
void tst_workedexample::flatten()
{
    auto *view = find<QGraphicsView>(window(), "correlationView");
    const auto places = [view] {
        QVector<double> found;
        constexpr int markerNameKey = 1;
        for (const QGraphicsItem *item : view->scene()->items())
            if (item->data(markerNameKey).toString() == "Kestrane Upper Sst")
                found.append(item->y());
        return found;
    };
    window()->resize(3200, 900); // all wells are in view, and so made
    QCoreApplication::processEvents();
    QCOMPARE(places().size(), section.size());
    QVERIFY(std::abs(places().at(0) - places().at(1)) > 10);
    QVERIFY(says("choose *Flat At Marker*: *Kestrane Upper Sst* in *Properties*"));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(300, 300));
    const QWidget *properties = find<QDockWidget>(window(), "propertiesDock")->widget();
    QStringList labels;
    for (const QLabel *label : properties->findChildren<QLabel *>())
        labels.append(label->text());
    QVERIFY2(labels.contains("Flat At Marker"), qPrintable(labels.join('|')));
    find<QComboBox>(properties, "flatAtBox")->setCurrentText("Kestrane Upper Sst");
    QVERIFY(says("1000 m below the top of the view"));
    const double expected = 1000.0 / 1000 * 100 * 96 / 2.54;
    QCOMPARE(places().size(), section.size());
    for (const double y : places())
        QVERIFY2(std::abs(y - expected) < 1, qPrintable(QString::number(y)));
}

LORVA_TEST_MAIN(tst_workedexample)
#include "tst_workedexample.moc"
