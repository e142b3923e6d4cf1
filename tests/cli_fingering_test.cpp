// Fingerings: first ones worked out by hand from the fret tables, and every
// fingering of a few boards against a plain reckoning of all combinations.

#include "cli/fingering.h"
#include "model/chordmodel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

using namespace varnock;
using namespace varnock::cli;

namespace {

// Pitch classes above A.
constexpr int A = 0, Bb = 1, Cs = 4, D = 5, E = 7, G = 10;

// A chord from its root and semitones above it, with degree labels.
std::vector<ChordTone> Chord(int root, const std::vector<int> &semitones,
                             const std::vector<std::string> &degrees) {
    std::vector<ChordTone> tones;
    for (std::size_t i = 0; i < semitones.size(); ++i)
        tones.push_back({(root + semitones[i]) % 12, degrees[i]});
    return tones;
}

const std::vector<int> kMaj = {0, 4, 7}, kSeven = {0, 4, 7, 10}, kFive = {0, 7};
const std::vector<std::string> kMajDeg = {"R", "3", "5"}, kSevenDeg = {"R", "3", "5", "b7"},
                               kFiveDeg = {"R", "5"};

// "0 x 4": the positions of one fingering.
std::string Text(const std::vector<int> &positions) {
    std::string out;
    for (int p : positions)
        out += (out.empty() ? "" : " ") + (p == kMuted ? std::string("x") : std::to_string(p));
    return out;
}

std::vector<std::string> Texts(const std::vector<Fingering> &fingerings) {
    std::vector<std::string> out;
    for (const Fingering &f : fingerings)
        out.push_back(Text(f.positions));
    return out;
}

Limits WithHighest12() {
    Limits limits;
    limits.highest = 12;
    return limits;
}

} // namespace

TEST(Fingering, BoardAndSemitonesFollowTheModel) {
    // mode, open note, position, pitch there, semitones above the open string there
    struct Row {
        int mode, open, position, pitch, semitones;
    };
    const std::vector<Row> rows = {
        {1, D, 7, Cs, 11}, {1, D, 8, D, 12}, {1, A, 22, G, 34}, {0, D, 7, D, 12},
        {0, D, 22, E, 38}, {2, D, 2, 8, 3},  {3, D, 22, 3, 22}, {5, D, 0, E, 2},
        {5, D, 5, E, 14},  {4, A, 4, G, 10},
    };
    for (const Row &r : rows) {
        const Board board = BoardFor(r.mode, {A, r.open});
        ASSERT_EQ(board.size(), 2u);
        EXPECT_EQ(board[1][r.position], r.pitch) << r.mode << " " << r.position;
        EXPECT_EQ(FretSemitones(r.mode)[r.position], r.semitones) << r.mode << " " << r.position;
    }
    // The board is the model's note lists, name for name.
    ChordModel model;
    model.SetStartValues();
    model.M.Startup(2);
    model.DisplayChord();
    const Board board = BoardFor(2, {D, A, D});
    for (int p = 0; p < kPositions; ++p) {
        EXPECT_EQ(model.M.Bass_List(p), model.M.NoteList(*board[0][p])) << p;
        EXPECT_EQ(model.M.Middle_List(p), model.M.NoteList(*board[1][p])) << p;
    }
    EXPECT_THROW(BoardFor(6, {D}), std::invalid_argument);
    EXPECT_THROW(BoardFor(0, {12}), std::invalid_argument);
    EXPECT_THROW(FretSemitones(-1), std::invalid_argument);
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
    Limits muted = WithHighest12();
    muted.mutedOk = true;
    Limits capo1 = WithHighest12();
    capo1.capo = 1;
    Limits low = WithHighest12();
    low.highest = 8;
    Limits eight = WithHighest12();
    eight.count = 8;
    Limits mutedSeven = muted;
    mutedSeven.count = 7;
    struct Row {
        const char *name;
        int mode;
        std::vector<int> tuning;
        std::vector<ChordTone> chord;
        Limits limits;
        std::vector<std::string> fingerings; // all of them, or the first limits.count
        std::vector<int> omitted;
    };
    const std::vector<Row> rows = {
        {"D Maj, 6+ board",
         1,
         {D, A, D},
         Chord(D, kMaj, kMajDeg),
         WithHighest12(),
         {"0 0 2", "2 0 0", "0 0 10", "10 0 0", "0 5 4", "4 5 0", "0 8 10", "8 0 10", "10 0 8",
          "10 8 0"},
         {}},
        // C# lies only on the A string of a plain diatonic D A D.
        {"A Maj, diatonic",
         0,
         {D, A, D},
         Chord(A, kMaj, kMajDeg),
         WithHighest12(),
         {"4 2 1", "1 2 4", "11 9 8", "8 9 11"},
         {}},
        {"A Maj, diatonic, up to 8",
         0,
         {D, A, D},
         Chord(A, kMaj, kMajDeg),
         low,
         {"4 2 1", "1 2 4"},
         {}},
        {"D5",
         0,
         {D, A, D},
         Chord(D, kFive, kFiveDeg),
         eight,
         {"0 0 0", "0 0 4", "4 0 0", "0 0 7", "0 7 0", "7 0 0", "0 0 11", "11 0 0"},
         {}},
        {"D5 muted ok",
         0,
         {D, A, D},
         Chord(D, kFive, kFiveDeg),
         mutedSeven,
         {"0 0 0", "0 0 x", "x 0 0", "0 0 4", "0 x 4", "4 0 0", "4 x 0"},
         {}},
        // Position 1 is the nut: the open strings sound E, B, E.
        {"E Maj, capo 1", 1, {D, A, D}, Chord(E, kMaj, kMajDeg), capo1, {"1 7 5", "5 7 1"}, {}},
        {"A7, chromatic, fifth out",
         3,
         {D, A, D},
         Chord(A, kSeven, kSevenDeg),
         WithHighest12(),
         {"7 4 5", "5 4 7"},
         {2}},
    };
    for (const Row &r : rows) {
        const FingeringResult result =
            FindFingerings(BoardFor(r.mode, r.tuning), r.chord, r.limits);
        EXPECT_EQ(Texts(result.fingerings), r.fingerings) << r.name;
        ASSERT_FALSE(result.fingerings.empty()) << r.name;
        EXPECT_EQ(result.fingerings.front().omitted, r.omitted) << r.name;
    }
}

