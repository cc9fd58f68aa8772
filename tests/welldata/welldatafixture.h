#pragma once

#include "base/usersettings.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "welldata/celledit.h"
#include "welldata/columnimportdialog.h"
#include "welldata/columnpreview.h"
#include "welldata/defaultdataclass.h"
#include "welldata/definecalibrationpoint.h"
#include "welldata/definewellperforation.h"
#include "welldata/markerdatawidget.h"
#include "welldata/welldatatable.h"
#include "welldata/wellsdatamanagerwidget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

/// The well data manager over a project with the wells "W-1" (logs GR, RHOB, NPHI; markers Top 150 and Base 250; KB
/// 20 m, ground 5 m, 1000 m deep) and "W-2" (nothing).
class WellDataFixture : public ProjectFixture
{
public:
    explicit WellDataFixture(bool hasWells = true)
    {
        if (!hasWells)
            return;
        key1 = addWell(QStringLiteral("W-1"), {QStringLiteral("GR"), QStringLiteral("RHOB"), QStringLiteral("NPHI")},
                       {QStringLiteral("Top"), QStringLiteral("Base")});
        key2 = addWell(QStringLiteral("W-2"));
        start();
    }

    void start()
    {
        base::keepSettingsIn(survey.filePath(QStringLiteral("settings")));
        open();
        manager = std::make_unique<WellsDataManagerWidget>(*launch);
        manager->resize(900, 600);
        manager->show();
        manager->activateWindow();
        if (!QTest::qWaitForWindowActive(manager.get()))
            qFatal("the window gets no focus");
        tabs()->setCurrentWidget(manager->markers());
    }

    QComboBox *wells() const { return find<QComboBox>(manager.get(), "wellBox"); }
    QTabWidget *tabs() const { return find<QTabWidget>(manager.get(), "editorTabs"); }
    MarkerDataWidget *markers() const { return manager->markers(); }
    DefineWellPerforation *zones() const { return manager->zones(); }
    DefineCalibrationPoint *points() const { return manager->points(); }
    DefaultDataClass *logs() const { return manager->defaultData(); }

    void select(const QString &well) const { wells()->setCurrentText(well); }
    template<class Editor>
    Editor *show(Editor *editor) const
    {
        tabs()->setCurrentWidget(editor);
        QCoreApplication::processEvents();
        return editor;
    }

    static QString status(const QWidget *editor) { return find<QLabel>(editor, "statusLabel")->text(); }
    static void click(const QWidget *parent, const char *name)
    {
        auto *button = find<QPushButton>(parent, name);
        if (!button->isEnabled())
            qFatal("%s is disabled", name);
        button->click();
    }
    static bool isEnabled(const QWidget *parent, const char *name)
    {
        return find<QPushButton>(parent, name)->isEnabled();
    }

    /// The line of a cell.
    static CellEdit *edit(const WellTableEditor *editor, int row, int column)
    {
        return qobject_cast<CellEdit *>(editor->table()->cellWidget(row, column));
    }
    static QComboBox *box(const WellTableEditor *editor, int row, int column)
    {
        return qobject_cast<QComboBox *>(editor->table()->cellWidget(row, column));
    }
    static QString name(const WellTableEditor *editor, int row) { return editor->table()->item(row, 0)->text(); }
    static QString number(const WellTableEditor *editor, int row, int column)
    {
        return edit(editor, row, column)->text();
    }
    /// Types into a line as a user does, and leaves it.
    static void type(const WellTableEditor *editor, int row, int column, const QString &text)
    {
        CellEdit *line = edit(editor, row, column);
        if (!line->isVisible()) {
            line->setText(text);
            emit line->editingFinished();
            return;
        }
        line->setFocus();
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, text);
        editor->table()->setFocus();
    }
    static void typeName(const WellTableEditor *editor, int row, const QString &text)
    {
        editor->table()->item(row, 0)->setText(text);
    }
    /// The cells of a row as they show.
    static QStringList shownRow(const WellTableEditor *editor, int row)
    {
        QStringList cells;
        const WellDataTable *table = editor->table();
        for (int column = 0; column < table->columnCount(); ++column) {
            if (const CellEdit *line = edit(editor, row, column))
                cells.append(line->text());
            else if (const QComboBox *choice = box(editor, row, column))
                cells.append(choice->currentText());
            else if (table->item(row, column)->background().style() != Qt::NoBrush)
                cells.append(table->item(row, column)->background().color().name());
            else
                cells.append(table->item(row, column)->text());
        }
        return cells;
    }
    static QVector<QStringList> shown(const WellTableEditor *editor)
    {
        QVector<QStringList> rows;
        for (int row = 0; row < editor->table()->rowCount(); ++row)
            rows.append(shownRow(editor, row));
        return rows;
    }

    /// Opens the import of an editor and chooses a file in it.
    ColumnImportDialog *openImport(WellTableEditor *editor, const QString &path)
    {
        editor->fromAsciiFileButtonClicked();
        ColumnImportDialog *dialog = editor->findChildren<ColumnImportDialog *>().last();
        dialog->chooseFile = [this, path](QWidget *, const QString &title, const QString &folder,
                                          const QString &filter) {
            fileTitle = title;
            fileFolder = folder;
            fileFilter = filter;
            return path;
        };
        if (!path.isEmpty())
            click(dialog, "browseButton");
        return dialog;
    }
    QString writeInput(const QByteArray &bytes, const QString &fileName = QStringLiteral("input.txt")) const
    {
        const QString file = survey.filePath(QStringLiteral("in/") + fileName);
        files::write(file, bytes);
        return file;
    }
    /// Imports the bytes and gives whether the dialog closed, as it does when something was stored.
    bool import(WellTableEditor *editor, const QByteArray &bytes, const QStringList &numbers = {})
    {
        const QPointer<ColumnImportDialog> dialog = openImport(editor, writeInput(bytes));
        QStringList edits;
        for (const QLineEdit *line : dialog->findChildren<QLineEdit *>())
            if (line->objectName() != QLatin1String("fileEdit"))
                edits.append(line->objectName());
        for (int i = 0; i < numbers.size(); ++i)
            find<QLineEdit>(dialog, edits.at(i).toLatin1().constData())->setText(numbers.at(i));
        click(dialog, "importButton");
        const bool isClosed = !dialog || !dialog->isVisible();
        delete dialog;
        return isClosed;
    }

    MemoryHost::Well &well(const QString &key) { return *host.find(key); }
    QStringList storedNames(const QString &key)
    {
        QStringList names;
        for (const host::Marker &marker : well(key).markers)
            names.append(marker.name);
        return names;
    }
    QVector<float> storedDepths(const QString &key)
    {
        QVector<float> depths;
        for (const host::Marker &marker : well(key).markers)
            depths.append(marker.depth);
        return depths;
    }

    template<class Widget>
    static Widget *find(const QWidget *parent, const char *name)
    {
        auto *found = parent->findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }

    QString key1;
    QString key2;
    std::unique_ptr<WellsDataManagerWidget> manager;
    QString fileTitle; ///< of the last choice of a file
    QString fileFolder;
    QString fileFilter;
};
