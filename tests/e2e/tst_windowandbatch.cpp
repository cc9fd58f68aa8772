// The window and the batch tool work on one survey at the same time: each sees what the other wrote at its next read, and
// neither takes anything away that the other wrote without asking.

#include "batch/batchfixture.h"
#include "demolaunch.h"
#include "support/testmain.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>

namespace {

constexpr int fileCount = 8;

QByteArray lasText(const QString &well, int number)
{
    QByteArray text =
        "~V\nVERS. 2.0 :\nWRAP. NO :\n~W\nSTRT.M 1000 :\nSTOP.M 1499 :\nSTEP.M 1 :\nNULL. -999.25 :\nUWI. "
        + well.toUtf8() + " :\n~C\nDEPT.M :\nBATCH" + QByteArray::number(number) + ".API :\n~A\n";
    for (int i = 1000; i < 1500; ++i)
        text += QByteArray::number(i) + ' ' + QByteArray::number(i % 90) + '\n';
    return text;
}

QStringList sorted(QStringList texts, const char *one)
{
    texts.append(one);
    texts.sort();
    return texts;
}

struct Top
{
    QString name;
    double depth = 0;
};

/// The demo in the workbench, and what a user does in the plug-in's window.
struct Both : DemoLaunch
{
    Both() { wells = host.wells().list().value; }

    template<class Widget>
    Widget *find(const QWidget &parent, const char *name) const
    {
        auto *found = parent.findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    QTreeWidgetItem *wellItem(const QString &well) const
    {
        QTreeWidgetItem *root = find<QTreeWidget>(window, "ProjectTreeWidget")->topLevelItem(0);
        for (int i = 0; i < root->childCount(); ++i)
            if (root->child(i)->text(0) == well)
                return root->child(i);
        qFatal("no such well in the tree");
    }
    QStringList shown(const QString &well, const char *kind) const
    {
        QStringList texts;
        const QTreeWidgetItem *item = wellItem(well);
        for (int i = 0; i < item->childCount(); ++i)
            for (int j = 0; item->child(i)->text(0) == QLatin1String(kind) && j < item->child(i)->childCount(); ++j)
                texts.append(item->child(i)->child(j)->text(0));
        texts.sort();
        return texts;
    }
    void syncData()
    {
        auto *main = find<QMainWindow>(window, "MainWindow");
        main->findChild<QAction *>(QStringLiteral("syncAction"))->trigger();
    }
    QWidget *openMarkers(const QString &well)
    {
        auto *main = find<QMainWindow>(window, "MainWindow");
        main->showNormal();
        find<QTabWidget>(*main, "centralTabs")->setCurrentIndex(2);
        auto *manager = find<QWidget>(*main, "WellsDataManagerWidget");
        find<QComboBox>(*manager, "wellBox")->setCurrentText(well);
        auto *tabs = find<QTabWidget>(*manager, "editorTabs");
        tabs->setCurrentIndex(1);
        return tabs->currentWidget();
    }
    int rowOf(const QWidget *editor, const QString &name) const
    {
        const auto *table = find<QTableWidget>(*editor, "dataTable");
        for (int row = 0; row < table->rowCount(); ++row)
            if (table->item(row, 0)->text() == name)
                return row;
        return -1;
    }
    void typeDepth(QWidget *editor, const QString &name, int depth)
    {
        auto *edit =
            qobject_cast<QLineEdit *>(find<QTableWidget>(*editor, "dataTable")->cellWidget(rowOf(editor, name), 1));
        edit->selectAll();
        QTest::keyClicks(edit, QString::number(depth));
    }
    void save(QWidget *editor) { QTest::mouseClick(find<QPushButton>(*editor, "updateButton"), Qt::LeftButton); }
    QString status(QWidget *editor) const { return find<QLabel>(*editor, "statusLabel")->text(); }

    BatchRun batch(const QStringList &words) const { return runBatch(words, survey); }
    QVector<Top> batchTops(const QString &well) const
    {
        QVector<Top> tops;
        for (const QJsonValue &marker : batch({"markers", well, "--json"}).list("markers"))
            tops.append({marker["name"].toString(), marker["depth"].toDouble()});
        return tops;
    }
    double batchTop(const QString &well, const QString &name) const
    {
        for (const Top &top : batchTops(well))
            if (top.name == name)
                return top.depth;
        return -1;
    }
    BatchRun importTops(const QString &well, const QVector<Top> &tops) const
    {
        QByteArray text;
        for (const Top &top : tops)
            text += top.name.toUtf8() + '\t' + QByteArray::number(top.depth, 'f', 4) + '\n';
        files::write(folder.filePath("tops.txt"), text);
        return batch({"markers", well, "--import", folder.filePath("tops.txt"), "--force"});
    }
    QString lasFile(const QString &well, int number) const
    {
        const QString path = folder.filePath(QStringLiteral("%1.las").arg(number));
        files::write(path, lasText(well, number));
        return path;
    }

    QVector<host::WellEntry> wells;
};

} // namespace

class tst_windowandbatch : public QObject
{
    Q_OBJECT

private slots:
    void syncDataShowsWhatTheBatchToolWrote()
    {
        Both both;
        const QString well = both.wells.at(0).name;
        const QStringList logs = both.shown(well, "Logs");
        const QStringList markers = both.shown(well, "Markers");
        QVERIFY(!logs.isEmpty() && !markers.isEmpty());
        VERIFY_EXIT(0, both.batch({"import", both.lasFile(well, 1)}));
        QVector<Top> tops = both.batchTops(well);
        tops.append({"Batch top", 1234});
        VERIFY_EXIT(0, both.importTops(well, tops));
        both.syncData();
        QCOMPARE(both.shown(well, "Logs"), sorted(logs, "BATCH1"));
        QCOMPARE(both.shown(well, "Markers"), sorted(markers, "Batch top"));
        QCOMPARE(both.boxes.seen.size(), 1);
        QCOMPARE(both.boxes.seen.first().text, QString("synchronization done !"));
    }

