#include "base/numbers.h"
#include "dialogscript.h"
#include "support/failingtarget.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "workbench/newwellsdialog.h"
#include "workbench/newwellsmodel.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

using namespace survey;
using namespace workbench;

namespace {

const IsolatedSettings isolated;

QByteArray lasText(const QByteArray &name, const QByteArray &well, double stop = 1000)
{
    return "~Version\nVERS. 2.0 :\nWRAP. NO :\n~Well\nSTRT.M 100 :\nSTOP.M " + QByteArray::number(stop)
        + " :\nSTEP.M 1 :\nNULL. -999.25 :\nWELL. " + name + " :\n" + well + "~Curve\nDEPT.M :\n~A\n100\n";
}

WellProposal proposal(const QString &file, const QString &name, double x, double y, double kb, double ground,
                      double td)
{
    WellProposal result;
    result.file = file;
    result.wellName = name;
    result.x = x;
    result.y = y;
    result.kbM = kb;
    result.groundM = ground;
    result.totalDepthM = td;
    return result;
}

QString text(const NewWells &wells, int row, WellField field)
{
    return wells.wells().at(row).texts[field];
}

} // namespace

class TestNewWellsDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void proposalsBecomeTexts();
    void aLongStateBreaksItsLine();
    void noProposedWellEndsAboveItsDeepestSample();
    void filesOfOneWellAreMerged();
    void aFileThatIsSilentDiffersInNothing();
    void problemsConcernChosenRowsOnly();
    void otherNamesLeaveTheChoiceAsItIs();
    void namesAreCheckedAmongAll();
    void aFileIsReadOnce();
    void modelShowsAndEdits();
    void createsWellsFromFiles();
    void wrongCellsBlockUntilCorrected();
    void existingWellsAreNotChosen();
    void unreadableFilesDoNotBlock();
    void failuresAreReportedAndTheDialogStays();
    void namesOutsideTheFormatAreMarked();
    void aSurveyInFeetGetsFeet();
    void checkBoxesByKeyboard();
    void chooserIsAsked();
    void manyFiles();
    void realFilesBecomeWells();

private:
    QString write(const QString &name, const QByteArray &bytes)
    {
        files::write(m_folder->filePath(name), bytes);
        return m_folder->filePath(name);
    }
    void choose(const QStringList &paths) { m_chosen = paths; }
    FileChooser chooser()
    {
        return {[](QWidget *, const QString &, const QString &) { return QString(); },
                [this](QWidget *, const QString &, const QString &folder, const QString &) {
                    m_startFolder = folder;
                    return m_chosen;
                }};
    }
    QModelIndex cell(NewWellsDialog &dialog, int row, int column)
    {
        return dialog.findChild<QTableView *>()->model()->index(row, column);
    }
    void typeIntoCell(NewWellsDialog &dialog, int row, int column, const QString &text)
    {
        auto *table = dialog.findChild<QTableView *>();
        table->setCurrentIndex(cell(dialog, row, column));
        QVERIFY(!table->model()->data(QModelIndex()).isValid()); // asked for when nothing is current and copied
        QTest::keyClick(table, Qt::Key_F2);
        auto *editor = table->viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        // Its text is taken over a moment later.
        QTRY_VERIFY(!table->viewport()->findChild<QLineEdit *>());
    }
    /// Answers the next summary by closing it; its text is kept.
    void expectSummary()
    {
        onNextDialog(QStringLiteral("reportDialog"), [this](QDialog *report) {
            m_summary = report->findChild<QPlainTextEdit *>(QStringLiteral("reportText"))->toPlainText();
            QTest::keyClick(report, Qt::Key_Escape);
        });
    }
    QString summarySentence() const { return m_summary.section(QLatin1Char('\n'), 0, 0); }
    void create(NewWellsDialog &dialog)
    {
        expectSummary();
        QTest::mouseClick(createButton(dialog), Qt::LeftButton);
    }
    static QPushButton *createButton(NewWellsDialog &dialog)
    {
        return dialog.findChild<QPushButton *>(QStringLiteral("createWellsButton"));
    }
    static QString state(NewWellsDialog &dialog)
    {
        return dialog.findChild<QLabel *>(QStringLiteral("stateLabel"))->text();
    }
    QStringList wellNames() const
    {
        QStringList names;
        for (const host::WellEntry &well : SurveyStore(m_survey).list().value)
            names.append(well.name);
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_survey;
    std::unique_ptr<SurveyStore> m_store;
    ScriptedAsker m_asker;
    QStringList m_chosen;
    QString m_startFolder;
    QString m_summary;
};

