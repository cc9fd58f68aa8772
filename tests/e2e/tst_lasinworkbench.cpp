#include "demolaunch.h"
#include "support/files.h"
#include "support/testmain.h"
#include "tests/las/strictlaschecker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>

#include <memory>

/// LAS files through the built plug-in in the workbench: imported into a well, exported again.
class tst_lasinworkbench : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_demo = std::make_unique<DemoLaunch>();
        m_lasFile =
            QDir(m_demo->survey + "/Import").entryInfoList({"*.las"}, QDir::Files, QDir::Name).first().filePath();
    }
    void cleanup() { m_demo.reset(); }

    void importedCurveIsExportedAgain()
    {
        const host::WellEntry well = m_demo->host.wells().list().value.first();
        const QStringList logsBefore = logNames(well.key);
        importGammaRay("GR_2", well.name);
        QCOMPARE(boxTexts(), QStringList{"The selected LAS files have been imported successfully."});
        QCOMPARE(logNames(well.key), logsBefore + QStringList{"GR_2"});

        m_demo->boxes.seen.clear();
        exportLog("GR_2", well.name);
        QCOMPARE(boxTexts(), QStringList{"Successfully Exported !"});
        compareWithTheImportedFile(well.name);
    }

private:
    QDialog *dialogOf(const QString &action, const QString &dialog) const
    {
        m_demo->window.findChild<QAction *>(action)->trigger();
        return m_demo->window.findChild<QDialog *>(dialog);
    }

    // All curves of the file are in the well already, so all rows but that of the depth are red and not selected.
    void importGammaRay(const QString &newName, const QString &wellName)
    {
        m_demo->boxes.onDialog = [this](QWidget *widget) {
            auto *chooser = qobject_cast<QFileDialog *>(widget);
            if (!chooser)
                return;
            chooser->findChild<QLineEdit *>("fileNameEdit")->setText(m_lasFile);
            QMetaObject::invokeMethod(chooser, "accept");
        };
        QDialog *dialog = dialogOf("importAction", "WellImportDialog");
        QVERIFY(dialog && dialog->isVisible());
        dialog->findChild<QPushButton *>("selectButton")->click();
        m_demo->boxes.onDialog = nullptr;
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
        dialog->findChild<QLineEdit *>("folderEdit")->setText(m_demo->folder.path());
        dialog->findChild<QPushButton *>("exportButton")->click();
        dialog->close();
    }

    // Both files stand on the same step. By the index rule of the export a line holds the sample of its depth or,
    // where the sum of steps falls a hair short, the one before.
    void compareWithTheImportedFile(const QString &wellName)
    {
        const StrictLas original(files::read(m_lasFile));
        const StrictLas exported(files::read(m_demo->folder.filePath(wellName + ".las")));
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
        for (const host::LogInfo &log : m_demo->host.wells().logs(key).value)
            names.append(log.name);
        return names;
    }

    QStringList boxTexts() const
    {
        QStringList texts;
        for (const BoxDriver::Seen &box : qAsConst(m_demo->boxes.seen))
            texts.append(box.text);
        return texts;
    }

    std::unique_ptr<DemoLaunch> m_demo;
    QString m_lasFile;
};

LORVA_TEST_MAIN(tst_lasinworkbench)
#include "tst_lasinworkbench.moc"
