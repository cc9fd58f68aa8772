#pragma once

#include "programs/surveypreparation.h"
#include "support/boxdriver.h"
#include "support/scriptedasker.h"
#include "tests/workbench/dialogscript.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"
#include "workbench/workbenchwindow.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>
#include <QUrl>

/// Everything that the program puts together, on an empty folder.
struct OwnProgram
{
    explicit OwnProgram(bool isInFeet, const QString &name = QStringLiteral("Own"))
        : surveyName(name)
        , host(QStringLiteral(LORVA_SOURCE_DIR "/icons"))
        , window(host, asker,
                 {{}, [this](QWidget *, const QString &, const QString &, const QString &) { return chosenFiles; }})
    {
        host.setWindow(&window, window.utilitiesMenu(), window.wellsMenu());
        window.setSurveyPreparation(programs::prepareSurvey);
        window.show();
        loader.loadAll({QStringLiteral(LORVA_BINARY_DIR "/lib/lorva/plugins")});
        window.setPluginReports(loader.reports());
        onNextDialog(QStringLiteral("newSurveyDialog"), [this, isInFeet](QDialog *dialog) {
            dialog->findChild<QLineEdit *>("rootEdit")->setText(folder.filePath("surveys"));
            dialog->findChild<QLineEdit *>("nameEdit")->setText(surveyName);
            auto *unit = dialog->findChild<QComboBox *>("depthUnitBox");
            QTest::keyClick(unit, isInFeet ? Qt::Key_F : Qt::Key_M);
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        window.findChild<QAction *>("newSurveyAction")->trigger();
    }

    QString survey() const { return folder.filePath("surveys/" + surveyName); }

    /// Drops the folder on the window and makes the wells that can be made.
    void drop(const QString &path)
    {
        bool isDone = false;
        const auto isRead = [](QDialog *dialog) {
            return dialog->findChild<QPushButton *>("closeButton")->text() == "Close"
                && dialog->findChild<QTableView *>()->model()->rowCount() > 0;
        };
        const auto work = [this, &isDone](QDialog *dialog) {
            auto *uncheck = dialog->findChild<QPushButton *>("uncheckProblemsButton");
            if (uncheck->isVisible())
                QTest::mouseClick(uncheck, Qt::LeftButton);
            onNextDialog(QStringLiteral("reportDialog"), [this](QDialog *report) {
                summary = report->findChild<QPlainTextEdit *>("reportText")->toPlainText();
                QTest::keyClick(report, Qt::Key_Escape);
            });
            QTest::keyClick(dialog->findChild<QTableView *>(), Qt::Key_Return);
            isDone = true;
        };
        onNextDialog(QStringLiteral("newWellsDialog"), work, isRead);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
        QTRY_VERIFY_WITH_TIMEOUT(isDone, 60000);
    }

    void launch()
    {
        window.utilitiesMenu()->actions().last()->trigger();
        QWidget *plugin = window.findChild<QTreeWidget *>("ProjectTreeWidget")->window();
        plugin->showNormal();
        plugin->resize(1600, 900); // the tracks are seen in their full width
    }
    QTreeWidgetItem *wells() const { return window.findChild<QTreeWidget *>("ProjectTreeWidget")->topLevelItem(0); }
    QTreeWidgetItem *well(const QString &name) const
    {
        for (int i = 0; i < wells()->childCount(); ++i)
            if (wells()->child(i)->text(0) == name)
                return wells()->child(i);
        return nullptr;
    }
    QGraphicsView *display(const QString &name) const
    {
        QTreeWidgetItem *item = well(name);
        if (!item)
            return nullptr;
        item->setCheckState(0, Qt::Checked);
        emit window.findChild<QTreeWidget *>("ProjectTreeWidget")->itemClicked(item, 0);
        QCoreApplication::processEvents();
        auto *tabs = window.findChild<QTabWidget *>("wellTabs");
        return tabs->currentWidget()->findChild<QGraphicsView *>("logView");
    }
    double totalDepthM(const QString &name)
    {
        for (const host::WellEntry &entry : host.wells().list().value)
            if (entry.name == name)
                return host.wells().header(entry.key).value.totalDepth;
        return 0;
    }

    QTemporaryDir folder;
    QString surveyName;
    QStringList chosenFiles; ///< what the next choice of files gives
    BoxDriver boxes;
    ScriptedAsker asker;
    workbench::WorkbenchHost host;
    workbench::PluginLoader loader;
    workbench::WorkbenchWindow window;
    QString summary;
};