void TestNewWellsDialog::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_survey = m_folder->filePath(QStringLiteral("survey"));
    QCOMPARE(createSurvey(m_survey, {}).error, QString());
    m_store = std::make_unique<SurveyStore>(m_survey);
    m_asker = ScriptedAsker();
    m_chosen.clear();
}

void TestNewWellsDialog::proposalsBecomeTexts()
{
    NewWells wells;
    WellProposal known =
        proposal(QStringLiteral("/a/A.las"), QStringLiteral("A"), 500000.25, 6000000, 1234 * 0.3048, 0, 3000);
    known.notes.append(QStringLiteral("A note."));
    wells.addProposal(known);
    QCOMPARE(text(wells, 0, WellField::Name), QStringLiteral("A"));
    QCOMPARE(text(wells, 0, WellField::X), QStringLiteral("500000.25"));
    QCOMPARE(text(wells, 0, WellField::KbElevation), QStringLiteral("376.1232")); // without noise of the conversion
    QCOMPARE(text(wells, 0, WellField::GroundElevation), QString()); // unknown, not sea level
    QCOMPARE(text(wells, 0, WellField::TotalDepth), QStringLiteral("3000"));
    QVERIFY(wells.wells().first().isChosen);
    QCOMPARE(wells.wells().first().notes, QStringList{QStringLiteral("A note.")});
    QCOMPARE(fileNames(wells.wells().first()), QStringLiteral("A.las"));
}

void TestNewWellsDialog::aLongStateBreaksItsLine()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    const auto *label = dialog.findChild<QLabel *>(QStringLiteral("stateLabel"));
    QVERIFY(!label->text().isEmpty());
    QVERIFY(label->minimumSizeHint().width() < label->fontMetrics().horizontalAdvance(label->text()));
}

void TestNewWellsDialog::noProposedWellEndsAboveItsDeepestSample()
{
    for (const DepthUnit unit : {DepthUnit::Metre, DepthUnit::Foot}) {
        NewWells wells({}, unit);
        for (int i = 0; i < 3000; ++i)
            wells.addProposal(proposal(QString(), QStringLiteral("W%1").arg(i), 0, 0, 0, 0, 0.15239 * (i * 7 + 1)));
        for (int i = 0; i < 3000; ++i) {
            const double deepest = 0.15239 * (i * 7 + 1);
            const double proposed = base::parseNumber(text(wells, i, WellField::TotalDepth)).value_or(0);
            const auto stored = static_cast<float>(proposed); // a host keeps it so
            const float inMetres = unit == DepthUnit::Foot ? host::feetToMetres(stored) : stored;
            QVERIFY(inMetres >= static_cast<float>(deepest));
            QVERIFY(proposed >= fromMetres(deepest, unit));
            QVERIFY(proposed - fromMetres(deepest, unit) < 0.002);
        }
    }
    NewWells plain;
    plain.addProposal(proposal(QString(), QStringLiteral("A"), 0, 0, 0, 0, 3500.1));
    plain.addProposal(proposal(QString(), QStringLiteral("B"), 0, 0, 0, 0, 1670.10001));
    QCOMPARE(text(plain, 0, WellField::TotalDepth), QStringLiteral("3500.1"));
    QCOMPARE(text(plain, 1, WellField::TotalDepth), QStringLiteral("1670.1001"));
}

