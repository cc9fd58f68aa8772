#include "logview/paper/deflate.h"

#include <algorithm>
#include <zlib.h>

#ifdef LORVA_HAS_LIBDEFLATE
#include <libdeflate.h>
#include <memory>
#endif

namespace logview {

#ifdef LORVA_HAS_LIBDEFLATE

QByteArray deflated(const QByteArray &bytes, StreamKind kind)
{
    const int level = kind == StreamKind::Lines ? 2 : 6;
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(level), libdeflate_free_compressor);
    if (!compressor)
        return {};
    const auto size = static_cast<size_t>(bytes.size());
    QByteArray stream(static_cast<int>(libdeflate_zlib_compress_bound(compressor.get(), size)), Qt::Uninitialized);
    const size_t written = libdeflate_zlib_compress(compressor.get(), bytes.constData(), size, stream.data(),
                                                    static_cast<size_t>(stream.size()));
    stream.truncate(static_cast<int>(written));
    return stream;
}

#else

// Lines are random numbers: few repetitions are worth to be looked for, and short ones none.
QByteArray deflated(const QByteArray &bytes, StreamKind kind)
{
    const bool isLines = kind == StreamKind::Lines;
    const int level = isLines ? 4 : Z_DEFAULT_COMPRESSION;
    const int strategy = isLines ? Z_FILTERED : Z_DEFAULT_STRATEGY;
    z_stream state{};
    constexpr int windowBits = 15;
    constexpr int memoryLevel = 9;
    if (::deflateInit2(&state, level, Z_DEFLATED, windowBits, memoryLevel, strategy) != Z_OK)
        return {};
    QByteArray stream(static_cast<int>(::deflateBound(&state, static_cast<uLong>(bytes.size()))), Qt::Uninitialized);
    state.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.constData()));
    state.avail_in = static_cast<uInt>(bytes.size());
    state.next_out = reinterpret_cast<Bytef *>(stream.data());
    state.avail_out = static_cast<uInt>(stream.size());
    const int result = ::deflate(&state, Z_FINISH);
    stream.chop(static_cast<int>(state.avail_out));
    ::deflateEnd(&state);
    return result == Z_STREAM_END ? stream : QByteArray();
}

#endif

QByteArray inflated(const QByteArray &stream)
{
    QByteArray bytes;
    z_stream state{};
    if (::inflateInit(&state) != Z_OK)
        return {};
    state.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(stream.constData()));
    state.avail_in = static_cast<uInt>(stream.size());
    int result = Z_OK;
    while (result == Z_OK) {
        const int filled = bytes.size();
        bytes.resize(std::max(4 * stream.size(), 2 * filled));
        state.next_out = reinterpret_cast<Bytef *>(bytes.data()) + filled;
        state.avail_out = static_cast<uInt>(bytes.size() - filled);
        result = ::inflate(&state, Z_NO_FLUSH);
        bytes.chop(static_cast<int>(state.avail_out));
    }
    ::inflateEnd(&state);
    return result == Z_STREAM_END ? bytes : QByteArray();
}

} // namespace logview
