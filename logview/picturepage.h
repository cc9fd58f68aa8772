#pragma once

#include <QImage>
#include <QSize>
#include <QVector>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

/// What a page shows of a picture, made of the picture's own rows while they are written: small enough for memory, with
/// more pixels than a page has.
class PicturePage
{
public:
    /// Neither width nor height has more pixels.
    static constexpr int longestSide = 4096;

    PicturePage() = default;
    /// The size of the picture whose rows come.
    explicit PicturePage(const QSize &pictureSize);

    /// Takes the next rows of the picture (32 bits a pixel, as wide as it).
    void append(const QImage &rows);
    /// Nothing was taken.
    bool isEmpty() const { return m_image.isNull(); }
    /// Draws it over the painter's viewport, whatever the proportions of that.
    void draw(QPainter &painter) const;

private:
    void closeRow();

    QImage m_image;
    QSize m_step; ///< pixels of the picture in one of the page
    QVector<quint64> m_sums; ///< red, green, blue of each pixel of the row that is being summed
    int m_summedRows = 0;
    int m_row = 0;
    int m_pictureWidth = 0;
};
