#pragma once

// What the two tables paint in each cell, as plain functions of plain data,
// and the one routine that draws a cell tile (fill, then frame).

#include "platform/basic.h"
#include "platform/graphics.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace varnock {

namespace colors {
inline constexpr Color kLabelRow = 0xFAFAFA;
inline constexpr Color kOpenString = 0xEEEEEE;
inline constexpr Color kGradientTop = 0xFDFEFF;
inline constexpr Color kGradientGreen = 0xAAFFAA;
inline constexpr Color kGradientGrey = 0xE6E7E8;
inline constexpr Color kFrameDark = 0x999999;
inline constexpr Color kFrameLight = 0xF0F0F0;
// The chord's notes, root first; the notes table uses them as the legend.
inline constexpr Color kNote[4] = {0x00AA00, 0x0000BB, 0xBB00BB, 0xAA0000};
// A scale's fifth to seventh notes: dark enough on the green and grey tiles,
// and far in hue from the root's green and from each other.
inline constexpr Color kScaleNote[3] = {0xC05800, 0x007A7A, 0x6A2C91};
// The export's palette for every eye: four hues of the Okabe-Ito set, which
// stay apart under the common colour blindnesses, and a neutral stripe.
inline constexpr Color kToneColourBlind[4] = {0x0072B2, 0xE69F00, 0xCC79A7, 0xF0E442};
inline constexpr Color kStripeColourBlind = 0xCDD0D4;
} // namespace colors

// How an export colours the chord's tones: as the window does (coloured
// text), or each tone's cell filled with its hue and the text in black or
// white, whichever stands out more.
enum class Palette { Window, ColourBlind };

// The WCAG contrast ratio of two colours, 1 to 21.
double ContrastRatio(Color a, Color b);
// Black or white, whichever has the greater contrast on `fill`.
Color TextColorOn(Color fill);

enum class Fill { None, Flat, Gradient };

struct FillRule {
    Fill kind = Fill::None;
    Color color = 0; // flat colour, or the gradient's bottom colour
};

// A fill rule in a palette: the colour-blind one has no green stripe.
FillRule InPalette(FillRule rule, Palette palette);

// The chart's fill for a cell; rows at or beyond rowCount get none (plain list
// background). The row test comes before the column test.
FillRule ChartFillRule(Int row, Int column, Int rowCount);

// The notes table's fill: the grey gradient on every existing row.
FillRule NotesFillRule(Int row, Int rowCount);

// Colour of line y of a vertical gradient H pixels high, each channel
// ((H - y) / H) * top + (y / H) * bottom, cut toward zero.
Color GradientColor(Color top, Color bottom, Int y, Int height);

// The chart's text colour: the first of the four notes that equals the cell's
// text as a whole. A blank cell equals an empty note slot.
std::optional<Color> ChartTextColor(const std::string &text, const std::string &note1,
                                    const std::string &note2, const std::string &note3,
                                    const std::string &note4);

// The notes table's text colour, by column alone.
std::optional<Color> NotesTextColor(Int column);

// The text events of the two tables: a chart cell in the colour of its note
// (false, the list's own text, when no note matches), a notes cell in its
// column's colour.
bool PaintChartText(Graphics &g, const std::string &text, const std::array<std::string, 4> &notes,
                    Int x, Int y);
bool PaintNotesText(Graphics &g, const std::string &text, Int column, Int x, Int y);

// PaintChartText and PaintNotesText in a palette.
bool PaintChartText(Graphics &g, const std::string &text, const std::array<std::string, 4> &notes,
                    Int x, Int y, Palette palette);
bool PaintNotesText(Graphics &g, const std::string &text, Int column, Int x, Int y,
                    Palette palette);

// A cell whose meaning is known: the text in the colour of tone `tone` (the
// chord's four, then a scale's three more) in the palette; false for a cell
// that is no tone.
bool PaintToneText(Graphics &g, const std::string &text, Int tone, Int x, Int y, Palette palette);

// Draws the tile of a cell: the fill, then the four frame lines. Draws nothing
// for Fill::None.
void PaintTile(Graphics &g, const FillRule &rule);

} // namespace varnock
