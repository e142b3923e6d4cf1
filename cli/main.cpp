// varnock-chart: prints and exports Varnock's chord chart from the command
// line. It drives a real main window that is never shown, so what it writes
// is what the program would show.

#include "chart/window1.h"
#include "cli/chartexport.h"
#include "settings/folderitem.h"
#include "settings/location.h"
#include "settings/msgbox.h"
#include "version.h"

#include <QApplication>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>

using namespace varnock;

namespace {

constexpr int kBadInput = 2;
constexpr int kWriteFailed = 1;

// The settings file the program itself reads; only ever read here.
std::optional<FolderItem> SettingsFile() {
    const auto data = SpecialFolderApplicationData();
    if (!data)
        return std::nullopt;
    const auto folder = data->Child("HelmfordVarnock");
    return folder ? folder->Child("Varnock.ini") : std::nullopt;
}

int Run(int argc, char **argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    chart::Options options;
    try {
        options = chart::ParseArguments(args);
    } catch (const chart::BadInput &e) {
        std::cerr << "varnock-chart: " << e.what() << "\n";
        return kBadInput;
    }
    if (options.help) {
        std::cout << chart::HelpText();
        return 0;
    }
    if (options.version) {
        std::cout << "varnock-chart " << kShortVersion << "\n";
        return 0;
    }

    // No display is needed: the window is only ever painted into files.
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // Qt's own warnings (such as about XDG_RUNTIME_DIR offscreen) would bury
    // the one line a bad input deserves; only real failures get through.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtCriticalMsg || type == QtFatalMsg)
            std::cerr << text.toStdString() << "\n";
    });
    QApplication app(argc, argv);
    // A modal box would wait forever with nobody to see it.
    SetMsgBoxHandler(
        [](const std::string &text) { std::cerr << "varnock-chart: " << text << "\n"; });
    myINI = std::make_shared<iniClass>(options.fromSettings ? SettingsFile() : std::nullopt);

    int status = 0;
    {
        auto window = std::make_unique<Window1>();
        window->Open();
        try {
            const chart::Selection selection = chart::Resolve(*window, options);
            std::vector<int> roots, chords;
            if (options.book) {
                roots = chart::ResolveRoots(*window, options.roots);
                chords = chart::ResolveChords(*window, options.chords);
            } else if (options.roots || options.chords) {
                throw chart::BadInput("--roots and --chords go with --book only");
            }
            chart::Apply(*window, selection);

            const bool files = options.png || options.svg || options.pdf || options.book;
            if (options.text || options.tsv || options.output || !files) {
                const std::string text =
                    options.tsv ? chart::ChartTsv(*window) : chart::ChartText(*window);
                if (options.output)
                    chart::WriteTextFile(QString::fromStdString(*options.output), text);
                else
                    std::cout << text << std::flush;
            }
            if (options.png)
                chart::WritePng(QString::fromStdString(*options.png), *window, options.scale);
            if (options.svg)
                chart::WriteSvg(QString::fromStdString(*options.svg), *window);
            if (options.pdf)
                chart::WritePdf(QString::fromStdString(*options.pdf), *window);
            if (options.book)
                chart::WriteBook(QString::fromStdString(*options.book), *window, roots, chords);
        } catch (const chart::BadInput &e) {
            std::cerr << "varnock-chart: " << e.what() << "\n";
            status = kBadInput;
        } catch (const chart::WriteFailed &e) {
            std::cerr << "varnock-chart: " << e.what() << "\n";
            status = kWriteFailed;
        }
        // The window goes before the application; it is never closed, since
        // closing it would save the settings.
    }
    myINI.reset();
    return status;
}

} // namespace

int main(int argc, char **argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception &e) {
        std::cerr << "varnock-chart: " << e.what() << "\n";
        return kWriteFailed;
    }
}
