#pragma once

// The sheet: what the chart shows for an instrument and a chord, as plain
// data that nothing changes afterwards, computed by one pure function that
// the window's controller and every export call. Each cell knows what it
// means (the pitch it sounds and the chord tone it is) beside the text the
// window shows, so naming the notes otherwise is a new sheet whose texts are
// chosen from that meaning, never read back from text.

#include "music/instrument.h"
#include "platform/basic.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace varnock {

// The notes table's heading line.
inline constexpr std::array<std::string_view, 4> kNotesTableHeadings = {"Root", "2nd Note",
                                                                        "3rd Note", "4th Note"};

// What a chart cell means.
struct ChartCell {
    int pitch = 0; // the pitch class the string sounds there
    int tone = -1; // which note of the chord (or scale) it is, its index in ColourKeys(); -1 none
    bool operator==(const ChartCell &) const = default;
};

struct ChartSheet {
    Int mode = 0;                                    // the fret layout, PopupMenu9's index
    std::vector<std::string> headings;               // the chart's heading line, a column each
    std::vector<std::vector<std::string>> rows;      // the label row, then a row per string
    std::vector<std::string> notesHeadings;          // the notes table's heading line
    std::vector<std::vector<std::string>> notesRows; // the notes table's rows
    // Note1..Note4: the chord's names in formula order, the keys of the
    // chart's text colours; "" in a slot the chord does not reach.
    std::array<std::string, 4> notes;
    // A scale's notes past the fourth, in order: keys of further colours. The
    // program's chords never have any.
    std::vector<std::string> extraNotes;
    // Each note's degree above the root ("R", "b3"), in the order of
    // ChordNotes(), where an export has named them.
    std::vector<std::string> degrees;
    std::vector<int> openNotes;           // the open note index of each string, Bass first
    std::vector<std::string> stringNames; // each string's open note by name, Bass first
    int root = 0;                         // the root's note index
    Int chordType = 0;                    // index of the chord type, -1 for none
    std::string rootItem, chordItem;      // the root and chord popups' texts
    // Per string, positions 0..22: what each string row's cell means.
    std::vector<std::vector<ChartCell>> cells;
    int capo = 0; // the position a capo stands at; the open-string column sounds there

    // The heading line as written out: the capo's column headed "capo".
    std::vector<std::string> ShownHeadings() const;
    // The instrument the sheet is drawn for.
    music::Instrument Instrument() const { return {static_cast<int>(mode), openNotes, {}, capo}; }

    Int StringCount() const { return static_cast<Int>(openNotes.size()); }
    // The notes in order, as the notes table names them: a chord's in its
    // first row (a second holds degrees), a scale's four to a row. Blanks
    // left out.
    std::vector<std::string> ChordNotes() const;
    // The keys of the text colours in order: notes, then extraNotes.
    std::vector<std::string> ColourKeys() const;
};

// The chart of `chordType` (0..31) on `root` (0..11) for the instrument, as
// the window shows it: its heading line and label row, a row per string with
// the model's sharp name wherever a chord note sounds, and the notes table;
// then the capo, if the instrument has one (WithCapo).
ChartSheet ComputeSheet(const music::Instrument &instrument, int root, int chordType);

// The sheet with a capo at `capo`: the open-string column shows (and means)
// what sounds at the capo, the positions below it are empty. The same sheet for 0.
ChartSheet WithCapo(const ChartSheet &sheet, int capo);

// The sheet with every chord cell's text and the colour keys renamed, and the
// notes table's names when `notesTable`: tone i is called names[i] (in
// ColourKeys() order). Cells keep their meaning and their colours.
ChartSheet Renamed(const ChartSheet &sheet, const std::vector<std::string> &names,
                   bool notesTable = true);

} // namespace varnock
