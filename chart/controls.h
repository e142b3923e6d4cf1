#pragma once

// The main window's controls as data, in the order of their creation: name,
// kind, place, tab index, visibility and contents. The controller makes its
// popups and lists from this table, the window places a widget for each row,
// and the export command finds the sheet's parts here.

#include "platform/basic.h"

#include <array>
#include <span>
#include <string_view>

namespace varnock {

enum class ControlKind { PopupMenu, Listbox, Label };

struct ControlSpec {
    const char *name;
    ControlKind kind;
    int left, top, width, height;
    int tabIndex;
    bool visible;
    // A popup's items, or a label's text as the one entry.
    std::span<const char *const> items;
    // A popup's ListIndex at creation.
    Int listIndex = 0;
    // A list's columns and row height.
    Int columns = 0, rowHeight = 0;
};

namespace items {
// PopupMenu1: the roots, a note index each, with the flat beside the sharp.
extern const std::array<const char *, 12> kRoots;
// PopupMenu2: the chord types, in the order of the model's formulas.
extern const std::array<const char *, 32> kChords;
// PopupMenu4: the further chord types, which have no formulas.
extern const std::array<const char *, 18> kOtherChords;
// PopupMenu5 to PopupMenu8: the open note of a string, from D.
extern const std::array<const char *, 12> kTuning;
// PopupMenu9: the fret layouts the menu offers, added as the window opens.
extern const std::array<const char *, 4> kLayouts;
// The notes table's headings.
extern const std::array<const char *, 4> kNotesHeadings;
// The chart's headings of columns 0..23 in modes 1 and 2.
extern const std::array<const char *, 24> kHeadingsMode1;
extern const std::array<const char *, 24> kHeadingsMode2;
// The chromatic board's frets named as on a diatonic one, columns 0..23.
extern const std::array<const char *, 24> kChromaticLabels;
} // namespace items

extern const std::array<ControlSpec, 15> kControls;

// The row of the table for `name`; std::out_of_range for a name it lacks.
const ControlSpec &ControlByName(std::string_view name);

// Content area of the main window, which cannot be resized.
inline constexpr int kWindowWidth = 906;
inline constexpr int kWindowHeight = 320;

} // namespace varnock
