#pragma once

#include "survey/newwellsreport.h"
#include "survey/surveystore.h"
#include "workbench/filechooser.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace survey {
class WellNames;
}

namespace workbench {

class NewWellsModel;

/// Makes wells of the survey from LAS files: proposes them from the headers, lets the user correct and choose, and
/// creates them with their logs. Files and folders may be dropped on it.
class NewWellsDialog : public QDialog
{
    Q_OBJECT

public:
    NewWellsDialog(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser,
                   QWidget *parent = nullptr);

    /// Files, and folders with all that is in them.
    void addFiles(const QStringList &paths);
    /// Lets the user choose files and adds them; false when none was chosen.
    bool chooseFiles();
    /// The files that the user chooses, none when he gives up.
    static QStringList chosenFiles(const FileChooser &chooser, QWidget *parent);
    /// How many wells were created so far.
    int createdCount() const { return m_createdCount; }

    /// While wells are made or files are read, this ends the work at its next step.
    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void buildWidgets(const survey::WellNames &existing);
    QLayout *buildChoices();
    QWidget *buildTable();
    QLayout *buildState();
    QLayout *buildButtons();
    QPushButton *addButton(const char *objectName, const QString &text, void (NewWellsDialog::*clicked)());
    void chooseMore() { chooseFiles(); }
    void chooseFolder();
    void createWells();
    void goToNextProblem();
    void uncheckProblems();
    void showRowMenu(const QPoint &place);
    void nameRows(survey::NameSource source);
    void showState();
    void showNotes();
    void fitColumns();
    void beginWork(int steps, const QString &format);
    /// One step of a work is done; false when the user cancelled.
    bool step(int done);
    void endWork();
    void report(const survey::NewWellsOutcome &outcome);

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    FileChooser m_chooser;
    NewWellsModel *m_model = nullptr;
    QTableView *m_table = nullptr;
    QComboBox *m_names = nullptr;
    QLabel *m_codecLabel = nullptr;
    QComboBox *m_codec = nullptr;
    QCheckBox *m_withLogs = nullptr;
    QLabel *m_notes = nullptr;
    QLabel *m_state = nullptr;
    QPushButton *m_nextProblem = nullptr;
    QPushButton *m_uncheck = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_create = nullptr;
    QPushButton *m_close = nullptr;
    QVector<QWidget *> m_idleOnly; ///< what cannot be used while it works
    QPointer<QWidget> m_focusBefore; ///< of the work
    QStringList m_otherFiles;
    QElapsedTimer m_sinceEvents;
    int m_createdCount = 0;
    bool m_isWorking = false;
    bool m_isCancelled = false;
};

} // namespace workbench
