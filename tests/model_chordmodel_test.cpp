// The chord model as the main window runs it: Startup, Init, DisplayChord,
// checked on worked charts (one row per case; the export's TSV cases add more
// through the window), then its edges and failures.

#include "model/chordmodel.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace varnock;

namespace {

// One recompute in the main window's order.
std::string Recompute(ChordModel &m, Int mode, Int root, Int chord) {
    m.SelectedChord = root;
    m.ModeSelectMajor = chord;
    m.M.Startup(mode);
    m.Init();
    return m.DisplayChord();
}

// A TableOne row: "D:0,7 A:4" puts "D," at positions 0 and 7, "A," at 4 and
// "," everywhere else.
std::string Marks(const std::string &marks) {
    std::vector<std::string> cells(23, ",");
    std::istringstream words(marks);
    for (std::string word; words >> word;) {
        const std::string name = word.substr(0, word.find(':'));
        for (const std::string &p : Split(word.substr(word.find(':') + 1), ","))
            cells[std::stoul(p)] = name + ",";
    }
    std::string row;
    for (const std::string &cell : cells)
        row += cell;
    return row;
}

std::string Row(const ChordModel &m, Int row) {
    std::string line;
    for (Int p = 0; p <= 22; ++p)
        line += m.TableOne(row, p);
    return line;
}

struct Chart {
    const char *name;
    Int mode;
    Int tuning[4]; // popup indices of the four strings, D = 0
    Int root, chord;
    const char *notes;
    const char *rows[4];
};

// clang-format off
const Chart kCharts[] = {
    {"D7ChromaticDADG", 3, {0, 7, 0, 5}, 5, 1, "D,F#,A,C",
     {"D:0,12 F#:4,16 A:7,19 C:10,22", "A:0,12 C:3,15 D:5,17 F#:9,21",
      "D:0,12 F#:4,16 A:7,19 C:10,22", "A:2,14 C:5,17 D:7,19 F#:11"}},
    {"TwoNoteChordKeepsItsThirdField", 1, {0, 7, 0, 0}, 0, 13, "A,E,",
     {"E:1,9,17 A:4,12,20", "A:0,8,16 E:4,12,20", "E:1,9,17 A:4,12,20", "E:1,9,17 A:4,12,20"}},
    {"GSharpWrapsAround", 3, {0, 7, 0, 0}, 11, 0, "G#,C,D#",
     {"D#:1,13 G#:6,18 C:10,22", "C:3,15 D#:6,18 G#:11", "D#:1,13 G#:6,18 C:10,22",
      "D#:1,13 G#:6,18 C:10,22"}},
    {"ModeFiveStartsTwoAboveTheOpenString", 5, {0, 7, 0, 0}, 7, 3, "E,G,B",
     {"E:0,5,10,15,20 G:2,7,12,17,22 B:4,9,14,19", "B:0,5,10,15,20",
      "E:0,5,10,15,20 G:2,7,12,17,22 B:4,9,14,19", ""}},
    {"FourTuningsPentatonic", 4, {2, 5, 9, 10}, 0, 29, "A,C,G,F#",
     {"G:1,6,11,16,21 A:2,7,12,17,22", "G:0,5,10,15,20 C:2,7,12,17,22", "", "C:0,5,10,15,20 G:3,8,13,18"}},
    {"StepsCountFromThePreviousNote", 2, {0, 7, 0, 0}, 0, 16, "A,F#,G,B",
     {"F#:3,12,21 G:4,13,22 A:5,14 B:6,15", "A:0,9,18 B:1,10,19 F#:6,15 G:7,16", "", ""}},
};
// clang-format on

void PrintTo(const Chart &c, std::ostream *os) {
    *os << c.name;
}

class Charts : public ::testing::TestWithParam<Chart> {};

TEST_P(Charts, SpellAndMarkEveryString) {
    const Chart &c = GetParam();
    ChordModel m;
    m.SetStartValues();
    Int *properties[] = {&m.BassSelectMenu, &m.MiddleSelectMenu, &m.MelodySelectMenu,
                         &m.ForthSelectMenu};
    for (int s = 0; s < 4; ++s)
        if (c.tuning[s] != (s == 1 ? 7 : 0))
            *properties[s] = c.tuning[s] - 31;
    EXPECT_EQ(Recompute(m, c.mode, c.root, c.chord), c.notes);
    const std::vector<std::string> notes = Split(c.notes, ",");
    EXPECT_EQ(m.Note1, notes[0]);
    EXPECT_EQ(m.Note4, notes.size() > 3 ? notes[3] : "");
    for (int r = 0; r < 4; ++r) {
        if (*c.rows[r]) {
            EXPECT_EQ(Row(m, r + 1), Marks(c.rows[r])) << "string " << r + 1;
        }
    }
    EXPECT_EQ(m.ModeSelectOther, -1);
}

INSTANTIATE_TEST_SUITE_P(Model, Charts, ::testing::ValuesIn(kCharts),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(Model, EveryTuningItemGivesItsOwnNoteOnEveryString) {
    const char *items[] = {"D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B", "C", "C#"};
    ChordModel m;
    for (Int index = 0; index <= 11; ++index) {
        m.BassSelectMenu = m.MiddleSelectMenu = m.MelodySelectMenu = m.ForthSelectMenu = index - 31;
        Recompute(m, 3, 0, 0);
        for (const auto *list :
             {&m.M.Bass_List, &m.M.Middle_List, &m.M.Melody_List, &m.M.Forth_List})
            EXPECT_EQ((*list)(0), items[index]) << "item " << index;
    }
}

TEST(Model, NothingOfThePreviousChordSurvivesAndSpareArraysStayEmpty) {
    ChordModel m;
    m.SetStartValues();
    EXPECT_EQ(Recompute(m, 0, 0, 1), "A,C#,E,G");
    EXPECT_EQ(m.TableOne(2, 6), "G,");
    EXPECT_EQ(Recompute(m, 0, 0, 0), "A,C#,E");
    EXPECT_EQ(m.Note4, "");
    EXPECT_EQ(m.TableOne(2, 6), ",");
    for (Int p = 0; p <= 24; ++p)
        EXPECT_EQ(m.TableOne(0, p), "");
    EXPECT_EQ(m.TableOne(4, 23), "");
    for (const auto *a : {&m.M.MajorChords, &m.M.ExtendedChords, &m.M.ExtendedChordsInt,
                          &m.M.ObscureChords, &m.M.ObscureChordsInt, &m.M.AllMajorChords,
                          &m.M.AllExtendedChords, &m.M.AllObscureChords})
        EXPECT_EQ(a->Ubound(), -1);
}

TEST(Model, StepsTruncateAndThoseBeyondTheFourthNoteAreDropped) {
    ChordModel m;
    m.M.Startup(0);
    m.DisplayNotes(0, "4.9,3.2");
    EXPECT_EQ(m.Note2 + m.Note3, "C#E");
    m.DisplayNotes(0, "1,1,1,1,1");
    EXPECT_EQ(m.Note1 + m.Note2 + m.Note3 + m.Note4, "AA#BC");
}

TEST(Model, UnknownModeKeepsTheTableInForceAndInitUsesTheLastOpenNotes) {
    ChordModel m;
    m.SetStartValues();
    Recompute(m, 2, 0, 0);
    const Array<Int> mode2 = m.M.Fret_Indices;
    for (Int bad : {-1, 6}) {
        m.M.Startup(bad);
        EXPECT_EQ(m.M.Fret_Indices, mode2);
        EXPECT_EQ(m.M.Bass_List.Items(), std::vector<std::string>(23));
    }
    m.BassSelectMenu = -20; // C#
    m.Init();
    EXPECT_EQ(m.M.Bass_List(0), "D") << "Init does not read the tuning properties";
    m.DisplayChord();
    EXPECT_EQ(m.M.Bass_List(0), "C#");
    EXPECT_EQ(m.M.nBassIndex, 9) << "the working index stays at position 22";
}

// An index out of range fails at its read, after the table has been cleared.
TEST(Model, FailuresLeaveAClearedTableAndTheOldNames) {
    const auto cleared = [](const ChordModel &m) {
        for (Int r = 1; r <= 4; ++r)
            if (Row(m, r) != std::string(23, ','))
                return false;
        return true;
    };
    ChordModel m;
    m.SetStartValues();
    EXPECT_THROW(m.DisplayChord(), OutOfBoundsException) << "before any Startup";
    EXPECT_TRUE(cleared(m));
    Recompute(m, 0, 0, 1);
    EXPECT_THROW(Recompute(m, 0, 12, 0), OutOfBoundsException);
    EXPECT_TRUE(cleared(m));
    EXPECT_EQ(m.Note1 + m.Note2 + m.Note3 + m.Note4, "AC#EG");
    EXPECT_THROW(Recompute(m, 0, 0, 32), OutOfBoundsException);
    m.ModeSelectOther = 0;
    EXPECT_THROW(Recompute(m, 0, 0, -1), OutOfBoundsException) << "the empty second catalogue";
    EXPECT_EQ(m.ModeSelectOther, 0);
    ChordModel first;
    first.M.Startup(-1);
    EXPECT_THROW(first.Init(), OutOfBoundsException) << "no table on the first Startup";
}

} // namespace
