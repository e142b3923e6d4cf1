// Figures for varnock-chart's chord book: every chord type on every root
// (12 x 32 charts) written as one PDF, in process and as the whole command.

#include "bench.h"
#include "chart/controller.h"
#include "cli/names.h"
#include "export/book.h"

#include <QGuiApplication>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

using bench::Clock;
using bench::Median;
using bench::Seconds;

int main(int argc, char **argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const auto scratch = std::filesystem::temp_directory_path() / "varnock-bench-book";
    std::filesystem::create_directories(scratch);
    setenv("XDG_DATA_HOME", (scratch / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (scratch / "config").c_str(), 1);
    QGuiApplication app(argc, argv);

    const QString book = QString::fromStdString((scratch / "book.pdf").string());
    constexpr int kRuns = 5;
    std::vector<double> inProcess, command;
    int pages = 0;
    {
        // The window's start: Diatonic, D A D.
        const varnock::music::Instrument instrument{0, {5, 0, 5}, {}, 0};
        const auto roots = varnock::cli::ResolveRoots(std::nullopt);
        const auto chords = varnock::cli::ResolveChords(std::nullopt);
        for (int i = 0; i < kRuns; ++i) {
            const auto t0 = Clock::now();
            pages = varnock::cli::WriteBook(book, varnock::cli::MakeBook(instrument, roots, chords));
            inProcess.push_back(Seconds(t0));
        }
    }
    const auto size = std::filesystem::file_size(scratch / "book.pdf");
    for (int i = 0; i < kRuns; ++i) {
        QProcess process;
        const auto t0 = Clock::now();
        process.start(QStringLiteral(VARNOCK_CHART_EXE), {QStringLiteral("--book"), book});
        if (!process.waitForFinished(60000) || process.exitCode() != 0) {
            std::fprintf(stderr, "varnock-chart --book failed\n");
            return 1;
        }
        command.push_back(Seconds(t0));
    }
    std::filesystem::remove_all(scratch);

    const double whole = Median(command);
    const double megabytes = static_cast<double>(size) / 1e6;
    std::printf("Chord book, 12 roots x 32 chords: %d pages, %.2f MB (target under 1 MB: %s)\n",
                pages, megabytes, megabytes < 1.0 ? "met" : "NOT met");
    std::printf("WriteBook in process, median of %d: %.2f s\n", kRuns, Median(inProcess));
    std::printf("varnock-chart --book, median of %d: %.2f s (target under 0.5 s: %s)\n", kRuns,
                whole, whole < 0.5 ? "met" : "NOT met");
    return 0;
}
