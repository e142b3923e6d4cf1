// Spelling a chord and marking it on the fretboard, the way the main window
// recomputes: Startup, Init, DisplayChord.

#include "model/chordmodel.h"
#include "model_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

using namespace varnock;
using modelsupport::DefaultTuning;
using modelsupport::Recompute;

namespace {

const std::vector<std::string> kNames = {"A",  "A#", "B", "C",  "C#", "D",
                                         "D#", "E",  "F", "F#", "G",  "G#"};

// Semitones above the root of each chord type, in the chord popup's order.
const std::vector<std::vector<int>> kChordSemitones = {
    {0, 4, 7},      {0, 4, 7, 10},  {0, 4, 7, 11},  {0, 3, 7},      {0, 3, 7, 10},  {0, 3, 6},
    {0, 3, 6, 9},   {0, 2, 7},      {0, 5, 7},      {0, 4, 7, 14},  {0, 3, 14},     {0, 4, 8},
    {0, 2, 4, 7},   {0, 7},         {0, 4, 7, 9},   {0, 4, 9, 14},  {0, 9, 10, 14}, {0, 4, 10, 14},
    {0, 7, 10, 17}, {0, 7, 10, 21}, {0, 4, 11, 14}, {0, 7, 11, 17}, {0, 4, 11, 21}, {0, 3, 7, 9},
    {0, 3, 9, 14},  {0, 3, 7, 11},  {0, 3, 11, 14}, {0, 3, 10, 14}, {0, 3, 10, 17}, {0, 3, 10, 21},
    {0, 4, 9, 10},  {0, 5, 7, 10},
};

// One period of each fret layout, modes 0..5.
const std::vector<std::vector<int>> kPeriods = {
    {0, 2, 4, 5, 7, 9, 10},
    {0, 2, 4, 5, 7, 9, 10, 11},
    {0, 2, 3, 4, 5, 7, 9, 10, 11},
    {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11},
    {0, 3, 5, 7, 10},
    {2, 4, 5, 8, 9},
};

std::string Row(const ChordModel &m, Int row) {
    std::string line;
    for (Int p = 0; p <= 22; ++p)
        line += m.TableOne(row, p);
    return line;
}

// A row as 23 cells with the given names at the given positions.
std::string MarkedRow(const std::vector<std::pair<std::string, std::vector<int>>> &marks) {
    std::vector<std::string> cells(23, ",");
    for (const auto &[name, positions] : marks)
        for (int p : positions)
            cells[static_cast<std::size_t>(p)] = name + ",";
    std::string line;
    for (const auto &cell : cells)
        line += cell;
    return line;
}

void ExpectCleared(const ChordModel &m) {
    for (Int r = 1; r <= 4; ++r)
        EXPECT_EQ(Row(m, r), std::string(23, ',')) << "row " << r;
}

} // namespace

TEST(ChordSweep, EveryChordOnEveryRootInEveryLayout) {
    ChordModel m;
    // Four different open notes: D, A, C#, G.
    m.BassSelectMenu = -31;
    m.MiddleSelectMenu = -12;
    m.MelodySelectMenu = -20;
    m.ForthSelectMenu = -26;
    const int open[5] = {0, 5, 0, 4, 10};

    int failures = 0;
    auto check = [&](bool ok, const std::string &what) {
        if (!ok && ++failures <= 10)
            ADD_FAILURE() << what;
    };
    for (int mode = 0; mode <= 5; ++mode) {
        const auto &period = kPeriods[static_cast<std::size_t>(mode)];
        for (int root = 0; root <= 11; ++root) {
            for (int chord = 0; chord <= 31; ++chord) {
                std::ostringstream where;
                where << "mode " << mode << " root " << root << " chord " << chord;
                const std::string result = Recompute(m, mode, root, chord);

                std::vector<std::string> names;
                for (int s : kChordSemitones[static_cast<std::size_t>(chord)])
                    names.push_back(kNames[static_cast<std::size_t>((root + s) % 12)]);
                names.resize(4);
                std::string expected = names[0] + "," + names[1] + "," + names[2];
                if (!names[3].empty())
                    expected += "," + names[3];
                check(result == expected, where.str() + ": got " + result + ", want " + expected);
                check(m.Note1 == names[0] && m.Note2 == names[1] && m.Note3 == names[2] &&
                          m.Note4 == names[3],
                      where.str() + ": note slots");

                for (int r = 1; r <= 4; ++r) {
                    for (int p = 0; p <= 22; ++p) {
                        const int pitch =
                            (open[r] + period[static_cast<std::size_t>(p) % period.size()]) % 12;
                        const std::string &name = kNames[static_cast<std::size_t>(pitch)];
                        const bool inChord =
                            std::find(names.begin(), names.end(), name) != names.end();
                        const std::string cell = inChord ? name + "," : ",";
                        check(m.TableOne(r, p) == cell,
                              where.str() + ": row " + std::to_string(r) + " position " +
                                  std::to_string(p) + " is " + m.TableOne(r, p) + ", want " + cell);
                    }
                }
                check(m.ModeSelectOther == -1, where.str() + ": ModeSelectOther");
            }
        }
    }
    EXPECT_EQ(failures, 0);

    for (Int p = 0; p <= 24; ++p)
        EXPECT_EQ(m.TableOne(0, p), "") << "row 0, column " << p;
    for (Int r = 0; r <= 4; ++r) {
        EXPECT_EQ(m.TableOne(r, 23), "");
        EXPECT_EQ(m.TableOne(r, 24), "");
    }
}

