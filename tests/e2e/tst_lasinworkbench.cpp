#include "demo/demosurvey.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "support/testmain.h"
#include "tests/las/strictlaschecker.h"
#include "workbench/hostaccess.h"
#include "workbench/pluginloader.h"
#include "workbench/workbenchhost.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

#include <memory>

/// LAS files through the built plug-in in the workbench on a survey on disk: imported into a well, exported again.
/// The plug-in's classes are its own; this program knows its widgets by their names only.
class tst_lasinworkbench : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_survey = m_folder->filePath("Demo");
        QCOMPARE(demo::makeDemoSurvey(m_survey), QString());
        m_lasFile = QDir(m_survey + "/Import").entryInfoList({"*.las"}, QDir::Files, QDir::Name).first().filePath();
        m_boxes = std::make_unique<BoxDriver>();
        m_window = std::make_unique<QMainWindow>();
        QMenu *menu = m_window->menuBar()->addMenu("&Utilities");
        m_window->show();
        m_host = std::make_unique<workbench::WorkbenchHost>(QStringLiteral(LORVA_SOURCE_DIR "/icons"));
        m_host->setWindow(m_window.get(), menu);
        m_host->setSurvey(m_survey);
        m_loader = std::make_unique<workbench::PluginLoader>();
        m_loader->loadAll({QStringLiteral(LORVA_BINARY_DIR "/lib/lorva/plugins")});
        QVERIFY(!menu->actions().isEmpty());
        menu->actions().last()->trigger();
    }

    // As the workbench ends: plug-ins first, then the host.
    void cleanup()
    {
        m_loader.reset();
        m_host.reset();
        m_window.reset();
        m_boxes.reset();
    }

    void importedCurveIsExportedAgain()
    {
        const host::WellEntry well = m_host->wells().list().value.first();
        const QStringList logsBefore = logNames(well.key);
        importGammaRay("GR_2", well.name);
        QCOMPARE(boxTexts(), QStringList{"The selected LAS files have been imported successfully."});
        QCOMPARE(logNames(well.key), logsBefore + QStringList{"GR_2"});

        m_boxes->seen.clear();
        exportLog("GR_2", well.name);
        QCOMPARE(boxTexts(), QStringList{"Successfully Exported !"});
        compareWithTheImportedFile(well.name);
    }

private:
    QDialog *dialogOf(const QString &action, const QString &dialog) const
    {
        m_window->findChild<QAction *>(action)->trigger();
        return m_window->findChild<QDialog *>(dialog);
    }

    // All curves of the file are in the well already, so all rows but that of the depth are red and not selected.
    void importGammaRay(const QString &newName, const QString &wellName)
    {
        m_boxes->onDialog = [this](QWidget *widget) {
            auto *chooser = qobject_cast<QFileDialog *>(widget);
            if (!chooser)
                return;
            chooser->findChild<QLineEdit *>("fileNameEdit")->setText(m_lasFile);
            QMetaObject::invokeMethod(chooser, "accept");
        };
        QDialog *dialog = dialogOf("importAction", "WellImportDialog");
        QVERIFY(dialog && dialog->isVisible());
        dialog->findChild<QPushButton *>("selectButton")->click();
        m_boxes->onDialog = nullptr;
        auto *table = dialog->findChild<QTableWidget *>("curveTable");
        QVERIFY(table);
        QCOMPARE(dialog->findChild<QComboBox *>("wellBox")->currentText(), wellName);
        int selected = 0;
        for (int row = 0; row < table->rowCount(); ++row) {
            const bool isGammaRay = table->item(row, 0)->text() == "GR";
            if (isGammaRay)
                table->item(row, 3)->setText(newName);
            table->item(row, 2)->setCheckState(isGammaRay ? Qt::Checked : Qt::Unchecked);
            selected += isGammaRay ? 1 : 0;
        }
        QCOMPARE(selected, 1);
        dialog->findChild<QPushButton *>("importButton")->click();
        dialog->close();
    }

    void exportLog(const QString &logName, const QString &wellName)
    {
        QDialog *dialog = dialogOf("exportAction", "WellLogExport");
        QVERIFY(dialog && dialog->isVisible());
        const auto check = [dialog](const char *list, const QString &text) {
            for (QListWidgetItem *item : dialog->findChild<QListWidget *>(list)->findItems(text, Qt::MatchExactly))
                item->setCheckState(Qt::Checked);
        };
        check("wellList", wellName);
        check("logList", logName);
        dialog->findChild<QLineEdit *>("folderEdit")->setText(m_folder->path());
        dialog->findChild<QPushButton *>("exportButton")->click();
        dialog->close();
    }

    // Both files stand on the same step. By the index rule of the export a line holds the sample of its depth or, where
    // the sum of steps falls a hair short, the one before.
    void compareWithTheImportedFile(const QString &wellName)
    {
        const StrictLas original(files::read(m_lasFile));
        const StrictLas exported(files::read(m_folder->filePath(wellName + ".las")));
        // STOP is the deepest sample, which the last line need not reach.
        QCOMPARE(QStringList(exported.problems.keys()), QStringList{"stop"});
        QVERIFY(exported.item('C', "GR_2"));
        const QVector<StrictLas::Item> curves = original.sections.value('C');
        int column = 0;
        while (column < curves.size() && curves.at(column).mnemonic != "GR")
            ++column;
        const double first = original.rows.first().first();
        const double step = original.rows.at(1).first() - first;
        const auto isPrinted = [&](int row, double value) {
            return row >= 0 && row < original.rows.size()
                && std::fabs(original.rows.at(row).value(column) - value) < 0.0051;
        };
        QVERIFY(exported.rows.size() > original.rows.size() / 2);
        for (const QVector<double> &row : exported.rows) {
            const int same = qRound((row.at(0) - first) / step);
            QVERIFY2(isPrinted(same, row.at(1)) || isPrinted(same - 1, row.at(1)),
                     qPrintable(QString::number(row.at(0))));
        }
    }

    QStringList logNames(const QString &key) const
    {
        QStringList names;
        for (const host::LogInfo &log : m_host->wells().logs(key).value)
            names.append(log.name);
        return names;
    }

    QStringList boxTexts() const
    {
        QStringList texts;
        for (const BoxDriver::Seen &box : qAsConst(m_boxes->seen))
            texts.append(box.text);
        return texts;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_survey;
    QString m_lasFile;
    std::unique_ptr<BoxDriver> m_boxes;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<workbench::WorkbenchHost> m_host;
    std::unique_ptr<workbench::PluginLoader> m_loader;
};

LORVA_TEST_MAIN(tst_lasinworkbench)
#include "tst_lasinworkbench.moc"
