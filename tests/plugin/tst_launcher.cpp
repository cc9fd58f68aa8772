#include "datastore/curvegroups.h"
#include "datastore/curvegrouptable.h"
#include "datastore/defaultlogs.h"
#include "datastore/projectdata.h"
#include "plugin/launcher.h"
#include "support/files.h"
#include "support/scriptedasker.h"
#include "support/testmain.h"
#include "watchfulhost.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// A screen of an odd number of dots an inch, half of which is no whole number. Qt reads it once, when it starts.
const bool isScreenOdd = qputenv("QT_FONT_DPI", "97");

class tst_launcher : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_host = std::make_unique<WatchfulHost>();
        m_host->survey = m_folder->filePath("Survey");
        m_host->dataFolder = m_folder->filePath("data");
        QVERIFY(QDir().mkdir(m_host->survey));
        QDir().mkpath(m_host->dataFolder + "/icons.Default");
        m_asker = ScriptedAsker();
        m_data = std::make_unique<ProjectData>(*m_host, m_asker);
    }

    void cleanup()
    {
        m_launcher.reset();
        m_data.reset();
    }

    // ---- the window

    void isAFramelessWindowOfItsOwn()
    {
        QWidget window;
        launch(&window);
        const auto launcherGoesFirst = qScopeGuard([this] { m_launcher.reset(); });
        QCOMPARE(m_launcher->windowTitle(), QString("LORVA Launcher"));
        QCOMPARE(m_launcher->windowType(), Qt::Window);
        QCOMPARE(m_launcher->windowFlags(), Qt::Window | Qt::FramelessWindowHint);
        QVERIFY(!m_launcher->isModal());
        QCOMPARE(m_launcher->parentWidget(), &window);
        QVERIFY(m_launcher->isWindow());
        QVERIFY(!m_launcher->isVisible());
        QVERIFY(qobject_cast<QDialog *>(m_launcher.get()));
        QCOMPARE(m_launcher->metaObject()->className(), "Launcher");
    }

    void iconComesFromTheHost()
    {
        savePicture(picture());
        launch();
        QCOMPARE(m_launcher->windowIcon().pixmap(3, 2).toImage().convertToFormat(QImage::Format_RGB32), picture());
    }

    void titleLabel()
    {
        launch();
        const auto *label = child<QLabel>("titleLabel");
        QCOMPARE(label->text(), QString("LORVA"));
        QCOMPARE(label->styleSheet(),
                 QString("font-weight:bold;font-style:Italics;font-size:25px;font-family:Times;color:orange;"));
    }

    void aboutLabel()
    {
        launch();
        const auto *label = child<QLabel>("aboutLabel");
        QCOMPARE(label->text(), QString("HESKO Log Interpretation Software\nVersion 0.1\nDeveloped by KUB,HESKO."));
        QCOMPARE(label->styleSheet(),
                 QString("font-weight:bold;font-style:Italics;font-size:10px;font-family:Times;color:black;"));
    }

    void progressBar()
    {
        launch();
        const auto *bar = child<QProgressBar>("progressBar");
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 100);
        QVERIFY(!bar->isTextVisible());
        QCOMPARE(bar->maximumHeight(), 8);
        QCOMPARE(bar->orientation(), Qt::Horizontal);
        QCOMPARE(bar->styleSheet(),
                 QString("QProgressBar:horizontal {background: black;}QProgressBar::chunk:horizontal{background: "
                         "qlineargradient(x1: 0, y1: 0.5, x2: 1, y2: 0.5, stop: 0 #4488ff, stop: 1 #66ccff);}"));
        QVERIFY(bar->value() <= 0);
    }

    void statusLabelIsEmptyAtFirst()
    {
        launch();
        QCOMPARE(child<QLabel>("statusLabel")->text(), QString());
        QCOMPARE(child<QLabel>("statusLabel")->styleSheet(), QString());
    }

    void closeButton()
    {
        launch();
        const auto *button = child<QPushButton>("closeButton");
        QCOMPARE(button->text(), QString("Close"));
        QCOMPARE(button->maximumWidth(), 50);
        QCOMPARE(button->styleSheet(), QString("border: 3px solid black;border-radius: 6px;"));
    }

    void thereIsNothingElseInIt()
    {
        launch();
        QCOMPARE(m_launcher->findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly).size(), 4);
        QCOMPARE(m_launcher->findChildren<QPushButton *>().size(), 1);
        QCOMPARE(m_launcher->findChildren<QProgressBar *>().size(), 1);
        QCOMPARE(m_launcher->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 6);
    }

    void widgetsStandInTheirOrder()
    {
        launch();
        const auto *column = qobject_cast<QVBoxLayout *>(m_launcher->layout());
        QVERIFY(column);
        QCOMPARE(column->count(), 6);

        auto *titleRow = qobject_cast<QHBoxLayout *>(column->itemAt(0)->layout());
        QVERIFY(titleRow);
        QCOMPARE(titleRow->count(), 2);
        QCOMPARE(titleRow->itemAt(0)->widget(), child<QLabel>("titleLabel"));
        QVERIFY(titleRow->itemAt(1)->spacerItem());

        QCOMPARE(column->itemAt(1)->widget(), child<QLabel>("aboutLabel"));
        QVERIFY(column->itemAt(2)->spacerItem());
        QCOMPARE(column->stretch(2), 1);
        QCOMPARE(column->itemAt(3)->widget(), child<QLabel>("pictureLabel"));
        QCOMPARE(column->itemAt(4)->widget(), child<QProgressBar>("progressBar"));

        auto *bottomRow = qobject_cast<QHBoxLayout *>(column->itemAt(5)->layout());
        QVERIFY(bottomRow);
        QCOMPARE(bottomRow->count(), 3);
        QCOMPARE(bottomRow->itemAt(0)->widget(), child<QLabel>("statusLabel"));
        QVERIFY(bottomRow->itemAt(1)->spacerItem());
        QCOMPARE(bottomRow->stretch(1), 1);
        QCOMPARE(bottomRow->itemAt(2)->widget(), child<QPushButton>("closeButton"));
        QCOMPARE(bottomRow->itemAt(2)->alignment(), Qt::AlignRight);
    }

    // As a user sees it: one below the other, the button in the right corner.
    void widgetsAreSeenInTheirOrder()
    {
        savePicture(picture());
        launch();
        m_launcher->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_launcher.get()));
        const auto top = [this](const char *name) { return child<QWidget>(name)->geometry().top(); };
        const auto bottom = [this](const char *name) { return child<QWidget>(name)->geometry().bottom(); };
        QVERIFY(bottom("titleLabel") < top("aboutLabel"));
        QVERIFY(bottom("aboutLabel") < top("pictureLabel"));
        QVERIFY(bottom("pictureLabel") < top("progressBar"));
        QVERIFY(bottom("progressBar") < top("statusLabel"));
        const QRect button = child<QWidget>("closeButton")->geometry();
        QVERIFY(button.top() > bottom("progressBar"));
        QVERIFY(button.left() > m_launcher->width() / 2);
        QVERIFY(child<QWidget>("progressBar")->height() <= 8);
    }

    void progressAndStatusAreShown()
    {
        launch();
        m_launcher->setProgress(50);
        m_launcher->setStatus("Parsing <b>Data</b>");
        QCOMPARE(child<QProgressBar>("progressBar")->value(), 50);
        QCOMPARE(child<QLabel>("statusLabel")->text(), QString("Parsing <b>Data</b>"));
    }

    void closeHidesTheDialogAndKeepsIt()
    {
        launch();
        m_launcher->show();
        auto *button = child<QPushButton>("closeButton");
        QSignalSpy clicked(button, &QPushButton::clicked);
        const QPointer<Launcher> watched(m_launcher.get());
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(clicked.size(), 1);
        QVERIFY(watched);
        QVERIFY(!m_launcher->isVisible());
    }

    // ---- the picture

    void pictureIsScaledFastWithoutItsAspectRatio()
    {
        savePicture(picture());
        launch();
        QCOMPARE(shownPicture().size(), QSize(480, 360));
        const QImage image = shownPicture().toImage().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(image, picture().scaled(480, 360, Qt::IgnoreAspectRatio, Qt::FastTransformation));
        // Three columns and two rows of pure colours: nothing is blended.
        for (int y = 0; y < 360; ++y)
            for (int x = 0; x < 480; ++x)
                QCOMPARE(image.pixel(x, y), picture().pixel(x / 160, y / 180));
    }

    void aLargePictureIsScaledDownFast()
    {
        QImage large(961, 1001, QImage::Format_RGB32);
        for (int y = 0; y < large.height(); ++y)
            for (int x = 0; x < large.width(); ++x)
                large.setPixel(x, y, (x + y) % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
        savePicture(large);
        launch();
        QCOMPARE(shownPicture().toImage().convertToFormat(QImage::Format_RGB32),
                 large.scaled(480, 360, Qt::IgnoreAspectRatio, Qt::FastTransformation));
    }

    void thePictureOfTheProductIsShown()
    {
        m_host->dataFolder = QStringLiteral(LORVA_SOURCE_DIR "/icons");
        launch();
        QCOMPARE(shownPicture().size(), QSize(480, 360));
    }

    void aMissingPictureGivesAnEmptyLabel_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("empty file") << QByteArray("");
        QTest::newRow("damaged") << QByteArray("no picture at all");
    }

    void aMissingPictureGivesAnEmptyLabel()
    {
        QFETCH(QByteArray, content);
        if (!content.isNull())
            files::write(picturePath(), content);
        launch();
        QVERIFY(shownPicture().isNull());
        QVERIFY(child<QLabel>("pictureLabel")->text().isEmpty());
        QVERIFY(m_asker.boxes.isEmpty());
        QVERIFY(m_host->errors.isEmpty());
    }

    // ---- what its constructor prepares

    void screenFactorsAreStored()
    {
        QCOMPARE(m_data->project.halfDotsPerInch, 0.0);
        launch();
        QCOMPARE(m_launcher->logicalDpiX(), 97);
        QCOMPARE(m_data->project.halfDotsPerInch, 48.5);
        QCOMPARE(m_data->project.halfDotsPerInch, static_cast<double>(m_launcher->logicalDpiX()) / 2);
        QCOMPARE(m_data->project.doubleDotsPerInch, static_cast<double>(2 * m_launcher->logicalDpiX()));
    }

    void sharedListsAreFilled()
    {
        launch();
        QCOMPARE(m_data->project.groupNames, curveGroupNames());
        QCOMPARE(m_data->project.zoneTypes, zoneTypeNames());
        QVERIFY(!m_data->project.groupNames.isEmpty());
        QVERIFY(!m_data->project.zoneTypes.isEmpty());
    }

    void pathsOfTheLaunchAreSet()
    {
        launch();
        QCOMPARE(m_data->project.surveyName, QString("Survey"));
        QCOMPARE(m_data->project.projectFolder, m_host->survey + "/WLC");
        QCOMPARE(m_data->project.setupDataFolder, m_host->dataFolder);
        QCOMPARE(m_data->project.iconFolder, m_host->dataFolder + "/icons.Default/");
    }

    void theProjectIsMadeAndSeeded()
    {
        launch();
        const QString wlc = m_host->survey + "/WLC";
        QCOMPARE(files::read(wlc + "/CurveGroups/Rock Strength.txt"), QByteArray("UCS_log"));
        QCOMPARE(QDir(wlc + "/CurveGroups").entryList(QDir::Files).size(), 21);
        for (const char *name : {"Default", "Simple"})
            QCOMPARE(QDir(wlc + "/Templates/Global/" + name).entryList(QDir::Files).size(), 4);
        QVERIFY(QDir(wlc + "/DefaultLogs").isEmpty()); // the pass comes later
    }

    void templateNamesAreEmptyOnTheFirstLaunchAndThereOnTheSecond()
    {
        m_data->project.globalTemplateNames = QStringList{"From another survey"};
        launch();
        QVERIFY(m_data->project.globalTemplateNames.isEmpty());
        m_launcher.reset();
        m_data = std::make_unique<ProjectData>(*m_host, m_asker);
        launch();
        QStringList names = m_data->project.globalTemplateNames;
        names.sort();
        QCOMPARE(names, (QStringList{"Default", "Simple"}));
    }

    void wellsAreReadBeforeTheProjectFolderIsMadeAndAfterTheListsAreFilled()
    {
        int calls = 0;
        bool hasFolder = true;
        bool hasLists = false;
        m_host->onList = [&] {
            ++calls;
            hasFolder = QFileInfo::exists(m_host->survey + "/WLC");
            hasLists = !m_data->project.groupNames.isEmpty() && !m_data->project.zoneTypes.isEmpty();
        };
        host::WellHeader header;
        header.name = "Well A";
        m_host->addWell(header);
        launch();
        QCOMPARE(calls, 1);
        QVERIFY(!hasFolder);
        QVERIFY(hasLists);
        QVERIFY(QFileInfo::exists(m_host->survey + "/WLC"));
        QCOMPARE(m_data->catalogue.wellNames(), QStringList{"Well A"});
    }

    void anUnreadableWellIsWarnedOfDuringTheConstruction()
    {
        host::WellHeader header;
        header.name = "Broken";
        m_host->find(m_host->addWell(header))->isUnreadable = true;
        launch();
        QCOMPARE(m_asker.boxes.size(), 1);
        QCOMPARE(m_asker.boxes.first().title, QString("Reading Wells Data"));
        QVERIFY(QFileInfo::exists(m_host->survey + "/WLC/CurveGroups/Others.txt"));
    }

    void aSurveyThatCannotBeWrittenIsLaunchedInSilence()
    {
        files::write(m_host->survey + "/WLC", "in the way");
        launch();
        QVERIFY(m_asker.boxes.isEmpty());
        QVERIFY(m_host->errors.isEmpty());
        QCOMPARE(m_data->project.projectFolder, m_host->survey + "/WLC");
    }

    // ---- links that lead out of the survey

    void linksOutOfTheSurveyAreToldOnce()
    {
        launch();
        QVERIFY(m_asker.boxes.isEmpty());
        const QString wlc = m_host->survey + "/WLC";
        QVERIFY(QDir().mkpath(m_folder->filePath("outside")));
        QVERIFY(QDir().mkpath(wlc + "/Templates/W/Own"));
        QVERIFY(QFile::link(m_folder->filePath("outside"), wlc + "/Templates/W/Linked"));
        QVERIFY(QFile::link(m_folder->filePath("not mounted"), wlc + "/DefaultLogs/W.txt"));
        QVERIFY(QFile::link(wlc + "/Templates/W/Own", wlc + "/Templates/W/Inside"));
        for (int launches = 1; launches <= 2; ++launches) {
            relaunch();
            QCOMPARE(m_asker.boxes.size(), launches);
            const base::Box box = m_asker.boxes.last();
            QCOMPARE(box.icon, base::BoxIcon::Warning);
            QCOMPARE(box.title, QString("LORVA Launcher"));
            QCOMPARE(box.text,
                     QString("These links lead out of the survey, or nowhere. Nothing is read, written or removed "
                             "behind them:\n%1/DefaultLogs/W.txt\n%1/Templates/W/Linked")
                         .arg(wlc));
        }
    }

    void manyLinksFillNoScreen()
    {
        launch();
        const auto link = [this](int i) {
            QVERIFY(QFile::link("/nowhere", m_host->survey + QString("/WLC/link%1").arg(i)));
        };
        for (int i = 0; i < 10; ++i)
            link(i);
        relaunch();
        QVERIFY(m_asker.boxes.takeFirst().text.endsWith("/link9"));
        for (int i = 10; i < 13; ++i)
            link(i);
        relaunch();
        QCOMPARE(m_asker.boxes.size(), 1);
        QCOMPARE(m_asker.boxes.first().text.count('\n'), 11);
        QVERIFY(m_asker.boxes.first().text.endsWith("\nand 3 more"));
    }

    void aLaunchTouchesNothingBehindALink_data()
    {
        QTest::addColumn<QString>("folder");
        for (const char *folder :
             {"", "/Templates", "/Templates/Global", "/Correlations", "/DefaultLogs", "/CurveGroups", "/Templates/A"})
            QTest::addRow("WLC%s", folder) << QString("/WLC%1").arg(folder);
    }

    void aLaunchTouchesNothingBehindALink()
    {
        QFETCH(QString, folder);
        host::WellHeader header;
        header.name = "A";
        MemoryHost::Well *well = m_host->find(m_host->addWell(header));
        well->logs.append({"GR", "gapi", {1, 2}, {3, 4}});
        launch();
        const QString link = m_host->survey + folder;
        const QString outside = m_folder->filePath("outside");
        files::write(outside + "/precious.txt", "precious");
        files::write(outside + "/.lorva-abc123", "theirs");
        files::write(outside + "/.lorva-swap-abc123/new/Track_1.txt", "theirs");
        QDir(link).removeRecursively();
        QVERIFY(QFile::link(outside, link));
        const auto before = files::snapshot(outside);
        relaunch();
        CurveGroupTable::instance().clear();
        runDefaultLogsPass(*m_data);
        CurveGroupTable::instance().clear();
        QCOMPARE(files::snapshot(outside), before);
        QCOMPARE(QFileInfo(link).symLinkTarget(), outside);
        QCOMPARE(m_asker.boxes.size(), 1);
        QVERIFY(m_asker.boxes.first().text.endsWith('\n' + link));
    }

