#include "las/laswriter.h"
#include "las/welllogexport.h"
#include "las/welllogstabwidget.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "tests/las/deletingasker.h"
#include "tests/las/strictlaschecker.h"

#include <QCheckBox>
#include <QDoubleValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <functional>
#include <new>

namespace {

QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

const QString exportTitle = QStringLiteral("Well Log(s) Export");
const QString exportedText = QStringLiteral("Successfully Exported !");

/// The export dialog over wells A (logs GR and RT at 100, 200, 300), B (GR) and C (none), all 1000 m deep.
class ExportFixture : public ProjectFixture
{
public:
    ExportFixture()
    {
        addWell(text("A"), {text("GR"), text("RT")});
        addWell(text("B"), {text("GR")});
        addWell(text("C"));
        open();
        QDir(survey.path()).mkdir(text("out"));
        makeDialog();
    }
    void makeDialog()
    {
        dialog = std::make_unique<WellLogExport>(*launch);
        dialog->chooseFolder = [this](QWidget *, const QString &title, const QString &folder) {
            titles.append(title);
            startFolders.append(folder);
            return chosen;
        };
        dialog->show();
        dialog->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the dialog gets no focus");
    }

    QString out(const char *name = "") const
    {
        return survey.filePath(text("out")) + (*name ? text("/") + text(name) : QString());
    }
    template<class Widget>
    Widget *find(const char *name) const
    {
        auto *widget = dialog->findChild<Widget *>(text(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    QListWidget *wells() const { return find<QListWidget>("wellList"); }
    QTabWidget *tabs() const { return find<QTabWidget>("wellTabs"); }
    QListWidget *logs(int tab) const { return tabs()->widget(tab)->findChild<QListWidget *>(text("logList")); }
    void check(int well, bool isChecked = true) const
    {
        wells()->item(well)->setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
    }
    void checkLog(int tab, int log) const { logs(tab)->item(log)->setCheckState(Qt::Checked); }
    void startExport() const { QTest::mouseClick(button("exportButton"), Qt::LeftButton); }
    void setUp(const char *interval = "100") const
    {
        find<QLineEdit>("folderEdit")->setText(out());
        find<QLineEdit>("intervalEdit")->setText(text(interval));
    }
    QStringList boxTexts() const
    {
        QStringList texts;
        for (const base::Box &box : asker.boxes)
            texts.append(box.text);
        return texts;
    }
    QStringList tabTexts() const
    {
        QStringList texts;
        for (int i = 0; i < tabs()->count(); ++i)
            texts.append(tabs()->tabText(i));
        return texts;
    }
    host::LogData &hostLog(int well, int log) { return host.storedWells[well].logs[log]; }

    QString chosen;
    QStringList titles;
    QStringList startFolders;
    std::unique_ptr<WellLogExport> dialog;
};

QStringList rows(const QString &path)
{
    QStringList lines = QString::fromUtf8(files::read(path)).split(QLatin1Char('\n'));
    lines.removeLast();
    while (!lines.takeFirst().startsWith(QLatin1String("~A"))) { }
    return lines;
}

/// A host that cannot read some logs, or has no memory for them, and remembers what it was asked for.
class BadLogsHost : public MemoryHost
{
public:
    host::Outcome<host::LogData> log(const QString &key, int index) override
    {
        ++reads;
        if (onRead)
            onRead();
        const host::Outcome<host::LogData> data = MemoryHost::log(key, index);
        if (data.value.name == withoutMemory)
            throw std::bad_alloc();
        return data.value.name == unreadable ? host::Outcome<host::LogData>{{}, text("damaged")} : data;
    }
    QString unreadable = text("none");
    QString withoutMemory = text("none");
    int reads = 0;
    std::function<void()> onRead;
};

/// The same dialog over that host, with well D (RT and "NoGood") behind the others.
class BadLogsFixture : public ExportFixture
{
public:
    BadLogsFixture()
    {
        addWell(text("D"), {text("RT"), text("NoGood")});
        badHost.survey = host.survey;
        badHost.dataFolder = host.dataFolder;
        badHost.storedWells = host.storedWells;
        dialog.reset();
        launch = std::make_unique<ProjectData>(badHost, asker);
        launch->catalogue.build();
        makeDialog();
        setUp();
        for (int well : {0, 3, 1}) {
            check(well);
            tabs()->currentWidget()->findChild<QCheckBox *>(text("allBox"))->setChecked(true);
        }
        files::write(out("D.las"), "old");
    }
    ~BadLogsFixture()
    {
        dialog.reset();
        launch.reset();
    }
    QStringList filesWritten() const { return QDir(out()).entryList(QDir::Files | QDir::Hidden); }

    BadLogsHost badHost;
};

} // namespace

Q_DECLARE_METATYPE(QListWidgetItem *)

class TestWellLogExport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<QListWidgetItem *>(); }
    void widgetsFromTopToBottom();
    void slotsHaveTheirNames();
    void checkedWellsGetTabs();
    void logsOfATab();
    void allBox();
    void browse();
    void intervalBox();
    void nothingToExport();
    void exportsTheCheckedLogs();
    void wholeFile();
    void resamplesWhereTheBoxIsChecked();
    void uncheckedBoxStillSteps();
    void wellDepthAboveTheLogs();
    void logWithOneSample();
    void undefinedSamples();
    void wellWithoutCheckedLog();
    void cannotCreateTheFile();
    void folderVanishes();
    void failingDisk();
    void badIntervals_data();
    void badIntervals();
    void hugeGridIsRefused();
    void unreadableLogEndsTheExport();
    void unreadableWellEndsTheExport();
    void vanishedLogEndsTheExport();
    void vanishedWellEndsTheExport();
    void withoutMemory();
    void closeCancelsTheChecking();
    void deletedWhileChecking();
    void deletedWhileABoxStands_data();
    void deletedWhileABoxStands();
    void logsOfDifferentDepths();
    void unsuitedLogsAreAllNamed();
    void unsuitedDepths();
    void progress();
    void closeCancels();
    void deletedDialog();
    void oddWellNames();
    void twoWellsOfOneName();
    void catalogueReadAnew();
    void logsOfOneName();
    void asciiButton();
    void nothingIsKept();
    void keyboardAlone();
};

void TestWellLogExport::widgetsFromTopToBottom()
{
    ExportFixture f;
    QCOMPARE(f.dialog->windowTitle(), exportTitle);
    QVERIFY(!f.dialog->windowIcon().isNull());
    QCOMPARE(f.dialog->windowIcon().pixmap(16).toImage(), f.host.icon(text("export_wlc.png")).pixmap(16).toImage());
    QStringList labels;
    for (const QLabel *label : f.dialog->findChildren<QLabel *>())
        labels.append(label->text());
    for (const char *expected : {"Select Well(s)", "Select Log(s)", "Depth Interval :", "Output Folder :"})
        QVERIFY2(labels.contains(text(expected)), expected);
    QCOMPARE(f.button("browseButton")->text(), text("Browse"));
    QCOMPARE(f.button("exportButton")->text(), text("Export"));
    QCOMPARE(f.button("closeButton")->text(), text("Close"));
    QCOMPARE(f.button("asciiButton")->text(), text("Curves in ASCII"));
    QCOMPARE(f.find<QLineEdit>("intervalEdit")->text(), text("0.1524"));
    QVERIFY(f.find<QLineEdit>("folderEdit")->text().isEmpty());
    QVERIFY(f.find<QCheckBox>("intervalBox")->isChecked());
    const auto y = [&f](const char *name) { return f.find<QWidget>(name)->mapTo(f.dialog.get(), QPoint()).y(); };
    const char *order[] = {"wellList", "wellTabs", "intervalEdit", "folderEdit", "progressBar", "exportButton"};
    for (size_t i = 1; i < std::size(order); ++i)
        QVERIFY2(y(order[i - 1]) < y(order[i]), order[i]);
    const auto x = [&f](const char *name) { return f.find<QWidget>(name)->mapTo(f.dialog.get(), QPoint()).x(); };
    QVERIFY(x("exportButton") < x("closeButton"));
    QVERIFY(x("closeButton") < x("asciiButton"));
    QCOMPARE(f.wells()->count(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(f.wells()->item(i)->text(), f.launch->catalogue.wellNames().at(i));
        QCOMPARE(f.wells()->item(i)->checkState(), Qt::Unchecked);
    }
}

void TestWellLogExport::slotsHaveTheirNames()
{
    for (const char *slot : {"wellSelected(QListWidgetItem*)", "intervalCheckBoxToggled(bool)", "browseBtnClicked()",
                             "exportBtnClicked()", "close()"})
        QVERIFY2(WellLogExport::staticMetaObject.indexOfSlot(slot) >= 0, slot);
    for (const char *slot : {"allLogsChecked(bool)", "checkLogsCheckState(QListWidgetItem*)"})
        QVERIFY2(WellLogsTabWidget::staticMetaObject.indexOfSlot(slot) >= 0, slot);
}

void TestWellLogExport::checkedWellsGetTabs()
{
    ExportFixture f;
    f.check(1);
    f.check(0);
    QCOMPARE(f.tabTexts(), (QStringList{text("B"), text("A")})); // in the order of checking
    QCOMPARE(f.tabs()->currentIndex(), 1);
    QVERIFY(qobject_cast<WellLogsTabWidget *>(f.tabs()->widget(0)));
    f.check(2);
    f.check(0, false);
    QCOMPARE(f.tabTexts(), (QStringList{text("B"), text("C")}));
    // Hearing of the same item again changes nothing.
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "wellSelected", Q_ARG(QListWidgetItem *, f.wells()->item(1))));
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "wellSelected", Q_ARG(QListWidgetItem *, f.wells()->item(0))));
    QCOMPARE(f.tabTexts(), (QStringList{text("B"), text("C")}));
}

