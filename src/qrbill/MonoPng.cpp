#include "qrbill/MonoPng.h"

#include <csetjmp>
#include <cstddef>
#include <new>
#include <png.h>

namespace wordbm {

namespace {

void appendToBuffer(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    bool stored = true;
    try {
        out->insert(out->end(), data, data + length);
    } catch (const std::bad_alloc&) {
        stored = false;
    }
    // An exception must not unwind through libpng's C frames, nor may the jump leave a catch block;
    // libpng's own error path, taken here, ends at the setjmp in writePng.
    if (!stored) {
        png_error(png, "out of memory");
    }
}

void flushNothing(png_structp) {}

// libpng reports errors by longjmp; this function therefore holds only trivially destructible
// locals, so that the jump skips no destructor.
bool writePng(png_structp png, png_infop info, const MonoBitmap* bitmap, std::uint32_t pixelsPerMetre,
              std::vector<std::uint8_t>* out) {
    if (setjmp(png_jmpbuf(png)) != 0) {
        return false;
    }
    png_set_write_fn(png, out, appendToBuffer, flushNothing);
    png_set_IHDR(png, info, static_cast<png_uint_32>(bitmap->width()),
                 static_cast<png_uint_32>(bitmap->height()), 1, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, pixelsPerMetre, pixelsPerMetre, PNG_RESOLUTION_METER);
    // Row filters gain nothing on one bit per pixel; the modules' long runs compress as well at
    // zlib's fastest level, which takes a fraction of the default's time for every invoice.
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png, 1);
    png_write_info(png, info);
    for (int y = 0; y < bitmap->height(); ++y) {
        png_write_row(png, bitmap->row(y));
    }
    png_write_end(png, info);
    return true;
}

} // namespace

std::vector<std::uint8_t> encodeMonoPng(const MonoBitmap& bitmap, std::uint32_t pixelsPerMetre) {
    if (bitmap.width() <= 0 || bitmap.height() <= 0 || pixelsPerMetre == 0) {
        return {};
    }
    std::vector<std::uint8_t> out;

    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    const bool written = info != nullptr && writePng(png, info, &bitmap, pixelsPerMetre, &out);
    png_destroy_write_struct(&png, &info);
    if (!written) {
        out.clear();
    }
    return out;
}

} // namespace wordbm
