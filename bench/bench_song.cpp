// Songs: --suggest on a song of 60 chord changes (24 different chords over
// many types) across 12 keys, 8 capo positions and 6 tunings on D A D's
// board with 6+; and reading a ChordPro song of 1 MB.

#include "bench.h"
#include "music/chordpro.h"
#include "music/suggest.h"

#include <cstdio>
#include <string>
#include <vector>

using namespace varnock::music;

namespace {

constexpr int kRuns = 15;
constexpr double kSuggestTargetMillis = 100.0;
constexpr double kReadTargetMillis = 50.0;

// A verse line of four changes, cycling through the chords.
std::string SongText(int changes) {
    const char *chords[] = {"D",    "G",     "A7",   "Bm",   "Em7", "F#m", "Gmaj7", "Asus4",
                            "D/F#", "C",     "Am",   "E7",   "Dm",  "Bb",  "F",     "C7",
                            "Gm",   "Cadd9", "Ddim", "Eaug", "A6",  "D9",  "Em",    "B7"};
    std::string song = "{title: Benchmark}\n{key: D}\n{start_of_verse}\n";
    for (int i = 0; i < changes; ++i) {
        song += std::string("[") + chords[i % 24] + "]words for the tune ";
        if (i % 4 == 3)
            song += "\n";
    }
    return song + "\n{end_of_verse}\n";
}

void Report(const char *what, const std::vector<double> &millis, double target) {
    const double median = bench::Median(millis);
    std::printf("%s: %.2f ms median of %d runs (target under %.0f ms): %s\n", what, median, kRuns,
                target, median < target ? "ok" : "TOO SLOW");
}

} // namespace

int main() {
    const Song song = ReadChordPro(SongText(60));
    SuggestRequest request;
    request.mode = 1;
    // D A D, D A A, D G D, C G C, D A C, E B E: pitch classes above A.
    request.tunings = {{5, 0, 5}, {5, 0, 0}, {5, 10, 5}, {3, 10, 3}, {5, 0, 3}, {7, 2, 7}};
    request.capos = {0, 1, 2, 3, 4, 5, 6, 7};
    for (const std::string &name : ChordNames(song))
        request.chords.push_back(ReadChordSymbol(name));
    request.uses = ChordUses(song);

    std::vector<double> suggest;
    std::size_t options = 0;
    for (int run = -1; run < kRuns; ++run) {
        const auto start = bench::Clock::now();
        options = Suggest(request, 10).size();
        if (run >= 0)
            suggest.push_back(bench::Seconds(start) * 1e3);
    }
    std::printf(
        "suggest: %zu chords (%zu different), 12 keys x %zu capos x %zu tunings, best %zu\n",
        std::size_t{60}, request.chords.size(), request.capos.size(), request.tunings.size(),
        options);
    Report("suggest", suggest, kSuggestTargetMillis);

    std::string big;
    while (big.size() < (1u << 20))
        big += SongText(400);
    std::vector<double> read;
    std::size_t lines = 0;
    for (int run = -1; run < kRuns; ++run) {
        const auto start = bench::Clock::now();
        const Song parsed = ReadChordPro(big);
        lines = parsed.lines.size() + ChordNames(parsed).size();
        if (run >= 0)
            read.push_back(bench::Seconds(start) * 1e3);
    }
    std::printf("read: %.2f MB, %zu lines and chords\n",
                static_cast<double>(big.size()) / (1 << 20), lines);
    Report("read a 1 MB song", read, kReadTargetMillis);
    return 0;
}