void TestWellLogExport::logsOfATab()
{
    ExportFixture f;
    f.check(0);
    QCOMPARE(f.logs(0)->count(), 2);
    QCOMPARE(f.logs(0)->item(0)->text(), text("GR"));
    QCOMPARE(f.logs(0)->item(1)->text(), text("RT"));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(f.logs(0)->item(i)->flags() & Qt::ItemIsUserCheckable);
        QCOMPARE(f.logs(0)->item(i)->checkState(), Qt::Unchecked);
    }
}

void TestWellLogExport::allBox()
{
    ExportFixture f;
    f.check(0);
    auto *all = f.tabs()->widget(0)->findChild<QCheckBox *>(text("allBox"));
    QCOMPARE(all->text(), text("All"));
    QSignalSpy items(f.logs(0), &QListWidget::itemChanged);
    all->setFocus();
    QTest::keyClick(all, Qt::Key_Space);
    QCOMPARE(f.logs(0)->item(0)->checkState(), Qt::Checked);
    QCOMPARE(f.logs(0)->item(1)->checkState(), Qt::Checked);
    QVERIFY(items.isEmpty()); // the list's signals are blocked
    QSignalSpy box(all, &QCheckBox::toggled);
    f.logs(0)->item(1)->setCheckState(Qt::Unchecked);
    QVERIFY(!all->isChecked());
    QCOMPARE(f.logs(0)->item(0)->checkState(), Qt::Checked);
    f.logs(0)->item(1)->setCheckState(Qt::Checked);
    QVERIFY(all->isChecked());
    QVERIFY(box.isEmpty()); // the box's signals are blocked
    auto *tab = f.tabs()->widget(0);
    QVERIFY(QMetaObject::invokeMethod(tab, "allLogsChecked", Q_ARG(bool, false)));
    QCOMPARE(f.logs(0)->item(0)->checkState(), Qt::Unchecked);
    QVERIFY(QMetaObject::invokeMethod(tab, "checkLogsCheckState", Q_ARG(QListWidgetItem *, f.logs(0)->item(0))));
    QVERIFY(!all->isChecked());
}

