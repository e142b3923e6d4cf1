#pragma once

// The note names the export writes: the program's sharps, their flats, or
// each note named by its degree above the root. A spelling makes a new sheet
// in which the chart's cells, the notes table and the colour keys are renamed
// together, so every note keeps its colour.

#include "music/chartsheet.h"
#include "music/degrees.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

// The root a chord is spelled from, as typed (WrittenRoot); "" when absent,
// so that Spell names it as a player would.
std::string SpellingRoot(const std::optional<std::string> &typed);
// The same for each entry of a --roots list, one per root ResolveRoots gives.
std::vector<std::string> SpellingRoots(const std::optional<std::string> &list);

// The sheet with its notes renamed; Sharps gives it back as it is. A root
// that is empty or whose pitch is not the sheet's root gives way to the
// sheet's root named by PlainRoot. The strings are named by their open
// notes' sharp or flat names, never as chord tones; with Musician, a
// string's entry of the typed `tuning` ("D,A,Bb") is kept as typed.
ChartSheet Spell(const ChartSheet &sheet, Spelling spelling, const std::string &root,
                 const std::vector<std::string> &tuning = {});

// What the chart's cells show: note names, degrees above the root (R, b3, 5,
// b7, 9), or both ("Eb b7").
enum class Labels { Notes, Degrees, Both };

// The sheet with a second notes row: each note's degree under its name.
// A sheet of no chord type comes back as it is.
ChartSheet WithDegrees(const ChartSheet &sheet);
// The sheet whose chart cells show the labels asked for; the colour keys are
// relabelled with them, so every cell keeps its note's colour. The notes
// table keeps the names.
ChartSheet Label(const ChartSheet &sheet, Labels labels);

} // namespace varnock::output
