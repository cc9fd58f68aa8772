#pragma once

#include "base/atomicfile.h"

#include <QImage>
#include <QSize>

#include <functional>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
class QPainter;
QT_END_NAMESPACE

enum class PictureFormat {
    Tiff, ///< holds TiffWriter::maximumBytes
    Jpeg, ///< holds JpegWriter::longestSide pixels a side
    Png ///< holds PngWriter::longestSide pixels a side
};

/// The size of the picture of a display, for the size it ought to have: smaller, with the same proportions, when a
/// file of the format could not hold it.
QSize pictureSize(qint64 width, qint64 height, PictureFormat format = PictureFormat::Tiff);

namespace logview {

/// How much a file of the format holds, for people: "no more than 65500 pixels a side".
QString mostOfFormat(PictureFormat format);

} // namespace logview

/// A log display as one picture: the headers, and below them the tracks. It is rendered in bands of rows, so
/// that its length is limited by nothing but the file.
class DisplayPicture
{
public:
    static constexpr int screenDotsPerInch = 96;

    /// Both scenes must outlive the picture and stay as they are meanwhile. With more or fewer dots an inch than the
    /// screen the same display has more or fewer pixels.
    DisplayPicture(QGraphicsScene &headerScene, QGraphicsScene &logScene, PictureFormat format = PictureFormat::Tiff,
                   int dotsPerInch = screenDotsPerInch);

    QSize size() const { return m_size; }
    bool isEmpty() const { return m_size.isEmpty(); }
    /// Whether it had to be made smaller than it ought to be.
    bool isScaledDown() const { return m_isScaledDown; }
    /// The size that it ought to have.
    qint64 wantedWidth() const { return m_wantedWidth; }
    qint64 wantedHeight() const { return m_wantedHeight; }

    /// The picture's rows from \a top on; white where nothing is drawn.
    QImage rows(int top, int count) const;

    /// Gets band after band, from the top down; false to stop.
    using BandTaker = std::function<bool(const QImage &rows)>;
    /// Renders all of it once. False when \a taker stopped it.
    bool render(const BandTaker &taker) const;
    enum class OldFile { Replace, Keep };

    /// Writes all of it as a file of its format, and hands every band to \a taker as well, also after the file has
    /// failed. What was stopped is not written; then, and when it failed, the file is as it was. An old file that is to be
    /// kept, whoever made it meanwhile, is a failure.
    base::WriteResult write(const QString &path, const BandTaker &taker = {},
                            OldFile oldFile = OldFile::Replace) const;
    /// Draws all of it over the painter's viewport, whatever the proportions of that.
    void drawInto(QPainter &painter) const;

private:
    QImage tile(const QRect &area) const;

    QGraphicsScene &m_headerScene;
    QGraphicsScene &m_logScene;
    PictureFormat m_format;
    int m_dotsPerInch;
    qint64 m_fullWidth = 0;
    qint64 m_headerHeight = 0;
    qint64 m_fullHeight = 0;
    qint64 m_wantedWidth = 0;
    qint64 m_wantedHeight = 0;
    QSize m_size;
    double m_scaleX = 1; ///< pixels of the picture in one of the display
    double m_scaleY = 1;
    bool m_isScaledDown = false;
};