void TestWellLogExport::browse()
{
    ExportFixture f;
    f.chosen = text("/some/folder");
    QTest::mouseClick(f.button("browseButton"), Qt::LeftButton);
    QCOMPARE(f.titles, QStringList{text("Open Directory")});
    QCOMPARE(f.find<QLineEdit>("folderEdit")->text(), text("/some/folder"));
    f.chosen.clear(); // cancelled
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "browseBtnClicked"));
    QCOMPARE(f.find<QLineEdit>("folderEdit")->text(), text("/some/folder"));
    QCOMPARE(f.startFolders.last(), text("/some/folder"));
}

void TestWellLogExport::intervalBox()
{
    ExportFixture f;
    const QString hint = f.find<QLabel>("intervalHint")->text();
    QVERIFY(hint.contains(text("are resampled")));
    QTest::mouseClick(f.find<QCheckBox>("intervalBox"), Qt::LeftButton);
    QVERIFY(f.find<QLabel>("intervalHint")->text().contains(text("not resampled")));
    QVERIFY(f.find<QLineEdit>("intervalEdit")->isEnabled()); // it is the step of the data lines in either case
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "intervalCheckBoxToggled", Q_ARG(bool, true)));
    QCOMPARE(f.find<QLabel>("intervalHint")->text(), hint);
    const auto *validator = qobject_cast<const QDoubleValidator *>(f.find<QLineEdit>("intervalEdit")->validator());
    QVERIFY(validator);
    QCOMPARE(validator->locale().language(), QLocale::C);
}

