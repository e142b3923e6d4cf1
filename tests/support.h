#pragma once

// Shared by the window tests: a scratch HOME with its own XDG folders, message
// capture, and a real main window opened on the offscreen platform.

#include "platform/msgbox.h"
#include "settings/location.h"
#include "shell/app.h"
#include "window/listboxview.h"
#include "window/window1.h"

#include <QImage>
#include <QProcess>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace testsupport {

namespace fs = std::filesystem;

inline std::string ReadBytes(const fs::path &path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteBytes(const fs::path &path, const std::string &bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// A scratch folder of its own, removed with everything in it.
class TempDir {
  public:
    TempDir() {
        std::string name = (fs::temp_directory_path() / "varnock-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("mkdtemp failed");
        path_ = name;
    }
    ~TempDir() {
        std::error_code ec;
        fs::remove_all(path_, ec);
    }
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;
    const fs::path &Path() const { return path_; }

  private:
    fs::path path_;
};

// Sets an environment variable (nullopt: unsets it) for the life of the
// object, then puts back what was there.
class EnvVar {
  public:
    EnvVar(const char *name, const std::optional<std::string> &value) : name_(name) {
        if (const char *old = std::getenv(name))
            previous_ = old;
        Apply(value);
    }
    ~EnvVar() { Apply(previous_); }

  private:
    void Apply(const std::optional<std::string> &value) const {
        if (value)
            setenv(name_, value->c_str(), 1);
        else
            unsetenv(name_);
    }
    const char *name_;
    std::optional<std::string> previous_;
};

// HOME, XDG_DATA_HOME and XDG_CONFIG_HOME moved to a fresh folder for the
// test's lifetime; the developer's own folders are never touched.
class ScratchHome {
  public:
    fs::path DataFolder() const { return Root() / "data" / "HelmfordVarnock"; }
    fs::path OldFolder() const { return Root() / "config" / "HelmfordVarnock"; }
    fs::path IniFile() const { return DataFolder() / "Varnock.ini"; }
    const fs::path &Root() const { return root_.Path(); }

  private:
    TempDir root_;
    EnvVar home_{"HOME", Root().string()};
    EnvVar data_{"XDG_DATA_HOME", (Root() / "data").string()};
    EnvVar config_{"XDG_CONFIG_HOME", (Root() / "config").string()};
};

class Messages {
  public:
    Messages()
        : previous_(
              varnock::SetMsgBoxHandler([this](const std::string &t) { texts.push_back(t); })) {}
    ~Messages() { varnock::SetMsgBoxHandler(previous_); }
    std::vector<std::string> texts;

  private:
    varnock::MsgBoxHandler previous_;
};

// Counts AppQuit calls instead of leaving the event loop.
class QuitCounter {
  public:
    QuitCounter() : previous_(varnock::SetAppQuitHandler([this] { ++count; })) {}
    ~QuitCounter() { varnock::SetAppQuitHandler(previous_); }
    int count = 0;

  private:
    std::function<void()> previous_;
};

// Start as the program does: the store first (in the scratch home), then the
// window with its opening.
struct OpenWindow {
    ScratchHome home;
    Messages messages;
    QuitCounter quits;
    std::unique_ptr<varnock::Window1> window;

    explicit OpenWindow(const std::string &iniBytes = {}, bool writeIni = false) {
        if (writeIni)
            WriteBytes(home.IniFile(), iniBytes);
        varnock::myINI.reset();
        varnock::TheApp().Event_Open();
        window = std::make_unique<varnock::Window1>();
        window->Open();
    }
    ~OpenWindow() {
        window.reset();
        varnock::myINI.reset();
    }
    varnock::Window1 &operator*() { return *window; }
    varnock::Window1 *operator->() { return window.get(); }
};

// Where a cell of one of the window's lists lies in that list's widget.
inline QRect CellRect(varnock::Window1 &w, const varnock::Listbox *list, varnock::Int row,
                      varnock::Int column) {
    const char *name = list == w.Listbox1 ? "Listbox1" : "Listbox2";
    return varnock::ListboxCellRect(*list, w.ControlView(name)->size(), row, column);
}

#ifdef VARNOCK_CHART_EXE
// A run of the export command with its exit status and what it printed.
struct Outcome {
    int status;
    std::string out, err;
};

inline Outcome RunChart(const QStringList &args) {
    QProcess p;
    p.start(QStringLiteral(VARNOCK_CHART_EXE), args);
    if (!p.waitForFinished(60000))
        ADD_FAILURE() << "varnock-chart did not finish";
    return {p.exitCode(), p.readAllStandardOutput().toStdString(),
            p.readAllStandardError().toStdString()};
}

// The lines of what the command printed, which ends in a line end.
inline std::vector<std::string> Lines(const std::string &text) {
    std::vector<std::string> lines = varnock::Split(text, "\n");
    lines.pop_back();
    return lines;
}
#endif

inline QImage Grab(QWidget *widget) {
    return widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

inline unsigned Pixel(const QImage &image, int x, int y) {
    return image.pixel(x, y) & 0xFFFFFFu;
}

// The smallest box around the pixels of `area` that differ from its top-left
// pixel: the ink of a text on a plain background. Empty when there is none.
inline QRect InkBox(const QImage &image, const QRect &area) {
    const unsigned paper = Pixel(image, area.left(), area.top());
    QRect box;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (Pixel(image, x, y) != paper)
                box |= QRect(x, y, 1, 1);
    return box;
}

} // namespace testsupport

// Boxes read as x, y, width and height in a failed expectation.
inline void PrintTo(const QRect &r, std::ostream *out) {
    *out << "QRect(" << r.x() << ", " << r.y() << ", " << r.width() << ", " << r.height() << ")";
}
