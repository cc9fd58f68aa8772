#include "las/curvetextwriter.h"
#include "las/exportcurvesinascii.h"
#include "support/commalocale.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString asciiTitle = QStringLiteral("Exporting Well Curve(s)");

class AsciiFixture : public ProjectFixture
{
public:
    AsciiFixture()
    {
        addWell(text("A"), {text("GR"), text("RT")});
        addWell(text("B 1"), {text("SP")});
        open();
        makeDialog();
    }
    void makeDialog()
    {
        dialog = std::make_unique<ExportCurvesInAscii>(*launch);
        dialog->show();
        dialog->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the dialog gets no focus");
    }
    QComboBox *wells() const { return dialog->findChild<QComboBox *>(text("wellBox")); }
    QListWidget *logs() const { return dialog->findChild<QListWidget *>(text("logList")); }
    QCheckBox *all() const { return dialog->findChild<QCheckBox *>(text("allBox")); }
    void startExport() const
    {
        QTest::mouseClick(dialog->findChild<QPushButton *>(text("exportButton")), Qt::LeftButton);
    }
    QStringList logTexts() const
    {
        QStringList texts;
        for (int i = 0; i < logs()->count(); ++i)
            texts.append(logs()->item(i)->text());
        return texts;
    }
    std::unique_ptr<ExportCurvesInAscii> dialog;
};

} // namespace

class TestExportCurvesInAscii : public QObject
{
    Q_OBJECT

private slots:
    void widgets();
    void wellChangedRefillsTheLogs();
    void selectAll();
    void writesTheCheckedLogs();
    void textOfALog();
    void textUnderACommaLocale();
    void oddNamesAreNoPaths();
    void failures();
    void oneFileFailsOthersAreWritten();
    void unreadableLogCountsAsFailed();
    void wellNameIsTrimmed();
    void twoWellsOfOneName();
    void nothingSelected();
    void keyboardAlone();
};

void TestExportCurvesInAscii::widgets()
{
    AsciiFixture f;
    for (const char *slot : {"wellChanged()", "selectAllToggle(bool)", "exportClicked()"})
        QVERIFY2(ExportCurvesInAscii::staticMetaObject.indexOfSlot(slot) >= 0, slot);
    QCOMPARE(f.wells()->count(), 2);
    QCOMPARE(f.wells()->itemText(1), text("B 1"));
    QCOMPARE(f.logTexts(), (QStringList{text("GR"), text("RT")}));
    QCOMPARE(f.logs()->item(0)->checkState(), Qt::Unchecked);
}

void TestExportCurvesInAscii::wellChangedRefillsTheLogs()
{
    AsciiFixture f;
    f.all()->setChecked(true);
    f.wells()->setCurrentIndex(1);
    QCOMPARE(f.logTexts(), QStringList{text("SP")});
    QCOMPARE(f.logs()->item(0)->checkState(), Qt::Unchecked);
    QVERIFY(!f.all()->isChecked());
    f.host.storedWells[1].logs.append({text("NEW"), {}, {1}, {1}});
    f.launch->catalogue.refreshLogNames(1);
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "wellChanged"));
    QCOMPARE(f.logTexts(), (QStringList{text("SP"), text("NEW")}));
}

void TestExportCurvesInAscii::selectAll()
{
    AsciiFixture f;
    QTest::mouseClick(f.all(), Qt::LeftButton, {}, QPoint(8, f.all()->height() / 2));
    QCOMPARE(f.logs()->item(0)->checkState(), Qt::Checked);
    QCOMPARE(f.logs()->item(1)->checkState(), Qt::Checked);
    f.logs()->item(1)->setCheckState(Qt::Unchecked);
    QVERIFY(!f.all()->isChecked());
    QCOMPARE(f.logs()->item(0)->checkState(), Qt::Checked);
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "selectAllToggle", Q_ARG(bool, false)));
    QCOMPARE(f.logs()->item(0)->checkState(), Qt::Unchecked);
}

void TestExportCurvesInAscii::writesTheCheckedLogs()
{
    AsciiFixture f;
    f.host.storedWells[0].logs[1].depths = {100.123f, 12345.678f, 1234567.f};
    f.host.storedWells[0].logs[1].values = {0.00001f, host::undefinedValue, 1e10f};
    f.logs()->item(1)->setCheckState(Qt::Checked);
    QVERIFY(!QFile::exists(f.path(text("/Wells/A/RT.txt"))));
    f.startExport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Information);
    QCOMPARE(f.asker.boxes.first().title, asciiTitle);
    QCOMPARE(f.asker.boxes.first().text, text("Exporting of Selected Well Curve(s) is Done."));
    QCOMPARE(f.asker.boxes.first().buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
    QCOMPARE(f.asker.boxes.first().okText, QStringLiteral("Ok"));
    QCOMPARE(files::read(f.path(text("/Wells/A/RT.txt"))),
             QByteArray("A\tRT\nDepth\tValue\n100.123\t1e-05\n12345.7\t-999.25\n1.23457e+06\t1e+10"));
    QVERIFY(!QFile::exists(f.path(text("/Wells/A/GR.txt"))));
}

void TestExportCurvesInAscii::textOfALog()
{
    LogCurveData log;
    log.logName = text("GR");
    QCOMPARE(las::curveText(text("W"), log), QByteArray("W\tGR\nDepth\tValue\n"));
    log.depths = {0.5};
    log.values = {-0.25};
    QCOMPARE(las::curveText(text("W"), log), QByteArray("W\tGR\nDepth\tValue\n0.5\t-0.25"));
    log.depths = {0.5, 1};
    log.values = {-0.25, 1234567.8};
    QCOMPARE(las::curveText(text("Wø"), log), QByteArray("Wø\tGR\nDepth\tValue\n0.5\t-0.25\n1\t1.23457e+06"));
    log.values = {-0.25}; // a depth without a value
    QCOMPARE(las::curveText(text("W"), log), QByteArray("W\tGR\nDepth\tValue\n0.5\t-0.25"));
}

