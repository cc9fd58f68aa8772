#include "logview/picturepage.h"

#include <QPainter>

#include <algorithm>
#include <cstring>

PicturePage::PicturePage(const QSize &pictureSize)
    : m_pictureWidth(pictureSize.width())
{
    if (pictureSize.isEmpty())
        return;
    const auto stepOf = [](int length) { return (length - 1) / longestSide + 1; };
    const auto stepsIn = [](int length, int step) { return (length - 1) / step + 1; };
    m_step = QSize(stepOf(pictureSize.width()), stepOf(pictureSize.height()));
    m_image = QImage(stepsIn(pictureSize.width(), m_step.width()), stepsIn(pictureSize.height(), m_step.height()),
                     QImage::Format_RGB32);
    m_image.fill(Qt::white);
    if (m_step != QSize(1, 1))
        m_sums.resize(3 * m_image.width());
}

void PicturePage::append(const QImage &rows)
{
    for (int y = 0; y < rows.height() && m_row < m_image.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(rows.constScanLine(y));
        if (m_sums.isEmpty()) {
            std::memcpy(m_image.scanLine(m_row++), pixels, static_cast<size_t>(m_pictureWidth) * sizeof(QRgb));
            continue;
        }
        quint64 *sum = m_sums.data();
        for (int x = 0; x < m_pictureWidth; sum += 3) {
            for (const int end = std::min(x + m_step.width(), m_pictureWidth); x < end; ++x) {
                sum[0] += static_cast<quint64>(qRed(pixels[x]));
                sum[1] += static_cast<quint64>(qGreen(pixels[x]));
                sum[2] += static_cast<quint64>(qBlue(pixels[x]));
            }
        }
        if (++m_summedRows == m_step.height())
            closeRow();
    }
}

void PicturePage::closeRow()
{
    auto *pixels = reinterpret_cast<QRgb *>(m_image.scanLine(m_row++));
    for (int x = 0; x < m_image.width(); ++x) {
        const int columns = std::min(m_step.width(), m_pictureWidth - x * m_step.width());
        const quint64 count = static_cast<quint64>(columns) * static_cast<quint64>(m_summedRows);
        const auto mean = [&](int color) { return static_cast<int>((m_sums.at(3 * x + color) + count / 2) / count); };
        pixels[x] = qRgb(mean(0), mean(1), mean(2));
    }
    std::fill(m_sums.begin(), m_sums.end(), 0);
    m_summedRows = 0;
}

void PicturePage::draw(QPainter &painter) const
{
    const QRect page = painter.viewport();
    if (isEmpty() || page.isEmpty())
        return;
    QImage image = m_image;
    if (m_summedRows > 0) {
        PicturePage ended = *this; // the last row stands for fewer
        ended.closeRow();
        image = ended.m_image;
    }
    painter.save();
    painter.setViewTransformEnabled(false);
    painter.resetTransform();
    painter.drawImage(page.topLeft(), image.scaled(page.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.restore();
}
