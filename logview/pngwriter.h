#pragma once

#include "logview/picturewriter.h"

#include <memory>

/// Writes a picture into a PNG file.
class PngWriter : public PictureWriter
{
public:
    /// The most pixels a side that the programs take that read with the format's library.
    static constexpr int longestSide = 1000000;

    PngWriter();
    ~PngWriter() override;

protected:
    bool start(const QSize &size, int dotsPerInch) override;
    bool appendRow(const uchar *pixels) override;
    bool finish() override;

private:
    struct Compressor;
    std::unique_ptr<Compressor> m_compressor;
};
