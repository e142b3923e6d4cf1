// varnock-chart: prints and exports Varnock's chord chart from the command
// line. It runs the program's own chart controller on controls that are
// never shown, so what it writes is what the program would show.

#include "chart/controller.h"
#include "cli/errors.h"
#include "cli/names.h"
#include "cli/options.h"
#include "cli/song.h"
#include "export/book.h"
#include "export/capo.h"
#include "export/chartdoc.h"
#include "export/diagram.h"
#include "export/lookup.h"
#include "export/modes.h"
#include "export/notenames.h"
#include "export/outfile.h"
#include "export/playback.h"
#include "export/scalesheet.h"
#include "export/spelling.h"
#include "export/voicings.h"
#include "export/writers.h"
#include "music/catalogue.h"
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

// Every output file with the option that names it.
std::vector<std::pair<const char *, const std::optional<std::string> *>>
OutputFiles(const cli::Options &o) {
    return {{"--output", &o.output}, {"--png", &o.png},   {"--svg", &o.svg},
            {"--pdf", &o.pdf},       {"--book", &o.book}, {"--window-image", &o.windowImage},
            {"--wav", &o.wav},       {"--midi", &o.midi}, {"--chordpro", &o.chordpro}};
}

// The instrument and the chord the options choose, over the window's start
// values or the layout, strings and tuning saved: plain values, computed
// from, never set on, the controller's popups.
struct Chosen {
    music::Instrument instrument;
    int root = 0, chord = 0;
};
Chosen Choose(const ChartController &start, const cli::Selection &s) {
    const Int open[4] = {start.Model.M.nOpenBassString, start.Model.M.nOpenMiddleString,
                         start.Model.M.nOpenMelodyString, start.Model.M.nOpenForthString};
    Chosen chosen;
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
    const cli::NameSystem names = typed.names;
    const cli::Options options = cli::InEnglish(typed, names);
    const cli::Selection selection = cli::Resolve(options);
    const cli::Spelling spelling = options.spelling;
    const cli::Scale *scale = options.scale;
    const cli::Paper paper = options.paper;
    const cli::Labels labels = options.labels;
    const Palette palette = options.palette;
    std::vector<int> identify;
    if (options.identify)
        identify = cli::ResolveNoteList(*options.identify);
    std::vector<int> roots, chords;
    if (options.book) {
        roots = cli::ResolveRoots(options.roots);
        chords = cli::ResolveChords(options.chords);
    }
    for (const auto &[option, name] : OutputFiles(options))
        if (*name)
            batch.Expect(option, **name);
    const Chosen chosen = Choose(chart, selection);
    music::Instrument instrument = chosen.instrument;
    // Positions are named as the chosen layout names its frets.
    const std::vector<std::string> fretNames = music::FretNames(instrument.layout);
    const int capo = options.capo ? cli::ParsePosition(*options.capo, fretNames, "--capo") : 0;
    instrument.capo = capo;
    if (options.octaves)
        instrument.octaves = cli::ParseOctaves(*options.octaves, instrument.Strings());
    const cli::Limits limits = cli::ResolveLimits(options, fretNames, capo);
    // The chart as the window computes it, under the capo.
    const ChartSheet board = ComputeSheet(instrument, chosen.root, chosen.chord);
    if (options.song) {
        batch.Commit(cli::RunSong(options, board, fretNames, names, paper));
        return;
    }

    if (options.identify || options.identifyFrets) {
        std::string frets;
        if (options.identifyFrets) {
            try {
                frets = cli::FretListFromCapo(*options.identifyFrets, fretNames, capo);
            } catch (const cli::BadInput &e) {
                throw cli::BadInput("--identify-frets: " + std::string(e.what()));
            }
        }
        batch.Commit(options.identify ? cli::IdentifyText(identify, spelling,
                                                          SplitList(*options.identify), names)
                                      : cli::IdentifyFretsText(board, frets, spelling, names));
        return;
    }
    if (options.modes) {
        std::optional<std::string> root;
        if (options.root)
            root = cli::SpellingRoot(options.root);
        // The strings named as the player typed them.
        batch.Commit(cli::ModesText(
            cli::Spell(board, cli::Spelling::Musician, "",
                       options.tuning ? SplitList(*options.tuning) : std::vector<std::string>{}),
            root, names));
        return;
    }
    const ChartSheet spelled =
        scale
            // Without --root, the chart's own root, as for a chord.
            ? cli::ScaleSheet(board, *scale,
                              options.root ? cli::SpellingRoot(options.root)
                                           : catalogue::SharpName(board.root))
            : cli::Spell(board, spelling, cli::SpellingRoot(options.root),
                         options.tuning ? SplitList(*options.tuning) : std::vector<std::string>{});
    const ChartSheet &english = spelled;
    const ChartSheet sheet = cli::Named(english, names);
    const ChartOrientation orientation{options.leftHanded, options.flip};
    // What a reader of paper gets: the degrees under the notes, the labels asked for.
    const ChartSheet page = cli::Label(scale ? sheet : cli::WithDegrees(sheet), labels);

    std::string wav, midi;
    if (options.wav || options.midi) {
        // What --voicings shows first is what sounds.
        const auto events =
            scale ? cli::ScaleEvents(instrument, english.root, *scale)
                  : cli::ChordEvents(instrument,
                                     cli::FindVoicings(spelled, fretNames, limits).fingerings,
                                     cli::SheetTones(spelled));
        if (options.wav)
            wav = cli::WavFile(events);
        if (options.midi)
            midi = cli::MidiFile(events);
    }

    std::string printed;
    const bool files = options.png || options.svg || options.pdf || options.book ||
                       options.windowImage || options.wav || options.midi;
    if (options.text || options.tsv || options.describe || options.output || !files) {
        std::string text = options.voicings ? cli::VoicingsText(sheet, fretNames, limits)
                           : options.tsv    ? cli::ChartTsv(sheet)
                           : options.describe
                               ? cli::DescribeText(english, spelling, options.flip, names)
                               : cli::ChartText(page, orientation);
        if (options.describe && capo > 0)
            text.insert(text.find('\n') + 1,
                        "Capo at position " + std::to_string(capo) + " (fret " +
                            fretNames.at(static_cast<std::size_t>(capo)) +
                            "): the open strings sound there, and position 0 below is the capo.\n");
        if (options.output)
            cli::WriteTextFile(*options.output, text);
        else
            printed = std::move(text);
    }
    if (options.voicings && (options.png || options.svg || options.pdf)) {
        const cli::Diagrams diagrams =
            cli::MakeDiagrams(cli::ChartTitle(sheet), cli::FindVoicings(sheet, fretNames, limits),
                              fretNames, capo, options.leftHanded);
        if (options.png)
            cli::WriteDiagramsPng(*options.png, diagrams, options.pixelScale);
        if (options.svg)
            cli::WriteDiagramsSvg(*options.svg, diagrams);
        if (options.pdf)
            cli::WriteDiagramsPdf(*options.pdf, diagrams, paper);
    } else {
        if (options.png)
            cli::WritePng(*options.png, page, options.pixelScale, orientation, palette);
        if (options.svg)
            cli::WriteSvg(*options.svg, page, orientation, palette);
        if (options.pdf)
            cli::WritePdf(*options.pdf, page, orientation, paper, palette);
    }
    if (options.windowImage)
        // The window's own names: it knows no other spelling.
        cli::WriteWindowImage(*options.windowImage,
                              ComputeSheet({instrument.layout, instrument.openNotes, {}, 0},
                                           chosen.root, chosen.chord),
                              options.pixelScale);
    if (options.wav)
        cli::WriteTextFile(*options.wav, wav);
    if (options.midi)
        cli::WriteTextFile(*options.midi, midi);
    if (options.book) {
        cli::Book book = cli::MakeBook(
            instrument, roots, chords,
            {orientation, spelling, cli::SpellingRoots(options.roots), labels, palette});
        if (options.voicings) {
            cli::WriteFingeringBook(*options.book, cli::Named(book, names), fretNames, limits,
                                    options.count.has_value(), options.leftHanded, paper);
        } else {
            cli::WriteBook(*options.book, cli::Named(book, names), paper);
        }
    }
    batch.Commit(printed);
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
