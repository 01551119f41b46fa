#include "GrayImage.h"

#include <algorithm>
#include <cstring>
#include <png.h>

namespace wordbm {

GrayImage GrayImage::fromPng(const std::vector<std::uint8_t>& png) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    GrayImage out;
    if (png_image_begin_read_from_memory(&image, png.data(), png.size()) != 0) {
        image.format = PNG_FORMAT_GRAY;
        out.pixels.resize(PNG_IMAGE_SIZE(image));
        if (png_image_finish_read(&image, nullptr, out.pixels.data(), 0, nullptr) != 0) {
            out.width = static_cast<int>(image.width);
            out.height = static_cast<int>(image.height);
        }
    }
    return out;
}

GrayImage GrayImage::withMargin(int margin) const {
    GrayImage out{width + 2 * margin, height + 2 * margin, {}};
    out.pixels.assign(static_cast<std::size_t>(out.width * out.height), 255);
    for (int y = 0; y < height; ++y) {
        std::copy_n(pixels.begin() + y * width, width,
                    out.pixels.begin() + (y + margin) * out.width + margin);
    }
    return out;
}

std::uint32_t pngPixelsPerMetre(const std::vector<std::uint8_t>& png) {
    const auto word = [&](std::size_t at) {
        return std::uint32_t{png[at]} << 24 | std::uint32_t{png[at + 1]} << 16 |
               std::uint32_t{png[at + 2]} << 8 | png[at + 3];
    };
    // Chunks follow the 8-byte signature: length, type, data, CRC. Unit 1 is the metre.
    for (std::size_t at = 8; at + 17 < png.size(); at += 12 + word(at)) {
        if (std::memcmp(&png[at + 4], "pHYs", 4) == 0 && png[at + 16] == 1 && word(at + 8) == word(at + 12)) {
            return word(at + 8);
        }
    }
    return 0;
}

} // namespace wordbm
