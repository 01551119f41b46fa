#pragma once

#include <cstdint>
#include <vector>

namespace wordbm {

// A square-or-not picture of black and white pixels, the drawing surface of the QR image.
// Every pixel starts white.
class MonoBitmap {
public:
    MonoBitmap(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }

    // Out-of-range coordinates read as white, so callers need not clip.
    bool isBlack(int x, int y) const;

    // Paints the rectangle, clipped to the bitmap.
    void fill(int left, int top, int width, int height, bool black);

private:
    int width_;
    int height_;
    std::vector<std::uint8_t> black_;
};

} // namespace wordbm
