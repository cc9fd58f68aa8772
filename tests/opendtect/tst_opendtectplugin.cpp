// The installed plug-in: what it exports, and what the host's own loader makes of it.

#include "odprogram.h"
#include "support/boxdriver.h"
#include "support/files.h"

#include <QDir>
#include <QLibrary>
#include <QMenu>
#include <QProcess>
#include <QRegularExpression>

#include <memory>

#include <moddepmgr.h>
#include <plugins.h>
#include <uimain.h>
#include <uimenu.h>
#include <uiodmain.h>
#include <uiodmenumgr.h>

namespace {

std::unique_ptr<uiODMain> hostWindow;

} // namespace

// The host registers its window in its own main function, which also runs it to its end; this program's function of
// that name stands before the library's.
Q_DECL_EXPORT uiODMain *ODMainWin()
{
    return hostWindow.get();
}

class TestOpendTectPlugin : public QObject
{
    Q_OBJECT

private slots:
    void exportsItsTwoFunctionsAndNothingElse()
    {
        QProcess nm;
        nm.start("nm", {"--dynamic", "--defined-only", "--format=posix", library()});
        QVERIFY(nm.waitForFinished());
        QStringList names;
        for (const QString &line : QString::fromLatin1(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts))
            names.append(line.section(' ', 0, 0));
        names.sort();
        QCOMPARE(names, (QStringList{"GetLORVAOSPluginInfo", "InitLORVAOSPlugin"}));
    }

    void theHostFindsItByItsLoadFile()
    {
        QCOMPARE(files::read(QStringLiteral(LORVA_OPENDTECT_SOFTWARE "/plugins/lux64/od_main.LORVAOS.alo")),
                 QByteArray("LORVAOS\n"));
        QVERIFY(QFile::exists(library()));
    }

    void theManualIsInstalledWithItsPictures()
    {
        const QDir manual(QStringLiteral(LORVA_OPENDTECT_SOFTWARE "/doc/LORVAOS/manual"));
        const QRegularExpression link(R"(\]\(([^)#:]+))"); // no other page's headings, no addresses
        int pictures = 0;
        for (const QString &page : manual.entryList({"*.md"})) {
            auto links = link.globalMatch(QString::fromUtf8(files::read(manual.filePath(page))));
            while (links.hasNext()) {
                const QString target = links.next().captured(1);
                QVERIFY2(QFile::exists(manual.filePath(target)), qPrintable(page + ": " + target));
                pictures += target.endsWith(".png") ? 1 : 0;
            }
        }
        QVERIFY(pictures > 3);
    }

    void theInfoRecordIsAlwaysTheSame()
    {
        QLibrary plugin(library());
        const auto read = reinterpret_cast<PluginInfo *(*)()>(plugin.resolve("GetLORVAOSPluginInfo"));
        QVERIFY(read);
        const PluginInfo &info = *read();
        QCOMPARE(info.dispname_, "LORVA plugin Open source");
        QCOMPARE(info.productname_, "Hesko");
        QCOMPARE(info.creator_, "KUB-TLM");
        QCOMPARE(info.version_, "0.0");
        QCOMPARE(info.text_, "HESKO Log Interpretation Software.");
        QCOMPARE(static_cast<int>(info.lictype_), 0);
        QCOMPARE(read(), &info);
        QVERIFY(plugin.unload());
    }

    void withoutTheHostsWindowInitFails()
    {
        QLibrary plugin(library());
        const auto init = reinterpret_cast<const char *(*)(int, char **)>(plugin.resolve("InitLORVAOSPlugin"));
        QVERIFY(init);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(init(0, nullptr), "Cannot instantiate LORVA OS plugin");
        QVERIFY(plugin.unload());
    }

    void theLoaderPassesTheFailureOn()
    {
        BoxDriver boxes; // the host may show the text in a box
        QVERIFY(!PIM().load(library().toUtf8().constData()));
        const PluginManager::Data *data = PIM().findData("libLORVAOS.so");
        QVERIFY(!data || !data->isloaded_);
        QVERIFY(!isInMemory());
    }

    void theLoaderAcceptsItOnce()
    {
        OD::ModDeps().ensureLoaded("AllNonUi");
        hostWindow = std::make_unique<uiODMain>(uiMain::theMain());
        QCOMPARE(ourActions(), 0);
        const QByteArray path = library().toUtf8();
        QVERIFY(PIM().load(path.constData()));
        QVERIFY(PIM().findData("libLORVAOS.so")->isloaded_);
        QVERIFY(!PIM().load(path.constData())); // loaded already
        QVERIFY(PIM().findData("libLORVAOS.so")->isloaded_);
    }

    void itsActionEndsTheUtilitiesMenu()
    {
        QCOMPARE(utilities().last()->text(), QString("&LORVA OS 0.0"));
        QCOMPARE(ourActions(), 1);
    }

    void theLoaderReadsTheInfoRecord()
    {
        const PluginManager::Data *loaded = PIM().findData("libLORVAOS.so");
        QVERIFY(loaded);
        QCOMPARE(loaded->info_->creator_, "KUB-TLM");
        QCOMPARE(PIM().userName("libLORVAOS.so"), "LORVA plugin Open source");
    }

    void aSecondInitDoesNothing()
    {
        QLibrary plugin(library());
        const auto init = reinterpret_cast<const char *(*)(int, char **)>(plugin.resolve("InitLORVAOSPlugin"));
        QVERIFY(init);
        QVERIFY(!init(0, nullptr));
        QCOMPARE(ourActions(), 1);
        QVERIFY(plugin.unload());
    }

    void theHostMayUnloadItAndLoadItAgain()
    {
        QVERIFY(isInMemory());
        QVERIFY(PIM().unload("libLORVAOS.so"));
        QVERIFY(!isInMemory());
        QCOMPARE(ourActions(), 0);
        QVERIFY(PIM().load(library().toUtf8().constData()));
        QVERIFY(isInMemory());
        QCOMPARE(ourActions(), 1);
        QVERIFY(PIM().unload("libLORVAOS.so"));
    }

    void cleanupTestCase() { hostWindow.reset(); }

private:
    static QList<QAction *> utilities() { return hostWindow->menuMgr().utilMnu()->getQMenu()->actions(); }
    static int ourActions()
    {
        int count = 0;
        for (const QAction *action : utilities())
            count += action->text().contains("LORVA") ? 1 : 0;
        return count;
    }
    static bool isInMemory() { return files::read("/proc/self/maps").contains("libLORVAOS.so"); }
    static QString library() { return QStringLiteral(LORVA_OPENDTECT_PROGRAMS "/libLORVAOS.so"); }
};

OD_TEST_MAIN(TestOpendTectPlugin)
#include "tst_opendtectplugin.moc"
