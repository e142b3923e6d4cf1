// The export command's music theory: spelling by degree and naming a chord
// from its notes; the command's own tests cover the rest.

#include "music/catalogue.h"
#include "music/degrees.h"
#include "music/errors.h"
#include "music/identify.h"
#include "platform/basic.h"

#include <gtest/gtest.h>

using namespace varnock;
using namespace varnock::music;
using catalogue::kChordTypeCount;

namespace {

// A chord type's index by its name.
int Chord(const std::string &name) {
    return catalogue::FindChordType(name).value();
}

// "A Dim7, C 6+": each match's root and chord, a + marking one that holds
// more notes than those asked for.
std::string Named(const std::vector<Match> &matches) {
    std::string out;
    for (const Match &m : matches)
        out += (out.empty() ? "" : ", ") + std::string(catalogue::kNotes.at(m.root).sharp) + " " +
               std::string(catalogue::kChordTypes.at(m.chord).name) + (m.exact ? "" : "+");
    return out;
}

template <class F> void ExpectBad(F f, const std::string &message) {
    try {
        f();
        ADD_FAILURE() << "no BadInput, expected: " << message;
    } catch (const BadInput &e) {
        EXPECT_EQ(e.what(), message);
    }
}

} // namespace

TEST(SpellByDegree, EveryTypeOnNaturalSharpAndFlatRoots) {
    // chord, then C, F# and Eb, written out from theory.
    const std::vector<std::vector<std::string>> rows = {
        {"Maj", "C E G", "F# A# C#", "Eb G Bb"},
        {"7", "C E G Bb", "F# A# C# E", "Eb G Bb Db"},
        {"maj7", "C E G B", "F# A# C# E#", "Eb G Bb D"},
        {"m", "C Eb G", "F# A C#", "Eb Gb Bb"},
        {"m7", "C Eb G Bb", "F# A C# E", "Eb Gb Bb Db"},
        {"Dim", "C Eb Gb", "F# A C", "Eb Gb Bbb"},
        {"Dim7", "C Eb Gb Bbb", "F# A C Eb", "Eb Gb Bbb Dbb"},
        {"Sus2", "C D G", "F# G# C#", "Eb F Bb"},
        {"Sus4", "C F G", "F# B C#", "Eb Ab Bb"},
        {"add9", "C E G D", "F# A# C# G#", "Eb G Bb F"},
        {"madd9", "C Eb D", "F# A G#", "Eb Gb F"},
        {"Aug", "C E G#", "F# A# C##", "Eb G B"},
        {"2", "C D E G", "F# G# A# C#", "Eb F G Bb"},
        {"5", "C G", "F# C#", "Eb Bb"},
        {"6", "C E G A", "F# A# C# D#", "Eb G Bb C"},
        {"6/9", "C E A D", "F# A# D# G#", "Eb G C F"},
        {"9/6", "C A Bb D", "F# D# E G#", "Eb C Db F"},
        {"9", "C E Bb D", "F# A# E G#", "Eb G Db F"},
        {"11", "C G Bb F", "F# C# E B", "Eb Bb Db Ab"},
        {"13", "C G Bb A", "F# C# E D#", "Eb Bb Db C"},
        {"maj9", "C E B D", "F# A# E# G#", "Eb G D F"},
        {"maj11", "C G B F", "F# C# E# B", "Eb Bb D Ab"},
        {"maj13", "C E B A", "F# A# E# D#", "Eb G D C"},
        {"m6", "C Eb G A", "F# A C# D#", "Eb Gb Bb C"},
        {"maj6/9", "C Eb A D", "F# A D# G#", "Eb Gb C F"},
        {"mmaj7", "C Eb G B", "F# A C# E#", "Eb Gb Bb D"},
        {"mmaj9", "C Eb B D", "F# A E# G#", "Eb Gb D F"},
        {"m9", "C Eb Bb D", "F# A E G#", "Eb Gb Db F"},
        {"m11", "C Eb Bb F", "F# A E B", "Eb Gb Db Ab"},
        {"m13", "C Eb Bb A", "F# A E D#", "Eb Gb Db C"},
        {"7/6", "C E A Bb", "F# A# D# E", "Eb G C Db"},
        {"7sus4", "C F G Bb", "F# B C# E", "Eb Ab Bb Db"},
    };
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(kChordTypeCount));
    for (const auto &row : rows) {
        EXPECT_EQ(SpellChord("C", Chord(row[0])), Split(row[1], " ")) << row[0];
        EXPECT_EQ(SpellChord("F#", Chord(row[0])), Split(row[2], " ")) << row[0];
        EXPECT_EQ(SpellChord("Eb", Chord(row[0])), Split(row[3], " ")) << row[0];
    }
}

