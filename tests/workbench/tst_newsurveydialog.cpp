#include "dialogscript.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "survey/surveystore.h"
#include "workbench/fieldform.h"
#include "workbench/newsurveydialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>

using namespace survey;
using namespace workbench;

namespace {

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

FileChooser noChooser()
{
    return {[](QWidget *, const QString &, const QString &) { return QString(); },
            [](QWidget *, const QString &, const QString &, const QString &) { return QStringList(); }};
}

} // namespace

class TestNewSurveyDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void unitsAreQuieterThanNames();
    void beginsWithAnExtent();
    void folderNames_data();
    void folderNames();
    void fieldProblems_data();
    void fieldProblems();
    void makesTheSurvey();
    void tabGoesFromTopToBottom();
    void depthsInFeet();
    void makesAMissingDataRoot();
    void refusesWhatExists();
    void refusesBadInputAndWritesNothing();
    void browseFillsTheDataRoot();
    void failureOfTheDiskKeepsTheDialogOpen();
    void escapeLeavesNothing();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    ScriptedAsker m_asker;
};

void TestNewSurveyDialog::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_asker = ScriptedAsker();
}

void TestNewSurveyDialog::unitsAreQuieterThanNames()
{
    FieldForm form;
    form.addField(QStringLiteral("Total depth"), new QLineEdit, QStringLiteral("m"));
    for (const QLabel *label : form.findChildren<QLabel *>())
        if (!label->text().isEmpty())
            QCOMPARE(label->palette().color(QPalette::WindowText) != form.palette().color(QPalette::WindowText),
                     label->text() == QLatin1String("m"));
}

void TestNewSurveyDialog::beginsWithAnExtent()
{
    const SurveyTexts texts = defaultSurveyTexts();
    QCOMPARE(texts[SurveyField::XMinimum], QStringLiteral("500000"));
    QCOMPARE(texts[SurveyField::XMaximum], QStringLiteral("510000"));
    QCOMPARE(texts[SurveyField::YMinimum], QStringLiteral("6000000"));
    QCOMPARE(texts[SurveyField::YMaximum], QStringLiteral("6012500"));
    QCOMPARE(texts[SurveyField::MaximumDepth], QStringLiteral("4000"));
}

void TestNewSurveyDialog::folderNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("folder");
    QTest::newRow("plain") << "F3"
                           << "F3";
    QTest::newRow("blanks") << " North Flank 2026 "
                            << "North_Flank_2026";
    QTest::newRow("unfit") << "a/b\\c:d*e?f"
                           << "a_b_c_d_e_f";
    QTest::newRow("letters of any script") << QStringLiteral("Øst Čá") << QStringLiteral("Øst_Čá");
    QTest::newRow("hidden") << ".omf"
                            << "_.omf";
    QTest::newRow("parent") << ".."
                            << "_..";
    QTest::newRow("blank") << "   "
                           << "";
    QTest::newRow("long") << QString(400, QLatin1Char('a')) << QString(200, QLatin1Char('a'));
    QTest::newRow("long, two bytes a letter") << QString(400, QChar(0xF8)) << QString(100, QChar(0xF8));
}

void TestNewSurveyDialog::folderNames()
{
    QFETCH(QString, name);
    QFETCH(QString, folder);
    QCOMPARE(surveyFolderName(name), folder);
}

void TestNewSurveyDialog::fieldProblems_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    const auto row = [](SurveyField field, const char *text, const char *problem) {
        QTest::newRow(
            qPrintable(QString::number(static_cast<int>(field)) + QLatin1Char(' ') + QString::fromUtf8(text)))
            << static_cast<int>(field) << QString::fromUtf8(text) << QString::fromUtf8(problem);
    };
    row(SurveyField::DataRoot, "", "The data root folder is missing.");
    row(SurveyField::DataRoot, "here", "The data root must be a full path.");
    row(SurveyField::DataRoot, "/dev/null", "/dev/null is not a folder.");
    row(SurveyField::Name, "", "A survey needs a name.");
    row(SurveyField::Name, "New", "");
    row(SurveyField::XMinimum, "1,5", "The smallest X is written with a comma; please write a decimal point.");
    row(SurveyField::XMinimum, "", "The smallest X is missing.");
    row(SurveyField::XMaximum, "500000", "The largest X must be greater than the smallest.");
    row(SurveyField::XMaximum, "99999999", "The survey would be wider than 5000 km.");
    row(SurveyField::XMaximum, "500000.5", "");
    row(SurveyField::YMaximum, "5", "The largest Y must be greater than the smallest.");
    row(SurveyField::YMaximum, "north", "The largest Y is not a number.");
    row(SurveyField::YMinimum, "1e20", "The smallest Y must lie between -100000000 and 100000000.");
    row(SurveyField::MaximumDepth, "0", "The maximum depth must lie between 1 and 100000.");
    row(SurveyField::MaximumDepth, "deep", "The maximum depth is not a number.");
}