void TestNewWellsDialog::filesOfOneWellAreMerged()
{
    NewWells wells;
    WellProposal first = proposal(QStringLiteral("/a/one.las"), QStringLiteral("Well A"), 0, 0, 25, 0, 2000);
    first.notes = QStringList{QStringLiteral("No coordinates."), QStringLiteral("No ground.")};
    WellProposal second = proposal(QStringLiteral("/a/two.las"), QStringLiteral(" WELL a"), 500, 600, 26, -80, 2500);
    second.notes = QStringList{QStringLiteral("Converted.")};
    const WellProposal third =
        proposal(QStringLiteral("/a/three.las"), QStringLiteral("Well A"), 500, 600, 25, -80, 1000);
    for (const WellProposal &each : {first, second, third})
        wells.addProposal(each);
    QCOMPARE(wells.wells().size(), 1);
    const NewWell &well = wells.wells().first();
    QCOMPARE(fileNames(well), QStringLiteral("one.las, two.las, three.las"));
    QCOMPARE(well.texts[WellField::Name], QStringLiteral("Well A"));
    QCOMPARE(well.texts[WellField::X], QStringLiteral("500"));
    QCOMPARE(well.texts[WellField::Y], QStringLiteral("600"));
    QCOMPARE(well.texts[WellField::KbElevation], QStringLiteral("25"));
    QCOMPARE(well.texts[WellField::GroundElevation], QStringLiteral("-80"));
    QCOMPARE(well.texts[WellField::TotalDepth], QStringLiteral("2500"));
    // What a further file tells is no longer missing.
    QCOMPARE(well.allNotes(), QStringList{QStringLiteral("two.las differs in KB; the first file counts.")});
}

void TestNewWellsDialog::aFileThatIsSilentDiffersInNothing()
{
    NewWells wells;
    wells.addProposal(proposal(QStringLiteral("/one.las"), QStringLiteral("A"), 500, 600, 25, 10, 2000));
    wells.addProposal(proposal(QStringLiteral("/two.las"), QStringLiteral("A"), 0, 0, 0, 0, 0));
    QCOMPARE(wells.wells().size(), 1);
    QCOMPARE(wells.wells().first().allNotes(), QStringList());
    QCOMPARE(text(wells, 0, WellField::KbElevation), QStringLiteral("25"));
}

void TestNewWellsDialog::problemsConcernChosenRowsOnly()
{
    NewWells round;
    round.addProposal(proposal(QStringLiteral("/r.las"), QStringLiteral("R"), 5e5, 6e6, 3, 4, 1e5));
    QCOMPARE(text(round, 0, WellField::X) + u' ' + text(round, 0, WellField::Y) + u' '
                 + text(round, 0, WellField::TotalDepth),
             QStringLiteral("500000 6000000 100000"));
    NewWells wells;
    wells.addProposal(proposal(QStringLiteral("/a.las"), QStringLiteral("A"), 1, 2, 3, 4, 0));
    QCOMPARE(wells.problem(0, WellField::TotalDepth), QStringLiteral("The total depth must be greater than 0."));
    QCOMPARE(wells.firstProblem(), QStringLiteral("A: The total depth must be greater than 0."));
    wells.setChosen(0, false);
    QCOMPARE(wells.firstProblem(), QString());
    QCOMPARE(wells.chosenCount(), 0);
    wells.setChosen(0, true);
    wells.setText(0, WellField::TotalDepth, QStringLiteral(" 12.5 "));
    QCOMPARE(wells.firstProblem(), QString());
    wells.setText(0, WellField::Name, QString());
    QCOMPARE(wells.firstProblem(), QStringLiteral("a.las: A well needs a name."));
    wells.setText(0, WellField::X, QStringLiteral("1,5"));
    QVERIFY(wells.problem(0, WellField::X).contains(QLatin1String("comma")));
}

void TestNewWellsDialog::otherNamesLeaveTheChoiceAsItIs()
{
    NewWells wells;
    for (const char *name : {"A", "B"})
        wells.addProposal(
            proposal(QStringLiteral("/%1.las").arg(QLatin1String(name)), QString::fromLatin1(name), 1, 2, 3, 4, 5));
    wells.setChosen(0, false);
    wells.setNameSource(NameSource::Uwi);
    QVERIFY(!wells.wells().at(0).isChosen);
    QVERIFY(wells.wells().at(1).isChosen);
}

