// The one chart computation against the window's own pipeline: for every
// layout, string count, a spread of tunings, every root and every chord type,
// the sheet holds exactly what the controller's lists show, and each cell
// means the note its text names.

#include "chart/controller.h"
#include "music/catalogue.h"

#include <gtest/gtest.h>

using namespace varnock;

namespace {

std::vector<std::string> Cells(const Listbox &list, Int row) {
    std::vector<std::string> cells;
    for (Int c = 0; c < list.ColumnCount(); ++c)
        cells.push_back(list.Cell(row, c));
    return cells;
}

TEST(ComputeSheet, IsWhatTheControllersListsShow) {
    ChartController chart;
    chart.Open();
    // Tuning popup items, Bass first: D A D D, then others with sharps and repeats.
    const std::vector<std::array<Int, 4>> tunings = {{0, 7, 0, 0}, {5, 0, 7, 2}, {11, 4, 9, 1}};
    for (Int mode = 0; mode < 6; ++mode) {
        chart.PopupMenu9->IndexBeyondItems = true;
        chart.PopupMenu9->SetListIndex(mode);
        for (Int strings = 0; strings < 2; ++strings) {
            chart.PopupMenu10->SetListIndex(strings);
            for (const auto &tuning : tunings) {
                for (std::size_t s = 0; s < 4; ++s)
                    chart.TuningPopups()[s]->SetListIndex(tuning[s]);
                // Every chord type, each on another root: all twelve come round.
                {
                    for (Int type = 0; type < catalogue::kChordTypeCount; ++type) {
                        chart.PopupMenu1->SetListIndex(type * 7 % 12);
                        chart.PopupMenu2->SetListIndex(type);
                        const ChartSheet &sheet = chart.Sheet();
                        const std::string where = "mode " + std::to_string(mode) + ", " +
                                                  std::to_string(strings + 3) + " strings, " +
                                                  sheet.rootItem + " " + sheet.chordItem;
                        const Listbox &list = *chart.Listbox1;
                        ASSERT_EQ(sheet.rows.size(), static_cast<std::size_t>(list.ListCount()))
                            << where;
                        for (Int c = 0; c < list.ColumnCount(); ++c)
                            ASSERT_EQ(sheet.headings.at(static_cast<std::size_t>(c)),
                                      list.Heading(c))
                                << where;
                        for (Int r = 0; r < list.ListCount(); ++r)
                            ASSERT_EQ(sheet.rows[static_cast<std::size_t>(r)], Cells(list, r))
                                << where << ", row " << r;
                        ASSERT_EQ(sheet.notesRows.at(0), Cells(*chart.Listbox2, 0)) << where;
                        ASSERT_EQ(sheet.notes[2], chart.Model.Note3) << where;
                        // Each marked cell names its tone's note; each blank one sounds none.
                        const std::vector<std::string> keys = sheet.ColourKeys();
                        for (std::size_t s = 0; s < sheet.cells.size(); ++s)
                            for (std::size_t p = 0; p < sheet.cells[s].size(); ++p) {
                                const ChartCell cell = sheet.cells[s][p];
                                const std::string text = sheet.rows[s + 1][p];
                                ASSERT_EQ(text, cell.tone < 0 ? "" : keys.at(cell.tone)) << where;
                                ASSERT_EQ(catalogue::SharpName(cell.pitch),
                                          chart.Model.M.NoteList(
                                              (chart.Model.M.Fret_Indices(static_cast<Int>(p)) +
                                               sheet.openNotes[s]) %
                                              12))
                                    << where;
                            }
                    }
                }
            }
        }
    }
}

} // namespace
