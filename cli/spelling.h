#pragma once

// The note names the export writes: the program's sharps, their flats, or
// each note named by its degree above the root. A spelling makes a new sheet
// in which the chart's cells, the notes table and the colour keys are renamed
// together, so every note keeps its colour.

#include "chart/chartsheet.h"
#include "cli/degrees.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock::cli {

// "musician" (also when absent), "sharps", "flats" or "chord" in any case;
// BadInput otherwise.
Spelling ResolveSpelling(const std::optional<std::string> &text);

// The root a chord is spelled from, as typed (WrittenRoot); "" when absent,
// so that Spell names it as a player would.
std::string SpellingRoot(const std::optional<std::string> &typed);
// The same for each entry of a --roots list, one per root ResolveRoots gives.
std::vector<std::string> SpellingRoots(const std::optional<std::string> &list);

// The sheet with its notes renamed; Sharps gives it back as it is. A root
// that is empty or whose pitch is not the sheet's root gives way to the
// sheet's root named by PlainRoot. The strings are named as the chart names
// their notes (SpellNote); with Musician, a string's entry of the typed
// `tuning` ("D,A,Bb") is kept as typed.
ChartSheet Spell(const ChartSheet &sheet, Spelling spelling, const std::string &root,
                 const std::vector<std::string> &tuning = {});

} // namespace varnock::cli