TEST(SpellByDegree, RootKeptAsTyped) {
    const std::vector<std::tuple<std::string, std::string, std::string>> rows = {
        {"Bb", "Maj", "Bb D F"},           {"A#", "Maj", "A# C## E#"},
        {"C#", "Aug", "C# E# G##"},        {"A", "Dim7", "A C Eb Gb"},
        {"Dbb", "Maj", "Dbb Fb Abb"},      {"Cx", "Maj", "Cx E## G##"},
        {"B\u266D", "Maj", "B\u266D D F"}, {"g", "Dim7", "g Bb Db Fb"},
    };
    for (const auto &[root, chord, want] : rows)
        EXPECT_EQ(SpellChord(root, Chord(chord)), Split(want, " ")) << root << " " << chord;
    ExpectBad([] { SpellChord("H", 0); }, "root \"H\" is not a note name: a letter A-G then sharps "
                                          "(#, \u266F, x for two) or flats (b, \u266D)");
    ExpectBad([] { SpellChord("C", 32); }, "chord index 32 is outside 0..31");
}

TEST(Identify, ExactMatchesThenWiderOnes) {
    // A=0 C=3 D=5 D#=6 E=7 F#=9 G=10 G#=11
    const std::vector<std::pair<std::vector<int>, std::string>> rows = {
        // Diminished sevenths are the same four notes on four roots.
        {{9, 0, 3, 6}, "A Dim7, C Dim7, D# Dim7, F# Dim7"},
        // So are augmented triads on three, and the top of three minor-major sevenths.
        {{3, 7, 11, 7}, "C Aug, E Aug, G# Aug, A mmaj7+, C# mmaj7+, F mmaj7+"},
        // C6 and Am7 are one set of notes.
        {{10, 7, 0, 3}, "A m7, C 6"},
        // madd9 has no fifth: the minor ninths on A hold it, and so do C maj13 and D 13.
        {{0, 3, 2}, "A madd9, A maj6/9+, A mmaj9+, A m9+, C maj13+, D 13+"},
        // D Maj alone is exact; wider ones follow in root order.
        {{5, 9, 0, 5}, "D Maj, B m7+, D 7+, D maj7+, D add9+, D 2+, D 6+"},
    };
    for (const auto &[notes, want] : rows)
        EXPECT_EQ(Named(Identify(notes)), want) << ::testing::PrintToString(notes);
}

TEST(SpellByDegree, ARootNobodyTypedTakesTheSpellingWithFewerAccidentals) {
    // note index, chord, the name; a tie in the chord goes to the key with
    // fewer accidentals, then to the sharp.
    const std::vector<std::tuple<int, std::string, std::string>> rows = {
        {1, "maj7", "Bb"}, {6, "m", "Eb"},    {9, "Maj", "F#"},  {4, "Maj", "Db"},
        {4, "m", "C#"},    {11, "m", "G#"},   {11, "Maj", "Ab"}, {11, "Dim7", "G#"},
        {8, "Dim7", "F"},  {6, "Dim7", "D#"}, {3, "7", "C"},
    };
    for (const auto &[note, chord, want] : rows)
        EXPECT_EQ(PlainRoot(note, Chord(chord)), want) << note << " " << chord;
}

TEST(SpellByDegree, ATypedRootIsKeptWhereItNamesTheTypedNotesAsTyped) {
    const std::vector<std::tuple<std::string, int, std::vector<std::string>, bool>> rows = {
        {"A#", 0, {"A#", "Cx", "E#"}, true},    {"A#", 2, {"A#", "D", "F", "A"}, false},
        {"Bb", 2, {"bb", "D", "F", "A"}, true}, {"C", 1, {"C", "E", "G", "Bb"}, true},
        {"C", 1, {"C", "E", "G", "A#"}, false}, {"E#", 0, {"E#", "A", "C"}, false},
        {"F", 0, {"f", "a", "c"}, true},
    };
    for (const auto &[root, chord, typed, fits] : rows)
        EXPECT_EQ(FitsTyped(root, chord, typed), fits) << root << " " << chord;
}
