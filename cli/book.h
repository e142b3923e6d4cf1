#pragma once

// The chord book: a contents page, then for each root a titled page
// (continued as needed) with the chart and notes of each chord.

#include "chart/sheet.h"
#include "cli/theory.h"

#include <QString>

#include <string>
#include <vector>

namespace varnock {
class ChartController;
}

namespace varnock::chart {

// Charts per book page; a root with more chords continues on further pages.
constexpr int kChartsPerPage = 4;

// How the book shows its charts; by default as the program's window does.
struct BookLook {
    ChartOrientation orientation;
    theory::Spelling spelling = theory::Spelling::Sharps;
    // The roots as typed, one per root, for the Chord spelling.
    std::vector<std::string> rootNames;
};

// Sets the root and chord popups of `chart` in turn. Returns the number of pages.
int WriteBook(const QString &path, ChartController &chart, const std::vector<int> &roots,
              const std::vector<int> &chords, const BookLook &look = {});

} // namespace varnock::chart
