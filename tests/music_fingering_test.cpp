// Fingerings: first ones worked out by hand from the fret tables, and every
// fingering of a few boards against a plain reckoning of all combinations.

#include "model/chordmodel.h"
#include "music/fingering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

using namespace varnock;
using namespace varnock::music;

namespace {

// Pitch classes above A.
constexpr int A = 0, Bb = 1, D = 5, E = 7, G = 10;

// A chord type on a root: "Maj", "7", "m7" or "5".
std::vector<ChordTone> Chord(int root, const std::string &type) {
    static const std::map<std::string, std::vector<std::pair<int, std::string>>> types = {
        {"Maj", {{0, "R"}, {4, "3"}, {7, "5"}}},
        {"7", {{0, "R"}, {4, "3"}, {7, "5"}, {10, "b7"}}},
        {"m7", {{0, "R"}, {3, "b3"}, {7, "5"}, {10, "b7"}}},
        {"5", {{0, "R"}, {7, "5"}}}};
    std::vector<ChordTone> tones;
    for (const auto &[semitones, degree] : types.at(type))
        tones.push_back({(root + semitones) % 12, degree});
    return tones;
}

// "h12 r4 k3 c8 m": highest 12, reach 4, capo 3, count 8, muted strings allowed.
Limits Parse(const std::string &text) {
    static const std::map<char, int Limits::*> fields = {{'h', &Limits::highest},
                                                         {'r', &Limits::reach},
                                                         {'k', &Limits::capo},
                                                         {'c', &Limits::count}};
    Limits limits;
    std::istringstream in(text);
    for (std::string word; in >> word;) {
        if (word == "m")
            limits.mutedOk = true;
        else
            limits.*fields.at(word[0]) = std::stoi(word.substr(1));
    }
    return limits;
}

// "0 x 4, 2 0 0": the positions of each fingering.
std::string Text(const std::vector<std::vector<int>> &fingerings) {
    std::string out;
    for (const auto &positions : fingerings) {
        out += out.empty() ? "" : ", ";
        for (std::size_t s = 0; s < positions.size(); ++s)
            out += (s ? " " : "") +
                   (positions[s] == kMuted ? std::string("x") : std::to_string(positions[s]));
    }
    return out;
}

std::vector<std::vector<int>> Positions(const FingeringResult &result) {
    std::vector<std::vector<int>> out;
    for (const Fingering &f : result.fingerings)
        out.push_back(f.positions);
    return out;
}

} // namespace

TEST(Fingering, BoardAndSemitonesFollowTheModel) {
    // mode, open note, position, pitch there, semitones above the open string there
    struct Row {
        int mode, open, position, pitch, semitones;
    };
    const std::vector<Row> rows = {
        {1, D, 7, 4, 11}, {1, D, 8, D, 12},  {1, A, 22, G, 34}, {0, D, 7, D, 12}, {0, D, 22, E, 38},
        {2, D, 2, 8, 3},  {3, D, 22, 3, 22}, {5, D, 0, E, 2},   {5, D, 5, E, 14}, {4, A, 4, G, 10},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(BoardFor(r.mode, {A, r.open})[1][r.position], r.pitch)
            << r.mode << " " << r.position;
        EXPECT_EQ(FretSemitones(r.mode)[r.position], r.semitones) << r.mode << " " << r.position;
    }
    // The board is the model's note lists, name for name.
    ChordModel model;
    model.SetStartValues();
    model.M.Startup(2);
    model.DisplayChord();
    const Board board = BoardFor(2, {D, A, D});
    for (int p = 0; p < kPositions; ++p)
        EXPECT_EQ(model.M.Middle_List(p), model.M.NoteList(*board[1][p])) << p;
    EXPECT_THROW(BoardFor(6, {D}), std::invalid_argument);
    EXPECT_THROW(BoardFor(0, {12}), std::invalid_argument);
}

