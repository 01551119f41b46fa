#include "qrbill/MonoBitmap.h"

#include <algorithm>
#include <cstring>

namespace wordbm {

namespace {

// The bits of pixels [from, to) within one byte, from < to <= 8.
std::uint8_t bitsBetween(int from, int to) {
    return static_cast<std::uint8_t>((0xFFU >> from) & ~(0xFFU >> to));
}

} // namespace

MonoBitmap::MonoBitmap(int width, int height)
    : width_(std::max(width, 0)), height_(std::max(height, 0)),
      rowBytes_((static_cast<std::size_t>(width_) + 7) / 8),
      bits_(rowBytes_ * static_cast<std::size_t>(height_), 0xFF) {}

bool MonoBitmap::isBlack(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) {
        return false;
    }
    return (row(y)[x / 8] & (0x80U >> (x % 8))) == 0;
}

void MonoBitmap::fill(int left, int top, int width, int height, bool black) {
    const int x0 = std::max(left, 0);
    const int y0 = std::max(top, 0);
    const int x1 = std::min(left + width, width_);
    const int y1 = std::min(top + height, height_);
    if (x0 >= x1) {
        return;
    }
    for (int y = y0; y < y1; ++y) {
        fillRow(bits_.data() + static_cast<std::size_t>(y) * rowBytes_, x0, x1, black);
    }
}

void MonoBitmap::copyRow(int from, int to) {
    std::memcpy(bits_.data() + static_cast<std::size_t>(to) * rowBytes_,
                bits_.data() + static_cast<std::size_t>(from) * rowBytes_, rowBytes_);
}

void MonoBitmap::fillRow(std::uint8_t* row, int x0, int x1, bool black) {
    const auto paint = [black](std::uint8_t& byte, std::uint8_t bits) {
        byte = static_cast<std::uint8_t>(black ? byte & ~bits : byte | bits);
    };
    const int first = x0 / 8;
    const int last = (x1 - 1) / 8;
    if (first == last) {
        paint(row[first], bitsBetween(x0 % 8, (x1 - 1) % 8 + 1));
        return;
    }
    paint(row[first], bitsBetween(x0 % 8, 8));
    std::memset(row + first + 1, black ? 0x00 : 0xFF, static_cast<std::size_t>(last - first - 1));
    paint(row[last], bitsBetween(0, (x1 - 1) % 8 + 1));
}

} // namespace wordbm
