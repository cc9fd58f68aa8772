#include "logview/displaypicture.h"
#include "logview/tiffwriter.h"
#include "support/failingdisk.h"
#include "support/files.h"
#include "support/testmain.h"

#include <QGraphicsScene>
#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

namespace {

// A header of 30 rows in red, above a log scene whose rows tell where they are.
struct Scenes
{
    Scenes(int width, int height)
    {
        header.addRect(0, 0, width, 30, Qt::NoPen, QColor(255, 0, 0));
        header.setSceneRect(0, 0, width, 720);
        log.setSceneRect(0, 0, width, height);
        log.setItemIndexMethod(QGraphicsScene::NoIndex);
    }
    QGraphicsScene header;
    QGraphicsScene log;
};

} // namespace

class tst_displaypicture : public QObject
{
    Q_OBJECT

private slots:
    void sizes();
    void headerAboveTheLog();
    void longPicturesAreWholeInTheFile();
    void widePictures();
    void whatATiffCannotHoldIsScaledDown();
    void drawnOverTheViewport();
    void longJpegPictures();
    void emptyDisplays();
    void failingDisks_data();
    void failingDisks();
};

void tst_displaypicture::sizes()
{
    QCOMPARE(pictureSize(1000, 7609), QSize(1000, 7609));
    QCOMPARE(pictureSize(0, 100), QSize());
    QCOMPARE(pictureSize(100, 0), QSize());
    const QSize scaled = pictureSize(1000, 19000000);
    QVERIFY(qint64(scaled.width()) * scaled.height() * 3 <= Q_INT64_C(0xffffffff));
    QVERIFY(qint64(scaled.width()) * scaled.height() * 3 > Q_INT64_C(0xf0000000));
    QVERIFY(qAbs(scaled.height() / double(scaled.width()) / 19000 - 1) < 0.01);
    QCOMPARE(pictureSize(1, Q_INT64_C(1) << 40).width(), 1);
    QCOMPARE(pictureSize(1000, 65500, PictureFormat::Jpeg), QSize(1000, 65500));
    QCOMPARE(pictureSize(1000, 131000, PictureFormat::Jpeg), QSize(500, 65500));
    QCOMPARE(pictureSize(131000, 10, PictureFormat::Jpeg), QSize(65500, 5));
    QCOMPARE(pictureSize(65000, 65000, PictureFormat::Jpeg), QSize(65000, 65000)); // its sides count, not its bytes
}

void tst_displaypicture::headerAboveTheLog()
{
    Scenes scenes(100, 200);
    scenes.log.addRect(0, 0, 100, 10, Qt::NoPen, Qt::blue);
    scenes.log.addRect(0, 195, 100, 50, Qt::NoPen, Qt::green); // cut at the scene rectangle
    const DisplayPicture picture(scenes.header, scenes.log);
    QCOMPARE(picture.size(), QSize(100, 230));
    const QImage image = picture.rows(0, 230);
    QCOMPARE(image.pixelColor(50, 0), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(50, 29), QColor(255, 0, 0));
    QCOMPARE(image.pixelColor(50, 30), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(50, 39), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(50, 40), QColor(Qt::white));
    QCOMPARE(image.pixelColor(50, 229), QColor(Qt::green));
    QCOMPARE(picture.rows(25, 10), image.copy(0, 25, 100, 10)); // bands meet without a seam
}

