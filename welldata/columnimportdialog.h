#pragma once

#include "welldata/columnfile.h"

#include <QDialog>
#include <QVector>

#include <functional>

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
class QPushButton;
QT_END_NAMESPACE

class ColumnPreview;
struct ProjectData;

/// What one import of a text file shows and says.
struct ColumnImportTexts
{
    /// A line for the number of a column.
    struct Column
    {
        QString label;
        QString number; ///< as it begins
        QString objectName;
    };

    QString objectName;
    QString windowTitle;
    QString warningTitle;
    QString fileLabel;
    QString fileDialogTitle;
    QVector<Column> columns;
    int fieldsAtLeast = 2;
};

/// Imports columns of a text file into the data of a well: the file with its preview, the header lines to pass over,
/// and the numbers of the columns.
class ColumnImportDialog : public QDialog
{
    Q_OBJECT

public:
    /// \a projectData must outlive the dialog.
    ColumnImportDialog(ProjectData &projectData, const ColumnImportTexts &texts, QWidget *parent);
    ~ColumnImportDialog() override;

    /// Lets the user choose a file, from the folder of the last one on; empty when he gives up. Tests put their own here.
    std::function<QString(QWidget *parent, const QString &title, const QString &folder, const QString &filter)>
        chooseFile;

public slots:
    void browseBtnClicked();
    void importBtnClicked();

protected:
    ProjectData &data() const { return m_data; }
    const QString &warningTitle() const { return m_texts.warningTitle; }
    /// Why nothing can be imported at all, as the text of a warning; empty when something can.
    virtual QString targetProblem() const = 0;
    /// Stores what was read, at least one line. False when nothing was stored; the user knows why. Boxes may delete
    /// the dialog.
    virtual bool store(const welldata::ColumnFile &file) = 0;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void build();
    void showFile();
    void showChoice();
    void warn(const QString &text);
    welldata::ColumnRequest request() const;

    ProjectData &m_data;
    ColumnImportTexts m_texts;
    QString m_shownPath;
    QLineEdit *m_path = nullptr;
    QLineEdit *m_headerLines = nullptr;
    QVector<QLineEdit *> m_columns; ///< parallel to those of the texts
    ColumnPreview *m_preview = nullptr;
    QLabel *m_status = nullptr;
};
