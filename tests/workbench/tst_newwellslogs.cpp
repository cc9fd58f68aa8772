#include "base/atomicfile.h"
#include "dialogscript.h"
#include "support/failingtarget.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "support/tidywindows.h"
#include "survey/lasfiles.h"
#include "survey/surveyfolder.h"
#include "workbench/newwellsdialog.h"
#include "workbench/newwellsmodel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QUrl>

#include <cerrno>
#include <cstring>

using namespace workbench;

namespace {

const IsolatedSettings isolated;

QByteArray lasText(const QByteArray &well, const QByteArray &uwi, int rows = 3)
{
    QByteArray text = "~V\nVERS. 2.0 :\n~W\nSTRT.M 100 :\nSTOP.M 200 :\nNULL. -999.25 :\nWELL. " + well + " :\nUWI. "
        + uwi + " :\n~C\nDEPT.M :\nGR.GAPI :\nRHOB.G/C3 :\n~A\n";
    for (int i = 0; i < rows; ++i)
        text += QByteArray::number(100 + i) + " 50 2.4\n";
    return text;
}

/// A file system that becomes read-only for the files of wells once one with a certain end was put in place.
class DiskThatLocks : public base::FileSystemCalls
{
public:
    explicit DiskThatLocks(const QByteArray &last)
        : m_last(last)
    {
    }
    int openTemporary(char *pathTemplate) override
    {
        return m_isLocked ? readOnly() : FileSystemCalls::openTemporary(pathTemplate);
    }
    int rename(const char *from, const char *to) override
    {
        if (m_isLocked)
            return readOnly();
        m_isLocked = QByteArray(to).endsWith(m_last);
        return FileSystemCalls::rename(from, to);
    }
    int unlink(const char *path) override { return m_isLocked ? readOnly() : FileSystemCalls::unlink(path); }

private:
    static int readOnly()
    {
        errno = EROFS;
        return -1;
    }

    QByteArray m_last;
    bool m_isLocked = false;
};

} // namespace

/// New wells with their logs: names, encodings, wrong rows, folders, cancelling, the summary.
class TestNewWellsLogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void logsAreWrittenWithTheWells();
    void theBoxLeavesThemOut();
    void namesFromTheUwiOrTheFile();
    void namesOfSingleRows();
    void correctionsStayWithTheirWells();
    void encodings();
    void wrongRowsAreFoundAndLeftOut();
    void aTotalDepthFromTheSamples();
    void foldersAreDropped();
    void lasFilesOfFolders();
    void theSummaryIsSaved();
    void aFullDiskNamesWhatIsMissing();
    void aSurveyBecomesReadOnly();
    void cancelledBetweenWells();
    void twoThousandFiles();

private:
    QString write(const QString &name, const QByteArray &bytes)
    {
        files::write(m_folder->filePath(name), bytes);
        return m_folder->filePath(name);
    }
    QModelIndex cell(int row, int column) const
    {
        return m_dialog->findChild<QTableView *>()->model()->index(row, column);
    }
    QString text(int row, int column) const { return cell(row, column).data().toString(); }
    QPushButton *button(const char *name) const { return m_dialog->findChild<QPushButton *>(QLatin1String(name)); }
    void choose(const char *box, int index)
    {
        auto *combo = m_dialog->findChild<QComboBox *>(QLatin1String(box));
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    }
    void create(const std::function<void(QDialog *)> &onSummary = {})
    {
        onNextDialog(QStringLiteral("reportDialog"), [this, onSummary](QDialog *report) {
            m_summary = report->findChild<QPlainTextEdit *>()->toPlainText();
            if (onSummary)
                onSummary(report);
            QTest::keyClick(report, Qt::Key_Escape);
        });
        QTest::mouseClick(button("createWellsButton"), Qt::LeftButton);
    }
    QStringList wells() const
    {
        QStringList texts;
        survey::SurveyStore fresh(m_store->surveyDirectory());
        for (const host::WellEntry &well : fresh.list().value)
            texts.append(QStringLiteral("%1:%2").arg(well.name).arg(fresh.logs(well.key).value.size()));
        return texts;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<survey::SurveyStore> m_store;
    ScriptedAsker m_asker;
    std::unique_ptr<NewWellsDialog> m_dialog;
    QString m_newFile;
    QString m_summary;
};

