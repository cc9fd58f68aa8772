// "Define Display Template": a template is built track by track and saved for the well or for all wells.

#include "base/filesystemcalls.h"
#include "support/failingdisk.h"
#include "support/failingtarget.h"
#include "support/testmain.h"
#include "support/unprivileged.h"
#include "templatefixture.h"
#include "templates/definetemplate.h"

#include <QDir>
#include <QLabel>
#include <QToolButton>

#include <sys/stat.h>

namespace {

const QString exists = QStringLiteral("This Template is already exists.\nWould you like to override it ?");
const QString saved = QStringLiteral("Saved Successfully !");
const QString removed = QStringLiteral("Removed Successfully !");
const QString noName = QStringLiteral("Please first enter template name !");
const QString changed = QStringLiteral("Template has been changed.\nWould you like to save it before close it ?");

QString textOf(const QPushButton *button)
{
    return button->text();
}

} // namespace

class tst_definetemplate : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<TemplateFixture>();
        m_dialog = m->open<DefineTemplate>(QStringLiteral("W"));
    }
    void cleanup() { m.reset(); }

    // However long the well's name is, the dialog stays on the screen and the template's name has room.
    void aLongWellNameTakesLines()
    {
        const int narrowest = m_dialog->minimumSizeHint().width();
        TemplateFixture other;
        const QString well = QStringLiteral("A well of the northern block, side track B, ").repeated(5).trimmed();
        other.addWell(well);
        auto *dialog = other.open<DefineTemplate>(well);
        QCOMPARE(other.find<QLabel>("wellLabel")->text(), well);
        QVERIFY(dialog->minimumSizeHint().width() <= narrowest);
        dialog->resize(900, 500);
        QCoreApplication::processEvents();
        QVERIFY(other.find<QLineEdit>("nameEdit")->width() > 200);
        const auto *label = other.find<QLabel>("wellLabel");
        QVERIFY(label->height() >= label->heightForWidth(label->width()));
    }

    void beginsEmpty()
    {
        QCOMPARE(m_dialog->windowTitle(), QString("Define Display Template"));
        QVERIFY(m->hasIcon("defineTemplate_wlc.png"));
        QCOMPARE(m->tabs()->count(), 0);
        QVERIFY(m->tabs()->tabsClosable());
        QVERIFY(!m->tabs()->isMovable());
        QVERIFY(!m_dialog->isChanged());
        QStringList texts;
        for (const QPushButton *button : m_dialog->findChildren<QPushButton *>())
            texts.append(textOf(button));
        QCOMPARE(texts, QStringList({"Add Track", "Default Template", "Save Template", "Save as Global", "Close"}));
        QStringList labels;
        for (const QLabel *label : m_dialog->findChildren<QLabel *>())
            labels.append(label->text());
        QVERIFY(labels.contains("Template Name :"));
        for (const char *slot : {"addTrackClicked()", "removeTrackTab(int)", "populateFromDefaultBtnClicked()",
                                 "saveClicked()", "saveAsGlobalClicked()", "close()", "applyRefresh()"})
            QVERIFY2(m_dialog->metaObject()->indexOfSlot(slot) >= 0, slot);
    }

    // A template may be saved without tracks; the dialog says what that means.
    void withoutTracksItSaysSo()
    {
        const auto *hint = m_dialog->findChild<QLabel *>("emptyHint");
        QVERIFY(hint && hint->isVisible());
        QVERIFY2(hint->text().contains("stays empty"), qPrintable(hint->text()));
        m_dialog->addTrackClicked();
        QVERIFY(!hint->isVisible());
        m_dialog->removeTrackTab(0);
        QVERIFY(hint->isVisible());
    }

    void addedTracksAreNumbered()
    {
        for (int i = 0; i < 3; ++i)
            m->click("addTrackButton");
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2", "Track_3"}));
        QCOMPARE(m->tabs()->currentIndex(), 2);
        QCOMPARE(m->track(1)->trackName(), QString("Track_2"));
        QVERIFY(m_dialog->isChanged());
    }

    void removedTracksLeaveNoGap()
    {
        for (const char *type : {"Linear", "Logrithmic", "Depth"})
            m->addTrack(type);
        emit m->tabs()->tabCloseRequested(1);
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2"}));
        QCOMPARE(m->track(1)->trackName(), QString("Track_2"));
        m->click("addTrackButton");
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2", "Track_3"}));
        m->setName("T");
        m->click("saveButton");
        QCOMPARE(m->trackFile("W", "T", 2), QByteArray("Depth\n"));
        m_dialog->removeTrackTab(-1);
        m_dialog->removeTrackTab(3);
        QCOMPARE(m->tabs()->count(), 3);
    }

    // A click beside the tab's name must not cost a track.
    void aRemovedTrackIsTakenBack()
    {
        auto *back = m_dialog->findChild<QToolButton *>("takeBackButton");
        QVERIFY(back && !back->isVisible());
        for (const char *type : {"Linear", "Logrithmic", "Depth"})
            m->addTrack(type);
        m->addCurve(1, "Resistivity", "1", "100");
        const QByteArray second = m->track(1)->rows().bytes();
        emit m->tabs()->tabCloseRequested(1);
        QVERIFY(back->isVisible());
        QCOMPARE(back->text(), QString("Take Track_2 back"));
        QCOMPARE(m_dialog->findChildren<DefTempTrackWidget *>().size(), 2);
        back->click();
        QVERIFY(!back->isVisible());
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2", "Track_3"}));
        QCOMPARE(m->tabs()->currentIndex(), 1);
        QCOMPARE(m->track(1)->rows().bytes(), second);
        QCOMPARE(m->track(2)->trackName(), QString("Track_3"));
        m_dialog->takeTrackBack(); // there is none
        QCOMPARE(m->tabs()->count(), 3);
        // Only the last one; behind the end where others went since.
        emit m->tabs()->tabCloseRequested(0);
        emit m->tabs()->tabCloseRequested(1);
        QCOMPARE(back->text(), QString("Take Track_2 back"));
        back->click();
        QCOMPARE(m->tabs()->count(), 2);
        QCOMPARE(m->track(0)->rows().bytes(), second);
        // Other tracks, and it is forgotten.
        emit m->tabs()->tabCloseRequested(0);
        m_dialog->populateFromDefaultBtnClicked();
        QVERIFY(!back->isVisible());
        const int count = m->tabs()->count();
        m_dialog->takeTrackBack();
        QCOMPARE(m->tabs()->count(), count);
        emit m->tabs()->tabCloseRequested(0); // and the dialog closed with it
    }

    void savesForTheWell()
    {
        m->addTrack();
        m->addCurve(0, "Gamma", "0", "150");
        m->addTrack("Depth");
        m->addCurve(1);
        m->setName("  Mine ");
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(QDir(m->templatePath("W", "Mine")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList({"Track_1.txt", "Track_2.txt"}));
        QCOMPARE(m->trackFile("W", "Mine", 1),
                 QByteArray("Linear\nGamma | Default | 0 | 150 | #000000|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 "
                            "| #000000 | 1 | Rectangle\n"));
        QCOMPARE(
            m->trackFile("W", "Mine", 2),
            QByteArray("Depth\nDepth | Default | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n"));
        QVERIFY(m_dialog->isVisible());
        QVERIFY(!m_dialog->isChanged());
        QVERIFY(!m->launch->project.globalTemplateNames.contains("Mine"));
    }

    void boxesSayWhatTheyAre()
    {
        m->setName("T");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.first().icon, base::BoxIcon::Information);
        m->boxTexts();
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.size(), 3);
        QCOMPARE(m->asker.boxes.at(0).icon, base::BoxIcon::Question);
        QCOMPARE(m->asker.boxes.at(0).buttons, QVector<base::BoxButton>({base::BoxButton::Yes, base::BoxButton::No}));
        QCOMPARE(m->asker.boxes.at(1).icon, base::BoxIcon::Warning);
        QCOMPARE(m->asker.boxes.at(2).icon, base::BoxIcon::Information);
        QCOMPARE(m->boxTexts(), QStringList({exists, removed, saved}));
        m->setName("");
        m->click("saveButton");
        QCOMPARE(m->asker.boxes.first().icon, base::BoxIcon::Warning);
    }

    void withoutANameNothingIsWritten()
    {
        const auto before = m->templates();
        m->addTrack();
        for (const char *name : {"", "   "})
            for (const char *button : {"saveButton", "saveAsGlobalButton"}) {
                m->setName(name);
                m->click(button);
                QCOMPARE(m->boxTexts(), QStringList(noName));
            }
        QCOMPARE(m->templates(), before);
    }

    void namesThatAreNoneAreRefused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::newRow("dot") << "."
                             << "\".\" cannot be a name.";
        QTest::newRow("dots") << ".."
                              << "\"..\" cannot be a name.";
        QTest::newRow("dots in blanks") << " .. "
                                        << "\"..\" cannot be a name.";
        QTest::newRow("slash") << "a/b"
                               << "The name must not hold a \"/\".";
        QTest::newRow("step up") << "../W"
                                 << "The name must not hold a \"/\".";
        QTest::newRow("backslash") << "a\\b"
                                   << "The name must not hold a \"\\\".";
        QTest::newRow("tab") << "a\tb"
                             << "The name must not hold a control character.";
        QTest::newRow("long") << QString(300, 'x') << "The name is too long: more than 255 bytes.";
        QTest::newRow("reserved") << ".lorva-swap-abcdef"
                                  << "Names that begin with \".lorva-\" are kept for the program's own folders.";
    }

    void namesThatAreNoneAreRefused()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        m->addTemplate("Other", "W");
        m->addTrack();
        const auto before = files::snapshot(m->survey.path());
        for (const char *button : {"saveButton", "saveAsGlobalButton"}) {
            m->setName(name);
            m->asker.answers = {base::BoxButton::Yes};
            m->click(button);
            QCOMPARE(m->boxTexts(), QStringList(text));
            auto *field = m->find<QLineEdit>("nameEdit"); // ready for another name
            QCOMPARE(m->dialog->focusWidget(), static_cast<QWidget *>(field));
            QCOMPARE(field->selectedText(), field->text());
        }
        QCOMPARE(files::snapshot(m->survey.path()), before);
    }

    void anOrdinaryNameIsNeverTooLong()
    {
        const QString name(255, 'x');
        m->setName(name);
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QVERIFY(QDir(m->templatePath("W", name)).exists());
    }

    void noLeavesTheOldTemplate()
    {
        m->addTemplate("Old", "W");
        m->addTemplate("Old");
        m->addTrack();
        m->setName("Old");
        const auto before = m->templates();
        for (const char *button : {"saveButton", "saveAsGlobalButton"}) {
            m->asker.answers = {base::BoxButton::No};
            m->click(button);
            QCOMPARE(m->boxTexts(), QStringList(exists));
            QCOMPARE(m->templates(), before);
            QVERIFY(m_dialog->isChanged());
        }
    }

    void yesReplacesTheWholeTemplate()
    {
        files::write(m->templatePath("W", "Old") + "/Track_1.txt", "Linear\n");
        files::write(m->templatePath("W", "Old") + "/Track_7.txt", "Linear\n");
        m->addTrack("Logrithmic");
        m->setName("Old");
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList({exists, removed, saved}));
        QCOMPARE(files::snapshot(m->templatePath("W", "Old")),
                 (QMap<QString, QByteArray>{{"Track_1.txt", "Logrithmic\n"}}));
    }

    void namesThatDifferInCaseAreTwo()
    {
        m->addTemplate("mine", "W");
        m->addTrack("Depth");
        m->setName("Mine");
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(m->trackFile("W", "mine", 1), QByteArray("Linear\n"));
        QCOMPARE(m->trackFile("W", "Mine", 1), QByteArray("Depth\n"));
    }

    void savesForAllWells()
    {
        m->addTrack("Logrithmic");
        m->setName("All");
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList(saved));
        QCOMPARE(m->trackFile("Global", "All", 1), QByteArray("Logrithmic\n"));
        QCOMPARE(m->launch->project.globalTemplateNames.count("All"), 1);
        QVERIFY(!QDir(m->templatePath("W", "All")).exists());
        m->asker.answers = {base::BoxButton::Yes};
        m->addTrack();
        m->click("saveAsGlobalButton");
        QCOMPARE(m->boxTexts(), QStringList({exists, saved})); // without the message of the removal
        QCOMPARE(m->trackFile("Global", "All", 2), QByteArray("Linear\n"));
        QCOMPARE(m->launch->project.globalTemplateNames.count("All"), 1);
    }

    void theDefaultTemplateFillsTheTabs()
    {
        m->addTrack("Depth");
        m->click("defaultTemplateButton");
        QCOMPARE(m->tabTexts(), QStringList({"Track_1", "Track_2", "Track_3", "Track_4"}));
        QCOMPARE(m->tabs()->currentIndex(), 0);
        QCOMPARE(m->table(0)->rowCount(), 3);
        QCOMPARE(m->box(0, 1, curvecolumn::Group)->currentText(), QString("Sp"));
        QCOMPARE(m->edit(0, 1, curvecolumn::LeftValue)->text(), QString("-100.00"));
        QCOMPARE(m->edit(3, 1, curvecolumn::RightValue)->text(), QString("0.00"));
        QCOMPARE(m->box(1, 0, curvecolumn::Curve)->currentText(), QString("MD"));
        QVERIFY(m_dialog->isChanged());
        QVERIFY(m->boxTexts().isEmpty());
    }

    // A global "Default" goes before one of the well.
    void theDefaultTemplateIsTheGlobalOne()
    {
        m->addTemplate("Default", "W");
        m->click("defaultTemplateButton");
        QCOMPARE(m->tabs()->count(), 4);
        m->launch->project.globalTemplateNames.removeAll("Default");
        m->click("defaultTemplateButton");
        QCOMPARE(m->tabs()->count(), 1);
        QVERIFY(QDir(m->templatePath("W", "Default")).removeRecursively());
        m->click("defaultTemplateButton");
        QCOMPARE(m->tabs()->count(), 0);
        QCOMPARE(m->boxTexts(), QStringList("The template \"Default\" has no tracks, or is not known yet."));
    }

    void theSeedSavedUnchangedIsTheWritersForm()
    {
        m->click("defaultTemplateButton");
        m->setName("Copy");
        m->click("saveButton");
        QCOMPARE(m->trackFile("W", "Copy", 1),
                 QByteArray("Linear\nGamma | Default | 0.00 | 200.00 | #0e6f21|0,#ffffff|0,#ffffff|None | None | 0 | "
                            "1 | 0 | #000000 | 1 | Circle\nSp | Default | -100.00 | 100.00 | "
                            "#120202|0,#ffffff|0,#ffffff|None | None | 0 | 1 | 0 | #000000 | 1 | Circle\nCaliper | "
                            "Default | 6.00 | 16.00 | #120202|0,#ffffff|0,#ffffff|None | None | 1 | 1 | 0 | #000000 "
                            "| 1 | Circle\n"));
        QCOMPARE(m->trackFile("W", "Copy", 2),
                 QByteArray("Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0 | 0 | 0 | 0 | 0\n"));
    }

    void wrongValuesAreRefusedWhereTheyStand()
    {
        const auto before = m->templates();
        m->addTrack();
        m->addCurve(0, "Gamma", "0", "1");
        m->addTrack();
        m->addCurve(1, "Gamma", "0", "1");
        m->addCurve(1, "Sp", "5", "");
        m->tabs()->setCurrentIndex(0);
        m->setName("T");
        for (const char *button : {"saveButton", "saveAsGlobalButton"}) {
            m->click(button);
            QCOMPARE(m->boxTexts(), QStringList("Track_2, row 2: the right value is empty."));
            QCOMPARE(m->tabs()->currentIndex(), 1);
            QCOMPARE(m_dialog->focusWidget(), m->edit(1, 1, curvecolumn::RightValue));
            m->tabs()->setCurrentIndex(0);
        }
        QCOMPARE(m->templates(), before);
        m->edit(1, 1, curvecolumn::LeftValue)->setText("1,5x");
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList("Track_2, row 2: the left value is no number: \"1,5x\"."));
        QCOMPARE(m_dialog->focusWidget(), m->edit(1, 1, curvecolumn::LeftValue));
    }

    void aFullDiskLeavesTheOldTemplate_data()
    {
        QTest::addColumn<int>("step");
        for (const FailingStep &failing : failingSteps)
            QTest::newRow(failing.name) << static_cast<int>(failing.step);
    }

    void aFullDiskLeavesTheOldTemplate()
    {
        QFETCH(int, step);
        m->addTemplate("Old", "W");
        m->addTrack("Depth");
        m->addTrack("Depth");
        m->setName("Old");
        const auto before = files::snapshot(m->survey.path());
        {
            FailingDisk disk(static_cast<FailingDisk::Step>(step));
            const base::ScopedFileSystemCalls calls(disk);
            m->asker.answers = {base::BoxButton::Yes};
            m->click("saveButton");
        }
        const QStringList texts = m->boxTexts();
        QCOMPARE(texts.size(), 2);
        QVERIFY2(texts.at(1).startsWith("The template \"Old\" was not saved; what was stored is as it was.\n"),
                 qPrintable(texts.at(1)));
        QCOMPARE(files::snapshot(m->survey.path()), before);
        QVERIFY(m_dialog->isChanged());
    }

    // The second track's file does not fit any more.
    void aDiskFullBetweenTwoTracksLeavesTheOldTemplate()
    {
        m->addTemplate("Old", "W");
        m->addTrack("Depth");
        m->addTrack("Depth");
        m->setName("Old");
        const auto before = files::snapshot(m->survey.path());
        FailingTarget disk("Track_2.txt");
        const base::ScopedFileSystemCalls calls(disk);
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveButton");
        QCOMPARE(m->boxTexts().size(), 2);
        QCOMPARE(files::snapshot(m->survey.path()), before);
    }

    void whatCannotBeRemovedIsNotWrittenOver()
    {
        m->addTemplate("Old", "W");
        m->addTrack("Depth");
        m->setName("Old");
        const auto before = files::snapshot(m->survey.path());
        FailingTarget disk("/old"); // where a replaced folder goes first
        const base::ScopedFileSystemCalls calls(disk);
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList({exists, "Error in removing template !"}));
        QCOMPARE(files::snapshot(m->survey.path()), before);
        connect(m_dialog, &TemplateDialog::templateSaved, this, [] { QFAIL("nothing was saved"); });
        m->addTemplate("Old");
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveAsGlobalButton"); // which has no message of a removal
        QVERIFY(m->boxTexts().at(1).startsWith("The template \"Old\" was not saved"));
    }

    void aReadOnlyTemplateIsNotRemoved()
    {
        m->addTemplate("Old", "W");
        m->addTrack("Depth");
        m->setName("Old");
        for (const QString &folder : {m->survey.path(), m->path(""), m->path("/Templates"), m->path("/Templates/W")})
            ::chmod(QFile::encodeName(folder).constData(), 0777);
        ::chmod(QFile::encodeName(m->templatePath("W", "Old")).constData(), 0555);
        const auto before = m->templates();
        m->asker.answers = {base::BoxButton::Yes};
        if (!testing_support::canShowInChild())
            QSKIP("a child cannot share the connection to the window system");
        const int result = testing_support::runUnprivileged([this] {
            m->click("saveButton");
            return m->boxTexts() == QStringList({exists, "Error in removing template !"}) ? 0 : 1;
        });
        QCOMPARE(result, 0);
        QCOMPARE(m->templates(), before);
        ::chmod(QFile::encodeName(m->templatePath("W", "Old")).constData(), 0755);
    }

    void aFileInTheWayIsNoTemplate()
    {
        files::write(m->templatePath("W", "Old"), "a file");
        m->addTrack();
        m->setName("Old");
        m->asker.answers = {base::BoxButton::Yes};
        m->click("saveButton");
        QCOMPARE(m->boxTexts(), QStringList({exists, "Error in removing template !"}));
        QCOMPARE(files::read(m->templatePath("W", "Old")), QByteArray("a file"));
    }

    void aWellOfAnyNameHasItsFolder()
    {
        m->addWell("15/9-F-1");
        m->addWell("Global");
        m->launch->catalogue.build();
        for (const QString &well : {QString("15/9-F-1"), QString("Global")}) {
            m->open<DefineTemplate>(well);
            m->addTrack();
            m->setName("T");
            m->click("saveButton");
            QCOMPARE(m->boxTexts(), QStringList(saved));
        }
        QCOMPARE(m->trackFile("15%2F9-F-1", "T", 1), QByteArray("Linear\n"));
        QCOMPARE(m->trackFile("%47lobal", "T", 1), QByteArray("Linear\n"));
        QVERIFY(!QDir(m->templatePath("Global", "T")).exists());
    }

    void savingIsTold()
    {
        QVector<QPair<TemplateId, TemplateId>> told;
        connect(m_dialog, &TemplateDialog::templateSaved, this, [&](const TemplateId &now, const TemplateId &was) {
            told.append({now, was});
        });
        int applied = 0;
        connect(m_dialog, &TemplateDialog::templateApplied, this, [&] { ++applied; });
        m_dialog->applyRefresh(); // nothing was saved yet
        QCOMPARE(applied, 0);
        m->setName("T");
        m->click("saveButton");
        m->click("saveAsGlobalButton");
        QCOMPARE(told.size(), 2);
        QCOMPARE(applied, 2);
        QCOMPARE(told.at(0).first.name, QString("T"));
        QCOMPARE(told.at(0).first.wellName, QString("W"));
        QVERIFY(!told.at(0).first.isGlobal);
        QVERIFY(told.at(1).first.isGlobal);
        QVERIFY(told.at(0).second.name.isEmpty() && told.at(1).second.name.isEmpty());
    }

    void closingAsksOnlyForChanges()
    {
        m->click("closeButton");
        QVERIFY(!m_dialog->isVisible());
        QVERIFY(m->boxTexts().isEmpty());
    }

    void closingAChangedTemplate_data()
    {
        QTest::addColumn<base::BoxButton>("answer");
        QTest::addColumn<bool>("isSaved");
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("yes") << base::BoxButton::Yes << true << true;
        QTest::newRow("no") << base::BoxButton::No << false << true;
        QTest::newRow("cancel") << base::BoxButton::Cancel << false << false;
    }

    void closingAChangedTemplate()
    {
        QFETCH(base::BoxButton, answer);
        QFETCH(bool, isSaved);
        QFETCH(bool, isClosed);
        for (const bool byKey : {false, true}) {
            m_dialog = m->open<DefineTemplate>(QStringLiteral("W"));
            const QString name = byKey ? "K" : "T";
            m->addTrack();
            m->setName(name);
            m->asker.answers = {answer};
            if (byKey)
                QTest::keyClick(m_dialog, Qt::Key_Escape);
            else
                m->click("closeButton");
            QCOMPARE(m->asker.boxes.first().icon, base::BoxIcon::Question);
            QCOMPARE(m->asker.boxes.first().buttons,
                     QVector<base::BoxButton>({base::BoxButton::Yes, base::BoxButton::No, base::BoxButton::Cancel}));
            QCOMPARE(m->boxTexts(), isSaved ? QStringList({changed, saved}) : QStringList(changed));
            QCOMPARE(!m_dialog->isVisible(), isClosed);
            QCOMPARE(QDir(m->templatePath("W", name)).exists(), isSaved);
        }
    }

    // What cannot be saved must not be lost either.
    void closingStaysOpenWhereSavingFails()
    {
        m->addTrack();
        m->asker.answers = {base::BoxButton::Yes};
        m_dialog->close();
        QCOMPARE(m->boxTexts(), QStringList({changed, noName}));
        QVERIFY(m_dialog->isVisible());
    }

    void changedBackIsNotChanged()
    {
        m->addTrack();
        QVERIFY(m_dialog->isChanged());
        m_dialog->removeTrackTab(0);
        QVERIFY(!m_dialog->isChanged());
        m->setName("x");
        QVERIFY(m_dialog->isChanged());
        m->setName(" ");
        QVERIFY(!m_dialog->isChanged());
    }

    // The owner of a dialog may delete it while one of its boxes stands.
    void survivesItsOwnEndInEveryBox_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString &text :
             {exists, removed, saved, noName, changed, QStringLiteral("Track_1, row 1: the left value is empty.")})
            QTest::newRow(qPrintable(text)) << text;
    }

    void survivesItsOwnEndInEveryBox();