TEST(Fingering, TonesLeftOutWhenStringsAreFewer) {
    struct Row {
        std::vector<int> semitones;
        int strings;
        std::vector<int> omitted;
    };
    const std::vector<Row> rows = {
        {{0, 4, 7, 10}, 3, {2}},       // 7: the fifth
        {{0, 7, 10, 17}, 3, {1}},      // 11: the fifth, named second
        {{0, 4, 10, 14}, 3, {0}},      // 9 has no fifth: the root
        {{0, 3, 6, 9}, 3, {0}},        // Dim7: its b5 is no perfect fifth
        {{0, 4, 7, 10}, 4, {}},        // every tone has a string
        {{0, 7}, 3, {}},               // 5 doubles a tone instead
        {{0, 3, 7, 10}, 1, {2, 0, 3}}, // m7 on one string keeps the third
        {{0, 4, 10, 14}, 2, {0, 3}},   // 9 on two strings keeps 3 and b7
    };
    for (const Row &r : rows) {
        std::vector<ChordTone> tones;
        for (int s : r.semitones)
            tones.push_back({(D + s) % 12, ""});
        EXPECT_EQ(OmittedTones(tones, r.strings), r.omitted) << r.semitones.size() << r.strings;
    }
}

TEST(Fingering, FirstFingeringsWorkedOutByHand) {
    // On D A D: layout, chord, limits, every fingering (or the first `count`).
    struct Row {
        int mode, root;
        const char *chord, *limits, *fingerings;
    };
    const std::vector<Row> rows = {
        {1, D, "Maj", "h12",
         "0 0 2, 2 0 0, 0 0 10, 10 0 0, 0 5 4, 4 5 0, 0 8 10, 8 0 10, 10 0 8, 10 8 0"},
        // C# lies only on the A string of a plain diatonic D A D.
        {0, A, "Maj", "h12", "4 2 1, 1 2 4, 11 9 8, 8 9 11"},
        {0, A, "Maj", "h8", "4 2 1, 1 2 4"},
        {0, D, "5", "h12 c8", "0 0 0, 0 0 4, 4 0 0, 0 0 7, 0 7 0, 7 0 0, 0 0 11, 11 0 0"},
        {0, D, "5", "h12 c7 m", "0 0 0, 0 0 x, x 0 0, 0 0 4, 0 x 4, 4 0 0, 4 x 0"},
        // Position 1 is the nut: the open strings sound E, B, E.
        {1, E, "Maj", "h12 k1", "1 7 5, 5 7 1"},
        // The fifth left out.
        {3, A, "7", "h12", "7 4 5, 5 4 7"},
    };
    for (const Row &r : rows) {
        const auto result =
            FindFingerings(BoardFor(r.mode, {D, A, D}), Chord(r.root, r.chord), Parse(r.limits));
        EXPECT_EQ(Text(Positions(result)), r.fingerings) << r.mode << " " << r.chord;
    }

    const auto result = FindFingerings(BoardFor(3, {D, A, D}), Chord(A, "7"), Parse("h12"));
    ASSERT_EQ(result.fingerings.size(), 2u);
    const Fingering want{{7, 4, 5}, {0, 1, 3}, {2}, 3, 4, 3, true};
    EXPECT_EQ(result.fingerings[0], want);
}

TEST(Fingering, NoneNamesTheLimitToRaise) {
    struct Row {
        int root;
        const char *limits;
        std::vector<Limit> raise;
        std::string reason;
    };
    const std::string within = "no fingering within the limits; one comes with ";
    const std::vector<Row> rows = {
        {A, "h12 r2", {Limit::Reach}, within + "a reach of 3"},
        // From position 5 of a diatonic D A D, C# comes first at 9 on the A string.
        {A, "k5 h7", {Limit::Highest}, within + "a highest position of 11"},
        {Bb, "", {}, "no fingering on this board at any limits: no string has the R or the 5"},
    };
    for (const Row &r : rows) {
        const auto result =
            FindFingerings(BoardFor(0, {D, A, D}), Chord(r.root, "Maj"), Parse(r.limits));
        EXPECT_TRUE(result.fingerings.empty());
        EXPECT_EQ(result.raise, r.raise) << r.reason;
        EXPECT_EQ(result.reason, r.reason);
    }
    for (const char *bad : {"r0", "c0", "k23", "h23"})
        EXPECT_THROW(FindFingerings(BoardFor(0, {D}), Chord(D, "5"), Parse(bad)),
                     std::invalid_argument)
            << bad;
    EXPECT_THROW(FindFingerings(Board{}, Chord(D, "5"), {}), std::invalid_argument);
}

