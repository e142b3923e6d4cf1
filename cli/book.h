#pragma once

// The chord book: a contents page, then for each root a titled page
// (continued as needed) with the chart and notes of each chord.

#include <QString>

#include <vector>

namespace varnock {
class ChartController;
}

namespace varnock::chart {

// Charts per book page; a root with more chords continues on further pages.
constexpr int kChartsPerPage = 4;

// Sets the root and chord popups of `chart` in turn. Returns the number of pages.
int WriteBook(const QString &path, ChartController &chart, const std::vector<int> &roots,
              const std::vector<int> &chords);

} // namespace varnock::chart
