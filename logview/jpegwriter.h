#pragma once

#include "base/atomicfile.h"

#include <QImage>
#include <QSize>

#include <memory>

/// Writes a picture row by row into a JPEG file (quality 90), so that a picture need not be in
/// memory whole. The file appears when it is complete.
class JpegWriter
{
public:
    /// The most pixels a side that the format's library writes.
    static constexpr int longestSide = 65500;

    JpegWriter();
    ~JpegWriter();
    JpegWriter(const JpegWriter &) = delete;
    JpegWriter &operator=(const JpegWriter &) = delete;

    base::WriteResult open(const QString &path, const QSize &size, int dotsPerInch = 96);
    /// Appends all rows of the image (any format; as wide as the picture).
    base::WriteResult append(const QImage &rows);
    /// All rows must have been appended.
    base::WriteResult commit();

private:
    struct Compressor;
    base::WriteResult failure() const;

    base::AtomicFileWriter m_file;
    std::unique_ptr<Compressor> m_compressor;
};
