#pragma once

// Music theory for varnock-chart's naming, lookup and description options:
// note names in any spelling, chords spelled by degree, chords named from
// their notes or from a fret list, and the chart told in sentences for screen
// readers. No Qt and no window: every answer follows from the arguments (and
// the model's own tables), so the command and the tests call these directly.
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
inline constexpr int kLastPosition = 22;

// --- Note names -------------------------------------------------------------

// The note index of a letter A-G (either case) followed by any number of
// sharps ('#', U+266F, or 'x' for two) or any number of flats ('b', U+266D),
// never both; nullopt for anything else. "B#" is 3 (C), "Fb" is 7 (E).
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

// --- Naming a chord from its notes ------------------------------------------

struct Match {
    int root;   // note index
    int chord;  // chord type, index of the formulas
    bool exact; // the chord has exactly the given notes, not more
    bool operator==(const Match &) const = default;
};

// Every (root, chord type) whose notes are exactly the given ones, then every
// one whose notes include them all; each group by root, then chord index.
// Duplicates collapse; `formulas` is the model's catalogue (MajorChordsInt).
// BadValue unless there are 2 to 4 different notes, each 0..11.
std::vector<Match> Identify(const std::vector<int> &notes,
                            const std::vector<std::string> &formulas);

// "D Maj: D F# A": root, chord name, the notes in formula order. The root is a
// flat name for Flats and a sharp name otherwise; Chord spells by degree from
// that sharp root.
std::string FormatMatch(const Match &match, Spelling spelling,
                        const std::vector<std::string> &chordNames,
                        const std::vector<std::string> &formulas);

// "4,x,2" gives {4, nullopt, 2}: one entry per string, a position 0..22 or
// x/X for a string not played. BadValue for a bad entry or the wrong count.
std::vector<std::optional<int>> ParseFretList(std::string_view text, int strings);

// The notes sounding at the positions on strings tuned to openNotes (same
// count, strings not played skipped, string order kept) in fret layout `mode`.
// BadValue for a mode outside 0..5, a position outside 0..22 or a count mismatch.
std::vector<int> NotesAtFrets(const std::vector<std::optional<int>> &positions, int mode,
                              const std::vector<int> &openNotes);

// --- The chart in words -----------------------------------------------------

struct SheetFacts {
    std::string layoutName;                      // as in the layout popup, e.g. "Diatonic"
    int strings = 0;                             // 3 or 4
    std::vector<std::string> tuning;             // open note of each string, spelled
    std::string chordTitle;                      // e.g. "D Maj"
    std::vector<std::string> notes;              // spelled, root first
    std::vector<std::string> fretNames;          // the layout's names of positions 0..22
    std::vector<std::vector<std::string>> cells; // per string, by position; "" where nothing
};

// One sentence for the layout and tuning, one for the chord, one per string
// listing where each chord note lies, root first, positions ascending, e.g.
// "String 1, tuned D: D at positions 0, 7 (frets 0, 7); no F#; A at position 4 (fret 4)."
// BadValue when the tuning or cells do not match `strings` or a row is longer
// than fretNames.
std::string Describe(const SheetFacts &facts);

} // namespace varnock::theory
