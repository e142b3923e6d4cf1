#pragma once

// The chart as text: the rows of the chart list, the chord's notes, an
// aligned table, tab-separated rows and a short title.

#include <string>
#include <vector>

namespace varnock {
class ChartController;
}

namespace varnock::chart {

// The chart's rows as text: heading line, label row, string rows.
std::vector<std::vector<std::string>> ChartRows(const ChartController &chart);
std::vector<std::string> ChordNotes(const ChartController &chart);

// Aligned plain text with the notes line after the table.
std::string ChartText(const ChartController &chart);
// One tab-separated line per row, cells exactly as in the chart; no notes.
std::string ChartTsv(const ChartController &chart);

// A short title such as "D 7 - Chromatic, 4 strings D A D G".
std::string ChartTitle(const ChartController &chart);
// Its chord part, "D 7", and its instrument part, "Chromatic, 4 strings D A D G".
std::string ChordTitle(const ChartController &chart);
std::string InstrumentTitle(const ChartController &chart);

} // namespace varnock::chart
