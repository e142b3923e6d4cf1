#pragma once

// Music theory for varnock-chart's naming options: note names in any spelling
// and chords spelled by degree. No Qt and no window: every answer follows from
// the arguments (and the model's own tables), so the command and the tests call
// these directly.
//
// A note index counts semitones above A, 0..11, as in the chord model.

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::theory {

// A value that cannot be used; the message names it and says what is accepted.
struct BadValue : std::runtime_error {
    using std::runtime_error::runtime_error;
};

inline constexpr int kChordTypes = 32;

// --- Note names -------------------------------------------------------------

// The note index of a letter A-G (either case) followed by any number of
// sharps ('#', U+266F, or 'x' for two) or any number of flats ('b', U+266D),
// never both; nullopt for anything else. "B#" is 3, "Cbb" is 0.
std::optional<int> ParseNote(std::string_view text);

enum class Spelling { Sharps, Flats, Chord };
// "sharps", "flats" or "chord" in any case; nullopt otherwise.
std::optional<Spelling> ParseSpelling(std::string_view text);

// The model's names ("A#") and the flat names ("Bb"); the index is taken mod 12.
std::string SharpName(int index);
std::string FlatName(int index);

// --- Spelling by degree -----------------------------------------------------

// The degree (1, 3, 5, 7, 9 ...) of each note of a chord type, in formula
// order. BadValue for a chord index outside 0..31.
const std::vector<int> &ChordDegrees(int chordIndex);

// The chord's notes in formula order: the root exactly as typed, then each note
// on the letter its degree asks for with the accidentals its semitones need
// ("Bb" Maj gives Bb D F, "A#" Maj gives A# C## E#). BadValue for a root that
// ParseNote rejects or a chord index outside 0..31.
std::vector<std::string> SpellChord(std::string_view rootText, int chordIndex);

// A model name in the chosen spelling: Sharps unchanged, Flats its flat name,
// Chord the entry of chordSpelled whose chordSharps entry has the same pitch
// class (unchanged when there is none). Empty stays empty.
std::string Respell(std::string_view sharpName, Spelling spelling,
                    const std::vector<std::string> &chordSharps,
                    const std::vector<std::string> &chordSpelled);

} // namespace varnock::theory
