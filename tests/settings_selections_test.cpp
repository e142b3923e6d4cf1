// The six selections kept between runs, driven through the real window with
// the settings file in a scratch home.

#include "support.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace varnock;
using namespace testsupport;

const std::string kFirstQuit =
    "[Settings]\rFrets=0\rStrings=0\r[Strings]\rOne=0\rTwo=7\rThree=0\rFour=0\r";

TEST(Selections, FirstQuitWritesTheEightLinesAndAnUnchangedRunKeepsThemByteForByte) {
    OpenWindow w;
    EXPECT_FALSE(std::filesystem::exists(w.home.IniFile())); // nothing written at start
    w->close();
    EXPECT_EQ(w.quits.count, 1);
    EXPECT_EQ(ReadBytes(w.home.IniFile()), kFirstQuit);
    EXPECT_TRUE(w.messages.texts.empty());

    // A hand-edited spelling survives a run with no change.
    const std::string edited = "[settings]\rFRETS=2\rStrings=1\rjunk line\r[Strings]\rOne=3\r"
                               "Two=7\rThree=0\rFour=11\r";
    OpenWindow again(edited, true);
    again->close();
    EXPECT_EQ(ReadBytes(again.home.IniFile()), edited);
}

TEST(Selections, RestoredPopupsRunTheirHandling) {
    OpenWindow w("[Settings]\rFrets=3\rStrings=1\r[Strings]\rOne=2\rTwo=7.9\rThree=0\rFour=5\r",
                 true);
    EXPECT_EQ(w->PopupMenu9->ListIndex(), 3);
    EXPECT_EQ(w->PopupMenu10->ListIndex(), 1);
    EXPECT_TRUE(w->PopupMenu8->Visible());
    EXPECT_EQ(w->Listbox1->ListCount(), 5);
    EXPECT_EQ(w->PopupMenu5->ListIndex(), 2);
    EXPECT_EQ(w->Model.BassSelectMenu, -29);
    EXPECT_EQ(w->PopupMenu6->ListIndex(), 7);
    EXPECT_EQ(w->Model.MiddleSelectMenu, -12); // unchanged popup: start value stays
    EXPECT_EQ(w->Model.ForthSelectMenu, -26);
    EXPECT_EQ(w->Listbox1->Cell(0, 1), "0+"); // chromatic label row
    EXPECT_EQ(w->Listbox1->Cell(1, 0), "E");  // open E string under A major
    // The chord is not among the saved selections.
    EXPECT_EQ(w->PopupMenu1->ListIndex(), 0);
    EXPECT_EQ(w->PopupMenu2->ListIndex(), 0);
    EXPECT_TRUE(w.messages.texts.empty());
}

TEST(Selections, OddValuesNeverStopTheRestore) {
    OpenWindow w(
        "[Settings]\rFrets=\rStrings=x\r[Strings]\rOne=40\rTwo=-3\rThree=2junk\rFour=1e99\r", true);
    EXPECT_EQ(w->PopupMenu9->ListIndex(), 0);  // empty reads as absent
    EXPECT_EQ(w->PopupMenu10->ListIndex(), 0); // unreadable number is 0
    EXPECT_EQ(w->PopupMenu5->ListIndex(), 0);  // beyond the items: ignored
    EXPECT_EQ(w->PopupMenu6->ListIndex(), 7);
    EXPECT_EQ(w->PopupMenu7->ListIndex(), 2); // the rest still restored
    EXPECT_EQ(w->PopupMenu8->ListIndex(), 0);
    EXPECT_EQ(w->Listbox1->ListCount(), 4);
}

TEST(Selections, AChangeIsThereAtTheNextStartAndTheHiddenFourthIsKept) {
    std::string saved;
    {
        OpenWindow w;
        w->PopupMenu10->SetListIndex(1);
        w->PopupMenu8->SetListIndex(9);
        w->PopupMenu10->SetListIndex(0);
        w->PopupMenu9->SetListIndex(2);
        w->close();
        saved = ReadBytes(w.home.IniFile());
    }
    OpenWindow w(saved, true);
    EXPECT_EQ(w->PopupMenu9->ListIndex(), 2);
    EXPECT_EQ(w->PopupMenu8->ListIndex(), 9);
    EXPECT_FALSE(w->PopupMenu8->Visible());
}

TEST(Selections, ReadOnlyFileShowsSixMessagesAndSavesNothing) {
    OpenWindow w(kFirstQuit, true);
    w->PopupMenu9->SetListIndex(1);
    chmod(w.home.IniFile().c_str(), 0444);
    w->close();
    EXPECT_EQ(w.quits.count, 1); // the quit goes on
    ASSERT_EQ(w.messages.texts.size(), 6u);
    EXPECT_EQ(w.messages.texts[0], "Error creating preference stream: Settings - Frets - 1");
    EXPECT_EQ(w.messages.texts[5], "Error creating preference stream: Strings - Four - 0");
    EXPECT_EQ(ReadBytes(w.home.IniFile()), kFirstQuit);
}

TEST(Selections, UnreadableFileShowsSixMessagesAndOpensWithDefaults) {
    OpenWindow w;
    // Put a folder where the file should be, then open a second window on it.
    std::filesystem::create_directories(w.home.IniFile());
    w.messages.texts.clear();
    Window1 second;
    second.Open();
    ASSERT_EQ(w.messages.texts.size(), 6u);
    EXPECT_EQ(w.messages.texts[0], "Error reading preference: Settings - Frets");
    EXPECT_EQ(w.messages.texts[5], "Error reading preference: Strings - Four");
    EXPECT_EQ(second.PopupMenu6->ListIndex(), 7);
    EXPECT_EQ(second.Listbox1->ListCount(), 4);
}