void TestNewWellsLogs::init()
{
    m_dialog.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    const QString survey = m_folder->filePath(QStringLiteral("survey"));
    QCOMPARE(survey::createSurvey(survey, {}).error, QString());
    m_store = std::make_unique<survey::SurveyStore>(survey);
    m_asker = ScriptedAsker();
    FileChooser chooser;
    chooser.chooseNewFile = [this](QWidget *, const QString &, const QString &, const QString &) {
        return m_newFile;
    };
    m_dialog = std::make_unique<NewWellsDialog>(*m_store, m_asker, chooser);
    QVERIFY(showActive(m_dialog.get()));
}

void TestNewWellsLogs::logsAreWrittenWithTheWells()
{
    m_dialog->addFiles(
        {write(QStringLiteral("a.las"), lasText("A", "1")), write(QStringLiteral("b.las"), lasText("B", "2"))});
    QCOMPARE(text(0, NewWellsModel::LogsColumn), QStringLiteral("2"));
    QCOMPARE(cell(0, NewWellsModel::LogsColumn).data(Qt::ToolTipRole).toString().contains(QLatin1String("GR, RHOB")),
             true);
    auto *table = m_dialog->findChild<QTableView *>();
    QCOMPARE(m_dialog->focusWidget(), static_cast<QWidget *>(table));
    QTest::keyClick(table, Qt::Key_Down);
    QCOMPARE(table->currentIndex().row(), 1);
    create();
    QCOMPARE(wells(), (QStringList{QStringLiteral("A:2"), QStringLiteral("B:2")}));
    QVERIFY(m_summary.startsWith(QLatin1String("2 wells were made with 4 logs.\nSurvey: ")));
    QVERIFY(m_summary.contains(QLatin1String("\nMade:\n  A (a.las): 2 logs\n  B (b.las): 2 logs\n")));
}

void TestNewWellsLogs::theBoxLeavesThemOut()
{
    m_dialog->addFiles({write(QStringLiteral("a.las"), lasText("A", "1"))});
    QTest::mouseClick(m_dialog->findChild<QCheckBox *>(QStringLiteral("withLogsBox")), Qt::LeftButton, {},
                      QPoint(8, 8));
    create();
    QCOMPARE(wells(), QStringList{QStringLiteral("A:0")});
}

void TestNewWellsLogs::namesFromTheUwiOrTheFile()
{
    m_dialog->addFiles({write(QStringLiteral("one.las"), lasText("A", "1")),
                        write(QStringLiteral("two.las"), lasText("A", "2")),
                        write(QStringLiteral("three.las"), lasText("B", ""))});
    auto *model = m_dialog->findChild<NewWellsModel *>();
    QCOMPARE(model->rowCount(), 2); // two files of A
    choose("namesBox", 1);
    QCOMPARE(model->rowCount(), 3);
    QCOMPARE(text(0, NewWellsModel::NameColumn), QStringLiteral("1"));
    QCOMPARE(text(1, NewWellsModel::NameColumn), QStringLiteral("2"));
    QCOMPARE(text(2, NewWellsModel::NameColumn), QStringLiteral("B"));
    QVERIFY(text(2, NewWellsModel::NotesColumn)
                .contains(QLatin1String("There is no unique well id; the well name is used.")));
    choose("namesBox", 2);
    QCOMPARE(text(2, NewWellsModel::NameColumn), QStringLiteral("three"));
    choose("namesBox", 0);
    QCOMPARE(model->rowCount(), 2);
    create();
    QCOMPARE(wells(), (QStringList{QStringLiteral("A:2"), QStringLiteral("B:2")}));
    QVERIFY(m_summary.contains(QLatin1String("two.las: GR is left out: it repeats that of one.las.")));
}

