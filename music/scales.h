#pragma once

// Scales and modes: a table of the scales players ask for, found by the names
// they write, spelled from a root as a musician spells them, and the modes a
// string of a fret layout can play with all their notes on its frets. No Qt.
//
// A pitch class counts semitones above A, 0..11, as in the chord model.

#include "music/fingering.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::music {

struct Scale {
    std::string name;                 // "major", "harmonic minor", "blues" ...
    std::string modeName;             // "ionian" .. "locrian" for the seven modes, else ""
    std::vector<std::string> aliases; // other names players write, normalised
    std::vector<int> semitones;       // above the root, ascending, the root's 0 first
    std::vector<std::string> degrees; // "R", "2", "b3", "#4", "b5" ... one per note
};

// The twelve scales: the seven modes ionian to locrian first, in that order,
// then harmonic and melodic minor, major and minor pentatonic, blues.
const std::vector<Scale> &Scales();

// The scale's notes from the root as typed (a letter A-G in either case, then
// '#', 'b', U+266F or U+266D, all of one kind): one letter per degree, so
// seven-note scales use each letter once (D dorian: D E F G A B C; F# major:
// F# G# A# B C# D# E#) and the others take the letter their degree names
// (A blues: A C D Eb E G). std::invalid_argument for a root it cannot read.
std::vector<std::string> SpellScale(std::string_view root, const Scale &scale);

struct ModeFit {
    const Scale *mode = nullptr;
    bool fits = false; // every note of the mode is on some position
    // Per degree of the mode, the positions 0..22 where that note sounds.
    std::vector<std::vector<int>> positions;
    std::vector<std::string> missing; // degrees on no position
};

// For each of the seven modes (ionian .. locrian) on `root`, whether a string
// whose positions sound `string` holds all its notes, and where.
// std::invalid_argument for a root outside 0..11.
std::vector<ModeFit> FindModes(const StringFrets &string, int root);

} // namespace varnock::music
