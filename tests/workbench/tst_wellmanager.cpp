#include "dialogscript.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "support/tidywindows.h"
#include "survey/surveyfolder.h"
#include "survey/wellinput.h"
#include "workbench/renamewelldialog.h"
#include "workbench/welleditdialog.h"
#include "workbench/wellmanagerdialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

using namespace survey;
using namespace workbench;

namespace {

const QString probeOne = QStringLiteral("100050.2");
const QString probeTwo = QStringLiteral("100050.3");

void type(QWidget *parent, const char *edit, const QString &text)
{
    auto *line = parent->findChild<QLineEdit *>(QLatin1String(edit));
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

QString problem(QWidget *parent, const char *edit)
{
    return parent->findChild<QLabel *>(QLatin1String(edit) + QStringLiteral("Problem"))->text();
}

QString shown(QWidget *parent, const char *edit)
{
    return parent->findChild<QLineEdit *>(QLatin1String(edit))->text();
}

QTreeWidgetItem *logs(QWidget *parent)
{
    return parent->findChild<QTreeWidget *>(QStringLiteral("contentsTree"))->topLevelItem(0);
}

QStringList column(const QTreeWidgetItem *group, int column)
{
    QStringList texts;
    for (int row = 0; row < group->childCount(); ++row)
        texts.append(group->child(row)->text(column));
    return texts;
}

QStringList names(const QVector<host::WellEntry> &wells)
{
    QStringList names;
    for (const host::WellEntry &well : wells)
        names.append(well.name);
    return names;
}

} // namespace

class TestWellManager : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void listsWellsWithTheirLogs();
    void damagedLogsAreShownAsUnknown();
    void aCutLogSaysSo();
    void feetAreCalledFeet();
    void addsAWell();
    void addRefusesBadInputWithASentencePerField();
    void commaBecomesPoint();
    void germanLocaleChangesNothing();
    void editsAWell();
    void editWithoutAChangeWritesNothing();
    void editKeepsAnUnknownType();
    void aSmallerTotalDepthAsksFirst();
    void aGreaterOrKeptTotalDepthAsksNothing();
    void storeErrorsKeepTheDialogOpen();
    void renamesAWell();
    void renameRefusesTakenAndEmptyNames();
    void deletesAfterAsking();
    void keepsTheWellOnNo();
    void removesALogAfterAsking();
    void filterNarrowsTheListAndYieldsToANewWell();
    void shortcutsOfTheList();
    void unreadableListIsToldInABox();
    void manyWellsAreListed();

private:
    QString survey() const { return m_folder->filePath(QStringLiteral("survey")); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SurveyStore> m_store;
    ScriptedAsker m_asker;
};

void TestWellManager::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_asker = ScriptedAsker();
    const QString shared = files::sharedFolder(QStringLiteral("od-survey"));
    if (shared.isEmpty())
        QSKIP("The folder of real data has no od-survey.");
    files::copyFolder(shared, survey());
    m_store = std::make_unique<SurveyStore>(survey());
}

