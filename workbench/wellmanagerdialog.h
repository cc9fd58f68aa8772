#pragma once

#include "survey/surveystore.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItemModel;
class QTableWidget;
QT_END_NAMESPACE

namespace base {
class Asker;
}

namespace workbench {

/// The wells of a survey with their logs: adds, edits, renames and deletes wells and removes logs. Every change is
/// written at once.
class WellManagerDialog : public QDialog
{
    Q_OBJECT

public:
    WellManagerDialog(survey::SurveyStore &store, base::Asker &asker, QWidget *parent = nullptr);

    /// Makes the well the current one; an unknown key changes nothing.
    void selectWell(const QString &key);
    QString currentWellKey() const;

signals:
    /// Something was written.
    void changed();

private:
    void buildWidgets();
    QWidget *buildWellsSide();
    QWidget *buildLogsSide();
    QPushButton *addButton(const char *objectName, const QString &text, void (WellManagerDialog::*clicked)());
    void readWells(const QString &keyToSelect);
    void showCurrentWell();
    void countSamples(int row);
    void enableButtons();
    host::WellEntry currentWell() const;
    void finish(const QString &title, const host::Status &status, const QString &keyToSelect);

    void addWell();
    void editWell();
    void renameWell();
    void deleteWell();
    void removeLog();

    survey::SurveyStore &m_store;
    base::Asker &m_asker;
    QStandardItemModel *m_wells = nullptr;
    QSortFilterProxyModel *m_filtered = nullptr;
    QLineEdit *m_filter = nullptr;
    QListView *m_list = nullptr;
    QLabel *m_header = nullptr;
    QTableWidget *m_logs = nullptr;
    QVector<QPushButton *> m_wellButtons; ///< need a current well
    QPushButton *m_removeLog = nullptr;
};

} // namespace workbench
