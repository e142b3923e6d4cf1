#pragma once

// The fret layouts, each written once as one octave of its frets: the
// semitones above the open string and how players name those frets. The 23
// positions of a board, the chart's heading line, its label row and every
// fret name the command reads or prints are derived from it. No Qt.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::music {

// Every board has positions 0..22; position 0 is the open string (or the nut).
inline constexpr int kPositions = 23;
inline constexpr int kLastPosition = kPositions - 1;

// How a layout's heading line names its frets: by position number, or as a
// diatonic board names them, an added fret taking the name of the one below
// with "+" ("6+", "13+").
enum class Naming { Numbers, Diatonic };
// What the chart's label row shows under the heading: the heading's names,
// each fret's diatonic name (a chromatic board told as a diatonic one), or
// nothing.
enum class LabelRow { Heading, Diatonic, None };

struct FretLayout {
    std::string_view name;     // the layout menu's item, "" for the two the menu lacks
    std::array<int, 12> frets; // one octave: semitones above the open string, ascending
    int length;                // how many of `frets` make the octave
    Naming naming;
    LabelRow labels;
};

// By mode, as the layout menu numbers them; 4 and 5 have no menu entry.
inline constexpr std::array<FretLayout, 6> kLayouts = {{
    {"Diatonic", {0, 2, 4, 5, 7, 9, 10}, 7, Naming::Numbers, LabelRow::Heading},
    {"Diatonic with 6+", {0, 2, 4, 5, 7, 9, 10, 11}, 8, Naming::Diatonic, LabelRow::Heading},
    {"Diatonic with 1+ and 6+",
     {0, 2, 3, 4, 5, 7, 9, 10, 11},
     9,
     Naming::Diatonic,
     LabelRow::Heading},
    {"Chromatic", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 12, Naming::Numbers, LabelRow::Diatonic},
    // Five frets to the octave on the minor pentatonic steps.
    {"", {0, 3, 5, 7, 10}, 5, Naming::Numbers, LabelRow::None},
    // Five frets starting 2 above the open string: position 0 is not the open note.
    {"", {2, 4, 5, 8, 9}, 5, Naming::Numbers, LabelRow::None},
}};
inline constexpr int kLayoutCount = static_cast<int>(kLayouts.size());
// The layouts the menu offers come first.
inline constexpr int kMenuLayouts = 4;

// Semitones above the open string at `position`, counted up the neck without
// wrapping (Diatonic: 0 2 4 5 7 9 10 12 14 ...). Also for the heading's
// columns past the last position.
constexpr int FretSemitones(const FretLayout &layout, int position) {
    return layout.frets[static_cast<std::size_t>(position % layout.length)] +
           12 * (position / layout.length);
}

// A fret name: at most "99+" and its end.
struct FretName {
    std::array<char, 4> text{};
    constexpr std::string_view View() const {
        std::size_t n = 0;
        while (n < text.size() && text[n] != '\0')
            ++n;
        return {text.data(), n};
    }
    constexpr const char *CStr() const { return text.data(); }
};

constexpr FretName NumberName(int number, bool plus = false) {
    FretName name;
    std::size_t at = 0;
    if (number >= 10)
        name.text[at++] = static_cast<char>('0' + number / 10);
    name.text[at++] = static_cast<char>('0' + number % 10);
    if (plus)
        name.text[at] = '+';
    return name;
}

// The name a diatonic board gives the fret `semitones` above the open string:
// its number where the diatonic octave has it, else the fret below's with "+".
constexpr FretName DiatonicName(int semitones) {
    const FretLayout &diatonic = kLayouts[0];
    const int octave = semitones / 12, within = semitones % 12;
    int below = 0;
    for (int i = 0; i < diatonic.length; ++i)
        if (diatonic.frets[static_cast<std::size_t>(i)] <= within)
            below = i;
    return NumberName(below + diatonic.length * octave,
                      diatonic.frets[static_cast<std::size_t>(below)] != within);
}

// The heading line's name of a column (0..23; the last is past the board).
constexpr FretName HeadingName(const FretLayout &layout, int column) {
    return layout.naming == Naming::Numbers ? NumberName(column)
                                            : DiatonicName(FretSemitones(layout, column));
}
// The label row's name of a column; empty where the layout shows none.
constexpr FretName LabelName(const FretLayout &layout, int column) {
    switch (layout.labels) {
    case LabelRow::Heading:
        return HeadingName(layout, column);
    case LabelRow::Diatonic:
        return DiatonicName(FretSemitones(layout, column));
    case LabelRow::None:
        break;
    }
    return {};
}

// The layout of a mode; std::out_of_range outside 0..5.
const FretLayout &Layout(int mode);
// The menu's item, or "Layout N" for one the menu lacks.
std::string LayoutName(int mode);

// The names a player calls positions 0..22 by on this layout: the heading's.
std::vector<std::string> FretNames(int mode);
// Positions 0..22 as a diatonic board names them, for a layout whose label
// row shows them (the chromatic board); empty for the others.
std::vector<std::string> DiatonicNames(int mode);

} // namespace varnock::music
