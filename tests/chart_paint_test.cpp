// What the chart and the notes table look like: real pixels of the real
// window, grabbed offscreen, checked as a list of (cell, pixel, colour).

#include "support.h"

#include <QPalette>
#include <gtest/gtest.h>

using namespace varnock;
using testsupport::CellRect;
using testsupport::Grab;
using testsupport::OpenWindow;
using testsupport::Pixel;

namespace {

enum { Chart, Notes };
// A pixel of a cell: x and y inside it, a negative one counted from the
// right or bottom edge (-1 is the last pixel); x = 99 is the middle.
struct Probe {
    int list;
    Int row, column;
    int x, y;
    unsigned color;
};
constexpr int Mid = 99;

// Four strings tuned D A D D, A7: A green, C# blue, E purple, G red.
// clang-format off
const Probe kProbes[] = {
    // Gradient lines, cut toward zero: grey on strings 1 and 3, green on 2 and 4.
    {Chart, 1, 5, Mid, 1, 0xFCFDFE}, {Chart, 1, 5, Mid, 2, 0xFBFBFC}, {Chart, 1, 5, Mid, 11, 0xF2F3F4},
    {Chart, 2, 5, Mid, 1, 0xF9FEFB}, {Chart, 2, 5, Mid, 2, 0xF5FEF7}, {Chart, 2, 5, Mid, 11, 0xD5FED6},
    {Chart, 3, 5, Mid, 11, 0xF2F3F4}, {Chart, 4, 5, Mid, 11, 0xD5FED6},
    // Flat label row and open-string column, also on a green row.
    {Chart, 0, 0, -3, 2, 0xFAFAFA}, {Chart, 0, 0, -3, -3, 0xFAFAFA}, {Chart, 0, 9, -3, -3, 0xFAFAFA},
    {Chart, 2, 0, -3, 2, 0xEEEEEE}, {Chart, 2, 0, -3, -3, 0xEEEEEE},
    // The frame: light top and left, dark bottom and right, light where they cross.
    {Chart, 1, 5, Mid, 0, 0xF0F0F0}, {Chart, 1, 5, 0, 11, 0xF0F0F0}, {Chart, 1, 5, Mid, -1, 0x999999},
    {Chart, 1, 5, -1, 11, 0x999999}, {Chart, 1, 5, -1, 0, 0xF0F0F0}, {Chart, 1, 5, 0, -1, 0xF0F0F0},
    {Chart, 1, 5, -1, -1, 0x999999}, {Chart, 2, 5, -1, 11, 0x999999}, {Chart, 0, 3, Mid, -1, 0x999999},
    {Chart, 0, 3, -1, 0, 0xF0F0F0}, {Chart, 1, 0, -1, 11, 0x999999}, {Chart, 1, 0, Mid, 0, 0xF0F0F0},
    // The notes table: grey tiles with the same frame in every column.
    {Notes, 0, 0, -10, 1, 0xFBFCFD}, {Notes, 0, 1, -10, 2, 0xFAFBFC}, {Notes, 0, 2, -10, 11, 0xF1F2F3},
    {Notes, 0, 3, -10, 0, 0xF0F0F0}, {Notes, 0, 3, -10, -1, 0x999999}, {Notes, 0, 0, -1, 0, 0xF0F0F0},
};
// clang-format on

// Cells whose text has (or lacks) a pixel of the colour.
struct Ink {
    int list;
    Int row, column;
    unsigned color;
    bool present;
};

const Ink kInks[] = {
    {Chart, 2, 0, 0x00AA00, true}, {Chart, 2, 0, 0xBB00BB, false}, {Chart, 1, 1, 0xBB00BB, true},
    {Chart, 2, 2, 0x0000BB, true}, {Chart, 2, 6, 0xAA0000, true},  {Chart, 0, 1, 0x00AA00, false},
    {Notes, 0, 0, 0x00AA00, true}, {Notes, 0, 1, 0x0000BB, true},  {Notes, 0, 2, 0xBB00BB, true},
    {Notes, 0, 3, 0xAA0000, true},
};

bool CellHasColour(const QImage &image, const QRect &cell, unsigned color) {
    for (int y = cell.top(); y <= cell.bottom(); ++y)
        for (int x = cell.left(); x <= cell.right(); ++x)
            if (Pixel(image, x, y) == color)
                return true;
    return false;
}

} // namespace

TEST(Pixels, TilesFramesBandsAndNoteColours) {
    OpenWindow w;
    w->PopupMenu10->SetListIndex(1);
    w->PopupMenu2->SetListIndex(1);
    const Listbox *lists[] = {w->Listbox1, w->Listbox2};
    const QImage images[] = {Grab(w->ControlView("Listbox1")), Grab(w->ControlView("Listbox2"))};
    ASSERT_EQ(CellRect(*w, w->Listbox1, 1, 5).height(), 23);
    ASSERT_EQ(CellRect(*w, w->Listbox2, 0, 0).height(), 22);
    for (const Probe &p : kProbes) {
        const QRect cell = CellRect(*w, lists[p.list], p.row, p.column);
        const int x = p.x == Mid ? cell.left() + cell.width() / 2
                                 : (p.x < 0 ? cell.right() + 1 + p.x : cell.left() + p.x);
        const int y = p.y < 0 ? cell.bottom() + 1 + p.y : cell.top() + p.y;
        EXPECT_EQ(Pixel(images[p.list], x, y), p.color)
            << "list " << p.list + 1 << " cell " << p.row << "," << p.column << " at " << p.x << ","
            << p.y;
    }
    for (const Ink &ink : kInks)
        EXPECT_EQ(CellHasColour(images[ink.list],
                                CellRect(*w, lists[ink.list], ink.row, ink.column), ink.color),
                  ink.present)
            << "list " << ink.list + 1 << " cell " << ink.row << "," << ink.column;
}

TEST(Pixels, ThreeStringsLeaveThePlainBackgroundBelowTheLastRow) {
    OpenWindow w;
    const QImage image = Grab(w->ControlView("Listbox1"));
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
