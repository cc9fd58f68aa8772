// "Edit Display Template": a template is edited where it is, renamed, reordered and made global.

#include "base/filesystemcalls.h"
#include "base/usersettings.h"
#include "support/failingtarget.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "templatefixture.h"
#include "templates/modifytemplate.h"

#include <QDir>
#include <QLabel>
#include <QTabBar>

#include <sys/stat.h>

namespace {

const QString exists = QStringLiteral("This Template is already exists.\nWould you like to override it ?");
const QString saved = QStringLiteral("Saved Successfully !");

QByteArray linear(const char *curve)
{
    return QByteArray("Linear\nGamma | ") + curve
        + " | 0.00 | 1.00 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0 | 0 | #000000 | 1 | Circle\n";
}

struct Told
{
    TemplateId now;
    TemplateId was;
};

} // namespace

class tst_modifytemplate : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<TemplateFixture>();
        m_told.clear();
        m_applied = 0;
    }
    void cleanup() { m.reset(); }

    void opensWhatIsStored()
    {
        store("W", "Mine", {linear("A"), "Depth\n", "Logrithmic\n"});
        open("Mine");
        QCOMPARE(m_dialog->windowTitle(), QString("Edit Display Template"));
        QVERIFY(m->hasIcon("editTemplate_wlc.png"));
        QVERIFY(m->tabs()->isMovable());
        QVERIFY(m->tabs()->tabsClosable());
        QCOMPARE(m->find<QLineEdit>("nameEdit")->text(), QString("Mine"));
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2", "Track_3"}));
        QCOMPARE(typeOf(0), QString("Linear"));
        QCOMPARE(typeOf(1), QString("Depth"));
        QCOMPARE(typeOf(2), QString("Logrithmic"));
        QCOMPARE(m->edit(0, 0, curvecolumn::LeftValue)->text(), QString("0.00"));
        QCOMPARE(m->edit(0, 0, curvecolumn::RightValue)->text(), QString("1.00"));
        QVERIFY(!m_dialog->isChanged());
        QStringList texts;
        for (const QPushButton *button : m_dialog->findChildren<QPushButton *>(QString(), Qt::FindDirectChildrenOnly))
            texts.append(button->text());
        QCOMPARE(texts, QStringList({"Add Track", "Save", "Save As Global", "Close"}));
        QStringList labels;
        for (const QLabel *label : m_dialog->findChildren<QLabel *>())
            labels.append(label->text());
        QVERIFY(labels.contains("Template Name :"));
        for (const char *slot :
             {"addTrackClicked()", "removeTrackTab(int)", "saveClicked()", "saveAsGlobalClicked()",
              "closeButtonClicked()", "setTrackWidget(TrackInfo)", "tabMovedSlot()", "applyRefresh()"})
            QVERIFY2(m_dialog->metaObject()->indexOfSlot(slot) >= 0, slot);
    }

    void setTrackWidgetAddsATab()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        m_dialog->setTrackWidget(parseTrack(linear("X"), "whatever"));
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2"}));
        QCOMPARE(m->box(1, 0, curvecolumn::Curve)->currentText(), QString("X"));
        QCOMPARE(m->edit(1, 0, curvecolumn::RightValue)->text(), QString("1.00"));
    }

    // Tracks are numbered as they stand, whatever their files were called.
    void gapsInTheNumbersClose()
    {
        files::write(m->templatePath("W", "Mine") + "/Track_3.txt", "Depth\n");
        files::write(m->templatePath("W", "Mine") + "/Track_10.txt", "Logrithmic\n");
        files::write(m->templatePath("W", "Mine") + "/notes.txt", "Linear\n");
        open("Mine");
        m->click("saveButton");
        QCOMPARE(content("W", "Mine"), QStringList({"Depth\n", "Logrithmic\n", "Linear\n"}));
    }

    void theOwnFolderIsOpenedAndSaved()
    {
        store("Global", "Same", {"Logrithmic\n"});
        store("W", "Same", {"Depth\n"});
        open("Same");
        QVERIFY(m->launch->project.globalTemplateNames.contains("Same"));
        QCOMPARE(typeOf(0), QString("Depth"));
        m->addTrack();
        m->click("saveButton");
        QCOMPARE(content("W", "Same"), QStringList({"Depth\n", "Linear\n"}));
        QCOMPARE(content("Global", "Same"), QStringList({"Logrithmic\n"}));
        open("Same", true);
        QCOMPARE(typeOf(0), QString("Logrithmic"));
        m->addTrack("Depth");
        m->click("saveButton");
        QCOMPARE(content("Global", "Same"), QStringList({"Logrithmic\n", "Depth\n"}));
        QCOMPARE(content("W", "Same"), QStringList({"Depth\n", "Linear\n"}));
    }

    void theSeedsSavedUnchangedAreTheWritersForm()
    {
        for (const QString &name : {QString("Default"), QString("Simple")}) {
            open(name, true);
            QVector<QByteArray> expected;
            for (const DefTempTrackWidget *track : m_dialog->tracks())
                expected.append(track->rows().bytes());
            m->click("saveButton");
            QCOMPARE(m->boxTexts(), QStringList(saved));
            const QStringList first = content("Global", name);
            QCOMPARE(first.size(), 4);
            for (int i = 0; i < 4; ++i)
                QCOMPARE(first.at(i).toUtf8(), expected.at(i));
            open(name, true); // and again to the same bytes
            m->click("saveButton");
            QCOMPARE(content("Global", name), first);
            m->boxTexts();
        }
        QCOMPARE(
            content("Global", "Simple").at(0),
            QString("Linear\nGamma | Default | 0.00 | 200.00 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | 1 | "
                    "0 | #000000 | 1 | Circle\n"));
        QCOMPARE(content("Global", "Simple").at(1),
                 QString("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n"));
        QCOMPARE(content("Global", "Simple").at(2),
                 QString("Logrithmic\nResistivity | Default | 0.10 | 2000.00 | #d01212|0,#ffffff|0,#ffffff|None | "
                         "None | 0 | 1 | 0 | #000000 | 1 | Circle\n"));
        QCOMPARE(
            content("Global", "Default").at(3),
            QString("Linear\nDensity | Default | 1.80 | 2.80 | #d21414|0,#ffffff|0,#ffffff|None | None | 0 | 1 | "
                    "0 | #000000 | 1 | Circle\nPorosity | Default | 0.60 | 0.00 | "
                    "#2648ef|0,#ffffff|0,#ffffff|None | None | 1 | 1 | 0 | #000000 | 1 | Circle\nSonic | Default "
                    "| 40.00 | 240.00 | #2648ef|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | #000000 | 1 | "
                    "Circle\n"));
    }

    void savingUnderTheOldNameAsksNothing()
    {
        store("W", "Mine", {linear("A"), linear("B"), linear("C")});
        open("Mine");
        emit m->tabs()->tabCloseRequested(1);
        QVERIFY(m_dialog->isChanged());
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(content("W", "Mine"), QStringList({linear("A"), linear("C")}));
        QVERIFY(!m_dialog->isChanged());
        QCOMPARE(m_told.size(), 1);
        QCOMPARE(m_told.first().now.name, QString("Mine"));
        QVERIFY(m_told.first().was.name.isEmpty());
        QCOMPARE(m_applied, 1);
    }

    void aVanishedFolderIsWrittenAnew()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        QVERIFY(QDir(m->path("/Templates/W")).removeRecursively());
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(content("W", "Mine"), QStringList({"Depth\n"}));
    }

    void emptyAndWrongNamesAreRefused()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        const auto before = m->templates();
        for (const char *button : {"saveButton", "saveAsGlobalButton"}) {
            m->setName(" ");
            m->click(button);
            QCOMPARE(m->boxTexts(), QStringList("Please first enter template name !"));
            m->setName("..");
            m->click(button);
            QCOMPARE(m->boxTexts(), QStringList("\"..\" cannot be a name."));
        }
        QCOMPARE(m->templates(), before);
    }

    void draggedTracksAreNumberedAsTheyStand()
    {
        store("W", "Mine", {linear("A"), linear("B"), linear("C")});
        open("Mine");
        m->tabs()->tabBar()->moveTab(2, 0);
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2", "Track_3"}));
        QCOMPARE(m->track(0)->trackName(), QString("Track_1"));
        QCOMPARE(m->box(0, 0, curvecolumn::Curve)->currentText(), QString("C"));
        QVERIFY(m_dialog->isChanged());
        m->click("saveButton");
        QCOMPARE(content("W", "Mine"), QStringList({linear("C"), linear("A"), linear("B")}));
    }

    void tracksMoveAndGoByTheKeyboard()
    {
        store("W", "Mine", {linear("A"), linear("B"), linear("C")});
        open("Mine");
        QApplication::setActiveWindow(m_dialog);
        const auto press = [this](int key, Qt::KeyboardModifiers modifiers) {
            QTest::keyClick(m_dialog, static_cast<Qt::Key>(key), modifiers);
        };
        press(Qt::Key_PageUp, Qt::ControlModifier | Qt::ShiftModifier); // it is the first one
        press(Qt::Key_PageDown, Qt::ControlModifier | Qt::ShiftModifier);
        press(Qt::Key_PageDown, Qt::ControlModifier | Qt::ShiftModifier);
        press(Qt::Key_PageDown, Qt::ControlModifier | Qt::ShiftModifier); // and now the last
        m->click("saveButton");
        QCOMPARE(content("W", "Mine"), QStringList({linear("B"), linear("C"), linear("A")}));
        press(Qt::Key_PageUp, Qt::ControlModifier | Qt::ShiftModifier);
        press(Qt::Key_W, Qt::ControlModifier);
        m->click("saveButton");
        QCOMPARE(content("W", "Mine"), QStringList({linear("B"), linear("C")}));
    }

    void aNewNameMovesTheTemplate()
    {
        store("W", "Mine", {"Depth\n"});
        store("W", "Other", {"Linear\n"});
        open("Mine");
        m->setName("Yours");
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QVERIFY(!QDir(m->templatePath("W", "Mine")).exists());
        QCOMPARE(content("W", "Yours"), QStringList({"Depth\n"}));
        QCOMPARE(content("W", "Other"), QStringList({"Linear\n"}));
        QCOMPARE(m_told.last().now.name, QString("Yours"));
        QCOMPARE(m_told.last().was.name, QString("Mine"));
        QCOMPARE(m_told.last().was.wellName, QString("W"));
        m->click("saveButton"); // its name now
        QCOMPARE(m->boxTexts(), QStringList(saved));
    }

    void aNewNameThatIsTakenAsks()
    {
        store("W", "Mine", {"Depth\n"});
        store("W", "Other", {"Linear\n", "Linear\n"});
        open("Mine");
        m->setName("Other");
        const auto before = m->templates();
        m->asker.answers = {base::BoxButton::No};
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(exists));
        QCOMPARE(m->templates(), before);
        QVERIFY(m_told.isEmpty());
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList({exists, saved})); // no message of the removal
        QCOMPARE(content("W", "Other"), QStringList({"Depth\n"}));
        QVERIFY(!QDir(m->templatePath("W", "Mine")).exists());
    }

    void anotherLetterCaseIsAnotherName()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        m->setName("mine");
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(QDir(m->path("/Templates/W")).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList("mine"));
    }

    void aGlobalTemplateChangesItsNameEverywhere()
    {
        store("Global", "Ours", {"Depth\n"});
        open("Ours", true);
        const int place = m->launch->project.globalTemplateNames.indexOf("Ours");
        QVERIFY(place >= 0);
        m->setName("Theirs");
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(content("Global", "Theirs"), QStringList({"Depth\n"}));
        QVERIFY(!QDir(m->templatePath("Global", "Ours")).exists());
        QCOMPARE(m->launch->project.globalTemplateNames.indexOf("Theirs"), place);
        QVERIFY(!m->launch->project.globalTemplateNames.contains("Ours"));
        QVERIFY(m_told.last().now.isGlobal && m_told.last().was.isGlobal);
        QCOMPARE(m_told.last().was.name, QString("Ours"));
    }

    void madeGlobalItLeavesTheWell()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(content("Global", "Mine"), QStringList({"Depth\n"}));
        QVERIFY(!QDir(m->templatePath("W", "Mine")).exists());
        QVERIFY(m->launch->project.globalTemplateNames.contains("Mine"));
        QVERIFY(m_told.last().now.isGlobal);
        QVERIFY(!m_told.last().was.isGlobal);
        QCOMPARE(m_told.last().was.name, QString("Mine"));
        m->addTrack();
        m->click("saveButton"); // it is edited there from now on
        QCOMPARE(content("Global", "Mine"), QStringList({"Depth\n", "Linear\n"}));
        QVERIFY(!QDir(m->templatePath("W", "Mine")).exists());
    }

    void madeGlobalOverAnotherAsks()
    {
        store("W", "Mine", {"Depth\n"});
        store("Global", "Mine", {"Linear\n"});
        open("Mine");
        const auto before = m->templates();
        m->asker.answers = {base::BoxButton::No};
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList(exists));
        QCOMPARE(m->templates(), before);
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList({exists, saved}));
        QCOMPARE(content("Global", "Mine"), QStringList({"Depth\n"}));
        QVERIFY(!QDir(m->templatePath("W", "Mine")).exists());
    }

    void madeGlobalUnderAnotherNameTheOldOneStays()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        m->setName("Ours");
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(content("Global", "Ours"), QStringList({"Depth\n"}));
        QCOMPARE(content("W", "Mine"), QStringList({"Depth\n"}));
        QVERIFY(m_told.last().was.name.isEmpty());
    }

    // What leaves the well is its template of the name that became global.
    void madeGlobalUnderTheNameOfAnotherThatOneLeaves()
    {
        store("W", "Mine", {"Depth\n"});
        store("W", "Ours", {"Linear\n"});
        open("Mine");
        m->setName("Ours");
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(content("Global", "Ours"), QStringList({"Depth\n"}));
        QVERIFY(!QDir(m->templatePath("W", "Ours")).exists());
        QCOMPARE(content("W", "Mine"), QStringList({"Depth\n"}));
        QCOMPARE(m_told.last().was.name, QString("Ours"));
        QCOMPARE(m_told.last().was.wellName, QString("W"));
    }

    // The well's own template of the same name is another one.
    void aGlobalTemplateSavedAsGlobalAsksAndTouchesNoOther()
    {
        store("Global", "Same", {"Depth\n"});
        store("W", "Same", {"Linear\n"});
        open("Same", true);
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList({exists, saved}));
        QCOMPARE(content("W", "Same"), QStringList({"Linear\n"}));
    }

    void untouchedValuesStayAsTheyWere()
    {
        store("W", "Mine",
              {"Linear\nGamma | GR | 0.125 | 1.23456789 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n"});
        open("Mine");
        QCOMPARE(m->edit(0, 0, curvecolumn::LeftValue)->text(), QString("0.13"));
        QCOMPARE(m->edit(0, 0, curvecolumn::LeftValue)->toolTip(), QString("In full: 0.125"));
        QCOMPARE(m->edit(0, 0, curvecolumn::RightValue)->text(), QString("1.23"));
        m->click("saveButton");
        QVERIFY(content("W", "Mine").first().contains("GR | 0.125 | 1.23456789 | #"));
        m->type(0, 0, curvecolumn::LeftValue, "0.50");
        QCOMPARE(m->edit(0, 0, curvecolumn::LeftValue)->toolTip(), QString());
        m->click("saveButton");
        QVERIFY(content("W", "Mine").first().contains("GR | 0.50 | 1.23456789 | #"));
    }

    void theEditorKeepsItsSizeAndColumns()
    {
        store("W", "Mine", {linear("A")});
        open("Mine");
        const QSize before = m_dialog->size();
        const QSize size(before.width() - 31, before.height() - 17);
        m_dialog->resize(size);
        m->table(0)->setColumnWidth(curvecolumn::Group, 171);
        m_dialog->close();
        init();
        store("W", "Mine", {linear("A")});
        open("Mine");
        QCOMPARE(m_dialog->size(), size);
        QCOMPARE(m->table(0)->columnWidth(curvecolumn::Group), 171);
        for (const char *key : {"sizes/templateEditor", "columns/templateCurves"}) // not for the other tests
            base::pluginSettings().setValue(key, QVariant());
    }

    void ofALongValueTheFirstDigitsAreSeen()
    {
        store("W", "Mine",
              {"Linear\nGamma | GR | -1234567 | 7654321 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 0\n"});
        open("Mine");
        for (const auto column : {curvecolumn::LeftValue, curvecolumn::RightValue}) {
            const QLineEdit *value = m->edit(0, 0, column);
            QVERIFY(value->fontMetrics().horizontalAdvance(value->text()) > value->width());
            QCOMPARE(value->cursorPosition(), 0);
        }
    }

    void unknownNamesAreKept()
    {
        const QByteArray track = "Linear\nNovelty | No Log | 0.00 | 1.00 | #000000|99,#ff0000|0,#ffffff|Curve_7 | Up "
                                 "| 0 | 0 | 0 | #000000 | 1 | Circle\nGamma | Gone | 0.00 | 1.00 | "
                                 "#000000|0,#ffffff|0,#ffffff|None | None | 0 | 0 | 0 | #000000 | 1 | Circle\n";
        store("W", "Mine", {track});
        open("Mine");
        QCOMPARE(m->box(0, 0, curvecolumn::Group)->currentText(), QString("Novelty"));
        QCOMPARE(m->box(0, 0, curvecolumn::Curve)->currentText(), QString("No Log"));
        QCOMPARE(TemplateFixture::entries(m->box(0, 1, curvecolumn::Curve)), QStringList({"Default", "GR", "Gone"}));
        QCOMPARE(m->box(0, 0, curvecolumn::LeftLimit)->currentIndex(), -1);
        QCOMPARE(m->box(0, 0, curvecolumn::LeftLimit)->placeholderText(), QString("Curve_7"));
        m->type(0, 0, curvecolumn::LeftValue, "0.00");
        m->box(0, 0, curvecolumn::LineWidth)->setCurrentIndex(2);
        m->box(0, 0, curvecolumn::LineWidth)->setCurrentIndex(0);
        m->click("saveButton");
        QCOMPARE(content("W", "Mine").first().toUtf8(), track);
    }

    void aTrackThatCannotBeReadIsNotLost()
    {
        store("W", "Mine", {"Depth\n"});
        files::write(m->templatePath("W", "Mine") + "/Track_2.txt", QByteArray(65 * 1024 * 1024, 'x'));
        open("Mine");
        QCOMPARE(m->tabs()->count(), 1);
        for (const char *button : {"saveButton", "saveAsGlobalButton"}) {
            m->click(button);
            QCOMPARE(m->boxTexts(),
                     QStringList("1 of this template's track files cannot be read and would be lost; "
                                 "nothing is saved."));
        }
        QVERIFY(QFile::exists(m->templatePath("W", "Mine") + "/Track_2.txt"));
    }

    void rubbishIsAnEmptyDepthTrack()
    {
        QByteArray rubbish;
        for (int i = 0; i < 2000; ++i)
            rubbish += static_cast<char>(i * 37);
        store("W", "Mine", {rubbish, "", "Linear\nonly | three | fields\n"});
        open("Mine");
        QCOMPARE(m->tabs()->count(), 3);
        QCOMPARE(typeOf(0), QString("Depth"));
        QCOMPARE(m->table(0)->rowCount() + m->table(1)->rowCount() + m->table(2)->rowCount(), 0);
        m->click("saveButton");
        QCOMPARE(content("W", "Mine"), QStringList({"Depth\n", "Depth\n", "Linear\n"}));
    }

    void thereMayBeNoTemplateAtAll()
    {
        open("Nothing");
        QCOMPARE(m->tabs()->count(), 0);
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(content("W", "Nothing"), QStringList());
        QVERIFY(QDir(m->templatePath("W", "Nothing")).exists());
    }

    void anOldFolderThatStaysIsTold()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        m->setName("Yours");
        {
            FailingTarget disk("/Templates/W/Mine"); // where a deleted folder is kept
            const base::ScopedFileSystemCalls calls(disk);
            m->click("saveButton");
        }
        QCOMPARE(m->boxTexts(), QStringList("Saved as \"Yours\", but the folder of \"Mine\" could not be removed."));
        QCOMPARE(content("W", "Yours"), QStringList({"Depth\n"}));
        QCOMPARE(content("W", "Mine"), QStringList({"Depth\n"}));
        QVERIFY(m_told.last().was.name.isEmpty());
        m->setName("Mine");
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveButton");
        m->boxTexts();
        FailingTarget disk("/Templates/W/Mine");
        const base::ScopedFileSystemCalls calls(disk);
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(),
                 QStringList("Saved as a global template, but that of the well \"W\" could not be removed."));
        QVERIFY(m_told.last().was.name.isEmpty());
    }

    void aReadOnlyFolderStaysAsItIs()
    {
        store("W", "Mine", {"Depth\n"});
        m->open<ModifyTemplate>(TemplateId::ofWell("W", "Mine"), QStringLiteral("W"));
        for (const QString &folder : {m->survey.path(), m->path(""), m->path("/Templates")})
            ::chmod(QFile::encodeName(folder).constData(), 0777);
        ::chmod(QFile::encodeName(m->path("/Templates/W")).constData(), 0555);
        const auto before = m->templates();
        m->addTrack();
        if (!testing_support::canShowInChild())
            QSKIP("a child cannot share the connection to the window system");
        const int result = testing_support::runUnprivileged([this] {
            m->click("saveButton");
            const QStringList texts = m->boxTexts();
            return texts.size() == 1 && texts.first().startsWith("The template \"Mine\" was not saved;") ? 0 : 1;
        });
        QCOMPARE(result, 0);
        QCOMPARE(m->templates(), before);
        ::chmod(QFile::encodeName(m->path("/Templates/W")).constData(), 0755);
    }

    // The last save counts, and it counts whole.
    void theSameTemplateInTwoDialogs()
    {
        store("W", "Mine", {linear("A"), linear("B")});
        open("Mine");
        ModifyTemplate other(*m->launch, TemplateId::ofWell("W", "Mine"), "W");
        other.removeTrackTab(0);
        other.saveClicked();
        QCOMPARE(content("W", "Mine"), QStringList({linear("B")}));
        m->addTrack("Depth");
        m->click("saveButton");
        QCOMPARE(content("W", "Mine"), QStringList({linear("A"), linear("B"), "Depth\n"}));
    }

    void closingAsksForChanges()
    {
        store("W", "Mine", {"Depth\n"});
        open("Mine");
        m->addTrack();
        m->asker.answers = {base::BoxButton::Cancel};
        m->click("closeButton");
        QCOMPARE(m->boxTexts(),
                 QStringList("Template has been changed.\nWould you like to save it before close it ?"));
        QVERIFY(m_dialog->isVisible());
        m->asker.answers = {base::BoxButton::Yes};
        m->click("closeButton");
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(content("W", "Mine"), QStringList({"Depth\n", "Linear\n"}));
    }

