// Figures for the main window: one full recompute (FindFrets with both
// tables rebuilt) and one full repaint of the chart, offscreen.

#include "bench.h"
#include "settings/location.h"
#include "shell/app.h"
#include "window/listboxview.h"
#include "window/window1.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace {} // namespace

int main(int argc, char **argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // Keep the bench away from the user's own settings.
    const auto home = std::filesystem::temp_directory_path() / "varnock-bench-home";
    std::filesystem::create_directories(home);
    setenv("XDG_DATA_HOME", (home / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
    QApplication app(argc, argv);
    varnock::SetAppQuitHandler([] {});
    varnock::TheApp().Event_Open();
    varnock::Window1 window;
    window.Open();
    window.PopupMenu10->SetListIndex(1);

    using bench::Clock;
    std::vector<double> recompute, repaint;
    QWidget *chart = window.ControlView("Listbox1");
    QImage target(chart->size(), QImage::Format_RGB32);
    for (int i = 0; i < 2000; ++i) {
        window.PopupMenu2->SetListIndex(i % 32); // FindFrets runs inside the setter
        auto t0 = Clock::now();
        window.FindFrets();
        auto t1 = Clock::now();
        chart->render(&target);
        auto t2 = Clock::now();
        recompute.push_back(std::chrono::duration<double, std::micro>(t1 - t0).count());
        repaint.push_back(std::chrono::duration<double, std::micro>(t2 - t1).count());
    }
    const double r = bench::Median(recompute), p = bench::Median(repaint);
    std::printf("FindFrets (model + both tables), median: %8.1f us\n", r);
    std::printf("Chart repaint (5 rows x 23 cells), median: %8.1f us\n", p);
    std::printf("Recompute + repaint: %.3f ms (target under 2 ms: %s)\n", (r + p) / 1000.0,
                (r + p) < 2000.0 ? "met" : "NOT met");
    std::filesystem::remove_all(home);
    return 0;
}
