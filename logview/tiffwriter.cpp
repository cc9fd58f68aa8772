#include "logview/tiffwriter.h"

#include <algorithm>
#include <tiffio.h>

namespace {

constexpr int rowsPerStrip = 64;

int dropMessage(TIFF *, void *, const char *, const char *, va_list)
{
    return 1; // the result of the call says it, and nothing is printed into the host's terminal
}

} // namespace

/// The file as libtiff sees it: written only.
struct TiffCalls
{
    static TiffWriter &writer(thandle_t handle) { return *static_cast<TiffWriter *>(handle); }

    static tmsize_t read(thandle_t, void *, tmsize_t) { return 0; }
    static tmsize_t write(thandle_t handle, void *bytes, tmsize_t size)
    {
        TiffWriter &self = writer(handle);
        if (!self.writeBytes(bytes, size))
            return 0;
        self.m_position += size;
        self.m_size = std::max(self.m_size, self.m_position);
        return size;
    }
    static toff_t seek(thandle_t handle, toff_t offset, int whence)
    {
        TiffWriter &self = writer(handle);
        const auto distance = static_cast<qint64>(offset);
        const qint64 from = whence == SEEK_SET ? 0 : (whence == SEEK_CUR ? self.m_position : self.m_size);
        self.m_position = from + distance;
        self.seek(self.m_position);
        return static_cast<toff_t>(self.m_position);
    }
    static int close(thandle_t) { return 0; }
    static toff_t size(thandle_t handle) { return static_cast<toff_t>(writer(handle).m_size); }
};

TiffWriter::~TiffWriter()
{
    if (m_tiff)
        TIFFClose(m_tiff);
}

bool TiffWriter::start(const QSize &size, int dotsPerInch)
{
    m_rowBytes = qint64(size.width()) * bytesPerPixel;
    TIFFOpenOptions *options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options, dropMessage, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, dropMessage, nullptr);
    m_tiff = TIFFClientOpenExt("picture", "wl", this, TiffCalls::read, TiffCalls::write, TiffCalls::seek,
                               TiffCalls::close, TiffCalls::size, nullptr, nullptr, options);
    TIFFOpenOptionsFree(options);
    if (!m_tiff)
        return false;
    TIFFSetField(m_tiff, TIFFTAG_IMAGEWIDTH, size.width());
    TIFFSetField(m_tiff, TIFFTAG_IMAGELENGTH, size.height());
    TIFFSetField(m_tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(m_tiff, TIFFTAG_SAMPLESPERPIXEL, bytesPerPixel);
    TIFFSetField(m_tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(m_tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(m_tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(m_tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(m_tiff, TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
    TIFFSetField(m_tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(m_tiff, TIFFTAG_XRESOLUTION, static_cast<double>(dotsPerInch));
    TIFFSetField(m_tiff, TIFFTAG_YRESOLUTION, static_cast<double>(dotsPerInch));
    return true;
}

bool TiffWriter::appendRow(const uchar *pixels)
{
    // libtiff may change what it is given.
    QByteArray row(reinterpret_cast<const char *>(pixels), static_cast<int>(m_rowBytes));
    return TIFFWriteScanline(m_tiff, row.data(), static_cast<uint32_t>(m_row++), 0) >= 0;
}

bool TiffWriter::finish()
{
    const bool isWritten = TIFFWriteDirectory(m_tiff) == 1;
    TIFFClose(m_tiff);
    m_tiff = nullptr;
    return isWritten;
}
