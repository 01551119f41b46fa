#pragma once

#include <cmath>
#include <cstdint>

// DrawingML measures in English Metric Units; the object model speaks points.
namespace wordbm::ooxml::emu {

inline constexpr std::int64_t PerPoint = 12700;

// Rounded to the nearest unit, so that a value read back gives the same float.
inline std::int64_t fromPoints(float points) {
    return std::llround(static_cast<double>(points) * PerPoint);
}

inline float toPoints(std::int64_t value) {
    return static_cast<float>(static_cast<double>(value) / PerPoint);
}

} // namespace wordbm::ooxml::emu
