#pragma once

// Fingerings of a chord: one position (or a muted string) per string, whose
// notes together are exactly the chord, within the reach of a hand. Plain data
// in and out, no Qt and no chart: the board is the note under every position
// of every string, the chord is its tones in formula order.
//
// A pitch class counts semitones above A, 0..11, as in the chord model.

#include "music/instrument.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace varnock::music {

inline constexpr int kMuted = -1; // a string not played

// The board of fret layout `mode` (0..5, as the layout menu numbers them) with
// strings tuned to `openNotes`, from the chord model's own tables.
// std::invalid_argument for a mode outside 0..5 or an open note outside 0..11.
Board BoardFor(int mode, const std::vector<int> &openNotes);

// Semitones above the open string at each position of layout `mode`, counted
// up the neck without wrapping (mode 0: 0 2 4 5 7 9 10 12 14 ...), so a caller
// can give a fretted string its octave. std::invalid_argument outside 0..5.
std::array<int, kPositions> FretSemitones(int mode);

struct ChordTone {
    int pitch = 0;      // pitch class 0..11
    std::string degree; // as the caller writes it: "R", "b3", "5", "9" ...
};

struct Limits {
    int reach = 3;               // largest distance between fretted strings' positions
    int highest = kLastPosition; // highest position used; the caller resolves its default
    bool mutedOk = false;        // a string may be left unplayed
    int count = 10;              // how many fingerings to return at most
    int capo = 0;                // the position that acts as the nut; 0 for none
};

struct Fingering {
    std::vector<int> positions; // per string: a position, or kMuted
    std::vector<int> tones;     // per string: index into the chord's tones, or -1 when muted
    std::vector<int> omitted;   // indices of the tones left out, in the order they were dropped
    int fretted = 0;            // strings played above the capo (or nut)
    int hand = 0;               // lowest fretted position; the capo when nothing is fretted
    int reach = 0;              // highest minus lowest fretted position
    bool rootInBass = false;    // the lowest sounding string plays the root
    bool operator==(const Fingering &) const = default;
};

enum class Limit { Reach, Highest, MutedOk };

struct FingeringResult {
    std::vector<Fingering> fingerings; // best first, at most limits.count
    // When there are none: each limit that, raised alone, would give one (in
    // the order reach, highest, muted-ok), and a sentence naming them.
    std::vector<Limit> raise;
    std::string reason;
};

// The tones a board with `strings` strings leaves out of a chord of these
// tones, in the order they go: the fifth (seven semitones above the root)
// first, then the root, then the last-named tones backwards. Empty when every
// tone has a string.
std::vector<int> OmittedTones(const std::vector<ChordTone> &tones, int strings);

// Every fingering of the chord (tones[0] is the root) within the limits,
// ranked: fewer fretted strings, then the lower hand position, then the
// smaller reach, then the root on the lowest sounding string, then position by
// position from the first string (a muted string after every position).
// std::invalid_argument for a board of other than 1..4 strings, no tones, a
// tone outside 0..11, or limits out of range (reach < 1, highest or capo
// outside 0..22, count < 1).
FingeringResult FindFingerings(const Board &board, const std::vector<ChordTone> &tones,
                               const Limits &limits);
// The same, a reason naming frets by `fretNames` (as --highest takes them).
FingeringResult FindFingerings(const Board &board, const std::vector<ChordTone> &tones,
                               const Limits &limits, const std::vector<std::string> &fretNames);
// The same on an instrument: its capo is the limits', and a reason names
// frets as the layout names them.
FingeringResult FindFingerings(const Instrument &instrument, const std::vector<ChordTone> &tones,
                               Limits limits);

} // namespace varnock::music
