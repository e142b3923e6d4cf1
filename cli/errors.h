#pragma once

// The ways varnock-chart fails, each with its exit status.

#include <stdexcept>

namespace varnock::cli {

// A value the user gave that names nothing we know: one line saying what is
// accepted, nothing written.
struct BadInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A file that could not be written.
struct WriteFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

inline constexpr int kExitDone = 0;
inline constexpr int kExitWriteFailed = 1;
inline constexpr int kExitBadInput = 2;
// Anything else: a fault of ours, not of the input.
inline constexpr int kExitUnexpected = 3;

} // namespace varnock::cli