TEST(ChordSweep, TheArraysKeptEmptyStayEmpty) {
    ChordModel m;
    DefaultTuning(m);
    for (Int round = 0; round < 3; ++round)
        for (Int mode = 0; mode <= 5; ++mode)
            for (Int chord = 0; chord <= 31; ++chord)
                Recompute(m, mode, chord % 12, chord);
    for (const auto *a : {&m.M.MajorChords, &m.M.ExtendedChords, &m.M.ExtendedChordsInt,
                          &m.M.ObscureChords, &m.M.ObscureChordsInt, &m.M.AllMajorChords,
                          &m.M.AllExtendedChords, &m.M.AllObscureChords})
        EXPECT_EQ(a->Ubound(), -1);
}

TEST(DisplayChord, WorkedExampleAMajorOnDiatonicWithSixPlus) {
    ChordModel m;
    DefaultTuning(m);
    EXPECT_EQ(Recompute(m, 1, 0, 0), "A,C#,E");
    EXPECT_EQ(Row(m, 1), ",E,,,A,,,C#,,E,,,A,,,C#,,E,,,A,,,");
    const std::string dString = MarkedRow({{"A", {4, 12, 20}}, {"C#", {7, 15}}, {"E", {1, 9, 17}}});
    EXPECT_EQ(Row(m, 1), dString);
    EXPECT_EQ(Row(m, 2), MarkedRow({{"A", {0, 8, 16}}, {"C#", {2, 10, 18}}, {"E", {4, 12, 20}}}));
    EXPECT_EQ(Row(m, 3), dString);
    EXPECT_EQ(Row(m, 4), dString);
    EXPECT_EQ(m.Note4, "");
}

TEST(DisplayChord, TwoNoteChordKeepsItsThirdField) {
    ChordModel m;
    DefaultTuning(m);
    EXPECT_EQ(Recompute(m, 1, 0, 13), "A,E,");
    EXPECT_EQ(m.Note3, "");
    EXPECT_EQ(Row(m, 2), MarkedRow({{"A", {0, 8, 16}}, {"E", {4, 12, 20}}}));
}

TEST(DisplayChord, RootGSharpWrapsAround) {
    ChordModel m;
    DefaultTuning(m);
    EXPECT_EQ(Recompute(m, 3, 11, 0), "G#,C,D#");
    EXPECT_EQ(m.TableOne(1, 6), "G#,");
}

TEST(DisplayChord, NotesTheLayoutLacksLeaveNoMark) {
    ChordModel m;
    DefaultTuning(m);
    // Plain diatonic on D and A holds neither A# nor F.
    EXPECT_EQ(Recompute(m, 0, 1, 0), "A#,D,F");
    int marks = 0;
    for (Int r = 1; r <= 4; ++r)
        for (Int p = 0; p <= 22; ++p) {
            const std::string &cell = m.TableOne(r, p);
            EXPECT_TRUE(cell == "," || cell == "D,") << "row " << r << " position " << p;
            marks += cell == "D," ? 1 : 0;
        }
    EXPECT_GT(marks, 0);
}

