// The adapter keeps what a host must keep.

#include "opendtectcontract.h"
#include "support/boxdriver.h"

class tst_opendtecthost : public OpendTectContract
{
    Q_OBJECT

private slots:
    void foldersAreThoseOfTheHost()
    {
        const QString software = QStringLiteral(LORVA_OPENDTECT_SOFTWARE);
        QCOMPARE(host().surveyDirectory(), m_survey);
        QCOMPARE(host().setupDataFolder(), software + "/data");
        QCOMPARE(host().documentationFolder(), software + "/doc");
    }

    void colourBarsAreThereInBothSpellings()
    {
        for (const char *folder : {"ColorBars", "Colorbars"})
            QVERIFY2(!QImage(host().setupDataFolder() + '/' + folder + "/cb_1.png").isNull(), folder);
    }

    void theHostsOwnIconsAreKept()
    {
        const QDir own(QStringLiteral(LORVA_OPENDTECT_HOST_DATA "/icons.Default"));
        const QDir installed(host().setupDataFolder() + "/icons.Default");
        const QStringList names = own.entryList(QDir::Files);
        QVERIFY(names.size() > 100);
        for (const QString &name : names)
            QVERIFY2(files::read(installed.filePath(name)) == files::read(own.filePath(name)), qPrintable(name));
        QVERIFY(!host().icon("well.png").isNull());
    }

    void theNewSurveyIsInPlaceWhenItIsAnnounced()
    {
        addNamed("A");
        struct Lister : host::Listener
        {
            explicit Lister(host::Wells &listed)
                : wells(listed)
            {
            }
            void markersChanged(const QString &) override { }
            void surveyChanged() override
            {
                const auto list = wells.list();
                counts.append(list.ok() ? list.value.size() : -1);
            }
            host::Wells &wells;
            QVector<int> counts;
        } lister(wells());
        host().addListener(&lister);
        openOtherSurvey();
        host().removeListener(&lister);
        QCOMPARE(lister.counts, QVector<int>{0});
    }

    void theEndOfTheHostIsTold()
    {
        struct Waiter : host::Listener
        {
            void markersChanged(const QString &) override { }
            void surveyChanged() override { ++changes; }
            void hostClosing() override { ++ends; }
            int changes = 0;
            int ends = 0;
        } waiter;
        host().addListener(&waiter);
        IOM().applicationClosing.trigger();
        host().removeListener(&waiter);
        QCOMPARE(waiter.ends, 1);
        QCOMPARE(waiter.changes, 0);
    }

    void aVanishedSurveyIsAnError()
    {
        const QString key = addNamed("A");
        QVERIFY(QDir(m_survey).removeRecursively());
        QVERIFY(!wells().list().ok());
        QVERIFY(!wells().header(key).ok());
        QVERIFY(!wells().writeMarkers(key, {{"Top", 10, Qt::red}}).ok());
        QCOMPARE(host().surveyDirectory(), m_survey);
    }

    void anErrorIsTheHostsBox()
    {
        BoxDriver driver;
        host().showError("Cannot get data for the selected well");
        QCOMPARE(driver.seen.size(), 1);
        QCOMPARE(driver.seen.first().text, QString("Cannot get data for the selected well"));
        QCOMPARE(driver.seen.first().icon, QMessageBox::Critical);
    }

    void theActionCarriesItsIcon()
    {
        host().appendAction({"With", "LORVA_wlc.png", [] {}});
        host().appendAction({"Without", "no such picture.png", [] {}});
        QVERIFY(!m_menu->getQMenu()->actions().at(0)->icon().isNull());
        QVERIFY(m_menu->getQMenu()->actions().at(1)->icon().isNull());
    }

    void theActionStaysAfterAChangeOfSurvey()
    {
        int clicks = 0;
        host().appendAction({"&LORVA OS 0.0", "LORVA_wlc.png", [&clicks] { ++clicks; }});
        openOtherSurvey();
        QCOMPARE(menuTexts(), QStringList{"&LORVA OS 0.0"});
        click("&LORVA OS 0.0");
        QCOMPARE(clicks, 1);
    }

    void theMenuMayGoBeforeTheHost()
    {
        const int id = host().appendAction({"Mine", "", [] {}});
        m_menu.reset();
        m_window.reset();
        QVERIFY(!host().mainWidget());
        host().removeAction(id);
        QCOMPARE(host().appendAction({"Nowhere", "", [] {}}), 0);
    }

    void anActionTakenOutInItsOwnCallLeavesTheHost()
    {
        int id = 0;
        QPointer<QAction> action;
        bool isThere = false;
        id = host().appendAction({"Once", "", [&] {
                                      host().removeAction(id);
                                      isThere = !action.isNull(); // the host works with it when the call returns
                                  }});
        action = m_menu->getQMenu()->actions().first();
        click("Once");
        QVERIFY(isThere);
        QCoreApplication::processEvents();
        QVERIFY(action.isNull());
        QCOMPARE(m_menu->nrActions(), 0);
    }
};

OD_TEST_MAIN(tst_opendtecthost)
#include "tst_opendtecthost.moc"
