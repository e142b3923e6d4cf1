#pragma once

// The chart of a scale: the board's sheet with the scale's notes in place of
// a chord's, spelled as a musician spells them, so every writer draws it as
// it draws a chord.

#include "music/chartsheet.h"
#include "music/scales.h"

#include <string>

namespace varnock::output {

using namespace music;

// `board` is any sheet of the layout and tuning; its chord is replaced by the
// scale on `root` as typed in English names ("Bb", "F#"): each note where a
// position sounds it, the root's colour first, the notes table holding the
// notes in two rows of four under headings of their degrees ("R / 5").
// BadInput for a root that is no note name.
ChartSheet ScaleSheet(const ChartSheet &board, const Scale &scale, const std::string &root);

} // namespace varnock::output