void TestWellLogExport::nothingToExport()
{
    ExportFixture f;
    f.startExport();
    f.check(0);
    f.startExport(); // the folder is asked for first
    f.check(0, false);
    f.setUp();
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked"));
    QCOMPARE(f.boxTexts(),
             (QStringList{text("Please first select output folder."), text("Please first select output folder."),
                          text("Please first select Well(s).")}));
    for (const base::Box &box : f.asker.boxes) {
        QCOMPARE(box.icon, base::BoxIcon::Warning);
        QCOMPARE(box.title, exportTitle);
    }
}

void TestWellLogExport::exportsTheCheckedLogs()
{
    ExportFixture f;
    f.setUp();
    f.check(1);
    f.check(0);
    f.checkLog(0, 0);
    f.checkLog(1, 1);
    const QVector<MemoryHost::Well> before = f.host.storedWells;
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Information);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QCOMPARE(QDir(f.out()).entryList(QDir::Files | QDir::Hidden), (QStringList{text("A.las"), text("B.las")}));
    const StrictLas a(files::read(f.out("A.las")));
    QVERIFY2(a.problems.isEmpty(), qPrintable(QStringList(a.problems.keys()).join(QLatin1Char(' '))));
    QCOMPARE(a.sections.value(QLatin1Char('C')).size(), 2);
    QVERIFY(a.item('C', "RT") && !a.item('C', "GR"));
    QCOMPARE(a.rows, (QVector<QVector<double>>{{100, 1}, {200, 2}, {300, 3}}));
    for (int i = 0; i < before.size(); ++i)
        for (int log = 0; log < before.at(i).logs.size(); ++log) { // wells are never changed
            QCOMPARE(f.host.storedWells.at(i).logs.size(), before.at(i).logs.size());
            QCOMPARE(f.host.storedWells.at(i).logs.at(log).depths, before.at(i).logs.at(log).depths);
            QCOMPARE(f.host.storedWells.at(i).logs.at(log).values, before.at(i).logs.at(log).values);
        }
}

void TestWellLogExport::wholeFile()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    const QByteArray bytes = files::read(f.out("A.las"));
    QVERIFY(bytes.startsWith("~Version Information Section\nVERS.            2.0 "));
    QVERIFY(bytes.contains("\nLOC.             500000.50 , 6000000.25          :LOCATION\n"));
    QVERIFY(bytes.contains("\nLMF.             20                              :LOG MEASURED FROM (KB)\n"));
    QVERIFY(bytes.contains("\nWELL.            A                               :WELL\n"));
    QVERIFY(bytes.contains("\nGR.gapi                                          :2 Gamma\n"));
    QVERIFY(bytes.endsWith("\n~A DEPT GR         \n100.0000 1.00 \n200.0000 2.00 \n300.0000 3.00 \n"));
}

void TestWellLogExport::resamplesWhereTheBoxIsChecked()
{
    ExportFixture f;
    f.setUp("50");
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")),
             (QStringList{text("100.0000 1.00 "), text("150.0000 1.50 "), text("200.0000 2.00 "),
                          text("250.0000 2.50 "), text("300.0000 3.00 ")}));
}

void TestWellLogExport::uncheckedBoxStillSteps()
{
    ExportFixture f;
    f.setUp("50");
    f.find<QCheckBox>("intervalBox")->setChecked(false);
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QVERIFY(files::read(f.out("A.las")).contains("\nSTEP.M           50  "));
    QCOMPARE(rows(f.out("A.las")),
             (QStringList{text("100.0000 1.00 "), text("150.0000 2.00 "), text("200.0000 3.00 "),
                          text("250.0000 -999.25 "), text("300.0000 -999.25 ")}));
}

void TestWellLogExport::wellDepthAboveTheLogs()
{
    ExportFixture f;
    f.host.storedWells[0].header.totalDepth = 50;
    f.setUp("50");
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    const QStringList lines = rows(f.out("A.las"));
    QCOMPARE(lines.at(0), text("50.0000 -999.25 "));
    QCOMPARE(lines.at(1), text("100.0000 1.00 "));
    QCOMPARE(lines.size(), 6);
}

void TestWellLogExport::logWithOneSample()
{
    ExportFixture f;
    f.hostLog(0, 0).depths = {150};
    f.hostLog(0, 0).values = {7};
    f.setUp("0.5");
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")), QStringList{text("150.0000 7.00 ")});
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
}

void TestWellLogExport::undefinedSamples()
{
    ExportFixture f;
    f.hostLog(0, 0).values = {1, host::undefinedValue, 3};
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")).at(1), text("200.0000 -999.25 "));
}

