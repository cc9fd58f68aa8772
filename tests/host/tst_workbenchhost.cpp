#include "support/boxdriver.h"
#include "support/testmain.h"
#include "workbench/hostaccess.h"
#include "workbenchcontract.h"

#include <QApplication>
#include <QDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

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

    void anErrorIsOverTheWindowInUse()
    {
        QWidget plugin(m_window.get(), Qt::Window);
        QVBoxLayout layout(&plugin);
        auto *field = new QLineEdit;
        layout.addWidget(field);
        plugin.show();
        plugin.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&plugin));
        field->setFocus();
        QCOMPARE(parentOfTheError(), &plugin);
        QApplication::setActiveWindow(nullptr); // as for a moment behind a box
        QCOMPARE(parentOfTheError(), &plugin);
        auto dialog = std::make_unique<QDialog>(&plugin);
        (new QLineEdit(dialog.get()))->setFocus();
        dialog->show();
        dialog->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), dialog.get()); // QTest takes a dialog of the active window for active
        QCOMPARE(parentOfTheError(), dialog.get());
        dialog.reset();
        QApplication::setActiveWindow(nullptr);
        QCOMPARE(parentOfTheError(), &plugin);
        plugin.hide();
        QApplication::setActiveWindow(nullptr);
        QCOMPARE(parentOfTheError(), m_window.get());
    }

    void aWellWhoseFileIsGoneHasNoHeader()
    {
        const QString key = addNamed("Gone");
        QVERIFY(QFile::remove(m_host->surveyDirectory() + "/WellInfo/Gone.well"));
        QVERIFY(!m_host->wells().header(key).ok());
        QCOMPARE(listedNames(), QStringList{"Gone"});
    }

private:
    QWidget *parentOfTheError()
    {
        QWidget *parent = nullptr;
        QTimer presser;
        connect(&presser, &QTimer::timeout, [&parent] {
            if (QWidget *box = QApplication::activeModalWidget()) {
                parent = box->parentWidget();
                QTest::keyClick(box, Qt::Key_Return);
            }
        });
        presser.start(1);
        m_host->showError("error");
        return parent;
    }
};

LORVA_TEST_MAIN(tst_workbenchhost)
#include "tst_workbenchhost.moc"
