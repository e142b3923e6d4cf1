#include "cli/options.h"

#include "chart/controls.h"
#include "model/catalogue.h"

#include <algorithm>

namespace varnock::cli {

namespace {

namespace cat = catalogue;

std::vector<std::string> Layouts() {
    std::vector<std::string> names(items::kLayouts.begin(), items::kLayouts.end());
    for (int mode = 0; mode < 6; ++mode)
        names.push_back(std::to_string(mode));
    return names;
}
std::vector<std::string> StringCounts() {
    return {"3", "4"};
}
std::vector<std::string> Scales() {
    return {"1", "2"};
}
std::vector<std::string> Spellings() {
    return {"musician", "sharps", "flats", "chord"};
}
std::vector<std::string> LabelKinds() {
    return {"notes", "degrees", "both"};
}
std::vector<std::string> Palettes() {
    return {"window", "colour-blind"};
}
std::vector<std::string> Papers() {
    return {"a4", "letter"};
}
// Sharps, each followed by its flat where it has one: A A# Bb B C ...
std::vector<std::string> NoteNames() {
    std::vector<std::string> names;
    for (const cat::NoteNames &note : cat::kNotes) {
        names.emplace_back(note.sharp);
        if (note.flat != note.sharp)
            names.emplace_back(note.flat);
    }
    return names;
}
std::vector<std::string> ChordNames() {
    std::vector<std::string> names;
    for (const cat::ChordType &type : cat::kChordTypes)
        names.emplace_back(type.name);
    return names;
}

using S = Section;
using V = ValueKind;
using O = Options;
using T = const std::string &;

// clang-format off
const OptionSpec kOptions[] = {
    {"--frets", "", V::Word, "LAYOUT", S::Selection, false,
     "\"Diatonic\" (default), \"Diatonic with 6+\",\n\"Diatonic with 1+ and 6+\", \"Chromatic\", or the mode\n"
     "number 0..5; 4 and 5 are two five-fret layouts the\nprogram's menu does not offer",
     [](O &o, T v) { o.frets = v; }, Layouts},
    {"--strings", "", V::Word, "N", S::Selection, false,
     "3 (default) or 4; a tuning names as many notes",
     [](O &o, T v) { o.strings = v; }, StringCounts},
    {"--tuning", "", V::List, "NOTES", S::Selection, false,
     "open notes from the lowest string, comma-separated:\nD,A,D (default) or D,A,D,G; four notes imply --strings 4",
     [](O &o, T v) { o.tuning = v; }, NoteNames},
    {"--root", "", V::Word, "NOTE", S::Selection, false,
     "A (default) .. G#, or any spelling: Gb, F\u266F, B#, Cx",
     [](O &o, T v) { o.root = v; }, NoteNames},
    {"--chord", "", V::Word, "TYPE", S::Selection, false,
     "@CHORDS@; exactly so: M and m differ",
     [](O &o, T v) { o.chord = v; }, ChordNames},
    {"--from-settings", "", V::None, "", S::Selection, false,
     "take layout, strings and tuning from the program's\nsettings file (read only); options given still win",
     [](O &o, T) { o.fromSettings = true; }, nullptr},

    {"--text", "", V::None, "", S::Output, true,
     "the chart as an aligned table, then \"Notes: ...\" (default)",
     [](O &o, T) { o.text = true; }, nullptr},
    {"--tsv", "", V::None, "", S::Output, true,
     "tab-separated: heading line, label row, string rows, one\nline each, cells exactly as in the chart; no notes line.\n"
     "It is data, so it keeps position and string order even\nwith --left-handed or --flip",
     [](O &o, T) { o.tsv = true; }, nullptr},
    {"--describe", "", V::None, "", S::Output, true,
     "the chart in sentences a screen reader reads well: the\ninstrument, the chord and its notes, then where each note\n"
     "lies on each string, by the layout's own fret names",
     [](O &o, T) { o.describe = true; }, nullptr},
    {"--output", "-o", V::File, "FILE", S::Output, true,
     "write the --text, --tsv or --describe output to FILE",
     [](O &o, T v) { o.output = v; }, nullptr},
    {"--png", "", V::File, "FILE", S::Output, true,
     "the chart under its title, strings named, and the notes\ntable as a PNG image",
     [](O &o, T v) { o.png = v; }, nullptr},
    {"--window-image", "", V::File, "FILE", S::Output, true,
     "chart and notes table as a PNG exactly as the program's\nwindow shows them: no title, no string names",
     [](O &o, T v) { o.windowImage = v; }, nullptr},
    {"--scale", "", V::Word, "1|2", S::Output, false,
     "pixel scale of the PNG images (2 for print)",
     [](O &o, T v) {
         if (v != "1" && v != "2")
             throw BadInput("unknown scale \"" + v + "\"; accepted: 1, 2");
         o.scale = v[0] - '0';
     }, Scales},
    {"--svg", "", V::File, "FILE", S::Output, true,
     "chart and notes table as SVG",
     [](O &o, T v) { o.svg = v; }, nullptr},
    {"--pdf", "", V::File, "FILE", S::Output, true,
     "the chart as --png draws it on a printable page, scaled\nto the width inside the margins",
     [](O &o, T v) { o.pdf = v; }, nullptr},
    {"--paper", "", V::Word, "a4|letter", S::Output, false,
     "the page size of --pdf: a4 (default) or letter",
     [](O &o, T v) { o.paper = v; }, Papers},
    {"--book", "", V::File, "FILE.pdf", S::Output, true,
     "a chord book: a contents page, then a titled page per root\nwith the chart and notes of every chord",
     [](O &o, T v) { o.book = v; }, nullptr},
    {"--roots", "", V::List, "LIST", S::Output, false,
     "roots for the book, comma-separated (default: all 12)",
     [](O &o, T v) { o.roots = v; }, NoteNames},
    {"--chords", "", V::List, "LIST", S::Output, false,
     "chords for the book, comma-separated (default: all 32)",
     [](O &o, T v) { o.chords = v; }, ChordNames},

    {"--spelling", "", V::Word, "NAMES", S::Look, false,
     "musician (default): each note by its degree above the\nroot, the root as typed or else with fewer accidentals\n"
     "(Bb maj7, Eb m, F# Maj), typed flats kept; sharps (as in\nthe program), flats (\"A#\" is \"Bb\"), or chord: each note\n"
     "by its degree above the root as given to --root\n(Bb Maj: Bb D F; A# Maj: A# C## E#)",
     [](O &o, T v) { o.spelling = v; }, Spellings},
    {"--labels", "", V::Word, "WHAT", S::Look, false,
     "what the chart's cells show: notes (default), degrees\nabove the root (R, b3, 3, 5, b7, 9, ...) or both (\"Eb b7\")",
     [](O &o, T v) { o.labels = v; }, LabelKinds},
    {"--palette", "", V::Word, "COLOURS", S::Look, false,
     "window (default, the program's colours) or colour-blind:\nthe four chord tones' cells filled with hues that stay\n"
     "apart under the common colour blindnesses, the text black\nor white by contrast, no green stripe",
     [](O &o, T v) { o.palette = v; }, Palettes},
    {"--left-handed", "", V::None, "", S::Look, false,
     "mirrored: the open-string column on the right, positions\nrising to the left, headings and label row with them",
     [](O &o, T) { o.leftHanded = true; }, nullptr},
    {"--flip", "", V::None, "", S::Look, false,
     "the last string on top; the label row stays the top row.\nThe notes table is a legend: neither option turns it",
     [](O &o, T) { o.flip = true; }, nullptr},

    {"--identify", "", V::List, "NOTES", S::Naming, false,
     "2 to 4 note names in any spelling and order, comma-\nseparated: every root and chord type of exactly those\n"
     "notes, then every one that holds them all, one a line",
     [](O &o, T v) { o.identify = v; }, NoteNames},
    {"--identify-frets", "", V::List, "P1,P2[,P3[,P4]]", S::Naming, false,
     "a position 0..22 per string, or x for a string not\nplayed, on the chosen layout and tuning: first the notes\n"
     "sounding there, then the chords they make, as above",
     [](O &o, T v) { o.identifyFrets = v; }, nullptr},

    {"--version", "", V::None, "", S::Other, false,
     "the version, the same as the program's",
     [](O &o, T) { o.version = true; }, nullptr},
    {"--help", "-h", V::None, "", S::Other, false,
     "this text",
     [](O &o, T) { o.help = true; }, nullptr},
};
// clang-format on

// The options given among those that make text or files of the chart.
std::vector<std::string> ChartOutputs(const Options &o) {
    std::vector<std::string> given;
    const std::pair<bool, const char *> outputs[] = {{o.text, "--text"},
                                                     {o.tsv, "--tsv"},
                                                     {o.describe, "--describe"},
                                                     {bool(o.output), "--output"},
                                                     {bool(o.png), "--png"},
                                                     {bool(o.svg), "--svg"},
                                                     {bool(o.pdf), "--pdf"},
                                                     {bool(o.book), "--book"},
                                                     {bool(o.windowImage), "--window-image"}};
    for (const auto &[on, name] : outputs)
        if (on)
            given.push_back(name);
    return given;
}

void CheckCombinations(const Options &o) {
    if (o.text + o.tsv + o.describe > 1)
        throw BadInput("--text, --tsv and --describe exclude each other");
    if (o.identify && o.identifyFrets)
        throw BadInput("--identify and --identify-frets exclude each other");
    const std::vector<std::string> outputs = ChartOutputs(o);
    if ((o.identify || o.identifyFrets) && !outputs.empty())
        throw BadInput(std::string(o.identify ? "--identify" : "--identify-frets") +
                       " prints text only and does not combine with " + outputs[0]);
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

} // namespace

std::span<const OptionSpec> OptionTable() {
    return kOptions;
}

const OptionSpec *FindOption(std::string_view name) {
    for (const OptionSpec &spec : kOptions)
        if (spec.name == name || (!spec.shortName.empty() && spec.shortName == name))
            return &spec;
    return nullptr;
}

Options ParseArguments(const std::vector<std::string> &args) {
    Options o;
    std::vector<const OptionSpec *> seen;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string name = args[i];
        std::optional<std::string> value;
        // --name=value is the same as --name value.
        if (name.starts_with("--") && name.find('=') != std::string::npos) {
            value = name.substr(name.find('=') + 1);
            name.erase(name.find('='));
        }
        const OptionSpec *spec = FindOption(name);
        if (!spec)
            throw BadInput("unknown option \"" + name + "\"; see --help");
        if (spec->kind == ValueKind::None) {
            if (value)
                throw BadInput("option " + name + " takes no value");
            value = "";
        } else if (!value) {
            if (i + 1 >= args.size())
                throw BadInput("option " + name + " needs a value");
            value = args[++i];
        }
        // Nothing we take starts with a dash, so "--book --help" is a missing
        // file name, not a file named "--help".
        if (spec->kind != ValueKind::None && value->starts_with("-"))
            throw BadInput("option " + name + " needs " +
                           (spec->kind == ValueKind::File ? "a file name" : "a value") +
                           ", not \"" + *value + "\"");
        if (spec->output && std::find(seen.begin(), seen.end(), spec) != seen.end())
            throw BadInput("option " + std::string(spec->name) + " is given twice");
        seen.push_back(spec);
        spec->store(o, *value);
    }
    CheckCombinations(o);
    return o;
}

std::string HelpText() {
    constexpr std::size_t kColumn = 21;
    static const std::pair<Section, const char *> kHeadings[] = {
        {Section::Selection,
         "Selections (names as in the program's menus; defaults are its start values):"},
        {Section::Output, "Output (text goes to standard output unless -o is given):"},
        {Section::Look, "How the chart is shown (text, images and the book alike):"},
        {Section::Naming, "Naming chords (these print text only and take no other output option):"},
        {Section::Other, "Other:"},
    };
    std::string out = R"(Usage: varnock-chart [options]

Prints or exports Varnock's chord chart: the same chord model and the same
cell painting as the program's window, without opening a window.
)";
    for (const auto &[section, heading] : kHeadings) {
        out += std::string("\n") + heading + "\n";
        for (const OptionSpec &spec : kOptions) {
            if (spec.section != section)
                continue;
            std::string left = "  ";
            if (!spec.shortName.empty())
                left += std::string(spec.shortName) + ", ";
            left += spec.name;
            if (!spec.valueName.empty())
                left += " " + std::string(spec.valueName);
            if (left.size() + 1 > kColumn)
                out += left + "\n" + std::string(kColumn, ' ');
            else
                out += left + std::string(kColumn - left.size(), ' ');
            std::string help(spec.help);
            if (const auto at = help.find("@CHORDS@"); at != std::string::npos)
                help.replace(at, 8, ChordList(kColumn));
            out += Indented(help, kColumn);
        }
    }
    out += R"(
Every option that takes a value may also be written --name=value; a value
never starts with "-". Files are written to a temporary name and renamed when
complete.
Exit status: 0 done, 1 a file could not be written, 2 bad option or value
(nothing is written), 3 anything else.

Examples:
  varnock-chart --root D
  varnock-chart --frets Chromatic --tuning D,A,D,G --root D --chord 7 --tsv
  varnock-chart --root "F#" --chord m7 --png fsharp-m7.png --scale 2
  varnock-chart --from-settings --root Gb --chord Maj --svg chart.svg
  varnock-chart --tuning D,A,D --book dad.pdf --chords Maj,m,7
  varnock-chart --root D --left-handed --flip --png lefty.png
  varnock-chart --root Bb --spelling chord
  varnock-chart --root D --describe
  varnock-chart --identify D,F#,A --spelling flats
  varnock-chart --frets Chromatic --identify-frets 0,2,4
)";
    return out;
}

} // namespace varnock::cli