void TestNewSurveyDialog::fieldProblems()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    QFETCH(QString, problem);
    SurveyTexts texts = defaultSurveyTexts();
    texts[SurveyField::DataRoot] = m_folder->path();
    texts[SurveyField::Name] = QStringLiteral("Survey");
    for (SurveyField each : surveyFields)
        QCOMPARE(surveyFieldProblem(each, texts), QString());
    texts[static_cast<SurveyField>(field)] = text;
    QCOMPARE(surveyFieldProblem(static_cast<SurveyField>(field), texts), problem);
}

void TestNewSurveyDialog::makesTheSurvey()
{
    NewSurveyDialog dialog(m_asker, noChooser(), m_folder->path());
    QVERIFY(showActive(&dialog));
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("nameEdit"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("North Flank"));
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("pathLabel"))->text(),
             QStringLiteral("The survey's folder: %1/North_Flank").arg(m_folder->path()));
    type(&dialog, "xMinimumEdit", QStringLiteral("430000"));
    type(&dialog, "xMaximumEdit", QStringLiteral("431000"));
    type(&dialog, "maximumDepthEdit", QStringLiteral("5500"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.createdSurvey(), m_folder->filePath(QStringLiteral("North_Flank")));
    QVERIFY(isSurveyFolder(dialog.createdSurvey()));
    QCOMPARE(readSurveyInfo(dialog.createdSurvey()).value.name, QStringLiteral("North Flank"));
    const QByteArray survey = files::read(dialog.createdSurvey() + QStringLiteral("/.survey"));
    QVERIFY(survey.contains("Z range: 0`5500`5`D"));
    QVERIFY(survey.contains("Set Point.1: 100/100`(430000,6"));
    QCOMPARE(SurveyStore(dialog.createdSurvey()).list().error, QString());
    QVERIFY(m_asker.boxes.isEmpty());
}

void TestNewSurveyDialog::tabGoesFromTopToBottom()
{
    NewSurveyDialog dialog(m_asker, noChooser(), m_folder->path());
    QVERIFY(showActive(&dialog));
    dialog.findChild<QLineEdit *>(QStringLiteral("rootEdit"))->setFocus();
    int top = -1;
    int visited = 0;
    for (QWidget *now = dialog.focusWidget(); !qobject_cast<QDialogButtonBox *>(now->parentWidget()); ++visited) {
        const int y = now->mapTo(&dialog, QPoint()).y() + now->height() / 2;
        QVERIFY2(y >= top - 3, qPrintable(now->objectName()));
        top = y;
        QTest::keyClick(now, Qt::Key_Tab);
        QVERIFY(dialog.focusWidget() != now);
        now = dialog.focusWidget();
    }
    QCOMPARE(visited, 9); // folder, its button, name, four borders, unit, depth
}

void TestNewSurveyDialog::depthsInFeet()
{
    NewSurveyDialog dialog(m_asker, noChooser(), m_folder->path());
    QVERIFY(showActive(&dialog));
    type(&dialog, "nameEdit", QStringLiteral("Feet"));
    auto *unit = dialog.findChild<QComboBox *>(QStringLiteral("depthUnitBox"));
    auto *depth = dialog.findChild<QLineEdit *>(QStringLiteral("maximumDepthEdit"));
    QCOMPARE(unit->currentText(), QStringLiteral("Metres"));
    QCOMPARE(depth->text(), QStringLiteral("4000"));
    QTest::keyClick(unit, Qt::Key_Down);
    QCOMPARE(unit->currentText(), QStringLiteral("Feet"));
    QCOMPARE(depth->text(), QStringLiteral("13000")); // what was proposed follows the unit
    // Units are quieter than what is typed, all alike.
    QStringList units;
    QSet<QRgb> colors;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        if (label->text() == QLatin1String("m") || label->text() == QLatin1String("ft")) {
            units.append(label->text());
            colors.insert(label->palette().color(QPalette::WindowText).rgb());
        }
    QCOMPARE(units.join(u' '), QStringLiteral("m m m m ft"));
    QCOMPARE(colors.size(), 1);
    QTest::keyClick(unit, Qt::Key_Up);
    QCOMPARE(depth->text(), QStringLiteral("4000"));
    type(&dialog, "maximumDepthEdit", QStringLiteral("5000"));
    QTest::keyClick(unit, Qt::Key_Down);
    QCOMPARE(depth->text(), QStringLiteral("5000")); // what was typed does not
    QTest::keyClick(&dialog, Qt::Key_Return);
    const QString survey = dialog.createdSurvey();
    QCOMPARE(readSurveyInfo(survey).value.depthUnit, DepthUnit::Foot);
    QVERIFY(files::read(survey + QStringLiteral("/.survey")).contains("\nZ range: 0`5000`5`F\n"));
    QVERIFY(files::read(survey + QStringLiteral("/.survey")).contains("\nXY in feet: No\n"));
}

