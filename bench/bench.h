#pragma once

// What the benchmarks share: the median of a set of timings, and seconds
// since a moment.

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

// The middle value; for an even count, the mean of the two middle ones.
inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2.0;
}

inline double Seconds(Clock::time_point from) {
    return std::chrono::duration<double>(Clock::now() - from).count();
}

} // namespace bench
