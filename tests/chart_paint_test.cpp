// What the chart and the notes table look like: real pixels of the real
// window, grabbed offscreen, checked as a list of (cell, pixel, colour).

#include "support.h"

#include <QPalette>
#include <QTest>
#include <gtest/gtest.h>

#include <map>
#include <vector>

using namespace varnock;
using testsupport::CellRect;
using testsupport::Grab;
using testsupport::InkBox;
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

namespace {

// What the player does to a list: click a cell; Tab into the list from the
// control before it; click a cell, then Down and Right; click a cell, then
// Shift+Tab away from the list.
enum class Act { Click, Tab, Arrows, ClickAway };
constexpr int None = -1;

struct Input {
    const char *what;
    Act act;
    int list;
    Int row, column;
    // Afterwards: the list with the focus ring, and each list's selected row.
    int ring;
    Int selected[2];
};

// Three strings (room below the last row), A7: all four note colours.
// clang-format off
const Input kInputs[] = {
    {"label row corner",        Act::Click,     Chart, 0, 0,  Chart, {0, None}},
    {"note on a green row",     Act::Click,     Chart, 2, 6,  Chart, {2, None}},
    {"last string, last fret",  Act::Click,     Chart, 3, 22, Chart, {3, None}},
    {"below the last row",      Act::Click,     Chart, 4, 5,  Chart, {None, None}},
    {"root",                    Act::Click,     Notes, 0, 0,  Notes, {None, 0}},
    {"4th note",                Act::Click,     Notes, 0, 3,  Notes, {None, 0}},
    {"Tab into the chart",      Act::Tab,       Chart, 0, 0,  Chart, {None, None}},
    {"Tab into the notes",      Act::Tab,       Notes, 0, 0,  Notes, {None, None}},
    {"arrows in the chart",     Act::Arrows,    Chart, 1, 3,  Chart, {2, None}},
    {"arrows past the last row",Act::Arrows,    Chart, 3, 21, Chart, {3, None}},
    {"arrows in the notes",     Act::Arrows,    Notes, 0, 1,  Notes, {None, 0}},
    {"chart, then away",        Act::ClickAway, Chart, 1, 1,  None,  {1, None}},
    {"notes, then the chart",   Act::ClickAway, Notes, 0, 2,  Chart, {None, 0}},
};
// clang-format on

// The ink of the text: the list's own (black) and the four note colours.
bool IsInk(unsigned color) {
    for (unsigned ink : {0x000000u, 0x00AA00u, 0x0000BBu, 0xBB00BBu, 0xAA0000u})
        if (color == ink)
            return true;
    return false;
}

// The selected row's look against the row unselected: the highlight lies
// over every tile, the frame and the gradient past the text included, as a
// tint that keeps apart the colours it covers, and the text's ink stays on
// top of it. Counts the pixels that break this.
int HighlightFaults(const QImage &selected, const QImage &plain, const std::vector<QRect> &row) {
    int faults = 0;
    for (const QRect &cell : row) {
        std::map<unsigned, unsigned> tint, untint;
        for (int y = cell.top(); y <= cell.bottom(); ++y)
            for (int x = cell.left(); x <= cell.right(); ++x) {
                const unsigned was = Pixel(plain, x, y), is = Pixel(selected, x, y);
                if (IsInk(was)) {
                    faults += is != was;
                } else if (y == cell.top() || y == cell.bottom() || x > cell.right() - 6) {
                    const unsigned to = tint.emplace(was, is).first->second;
                    const unsigned from = untint.emplace(is, was).first->second;
                    faults += is == was || to != is || from != was;
                }
            }
    }
    return faults;
}

} // namespace

