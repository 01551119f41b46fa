#pragma once

#include <compare>

namespace wordbm {

// A point in time as OLE serial days: 0 is 30 December 1899, the fraction is the time of day.
struct Date {
    double serial = 0.0;
    auto operator<=>(const Date&) const = default;
};

} // namespace wordbm
