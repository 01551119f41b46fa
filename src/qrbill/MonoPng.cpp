#include "qrbill/MonoPng.h"

#include <csetjmp>
#include <cstddef>
#include <new>
#include <png.h>

namespace wordbm {

namespace {

// One bit per pixel, most significant first; in 1-bit greyscale 0 is black.
std::vector<std::uint8_t> packRows(const MonoBitmap& bitmap, std::size_t rowBytes) {
    std::vector<std::uint8_t> packed(rowBytes * static_cast<std::size_t>(bitmap.height()), 0xFF);
    for (int y = 0; y < bitmap.height(); ++y) {
        std::uint8_t* row = packed.data() + static_cast<std::size_t>(y) * rowBytes;
        for (int x = 0; x < bitmap.width(); ++x) {
            if (bitmap.isBlack(x, y)) {
                row[x / 8] = static_cast<std::uint8_t>(row[x / 8] & ~(0x80U >> (x % 8)));
            }
        }
    }
    return packed;
}

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
bool writePng(png_structp png, png_infop info, const std::uint8_t* packed, std::size_t rowBytes, int width,
              int height, std::uint32_t pixelsPerMetre, std::vector<std::uint8_t>* out) {
    if (setjmp(png_jmpbuf(png)) != 0) {
        return false;
    }
    png_set_write_fn(png, out, appendToBuffer, flushNothing);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 1,
                 PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, pixelsPerMetre, pixelsPerMetre, PNG_RESOLUTION_METER);
    png_write_info(png, info);
    for (int y = 0; y < height; ++y) {
        png_write_row(png, packed + static_cast<std::size_t>(y) * rowBytes);
    }
    png_write_end(png, info);
    return true;
}

} // namespace

std::vector<std::uint8_t> encodeMonoPng(const MonoBitmap& bitmap, std::uint32_t pixelsPerMetre) {
    if (bitmap.width() <= 0 || bitmap.height() <= 0 || pixelsPerMetre == 0) {
        return {};
    }
    const std::size_t rowBytes = (static_cast<std::size_t>(bitmap.width()) + 7) / 8;
    const std::vector<std::uint8_t> packed = packRows(bitmap, rowBytes);
    std::vector<std::uint8_t> out;

    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    const bool written = info != nullptr && writePng(png, info, packed.data(), rowBytes, bitmap.width(),
                                                     bitmap.height(), pixelsPerMetre, &out);
    png_destroy_write_struct(&png, &info);
    if (!written) {
        out.clear();
    }
    return out;
}

} // namespace wordbm