TEST(DisplayChord, NothingOfThePreviousChordSurvives) {
    ChordModel m;
    DefaultTuning(m);
    EXPECT_EQ(Recompute(m, 0, 0, 1), "A,C#,E,G");
    EXPECT_EQ(m.TableOne(2, 6), "G,");
    EXPECT_EQ(Recompute(m, 0, 0, 0), "A,C#,E");
    EXPECT_EQ(m.Note4, "");
    EXPECT_EQ(m.TableOne(2, 6), ",");
}

TEST(DisplayNotes, StepsCountFromThePreviousNoteAndTruncate) {
    ChordModel m;
    m.M.Startup(0);
    m.DisplayNotes(0, "4.9,3.2");
    EXPECT_EQ(m.Note2, "C#");
    EXPECT_EQ(m.Note3, "E");
    m.DisplayNotes(0, "3,7,11");
    EXPECT_EQ(m.Note4, "F#");
    m.DisplayNotes(3, "7");
    EXPECT_EQ(m.Note1, "C");
    EXPECT_EQ(m.Note2, "G");
    EXPECT_EQ(m.Note3, "");
    EXPECT_EQ(m.Note4, "");
}

TEST(DisplayNotes, StepsBeyondTheFourthNoteAreDropped) {
    ChordModel m;
    m.M.Startup(0);
    m.DisplayNotes(0, "1,1,1,1,1");
    EXPECT_EQ(m.Note1, "A");
    EXPECT_EQ(m.Note2, "A#");
    EXPECT_EQ(m.Note3, "B");
    EXPECT_EQ(m.Note4, "C");
}

TEST(ListUpdate, OverwritesAndIgnoresTheEmptyName) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 1, 0, 0);
    m.ListUpdate("");
    m.ListUpdate("A");
    EXPECT_EQ(m.TableOne(2, 0), "A,");
    EXPECT_EQ(m.TableOne(1, 0), ",");
}

TEST(Failures, RootOutOfRangeAfterTheTableIsReset) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 0, 0, 1);
    m.SelectedChord = 12;
    m.M.Startup(0);
    m.Init();
    EXPECT_THROW(m.DisplayChord(), OutOfBoundsException);
    ExpectCleared(m);
    EXPECT_EQ(m.Note1 + m.Note2 + m.Note3 + m.Note4, "AC#EG");
    EXPECT_EQ(m.M.Bass_List(0), "D");
}

TEST(Failures, ChordTypeOutOfRange) {
    ChordModel m;
    DefaultTuning(m);
    Recompute(m, 0, 0, 1);
    m.ModeSelectOther = 5;
    EXPECT_THROW(Recompute(m, 0, 0, 32), OutOfBoundsException);
    ExpectCleared(m);
    EXPECT_EQ(m.Note1 + m.Note2 + m.Note3 + m.Note4, "AC#EG");
    EXPECT_EQ(m.ModeSelectOther, -1);
}

TEST(Failures, NoChordTypeReadsTheEmptySecondCatalogue) {
    ChordModel m;
    DefaultTuning(m);
    m.ModeSelectOther = 0;
    EXPECT_THROW(Recompute(m, 0, 0, -1), OutOfBoundsException);
    EXPECT_EQ(m.ModeSelectOther, 0);
    ExpectCleared(m);
}

TEST(Failures, DisplayChordBeforeAnyStartup) {
    ChordModel m;
    DefaultTuning(m);
    m.Note1 = "x";
    m.Note4 = "y";
    EXPECT_THROW(m.DisplayChord(), OutOfBoundsException);
    ExpectCleared(m);
    EXPECT_EQ(m.Note1, "x");
    EXPECT_EQ(m.Note4, "y");
}

TEST(Failures, UnknownModeOnTheFirstStartup) {
    ChordModel m;
    m.M.Startup(-1);
    EXPECT_EQ(m.M.Fret_Indices.Ubound(), -1);
    EXPECT_EQ(m.M.Bass_List.Ubound(), 22);
    EXPECT_THROW(m.FretArrayUpdate(), OutOfBoundsException);
    EXPECT_THROW(m.Init(), OutOfBoundsException);
}
