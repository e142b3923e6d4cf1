#pragma once

// varnock-chart: the chart of the main window, without showing the window,
// as text, tab-separated rows, images and documents. Every chart comes from a
// real Window1 driven through its popups, so the cells and pixels are exactly
// the ones the program shows.

#include <QImage>
#include <QString>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

class QPainter;
class QSize;

namespace varnock {

class Window1;

namespace chart {

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
};

// Reads the command line (without argv[0]). Raises BadInput on an unknown
// option, a missing value or a bad --scale.
Options ParseArguments(const std::vector<std::string> &args);

std::string HelpText();

// Selection as popup indices of the window.
struct Selection {
    std::optional<int> frets, strings, root, chord;
    std::vector<int> tuning; // up to four tuning popup indices, Bass first
};

// Matches the typed names against the window's own popup items; BadInput
// names the bad value and the accepted ones.
Selection Resolve(const Window1 &window, const Options &options);
int ResolveRoot(const Window1 &window, const std::string &text);
int ResolveChord(const Window1 &window, const std::string &text);
// A comma-separated list of roots or chords; "" or absent means all of them.
std::vector<int> ResolveRoots(const Window1 &window, const std::optional<std::string> &list);
std::vector<int> ResolveChords(const Window1 &window, const std::optional<std::string> &list);

// Sets the popups as a user would; each change recomputes the chart.
void Apply(Window1 &window, const Selection &selection);

// The chart's rows as text: heading line, label row, string rows.
std::vector<std::vector<std::string>> ChartRows(const Window1 &window);
std::vector<std::string> ChordNotes(const Window1 &window);

// Aligned plain text with the notes line after the table.
std::string ChartText(const Window1 &window);
// One tab-separated line per row, cells exactly as in the chart; no notes.
std::string ChartTsv(const Window1 &window);

// A short title such as "D 7 - Chromatic, 4 strings D A D G".
std::string ChartTitle(const Window1 &window);

// The sheet: chart, notes table and its label, placed as in the window.
QSize SheetSize(const Window1 &window);
void PaintSheet(QPainter &painter, Window1 &window);
QImage RenderSheet(Window1 &window, int scale);

// Each writer goes through a temporary file renamed into place on success,
// so a failed run leaves nothing half-written; WriteFailed on any failure.
void WriteTextFile(const QString &path, const std::string &bytes);
void WritePng(const QString &path, Window1 &window, int scale);
void WriteSvg(const QString &path, Window1 &window);
void WritePdf(const QString &path, Window1 &window);
// A contents page, then for each root a titled page (continued as needed)
// with the chart and notes of each chord. Returns the number of pages.
int WriteBook(const QString &path, Window1 &window, const std::vector<int> &roots,
              const std::vector<int> &chords);

// Fret layouts by mode number: the four of the program's menu and two more.
constexpr int kModes = 6;

// Charts per book page; a root with more chords continues on further pages.
constexpr int kChartsPerPage = 4;

} // namespace chart
} // namespace varnock
