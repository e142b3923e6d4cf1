#include "cli/options.h"

#include "cli/names.h"
#include "music/catalogue.h"

#include <algorithm>
#include <charconv>

namespace varnock::cli {

namespace {

namespace cat = catalogue;

// A whole number lo..hi for `option`, else the one line that says so.
int Whole(const char *option, const std::string &v, int lo, int hi) {
    int n = 0;
    const auto [end, error] = std::from_chars(v.data(), v.data() + v.size(), n);
    if (v.empty() || error != std::errc() || end != v.data() + v.size() || n < lo || n > hi)
        throw BadInput(std::string(option) + " \"" + v + "\" is not accepted; a whole number " +
                       std::to_string(lo) + ".." + std::to_string(hi));
    return n;
}

using S = Section;
using V = ValueKind;
using O = Options;
using T = const std::string &;

// clang-format off
const OptionSpec kOptions[] = {
    {"--frets", "", V::Choice, "LAYOUT", S::Selection,
     "\"Diatonic\" (default), \"Diatonic with 6+\",\n\"Diatonic with 1+ and 6+\", \"Chromatic\", or the mode\n"
     "number 0..5; 4 and 5 are two five-fret layouts the\nprogram's menu does not offer",
     [](O &o, T, int v) { o.frets = v; },
     LayoutChoices, ~kIdentify},
    {"--strings", "", V::Choice, "N", S::Selection,
     "3 (default) or 4; a tuning names as many notes",
     [](O &o, T, int v) { o.strings = v; },
     StringChoices, ~kIdentify},
    {"--tuning", "", V::List, "NOTES", S::Selection,
     "open notes from the lowest string, comma-separated:\nD,A,D (default) or D,A,D,G; four notes imply --strings 4",
     [](O &o, T v, int) { o.tuning = v; },
     NoteChoices, ~kIdentify},
    {"--root", "", V::Word, "NOTE", S::Selection,
     "A (default) .. G#, or any spelling: Gb, F\u266F, B#, Cx",
     [](O &o, T v, int) { o.root = v; },
     NoteChoices, ~(kBook | kFingeringBook | kIdentify | kIdentifyFrets)},
    {"--chord", "", V::Choice, "TYPE", S::Selection,
     "@CHORDS@; in any case where no other is meant: M and m\ndiffer",
     [](O &o, T, int v) { o.chord = v; },
     ChordChoices, ~(kBook | kFingeringBook | kIdentify | kIdentifyFrets | kModes)},
    {"--scale", "", V::Choice, "NAME", S::Selection,
     "a scale on --root in place of the chord: major (ionian),\ndorian, phrygian, lydian, mixolydian, natural minor\n"
     "(aeolian, minor), locrian, harmonic minor, melodic minor,\nmajor pentatonic, minor pentatonic (min-pent), blues",
     [](O &o, T, int v) { o.scale = &Scales()[static_cast<std::size_t>(v)]; },
     ScaleChoices, kText | kTsv | kDescribe | kChartImage | kSound},
    {"--from-settings", "", V::None, "", S::Selection,
     "take layout, strings and tuning from the program's\nsettings file (read only); options given still win",
     [](O &o, T, int) { o.fromSettings = true; },
     nullptr, ~kIdentify},

    {"--text", "", V::None, "", S::Output,
     "the chart as an aligned table, then \"Notes: ...\" (default)",
     [](O &o, T, int) { o.text = true; }},
    {"--tsv", "", V::None, "", S::Output,
     "tab-separated: heading line, label row, string rows, one\nline each, cells exactly as in the chart; no notes line.\n"
     "It is data: it keeps position and string order and takes\nno --left-handed, --flip or --labels",
     [](O &o, T, int) { o.tsv = true; }},
    {"--describe", "", V::None, "", S::Output,
     "the chart in sentences a screen reader reads well: the\ninstrument, the chord and its notes, then where each note\n"
     "lies on each string, by the layout's own fret names",
     [](O &o, T, int) { o.describe = true; }},
    {"--output", "-o", V::File, "FILE", S::Output,
     "write the --text, --tsv or --describe output to FILE",
     [](O &o, T v, int) { o.output = v; }},
    {"--png", "", V::File, "FILE", S::Output,
     "the chart under its title, strings named, and the notes\ntable as a PNG image",
     [](O &o, T v, int) { o.png = v; }},
    {"--window-image", "", V::File, "FILE", S::Output,
     "chart and notes table as a PNG exactly as the program's\nwindow shows them: no title, no string names",
     [](O &o, T v, int) { o.windowImage = v; }},
    {"--pixel-scale", "", V::Word, "N", S::Output,
     "pixels per pixel of the chart in a PNG: 1 (default) to 4;\n2 for print",
     [](O &o, T v, int) { o.pixelScale = Whole("--pixel-scale", v, 1, 4); },
     nullptr, kPng | kWindowImage},
    {"--svg", "", V::File, "FILE", S::Output,
     "chart and notes table as SVG",
     [](O &o, T v, int) { o.svg = v; }},
    {"--pdf", "", V::File, "FILE", S::Output,
     "the chart as --png draws it on a printable page, scaled\nto the width inside the margins",
     [](O &o, T v, int) { o.pdf = v; }},
    {"--wav", "", V::File, "FILE", S::Output,
     "the chord strummed from the first string to the last, then\nnote by note, in its first fingering; a --scale up and\n"
     "down: a plucked string, 44.1 kHz 16-bit mono WAV",
     [](O &o, T v, int) { o.wav = v; }},
    {"--midi", "", V::File, "FILE", S::Output,
     "the same notes as a Standard MIDI File (type 0, steel-\nstring guitar programme)",
     [](O &o, T v, int) { o.midi = v; }},
    {"--octaves", "", V::List, "LIST", S::Output,
     "the octave 0..8 of each open string for --wav and --midi.\nDefault: the first string in octave 3, each next one the\n"
     "nearest note at or above the one before (D A D: 3,3,4 is\nD3 A3 D4; D A D G: 3,3,4,4)",
     [](O &o, T v, int) { o.octaves = v; },
     nullptr, kSound},
    {"--paper", "", V::Choice, "a4|letter", S::Output,
     "the page size of --pdf: a4 (default) or letter",
     [](O &o, T, int v) { o.paper = Paper(v); },
     PaperChoices, kPdf | kBook | kFingeringBook | kSongSheet},
    {"--book", "", V::File, "FILE.pdf", S::Output,
     "a chord book: a contents page, then a titled page per root\nwith the chart and notes of every chord",
     [](O &o, T v, int) { o.book = v; }},
    {"--roots", "", V::List, "LIST", S::Output,
     "roots for the book, comma-separated (default: all 12)",
     [](O &o, T v, int) { o.roots = v; },
     NoteChoices, kBook | kFingeringBook},
    {"--chords", "", V::List, "LIST", S::Output,
     "chords for the book, comma-separated (default: all 32)",
     [](O &o, T v, int) { o.chords = v; },
     ChordChoices, kBook | kFingeringBook},

    {"--spelling", "", V::Choice, "NAMES", S::Look,
     "musician (default): each note by its degree above the\nroot, the root as typed or else with fewer accidentals\n"
     "(Bb maj7, Eb m, F# Maj), typed flats kept; sharps (as in\nthe program), flats (\"A#\" is \"Bb\"), or chord: each note\n"
     "by its degree above the root as given to --root\n(Bb Maj: Bb D F; A# Maj: A# C## E#)",
     [](O &o, T, int v) { o.spelling = Spelling(v); },
     SpellingChoices, ~(kModes | kWindowImage | kSound)},
    {"--names", "", V::Choice, "SYSTEM", S::Look,
     "the note names read and written everywhere (--root,\n--tuning, --identify, the chart, the answers):\n@NAMES@",
     [](O &o, T, int v) { o.names = NameSystem(v); },
     NameChoices, ~(kWindowImage | kSound)},
    {"--labels", "", V::Choice, "WHAT", S::Look,
     "what the chart's cells show: notes (default), degrees\nabove the root (R, b3, 3, 5, b7, 9, ...) or both (\"Eb b7\")",
     [](O &o, T, int v) { o.labels = Labels(v); },
     LabelChoices, kText | kChartImage | kBook},
    {"--palette", "", V::Choice, "COLOURS", S::Look,
     "window (default, the program's colours) or colour-blind:\nthe four chord tones' cells filled with hues that stay\n"
     "apart under the common colour blindnesses, the text black\nor white by contrast, no green stripe",
     [](O &o, T, int v) { o.palette = Palette(v); },
     PaletteChoices, kChartImage | kBook},
    {"--left-handed", "", V::None, "", S::Look,
     "mirrored: the open-string column on the right, positions\nrising to the left, headings and label row with them",
     [](O &o, T, int) { o.leftHanded = true; },
     nullptr, kText | kChartImage | kBook | kDiagrams | kFingeringBook | kSongSheet},
    {"--flip", "", V::None, "", S::Look,
     "the last string on top; the label row stays the top row.\nThe notes table is a legend: neither option turns it",
     [](O &o, T, int) { o.flip = true; },
     nullptr, kText | kChartImage | kBook | kDescribe},

    {"--identify", "", V::List, "NOTES", S::Naming,
     "2 to 4 note names in any spelling and order, comma-\nseparated: every root and chord type of exactly those\n"
     "notes, then every one that holds them all, one a line",
     [](O &o, T v, int) { o.identify = v; },
     NoteChoices, 0},
    {"--identify-frets", "", V::List, "P1,P2[,P3[,P4]]", S::Naming,
     "a fret per string as the chart's heading line names it\n(0..22; 6+, 13+ on the boards that have them), or x for\n"
     "a string not played, on the chosen layout and tuning;\nwith --capo, 0 is the capo: first the notes sounding\n"
     "there, then the chords they make, as above",
     [](O &o, T v, int) { o.identifyFrets = v; }},

    {"--voicings", "", V::None, "", S::Fingering,
     "the chord's fingerings instead of the chart, best first,\none a line: positions by fret name | notes | degrees,\n"
     "then what is left out (\"0 0 2 | D A F# | R 5 3\"). With\n--png, --svg or --pdf: chord diagrams; with --book: a\n"
     "fingering book, each root's chords with their best ones.\nRanked: fewer fretted strings first, then the lower hand\n"
     "position, then the smaller reach, then the root on the\nlowest sounding string; equal ones in position order.\n"
     "A PDF takes as many pages as the diagrams need; a PNG or\nSVG is at most 10000 pixels tall (at --pixel-scale 1): for\n"
     "more, ask for fewer with --count or use --pdf",
     [](O &o, T, int) { o.voicings = true; }},
    {"--reach", "", V::Word, "N", S::Fingering,
     "largest distance in positions between the lowest and the\nhighest fretted string, 1..22 (default 3); open strings\nare free",
     [](O &o, T v, int) { o.reach = Whole("--reach", v, 1, 22); }},
    {"--highest", "", V::Word, "P", S::Fingering,
     "highest fret used, named as in the chart's heading line\n(default 12, or higher to leave a reach above the capo)",
     [](O &o, T v, int) { o.highest = v; }},
    {"--muted-ok", "", V::None, "", S::Fingering,
     "a string may be left unplayed (x)",
     [](O &o, T, int) { o.mutedOk = true; }},
    {"--count", "", V::Word, "N", S::Fingering,
     "how many fingerings at most, 1..999 (default 10)",
     [](O &o, T v, int) { o.count = Whole("--count", v, 1, 999); }},
    {"--capo", "", V::Word, "P", S::Fingering,
     "a capo at a fret, named as in the chart's heading line\n(3, 6+). Every output takes it: the chart leaves the\n"
     "positions below it empty and heads it \"capo\", the open-\nstring column shows what sounds there; fingerings,\n"
     "--identify-frets and --describe count from it (0 is the\ncapo)",
     [](O &o, T v, int) { o.capo = v; },
     nullptr, ~kWindowImage},
    {"--modes", "", V::None, "", S::Naming,
     "the seven modes (ionian .. locrian) each string plays from\nits open note, or from --root, with every note on the\n"
     "layout's frets, and where: by position and fret name",
     [](O &o, T, int) { o.modes = true; }},

    {"--song", "", V::File, "FILE", S::Song,
     "a ChordPro song (lyrics with [chords], {title}, {key},\n{capo}, {transpose}, ...; UTF-8 or Latin-1): its chords\n"
     "in order, each with its best fingering on this instrument\nor what the board lacks, then the lyrics with the chords\n"
     "above their syllables. --capo and the limits apply; with\n--pdf, a song sheet with its chord diagrams",
     [](O &o, T v, int) { o.song = v; }},
    {"--transpose", "", V::Word, "N", S::Song,
     "move the song N semitones, -11..11, spelled as a musician\nwrites it in the new key; wins over its {transpose}",
     [](O &o, T v, int) { o.transpose = v; }},
    {"--key", "", V::Word, "KEY", S::Song,
     "move the song to this key (G, Em, Bb, F#m)",
     [](O &o, T v, int) { o.key = v; }},
    {"--suggest", "", V::None, "", S::Song,
     "the ten best ways to play the song: every key with every\ncapo up to the layout's fret 7, on this tuning and each of\n"
     "--tunings; all chords within --reach first, then the\nfewest needing a muted string or a high fret, then the\n"
     "lowest hands, the smaller capo, the song's own key",
     [](O &o, T, int) { o.suggest = true; }},
    {"--tunings", "", V::List, "LIST", S::Song,
     "more tunings for --suggest, separated by \";\":\n\"D,A,D;D,A,A;D,G,D\", each as many notes as strings",
     [](O &o, T v, int) { o.tunings = v; }},
    {"--chordpro", "", V::File, "FILE", S::Song,
     "the song written back as ChordPro (moved, if asked) with\na {define} of each chord's fingering, frets counted from\n"
     "the nut, and {capo} as played",
     [](O &o, T v, int) { o.chordpro = v; }},

    {"--version", "", V::None, "", S::Other,
     "the version, the same as the program's",
     [](O &o, T, int) { o.version = true; }},
    {"--help", "-h", V::None, "", S::Other,
     "this text",
     [](O &o, T, int) { o.help = true; }},
};
// clang-format on

// The option names as words, each with its short name; a near miss gets
// "did you mean" as a mistyped value does.
const Choices &OptionChoices() {
    static const Choices choices = [] {
        Choices c{"option", {}, nullptr, "see --help"};
        for (std::size_t i = 0; i < std::size(kOptions); ++i) {
            c.words.push_back({std::string(kOptions[i].name), static_cast<int>(i)});
            if (!kOptions[i].shortName.empty())
                c.words.back().also.emplace_back(kOptions[i].shortName);
        }
        return c;
    }();
    return choices;
}

// The outputs the options ask for (Used bits), each with the option that asks.
std::vector<std::pair<unsigned, std::string>> Chosen(const Options &o) {
    if (o.identify || o.identifyFrets || o.modes)
        return {o.identify        ? std::pair{kIdentify, "--identify"}
                : o.identifyFrets ? std::pair{kIdentifyFrets, "--identify-frets"}
                                  : std::pair{kModes, "--modes"}};
    std::vector<std::pair<unsigned, std::string>> out;
    if (o.song) {
        if (o.text || o.output || o.suggest || !(o.pdf || o.chordpro))
            out.emplace_back(kSongText, o.suggest ? "--suggest" : "the song as text");
        if (o.pdf)
            out.emplace_back(kSongSheet, "--pdf");
        if (o.chordpro)
            out.emplace_back(kSongChordPro, "--chordpro");
        return out;
    }
    for (const FileOption &file : FileOptions())
        if (const unsigned used = o.voicings ? file.fingerings : file.chart; o.*file.file && used)
            out.emplace_back(used, file.name);
    if (o.text || o.tsv || o.describe || o.output || out.empty())
        out.insert(out.begin(), o.voicings   ? std::pair{kVoicingsText, "--voicings"}
                                : o.tsv      ? std::pair{kTsv, "--tsv"}
                                : o.describe ? std::pair{kDescribe, "--describe"}
                                             : std::pair{kText, "the chart as text"});
    return out;
}

// An option none of the chosen outputs reads would be dropped without a
// word; the player is told instead.
void CheckUsed(const Options &o) {
    unsigned used = 0;
    std::vector<std::string> outputs;
    for (const auto &[bits, option] : Chosen(o)) {
        used |= bits;
        outputs.push_back(option);
    }
    for (const std::string_view name : o.given)
        if (const OptionSpec *entry = FindOption(name); entry->usedBy && !(entry->usedBy & used))
            throw BadInput("option " + std::string(name) + " changes nothing in " +
                           Join(outputs, " or ") + "; leave it out");
}

// The options given among those that make text or files of the chart.
std::vector<std::string> ChartOutputs(const Options &o) {
    std::vector<std::string> given;
    for (const char *name : {"--text", "--tsv", "--describe"})
        if (o.Given(name))
            given.push_back(name);
    for (const FileOption &file : FileOptions())
        if (o.*file.file && file.name != "--chordpro")
            given.emplace_back(file.name);
    return given;
}

// A song is printed with its own chords: options that choose or draw a
// chart have nothing to act on.
void CheckSong(const Options &o) {
    for (const char *name : {"--transpose", "--key", "--suggest", "--tunings", "--chordpro"})
        if (o.Given(name) && !o.song)
            throw BadInput(std::string(name) + " goes with --song only");
    if (!o.song)
        return;
    if (o.tunings && !o.suggest)
        throw BadInput("--tunings goes with --suggest");
    if (o.transpose && o.key)
        throw BadInput("--transpose and --key exclude each other");
    if (o.suggest && (o.capo || o.transpose || o.key))
        throw BadInput(std::string("--suggest tries every key and capo itself and does not "
                                   "combine with ") +
                       (o.capo        ? "--capo"
                        : o.transpose ? "--transpose"
                                      : "--key"));
    if (o.suggest && (o.pdf || o.chordpro))
        throw BadInput(std::string("--suggest prints a table and does not combine with ") +
                       (o.pdf ? "--pdf" : "--chordpro") +
                       "; choose from it, then give --key or --transpose and --capo");
    const char *const chartOnly[] = {
        "--root",     "--chord",    "--scale",   "--identify", "--identify-frets",
        "--modes",    "--voicings", "--tsv",     "--describe", "--png",
        "--svg",      "--book",     "--wav",     "--midi",     "--window-image",
        "--spelling", "--labels",   "--palette", "--flip",     "--count"};
    for (const char *name : chartOnly)
        if (o.Given(name))
            throw BadInput(std::string("--song prints the song with its fingerings (text, --pdf, "
                                       "--chordpro) and does not combine with ") +
                           name);
}

void CheckCombinations(const Options &o) {
    if (o.text + o.tsv + o.describe > 1)
        throw BadInput("--text, --tsv and --describe exclude each other");
    if (bool(o.identify) + bool(o.identifyFrets) + o.modes > 1)
        throw BadInput("--identify, --identify-frets and --modes exclude each other");
    const std::vector<std::string> outputs = ChartOutputs(o);
    const char *answer = o.identify        ? "--identify"
                         : o.identifyFrets ? "--identify-frets"
                                           : "--modes";
    if (o.scale && (o.identify || o.identifyFrets || o.modes))
        throw BadInput("--scale draws a chart and does not combine with " + std::string(answer));
    if ((o.identify || o.identifyFrets || o.modes) && !outputs.empty())
        throw BadInput(std::string(answer) + " prints text only and does not combine with " +
                       outputs[0]);
    if (o.scale && (o.chord || o.Given("--spelling") || o.book))
        throw BadInput(std::string("--scale shows a scale spelled by its degrees in place of a "
                                   "chord and does not combine with ") +
                       (o.chord                 ? "--chord"
                        : o.Given("--spelling") ? "--spelling"
                                                : "--book"));
    if (o.voicings && (o.tsv || o.describe || o.identify || o.identifyFrets || o.modes))
        throw BadInput(
            std::string("--voicings does not combine with ") +
            (o.tsv        ? "--tsv"
             : o.describe ? "--describe"
             : o.modes    ? "--modes"
             : o.identify ? "--identify"
                          : "--identify-frets") +
            "; it prints text (-o for a file) or diagrams (--png, --svg, --pdf, --book)");
    if (o.voicings && o.scale)
        throw BadInput("--voicings fingers a chord and does not combine with --scale");
    // The sound plays the first fingering within the limits; how many are
    // listed is nothing to it.
    for (const std::string_view name : {"--reach", "--highest", "--muted-ok", "--count"})
        if (o.Given(name) && !o.voicings && !o.song && (name == "--count" || (!o.wav && !o.midi)))
            throw BadInput(std::string(name) + " goes with --voicings or --song only" +
                           (name == "--count" ? "" : ", or --wav and --midi"));
    if (o.voicings && o.windowImage && !o.png && !o.svg && !o.pdf && !o.book && !o.output &&
        !o.text && !o.wav && !o.midi)
        throw BadInput("--voicings changes nothing in --window-image, which shows the window's "
                       "chart; leave it out or add --png, --svg or --pdf for diagrams");
    if (o.capo && (o.identify || o.modes))
        throw BadInput(std::string("--capo does not combine with ") + answer +
                       (o.identify ? ": note names have no frets" : ""));
    CheckSong(o);
}

std::string Indented(std::string_view lines, std::size_t indent) {
    std::string out;
    std::size_t start = 0;
    for (bool first = true;; first = false) {
        const auto end = lines.find('\n', start);
        if (!first)
            out += std::string(indent, ' ');
        out += std::string(lines.substr(start, end - start)) + "\n";
        if (end == std::string_view::npos)
            return out;
        start = end + 1;
    }
}

// The catalogue's chord names, the first marked as the default, in lines
// that fit a terminal from `column` on.
std::string ChordList(std::size_t column) {
    std::string out, line;
    for (const cat::ChordType &type : cat::kChordTypes) {
        std::string item(type.name);
        if (&type == &cat::kChordTypes.front())
            item += " (default)";
        if (&type != &cat::kChordTypes.back())
            item += ",";
        if (!line.empty() && column + line.size() + 1 + item.size() > 78) {
            out += line + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + item;
    }
    return out + line;
}

// A line per name system: its name, then one octave from C in it.
std::string NameSystemLines() {
    std::string out;
    for (const cat::NameSystemInfo &info : cat::kNameSystems) {
        std::string name(info.name);
        if (&info == &cat::kNameSystems.front())
            name += " (default)";
        if (!out.empty())
            out += '\n';
        out += name + std::string(19 - name.size(), ' ') + std::string(info.example);
    }
    return out;
}

} // namespace

std::span<const FileOption> FileOptions() {
    // clang-format off
    static const FileOption kFiles[] = {
        {"--output", &O::output},
        {"--png", &O::png, kChartImage | kPng, kDiagrams | kPng},
        {"--svg", &O::svg, kChartImage, kDiagrams},
        {"--pdf", &O::pdf, kChartImage | kPdf, kDiagrams | kPdf},
        {"--book", &O::book, kBook, kFingeringBook},
        {"--window-image", &O::windowImage, kWindowImage, kWindowImage},
        {"--wav", &O::wav, kSound, kSound},
        {"--midi", &O::midi, kSound, kSound},
        {"--chordpro", &O::chordpro}};
    // clang-format on
    return kFiles;
}

std::span<const OptionSpec> OptionTable() {
    return kOptions;
}

const OptionSpec *FindOption(std::string_view name) {
    for (const OptionSpec &entry : kOptions)
        if (entry.name == name || (!entry.shortName.empty() && entry.shortName == name))
            return &entry;
    return nullptr;
}

Options ParseArguments(const std::vector<std::string> &args) {
    Options o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string name = args[i];
        std::optional<std::string> value;
        // --name=value is the same as --name value.
        if (name.starts_with("--") && name.find('=') != std::string::npos) {
            value = name.substr(name.find('=') + 1);
            name.erase(name.find('='));
        }
        const OptionSpec *entry = &kOptions[ReadChoice(OptionChoices(), name).value];
        if (entry->kind == ValueKind::None) {
            if (value)
                throw BadInput("option " + name + " takes no value");
            value = "";
        } else if (!value) {
            if (i + 1 >= args.size())
                throw BadInput("option " + name + " needs a value");
            value = args[++i];
        }
        // Longer than anything the option takes: refused before it costs time.
        const std::size_t most = entry->kind == ValueKind::File   ? kLongestFileName
                                 : entry->kind == ValueKind::List ? kLongestList
                                                                  : kLongestWord;
        if (value->size() > most)
            throw BadInput("option " + name + " takes at most " + std::to_string(most) +
                           " characters, not " + std::to_string(value->size()));
        // A file name is taken as it is, with any spaces.
        if (entry->kind != ValueKind::File)
            value = TrimSpaces(*value);
        if (entry->kind == ValueKind::File && value->empty())
            throw BadInput("option " + name + " needs a file name, not \"\"");
        // Nothing we take starts with a dash but semitones down, so "--book
        // --help" is a missing file name, not a file named "--help".
        const bool down = entry->name == "--transpose" && value->size() > 1 &&
                          std::all_of(value->begin() + 1, value->end(),
                                      [](char c) { return c >= '0' && c <= '9'; });
        if (entry->kind != ValueKind::None && value->starts_with("-") && !down)
            throw BadInput("option " + name + " needs " +
                           (entry->kind == ValueKind::File ? "a file name" : "a value") +
                           ", not \"" + *value + "\"");
        // A second value would silently win over the first.
        if (o.Given(entry->name))
            throw BadInput("option " + std::string(entry->name) + " is given twice");
        o.given.push_back(entry->name);
        const bool choice = entry->kind == ValueKind::Choice;
        entry->store(o, *value, choice ? ReadChoice(entry->choices(), *value).value : 0);
    }
    CheckCombinations(o);
    if (!o.help && !o.version)
        CheckUsed(o);
    return o;
}

bool Options::Given(std::string_view option) const {
    return std::find(given.begin(), given.end(), option) != given.end();
}

std::string_view SectionHeading(Section section, bool manual) {
    static const std::pair<const char *, const char *> kHeadings[] = {
        {"Selections (names as in the program's menus; defaults are its start values):",
         "SELECTIONS"},
        {"Output (text goes to standard output unless -o is given):", "OUTPUT"},
        {"How the chart is shown (text, images and the book alike):", "HOW THE CHART IS SHOWN"},
        {"Naming chords, and modes (these print text only and take no other output option):",
         "CHORD FINDING"},
        {"Fingerings and the capo:", "FINGERINGS AND THE CAPO"},
        {"Songs (ChordPro files):", "SONGS"},
        {"Other:", "OTHER OPTIONS"},
    };
    const auto &[help, man] = kHeadings[static_cast<std::size_t>(section)];
    return manual ? man : help;
}

std::string OptionHelp(const OptionSpec &entry, std::size_t column) {
    std::string help(entry.help);
    if (const auto at = help.find("@CHORDS@"); at != std::string::npos)
        help.replace(at, 8, ChordList(column));
    if (const auto at = help.find("@NAMES@"); at != std::string::npos)
        help.replace(at, 7, NameSystemLines());
    return help;
}

std::string CompletionWords(const std::string &option, const std::string &names) {
    std::string out;
    if (option.empty()) {
        for (const OptionSpec &entry : kOptions)
            out += (entry.shortName.empty() ? "" : std::string(entry.shortName) + "\n") +
                   std::string(entry.name) + "\n";
        return out;
    }
    const OptionSpec &entry = kOptions[ReadChoice(OptionChoices(), option).value];
    static const char *const kKinds[] = {"none", "word", "word", "list", "file"};
    out = std::string(kKinds[static_cast<std::size_t>(entry.kind)]) + "\n";
    const auto system =
        static_cast<NameSystem>(names.empty() ? 0 : ReadChoice(NameChoices(), names).value);
    if (entry.choices)
        for (const Word &choice : entry.choices().words)
            out += (entry.choices == NoteChoices
                        ? catalogue::Translate(choice.word, NameSystem::English, system)
                        : choice.word) +
                   "\n";
    return out;
}

std::string HelpText() {
    constexpr std::size_t kColumn = 21;
    // The prose lives beside the manual page's; the options come from the table.
    std::string text =
#include "cli/help.inc"
        ;
    std::string out;
    for (int s = 0; s <= static_cast<int>(Section::Other); ++s) {
        const auto section = static_cast<Section>(s);
        // Piece by piece: GCC 12 warns of an overlapping copy otherwise.
        out.append("\n").append(SectionHeading(section)).append("\n");
        for (const OptionSpec &entry : kOptions) {
            if (entry.section != section)
                continue;
            std::string left = "  ";
            if (!entry.shortName.empty())
                left.append(entry.shortName).append(", ");
            left += entry.name;
            if (!entry.valueName.empty())
                left.append(" ").append(entry.valueName);
            if (left.size() + 1 > kColumn)
                out += left + "\n" + std::string(kColumn, ' ');
            else
                out += left + std::string(kColumn - left.size(), ' ');
            out += Indented(OptionHelp(entry, kColumn), kColumn);
        }
    }
    return text.replace(text.find("@OPTIONS@"), 9, out);
}

} // namespace varnock::cli
