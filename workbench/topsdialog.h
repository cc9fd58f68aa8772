#pragma once

#include "survey/surveystore.h"
#include "workbench/filechooser.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTableView;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace workbench {

class TopsModel;

/// Brings the tops of tables into the survey's wells: shows what each well would get, lets the user choose the wells, and
/// writes them one by one.
class TopsDialog : public QDialog
{
    Q_OBJECT

public:
    TopsDialog(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser, QWidget *parent = nullptr);

    /// Files met before are passed over.
    void addFiles(const QStringList &paths);
    /// Whether the files hold the tops of any well.
    bool hasRows() const;
    /// What of the files was not understood, a line each.
    QStringList remarks() const;
    bool hasWritten() const { return m_hasWritten; }

    /// The tables that the user chooses, none when he gives up.
    static QStringList chosenFiles(const FileChooser &chooser, QWidget *parent);

private:
    void buildWidgets();
    QLayout *buildUnit();
    QWidget *buildTable();
    QLayout *buildButtons();
    QPushButton *addButton(const char *objectName, const QString &text, void (TopsDialog::*clicked)());
    void chooseMore();
    void openChoices(const QModelIndex &cell);
    void importTops();
    void showState();
    void showNotes();
    void showRemarks();
    void fitColumns();

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    FileChooser m_chooser;
    TopsModel *m_model = nullptr;
    QTableView *m_table = nullptr;
    QLabel *m_unitLabel = nullptr;
    QComboBox *m_unit = nullptr;
    QLabel *m_notes = nullptr;
    QLabel *m_remarksLabel = nullptr;
    QPlainTextEdit *m_remarks = nullptr;
    QLabel *m_state = nullptr;
    QPushButton *m_import = nullptr;
    QPushButton *m_close = nullptr;
    bool m_hasWritten = false;
};

/// Shows the dialog for the files; true when something was written. Files without a top are told in a box.
bool importTops(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser, const QStringList &paths,
                QWidget *parent);

/// Whether all of them are tables by their names, and no LAS files by what they hold.
bool areTables(const QStringList &paths);

} // namespace workbench
