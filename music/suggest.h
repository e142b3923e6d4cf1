#pragma once

// A song's chords on a board: the fingering each gets, and --suggest, which
// tries every key, capo and tuning for the one a player can play most
// easily. On the fingering engine; no Qt.

#include "music/chordname.h"
#include "music/fingering.h"

#include <optional>
#include <string>
#include <vector>

namespace varnock::music {

// A known chord's tones as the fingering engine takes them, degrees from the
// catalogue; empty for an unknown chord.
std::vector<ChordTone> SymbolTones(const ChordSymbol &chord);

struct PlacedShape {
    std::optional<Fingering> fingering; // none when the board cannot play it
    bool relaxed = false;               // found only past the limits: a muted string or a high fret
    std::string reason;       // why there is none within the limits: the engine's sentence
    std::vector<int> missing; // with none at all: the chord's pitches no string has above the capo
};

// The chord's best fingering within `limits`; when there is none, the best
// with a muted string and up to the last position (`relaxed`). With a bass
// note that is a chord tone, the first fingering sounding it on the lowest
// played string wins where one exists.
// `fretNames` name the frets in a reason why there is none.
PlacedShape PlaceChord(const Board &board, const ChordSymbol &chord, const Limits &limits,
                       const std::vector<std::string> &fretNames = {});

struct SuggestRequest {
    int mode = 0;                          // the fret layout
    std::vector<std::vector<int>> tunings; // open notes per tuning; the instrument's first
    std::vector<int> capos;                // capo positions to try, ascending from 0
    int easyFrets = 7; // positions above the capo a hand reaches without climbing
    int reach = 3;
    std::vector<ChordSymbol> chords; // the song's chords, each once
    std::vector<int> uses;           // how often each is played
};

struct Suggestion {
    int semitones = 0; // the transposition, -5..6
    int capo = 0;      // position
    int tuning = 0;    // index into the request's tunings
    int playable = 0;  // known chords with a fingering within the reach
    int known = 0;     // chords of the song on the catalogue's types
    int awkward = 0;   // of the playable, those needing a muted string or a high fret
    int hands = 0;     // hand positions, summed over every chord played
    std::vector<std::size_t> unplayable;          // indices into the request's chords
    std::vector<std::optional<Fingering>> shapes; // per chord, the fingering counted
};

// Every transposition with every capo on every tuning, ranked: every chord
// playable within the reach first (then more playable), then the fewest
// awkward, the lowest hands, the smaller capo, the original key (then the
// smaller move, up before down), the instrument's own tuning first. The best
// `count`. std::invalid_argument for no tunings or capos, or a tuning whose
// length is not that of the first.
std::vector<Suggestion> Suggest(const SuggestRequest &request, std::size_t count = 10);

} // namespace varnock::music
