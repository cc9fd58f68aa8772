#include "logview/pngwriter.h"

#include <cmath>
#include <csetjmp>
#include <png.h>

namespace {

constexpr int compressionLevel = 6;

} // namespace

/// The library's state, with the file as its destination. The library reports a failure by a jump to where it was
/// called from: no object with a destructor lives between the two.
struct PngWriter::Compressor
{
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::jmp_buf failed{};
    PngWriter *writer = nullptr;

    [[noreturn]] static void fail(png_structp png, png_const_charp)
    {
        std::longjmp(static_cast<Compressor *>(png_get_error_ptr(png))->failed, 1);
    }
    static void dropMessage(png_structp, png_const_charp) { } // nothing is printed into the host's terminal
    static void write(png_structp png, png_bytep bytes, size_t size)
    {
        static_cast<PngWriter *>(png_get_io_ptr(png))->writeBytes(bytes, static_cast<qint64>(size));
    }
    static void flush(png_structp) { }

    bool start(const QSize &size, png_uint_32 dotsPerMetre)
    {
        png = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, fail, dropMessage);
        info = png ? png_create_info_struct(png) : nullptr;
        if (!info || setjmp(failed))
            return false;
        png_set_write_fn(png, writer, write, flush);
        png_set_user_limits(png, PngWriter::longestSide, PngWriter::longestSide);
        png_set_compression_level(png, compressionLevel);
        png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE); // drawn pictures: others only cost time
        png_set_IHDR(png, info, static_cast<png_uint_32>(size.width()), static_cast<png_uint_32>(size.height()), 8,
                     PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_pHYs(png, info, dotsPerMetre, dotsPerMetre, PNG_RESOLUTION_METER);
        png_write_info(png, info);
        return true;
    }
    bool append(const uchar *pixels)
    {
        if (setjmp(failed))
            return false;
        png_write_row(png, pixels);
        return true;
    }
    bool finish()
    {
        if (setjmp(failed))
            return false;
        png_write_end(png, info);
        return true;
    }
    ~Compressor() { png_destroy_write_struct(&png, &info); }
};

PngWriter::PngWriter() = default;
PngWriter::~PngWriter() = default;

bool PngWriter::start(const QSize &size, int dotsPerInch)
{
    m_compressor = std::make_unique<Compressor>();
    m_compressor->writer = this;
    return m_compressor->start(size, static_cast<png_uint_32>(std::lround(dotsPerInch / 0.0254)));
}

bool PngWriter::appendRow(const uchar *pixels)
{
    return m_compressor->append(pixels);
}

bool PngWriter::finish()
{
    return m_compressor->finish();
}
