// Times every fingering of all 384 chords (12 roots, 32 types) of one tuning,
// D A D on the board with 6+, with the default limits: reach 3, highest
// position 13 (fret "12" on that board), no muted strings, every fingering
// generated and ranked.

#include "bench.h"
#include "model/chordmodel.h"
#include "music/fingering.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace varnock;
using namespace varnock::music;

namespace {

constexpr int kSweeps = 20;
constexpr double kTargetMillis = 50.0;

// The chord's tones from a formula of steps, each counted from the previous note.
std::vector<ChordTone> Tones(int root, const std::string &formula) {
    std::vector<ChordTone> tones{{root, "R"}};
    int current = root;
    for (const std::string &step : Split(formula, ",")) {
        current = (current + std::atoi(step.c_str())) % 12;
        tones.push_back({current, std::to_string(tones.size() + 1)});
    }
    return tones;
}

} // namespace

int main() {
    Module1 m;
    m.Startup(1);
    const Board board = BoardFor(1, {5, 0, 5});
    Limits limits;
    limits.highest = 13;
    limits.count = 1000000; // every fingering, not only the first ten

    std::vector<std::vector<ChordTone>> chords;
    for (int root = 0; root < 12; ++root)
        for (const std::string &formula : m.MajorChordsInt.Items())
            chords.push_back(Tones(root, formula));

    std::size_t fingerings = 0, none = 0;
    std::vector<double> totalMillis, chordMicros;
    for (int sweep = -1; sweep < kSweeps; ++sweep) {
        std::size_t count = 0, empty = 0;
        const auto sweepStart = bench::Clock::now();
        for (const auto &chord : chords) {
            const auto start = bench::Clock::now();
            const FingeringResult result = FindFingerings(board, chord, limits);
            if (sweep >= 0)
                chordMicros.push_back(bench::Seconds(start) * 1e6);
            count += result.fingerings.size();
            empty += result.fingerings.empty() ? 1 : 0;
        }
        if (sweep >= 0)
            totalMillis.push_back(bench::Seconds(sweepStart) * 1e3);
        fingerings = count;
        none = empty;
    }
    const double total = bench::Median(totalMillis);
    std::printf("fingerings: %zu chords, %zu fingerings, %zu chords with none (reason given)\n",
                chords.size(), fingerings, none);
    std::printf("all 384 chords: %.2f ms median of %d sweeps (target under %.0f ms): %s\n", total,
                kSweeps, kTargetMillis, total < kTargetMillis ? "ok" : "TOO SLOW");
    std::printf("per chord: %.1f us median\n", bench::Median(chordMicros));
    return 0;
}
