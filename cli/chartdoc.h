#pragma once

// The chart as text: the rows of the chart list, the chord's notes, an
// aligned table, tab-separated rows and a short title.

#include "chart/sheet.h"
#include "cli/theory.h"

#include <string>
#include <vector>

namespace varnock {
class ChartController;
}

namespace varnock::chart {

// The chart's rows as text: heading line, label row, string rows.
std::vector<std::vector<std::string>> ChartRows(const ChartController &chart);
std::vector<std::string> ChordNotes(const ChartController &chart);

// The rows as the orientation shows them: each row mirrored, the string rows
// in reverse; the heading line and label row stay on top.
std::vector<std::vector<std::string>> Oriented(std::vector<std::vector<std::string>> rows,
                                               ChartOrientation orientation);

// Aligned plain text with the notes line after the table.
std::string ChartText(const ChartController &chart, ChartOrientation orientation = {});
// One tab-separated line per row, cells exactly as in the chart; no notes.
std::string ChartTsv(const ChartController &chart);

// The chart in sentences for a screen reader: the instrument, the chord,
// then each string, the last one first when `lastStringFirst`; each
// position also by its fret name in the layout.
std::string DescribeText(const ChartController &chart, theory::Spelling spelling,
                         bool lastStringFirst);

// A short title such as "D 7 - Chromatic, 4 strings D A D G".
std::string ChartTitle(const ChartController &chart);
// Its chord part, "D 7", and its instrument part, "Chromatic, 4 strings D A D G".
std::string ChordTitle(const ChartController &chart);
std::string InstrumentTitle(const ChartController &chart);

} // namespace varnock::chart
