// The export command's music theory: note names, spelling by degree, naming a
// chord from notes or frets, and the chart in words.

#include "cli/theory.h"
#include "model/chordmodel.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace varnock;
using namespace varnock::theory;

namespace {

std::vector<std::string> Words(const std::string &text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string w; in >> w;)
        words.push_back(w);
    return words;
}

std::vector<std::string> Formulas() {
    Module1 m;
    m.Startup(0);
    return m.MajorChordsInt.Items();
}

const std::vector<std::string> kChordNames = {
    "Maj",   "7",  "maj7",   "m",     "m7",    "Dim", "Dim7", "Sus2", "Sus4", "add9", "madd9",
    "Aug",   "2",  "5",      "6",     "6/9",   "9/6", "9",    "11",   "13",   "maj9", "maj11",
    "maj13", "m6", "maj6/9", "mmaj7", "mmaj9", "m9",  "m11",  "m13",  "7/6",  "7sus4"};

template <class F> void ExpectBad(F f, const std::string &message) {
    try {
        f();
        ADD_FAILURE() << "no BadValue, expected: " << message;
    } catch (const BadValue &e) {
        EXPECT_EQ(e.what(), message);
    }
}

} // namespace

namespace varnock::theory {
void PrintTo(const Match &m, std::ostream *os) {
    *os << "{root " << m.root << ", chord " << m.chord << (m.exact ? ", exact}" : ", wider}");
}
} // namespace varnock::theory

TEST(NoteNames, ParseNoteInAnySpelling) {
    const std::vector<std::pair<std::string, std::optional<int>>> rows = {
        {"A", 0},       {"a", 0},   {"Bb", 1},  {"bb", 1},       {"B#", 3},   {"Cb", 2},
        {"Cbb", 1},     {"G##", 0}, {"Gx", 0},  {"Cx#", 6},      {"Fbbb", 5}, {"E\u266F", 8},
        {"D\u266D", 4}, {"", {}},   {"H", {}},  {"C#b", {}},     {"Cb#", {}}, {"#", {}},
        {"C#m", {}},    {" C", {}}, {"CB", {}}, {"E\u266Fb", {}}};
    for (const auto &[text, want] : rows)
        EXPECT_EQ(ParseNote(text), want) << text;
}

// Every type on every root, sharp and flat: the same pitch classes as the model
// spells, each on the letter of its degree.
TEST(SpellByDegree, AgreesWithTheModelOnEveryChordAndRoot) {
    const std::string letters = "ABCDEFG";
    for (int root = 0; root < 12; ++root)
        for (int chord = 0; chord < kChordTypes; ++chord) {
            ChordModel m;
            m.SelectedChord = root;
            m.ModeSelectMajor = chord;
            m.M.Startup(0);
            m.Init();
            std::vector<std::string> model = Split(m.DisplayChord(), ",");
            if (model.back().empty())
                model.pop_back();
            for (const std::string &rootName : {SharpName(root), FlatName(root)}) {
                const auto spelled = SpellChord(rootName, chord);
                ASSERT_EQ(spelled.size(), model.size()) << rootName << " " << chord;
                for (std::size_t i = 0; i < spelled.size(); ++i) {
                    const auto where = rootName + " " + kChordNames[chord] + " note " + spelled[i];
                    EXPECT_EQ(ParseNote(spelled[i]), ParseNote(model[i])) << where;
                    const auto step = static_cast<std::size_t>(ChordDegrees(chord)[i] - 1);
                    EXPECT_EQ(spelled[i][0],
                              letters[(letters.find(rootName[0]) + step) % letters.size()])
                        << where;
                }
            }
        }
}

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
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(kChordTypes));
    for (int chord = 0; chord < kChordTypes; ++chord) {
        const auto &row = rows[static_cast<std::size_t>(chord)];
        ASSERT_EQ(row[0], kChordNames[static_cast<std::size_t>(chord)]);
        EXPECT_EQ(SpellChord("C", chord), Words(row[1])) << row[0];
        EXPECT_EQ(SpellChord("F#", chord), Words(row[2])) << row[0];
        EXPECT_EQ(SpellChord("Eb", chord), Words(row[3])) << row[0];
    }
}

TEST(SpellByDegree, RootKeptAsTyped) {
    const std::vector<std::tuple<std::string, std::string, std::string>> rows = {
        {"Bb", "Maj", "Bb D F"},
        {"A#", "Maj", "A# C## E#"},
        {"C#", "Aug", "C# E# G##"},
        {"A", "Dim7", "A C Eb Gb"},
        {"A", "Maj", "A C# E"},
        {"D", "7", "D F# A C"},
        {"F", "m", "F Ab C"},
        {"A", "5", "A E"},
        {"Dbb", "Maj", "Dbb Fb Abb"},
        {"Cx", "Maj", "Cx E## G##"},
        {"B\u266D", "Maj", "B\u266D D F"},
        {"g", "Dim7", "g Bb Db Fb"},
    };
    for (const auto &[root, chord, want] : rows) {
        const auto index = std::find(kChordNames.begin(), kChordNames.end(), chord);
        EXPECT_EQ(SpellChord(root, static_cast<int>(index - kChordNames.begin())), Words(want))
            << root << " " << chord;
    }
    ExpectBad([] { SpellChord("H", 0); },
              "root \"H\" is not a note name: a letter A-G then sharps (#) or flats (b)");
    ExpectBad([] { SpellChord("C", 32); }, "chord index 32 is outside 0..31");
}

