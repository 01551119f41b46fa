#pragma once

#include <cstdint>
#include <vector>

namespace wordbm {

// A PNG read back with libpng as 8-bit grey (0 black, 255 white); empty when unreadable.
struct GrayImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    static GrayImage fromPng(const std::vector<std::uint8_t>& png);
    bool isBlack(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)] < 128; }
    // A copy inside a white margin, the quiet zone that the payment part gives the code.
    GrayImage withMargin(int margin) const;
};

// Pixels per metre of the pHYs chunk, 0 without one.
std::uint32_t pngPixelsPerMetre(const std::vector<std::uint8_t>& png);

} // namespace wordbm
