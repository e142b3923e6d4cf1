#pragma once

// The chord book: a contents page, then for each root a titled page
// (continued as needed) with the chart and notes of each chord.

#include "chart/chartsheet.h"
#include "chart/sheet.h"
#include "cli/degrees.h"
#include "cli/spelling.h"

#include <QString>

#include <string>
#include <vector>

namespace varnock {
class ChartController;
}

namespace varnock::cli {

// Charts per book page; a root with more chords continues on further pages.
constexpr int kChartsPerPage = 4;

// How the book shows its charts; by default as the program's window does.
struct BookLook {
    ChartOrientation orientation;
    Spelling spelling = Spelling::Musician;
    // The roots as typed, one per root, for the Chord spelling.
    std::vector<std::string> rootNames;
    Labels labels = Labels::Notes;
};

// One chart of the book with the line above it.
struct BookChart {
    std::string title;
    ChartSheet sheet;
};
// A root's part: its name in the contents and the page titles, and its charts.
struct BookPart {
    std::string name;
    std::vector<BookChart> charts;
};
struct Book {
    std::string instrument; // under the contents' title
    std::vector<BookPart> parts;
    ChartOrientation orientation;
};

// Sets the root and chord popups of `chart` in turn and keeps each sheet,
// spelled as the look asks.
Book MakeBook(ChartController &chart, const std::vector<int> &roots, const std::vector<int> &chords,
              const BookLook &look = {});

// Returns the number of pages.
int WriteBook(const QString &path, const Book &book);

} // namespace varnock::cli
