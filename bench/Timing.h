#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

// What the benchmarks that time whole exports share: a steady clock and the median of their samples,
// which a single slow start of the office worker does not move.
namespace bench {

using Clock = std::chrono::steady_clock;

inline double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

inline double median(std::vector<double> samples) {
    if (samples.empty()) {
        return 0;
    }
    std::sort(samples.begin(), samples.end());
    const std::size_t middle = samples.size() / 2;
    return samples.size() % 2 ? samples[middle] : (samples[middle - 1] + samples[middle]) / 2;
}

} // namespace bench