void TestNewWellsDialog::namesAreCheckedAmongAll()
{
    NewWells wells(WellNames({{QStringLiteral("Old"), QStringLiteral("k")}}));
    for (const char *name : {"A", "B", "old"})
        wells.addProposal(proposal(QStringLiteral("/x/") + QLatin1String(name), QLatin1String(name), 1, 1, 1, 1, 1));
    QCOMPARE(wells.wells().at(2).state, NewWell::State::Exists);
    QVERIFY(!wells.wells().at(2).isChosen);
    wells.setChosen(2, true);
    QCOMPARE(wells.problem(2, WellField::Name), QStringLiteral("A well named \"old\" exists already."));
    wells.setText(2, WellField::Name, QStringLiteral("New"));
    QCOMPARE(wells.wells().at(2).state, NewWell::State::Proposed);
    QCOMPARE(wells.firstProblem(), QString());
    wells.setText(1, WellField::Name, QStringLiteral("a"));
    QCOMPARE(wells.problem(0, WellField::Name), QStringLiteral("Two chosen wells are named \"A\"."));
    QCOMPARE(wells.problem(1, WellField::Name), QStringLiteral("Two chosen wells are named \"a\"."));
    wells.setChosen(0, false);
    QCOMPARE(wells.firstProblem(), QString());
    wells.setCreated({1});
    wells.setChosen(0, true);
    QCOMPARE(wells.problem(0, WellField::Name), QStringLiteral("A well named \"A\" exists already."));
    QVERIFY(!wells.isEditable(1));
    wells.setText(1, WellField::Name, QStringLiteral("other"));
    QCOMPARE(text(wells, 1, WellField::Name), QStringLiteral("a"));
}

void TestNewWellsDialog::aFileIsReadOnce()
{
    const QString file = write(QStringLiteral("a.las"), lasText("A", ""));
    NewWells wells;
    wells.addFiles({file, file});
    wells.addFiles({file});
    QCOMPARE(wells.wells().size(), 1);
    QCOMPARE(wells.wells().first().files, QStringList{file});
}

void TestNewWellsDialog::modelShowsAndEdits()
{
    NewWellsModel model(WellNames({{QStringLiteral("Old"), QStringLiteral("k")}}));
    model.addFiles({write(QStringLiteral("a.las"), lasText("A", "")),
                    write(QStringLiteral("o.las"), lasText("OLD", "")),
                    m_folder->filePath(QStringLiteral("missing.las"))});
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.columnCount(), 10);
    QCOMPARE(model.rowCount(model.index(0, 1)), 0);
    QCOMPARE(model.columnCount(model.index(0, 1)), 0);
    QStringList titles;
    for (int column = 0; column < model.columnCount(); ++column)
        titles.append(model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    QCOMPARE(titles.join(QLatin1Char(' ')), QStringLiteral(" File Name X Y KB (m) Ground (m) TD (m) Logs Notes"));
    const auto value = [&model](int row, int column, int role = Qt::DisplayRole) {
        return model.data(model.index(row, column), role);
    };
    QCOMPARE(value(0, NewWellsModel::ChosenColumn, Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Checked));
    QCOMPARE(value(1, NewWellsModel::ChosenColumn, Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Unchecked));
    QVERIFY(!value(2, NewWellsModel::ChosenColumn, Qt::CheckStateRole).isValid());
    QVERIFY(value(1, NewWellsModel::NotesColumn).toString().startsWith(QLatin1String("exists already")));
    QVERIFY(value(2, NewWellsModel::NotesColumn).toString().contains(QLatin1String("missing.las")));
    QVERIFY(!(model.flags(model.index(2, NewWellsModel::NameColumn)) & Qt::ItemIsEditable));
    QVERIFY(!(model.flags(model.index(0, NewWellsModel::FileColumn)) & Qt::ItemIsEditable));
    QVERIFY(!model.setData(model.index(2, NewWellsModel::NameColumn), QStringLiteral("x"), Qt::EditRole));
    QVERIFY(!model.setData(model.index(0, NewWellsModel::NameColumn), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(!model.setData(model.index(0, NewWellsModel::ChosenColumn), 0, Qt::EditRole));

    QVERIFY(!value(0, NewWellsModel::TotalDepthColumn, Qt::BackgroundRole).isValid());
    QVERIFY(model.setData(model.index(0, NewWellsModel::TotalDepthColumn), QStringLiteral("x"), Qt::EditRole));
    const auto red = value(0, NewWellsModel::TotalDepthColumn, Qt::BackgroundRole).value<QColor>();
    QVERIFY(red.red() > red.green() + 20);
    QCOMPARE(value(0, NewWellsModel::TotalDepthColumn, Qt::ToolTipRole).toString(),
             QStringLiteral("The total depth is not a number."));
}

void TestNewWellsDialog::createsWellsFromFiles()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    QVERIFY(state(dialog).startsWith(QLatin1String("No files yet.")));
    QVERIFY(!createButton(dialog)->isEnabled());
    dialog.addFiles({write(QStringLiteral("a.las"),
                           lasText("15/9-A", "X.M 430000.5 :\nY.M 6470000 :\nEKB.M 25.5 :\nEGL.M -80 :\n")),
                     write(QStringLiteral("b1.las"), lasText("B", "", 900)),
                     write(QStringLiteral("b2.las"), lasText("b", "", 1100))});
    QCOMPARE(state(dialog), QStringLiteral("2 wells to create."));
    QCOMPARE(cell(dialog, 1, NewWellsModel::FileColumn).data().toString(), QStringLiteral("b1.las, b2.las"));
    QVERIFY(dialog.findChild<QLabel *>(QStringLiteral("notesLabel"))->text().startsWith(QLatin1String("a.las")));
    expectSummary();
    QTest::keyClick(dialog.findChild<QTableView *>(), Qt::Key_Return); // "Create wells" is the default
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.createdCount(), 2);
    QCOMPARE(m_asker.boxes.size(), 0);
    QCOMPARE(summarySentence(), QStringLiteral("2 wells were made with 0 logs."));
    QCOMPARE(wellNames(), (QStringList{QStringLiteral("15/9-A"), QStringLiteral("B")}));
    SurveyStore fresh(m_survey);
    const WellProperties a = fresh.properties(fresh.list().value.at(0).key).value;
    QCOMPARE(a.x, 430000.5);
    QCOMPARE(a.y, 6470000.0);
    QCOMPARE(a.kbElevation, 25.5);
    QCOMPARE(a.groundElevation, -80.0);
    QCOMPARE(a.totalDepth, 1000.0);
    const WellProperties b = fresh.properties(fresh.list().value.at(1).key).value;
    QCOMPARE(b.totalDepth, 1100.0);
    QVERIFY(host::isUndefined(static_cast<float>(b.groundElevation)));
}

