#pragma once

#include "logview/picturewriter.h"

#include <memory>

/// Writes a picture into a PNG file.
class PngWriter : public PictureWriter
{
public:
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
