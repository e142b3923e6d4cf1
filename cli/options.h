#pragma once

// varnock-chart's command line: what the user asked for, still as typed, and
// the two kinds of failure the command reports.

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace varnock::chart {

// A value the user gave that names nothing we know: exit status 2.
struct BadInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A file that could not be written: exit status 1.
struct WriteFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What the user asked for, still as typed; nothing is resolved yet.
struct Options {
    std::optional<std::string> frets, strings, tuning, root, chord;
    std::optional<std::string> roots, chords; // subsets for the book
    bool fromSettings = false;
    bool help = false;
    bool version = false;
    bool text = false;
    bool tsv = false;
    std::optional<std::string> output; // for --text / --tsv; stdout if absent
    std::optional<std::string> png, svg, pdf, book;
    int scale = 1;
    // How the chart is shown; the window knows none of these.
    std::optional<std::string> spelling;
    bool leftHanded = false;
    bool flip = false;
    // Answers in words instead of the chart.
    std::optional<std::string> identify, identifyFrets;
    bool describe = false;
};

// Reads the command line (without argv[0]). Raises BadInput on an unknown
// option, a missing value, a bad --scale or options that exclude each other.
Options ParseArguments(const std::vector<std::string> &args);

std::string HelpText();

} // namespace varnock::chart
