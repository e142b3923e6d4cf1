#pragma once

// varnock-chart's command line: one table of its options, and what the user
// asked for, still as typed. The parser, --help, and the checks that the bash
// completion and the manual page name the same options all read the table.

#include "cli/errors.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::cli {

// What the user asked for, still as typed; nothing is resolved yet.
struct Options {
    std::optional<std::string> frets, strings, tuning, root, chord;
    std::optional<std::string> roots, chords; // subsets for the book
    bool fromSettings = false;
    bool help = false;
    bool version = false;
    bool text = false;
    bool tsv = false;
    std::optional<std::string> output; // for --text / --tsv / --describe; stdout if absent
    std::optional<std::string> png, svg, pdf, book;
    std::optional<std::string> wav, midi, octaves; // the sound of the chord or scale
    std::optional<std::string> windowImage;        // the PNG exactly as the window shows it
    std::optional<std::string> paper;
    int scale = 1;
    std::optional<std::string> scaleName; // a scale in place of the chord
    bool modes = false;                   // the modes each string plays
    // How the chart is shown; the window knows none of these.
    std::optional<std::string> spelling, labels, palette;
    std::optional<std::string> names; // english, german or latin note names
    bool leftHanded = false;
    bool flip = false;
    // Answers in words instead of the chart.
    std::optional<std::string> identify, identifyFrets;
    bool describe = false;
    // Fingerings and the capo; positions stay text until the layout is known.
    bool voicings = false;
    std::optional<std::string> highest, capo;
    std::optional<int> reach, count;
    bool mutedOk = false;
};

enum class Section { Selection, Output, Look, Naming, Fingering, Other };

enum class ValueKind {
    None, // a switch
    Word, // one value, often from a fixed list
    List, // comma-separated values
    File, // a file to write
};

struct OptionSpec {
    std::string_view name;      // "--root"
    std::string_view shortName; // "-o", or empty
    ValueKind kind;
    std::string_view valueName; // "NOTE" in the help; empty for a switch
    Section section;
    // Makes text or files of the chart: given twice is an error, and the
    // answers in words (--identify, --identify-frets) take none of them.
    bool output;
    std::string_view help; // the help's lines, joined by "\n"
    // Stores the value (or "" for a switch); BadInput for a value it refuses.
    void (*store)(Options &, const std::string &);
    // The values it takes, for completion and messages; none for free ones.
    std::vector<std::string> (*accepted)();
};

// The longest value of each kind an option takes: a file name as Linux
// allows it, a list of every name there is with room to spare.
constexpr std::size_t kLongestWord = 100;
constexpr std::size_t kLongestList = 1000;
constexpr std::size_t kLongestFileName = 4096;

std::span<const OptionSpec> OptionTable();
// The row for "--name" or "-o"; nullptr for none.
const OptionSpec *FindOption(std::string_view name);

// Reads the command line (without argv[0]). BadInput on an unknown option, a
// missing value, a value that looks like an option, an output option given
// twice, a bad --scale, --reach or --count, or options that exclude each other.
Options ParseArguments(const std::vector<std::string> &args);

std::string HelpText();

} // namespace varnock::cli
