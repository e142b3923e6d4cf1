#pragma once

// A value a player gave that names nothing we know: one line saying what is
// accepted. Every layer that reads what was typed throws it; the command
// turns it into its exit status.

#include <stdexcept>

namespace varnock::music {

struct BadInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace varnock::music
