// The real main window on the offscreen platform: selections set through
// ListIndex, the two tables read back cell by cell.

#include "support.h"

#include <QComboBox>
#include <QLabel>
#include <gtest/gtest.h>

#include <cstdlib>

using namespace varnock;
using testsupport::OpenWindow;

namespace {

std::vector<std::string> RowOf(Listbox *list, Int row) {
    std::vector<std::string> cells;
    for (Int c = 0; c < list->ColumnCount(); ++c)
        cells.push_back(list->Cell(row, c));
    return cells;
}

std::vector<std::string> Headings(Listbox *list) {
    std::vector<std::string> cells;
    for (Int c = 0; c < list->ColumnCount(); ++c)
        cells.push_back(list->Heading(c));
    return cells;
}

} // namespace

TEST(Window, OpensWithTheStartSelectionsAndAFullChart) {
    OpenWindow w;
    EXPECT_EQ(w->windowTitle(), "Varnock");
    EXPECT_EQ(w->centralWidget()->size(), QSize(906, 320));
    EXPECT_EQ(w->PopupMenu9->ListCount(), 4);
    EXPECT_EQ(w->PopupMenu9->List(3), "Chromatic");
    std::vector<Int> start;
    for (const PopupMenu *p : {w->PopupMenu9, w->PopupMenu10, w->PopupMenu1, w->PopupMenu2,
                               w->PopupMenu5, w->PopupMenu6, w->PopupMenu7})
        start.push_back(p->ListIndex());
    EXPECT_EQ(start, (std::vector<Int>{0, 0, 0, 0, 0, 7, 0}));
    EXPECT_FALSE(w->PopupMenu8->Visible());
    EXPECT_FALSE(w->PopupMenu4->Visible());
    EXPECT_EQ(w->Model.MiddleSelectMenu, -12);
    EXPECT_EQ(w->Listbox1->ListCount(), 4);
    EXPECT_EQ(w->Listbox2->ListCount(), 1);
    EXPECT_EQ(RowOf(w->Listbox2, 0), (std::vector<std::string>{"A", "C#", "E", ""}));
    EXPECT_EQ(Headings(w->Listbox2),
              (std::vector<std::string>{"Root", "2nd Note", "3rd Note", "4th Note"}));
    EXPECT_TRUE(w.messages.texts.empty());
    // The controls sit where the layout puts them.
    EXPECT_EQ(w->ControlView("Listbox1")->geometry(), QRect(76, 111, 810, 136));
    EXPECT_EQ(w->ControlView("Listbox2")->geometry(), QRect(125, 256, 761, 44));
    EXPECT_EQ(w->ControlView("PopupMenu7")->geometry(), QRect(20, 199, 49, 20));
    EXPECT_EQ(static_cast<QLabel *>(w->ControlView("Label3"))->text(), "Strings:");
}

TEST(Window, EveryLayoutWritesAllItsHeadingsAndTheyStayThroughATuningChange) {
    OpenWindow w;
    w->PopupMenu9->SetListIndex(1); // "6+" among them
    w->PopupMenu9->SetListIndex(3);
    w->PopupMenu5->SetListIndex(4);
    EXPECT_EQ(Headings(w->Listbox1)[7], "7");
    EXPECT_EQ(Headings(w->Listbox1)[11], "11");
    EXPECT_EQ(w->Listbox1->Cell(0, 11), "6+");
    // Nothing past the last column is kept, and no column sorts.
    EXPECT_EQ(w->Listbox1->Heading(23), "");
    for (Int c = 0; c < 23; ++c)
        EXPECT_EQ(w->Listbox1->ColumnSortDirection(c), 0);
}

