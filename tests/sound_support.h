#pragma once

// Pitch measured from samples, for the tests of the sound and of the files
// the command writes.

#include "cli/sound.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace testsupport {

// The frequency whose period best repeats in a window of the samples:
// normalised autocorrelation, the first peak near the highest, refined by a
// parabola through its neighbours.
inline double MeasuredFrequency(const std::vector<std::int16_t> &s, std::size_t from,
                                std::size_t size) {
    const int minLag = varnock::cli::kSampleRate / 2000, maxLag = varnock::cli::kSampleRate / 60;
    std::vector<double> r(maxLag + 2, 0);
    for (int lag = minLag - 1; lag <= maxLag + 1; ++lag) {
        double sum = 0, e1 = 0, e2 = 0;
        for (std::size_t i = from; i < from + size; ++i) {
            const double a = s.at(i), b = s.at(i + static_cast<std::size_t>(lag));
            sum += a * b;
            e1 += a * a;
            e2 += b * b;
        }
        r[lag] = sum / std::sqrt(e1 * e2 + 1e-9);
    }
    double best = 0;
    for (int lag = minLag; lag <= maxLag; ++lag)
        best = std::max(best, r[lag]);
    for (int lag = minLag; lag <= maxLag; ++lag) {
        if (r[lag] >= 0.95 * best && r[lag] >= r[lag - 1] && r[lag] >= r[lag + 1]) {
            const double shift =
                0.5 * (r[lag - 1] - r[lag + 1]) / (r[lag - 1] - 2 * r[lag] + r[lag + 1]);
            return varnock::cli::kSampleRate / (lag + shift);
        }
    }
    return 0;
}

} // namespace testsupport