void TestNewWellsLogs::namesOfSingleRows()
{
    m_dialog->addFiles(
        {write(QStringLiteral("one.las"), lasText("A", "1")), write(QStringLiteral("two.las"), lasText("B", "2"))});
    auto *table = m_dialog->findChild<QTableView *>();
    table->setCurrentIndex(cell(1, NewWellsModel::NameColumn));
    emit table->customContextMenuRequested(table->visualRect(cell(1, NewWellsModel::NameColumn)).center());
    auto *menu = table->findChild<QMenu *>(QStringLiteral("rowMenu"));
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 3);
    menu->actions().at(2)->trigger();
    QCOMPARE(text(0, NewWellsModel::NameColumn), QStringLiteral("A"));
    QCOMPARE(text(1, NewWellsModel::NameColumn), QStringLiteral("two"));
    QCOMPARE(table->currentIndex(), cell(1, NewWellsModel::NameColumn)); // the last row stays the current one
}

void TestNewWellsLogs::correctionsStayWithTheirWells()
{
    m_dialog->addFiles({write(QStringLiteral("one.las"), lasText("A", "1"))});
    auto *model = m_dialog->findChild<NewWellsModel *>();
    model->setData(cell(0, NewWellsModel::KbColumn), QStringLiteral("25"), Qt::EditRole);
    model->setData(cell(0, NewWellsModel::NameColumn), QStringLiteral("Mine"), Qt::EditRole);
    choose("namesBox", 1);
    QCOMPARE(text(0, NewWellsModel::KbColumn), QStringLiteral("25"));
    QCOMPARE(text(0, NewWellsModel::NameColumn), QStringLiteral("1"));
}

void TestNewWellsLogs::encodings()
{
    auto *box = m_dialog->findChild<QComboBox *>(QStringLiteral("codecBox"));
    m_dialog->addFiles({write(QStringLiteral("a.las"), lasText("A", "1"))});
    QVERIFY(!box->isVisible());
    int looked = 0;
    QCOMPARE(tidy::faults(m_dialog.get(), &looked).join(u'\n'), QString());
    QVERIFY(looked > 10);
    m_dialog->addFiles({write(QStringLiteral("c.las"), lasText("\x91\xAA\xA2. 7", "2"))});
    QVERIFY(box->isVisible());
    QCOMPARE(tidy::faults(m_dialog.get(), &looked).join(u'\n'), QString());
    choose("codecBox", box->findData(QByteArray("IBM866")));
    QCOMPARE(text(1, NewWellsModel::NameColumn), QString::fromUtf8("Скв. 7"));
    QCOMPARE(text(0, NewWellsModel::NameColumn), QStringLiteral("A"));
    // Another text, another width.
    auto *table = m_dialog->findChild<QTableView *>();
    const int width = table->columnWidth(NewWellsModel::NameColumn);
    table->setColumnWidth(NewWellsModel::NameColumn, 20);
    choose("codecBox", box->findData(QByteArray("IBM866")));
    QCOMPARE(table->columnWidth(NewWellsModel::NameColumn), width);
    create();
    QVERIFY(wells().contains(QString::fromUtf8("Скв. 7:2")));
}

void TestNewWellsLogs::wrongRowsAreFoundAndLeftOut()
{
    m_dialog->addFiles({write(QStringLiteral("a.las"), lasText("A", "1")),
                        write(QStringLiteral("b.las"), lasText("B", "2")),
                        write(QStringLiteral("c.las"), lasText("C", "3"))});
    QVERIFY(!button("nextProblemButton")->isVisible());
    auto *model = m_dialog->findChild<NewWellsModel *>();
    model->setData(cell(1, NewWellsModel::XColumn), QStringLiteral("east"), Qt::EditRole);
    model->setData(cell(2, NewWellsModel::TotalDepthColumn), QStringLiteral("0"), Qt::EditRole);
    QVERIFY(text(1, NewWellsModel::NotesColumn).startsWith(QLatin1String("X is not a number.")));
    auto *table = m_dialog->findChild<QTableView *>();
    table->setCurrentIndex(cell(0, NewWellsModel::NameColumn));
    QTest::mouseClick(button("nextProblemButton"), Qt::LeftButton);
    QCOMPARE(table->currentIndex(), cell(1, NewWellsModel::XColumn));
    QTest::mouseClick(button("nextProblemButton"), Qt::LeftButton);
    QCOMPARE(table->currentIndex(), cell(2, NewWellsModel::TotalDepthColumn));
    QTest::mouseClick(button("nextProblemButton"), Qt::LeftButton);
    QCOMPARE(table->currentIndex(), cell(1, NewWellsModel::XColumn)); // from the top again
    QTest::mouseClick(button("uncheckProblemsButton"), Qt::LeftButton);
    QVERIFY(!button("uncheckProblemsButton")->isVisible());
    create();
    QCOMPARE(wells(), QStringList{QStringLiteral("A:2")});
    QVERIFY(m_summary.contains(QLatin1String("\nLeft out:\n  B (b.las): Not checked.\n  C (c.las): Not checked.\n")));
}

