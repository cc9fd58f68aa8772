#pragma once

#include "base/atomicfile.h"

#include <QImage>
#include <QSize>

struct tiff;

/// Writes a picture row by row into a TIFF file (RGB, compressed without loss), so that a picture
/// need not be in memory whole. The file appears when it is complete.
class TiffWriter
{
public:
    /// What a TIFF file can hold of a picture before it is compressed.
    static constexpr qint64 maximumBytes = Q_INT64_C(0xffffffff) - 0x100000;
    static constexpr int bytesPerPixel = 3;

    TiffWriter() = default;
    ~TiffWriter();
    TiffWriter(const TiffWriter &) = delete;
    TiffWriter &operator=(const TiffWriter &) = delete;

    base::WriteResult open(const QString &path, const QSize &size, int dotsPerInch = 96);
    /// Appends all rows of the image (any format; as wide as the picture).
    base::WriteResult append(const QImage &rows);
    /// All rows must have been appended.
    base::WriteResult commit();

private:
    friend struct TiffCalls;

    base::WriteResult failure() const;

    base::AtomicFileWriter m_file;
    base::WriteResult m_fileResult;
    tiff *m_tiff = nullptr;
    qint64 m_position = 0;
    qint64 m_size = 0;
    int m_row = 0;
};
