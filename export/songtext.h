#pragma once

// A song on the instrument, as text: its chords with the fingering each gets
// on this board, the lyrics with the chords above the syllables they fall on,
// --suggest's table, and the song written back as ChordPro with a {define}
// of each fingering. The song sheet (songsheet.h) draws the same facts.

#include "export/voicings.h"
#include "music/chordpro.h"
#include "music/suggest.h"

#include <string>
#include <utility>
#include <vector>

namespace varnock::output {

// The instrument a song is played on, with the limits of its fingerings.
struct SongBoard {
    int mode = 0;
    std::vector<int> openNotes;
    std::vector<std::string> stringNames; // in the name system, Bass first
    std::vector<std::string> fretNames;   // of positions 0..22
    int capo = 0;
    Limits limits;
    NameSystem system = NameSystem::English;
    bool leftHanded = false;

    // "Diatonic, 3 strings D A D, capo at 2"
    std::string Describe() const;
};

// One chord of the song as the board plays it.
struct SongChord {
    ChordSymbol symbol;           // as the song writes it, read in the name system
    PlacedShape shape;            // the fingering, or why there is none
    std::vector<ChordTone> tones; // empty for a chord none of the 32 types matches
    Voicing voicing;              // of shape.fingering, notes in the name system
    // What is said instead of or after the fingering: "not on this board:
    // no string has Bb", "past the limits: a muted string or a high fret",
    // "not a chord type Varnock knows: shown as written".
    std::string note;
};

// The song's chords in order of first use.
std::vector<SongChord> PlaceSongChords(const Song &song, const SongBoard &board);

// "D       0 0 2 | D A F# | R 5 3": a chord's line in the list.
std::string SongChordLine(const SongChord &chord, std::size_t width = 8);

// A lyric line as two: its chords, each name starting above the character
// it falls on ("" when it has none), and its words, which make way where a
// name needs more room than the words before the next one give it.
std::pair<std::string, std::string> ChordsOverWords(const SongLine &line);

// The heading of a section: its label, else its name ("Chorus").
std::string SectionHeading(const SongLine &start);

// Title and artist, the instrument and key, the chords, then the lyrics.
std::string SongText(const Song &song, const std::vector<SongChord> &chords,
                     const SongBoard &board);

// --suggest: a table of the best options, then the first one's fingerings.
struct SuggestTable {
    std::string title;                    // the song's
    std::vector<std::string> tuningNames; // "D A D", per tuning of the request
    std::vector<Suggestion> suggestions;  // best first
    std::vector<std::string> keys;        // per suggestion: the key it moves the song to
    std::vector<std::string> notPlayable; // per suggestion: the chords it cannot play
    std::vector<std::string> capoNames;   // fret names of capo positions
    std::vector<SongChord> firstChords;   // the first suggestion's chords, fingered
    std::string firstBoard;               // the first suggestion's board, described
    int reach = 3;
};
std::string SuggestText(const SuggestTable &table);

// The song as ChordPro: title, artist, key and {capo} as played, a {define}
// per fingered chord (frets counted from the nut), then the lines as read.
std::string ChordProText(const Song &song, const std::vector<SongChord> &chords,
                         const SongBoard &board);

} // namespace varnock::output
