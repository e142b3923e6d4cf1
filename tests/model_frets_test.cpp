// Fret layouts, tuning and the note under every fret position.

#include "model/chordmodel.h"
#include "model_support.h"

#include <gtest/gtest.h>

#include <array>

using namespace varnock;
using modelsupport::DefaultTuning;
using modelsupport::Recompute;

namespace {

// Semitones above the open string, one row per fret position, one column per mode 0..5.
constexpr int kFrets[23][6] = {
    {0, 0, 0, 0, 0, 2},  {2, 2, 2, 1, 3, 4},  {4, 4, 3, 2, 5, 5},   {5, 5, 4, 3, 7, 8},
    {7, 7, 5, 4, 10, 9}, {9, 9, 7, 5, 0, 2},  {10, 10, 9, 6, 3, 4}, {0, 11, 10, 7, 5, 5},
    {2, 0, 11, 8, 7, 8}, {4, 2, 0, 9, 10, 9}, {5, 4, 2, 10, 0, 2},  {7, 5, 3, 11, 3, 4},
    {9, 7, 4, 0, 5, 5},  {10, 9, 5, 1, 7, 8}, {0, 10, 7, 2, 10, 9}, {2, 11, 9, 3, 0, 2},
    {4, 0, 10, 4, 3, 4}, {5, 2, 11, 5, 5, 5}, {7, 4, 0, 6, 7, 8},   {9, 5, 2, 7, 10, 9},
    {10, 7, 3, 8, 0, 2}, {0, 9, 4, 9, 3, 4},  {2, 10, 5, 10, 5, 5},
};

// The tuning popup's items, by ListIndex.
const std::array<std::string, 12> kTuningItems = {"D",  "D#", "E",  "F", "F#", "G",
                                                  "G#", "A",  "A#", "B", "C",  "C#"};

std::vector<std::string> Head(const Array<std::string> &list, std::size_t n) {
    return {list.Items().begin(), list.Items().begin() + static_cast<std::ptrdiff_t>(n)};
}

} // namespace

TEST(Module1Start, ArraysEmptyAndOpenNotesDefault) {
    const Module1 m;
    for (const auto *a : {&m.NoteList, &m.MajorChordsInt, &m.Bass_List, &m.Middle_List,
                          &m.Melody_List, &m.Forth_List})
        EXPECT_EQ(a->Ubound(), -1);
    EXPECT_EQ(m.Fret_Indices.Ubound(), -1);
    EXPECT_EQ(m.nOpenBassString, 5);
    EXPECT_EQ(m.nOpenMiddleString, 0);
    EXPECT_EQ(m.nOpenMelodyString, 5);
    EXPECT_EQ(m.nOpenForthString, 5);
}

TEST(Startup, BuildsCatalogueNoteNamesAndEmptyLists) {
    Module1 m;
    m.Startup(0);
    EXPECT_EQ(m.NoteList.Items(), (std::vector<std::string>{"A", "A#", "B", "C", "C#", "D", "D#",
                                                            "E", "F", "F#", "G", "G#"}));
    ASSERT_EQ(m.MajorChordsInt.Ubound(), 31);
    EXPECT_EQ(m.MajorChordsInt(0), "4,3");
    EXPECT_EQ(m.MajorChordsInt(13), "7");
    EXPECT_EQ(m.MajorChordsInt(31), "5,2,3");
    for (const auto *list : {&m.Bass_List, &m.Middle_List, &m.Melody_List, &m.Forth_List})
        EXPECT_EQ(list->Items(), std::vector<std::string>(23));
}

TEST(Startup, EveryModeMatchesThePositionTable) {
    Module1 m;
    for (Int mode = 0; mode <= 5; ++mode) {
        m.Startup(mode);
        ASSERT_EQ(m.Fret_Indices.Ubound(), 22) << "mode " << mode;
        for (Int p = 0; p <= 22; ++p)
            EXPECT_EQ(m.Fret_Indices(p), kFrets[p][mode]) << "mode " << mode << " position " << p;
    }
}

TEST(Startup, UnknownModeKeepsTheTableInForceAndRebuildsTheRest) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 2, 0, 0);
    const Array<Int> mode2 = m.M.Fret_Indices;
    for (Int bad : {-1, 6, 100}) {
        m.M.Startup(bad);
        EXPECT_EQ(m.M.Fret_Indices, mode2) << "mode " << bad;
        EXPECT_EQ(m.M.Bass_List.Items(), std::vector<std::string>(23));
        EXPECT_EQ(m.M.NoteList.Ubound(), 11);
        m.Init();
        m.DisplayChord();
        EXPECT_EQ(m.M.Bass_List(2), "F") << "D plus 3 semitones under mode 2";
    }
}

