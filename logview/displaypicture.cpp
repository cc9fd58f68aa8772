#include "logview/displaypicture.h"

#include "logview/headerpane.h"
#include "logview/jpegwriter.h"
#include "logview/picturepage.h"
#include "logview/pngwriter.h"
#include "logview/tiffwriter.h"

#include <QGraphicsScene>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

namespace {

// A painter on an image ends at column and row 32,767.
constexpr int tileWidth = 8192;
constexpr int bandHeight = 1024;
constexpr int mostBandPixels = 4 * tileWidth * bandHeight;
constexpr qint64 mostTiffPixels = TiffWriter::maximumBytes / TiffWriter::bytesPerPixel;

int longestSide(PictureFormat format)
{
    return format == PictureFormat::Png ? PngWriter::longestSide : JpegWriter::longestSide;
}

// How much smaller than this size a picture must be for a file of the format to hold it, at most 1.
double scaleFor(PictureFormat format, double width, double height)
{
    if (format == PictureFormat::Tiff)
        return std::min(1.0, std::sqrt(static_cast<double>(mostTiffPixels) / (width * height)));
    return std::min(1.0, longestSide(format) / std::max(width, height));
}

std::unique_ptr<PictureWriter> writerOf(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Jpeg:
        return std::make_unique<JpegWriter>();
    case PictureFormat::Png:
        return std::make_unique<PngWriter>();
    case PictureFormat::Tiff:
        break;
    }
    return std::make_unique<TiffWriter>();
}

} // namespace

QSize pictureSize(qint64 width, qint64 height, PictureFormat format)
{
    if (width <= 0 || height <= 0)
        return {};
    const double scale = scaleFor(format, static_cast<double>(width), static_cast<double>(height));
    const auto scaled = [scale](qint64 length) {
        return static_cast<int>(std::clamp(std::floor(static_cast<double>(length) * scale), 1.0,
                                           static_cast<double>(std::numeric_limits<int>::max())));
    };
    return {scaled(width), scaled(height)};
}

QString logview::mostOfFormat(PictureFormat format)
{
    return format == PictureFormat::Tiff ? QStringLiteral("no more than %1 pixels in all").arg(mostTiffPixels)
                                         : QStringLiteral("no more than %1 pixels a side").arg(longestSide(format));
}

DisplayPicture::DisplayPicture(QGraphicsScene &headerScene, QGraphicsScene &logScene, PictureFormat format,
                               int dotsPerInch)
    : m_headerScene(headerScene)
    , m_logScene(logScene)
    , m_format(format)
    , m_dotsPerInch(dotsPerInch)
    , m_fullWidth(static_cast<qint64>(logScene.sceneRect().width()))
    , m_headerHeight(static_cast<qint64>(std::ceil(logview::headerArea(headerScene).height())))
    , m_fullHeight(m_headerHeight + static_cast<qint64>(logScene.sceneRect().height()))
{
    const auto wanted = [dotsPerInch](qint64 length) { return (length * dotsPerInch + 48) / screenDotsPerInch; };
    m_wantedWidth = wanted(m_fullWidth);
    m_wantedHeight = wanted(m_fullHeight);
    m_size = pictureSize(m_wantedWidth, m_wantedHeight, format);
    if (m_size.isEmpty())
        return;
    m_isScaledDown = m_size.width() < m_wantedWidth || m_size.height() < m_wantedHeight;
    m_scaleX = m_size.width() / static_cast<double>(m_fullWidth);
    m_scaleY = m_size.height() / static_cast<double>(m_fullHeight);
}

QImage DisplayPicture::tile(const QRect &area) const
{
    QImage image(area.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF picture(area.left() / m_scaleX, area.top() / m_scaleY, area.width() / m_scaleX,
                         area.height() / m_scaleY);
    const auto render = [&](QGraphicsScene &scene, const QRectF &source, double pictureTop) {
        const QRectF part = picture & QRectF(0, pictureTop, source.width(), source.height());
        if (part.isEmpty())
            return;
        const QRectF target((part.left() - picture.left()) * m_scaleX, (part.top() - picture.top()) * m_scaleY,
                            part.width() * m_scaleX, part.height() * m_scaleY);
        scene.render(&painter, target, part.translated(source.left(), source.top() - pictureTop),
                     Qt::IgnoreAspectRatio);
    };
    const QRectF header(0, std::floor(logview::headerArea(m_headerScene).top()), static_cast<double>(m_fullWidth),
                        static_cast<double>(m_headerHeight));
    render(m_headerScene, header, 0);
    render(m_logScene, m_logScene.sceneRect(), static_cast<double>(m_headerHeight));
    return image;
}

QImage DisplayPicture::rows(int top, int count) const
{
    const int width = m_size.width();
    if (width <= tileWidth)
        return tile(QRect(0, top, width, count));
    QImage image(width, count, QImage::Format_RGB32);
    for (int left = 0; left < width; left += tileWidth) {
        const QImage part = tile(QRect(left, top, std::min(tileWidth, width - left), count));
        for (int y = 0; y < count; ++y)
            std::memcpy(image.scanLine(y) + left * sizeof(QRgb), part.constScanLine(y),
                        static_cast<size_t>(part.width()) * sizeof(QRgb));
    }
    return image;
}

bool DisplayPicture::render(const BandTaker &taker) const
{
    // Bands of very wide pictures are lower, so that one fits into memory.
    const int height = std::clamp(mostBandPixels / std::max(1, m_size.width()), 1, bandHeight);
    for (int top = 0; top < m_size.height(); top += height)
        if (!taker(rows(top, std::min(height, m_size.height() - top))))
            return false;
    return true;
}

base::WriteResult DisplayPicture::write(const QString &path, const BandTaker &taker, OldFile oldFile) const
{
    if (isEmpty())
        return {QStringLiteral("the display is empty")};
    const std::unique_ptr<PictureWriter> writer = writerOf(m_format);
    base::WriteResult result = writer->open(path, m_size, m_dotsPerInch);
    const bool isComplete = render([&](const QImage &band) {
        if (result.ok())
            result = writer->append(band);
        return taker ? taker(band) : result.ok();
    });
    if (result.ok() && !isComplete)
        return {QStringLiteral("it was cancelled")};
    if (!result.ok())
        return result;
    return oldFile == OldFile::Keep ? writer->commitAsNew() : writer->commit();
}

void DisplayPicture::drawInto(QPainter &painter) const
{
    PicturePage page(m_size);
    render([&page](const QImage &band) {
        page.append(band);
        return true;
    });
    page.draw(painter);
}
