#include "correlation/correlationview.h"
#include "logview/markeritem.h"
#include "logview/trackitem.h"
#include "logview/welldisplaywidget.h"
#include "logview/welllogsscene.h"
#include "logview/welllogsscenepropertywidget.h"
#include "logview/welllogsview.h"
#include "logview/welllogsviewwidget.h"
#include "mainwin/mainwindow.h"
#include "mainwin/projecttreewidget.h"
#include "mainwin/truescaledialog.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/pdfreader.h"
#include "support/projectfixture.h"
#include "support/testmain.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

namespace {

struct SheetFixture : ProjectFixture
{
    explicit SheetFixture(const QString &wellName = QStringLiteral("15/9-F-1"))
    {
        const QString key = addWell(wellName, {QStringLiteral("GR")}, {QStringLiteral("Top")});
        host.find(key)->header.totalDepth = 1500;
        open();
        files::write(path(QStringLiteral("/Correlations/North/properties.txt")),
                     "Correlation:North\nTrackWidth:1.2\nScale:1000\nNumber Of Wells:1\n" + wellName.toUtf8()
                         + ":Default\nMarker:0\nPerforation Flag:1\nZones:0\n");
        window = std::make_unique<MainWindow>(*launch);
        window->show();
        emit window->projectTree()->sendWellDisplayProperties(wellName, QStringLiteral("Default"));
        window->choosePath = [this](QWidget *, const QString &title, const QString &path) {
            titles.append(title);
            proposed.append(path);
            return chosen;
        };
        chosen = survey.filePath(QStringLiteral("sheet.pdf"));
    }

    /// Chooses the paper in the dialog and presses a button of it; what the dialog said then.
    QString save(const char *paper, const char *button = "Save…")
    {
        QString said;
        QTimer::singleShot(0, window.get(), [&] {
            auto *dialog = qobject_cast<TrueScaleDialog *>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            dialog->findChild<QComboBox *>()->setCurrentText(QString::fromLatin1(paper));
            said = dialog->findChild<QLabel *>(QStringLiteral("outcomeLabel"))->text();
            for (QPushButton *each : dialog->findChildren<QPushButton *>()) {
                if (each->text().remove(QLatin1Char('&')) != QString::fromUtf8(button))
                    continue;
                wasEnabled = each->isEnabled();
                each->click();
            }
            if (dialog->isVisible())
                dialog->reject();
        });
        window->saveAtTrueScale();
        return said;
    }
    QString place() const
    {
        QStringList texts;
        for (const QLabel *label : window->statusBar()->findChildren<QLabel *>())
            texts.append(label->text());
        return texts.join(QString());
    }

    std::unique_ptr<MainWindow> window;
    QString chosen;
    QStringList titles;
    QStringList proposed;
    bool wasEnabled = false;
};

} // namespace

class tst_sheetsaving : public QObject
{
    Q_OBJECT

    /// y of the only line that goes all the way across the tracks between the depths of 600 and 1400 m at 1:1000, in mm.
    static double lineAcross(const pdf::Page &page)
    {
        QVector<double> found;
        double widest = 0;
        for (const pdf::Path &path : page.paths)
            for (const QPolygonF &line : path.lines)
                if (path.painted == "S" && line.size() == 2 && line.first().y() > 600 && line.first().y() < 1400)
                    widest = qMax(widest, line.boundingRect().width());
        for (const pdf::Path &path : page.paths)
            for (const QPolygonF &line : path.lines)
                if (path.painted == "S" && line.size() == 2 && line.first().y() > 600 && line.first().y() < 1400
                    && line.boundingRect().width() > widest - 1)
                    found.append(line.first().y());
        return found.size() == 1 ? found.first() : -1;
    }

private slots:
    void theDisplayIsSavedOnTheChosenPaper()
    {
        SheetFixture f;
        const QString said = f.save("A3");
        QCOMPARE(f.titles, QStringList{QStringLiteral("Save as PDF at true scale")});
        QCOMPARE(f.proposed, QStringList{f.path(QStringLiteral("/15%2F9-F-1.pdf"))});
        const pdf::File file = pdf::read(files::read(f.chosen));
        QVERIFY(file.isComplete);
        QCOMPARE(said,
                 QStringLiteral("%1 pages of 297 × 420 mm. Print it without fitting it to the page.")
                     .arg(file.pages.size()));
        QCOMPARE(f.place(), QStringLiteral("Saved as %1.").arg(f.chosen));
        QVERIFY(qAbs(file.pages.first().sizeMm.width() - 297) < 0.3);

        QCOMPARE(f.save("continuous").left(10), QString("1 page of "));
        const pdf::File sheet = pdf::read(files::read(f.chosen)); // the file dialog has asked
        QCOMPARE(sheet.pages.size(), 1);
        QVERIFY(sheet.pages.first().sizeMm.height() > 1500);
    }