TEST(Startup, Mode5StartsTwoAboveTheOpenString) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 5, 0, 0);
    EXPECT_EQ(m.M.Fret_Indices(0), 2);
    for (Int p = 0; p <= 22; ++p)
        EXPECT_NE(m.M.Fret_Indices(p), 0) << "position " << p;
    EXPECT_EQ(m.M.Bass_List(0), "E");
    EXPECT_EQ(m.M.Middle_List(0), "B");
}

TEST(Tuning, EveryPopupItemGivesItsOwnNote) {
    ChordModel m;
    DefaultTuning(m);
    for (Int index = 0; index <= 11; ++index) {
        m.BassSelectMenu = index - 31;
        m.ForthSelectMenu = index - 31;
        Recompute(m, 3, 0, 0);
        EXPECT_EQ(m.M.nOpenBassString, (index + 5) % 12);
        EXPECT_EQ(m.M.Bass_List(0), kTuningItems[static_cast<std::size_t>(index)]);
        EXPECT_EQ(m.M.Forth_List(0), kTuningItems[static_cast<std::size_t>(index)]);
    }
    // "C#" is popup index 11.
    m.BassSelectMenu = 11 - 31;
    EXPECT_EQ(m.BassSelectMenu, -20);
    Recompute(m, 0, 0, 0);
    EXPECT_EQ(m.M.nOpenBassString, 4);
}

TEST(Tuning, MiddleStringDefaultOfMinus12NamesA) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 0, 0, 0);
    EXPECT_EQ(m.M.nOpenMiddleString, 0);
    m.MiddleSelectMenu = 7 - 31;
    Recompute(m, 0, 0, 0);
    const Array<std::string> popupA = m.M.Middle_List;
    m.MiddleSelectMenu = -12;
    Recompute(m, 0, 0, 0);
    EXPECT_EQ(m.M.Middle_List, popupA);
}

TEST(FretNotes, DefaultTuningDiatonicWithSixPlus) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 1, 0, 0);
    EXPECT_EQ(Head(m.M.Bass_List, 9),
              (std::vector<std::string>{"D", "E", "F#", "G", "A", "B", "C", "C#", "D"}));
    EXPECT_EQ(Head(m.M.Middle_List, 9),
              (std::vector<std::string>{"A", "B", "C#", "D", "E", "F#", "G", "G#", "A"}));
    EXPECT_EQ(m.M.Bass_List(22), "C");
    EXPECT_EQ(m.M.Middle_List(22), "G");
    // Same tuning, same list.
    EXPECT_EQ(m.M.Bass_List, m.M.Melody_List);
    EXPECT_EQ(m.M.Bass_List, m.M.Forth_List);
    // The working indices are left at position 22.
    EXPECT_EQ(m.M.nBassIndex, 3);
    EXPECT_EQ(m.M.nMiddleIndex, 10);
    EXPECT_EQ(m.M.nMelodyIndex, 3);
    EXPECT_EQ(m.M.nForthIndex, 3);
}

TEST(FretNotes, DefaultTuningPlainDiatonic) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 0, 0, 0);
    EXPECT_EQ(m.M.Bass_List(7), "D");
    EXPECT_EQ(m.M.Bass_List(22), "E");
}

TEST(FretNotes, EveryStringIsFilledFromItsOwnProperty) {
    ChordModel m;
    m.BassSelectMenu = -29;   // E
    m.MiddleSelectMenu = -26; // G
    m.MelodySelectMenu = -22; // B
    m.ForthSelectMenu = -21;  // C
    Recompute(m, 3, 0, 0);
    EXPECT_EQ(m.M.Bass_List(0), "E");
    EXPECT_EQ(m.M.Middle_List(0), "G");
    EXPECT_EQ(m.M.Melody_List(0), "B");
    EXPECT_EQ(m.M.Forth_List(0), "C");
    EXPECT_EQ(m.M.Forth_List(13), "C#");
}

TEST(FretNotes, InitUsesTheOpenNotesOfTheLastRecompute) {
    ChordModel m;
    DefaultTuning(m);
    m.M.Startup(3);
    m.Init();
    EXPECT_EQ(m.M.Bass_List(0), "D") << "process-start open note";
    m.BassSelectMenu = -20; // C#
    m.DisplayChord();
    EXPECT_EQ(m.M.Bass_List(0), "C#");

    m.BassSelectMenu = -31;
    m.M.Startup(3);
    m.Init();
    EXPECT_EQ(m.M.Bass_List(0), "C#") << "Init does not read the tuning properties";
    m.DisplayChord();
    EXPECT_EQ(m.M.Bass_List(0), "D");
}
