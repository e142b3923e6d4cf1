#pragma once

// Naming the notes of a chord: the model's sharps, their flats, or each note
// by its degree above the root as the player wrote the root. No Qt.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::cli {

enum class Spelling { Sharps, Flats, Chord };
// "sharps", "flats" or "chord" in any case; nullopt otherwise.
std::optional<Spelling> ParseSpelling(std::string_view text);

// The chord's notes in formula order: the root exactly as given, then each note on the letter its
// degree asks for with the accidentals its semitones need ("Bb" Maj gives Bb D F, "A#" Maj gives A#
// C## E#). BadInput for a root that is no note name or a chord index outside 0..31.
std::vector<std::string> SpellChord(std::string_view rootText, int chordIndex);

// A root as the chord spelling keeps it: as typed with its letter in upper
// case; "F# / Gb", a menu item's text, gives "F#".
std::string WrittenRoot(std::string_view typed);

// A model name in the chosen spelling: Sharps unchanged, Flats its flat name,
// Chord the entry of chordSpelled whose chordSharps entry has the same pitch
// class (unchanged when there is none). Empty stays empty.
std::string Respell(std::string_view sharpName, Spelling spelling,
                    const std::vector<std::string> &chordSharps,
                    const std::vector<std::string> &chordSpelled);

// A note index as the chart would name it: its name among the chord's notes
// (`chordNotes`, already spelled), else its flat name for Flats, else its sharp.
std::string SpellNote(int note, Spelling spelling, const std::vector<std::string> &chordNotes);

} // namespace varnock::cli
