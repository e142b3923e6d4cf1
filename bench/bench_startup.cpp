// Start-up figures: from process start to the first painted chart, offscreen,
// median of several runs, and the peak resident memory. Each run re-executes
// this program as a child that starts exactly as Varnock does (settings store,
// window, opening, show) and reports when the chart has been painted.

#include "shell/app.h"
#include "window/window1.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

// Ends the child once the chart has had its first paint.
class FirstPaint : public QObject {
  public:
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, [] { std::_Exit(0); });
        return false;
    }
};

int Child(int argc, char **argv) {
    QApplication app(argc, argv);
    varnock::TheApp().Event_Open();
    auto *window = new varnock::Window1;
    FirstPaint filter;
    window->ControlView("Listbox1")->installEventFilter(&filter);
    window->Open();
    window->show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv) {
    if (argc > 1 && std::strcmp(argv[1], "--child") == 0)
        return Child(argc, argv);

    const auto home = std::filesystem::temp_directory_path() / "varnock-bench-startup";
    std::filesystem::create_directories(home);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("XDG_DATA_HOME", (home / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);

    std::vector<double> times;
    long peakKb = 0;
    for (int run = 0; run < 11; ++run) {
        const auto t0 = std::chrono::steady_clock::now();
        const pid_t pid = fork();
        if (pid == 0) {
            execl("/proc/self/exe", argv[0], "--child", static_cast<char *>(nullptr));
            std::_Exit(127);
        }
        int status = 0;
        rusage usage{};
        wait4(pid, &status, 0, &usage);
        const auto t1 = std::chrono::steady_clock::now();
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            std::fprintf(stderr, "child failed\n");
            return 1;
        }
        if (run > 0) // the first run warms the disk cache
            times.push_back(std::chrono::duration<double, std::milli>(t1 - t0).count());
        peakKb = std::max(peakKb, usage.ru_maxrss);
    }
    std::sort(times.begin(), times.end());
    const double median = times[times.size() / 2];
    const double peakMb = static_cast<double>(peakKb) / 1024.0;
    std::printf("Start to first painted chart, median of %zu: %.1f ms (target under 150 ms: %s)\n",
                times.size(), median, median < 150 ? "met" : "NOT met");
    std::printf("Peak resident memory: %.1f MB (target under 40 MB: %s)\n", peakMb,
                peakMb < 40 ? "met" : "NOT met");
    std::filesystem::remove_all(home);
    return 0;
}
