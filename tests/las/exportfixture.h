#pragma once

#include "las/laswriter.h"
#include "las/welllogexport.h"
#include "support/files.h"
#include "support/projectfixture.h"
#include "support/unprivileged.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

inline QString text(const char *bytes)
{
    return QString::fromUtf8(bytes);
}

inline const QString exportTitle = QStringLiteral("Well Log(s) Export");
inline const QString exportedText = QStringLiteral("Successfully Exported !");

/// The export dialog over wells A (logs GR and RT at 100, 200, 300), B (GR) and C (none), all 1000 m deep.
class ExportFixture : public ProjectFixture
{
public:
    ExportFixture()
    {
        addWell(text("A"), {text("GR"), text("RT")});
        addWell(text("B"), {text("GR")});
        addWell(text("C"));
        open();
        QDir(survey.path()).mkdir(text("out"));
        makeDialog();
    }
    void makeDialog()
    {
        dialog = std::make_unique<WellLogExport>(*launch);
        dialog->chooseFolder = [this](QWidget *, const QString &title, const QString &folder) {
            titles.append(title);
            startFolders.append(folder);
            return chosen;
        };
        dialog->show();
        dialog->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog.get()))
            qFatal("the dialog gets no focus");
    }

    QString out(const char *name = "") const
    {
        return survey.filePath(text("out")) + (*name ? text("/") + text(name) : QString());
    }
    template<class Widget>
    Widget *find(const char *name) const
    {
        auto *widget = dialog->findChild<Widget *>(text(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    QListWidget *wells() const { return find<QListWidget>("wellList"); }
    QTabWidget *tabs() const { return find<QTabWidget>("wellTabs"); }
    QListWidget *logs(int tab) const { return tabs()->widget(tab)->findChild<QListWidget *>(text("logList")); }
    void check(int well, bool isChecked = true) const
    {
        wells()->item(well)->setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
    }
    void checkLog(int tab, int log) const { logs(tab)->item(log)->setCheckState(Qt::Checked); }
    void startExport() const { QTest::mouseClick(button("exportButton"), Qt::LeftButton); }
    void setUp(const char *interval = "100") const
    {
        find<QLineEdit>("folderEdit")->setText(out());
        find<QLineEdit>("intervalEdit")->setText(text(interval));
    }
    QStringList boxTexts() const
    {
        QStringList texts;
        for (const base::Box &box : asker.boxes)
            texts.append(box.text);
        return texts;
    }
    QStringList tabTexts() const
    {
        QStringList texts;
        for (int i = 0; i < tabs()->count(); ++i)
            texts.append(tabs()->tabText(i));
        return texts;
    }
    host::LogData &hostLog(int well, int log) { return host.storedWells[well].logs[log]; }

    QString chosen;
    QStringList titles;
    QStringList startFolders;
    std::unique_ptr<WellLogExport> dialog;
};

inline QStringList rows(const QString &path)
{
    QStringList lines = QString::fromUtf8(files::read(path)).split(QLatin1Char('\n'));
    lines.removeLast();
    while (!lines.takeFirst().startsWith(QLatin1String("~A"))) { }
    return lines;
}
