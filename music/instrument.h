#pragma once

// The instrument a chart, a fingering or a sound is for: its fret layout, its
// strings with their open notes and octaves, and the capo. A plain value:
// everything that knows where a note sounds asks it. No Qt.
//
// A pitch class counts semitones above A, 0..11.

#include "music/layouts.h"

#include <array>
#include <optional>
#include <vector>

namespace varnock::music {

// The pitch class sounding at each position of one string; nullopt where the
// layout has no fret.
using StringFrets = std::array<std::optional<int>, kPositions>;
// One entry per string, in string order: Bass, Middle, Melody, Forth.
using Board = std::vector<StringFrets>;

// The octave of each open string as players tune them: the first string in
// octave 3, each next one the nearest note at or above the string before
// (D A D: D3 A3 D4; D A D G: D3 A3 D4 G4; D A A: D3 A3 A3).
std::vector<int> DefaultOctaves(const std::vector<int> &openNotes);

struct Instrument {
    int layout = 0;             // the layout menu's mode, 0..5
    std::vector<int> openNotes; // pitch class of each open string, Bass first
    std::vector<int> octaves;   // scientific octave of each open string; empty: DefaultOctaves
    int capo = 0;               // the position that acts as the nut; 0 for none

    int Strings() const { return static_cast<int>(openNotes.size()); }
    const FretLayout &Frets() const { return Layout(layout); }
    // The pitch class string `string` sounds at `position`.
    int PitchAt(int string, int position) const;
    // Its MIDI note number, in the string's octave.
    int MidiAt(int string, int position) const;
    // What every position of every string sounds, whatever the capo.
    Board MakeBoard() const;
    bool operator==(const Instrument &) const = default;
};

} // namespace varnock::music