void TestWellLogExport::wellWithoutCheckedLog()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.check(2);
    f.check(1);
    f.checkLog(0, 0);
    f.checkLog(2, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{text("Please first select log(s) for this Well :C.")});
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QCOMPARE(QDir(f.out()).entryList(QDir::Files), QStringList{text("A.las")}); // A stays, B is not begun
    QVERIFY(f.button("exportButton")->isEnabled());
}

void TestWellLogExport::cannotCreateTheFile()
{
    ExportFixture f;
    f.setUp();
    QDir(f.out()).mkdir(text("B.las")); // a folder stands there
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("Unable to create file.\nPlease check file read/write permission for that folder.")});
    QCOMPARE(f.asker.boxes.first().icon, base::BoxIcon::Warning);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QVERIFY(QFile::exists(f.out("A.las")));
}

void TestWellLogExport::folderVanishes()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    QVERIFY(QDir(f.out()).removeRecursively());
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("Unable to create file.\nPlease check file read/write permission for that folder.")});
    QVERIFY(!QFile::exists(f.out())); // not made by us
}

void TestWellLogExport::failingDisk()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    files::write(f.out("A.las"), "old");
    FailingDisk disk(FailingDisk::Flush);
    const base::ScopedFileSystemCalls calls(disk);
    f.startExport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QCOMPARE(f.asker.boxes.first().title, exportTitle);
    QVERIFY(f.boxTexts().first().startsWith(text("Unable to write file ") + f.out("A.las")));
    QVERIFY(f.boxTexts().first().endsWith(text("What was at this place before is unchanged.")));
    QCOMPARE(files::read(f.out("A.las")), QByteArray("old"));
}

void TestWellLogExport::badIntervals_data()
{
    QTest::addColumn<bool>("isChecked");
    for (const char *interval : {"0", "-1", "0.00001", "1e-300", "", "x"}) {
        QTest::newRow(qPrintable(text(interval) + text(" checked"))) << true;
        QTest::newRow(qPrintable(text(interval) + text(" unchecked"))) << false;
    }
}

void TestWellLogExport::badIntervals()
{
    QFETCH(bool, isChecked);
    ExportFixture f;
    f.setUp(QByteArray(QTest::currentDataTag()).split(' ').first().constData());
    f.find<QCheckBox>("intervalBox")->setChecked(isChecked);
    f.check(0);
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("The depth interval must be a number and at least 0.0001 m.\n"
                              "Nothing was written.")});
    QVERIFY(QDir(f.out()).isEmpty());
}

void TestWellLogExport::hugeGridIsRefused()
{
    ExportFixture f;
    f.hostLog(1, 0).depths = {0, 1, 1e9f};
    f.setUp("0.5");
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    f.startExport();
    QCOMPARE(f.asker.boxes.size(), 1);
    QVERIFY2(f.boxTexts().first().startsWith(text("B: the depths 0 to 1e+09 at an interval of 0.5 would give more")),
             qPrintable(f.boxTexts().first()));
    QVERIFY(QDir(f.out()).isEmpty()); // A, which comes first, is not written either
}

void TestWellLogExport::unreadableLogEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.unreadable = text("NoGood");
    f.startExport();
    QCOMPARE(f.badHost.errors, QStringList{text("Cannot get data for the selected well\nD: NoGood")}); // once
    QVERIFY(f.asker.boxes.isEmpty()); // and no success
    QCOMPARE(f.filesWritten(), (QStringList{text("A.las"), text("D.las")})); // A, before it, stays; B is not begun
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
    QVERIFY(f.button("exportButton")->isEnabled());
}

void TestWellLogExport::unreadableWellEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.storedWells[3].isUnreadable = true;
    f.startExport();
    QCOMPARE(f.badHost.errors, QStringList{text("Cannot get data for this well : D")});
    QVERIFY(f.asker.boxes.isEmpty());
    QCOMPARE(f.filesWritten(), (QStringList{text("A.las"), text("D.las")}));
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
}

// The log was listed when the well was checked; meanwhile it went.
void TestWellLogExport::vanishedLogEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.storedWells[3].logs.removeLast();
    f.launch->catalogue.refreshLogNames(3);
    f.startExport();
    QCOMPARE(f.badHost.errors, QStringList{text("Cannot get data for the selected well\nD: NoGood")});
    QVERIFY(f.asker.boxes.isEmpty());
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
}

