#pragma once

#include "survey/surveystore.h"
#include "workbench/filechooser.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLabel;
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

/// Makes wells of the survey from the headers of LAS files: proposes them, lets the user correct and choose, and
/// creates them.
class NewWellsDialog : public QDialog
{
    Q_OBJECT

public:
    NewWellsDialog(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser,
                   QWidget *parent = nullptr);

    void addFiles(const QStringList &paths);
    /// Lets the user choose files and adds them; false when none was chosen.
    bool chooseFiles();
    /// How many wells were created so far.
    int createdCount() const { return m_createdCount; }

private:
    void buildWidgets(const survey::WellNames &existing);
    void createWells();
    void showState();
    void showNotes();

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    FileChooser m_chooser;
    NewWellsModel *m_model = nullptr;
    QTableView *m_table = nullptr;
    QLabel *m_notes = nullptr;
    QLabel *m_state = nullptr;
    QPushButton *m_create = nullptr;
    int m_createdCount = 0;
};

} // namespace workbench
