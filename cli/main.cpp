// varnock-chart: prints and exports Varnock's chord chart from the command
// line. It runs the program's own chart controller on controls that are
// never shown, so what it writes is what the program would show.

#include "chart/controller.h"
#include "cli/book.h"
#include "cli/chartdoc.h"
#include "cli/errors.h"
#include "cli/lookup.h"
#include "cli/names.h"
#include "cli/options.h"
#include "cli/spelling.h"
#include "cli/writers.h"
#include "platform/msgbox.h"
#include "settings/location.h"
#include "settings/selections.h"
#include "version.h"

#include <QApplication>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>

using namespace varnock;

namespace {

// The chart as the program opens it; with a settings store, the layout,
// strings and tuning saved there are restored as the window restores them.
class ExportChart : public ChartController {
  public:
    explicit ExportChart(iniClass *settings) : settings_(settings) {}

  protected:
    void RestoreSaved() override {
        if (settings_)
            RestoreSelections(*settings_, SavedPopups());
    }

  private:
    iniClass *settings_;
};

void Export(const cli::Options &options, ChartController &chart) {
    // Every value is checked before anything is printed or written.
    const cli::Selection selection = cli::Resolve(options);
    const cli::Spelling spelling = cli::ResolveSpelling(options.spelling);
    const cli::Paper paper = cli::ResolvePaper(options.paper);
    const cli::Labels labels = cli::ResolveLabels(options.labels);
    const Palette palette = cli::ResolvePalette(options.palette);
    std::vector<int> identify;
    if (options.identify)
        identify = cli::ResolveNoteList(*options.identify);
    std::vector<int> roots, chords;
    if (options.book) {
        roots = cli::ResolveRoots(options.roots);
        chords = cli::ResolveChords(options.chords);
    } else if (options.roots || options.chords) {
        throw cli::BadInput("--roots and --chords go with --book only");
    }
    cli::Apply(chart, selection);

    if (options.identify || options.identifyFrets) {
        std::cout << (options.identify
                          ? cli::IdentifyText(identify, spelling, cli::SplitList(*options.identify))
                          : cli::IdentifyFretsText(chart.Sheet(), *options.identifyFrets, spelling))
                  << std::flush;
        return;
    }
    const ChartSheet sheet =
        cli::Spell(chart.Sheet(), spelling, cli::SpellingRoot(options.root),
                   options.tuning ? cli::SplitList(*options.tuning) : std::vector<std::string>{});
    const ChartOrientation orientation{options.leftHanded, options.flip};
    // What a reader of paper gets: the degrees under the notes, the labels asked for.
    const ChartSheet page = cli::Label(cli::WithDegrees(sheet), labels);

    const bool files =
        options.png || options.svg || options.pdf || options.book || options.windowImage;
    if (options.text || options.tsv || options.describe || options.output || !files) {
        const std::string text = options.tsv ? cli::ChartTsv(sheet)
                                 : options.describe
                                     ? cli::DescribeText(sheet, spelling, options.flip)
                                     : cli::ChartText(page, orientation);
        if (options.output)
            cli::WriteTextFile(QString::fromStdString(*options.output), text);
        else
            std::cout << text << std::flush;
    }
    if (options.png)
        cli::WritePng(QString::fromStdString(*options.png), page, options.scale, orientation,
                      palette);
    if (options.windowImage)
        // The window's own names: it knows no other spelling.
        cli::WriteWindowImage(QString::fromStdString(*options.windowImage), chart.Sheet(),
                              options.scale);
    if (options.svg)
        cli::WriteSvg(QString::fromStdString(*options.svg), page, orientation, palette);
    if (options.pdf)
        cli::WritePdf(QString::fromStdString(*options.pdf), page, orientation, paper, palette);
    if (options.book)
        cli::WriteBook(QString::fromStdString(*options.book),
                       cli::MakeBook(chart, roots, chords,
                                     {orientation, spelling, cli::SpellingRoots(options.roots),
                                      labels, palette}),
                       paper);
}

int Run(int argc, char **argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    cli::Options options;
    try {
        options = cli::ParseArguments(args);
    } catch (const cli::BadInput &e) {
        std::cerr << "varnock-chart: " << e.what() << "\n";
        return cli::kExitBadInput;
    }
    if (options.help) {
        std::cout << cli::HelpText();
        return 0;
    }
    if (options.version) {
        std::cout << "varnock-chart " << kShortVersion << "\n";
        return 0;
    }

    // No display is needed: the chart is only ever painted into files.
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
    // Only ever read: nothing here saves the selections.
    std::unique_ptr<iniClass> settings;
    if (options.fromSettings)
        settings = std::make_unique<iniClass>(SettingsFile());

    ExportChart chart(settings.get());
    chart.Open();
    try {
        Export(options, chart);
    } catch (const cli::BadInput &e) {
        std::cerr << "varnock-chart: " << e.what() << "\n";
        return cli::kExitBadInput;
    } catch (const cli::WriteFailed &e) {
        std::cerr << "varnock-chart: " << e.what() << "\n";
        return cli::kExitWriteFailed;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception &e) {
        std::cerr << "varnock-chart: " << e.what() << "\n";
        return cli::kExitWriteFailed;
    }
}
