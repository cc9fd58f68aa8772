// The installed plug-in: what it exports, and what the host's own loader makes of it.

#include "odprogram.h"
#include "support/boxdriver.h"
#include "support/files.h"

#include <QLibrary>
#include <QProcess>

#include <plugins.h>

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

    // This program has the host's libraries, but not the main window of the complete host.
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

private:
    static bool isInMemory() { return files::read("/proc/self/maps").contains("libLORVAOS.so"); }
    static QString library() { return QStringLiteral(LORVA_OPENDTECT_PROGRAMS "/libLORVAOS.so"); }
};

OD_TEST_MAIN(TestOpendTectPlugin)
#include "tst_opendtectplugin.moc"
