#include "logview/jpegwriter.h"

#include <csetjmp>
#include <cstdio> // jpeglib.h needs it

#include <jpeglib.h>

namespace {

constexpr int quality = 90;
constexpr size_t bufferSize = 64 * 1024;

} // namespace

/// The library's state, with the file as its destination. The library reports a failure by a jump to where it was
/// called from: no object with a destructor lives between the two.
struct JpegWriter::Compressor
{
    jpeg_compress_struct picture{};
    jpeg_error_mgr errors{};
    jpeg_destination_mgr destination{};
    std::jmp_buf failed{};
    JpegWriter *writer = nullptr;
    JOCTET buffer[bufferSize];

    static Compressor &of(j_common_ptr common) { return *static_cast<Compressor *>(common->client_data); }
    static Compressor &of(j_compress_ptr compress) { return *static_cast<Compressor *>(compress->client_data); }

    static void fail(j_common_ptr common) { std::longjmp(of(common).failed, 1); }
    static void dropMessage(j_common_ptr, int) { } // nothing is printed into the host's terminal
    static void dropOutput(j_common_ptr) { }

    void rewind()
    {
        destination.next_output_byte = buffer;
        destination.free_in_buffer = bufferSize;
    }
    void flush(size_t size)
    {
        writer->writeBytes(buffer, static_cast<qint64>(size));
        rewind();
    }
    static void begin(j_compress_ptr compress) { of(compress).rewind(); }
    static boolean empty(j_compress_ptr compress)
    {
        of(compress).flush(bufferSize);
        return TRUE;
    }
    static void end(j_compress_ptr compress)
    {
        of(compress).flush(bufferSize - of(compress).destination.free_in_buffer);
    }

    bool start(int width, int height, int dotsPerInch)
    {
        picture.err = jpeg_std_error(&errors);
        errors.error_exit = fail;
        errors.emit_message = dropMessage;
        errors.output_message = dropOutput;
        picture.client_data = this;
        if (setjmp(failed))
            return false;
        jpeg_create_compress(&picture);
        destination.init_destination = begin;
        destination.empty_output_buffer = empty;
        destination.term_destination = end;
        picture.dest = &destination;
        picture.image_width = static_cast<JDIMENSION>(width);
        picture.image_height = static_cast<JDIMENSION>(height);
        picture.input_components = bytesPerPixel;
        picture.in_color_space = JCS_RGB;
        jpeg_set_defaults(&picture);
        jpeg_set_quality(&picture, quality, TRUE);
        picture.density_unit = 1; // dots an inch
        picture.X_density = picture.Y_density = static_cast<UINT16>(dotsPerInch);
        jpeg_start_compress(&picture, TRUE);
        return true;
    }
    bool append(const uchar *pixels)
    {
        if (setjmp(failed))
            return false;
        JSAMPROW row = const_cast<JSAMPROW>(pixels);
        return jpeg_write_scanlines(&picture, &row, 1) == 1;
    }
    bool finish()
    {
        if (setjmp(failed))
            return false;
        jpeg_finish_compress(&picture);
        return true;
    }
    ~Compressor() { jpeg_destroy_compress(&picture); }
};

JpegWriter::JpegWriter() = default;
JpegWriter::~JpegWriter() = default;

bool JpegWriter::start(const QSize &size, int dotsPerInch)
{
    m_compressor = std::make_unique<Compressor>();
    m_compressor->writer = this;
    return m_compressor->start(size.width(), size.height(), dotsPerInch);
}

bool JpegWriter::appendRow(const uchar *pixels)
{
    return m_compressor->append(pixels);
}

bool JpegWriter::finish()
{
    return m_compressor->finish();
}
