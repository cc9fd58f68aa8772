// The adapter keeps what a host must keep, on the host's own libraries, in a window and a menu of the host's kind.

#include "host/hostcontract.h"
#include "host/opendtect/opendtecthost.h"
#include "odprogram.h"
#include "odsurvey.h"
#include "support/boxdriver.h"
#include "support/files.h"

#include <QMenu>

#include <ioman.h>
#include <uimainwin.h>
#include <uimenu.h>
#include <uistring.h>
#include <welldata.h>
#include <wellman.h>

class tst_opendtecthost : public HostContract
{
    Q_OBJECT

protected:
    void makeHost() override
    {
        m_survey = odsurvey::open(nextName());
        m_window = std::make_unique<uiMainWin>(nullptr, toUiString("Host"), 0, true);
        m_menu = std::make_unique<uiMenu>(toUiString("Utilities"));
        m_host = std::make_unique<opendtect::OpendTectHost>(m_window.get(), m_menu.get());
    }
    void destroyHost() override
    {
        m_host.reset();
        m_menu.reset();
        m_window.reset();
    }
    host::Host &host() override { return *m_host; }
    QString addWell(const host::WellHeader &header) override
    {
        odsurvey::Well well;
        well.header = header;
        const double kb = static_cast<double>(header.kbElevation);
        well.track = {{header.x, header.y, -kb, 0}, {header.x, header.y, header.totalDepth - kb, header.totalDepth}};
        const QString key = odsurvey::add(well);
        giveName(key, header.name);
        // The host knows the type of a well in its memory only.
        if (header.typeCode != host::NoWellType)
            Well::MGR().get(MultiID(key.toLatin1().constData()))->info().welltype_ =
                static_cast<Well::Info::WellType>(header.typeCode);
        return key;
    }
    void openOtherSurvey() override { m_survey = odsurvey::open(nextName()); }
    QStringList menuTexts() override
    {
        QStringList texts;
        for (const QAction *action : m_menu->getQMenu()->actions())
            texts.append(action->text());
        return texts;
    }
    void click(const QString &menuText) override
    {
        m_menu->getQMenu()->actions().at(menuTexts().indexOf(menuText))->trigger();
    }
    void damageList() override { files::write(m_survey + "/WellInfo/.omf", "damaged"); }

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

private:
    // The host's functions number a second well of one name; its files may hold two all the same.
    void giveName(const QString &key, const QString &name)
    {
        const QString path = m_survey + "/WellInfo/.omf";
        const QByteArray number = key.section('.', 1).toLatin1();
        QByteArrayList lines = files::read(path).split('\n');
        for (QByteArray &line : lines)
            if (line.endsWith(": " + number) && !line.startsWith("ID:"))
                line = name.toUtf8() + ": " + number;
        files::write(path, lines.join('\n'));
        IOM().to(MultiID(key.toLatin1().constData()), true);
    }

    static QString nextName()
    {
        static int number = 0;
        return QStringLiteral("Survey_%1").arg(++number);
    }

    QString m_survey;
    std::unique_ptr<uiMainWin> m_window;
    std::unique_ptr<uiMenu> m_menu;
    std::unique_ptr<opendtect::OpendTectHost> m_host;
};

OD_TEST_MAIN(tst_opendtecthost)
#include "tst_opendtecthost.moc"
