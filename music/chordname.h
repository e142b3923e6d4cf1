#pragma once

// Chord names as songs write them ("F#m7", "Bbmaj7/D", "CΔ", "Esus", "Am7b5")
// read onto the catalogue's 32 chord types, keys, and moving a song to
// another key spelled as a musician would write it there. No Qt.

#include "music/catalogue.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::music {

using catalogue::NameSystem;
using catalogue::WrittenNote;

struct ChordSymbol {
    std::string written;             // as the song has it
    std::optional<WrittenNote> root; // none when the name starts with no note
    std::string quality;             // what follows the root, as written ("m7", "sus")
    int type = -1;                   // the catalogue's chord type; -1 when none matches
    std::optional<WrittenNote> bass; // after a "/"
    bool Known() const { return root && type >= 0; }
};

// The chord type a quality stands for in common notation ("", "m", "min",
// "-", "maj7", "M7", "Δ", "dim", "°", "aug", "+", "sus", "7sus4", "add9",
// "6/9", ...); nullopt for one none of the 32 matches ("m7b5", "7#9").
std::optional<int> QualityType(std::string_view quality);

// A chord name read in a name system. The root is the longest note name that
// starts the text, unless a shorter one leaves a known quality (German
// "Esus4" is E sus4, not Es "us4"). Never throws: what cannot be read is kept
// as written, with no root or type -1.
ChordSymbol ReadChordSymbol(std::string_view text, NameSystem system = NameSystem::English);

// The name written in a system: root, the quality as the song wrote it, bass.
// A chord without a root comes back as written.
std::string WriteChordSymbol(const ChordSymbol &chord, NameSystem system = NameSystem::English);

// The pitch classes of a known chord, root first, as the catalogue orders
// them; empty for an unknown one.
std::vector<int> ChordPitches(const ChordSymbol &chord);

struct Key {
    WrittenNote tonic;
    bool minor = false;
    bool operator==(const Key &) const = default;
};

// "G", "Em", "Bb", "F#m", "Ebmin", "A minor"; nullopt for anything else.
std::optional<Key> ReadKey(std::string_view text, NameSystem system = NameSystem::English);
std::string WriteKey(const Key &key, NameSystem system = NameSystem::English);

// Sharps (positive) or flats (negative) in the key's signature: G 1, F -1, Em 1.
int Signature(const Key &key);

// The key `semitones` above, named with the fewer accidentals in its
// signature (Eb, not D#); a tie (F# / Gb) takes the sharps.
Key TransposeKey(const Key &key, int semitones);

// The key a song is in: its tonic from the first chord with a root, minor
// where that chord has a minor third and a perfect fifth. nullopt for none.
std::optional<Key> GuessKey(const std::vector<ChordSymbol> &chords);

// The chord moved from one key to another: its root is read as the degree
// of the old key players mean by its distance above the tonic, and written
// as that degree of the new key (V of Eb is Bb, not A#; a B chord in Eb, its
// flat sixth, is Bb in D); a diminished chord's root is a raised degree
// (G#dim in Am is Bdim in Cm). The bass keeps its interval to the root. A
// note that would need a double sharp or flat is named with the new key's
// kind of accidental instead.
ChordSymbol TransposeChord(const ChordSymbol &chord, const Key &from, const Key &to);

} // namespace varnock::music