TEST(Pixels, ClicksTabsAndArrowsChangeOnlyTheFocusRingAndTheSelectedRow) {
    const char *names[] = {"Listbox1", "Listbox2"};
    for (const Input &in : kInputs) {
        SCOPED_TRACE(in.what);
        OpenWindow w;
        w->PopupMenu2->SetListIndex(1);
        w->show();
        w->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(w.window.get()));
        Listbox *lists[] = {w->Listbox1, w->Listbox2};
        QWidget *views[] = {w->ControlView(names[0]), w->ControlView(names[1])};
        ASSERT_FALSE(views[Chart]->hasFocus() || views[Notes]->hasFocus());
        // Each list as it was, and with the row that will be selected
        // selected through the list itself: the list's own highlight.
        QImage before[2], want[2];
        for (int l : {Chart, Notes}) {
            before[l] = want[l] = Grab(views[l]);
            if (in.selected[l] == None)
                continue;
            lists[l]->SetListIndex(in.selected[l]);
            want[l] = Grab(views[l]);
            lists[l]->SetListIndex(None);
            std::vector<QRect> row;
            for (Int c = 0; c < lists[l]->ColumnCount(); ++c)
                row.push_back(CellRect(*w, lists[l], in.selected[l], c));
            EXPECT_EQ(HighlightFaults(want[l], before[l], row), 0)
                << names[l] << ": the selected row's painting is not kept under the highlight";
        }

        QWidget *view = views[in.list];
        const QPoint cell = CellRect(*w, lists[in.list], in.row, in.column).center();
        if (in.act == Act::Tab) {
            QWidget *previous = in.list == Chart ? w->ControlView("PopupMenu7") : views[Chart];
            previous->setFocus();
            QTest::keyClick(previous, Qt::Key_Tab);
        } else {
            QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, cell);
        }
        if (in.act == Act::Arrows) {
            QTest::keyClick(view, Qt::Key_Down);
            QTest::keyClick(view, Qt::Key_Right);
        }
        if (in.act == Act::ClickAway)
            QTest::keyClick(view, Qt::Key_Backtab, Qt::ShiftModifier);

        for (int l : {Chart, Notes}) {
            EXPECT_EQ(views[l]->hasFocus(), in.ring == l) << names[l];
            EXPECT_EQ(lists[l]->ListIndex(), in.selected[l]) << names[l];
            // Inside the frame every cell is as it was, the selected row as
            // the list highlights it; the frame itself is the focus ring, in
            // the highlight colour, or as it was.
            const QImage after = Grab(views[l]);
            const unsigned ring = views[l]->palette().highlight().color().rgb() & 0xFFFFFFu;
            const QRect inner = after.rect().adjusted(1, 1, -1, -1);
            int changed = 0, frameWrong = 0;
            for (int y = 0; y < after.height(); ++y)
                for (int x = 0; x < after.width(); ++x) {
                    const unsigned got = Pixel(after, x, y);
                    if (inner.contains(x, y))
                        changed += got != Pixel(want[l], x, y);
                    else
                        frameWrong += got != (in.ring == l ? ring : Pixel(before[l], x, y));
                }
            EXPECT_EQ(changed, 0) << names[l] << ": pixels inside the frame that changed";
            EXPECT_EQ(frameWrong, 0) << names[l] << ": frame pixels that are not the "
                                     << (in.ring == l ? "focus ring" : "frame as it was");
        }
    }
}

TEST(Pixels, LabelsAreTheListsTwelvePixelBoldAndFitTheirWidth) {
    // The ink of each label's text, within the label: left, top, width, height.
    const struct {
        const char *name;
        QRect ink;
    } labels[] = {
        {"Label1", QRect(0, 4, 40, 10)}, // "Chord:"
        {"Label2", QRect(0, 5, 34, 9)},  // "Frets:"
        {"Label3", QRect(0, 4, 47, 13)}, // "Strings:", the widest, in its 49 pixels
        {"Label4", QRect(0, 5, 39, 9)},  // "Notes:"
    };
    OpenWindow w;
    const QImage window = Grab(w->centralWidget());
    for (const auto &label : labels) {
        const QWidget *view = w->ControlView(label.name);
        EXPECT_EQ(view->font().pixelSize(), 12) << label.name;
        EXPECT_TRUE(view->font().bold()) << label.name;
        const QRect ink = InkBox(window, view->geometry()).translated(-view->pos());
        EXPECT_EQ(ink, label.ink) << label.name;
    }
}