    void enterSaves()
    {
        SheetFixture f;
        QTimer::singleShot(0, f.window.get(), [] {
            auto *dialog = qobject_cast<TrueScaleDialog *>(QApplication::activeModalWidget());
            QTest::keyClick(dialog, Qt::Key_Return);
            if (dialog->isVisible())
                dialog->reject();
        });
        f.window->saveAtTrueScale();
        QVERIFY(QFileInfo::exists(f.chosen));
    }

    void whatDoesNotFitIsToldBeforehand()
    {
        SheetFixture f;
        WellLogsScene *scene = f.window->findChild<WellLogsViewWidget *>()->currentDisplay()->scene();
        scene->panel()->enterScale(200);
        const QString said = f.save("continuous");
        QVERIFY2(said.contains(QStringLiteral("a PDF page ends at 5080 mm")), qPrintable(said));
        QVERIFY(!f.wasEnabled);
        QVERIFY(f.titles.isEmpty());
        QVERIFY(!QFileInfo::exists(f.chosen));
    }

    void givingUpWritesNothing()
    {
        SheetFixture f;
        f.save("A4", "Cancel");
        QVERIFY(f.titles.isEmpty());
        f.chosen.clear();
        f.save("A4");
        QCOMPARE(f.titles.size(), 1);
        QCOMPARE(f.place(), QString());
        QCOMPARE(QDir(f.survey.path()).entryList({QStringLiteral("*.pdf")}), QStringList());
        QVERIFY(f.asker.boxes.isEmpty());
    }

    // The name itself would be that of a file, but not with its ending.
    void aLongNameOfAWellLeavesRoomForTheEnding()
    {
        SheetFixture f(QString(253, QLatin1Char('n')));
        f.save("A4");
        const QString name = QFileInfo(f.proposed.first()).fileName();
        QCOMPARE(name.size(), 255);
        QVERIFY(name.startsWith(QString(100, QLatin1Char('n'))) && name.endsWith(QLatin1String(".pdf")));
        f.window->findChild<WellLogsViewWidget *>()->saveCurrentPicture();
        const QStringList pictures = QDir(f.path(QString())).entryList({QStringLiteral("nnn*.tiff")}, QDir::Files);
        QCOMPARE(pictures.size(), 1);
        QCOMPARE(pictures.first().size(), 255);
    }

    void aNameWithoutEndingGetsOne()
    {
        SheetFixture f;
        f.chosen = f.survey.filePath(QStringLiteral("sheet"));
        f.save("A4");
        QVERIFY(QFileInfo::exists(f.chosen + QStringLiteral(".pdf")));
        files::write(f.chosen + QStringLiteral(".pdf"), "other");
        f.asker.answers = {base::BoxButton::No};
        f.save("A4");
        QCOMPARE(f.asker.boxes.size(), 1);
        QCOMPARE(files::read(f.chosen + QStringLiteral(".pdf")), QByteArray("other"));
    }

    void whatADeadSaveLeftGoes()
    {
        SheetFixture f;
        const QString left = f.survey.filePath(QStringLiteral(".lorva-abcDEF"));
        files::write(left, "half");
        f.save("A4");
        QVERIFY(QFileInfo::exists(f.chosen));
        QVERIFY(!QFileInfo::exists(left));
    }

