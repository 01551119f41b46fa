#pragma once

#include <compare>
#include <cstdint>

namespace wordbm {

// 64-bit fixed point with four decimals, as the billing data uses for amounts.
struct Currency {
    static constexpr std::int64_t Scale = 10000;
    std::int64_t scaled = 0; // value * 10000

    static constexpr Currency fromUnits(std::int64_t units) { return Currency{units * Scale}; }
    constexpr double toDouble() const { return static_cast<double>(scaled) / Scale; }
    auto operator<=>(const Currency&) const = default;
};

} // namespace wordbm