private:
    void relaunch()
    {
        m_launcher.reset();
        m_data = std::make_unique<ProjectData>(*m_host, m_asker);
        launch();
    }

    void launch(QWidget *parent = nullptr) { m_launcher = std::make_unique<Launcher>(*m_data, parent); }

    template<class Widget>
    Widget *child(const char *name)
    {
        auto *widget = m_launcher->findChild<Widget *>(name);
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }

    QPixmap shownPicture() { return child<QLabel>("pictureLabel")->pixmap(Qt::ReturnByValue); }
    QString picturePath() const { return m_host->dataFolder + "/icons.Default/LORVA_wlc.png"; }
    void savePicture(const QImage &image) { QVERIFY(image.save(picturePath())); }

    static QImage picture()
    {
        QImage image(3, 2, QImage::Format_RGB32);
        const QRgb colors[] = {qRgb(255, 0, 0), qRgb(0, 255, 0),   qRgb(0, 0, 255),
                               qRgb(0, 0, 0),   qRgb(255, 255, 0), qRgb(255, 255, 255)};
        for (int i = 0; i < 6; ++i)
            image.setPixel(i % 3, i / 3, colors[i]);
        return image;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<WatchfulHost> m_host;
    ScriptedAsker m_asker;
    std::unique_ptr<ProjectData> m_data;
    std::unique_ptr<Launcher> m_launcher;
};

LORVA_TEST_MAIN(tst_launcher)
#include "tst_launcher.moc"