void TestNewWellsLogs::aTotalDepthFromTheSamples()
{
    m_dialog->addFiles(
        {write(QStringLiteral("a.las"),
               lasText("A", "1").replace("STOP.M 200 :\n", "").replace("STRT.M 100 :\n", "STRT.M :\n"))});
    QCOMPARE(text(0, NewWellsModel::TotalDepthColumn), QStringLiteral("102"));
    QVERIFY(text(0, NewWellsModel::NotesColumn).contains(QLatin1String("that of the deepest sample")));
}

void TestNewWellsLogs::foldersAreDropped()
{
    write(QStringLiteral("own/a.las"), lasText("A", "1"));
    write(QStringLiteral("own/deeper/b.LAS"), lasText("B", "1"));
    write(QStringLiteral("own/notes.txt"), "x");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(m_folder->filePath(QStringLiteral("own")))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_dialog.get(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_dialog.get(), &drop);
    QTRY_COMPARE(m_dialog->findChild<NewWellsModel *>()->rowCount(), 2);
    create();
    QCOMPARE(wells(), (QStringList{QStringLiteral("A:2"), QStringLiteral("B:2")}));
    QVERIFY(m_summary.contains(QLatin1String("own/notes.txt")));
}

void TestNewWellsLogs::lasFilesOfFolders()
{
    const QString a = write(QStringLiteral("own/a.las"), "x");
    const QString b = write(QStringLiteral("own/sub/b.Las"), "x");
    const QString other = write(QStringLiteral("own/c.txt"), "x");
    QVERIFY(QFile::link(m_folder->path(), m_folder->filePath(QStringLiteral("own/round"))));
    const survey::FoundFiles found = survey::findLasFiles({m_folder->filePath(QStringLiteral("own")), other, a});
    QCOMPARE(found.files, (QStringList{a, b}));
    QCOMPARE(found.others, QStringList{other});
    QCOMPARE(survey::findLasFiles({other}).files, QStringList{other}); // chosen by itself
    QStringList sorted;
    for (int i = 0; i < 20; ++i)
        sorted.append(write(QStringLiteral("many/%1.las").arg(i * 7 % 20, 2, 10, QLatin1Char('0')), "x"));
    sorted.sort();
    QCOMPARE(survey::findLasFiles({m_folder->filePath(QStringLiteral("many"))}).files, sorted);
}

