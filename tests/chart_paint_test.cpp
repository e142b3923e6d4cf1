// What the chart and the notes table look like: real pixels of the real
// window, grabbed offscreen, against the exact colours.

#include "chart/cellpaint.h"
#include "support.h"

#include <QPalette>
#include <gtest/gtest.h>

using namespace varnock;
using testsupport::CellRect;
using testsupport::Grab;
using testsupport::OpenWindow;
using testsupport::Pixel;

TEST(CellPaint, GradientLinesAreCutTowardZero) {
    const Color grey[] = {0xFDFEFF, 0xFCFDFE, 0xFBFBFC};
    for (int y = 0; y < 3; ++y)
        EXPECT_EQ(GradientColor(0xFDFEFF, 0xE6E7E8, y, 23), grey[y]) << y;
    EXPECT_EQ(GradientColor(0xFDFEFF, 0xE6E7E8, 11, 23), 0xF2F3F4u);
    EXPECT_EQ(GradientColor(0xFDFEFF, 0xE6E7E8, 22, 23), 0xE7E8E9u);
    EXPECT_EQ(GradientColor(0xFDFEFF, 0xE6E7E8, 23, 23), 0xE6E7E8u);
    EXPECT_EQ(GradientColor(0xFDFEFF, 0xAAFFAA, 22, 23), 0xADFEADu);
    EXPECT_EQ(GradientColor(0xFDFEFF, 0xE6E7E8, 21, 22), 0xE7E8E9u);
}

TEST(CellPaint, FillRulesTestTheRowBeforeTheColumn) {
    EXPECT_EQ(ChartFillRule(0, 0, 4).color, 0xFAFAFAu);
    EXPECT_EQ(ChartFillRule(2, 0, 4).color, 0xEEEEEEu);
    EXPECT_EQ(ChartFillRule(2, 5, 4).kind, Fill::Gradient);
    EXPECT_EQ(ChartFillRule(2, 5, 4).color, 0xAAFFAAu);
    EXPECT_EQ(ChartFillRule(4, 5, 5).color, 0xAAFFAAu);
    EXPECT_EQ(ChartFillRule(5, 5, 9).color, 0xE6E7E8u);
    EXPECT_EQ(ChartFillRule(4, 5, 4).kind, Fill::None);
    EXPECT_EQ(ChartFillRule(0, 0, 0).kind, Fill::None);
}

TEST(CellPaint, TextColourTakesTheFirstMatchingNoteAndBlankMatchesEmptySlots) {
    EXPECT_EQ(ChartTextColor("E", "A", "C#", "E", ""), 0xBB00BBu);
    EXPECT_EQ(ChartTextColor("A", "A", "A", "E", "G"), 0x00AA00u);
    EXPECT_EQ(ChartTextColor("", "A", "E", "", ""), 0xBB00BBu);
    EXPECT_EQ(ChartTextColor("", "A", "C#", "E", ""), 0xAA0000u);
    EXPECT_FALSE(ChartTextColor("", "A", "C#", "E", "G").has_value());
    EXPECT_FALSE(ChartTextColor("6+", "A", "C#", "E", "").has_value());
    EXPECT_EQ(NotesTextColor(3), 0xAA0000u);
    EXPECT_FALSE(NotesTextColor(4).has_value());
}

namespace {

// Does the cell hold at least one pixel of exactly this colour?
bool CellHasColour(const QImage &image, const QRect &cell, unsigned color) {
    for (int y = cell.top(); y <= cell.bottom(); ++y)
        for (int x = cell.left(); x <= cell.right(); ++x)
            if (Pixel(image, x, y) == color)
                return true;
    return false;
}

} // namespace