void TestWellLogExport::vanishedWellEndsTheExport()
{
    BadLogsFixture f;
    f.badHost.storedWells.remove(3);
    f.launch->catalogue.build();
    f.startExport();
    QCOMPARE(f.badHost.errors.size(), 1);
    QVERIFY(f.asker.boxes.isEmpty());
    QCOMPARE(f.filesWritten(), (QStringList{text("A.las"), text("D.las")}));
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
}

void TestWellLogExport::withoutMemory()
{
    BadLogsFixture f;
    f.badHost.withoutMemory = text("NoGood");
    f.startExport();
    QCOMPARE(f.boxTexts(),
             QStringList{text("There is not enough memory to export the logs of D.\n"
                              "Its file was not written; what was at its place before is unchanged.")});
    QCOMPARE(files::read(f.out("D.las")), QByteArray("old"));
    QVERIFY(f.button("exportButton")->isEnabled());
}

// Before anything is written the depths of all wells are looked at.
void TestWellLogExport::closeCancelsTheChecking()
{
    BadLogsFixture f;
    f.badHost.onRead = [&f] {
        if (f.badHost.reads == 2)
            QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
    };
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QCOMPARE(f.badHost.reads, 2);
    QVERIFY(f.asker.boxes.isEmpty());
    QVERIFY(!f.dialog->isVisible());
    QCOMPARE(f.filesWritten(), QStringList{text("D.las")});
}

void TestWellLogExport::deletedWhileChecking()
{
    BadLogsFixture f;
    f.badHost.onRead = [&f] { QTimer::singleShot(0, qApp, [&f] { f.dialog.reset(); }); };
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QVERIFY(!f.dialog);
    QCOMPARE(f.badHost.reads, 1);
    QCOMPARE(f.filesWritten(), QStringList{text("D.las")});
}

void TestWellLogExport::deletedWhileABoxStands_data()
{
    QTest::addColumn<QString>("boxText");
    for (const char *box : {"Please first select log(s)", "There is not enough memory", "The depths of these logs",
                            "Unable to create file", "the depths 0 to", "Successfully"})
        QTest::newRow(box) << text(box);
}

// As when the survey changes: the owner deletes the dialog while the user reads.
void TestWellLogExport::deletedWhileABoxStands()
{
    QFETCH(QString, boxText);
    BadLogsFixture f;
    f.dialog.reset();
    DeletingAsker asker;
    asker.trigger = boxText;
    asker.deleteDialog = [&f] { f.dialog.reset(); };
    f.launch = std::make_unique<ProjectData>(f.badHost, asker);
    f.launch->catalogue.build();
    f.makeDialog();
    f.setUp("50");
    f.check(0);
    if (!boxText.contains(text("select log")))
        f.checkLog(0, 0);
    if (boxText.contains(text("memory")))
        f.badHost.withoutMemory = text("GR");
    if (boxText.contains(text("these logs")))
        f.badHost.storedWells[0].logs[0].depths = {100, 300, 200};
    if (boxText.contains(text("create")))
        f.find<QLineEdit>("folderEdit")->setText(f.out("nowhere"));
    if (boxText.contains(text("0 to")))
        f.badHost.storedWells[0].logs[0].depths = {0, 1, 1e10f};
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QVERIFY(!f.dialog);
    QCOMPARE(asker.texts.size(), 1); // nothing more is said
}

// Two logs that begin and end at different depths.
void TestWellLogExport::logsOfDifferentDepths()
{
    ExportFixture f;
    f.host.storedWells[0].header.totalDepth = 2000;
    const float firsts[] = {1000, 1050};
    const int counts[] = {101, 151};
    for (int log = 0; log < 2; ++log) {
        host::LogData &data = f.hostLog(0, log);
        data.depths.clear();
        data.values.clear();
        for (int i = 0; i < counts[log]; ++i) {
            data.depths.append(firsts[log] + static_cast<float>(i));
            data.values.append(static_cast<float>(10 * (log + 1)));
        }
    }
    f.setUp("0.1524");
    f.check(0);
    f.tabs()->widget(0)->findChild<QCheckBox *>(text("allBox"))->setChecked(true);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    const QByteArray bytes = files::read(f.out("A.las"));
    QVERIFY(bytes.contains("\nSTRT.M           1000  "));
    QVERIFY(bytes.contains("\nSTOP.M           1200  "));
    const StrictLas read(bytes);
    QVERIFY(read.rows.size() > 1300);
    const double interval = 0.1524;
    for (const QVector<double> &row : read.rows) {
        const double depth = row.at(0);
        // Within one interval of an end the index rule decides.
        if (depth < 1100 || depth > 1100 + interval)
            QCOMPARE(row.at(1), depth > 1100 ? -999.25 : 10.0);
        if (depth < 1050 - interval || depth > 1050)
            QCOMPARE(row.at(2), depth < 1050 ? -999.25 : 20.0);
    }
}

