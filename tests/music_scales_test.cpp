// Scales: names as players write them, spelling from a typed root, and the
// modes a D string plays on each fret layout.

#include "music/scales.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <map>

using namespace varnock::music;

namespace {

std::string Joined(const std::vector<std::string> &words) {
    std::string out;
    for (const std::string &w : words)
        out += (out.empty() ? "" : " ") + w;
    return out;
}

} // namespace

TEST(Scales, DegreeLabelsMatchTheirSemitones) {
    // Semitones of the plain degrees 1..7 of a major scale.
    const int plain[] = {0, 0, 2, 4, 5, 7, 9, 11};
    ASSERT_EQ(Scales().size(), 12u);
    for (const Scale &scale : Scales()) {
        ASSERT_EQ(scale.semitones.size(), scale.degrees.size()) << scale.name;
        EXPECT_TRUE(std::is_sorted(scale.semitones.begin(), scale.semitones.end())) << scale.name;
        for (std::size_t i = 0; i < scale.degrees.size(); ++i) {
            const std::string &d = scale.degrees[i];
            const int number = d == "R" ? 1 : d.back() - '0';
            const int shift = d[0] == 'b' ? -1 : d[0] == '#' ? 1 : 0;
            EXPECT_EQ(plain[number] + shift, scale.semitones[i]) << scale.name << " " << d;
        }
    }
}

TEST(Scales, SpelledOneLetterPerDegree) {
    struct Row {
        const char *root, *scale, *notes;
    };
    const std::vector<Row> rows = {
        {"D", "dorian", "D E F G A B C"},
        {"F#", "major", "F# G# A# B C# D# E#"},
        {"Bb", "major", "Bb C D Eb F G A"},
        {"db", "ionian", "Db Eb F Gb Ab Bb C"},
        {"E", "phrygian", "E F G A B C D"},
        {"F", "lydian", "F G A B C D E"},
        {"C#", "lydian", "C# D# E# F## G# A# B#"},
        {"G", "mixolydian", "G A B C D E F"},
        {"A", "minor", "A B C D E F G"},
        {"Eb", "aeolian", "Eb F Gb Ab Bb Cb Db"},
        {"B", "locrian", "B C D E F G A"},
        {"G#", "harmonic minor", "G# A# B C# D# E F##"},
        {"C", "melodic minor", "C D Eb F G A B"},
        {"D", "major pentatonic", "D E F# A B"},
        {"E", "min-pent", "E G A B D"},
        {"A", "blues", "A C D Eb E G"},
        {"C", "blues", "C Eb F Gb G Bb"},
        {"F\u266F", "blues", "F# A B C C# E"},
        {"B\u266D\u266D", "major", "Bbb Cb Db Ebb Fb Gb Ab"},
    };
    // A scale by its name or one of the names players give it.
    const auto named = [](std::string name) -> const Scale & {
        std::replace(name.begin(), name.end(), '-', ' ');
        for (const Scale &scale : Scales())
            if (scale.name == name ||
                std::find(scale.aliases.begin(), scale.aliases.end(), name) != scale.aliases.end())
                return scale;
        throw std::invalid_argument(name);
    };
    for (const Row &r : rows)
        EXPECT_EQ(Joined(SpellScale(r.root, named(r.scale))), r.notes) << r.root << " " << r.scale;
    for (const char *bad : {"", "H", "C#b", "Cm", "#"})
        EXPECT_THROW(SpellScale(bad, Scales()[0]), std::invalid_argument) << bad;
}

TEST(Scales, ModesOfADString) {
    // layout, root, the modes with all their notes on the frets
    struct Row {
        int layout, root;
        std::vector<std::string> modes;
    };
    constexpr int A = 0, D = 5;
    const std::vector<Row> rows = {
        {0, D, {"mixolydian"}},
        {1, D, {"ionian", "mixolydian"}},
        {2, D, {"ionian", "dorian", "mixolydian"}},
        {3, D, {"ionian", "dorian", "phrygian", "lydian", "mixolydian", "aeolian", "locrian"}},
        // From the fifth of the open string instead.
        {0, A, {"dorian"}},
        {1, A, {"dorian", "mixolydian"}},
        {2, A, {"dorian", "mixolydian", "aeolian"}},
    };
    for (const Row &r : rows) {
        const auto fits = FindModes(BoardFor(r.layout, {D})[0], r.root);
        ASSERT_EQ(fits.size(), 7u);
        std::vector<std::string> got;
        for (const ModeFit &fit : fits)
            if (fit.fits)
                got.push_back(fit.mode->modeName);
        EXPECT_EQ(got, r.modes) << r.layout << " " << r.root;
    }

    // Where the notes lie, and what is missing, on the plain diatonic board.
    const auto fits = FindModes(BoardFor(0, {D})[0], D);
    const ModeFit &mixolydian = fits[4];
    EXPECT_EQ(mixolydian.positions.front(), (std::vector<int>{0, 7, 14, 21}));
    EXPECT_EQ(mixolydian.positions.back(), (std::vector<int>{6, 13, 20}));
    const std::map<std::string, std::vector<std::string>> missing = {
        {"ionian", {"7"}},       {"dorian", {"b3"}},        {"phrygian", {"b2", "b3", "b6"}},
        {"lydian", {"#4", "7"}}, {"aeolian", {"b3", "b6"}}, {"locrian", {"b2", "b3", "b5", "b6"}}};
    for (const ModeFit &fit : fits) {
        if (!fit.fits) {
            EXPECT_EQ(fit.missing, missing.at(fit.mode->modeName)) << fit.mode->modeName;
        }
    }
    EXPECT_THROW(FindModes(BoardFor(0, {D})[0], 12), std::invalid_argument);
}
