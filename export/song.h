#pragma once

// --song FILE: a ChordPro song on the chosen instrument. The song is moved
// (--transpose, --key, or its own {transpose}), put under the capo (--capo or
// its own {capo}), and printed with its fingerings, or ranked by --suggest;
// --pdf draws its sheet and --chordpro writes it back with our fingerings.

#include "export/request.h"
#include "music/chartsheet.h"

#include <string>
#include <vector>

namespace varnock::output {

// Everything is read and checked before any file is handed on: BadInput for
// a file that is no song or a value that is refused. `sheet` is the chart of
// the chosen layout, strings and tuning, in English. Returns what goes to
// standard output.
std::string RunSong(const Asked &asked, const ChartSheet &sheet,
                    const std::vector<std::string> &fretNames);

} // namespace varnock::output
