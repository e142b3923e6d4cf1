#include "cli/chartdoc.h"

#include "chart/controller.h"
#include "cli/names.h"
#include "cli/spelling.h"

#include <algorithm>

namespace varnock::chart {

namespace {
std::string Selected(const PopupMenu &popup) {
    return popup.List(popup.ListIndex());
}
} // namespace

std::vector<std::vector<std::string>> ChartRows(const ChartController &chart) {
    const Listbox &list = *chart.Listbox1;
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> heading;
    for (Int c = 0; c < list.ColumnCount(); ++c)
        heading.push_back(list.Heading(c));
    rows.push_back(heading);
    for (Int r = 0; r < list.ListCount(); ++r) {
        std::vector<std::string> row;
        for (Int c = 0; c < list.ColumnCount(); ++c)
            row.push_back(list.Cell(r, c));
        rows.push_back(row);
    }
    return rows;
}

std::vector<std::string> ChordNotes(const ChartController &chart) {
    std::vector<std::string> notes;
    const Listbox &list = *chart.Listbox2;
    for (Int r = 0; r < list.ListCount(); ++r)
        for (Int c = 0; c < list.ColumnCount(); ++c)
            if (const std::string cell = list.Cell(r, c); !cell.empty())
                notes.push_back(cell);
    return notes;
}

std::vector<std::vector<std::string>> Oriented(std::vector<std::vector<std::string>> rows,
                                               ChartOrientation orientation) {
    if (orientation.leftHanded)
        for (auto &row : rows)
            std::reverse(row.begin(), row.end());
    if (orientation.flipped && rows.size() > 2)
        std::reverse(rows.begin() + 2, rows.end());
    return rows;
}

std::string ChartText(const ChartController &chart, ChartOrientation orientation) {
    const auto rows = Oriented(ChartRows(chart), orientation);
    std::vector<std::size_t> width(rows.empty() ? 0 : rows[0].size(), 0);
    for (const auto &row : rows)
        for (std::size_t c = 0; c < row.size(); ++c)
            width[c] = std::max(width[c], row[c].size());
    std::string out;
    for (const auto &row : rows) {
        std::string line;
        for (std::size_t c = 0; c < row.size(); ++c) {
            line += row[c];
            if (c + 1 < row.size())
                line += std::string(width[c] - row[c].size() + 1, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out += line + "\n";
    }
    out += "Notes: " + Join(ChordNotes(chart), " ") + "\n";
    return out;
}

std::string ChartTsv(const ChartController &chart) {
    std::string out;
    for (const auto &row : ChartRows(chart))
        out += Join(row, "\t") + "\n";
    return out;
}

std::string DescribeText(const ChartController &chart, theory::Spelling spelling,
                         bool lastStringFirst) {
    const auto rows = ChartRows(chart);
    theory::SheetFacts facts;
    facts.layoutName = LayoutName(chart.PopupMenu9->ListIndex());
    facts.strings = static_cast<int>(chart.StringCount());
    facts.notes = ChordNotes(chart);
    const auto tunings = chart.TuningPopups();
    for (int s = 0; s < facts.strings; ++s) {
        const PopupMenu &popup = *tunings[static_cast<std::size_t>(s)];
        const auto open = theory::ParseNote(popup.List(popup.ListIndex()));
        facts.tuning.push_back(SpellNote(open.value_or(0), spelling, facts.notes));
    }
    facts.chordTitle = (facts.notes.empty() ? Selected(*chart.PopupMenu1) : facts.notes[0]) + " " +
                       Selected(*chart.PopupMenu2);
    // A fret's name is the label row's text; where the layout leaves that
    // empty, the heading's.
    for (std::size_t p = 0; p < rows[1].size(); ++p)
        facts.fretNames.push_back(rows[1][p].empty() ? rows[0][p] : rows[1][p]);
    facts.cells.assign(rows.begin() + 2, rows.end());
    std::string text = theory::Describe(facts);
    if (!lastStringFirst)
        return text;
    // Two lines of instrument and chord, then one line per string; the text
    // ends in a line end, so the last entry is empty.
    std::vector<std::string> lines = Split(text, "\n");
    std::reverse(lines.begin() + 2, lines.end() - 1);
    return Join(lines, "\n");
}

std::string ChordTitle(const ChartController &chart) {
    return Selected(*chart.PopupMenu1) + " " + Selected(*chart.PopupMenu2);
}

std::string InstrumentTitle(const ChartController &chart) {
    const Int strings = chart.StringCount();
    std::vector<std::string> tuning;
    const auto popups = chart.TuningPopups();
    for (Int i = 0; i < strings; ++i)
        tuning.push_back(Selected(*popups[static_cast<std::size_t>(i)]));
    return LayoutName(chart.PopupMenu9->ListIndex()) + ", " + std::to_string(strings) +
           " strings " + Join(tuning, " ");
}

std::string ChartTitle(const ChartController &chart) {
    return ChordTitle(chart) + " - " + InstrumentTitle(chart);
}

} // namespace varnock::chart
