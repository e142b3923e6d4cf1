#pragma once

// The sheet: what one recompute of the chart controller shows, as plain
// data that nothing changes afterwards. Every export reads a sheet: text,
// tab-separated rows, sentences, images, PDF pages and the book. Naming the
// notes otherwise is a new sheet made from this one, never an edit of the
// controller's tables.

#include "platform/basic.h"

#include <array>
#include <string>
#include <vector>

namespace varnock {

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

    Int StringCount() const { return static_cast<Int>(openNotes.size()); }
    // The notes in order, as the notes table names them: a chord's in its
    // first row (a second holds degrees), a scale's four to a row. Blanks
    // left out.
    std::vector<std::string> ChordNotes() const;
    // The keys of the text colours in order: notes, then extraNotes.
    std::vector<std::string> ColourKeys() const;
};

} // namespace varnock
