#include "qrbill/MonoBitmap.h"

#include <algorithm>
#include <cstddef>

namespace wordbm {

MonoBitmap::MonoBitmap(int width, int height)
    : width_(std::max(width, 0)), height_(std::max(height, 0)),
      black_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0) {}

bool MonoBitmap::isBlack(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) {
        return false;
    }
    return black_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                  static_cast<std::size_t>(x)] != 0;
}

void MonoBitmap::fill(int left, int top, int width, int height, bool black) {
    const int x0 = std::max(left, 0);
    const int y0 = std::max(top, 0);
    const int x1 = std::min(left + width, width_);
    const int y1 = std::min(top + height, height_);
    if (x0 >= x1) {
        return;
    }
    const std::uint8_t value = black ? 1 : 0;
    for (int y = y0; y < y1; ++y) {
        const auto row = black_.begin() + static_cast<std::ptrdiff_t>(y) * width_;
        std::fill(row + x0, row + x1, value);
    }
}

} // namespace wordbm
