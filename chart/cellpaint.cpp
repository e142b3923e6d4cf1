#include "chart/cellpaint.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace varnock {

FillRule ChartFillRule(Int row, Int column, Int rowCount) {
    if (row >= rowCount)
        return {};
    if (row == 0)
        return {Fill::Flat, colors::kLabelRow};
    if (column == 0)
        return {Fill::Flat, colors::kOpenString};
    if (row == 2 || row == 4)
        return {Fill::Gradient, colors::kGradientGreen};
    return {Fill::Gradient, colors::kGradientGrey};
}

FillRule NotesFillRule(Int row, Int rowCount) {
    if (row >= rowCount)
        return {};
    return {Fill::Gradient, colors::kGradientGrey};
}

Color GradientColor(Color top, Color bottom, Int y, Int height) {
    const auto channel = [&](int shift) {
        const double t = static_cast<double>((top >> shift) & 255);
        const double b = static_cast<double>((bottom >> shift) & 255);
        const double h = static_cast<double>(height);
        const double yy = static_cast<double>(y);
        const double sum = ((h - yy) / h) * t + (yy / h) * b;
        return Truncate(sum);
    };
    return RGB(channel(16), channel(8), channel(0), 0);
}

std::optional<Color> ChartTextColor(const std::string &text, const std::string &note1,
                                    const std::string &note2, const std::string &note3,
                                    const std::string &note4) {
    if (text == note1)
        return colors::kNote[0];
    if (text == note2)
        return colors::kNote[1];
    if (text == note3)
        return colors::kNote[2];
    if (text == note4)
        return colors::kNote[3];
    return std::nullopt;
}

std::optional<Color> NotesTextColor(Int column) {
    if (column >= 0 && column <= 3)
        return colors::kNote[column];
    return std::nullopt;
}

namespace {

void DrawTile(Graphics &g, const FillRule &rule) {
    const Int w = g.Width();
    const Int h = g.Height();
    switch (rule.kind) {
    case Fill::None:
        return;
    case Fill::Flat:
        g.ForeColor(rule.color);
        g.FillRect(0, 0, static_cast<double>(w), static_cast<double>(h));
        break;
    case Fill::Gradient:
        // A vector file gets one shape instead of a line per pixel row, with
        // each row's own colour at the row's centre: the same pixels at the
        // sheet's size, and a smooth shade when zoomed.
        if (g.Vector()) {
            std::vector<Color> rows;
            for (Int y = 0; y < h; ++y)
                rows.push_back(GradientColor(colors::kGradientTop, rule.color, y, h));
            g.FillVerticalGradient(0, 0, static_cast<double>(w), static_cast<double>(h), rows);
            break;
        }
        // Bottom first; the line at y = H lies just below the cell and is cut off.
        for (Int y = h; y >= 0; --y) {
            g.ForeColor(GradientColor(colors::kGradientTop, rule.color, y, h));
            g.DrawLine(0, static_cast<double>(y), static_cast<double>(w), static_cast<double>(y));
        }
        break;
    }
    // Dark bottom and right, then light top and left, which win at the corners.
    const double W = static_cast<double>(w), H = static_cast<double>(h);
    g.ForeColor(colors::kFrameDark);
    g.DrawLine(0, H - 1, W, H - 1);
    g.DrawLine(W - 1, 0, W - 1, H);
    g.ForeColor(colors::kFrameLight);
    g.DrawLine(0, 0, W, 0);
    g.DrawLine(0, 0, 0, H);
}

} // namespace

void PaintTile(Graphics &g, const FillRule &rule) {
    if (rule.kind == Fill::None)
        return;
    // The same few tiles recur in every chart of a book: a PDF keeps each once.
    g.DrawShared((static_cast<std::uint64_t>(rule.kind) << 32) | rule.color,
                 [&rule](Graphics &tile) { DrawTile(tile, rule); });
}

bool PaintChartText(Graphics &g, const std::string &text, const std::array<std::string, 4> &notes,
                    Int x, Int y) {
    const auto color = ChartTextColor(text, notes[0], notes[1], notes[2], notes[3]);
    if (!color)
        return false;
    g.ForeColor(*color);
    g.DrawString(text, static_cast<double>(x), static_cast<double>(y), 0, false);
    return true;
}

bool PaintNotesText(Graphics &g, const std::string &text, Int column, Int x, Int y) {
    const auto color = NotesTextColor(column);
    if (!color)
        return false;
    g.ForeColor(*color);
    g.DrawString(text, static_cast<double>(x), static_cast<double>(y), 0, false);
    return true;
}

namespace {

double Luminance(Color c) {
    const auto linear = [](Color channel) {
        const double v = static_cast<double>(channel & 255) / 255.0;
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(c >> 16) + 0.7152 * linear(c >> 8) + 0.0722 * linear(c);
}

// A tone's cell in the colour-blind palette: filled inside its frame with
// the tone's hue, the text in the colour that stands out on it.
void PaintToneCell(Graphics &g, const std::string &text, Int tone, Int x, Int y) {
    const Color fill = colors::kToneColourBlind[tone];
    g.ForeColor(fill);
    g.FillRect(1, 1, static_cast<double>(g.Width() - 2), static_cast<double>(g.Height() - 2));
    g.ForeColor(TextColorOn(fill));
    g.DrawString(text, static_cast<double>(x), static_cast<double>(y), 0, false);
}

} // namespace

double ContrastRatio(Color a, Color b) {
    const double la = Luminance(a), lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Color TextColorOn(Color fill) {
    return ContrastRatio(fill, 0x000000) >= ContrastRatio(fill, 0xFFFFFF) ? 0x000000 : 0xFFFFFF;
}

FillRule InPalette(FillRule rule, Palette palette) {
    if (palette == Palette::ColourBlind && rule.kind == Fill::Gradient &&
        rule.color == colors::kGradientGreen)
        rule.color = colors::kStripeColourBlind;
    return rule;
}

bool PaintChartText(Graphics &g, const std::string &text, const std::array<std::string, 4> &notes,
                    Int x, Int y, Palette palette) {
    if (palette == Palette::Window)
        return PaintChartText(g, text, notes, x, y);
    for (Int tone = 0; tone < 4; ++tone)
        if (text == notes[static_cast<std::size_t>(tone)]) {
            if (text.empty())
                return false;
            PaintToneCell(g, text, tone, x, y);
            return true;
        }
    return false;
}

bool PaintToneText(Graphics &g, const std::string &text, Int tone, Int x, Int y, Palette palette) {
    constexpr Int kChord = std::size(colors::kNote);
    if (tone < 0 || tone >= kChord + static_cast<Int>(std::size(colors::kScaleNote)))
        return false;
    if (palette == Palette::ColourBlind && tone < kChord) {
        PaintToneCell(g, text, tone, x, y);
        return true;
    }
    g.ForeColor(tone < kChord ? colors::kNote[tone] : colors::kScaleNote[tone - kChord]);
    g.DrawString(text, static_cast<double>(x), static_cast<double>(y), 0, false);
    return true;
}

bool PaintNotesText(Graphics &g, const std::string &text, Int column, Int x, Int y,
                    Palette palette) {
    if (palette == Palette::Window)
        return PaintNotesText(g, text, column, x, y);
    if (column < 0 || column > 3 || text.empty())
        return false;
    PaintToneCell(g, text, column, x, y);
    return true;
}

} // namespace varnock
