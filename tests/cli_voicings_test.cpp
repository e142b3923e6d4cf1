// Fingerings and the capo as varnock-chart prints them: the first lines of
// --voicings worked out by hand from the fret tables (diatonic D A D counts
// 0 2 4 5 7 9 10 12 semitones, the 6+ board puts 11 at "6+"), and the capo
// read back from the chart's own rows.

#include "support.h"

#include <QStringList>
#include <gtest/gtest.h>

using testsupport::Outcome;
using testsupport::RunChart;

namespace {

std::vector<std::string> Lines(const std::string &text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const auto end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        start = end == std::string::npos ? text.size() : end + 1;
    }
    return lines;
}

std::vector<std::vector<std::string>> Cells(const std::string &tsv) {
    std::vector<std::vector<std::string>> rows;
    for (const std::string &line : Lines(tsv)) {
        rows.emplace_back();
        std::size_t start = 0;
        for (auto tab = line.find('\t');; tab = line.find('\t', start)) {
            rows.back().push_back(line.substr(start, tab - start));
            if (tab == std::string::npos)
                break;
            start = tab + 1;
        }
    }
    return rows;
}

TEST(Voicings, FirstLinesAsWorkedOutByHand) {
    struct Row {
        QStringList args;
        std::vector<std::string> first; // the output's first lines
    };
    const Row rows[] = {
        // One fretted string beats two; then the root in the bass.
        {{"--root", "D"}, {"0 0 2 | D A F# | R 5 3", "2 0 0 | F# A D | 3 5 R"}},
        // Four tones on three strings: the fifth goes.
        {{"--root", "D", "--chord", "7", "--count", "2"},
         {"0 5 6 | D F# C | R 3 b7 | without 5", "6 5 0 | C F# D | b7 3 R | without 5"}},
        // Muted strings sort after every position.
        {{"--root", "D", "--chord", "5", "--muted-ok"},
         {"0 0 0 | D A D | R 5 R", "0 0 x | D A - | R 5 -", "x 0 0 | - A D | - 5 R"}},
        // Fret names: position 7 is "6+" (C# on D), position 9 is "8" (E).
        {{"--frets", "Diatonic with 6+", "--root", "A"},
         {"6+ 0 8 | C# A E | 3 R 5", "8 0 6+ | E A C# | 5 R 3"}},
        // The chromatic board's frets are numbered as its semitones.
        {{"--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "C", "--chord", "7"},
         {"10 7 8 0 | C E A# G | R 3 b7 5"}},
        // --highest by fret name stops at "6+" (position 7).
        {{"--frets", "1", "--root", "A", "--highest", "6+", "--count", "1"},
         {"4 2 1 | A C# E | R 3 5"}},
        {{"--frets", "Chromatic", "--root", "Bb", "--spelling", "chord", "--count", "1"},
         {"0 1 3 | D Bb F | 3 R 5"}},
        // Under a capo at 2 the open strings sound F# C# F#: 0 is the capo.
        {{"--root", "F#", "--chord", "m", "--capo", "2", "--count", "1"},
         {"0 0 4 | F# C# A | R 5 b3"}},
        {{"--frets", "1", "--capo", "6+", "--root", "C#", "--chord", "m", "--count", "1"},
         {"0 0 8 | C# G# E | R 5 b3"}},
        // None within the limits: the line names the option to raise.
        {{"--root", "D", "--chord", "13", "--reach", "1"},
         {"D 13: no fingering within the limits; one comes with a reach of 2 (--reach)."}},
        {{"--root", "C#", "--chord", "maj13"},
         {"C# maj13: no fingering on this board at any limits: no string has the 3 or the 13."}},
    };
    for (const Row &row : rows) {
        const Outcome run = RunChart(QStringList{"--voicings"} + row.args);
        const std::string name = row.args.join(' ').toStdString();
        ASSERT_EQ(run.status, 0) << name << run.err;
        const auto lines = Lines(run.out);
        ASSERT_GE(lines.size(), row.first.size()) << name;
        EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + row.first.size()),
                  row.first)
            << name;
    }
    EXPECT_EQ(Lines(RunChart({"--voicings", "--root", "D"}).out).size(), 10u);
    EXPECT_EQ(Lines(RunChart({"--voicings", "--root", "D", "--count", "3"}).out).size(), 3u);
}

// The chart under a capo: each string's open column holds what the capo
// position holds, the positions between are empty, everything else is the
// chart without a capo; only the capo's heading changes.
TEST(Capo, ChartShowsWhatSoundsAtTheCapo) {
    struct Row {
        QStringList selection;
        const char *capo;
        int position;
    };
    const Row rows[] = {
        {{"--root", "D"}, "3", 3},
        {{"--frets", "Diatonic with 6+", "--root", "G"}, "6+", 7},
        {{"--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "E", "--chord", "7"}, "2", 2},
        {{"--frets", "Diatonic with 1+ and 6+", "--root", "C"}, "1+", 2},
        {{"--root", "A"}, "0", 0},
    };
    for (const Row &row : rows) {
        const auto plain = Cells(RunChart(row.selection + QStringList{"--tsv"}).out);
        const Outcome run = RunChart(row.selection + QStringList{"--tsv", "--capo", row.capo});
        ASSERT_EQ(run.status, 0) << run.err;
        auto expected = plain;
        const auto p = static_cast<std::size_t>(row.position);
        if (p > 0) {
            expected[0][p] = "capo";
            for (std::size_t s = 2; s < expected.size(); ++s) {
                expected[s][0] = plain[s][p];
                for (std::size_t q = 1; q < p; ++q)
                    expected[s][q].clear();
            }
        }
        EXPECT_EQ(Cells(run.out), expected) << row.capo;
    }
}

// Fret names and the capo in --identify-frets say the same as the positions.
TEST(Capo, FretListsByNameAndFromTheCapo) {
    const std::pair<QStringList, QStringList> same[] = {
        {{"--capo", "2", "--identify-frets", "0,0,x"}, {"--identify-frets", "2,2,x"}},
        // 0 under a capo is the capo's fret.
        {{"--frets", "1", "--capo", "6+", "--identify-frets", "0,x,8"},
         {"--frets", "1", "--identify-frets", "6+,x,8"}},
    };
    for (const auto &[named, numbered] : same) {
        const Outcome a = RunChart(named), b = RunChart(numbered);
        EXPECT_EQ(a.status, 0) << a.err;
        EXPECT_EQ(a.out, b.out) << named.join(' ').toStdString();
    }
    EXPECT_EQ(Lines(RunChart({"--frets", "1", "--identify-frets", "6+,0,x"}).out)[0],
              "Notes: C# A");
    const auto described = Lines(RunChart({"--root", "D", "--capo", "2", "--describe"}).out);
    EXPECT_EQ(described[1], "Capo at position 2 (fret 2): the open strings sound there, and "
                            "position 0 below is the capo.");
    EXPECT_EQ(described[3].rfind("String 1, tuned D: D at positions 7, 14, 21 (frets 7, 14, 21); "
                                 "F# at positions 0, 2, 9, 16 (frets 0, 2, 9, 16)",
                                 0),
              0u);
}

} // namespace