void TestWellLogExport::unsuitedLogsAreAllNamed()
{
    ExportFixture f;
    QStringList names;
    for (int i = 0; i < 40; ++i) {
        names.append(text("%1 ") + QString::number(i));
        f.host.storedWells[1].logs.append({names.last(), text("u"), {3, 2, 1}, {1, 2, 3}});
    }
    f.launch->catalogue.build();
    f.makeDialog();
    f.hostLog(0, 1).depths = {300, 200, 100};
    f.setUp("50");
    for (int well : {0, 1}) {
        f.check(well);
        f.tabs()->currentWidget()->findChild<QCheckBox *>(text("allBox"))->setChecked(true);
    }
    f.startExport();
    QVERIFY2(f.boxTexts().value(0).endsWith(text(":\nA: RT\nB: ") + names.join(text(", "))),
             qPrintable(f.boxTexts().value(0)));
    QCOMPARE(f.boxTexts().value(1), exportedText);
}

void TestWellLogExport::unsuitedDepths()
{
    ExportFixture f;
    f.hostLog(0, 0).depths = {100, 300, 200};
    f.setUp("50");
    f.check(0);
    f.checkLog(0, 0);
    f.checkLog(0, 1);
    f.startExport();
    QCOMPARE(f.boxTexts(),
             (QStringList{text("The depths of these logs do not increase strictly, so the interval could not "
                               "be applied.\nThey were written sample by sample, whatever their depths:\nA: GR"),
                          exportedText}));
    QCOMPARE(rows(f.out("A.las")).at(1), text("150.0000 2.00 1.50 "));
}

void TestWellLogExport::progress()
{
    ExportFixture f;
    f.setUp();
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    QSignalSpy values(f.find<QProgressBar>("progressBar"), &QProgressBar::valueChanged);
    f.startExport();
    QCOMPARE(f.find<QProgressBar>("progressBar")->maximum(), 2);
    QCOMPARE(values.last(), QList<QVariant>{2});
    QCOMPARE(values.at(values.size() - 2), QList<QVariant>{1});
}

void TestWellLogExport::closeCancels()
{
    ExportFixture f;
    f.setUp();
    for (int well = 0; well < 2; ++well) {
        f.check(well);
        f.checkLog(well, 0);
    }
    QStringList enabled;
    bool isDone = false;
    // The first event of the export: before the first log of the first well is read.
    QTimer::singleShot(0, f.dialog.get(), [&] {
        isDone = true;
        for (QWidget *widget : f.dialog->findChildren<QWidget *>())
            if (widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus)
                enabled.append(widget->objectName());
        QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
    });
    QVERIFY(QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked"));
    QVERIFY(isDone);
    QCOMPARE(enabled, QStringList{text("closeButton")});
    QVERIFY(f.asker.boxes.isEmpty());
    QVERIFY(!f.dialog->isVisible());
    QVERIFY(QDir(f.out()).isEmpty());
    f.dialog->show();
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QVERIFY(f.dialog->isVisible());
    QTest::mouseClick(f.button("closeButton"), Qt::LeftButton);
    QVERIFY(!f.dialog->isVisible());
}

void TestWellLogExport::deletedDialog()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.checkLog(0, 0);
    QTimer::singleShot(0, qApp, [&] { f.dialog.reset(); });
    QMetaObject::invokeMethod(f.dialog.get(), "exportBtnClicked");
    QVERIFY(!f.dialog);
    QVERIFY(QDir(f.out()).isEmpty());
}

void TestWellLogExport::oddWellNames()
{
    ProjectFixture project;
    ExportFixture f;
    const QString name = text("15/9-F-1 & æ");
    f.addWell(name, {text("GR")});
    f.launch->catalogue.build();
    f.makeDialog();
    f.setUp();
    f.check(0);
    QCOMPARE(f.wells()->item(0)->text(), name);
    QCOMPARE(f.tabs()->tabText(0), text("15/9-F-1 && æ")); // so that one "&" is seen
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(QDir(f.out()).entryList(QDir::Files), QStringList{text("15%2F9-F-1 & æ.las")});
    QVERIFY(files::read(f.out("15%2F9-F-1 & æ.las")).contains(("\nUWI.             " + name.toUtf8() + "    ")));
}

