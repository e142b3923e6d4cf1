#pragma once

// varnock-chart's command line: one table of its options, each word-valued
// one with the words it takes, and what the user asked for. The parser,
// --help, the bash completion (through --completion-words) and the manual
// page all read the table.

#include "cli/errors.h"
#include "export/request.h"
#include "platform/words.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varnock::cli {

// What the user asked for. Words from a fixed list are read at once; notes,
// which depend on --names, and positions, which depend on the layout, stay
// as typed.
struct Options : output::Asked {
    std::optional<int> frets, strings, chord; // layout mode, 3 or 4, chord type
    std::optional<std::string> chords;        // chord types for the book
    bool fromSettings = false;
    bool help = false;
    bool version = false;
    std::vector<std::string_view> given; // the options given, by their long names

    bool Given(std::string_view option) const;
};

enum class Section { Selection, Output, Look, Naming, Fingering, Song, Other };
// The heading of a section in --help and, in capitals, in the manual page.
std::string_view SectionHeading(Section section, bool manual = false);

// The words an option takes.
struct Choices {
    std::string noun; // what a word is called in an answer: "chord", "palette"
    std::vector<Word> words;
    // The answer to a word that only this option explains ("Dm" as a chord:
    // a root and a type), or "".
    std::string (*explain)(const std::string &typed) = nullptr;
    std::string accepted = {}; // the answer's "accepted: ..." when not the words
    // The word (its index) players mean by what they typed in their usual
    // notation, or -1; it wins over a difference of case ("M7" is maj7).
    int (*meant)(const std::string &typed) = nullptr;
};

// The one reader of the words every option takes (MatchWord). BadInput for
// a word not taken, naming it, the words it likely means and what is accepted.
const Word &ReadChoice(const Choices &choices, const std::string &typed);

// The outputs an option can change, for refusing one that would be ignored.
enum Used : unsigned {
    kText = 1u << 0, // the chart as text, or the default output
    kTsv = 1u << 1,
    kDescribe = 1u << 2,
    kVoicingsText = 1u << 3,
    kChartImage = 1u << 4, // --png, --svg, --pdf of the chart
    kPng = 1u << 5,        // of the chart or the diagrams
    kPdf = 1u << 6,        // of the chart or the diagrams
    kDiagrams = 1u << 7,
    kWindowImage = 1u << 8,
    kBook = 1u << 9,
    kFingeringBook = 1u << 10,
    kSound = 1u << 11,
    kIdentify = 1u << 12,
    kIdentifyFrets = 1u << 13,
    kModes = 1u << 14,
    kSongText = 1u << 15, // the song with its fingerings, or --suggest's table
    kSongSheet = 1u << 16,
    kSongChordPro = 1u << 17,
};

enum class ValueKind {
    None,   // a switch
    Word,   // one value
    Choice, // one word of the row's choices
    List,   // comma-separated values
    File,   // a file to write
};

struct OptionSpec {
    std::string_view name;      // "--root"
    std::string_view shortName; // "-o", or empty
    ValueKind kind;
    std::string_view valueName; // "NOTE" in the help; empty for a switch
    Section section;
    std::string_view help; // the help's lines, joined by "\n"; see OptionHelp
    // Stores the value (or "" for a switch), with a Word's value; BadInput
    // for a value it refuses.
    void (*store)(Options &, const std::string &, int);
    // The words it takes (a list's entries); nullptr for free values.
    const Choices &(*choices)() = nullptr;
    // The outputs it changes (Used bits); 0 for all. Given for none of the
    // outputs chosen, it is refused rather than ignored.
    unsigned usedBy = 0;
};

// The longest value of each kind an option takes: a file name as Linux
// allows it, a list of every name there is with room to spare.
constexpr std::size_t kLongestWord = 100;
constexpr std::size_t kLongestList = 1000;
constexpr std::size_t kLongestFileName = 4096;

std::span<const OptionSpec> OptionTable();
// The options that name a file to write, with where the name is kept and
// the outputs (Used bits) it asks for with a chart and with --voicings; 0
// for none but text.
struct FileOption {
    std::string_view name;
    std::optional<std::string> output::Asked::*file;
    unsigned chart = 0, fingerings = 0;
};
std::span<const FileOption> FileOptions();
// The row for "--name" or "-o"; nullptr for none.
const OptionSpec *FindOption(std::string_view name);

// Reads the command line (without argv[0]). BadInput on an unknown option, a
// missing value, a value that looks like an option, an option given twice, a
// word not among its choices, a bad --reach or --count, options that exclude
// each other, or one that none of the outputs asked for would use.
Options ParseArguments(const std::vector<std::string> &args);

// The row's help with the catalogue's lists written in, the lines starting
// at `column` of a terminal.
std::string OptionHelp(const OptionSpec &entry, std::size_t column);
std::string HelpText();

// For the bash completion: with no option, every option's name, a line each;
// with one, what it takes on the first line (none, word, list or file), then
// the words it takes, note names in the system `names` (a --names word;
// english when empty). BadInput for an unknown option or system.
std::string CompletionWords(const std::string &option, const std::string &names = "");

} // namespace varnock::cli