void TestExportCurvesInAscii::textUnderACommaLocale()
{
    const testing_support::CommaLocale locale;
    if (!locale.isInForce())
        QSKIP("no locale with a decimal comma could be made");
    textOfALog();
}

void TestExportCurvesInAscii::oddNamesAreNoPaths()
{
    AsciiFixture f;
    f.addWell(text("../x/y"), {text("a/b"), text("..")});
    f.launch->catalogue.build();
    f.makeDialog();
    f.wells()->setCurrentText(text("../x/y"));
    f.all()->setChecked(true);
    const auto before = files::snapshot(f.survey.path());
    f.startExport();
    auto after = files::snapshot(f.survey.path());
    for (const QString &name : before.keys())
        after.remove(name);
    QCOMPARE(after.keys(),
             (QStringList{text("WLC/Wells/"), text("WLC/Wells/..%2Fx%2Fy/"), text("WLC/Wells/..%2Fx%2Fy/%2E%2E.txt"),
                          text("WLC/Wells/..%2Fx%2Fy/a%2Fb.txt")}));
    QVERIFY(after.value(text("WLC/Wells/..%2Fx%2Fy/a%2Fb.txt")).startsWith("../x/y\ta/b\n"));
}

void TestExportCurvesInAscii::failures()
{
    AsciiFixture f;
    f.all()->setChecked(true);
    FailingDisk disk(FailingDisk::Write);
    const base::ScopedFileSystemCalls calls(disk);
    f.startExport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, asciiTitle);
    QCOMPARE(f.asker.boxes.first().text,
             text("Some errors while Exporting Well Curves.\nPlease Check file permision."));
    QCOMPARE(f.asker.boxes.first().buttons, QVector<base::BoxButton>{base::BoxButton::Ok});
    QCOMPARE(f.asker.boxes.first().okText, QStringLiteral("Ok"));
    QVERIFY(!QFileInfo::exists(f.path(text("/Wells")))); // the folders that were made for them are gone
}

void TestExportCurvesInAscii::oneFileFailsOthersAreWritten()
{
    AsciiFixture f;
    QVERIFY(QDir().mkpath(f.path(text("/Wells/A/GR.txt")))); // a folder stands there
    f.all()->setChecked(true);
    f.startExport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QVERIFY(files::read(f.path(text("/Wells/A/RT.txt"))).startsWith("A\tRT\n"));
}

void TestExportCurvesInAscii::unreadableLogCountsAsFailed()
{
    AsciiFixture f;
    f.all()->setChecked(true);
    files::write(f.path(text("/Wells/A/RT.txt")), "old");
    f.host.storedWells[0].logs.removeLast();
    f.startExport();
    QCOMPARE(f.host.errors, QStringList{text("Cannot get data for the selected well\nA: RT")});
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().text,
             text("Some errors while Exporting Well Curves.\nPlease Check file permision."));
    QCOMPARE(files::read(f.path(text("/Wells/A/RT.txt"))), QByteArray("old"));
    QVERIFY(files::read(f.path(text("/Wells/A/GR.txt"))).startsWith("A\tGR\n"));
}

void TestExportCurvesInAscii::wellNameIsTrimmed()
{
    AsciiFixture f;
    f.addWell(text(" X 1 "), {text("GR")});
    f.launch->catalogue.build();
    f.makeDialog();
    f.wells()->setCurrentText(text(" X 1 "));
    f.all()->setChecked(true);
    f.startExport();
    QVERIFY(f.host.errors.isEmpty());
    QCOMPARE(f.asker.boxes.first().text, text("Exporting of Selected Well Curve(s) is Done."));
    QVERIFY(files::read(f.path(text("/Wells/X 1/GR.txt"))).startsWith("X 1\tGR\nDepth\tValue\n100\t1\n"));
}

void TestExportCurvesInAscii::twoWellsOfOneName()
{
    AsciiFixture f;
    f.addWell(text("A"), {text("XX")});
    f.launch->catalogue.build();
    f.makeDialog();
    f.wells()->setCurrentIndex(1);
    QCOMPARE(f.logTexts(), QStringList{text("XX")});
    f.all()->setChecked(true);
    f.startExport();
    QVERIFY(f.host.errors.isEmpty());
    QVERIFY(files::read(f.path(text("/Wells/A/XX.txt"))).startsWith("A\tXX\n"));
}

void TestExportCurvesInAscii::nothingSelected()
{
    AsciiFixture f;
    f.startExport();
    QCOMPARE(f.asker.boxes.first().text, text("Exporting of Selected Well Curve(s) is Done."));
    QVERIFY(!QFile::exists(f.path(text("/Wells/A"))));
}

void TestExportCurvesInAscii::keyboardAlone()
{
    AsciiFixture f;
    const auto press = [](int key) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); };
    QCOMPARE(QApplication::focusWidget(), f.wells());
    press(Qt::Key_Down);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), f.logs());
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    QVERIFY(QFile::exists(f.path(text("/Wells/B 1/SP.txt"))));
    press(Qt::Key_Escape);
    QVERIFY(!f.dialog->isVisible());
}

LORVA_TEST_MAIN(TestExportCurvesInAscii)
#include "tst_exportcurvesinascii.moc"