void TestWellLogExport::twoWellsOfOneName()
{
    ExportFixture f;
    f.addWell(text("A"), {text("SP")});
    f.launch->catalogue.build();
    f.makeDialog();
    f.check(0);
    f.check(1);
    QCOMPARE(f.tabTexts(), (QStringList{text("A"), text("A")}));
    QCOMPARE(f.logs(1)->item(0)->text(), text("SP"));
    f.check(0, false);
    QCOMPARE(f.tabs()->count(), 1);
    QCOMPARE(f.logs(0)->item(0)->text(), text("SP"));
    f.setUp();
    f.checkLog(0, 0);
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QVERIFY(f.host.errors.isEmpty());
    QVERIFY(files::read(f.out("A.las")).contains("\nSP.gapi"));
}

// The catalogue may be read anew while the dialog stands; what was checked stays what it was.
void TestWellLogExport::catalogueReadAnew()
{
    ExportFixture f;
    f.setUp();
    f.check(1);
    f.checkLog(0, 0);
    f.addWell(text("0 first"), {text("XX")});
    f.hostLog(1, 0).values = {7, 8, 9};
    f.host.storedWells[1].logs.prepend({text("ZZ"), text("u"), {1, 2}, {3, 4}});
    f.launch->catalogue.build();
    f.startExport();
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(rows(f.out("B.las")).first(), text("100.0000 7.00 "));
}

void TestWellLogExport::logsOfOneName()
{
    ExportFixture f;
    f.hostLog(0, 1).name = text("GR");
    f.hostLog(0, 1).values = {7, 8, 9};
    f.launch->catalogue.build();
    f.makeDialog();
    f.setUp();
    f.check(0);
    f.checkLog(0, 1);
    f.startExport();
    QCOMPARE(rows(f.out("A.las")).first(), text("100.0000 7.00 "));
}

void TestWellLogExport::asciiButton()
{
    ExportFixture f;
    QTest::mouseClick(f.button("asciiButton"), Qt::LeftButton);
    auto *ascii = f.dialog->findChild<QDialog *>(text("ExportCurvesInAscii"));
    QVERIFY(ascii && ascii->isVisible());
    QPointer<QDialog> pointer(ascii);
    ascii->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!pointer);
}

void TestWellLogExport::nothingIsKept()
{
    ExportFixture f;
    f.setUp();
    f.check(0);
    f.makeDialog();
    QVERIFY(f.find<QLineEdit>("folderEdit")->text().isEmpty());
    QCOMPARE(f.tabs()->count(), 0);
    QCOMPARE(f.find<QLineEdit>("intervalEdit")->text(), text("0.1524"));
}

void TestWellLogExport::keyboardAlone()
{
    ExportFixture f;
    const auto press = [](int key) { QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key)); };
    const auto tabTo = [&](const QWidget *widget) {
        for (int i = 0; i < 30 && QApplication::focusWidget() != widget; ++i)
            press(Qt::Key_Tab);
        return QApplication::focusWidget() == widget;
    };
    QVERIFY(tabTo(f.wells()));
    press(Qt::Key_Space);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    QCOMPARE(f.tabTexts(), (QStringList{text("A"), text("B")}));
    QVERIFY(tabTo(f.logs(1)));
    press(Qt::Key_Space);
    QVERIFY(tabTo(f.wells()));
    press(Qt::Key_Tab);
    press(Qt::Key_Left); // the tab bar: to A
    QCOMPARE(f.tabs()->currentIndex(), 0);
    QVERIFY(tabTo(f.tabs()->widget(0)->findChild<QCheckBox *>(text("allBox"))));
    press(Qt::Key_Space);
    QVERIFY(tabTo(f.find<QLineEdit>("intervalEdit")));
    QTest::keySequence(QApplication::focusWidget(), QKeySequence::SelectAll);
    QTest::keyClicks(QApplication::focusWidget(), text("100"));
    QVERIFY(tabTo(f.find<QLineEdit>("folderEdit")));
    QTest::keyClicks(QApplication::focusWidget(), f.out());
    press(Qt::Key_Return);
    QCOMPARE(f.boxTexts(), QStringList{exportedText});
    QCOMPARE(rows(f.out("A.las")).first(), text("100.0000 1.00 1.00 "));
    QCOMPARE(rows(f.out("B.las")).first(), text("100.0000 1.00 "));
    QVERIFY(tabTo(f.button("closeButton")));
    press(Qt::Key_Space);
    QVERIFY(!f.dialog->isVisible());
}

LORVA_TEST_MAIN(TestWellLogExport)
#include "tst_welllogexport.moc"
