#pragma once

#include "logview/picturewriter.h"

#include <memory>

/// Writes a picture into a JPEG file (quality 90).
class JpegWriter : public PictureWriter
{
public:
    /// The most pixels a side that the format's library writes.
    static constexpr int longestSide = 65500;

    JpegWriter();
    ~JpegWriter() override;

protected:
    bool start(const QSize &size, int dotsPerInch) override;
    bool appendRow(const uchar *pixels) override;
    bool finish() override;

private:
    struct Compressor;
    std::unique_ptr<Compressor> m_compressor;
};
