// The pictures that the code and its texts name are there and have the size they are drawn for.

#include "support/testmain.h"
#include "workbench/workbenchhost.h"

#include <QDir>
#include <QImage>

namespace {

const QString dataFolder = QStringLiteral(LORVA_BINARY_DIR "/share/lorva");
constexpr int colourBarCount = 12;

QImage icon(const QString &name, const char *ending)
{
    return QImage(dataFolder + QStringLiteral("/icons.Default/") + name + QLatin1String(ending));
}

} // namespace

class TestHostResources : public QObject
{
    Q_OBJECT

private slots:
    void iconsInBothSizes_data();
    void iconsInBothSizes();
    void thePictureOfTheLauncher();
    void aMissingIconIsNull();
    void colourBarsUnderBothNames();
    void documentation();
};

void TestHostResources::iconsInBothSizes_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"about_wlc", "add_wlc", "sub_wlc", "display_wlc", "exit_wlc", "export_wlc", "import_wlc", "help_wlc",
          "syncdb_wlc", "defineTemplate_wlc", "editTemplate_wlc", "minus", "plus", "multisimplewell", "well"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestHostResources::iconsInBothSizes()
{
    QFETCH(QString, name);
    QCOMPARE(icon(name, ".png").size(), QSize(32, 32));
    QCOMPARE(icon(name, ".small.png").size(), QSize(16, 16));
    const workbench::WorkbenchHost host(dataFolder);
    for (const QString &asked : {name, name + QStringLiteral(".png")}) {
        const QIcon found = host.icon(asked);
        QCOMPARE(found.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
                 icon(name, ".small.png").convertToFormat(QImage::Format_ARGB32_Premultiplied));
        QCOMPARE(found.pixmap(32, 32).size(), QSize(32, 32));
        QCOMPARE(host.icon(asked).cacheKey(), found.cacheKey()); // drawn once, remembered by Qt once
    }
}

// The launcher stretches it to 480 x 360 whatever it is: anything but 4 to 3 would look squeezed.
void TestHostResources::thePictureOfTheLauncher()
{
    const QImage picture = icon(QStringLiteral("LORVA_wlc"), ".png");
    QVERIFY(picture.width() >= 480);
    QCOMPARE(picture.width() * 3, picture.height() * 4);
    QCOMPARE(icon(QStringLiteral("LORVA_wlc"), ".small.png").size(), QSize(16, 16));
}

void TestHostResources::aMissingIconIsNull()
{
    QVERIFY(workbench::WorkbenchHost(dataFolder).icon(QStringLiteral("none.png")).isNull());
}

void TestHostResources::colourBarsUnderBothNames()
{
    for (int number = 1; number <= colourBarCount; ++number) {
        const QString file = QStringLiteral("/cb_%1.png").arg(number);
        const QImage first(dataFolder + QStringLiteral("/ColorBars") + file);
        const QImage second(dataFolder + QStringLiteral("/Colorbars") + file);
        QVERIFY2(!first.isNull() && !second.isNull(), qPrintable(file));
        QCOMPARE(first, second);
    }
}

void TestHostResources::documentation()
{
    const workbench::WorkbenchHost host(dataFolder);
    QVERIFY(QFileInfo(host.documentationFolder()).isDir());
    QVERIFY(!QDir(host.documentationFolder()).isEmpty());
}

LORVA_TEST_MAIN(TestHostResources)
#include "tst_hostresources.moc"
