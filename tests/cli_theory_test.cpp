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

TEST(NoteNames, ParseNoteInAnySpelling) {
    const std::vector<std::pair<std::string, std::optional<int>>> rows = {
        {"A", 0},       {"a", 0},   {"Bb", 1},  {"bb", 1},       {"B#", 3},   {"Cb", 2},
        {"Cbb", 1},     {"G##", 0}, {"Gx", 0},  {"Cx#", 6},      {"Fbbb", 5}, {"E\u266F", 8},
        {"D\u266D", 4}, {"", {}},   {"H", {}},  {"C#b", {}},     {"Cb#", {}}, {"#", {}},
        {"C#m", {}},    {" C", {}}, {"CB", {}}, {"E\u266Fb", {}}};
    for (const auto &[text, want] : rows)
        EXPECT_EQ(ParseNote(text), want) << text;
}

TEST(NoteNames, SharpAndFlatNamesReadBackAsTheirIndex) {
    Module1 m;
    m.Startup(0);
    for (int i = -12; i < 24; ++i) {
        const int n = (i % 12 + 12) % 12;
        EXPECT_EQ(SharpName(i), m.NoteList(n)) << i;
        EXPECT_EQ(ParseNote(FlatName(i)), n) << i;
        EXPECT_EQ(FlatName(i).find('#'), std::string::npos) << i;
    }
}

TEST(NoteNames, ParseSpelling) {
    EXPECT_EQ(ParseSpelling("sharps"), Spelling::Sharps);
    EXPECT_EQ(ParseSpelling("FLATS"), Spelling::Flats);
    EXPECT_EQ(ParseSpelling("Chord"), Spelling::Chord);
    EXPECT_EQ(ParseSpelling("sharp"), std::nullopt);
    EXPECT_EQ(ParseSpelling(""), std::nullopt);
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
