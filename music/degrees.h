#pragma once

// Naming the notes of a chord: the model's sharps, their flats, or each note
// by its degree above the root as the player wrote the root. No Qt.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::music {

// Musician: each chord tone by its degree above the root (as Chord), the
// root as typed, or where nobody typed it the spelling with fewer
// accidentals; other notes as typed, else in the root's direction.
enum class Spelling { Sharps, Flats, Chord, Musician };

// The chord's notes in formula order: the root exactly as given, then each note on the letter its
// degree asks for with the accidentals its semitones need ("Bb" Maj gives Bb D F, "A#" Maj gives A#
// C## E#). BadInput for a root that is no note name or a chord index outside 0..31.
std::vector<std::string> SpellChord(std::string_view rootText, int chordIndex);

// The name a player gives a root nobody typed: of its sharp and flat name,
// the one whose chord has fewer accidentals, then the one whose major scale
// has fewer (the key it is read in: Eb m, not D# m), then the sharp. So
// Bb maj7, Db Maj, F# Maj, C# m, G# Dim7.
std::string PlainRoot(int note, int chordIndex);

// True when the chord spelled from `root` names every note of `typed` that
// it holds exactly as typed ("A#" fits A#,Cx,E# but not A#,D,F,A).
bool FitsTyped(std::string_view root, int chordIndex, const std::vector<std::string> &typed);

// A root as the chord spelling keeps it: as typed with its letter in upper
// case; "F# / Gb", a menu item's text, gives "F#".
std::string WrittenRoot(std::string_view typed);

// A note index as the chart would name it: its name among the chord's notes
// (`chordNotes`, already spelled), else its flat name for Flats or for
// Musician with a flat root, else its sharp.
std::string SpellNote(int note, Spelling spelling, const std::vector<std::string> &chordNotes);

} // namespace varnock::music
