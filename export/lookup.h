#pragma once

// --identify and --identify-frets: the chords of the catalogue named from a
// set of notes, or from the notes a fret list sounds on the chosen instrument.

#include "music/catalogue.h"
#include "music/chartsheet.h"
#include "music/degrees.h"

#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

// Every chord of exactly these notes, then every one that holds them all, a
// line each ("D Maj: D F# A"), named in `system`; one line saying so when
// there is none. With
// the Chord and Musician spellings, a root among `typed` is spelled from as
// typed where that names the typed notes as typed (FitsTyped).
std::string IdentifyText(const std::vector<int> &notes, Spelling spelling,
                         const std::vector<std::string> &typed = {},
                         catalogue::NameSystem system = catalogue::NameSystem::English);

// "Notes: ..." for the notes the positions sound on the sheet's layout,
// strings and tuning, then what IdentifyText says of them. BadInput for a bad
// entry, a position outside 0..22 or a count that is not the string count.
std::string IdentifyFretsText(const ChartSheet &sheet, const std::string &list, Spelling spelling,
                              catalogue::NameSystem system = catalogue::NameSystem::English);

} // namespace varnock::output
