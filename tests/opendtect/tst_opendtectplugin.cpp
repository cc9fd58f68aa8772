// The installed plug-in: what it exports, and what the host's own loader makes of it.

#include "odprogram.h"
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

    void theLoaderAcceptsItOnce()
    {
        const QByteArray path = library().toUtf8();
        QVERIFY(PIM().load(path.constData()));
        QVERIFY(PIM().findData("libLORVAOS.so")->isloaded_);
        QVERIFY(!PIM().load(path.constData())); // loaded already
        QVERIFY(PIM().findData("libLORVAOS.so")->isloaded_);
    }

    void theLoaderReadsTheInfoRecord()
    {
        const PluginManager::Data *loaded = PIM().findData("libLORVAOS.so");
        QVERIFY(loaded);
        const PluginInfo &info = *loaded->info_;
        QCOMPARE(info.dispname_, "LORVA plugin Open source");
        QCOMPARE(info.productname_, "Hesko");
        QCOMPARE(info.creator_, "KUB-TLM");
        QCOMPARE(info.version_, "0.0");
        QCOMPARE(info.text_, "HESKO Log Interpretation Software.");
        QCOMPARE(static_cast<int>(info.lictype_), 0);
        QCOMPARE(PIM().userName("libLORVAOS.so"), "LORVA plugin Open source");
    }

    void aSecondInitDoesNothing()
    {
        QLibrary plugin(library());
        const auto init = reinterpret_cast<const char *(*)(int, char **)>(plugin.resolve("InitLORVAOSPlugin"));
        QVERIFY(init);
        QVERIFY(!init(0, nullptr));
        QVERIFY(plugin.unload());
    }

    void theHostMayUnloadItAndLoadItAgain()
    {
        QVERIFY(isInMemory());
        QVERIFY(PIM().unload("libLORVAOS.so"));
        QVERIFY(!isInMemory());
        QVERIFY(PIM().load(library().toUtf8().constData()));
        QVERIFY(isInMemory());
    }

private:
    static bool isInMemory() { return files::read("/proc/self/maps").contains("libLORVAOS.so"); }
    static QString library() { return QStringLiteral(LORVA_OPENDTECT_PROGRAMS "/libLORVAOS.so"); }
};

OD_TEST_MAIN(TestOpendTectPlugin)
#include "tst_opendtectplugin.moc"