void TestNewSurveyDialog::makesAMissingDataRoot()
{
    const QString root = m_folder->filePath(QStringLiteral("new/root"));
    NewSurveyDialog dialog(m_asker, noChooser(), root);
    QVERIFY(showActive(&dialog));
    type(&dialog, "nameEdit", QStringLiteral("A"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(dialog.createdSurvey(), root + QStringLiteral("/A"));
    QVERIFY(QFile::exists(root + QStringLiteral("/.omf"))); // marked as a data root
}

void TestNewSurveyDialog::refusesWhatExists()
{
    files::write(m_folder->filePath(QStringLiteral("My_survey/notes.txt")), "mine");
    const auto before = files::snapshot(m_folder->path());
    NewSurveyDialog dialog(m_asker, noChooser(), m_folder->path());
    QVERIFY(showActive(&dialog));
    type(&dialog, "nameEdit", QStringLiteral("My survey"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QCOMPARE(problem(&dialog, "nameEdit"), QStringLiteral("%1/My_survey exists already.").arg(m_folder->path()));
    QCOMPARE(files::snapshot(m_folder->path()), before);
    // A survey is no data root.
    QCOMPARE(createSurvey(m_folder->filePath(QStringLiteral("S")), {}).error, QString());
    type(&dialog, "rootEdit", m_folder->filePath(QStringLiteral("S")));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(problem(&dialog, "rootEdit").contains(QLatin1String("is a survey itself")));
}

void TestNewSurveyDialog::refusesBadInputAndWritesNothing()
{
    NewSurveyDialog dialog(m_asker, noChooser(), m_folder->path());
    QVERIFY(showActive(&dialog));
    type(&dialog, "yMinimumEdit", QStringLiteral("7000000"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QCOMPARE(problem(&dialog, "nameEdit"), QStringLiteral("A survey needs a name."));
    QCOMPARE(problem(&dialog, "yMaximumEdit"), QStringLiteral("The largest Y must be greater than the smallest."));
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("nameEdit"));
    // Correcting the other end clears the sentence, too.
    type(&dialog, "yMinimumEdit", QStringLiteral("6000000"));
    QCOMPARE(problem(&dialog, "yMaximumEdit"), QString());
    QVERIFY(QDir(m_folder->path()).isEmpty());
    QVERIFY(dialog.createdSurvey().isEmpty());
}

void TestNewSurveyDialog::browseFillsTheDataRoot()
{
    QString asked;
    FileChooser chooser = noChooser();
    chooser.chooseFolder = [&asked](QWidget *, const QString &, const QString &folder) {
        asked = folder;
        return QStringLiteral("/chosen");
    };
    NewSurveyDialog dialog(m_asker, chooser, m_folder->path());
    QVERIFY(showActive(&dialog));
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("browseButton")), Qt::LeftButton);
    QCOMPARE(asked, m_folder->path());
    QCOMPARE(dialog.findChild<QLineEdit *>(QStringLiteral("rootEdit"))->text(), QStringLiteral("/chosen"));
    NewSurveyDialog givenUp(m_asker, noChooser(), m_folder->path());
    QTest::mouseClick(givenUp.findChild<QPushButton *>(QStringLiteral("browseButton")), Qt::LeftButton);
    QCOMPARE(givenUp.findChild<QLineEdit *>(QStringLiteral("rootEdit"))->text(), m_folder->path());
}

void TestNewSurveyDialog::failureOfTheDiskKeepsTheDialogOpen()
{
    // No folder can be made below a file; the data root itself does not exist yet.
    files::write(m_folder->filePath(QStringLiteral("file")), "x");
    NewSurveyDialog dialog(m_asker, noChooser(), m_folder->filePath(QStringLiteral("file/root")));
    QVERIFY(showActive(&dialog));
    type(&dialog, "nameEdit", QStringLiteral("A"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
    QCOMPARE(m_asker.boxes.size(), 1);
    QCOMPARE(m_asker.boxes.first().icon, base::BoxIcon::Warning);
    QVERIFY(m_asker.boxes.first().text.contains(QLatin1String("file/root")));
    QVERIFY(dialog.createdSurvey().isEmpty());
}

void TestNewSurveyDialog::escapeLeavesNothing()
{
    NewSurveyDialog dialog(m_asker, noChooser(), m_folder->path());
    QVERIFY(showActive(&dialog));
    type(&dialog, "nameEdit", QStringLiteral("A"));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

LORVA_TEST_MAIN(TestNewSurveyDialog)
#include "tst_newsurveydialog.moc"