TEST(Fingering, FieldsOfOneFingering) {
    const auto result =
        FindFingerings(BoardFor(1, {D, A, D}), Chord(D, kMaj, kMajDeg), WithHighest12());
    ASSERT_GE(result.fingerings.size(), 5u);
    const Fingering &f = result.fingerings[4]; // 0 5 4: D, F#, A
    EXPECT_EQ(f.positions, (std::vector<int>{0, 5, 4}));
    EXPECT_EQ(f.tones, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(f.fretted, 2);
    EXPECT_EQ(f.hand, 4);
    EXPECT_EQ(f.reach, 1);
    EXPECT_TRUE(f.rootInBass);
    EXPECT_EQ(result.fingerings.size(), 10u); // the default count
}

TEST(Fingering, NoneNamesTheLimitToRaise) {
    Limits tight = WithHighest12();
    tight.reach = 2;
    Limits capoHigh = WithHighest12();
    capoHigh.capo = 5;
    capoHigh.highest = 7;
    struct Row {
        int mode;
        std::vector<ChordTone> chord;
        Limits limits;
        std::vector<Limit> raise;
        std::string reason;
    };
    const std::vector<Row> rows = {
        {0,
         Chord(A, kMaj, kMajDeg),
         tight,
         {Limit::Reach},
         "no fingering within the limits; one comes with a reach of 3"},
        // From position 5, D A D diatonic: C# first at 9 on the A string.
        {0,
         Chord(A, kMaj, kMajDeg),
         capoHigh,
         {Limit::Highest},
         "no fingering within the limits; one comes with a highest position of 11"},
        {0,
         Chord(Bb, kMaj, kMajDeg),
         WithHighest12(),
         {},
         "no fingering on this board at any limits: no string has the R or the 5"},
    };
    for (const Row &r : rows) {
        const FingeringResult result =
            FindFingerings(BoardFor(r.mode, {D, A, D}), r.chord, r.limits);
        EXPECT_TRUE(result.fingerings.empty());
        EXPECT_EQ(result.raise, r.raise) << r.reason;
        EXPECT_EQ(result.reason, r.reason);
    }
}

TEST(Fingering, LimitsOutOfRangeAreRefused) {
    const Board board = BoardFor(0, {D, A, D});
    const auto chord = Chord(D, kMaj, kMajDeg);
    for (auto change : std::vector<void (*)(Limits &)>{
             [](Limits &l) { l.reach = 0; }, [](Limits &l) { l.count = 0; },
             [](Limits &l) { l.capo = 23; }, [](Limits &l) { l.highest = -1; }}) {
        Limits limits;
        change(limits);
        EXPECT_THROW(FindFingerings(board, chord, limits), std::invalid_argument);
    }
    EXPECT_THROW(FindFingerings(Board{}, chord, {}), std::invalid_argument);
    EXPECT_THROW(FindFingerings(board, {{12, "R"}}, {}), std::invalid_argument);
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

    struct Found {
        int fretted, hand, reach;
        bool rootLow;
        std::vector<int> order, positions;
    };
    std::vector<Found> found;
    const std::size_t n = board.size();
    std::vector<std::size_t> at(n, 0);
    while (true) {
        std::vector<int> positions(n);
        std::set<int> sounding;
        int fretted = 0, low = 99, high = -1, lowestNote = -1;
        for (std::size_t s = 0; s < n; ++s) {
            const int p = positions[s] = choices[at[s]];
            if (p == kMuted)
                continue;
            sounding.insert(board[s][p].value_or(-1));
            if (lowestNote < 0)
                lowestNote = board[s][p].value_or(-1);
            if (p > limits.capo) {
                ++fretted;
                low = std::min(low, p);
                high = std::max(high, p);
            }
        }
        if (sounding == wanted && (fretted == 0 || high - low <= limits.reach)) {
            std::vector<int> order = positions;
            std::replace(order.begin(), order.end(), kMuted, 99);
            found.push_back({fretted, fretted ? low : limits.capo, fretted ? high - low : 0,
                             lowestNote == tones[0].pitch, order, positions});
        }
        std::size_t s = n;
        while (s > 0 && ++at[s - 1] == choices.size())
            at[--s] = 0;
        if (s == 0)
            break;
    }
    std::sort(found.begin(), found.end(), [](const Found &a, const Found &b) {
        if (a.fretted != b.fretted)
            return a.fretted < b.fretted;
        if (a.hand != b.hand)
            return a.hand < b.hand;
        if (a.reach != b.reach)
            return a.reach < b.reach;
        if (a.rootLow != b.rootLow)
            return a.rootLow;
        return a.order < b.order;
    });
    std::vector<std::vector<int>> out;
    for (const Found &f : found)
        out.push_back(f.positions);
    return out;
}

} // namespace

