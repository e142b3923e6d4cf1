#pragma once

// The note names the export writes: the program's sharps, their flats, or
// each note named by its degree above the root. The chart's cells, the notes
// table and the model's Note1..Note4, which the cell painting compares the
// cells with, are renamed together, so every note keeps its colour.

#include "cli/theory.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock {
class ChartController;
}

namespace varnock::chart {

// "sharps" (also when absent), "flats" or "chord" in any case; BadInput otherwise.
theory::Spelling ResolveSpelling(const std::optional<std::string> &text);

// The root a chord is spelled from, as typed with its first letter in upper
// case; the sharp of a menu item text such as "F# / Gb"; "A" when absent.
std::string SpellingRoot(const std::optional<std::string> &typed);
// The same for each entry of a --roots list, one per root ResolveRoots gives.
std::vector<std::string> SpellingRoots(const std::optional<std::string> &list);

// Renames the notes after a recompute; Sharps leaves them as computed. A root
// whose pitch is not the selected root's gives way to the selected root.
void ApplySpelling(ChartController &chart, theory::Spelling spelling, const std::string &root);

// A note index as the chart would spell it: its name among the chord's notes
// (`chordNotes`, already spelled), else its flat name for Flats, else its sharp.
std::string SpellNote(int note, theory::Spelling spelling,
                      const std::vector<std::string> &chordNotes);

} // namespace varnock::chart