void TestWellManager::listsWellsWithTheirLogs()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    auto *list = dialog.findChild<QListView *>(QStringLiteral("wellsList"));
    QCOMPARE(list->model()->rowCount(), 2);
    QCOMPARE(list->model()->index(0, 0).data().toString(), QStringLiteral("Probe 2/A"));
    QCOMPARE(dialog.currentWellKey(), probeTwo);
    QCOMPARE(
        column(logs(&dialog), 0),
        (QStringList{QStringLiteral("GR"), QStringLiteral("RHOB"), QStringLiteral("ILD"), QStringLiteral("DT")}));
    QCOMPARE(column(logs(&dialog), 1).mid(0, 3),
             (QStringList{QStringLiteral("gAPI"), QStringLiteral("g/cc"), QStringLiteral("ohmm")}));
    QCOMPARE(logs(&dialog)->child(0)->text(2), QStringLiteral("31"));
    QCOMPARE(logs(&dialog)->child(0)->text(3), QStringLiteral("600.00"));
    QCOMPARE(logs(&dialog)->child(0)->text(4), QStringLiteral("615.00"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("wellHeaderLabel"))->text(),
             QStringLiteral("X 504000.25   Y 6005000.5\nKB 30 m   Ground 13.5 m   TD 2000 m"));
    QTest::keyClick(list, Qt::Key_Down);
    QCOMPARE(dialog.currentWellKey(), probeOne);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWellManager::damagedLogsAreShownAsUnknown()
{
    // A header of 60 logs more: those beyond the first are counted only when they are selected.
    host::LogData log;
    log.depths = {1, 2, 3};
    log.values = {1, 2, 3};
    for (int i = 0; i < 62; ++i) {
        log.name = QStringLiteral("L%1").arg(i);
        QCOMPARE(m_store->writeLog(probeTwo, log).error, QString());
    }
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    QCOMPARE(logs(&dialog)->childCount(), 66);
    QCOMPARE(logs(&dialog)->child(59)->text(2), QStringLiteral("3"));
    QCOMPARE(logs(&dialog)->child(65)->text(2), QStringLiteral("?"));
    logs(&dialog)->treeWidget()->setCurrentItem(logs(&dialog)->child(65));
    QCOMPARE(logs(&dialog)->child(65)->text(2), QStringLiteral("3"));
    QCOMPARE(logs(&dialog)->child(64)->text(2), QStringLiteral("?"));
}

void TestWellManager::aCutLogSaysSo()
{
    const QString path = survey() + QStringLiteral("/WellInfo/Probe_2_A^1.wll");
    const QByteArray whole = files::read(path);
    QVERIFY(QFile::remove(path));
    files::write(path, whole.left(whole.size() - 3));
    WellManagerDialog dialog(*m_store, m_asker);
    QCOMPARE(logs(&dialog)->child(0)->text(2), QStringLiteral("30"));
    QVERIFY(logs(&dialog)->child(0)->toolTip(2).contains(QLatin1String("its last sample is cut off")));
    QVERIFY(logs(&dialog)->child(1)->toolTip(2).isEmpty());
}

void TestWellManager::feetAreCalledFeet()
{
    const auto depths = [this] {
        WellManagerDialog dialog(*m_store, m_asker);
        return column(logs(&dialog), 3) + column(logs(&dialog), 4);
    };
    const QStringList depthsBefore = depths();
    QVERIFY(depthsBefore.size() == 8 && !depthsBefore.contains(QStringLiteral("?")));
    QByteArray info = files::read(survey() + QStringLiteral("/.survey"));
    const int end = info.indexOf('\n', info.indexOf("Z range"));
    files::write(survey() + QStringLiteral("/.survey"), info.replace(end - 1, 1, "F"));
    WellManagerDialog dialog(*m_store, m_asker);
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("wellHeaderLabel"))->text(),
             QStringLiteral("X 504000.25   Y 6005000.5\nKB 30 ft   Ground 13.5 ft   TD 2000 ft"));
    WellEditDialog add(*m_store, m_asker);
    QStringList labels;
    for (const QLabel *label : add.findChildren<QLabel *>())
        labels.append(label->text());
    QCOMPARE(labels.filter(QStringLiteral("ft above datum")).size(), 2);
    QCOMPARE(labels.filter(QStringLiteral("ft along hole")).size(), 1);
    QVERIFY(labels.filter(QStringLiteral("m above datum")).isEmpty());
    QCOMPARE(depths(), depthsBefore); // what lies in the files, now taken for feet
}