private:
    std::unique_ptr<TemplateFixture> m;
    DefineTemplate *m_dialog = nullptr;
};

namespace {

/// Deletes the dialog while the box with a text stands; answers "Yes" where that is possible.
class EndingAsker : public base::Asker
{
public:
    base::BoxButton show(const base::Box &box) override
    {
        if (box.text == trigger)
            end();
        return box.buttons.contains(base::BoxButton::Yes) ? base::BoxButton::Yes : base::BoxButton::Ok;
    }
    QString trigger;
    std::function<void()> end;
};

} // namespace

void tst_definetemplate::survivesItsOwnEndInEveryBox()
{
    QFETCH(QString, text);
    EndingAsker asker;
    ProjectData data(m->host, asker);
    data.project = m->launch->project;
    data.catalogue.build();
    m->addTemplate("T", "W");
    auto *dialog = new DefineTemplate(data, "W");
    QPointer<DefineTemplate> guard = dialog;
    dialog->show();
    bool isEnded = false;
    asker.trigger = text;
    asker.end = [&] {
        isEnded = true;
        delete guard;
    };
    dialog->addTrackClicked();
    if (text != noName)
        dialog->findChild<QLineEdit *>("nameEdit")->setText("T");
    if (text.startsWith("Track_1"))
        dialog->tracks().first()->addCurveClicked();
    if (text == changed)
        dialog->close();
    else
        dialog->saveClicked();
    QVERIFY(isEnded);
    delete guard;
}

Q_DECLARE_METATYPE(base::BoxButton)
LORVA_TEST_MAIN(tst_definetemplate)
#include "tst_definetemplate.moc"
