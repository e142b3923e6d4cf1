// Times the full recompute the main window runs on every selection change:
// Startup(mode), Init(), DisplayChord(), over every layout, root and chord type.

#include "bench.h"
#include "model/chordmodel.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace varnock;

namespace {

using bench::Clock;
using bench::Median;

constexpr int kSweeps = 200;
constexpr int kRecomputesPerSweep = 6 * 12 * 32;
constexpr double kTargetMicros = 20.0;

} // namespace

int main() {
    ChordModel model;
    model.SetStartValues();

    // Folded into the output so no recompute can be optimised away.
    std::size_t checksum = 0;
    std::vector<double> recomputeMicros;
    recomputeMicros.reserve(static_cast<std::size_t>(kSweeps) * kRecomputesPerSweep);
    std::vector<double> sweepMillis;
    sweepMillis.reserve(kSweeps);

    // The first sweep warms caches and the allocator and is not counted.
    for (int sweep = -1; sweep < kSweeps; ++sweep) {
        const auto sweepStart = Clock::now();
        for (Int mode = 0; mode <= 5; ++mode) {
            for (Int root = 0; root <= 11; ++root) {
                for (Int chord = 0; chord <= 31; ++chord) {
                    const auto start = Clock::now();
                    model.SelectedChord = root;
                    model.ModeSelectMajor = chord;
                    model.M.Startup(mode);
                    model.Init();
                    const std::string notes = model.DisplayChord();
                    const auto stop = Clock::now();
                    checksum +=
                        notes.size() + model.TableOne(2, static_cast<Int>(chord % 23)).size();
                    if (sweep >= 0)
                        recomputeMicros.push_back(
                            std::chrono::duration<double, std::micro>(stop - start).count());
                }
            }
        }
        const auto sweepStop = Clock::now();
        if (sweep >= 0)
            sweepMillis.push_back(
                std::chrono::duration<double, std::milli>(sweepStop - sweepStart).count());
    }

    const double perRecompute = Median(recomputeMicros);
    const double perSweep = Median(sweepMillis);
    std::printf("recomputes per sweep:        %d (6 layouts x 12 roots x 32 chord types)\n",
                kRecomputesPerSweep);
    std::printf("sweeps timed:                %d\n", kSweeps);
    std::printf("median per recompute:        %.3f us\n", perRecompute);
    std::printf("median per sweep:            %.3f ms\n", perSweep);
    std::printf("target:                      under %.0f microseconds per recompute: %s\n",
                kTargetMicros, perRecompute < kTargetMicros ? "met" : "NOT met");
    std::printf("checksum:                    %zu\n", checksum);
    return 0;
}
