#pragma once

// The names the user types, resolved to the program's own menu items:
// layouts, string counts, tunings, roots and chords. A name that matches
// nothing is BadInput naming the bad value and what is accepted, with a
// suggestion where a musician's near miss is plain.

#include "cli/options.h"
#include "platform/basic.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock {
class ChartController;
}

namespace varnock::cli {

// Fret layouts by mode number: the four of the program's menu and two more.
constexpr int kModes = 6;

// A selection as popup indices.
struct Selection {
    std::optional<int> frets, strings, root, chord;
    std::vector<int> tuning; // up to four tuning popup indices, Bass first
};

Selection Resolve(const Options &options);
int ResolveRoot(const std::string &text);
int ResolveChord(const std::string &text);
// A comma-separated list of roots or chords; "" or absent means all of them.
std::vector<int> ResolveRoots(const std::optional<std::string> &list);
std::vector<int> ResolveChords(const std::optional<std::string> &list);
// "D, F#,a" as note indices: 2 to 4 names in any spelling, at least two of
// them different.
std::vector<int> ResolveNoteList(const std::string &list);

// Sets the popups as a user would; each change recomputes the chart. The
// layouts the menu lacks are reached by their mode number.
void Apply(ChartController &chart, const Selection &selection);

// The name of a fret layout: its menu item, or "Layout N" for one the menu lacks.
std::string LayoutName(Int mode);

// "a, b , c" as its trimmed entries; "" gives one empty entry.
std::vector<std::string> SplitList(const std::string &text);
std::string Join(const std::vector<std::string> &parts, const std::string &separator);

} // namespace varnock::cli
