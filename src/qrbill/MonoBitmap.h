#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace wordbm {

// A square-or-not picture of black and white pixels, the drawing surface of the QR image.
// Every pixel starts white. Pixels are kept as a PNG stores one-bit greyscale (eight a byte, most
// significant first, 0 for black), so the picture is written without a pass over every pixel.
class MonoBitmap {
public:
    MonoBitmap(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }

    // Out-of-range coordinates read as white, so callers need not clip.
    bool isBlack(int x, int y) const;

    // Paints the rectangle, clipped to the bitmap.
    void fill(int left, int top, int width, int height, bool black);
    // Makes row `to` a copy of row `from`; both must be in range.
    void copyRow(int from, int to);

    std::size_t rowBytes() const { return rowBytes_; }
    // The packed pixels of row y, which must be in range.
    const std::uint8_t* row(int y) const { return bits_.data() + static_cast<std::size_t>(y) * rowBytes_; }

private:
    void fillRow(std::uint8_t* row, int x0, int x1, bool black);

    int width_;
    int height_;
    std::size_t rowBytes_;
    std::vector<std::uint8_t> bits_;
};

} // namespace wordbm
