#include "support/boxdriver.h"
#include "support/testmain.h"
#include "workbench/hostaccess.h"
#include "workbenchcontract.h"

#include <QFileInfo>

class tst_workbenchhost : public WorkbenchContract
{
    Q_OBJECT

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

    void theMenuOfWellsTakesActionsToo()
    {
        QCOMPARE(m_host->appendWellsAction({"Nowhere", "", [] {}}), 0);
        QMenu wells;
        m_host->setWindow(m_window.get(), m_menu, &wells);
        int clicks = 0;
        const int other = m_host->appendAction({"Other", "", [] {}});
        const int id = m_host->appendWellsAction({"Paper", "", [&clicks] { ++clicks; }});
        QVERIFY(id != 0 && id != other);
        QCOMPARE(wells.actions().size(), 1);
        QCOMPARE(wells.actions().first()->text(), QString("Paper"));
        wells.actions().first()->trigger();
        QCOMPARE(clicks, 1);
        m_host->removeAction(id);
        QVERIFY(wells.isEmpty());
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
};

LORVA_TEST_MAIN(tst_workbenchhost)
#include "tst_workbenchhost.moc"