void TestNewWellsDialog::wrongCellsBlockUntilCorrected()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles({write(QStringLiteral("a.las"), lasText("A", ""))});
    QVERIFY(createButton(dialog)->isEnabled());
    typeIntoCell(dialog, 0, NewWellsModel::TotalDepthColumn, QStringLiteral("-3"));
    QCOMPARE(state(dialog), QStringLiteral("A: The total depth must be greater than 0."));
    QVERIFY(!createButton(dialog)->isEnabled());
    QTest::keyClick(dialog.findChild<QTableView *>(), Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QVERIFY(wellNames().isEmpty());
    typeIntoCell(dialog, 0, NewWellsModel::TotalDepthColumn, QStringLiteral("1234.5"));
    typeIntoCell(dialog, 0, NewWellsModel::NameColumn, QStringLiteral("Better"));
    typeIntoCell(dialog, 0, NewWellsModel::GroundColumn, QStringLiteral("12"));
    QVERIFY(createButton(dialog)->isEnabled());
    create(dialog);
    SurveyStore fresh(m_survey);
    QCOMPARE(wellNames(), QStringList{QStringLiteral("Better")});
    QCOMPARE(fresh.properties(fresh.list().value.first().key).value.totalDepth, 1234.5);
    QCOMPARE(fresh.properties(fresh.list().value.first().key).value.groundElevation, 12.0);
    QCOMPARE(summarySentence(), QStringLiteral("1 well was made with 0 logs."));
}

void TestNewWellsDialog::existingWellsAreNotChosen()
{
    WellProperties old;
    old.name = QStringLiteral("Old");
    old.totalDepth = 5;
    QVERIFY(m_store->addWell(old).ok());
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles(
        {write(QStringLiteral("o.las"), lasText("OLD", "")), write(QStringLiteral("n.las"), lasText("New", ""))});
    QCOMPARE(state(dialog), QStringLiteral("1 well to create, 1 exists already."));
    create(dialog);
    QCOMPARE(wellNames(), (QStringList{QStringLiteral("New"), QStringLiteral("Old")}));
}

