#pragma once

#include "base/atomicfile.h"

#include <QImage>
#include <QSize>

/// Writes a picture row by row into a file, so that it need not be in memory whole. The file appears when it is complete.
/// What encodes the rows is the library of a format.
class PictureWriter
{
public:
    virtual ~PictureWriter() = default;
    PictureWriter(const PictureWriter &) = delete;
    PictureWriter &operator=(const PictureWriter &) = delete;

    base::WriteResult open(const QString &path, const QSize &size, int dotsPerInch = 96);
    /// Appends all rows of the image (any format; as wide as the picture).
    base::WriteResult append(const QImage &rows);
    /// All rows must have been appended.
    base::WriteResult commit();
    /// The same where a file that came to its place meanwhile is not replaced: that is a failure then.
    base::WriteResult commitAsNew();

protected:
    static constexpr int bytesPerPixel = 3;

    PictureWriter() = default;
    /// What the library does; false when it cannot. Rows are pixels of three bytes, red, green, blue.
    virtual bool start(const QSize &size, int dotsPerInch) = 0;
    virtual bool appendRow(const uchar *pixels) = 0;
    virtual bool finish() = 0;

    /// For the library: the next bytes of the file, and where those after it go. False after a failure, which is told at the end
    /// of the step.
    bool writeBytes(const void *bytes, qint64 size);
    bool seek(qint64 position);

private:
    base::WriteResult resultOf(bool isEncoded) const;

    base::AtomicFileWriter m_file;
    base::WriteResult m_fileResult;
};