namespace {

// Every combination of positions, kept when it obeys the rules, then sorted.
std::vector<std::vector<int>> Reckon(const Board &board, const std::vector<ChordTone> &tones,
                                     const Limits &limits) {
    const auto omitted = OmittedTones(tones, static_cast<int>(board.size()));
    std::set<int> wanted;
    for (std::size_t t = 0; t < tones.size(); ++t)
        if (std::count(omitted.begin(), omitted.end(), static_cast<int>(t)) == 0)
            wanted.insert(tones[t].pitch);
    std::vector<int> choices;
    if (limits.mutedOk)
        choices.push_back(kMuted);
    for (int p = limits.capo; p <= limits.highest; ++p)
        choices.push_back(p);

    // fretted, hand, reach, root not lowest, positions with muted last; positions
    std::vector<std::pair<std::tuple<int, int, int, bool, std::vector<int>>, std::vector<int>>>
        found;
    const std::size_t n = board.size();
    std::vector<std::size_t> at(n, 0);
    do {
        std::vector<int> positions(n), order(n);
        std::set<int> sounding;
        int fretted = 0, low = 99, high = -1, lowest = -1;
        for (std::size_t s = 0; s < n; ++s) {
            const int p = positions[s] = choices[at[s]];
            order[s] = p == kMuted ? 99 : p;
            if (p == kMuted)
                continue;
            sounding.insert(*board[s][p]);
            lowest = lowest < 0 ? *board[s][p] : lowest;
            if (p > limits.capo) {
                ++fretted;
                low = std::min(low, p);
                high = std::max(high, p);
            }
        }
        if (sounding == wanted && (fretted == 0 || high - low <= limits.reach))
            found.push_back({{fretted, fretted ? low : limits.capo, fretted ? high - low : 0,
                              lowest != tones[0].pitch, order},
                             positions});
        std::size_t s = n;
        while (s > 0 && ++at[s - 1] == choices.size())
            at[--s] = 0;
    } while (std::any_of(at.begin(), at.end(), [](std::size_t i) { return i > 0; }));
    std::sort(found.begin(), found.end());
    std::vector<std::vector<int>> out;
    for (const auto &f : found)
        out.push_back(f.second);
    return out;
}

} // namespace

TEST(Fingering, AgreesWithEveryCombination) {
    struct Row {
        int mode;
        std::vector<int> tuning;
        std::vector<ChordTone> chord;
        const char *limits;
    };
    const std::vector<Row> rows = {
        {0, {D, A, D}, Chord(D, "Maj"), ""},      {1, {D, A, D}, Chord(A, "7"), ""},
        {1, {D, A, D}, Chord(G, "Maj"), "h12 m"}, {2, {D, A, D}, Chord(E, "m7"), "k3 r4 m"},
        {3, {D, G, 2, E}, Chord(G, "7"), "h12"},  {3, {D, A, D, A}, Chord(D, "5"), "h12 m"},
    };
    for (const Row &r : rows) {
        const Board board = BoardFor(r.mode, r.tuning);
        Limits limits = Parse(r.limits);
        limits.count = 1000000;
        const auto want = Reckon(board, r.chord, limits);
        EXPECT_FALSE(want.empty()) << r.mode << " " << r.limits;
        EXPECT_EQ(Positions(FindFingerings(board, r.chord, limits)), want)
            << r.mode << " " << r.limits;
    }
}
