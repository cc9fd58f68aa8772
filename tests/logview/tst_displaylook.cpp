#include "displayfixture.h"
#include "logview/displaypicture.h"
#include "logview/geometry/displaystyle.h"
#include "logview/trackitempropertywidget.h"
#include "support/testmain.h"

#include <QPalette>
#include <QScrollBar>

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
    QScrollBar *headerBar() const { return display->headerView()->verticalScrollBar(); }
    void deleteCurve(int trackNumber, int number) const
    {
        scene()->clearSelection();
        curve(trackNumber, number)->setSelected(true);
        scene()->deleteCurve();
    }
    void setTrackType(int trackNumber, const char *type) const
    {
        QMetaObject::invokeMethod(panelOf(track(trackNumber)), "trackTypeChanged",
                                  Q_ARG(QString, QString::fromLatin1(type)));
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
    void theHeaderPaneIsAsHighAsItsHeaders();
    void headersThatDoNotFitScroll();
    void hiddenHeadersDoNotCount();
    void eachHeaderHasAFrame();
    void bordersRunDownToTheEndOfThePane();
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

void tst_displaylook::theHeaderPaneIsAsHighAsItsHeaders()
{
    LookFixture f;
    f.show();
    // Banner, two headers, and half of a border on both ends.
    const int needed = 1 + 20 + 2 * 45 + 1;
    for (const int height : {400, 700, 1500}) {
        f.display->resize(800, height);
        QTRY_COMPARE(f.display->headerView()->viewport()->height(), needed);
        QCOMPARE(f.headerBar()->maximum(), 0);
        QCOMPARE(f.headerBar()->minimum(), 0);
        QCOMPARE(f.display->headerView()->mapToScene(0, 0).y(), -1.0);
    }
    f.deleteCurve(0, 1);
    QTRY_COMPARE(f.display->headerView()->viewport()->height(), needed - 45);
    f.display->deleteTrack(1);
    f.display->deleteTrack(0);
    QTRY_COMPARE(f.display->headerView()->viewport()->height(), 22); // the banner alone
}

void tst_displaylook::headersThatDoNotFitScroll()
{
    LookFixture f;
    QByteArray lines;
    for (int i = 0; i < 20; ++i)
        lines += curveLine("GR");
    f.addTrack(1, "Linear\n" + lines);
    f.show();
    const int needed = 22 + 20 * 45;
    f.display->resize(800, 500);
    const QGraphicsView *headers = f.display->headerView();
    const QGraphicsView *log = f.display->logView();
    QTRY_VERIFY(headers->height() >= 200 && log->height() >= 200); // both can be used

    QCOMPARE(f.headerBar()->maximum(), needed - 1 - headers->viewport()->height());
    f.display->resize(800, 1300);
    QTRY_COMPARE(headers->viewport()->height(), needed);
    QCOMPARE(f.headerBar()->maximum(), 0);
}

void tst_displaylook::hiddenHeadersDoNotCount()
{
    LookFixture f;
    f.show();
    const int logHeight = static_cast<int>(f.scene()->sceneRect().height());
    const auto pictureHeight = [&f] {
        return DisplayPicture(*f.display->headerView()->scene(), *f.scene()).size().height();
    };
    QCOMPARE(pictureHeight(), logHeight + 22 + 90);
    f.setTrackType(0, "Depth");
    QCOMPARE(pictureHeight(), logHeight + 22 + 45);
    QTRY_COMPARE(f.display->headerView()->viewport()->height(), 22 + 45);
    f.setTrackType(0, "Logrithmic");
    QCOMPARE(pictureHeight(), logHeight + 22 + 90);
    QTRY_COMPARE(f.display->headerView()->viewport()->height(), 22 + 90);
}

void tst_displaylook::eachHeaderHasAFrame()
{
    LookFixture f;
    f.addTrack(1, "Linear\n" + curveLine("GR") + curveLine("CALI") + curveLine("GR"));
    f.show();
    const QImage headers = f.picture(f.display->headerView()->scene(), QRect(0, 0, 260, 160));
    for (int frame = 0; frame < 3; ++frame) {
        const int top = 20 + 45 * frame;
        for (const int x : {1, 60, 150, 191})
            QCOMPARE(headers.pixelColor(x, top + 45), QColor(Qt::black));
        QCOMPARE(headers.pixelColor(3, top + 44), QColor(Qt::white));
        QCOMPARE(headers.pixelColor(3, top + 30), QColor(Qt::white));
    }
    f.track(0)->setSelected(true);
    const QImage selected = f.picture(f.display->headerView()->scene(), QRect(0, 0, 260, 160));
    for (int frame = 0; frame < 3; ++frame)
        QCOMPARE(selected.pixelColor(3, 20 + 45 * frame + 30), logview::highlightColor());
}

void tst_displaylook::bordersRunDownToTheEndOfThePane()
{
    LookFixture f;
    f.addTrack(3, "Linear\n");
    f.show();
    const auto column = [&f](int x) { return f.picture(f.display->headerView()->scene(), QRect(x, 20, 1, 91)); };
    for (const int x : {0, 192, 240, 432})
        for (int y = 0; y < 91; ++y)
            QCOMPARE(column(x).pixelColor(0, y), QColor(Qt::black));
    QCOMPARE(column(200).pixelColor(0, 80), QColor(Qt::white)); // no frame without a header
    f.deleteCurve(0, 1);
    const QImage after = f.picture(f.display->headerView()->scene(), QRect(192, 20, 1, 91));
    QCOMPARE(after.pixelColor(0, 45), QColor(Qt::black));
    QCOMPARE(after.pixelColor(0, 48), QColor(Qt::white));
}

LORVA_TEST_MAIN(tst_displaylook)
#include "tst_displaylook.moc"