void TestWellManager::addsAWell()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    QSignalSpy changed(&dialog, &WellManagerDialog::changed);
    onNextDialog(QStringLiteral("wellEditDialog"), [](QDialog *edit) {
        QCOMPARE(edit->windowTitle(), QStringLiteral("Add well"));
        int looked = 0;
        QCOMPARE(tidy::faults(edit, &looked).join(u'\n'), QString());
        QVERIFY(looked > 10);
        type(edit, "nameEdit", QStringLiteral(" 15/9-F-1 "));
        type(edit, "xEdit", QStringLiteral("435050.5"));
        type(edit, "yEdit", QStringLiteral("6478563.125"));
        type(edit, "kbEdit", QStringLiteral("54.9"));
        type(edit, "totalDepthEdit", QStringLiteral("3465"));
        edit->findChild<QComboBox *>(QStringLiteral("typeCombo"))->setCurrentText(QStringLiteral("OilGas"));
        QTest::keyClick(edit->findChild<QLineEdit *>(QStringLiteral("xEdit")), Qt::Key_Return);
    });
    pressMnemonic(&dialog, Qt::Key_A);
    QCOMPARE(changed.size(), 1);
    const QString key = dialog.currentWellKey();
    const host::Outcome<WellProperties> well = SurveyStore(survey()).properties(key);
    QCOMPARE(well.error, QString());
    QCOMPARE(well.value.name, QStringLiteral("15/9-F-1"));
    QCOMPARE(well.value.x, 435050.5);
    QCOMPARE(well.value.y, 6478563.125);
    QCOMPARE(static_cast<float>(well.value.kbElevation), 54.9f);
    QVERIFY(host::isUndefined(static_cast<float>(well.value.groundElevation)));
    QCOMPARE(well.value.totalDepth, 3465.0);
    QCOMPARE(well.value.typeCode, static_cast<int>(host::OilGasWell));
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWellManager::addRefusesBadInputWithASentencePerField()
{
    const auto before = files::snapshot(survey());
    WellEditDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QCOMPARE(problem(&dialog, "nameEdit"), QStringLiteral("A well needs a name."));
    QCOMPARE(problem(&dialog, "xEdit"), QStringLiteral("X is missing."));
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("xEdit"))->accessibleDescription(),
             QStringLiteral("X is missing.")); // for who hears the form
    QCOMPARE(problem(&dialog, "kbEdit"), QString());
    QCOMPARE(problem(&dialog, "groundEdit"), QString());
    QCOMPARE(problem(&dialog, "totalDepthEdit"), QStringLiteral("The total depth is missing."));
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("nameEdit"));
    QVERIFY(dialog.findChild<QLabel *>(QStringLiteral("xEditProblem"))->isVisible());
    // A sentence goes as soon as its field is right.
    type(&dialog, "nameEdit", QStringLiteral("probe-1"));
    QCOMPARE(problem(&dialog, "nameEdit"), QString());
    QVERIFY(!dialog.findChild<QLabel *>(QStringLiteral("nameEditProblem"))->isVisible());
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(problem(&dialog, "nameEdit"), QStringLiteral("A well named \"probe-1\" exists already."));
    type(&dialog, "nameEdit", QStringLiteral("Probe-3"));
    QCOMPARE(problem(&dialog, "nameEdit"), QString());
    type(&dialog, "totalDepthEdit", QStringLiteral("0"));
    QCOMPARE(problem(&dialog, "totalDepthEdit"), QStringLiteral("The total depth must be greater than 0."));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
    QVERIFY(!dialog.hasWritten());
    QCOMPARE(files::snapshot(survey()), before);
}

void TestWellManager::commaBecomesPoint()
{
    WellEditDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    type(&dialog, "kbEdit", QStringLiteral("25,5"));
    QCOMPARE(shown(&dialog, "kbEdit"), QStringLiteral("25.5"));
    type(&dialog, "xEdit", QStringLiteral("5x0-0y0"));
    QCOMPARE(shown(&dialog, "xEdit"), QStringLiteral("5000")); // letters do not get in
}

void TestWellManager::germanLocaleChangesNothing()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    {
        WellEditDialog dialog(*m_store, m_asker, probeTwo, m_store->properties(probeTwo).value);
        QVERIFY(showActive(&dialog));
        QCOMPARE(shown(&dialog, "xEdit"), QStringLiteral("504000.25"));
        type(&dialog, "xEdit", QStringLiteral("504001.75"));
        QTest::keyClick(&dialog, Qt::Key_Return);
    }
    QLocale::setDefault(before);
    QCOMPARE(SurveyStore(survey()).properties(probeTwo).value.x, 504001.75);
}

