#include "displayfixture.h"
#include "support/testmain.h"

#include <QPalette>

namespace {

QByteArray curveLine(const char *curve)
{
    return QByteArray("Gamma | ") + curve + " | 0 | 150 | #0000ff|0,#ffffff|0,#ffffff|None | None | 0 | 0\n";
}
const QByteArray depthTrack = "Depth\nDepth | MD | 0 | 0 | 0,0,0 | 0,0,0 | 0,0,0 | 0 | 0 | 0 | 0\n";

struct LookFixture : DisplayFixture
{
    LookFixture()
    {
        addLog(QStringLiteral("GR"), {0, 500, 1000, 1500}, {75, 75, 75, 75});
        addLog(QStringLiteral("CALI"), {0, 500, 1000, 1500}, {20, 40, 20, 40});
        addTrack(1, "Linear\n" + curveLine("GR") + curveLine("CALI"));
        addTrack(2, depthTrack);
    }
};

class PaletteOfApplication
{
public:
    explicit PaletteOfApplication(const QPalette &palette)
        : m_before(QApplication::palette())
    {
        QApplication::setPalette(palette);
    }
    ~PaletteOfApplication() { QApplication::setPalette(m_before); }

private:
    QPalette m_before;
};

} // namespace

/// What a display looks like beyond its curves: colours, sizes and texts of views and headers.
class tst_displaylook : public QObject
{
    Q_OBJECT

private slots:
    void whitePaperWhateverThePalette();
};

void tst_displaylook::whitePaperWhateverThePalette()
{
    const auto views = [] {
        LookFixture f;
        f.addMarker(QStringLiteral("Top"), 20);
        f.show();
        f.showMarker(QStringLiteral("Top"));
        QCoreApplication::processEvents();
        return QVector<QImage>{f.display->logView()->viewport()->grab().toImage(),
                               f.display->headerView()->viewport()->grab().toImage()};
    };
    const QVector<QImage> light = views();
    const PaletteOfApplication dark(QPalette(Qt::white, QColor(40, 40, 40), Qt::gray, Qt::black, Qt::darkGray,
                                             Qt::white, Qt::white, Qt::black, QColor(30, 30, 30)));
    QCOMPARE(views(), light);
    for (const QImage &view : light) {
        QCOMPARE(view.pixelColor(2, view.height() - 3), QColor(Qt::white));
        QCOMPARE(view.pixelColor(view.width() - 3, 2), QColor(Qt::white));
    }
}

LORVA_TEST_MAIN(tst_displaylook)
#include "tst_displaylook.moc"
