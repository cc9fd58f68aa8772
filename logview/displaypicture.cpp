#include "logview/displaypicture.h"

#include "logview/headerpane.h"
#include "logview/jpegwriter.h"
#include "logview/tiffwriter.h"

#include <QGraphicsScene>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

// A painter on an image ends at column and row 32,767.
constexpr int tileWidth = 8192;
constexpr int bandHeight = 1024;
// Averaging goes through no more rows at once than this.
constexpr int longestBand = 8192;

// How much smaller than this size a picture must be for a file of the format to hold it, at most 1.
double scaleFor(PictureFormat format, double width, double height)
{
    if (format == PictureFormat::Jpeg)
        return std::min(1.0, JpegWriter::longestSide / std::max(width, height));
    constexpr double mostPixels = static_cast<double>(TiffWriter::maximumBytes / TiffWriter::bytesPerPixel);
    return std::min(1.0, std::sqrt(mostPixels / (width * height)));
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

DisplayPicture::DisplayPicture(QGraphicsScene &headerScene, QGraphicsScene &logScene, PictureFormat format)
    : m_headerScene(headerScene)
    , m_logScene(logScene)
    , m_fullWidth(static_cast<qint64>(logScene.sceneRect().width()))
    , m_headerHeight(static_cast<qint64>(std::ceil(logview::headerArea(headerScene).height())))
    , m_fullHeight(m_headerHeight + static_cast<qint64>(logScene.sceneRect().height()))
    , m_size(pictureSize(m_fullWidth, m_fullHeight, format))
{
    if (m_size.isEmpty())
        return;
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

template<class Writer>
base::WriteResult DisplayPicture::save(const QString &path) const
{
    if (isEmpty())
        return {QStringLiteral("the display is empty")};
    Writer writer;
    base::WriteResult result = writer.open(path, m_size);
    for (int top = 0; top < m_size.height() && result.ok(); top += bandHeight)
        result = writer.append(rows(top, std::min(bandHeight, m_size.height() - top)));
    return result.ok() ? writer.commit() : result;
}

base::WriteResult DisplayPicture::saveTiff(const QString &path) const
{
    return save<TiffWriter>(path);
}

base::WriteResult DisplayPicture::saveJpeg(const QString &path) const
{
    return save<JpegWriter>(path);
}

// Bands begin and end at whole rows of the page, so that no seam shows.
void DisplayPicture::drawInto(QPainter &painter) const
{
    const QRect page = painter.viewport();
    if (isEmpty() || page.isEmpty())
        return;
    painter.save();
    painter.setViewTransformEnabled(false);
    painter.resetTransform();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const double rowsPerPageRow = m_size.height() / static_cast<double>(page.height());
    const int step = std::clamp(static_cast<int>(bandHeight / rowsPerPageRow), 1, page.height());
    for (int pageTop = 0; pageTop < page.height(); pageTop += step) {
        const int pageBottom = std::min(pageTop + step, page.height());
        const int top = static_cast<int>(std::floor(pageTop * rowsPerPageRow));
        const int bottom = std::min(static_cast<int>(std::ceil(pageBottom * rowsPerPageRow)), m_size.height());
        // Of a band that one row of the page stands for, its beginning is enough.
        const QImage band = rows(top, std::min(std::max(bottom - top, 1), longestBand));
        painter.drawImage(
            QRect(page.left(), page.top() + pageTop, page.width(), pageBottom - pageTop),
            band.scaled(page.width(), pageBottom - pageTop, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    painter.restore();
}
