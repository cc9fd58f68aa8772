#pragma once

#include "base/atomicfile.h"

#include <QImage>
#include <QSize>

QT_BEGIN_NAMESPACE
class QGraphicsScene;
class QPainter;
QT_END_NAMESPACE

enum class PictureFormat {
    Tiff, ///< holds TiffWriter::maximumBytes
    Jpeg ///< holds JpegWriter::longestSide pixels a side
};

/// The size of the picture of a display, for the size it ought to have: smaller, with the same proportions, when a
/// file of the format could not hold it.
QSize pictureSize(qint64 width, qint64 height, PictureFormat format = PictureFormat::Tiff);

/// A log display as one picture: the headers, and below them the tracks. It is rendered in bands of rows, so
/// that its length is limited by nothing but the file.
class DisplayPicture
{
public:
    /// Both scenes must outlive the picture and stay as they are meanwhile.
    DisplayPicture(QGraphicsScene &headerScene, QGraphicsScene &logScene, PictureFormat format = PictureFormat::Tiff);

    QSize size() const { return m_size; }
    bool isEmpty() const { return m_size.isEmpty(); }
    /// Whether it had to be made smaller than the display.
    bool isScaledDown() const { return m_scaleX < 1 || m_scaleY < 1; }

    /// The picture's rows from \a top on; white where nothing is drawn.
    QImage rows(int top, int count) const;

    /// Saves all of it as a TIFF file.
    base::WriteResult saveTiff(const QString &path) const;
    /// Saves all of it as a JPEG file; for a picture of that format.
    base::WriteResult saveJpeg(const QString &path) const;
    /// Draws all of it over the painter's viewport, whatever the proportions of that.
    void drawInto(QPainter &painter) const;

private:
    template<class Writer>
    base::WriteResult save(const QString &path) const;
    QImage tile(const QRect &area) const;

    QGraphicsScene &m_headerScene;
    QGraphicsScene &m_logScene;
    qint64 m_fullWidth = 0;
    qint64 m_headerHeight = 0;
    qint64 m_fullHeight = 0;
    QSize m_size;
    double m_scaleX = 1;
    double m_scaleY = 1;
};