void TestWellManager::editsAWell()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    dialog.selectWell(probeOne);
    QSignalSpy changed(&dialog, &WellManagerDialog::changed);
    onNextDialog(QStringLiteral("wellEditDialog"), [](QDialog *edit) {
        QCOMPARE(edit->windowTitle(), QStringLiteral("Edit well Probe-1"));
        QCOMPARE(shown(edit, "totalDepthEdit"), QStringLiteral("2500"));
        type(edit, "nameEdit", QStringLiteral("Probe-1 ST2"));
        type(edit, "kbEdit", QStringLiteral("26.5"));
        type(edit, "groundEdit", QStringLiteral("-80"));
        edit->findChild<QComboBox *>(QStringLiteral("typeCombo"))->setCurrentText(QStringLiteral("Gas"));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    QTest::keyClick(dialog.findChild<QListView *>(), Qt::Key_Return); // "Edit" is the default button
    QCOMPARE(changed.size(), 1);
    QCOMPARE(dialog.currentWellKey(), probeOne);
    SurveyStore fresh(survey());
    const WellProperties well = fresh.properties(probeOne).value;
    QCOMPARE(well.name, QStringLiteral("Probe-1 ST2"));
    QCOMPARE(well.kbElevation, 26.5);
    QCOMPARE(well.groundElevation, -80.0);
    QCOMPARE(well.typeCode, static_cast<int>(host::GasWell));
    QCOMPARE(well.x, 502500.0);
    QCOMPARE(well.totalDepth, 2500.0);
    QCOMPARE(fresh.logs(probeOne).value.size(), 4);
    QCOMPARE(fresh.markers(probeOne).value.size(), 5);
}

void TestWellManager::editWithoutAChangeWritesNothing()
{
    const auto before = files::snapshot(survey());
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    QSignalSpy changed(&dialog, &WellManagerDialog::changed);
    onNextDialog(QStringLiteral("wellEditDialog"), [](QDialog *edit) { QTest::keyClick(edit, Qt::Key_Return); });
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("editWellButton")), Qt::LeftButton);
    QVERIFY(changed.isEmpty());
    QCOMPARE(files::snapshot(survey()), before);
}

void TestWellManager::editKeepsAnUnknownType()
{
    WellProperties well = m_store->properties(probeOne).value;
    well.typeCode = 9;
    QCOMPARE(m_store->changeWell(probeOne, well).error, QString());
    WellEditDialog dialog(*m_store, m_asker, probeOne, m_store->properties(probeOne).value);
    QCOMPARE(dialog.findChild<QComboBox *>()->currentText(), QStringLiteral("Type 9"));
    type(&dialog, "kbEdit", QStringLiteral("31"));
    dialog.accept();
    QCOMPARE(SurveyStore(survey()).properties(probeOne).value.typeCode, 9);
    QCOMPARE(SurveyStore(survey()).properties(probeOne).value.kbElevation, 31.0);
}

void TestWellManager::aSmallerTotalDepthAsksFirst()
{
    const auto before = files::snapshot(survey());
    WellEditDialog dialog(*m_store, m_asker, probeTwo, m_store->properties(probeTwo).value);
    QVERIFY(showActive(&dialog));
    type(&dialog, "totalDepthEdit", QStringLiteral("1750.5"));
    m_asker.answers = {base::BoxButton::No};
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QCOMPARE(files::snapshot(survey()), before);
    QCOMPARE(m_asker.boxes.size(), 1);
    const base::Box box = m_asker.boxes.first();
    QCOMPARE(box.title, dialog.windowTitle());
    QCOMPARE(box.icon, base::BoxIcon::Question);
    QCOMPARE(box.buttons, (QVector<base::BoxButton>{base::BoxButton::No, base::BoxButton::Yes}));
    QCOMPARE(
        box.text,
        QStringLiteral("Set the total depth of the well \"Probe 2/A\" to 1750.5 m?\nIts path is cut there: 3 points "
                       "below it will be deleted. This cannot be undone."));
    type(&dialog, "totalDepthEdit", QStringLiteral("1950"));
    m_asker.answers = {base::BoxButton::Yes};
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QVERIFY(m_asker.boxes.last().text.contains(QStringLiteral(" 1 point below it")));
    QCOMPARE(SurveyStore(survey()).properties(probeTwo).value.totalDepth, 1950.0);
}

