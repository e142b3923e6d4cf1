#pragma once

// The song sheet a player puts on a music stand: title and artist, the
// song's chord diagrams in a row at the top (as --voicings draws them, the
// board's fret names beside them), then the lyrics with each chord's name
// above its syllable, sections set apart, on pages of the paper asked for.
// A lyric line never leaves its chords for the next page.

#include "export/songtext.h"
#include "export/writers.h"

#include <vector>

namespace varnock::output {

// Returns the number of pages.
int WriteSongSheet(const FileName &path, const Song &song, const std::vector<SongChord> &chords,
                   const SongBoard &board, Paper paper);

} // namespace varnock::output