TEST(ChartPixels, TilesFramesAndBands) {
    OpenWindow w;
    w->PopupMenu10->SetListIndex(1); // four strings: grey, green, grey, green
    const QImage image = Grab(w->ControlView("Listbox1"));

    // A grey gradient tile in row 1, a green one in row 2, sampled mid-cell.
    const QRect grey = CellRect(*w, w->Listbox1, 1, 5);
    const QRect green = CellRect(*w, w->Listbox1, 2, 5);
    ASSERT_EQ(grey.height(), 23);
    const int gx = grey.left() + grey.width() / 2;
    EXPECT_EQ(Pixel(image, gx, grey.top() + 1), 0xFCFDFEu);
    EXPECT_EQ(Pixel(image, gx, grey.top() + 2), 0xFBFBFCu);
    EXPECT_EQ(Pixel(image, gx, grey.top() + 11), 0xF2F3F4u);
    EXPECT_EQ(Pixel(image, gx, green.top() + 1), 0xF9FEFBu);
    EXPECT_EQ(Pixel(image, gx, green.top() + 2), 0xF5FEF7u);
    EXPECT_EQ(Pixel(image, gx, green.top() + 11), 0xD5FED6u);
    EXPECT_EQ(Pixel(image, gx, CellRect(*w, w->Listbox1, 4, 5).top() + 11), 0xD5FED6u);
    EXPECT_EQ(Pixel(image, gx, CellRect(*w, w->Listbox1, 3, 5).top() + 11), 0xF2F3F4u);

    // The frame: light top and left, dark bottom and right, light at the two
    // corners where they cross.
    for (const QRect &cell :
         {grey, green, CellRect(*w, w->Listbox1, 0, 3), CellRect(*w, w->Listbox1, 1, 0)}) {
        const int l = cell.left(), t = cell.top(), r = cell.right(), b = cell.bottom();
        const int mx = l + cell.width() / 2, my = t + cell.height() / 2;
        EXPECT_EQ(Pixel(image, mx, t), 0xF0F0F0u);
        EXPECT_EQ(Pixel(image, l, my), 0xF0F0F0u);
        EXPECT_EQ(Pixel(image, mx, b), 0x999999u);
        EXPECT_EQ(Pixel(image, r, my), 0x999999u);
        EXPECT_EQ(Pixel(image, r, t), 0xF0F0F0u);
        EXPECT_EQ(Pixel(image, l, b), 0xF0F0F0u);
        EXPECT_EQ(Pixel(image, r, b), 0x999999u);
    }

    // The label row is flat, the open-string column too, also on green rows.
    const QRect label = CellRect(*w, w->Listbox1, 0, 0);
    EXPECT_EQ(Pixel(image, label.right() - 2, label.top() + 2), 0xFAFAFAu);
    EXPECT_EQ(Pixel(image, label.right() - 2, label.bottom() - 2), 0xFAFAFAu);
    const QRect open = CellRect(*w, w->Listbox1, 2, 0);
    EXPECT_EQ(Pixel(image, open.right() - 2, open.top() + 2), 0xEEEEEEu);
    EXPECT_EQ(Pixel(image, open.right() - 2, open.bottom() - 2), 0xEEEEEEu);
}

TEST(ChartPixels, NoteNamesInTheirColoursAndPlainBelowTheLastRow) {
    OpenWindow w; // A major on D A D: A root, C# second, E third
    const QImage image = Grab(w->ControlView("Listbox1"));
    // Row 2 (the A string) column 0 holds the root, row 1 column 1 the E.
    EXPECT_EQ(w->Listbox1->Cell(2, 0), "A");
    EXPECT_TRUE(CellHasColour(image, CellRect(*w, w->Listbox1, 2, 0), 0x00AA00));
    EXPECT_FALSE(CellHasColour(image, CellRect(*w, w->Listbox1, 2, 0), 0xBB00BB));
    EXPECT_EQ(w->Listbox1->Cell(1, 1), "E");
    EXPECT_TRUE(CellHasColour(image, CellRect(*w, w->Listbox1, 1, 1), 0xBB00BB));
    EXPECT_EQ(w->Listbox1->Cell(2, 2), "C#");
    EXPECT_TRUE(CellHasColour(image, CellRect(*w, w->Listbox1, 2, 2), 0x0000BB));
    // Labels keep the list's own text colour.
    EXPECT_FALSE(CellHasColour(image, CellRect(*w, w->Listbox1, 0, 1), 0x00AA00));

    // Three strings: where row 4 would be, the plain list background.
    const unsigned base = w->ControlView("Listbox1")->palette().base().color().rgb() & 0xFFFFFFu;
    const QRect below = CellRect(*w, w->Listbox1, 4, 5);
    for (int y = below.top(); y < below.top() + 10; ++y)
        for (int x = below.left(); x <= below.right(); ++x)
            ASSERT_EQ(Pixel(image, x, y), base) << x << "," << y;

    if (const char *dir = std::getenv("VARNOCK_SCREENSHOT_DIR")) {
        w->show();
        w->grab().save(QString::fromLocal8Bit(dir) + "/window.png");
    }
}

TEST(NotesPixels, GreyTilesAndColumnColours) {
    OpenWindow w;
    w->PopupMenu2->SetListIndex(1); // 7: four notes
    const QImage image = Grab(w->ControlView("Listbox2"));
    for (Int c = 0; c < 4; ++c) {
        const QRect cell = CellRect(*w, w->Listbox2, 0, c);
        ASSERT_EQ(cell.height(), 22);
        const int mx = cell.right() - 10;
        EXPECT_EQ(Pixel(image, mx, cell.top() + 1), 0xFBFCFDu);
        EXPECT_EQ(Pixel(image, mx, cell.top() + 2), 0xFAFBFCu);
        EXPECT_EQ(Pixel(image, mx, cell.top() + 11), 0xF1F2F3u);
        EXPECT_EQ(Pixel(image, mx, cell.top()), 0xF0F0F0u);
        EXPECT_EQ(Pixel(image, mx, cell.bottom()), 0x999999u);
        EXPECT_EQ(Pixel(image, cell.right(), cell.top()), 0xF0F0F0u);
        EXPECT_TRUE(CellHasColour(image, cell, colors::kNote[c])) << c;
    }
}