TEST(Fingering, AgreesWithEveryCombination) {
    Limits all;
    all.count = 1000000;
    Limits muted = all;
    muted.mutedOk = true;
    muted.highest = 12;
    Limits capo = all;
    capo.capo = 3;
    capo.reach = 4;
    capo.mutedOk = true;
    Limits chromatic = all;
    chromatic.highest = 12;
    struct Row {
        const char *name;
        int mode;
        std::vector<int> tuning;
        std::vector<ChordTone> chord;
        Limits limits;
    };
    const std::vector<Row> rows = {
        {"diatonic D Maj", 0, {D, A, D}, Chord(D, kMaj, kMajDeg), all},
        {"6+ A7", 1, {D, A, D}, Chord(A, kSeven, kSevenDeg), all},
        {"6+ G Maj muted", 1, {D, A, D}, Chord(G, kMaj, kMajDeg), muted},
        {"1+ 6+ E m7 capo", 2, {D, A, D}, Chord(E, {0, 3, 7, 10}, {"R", "b3", "5", "b7"}), capo},
        {"chromatic 4 strings G7", 3, {D, G, 2, E}, Chord(G, kSeven, kSevenDeg), chromatic},
        {"chromatic 4 strings D5 muted", 3, {D, A, D, A}, Chord(D, kFive, kFiveDeg), muted},
    };
    for (const Row &r : rows) {
        const Board board = BoardFor(r.mode, r.tuning);
        std::vector<std::vector<int>> got;
        for (const Fingering &f : FindFingerings(board, r.chord, r.limits).fingerings)
            got.push_back(f.positions);
        const auto want = Reckon(board, r.chord, r.limits);
        EXPECT_FALSE(want.empty()) << r.name;
        EXPECT_EQ(got, want) << r.name;
    }
}
