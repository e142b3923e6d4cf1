#pragma once

// The ways varnock-chart fails, each with its exit status.

#include "export/writers.h"
#include "music/errors.h"

namespace varnock::cli {

// The command speaks the music's and the files' vocabulary.
using namespace music;
using namespace output;

inline constexpr int kExitDone = 0;
inline constexpr int kExitWriteFailed = 1;
inline constexpr int kExitBadInput = 2;
// Anything else: a fault of ours, not of the input.
inline constexpr int kExitUnexpected = 3;

} // namespace varnock::cli
