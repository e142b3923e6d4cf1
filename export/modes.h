#pragma once

// The modes a board's strings play: for each string, from its open note or a
// chosen root, which of the seven modes have every note on the layout's frets,
// and one octave of each up the string, by position and fret name.

#include "music/chartsheet.h"
#include "music/catalogue.h"
#include "music/layouts.h"

#include <optional>
#include <string>

namespace varnock::output {

using namespace music;

// `sheet` gives the layout, tuning and fret names; `root` is a note name in
// English as typed ("F#", "Bb"), or nullopt for each string's open note. The
// text names notes in `names`.
std::string ModesText(const ChartSheet &sheet, const std::optional<std::string> &root,
                      catalogue::NameSystem names);

} // namespace varnock::output