void TestNewWellsDialog::unreadableFilesDoNotBlock()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles({write(QStringLiteral("notes.txt"), "just a text\n"), m_folder->path(),
                     write(QStringLiteral("a.las"), lasText("A", ""))});
    QCOMPARE(state(dialog), QStringLiteral("1 well to create, 1 file cannot be read."));
    QVERIFY(cell(dialog, 0, NewWellsModel::NotesColumn).data().toString().contains(QLatin1String("notes.txt")));
    create(dialog);
    QCOMPARE(wellNames(), QStringList{QStringLiteral("A")});
}

void TestNewWellsDialog::failuresAreReportedAndTheDialogStays()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles(
        {write(QStringLiteral("a.las"), lasText("A", "")), write(QStringLiteral("b.las"), lasText("B", ""))});
    FailingTarget disk("/B.well");
    auto failing = std::make_unique<base::ScopedFileSystemCalls>(disk);
    create(dialog);
    failing.reset();
    QVERIFY(dialog.isVisible());
    QCOMPARE(summarySentence(), QStringLiteral("1 well was made with 0 logs, 1 could not be made."));
    QVERIFY(m_summary.contains(QLatin1String("\nNot made:\n  B (b.las): Cannot write the file ")));
    QVERIFY(cell(dialog, 1, NewWellsModel::NotesColumn).data().toString().startsWith(QLatin1String("Cannot write")));
    QCOMPARE(wellNames(), QStringList{QStringLiteral("A")});
    QCOMPARE(cell(dialog, 0, NewWellsModel::NotesColumn).data().toString(), QStringLiteral("created"));
    create(dialog);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(wellNames(), (QStringList{QStringLiteral("A"), QStringLiteral("B")}));
    QCOMPARE(dialog.createdCount(), 2);
}

// A name that the survey's files cannot hold is marked at once.
void TestNewWellsDialog::namesOutsideTheFormatAreMarked()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    dialog.addFiles({write(QStringLiteral("b.las"), lasText("@B", ""))});
    QVERIFY(!createButton(dialog)->isEnabled());
    QCOMPARE(state(dialog), QStringLiteral("@B: A well name cannot begin like \"@B\"."));
}

void TestNewWellsDialog::aSurveyInFeetGetsFeet()
{
    QByteArray info = files::read(m_survey + QStringLiteral("/.survey"));
    files::write(m_survey + QStringLiteral("/.survey"), info.replace("`D\n", "`F\n"));
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles({write(QStringLiteral("a.las"), lasText("A", "EKB.F 82 :\nEGL.M 3.048 :\n"))});
    const QAbstractItemModel *model = dialog.findChild<NewWellsModel *>();
    const auto shown = [model](int column) { return model->index(0, column).data().toString(); };
    QCOMPARE(shown(NewWellsModel::KbColumn), QStringLiteral("82"));
    QCOMPARE(shown(NewWellsModel::GroundColumn), QStringLiteral("10"));
    QCOMPARE(shown(NewWellsModel::TotalDepthColumn), QStringLiteral("3280.8399")); // 1000 m
    QVERIFY(shown(NewWellsModel::NotesColumn).contains(QLatin1String("Converted from metres: EGL, STOP.")));
    QVERIFY(!shown(NewWellsModel::NotesColumn).contains(QLatin1String("from feet")));
    QCOMPARE(model->headerData(NewWellsModel::TotalDepthColumn, Qt::Horizontal).toString(),
             QStringLiteral("TD (ft)"));
    create(dialog);
    const QString key = m_store->list().value.first().key;
    QCOMPARE(m_store->properties(key).value.kbElevation, 82.0);
    QCOMPARE(m_store->properties(key).value.totalDepth, 3280.8399);
    // In metres, as a host tells it.
    QCOMPARE(m_store->header(key).value.kbElevation, 24.9936f);
    QVERIFY(m_store->header(key).value.totalDepth >= 1000);
    QVERIFY(files::read(m_survey + QStringLiteral("/WellInfo/A.well")).contains("\nDepth-Unit: Feet\n"));
    // What is written later follows the well.
    QVERIFY(m_store->writeLog(key, {QStringLiteral("GR"), {}, {1, 2}, {3, 4}}).ok());
    QVERIFY(files::read(m_survey + QStringLiteral("/WellInfo/A^1.wll")).contains("\nDepth-Unit: Feet\n"));
}

