#pragma once

#include "base/atomicfile.h"

#include <QImage>
#include <QSize>

#include <memory>

/// Writes a picture row by row into a PNG file, so that a picture need not be in memory whole. The file appears when it
/// is complete.
class PngWriter
{
public:
    PngWriter();
    ~PngWriter();
    PngWriter(const PngWriter &) = delete;
    PngWriter &operator=(const PngWriter &) = delete;

    base::WriteResult open(const QString &path, const QSize &size, int dotsPerInch);
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
