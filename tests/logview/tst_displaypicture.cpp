#include "logview/displaypicture.h"
#include "logview/jpegwriter.h"
#include "logview/picturepage.h"
#include "logview/pngwriter.h"
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

/// Counts how often each row of the log is painted.
class CountingItem : public QGraphicsItem
{
public:
    CountingItem(int width, int height)
        : m_area(0, 0, width, height)
        , paints(height)
    {
        setFlag(ItemUsesExtendedStyleOption);
    }
    QRectF boundingRect() const override { return m_area; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) override
    {
        const QRectF device(0, 0, painter->device()->width(), painter->device()->height());
        const QRectF shown = painter->deviceTransform().inverted().mapRect(device) & m_area;
        for (int y = qRound(shown.top()); y < qRound(shown.bottom()); ++y)
            ++paints[y];
    }

private:
    QRectF m_area;

public:
    QVector<int> paints;
};

} // namespace

Q_DECLARE_METATYPE(PictureFormat)

class tst_displaypicture : public QObject
{
    Q_OBJECT

private slots:
    void aFileThatCameMeanwhileIsKept();
    void sizes();
    void headerAboveTheLog();
    void longPicturesAreWholeInTheFile();
    void widePictures();
    void bandsOfAVeryWidePictureAreLow();
    void whatATiffCannotHoldIsScaledDown();
    void drawnOverTheViewport();
    void longJpegPictures();
    void emptyDisplays();
    void eachRowIsPaintedOnceForFileAndPage();
    void whatIsStoppedLeavesTheFile();
    void aFailingFileStillGivesThePage();
    void pngPictures();
    void moreDotsAnInch();
    void pagesOfLongPicturesAreMeans();
    void failingDisks_data();
    void failingDisks();
    void whatDeadWritersLeftGoes();
    void whatTheLibraryCannotWriteIsTold();
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
    QVERIFY(picture.write(path).ok());
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

void tst_displaypicture::bandsOfAVeryWidePictureAreLow()
{
    Scenes scenes(400000, 200);
    QVector<int> heights;
    QVERIFY(DisplayPicture(scenes.header, scenes.log, PictureFormat::Png).render([&heights](const QImage &band) {
        heights.append(band.height());
        return true;
    }));
    QCOMPARE(heights, (QVector<int>{83, 83, 64})); // 33.5 million pixels a band
}

void tst_displaypicture::whatATiffCannotHoldIsScaledDown()
{
    Scenes scenes(2000, 2000000);
    scenes.log.addRect(0, 1000000, 2000, 1000000, Qt::NoPen, Qt::blue);
    const DisplayPicture picture(scenes.header, scenes.log);
    QVERIFY(picture.isScaledDown());
    QCOMPARE(picture.wantedWidth(), Q_INT64_C(2000));
    QCOMPARE(picture.wantedHeight(), Q_INT64_C(2000030));
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
    QVERIFY(picture.write(path).ok());
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
    QVERIFY(!picture.write(folder.filePath(QStringLiteral("a.tiff"))).ok());
    QVERIFY(QDir(folder.path()).isEmpty());
    QImage page(10, 10, QImage::Format_RGB32);
    QPainter painter(&page);
    picture.drawInto(painter);
}

void tst_displaypicture::eachRowIsPaintedOnceForFileAndPage()
{
    QTemporaryDir folder;
    Scenes scenes(50, 5000);
    auto *item = new CountingItem(50, 5000);
    scenes.log.addItem(item);
    const DisplayPicture picture(scenes.header, scenes.log);
    PicturePage page(picture.size());
    QVERIFY(picture
                .write(folder.filePath(QStringLiteral("a.tiff")),
                       [&page](const QImage &rows) {
                           page.append(rows);
                           return true;
                       })
                .ok());
    QCOMPARE(item->paints, QVector<int>(5000, 1));
    QImage drawn(50, 60, QImage::Format_RGB32);
    drawn.fill(Qt::yellow);
    {
        QPainter painter(&drawn);
        page.draw(painter);
    }
    QCOMPARE(item->paints, QVector<int>(5000, 1));
    QCOMPARE(drawn.pixelColor(20, 0), QColor(255, 163, 163)); // 30 of the 84 rows that it stands for are the header
}

void tst_displaypicture::whatIsStoppedLeavesTheFile()
{
    QTemporaryDir folder;
    Scenes scenes(50, 5000);
    const QString path = folder.filePath(QStringLiteral("a"));
    files::write(path, "old");
    for (const PictureFormat format : {PictureFormat::Tiff, PictureFormat::Jpeg, PictureFormat::Png}) {
        const DisplayPicture picture(scenes.header, scenes.log, format);
        int bands = 0;
        const base::WriteResult result = picture.write(path, [&bands](const QImage &) { return ++bands < 3; });
        QCOMPARE(result.error, QString("it was cancelled"));
        QCOMPARE(bands, 3);
        QCOMPARE(files::read(path), QByteArray("old"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }
}

void tst_displaypicture::aFailingFileStillGivesThePage()
{
    QTemporaryDir folder;
    Scenes scenes(50, 5000);
    const DisplayPicture picture(scenes.header, scenes.log);
    int rows = 0;
    const base::WriteResult result =
        picture.write(folder.filePath(QStringLiteral("none/a.tiff")), [&rows](const QImage &band) {
            rows += band.height();
            return true;
        });
    QVERIFY(!result.ok());
    QCOMPARE(rows, picture.size().height());
    int bands = 0;
    QVERIFY(!picture
                 .write(folder.filePath(QStringLiteral("none/a.tiff")),
                        [&bands](const QImage &) {
                            ++bands;
                            return false;
                        })
                 .ok());
    QCOMPARE(bands, 1);
}

void tst_displaypicture::pngPictures()
{
    QTemporaryDir folder;
    Scenes scenes(20, 70000);
    scenes.log.addRect(0, 65000, 20, 10, Qt::NoPen, Qt::blue);
    const DisplayPicture picture(scenes.header, scenes.log, PictureFormat::Png);
    const QString path = folder.filePath(QStringLiteral("long.png"));
    QVERIFY(picture.write(path).ok());
    const QImage image(path);
    QCOMPARE(QImageReader(path).format(), QByteArray("png"));
    QCOMPARE(image.size(), QSize(20, 70030));
    QCOMPARE(image.convertToFormat(QImage::Format_RGB32).copy(0, 64900, 20, 300), picture.rows(64900, 300));
    QVERIFY(qAbs(image.dotsPerMeterX() - 96 / 0.0254) < 2);
    QCOMPARE(pictureSize(10, 1000000, PictureFormat::Png), QSize(10, 1000000));
    QCOMPARE(pictureSize(10, 2000000, PictureFormat::Png), QSize(5, 1000000)); // programs read no more
}

void tst_displaypicture::moreDotsAnInch()
{
    QTemporaryDir folder;
    Scenes scenes(100, 200);
    scenes.log.addRect(0, 100, 50, 10, Qt::NoPen, Qt::blue);
    for (const auto &[format, name] :
         {std::pair(PictureFormat::Png, "a.png"), {PictureFormat::Tiff, "a.tiff"}, {PictureFormat::Jpeg, "a.jpg"}}) {
        const DisplayPicture picture(scenes.header, scenes.log, format, 288);
        QCOMPARE(picture.size(), QSize(300, 690));
        QVERIFY(!picture.isScaledDown());
        const QString path = folder.filePath(QString::fromLatin1(name));
        QVERIFY(picture.write(path).ok());
        const QImage image(path);
        QVERIFY(qAbs(image.dotsPerMeterX() - 288 / 0.0254) < 20);
        QVERIFY(image.pixelColor(145, 415).blue() > 240 && image.pixelColor(145, 415).red() < 20);
        QVERIFY(image.pixelColor(160, 415).red() > 240);
        QVERIFY(image.pixelColor(100, 380).red() > 240);
    }
}

void tst_displaypicture::pagesOfLongPicturesAreMeans()
{
    const auto drawn = [](const QSize &size, const QVector<QRgb> &rowColors, const QSize &pageSize) {
        PicturePage page(size);
        for (int y = 0; y < size.height(); ++y) {
            QImage row(size.width(), 1, QImage::Format_RGB32);
            row.fill(rowColors.at(y % rowColors.size()));
            page.append(row);
        }
        QImage image(pageSize, QImage::Format_RGB32);
        image.fill(Qt::yellow);
        QPainter painter(&image);
        page.draw(painter);
        return image;
    };
    const QRgb black = qRgb(0, 0, 0);
    const QRgb white = qRgb(255, 255, 255);
    QCOMPARE(drawn({3, 8192}, {black, white}, {3, 4096}).pixel(1, 4095), qRgb(128, 128, 128));
    QCOMPARE(drawn({3, 4096}, {black, white}, {3, 4096}).pixel(1, 4095), white); // as it is
    // The last row stands for one row of the picture only.
    QCOMPARE(drawn({3, 4097}, {black, black, white}, {3, 2049}).pixel(1, 2048), black);
    QCOMPARE(drawn({8195, 2}, {qRgb(9, 99, 199)}, {2732, 2}).pixel(2731, 1), qRgb(9, 99, 199));
    PicturePage empty((QSize()));
    QVERIFY(empty.isEmpty());
    QImage image(5, 5, QImage::Format_RGB32);
    QPainter painter(&image);
    empty.draw(painter);
}

void tst_displaypicture::failingDisks_data()
{
    QTest::addColumn<PictureFormat>("format");
    QTest::newRow("tiff") << PictureFormat::Tiff;
    QTest::newRow("jpeg") << PictureFormat::Jpeg;
    QTest::newRow("png") << PictureFormat::Png;
}

void tst_displaypicture::failingDisks()
{
    QFETCH(PictureFormat, format);
    QTemporaryDir folder;
    Scenes scenes(100, 5000);
    const DisplayPicture picture(scenes.header, scenes.log, format);
    const QString path = folder.filePath(QStringLiteral("a"));
    const auto save = [&] { return picture.write(path); };
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

void tst_displaypicture::whatDeadWritersLeftGoes()
{
    QTemporaryDir folder;
    files::write(folder.filePath(QStringLiteral(".lorva-abc123")), "half of a picture");
    Scenes scenes(10, 100);
    QVERIFY(DisplayPicture(scenes.header, scenes.log, PictureFormat::Png).write(folder.filePath("a.png")).ok());
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("a.png"));
}

void tst_displaypicture::whatTheLibraryCannotWriteIsTold()
{
    QTemporaryDir folder;
    JpegWriter writer;
    QCOMPARE(writer.open(folder.filePath("a.jpg"), QSize(JpegWriter::longestSide + 100, 1)).error,
             QString("the picture could not be encoded"));
    QVERIFY(!QFile::exists(folder.filePath("a.jpg")));
    PngWriter wide;
    QCOMPARE(wide.open(folder.filePath("a.png"), QSize(PngWriter::longestSide + 1, 1)).error,
             QString("the picture could not be encoded"));
    PngWriter empty;
    QVERIFY(empty.open(folder.filePath("a.png"), QSize(1, 1)).ok());
    QCOMPARE(empty.commit().error, QString("the picture could not be encoded"));
    QVERIFY(!QFile::exists(folder.filePath("a.png")));
}

// One was asked for that is not there; another program made it while the picture was drawn.
void tst_displaypicture::aFileThatCameMeanwhileIsKept()
{
    QTemporaryDir folder;
    Scenes scenes(10, 100);
    const QString path = folder.filePath(QStringLiteral("a.png"));
    const DisplayPicture picture(scenes.header, scenes.log, PictureFormat::Png);
    const auto makeIt = [&path](const QImage &) {
        files::write(path, "another's");
        return true;
    };
    QVERIFY(!picture.write(path, makeIt, DisplayPicture::OldFile::Keep).ok());
    QCOMPARE(files::read(path), QByteArray("another's"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"a.png"});
    QVERIFY(picture.write(path, makeIt).ok());
    QVERIFY(files::read(path) != "another's");
    QVERIFY(QFile::remove(path));
    QVERIFY(picture.write(path, {}, DisplayPicture::OldFile::Keep).ok());
}

LORVA_TEST_MAIN(tst_displaypicture)
#include "tst_displaypicture.moc"