void tst_displaypicture::longPicturesAreWholeInTheFile()
{
    QTemporaryDir folder;
    Scenes scenes(20, 70000); // a painter on one image would end at 32,767
    for (const int y : {0, 32760, 65000, 69990})
        scenes.log.addRect(0, y, 20, 10, Qt::NoPen, QColor(y % 256, 100, 200));
    const DisplayPicture picture(scenes.header, scenes.log);
    const QString path = folder.filePath(QStringLiteral("long.tiff"));
    QVERIFY(picture.saveTiff(path).ok());
    const QImage image(path);
    QCOMPARE(image.size(), QSize(20, 70030));
    for (const int y : {0, 32760, 65000, 69990}) {
        QCOMPARE(image.pixelColor(5, 30 + y + 5), QColor(y % 256, 100, 200));
        QCOMPARE(image.pixelColor(5, 30 + y - 1) == QColor(Qt::white), y > 0);
    }
    QCOMPARE(image.pixelColor(5, 10), QColor(255, 0, 0));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void tst_displaypicture::widePictures()
{
    Scenes scenes(40000, 10);
    scenes.log.addRect(39990, 0, 10, 10, Qt::NoPen, Qt::blue);
    const QImage image = DisplayPicture(scenes.header, scenes.log).rows(28, 4);
    QCOMPARE(image.size(), QSize(40000, 4));
    QCOMPARE(image.pixelColor(39999, 3), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(39989, 3), QColor(Qt::white));
    QCOMPARE(image.pixelColor(39999, 0), QColor(255, 0, 0));
}

void tst_displaypicture::whatATiffCannotHoldIsScaledDown()
{
    Scenes scenes(2000, 2000000);
    scenes.log.addRect(0, 1000000, 2000, 1000000, Qt::NoPen, Qt::blue);
    const DisplayPicture picture(scenes.header, scenes.log);
    QVERIFY(picture.isScaledDown());
    QVERIFY(picture.size().height() < 2000000);
    const int middle = picture.size().height() / 2;
    QCOMPARE(picture.rows(middle - 100, 10).pixelColor(10, 5), QColor(Qt::white));
    QCOMPARE(picture.rows(middle + 100, 10).pixelColor(10, 5), QColor(Qt::blue));
    QCOMPARE(picture.rows(picture.size().height() - 2, 2).pixelColor(picture.size().width() - 1, 1),
             QColor(Qt::blue));
    Scenes small(100, 100);
    QVERIFY(!DisplayPicture(small.header, small.log).isScaledDown());
}

void tst_displaypicture::drawnOverTheViewport()
{
    Scenes scenes(100, 50000);
    scenes.log.addRect(0, 25000, 50, 25000, Qt::NoPen, Qt::blue);
    QImage page(60, 90, QImage::Format_RGB32);
    page.fill(Qt::yellow);
    {
        QPainter painter(&page);
        painter.setViewport(10, 5, 40, 80);
        DisplayPicture(scenes.header, scenes.log).drawInto(painter);
    }
    QCOMPARE(page.pixelColor(9, 40), QColor(Qt::yellow));
    QCOMPARE(page.pixelColor(12, 4), QColor(Qt::yellow));
    QCOMPARE(page.pixelColor(12, 86), QColor(Qt::yellow));
    QCOMPARE(page.pixelColor(51, 40), QColor(Qt::yellow));
    QCOMPARE(page.pixelColor(12, 20), QColor(Qt::white));
    QCOMPARE(page.pixelColor(12, 60), QColor(Qt::blue));
    QCOMPARE(page.pixelColor(12, 84), QColor(Qt::blue));
    QCOMPARE(page.pixelColor(45, 60), QColor(Qt::white));
}

void tst_displaypicture::longJpegPictures()
{
    QTemporaryDir folder;
    Scenes scenes(64, 130970); // with the header twice what a file holds
    scenes.log.addRect(0, 100000 - 30, 64, 2000, Qt::NoPen, Qt::blue);
    const DisplayPicture picture(scenes.header, scenes.log, PictureFormat::Jpeg);
    QVERIFY(picture.isScaledDown());
    const QString path = folder.filePath(QStringLiteral("long.jpg"));
    QVERIFY(picture.saveJpeg(path).ok());
    QImageReader reader(path);
    QCOMPARE(reader.format(), QByteArray("jpeg"));
    const QImage image = reader.read();
    QCOMPARE(image.size(), QSize(32, 65500));
    QVERIFY(qAbs(image.dotsPerMeterX() - 96 / 0.0254) < 2);
    // The format loses a little of each colour.
    const auto isAlike = [&image](int y, const QColor &color) {
        const QColor found = image.pixelColor(16, y);
        return qAbs(found.red() - color.red()) < 12 && qAbs(found.green() - color.green()) < 12
            && qAbs(found.blue() - color.blue()) < 12;
    };
    QVERIFY(isAlike(4, Qt::red));
    QVERIFY(isAlike(40, Qt::white));
    QVERIFY(isAlike(49990, Qt::white));
    QVERIFY(isAlike(50010, Qt::blue));
    QVERIFY(isAlike(50990, Qt::blue));
    QVERIFY(isAlike(51010, Qt::white));
    QVERIFY(isAlike(65499, Qt::white));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void tst_displaypicture::emptyDisplays()
{
    QTemporaryDir folder;
    Scenes scenes(0, 0);
    const DisplayPicture picture(scenes.header, scenes.log);
    QVERIFY(picture.isEmpty());
    QVERIFY(!picture.saveTiff(folder.filePath(QStringLiteral("a.tiff"))).ok());
    QVERIFY(!picture.saveJpeg(folder.filePath(QStringLiteral("a.jpg"))).ok());
    QVERIFY(QDir(folder.path()).isEmpty());
    QImage page(10, 10, QImage::Format_RGB32);
    QPainter painter(&page);
    picture.drawInto(painter);
}

void tst_displaypicture::failingDisks_data()
{
    QTest::addColumn<bool>("isJpeg");
    QTest::newRow("tiff") << false;
    QTest::newRow("jpeg") << true;
}

void tst_displaypicture::failingDisks()
{
    QFETCH(bool, isJpeg);
    QTemporaryDir folder;
    Scenes scenes(100, 5000);
    const DisplayPicture picture(scenes.header, scenes.log);
    const QString path = folder.filePath(QStringLiteral("a"));
    const auto save = [&] { return isJpeg ? picture.saveJpeg(path) : picture.saveTiff(path); };
    files::write(path, "old");
    for (const FailingStep &step : failingSteps) {
        FailingDisk disk(step.step);
        const base::ScopedFileSystemCalls scope(disk);
        QVERIFY2(!save().ok(), step.name);
        QCOMPARE(files::read(path), QByteArray("old"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }
    QVERIFY(save().ok());
    QVERIFY(!QImage(path).isNull());
}

LORVA_TEST_MAIN(tst_displaypicture)
#include "tst_displaypicture.moc"
