#include "cli/chartdoc.h"

#include "chart/controller.h"
#include "cli/names.h"

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

std::string ChartText(const ChartController &chart) {
    const auto rows = ChartRows(chart);
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