TEST(SpellByDegree, Respell) {
    const std::vector<std::string> sharps = {"A#", "D", "F"}, spelled = {"A#", "C##", "E#"};
    const std::vector<std::tuple<std::string, Spelling, std::string>> rows = {
        {"C#", Spelling::Sharps, "C#"}, {"A#", Spelling::Flats, "Bb"},
        {"E", Spelling::Flats, "E"},    {"D", Spelling::Chord, "C##"},
        {"F", Spelling::Chord, "E#"},   {"A#", Spelling::Chord, "A#"},
        {"G", Spelling::Chord, "G"},    {"", Spelling::Chord, ""},
        {"", Spelling::Flats, ""},
    };
    for (const auto &[name, how, want] : rows)
        EXPECT_EQ(Respell(name, how, sharps, spelled), want) << name;
}

TEST(Identify, ExactMatchesThenWiderOnes) {
    const auto formulas = Formulas();
    // A=0 C=3 D=5 D#=6 E=7 F#=9 G=10 G#=11
    const std::vector<std::pair<std::vector<int>, std::vector<Match>>> rows = {
        // Diminished sevenths are the same four notes on four roots.
        {{9, 0, 3, 6}, {{0, 6, true}, {3, 6, true}, {6, 6, true}, {9, 6, true}}},
        // So are augmented triads on three, and the top of three minor-major sevenths.
        {{3, 7, 11, 7},
         {{3, 11, true},
          {7, 11, true},
          {11, 11, true},
          {0, 25, false},
          {4, 25, false},
          {8, 25, false}}},
        // C6 and Am7 are one set of notes.
        {{10, 7, 0, 3}, {{0, 4, true}, {3, 14, true}}},
        // madd9 has no fifth: the minor ninths on A hold it, and so do C maj13 and D 13.
        {{0, 3, 2},
         {{0, 10, true},
          {0, 24, false},
          {0, 26, false},
          {0, 27, false},
          {3, 22, false},
          {5, 19, false}}},
    };
    for (const auto &[notes, want] : rows) {
        const auto got = Identify(notes, formulas);
        EXPECT_EQ(got, want) << ::testing::PrintToString(notes);
    }
    // D F# A: D Maj alone is exact; wider ones follow in root order.
    const auto dmaj = Identify({5, 9, 0, 5}, formulas);
    ASSERT_GE(dmaj.size(), 2u);
    EXPECT_EQ(dmaj[0], (Match{5, 0, true}));
    EXPECT_EQ(dmaj[1], (Match{2, 4, false})); // B m7
    EXPECT_FALSE(dmaj[1].exact);
}

TEST(Identify, RejectsWhatIsNoChord) {
    const auto formulas = Formulas();
    ExpectBad(
        [&] {
            Identify({5, 5}, formulas);
        },
        "notes \"D,D\" are 1 different notes; a chord here has 2 to 4");
    ExpectBad(
        [&] {
            Identify({0, 1, 2, 3, 4}, formulas);
        },
        "notes \"A,A#,B,C,C#\" are 5 different notes; a chord here has 2 to 4");
    ExpectBad([&] { Identify({0, 12}, formulas); }, "note index 12 is outside 0..11");
}

TEST(Identify, FormatMatch) {
    const auto formulas = Formulas();
    const std::vector<std::tuple<Match, Spelling, std::string>> rows = {
        {{5, 0, true}, Spelling::Sharps, "D Maj: D F# A"},
        {{1, 0, true}, Spelling::Flats, "Bb Maj: Bb D F"},
        {{1, 0, true}, Spelling::Chord, "A# Maj: A# C## E#"},
        {{3, 6, true}, Spelling::Sharps, "C Dim7: C D# F# A"},
        {{3, 6, true}, Spelling::Flats, "C Dim7: C Eb Gb A"},
        {{3, 6, true}, Spelling::Chord, "C Dim7: C Eb Gb Bbb"},
        {{0, 13, true}, Spelling::Chord, "A 5: A E"},
    };
    for (const auto &[match, how, want] : rows)
        EXPECT_EQ(FormatMatch(match, how, kChordNames, formulas), want);
}

TEST(Frets, ParseFretList) {
    using P = std::vector<std::optional<int>>;
    EXPECT_EQ(ParseFretList("4,x,2", 3), (P{4, std::nullopt, 2}));
    EXPECT_EQ(ParseFretList("0, X ,22,5", 4), (P{0, std::nullopt, 22, 5}));
    const std::vector<std::tuple<std::string, int, std::string>> bad = {
        {"4,2", 3, "fret list \"4,2\" has 2 positions; the instrument has 3 strings"},
        {"1,2,3,4", 3, "fret list \"1,2,3,4\" has 4 positions; the instrument has 3 strings"},
        {"1,23,3", 3, "position \"23\" is outside 0..22"},
        {"99999999999,1,1", 3, "position \"99999999999\" is outside 0..22"},
        {"1,y,3", 3, "position \"y\" is not a number or x"},
        {"1,2", 2, "the instrument has 2 strings; fret lists are for 3 or 4"},
    };
    for (const auto &[text, strings, message] : bad)
        ExpectBad([&] { ParseFretList(text, strings); }, message);
}