TEST(Window, ThreeAndFourStrings) {
    OpenWindow w;
    w->PopupMenu10->SetListIndex(1);
    EXPECT_TRUE(w->PopupMenu8->Visible());
    EXPECT_EQ(w->Listbox1->ListCount(), 5);
    w->PopupMenu8->SetListIndex(9); // B
    EXPECT_EQ(w->Model.ForthSelectMenu, -22);
    w->PopupMenu10->SetListIndex(0);
    EXPECT_FALSE(w->PopupMenu8->Visible());
    EXPECT_EQ(w->Listbox1->ListCount(), 4);
    EXPECT_EQ(w->Model.ForthSelectMenu, -22);
    EXPECT_EQ(w->PopupMenu8->ListIndex(), 9);
    // A tuning change while the fourth string is hidden recomputes as usual.
    w->PopupMenu7->SetListIndex(2); // E
    EXPECT_EQ(w->Listbox1->Cell(3, 0), "E");
    w->PopupMenu10->SetListIndex(1);
    EXPECT_EQ(w->Listbox1->ListCount(), 5);
    EXPECT_EQ(w->Listbox1->Cell(4, 0), "");   // open B is not in A major
    EXPECT_EQ(w->Listbox1->Cell(4, 1), "C#"); // B + a whole tone
}

TEST(Window, TheTwoChordListsResetEachOther) {
    OpenWindow w;
    w->PopupMenu2->SetListIndex(3); // m
    EXPECT_EQ(w->PopupMenu4->ListIndex(), 0);
    EXPECT_EQ(RowOf(w->Listbox2, 0), (std::vector<std::string>{"A", "C", "E", ""}));
    // The hidden list's choice throws the major list back to "Maj", which wins.
    w->PopupMenu4->SetListIndex(4);
    EXPECT_EQ(w->PopupMenu2->ListIndex(), 0);
    EXPECT_EQ(w->PopupMenu4->ListIndex(), 4);
    EXPECT_EQ(w->Model.ModeSelectOther, -1);
    EXPECT_EQ(RowOf(w->Listbox2, 0), (std::vector<std::string>{"A", "C#", "E", ""}));
    w->PopupMenu2->SetListIndex(7);
    EXPECT_EQ(w->PopupMenu4->ListIndex(), 0);
    EXPECT_EQ(RowOf(w->Listbox2, 0), (std::vector<std::string>{"A", "B", "E", ""}));
}

TEST(Window, ManyChangesLeaveOneNotesRowAndNoStaleNote) {
    OpenWindow w;
    std::srand(7);
    for (int i = 0; i < 100; ++i) {
        w->PopupMenu1->SetListIndex(std::rand() % 12);
        w->PopupMenu2->SetListIndex(std::rand() % 32);
        w->PopupMenu9->SetListIndex(std::rand() % 4);
        w->PopupMenu10->SetListIndex(std::rand() % 2);
        w->PopupMenu5->SetListIndex(std::rand() % 12);
    }
    w->PopupMenu2->SetListIndex(1); // four notes
    w->PopupMenu2->SetListIndex(0); // then three
    EXPECT_EQ(w->Listbox2->ListCount(), 1);
    EXPECT_EQ(w->Listbox2->Cell(0, 3), "");
    EXPECT_EQ(w->Model.Note4, "");
    w->PopupMenu2->SetListIndex(13); // "5": two notes
    EXPECT_EQ(RowOf(w->Listbox2, 0)[2], "");
    const std::string root = w->Model.Note1, fifth = w->Model.Note2;
    for (Int r = 1; r < w->Listbox1->ListCount(); ++r)
        for (Int c = 0; c < 23; ++c) {
            const std::string cell = w->Listbox1->Cell(r, c);
            EXPECT_TRUE(cell.empty() || cell == root || cell == fifth) << cell;
        }
}

TEST(Window, ValuesBeyondAPopupsItemsAreIgnored) {
    OpenWindow w;
    w->PopupMenu9->SetListIndex(4);
    w->PopupMenu1->SetListIndex(-1);
    w->PopupMenu2->SetListIndex(32);
    EXPECT_EQ(w->PopupMenu9->ListIndex(), 0);
    EXPECT_EQ(w->PopupMenu1->ListIndex(), 0);
    EXPECT_EQ(w->PopupMenu2->ListIndex(), 0);
    EXPECT_EQ(w->Listbox1->ListCount(), 4);
}

TEST(Window, UserChoiceInTheComboRunsTheHandler) {
    OpenWindow w;
    static_cast<QComboBox *>(w->ControlView("PopupMenu1"))
        ->setCurrentIndex(3); // as a click on "C" does
    EXPECT_EQ(w->PopupMenu1->ListIndex(), 3);
    EXPECT_EQ(w->Listbox2->Cell(0, 0), "C");
}