void TestWellManager::aGreaterOrKeptTotalDepthAsksNothing()
{
    const QByteArray rows = files::read(survey() + QStringLiteral("/WellInfo/Probe_2_A.well"));
    for (const char *depth : {"2000", "2200"}) {
        WellEditDialog dialog(*m_store, m_asker, probeTwo, m_store->properties(probeTwo).value);
        QVERIFY(showActive(&dialog));
        type(&dialog, "kbEdit", QStringLiteral("30"));
        type(&dialog, "totalDepthEdit", QString::fromLatin1(depth));
        QTest::keyClick(&dialog, Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    }
    QVERIFY(m_asker.boxes.isEmpty());
    // Every point that was there is there.
    const QByteArray now = files::read(survey() + QStringLiteral("/WellInfo/Probe_2_A.well"));
    const auto track = [](const QByteArray &bytes) { return bytes.mid(bytes.lastIndexOf("\n!\n")); };
    QVERIFY(track(now).startsWith(track(rows)));
    QCOMPARE(track(now).count('\n'), track(rows).count('\n') + 1);
    WellEditDialog add(*m_store, m_asker);
    QVERIFY(showActive(&add));
    type(&add, "nameEdit", QStringLiteral("new"));
    for (const char *edit : {"xEdit", "yEdit", "totalDepthEdit"})
        type(&add, edit, QStringLiteral("5"));
    QTest::keyClick(&add, Qt::Key_Return);
    QVERIFY(!add.isVisible());
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestWellManager::storeErrorsKeepTheDialogOpen()
{
    FailingDisk fullDisk(FailingDisk::Write);
    auto full = std::make_unique<base::ScopedFileSystemCalls>(fullDisk);
    WellEditDialog add(*m_store, m_asker);
    QVERIFY(showActive(&add));
    type(&add, "nameEdit", QStringLiteral("plain"));
    for (const char *edit : {"xEdit", "yEdit", "totalDepthEdit"})
        type(&add, edit, QStringLiteral("5"));
    QTest::keyClick(&add, Qt::Key_Return);
    QVERIFY(add.isVisible());
    QCOMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(m_asker.boxes.first().icon, base::BoxIcon::Warning);
    QVERIFY(m_asker.boxes.first().text.contains(QLatin1String("plain.well")));
    full.reset();
    QTest::keyClick(&add, Qt::Key_Return);
    QVERIFY(!add.isVisible());
    QVERIFY(names(SurveyStore(survey()).list().value).contains(QStringLiteral("plain")));

    RenameWellDialog rename(*m_store, m_asker, {QStringLiteral("Probe-1"), probeOne});
    QVERIFY(showActive(&rename));
    type(&rename, "nameEdit", QStringLiteral("--x")); // told beside the field, without a box
    QTest::keyClick(&rename, Qt::Key_Return);
    QVERIFY(rename.isVisible());
    QCOMPARE(problem(&rename, "nameEdit"), QStringLiteral("A well name cannot begin like \"--x\"."));
    QCOMPARE(m_asker.boxes.size(), 1);
    type(&rename, "nameEdit", QStringLiteral("other"));
    const base::ScopedFileSystemCalls fullAgain(fullDisk);
    QTest::keyClick(&rename, Qt::Key_Return);
    QVERIFY(rename.isVisible());
    QCOMPARE(m_asker.boxes.size(), 2);
}

void TestWellManager::renamesAWell()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    dialog.selectWell(probeOne);
    onNextDialog(QStringLiteral("renameWellDialog"), [](QDialog *rename) {
        QCOMPARE(shown(rename, "nameEdit"), QStringLiteral("Probe-1"));
        QTest::keyClicks(rename->findChild<QLineEdit *>(), QStringLiteral("Aa first")); // all is selected
        QTest::keyClick(rename, Qt::Key_Return);
    });
    pressMnemonic(&dialog, Qt::Key_N);
    QCOMPARE(dialog.currentWellKey(), probeOne);
    QCOMPARE(names(SurveyStore(survey()).list().value),
             (QStringList{QStringLiteral("Aa first"), QStringLiteral("Probe 2/A")}));
    QCOMPARE(dialog.findChild<QListView *>()->currentIndex().row(), 0);
}

void TestWellManager::renameRefusesTakenAndEmptyNames()
{
    const auto before = files::snapshot(survey());
    RenameWellDialog dialog(*m_store, m_asker, {QStringLiteral("Probe-1"), probeOne});
    QVERIFY(showActive(&dialog));
    type(&dialog, "nameEdit", QStringLiteral("PROBE 2/A"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(problem(&dialog, "nameEdit"), QStringLiteral("A well named \"PROBE 2/A\" exists already."));
    type(&dialog, "nameEdit", QString());
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(problem(&dialog, "nameEdit"), QStringLiteral("A well needs a name."));
    QVERIFY(dialog.isVisible());
    type(&dialog, "nameEdit", QStringLiteral("Probe-1"));
    QTest::keyClick(&dialog, Qt::Key_Return); // no change, no write
    QVERIFY(!dialog.isVisible());
    QCOMPARE(files::snapshot(survey()), before);
}

void TestWellManager::deletesAfterAsking()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    QSignalSpy changed(&dialog, &WellManagerDialog::changed);
    m_asker.answers = {base::BoxButton::Yes};
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("deleteWellButton")), Qt::LeftButton);
    QCOMPARE(m_asker.boxes.size(), 1);
    const base::Box box = m_asker.boxes.first();
    QCOMPARE(box.icon, base::BoxIcon::Question);
    QCOMPARE(box.text,
             QStringLiteral("Delete the well \"Probe 2/A\"?\nIts logs and markers are deleted too. "
                            "This cannot be undone."));
    // The first button is the default one.
    QCOMPARE(box.buttons, (QVector<base::BoxButton>{base::BoxButton::No, base::BoxButton::Yes}));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(names(SurveyStore(survey()).list().value), QStringList{QStringLiteral("Probe-1")});
    QCOMPARE(dialog.currentWellKey(), probeOne);
    for (const QString &file : files::snapshot(survey()).keys())
        QVERIFY2(!file.contains(QLatin1String("Probe_2_A")), qPrintable(file));
    // And the last one.
    m_asker.answers = {base::BoxButton::Yes};
    pressMnemonic(&dialog, Qt::Key_D);
    QVERIFY(SurveyStore(survey()).list().value.isEmpty());
    QVERIFY(dialog.currentWellKey().isEmpty());
    for (const char *button : {"editWellButton", "renameWellButton", "deleteWellButton", "removeLogButton"})
        QVERIFY(!dialog.findChild<QPushButton *>(QLatin1String(button))->isEnabled());
    QVERIFY(dialog.findChild<QPushButton *>(QStringLiteral("addWellButton"))->isEnabled());
}

