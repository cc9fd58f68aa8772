#pragma once

#include "survey/surveystore.h"
#include "workbench/filechooser.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItemModel;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace workbench {

class WellContents;

/// The wells of a survey with what they hold: adds, edits, renames and deletes wells. Every change is written at once.
class WellManagerDialog : public QDialog
{
    Q_OBJECT

public:
    WellManagerDialog(survey::SurveyStore &store, base::Asker &asker, const FileChooser &chooser = {},
                      QWidget *parent = nullptr);

    /// Makes the well the current one; an unknown key changes nothing.
    void selectWell(const QString &key);
    QString currentWellKey() const;

signals:
    /// Something was written.
    void changed();

private:
    void buildWidgets();
    QWidget *buildWellsSide();
    QWidget *buildContentsSide();
    QPushButton *addButton(const char *objectName, const QString &text, void (WellManagerDialog::*clicked)());
    void readWells(const QString &keyToSelect);
    void showCurrentWell();
    void enableButtons();
    host::WellEntry currentWell() const;
    void finish(const QString &keyToSelect);

    void addWell();
    void editCurrent();
    void renameCurrent();
    void deleteCurrent();

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    FileChooser m_chooser;
    QStandardItemModel *m_wells = nullptr;
    QSortFilterProxyModel *m_filtered = nullptr;
    QLineEdit *m_filter = nullptr;
    QListView *m_list = nullptr;
    QLabel *m_header = nullptr;
    WellContents *m_contents = nullptr;
    QVector<QPushButton *> m_wellButtons; ///< need a current well
};

} // namespace workbench
