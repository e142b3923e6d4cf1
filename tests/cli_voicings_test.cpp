// Fingerings and the capo as varnock-chart prints them: the first lines of
// --voicings worked out by hand from the fret tables (diatonic D A D counts
// 0 2 4 5 7 9 10 12 semitones, the 6+ board puts 11 at "6+"), and the capo
// read back from the chart's own rows.

#include "chart/cellpaint.h"
#include "support.h"

#include <QImage>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>

using namespace varnock;
using namespace testsupport;

namespace {

std::vector<std::vector<std::string>> Cells(const std::string &tsv) {
    std::vector<std::vector<std::string>> rows;
    for (const std::string &line : Lines(tsv))
        rows.push_back(Split(line, "\t"));
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
         {"10 7 8 0 | C E Bb G | R 3 b7 5"}},
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
    // The capo's own fret is position 0, named once.
    const auto described = Lines(RunChart({"--root", "D", "--capo", "2", "--describe"}).out);
    EXPECT_EQ(described[1], "Capo at position 2 (fret 2): the open strings sound there, and "
                            "position 0 below is the capo.");
    EXPECT_EQ(Lines(RunChart({"--root", "D", "--capo", "1", "--describe"}).out)[1],
              "Capo at position 1 (fret 1): the open strings sound there, and position 0 below "
              "is the capo.");
    EXPECT_EQ(described[3].rfind("String 1, tuned D: D at positions 7, 14, 21 (frets 7, 14, 21); "
                                 "F# at positions 0, 9, 16 (frets 0, 9, 16)",
                                 0),
              0u);
}

struct Dot {
    int tone; // which note colour
    double x = 0, y = 0;
};

// The dots of a diagram image: pixels of the chart's note colours gathered
// into blobs by nearness, each with its centre.
std::vector<Dot> Dots(const QImage &image) {
    std::vector<Dot> dots;
    std::vector<int> sizes;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const auto rgb = static_cast<Color>(image.pixel(x, y) & 0xFFFFFF);
            const auto hit = std::find(std::begin(colors::kNote), std::end(colors::kNote), rgb);
            if (hit == std::end(colors::kNote))
                continue;
            const int tone = static_cast<int>(hit - std::begin(colors::kNote));
            std::size_t i = 0;
            for (; i < dots.size(); ++i)
                if (dots[i].tone == tone && std::abs(dots[i].x - x) < 14 &&
                    std::abs(dots[i].y - y) < 14)
                    break;
            if (i == dots.size()) {
                dots.push_back({tone, double(x), double(y)});
                sizes.push_back(1);
            } else {
                // A running mean, so later pixels pull the centre into place.
                ++sizes[i];
                dots[i].x += (x - dots[i].x) / sizes[i];
                dots[i].y += (y - dots[i].y) / sizes[i];
            }
        }
    return dots;
}

// "tone:row" for each dot from left to right; rows ranked from the top.
std::string Layout(std::vector<Dot> dots) {
    std::vector<double> ys;
    for (const Dot &d : dots)
        if (std::none_of(ys.begin(), ys.end(), [&](double y) { return std::abs(y - d.y) < 3; }))
            ys.push_back(d.y);
    std::sort(ys.begin(), ys.end());
    std::sort(dots.begin(), dots.end(), [](const Dot &a, const Dot &b) { return a.x < b.x; });
    std::string out;
    for (const Dot &d : dots) {
        const auto row =
            std::find_if(ys.begin(), ys.end(), [&](double y) { return std::abs(y - d.y) < 3; }) -
            ys.begin();
        out += (out.empty() ? "" : " ") + std::to_string(d.tone) + ":" + std::to_string(row);
    }
    return out;
}

// One diagram each (--count 1): its dots read back from the PNG, the tone by
// colour (root, second, third, fourth note), the row by height.
TEST(Diagrams, DotsStandWhereTheFingeringPutsThem) {
    struct Row {
        QStringList args;
        const char *dots;
        bool capoBar;
    };
    const Row rows[] = {
        // 0 0 2: one F# on the third string.
        {{"--root", "D"}, "1:0", false},
        // 4 2 3 on the 6+ board: A lowest on the neck, C# highest, G between.
        {{"--frets", "1", "--root", "A", "--chord", "7"}, "0:2 1:0 3:1", false},
        {{"--frets", "1", "--root", "A", "--chord", "7", "--left-handed"}, "3:1 1:0 0:2", false},
        // Under a capo at 6+: 8 8 10 is E, B, then G two frets lower down.
        {{"--frets", "1", "--root", "E", "--chord", "m", "--capo", "6+"}, "0:0 2:0 1:1", true},
        // 5 5 3 4 on four strings: G, D, F, B.
        {{"--frets", "Chromatic", "--tuning", "D,A,D,G", "--root", "G", "--chord", "7", "--capo",
          "2"},
         "0:2 2:2 3:0 1:1",
         true},
    };
    QTemporaryDir dir;
    const QString png = dir.filePath(QStringLiteral("d.png"));
    for (const Row &row : rows) {
        const Outcome run =
            RunChart(row.args + QStringList{"--voicings", "--count", "1", "--png", png});
        const std::string name = row.args.join(' ').toStdString();
        ASSERT_EQ(run.status, 0) << name << run.err;
        const QImage image(png);
        ASSERT_FALSE(image.isNull()) << name;
        EXPECT_EQ(Layout(Dots(image)), row.dots) << name;
        // The bar: a run of its grey across more than one string gap.
        bool bar = false;
        for (int y = 0; y < image.height() && !bar; ++y)
            for (int x = 0, run = 0; x < image.width() && !bar; ++x) {
                run = (image.pixel(x, y) & 0xFFFFFF) == 0x555555 ? run + 1 : 0;
                bar = run > 40;
            }
        EXPECT_EQ(bar, row.capoBar) << name;
    }
    // Ten fingerings, ten diagrams, each with its F# dot at least.
    ASSERT_EQ(RunChart({"--root", "D", "--voicings", "--png", png}).status, 0);
    const auto dots = Dots(QImage(png));
    EXPECT_EQ(std::count_if(dots.begin(), dots.end(), [](const Dot &d) { return d.tone == 1; }),
              10);
}

// The other files: SVG with the title, a one-page PDF, and a fingering book
// with its contents page, a page for each root and an outline.
TEST(Diagrams, SvgPdfAndTheFingeringBook) {
    QTemporaryDir dir;
    const auto path = [&](const char *name) { return dir.filePath(QString::fromLatin1(name)); };
    struct Row {
        const char *option, *file;
        QStringList selection;
        const char *starts;   // the file's first bytes
        const char *contains; // and somewhere in it
    };
    const Row rows[] = {
        {"--svg",
         "v.svg",
         {"--root", "D", "--capo", "2"},
         "<?xml",
         "<title>D Maj: D F# A - Diatonic, 3 strings D A D, capo at 2</title>"},
        {"--pdf", "v.pdf", {"--root", "D"}, "%PDF", "/Count 1\n"},
        {"--book", "b.pdf", {"--roots", "D,G", "--chords", "Maj,m"}, "%PDF", "/Type /Outlines"},
    };
    for (const Row &row : rows) {
        const Outcome run =
            RunChart(row.selection + QStringList{"--voicings", row.option, path(row.file)});
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, "");
        const std::string bytes = ReadBytes(path(row.file).toStdString());
        EXPECT_EQ(bytes.rfind(row.starts, 0), 0u) << row.file;
        EXPECT_NE(bytes.find(row.contains), std::string::npos) << row.file;
    }
}

} // namespace