void TestWellManager::keepsTheWellOnNo()
{
    const auto before = files::snapshot(survey());
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    QSignalSpy changed(&dialog, &WellManagerDialog::changed);
    m_asker.answers = {base::BoxButton::No, base::BoxButton::No};
    pressMnemonic(&dialog, Qt::Key_D);
    logs(&dialog)->treeWidget()->setCurrentItem(logs(&dialog)->child(0));
    pressMnemonic(&dialog, Qt::Key_R);
    QCOMPARE(m_asker.boxes.size(), 2);
    QCOMPARE(m_asker.boxes.last().buttons.first(), base::BoxButton::No);
    QVERIFY(changed.isEmpty());
    QCOMPARE(files::snapshot(survey()), before);
}

void TestWellManager::removesALogAfterAsking()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    QSignalSpy changed(&dialog, &WellManagerDialog::changed);
    auto *remove = dialog.findChild<QPushButton *>(QStringLiteral("removeLogButton"));
    QVERIFY(!remove->isEnabled());
    QTreeWidget *tree = logs(&dialog)->treeWidget();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(logs(&dialog)->child(1)).center());
    QVERIFY(remove->isEnabled());
    m_asker.answers = {base::BoxButton::Yes};
    QTest::mouseClick(remove, Qt::LeftButton);
    QCOMPARE(m_asker.boxes.first().text,
             QStringLiteral("Remove the log \"RHOB\" of the well \"Probe 2/A\"?\nThis cannot be undone."));
    QCOMPARE(changed.size(), 1);
    QStringList left;
    for (const host::LogInfo &log : SurveyStore(survey()).logs(probeTwo).value)
        left.append(log.name);
    QCOMPARE(left, (QStringList{QStringLiteral("GR"), QStringLiteral("DT"), QStringLiteral("ILD")}));
    QCOMPARE(column(logs(&dialog), 0), left);
    QCOMPARE(dialog.currentWellKey(), probeTwo);

    // Another program took the log away meanwhile: a box says so and nothing else goes.
    logs(&dialog)->treeWidget()->setCurrentItem(logs(&dialog)->child(0));
    QCOMPARE(SurveyStore(survey()).removeLog(probeTwo, 0).error, QString());
    m_asker.answers = {base::BoxButton::Yes};
    QTest::mouseClick(remove, Qt::LeftButton);
    QCOMPARE(m_asker.boxes.last().text, QStringLiteral("The well \"Probe 2/A\" has no log \"GR\" any more."));
    QCOMPARE(SurveyStore(survey()).logs(probeTwo).value.size(), 2);
    QCOMPARE(logs(&dialog)->childCount(), 2);
}