private:
    void store(const QString &owner, const QString &name, const QVector<QByteArray> &tracks)
    {
        for (int i = 0; i < tracks.size(); ++i)
            files::write(m->templatePath(owner, name) + QStringLiteral("/Track_%1.txt").arg(i + 1), tracks.at(i));
    }
    void open(const QString &name, bool isGlobal = false)
    {
        const TemplateId which = isGlobal ? TemplateId::global(name) : TemplateId::ofWell("W", name);
        m_dialog = m->open<ModifyTemplate>(which, QStringLiteral("W"));
        connect(m_dialog, &TemplateDialog::templateSaved, this, [this](const TemplateId &now, const TemplateId &was) {
            m_told.append({now, was});
        });
        connect(m_dialog, &TemplateDialog::templateApplied, this, [this] { ++m_applied; });
    }
    // The files of a template, in the order of their numbers; they must be numbered without a gap.
    QStringList content(const QString &owner, const QString &name) const
    {
        const int count = files::snapshot(m->templatePath(owner, name)).size();
        QStringList tracks;
        for (int i = 1; i <= count; ++i)
            tracks.append(QString::fromUtf8(m->trackFile(owner, name, i)));
        return tracks;
    }
    QString typeOf(int tab) const { return m->track(tab)->findChild<QComboBox *>("trackTypeBox")->currentText(); }

    std::unique_ptr<TemplateFixture> m;
    ModifyTemplate *m_dialog = nullptr;
    QVector<Told> m_told;
    int m_applied = 0;
};

LORVA_TEST_MAIN(tst_modifytemplate)
#include "tst_modifytemplate.moc"
