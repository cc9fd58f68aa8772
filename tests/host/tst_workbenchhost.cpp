#include "hostcontract.h"
#include "support/boxdriver.h"
#include "support/files.h"
#include "support/testmain.h"
#include "survey/surveyfolder.h"
#include "workbench/hostaccess.h"
#include "workbench/workbenchhost.h"

#include <QFileInfo>
#include <QMainWindow>
#include <QMenuBar>
#include <QTemporaryDir>

#include <memory>

/// The workbench keeps what a host must keep, on surveys on disk and in a real menu.
class tst_workbenchhost : public HostContract
{
    Q_OBJECT

protected:
    void makeHost() override
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_window = std::make_unique<QMainWindow>();
        m_menu = m_window->menuBar()->addMenu("&Utilities");
        m_menu->addAction("The workbench's own");
        m_host = std::make_unique<workbench::WorkbenchHost>(QStringLiteral(LORVA_SOURCE_DIR "/icons"));
        m_host->setWindow(m_window.get(), m_menu);
        m_host->setSurvey(newSurvey("First"));
    }
    void destroyHost() override
    {
        m_host.reset();
        m_window.reset();
        m_folder.reset();
    }
    host::Host &host() override { return *m_host; }
    QString addWell(const host::WellHeader &header) override
    {
        workbench::WellProperties properties;
        properties.name = header.name;
        properties.x = header.x;
        properties.y = header.y;
        properties.kbElevation = static_cast<double>(header.kbElevation);
        properties.groundElevation = static_cast<double>(header.groundElevation);
        properties.totalDepth = header.totalDepth;
        properties.typeCode = header.typeCode;
        const host::Outcome<QString> key = m_host->store().addWell(properties);
        if (!key.ok())
            qFatal("The test cannot add a well: %s", qUtf8Printable(key.error));
        return key.value;
    }
    void openOtherSurvey() override { m_host->setSurvey(newSurvey("Second")); }
    QStringList menuTexts() override
    {
        QStringList texts;
        for (const QAction *action : m_menu->actions())
            texts.append(action->text());
        return texts;
    }
    void click(const QString &menuText) override { m_menu->actions().at(menuTexts().indexOf(menuText))->trigger(); }
    void damageList() override { files::write(m_host->surveyDirectory() + "/WellInfo/.omf", "damaged"); }

private slots:
    void theHostIsFoundByPluginsAsLongAsItLives()
    {
        QCOMPARE(lorvaWorkbenchHost(), static_cast<host::Host *>(m_host.get()));
        m_host.reset();
        QVERIFY(!lorvaWorkbenchHost());
    }

    void windowAndMenuMayGoBeforeTheHost()
    {
        QCOMPARE(m_host->mainWidget(), m_window.get());
        const int id = m_host->appendAction({"Mine", "well.png", [] {}});
        m_window.reset();
        QVERIFY(!m_host->mainWidget());
        m_host->removeAction(id);
        m_host->appendAction({"Nowhere", "", [] {}}); // no menu, no action, no harm
    }

    void anActionCarriesItsIcon()
    {
        m_host->appendAction({"With", "LORVA_wlc.png", [] {}});
        m_host->appendAction({"Without", "none.png", [] {}});
        QVERIFY(!m_menu->actions().at(1)->icon().isNull());
        QVERIFY(m_menu->actions().at(2)->icon().isNull());
    }

    void smallIconsAreDrawnSmall()
    {
        const QIcon icon = m_host->icon("LORVA_wlc.png");
        const QImage small(QStringLiteral(LORVA_SOURCE_DIR "/icons/icons.Default/LORVA_wlc.small.png"));
        QVERIFY(icon.availableSizes().contains(small.size()));
        QCOMPARE(icon.availableSizes().size(), 2);
    }

    void anErrorIsABoxWithThePlainText()
    {
        BoxDriver driver;
        m_host->showError("Cannot get <b>data</b>");
        QCOMPARE(driver.seen.size(), 1);
        QCOMPARE(driver.seen.first().text, QString("Cannot get <b>data</b>"));
        QCOMPARE(driver.seen.first().icon, QMessageBox::Critical);
        QCOMPARE(driver.seen.first().buttons, QStringList{"OK"});
    }

    void aWellWhoseFileIsGoneHasNoHeader()
    {
        const QString key = addNamed("Gone");
        QVERIFY(QFile::remove(m_host->surveyDirectory() + "/WellInfo/Gone.well"));
        QVERIFY(!m_host->wells().header(key).ok());
        QCOMPARE(listedNames(), QStringList{"Gone"});
    }

private:
    QString newSurvey(const QString &name)
    {
        const QString path = m_folder->filePath("root/" + name);
        workbench::NewSurvey survey;
        survey.name = name;
        const host::Status status = workbench::createSurvey(path, survey);
        if (!status.ok())
            qFatal("The test cannot make a survey: %s", qUtf8Printable(status.error));
        return path;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QMainWindow> m_window;
    QMenu *m_menu = nullptr;
    std::unique_ptr<workbench::WorkbenchHost> m_host;
};

LORVA_TEST_MAIN(tst_workbenchhost)
#include "tst_workbenchhost.moc"
