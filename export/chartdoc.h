#pragma once

// The chart as text, read off a sheet: an aligned table, tab-separated rows,
// sentences and short titles.

#include "music/chartsheet.h"
#include "chart/sheet.h"
#include "music/catalogue.h"
#include "music/degrees.h"

#include <string>
#include <vector>

namespace varnock::output {

using namespace music;

// The chart's rows as text: heading line, label row, string rows.
std::vector<std::vector<std::string>> ChartRows(const ChartSheet &sheet);

// The rows as the orientation shows them: each row mirrored, the string rows
// in reverse; the heading line and label row stay on top.
std::vector<std::vector<std::string>> Oriented(std::vector<std::vector<std::string>> rows,
                                               ChartOrientation orientation);

// The title line, then an aligned table whose string rows start with the
// string's name on the open-string side, then the notes line.
std::string ChartText(const ChartSheet &sheet, ChartOrientation orientation = {});
// One tab-separated line per row, cells exactly as in the chart; no notes.
std::string ChartTsv(const ChartSheet &sheet);

// The chart in sentences for a screen reader: the instrument, the chord,
// then each string, the last one first when `lastStringFirst`; each
// position also by its fret name in the layout. The sheet comes spelled, in
// English names; the sentences name the notes in `names`.
std::string DescribeText(const ChartSheet &sheet, Spelling spelling, bool lastStringFirst,
                         catalogue::NameSystem names = catalogue::NameSystem::English);

// A title such as "D 7: D F# A C - Chromatic, 4 strings D A D G".
std::string ChartTitle(const ChartSheet &sheet);
// Its chord part, "D 7", and its instrument part, "Chromatic, 4 strings D A D G".
std::string ChordTitle(const ChartSheet &sheet);
std::string InstrumentTitle(const ChartSheet &sheet);

} // namespace varnock::output