TEST(Frets, NotesAtFrets) {
    using P = std::vector<std::optional<int>>;
    const std::vector<int> dad = {5, 0, 5};
    const std::vector<std::tuple<P, int, std::vector<int>>> rows = {
        {{4, std::nullopt, 2}, 0, {0, 9}}, // diatonic: A on the bass, F# on the melody
        {{7, 7, 7}, 1, {4, 11, 4}},        // 6+ frets: the major seventh, C# G# C#
        {{4, 4, 4}, 3, {9, 4, 9}},         // chromatic: four semitones, F# C# F#
        {{0, 0, 0}, 5, {7, 2, 7}},         // this layout starts two above the open note
        {{std::nullopt, std::nullopt, std::nullopt}, 0, {}},
    };
    for (const auto &[positions, mode, want] : rows)
        EXPECT_EQ(NotesAtFrets(positions, mode, dad), want) << "mode " << mode;
    ExpectBad([&] { NotesAtFrets({0, 0, 0}, 6, dad); }, "fret layout 6 is outside 0..5");
    ExpectBad([&] { NotesAtFrets({0, 0}, 0, dad); }, "2 positions for 3 strings");
    ExpectBad([&] { NotesAtFrets({0, 23, 0}, 0, dad); }, "position 23 is outside 0..22");
}

TEST(Describe, ChartInWords) {
    // Rows of 23 cells with the given notes at the given positions.
    using Marks = std::vector<std::pair<std::string, std::vector<int>>>;
    auto row = [](const Marks &marks) {
        std::vector<std::string> cells(23);
        for (const auto &[name, positions] : marks)
            for (int p : positions)
                cells[static_cast<std::size_t>(p)] = name;
        return cells;
    };
    std::vector<std::string> plain, plus;
    for (int p = 0; p <= 22; ++p)
        plain.push_back(std::to_string(p));
    plus = plain;
    plus[7] = "6+";

    const std::vector<std::pair<SheetFacts, std::string>> rows = {
        {{"Diatonic",
          3,
          {"D", "A", "D"},
          "D Maj",
          {"D", "F#", "A"},
          plain,
          {row({{"D", {0, 7, 14, 21}}, {"F#", {2, 9, 16}}, {"A", {4, 11, 18}}}),
           row({{"A", {0, 7, 14, 21}}, {"D", {3, 10, 17}}, {"F#", {5, 12, 19}}}),
           row({{"D", {0, 7, 14, 21}}, {"F#", {2, 9, 16}}, {"A", {4, 11, 18}}})}},
         "Diatonic fretboard, 3 strings tuned D A D.\n"
         "Chord: D Maj, notes D, F# and A (root D).\n"
         "String 1, tuned D: D at positions 0, 7, 14, 21 (frets 0, 7, 14, 21); F# at positions "
         "2, 9, 16 (frets 2, 9, 16); A at positions 4, 11, 18 (frets 4, 11, 18).\n"
         "String 2, tuned A: D at positions 3, 10, 17 (frets 3, 10, 17); F# at positions 5, 12, "
         "19 (frets 5, 12, 19); A at positions 0, 7, 14, 21 (frets 0, 7, 14, 21).\n"
         "String 3, tuned D: D at positions 0, 7, 14, 21 (frets 0, 7, 14, 21); F# at positions "
         "2, 9, 16 (frets 2, 9, 16); A at positions 4, 11, 18 (frets 4, 11, 18).\n"},
        {{"Diatonic with 6+",
          4,
          {"Bb", "F", "Bb", "G"},
          "Bb 5",
          {"Bb", "F"},
          plus,
          {row({{"Bb", {0}}, {"F", {4, 12}}}), row({{"F", {0}}}), row({{"Bb", {7}}}), row({})}},
         "Diatonic with 6+ fretboard, 4 strings tuned Bb F Bb G.\n"
         "Chord: Bb 5, notes Bb and F (root Bb).\n"
         "String 1, tuned Bb: Bb at position 0 (fret 0); F at positions 4, 12 (frets 4, 12).\n"
         "String 2, tuned F: no Bb; F at position 0 (fret 0).\n"
         "String 3, tuned Bb: Bb at position 7 (fret 6+); no F.\n"
         "String 4, tuned G: no chord notes.\n"},
    };
    for (const auto &[facts, want] : rows)
        EXPECT_EQ(Describe(facts), want);

    SheetFacts mismatched = rows[0].first;
    mismatched.tuning.pop_back();
    ExpectBad([&] { Describe(mismatched); }, "a sheet of 3 strings has 2 open notes and 3 rows");
}
