// varnock-chart: prints and exports Varnock's chord chart from the command
// line. It opens the program's own chart controller, never shown, for the
// start values and the saved selections, so it starts where the program does.

#include "chart/controller.h"
#include "cli/errors.h"
#include "cli/names.h"
#include "cli/options.h"
#include "export/notenames.h"
#include "export/outfile.h"
#include "export/request.h"
#include "platform/msgbox.h"
#include "settings/location.h"
#include "settings/selections.h"
#include "version.h"

#include <QGuiApplication>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string_view>

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

// The instrument and the chord the options choose, over the window's start
// values or the layout, strings and tuning saved: plain values, computed
// from, never set on, the controller's popups.
output::Chosen Choose(const ChartController &start, const cli::Selection &s) {
    const Int open[4] = {start.Model.M.nOpenBassString, start.Model.M.nOpenMiddleString,
                         start.Model.M.nOpenMelodyString, start.Model.M.nOpenForthString};
    output::Chosen chosen;
    chosen.instrument.layout = s.frets.value_or(static_cast<int>(start.PopupMenu9->ListIndex()));
    const int strings = s.strings ? *s.strings + 3 : static_cast<int>(start.StringCount());
    for (int i = 0; i < strings; ++i) {
        const auto at = static_cast<std::size_t>(i);
        chosen.instrument.openNotes.push_back(at < s.tuning.size() ? s.tuning[at]
                                                                   : static_cast<int>(open[i]));
    }
    chosen.root = s.root.value_or(static_cast<int>(start.PopupMenu1->ListIndex()));
    chosen.chord = s.chord.value_or(static_cast<int>(start.PopupMenu2->ListIndex()));
    return chosen;
}

void Export(const cli::Options &typed, ChartController &chart) {
    // Every value is checked before anything is printed or written. Inside,
    // notes go by their English names; the chosen system is read here and
    // written by every output. The writers only hand their files to the
    // batch, which writes them all, then prints, or does neither.
    output::Batch batch;
    cli::Options options = typed;
    output::ToEnglish(options);
    output::Chosen chosen = Choose(chart, cli::Resolve(options));
    if (options.identify)
        chosen.identify = output::ReadNoteList(*options.identify);
    if (options.book) {
        chosen.roots = cli::ResolveRoots(options.roots);
        chosen.chords = cli::ResolveChords(options.chords);
    }
    for (const cli::FileOption &file : cli::FileOptions())
        if (const auto &name = options.*file.file)
            batch.Expect(std::string(file.name), *name);
    batch.Commit(output::Render(options, chosen));
}

// One line to standard error, whatever the message echoes.
void Say(std::string_view message) {
    std::cerr << "varnock-chart: " << output::Printable(message) << "\n";
}

int Run(int argc, char **argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    cli::Options options;
    try {
        // The bash completion asks for its words; nothing is drawn.
        if (!args.empty() && args[0] == "--completion-words") {
            std::cout << cli::CompletionWords(args.size() > 1 ? args[1] : "",
                                              args.size() > 2 ? args[2] : "");
            return 0;
        }
        options = cli::ParseArguments(args);
    } catch (const cli::BadInput &e) {
        Say(e.what());
        return cli::kExitBadInput;
    }
    output::NoteClosedStdout();
    if (options.help || options.version) {
        try {
            output::PrintOut(options.help ? cli::HelpText()
                                          : "varnock-chart " + std::string(kShortVersion) + "\n");
        } catch (const cli::WriteFailed &e) {
            Say(e.what());
            return cli::kExitWriteFailed;
        }
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
    QGuiApplication app(argc, argv);
    // The settings store's messages, in the command's own voice.
    SetMsgBoxHandler([](const std::string &text) { Say(text); });
    // Only ever read: nothing here saves the selections.
    std::unique_ptr<iniClass> settings;
    if (options.fromSettings)
        settings = std::make_unique<iniClass>(SettingsFile());

    ExportChart chart(settings.get());
    chart.Open();
    try {
        Export(options, chart);
    } catch (const cli::BadInput &e) {
        Say(e.what());
        return cli::kExitBadInput;
    } catch (const cli::WriteFailed &e) {
        Say(e.what());
        return cli::kExitWriteFailed;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception &e) {
        Say(e.what());
        return cli::kExitUnexpected;
    }
}
