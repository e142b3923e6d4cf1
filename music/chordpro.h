#pragma once

// Songs in ChordPro, as song sites and songbook tools write them: lyrics with
// [chords] where they fall and {directives} on lines of their own. Read as
// ChordPro processors read them: what is not understood is kept and ignored,
// an unclosed bracket is reported and the rest of its line printed as text.
// No Qt.

#include "music/chordname.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::music {

struct PlacedChord {
    std::size_t at = 0;      // byte offset into the line's text where the chord falls
    std::string name;        // as written
    bool annotation = false; // [*text]: shown above the lyrics, played by nobody
};

struct SongLine {
    enum class Kind {
        Lyrics,       // text with its chords
        Blank,        // an empty line
        Comment,      // {comment}, {c}, {ci}, {cb}, {highlight}
        SectionStart, // {start_of_chorus}, {soc}, ...: `section` names it, `text` its label
        SectionEnd,
        ChorusRecall, // {chorus}: the last chorus is sung here; `text` its label
        Tab,          // a line inside {start_of_tab}, verbatim
        Kept,         // for other programs ({new_page}, {tempo: 90}, # a remark): as written
    };
    Kind kind = Kind::Lyrics;
    std::string text;
    std::vector<PlacedChord> chords;
    std::string section; // the section the line is in ("chorus", "verse", ...), "" outside one
    std::string written; // a Comment's directive as the file names it ("ci", "highlight")
};

struct Song {
    std::string title, artist, key, capo; // as the file gives them
    std::vector<std::string> subtitles;
    std::optional<int> transpose;
    std::vector<std::string> defines; // {define} values, kept for writing back
    std::vector<SongLine> lines;
    std::vector<std::string> warnings; // "line 4, column 9: unclosed [ ..."
    bool latin1 = false;               // the file was not UTF-8 and was read as Latin-1
};

// A song from a file's bytes: UTF-8 (with or without a byte-order mark), or
// Latin-1 when the bytes are not UTF-8. BadInput for bytes that are not text
// (a NUL, or other control characters).
Song ReadChordPro(std::string_view bytes);

// The lines as they are sung: where {chorus} recalls the last chorus, its
// heading and then that chorus's lines again (as ChordPro processors print
// it); the recall alone where no chorus came before.
std::vector<SongLine> SungLines(const Song &song);

// The song's chords in order of first use, each once, as written.
std::vector<std::string> ChordNames(const Song &song);
// How many times each of ChordNames is played.
std::vector<int> ChordUses(const Song &song);

// The song moved between keys: every chord (annotations aside) and the
// {key}. Chord names are read and written in `system`; a name with no root
// stays as it is.
void MoveSong(Song &song, const Key &from, const Key &to, NameSystem system);

} // namespace varnock::music