    void theBatchToolSeesWhatTheWindowSaved()
    {
        Both both;
        const QString well = both.wells.at(0).name;
        QWidget *editor = both.openMarkers(well);
        const QString name = both.batchTops(well).first().name;
        both.typeDepth(editor, name, 1111);
        QVERIFY(both.batchTop(well, name) != 1111);
        both.save(editor);
        QCOMPARE(both.batchTop(well, name), 1111.0);
        QVERIFY(both.boxes.seen.isEmpty());
    }

    // The table still shows the markers as they were.
    void savingAsksBeforeItTakesAwayWhatTheBatchToolWrote()
    {
        Both both;
        const QString well = both.wells.at(0).name;
        VERIFY_EXIT(0, both.importTops(well, both.batchTops(well))); // an import makes all of them black
        QWidget *editor = both.openMarkers(well);
        QVector<Top> tops = both.batchTops(well);
        QVERIFY(tops.size() > 3);
        const QString mine = tops.at(0).name;
        const QString theirs = tops.at(1).name;
        const QString gone = tops.at(2).name;
        both.typeDepth(editor, mine, 1111);
        tops[1].depth = 2222;
        tops.removeAt(2);
        tops.append({"Batch top", 1234});
        VERIFY_EXIT(0, both.importTops(well, tops));
        both.boxes.answers = QStringList{"No"};
        both.save(editor);
        QCOMPARE(both.boxes.seen.size(), 1);
        const QString text = both.boxes.seen.first().text;
        QVERIFY2(text.contains("\"Batch top\" came into the well since"), qPrintable(text));
        QVERIFY2(text.contains('"' + theirs + "\" was changed in the well since"), qPrintable(text));
        QVERIFY2(text.contains('"' + gone + "\" was deleted from the well since"), qPrintable(text));
        QVERIFY2(!text.contains('"' + mine + '"'), qPrintable(text));
        QCOMPARE(both.batchTop(well, theirs), 2222.0);
        QCOMPARE(both.batchTop(well, gone), -1.0);
        QCOMPARE(both.batchTop(well, "Batch top"), 1234.0);
        QVERIFY(both.batchTop(well, mine) != 1111);
        // Who says yes gets what the table shows.
        both.boxes.answers = QStringList{"Yes"};
        both.save(editor);
        QCOMPARE(both.batchTop(well, "Batch top"), -1.0);
        QVERIFY(both.batchTop(well, theirs) != 2222);
        QVERIFY(both.batchTop(well, gone) > 0);
        QCOMPARE(both.batchTop(well, mine), 1111.0);
    }

    // The batch tool brings a log into each of eight files' wells while the window saves markers of one of them and of another.
    void bothWriteAtOnce()
    {
        Both both;
        const QString well = both.wells.at(0).name;
        const QString other = both.wells.at(1).name;
        const QString third = both.wells.at(2).name;
        QStringList words{"import", "--survey", both.survey, "--jobs", "2"};
        for (int i = 0; i < fileCount; ++i)
            words.append(both.lasFile(i % 2 == 0 ? well : third, i));
        const QString name = both.batchTops(well).first().name;
        const QString nameOfOther = both.batchTops(other).first().name;
        QProcess process;
        process.start(QStringLiteral(LORVA_BINARY_DIR "/bin/lorva-batch"), words);
        QVERIFY(process.waitForStarted());
        int saves = 0;
        do {
            for (const QString &saved : {well, other}) {
                QWidget *editor = both.openMarkers(saved);
                both.typeDepth(editor, saved == well ? name : nameOfOther, 1100 + saves);
                both.save(editor);
                QCOMPARE(both.status(editor), QString("Marker data updated successfully !"));
            }
            ++saves;
        } while (!process.waitForFinished(1) && saves < 200);
        QVERIFY(process.waitForFinished(60000) || process.state() == QProcess::NotRunning);
        QCOMPARE(process.exitCode(), 0);
        QVERIFY2(both.boxes.seen.isEmpty(), qPrintable(both.boxes.seen.value(0).text));
        QCOMPARE(both.batchTop(well, name), 1099.0 + saves);
        QCOMPARE(both.batchTop(other, nameOfOther), 1099.0 + saves);
        both.syncData();
        for (int i = 0; i < fileCount; ++i)
            QVERIFY(both.shown(i % 2 == 0 ? well : third, "Logs").contains(QStringLiteral("BATCH%1").arg(i)));
        VERIFY_EXIT(0, both.batch({"check"}));
    }
};

LORVA_TEST_MAIN(tst_windowandbatch)
#include "tst_windowandbatch.moc"
