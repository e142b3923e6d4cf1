#pragma once

// Naming a chord from its notes, and the notes a fret list sounds. No Qt.
// A note index counts semitones above A, 0..11.

#include "music/catalogue.h"
#include "music/degrees.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::music {

struct Match {
    int root;   // note index
    int chord;  // chord type, index of the catalogue
    bool exact; // the chord has exactly the given notes, not more
    bool operator==(const Match &) const = default;
};

// Every (root, chord type) whose notes are exactly the given ones, then every
// one whose notes include them all; each group by root, then chord index.
// Duplicates collapse. BadInput unless there are 2 to 4 different notes, each 0..11.
std::vector<Match> Identify(const std::vector<int> &notes);

// "D Maj: D F# A": root, chord name, the notes in formula order. The root is a
// flat name for Flats, a sharp name for Sharps, and PlainRoot's name for Chord
// and Musician, which spell the chord by degree from it.
// In the name system given.
std::string FormatMatch(const Match &match, Spelling spelling,
                        catalogue::NameSystem system = catalogue::NameSystem::English);

// "4,x,2" gives {4, nullopt, 2}: one entry per string, a position 0..22 or
// x/X for a string not played. BadInput for a bad entry or the wrong count.
std::vector<std::optional<int>> ParseFretList(std::string_view text, int strings);

// The notes sounding at the positions on strings tuned to openNotes (same
// count, strings not played skipped, string order kept) in fret layout `mode`.
// BadInput for a mode outside 0..5, a position outside 0..22 or a count mismatch.
std::vector<int> NotesAtFrets(const std::vector<std::optional<int>> &positions, int mode,
                              const std::vector<int> &openNotes);

} // namespace varnock::music