void TestNewWellsLogs::theSummaryIsSaved()
{
    m_dialog->addFiles({write(QStringLiteral("a.las"), lasText("A", "1"))});
    m_newFile = m_folder->filePath(QStringLiteral("summary.txt"));
    create([](QDialog *report) {
        QTest::mouseClick(report->findChild<QPushButton *>(QStringLiteral("saveReportButton")), Qt::LeftButton);
    });
    QCOMPARE(files::read(m_newFile), m_summary.toUtf8());
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestNewWellsLogs::aFullDiskNamesWhatIsMissing()
{
    m_dialog->addFiles(
        {write(QStringLiteral("a.las"), lasText("A", "1")), write(QStringLiteral("b.las"), lasText("B", "2"))});
    {
        FailingTarget disk("/B^2.wll");
        const base::ScopedFileSystemCalls scope(disk);
        create();
    }
    QCOMPARE(wells(), QStringList{QStringLiteral("A:2")});
    QVERIFY2(m_summary.contains(QLatin1String("\nNot made:\n  B (b.las): Cannot write")), qPrintable(m_summary));
    QVERIFY(text(1, NewWellsModel::NotesColumn).startsWith(QLatin1String("Cannot write")));
    create(); // with room again
    QCOMPARE(wells(), (QStringList{QStringLiteral("A:2"), QStringLiteral("B:2")}));
}

// In the middle of the second of three wells: the first is whole, the others are named, and what is left of the second
// becomes no well's.
void TestNewWellsLogs::aSurveyBecomesReadOnly()
{
    QStringList paths;
    for (const char *name : {"A", "B", "C"})
        paths.append(write(QLatin1String(name) + QStringLiteral(".las"), lasText(name, name)));
    m_dialog->addFiles(paths);
    {
        DiskThatLocks disk("/B^1.wll");
        const base::ScopedFileSystemCalls scope(disk);
        create();
    }
    QCOMPARE(wells(), QStringList{QStringLiteral("A:2")});
    QVERIFY2(m_summary.startsWith(QLatin1String("1 well was made with 2 logs")), qPrintable(m_summary));
    const int notMade = m_summary.indexOf(QLatin1String("\nNot made:\n"));
    for (const char *well : {"\n  B (B.las): Cannot write", "\n  C (C.las): Cannot write"})
        QVERIFY2(notMade > 0 && m_summary.indexOf(QLatin1String(well)) > notMade, qPrintable(m_summary));
    QCOMPARE(m_summary.count(QString::fromLocal8Bit(std::strerror(EROFS))), 2);
    QVERIFY(m_dialog->isVisible());
    create(); // it can be written again
    QCOMPARE(wells(), (QStringList{QStringLiteral("A:2"), QStringLiteral("B:2"), QStringLiteral("C:2")}));
}

void TestNewWellsLogs::cancelledBetweenWells()
{
    QStringList paths;
    for (int i = 0; i < 200; ++i)
        paths.append(write(QStringLiteral("%1.las").arg(i, 3, 10, QLatin1Char('0')),
                           lasText("W" + QByteArray::number(i), QByteArray::number(i), 2000)));
    m_dialog->addFiles(paths);
    QTimer press;
    connect(&press, &QTimer::timeout, this, [this] {
        auto *bar = m_dialog->findChild<QProgressBar *>();
        if (bar->isVisible() && bar->value() > 2 && bar->value() < bar->maximum())
            QTest::mouseClick(button("closeButton"), Qt::LeftButton);
    });
    press.start(1);
    create();
    press.stop();
    QVERIFY(m_dialog->isVisible());
    const int made = wells().size();
    QVERIFY(made > 2 && made < 200);
    for (const QString &well : wells())
        QVERIFY(well.endsWith(QLatin1String(":2"))); // whole
    QVERIFY(m_summary.startsWith(
        QStringLiteral("%1 wells were made with %2 logs; then it was cancelled.").arg(made).arg(2 * made)));
    QCOMPARE(m_summary.count(QLatin1String("Cancelled before it was made.")), 200 - made);
    create();
    QCOMPARE(wells().size(), 200);
}

void TestNewWellsLogs::twoThousandFiles()
{
    QStringList paths;
    for (int i = 0; i < 2000; ++i)
        paths.append(
            write(QStringLiteral("%1.las").arg(i), lasText("W" + QByteArray::number(i), QByteArray::number(i))));
    QElapsedTimer clock;
    clock.start();
    m_dialog->addFiles(paths);
    qInfo("2,000 headers: %lld ms", clock.restart());
    auto *model = m_dialog->findChild<NewWellsModel *>();
    QCOMPARE(model->rowCount(), 2000);
    auto *table = m_dialog->findChild<QTableView *>();
    for (int row = 0; row < 2000; row += 100) {
        table->scrollTo(cell(row, 0));
        table->viewport()->grab();
    }
    qInfo("20 pages: %lld ms", clock.restart());
    model->setData(cell(5, NewWellsModel::KbColumn), QStringLiteral("1"), Qt::EditRole);
    qInfo("one correction: %lld ms", clock.restart());
    choose("namesBox", 1);
    qInfo("other names: %lld ms", clock.restart());
}

LORVA_TEST_MAIN(TestNewWellsLogs)
#include "tst_newwellslogs.moc"
