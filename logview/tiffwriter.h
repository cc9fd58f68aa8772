#pragma once

#include "logview/picturewriter.h"

struct tiff;

/// Writes a picture into a TIFF file (RGB, compressed without loss).
class TiffWriter : public PictureWriter
{
public:
    /// What a TIFF file can hold of a picture before it is compressed.
    static constexpr qint64 maximumBytes = Q_INT64_C(0xffffffff) - 0x100000;
    using PictureWriter::bytesPerPixel;

    TiffWriter() = default;
    ~TiffWriter() override;

protected:
    bool start(const QSize &size, int dotsPerInch) override;
    bool appendRow(const uchar *pixels) override;
    bool finish() override;

private:
    friend struct TiffCalls;

    tiff *m_tiff = nullptr;
    qint64 m_rowBytes = 0;
    qint64 m_position = 0;
    qint64 m_size = 0;
    int m_row = 0;
};
