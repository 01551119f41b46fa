#pragma once

#include "qrbill/MonoBitmap.h"

#include <cstdint>
#include <vector>

namespace wordbm {

// The bitmap as a 1-bit greyscale PNG whose pHYs chunk carries `pixelsPerMetre` in both directions,
// so that a word processor inserts it at its physical size. Empty when libpng fails.
std::vector<std::uint8_t> encodeMonoPng(const MonoBitmap& bitmap, std::uint32_t pixelsPerMetre);

} // namespace wordbm
