#include "cli/options.h"

namespace varnock::chart {

namespace {

std::string Value(const std::vector<std::string> &args, std::size_t &i) {
    if (i + 1 >= args.size())
        throw BadInput("option " + args[i] + " needs a value");
    return args[++i];
}

// The options given among those that make text or files of the chart.
std::vector<std::string> ChartOutputs(const Options &o) {
    std::vector<std::string> given;
    const std::pair<bool, const char *> outputs[] = {
        {o.text, "--text"},           {o.tsv, "--tsv"},        {o.describe, "--describe"},
        {bool(o.output), "--output"}, {bool(o.png), "--png"},  {bool(o.svg), "--svg"},
        {bool(o.pdf), "--pdf"},       {bool(o.book), "--book"}};
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

} // namespace

Options ParseArguments(const std::vector<std::string> &args) {
    Options o;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string arg = args[i];
        // --name=value is the same as --name value.
        std::vector<std::string> local;
        std::size_t j = 0;
        const std::vector<std::string> *source = &args;
        std::size_t *at = &i;
        if (arg.rfind("--", 0) == 0 && arg.find('=') != std::string::npos) {
            local = {arg.substr(0, arg.find('=')), arg.substr(arg.find('=') + 1)};
            arg = local[0];
            source = &local;
            at = &j;
        }
        const auto value = [&] { return Value(*source, *at); };
        if (arg == "-h" || arg == "--help")
            o.help = true;
        else if (arg == "--version")
            o.version = true;
        else if (arg == "--frets")
            o.frets = value();
        else if (arg == "--strings")
            o.strings = value();
        else if (arg == "--tuning")
            o.tuning = value();
        else if (arg == "--root")
            o.root = value();
        else if (arg == "--chord")
            o.chord = value();
        else if (arg == "--roots")
            o.roots = value();
        else if (arg == "--chords")
            o.chords = value();
        else if (arg == "--from-settings")
            o.fromSettings = true;
        else if (arg == "--text")
            o.text = true;
        else if (arg == "--tsv")
            o.tsv = true;
        else if (arg == "-o" || arg == "--output")
            o.output = value();
        else if (arg == "--png")
            o.png = value();
        else if (arg == "--svg")
            o.svg = value();
        else if (arg == "--pdf")
            o.pdf = value();
        else if (arg == "--book")
            o.book = value();
        else if (arg == "--spelling")
            o.spelling = value();
        else if (arg == "--left-handed")
            o.leftHanded = true;
        else if (arg == "--flip")
            o.flip = true;
        else if (arg == "--identify")
            o.identify = value();
        else if (arg == "--identify-frets")
            o.identifyFrets = value();
        else if (arg == "--describe")
            o.describe = true;
        else if (arg == "--scale") {
            const std::string s = value();
            if (s != "1" && s != "2")
                throw BadInput("unknown scale \"" + s + "\"; accepted: 1, 2");
            o.scale = s[0] - '0';
        } else
            throw BadInput("unknown option \"" + arg + "\"; see --help");
        if (source == &local && j + 1 < local.size())
            throw BadInput("option " + arg + " takes no value");
    }
    CheckCombinations(o);
    return o;
}

std::string HelpText() {
    return R"(Usage: varnock-chart [options]

Prints or exports Varnock's chord chart: the same chord model and the same
cell painting as the program's window, without opening a window.

Selections (names as in the program's menus; defaults are its start values):
  --frets LAYOUT     "Diatonic" (default), "Diatonic with 6+",
                     "Diatonic with 1+ and 6+", "Chromatic", or the mode
                     number 0..5; 4 and 5 are two five-fret layouts the
                     program's menu does not offer
  --strings N        3 (default) or 4
  --tuning NOTES     open notes from the lowest string, comma-separated:
                     D,A,D (default) or D,A,D,G; four notes imply --strings 4
  --root NOTE        A (default) .. G#; flats too: "Gb" is "F# / Gb"
  --chord TYPE       Maj (default), 7, maj7, m, m7, Dim, Dim7, Sus2, Sus4,
                     add9, madd9, Aug, 2, 5, 6, 6/9, 9/6, 9, 11, 13, maj9,
                     maj11, maj13, m6, maj6/9, mmaj7, mmaj9, m9, m11, m13,
                     7/6, 7sus4
  --from-settings    take layout, strings and tuning from the program's
                     settings file (read only); options given still win

Output (text goes to standard output unless -o is given):
  --text             the chart as an aligned table, then "Notes: ..." (default)
  --tsv              tab-separated: heading line, label row, string rows, one
                     line each, cells exactly as in the chart; no notes line.
                     It is data, so it keeps position and string order even
                     with --left-handed or --flip
  --describe         the chart in sentences a screen reader reads well: the
                     instrument, the chord and its notes, then where each note
                     lies on each string, by the layout's own fret names
  -o, --output FILE  write the --text, --tsv or --describe output to FILE
  --png FILE         chart and notes table as a PNG image
  --scale 1|2        pixel scale of the PNG (2 for print)
  --svg FILE         chart and notes table as SVG
  --pdf FILE         chart and notes table as a one-page PDF
  --book FILE.pdf    a chord book: a contents page, then a titled page per root
                     with the chart and notes of every chord
  --roots LIST       roots for the book, comma-separated (default: all 12)
  --chords LIST      chords for the book, comma-separated (default: all 32)
  --version          the version, the same as the program's
  -h, --help         this text

How the chart is shown (text, images and the book alike):
  --spelling NAMES   sharps (default, as in the program), flats ("A#" is
                     "Bb"), or chord: each note named by its degree above the
                     root as given to --root (Bb Maj: Bb D F; A# Maj: A# C## E#)
  --left-handed      mirrored: the open-string column on the right, positions
                     rising to the left, headings and label row with them
  --flip             the last string on top; the label row stays the top row.
                     The notes table is a legend: neither option turns it

Naming chords (these print text only and take no other output option):
  --identify NOTES   2 to 4 note names in any spelling and order, comma-
                     separated: every root and chord type of exactly those
                     notes, then every one that holds them all, one a line
  --identify-frets P1,P2[,P3[,P4]]
                     a position 0..22 per string, or x for a string not
                     played, on the chosen layout and tuning: first the notes
                     sounding there, then the chords they make, as above

Files are written to a temporary name and renamed when complete.
Exit status: 0 success, 1 a file could not be written, 2 bad option or value.

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
}

} // namespace varnock::chart