    void aFailingDiskKeepsTheOldFile()
    {
        SheetFixture f;
        files::write(f.chosen, "old");
        for (const FailingStep &step : failingSteps) {
            FailingDisk disk(step.step);
            const base::ScopedFileSystemCalls scope(disk);
            f.save("A4");
            QVERIFY(!f.asker.boxes.isEmpty());
            QCOMPARE(f.asker.boxes.last().title, QString("Save as PDF at true scale"));
            QVERIFY2(f.asker.boxes.last().text.startsWith(f.chosen + QStringLiteral(" could not be written: ")),
                     step.name);
            QCOMPARE(files::read(f.chosen), QByteArray("old"));
        }
        QCOMPARE(f.place(), QString());
    }

    void withoutADisplayItSaysWhatToDo()
    {
        SheetFixture f;
        f.window->findChild<WellLogsViewWidget *>()->closeCurrent();
        f.window->saveAtTrueScale();
        qobject_cast<QTabWidget *>(f.window->centralWidget())->setCurrentIndex(2);
        f.window->saveAtTrueScale();
        QCOMPARE(f.asker.boxes.size(), 2);
        for (const base::Box &box : f.asker.boxes)
            QCOMPARE(box.text,
                     QString("Nothing is displayed. Check a well in the project tree, or open a correlation."));
    }

    void feetAreTrueOnPaper()
    {
        SheetFixture f;
        WellDisplayWidget *display = f.window->findChild<WellLogsViewWidget *>()->currentDisplay();
        WellLogsScene *scene = display->scene();
        auto *marker = new MarkerItem;
        marker->setDepth(700);
        QVERIFY(scene->addMarker(marker));
        f.save("continuous");
        const pdf::Page metres = pdf::read(files::read(f.chosen)).pages.first();
        scene->panel()->findChild<QComboBox *>("depthUnitBox")->setCurrentText("FEET");
        const double onScreen = static_cast<double>(scene->tracks().first()->height());
        const QRectF rect = scene->sceneRect();
        f.save("continuous");
        const pdf::File file = pdf::read(files::read(f.chosen));
        QCOMPARE(file.pages.size(), 1);
        QVERIFY(qAbs(file.pages.first().sizeMm.height() - metres.sizeMm.height()) < 1);
        // The marker's line is the only one from there.
        const double y = lineAcross(metres);
        QVERIFY2(y > 700 && y < 750, qPrintable(QString::number(y)));
        QVERIFY(qAbs(lineAcross(file.pages.first()) - y) < 0.3);
        QCOMPARE(static_cast<double>(scene->tracks().first()->height()), onScreen);
        QCOMPARE(scene->sceneRect(), rect);
        QVERIFY(display->logView()->viewport()->updatesEnabled());
    }

    void feetOfACorrelationAreTrueOnPaper()
    {
        SheetFixture f;
        ProjectTreeWidget *tree = f.window->projectTree();
        emit tree->sendCorrelation(tree->correlationsItem()->child(0));
        auto *view = f.window->findChild<CorrelationView *>();
        f.save("continuous");
        QVERIFY(f.proposed.last().endsWith("/North.pdf"));
        const double metres = pdf::read(files::read(f.chosen)).pages.first().sizeMm.height();
        QVERIFY(metres > 1500);
        view->setDepthUnit(logview::Feet);
        f.save("continuous");
        const pdf::File file = pdf::read(files::read(f.chosen));
        QCOMPARE(file.pages.size(), 1);
        QVERIFY(qAbs(file.pages.first().sizeMm.height() - metres) < 1);
    }

    // The display looks the same afterwards, its selection too.
    void theDisplayStaysAsItIs()
    {
        SheetFixture f;
        WellLogsScene *scene = f.window->findChild<WellLogsViewWidget *>()->currentDisplay()->scene();
        QGraphicsItem *track = scene->items(Qt::AscendingOrder).first();
        track->setSelected(true);
        const int selected = scene->selectedItems().size();
        QVERIFY(selected > 0);
        const QRectF rect = scene->sceneRect();
        f.save("A4");
        QCOMPARE(scene->selectedItems().size(), selected);
        QCOMPARE(scene->sceneRect(), rect);
    }
};

LORVA_TEST_MAIN(tst_sheetsaving)
#include "tst_sheetsaving.moc"