void TestNewWellsDialog::checkBoxesByKeyboard()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles(
        {write(QStringLiteral("a.las"), lasText("A", "")), write(QStringLiteral("b.las"), lasText("B", ""))});
    auto *table = dialog.findChild<QTableView *>();
    table->setFocus();
    table->setCurrentIndex(cell(dialog, 0, NewWellsModel::ChosenColumn));
    QTest::keyClick(table, Qt::Key_Space);
    QCOMPARE(state(dialog), QStringLiteral("1 well to create."));
    QTest::keyClick(table, Qt::Key_Down);
    QTest::keyClick(table, Qt::Key_Space);
    QCOMPARE(state(dialog), QStringLiteral("0 wells to create."));
    QVERIFY(!createButton(dialog)->isEnabled());
    QTest::keyClick(table, Qt::Key_Space);
    QVERIFY(createButton(dialog)->isEnabled());
    QTest::keyClick(table, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.createdCount(), 0);
    QVERIFY(wellNames().isEmpty());
}

void TestNewWellsDialog::chooserIsAsked()
{
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    QVERIFY(!dialog.chooseFiles());
    choose({write(QStringLiteral("folder/a.las"), lasText("A", ""))});
    pressMnemonic(&dialog, Qt::Key_A);
    QCOMPARE(state(dialog), QStringLiteral("1 well to create."));
    choose({write(QStringLiteral("folder/b.las"), lasText("B", ""))});
    QVERIFY(dialog.chooseFiles());
    QCOMPARE(m_startFolder, m_folder->filePath(QStringLiteral("folder"))); // where it was left
    QCOMPARE(state(dialog), QStringLiteral("2 wells to create."));
}

void TestNewWellsDialog::manyFiles()
{
    QStringList paths;
    for (int i = 0; i < 300; ++i)
        paths.append(write(QStringLiteral("%1.las").arg(i), lasText("Well " + QByteArray::number(i / 2), "")));
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles(paths);
    QCOMPARE(state(dialog), QStringLiteral("150 wells to create."));
}

void TestNewWellsDialog::realFilesBecomeWells()
{
    const QString folder = files::sharedFolder(QStringLiteral("las"));
    if (folder.isEmpty())
        QSKIP("The folder of real data has no LAS files.");
    QStringList paths;
    for (const QFileInfo &file : QDir(folder).entryInfoList({QStringLiteral("*.las")}, QDir::Files, QDir::Name))
        paths.append(file.filePath());
    QVERIFY(paths.size() > 30);
    NewWellsDialog dialog(*m_store, m_asker, chooser());
    QVERIFY(showActive(&dialog));
    dialog.addFiles(paths);
    auto *model = dialog.findChild<NewWellsModel *>();
    QVERIFY(model->rowCount() > 20);
    // What a header does not tell is corrected by hand; here by leaving the well out.
    for (int row = 0; row < model->rowCount(); ++row)
        for (WellField field : wellFields)
            if (!model->newWells().problem(row, field).isEmpty())
                model->setData(model->index(row, NewWellsModel::ChosenColumn), Qt::Unchecked, Qt::CheckStateRole);
    const int chosen = model->newWells().chosenCount();
    QVERIFY(chosen > 20);
    create(dialog);
    QVERIFY(summarySentence().startsWith(QStringLiteral("%1 wells were made with ").arg(chosen)));
    const QStringList names = wellNames();
    QCOMPARE(names.size(), chosen);
    for (const char *name : {"15/9-19", "34/7-13", "F/3-2"})
        QVERIFY2(names.contains(QLatin1String(name)), qPrintable(names.join(QLatin1Char(' '))));
    SurveyStore fresh(m_survey);
    for (const host::WellEntry &well : fresh.list().value)
        QVERIFY2(fresh.properties(well.key).value.totalDepth > 0, qPrintable(well.name));
    QVERIFY(fresh.takeProblems().isEmpty());
}

LORVA_TEST_MAIN(TestNewWellsDialog)
#include "tst_newwellsdialog.moc"
