#pragma once

// The names the user types: the words each word-valued option takes (read
// by ReadChoice), and the notes, read by the catalogue in the chosen name
// system. A name that matches nothing is BadInput naming the bad value and
// what is accepted, with the name meant where a near miss is plain.

#include "cli/options.h"
#include "export/notenames.h"
#include "platform/basic.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock::cli {

// What the options choose: a layout (its mode), a string count (0 for 3,
// 1 for 4, as the menu has them), root and chord type by index, open notes.
struct Selection {
    std::optional<int> frets, strings, root, chord;
    std::vector<int> tuning; // up to four open notes, Bass first
};

// The words of the options that take one from a list.
const Choices &LayoutChoices();
const Choices &StringChoices(); // values 3 and 4
const Choices &ChordChoices();
const Choices &ScaleChoices(); // values index Scales()
const Choices &NameChoices();
const Choices &SpellingChoices();
const Choices &LabelChoices();
const Choices &PaletteChoices();
const Choices &PaperChoices();
// The sharps, each followed by its flat, for the completion; notes are read
// by the catalogue, which takes any spelling.
const Choices &NoteChoices();

Selection Resolve(const Options &options);
int ResolveRoot(const std::string &text);
int ResolveChord(const std::string &text);
// A comma-separated list of roots or chords; "" or absent means all of them.
std::vector<int> ResolveRoots(const std::optional<std::string> &list);
std::vector<int> ResolveChords(const std::optional<std::string> &list);

} // namespace varnock::cli