void TestWellManager::filterNarrowsTheListAndYieldsToANewWell()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    auto *list = dialog.findChild<QListView *>(QStringLiteral("wellsList"));
    type(&dialog, "wellFilterEdit", QStringLiteral("PROBE-"));
    QCOMPARE(list->model()->rowCount(), 1);
    onNextDialog(QStringLiteral("wellEditDialog"), [](QDialog *edit) {
        type(edit, "nameEdit", QStringLiteral("Other"));
        for (const char *field : {"xEdit", "yEdit", "totalDepthEdit"})
            type(edit, field, QStringLiteral("100"));
        QTest::keyClick(edit, Qt::Key_Return);
    });
    pressMnemonic(&dialog, Qt::Key_A);
    QCOMPARE(list->model()->rowCount(), 3);
    QCOMPARE(list->currentIndex().data().toString(), QStringLiteral("Other"));
}

void TestWellManager::shortcutsOfTheList()
{
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    auto *list = dialog.findChild<QListView *>(QStringLiteral("wellsList"));
    list->setFocus();
    bool isRenaming = false;
    onNextDialog(QStringLiteral("renameWellDialog"), [&isRenaming](QDialog *rename) {
        isRenaming = true;
        QTest::keyClick(rename, Qt::Key_Escape);
    });
    QTest::keyClick(list, Qt::Key_F2);
    QVERIFY(isRenaming);
    QVERIFY(showActive(&dialog));
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(m_asker.boxes.size(), 1);
}

void TestWellManager::unreadableListIsToldInABox()
{
    files::write(survey() + QStringLiteral("/WellInfo/.omf"), "rubbish");
    WellManagerDialog dialog(*m_store, m_asker);
    QCOMPARE(m_asker.boxes.size(), 1);
    QVERIFY(m_asker.boxes.first().text.contains(QLatin1String("WellInfo/.omf")));
}

void TestWellManager::manyWellsAreListed()
{
    QByteArray list = "dTect V6.6\nObject Management file\n!\nID: 100050`2001\n!\n";
    for (int i = 2; i <= 2001; ++i)
        list += "Well " + QByteArray::number(i) + ": " + QByteArray::number(i)
            + "\nWell: dGB`Stream\n$Name: none.well\n!\n";
    files::write(survey() + QStringLiteral("/WellInfo/.omf"), list);
    WellManagerDialog dialog(*m_store, m_asker);
    QVERIFY(showActive(&dialog));
    auto *view = dialog.findChild<QListView *>(QStringLiteral("wellsList"));
    QCOMPARE(view->model()->rowCount(), 2000);
    dialog.selectWell(QStringLiteral("100050.1500"));
    QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("Well 1500"));
    QVERIFY(
        dialog.findChild<QLabel *>(QStringLiteral("wellHeaderLabel"))->text().contains(QLatin1String("none.well")));
    // A well that cannot be read can still be taken off the list.
    m_asker.answers = {base::BoxButton::Yes};
    pressMnemonic(&dialog, Qt::Key_D);
    QCOMPARE(view->model()->rowCount(), 1999);
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("editWellButton")), Qt::LeftButton);
    QVERIFY(m_asker.boxes.last().text.contains(QLatin1String("none.well")));
}

LORVA_TEST_MAIN(TestWellManager)
#include "tst_wellmanager.moc"
