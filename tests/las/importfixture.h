#pragma once

#include "las/wellimportdialog.h"
#include "las/wellimporttab.h"
#include "support/files.h"
#include "support/projectfixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

/// The import dialog over a project with two wells: "W-1" with the log GR, and "W-2" without any. Both are 1000 m
/// deep.
class ImportFixture : public ProjectFixture
{
public:
    ImportFixture()
    {
        addWell(QStringLiteral("W-1"), {QStringLiteral("GR")});
        addWell(QStringLiteral("W-2"));
        open();
        makeDialog();
    }

    void makeDialog()
    {
        dialog = std::make_unique<WellImportDialog>(*launch);
        dialog->chooseFiles = [this](QWidget *, const QString &caption, const QString &filter) {
            captions.append(caption);
            filters.append(filter);
            return chosen;
        };
        dialog->show();
        dialog->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the dialog gets no focus");
    }

    /// A LAS file with the data lines \a data of DEPT and the curves "mnemonic.unit".
    static QByteArray las(const QByteArray &well, const QByteArray &data, const QByteArrayList &curves = {"GR.gapi"},
                          const QByteArray &null = "-999.25")
    {
        QByteArray bytes =
            "~Version\nVERS.  2.0 :\nWRAP.  NO :\n~Well\nSTRT.M 100 :\nSTOP.M 200 :\nSTEP.M 0.5 :\nNULL.  " + null
            + " :\nUWI.  " + well + " :\n~Curve\nDEPT.M : depth\n";
        for (const QByteArray &curve : curves)
            bytes += curve + " : curve\n";
        return bytes + "~A\n" + data;
    }

    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = survey.filePath(QStringLiteral("las/") + name);
        files::write(path, bytes);
        return path;
    }

    /// Chooses files through the button.
    void choose(const QStringList &paths)
    {
        chosen = paths;
        QTest::mouseClick(button("selectButton"), Qt::LeftButton);
    }
    void chooseBytes(const QByteArray &bytes) { choose({write(QStringLiteral("test.las"), bytes)}); }
    void startImport() { QTest::mouseClick(button("importButton"), Qt::LeftButton); }

    template<class Widget>
    Widget *find(const char *name) const
    {
        auto *widget = dialog->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    QTabWidget *tabs() const { return find<QTabWidget>("fileTabs"); }
    QProgressBar *progressBar() const { return find<QProgressBar>("progressBar"); }
    WellImportTab *tab(int index = 0) const { return qobject_cast<WellImportTab *>(tabs()->widget(index)); }
    QComboBox *wellBox(int index = 0) const { return tab(index)->wellBox(); }
    QTableWidget *table(int index = 0) const { return tab(index)->table(); }
    QTableWidgetItem *nameItem(int row, int index = 0) const
    {
        return table(index)->item(row, WellImportTab::NameColumn);
    }
    QTableWidgetItem *checkItem(int row, int index = 0) const
    {
        return table(index)->item(row, WellImportTab::SelectColumn);
    }
    QComboBox *groupBox(int row, int index = 0) const
    {
        return qobject_cast<QComboBox *>(table(index)->cellWidget(row, WellImportTab::GroupColumn));
    }
    void setChecked(int row, bool isChecked, int index = 0) const
    {
        checkItem(row, index)->setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
    }
    bool isRed(int row, int index = 0) const
    {
        for (int column = 0; column < 4; ++column) {
            const QTableWidgetItem *item = table(index)->item(row, column);
            const QColor back = item->background().color();
            const bool red = item->background().style() != Qt::NoBrush && back == QColor(Qt::red);
            if (!red || item->foreground().color() != Qt::white)
                return false;
        }
        return true;
    }
    bool isPlain(int row, int index = 0) const
    {
        for (int column = 0; column < 4; ++column)
            if (table(index)->item(row, column)->background().style() != Qt::NoBrush
                || table(index)->item(row, column)->foreground().style() != Qt::NoBrush)
                return false;
        return true;
    }
    void setInterval(const QString &text) const
    {
        find<QCheckBox>("intervalBox")->setChecked(true);
        find<QLineEdit>("intervalEdit")->setText(text);
    }

    const host::LogData *hostLog(const QString &wellName, const QString &logName)
    {
        for (const MemoryHost::Well &well : qAsConst(host.storedWells))
            if (well.header.name == wellName)
                for (const host::LogData &log : well.logs)
                    if (log.name == logName)
                        return &log;
        return nullptr;
    }
    QStringList boxTexts() const
    {
        QStringList texts;
        for (const base::Box &box : asker.boxes)
            texts.append(box.text);
        return texts;
    }

    QStringList chosen;
    QStringList captions;
    QStringList filters;
    std::unique_ptr<WellImportDialog> dialog;
};

inline const QString importedText = QStringLiteral("The selected LAS files have been imported successfully.");
